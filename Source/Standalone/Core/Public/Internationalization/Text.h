// FText: display text. This build has no localisation tables, so an FText is its source string;
// the engine-facing factory functions exist so that module code reads the same in both builds.
#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"

class FText
{
public:
	FText() = default;

	static FText FromString(const FString& String) { return FText(String); }
	static FText FromString(FString&& String) { return FText(MoveTemp(String)); }
	static FText AsCultureInvariant(const FString& String) { return FText(String); }
	static FText FromName(const class FName& Name);
	static const FText& GetEmpty()
	{
		static const FText Empty;
		return Empty;
	}
	static FText AsNumber(int32 Value) { return FText(FString::FromInt(Value)); }

	const FString& ToString() const { return Source; }
	bool IsEmpty() const { return Source.IsEmpty(); }
	bool EqualTo(const FText& Other) const { return Source.Equals(Other.Source); }

private:
	explicit FText(FString InSource)
		: Source(MoveTemp(InSource))
	{
	}
	FString Source;
};

/** Localisable text literal; without localisation it is the literal itself. */
#define LOCTEXT(InKey, InTextLiteral) FText::FromString(FString(TEXT(InTextLiteral)))
#define NSLOCTEXT(InNamespace, InKey, InTextLiteral) FText::FromString(FString(TEXT(InTextLiteral)))
#define INVTEXT(InTextLiteral) FText::FromString(FString(TEXT(InTextLiteral)))
