#include "HeaderLexer.h"

#include <cctype>
#include <stdexcept>

namespace ZnHeaderTool
{
namespace
{
bool IsIdentStart(char C)
{
	return std::isalpha(static_cast<unsigned char>(C)) || C == '_' || (static_cast<unsigned char>(C) >= 0x80);
}

bool IsIdentChar(char C)
{
	return IsIdentStart(C) || std::isdigit(static_cast<unsigned char>(C));
}

std::string TrimCopy(const std::string& S)
{
	size_t B = 0;
	size_t E = S.size();
	while (B < E && std::isspace(static_cast<unsigned char>(S[B])))
	{
		++B;
	}
	while (E > B && std::isspace(static_cast<unsigned char>(S[E - 1])))
	{
		--E;
	}
	return S.substr(B, E - B);
}
} // namespace

std::vector<FToken> Tokenize(const std::string& Src, const std::string& FileName)
{
	std::vector<FToken> Tokens;
	std::string PendingComment;
	int Line = 1;
	bool bAtLineStart = true; // only blanks seen since the last line feed
	int NewlinesSinceComment = 0; // a blank line between a comment and a declaration detaches it
	bool bFirstOnLine = true;
	size_t I = 0;
	const size_t N = Src.size();

	auto Fail = [&](const std::string& What)
	{ throw std::runtime_error(FileName + ":" + std::to_string(Line) + ": " + What); };

	auto Push = [&](ETokenKind Kind, std::string Text, int TokLine)
	{
		FToken T;
		T.Kind = Kind;
		T.Text = std::move(Text);
		T.Line = TokLine;
		T.Comment = PendingComment;
		T.bFirstOnLine = bFirstOnLine;
		PendingComment.clear();
		bFirstOnLine = false;
		bAtLineStart = false;
		Tokens.push_back(std::move(T));
	};

	while (I < N)
	{
		const char C = Src[I];
		if (C == '\n')
		{
			++Line;
			++I;
			bAtLineStart = true;
			bFirstOnLine = true;
			if (++NewlinesSinceComment >= 2)
			{
				PendingComment.clear();
			}
			continue;
		}
		if (std::isspace(static_cast<unsigned char>(C)))
		{
			++I;
			continue;
		}
		if (C == '#' && bAtLineStart)
		{
			// A preprocessor line, with its continuations; it separates a comment from what follows.
			while (I < N && Src[I] != '\n')
			{
				if (Src[I] == '\\' && I + 1 < N && Src[I + 1] == '\n')
				{
					++Line;
					I += 2;
					continue;
				}
				if (Src[I] == '/' && I + 1 < N && Src[I + 1] == '*')
				{
					const size_t End = Src.find("*/", I + 2);
					if (End == std::string::npos)
					{
						Fail("unterminated comment");
					}
					for (size_t K = I; K < End; ++K)
					{
						Line += Src[K] == '\n';
					}
					I = End + 2;
					continue;
				}
				++I;
			}
			PendingComment.clear();
			continue;
		}
		if (C == '/' && I + 1 < N && Src[I + 1] == '/')
		{
			size_t End = Src.find('\n', I);
			if (End == std::string::npos)
			{
				End = N;
			}
			const std::string Text = Src.substr(I, End - I);
			if (Text.compare(0, 3, "//~") == 0)
			{
				PendingComment.clear();
			}
			else
			{
				if (!bAtLineStart)
				{
					// A comment after code on the same line belongs to that code, not to what follows.
					PendingComment.clear();
					NewlinesSinceComment = 2;
					I = End;
					continue;
				}
				if (NewlinesSinceComment >= 2)
				{
					PendingComment.clear();
				}
				std::string Kept = Text;
				while (!Kept.empty() && (Kept.back() == '\r' || Kept.back() == ' ' || Kept.back() == '\t'))
				{
					Kept.pop_back();
				}
				PendingComment += Kept + "\n";
			}
			NewlinesSinceComment = 0;
			I = End;
			continue;
		}
		if (C == '/' && I + 1 < N && Src[I + 1] == '*')
		{
			const size_t End = Src.find("*/", I + 2);
			if (End == std::string::npos)
			{
				Fail("unterminated comment");
			}
			const std::string Text = Src.substr(I, End + 2 - I);
			for (char K : Text)
			{
				Line += K == '\n';
			}
			if (NewlinesSinceComment >= 2 || !bAtLineStart)
			{
				PendingComment.clear();
			}
			PendingComment += Text;
			NewlinesSinceComment = 0;
			I = End + 2;
			continue;
		}

		const int TokLine = Line;
		if (NewlinesSinceComment >= 2)
		{
			PendingComment.clear();
		}
		// Literal prefixes (u8"", u"", U"", L"", R"()") belong to the literal.
		size_t Prefix = 0;
		if (IsIdentStart(C))
		{
			size_t J = I;
			while (J < N && IsIdentChar(Src[J]))
			{
				++J;
			}
			const std::string Word = Src.substr(I, J - I);
			if (J < N && (Src[J] == '"' || Src[J] == '\'') &&
				(Word == "u8" || Word == "u" || Word == "U" || Word == "L" || Word == "R" || Word == "u8R" ||
					Word == "uR" || Word == "UR" || Word == "LR"))
			{
				Prefix = Word.size();
			}
			else
			{
				Push(ETokenKind::Identifier, Word, TokLine);
				I = J;
				NewlinesSinceComment = 2;
				continue;
			}
		}
		const size_t Start = I;
		const char Q = Src[I + Prefix];
		if (Q == '"' || Q == '\'')
		{
			const bool bRaw = Prefix > 0 && Src[I + Prefix - 1] == 'R';
			size_t J = I + Prefix + 1;
			if (bRaw)
			{
				const size_t Open = Src.find('(', J);
				if (Open == std::string::npos)
				{
					Fail("malformed raw string");
				}
				const std::string Close = ")" + Src.substr(J, Open - J) + "\"";
				const size_t End = Src.find(Close, Open);
				if (End == std::string::npos)
				{
					Fail("unterminated raw string");
				}
				J = End + Close.size();
			}
			else
			{
				while (J < N && Src[J] != Q)
				{
					if (Src[J] == '\\')
					{
						++J;
					}
					if (J < N && Src[J] == '\n')
					{
						Fail("line feed in a literal");
					}
					++J;
				}
				if (J >= N)
				{
					Fail("unterminated literal");
				}
				++J;
			}
			std::string Text = Src.substr(Start, J - Start);
			for (char K : Text)
			{
				Line += K == '\n';
			}
			Push(Q == '"' ? ETokenKind::String : ETokenKind::Char, Text, TokLine);
			I = J;
			NewlinesSinceComment = 2;
			continue;
		}
		if (std::isdigit(static_cast<unsigned char>(C)) ||
			(C == '.' && I + 1 < N && std::isdigit(static_cast<unsigned char>(Src[I + 1]))))
		{
			size_t J = I;
			while (J < N)
			{
				const char D = Src[J];
				if (IsIdentChar(D) || D == '.' || D == '\'')
				{
					++J;
				}
				else if ((D == '+' || D == '-') &&
					(Src[J - 1] == 'e' || Src[J - 1] == 'E' || Src[J - 1] == 'p' || Src[J - 1] == 'P'))
				{
					++J;
				}
				else
				{
					break;
				}
			}
			Push(ETokenKind::Number, Src.substr(I, J - I), TokLine);
			I = J;
			NewlinesSinceComment = 2;
			continue;
		}
		static const char* const Multi[] = {"...", "::", "->", "<<=", ">>=", "==", "!=", "<=", ">=", "&&", "||", "++",
			"--", "+=", "-=", "*=", "/=", "%=", "&=", "|=", "^=", "<<"};
		std::string Sym(1, C);
		for (const char* M : Multi)
		{
			const size_t L = std::char_traits<char>::length(M);
			if (Src.compare(I, L, M) == 0)
			{
				Sym = M;
				break;
			}
		}
		Push(ETokenKind::Symbol, Sym, TokLine);
		I += Sym.size();
		NewlinesSinceComment = 2;
	}
	FToken EndToken;
	EndToken.Kind = ETokenKind::End;
	EndToken.Line = Line;
	Tokens.push_back(EndToken);
	return Tokens;
}

std::string CommentToToolTip(const std::string& Comment)
{
	// Split into lines, strip the comment markers of each, then trim blank lines at both ends.
	std::vector<std::string> Lines;
	size_t Pos = 0;
	while (Pos <= Comment.size())
	{
		size_t End = Comment.find('\n', Pos);
		if (End == std::string::npos)
		{
			End = Comment.size();
		}
		std::string L = TrimCopy(Comment.substr(Pos, End - Pos));
		if (L.compare(0, 2, "//") == 0)
		{
			L = L.substr(L.compare(0, 3, "///") == 0 ? 3 : 2);
		}
		else
		{
			if (L.compare(0, 3, "/**") == 0)
			{
				L = L.substr(3);
			}
			else if (L.compare(0, 2, "/*") == 0)
			{
				L = L.substr(2);
			}
			if (L.size() >= 2 && L.compare(L.size() - 2, 2, "*/") == 0)
			{
				L = L.substr(0, L.size() - 2);
			}
			L = TrimCopy(L);
			while (!L.empty() && L[0] == '*')
			{
				L = L.substr(1);
			}
		}
		Lines.push_back(TrimCopy(L));
		if (End == Comment.size())
		{
			break;
		}
		Pos = End + 1;
	}
	while (!Lines.empty() && Lines.front().empty())
	{
		Lines.erase(Lines.begin());
	}
	while (!Lines.empty() && Lines.back().empty())
	{
		Lines.pop_back();
	}
	std::string Out;
	for (size_t K = 0; K < Lines.size(); ++K)
	{
		if (K)
		{
			Out += "\n";
		}
		Out += Lines[K];
	}
	return Out;
}
} // namespace ZnHeaderTool
