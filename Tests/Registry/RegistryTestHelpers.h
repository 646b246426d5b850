// Lookups into the module's registry shared by the registry tests.
#pragma once

#include "CoreMinimal.h"
#include "UObject/Package.h"
#include "UObject/UnrealType.h"

#include <map>
#include <string>

namespace ZnRegistryTest
{
inline std::string Utf8(const FString& Text)
{
	FTCHARToUTF8 Converted(*Text);
	return std::string(Converted.Get(), Converted.Length());
}

inline FString Wide(const std::string& Text)
{
	return FString(UTF8_TO_TCHAR(Text.c_str()));
}

inline UPackage* ModulePackage()
{
	ProcessNewlyLoadedUObjects();
	return FindPackage(nullptr, TEXT("/Script/ZnUtilsTools"));
}

template <typename T>
T* FindInModule(const char* Name)
{
	return FindObject<T>(ModulePackage(), *Wide(Name), true);
}

/** Every metadata entry as key -> value (keys as written). */
inline std::map<std::string, std::string> MetaOf(const FZnMetaData& Meta)
{
	std::map<std::string, std::string> Out;
	for (const auto& Entry : Meta.GetEntries())
	{
		Out[Utf8(Entry.Key.ToString())] = Utf8(Entry.Value);
	}
	return Out;
}

/** How scripts see a parameter. */
inline std::string KindOf(const FProperty* P)
{
	if (P->HasAnyPropertyFlags(CPF_ReturnParm))
	{
		return "return";
	}
	if (!P->HasAnyPropertyFlags(CPF_OutParm))
	{
		return "in";
	}
	if (P->HasAnyPropertyFlags(CPF_ConstParm))
	{
		return "cref";
	}
	return P->HasAnyPropertyFlags(CPF_ReferenceParm) ? "inout" : "out";
}
} // namespace ZnRegistryTest
