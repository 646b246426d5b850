#include "Modules/ModuleManager.h"
#include "RegistryTestHelpers.h"
#include "ZnActor_FPS.h"
#include "ZnBodyData.h"
#include "ZnDM_BpFuncLib.h"
#include "ZnDM_HttpDownload.h"
#include "ZnDM_HttpRequest.h"
#include "ZnDM_HttpRequest_TTS.h"
#include "ZnDM_TTSHttpDownload.h"
#include "ZnFaceData.h"
#include "ZnQuatCurve.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

using namespace ZnRegistryTest;

extern "C" IModuleInterface* InitializeModule();

namespace
{
template <typename T>
std::set<std::string> NamesInPackage(UClass* Class)
{
	TArray<UObject*> Objects;
	GetObjectsWithOuter(ModulePackage(), Objects, false);
	std::set<std::string> Names;
	for (UObject* O : Objects)
	{
		if (O->GetClass() == Class)
		{
			Names.insert(Utf8(O->GetName()));
		}
	}
	return Names;
}
} // namespace

TEST(RegistryTests, ModuleObjectIsTheStatelessDefault)
{
	IModuleInterface* Module = FModuleManager::Get().LoadModule(FName(TEXT("ZnUtilsTools")));
	ASSERT_NE(Module, nullptr);
	EXPECT_TRUE(Module->SupportsDynamicReloading());
	EXPECT_TRUE(Module->SupportsAutomaticShutdown());
	EXPECT_FALSE(Module->IsGameModule());
	IModuleInterface* Fresh = InitializeModule();
	ASSERT_NE(Fresh, nullptr);
	EXPECT_NE(dynamic_cast<FDefaultModuleImpl*>(Fresh), nullptr);
	Fresh->StartupModule();
	Fresh->ShutdownModule();
	delete Fresh;
}

TEST(RegistryTests, PackageHoldsSixClassesFiveRecordsEightEnumerationsAndFourDelegates)
{
	ASSERT_NE(ModulePackage(), nullptr);
	EXPECT_EQ(NamesInPackage<UClass>(UClass::StaticClass()),
		(std::set<std::string>{"ZnDM_BpFuncLib", "ZnDM_HttpRequest", "ZnDM_HttpRequest_TTS", "ZnDM_HttpDownload",
			"ZnDM_TTSHttpDownload", "ZnActor_FPS"}));
	EXPECT_EQ(NamesInPackage<UScriptStruct>(UScriptStruct::StaticClass()),
		(std::set<std::string>{"ZnQuatCurveKey", "ZnQuatCurve", "ZnBodyData", "ZnFaceData", "ZnAPIConfig"}));
	EXPECT_EQ(NamesInPackage<UEnum>(UEnum::StaticClass()),
		(std::set<std::string>{"ZnDM_HttpVerb", "ZnRegion", "ZnJsonDataType", "ZnDM_PathName", "ZnDM_PathType",
			"ZnDM_DateTimePurpose", "ZnDM_StatType", "EZNSkeletonType"}));
	EXPECT_EQ(NamesInPackage<UFunction>(UDelegateFunction::StaticClass()),
		(std::set<std::string>{"OnRequestCompleted__DelegateSignature", "OnDownloadCompleted__DelegateSignature",
			"OnRequestTTSCompleted__DelegateSignature", "OnTtsDownloadCompleted__DelegateSignature"}));
}

struct FExpectedClass
{
	UClass* Class;
	const char* CppName;
	const char* Base;
	const char* Header;
	std::map<std::string, std::string> Meta;
};

