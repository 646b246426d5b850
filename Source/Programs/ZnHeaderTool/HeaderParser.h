// Reads the reflection markup of module headers into a plain description of the reflected
// types, which CodeGenerator turns into the generated headers and registration code.
#pragma once

#include "HeaderLexer.h"

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace ZnHeaderTool
{
/** Ordered key/value metadata; setting a key again replaces its value in place. */
struct FMetaData
{
	std::vector<std::pair<std::string, std::string>> Pairs;

	void Set(const std::string& Key, const std::string& Value);
	const std::string* Find(const std::string& Key) const;
};

/** One specifier of a markup macro: Key, Key = Value, or meta = (...) expanded into Meta. */
struct FSpecifiers
{
	std::vector<std::pair<std::string, std::string>> Items;
	FMetaData Meta;

	bool Has(const std::string& Key) const;
	const std::string* Find(const std::string& Key) const;
};

/** A reflected C++ type as written (template arguments, pointer, const and reference stripped apart). */
struct FTypeRef
{
	std::string Name; // "FString", "TArray", "UZnDM_HttpRequest", "ZnRegion", ...
	std::vector<FTypeRef> Arguments; // template arguments
	bool bConst = false;
	bool bPointer = false;
	bool bReference = false;

	/** The value type as it is stored in a parameter block or record, e.g. "TArray<uint8>" or "UObject*". */
	std::string ValueCpp() const;
};

struct FVariable
{
	std::string Name;
	FTypeRef Type;
	FSpecifiers Specifiers; // UPROPERTY(...) or UPARAM(...)
	bool bHasUParam = false;
	bool bHasDefault = false;
	std::string DefaultText; // the engine's textual form of the declared C++ default
	std::string Comment;
	std::string Access = "public";
	int Line = 0;
};

struct FFunctionDecl
{
	std::string Name;
	FSpecifiers Specifiers;
	std::vector<FVariable> Params;
	bool bHasReturn = false;
	FTypeRef Return;
	bool bStatic = false;
	bool bConst = false;
	bool bVirtual = false;
	std::string Comment;
	std::string Access = "public";
	int Line = 0;
};

struct FEnumValue
{
	std::string Name;
	long long Value = 0;
	FSpecifiers Specifiers; // UMETA(...)
	std::string Comment;
};

struct FEnumDecl
{
	std::string Name;
	std::string Underlying; // "uint8" or empty
	bool bEnumClass = false;
	std::vector<FEnumValue> Values;
	FSpecifiers Specifiers;
	std::string Comment;
	int Line = 0;
};

struct FStructDecl
{
	bool bIsClass = false; // UCLASS rather than USTRUCT
	std::string Name;
	std::string Super; // empty when the record has no reflected base
	FSpecifiers Specifiers;
	std::vector<FVariable> Properties;
	std::vector<FFunctionDecl> Functions;
	std::string Comment;
	int Line = 0;
	int GeneratedBodyLine = 0;
	std::string ApiMacro;
};

struct FDelegateDecl
{
	std::string Name; // "FOnRequestCompleted"
	bool bMulticast = false;
	std::string ReturnType; // for the retval flavours; empty for void
	std::vector<FVariable> Params;
	FSpecifiers Specifiers; // UDELEGATE(...)
	std::string Comment;
	int Line = 0;
};

struct FHeaderDecl
{
	std::string Path; // as given on the command line
	std::string BaseName; // "ZnDM_BpFuncLib"
	std::string ModuleRelativePath; // "Public/ZnDM_BpFuncLib.h"
	std::string IncludePath; // "ZnDM_BpFuncLib.h"
	std::vector<FEnumDecl> Enums;
	std::vector<FStructDecl> Structs; // records and classes in declaration order
	std::vector<FDelegateDecl> Delegates;
	bool bIncludesGeneratedHeader = false;

	bool HasReflection() const { return !Enums.empty() || !Structs.empty() || !Delegates.empty(); }
};

/** Parses one header. Throws std::runtime_error("file:line: message") on markup it cannot read. */
FHeaderDecl ParseHeader(const std::string& Path, const std::string& Source);

/** The engine's textual form of a C++ default argument ("wav", "50", "false", "0.500000", "POST"). */
std::string DefaultValueText(const std::vector<FToken>& Tokens);
} // namespace ZnHeaderTool
