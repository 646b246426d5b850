#include "ZnServiceFault.h"

#include <charconv>

namespace
{
bool ParseInteger(const std::string& Text, int64_t Lowest, int64_t Highest, int64_t& Out)
{
	int64_t Value = 0;
	const char* End = Text.data() + Text.size();
	const auto Result = std::from_chars(Text.data(), End, Value);
	if (Text.empty() || Result.ec != std::errc() || Result.ptr != End || Value < Lowest || Value > Highest)
	{
		return false;
	}
	Out = Value;
	return true;
}
} // namespace

bool FZnServiceFault::Parse(const std::string& Text, FZnServiceFault& Out, std::string& Error)
{
	FZnServiceFault Fault;
	const size_t Equals = Text.find('=');
	const std::string Name = Text.substr(0, Equals);
	const bool bHasValue = Equals != std::string::npos;
	const std::string Value = bHasValue ? Text.substr(Equals + 1) : std::string();

	if (Text.empty())
	{
		Out = Fault;
		return true;
	}
	struct FPlain
	{
		const char* Name;
		EZnFaultKind Kind;
	};
	static const FPlain Plain[] = {{"drop", EZnFaultKind::Drop}, {"truncate", EZnFaultKind::Truncate},
		{"malformed", EZnFaultKind::Malformed}, {"stall", EZnFaultKind::Stall}};
	for (const FPlain& Entry : Plain)
	{
		if (Name == Entry.Name)
		{
			if (bHasValue)
			{
				Error = "the fault \"" + Name + "\" takes no value";
				return false;
			}
			Fault.Kind = Entry.Kind;
			Out = Fault;
			return true;
		}
	}
	struct FValued
	{
		const char* Name;
		EZnFaultKind Kind;
		int64_t Lowest;
		int64_t Highest;
		const char* Expect;
	};
	static const FValued Valued[] = {
		{"delay", EZnFaultKind::Delay, 0, 600000, "milliseconds from 0 to 600000"},
		{"status", EZnFaultKind::Status, 100, 599, "an HTTP status from 100 to 599"},
		{"code", EZnFaultKind::Code, INT32_MIN, INT32_MAX, "a 32-bit integer"},
		{"restatus", EZnFaultKind::Restatus, 100, 599, "an HTTP status from 100 to 599"},
	};
	if (Name == "reply")
	{
		if (Value.empty())
		{
			Error = "the fault \"reply=<name>\" needs the name of a hosted file";
			return false;
		}
		Fault.Kind = EZnFaultKind::Reply;
		Fault.Name = Value;
		Out = Fault;
		return true;
	}
	for (const FValued& Entry : Valued)
	{
		if (Name == Entry.Name)
		{
			if (!ParseInteger(Value, Entry.Lowest, Entry.Highest, Fault.Value))
			{
				Error = "the fault \"" + Name + "=<value>\" needs " + Entry.Expect + ", not \"" + Value + "\"";
				return false;
			}
			Fault.Kind = Entry.Kind;
			Out = Fault;
			return true;
		}
	}
	Error = "unknown fault \"" + Text +
		"\" (expected delay=<ms>, status=<code>, drop, truncate, malformed, code=<n> or stall)";
	return false;
}

std::string FZnServiceFault::ToString() const
{
	switch (Kind)
	{
		case EZnFaultKind::Delay:
			return "delay=" + std::to_string(Value);
		case EZnFaultKind::Status:
			return "status=" + std::to_string(Value);
		case EZnFaultKind::Drop:
			return "drop";
		case EZnFaultKind::Truncate:
			return "truncate";
		case EZnFaultKind::Malformed:
			return "malformed";
		case EZnFaultKind::Code:
			return "code=" + std::to_string(Value);
		case EZnFaultKind::Stall:
			return "stall";
		case EZnFaultKind::Restatus:
			return "restatus=" + std::to_string(Value);
		case EZnFaultKind::Reply:
			return "reply=" + Name;
		default:
			return "";
	}
}
