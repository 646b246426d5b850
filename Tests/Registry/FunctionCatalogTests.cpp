// Every row of the catalogue below must name a registered script function, and that function is
// compared with its row: name, parameter names in order, types, kinds, declared defaults,
// category, flags, metadata and return type. A catalogued function that is missing fails the test
// (each missing one is named), and so does a registered function that is not catalogued. The
// completion delegates and the request objects' OnCompleted properties are checked in
// RegistryTests.cpp.
//
// That a lost function fails was checked by hand: with the UFUNCTION line above SetUnfocusVolume
// removed from ZnDM_BpFuncLib.h, EveryCatalogueRowIsARegisteredFunction fails with
// "UZnDM_BpFuncLib::SetUnfocusVolume is catalogued but not registered".
#include "RegistryTestHelpers.h"
#include "ZnActor_FPS.h"
#include "ZnDM_BpFuncLib.h"
#include "ZnDM_HttpDownload.h"
#include "ZnDM_HttpRequest.h"
#include "ZnDM_HttpRequest_TTS.h"
#include "ZnDM_TTSHttpDownload.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <vector>

using namespace ZnRegistryTest;

namespace
{
// One row per line: [Class::]Name | parameters | return | category | metadata.
// Parameters: name:Type[:kind][=default], kind one of in (by value, the default), cref (const
// reference), out, inout (UPARAM(ref)). Categories: U = ZnDM_Functions|UtilsTools, Tmp and Test
// under it, Z = ZnDM_Functions|ZNTools. Metadata: Key=Value entries separated by " ;; "; a
// ToolTip of "*" accepts any text. Functions of UZnDM_BpFuncLib and the Create functions are static.
const char* const Catalogue = R"(
BeginParseJsonToBodydataV2 |  |  | U |
BeginParseJsonToFacedataV2 |  |  | U |
CombinePath | dir:FString, fileName:FString | FString | U |
CurThreadIsInGameThread |  | bool | U |
CurThreadIsInRenderingThread |  | bool | U |
CurThreadIsInRhiThread |  | bool | U |
DirExists | dir:FString | bool | U |
EndParseJsonToBodydataV2 | outBodyData:FZnBodyData:out, outTotalTime:float:out |  | U |
EndParseJsonToFacedataV2 | outBodyData:FZnFaceData:out, outTotalTime:float:out |  | U |
FileExists | filePath:FString | bool | U |
GetCurSystemDateTime | purpose:ZnDM_DateTimePurpose | FString | U |
GetCurThreadInfo | curThreadId:int32:out, curThreadName:FString:out, curThreadInfo:FString:out |  | U |
GetDir | pathName:ZnDM_PathName, pathType:ZnDM_PathType | FString | U |
GetProjectPluginContentDir | pluginName:FString | FString | U |
GetProjectPluginContentDir_Velkaro |  | FString | U |
GetThreadId |  | int32 | U |
GetTodayDateInChinaFormat |  | FString | U |
getWorldTime |  | double | U |
GreaterOrEqual_Cycling | deltaTime:float, cycleTime:float, offsetTime:float:out | bool | U |
IsInEditor |  | bool | U | ToolTip=(const UObject* WorldContextObject);
LoadFileFromPluginContentDir | fileRelativePath:FString | FString | U |
MakeJsonAnswerCollectMotion | text:FString:cref, audio_format:FString:cref=wav, tts_voice_name:FString:cref=aixia, tts_speed:int32=50, tts_volume:int32=50, tts_fm:int32=50, face_type:int32=1, face_gender:FString:cref=male, face_tag:int32=0, body_motion:int32=0, body_filter_window:int32=15, body_filter_order:int32=3, body_fixed_hips:bool=false, body_head_x_rot:int32=0, body_compress:bool=false | FString | Tmp |
MakeJsonTextBroadcastMotion | draft_content:FString:cref, audio_format:FString:cref=wav, tts_voice_name:FString:cref=aixia, tts_speed:int32=50, tts_volume:int32=50, tts_fm:int32=50, face_type:int32=1, face_gender:FString:cref=male, face_tag:int32=0, body_motion:int32=0, body_filter_window:int32=15, body_filter_order:int32=3, body_fixed_hips:bool=false, body_head_x_rot:int32=0, body_compress:bool=false | FString | Tmp |
MakeJsonTmp | text:FString:cref | FString | Tmp |
MakeJsonTmpRefText | refText:FString:cref, speedRatio:int32, voice_speed:int32, voice_volume:int32, voice_fm:int32, fixedHips:bool, type:int32, face_type:int32, voice_name:FString:cref, body_motion:int32, gender:FString:cref, requestId:FString:cref | FString | Tmp |
MakeJsonVoiceBroadcastMotion | audio_url:FString:cref, audio_format:FString:cref=wav, is_cache:int32=0, face_gender:FString:cref=male, face_tag:int32=0, face_type:int32=1, body_motion:int32=0, body_filter_window:int32=15, body_filter_order:int32=3, body_fixed:bool=false, body_head_x_rot:int32=0, body_compress:bool=false | FString | Tmp |
ParseJsonForm | jsonStr:FString | FString | Tmp |
ParseJsonTmp | jsonStr:FString, inAudioStr:FString, type:ZnJsonDataType, audioUrl:FString:out, faceUrl:FString:out, bodyUrl:FString:out, text:FString:out | bool | Tmp | ToolTip=static bool ParseJsonTmp(FString jsonStr, FString& audioUrl, FString& faceUrl, FString& bodyUrl, FString& text);
ParseJsonToBodydata | jsonStr:FString:cref, bodyData:FZnBodyData:out |  | U |
ParseJsonToBodydataRecommend | jsonStr:FString:cref, bodyData:FZnBodyData:inout, totalTime:float:out |  | U |
ParseJsonToBodydataV2 | jsonStr:FString:cref, SkeletonNoHand:TArray<FString> |  | U |
ParseJsonToBodydataV2Response | jsonStr:FString:cref, SkeletonNoHand:TArray<FString>, outBodyData:FZnBodyData:out, outTotalTime:float:out |  | U |
ParseJsonToFaceControlRigData | jsonStr:FString:cref, faceData:FZnFaceData:out |  | U |
ParseJsonToFacedata | jsonStr:FString:cref, faceData:FZnFaceData:out |  | U |
ParseJsonToFacedataRecommend | jsonStr:FString:cref, faceData:FZnFaceData:inout, totalTime:float:out |  | U |
ParseJsonToFacedataV2 | jsonStr:FString:cref |  | U |
ParseJsonToFacedataV2Response | jsonStr:FString:cref, outBodyData:FZnFaceData:out, outTotalTime:float:out |  | U |
ParseJsonToGetDigest | jsonStr:FString, outStrs:TArray<FString>:out | bool | U |
PrintTraceStack | Depth:int32=5 |  | U |
SetFps | fps:int32=60 |  | U | CallableWithoutWorldContext=
SetMaxPerGroupForStat | maxNum:int32=100 |  | U | CallableWithoutWorldContext= ;; ToolTip=(const UObject* WorldContextObject, int fps);
SetUnfocusVolume | val:float |  | U | AdvancedDisplay=0.0-1.0
Sha1 | appid:FString, secret:FString | FString | Tmp |
ShowOrHideStat | type:ZnDM_StatType |  | U | CallableWithoutWorldContext=
SplitFilePath | inFilePath:FString:cref, outDir:FString:out, outFileName:FString:out, outExtensionName:FString:out |  | U |
StringToByteArray | str:FString | TArray<uint8> | U |
SwitchUrl | audio:FString:cref, text:FString:cref, answer:FString:cref, type:int32=0 | FString | Tmp |
TestUParamRef | str:FString:inout, otherStr:FString:out |  | Test |
TickAdd | val:float:inout, deltaTime:float, threhold:float | bool | U |
TickRemainTime | remainTime:float:inout, deltaTime:float |  | U |
TickSubtract | val:float:inout, deltaTime:float, threhold:float | bool | U |
TTS_ParamsToJson | text:FString, voiceName:FString, speed:FString, volume:FString, pitch:FString, gender:FString, tag:int32 | FString | U | ToolTip=*
TTS_ParseResponseJson | jsonStr:FString, audioUrl:FString:out, bodyUrl:FString:out, faceUrl:FString:out | bool | U |
WriteLog | msg:FString |  | U |
WriteTxt | str:FString, completePath:FString |  | U |
WriteTxtFileWithPrefix | content:FString, filePrefix:FString |  | U |
UZnDM_HttpRequest::CreateHttpRequest |  | UZnDM_HttpRequest* | U |
UZnDM_HttpRequest::DoRequest | inURL:FString:cref, inRequestBody:TArray<uint8>:cref, inShowDebug:bool |  | U |
UZnDM_HttpRequest::DoRequestEasy | token:FString:cref, inURL:FString:cref, content:FString:cref, verb:ZnDM_HttpVerb, printLog:bool=true, timeout:int32=5 |  | U |
UZnDM_HttpRequest::DoRequestForm | Application:FString:cref, token:FString:cref, inURL:FString:cref, content:FString:cref, verb:ZnDM_HttpVerb, printLog:bool=true, timeout:int32=5 |  | U |
UZnDM_HttpRequest::DoRequestTest | inURL:FString:cref, verb:ZnDM_HttpVerb, contentBytes:TArray<uint8>:cref, contentUtf8:FString:cref, timeoutInSecond:float:cref, inShowDebug:bool |  | U |
UZnDM_HttpRequest::GetAppToken | inURL:FString:cref, appid:FString:cref, secret:FString:cref, verb:ZnDM_HttpVerb, printLog:bool=true, timeout:int32=5 |  | U |
UZnDM_HttpRequest_TTS::CreateHttpRequest_TTS |  | UZnDM_HttpRequest_TTS* | U |
UZnDM_HttpRequest_TTS::DoRequest | url:FString, text:FString, voiceName:FString, speed:FString, volume:FString, pitch:FString, gender:FString, tag:int32, inShowDebug:bool |  | U |
UZnDM_HttpDownload::CreateHttpDownload |  | UZnDM_HttpDownload* | U |
UZnDM_HttpDownload::DoDownload | inURL:FString:cref, inNeedSave:bool, inSavePath:FString |  | U |
UZnDM_TTSHttpDownload::CreateTTSHttpDownload |  | UZnDM_TTSHttpDownload* | Z |
UZnDM_TTSHttpDownload::DoDownload | audioUrl:FString, faceUrl:FString, bodyUrl:FString, printLog:bool=true |  | Z |
)";

