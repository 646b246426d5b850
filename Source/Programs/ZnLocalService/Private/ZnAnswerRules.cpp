#include "ZnAnswerRules.h"

#include <cctype>

namespace
{
bool IsAsciiSpace(char C)
{
	return C == ' ' || C == '\t' || C == '\n' || C == '\r' || C == '\v' || C == '\f';
}

bool StartsWithWord(const std::string& Text, const std::string& Word)
{
	if (Text.size() < Word.size())
	{
		return false;
	}
	for (size_t Index = 0; Index < Word.size(); ++Index)
	{
		if (std::tolower(static_cast<unsigned char>(Text[Index])) != Word[Index])
		{
			return false;
		}
	}
	// "his" and "height" are not greetings.
	return Text.size() == Word.size() || !std::isalpha(static_cast<unsigned char>(Text[Word.size()]));
}

bool EndsWith(const std::string& Text, const std::string& Tail)
{
	return Text.size() >= Tail.size() && Text.compare(Text.size() - Tail.size(), Tail.size(), Tail) == 0;
}
} // namespace

std::string FZnAnswerRules::Trim(const std::string& Text)
{
	size_t Begin = 0;
	size_t End = Text.size();
	while (Begin < End && IsAsciiSpace(Text[Begin]))
	{
		++Begin;
	}
	while (End > Begin && IsAsciiSpace(Text[End - 1]))
	{
		--End;
	}
	return Text.substr(Begin, End - Begin);
}

std::string FZnAnswerRules::Reply(const std::string& Question)
{
	const std::string Text = Trim(Question);
	if (StartsWithWord(Text, "hello") || StartsWithWord(Text, "hi") || StartsWithWord(Text, "hey") ||
		Text.rfind("你好", 0) == 0)
	{
		return "Hello! This is the local service. Ask me anything.";
	}
	if (EndsWith(Text, "?") || EndsWith(Text, "？"))
	{
		return "You asked: " + Text + " I can only repeat questions.";
	}
	return "You said: " + Text;
}
