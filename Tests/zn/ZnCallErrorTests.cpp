#include "ZnRunner.h"

#include <gtest/gtest.h>

using namespace ZnTest;

namespace
{
void ExpectUsageError(const std::vector<std::string>& Args, const std::string& Message)
{
	const FRun Run = RunZn(Args);
	EXPECT_NE(Run.Status, 0);
	EXPECT_TRUE(Run.Out.empty()) << "nothing is printed on standard output: " << Run.Out;
	EXPECT_NE(Run.Err.find(Message), std::string::npos) << "stderr: " << Run.Err;
}
} // namespace

TEST(ZnCallErrorTests, MissingParameterWithoutADefault)
{
	ExpectUsageError({"call", "CombinePath", "dir=a"}, "missing parameter 'fileName' (FString) of CombinePath");
}

TEST(ZnCallErrorTests, UnknownParameter)
{
	ExpectUsageError({"call", "CombinePath", "dir=a", "fileName=b", "extra=1"}, "unknown parameter 'extra'");
	ExpectUsageError({"call", "CombinePath", "DIR=a", "fileName=b"}, "unknown parameter 'DIR'");
}

TEST(ZnCallErrorTests, UnknownFunction)
{
	ExpectUsageError({"call", "NoSuchFunction"}, "unknown function 'NoSuchFunction'");
	ExpectUsageError({"call", "testuparamref"}, "unknown function 'testuparamref'");
}

TEST(ZnCallErrorTests, ValueOfTheWrongType)
{
	ExpectUsageError({"call", "SetFps", "fps=fast"}, "expects an integer");
	ExpectUsageError({"call", "SetFps", "fps=1.5"}, "expects an integer");
	ExpectUsageError({"call", "SetFps", "fps=99999999999"}, "expects int32");
	ExpectUsageError({"call", "TickAdd", "val=x", "deltaTime=1", "threhold=1"}, "expects a number");
	ExpectUsageError({"call", "MakeJsonAnswerCollectMotion", "text=a", "body_compress=yes"}, "expects true or false");
	ExpectUsageError({"call", "GetDir", "pathName=Home", "pathType=Complete"},
		"expects a value name of ZnDM_PathName (ProjectDir, ProjectContentDir, ProjectConfigDir, ProjectPluginsDir, "
		"ExeDir)");
	ExpectUsageError({"call", "ParseJsonToBodydataV2", "jsonStr=x", "SkeletonNoHand=Hips"}, "expects a JSON array");
	ExpectUsageError(
		{"call", "ParseJsonToBodydataV2", "jsonStr=x", "SkeletonNoHand=[\"a\",1]"}, "element 1 expects a string");
}

TEST(ZnCallErrorTests, OutputsTakeNoValue)
{
	ExpectUsageError({"call", "TestUParamRef", "otherStr=x"}, "is an output and takes no value");
}

TEST(ZnCallErrorTests, MalformedArgumentsAndMissingFiles)
{
	ExpectUsageError({"call", "CombinePath", "dir"}, "arguments are name=value");
	ExpectUsageError({"call", "CombinePath", "dir=a", "dir=b", "fileName=c"}, "given twice");
	ExpectUsageError(
		{"call", "CombinePath", "dir=@no_such_file.txt", "fileName=c"}, "cannot read the file 'no_such_file.txt'");
}

TEST(ZnCallErrorTests, NoFunctionNameIsAUsageError)
{
	const FRun Run = RunZn({"call"});
	EXPECT_NE(Run.Status, 0);
	const FRun Nothing = RunZn({});
	EXPECT_NE(Nothing.Status, 0);
}