struct FParam
{
	std::string Name;
	std::string Type;
	std::string Kind = "in";
	bool bHasDefault = false;
	std::string Default;
};

struct FRow
{
	std::string Class = "UZnDM_BpFuncLib";
	std::string Name;
	std::vector<FParam> Params;
	std::string Return;
	std::string Category;
	std::map<std::string, std::string> Meta;
	bool bStatic = true;
};

std::string Trim(const std::string& S)
{
	const size_t B = S.find_first_not_of(" \t");
	const size_t E = S.find_last_not_of(" \t");
	return B == std::string::npos ? std::string() : S.substr(B, E - B + 1);
}

std::vector<std::string> Split(const std::string& S, const std::string& Sep)
{
	std::vector<std::string> Out;
	size_t Pos = 0;
	while (true)
	{
		const size_t Next = S.find(Sep, Pos);
		Out.push_back(Trim(S.substr(Pos, Next == std::string::npos ? std::string::npos : Next - Pos)));
		if (Next == std::string::npos)
		{
			return Out;
		}
		Pos = Next + Sep.size();
	}
}

std::vector<FRow> ParseCatalogue()
{
	std::vector<FRow> Rows;
	std::istringstream In(Catalogue);
	std::string Line;
	while (std::getline(In, Line))
	{
		if (Trim(Line).empty())
		{
			continue;
		}
		const std::vector<std::string> Cols = Split(Line + " ", " | ");
		EXPECT_EQ(Cols.size(), 5u) << Line;
		if (Cols.size() != 5)
		{
			continue;
		}
		FRow Row;
		const size_t Colons = Cols[0].find("::");
		if (Colons != std::string::npos)
		{
			Row.Class = Cols[0].substr(0, Colons);
			Row.Name = Cols[0].substr(Colons + 2);
			Row.bStatic = Row.Name.compare(0, 6, "Create") == 0;
		}
		else
		{
			Row.Name = Cols[0];
		}
		if (!Cols[1].empty())
		{
			for (const std::string& P : Split(Cols[1], ", "))
			{
				FParam Param;
				std::string ParamText = P;
				const size_t Eq = ParamText.find('=');
				if (Eq != std::string::npos)
				{
					Param.bHasDefault = true;
					Param.Default = ParamText.substr(Eq + 1);
					ParamText = ParamText.substr(0, Eq);
				}
				const std::vector<std::string> Parts = Split(ParamText, ":");
				Param.Name = Parts[0];
				Param.Type = Parts.size() > 1 ? Parts[1] : "";
				if (Parts.size() > 2)
				{
					Param.Kind = Parts[2];
				}
				Row.Params.push_back(Param);
			}
		}
		Row.Return = Cols[2];
		const std::string Base = "ZnDM_Functions|UtilsTools";
		Row.Category = Cols[3] == "U" ? Base
			: Cols[3] == "Tmp"		  ? Base + "|Tmp"
			: Cols[3] == "Test"		  ? Base + "|Test"
									  : std::string("ZnDM_Functions|ZNTools");
		if (!Cols[4].empty())
		{
			for (const std::string& M : Split(Cols[4], " ;; "))
			{
				const size_t Eq = M.find('=');
				Row.Meta[M.substr(0, Eq)] = M.substr(Eq + 1);
			}
		}
		Rows.push_back(Row);
	}
	return Rows;
}

