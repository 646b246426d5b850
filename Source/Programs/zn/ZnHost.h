// What the zn commands share: the module's registry as JSON, values converted between the
// command line, JSON and reflected properties, and calling a script function by name.
#pragma once

#include "CoreMinimal.h"
#include "UObject/UnrealType.h"

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace ZnHost
{
using Json = nlohmann::ordered_json;

std::string ToUtf8(const FString& Text);
FString FromUtf8(const std::string& Text);

/** The module's package "/Script/ZnUtilsTools" (after every reflected type has been built). */
UPackage* ModulePackage();
/** The module's classes, records, enumerations and delegate signatures, each sorted by name. */
TArray<UClass*> ModuleClasses();
TArray<UScriptStruct*> ModuleStructs();
TArray<UEnum*> ModuleEnums();
TArray<UFunction*> ModuleDelegates();

/** How scripts see a parameter: "in", "in const ref", "out", "in/out" or "return". */
std::string ParamKind(const FProperty* Property);
/** Flag names ("CPF_Edit", "FUNC_Static", ...), in bit order. */
Json PropertyFlagNames(EPropertyFlags Flags);
Json FunctionFlagNames(EFunctionFlags Flags);

/** The whole registry ("zn reflect"). */
Json Reflect();
Json DescribeFunction(const UFunction* Function);

/** A value as JSON: records with all their fields (native ones included), enumerations by value name. */
Json ValueToJson(const FProperty* Property, const void* Value);

/**
 * Sets Value from command-line text: text as written ("@path" reads a file's text without a
 * leading UTF-8 byte-order mark, "@@" stands for a leading "@"), numbers, true/false,
 * enumerations by value name, arrays and records as JSON; "@path" gives a byte array the file's
 * bytes as they are.
 * bDeclaredDefault: the text is a declared default (no "@" handling).
 */
bool TextToValue(
	const FProperty* Property, const std::string& Text, void* Value, std::string& Error, bool bDeclaredDefault = false);
bool JsonToValue(const FProperty* Property, const Json& In, void* Value, std::string& Error);

/**
 * Reads a whole input file. Fails with a message naming the path when it does not exist, is a
 * folder or cannot be read; an empty file is an empty text, never an error.
 */
bool ReadInputFile(const std::string& Path, std::string& Out, std::string& Error);
/** Removes a UTF-8 byte-order mark from the start of Text, if there is one. */
void DropByteOrderMark(std::string& Text);

/** The exit status of a call that ran (ZnExit): Failed when the function returned false. */
int CallStatus(const Json& Out);

/** Splits a line the way a shell would for plain words, quotes ('...', "...") and backslashes. */
bool SplitCommandLine(const std::string& Line, std::vector<std::string>& OutWords, std::string& Error);

/**
 * Calls a script function of UZnDM_BpFuncLib: Args are "name=value" words. Fills Out with
 * "return" (when the function returns a value) and every out and in/out parameter by name.
 * Returns false with a message for an unknown function or parameter, a missing value or a
 * value of the wrong type; nothing is called then.
 */
bool CallFunction(const std::string& FunctionName, const std::vector<std::string>& Args, Json& Out, std::string& Error);
} // namespace ZnHost