TEST(RegistryTests, ClassesHaveTheirBasesHeadersAndMetadata)
{
	const std::string U = "ZnDM_Functions|UtilsTools";
	const std::vector<FExpectedClass> Expected = {
		{UZnDM_BpFuncLib::StaticClass(), "UZnDM_BpFuncLib", "UBlueprintFunctionLibrary", "ZnDM_BpFuncLib.h", {}},
		{UZnDM_HttpRequest::StaticClass(), "UZnDM_HttpRequest", "UObject", "ZnDM_HttpRequest.h",
			{{"BlueprintType", "true"}, {"Category", U}}},
		{UZnDM_HttpRequest_TTS::StaticClass(), "UZnDM_HttpRequest_TTS", "UObject", "ZnDM_HttpRequest_TTS.h",
			{{"BlueprintType", "true"}, {"Category", U}}},
		{UZnDM_HttpDownload::StaticClass(), "UZnDM_HttpDownload", "UObject", "ZnDM_HttpDownload.h",
			{{"BlueprintType", "true"}, {"Category", U}}},
		// The three-file download is filed under ZNTools on purpose.
		{UZnDM_TTSHttpDownload::StaticClass(), "UZnDM_TTSHttpDownload", "UObject", "ZnDM_TTSHttpDownload.h",
			{{"BlueprintType", "true"}, {"Category", "ZnDM_Functions|ZNTools"}}},
		{AZnActor_FPS::StaticClass(), "AZnActor_FPS", "AActor", "ZnActor_FPS.h", {}},
	};
	for (const FExpectedClass& E : Expected)
	{
		SCOPED_TRACE(E.CppName);
		ASSERT_NE(E.Class, nullptr);
		EXPECT_EQ(Utf8(E.Class->GetCppName()), E.CppName);
		ASSERT_NE(E.Class->GetSuperClass(), nullptr);
		EXPECT_EQ(Utf8(E.Class->GetSuperClass()->GetCppName()), E.Base);
		EXPECT_EQ(E.Class->GetOutermost(), ModulePackage());
		std::map<std::string, std::string> Meta = E.Meta;
		Meta["IncludePath"] = E.Header;
		Meta["ModuleRelativePath"] = std::string("Public/") + E.Header;
		EXPECT_EQ(MetaOf(E.Class->GetMetaDataStore()), Meta);
		EXPECT_TRUE(E.Class->HasAnyClassFlags(CLASS_Native));
		EXPECT_EQ(FindInModule<UClass>(Utf8(E.Class->GetName()).c_str()), E.Class);
	}
}

TEST(RegistryTests, FrameRateActorHasItsTwoEditableProperties)
{
	UClass* Class = AZnActor_FPS::StaticClass();
	std::vector<std::string> Names;
	for (TFieldIterator<FProperty> It(Class, EFieldIteratorFlags::ExcludeSuper); It; ++It)
	{
		Names.push_back(Utf8(It->GetName()));
	}
	EXPECT_EQ(Names, (std::vector<std::string>{"EnableCustomFps", "CustomFps"}));
	const FBoolProperty* Enable = CastField<FBoolProperty>(Class->FindPropertyByName(FName(TEXT("EnableCustomFps"))));
	ASSERT_NE(Enable, nullptr);
	EXPECT_TRUE(Enable->IsNativeBool());
	EXPECT_EQ(Enable->ElementSize, int32(sizeof(bool)));
	EXPECT_TRUE(Enable->HasAnyPropertyFlags(CPF_Edit));
	EXPECT_EQ(Utf8(Enable->GetMetaData(TEXT("Category"))), "DM_FPS");
	const FIntProperty* Fps = CastField<FIntProperty>(Class->FindPropertyByName(FName(TEXT("CustomFps"))));
	ASSERT_NE(Fps, nullptr);
	EXPECT_TRUE(Fps->HasAnyPropertyFlags(CPF_Edit));
	EXPECT_EQ(Utf8(Fps->GetMetaData(TEXT("Category"))), "DM_FPS");
	EXPECT_EQ(Utf8(Fps->GetCPPType()), "int32");
}

TEST(RegistryTests, FrameRateActorPropertiesReadTheObjectsFields)
{
	AZnActor_FPS* Actor = NewObject<AZnActor_FPS>();
	const FIntProperty* Fps = CastField<FIntProperty>(Actor->GetClass()->FindPropertyByName(FName(TEXT("CustomFps"))));
	ASSERT_NE(Fps, nullptr);
	EXPECT_EQ(Fps->GetPropertyValue(Fps->ContainerPtrToValuePtr<void>(Actor)), 60);
	Fps->SetPropertyValue(Fps->ContainerPtrToValuePtr<void>(Actor), 30);
	EXPECT_EQ(Actor->CustomFps, 30);
	CollectGarbage();
}

