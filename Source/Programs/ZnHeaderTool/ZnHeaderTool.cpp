// ZnHeaderTool: reads a module's public headers and writes its reflection glue.
//
//   ZnHeaderTool --module <Name> --module-root <dir> --output <dir> <header.h>...
//
// Writes <output>/Inc/<Header>.generated.h and <output>/<Header>.gen.cpp for every header
// (empty but valid when a header has no reflection markup) and <output>/<Name>.init.gen.cpp.
// Files whose text did not change are left untouched so the build does not redo work.
// Errors are printed as "file:line: error: message" and the exit status is 1.
#include "CodeGenerator.h"
#include "HeaderParser.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>

namespace fs = std::filesystem;

namespace
{
std::string ReadFile(const fs::path& Path)
{
	std::ifstream In(Path, std::ios::binary);
	if (!In)
	{
		throw std::runtime_error(Path.string() + ":1: error: cannot read the file");
	}
	std::ostringstream S;
	S << In.rdbuf();
	return S.str();
}

void WriteIfChanged(const fs::path& Path, const std::string& Text)
{
	std::error_code Ec;
	if (fs::exists(Path, Ec))
	{
		try
		{
			if (ReadFile(Path) == Text)
			{
				return;
			}
		}
		catch (const std::exception&)
		{
		}
	}
	fs::create_directories(Path.parent_path());
	const fs::path Temp = Path.string() + ".tmp";
	{
		std::ofstream Out(Temp, std::ios::binary | std::ios::trunc);
		Out << Text;
		if (!Out)
		{
			throw std::runtime_error(Path.string() + ":1: error: cannot write the file");
		}
	}
	fs::rename(Temp, Path);
}

int Usage()
{
	std::cerr << "usage: ZnHeaderTool --module <Name> --module-root <dir> --output <dir> <header.h>...\n";
	return 2;
}
} // namespace

int main(int Argc, char** Argv)
{
	std::string ModuleName;
	fs::path ModuleRoot;
	fs::path Output;
	std::vector<fs::path> Headers;
	for (int I = 1; I < Argc; ++I)
	{
		const std::string Arg = Argv[I];
		auto Value = [&]() -> std::string
		{
			if (I + 1 >= Argc)
			{
				throw std::runtime_error("missing value after " + Arg);
			}
			return Argv[++I];
		};
		try
		{
			if (Arg == "--module")
			{
				ModuleName = Value();
			}
			else if (Arg == "--module-root")
			{
				ModuleRoot = Value();
			}
			else if (Arg == "--output")
			{
				Output = Value();
			}
			else if (Arg == "--help" || Arg == "-h")
			{
				Usage();
				return 0;
			}
			else if (!Arg.empty() && Arg[0] == '-')
			{
				std::cerr << "ZnHeaderTool: unknown option " << Arg << "\n";
				return Usage();
			}
			else
			{
				Headers.emplace_back(Arg);
			}
		}
		catch (const std::exception& E)
		{
			std::cerr << "ZnHeaderTool: " << E.what() << "\n";
			return Usage();
		}
	}
	if (ModuleName.empty() || ModuleRoot.empty() || Output.empty())
	{
		return Usage();
	}

	try
	{
		ZnHeaderTool::FModuleDecl Module;
		Module.Name = ModuleName;
		const fs::path Root = fs::weakly_canonical(ModuleRoot);
		for (const fs::path& Header : Headers)
		{
			const fs::path Full = fs::weakly_canonical(Header);
			const std::string Source = ReadFile(Full);
			ZnHeaderTool::FHeaderDecl Decl = ZnHeaderTool::ParseHeader(Header.string(), Source);
			Decl.BaseName = Full.stem().string();
			Decl.ModuleRelativePath = Full.lexically_relative(Root).generic_string();
			if (Decl.ModuleRelativePath.empty() || Decl.ModuleRelativePath.compare(0, 2, "..") == 0)
			{
				throw std::runtime_error(
					Header.string() + ":1: error: the header is not inside the module root " + Root.string());
			}
			Decl.IncludePath = Decl.ModuleRelativePath;
			for (const char* Folder : {"Public/", "Classes/", "Private/"})
			{
				if (Decl.IncludePath.compare(0, std::char_traits<char>::length(Folder), Folder) == 0)
				{
					Decl.IncludePath = Decl.IncludePath.substr(std::char_traits<char>::length(Folder));
					break;
				}
			}
			Decl.bIncludesGeneratedHeader =
				Source.find("#include \"" + Decl.BaseName + ".generated.h\"") != std::string::npos;
			Module.Headers.push_back(std::move(Decl));
		}
		for (const ZnHeaderTool::FGeneratedFile& File : ZnHeaderTool::GenerateModule(Module))
		{
			WriteIfChanged(Output / File.RelativePath, File.Text);
		}
	}
	catch (const std::exception& E)
	{
		std::cerr << E.what() << "\n";
		return 1;
	}
	return 0;
}
