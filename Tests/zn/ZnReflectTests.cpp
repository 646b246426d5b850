#include "ZnRunner.h"

#include <gtest/gtest.h>

using namespace ZnTest;

TEST(ZnReflectTests, PrintsTheWholeRegistryInAFixedKeyOrder)
{
	const FRun Run = RunZn({"reflect"});
	ASSERT_EQ(Run.Status, 0) << Run.Err;
	const Json Doc = Run.OutJson();
	ASSERT_FALSE(Doc.is_discarded());
	std::vector<std::string> Keys;
	for (auto It = Doc.begin(); It != Doc.end(); ++It)
	{
		Keys.push_back(It.key());
	}
	EXPECT_EQ(Keys, (std::vector<std::string>{"package", "classes", "structs", "enums", "delegates"}));
	EXPECT_EQ(Doc["package"], "/Script/ZnUtilsTools");
	EXPECT_EQ(Doc["classes"].size(), 6u);
	EXPECT_EQ(Doc["structs"].size(), 5u);
	EXPECT_EQ(Doc["enums"].size(), 8u);
	EXPECT_EQ(Doc["delegates"].size(), 4u);
	EXPECT_EQ(RunZn({"reflect"}).Out, Run.Out) << "two runs print the same text";
}

TEST(ZnReflectTests, ShowsClassesWithBaseHeaderMetadataAndFunctions)
{
	const Json Doc = RunZn({"reflect"}).OutJson();
	Json Library;
	for (const Json& C : Doc["classes"])
	{
		if (C["name"] == "UZnDM_BpFuncLib")
		{
			Library = C;
		}
		if (C["name"] == "UZnDM_TTSHttpDownload")
		{
			EXPECT_EQ(C["metadata"]["Category"], "ZnDM_Functions|ZNTools");
			EXPECT_EQ(C["metadata"]["BlueprintType"], "true");
			EXPECT_EQ(C["properties"][0]["name"], "OnCompleted");
			EXPECT_EQ(C["properties"][0]["signature"], "OnTtsDownloadCompleted__DelegateSignature");
		}
	}
	ASSERT_TRUE(Library.is_object());
	EXPECT_EQ(Library["super"], "UBlueprintFunctionLibrary");
	EXPECT_EQ(Library["header"], "Public/ZnDM_BpFuncLib.h");
	EXPECT_EQ(Library["metadata"]["IncludePath"], "ZnDM_BpFuncLib.h");
	Json TestRef;
	for (const Json& F : Library["functions"])
	{
		if (F["name"] == "TestUParamRef")
		{
			TestRef = F;
		}
	}
	ASSERT_TRUE(TestRef.is_object());
	EXPECT_EQ(TestRef["category"], "ZnDM_Functions|UtilsTools|Test");
	EXPECT_TRUE(TestRef["static"].get<bool>());
	EXPECT_EQ(TestRef["parameters"][0]["name"], "str");
	EXPECT_EQ(TestRef["parameters"][0]["kind"], "in/out");
	EXPECT_EQ(TestRef["parameters"][1]["kind"], "out");
	EXPECT_TRUE(TestRef["return"].is_null());
}

TEST(ZnReflectTests, ShowsEnumerationsWithNamesAndUtf8Metadata)
{
	const Json Doc = RunZn({"reflect"}).OutJson();
	for (const Json& E : Doc["enums"])
	{
		EXPECT_EQ(E["underlyingType"], "uint8");
		EXPECT_EQ(E["cppForm"], "EnumClass");
		if (E["name"] != "ZnRegion")
		{
			continue;
		}
		EXPECT_EQ(E["values"][0]["name"], "EN_US");
		EXPECT_EQ(E["values"][0]["fullName"], "ZnRegion::EN_US");
		EXPECT_EQ(E["values"][1]["value"], 1);
		EXPECT_EQ(E["metadata"]["ToolTip"], "\xE5\x9B\xBD\xE5\x86\x85\xE3\x80\x81\xE5\x9B\xBD\xE5\xA4\x96");
		EXPECT_EQ(E["metadata"]["ZH_CN.Name"], "ZnRegion::ZH_CN");
	}
}

TEST(ZnReflectTests, EnumerationParametersShowTheirByteUnderlyingType)
{
	const Json Doc = RunZn({"reflect"}).OutJson();
	int Seen = 0;
	for (const Json& C : Doc["classes"])
	{
		for (const Json& F : C["functions"])
		{
			for (const Json& P : F["parameters"])
			{
				if (P.contains("enum"))
				{
					++Seen;
					EXPECT_EQ(P["underlyingProperty"], "UnderlyingType");
					EXPECT_EQ(P["underlyingType"], "uint8");
				}
			}
		}
	}
	// GetCurSystemDateTime, GetDir (two), ParseJsonTmp, ShowOrHideStat and the four request
	// functions that take a ZnDM_HttpVerb (DoRequestEasy, DoRequestForm, DoRequestTest, GetAppToken).
	EXPECT_EQ(Seen, 9);
}
