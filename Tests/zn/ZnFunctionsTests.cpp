#include "ZnRunner.h"

#include <gtest/gtest.h>

using namespace ZnTest;

TEST(ZnFunctionsTests, GroupsFunctionsByCategoryWithSignatures)
{
	const FRun Run = RunZn({"functions"});
	ASSERT_EQ(Run.Status, 0) << Run.Err;
	const std::vector<std::string> L = Lines(Run.Out);
	auto Has = [&L](const std::string& Line) { return std::find(L.begin(), L.end(), Line) != L.end(); };
	EXPECT_TRUE(Has("ZnDM_Functions|UtilsTools|Test"));
	EXPECT_TRUE(Has("  TestUParamRef(in/out str: FString, out otherStr: FString)"));
	// Categories appear in order, each once, each followed by its functions.
	std::vector<std::string> Categories;
	for (const std::string& Line : L)
	{
		if (!Line.empty() && Line[0] != ' ')
		{
			Categories.push_back(Line);
		}
	}
	EXPECT_TRUE(std::is_sorted(Categories.begin(), Categories.end()));
	EXPECT_EQ(std::adjacent_find(Categories.begin(), Categories.end()), Categories.end());
}

TEST(ZnFunctionsTests, ShowsDeclaredDefaultsAndTooltips)
{
	const FRun Run = RunZn({"functions"});
	ASSERT_EQ(Run.Status, 0);
	EXPECT_NE(Run.Out.find("  PrintTraceStack(Depth: int32 = 5)\n"), std::string::npos);
	EXPECT_NE(Run.Out.find("  IsInEditor() -> bool\n      (const UObject* WorldContextObject);\n"), std::string::npos);
}
