// Modal message boxes.
//
// The standalone build has no windows: a message box becomes one line on standard error and one
// log line (category LogMessageDialog, verbosity Display), both "<Title>: <Message>", and the
// call returns at once with the answer a user would give to the only or first button. A host or
// test may install an observer that sees every box and picks the answer.
#pragma once

#include "CoreTypes.h"
#include "Internationalization/Text.h"

#include <functional>

namespace EAppMsgType
{
enum Type
{
	Ok,
	YesNo,
	OkCancel,
	YesNoCancel,
	CancelRetryContinue,
	YesNoYesAllNoAll,
	YesNoYesAllNoAllCancel,
	YesNoYesAll,
};
}

namespace EAppReturnType
{
enum Type
{
	No,
	Yes,
	YesAll,
	NoAll,
	Cancel,
	Ok,
	Retry,
	Continue,
};
}

class CORE_API FMessageDialog
{
public:
	// Shows Message with the buttons of MessageType, titled OptTitle (or "Message" when null), and
	// waits for the answer. Game thread only.
	static EAppReturnType::Type Open(
		EAppMsgType::Type MessageType, const FText& Message, const FText* OptTitle = nullptr);
	static EAppReturnType::Type Open(EAppMsgType::Type MessageType, const FText& Message, const FText& Title);

	// Standalone only: Observer sees every box (type, message, title) and returns the answer; the
	// console and log lines are still written. An empty observer removes it.
	using FStandaloneObserver = std::function<EAppReturnType::Type(EAppMsgType::Type, const FText&, const FText&)>;
	static void SetStandaloneObserver(FStandaloneObserver Observer);
};