UClass* ClassByCppName(const std::string& Name)
{
	for (UClass* Class :
		{UZnDM_BpFuncLib::StaticClass(), UZnDM_HttpRequest::StaticClass(), UZnDM_HttpRequest_TTS::StaticClass(),
			UZnDM_HttpDownload::StaticClass(), UZnDM_TTSHttpDownload::StaticClass()})
	{
		if (Utf8(Class->GetCppName()) == Name)
		{
			return Class;
		}
	}
	return nullptr;
}

void CheckFunction(const FRow& Row, UFunction* Function)
{
	SCOPED_TRACE(Row.Class + "::" + Row.Name);
	EXPECT_EQ(Utf8(Function->GetName()), Row.Name) << "names are matched exactly, case included";
	// Flags: native, final, public, callable from scripts, never pure; static where the row says.
	EXPECT_TRUE(Function->HasAllFunctionFlags(FUNC_Native | FUNC_Final | FUNC_Public | FUNC_BlueprintCallable));
	EXPECT_FALSE(Function->HasAnyFunctionFlags(FUNC_BlueprintPure | FUNC_Private | FUNC_Protected | FUNC_Const));
	EXPECT_EQ(Function->HasAnyFunctionFlags(FUNC_Static), Row.bStatic);
	EXPECT_NE(Function->GetNativeFunc(), nullptr);

	std::vector<std::string> ExpectedParams;
	bool bAnyOut = !Row.Return.empty();
	bool bAnyDefault = false;
	std::map<std::string, std::string> ExpectedMeta = Row.Meta;
	ExpectedMeta["Category"] = Row.Category;
	ExpectedMeta["ModuleRelativePath"] = Utf8(Function->GetOwnerClass()->GetMetaData(TEXT("ModuleRelativePath")));
	for (const FParam& P : Row.Params)
	{
		ExpectedParams.push_back(P.Name + ": " + P.Type + " " + P.Kind);
		bAnyOut |= P.Kind != "in";
		if (P.bHasDefault)
		{
			bAnyDefault = true;
			ExpectedMeta["CPP_Default_" + P.Name] = P.Default;
		}
	}
	std::vector<std::string> ActualParams;
	std::string ActualReturn;
	int32 Count = 0;
	for (TFieldIterator<FProperty> It(Function); It; ++It)
	{
		++Count;
		EXPECT_TRUE(It->HasAnyPropertyFlags(CPF_Parm));
		if (It->HasAnyPropertyFlags(CPF_ReturnParm))
		{
			ActualReturn = Utf8(It->GetCPPType());
			EXPECT_EQ(Utf8(It->GetName()), "ReturnValue");
			continue;
		}
		ActualParams.push_back(Utf8(It->GetName()) + ": " + Utf8(It->GetCPPType()) + " " + KindOf(*It));
		if (const FEnumProperty* Enum = CastField<FEnumProperty>(*It))
		{
			// Enumeration parameters travel as their uint8 value.
			ASSERT_NE(Enum->GetUnderlyingProperty(), nullptr);
			EXPECT_EQ(Utf8(Enum->GetUnderlyingProperty()->GetName()), "UnderlyingType");
			EXPECT_NE(CastField<FByteProperty>(Enum->GetUnderlyingProperty()), nullptr);
			EXPECT_EQ(Enum->ElementSize, 1);
		}
	}
	EXPECT_EQ(ActualParams, ExpectedParams);
	EXPECT_EQ(ActualReturn, Row.Return);
	EXPECT_EQ(Function->NumParms, Count);
	EXPECT_EQ(Function->HasAnyFunctionFlags(FUNC_HasOutParms), bAnyOut);
	EXPECT_EQ(Function->HasAnyFunctionFlags(FUNC_HasDefaults), bAnyDefault);

	std::map<std::string, std::string> ActualMeta = MetaOf(Function->GetMetaDataStore());
	auto Tip = ExpectedMeta.find("ToolTip");
	if (Tip != ExpectedMeta.end())
	{
		// A tooltip comes from the comment above the declaration; the raw comment rides along.
		if (ActualMeta.count("Comment"))
		{
			ExpectedMeta["Comment"] = ActualMeta["Comment"];
		}
		if (Tip->second == "*")
		{
			// Its text is not part of the surface; it may also be absent.
			if (ActualMeta.count("ToolTip"))
			{
				Tip->second = ActualMeta["ToolTip"];
			}
			else
			{
				ExpectedMeta.erase(Tip);
			}
		}
	}
	EXPECT_EQ(ActualMeta, ExpectedMeta);
}
} // namespace

