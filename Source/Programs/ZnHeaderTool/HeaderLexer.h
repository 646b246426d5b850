// Splits a module header into tokens, keeping the comment that stands directly before each
// token so reflected declarations can carry it as their "Comment" and "ToolTip" metadata.
#pragma once

#include <string>
#include <vector>

namespace ZnHeaderTool
{
enum class ETokenKind
{
	Identifier,
	Number,
	String,
	Char,
	Symbol,
	End
};

struct FToken
{
	ETokenKind Kind = ETokenKind::End;
	std::string Text; // for String and Char: the literal as written, quotes and prefix included
	int Line = 0;
	// The comment that ends right before this token with no blank line and no other token in
	// between, exactly as written (each line comment ends with a line feed). Comments that begin
	// with "//~" are skipped, as the engine's tool does, so a header can document a declaration
	// without turning the text into script metadata.
	std::string Comment;
	bool bFirstOnLine = false;
};

/** Tokenises Source; preprocessor lines are dropped. Throws std::runtime_error on malformed input. */
std::vector<FToken> Tokenize(const std::string& Source, const std::string& FileName);

/** The engine's tooltip form of a comment: markers and surrounding blanks removed, lines joined by line feeds. */
std::string CommentToToolTip(const std::string& Comment);
} // namespace ZnHeaderTool
