#include "Containers/StringConv.h"
#include "ZnBodyData.h"
#include "ZnDM_BpFuncLib.h"
#include "ZnFaceData.h"
#include "ZnMotionGenerator.h"
#include "ZnRunner.h"

#include <gtest/gtest.h>

using namespace ZnTest;

namespace
{
std::string Utf8(const FString& Text)
{
	FTCHARToUTF8 Converted(*Text);
	return std::string(Converted.Get(), Converted.Length());
}

FString Wide(const std::string& Text)
{
	return FString(UTF8_TO_TCHAR(Text.c_str()));
}
} // namespace

TEST(ZnCallTests, ByReferenceParameterAndOutputComeBackByName)
{
	const FRun Run = RunZn({"call", "TestUParamRef", "str=anything"});
	ASSERT_EQ(Run.Status, 0) << Run.Err;
	EXPECT_EQ(Run.Out, "{\n  \"str\": \"hello UPARAM(ref)\",\n  \"otherStr\": \"other msg\"\n}\n");
	const FRun Default = RunZn({"call", "--compact", "TestUParamRef"});
	ASSERT_EQ(Default.Status, 0) << Default.Err;
	EXPECT_EQ(Default.Out, "{\"str\":\"hello UPARAM(ref)\",\"otherStr\":\"other msg\"}\n")
		<< "an in/out parameter not given starts from its type's default";
}

TEST(ZnCallTests, ParametersNotGivenTakeTheirDeclaredDefaults)
{
	const FRun Run = RunZn({"call", "MakeJsonAnswerCollectMotion", "text=hello"});
	ASSERT_EQ(Run.Status, 0) << Run.Err;
	const FString Direct = UZnDM_BpFuncLib::MakeJsonAnswerCollectMotion(FString(TEXT("hello")));
	EXPECT_EQ(Run.OutJson()["return"], Utf8(Direct));
	const FRun Given = RunZn({"call", "MakeJsonAnswerCollectMotion", "text=hello", "tts_speed=70", "face_gender=female",
		"body_compress=true"});
	ASSERT_EQ(Given.Status, 0) << Given.Err;
	const FString DirectGiven =
		UZnDM_BpFuncLib::MakeJsonAnswerCollectMotion(FString(TEXT("hello")), FString(TEXT("wav")),
			FString(TEXT("aixia")), 70, 50, 50, 1, FString(TEXT("female")), 0, 0, 15, 3, false, 0, true);
	EXPECT_EQ(Given.OutJson()["return"], Utf8(DirectGiven));
	EXPECT_NE(Direct, DirectGiven);
}

TEST(ZnCallTests, SwitchUrlWithoutATypeUsesZero)
{
	const FRun Run = RunZn({"call", "SwitchUrl", "audio=A", "text=T", "answer=Q"});
	ASSERT_EQ(Run.Status, 0) << Run.Err;
	EXPECT_EQ(Run.OutJson()["return"],
		Utf8(UZnDM_BpFuncLib::SwitchUrl(FString(TEXT("A")), FString(TEXT("T")), FString(TEXT("Q")), 0)));
}

TEST(ZnCallTests, TextComesFromAFileWithAtAndDoubleAtEscapesIt)
{
	WriteAll("zn_call_text.txt", "first line\nsecond \xE5\x9B\xBD");
	const FRun Run = RunZn({"call", "CombinePath", "dir=@zn_call_text.txt", "fileName=b"});
	ASSERT_EQ(Run.Status, 0) << Run.Err;
	EXPECT_EQ(Run.OutJson()["return"],
		Utf8(UZnDM_BpFuncLib::CombinePath(Wide("first line\nsecond \xE5\x9B\xBD"), FString(TEXT("b")))));
	const FRun Literal = RunZn({"call", "CombinePath", "dir=@@home", "fileName=b"});
	ASSERT_EQ(Literal.Status, 0) << Literal.Err;
	EXPECT_EQ(
		Literal.OutJson()["return"], Utf8(UZnDM_BpFuncLib::CombinePath(FString(TEXT("@home")), FString(TEXT("b")))));
}

TEST(ZnCallTests, EnumerationsAreGivenByValueName)
{
	const FRun Run = RunZn({"call", "GetDir", "pathName=ExeDir", "pathType=Relative"});
	ASSERT_EQ(Run.Status, 0) << Run.Err;
	// The executable's directory is zn's own, not this test's.
	const std::string Binary = ZN_BINARY;
	const std::string Dir = Run.OutJson()["return"].get<std::string>();
	EXPECT_EQ(Dir, Binary.substr(0, Binary.rfind('/') + 1));
	const FRun Full = RunZn({"call", "GetDir", "pathName=ZnDM_PathName::ExeDir", "pathType=Relative"});
	EXPECT_EQ(Full.Status, 0) << Full.Err;
	EXPECT_EQ(Full.Out, Run.Out);
}

TEST(ZnCallTests, NumbersAndInOutValues)
{
	const FRun Run = RunZn({"call", "TickAdd", "val=1.25", "deltaTime=0.5", "threhold=10"});
	float Val = 1.25f;
	const bool bResult = UZnDM_BpFuncLib::TickAdd(Val, 0.5f, 10.0f);
	// A function that answers false exits with 1, its outputs printed all the same.
	ASSERT_EQ(Run.Status, bResult ? 0 : 1) << Run.Err;
	const Json Out = Run.OutJson();
	EXPECT_EQ(Out["return"], bResult);
	EXPECT_FLOAT_EQ(Out["val"].get<float>(), Val);
	std::vector<std::string> Keys;
	for (auto It = Out.begin(); It != Out.end(); ++It)
	{
		Keys.push_back(It.key());
	}
	EXPECT_EQ(Keys, (std::vector<std::string>{"return", "val"}));
}

