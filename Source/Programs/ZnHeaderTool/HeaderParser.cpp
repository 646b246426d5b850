#include "HeaderParser.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace ZnHeaderTool
{
void FMetaData::Set(const std::string& Key, const std::string& Value)
{
	for (auto& P : Pairs)
	{
		if (P.first == Key)
		{
			P.second = Value;
			return;
		}
	}
	Pairs.emplace_back(Key, Value);
}

const std::string* FMetaData::Find(const std::string& Key) const
{
	for (const auto& P : Pairs)
	{
		if (P.first == Key)
		{
			return &P.second;
		}
	}
	return nullptr;
}

bool FSpecifiers::Has(const std::string& Key) const
{
	return Find(Key) != nullptr;
}

const std::string* FSpecifiers::Find(const std::string& Key) const
{
	for (const auto& P : Items)
	{
		if (P.first.size() == Key.size() &&
			std::equal(P.first.begin(), P.first.end(), Key.begin(),
				[](char A, char B)
				{ return std::tolower(static_cast<unsigned char>(A)) == std::tolower(static_cast<unsigned char>(B)); }))
		{
			return &P.second;
		}
	}
	return nullptr;
}

std::string FTypeRef::ValueCpp() const
{
	std::string S = Name;
	if (!Arguments.empty())
	{
		S += "<";
		for (size_t I = 0; I < Arguments.size(); ++I)
		{
			S += (I ? ", " : "") + Arguments[I].ValueCpp();
		}
		S += ">";
	}
	if (bPointer)
	{
		S += "*";
	}
	return S;
}

namespace
{
/** The text inside a string literal, escapes resolved (the literal is UTF-8 source text). */
std::string UnquoteLiteral(const std::string& Literal)
{
	size_t Q = Literal.find('"');
	if (Q == std::string::npos)
	{
		Q = Literal.find('\'');
	}
	if (Q == std::string::npos)
	{
		return Literal;
	}
	if (Q > 0 && Literal[Q - 1] == 'R')
	{
		const size_t Open = Literal.find('(', Q);
		const size_t Close = Literal.rfind(')');
		return Literal.substr(Open + 1, Close - Open - 1);
	}
	std::string Out;
	for (size_t I = Q + 1; I + 1 < Literal.size(); ++I)
	{
		char C = Literal[I];
		if (C == '\\' && I + 2 < Literal.size())
		{
			const char E = Literal[++I];
			switch (E)
			{
				case 'n':
					Out += '\n';
					break;
				case 't':
					Out += '\t';
					break;
				case 'r':
					Out += '\r';
					break;
				case '0':
					Out += '\0';
					break;
				default:
					Out += E;
					break;
			}
			continue;
		}
		Out += C;
	}
	return Out;
}

bool IsApiMacro(const std::string& S)
{
	if (S.size() < 5 || S.compare(S.size() - 4, 4, "_API") != 0)
	{
		return false;
	}
	for (char C : S)
	{
		if (!(std::isupper(static_cast<unsigned char>(C)) || std::isdigit(static_cast<unsigned char>(C)) || C == '_'))
		{
			return false;
		}
	}
	return true;
}

class FParser
{
public:
	FParser(const std::string& InPath, std::vector<FToken> InTokens)
		: Path(InPath)
		, Tokens(std::move(InTokens))
	{
	}

	void ParseFile(FHeaderDecl& Out)
	{
		FSpecifiers PendingDelegateSpecifiers;
		bool bHasPendingDelegate = false;
		std::string PendingDelegateComment;
		while (Peek().Kind != ETokenKind::End)
		{
			const FToken& T = Peek();
			if (T.Kind == ETokenKind::Identifier)
			{
				if (T.Text == "UENUM")
				{
					Out.Enums.push_back(ParseEnum());
					continue;
				}
				if (T.Text == "USTRUCT" || T.Text == "UCLASS")
				{
					Out.Structs.push_back(ParseStruct());
					continue;
				}
				if (T.Text == "UDELEGATE")
				{
					PendingDelegateComment = T.Comment;
					Next();
					PendingDelegateSpecifiers = ParseSpecifiers();
					bHasPendingDelegate = true;
					continue;
				}
				if (T.Text.compare(0, 16, "DECLARE_DYNAMIC_") == 0)
				{
					FDelegateDecl D = ParseDelegate();
					if (bHasPendingDelegate)
					{
						D.Specifiers = PendingDelegateSpecifiers;
						D.Comment = PendingDelegateComment;
					}
					bHasPendingDelegate = false;
					Out.Delegates.push_back(std::move(D));
					continue;
				}
				if (T.Text == "UFUNCTION" || T.Text == "UPROPERTY" || T.Text == "GENERATED_BODY")
				{
					Fail(T, T.Text + " outside a reflected class or record");
				}
				if (T.Text == "UINTERFACE")
				{
					Fail(T, "interfaces are not supported");
				}
			}
			Next();
		}
	}

private:
	std::string Path;
	std::vector<FToken> Tokens;
	size_t Pos = 0;

	[[noreturn]] void Fail(const FToken& At, const std::string& What) const
	{
		throw std::runtime_error(Path + ":" + std::to_string(At.Line) + ": error: " + What);
	}

	const FToken& Peek(size_t Ahead = 0) const
	{
		const size_t I = Pos + Ahead;
		return I < Tokens.size() ? Tokens[I] : Tokens.back();
	}

	const FToken& Next()
	{
		const FToken& T = Peek();
		if (Pos < Tokens.size() - 1)
		{
			++Pos;
		}
		return T;
	}

	bool IsSym(const FToken& T, const char* S) const { return T.Kind == ETokenKind::Symbol && T.Text == S; }
	bool IsId(const FToken& T, const char* S) const { return T.Kind == ETokenKind::Identifier && T.Text == S; }

	const FToken& Expect(const char* Sym)
	{
		if (!IsSym(Peek(), Sym))
		{
			Fail(Peek(), std::string("expected '") + Sym + "' but found '" + Peek().Text + "'");
		}
		return Next();
	}

	std::string ExpectIdentifier(const char* What)
	{
		if (Peek().Kind != ETokenKind::Identifier)
		{
			Fail(Peek(), std::string("expected ") + What + " but found '" + Peek().Text + "'");
		}
		return Next().Text;
	}

	/** Tokens of a balanced group starting at an opening symbol; returns what lies between. */
	std::vector<FToken> ReadGroup(const char* Open, const char* Close)
	{
		const FToken& Start = Expect(Open);
		std::vector<FToken> Inner;
		int Depth = 1;
		while (true)
		{
			const FToken& T = Peek();
			if (T.Kind == ETokenKind::End)
			{
				Fail(Start, std::string("unbalanced '") + Open + "'");
			}
			if (IsSym(T, Open))
			{
				++Depth;
			}
			else if (IsSym(T, Close) && --Depth == 0)
			{
				Next();
				return Inner;
			}
			Inner.push_back(Next());
		}
	}

	/** Splits tokens at top-level commas (outside (), {}, [] and template brackets). */
	static std::vector<std::vector<FToken>> SplitTopLevel(const std::vector<FToken>& In)
	{
		std::vector<std::vector<FToken>> Out(1);
		int Depth = 0;
		int Angle = 0;
		for (const FToken& T : In)
		{
			if (T.Kind == ETokenKind::Symbol)
			{
				if (T.Text == "(" || T.Text == "{" || T.Text == "[")
				{
					++Depth;
				}
				else if (T.Text == ")" || T.Text == "}" || T.Text == "]")
				{
					--Depth;
				}
				else if (T.Text == "<" && Depth == 0)
				{
					++Angle;
				}
				else if (T.Text == ">" && Depth == 0 && Angle > 0)
				{
					--Angle;
				}
				else if (T.Text == "," && Depth == 0 && Angle == 0)
				{
					Out.emplace_back();
					continue;
				}
			}
			Out.back().push_back(T);
		}
		if (Out.size() == 1 && Out[0].empty())
		{
			Out.clear();
		}
		return Out;
	}

	static std::string JoinTokens(const std::vector<FToken>& In, size_t From = 0, size_t To = std::string::npos)
	{
		std::string S;
		To = std::min(To, In.size());
		for (size_t I = From; I < To; ++I)
		{
			const bool bWord = In[I].Kind != ETokenKind::Symbol;
			if (I > From && bWord && In[I - 1].Kind != ETokenKind::Symbol)
			{
				S += ' ';
			}
			S += In[I].Text;
		}
		return S;
	}

	static std::string SpecifierValue(const std::vector<FToken>& ValueTokens)
	{
		if (ValueTokens.size() == 1 && ValueTokens[0].Kind == ETokenKind::String)
		{
			return UnquoteLiteral(ValueTokens[0].Text);
		}
		if (ValueTokens.size() == 4 && ValueTokens[0].Text == "TEXT" && ValueTokens[2].Kind == ETokenKind::String)
		{
			return UnquoteLiteral(ValueTokens[2].Text);
		}
		return JoinTokens(ValueTokens);
	}

	void ParseMetaList(const std::vector<FToken>& List, FMetaData& Meta, const FToken& At)
	{
		for (const auto& Item : SplitTopLevel(List))
		{
			if (Item.empty())
			{
				continue;
			}
			if (Item[0].Kind != ETokenKind::Identifier && Item[0].Kind != ETokenKind::String)
			{
				Fail(At, "malformed meta entry '" + JoinTokens(Item) + "'");
			}
			const std::string Key = Item[0].Kind == ETokenKind::String ? UnquoteLiteral(Item[0].Text) : Item[0].Text;
			if (Item.size() == 1)
			{
				Meta.Set(Key, "");
				continue;
			}
			if (!IsSym(Item[1], "="))
			{
				Fail(At, "malformed meta entry '" + JoinTokens(Item) + "'");
			}
			Meta.Set(Key, SpecifierValue(std::vector<FToken>(Item.begin() + 2, Item.end())));
		}
	}

	FSpecifiers ParseSpecifiers()
	{
		const FToken At = Peek();
		FSpecifiers Out;
		const std::vector<FToken> Group = ReadGroup("(", ")");
		for (const auto& Item : SplitTopLevel(Group))
		{
			if (Item.empty())
			{
				continue;
			}
			if (Item[0].Kind != ETokenKind::Identifier)
			{
				Fail(At, "malformed specifier '" + JoinTokens(Item) + "'");
			}
			const std::string Key = Item[0].Text;
			if (Item.size() == 1)
			{
				Out.Items.emplace_back(Key, "");
				continue;
			}
			if (!IsSym(Item[1], "="))
			{
				Fail(At, "malformed specifier '" + JoinTokens(Item) + "'");
			}
			std::vector<FToken> Value(Item.begin() + 2, Item.end());
			std::string Lower = Key;
			for (char& C : Lower)
			{
				C = static_cast<char>(std::tolower(static_cast<unsigned char>(C)));
			}
			if (Lower == "meta")
			{
				if (Value.size() < 2 || !IsSym(Value.front(), "(") || !IsSym(Value.back(), ")"))
				{
					Fail(At, "meta must be followed by a parenthesised list");
				}
				ParseMetaList(std::vector<FToken>(Value.begin() + 1, Value.end() - 1), Out.Meta, At);
				continue;
			}
			Out.Items.emplace_back(Key, SpecifierValue(Value));
		}
		return Out;
	}

	FEnumDecl ParseEnum()
	{
		FEnumDecl E;
		E.Comment = Peek().Comment;
		E.Line = Peek().Line;
		Next();
		E.Specifiers = ParseSpecifiers();
		if (!IsId(Peek(), "enum"))
		{
			Fail(Peek(), "UENUM must be followed by an enum declaration");
		}
		Next();
		if (IsId(Peek(), "class") || IsId(Peek(), "struct"))
		{
			E.bEnumClass = true;
			Next();
		}
		E.Name = ExpectIdentifier("an enumeration name");
		if (IsSym(Peek(), ":"))
		{
			Next();
			E.Underlying = ExpectIdentifier("an underlying type");
		}
		const std::vector<FToken> Body = ReadGroup("{", "}");
		long long NextValue = 0;
		for (const auto& Item : SplitTopLevel(Body))
		{
			if (Item.empty())
			{
				continue;
			}
			FEnumValue V;
			if (Item[0].Kind != ETokenKind::Identifier)
			{
				Fail(Item[0], "malformed enumerator");
			}
			V.Name = Item[0].Text;
			V.Comment = Item[0].Comment;
			size_t I = 1;
			if (I < Item.size() && IsSym(Item[I], "="))
			{
				++I;
				std::string Number;
				while (I < Item.size() && !IsId(Item[I], "UMETA"))
				{
					Number += Item[I++].Text;
				}
				char* End = nullptr;
				const long long Value = std::strtoll(Number.c_str(), &End, 0);
				if (Number.empty() || End == nullptr || *End != '\0')
				{
					Fail(Item[0], "enumerator value '" + Number + "' is not an integer literal");
				}
				NextValue = Value;
			}
			V.Value = NextValue++;
			if (I < Item.size() && IsId(Item[I], "UMETA"))
			{
				// Re-parse the UMETA group with the token reader.
				std::vector<FToken> Group(Item.begin() + I + 1, Item.end());
				if (Group.size() < 2 || !IsSym(Group.front(), "(") || !IsSym(Group.back(), ")"))
				{
					Fail(Item[I], "malformed UMETA");
				}
				ParseMetaList(std::vector<FToken>(Group.begin() + 1, Group.end() - 1), V.Specifiers.Meta, Item[I]);
				I = Item.size();
			}
			if (I != Item.size())
			{
				Fail(Item[0], "unexpected text after enumerator " + V.Name);
			}
			E.Values.push_back(std::move(V));
		}
		if (E.Values.empty())
		{
			Fail(Peek(), "enumeration " + E.Name + " has no values");
		}
		return E;
	}

	FTypeRef ParseType(const std::vector<FToken>& In, size_t& I, const FToken& At)
	{
		FTypeRef T;
		while (I < In.size() &&
			(IsId(In[I], "const") || IsId(In[I], "class") || IsId(In[I], "struct") || IsId(In[I], "enum") ||
				IsId(In[I], "typename")))
		{
			T.bConst |= In[I].Text == "const";
			++I;
		}
		if (I >= In.size() || In[I].Kind != ETokenKind::Identifier)
		{
			Fail(At, "expected a type");
		}
		T.Name = In[I++].Text;
		while (I + 1 < In.size() && IsSym(In[I], "::") && In[I + 1].Kind == ETokenKind::Identifier)
		{
			T.Name += "::" + In[I + 1].Text;
			I += 2;
		}
		if (T.Name == "unsigned" || T.Name == "signed")
		{
			Fail(At, "spell integer types the engine's way (int32, uint8, ...)");
		}
		if (I < In.size() && IsSym(In[I], "<"))
		{
			++I;
			while (true)
			{
				T.Arguments.push_back(ParseType(In, I, At));
				if (I < In.size() && IsSym(In[I], ","))
				{
					++I;
					continue;
				}
				if (I < In.size() && IsSym(In[I], ">"))
				{
					++I;
					break;
				}
				Fail(At, "malformed template arguments of " + T.Name);
			}
		}
		while (I < In.size())
		{
			if (IsSym(In[I], "*"))
			{
				if (T.bPointer)
				{
					Fail(At, "pointers to pointers are not reflected");
				}
				T.bPointer = true;
			}
			else if (IsSym(In[I], "&"))
			{
				T.bReference = true;
			}
			else if (IsId(In[I], "const"))
			{
				if (!T.bPointer)
				{
					T.bConst = true;
				}
			}
			else
			{
				break;
			}
			++I;
		}
		if (T.Name == "TObjectPtr" && T.Arguments.size() == 1 && !T.bPointer)
		{
			FTypeRef Inner = T.Arguments[0];
			Inner.bPointer = true;
			Inner.bConst = T.bConst;
			Inner.bReference = T.bReference;
			T = Inner;
		}
		return T;
	}

	/** Type, name and default of one declaration such as "const FString& Name = TEXT(\"x\")". */
	FVariable ParseDeclarator(std::vector<FToken> In, const FToken& At, bool bAllowDefault)
	{
		FVariable V;
		V.Line = At.Line;
		if (!In.empty() && IsId(In[0], "UPARAM"))
		{
			std::vector<FToken> Rest(In.begin() + 1, In.end());
			// Reuse the specifier reader on a private token list.
			FParser Sub(Path, Rest);
			Sub.Tokens.push_back(FToken());
			V.Specifiers = Sub.ParseSpecifiers();
			V.bHasUParam = true;
			In.assign(Sub.Tokens.begin() + Sub.Pos, Sub.Tokens.end() - 1);
		}
		size_t Split = In.size();
		int Depth = 0;
		for (size_t I = 0; I < In.size(); ++I)
		{
			if (IsSym(In[I], "(") || IsSym(In[I], "<") || IsSym(In[I], "["))
			{
				++Depth;
			}
			else if (IsSym(In[I], ")") || IsSym(In[I], ">") || IsSym(In[I], "]"))
			{
				--Depth;
			}
			else if (Depth == 0 && (IsSym(In[I], "=") || IsSym(In[I], "{")))
			{
				Split = I;
				break;
			}
		}
		if (Split < In.size())
		{
			if (!bAllowDefault)
			{
				Fail(At, "unexpected default value");
			}
			std::vector<FToken> Default(In.begin() + Split + (IsSym(In[Split], "=") ? 1 : 0), In.end());
			if (IsSym(In[Split], "{") && !Default.empty())
			{
				Default.pop_back();
			}
			V.bHasDefault = true;
			V.DefaultText = DefaultValueText(Default);
		}
		std::vector<FToken> Decl(In.begin(), In.begin() + Split);
		// A bit-field width is not part of the name.
		if (Decl.size() >= 2 && IsSym(Decl[Decl.size() - 2], ":"))
		{
			Decl.resize(Decl.size() - 2);
		}
		if (Decl.size() < 2 || Decl.back().Kind != ETokenKind::Identifier)
		{
			Fail(At, "cannot read the declaration '" + JoinTokens(In) + "' (a reflected parameter needs a name)");
		}
		V.Name = Decl.back().Text;
		Decl.pop_back();
		size_t I = 0;
		V.Type = ParseType(Decl, I, At);
		if (I != Decl.size())
		{
			Fail(At, "cannot read the type '" + JoinTokens(Decl) + "'");
		}
		return V;
	}

	FStructDecl ParseStruct()
	{
		FStructDecl S;
		S.bIsClass = Peek().Text == "UCLASS";
		S.Comment = Peek().Comment;
		S.Line = Peek().Line;
		Next();
		S.Specifiers = ParseSpecifiers();
		const bool bClassKeyword = IsId(Peek(), "class");
		if (!bClassKeyword && !IsId(Peek(), "struct"))
		{
			Fail(Peek(), std::string(S.bIsClass ? "UCLASS" : "USTRUCT") + " must be followed by a class or struct");
		}
		Next();
		if (Peek().Kind == ETokenKind::Identifier && IsApiMacro(Peek().Text))
		{
			S.ApiMacro = Next().Text;
		}
		S.Name = ExpectIdentifier("a type name");
		if (IsId(Peek(), "final"))
		{
			Next();
		}
		if (IsSym(Peek(), ":"))
		{
			Next();
			bool bFirst = true;
			while (!IsSym(Peek(), "{"))
			{
				if (IsId(Peek(), "public") || IsId(Peek(), "protected") || IsId(Peek(), "private") ||
					IsId(Peek(), "virtual"))
				{
					Next();
					continue;
				}
				if (IsSym(Peek(), ","))
				{
					bFirst = false;
					Next();
					continue;
				}
				const std::string Base = ExpectIdentifier("a base class");
				if (bFirst)
				{
					S.Super = Base;
				}
				if (IsSym(Peek(), "<"))
				{
					Fail(Peek(), "a reflected type cannot derive from a template");
				}
			}
		}
		if (S.bIsClass && S.Super.empty())
		{
			Fail(Peek(), "a UCLASS must derive from UObject or one of its subclasses");
		}
		Expect("{");
		std::string Access = bClassKeyword ? "private" : "public";
		while (true)
		{
			const FToken& T = Peek();
			if (T.Kind == ETokenKind::End)
			{
				Fail(T, "unterminated body of " + S.Name);
			}
			if (IsSym(T, "}"))
			{
				Next();
				break;
			}
			if (IsSym(T, "{"))
			{
				ReadGroup("{", "}");
				continue;
			}
			if ((IsId(T, "public") || IsId(T, "protected") || IsId(T, "private")) && IsSym(Peek(1), ":"))
			{
				Access = T.Text;
				Next();
				Next();
				continue;
			}
			if (IsId(T, "GENERATED_BODY") || IsId(T, "GENERATED_UCLASS_BODY") || IsId(T, "GENERATED_USTRUCT_BODY"))
			{
				if (S.GeneratedBodyLine != 0)
				{
					Fail(T, "second GENERATED_BODY in " + S.Name);
				}
				S.GeneratedBodyLine = T.Line;
				Next();
				ReadGroup("(", ")");
				if (S.bIsClass)
				{
					// The generated body leaves the class in private access, as the engine's does.
					Access = T.Text == "GENERATED_UCLASS_BODY" ? "public" : "private";
				}
				continue;
			}
			if (IsId(T, "UPROPERTY"))
			{
				S.Properties.push_back(ParseProperty(Access));
				continue;
			}
			if (IsId(T, "UFUNCTION"))
			{
				if (!S.bIsClass)
				{
					Fail(T, "UFUNCTION in a record (USTRUCT) is not allowed");
				}
				S.Functions.push_back(ParseFunction(Access));
				continue;
			}
			if (IsId(T, "UENUM") || IsId(T, "USTRUCT") || IsId(T, "UCLASS"))
			{
				Fail(T, "nested reflected types are not supported");
			}
			Next();
		}
		if (S.GeneratedBodyLine == 0)
		{
			Fail(Peek(), S.Name + " has no GENERATED_BODY()");
		}
		return S;
	}

	FVariable ParseProperty(const std::string& Access)
	{
		const FToken At = Peek();
		Next();
		FSpecifiers Specs = ParseSpecifiers();
		std::vector<FToken> Decl;
		int Depth = 0;
		while (true)
		{
			const FToken& T = Peek();
			if (T.Kind == ETokenKind::End)
			{
				Fail(At, "unterminated UPROPERTY declaration");
			}
			if (Depth == 0 && IsSym(T, ";"))
			{
				Next();
				break;
			}
			if (IsSym(T, "(") || IsSym(T, "{") || IsSym(T, "["))
			{
				++Depth;
			}
			else if (IsSym(T, ")") || IsSym(T, "}") || IsSym(T, "]"))
			{
				--Depth;
			}
			Decl.push_back(Next());
		}
		FVariable V = ParseDeclarator(Decl, Decl.empty() ? At : Decl[0], true);
		V.Specifiers = Specs;
		V.Comment = At.Comment;
		V.Access = Access;
		V.Line = At.Line;
		if (V.Type.bReference)
		{
			Fail(At, "a reflected property cannot be a reference");
		}
		return V;
	}

	FFunctionDecl ParseFunction(const std::string& Access)
	{
		FFunctionDecl F;
		F.Comment = Peek().Comment;
		F.Line = Peek().Line;
		F.Access = Access;
		const FToken At = Next();
		F.Specifiers = ParseSpecifiers();
		std::vector<FToken> Head;
		while (!IsSym(Peek(), "("))
		{
			if (Peek().Kind == ETokenKind::End || IsSym(Peek(), ";") || IsSym(Peek(), "{"))
			{
				Fail(At, "UFUNCTION must be followed by a function declaration");
			}
			const FToken& T = Next();
			if (IsId(T, "static"))
			{
				F.bStatic = true;
				continue;
			}
			if (IsId(T, "virtual"))
			{
				F.bVirtual = true;
				continue;
			}
			if (IsId(T, "inline") || IsId(T, "FORCEINLINE") || IsId(T, "explicit") ||
				(T.Kind == ETokenKind::Identifier && IsApiMacro(T.Text)))
			{
				continue;
			}
			Head.push_back(T);
		}
		if (Head.size() < 2 || Head.back().Kind != ETokenKind::Identifier)
		{
			Fail(At, "cannot read the function declaration");
		}
		F.Name = Head.back().Text;
		Head.pop_back();
		if (!(Head.size() == 1 && IsId(Head[0], "void")))
		{
			size_t I = 0;
			F.Return = ParseType(Head, I, At);
			F.bHasReturn = true;
			if (I != Head.size())
			{
				Fail(At, "cannot read the return type of " + F.Name);
			}
		}
		const std::vector<FToken> ParamTokens = ReadGroup("(", ")");
		for (const auto& Item : SplitTopLevel(ParamTokens))
		{
			if (Item.size() == 1 && IsId(Item[0], "void"))
			{
				continue;
			}
			FVariable P = ParseDeclarator(Item, Item.empty() ? At : Item[0], true);
			P.Line = Item.empty() ? At.Line : Item[0].Line;
			F.Params.push_back(std::move(P));
		}
		// Qualifiers and the body or terminator.
		while (true)
		{
			const FToken& T = Peek();
			if (IsId(T, "const"))
			{
				F.bConst = true;
				Next();
				continue;
			}
			if (IsId(T, "override") || IsId(T, "final"))
			{
				Next();
				continue;
			}
			if (IsSym(T, "="))
			{
				Next();
				Next();
				continue;
			}
			if (IsSym(T, ";"))
			{
				Next();
				break;
			}
			if (IsSym(T, "{"))
			{
				ReadGroup("{", "}");
				break;
			}
			Fail(T, "unexpected '" + T.Text + "' after the declaration of " + F.Name);
		}
		return F;
	}

	FDelegateDecl ParseDelegate()
	{
		const FToken At = Peek();
		FDelegateDecl D;
		D.Line = At.Line;
		D.Comment = At.Comment;
		const std::string Macro = Next().Text;
		D.bMulticast = Macro.compare(0, 26, "DECLARE_DYNAMIC_MULTICAST_") == 0;
		if (Macro.find("RetVal") != std::string::npos)
		{
			Fail(At, "delegates with a return value are not supported");
		}
		const auto Args = SplitTopLevel(ReadGroup("(", ")"));
		if (Args.empty() || Args[0].size() != 1 || Args[0][0].Kind != ETokenKind::Identifier)
		{
			Fail(At, "a delegate declaration starts with the delegate's name");
		}
		D.Name = Args[0][0].Text;
		if ((Args.size() - 1) % 2 != 0)
		{
			Fail(At, "delegate parameters come as type, name pairs");
		}
		for (size_t I = 1; I + 1 < Args.size(); I += 2)
		{
			std::vector<FToken> Decl = Args[I];
			if (Args[I + 1].size() != 1 || Args[I + 1][0].Kind != ETokenKind::Identifier)
			{
				Fail(At, "malformed parameter name in " + D.Name);
			}
			Decl.push_back(Args[I + 1][0]);
			FVariable P = ParseDeclarator(Decl, At, false);
			D.Params.push_back(std::move(P));
		}
		if (IsSym(Peek(), ";"))
		{
			Next();
		}
		return D;
	}
};

std::string FormatFloat(double Value)
{
	char Buffer[64];
	std::snprintf(Buffer, sizeof(Buffer), "%f", Value);
	return Buffer;
}
} // namespace

std::string DefaultValueText(const std::vector<FToken>& In)
{
	if (In.empty())
	{
		return "";
	}
	// TEXT("x"), "x", FString(TEXT("x")), FString("x")
	std::vector<FToken> T = In;
	auto Unwrap = [&T](const char* Name)
	{
		if (T.size() >= 3 && T[0].Kind == ETokenKind::Identifier && T[0].Text == Name && T[1].Text == "(" &&
			T.back().Text == ")")
		{
			T = std::vector<FToken>(T.begin() + 2, T.end() - 1);
			return true;
		}
		return false;
	};
	while (Unwrap("FString") || Unwrap("TEXT") || Unwrap("FName") || Unwrap("FText"))
	{
	}
	if (T.empty())
	{
		return "";
	}
	if (T.size() == 1 && T[0].Kind == ETokenKind::String)
	{
		return UnquoteLiteral(T[0].Text);
	}
	std::string Joined;
	for (const FToken& X : T)
	{
		Joined += X.Text;
	}
	if (Joined == "true" || Joined == "false")
	{
		return Joined;
	}
	if (Joined == "nullptr" || Joined == "NULL" || Joined == "NAME_None")
	{
		return "None";
	}
	// Numbers: integers as written; floating-point in the engine's fixed six-decimal form.
	std::string Number = Joined;
	if (!Number.empty() &&
		(std::isdigit(static_cast<unsigned char>(Number[0])) ||
			((Number[0] == '-' || Number[0] == '+' || Number[0] == '.') && Number.size() > 1)))
	{
		const bool bHex = Number.find("0x") != std::string::npos || Number.find("0X") != std::string::npos;
		const bool bFloat = !bHex &&
			(Number.find('.') != std::string::npos || Number.find('e') != std::string::npos ||
				Number.find('E') != std::string::npos || Number.back() == 'f' || Number.back() == 'F');
		if (bFloat)
		{
			std::string Digits = Number;
			if (Digits.back() == 'f' || Digits.back() == 'F')
			{
				Digits.pop_back();
			}
			return FormatFloat(std::strtod(Digits.c_str(), nullptr));
		}
		while (!Number.empty() && std::isalpha(static_cast<unsigned char>(Number.back())) && !bHex)
		{
			Number.pop_back(); // integer suffixes u, l
		}
		if (Number[0] == '+')
		{
			Number.erase(0, 1);
		}
		return Number;
	}
	// Enum::Value and Namespace::Enum::Value give the value name.
	const size_t Colons = Joined.rfind("::");
	if (Colons != std::string::npos)
	{
		return Joined.substr(Colons + 2);
	}
	return Joined;
}

FHeaderDecl ParseHeader(const std::string& Path, const std::string& Source)
{
	FHeaderDecl H;
	H.Path = Path;
	FParser Parser(Path, Tokenize(Source, Path));
	Parser.ParseFile(H);
	return H;
}
} // namespace ZnHeaderTool
