// Runs the ZnHeaderTool program on a small module written into a scratch folder.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace fs = std::filesystem;

namespace
{
void Write(const fs::path& Path, const std::string& Text)
{
	fs::create_directories(Path.parent_path());
	std::ofstream(Path, std::ios::binary | std::ios::trunc) << Text;
}

std::string Read(const fs::path& Path)
{
	std::ifstream In(Path, std::ios::binary);
	std::ostringstream S;
	S << In.rdbuf();
	return S.str();
}

// ctest runs these tests as parallel processes in one folder, so each keeps its own error file.
int RunTool(const std::string& Args, std::string* Stderr = nullptr)
{
	const std::string ErrorFile =
		std::string("tool_stderr_") + ::testing::UnitTest::GetInstance()->current_test_info()->name() + ".txt";
	const std::string Command = std::string("'") + ZN_HEADER_TOOL + "' " + Args + " 2>'" + ErrorFile + "'";
	const int Raw = std::system(Command.c_str());
	if (Stderr)
	{
		*Stderr = Read(ErrorFile);
	}
	return WIFEXITED(Raw) ? WEXITSTATUS(Raw) : -1;
}
} // namespace

TEST(ZnHeaderToolProgramTests, WritesEveryOutputAndLeavesUnchangedFilesAlone)
{
	const fs::path Root = fs::absolute("tool_module");
	fs::remove_all(Root);
	Write(Root / "Public/Plain.h", "#pragma once\nstruct FPlain { int X; };\n");
	Write(Root / "Public/Thing.h",
		"#pragma once\n#include \"Thing.generated.h\"\nUENUM(BlueprintType)\n"
		"enum class EThing : uint8 { One, Two };\n");
	const fs::path Out = Root / "Generated";
	const std::string Args = "--module Mod --module-root '" + Root.string() + "' --output '" + Out.string() + "' '" +
		(Root / "Public/Plain.h").string() + "' '" + (Root / "Public/Thing.h").string() + "'";
	ASSERT_EQ(RunTool(Args), 0);
	for (const char* File :
		{"Inc/Plain.generated.h", "Plain.gen.cpp", "Inc/Thing.generated.h", "Thing.gen.cpp", "Mod.init.gen.cpp"})
	{
		EXPECT_TRUE(fs::exists(Out / File)) << File;
	}
	EXPECT_NE(Read(Out / "Thing.gen.cpp").find("{\"One.Name\", \"EThing::One\"}"), std::string::npos);
	EXPECT_NE(Read(Out / "Thing.gen.cpp").find("{\"ModuleRelativePath\", \"Public/Thing.h\"}"), std::string::npos);
	const auto Stamp = fs::last_write_time(Out / "Thing.gen.cpp");
	fs::last_write_time(Out / "Thing.gen.cpp", Stamp - std::chrono::hours(1));
	const auto Older = fs::last_write_time(Out / "Thing.gen.cpp");
	ASSERT_EQ(RunTool(Args), 0);
	EXPECT_EQ(fs::last_write_time(Out / "Thing.gen.cpp"), Older) << "an unchanged output is not rewritten";
}

TEST(ZnHeaderToolProgramTests, ReportsErrorsWithFileAndLineAndFailsTheBuild)
{
	const fs::path Root = fs::absolute("tool_bad_module");
	fs::remove_all(Root);
	Write(Root / "Public/Bad.h",
		"#pragma once\n#include \"Bad.generated.h\"\nUENUM(Shiny)\nenum class EBad : uint8 { A };\n");
	std::string Err;
	EXPECT_EQ(RunTool("--module Mod --module-root '" + Root.string() + "' --output '" + (Root / "Out").string() +
					  "' '" + (Root / "Public/Bad.h").string() + "'",
				  &Err),
		1);
	EXPECT_NE(Err.find("Bad.h:3: error: unknown UENUM specifier 'Shiny'"), std::string::npos) << Err;
}

TEST(ZnHeaderToolProgramTests, UsageErrors)
{
	EXPECT_EQ(RunTool("--module Mod"), 2);
	EXPECT_EQ(RunTool("--bogus"), 2);
	std::string Err;
	EXPECT_EQ(RunTool("--module Mod --module-root /tmp --output /tmp/zn_tool_out /nonexistent/Missing.h", &Err), 1);
	EXPECT_NE(Err.find("cannot read the file"), std::string::npos);
}