TEST(ZnCallTests, ByteArraysArePrintedAsNumbers)
{
	const FRun Run = RunZn({"call", "StringToByteArray", "str=AB\xE5\x9B\xBD"});
	ASSERT_EQ(Run.Status, 0) << Run.Err;
	const TArray<uint8> Bytes = UZnDM_BpFuncLib::StringToByteArray(Wide("AB\xE5\x9B\xBD"));
	Json Expected = Json::array();
	for (uint8 B : Bytes)
	{
		Expected.push_back(B);
	}
	EXPECT_EQ(Run.OutJson()["return"], Expected);
}

TEST(ZnCallTests, ArraysAreGivenAsJson)
{
	const FRun Run = RunZn({"call", "ParseJsonToBodydataV2", "jsonStr=[]", "SkeletonNoHand=[\"Hips\",\"Spine\"]"});
	EXPECT_EQ(Run.Status, 0) << Run.Err;
	EXPECT_EQ(Run.OutJson(), Json::object()) << "a function without outputs prints an empty object";
}

TEST(ZnCallTests, BodyRecordIsPrintedWithItsNativeFields)
{
	FZnGenBodyOptions Options;
	Options.FrameCount = 3;
	Options.bFingers = false;
	const std::string Text = FZnMotionGenerator::BodyToJson(FZnMotionGenerator::GenerateBody(Options));
	WriteAll("zn_call_body.json", Text);
	const FRun Run = RunZn({"call", "ParseJsonToBodydata", "jsonStr=@zn_call_body.json"});
	ASSERT_EQ(Run.Status, 0) << Run.Err;
	FZnBodyData Body;
	UZnDM_BpFuncLib::ParseJsonToBodydata(Wide(Text), Body);
	ASSERT_GT(Body.BoneNames.Num(), 0);
	const Json Out = Run.OutJson()["bodyData"];
	std::vector<std::string> Keys;
	for (auto It = Out.begin(); It != Out.end(); ++It)
	{
		Keys.push_back(It.key());
	}
	EXPECT_EQ(Keys,
		(std::vector<std::string>{
			"id", "totalTime", "BoneNames", "BoneFrames", "BoneCurves", "RootPositionCurve", "RootStartPosition"}));
	EXPECT_FLOAT_EQ(Out["totalTime"].get<float>(), Body.totalTime);
	ASSERT_EQ(Out["BoneNames"].size(), size_t(Body.BoneNames.Num()));
	EXPECT_EQ(Out["BoneNames"][0], Utf8(Body.BoneNames[0]));
	ASSERT_EQ(Out["BoneFrames"].size(), size_t(Body.BoneFrames.Num()));
	ASSERT_EQ(Out["BoneFrames"][1].size(), size_t(Body.BoneFrames[1].Num()));
	EXPECT_DOUBLE_EQ(Out["BoneFrames"][1][2]["W"].get<double>(), Body.BoneFrames[1][2].W);
	ASSERT_EQ(Out["BoneCurves"][1]["Keys"].size(), size_t(Body.BoneCurves[1].Keys.Num()));
	EXPECT_FLOAT_EQ(Out["BoneCurves"][1]["Keys"][1]["Time"].get<float>(), Body.BoneCurves[1].Keys[1].Time);
	EXPECT_DOUBLE_EQ(Out["BoneCurves"][1]["Keys"][1]["Value"]["X"].get<double>(), Body.BoneCurves[1].Keys[1].Value.X);
	ASSERT_EQ(Out["RootPositionCurve"]["Y"]["Keys"].size(), size_t(Body.RootPositionCurve.FloatCurves[1].Keys.Num()));
	EXPECT_FLOAT_EQ(Out["RootPositionCurve"]["Y"]["Keys"][0]["Value"].get<float>(),
		Body.RootPositionCurve.FloatCurves[1].Keys[0].Value);
	EXPECT_DOUBLE_EQ(Out["RootStartPosition"]["Z"].get<double>(), Body.RootStartPosition.Z);
}

TEST(ZnCallTests, FaceRecordIsPrintedWithItsNativeFields)
{
	FZnGenFaceOptions Options;
	Options.FrameCount = 4;
	const std::string Text = FZnMotionGenerator::FaceToJson(FZnMotionGenerator::GenerateFace(Options));
	WriteAll("zn_call_face.json", Text);
	const FRun Run = RunZn({"call", "ParseJsonToFacedata", "jsonStr=@zn_call_face.json"});
	ASSERT_EQ(Run.Status, 0) << Run.Err;
	FZnFaceData Face;
	UZnDM_BpFuncLib::ParseJsonToFacedata(Wide(Text), Face);
	ASSERT_GT(Face.CurveNames.Num(), 0);
	const Json Out = Run.OutJson()["faceData"];
	ASSERT_EQ(Out["CurveNames"].size(), size_t(Face.CurveNames.Num()));
	EXPECT_EQ(Out["CurveNames"][3], Utf8(Face.CurveNames[3]));
	ASSERT_EQ(Out["CurveFrames"][3].size(), size_t(Face.CurveFrames[3].Num()));
	EXPECT_FLOAT_EQ(Out["CurveFrames"][3][2].get<float>(), Face.CurveFrames[3][2]);
	ASSERT_EQ(Out["Curves"][3]["Keys"].size(), size_t(Face.Curves[3].FloatCurve.Keys.Num()));
	EXPECT_FLOAT_EQ(Out["Curves"][3]["Keys"][1]["Time"].get<float>(), Face.Curves[3].FloatCurve.Keys[1].Time);
	EXPECT_FLOAT_EQ(Out["totalTime"].get<float>(), Face.totalTime);
}