TEST(RegistryTests, RequestClassesExposeTheirCompletionDelegates)
{
	const std::vector<std::tuple<UClass*, const char*, const char*>> Expected = {
		{UZnDM_HttpRequest::StaticClass(), "OnCompleted", "OnRequestCompleted__DelegateSignature"},
		{UZnDM_HttpRequest::StaticClass(), "OnGetAppTokenCompleted", "OnRequestCompleted__DelegateSignature"},
		{UZnDM_HttpRequest_TTS::StaticClass(), "OnCompleted", "OnRequestTTSCompleted__DelegateSignature"},
		{UZnDM_HttpDownload::StaticClass(), "OnCompleted", "OnDownloadCompleted__DelegateSignature"},
		{UZnDM_TTSHttpDownload::StaticClass(), "OnCompleted", "OnTtsDownloadCompleted__DelegateSignature"},
	};
	for (const auto& E : Expected)
	{
		SCOPED_TRACE(std::get<1>(E));
		const auto* Prop = CastField<FMulticastInlineDelegateProperty>(
			std::get<0>(E)->FindPropertyByName(FName(Wide(std::get<1>(E)))));
		ASSERT_NE(Prop, nullptr);
		EXPECT_TRUE(Prop->HasAnyPropertyFlags(CPF_BlueprintAssignable));
		ASSERT_NE(Prop->SignatureFunction, nullptr);
		EXPECT_EQ(Utf8(Prop->SignatureFunction->GetName()), std::get<2>(E));
	}
	const FBoolProperty* PrintLog =
		CastField<FBoolProperty>(UZnDM_HttpRequest::StaticClass()->FindPropertyByName(FName(TEXT("mPrintLog"))));
	ASSERT_NE(PrintLog, nullptr);
	EXPECT_NE(CastField<FBoolProperty>(UZnDM_HttpDownload::StaticClass()->FindPropertyByName(FName(TEXT("NeedSave")))),
		nullptr);
	EXPECT_NE(CastField<FStrProperty>(UZnDM_HttpDownload::StaticClass()->FindPropertyByName(FName(TEXT("SavePath")))),
		nullptr);
	EXPECT_EQ(UZnDM_HttpRequest_TTS::StaticClass()->FindPropertyByName(FName(TEXT("mPrintLog"))), nullptr)
		<< "not reflected on the speech request";
}

struct FExpectedDelegate
{
	const char* Signature;
	const char* Header;
	std::vector<std::pair<std::string, std::string>> Params; // name, "type kind"
};

TEST(RegistryTests, DelegateSignaturesListTheirParametersInOrder)
{
	const std::vector<FExpectedDelegate> Expected = {
		{"OnRequestCompleted__DelegateSignature", "Public/ZnDM_HttpRequest.h",
			{{"requestRet", "bool in"}, {"responseStr", "FString cref"}}},
		{"OnRequestTTSCompleted__DelegateSignature", "Public/ZnDM_HttpRequest_TTS.h",
			{{"result", "bool in"}, {"audioUrl", "FString cref"}, {"faceUrl", "FString cref"},
				{"bodyUrl", "FString cref"}}},
		{"OnDownloadCompleted__DelegateSignature", "Public/ZnDM_HttpDownload.h",
			{{"requestRet", "bool in"}, {"responseStr", "FString in"}, {"responseBytes", "TArray<uint8> cref"}}},
		{"OnTtsDownloadCompleted__DelegateSignature", "Public/ZnDM_TTSHttpDownload.h",
			{{"audioRet", "bool in"}, {"audioBytes", "TArray<uint8> cref"}, {"faceRet", "bool in"},
				{"faceJson", "FString cref"}, {"bodyRet", "bool in"}, {"bodyJson", "FString cref"}}},
	};
	for (const FExpectedDelegate& E : Expected)
	{
		SCOPED_TRACE(E.Signature);
		UFunction* Signature = FindInModule<UDelegateFunction>(E.Signature);
		ASSERT_NE(Signature, nullptr);
		EXPECT_TRUE(Signature->IsA<UDelegateFunction>());
		EXPECT_TRUE(Signature->HasAllFunctionFlags(FUNC_MulticastDelegate | FUNC_Delegate | FUNC_Public));
		EXPECT_EQ(Signature->GetNativeFunc(), nullptr);
		EXPECT_EQ(Utf8(Signature->GetMetaData(TEXT("ModuleRelativePath"))), E.Header);
		std::vector<std::pair<std::string, std::string>> Params;
		for (TFieldIterator<FProperty> It(Signature); It; ++It)
		{
			Params.emplace_back(Utf8(It->GetName()), Utf8(It->GetCPPType()) + " " + KindOf(*It));
		}
		EXPECT_EQ(Params, E.Params);
		EXPECT_EQ(Signature->NumParms, E.Params.size());
	}
}

struct FExpectedEnum
{
	UEnum* Enum;
	const char* Name;
	const char* Header;
	bool bBlueprintType;
	std::vector<const char*> Values;
};

