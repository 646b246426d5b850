// How the local service answers a question on the answer-collection path. It has no knowledge,
// so the reply only shows that the question arrived whole:
// 1. a question that begins with a greeting ("hello", "hi", "hey" in any ASCII case, or "你好")
//    gets "Hello! This is the local service. Ask me anything.";
// 2. one that ends with '?' or '？' gets "You asked: <question> I can only repeat questions.";
// 3. anything else gets "You said: <text>".
// White space around the question is dropped first. Pure function.
#pragma once

#include <string>

class FZnAnswerRules
{
public:
	static std::string Reply(const std::string& Question);
	static std::string Trim(const std::string& Text);
};
