// FName: an identifier compared without regard to ASCII case ("Bone" == "BONE"). This build
// keeps the text in each FName rather than in the engine's global name table, so ToString()
// returns the spelling the FName was made from (the engine returns the first spelling it saw).
#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"

enum EName
{
	NAME_None = 0,
};

enum EFindName
{
	FNAME_Find,
	FNAME_Add,
};

class FName
{
public:
	/** NAME_None. */
	FName() = default;
	FName(EName) {}
	/** "None" (any case) and empty text give NAME_None, as in the engine. */
	FName(const TCHAR* Name, EFindName FindType = FNAME_Add)
		: Text(Normalise(FString(Name)))
	{
	}
	FName(const ANSICHAR* Name, EFindName FindType = FNAME_Add)
		: Text(Normalise(FString(Name)))
	{
	}
	explicit FName(const FString& Name, EFindName FindType = FNAME_Add)
		: Text(Normalise(Name))
	{
	}
	FName(int32 Len, const TCHAR* Name)
		: Text(Normalise(FString(Len, Name)))
	{
	}

	/** The text, or "None" for NAME_None. */
	FString ToString() const { return Text.IsEmpty() ? FString(TEXT("None")) : Text; }
	void ToString(FString& Out) const { Out = ToString(); }
	void AppendString(FString& Out) const { Out += ToString(); }
	FString GetPlainNameString() const { return ToString(); }
	bool IsNone() const { return Text.IsEmpty(); }
	bool IsValid() const { return true; }

	/** Case-insensitive, as the engine. */
	bool IsEqual(const FName& Other) const { return Text == Other.Text; }
	bool operator==(const FName& Other) const { return Text == Other.Text; }
	bool operator!=(const FName& Other) const { return !(Text == Other.Text); }
	bool operator==(EName Other) const { return Other == NAME_None && IsNone(); }
	bool operator!=(EName Other) const { return !(*this == Other); }
	/** Alphabetical order ignoring case (the engine's lexical order). */
	bool LexicalLess(const FName& Other) const { return Text < Other.Text; }
	int32 Compare(const FName& Other) const { return FCString::Stricmp(*Text, *Other.Text); }
	/** Some total order consistent with ==; here the lexical one. */
	bool operator<(const FName& Other) const { return Text < Other.Text; }

	friend uint32 GetTypeHash(const FName& Name) { return GetTypeHash(Name.Text); }

private:
	FString Text; // empty for NAME_None

	static FString Normalise(FString Name)
	{
		if (Name.Equals(FString(TEXT("None")), ESearchCase::IgnoreCase))
		{
			Name.Empty();
		}
		return Name;
	}
};

/** Lexical "less" predicate for sorting names alphabetically. */
struct FNameLexicalLess
{
	bool operator()(const FName& A, const FName& B) const { return A.LexicalLess(B); }
};