TEST(RegistryTests, EnumerationsHaveTheirValuesNamesAndMetadata)
{
	const std::vector<FExpectedEnum> Expected = {
		{StaticEnum<ZnDM_PathType>(), "ZnDM_PathType", "Public/ZnDM_BpFuncLib.h", false, {"Complete", "Relative"}},
		{StaticEnum<ZnDM_PathName>(), "ZnDM_PathName", "Public/ZnDM_BpFuncLib.h", false,
			{"ProjectDir", "ProjectContentDir", "ProjectConfigDir", "ProjectPluginsDir", "ExeDir"}},
		{StaticEnum<ZnDM_DateTimePurpose>(), "ZnDM_DateTimePurpose", "Public/ZnDM_BpFuncLib.h", true,
			{"LogHeader", "FileName"}},
		{StaticEnum<ZnDM_StatType>(), "ZnDM_StatType", "Public/ZnDM_BpFuncLib.h", true,
			{"Fps", "Unit", "UnitGraph", "Engine", "Game", "SceneRendering", "Rhi", "Gpu"}},
		{StaticEnum<ZnJsonDataType>(), "ZnJsonDataType", "Public/ZnDM_BpFuncLib.h", true,
			{"VoiceBroadcast", "TextBroadcast", "AnswerCollect"}},
		{StaticEnum<ZnRegion>(), "ZnRegion", "Public/ZnDM_BpFuncLib.h", true, {"EN_US", "ZH_CN"}},
		{StaticEnum<ZnDM_HttpVerb>(), "ZnDM_HttpVerb", "Public/ZnDM_HttpRequest.h", true, {"GET", "POST"}},
		{StaticEnum<EZNSkeletonType>(), "EZNSkeletonType", "Public/ZnBodyData.h", true, {"DM", "UE"}},
	};
	for (const FExpectedEnum& E : Expected)
	{
		SCOPED_TRACE(E.Name);
		ASSERT_NE(E.Enum, nullptr);
		EXPECT_EQ(Utf8(E.Enum->GetName()), E.Name);
		EXPECT_EQ(E.Enum->GetOutermost(), ModulePackage());
		EXPECT_EQ(E.Enum->GetCppForm(), UEnum::ECppForm::EnumClass);
		ASSERT_EQ(E.Enum->NumEnums(), int32(E.Values.size()));
		std::map<std::string, std::string> Meta = {{"ModuleRelativePath", E.Header}};
		if (E.bBlueprintType)
		{
			Meta["BlueprintType"] = "true";
		}
		for (int32 I = 0; I < E.Enum->NumEnums(); ++I)
		{
			const std::string Full = std::string(E.Name) + "::" + E.Values[I];
			EXPECT_EQ(E.Enum->GetValueByIndex(I), I) << "values count from 0 in declaration order";
			EXPECT_EQ(Utf8(E.Enum->GetNameByIndex(I).ToString()), Full);
			EXPECT_EQ(Utf8(E.Enum->GetNameStringByIndex(I)), E.Values[I]);
			EXPECT_EQ(Utf8(E.Enum->GetDisplayNameStringByIndex(I)), E.Values[I]);
			EXPECT_EQ(E.Enum->GetValueByName(FName(Wide(Full))), I) << "a saved full name round-trips";
			Meta[std::string(E.Values[I]) + ".Name"] = Full;
		}
		std::map<std::string, std::string> Actual = MetaOf(E.Enum->GetMetaDataStore());
		if (std::string(E.Name) == "ZnRegion")
		{
			// Derived from the comment above the declaration, as the engine's tool does.
			Meta["Comment"] = "//\xE5\x9B\xBD\xE5\x86\x85\xE3\x80\x81\xE5\x9B\xBD\xE5\xA4\x96\n";
			Meta["ToolTip"] = "\xE5\x9B\xBD\xE5\x86\x85\xE3\x80\x81\xE5\x9B\xBD\xE5\xA4\x96";
		}
		if (std::string(E.Name) == "ZnDM_HttpVerb")
		{
			// Its comment holds only a commented-out declaration and is not part of the surface.
			Actual.erase("Comment");
			Actual.erase("ToolTip");
		}
		EXPECT_EQ(Actual, Meta);
	}
}