TEST(FunctionCatalogTests, CatalogueHasEveryScriptFunctionOnce)
{
	const std::vector<FRow> Rows = ParseCatalogue();
	int32 LibraryRows = 0;
	std::set<std::string> Seen;
	for (const FRow& Row : Rows)
	{
		LibraryRows += Row.Class == "UZnDM_BpFuncLib";
		EXPECT_TRUE(Seen.insert(Row.Class + "::" + Row.Name).second) << Row.Name;
	}
	EXPECT_EQ(LibraryRows, 56);
	EXPECT_EQ(Rows.size(), 68u);
}

TEST(FunctionCatalogTests, EveryCatalogueRowIsARegisteredFunction)
{
	const std::vector<FRow> Rows = ParseCatalogue();
	int32 Checked = 0;
	for (const FRow& Row : Rows)
	{
		UClass* Class = ClassByCppName(Row.Class);
		ASSERT_NE(Class, nullptr) << Row.Class;
		UFunction* Function = Class->FindFunctionByName(FName(Wide(Row.Name)), false);
		if (!Function)
		{
			ADD_FAILURE() << Row.Class << "::" << Row.Name << " is catalogued but not registered";
			continue;
		}
		CheckFunction(Row, Function);
		++Checked;
	}
	EXPECT_EQ(Checked, int32(Rows.size()));
}

TEST(FunctionCatalogTests, NoFunctionIsRegisteredThatTheCatalogueDoesNotList)
{
	const std::vector<FRow> Rows = ParseCatalogue();
	for (UClass* Class :
		{UZnDM_BpFuncLib::StaticClass(), UZnDM_HttpRequest::StaticClass(), UZnDM_HttpRequest_TTS::StaticClass(),
			UZnDM_HttpDownload::StaticClass(), UZnDM_TTSHttpDownload::StaticClass(), StaticClass<AZnActor_FPS>()})
	{
		for (TFieldIterator<UFunction> It(Class, EFieldIteratorFlags::ExcludeSuper); It; ++It)
		{
			const std::string Name = Utf8(It->GetName());
			bool bListed = false;
			for (const FRow& Row : Rows)
			{
				bListed |= Row.Name == Name && Row.Class == Utf8(Class->GetCppName());
			}
			EXPECT_TRUE(bListed) << Utf8(Class->GetCppName()) << "::" << Name << " is not a catalogued script function";
		}
	}
}
