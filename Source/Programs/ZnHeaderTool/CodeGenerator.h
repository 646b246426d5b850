// Writes the reflection glue of a module: per header a <Name>.generated.h (the declarations
// GENERATED_BODY() pastes into each type, StaticClass/StaticStruct/StaticEnum) and a
// <Name>.gen.cpp (the registration tables, parameter blocks and native thunks), plus one
// <Module>.init.gen.cpp for the package and its delegate signatures.
#pragma once

#include "HeaderParser.h"

#include <string>
#include <vector>

namespace ZnHeaderTool
{
struct FModuleDecl
{
	std::string Name; // "ZnUtilsTools"
	std::vector<FHeaderDecl> Headers;
};

struct FGeneratedFile
{
	std::string RelativePath; // "Inc/X.generated.h", "X.gen.cpp", "<Module>.init.gen.cpp"
	std::string Text;
};

/** Resolves every reflected type across the module and renders the files. Throws std::runtime_error on errors. */
std::vector<FGeneratedFile> GenerateModule(const FModuleDecl& Module);
} // namespace ZnHeaderTool