TEST(RegistryTests, RecordsHaveTheirHeadersAndReflectedFields)
{
	const std::vector<std::tuple<UScriptStruct*, const char*, std::vector<std::string>>> Expected = {
		{FZnQuatCurveKey::StaticStruct(), "Public/ZnQuatCurve.h", {}},
		{FZnQuatCurve::StaticStruct(), "Public/ZnQuatCurve.h", {}},
		{FZnBodyData::StaticStruct(), "Public/ZnBodyData.h", {"id int64", "totalTime float"}},
		{FZnFaceData::StaticStruct(), "Public/ZnFaceData.h", {"id int64", "totalTime float"}},
		{FZnAPIConfig::StaticStruct(), "Public/ZnDM_BpFuncLib.h",
			{"TokenAPI_EN_US FString", "TokenAPI_ZH_CN FString", "TextBroadcastMotionAPI_EN_US FString",
				"TextBroadcastMotionAPI_ZH_CN FString", "VoiceBroadcastMotionAPI_EN_US FString",
				"VoiceBroadcastMotionAPI_ZH_CN FString", "AnswerCollectAPI_EN_US FString",
				"AnswerCollectAPI_ZH_CN FString"}},
	};
	for (const auto& E : Expected)
	{
		UScriptStruct* Struct = std::get<0>(E);
		ASSERT_NE(Struct, nullptr);
		SCOPED_TRACE(Utf8(Struct->GetName()));
		EXPECT_EQ(Struct->GetOutermost(), ModulePackage());
		EXPECT_EQ(Utf8(Struct->GetMetaData(TEXT("ModuleRelativePath"))), std::get<1>(E));
		EXPECT_EQ(Utf8(Struct->GetMetaData(TEXT("BlueprintType"))), "true");
		std::vector<std::string> Fields;
		for (TFieldIterator<FProperty> It(Struct); It; ++It)
		{
			Fields.push_back(Utf8(It->GetName()) + " " + Utf8(It->GetCPPType()));
		}
		EXPECT_EQ(Fields, std::get<2>(E));
	}
	EXPECT_EQ(FZnBodyData::StaticStruct()->GetStructureSize(), int32(sizeof(FZnBodyData)));
	EXPECT_EQ(FZnFaceData::StaticStruct()->GetStructureSize(), int32(sizeof(FZnFaceData)));
	EXPECT_EQ(StaticStruct<FZnBodyData>(), FZnBodyData::StaticStruct());
	for (UScriptStruct* Body : {FZnBodyData::StaticStruct(), FZnFaceData::StaticStruct()})
	{
		for (TFieldIterator<FProperty> It(Body); It; ++It)
		{
			EXPECT_TRUE(It->HasAllPropertyFlags(CPF_Edit | CPF_BlueprintVisible));
			EXPECT_EQ(Utf8(It->GetMetaData(TEXT("Category"))), "Zenvora");
		}
	}
}

TEST(RegistryTests, ApiConfigPutsOnlyTheInternationalTokenUnderItsOwnCategory)
{
	for (TFieldIterator<FProperty> It(FZnAPIConfig::StaticStruct()); It; ++It)
	{
		SCOPED_TRACE(Utf8(It->GetName()));
		const bool bToken = It->GetName() == FString(TEXT("TokenAPI_EN_US"));
		EXPECT_EQ(Utf8(It->GetMetaData(TEXT("Category"))), bToken ? "Zenvora|EN" : "Zenvora");
		EXPECT_FALSE(It->HasMetaData(TEXT("ToolTip")));
	}
}

TEST(RegistryTests, RecordReadThroughTheRegistryIsTheCppValue)
{
	FZnBodyData Body;
	Body.totalTime = 2.5f;
	Body.BoneNames.Add(FString(TEXT("Hips")));
	const FProperty* Total = FZnBodyData::StaticStruct()->FindPropertyByName(FName(TEXT("totalTime")));
	ASSERT_NE(Total, nullptr);
	EXPECT_FLOAT_EQ(
		CastField<FFloatProperty>(Total)->GetPropertyValue(Total->ContainerPtrToValuePtr<void>(&Body)), 2.5f);
	// Copying through the record's own operations keeps the native fields.
	FStructOnScope Copy(FZnBodyData::StaticStruct());
	FZnBodyData::StaticStruct()->CopyScriptStruct(Copy.GetStructMemory(), &Body);
	const FZnBodyData& Copied = *reinterpret_cast<const FZnBodyData*>(Copy.GetStructMemory());
	ASSERT_EQ(Copied.BoneNames.Num(), 1);
	EXPECT_EQ(Copied.BoneNames[0], FString(TEXT("Hips")));
	EXPECT_EQ(Copied.id, Body.id);
}
