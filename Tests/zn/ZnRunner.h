// Runs the zn program and captures its exit status, standard output and standard error.
#pragma once

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace ZnTest
{
using Json = nlohmann::ordered_json;

struct FRun
{
	int Status = -1;
	std::string Out;
	std::string Err;

	Json OutJson() const { return Json::parse(Out, nullptr, false); }
};

/** Single-quotes a word for the shell. */
inline std::string ShellQuote(const std::string& Word)
{
	std::string Out = "'";
	for (char C : Word)
	{
		Out += C == '\'' ? std::string("'\\''") : std::string(1, C);
	}
	return Out + "'";
}

inline std::string ReadAll(const std::string& Path)
{
	std::ifstream In(Path, std::ios::binary);
	std::ostringstream S;
	S << In.rdbuf();
	return S.str();
}

inline void WriteAll(const std::string& Path, const std::string& Text)
{
	std::ofstream Out(Path, std::ios::binary | std::ios::trunc);
	Out << Text;
}

/** zn with Args; Stdin (when given) is fed from a file. */
inline FRun RunZn(const std::vector<std::string>& Args, const std::string* Stdin = nullptr)
{
	std::string Command = ShellQuote(ZN_BINARY);
	for (const std::string& A : Args)
	{
		Command += " " + ShellQuote(A);
	}
	// ctest runs tests of this program side by side in one folder: scratch files carry the process id.
	const std::string Scratch = "zn_test_" + std::to_string(getpid());
	const std::string ErrPath = Scratch + "_stderr.txt";
	Command += " 2>" + ErrPath;
	if (Stdin)
	{
		WriteAll(Scratch + "_stdin.txt", *Stdin);
		Command += " <" + Scratch + "_stdin.txt";
	}
	else
	{
		Command += " </dev/null";
	}
	FRun Run;
	FILE* Pipe = popen(Command.c_str(), "r");
	if (!Pipe)
	{
		return Run;
	}
	char Buffer[65536];
	size_t N;
	while ((N = fread(Buffer, 1, sizeof(Buffer), Pipe)) > 0)
	{
		Run.Out.append(Buffer, N);
	}
	const int Raw = pclose(Pipe);
	Run.Status = WIFEXITED(Raw) ? WEXITSTATUS(Raw) : -1;
	Run.Err = ReadAll(ErrPath);
	std::remove(ErrPath.c_str());
	if (Stdin)
	{
		std::remove((Scratch + "_stdin.txt").c_str());
	}
	return Run;
}

/** Splits output into lines (without their line feeds). */
inline std::vector<std::string> Lines(const std::string& Text)
{
	std::vector<std::string> Out;
	std::istringstream In(Text);
	std::string Line;
	while (std::getline(In, Line))
	{
		Out.push_back(Line);
	}
	return Out;
}
/** A test with a folder of its own, named after the test and the process, removed afterwards. */
class FZnFolderTest : public ::testing::Test
{
protected:
	void SetUp() override
	{
		const ::testing::TestInfo* Info = ::testing::UnitTest::GetInstance()->current_test_info();
		Folder = std::filesystem::absolute(
			std::string(Info->test_suite_name()) + "_" + Info->name() + "_" + std::to_string(getpid()));
		std::filesystem::remove_all(Folder);
		std::filesystem::create_directories(Folder);
	}

	void TearDown() override
	{
		std::error_code Ignored;
		std::filesystem::remove_all(Folder, Ignored);
	}

	std::string PathOf(const std::string& Name) const { return (Folder / Name).string(); }

	/** Writes Text to the file Name in the folder and returns its path. */
	std::string Write(const std::string& Name, const std::string& Text)
	{
		const std::string Path = PathOf(Name);
		WriteAll(Path, Text);
		return Path;
	}

	std::filesystem::path Folder;
};
} // namespace ZnTest
