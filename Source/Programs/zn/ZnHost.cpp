#include "ZnHost.h"

#include "ZnExit.h"

#include "Containers/StringConv.h"
#include "UObject/Package.h"
#include "ZnBodyData.h"
#include "ZnFaceData.h"
#include "ZnQuatCurve.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>

namespace ZnHost
{
std::string ToUtf8(const FString& Text)
{
	FTCHARToUTF8 Converted(*Text);
	return std::string(Converted.Get(), Converted.Length());
}

FString FromUtf8(const std::string& Text)
{
	return FString(UTF8_TO_TCHAR(Text.c_str()));
}

namespace
{
const TCHAR* PackageName = TEXT("/Script/ZnUtilsTools");

/** A float as the shortest decimal that reads back to it, so 0.1f prints as 0.1. */
Json FloatJson(float Value)
{
	if (!std::isfinite(Value))
	{
		return Json(nullptr);
	}
	char Buffer[64];
	const auto Result = std::to_chars(Buffer, Buffer + sizeof(Buffer), Value);
	return Json(std::strtod(std::string(Buffer, Result.ptr).c_str(), nullptr));
}

Json DoubleJson(double Value)
{
	return std::isfinite(Value) ? Json(Value) : Json(nullptr);
}

template <typename T>
TArray<T*> SortedByName(TArray<T*> Items)
{
	std::sort(Items.GetData(), Items.GetData() + Items.Num(),
		[](const T* A, const T* B) { return ToUtf8(A->GetName()) < ToUtf8(B->GetName()); });
	return Items;
}

template <typename T>
TArray<T*> ObjectsOfPackage(UClass* Class, bool bExact)
{
	TArray<UObject*> Objects;
	GetObjectsWithOuter(ModulePackage(), Objects, false);
	TArray<T*> Result;
	for (UObject* O : Objects)
	{
		if (bExact ? O->GetClass() == Class : O->IsA(Class))
		{
			Result.Add(static_cast<T*>(O));
		}
	}
	return SortedByName(Result);
}

Json MetaDataJson(const FZnMetaData& Meta)
{
	std::vector<std::pair<std::string, std::string>> Pairs;
	for (const auto& Entry : Meta.GetEntries())
	{
		Pairs.emplace_back(ToUtf8(Entry.Key.ToString()), ToUtf8(Entry.Value));
	}
	std::sort(Pairs.begin(), Pairs.end());
	Json Out = Json::object();
	for (const auto& P : Pairs)
	{
		Out[P.first] = P.second;
	}
	return Out;
}

std::string CppType(const FProperty* Property)
{
	return ToUtf8(Property->GetCPPType());
}

Json QuatJson(const FQuat& Q)
{
	Json Out = Json::object();
	Out["X"] = DoubleJson(Q.X);
	Out["Y"] = DoubleJson(Q.Y);
	Out["Z"] = DoubleJson(Q.Z);
	Out["W"] = DoubleJson(Q.W);
	return Out;
}

Json RichCurveJson(const FRichCurve& Curve)
{
	Json Keys = Json::array();
	for (const FRichCurveKey& Key : Curve.Keys)
	{
		Json K = Json::object();
		K["Time"] = FloatJson(Key.Time);
		K["Value"] = FloatJson(Key.Value);
		Keys.push_back(std::move(K));
	}
	Json Out = Json::object();
	Out["Keys"] = std::move(Keys);
	return Out;
}

Json QuatCurveJson(const FZnQuatCurve& Curve)
{
	Json Keys = Json::array();
	for (const FZnQuatCurveKey& Key : Curve.Keys)
	{
		Json K = Json::object();
		K["Time"] = FloatJson(Key.Time);
		K["Value"] = QuatJson(Key.Value);
		Keys.push_back(std::move(K));
	}
	Json Out = Json::object();
	Out["Keys"] = std::move(Keys);
	return Out;
}

Json StringsJson(const TArray<FString>& Strings)
{
	Json Out = Json::array();
	for (const FString& S : Strings)
	{
		Out.push_back(ToUtf8(S));
	}
	return Out;
}

/** The fields the registry does not know, written from the record's C++ type. */
void AddNativeFields(const UScriptStruct* Struct, const void* Value, Json& Out)
{
	if (Struct == FZnBodyData::StaticStruct())
	{
		const FZnBodyData& Body = *static_cast<const FZnBodyData*>(Value);
		Out["BoneNames"] = StringsJson(Body.BoneNames);
		Json Frames = Json::array();
		for (const TArray<FQuat>& Bone : Body.BoneFrames)
		{
			Json Row = Json::array();
			for (const FQuat& Q : Bone)
			{
				Row.push_back(QuatJson(Q));
			}
			Frames.push_back(std::move(Row));
		}
		Out["BoneFrames"] = std::move(Frames);
		Json Curves = Json::array();
		for (const FZnQuatCurve& Curve : Body.BoneCurves)
		{
			Curves.push_back(QuatCurveJson(Curve));
		}
		Out["BoneCurves"] = std::move(Curves);
		Json Root = Json::object();
		Root["X"] = RichCurveJson(Body.RootPositionCurve.FloatCurves[0]);
		Root["Y"] = RichCurveJson(Body.RootPositionCurve.FloatCurves[1]);
		Root["Z"] = RichCurveJson(Body.RootPositionCurve.FloatCurves[2]);
		Out["RootPositionCurve"] = std::move(Root);
		Json Start = Json::object();
		Start["X"] = DoubleJson(Body.RootStartPosition.X);
		Start["Y"] = DoubleJson(Body.RootStartPosition.Y);
		Start["Z"] = DoubleJson(Body.RootStartPosition.Z);
		Out["RootStartPosition"] = std::move(Start);
	}
	else if (Struct == FZnFaceData::StaticStruct())
	{
		const FZnFaceData& Face = *static_cast<const FZnFaceData*>(Value);
		Out["CurveNames"] = StringsJson(Face.CurveNames);
		Json Frames = Json::array();
		for (const TArray<float>& Curve : Face.CurveFrames)
		{
			Json Row = Json::array();
			for (float V : Curve)
			{
				Row.push_back(FloatJson(V));
			}
			Frames.push_back(std::move(Row));
		}
		Out["CurveFrames"] = std::move(Frames);
		Json Curves = Json::array();
		for (const FFloatCurve& Curve : Face.Curves)
		{
			Curves.push_back(RichCurveJson(Curve.FloatCurve));
		}
		Out["Curves"] = std::move(Curves);
	}
	else if (Struct == FZnQuatCurve::StaticStruct())
	{
		Out["Keys"] = QuatCurveJson(*static_cast<const FZnQuatCurve*>(Value))["Keys"];
	}
	else if (Struct == FZnQuatCurveKey::StaticStruct())
	{
		const FZnQuatCurveKey& Key = *static_cast<const FZnQuatCurveKey*>(Value);
		Out["Time"] = FloatJson(Key.Time);
		Out["Value"] = QuatJson(Key.Value);
	}
}

Json PropertyJson(const FProperty* Property, bool bParameter)
{
	Json Out = Json::object();
	Out["name"] = ToUtf8(Property->GetName());
	Out["type"] = CppType(Property);
	if (bParameter)
	{
		Out["kind"] = ParamKind(Property);
	}
	if (const FEnumProperty* Enum = CastField<FEnumProperty>(Property))
	{
		Out["enum"] = Enum->GetEnum() ? ToUtf8(Enum->GetEnum()->GetName()) : "";
		Out["underlyingProperty"] = ToUtf8(Enum->GetUnderlyingProperty()->GetName());
		Out["underlyingType"] = CppType(Enum->GetUnderlyingProperty());
	}
	Out["flags"] = PropertyFlagNames(Property->GetPropertyFlags());
	Out["metadata"] = MetaDataJson(Property->GetMetaDataStore());
	return Out;
}

std::string FunctionOwnerCppName(const UFunction* Function)
{
	const UClass* Owner = Function->GetOwnerClass();
	return Owner ? ToUtf8(Owner->GetCppName()) : std::string();
}
} // namespace

UPackage* ModulePackage()
{
	ProcessNewlyLoadedUObjects();
	return FindPackage(nullptr, PackageName);
}

TArray<UClass*> ModuleClasses()
{
	return ObjectsOfPackage<UClass>(UClass::StaticClass(), true);
}

TArray<UScriptStruct*> ModuleStructs()
{
	return ObjectsOfPackage<UScriptStruct>(UScriptStruct::StaticClass(), true);
}

TArray<UEnum*> ModuleEnums()
{
	return ObjectsOfPackage<UEnum>(UEnum::StaticClass(), true);
}

TArray<UFunction*> ModuleDelegates()
{
	return ObjectsOfPackage<UFunction>(UDelegateFunction::StaticClass(), true);
}

std::string ParamKind(const FProperty* P)
{
	if (P->HasAnyPropertyFlags(CPF_ReturnParm))
	{
		return "return";
	}
	if (!P->HasAnyPropertyFlags(CPF_OutParm))
	{
		return "in";
	}
	if (P->HasAnyPropertyFlags(CPF_ConstParm))
	{
		return "in const ref";
	}
	if (P->HasAnyPropertyFlags(CPF_ReferenceParm))
	{
		return "in/out";
	}
	return "out";
}

Json PropertyFlagNames(EPropertyFlags Flags)
{
	static const std::pair<uint64, const char*> Names[] = {{CPF_Edit, "CPF_Edit"}, {CPF_ConstParm, "CPF_ConstParm"},
		{CPF_BlueprintVisible, "CPF_BlueprintVisible"}, {CPF_ExportObject, "CPF_ExportObject"},
		{CPF_BlueprintReadOnly, "CPF_BlueprintReadOnly"}, {CPF_Net, "CPF_Net"},
		{CPF_EditFixedSize, "CPF_EditFixedSize"}, {CPF_Parm, "CPF_Parm"}, {CPF_OutParm, "CPF_OutParm"},
		{CPF_ZeroConstructor, "CPF_ZeroConstructor"}, {CPF_ReturnParm, "CPF_ReturnParm"},
		{CPF_DisableEditOnTemplate, "CPF_DisableEditOnTemplate"}, {CPF_Transient, "CPF_Transient"},
		{CPF_Config, "CPF_Config"}, {CPF_DisableEditOnInstance, "CPF_DisableEditOnInstance"},
		{CPF_EditConst, "CPF_EditConst"}, {CPF_GlobalConfig, "CPF_GlobalConfig"},
		{CPF_InstancedReference, "CPF_InstancedReference"}, {CPF_DuplicateTransient, "CPF_DuplicateTransient"},
		{CPF_SaveGame, "CPF_SaveGame"}, {CPF_NoClear, "CPF_NoClear"}, {CPF_ReferenceParm, "CPF_ReferenceParm"},
		{CPF_BlueprintAssignable, "CPF_BlueprintAssignable"}, {CPF_Deprecated, "CPF_Deprecated"},
		{CPF_IsPlainOldData, "CPF_IsPlainOldData"}, {CPF_RepSkip, "CPF_RepSkip"}, {CPF_RepNotify, "CPF_RepNotify"},
		{CPF_Interp, "CPF_Interp"}, {CPF_NonTransactional, "CPF_NonTransactional"}, {CPF_EditorOnly, "CPF_EditorOnly"},
		{CPF_NoDestructor, "CPF_NoDestructor"}, {CPF_AutoWeak, "CPF_AutoWeak"},
		{CPF_ContainsInstancedReference, "CPF_ContainsInstancedReference"},
		{CPF_AssetRegistrySearchable, "CPF_AssetRegistrySearchable"}, {CPF_SimpleDisplay, "CPF_SimpleDisplay"},
		{CPF_AdvancedDisplay, "CPF_AdvancedDisplay"}, {CPF_Protected, "CPF_Protected"},
		{CPF_BlueprintCallable, "CPF_BlueprintCallable"}, {CPF_BlueprintAuthorityOnly, "CPF_BlueprintAuthorityOnly"},
		{CPF_TextExportTransient, "CPF_TextExportTransient"},
		{CPF_NonPIEDuplicateTransient, "CPF_NonPIEDuplicateTransient"}, {CPF_ExposeOnSpawn, "CPF_ExposeOnSpawn"},
		{CPF_PersistentInstance, "CPF_PersistentInstance"}, {CPF_UObjectWrapper, "CPF_UObjectWrapper"},
		{CPF_HasGetValueTypeHash, "CPF_HasGetValueTypeHash"},
		{CPF_NativeAccessSpecifierPublic, "CPF_NativeAccessSpecifierPublic"},
		{CPF_NativeAccessSpecifierProtected, "CPF_NativeAccessSpecifierProtected"},
		{CPF_NativeAccessSpecifierPrivate, "CPF_NativeAccessSpecifierPrivate"},
		{CPF_SkipSerialization, "CPF_SkipSerialization"}};
	Json Out = Json::array();
	for (const auto& N : Names)
	{
		if (uint64(Flags) & N.first)
		{
			Out.push_back(N.second);
		}
	}
	return Out;
}

Json FunctionFlagNames(EFunctionFlags Flags)
{
	static const std::pair<uint32, const char*> Names[] = {{FUNC_Final, "FUNC_Final"},
		{FUNC_RequiredAPI, "FUNC_RequiredAPI"}, {FUNC_BlueprintAuthorityOnly, "FUNC_BlueprintAuthorityOnly"},
		{FUNC_BlueprintCosmetic, "FUNC_BlueprintCosmetic"}, {FUNC_Net, "FUNC_Net"},
		{FUNC_NetReliable, "FUNC_NetReliable"}, {FUNC_NetRequest, "FUNC_NetRequest"}, {FUNC_Exec, "FUNC_Exec"},
		{FUNC_Native, "FUNC_Native"}, {FUNC_Event, "FUNC_Event"}, {FUNC_NetResponse, "FUNC_NetResponse"},
		{FUNC_Static, "FUNC_Static"}, {FUNC_NetMulticast, "FUNC_NetMulticast"},
		{FUNC_UbergraphFunction, "FUNC_UbergraphFunction"}, {FUNC_MulticastDelegate, "FUNC_MulticastDelegate"},
		{FUNC_Public, "FUNC_Public"}, {FUNC_Private, "FUNC_Private"}, {FUNC_Protected, "FUNC_Protected"},
		{FUNC_Delegate, "FUNC_Delegate"}, {FUNC_NetServer, "FUNC_NetServer"}, {FUNC_HasOutParms, "FUNC_HasOutParms"},
		{FUNC_HasDefaults, "FUNC_HasDefaults"}, {FUNC_NetClient, "FUNC_NetClient"}, {FUNC_DLLImport, "FUNC_DLLImport"},
		{FUNC_BlueprintCallable, "FUNC_BlueprintCallable"}, {FUNC_BlueprintEvent, "FUNC_BlueprintEvent"},
		{FUNC_BlueprintPure, "FUNC_BlueprintPure"}, {FUNC_EditorOnly, "FUNC_EditorOnly"}, {FUNC_Const, "FUNC_Const"},
		{FUNC_NetValidate, "FUNC_NetValidate"}};
	Json Out = Json::array();
	for (const auto& N : Names)
	{
		if (uint32(Flags) & N.first)
		{
			Out.push_back(N.second);
		}
	}
	return Out;
}

Json DescribeFunction(const UFunction* Function)
{
	Json Out = Json::object();
	Out["name"] = ToUtf8(Function->GetName());
	Out["class"] = FunctionOwnerCppName(Function);
	Out["category"] = ToUtf8(Function->GetMetaData(TEXT("Category")));
	Out["static"] = Function->HasAnyFunctionFlags(FUNC_Static);
	Out["flags"] = FunctionFlagNames(Function->GetFunctionFlags());
	Json Params = Json::array();
	Json Return = nullptr;
	for (TFieldIterator<FProperty> It(Function); It; ++It)
	{
		if (It->HasAnyPropertyFlags(CPF_ReturnParm))
		{
			Return = CppType(*It);
			continue;
		}
		Json P = PropertyJson(*It, true);
		const FString DefaultKey = FString(TEXT("CPP_Default_")) + It->GetName();
		if (const FString* Default = Function->FindMetaData(*DefaultKey))
		{
			P["default"] = ToUtf8(*Default);
		}
		Params.push_back(std::move(P));
	}
	Out["parameters"] = std::move(Params);
	Out["return"] = std::move(Return);
	Out["metadata"] = MetaDataJson(Function->GetMetaDataStore());
	return Out;
}

Json Reflect()
{
	Json Out = Json::object();
	Out["package"] = ToUtf8(PackageName);
	Json Classes = Json::array();
	for (UClass* Class : ModuleClasses())
	{
		Json C = Json::object();
		C["name"] = ToUtf8(Class->GetCppName());
		C["super"] = Class->GetSuperClass() ? ToUtf8(Class->GetSuperClass()->GetCppName()) : "";
		C["header"] = ToUtf8(Class->GetMetaData(TEXT("ModuleRelativePath")));
		C["metadata"] = MetaDataJson(Class->GetMetaDataStore());
		Json Props = Json::array();
		for (TFieldIterator<FProperty> It(Class, EFieldIteratorFlags::ExcludeSuper); It; ++It)
		{
			Json P = PropertyJson(*It, false);
			if (const FMulticastDelegateProperty* D = CastField<FMulticastDelegateProperty>(*It))
			{
				P["signature"] = D->SignatureFunction ? ToUtf8(D->SignatureFunction->GetName()) : "";
			}
			Props.push_back(std::move(P));
		}
		C["properties"] = std::move(Props);
		Json Functions = Json::array();
		for (TFieldIterator<UFunction> It(Class, EFieldIteratorFlags::ExcludeSuper); It; ++It)
		{
			Functions.push_back(DescribeFunction(*It));
		}
		C["functions"] = std::move(Functions);
		Classes.push_back(std::move(C));
	}
	Out["classes"] = std::move(Classes);
	Json Structs = Json::array();
	for (UScriptStruct* Struct : ModuleStructs())
	{
		Json S = Json::object();
		S["name"] = ToUtf8(Struct->GetStructCPPName());
		S["header"] = ToUtf8(Struct->GetMetaData(TEXT("ModuleRelativePath")));
		S["size"] = Struct->GetStructureSize();
		S["metadata"] = MetaDataJson(Struct->GetMetaDataStore());
		Json Props = Json::array();
		for (TFieldIterator<FProperty> It(Struct); It; ++It)
		{
			Props.push_back(PropertyJson(*It, false));
		}
		S["properties"] = std::move(Props);
		Structs.push_back(std::move(S));
	}
	Out["structs"] = std::move(Structs);
	Json Enums = Json::array();
	for (UEnum* Enum : ModuleEnums())
	{
		Json E = Json::object();
		E["name"] = ToUtf8(Enum->GetName());
		E["header"] = ToUtf8(Enum->GetMetaData(TEXT("ModuleRelativePath")));
		E["cppForm"] = Enum->GetCppForm() == UEnum::ECppForm::EnumClass ? "EnumClass"
			: Enum->GetCppForm() == UEnum::ECppForm::Namespaced			? "Namespaced"
																		: "Regular";
		E["underlyingType"] = "uint8";
		Json Values = Json::array();
		for (int32 I = 0; I < Enum->NumEnums(); ++I)
		{
			Json V = Json::object();
			V["name"] = ToUtf8(Enum->GetNameStringByIndex(I));
			V["fullName"] = ToUtf8(Enum->GetNameByIndex(I).ToString());
			V["value"] = Enum->GetValueByIndex(I);
			Values.push_back(std::move(V));
		}
		E["values"] = std::move(Values);
		E["metadata"] = MetaDataJson(Enum->GetMetaDataStore());
		Enums.push_back(std::move(E));
	}
	Out["enums"] = std::move(Enums);
	Json Delegates = Json::array();
	for (UFunction* Signature : ModuleDelegates())
	{
		Json D = DescribeFunction(Signature);
		FString Name = Signature->GetName();
		const int32 Suffix = Name.Find(TEXT("__DelegateSignature"), ESearchCase::CaseSensitive);
		Json Entry = Json::object();
		Entry["name"] = "F" + ToUtf8(Suffix == INDEX_NONE ? Name : Name.Left(Suffix));
		Entry["signature"] = ToUtf8(Name);
		Entry["header"] = ToUtf8(Signature->GetMetaData(TEXT("ModuleRelativePath")));
		Entry["flags"] = D["flags"];
		Entry["parameters"] = D["parameters"];
		Entry["metadata"] = D["metadata"];
		Delegates.push_back(std::move(Entry));
	}
	Out["delegates"] = std::move(Delegates);
	return Out;
}

Json ValueToJson(const FProperty* Property, const void* Value)
{
	if (const FBoolProperty* Bool = CastField<FBoolProperty>(Property))
	{
		return Json(Bool->GetPropertyValue(Value));
	}
	if (const FByteProperty* Byte = CastField<FByteProperty>(Property))
	{
		const uint8 V = Byte->GetPropertyValue(Value);
		if (Byte->Enum && Byte->Enum->IsValidEnumValue(V))
		{
			return Json(ToUtf8(Byte->Enum->GetNameStringByValue(V)));
		}
		return Json(int64(V));
	}
	if (const FFloatProperty* Float = CastField<FFloatProperty>(Property))
	{
		return FloatJson(Float->GetPropertyValue(Value));
	}
	if (const FDoubleProperty* Double = CastField<FDoubleProperty>(Property))
	{
		return DoubleJson(Double->GetPropertyValue(Value));
	}
	if (const FNumericProperty* Numeric = CastField<FNumericProperty>(Property))
	{
		return Json(Numeric->GetSignedIntPropertyValue(Value));
	}
	if (const FStrProperty* Str = CastField<FStrProperty>(Property))
	{
		return Json(ToUtf8(Str->GetPropertyValue(Value)));
	}
	if (const FNameProperty* Name = CastField<FNameProperty>(Property))
	{
		return Json(ToUtf8(Name->GetPropertyValue(Value).ToString()));
	}
	if (const FEnumProperty* Enum = CastField<FEnumProperty>(Property))
	{
		const int64 V = Enum->GetUnderlyingProperty()->GetSignedIntPropertyValue(Value);
		if (Enum->GetEnum() && Enum->GetEnum()->IsValidEnumValue(V))
		{
			return Json(ToUtf8(Enum->GetEnum()->GetNameStringByValue(V)));
		}
		return Json(V); // a value with no enumerator is shown as its number
	}
	if (const FArrayProperty* Array = CastField<FArrayProperty>(Property))
	{
		FScriptArrayHelper Helper(Array, Value);
		Json Out = Json::array();
		for (int32 I = 0; I < Helper.Num(); ++I)
		{
			Out.push_back(ValueToJson(Array->Inner, Helper.GetRawPtr(I)));
		}
		return Out;
	}
	if (const FStructProperty* Struct = CastField<FStructProperty>(Property))
	{
		Json Out = Json::object();
		for (TFieldIterator<FProperty> It(Struct->Struct); It; ++It)
		{
			Out[ToUtf8(It->GetName())] = ValueToJson(*It, It->ContainerPtrToValuePtr<void>(Value));
		}
		AddNativeFields(Struct->Struct, Value, Out);
		return Out;
	}
	if (const FObjectPropertyBase* Object = CastField<FObjectPropertyBase>(Property))
	{
		const UObject* O = Object->GetObjectPropertyValue(Value);
		return O ? Json(ToUtf8(O->GetPathName())) : Json(nullptr);
	}
	if (CastField<FMulticastDelegateProperty>(Property) || CastField<FDelegateProperty>(Property))
	{
		return Json(nullptr);
	}
	return Json(nullptr);
}

namespace
{
std::string TypeLabel(const FProperty* Property)
{
	return CppType(Property);
}

bool ParseInteger(const std::string& Text, int64& Out)
{
	if (Text.empty())
	{
		return false;
	}
	const char* Begin = Text.data() + (Text[0] == '+' ? 1 : 0);
	const auto Result = std::from_chars(Begin, Text.data() + Text.size(), Out);
	return Result.ec == std::errc() && Result.ptr == Text.data() + Text.size();
}

bool ParseReal(const std::string& Text, double& Out)
{
	if (Text.empty() || std::isspace(static_cast<unsigned char>(Text[0])))
	{
		return false;
	}
	std::string Digits = Text;
	if (Digits.size() > 1 && (Digits.back() == 'f' || Digits.back() == 'F') &&
		Digits.find_first_of("xX") == std::string::npos)
	{
		Digits.pop_back(); // declared C++ defaults may carry a float suffix
	}
	char* End = nullptr;
	Out = std::strtod(Digits.c_str(), &End);
	return End == Digits.c_str() + Digits.size() && std::isfinite(Out);
}

bool EnumFromName(const UEnum* Enum, const std::string& Text, int64& Out, std::string& Error)
{
	if (Enum)
	{
		const int32 Index = Enum->GetIndexByName(FName(FromUtf8(Text)));
		if (Index != INDEX_NONE && !Text.empty())
		{
			Out = Enum->GetValueByIndex(Index);
			return true;
		}
	}
	std::string Names;
	for (int32 I = 0; Enum && I < Enum->NumEnums(); ++I)
	{
		Names += (I ? ", " : "") + ToUtf8(Enum->GetNameStringByIndex(I));
	}
	Error = "expects a value name of " + (Enum ? ToUtf8(Enum->GetName()) : std::string("the enumeration")) + " (" +
		Names + "), got '" + Text + "'";
	return false;
}

bool SetInteger(const FNumericProperty* Numeric, int64 V, void* Value, std::string& Error)
{
	int64 Min = std::numeric_limits<int32>::min();
	int64 Max = std::numeric_limits<int32>::max();
	if (CastField<FByteProperty>(Numeric))
	{
		Min = 0;
		Max = 255;
	}
	else if (CastField<FInt64Property>(Numeric))
	{
		Min = std::numeric_limits<int64>::min();
		Max = std::numeric_limits<int64>::max();
	}
	if (V < Min || V > Max)
	{
		Error = "expects " + TypeLabel(Numeric) + " in " + std::to_string(Min) + ".." + std::to_string(Max) + ", got " +
			std::to_string(V);
		return false;
	}
	Numeric->SetIntPropertyValue(Value, V);
	return true;
}
} // namespace

bool JsonToValue(const FProperty* Property, const Json& In, void* Value, std::string& Error)
{
	const std::string Type = TypeLabel(Property);
	if (const FBoolProperty* Bool = CastField<FBoolProperty>(Property))
	{
		if (!In.is_boolean())
		{
			Error = "expects true or false, got " + In.dump();
			return false;
		}
		Bool->SetPropertyValue(Value, In.get<bool>());
		return true;
	}
	if (const FEnumProperty* Enum = CastField<FEnumProperty>(Property))
	{
		int64 V = 0;
		if (!In.is_string() || !EnumFromName(Enum->GetEnum(), In.get<std::string>(), V, Error))
		{
			if (!In.is_string())
			{
				EnumFromName(Enum->GetEnum(), In.dump(), V, Error);
			}
			return false;
		}
		Enum->GetUnderlyingProperty()->SetIntPropertyValue(Value, V);
		return true;
	}
	if (const FByteProperty* Byte = CastField<FByteProperty>(Property); Byte && Byte->Enum && In.is_string())
	{
		int64 V = 0;
		if (!EnumFromName(Byte->Enum, In.get<std::string>(), V, Error))
		{
			return false;
		}
		Byte->SetIntPropertyValue(Value, V);
		return true;
	}
	if (const FNumericProperty* Numeric = CastField<FNumericProperty>(Property))
	{
		if (Numeric->IsFloatingPoint())
		{
			if (!In.is_number())
			{
				Error = "expects a number (" + Type + "), got " + In.dump();
				return false;
			}
			Numeric->SetFloatingPointPropertyValue(Value, In.get<double>());
			return true;
		}
		if (!In.is_number_integer())
		{
			Error = "expects an integer (" + Type + "), got " + In.dump();
			return false;
		}
		if (In.is_number_unsigned() && In.get<uint64>() > uint64(std::numeric_limits<int64>::max()))
		{
			Error = "expects " + Type + ", got " + In.dump();
			return false;
		}
		return SetInteger(Numeric, In.get<int64>(), Value, Error);
	}
	if (const FStrProperty* Str = CastField<FStrProperty>(Property))
	{
		if (!In.is_string())
		{
			Error = "expects a string, got " + In.dump();
			return false;
		}
		Str->SetPropertyValue(Value, FromUtf8(In.get<std::string>()));
		return true;
	}
	if (const FNameProperty* Name = CastField<FNameProperty>(Property))
	{
		if (!In.is_string())
		{
			Error = "expects a string, got " + In.dump();
			return false;
		}
		Name->SetPropertyValue(Value, FName(FromUtf8(In.get<std::string>())));
		return true;
	}
	if (const FArrayProperty* Array = CastField<FArrayProperty>(Property))
	{
		if (!In.is_array())
		{
			Error = "expects a JSON array (" + Type + "), got " + In.dump();
			return false;
		}
		FScriptArrayHelper Helper(Array, Value);
		Helper.Resize(static_cast<int32>(In.size()));
		for (size_t I = 0; I < In.size(); ++I)
		{
			std::string Inner;
			if (!JsonToValue(Array->Inner, In[I], Helper.GetRawPtr(static_cast<int32>(I)), Inner))
			{
				Error = "element " + std::to_string(I) + " " + Inner;
				return false;
			}
		}
		return true;
	}
	if (const FStructProperty* Struct = CastField<FStructProperty>(Property))
	{
		if (!In.is_object())
		{
			Error = "expects a JSON object with the fields of " + Type + ", got " + In.dump();
			return false;
		}
		for (auto It = In.begin(); It != In.end(); ++It)
		{
			const FProperty* Field = Struct->Struct->FindPropertyByName(FName(FromUtf8(It.key())));
			if (!Field)
			{
				Error = "has no reflected field '" + It.key() + "' (" + Type + ")";
				return false;
			}
			std::string Inner;
			if (!JsonToValue(Field, It.value(), Field->ContainerPtrToValuePtr<void>(Value), Inner))
			{
				Error = "field " + It.key() + " " + Inner;
				return false;
			}
		}
		return true;
	}
	if (const FObjectPropertyBase* Object = CastField<FObjectPropertyBase>(Property))
	{
		if (In.is_null())
		{
			Object->SetObjectPropertyValue(Value, nullptr);
			return true;
		}
		Error = "expects null (objects cannot be given on the command line)";
		return false;
	}
	Error = "cannot be given on the command line (" + Type + ")";
	return false;
}

bool TextToValue(
	const FProperty* Property, const std::string& RawText, void* Value, std::string& Error, bool bDeclaredDefault)
{
	std::string Text = RawText;
	const bool bString = CastField<FStrProperty>(Property) || CastField<FNameProperty>(Property);
	const FArrayProperty* Array = CastField<FArrayProperty>(Property);
	if (!bDeclaredDefault && !Text.empty() && Text[0] == '@')
	{
		if (Text.compare(0, 2, "@@") == 0)
		{
			Text.erase(0, 1);
		}
		else if (bString)
		{
			std::string Contents;
			if (!ReadInputFile(Text.substr(1), Contents, Error))
			{
				return false;
			}
			DropByteOrderMark(Contents);
			Text = Contents;
		}
		else if (Array && CastField<FByteProperty>(Array->Inner))
		{
			std::string Contents;
			if (!ReadInputFile(Text.substr(1), Contents, Error))
			{
				return false;
			}
			FScriptArrayHelper Helper(Array, Value);
			Helper.Resize(static_cast<int32>(Contents.size()));
			if (!Contents.empty())
			{
				std::memcpy(Helper.GetRawPtr(0), Contents.data(), Contents.size());
			}
			return true;
		}
		else
		{
			Error = "'@' reads a file only for text and byte arrays";
			return false;
		}
	}
	if (const FStrProperty* Str = CastField<FStrProperty>(Property))
	{
		Str->SetPropertyValue(Value, FromUtf8(Text));
		return true;
	}
	if (const FNameProperty* Name = CastField<FNameProperty>(Property))
	{
		Name->SetPropertyValue(Value, FName(FromUtf8(Text)));
		return true;
	}
	if (const FBoolProperty* Bool = CastField<FBoolProperty>(Property))
	{
		std::string Lower = Text;
		std::transform(Lower.begin(), Lower.end(), Lower.begin(), [](unsigned char C) { return std::tolower(C); });
		if (Lower != "true" && Lower != "false")
		{
			Error = "expects true or false, got '" + Text + "'";
			return false;
		}
		Bool->SetPropertyValue(Value, Lower == "true");
		return true;
	}
	if (const FEnumProperty* Enum = CastField<FEnumProperty>(Property))
	{
		int64 V = 0;
		if (!EnumFromName(Enum->GetEnum(), Text, V, Error))
		{
			return false;
		}
		Enum->GetUnderlyingProperty()->SetIntPropertyValue(Value, V);
		return true;
	}
	if (const FNumericProperty* Numeric = CastField<FNumericProperty>(Property))
	{
		if (const FByteProperty* Byte = CastField<FByteProperty>(Property); Byte && Byte->Enum)
		{
			int64 V = 0;
			if (!EnumFromName(Byte->Enum, Text, V, Error))
			{
				return false;
			}
			Byte->SetIntPropertyValue(Value, V);
			return true;
		}
		if (Numeric->IsFloatingPoint())
		{
			double V = 0;
			if (!ParseReal(Text, V))
			{
				Error = "expects a number (" + TypeLabel(Property) + "), got '" + Text + "'";
				return false;
			}
			Numeric->SetFloatingPointPropertyValue(Value, V);
			return true;
		}
		int64 V = 0;
		if (!ParseInteger(Text, V))
		{
			Error = "expects an integer (" + TypeLabel(Property) + "), got '" + Text + "'";
			return false;
		}
		return SetInteger(Numeric, V, Value, Error);
	}
	if (Array || CastField<FStructProperty>(Property) || CastField<FObjectPropertyBase>(Property))
	{
		if (bDeclaredDefault && Text.empty())
		{
			return true; // an empty declared default is the type's default
		}
		Json Parsed = Json::parse(Text, nullptr, false);
		if (Parsed.is_discarded())
		{
			Error = std::string("expects ") +
				(Array										   ? "a JSON array"
						: CastField<FStructProperty>(Property) ? "a JSON object"
															   : "null") +
				" (" + TypeLabel(Property) + "), got '" + Text + "'";
			return false;
		}
		return JsonToValue(Property, Parsed, Value, Error);
	}
	Error = "cannot be given on the command line (" + TypeLabel(Property) + ")";
	return false;
}

bool ReadInputFile(const std::string& Path, std::string& Out, std::string& Error)
{
	std::error_code Code;
	const std::filesystem::file_status Status = std::filesystem::status(Path, Code);
	if (Path.empty() || !std::filesystem::exists(Status))
	{
		Error = "cannot read the file '" + Path + "': there is no such file";
		return false;
	}
	if (std::filesystem::is_directory(Status))
	{
		Error = "cannot read the file '" + Path + "': it is a folder";
		return false;
	}
	std::ifstream In(Path, std::ios::binary);
	std::ostringstream S;
	if (In)
	{
		S << In.rdbuf();
	}
	// Copying an empty file fails the output stream S, which is no error; a file stream that
	// could not open or broke while reading is.
	if (!In || In.bad())
	{
		Error = "cannot read the file '" + Path + "'";
		return false;
	}
	Out = S.str();
	return true;
}

void DropByteOrderMark(std::string& Text)
{
	if (Text.compare(0, 3, "\xEF\xBB\xBF") == 0)
	{
		Text.erase(0, 3);
	}
}

int CallStatus(const Json& Out)
{
	const auto Return = Out.find("return");
	return Return != Out.end() && Return->is_boolean() && !Return->get<bool>() ? ZnExit::Failed : ZnExit::Success;
}

bool SplitCommandLine(const std::string& Line, std::vector<std::string>& OutWords, std::string& Error)
{
	OutWords.clear();
	std::string Word;
	bool bInWord = false;
	char Quote = 0;
	for (size_t I = 0; I < Line.size(); ++I)
	{
		const char C = Line[I];
		if (Quote)
		{
			if (C == Quote)
			{
				Quote = 0;
			}
			else if (C == '\\' && Quote == '"' && I + 1 < Line.size() &&
				(Line[I + 1] == '"' || Line[I + 1] == '\\' || Line[I + 1] == '$' || Line[I + 1] == '`'))
			{
				Word += Line[++I];
			}
			else
			{
				Word += C;
			}
			continue;
		}
		if (C == '\'' || C == '"')
		{
			Quote = C;
			bInWord = true;
			continue;
		}
		if (C == '\\' && I + 1 < Line.size())
		{
			Word += Line[++I];
			bInWord = true;
			continue;
		}
		if (C == ' ' || C == '\t' || C == '\r' || C == '\n')
		{
			if (bInWord)
			{
				OutWords.push_back(Word);
				Word.clear();
				bInWord = false;
			}
			continue;
		}
		Word += C;
		bInWord = true;
	}
	if (Quote)
	{
		Error = std::string("unterminated ") + Quote + " quote";
		return false;
	}
	if (bInWord)
	{
		OutWords.push_back(Word);
	}
	return true;
}

bool CallFunction(const std::string& FunctionName, const std::vector<std::string>& Args, Json& Out, std::string& Error)
{
	UClass* Library = FindObject<UClass>(ModulePackage(), TEXT("ZnDM_BpFuncLib"));
	if (!Library)
	{
		Error = "the script function library UZnDM_BpFuncLib is not registered";
		return false;
	}
	UFunction* Function = nullptr;
	for (TFieldIterator<UFunction> It(Library, EFieldIteratorFlags::ExcludeSuper); It; ++It)
	{
		if (ToUtf8(It->GetName()) == FunctionName)
		{
			Function = *It;
		}
	}
	if (!Function)
	{
		Error = "unknown function '" + FunctionName + "' (zn functions lists them)";
		return false;
	}
	std::vector<std::pair<std::string, std::string>> Given;
	for (const std::string& Arg : Args)
	{
		const size_t Eq = Arg.find('=');
		if (Eq == std::string::npos || Eq == 0)
		{
			Error = "arguments are name=value, got '" + Arg + "'";
			return false;
		}
		const std::string Name = Arg.substr(0, Eq);
		for (const auto& G : Given)
		{
			if (G.first == Name)
			{
				Error = "parameter '" + Name + "' is given twice";
				return false;
			}
		}
		Given.emplace_back(Name, Arg.substr(Eq + 1));
	}
	for (const auto& G : Given)
	{
		const FProperty* P = Function->FindPropertyByName(FName(FromUtf8(G.first)));
		if (!P || P->HasAnyPropertyFlags(CPF_ReturnParm) || ToUtf8(P->GetName()) != G.first)
		{
			std::string Names;
			for (TFieldIterator<FProperty> It(Function); It; ++It)
			{
				if (!It->HasAnyPropertyFlags(CPF_ReturnParm))
				{
					Names += (Names.empty() ? "" : ", ") + ToUtf8(It->GetName());
				}
			}
			Error = "unknown parameter '" + G.first + "' of " + FunctionName +
				" (parameters: " + (Names.empty() ? std::string("none") : Names) + ")";
			return false;
		}
		if (ParamKind(P) == "out")
		{
			Error = "parameter '" + G.first + "' of " + FunctionName + " is an output and takes no value";
			return false;
		}
	}

	FStructOnScope Parms(Function);
	for (TFieldIterator<FProperty> It(Function); It; ++It)
	{
		const FProperty* P = *It;
		const std::string Kind = ParamKind(P);
		if (Kind == "return" || Kind == "out")
		{
			continue;
		}
		const std::string Name = ToUtf8(P->GetName());
		void* Value = P->ContainerPtrToValuePtr<void>(Parms.GetStructMemory());
		const std::string* Text = nullptr;
		for (const auto& G : Given)
		{
			if (G.first == Name)
			{
				Text = &G.second;
			}
		}
		std::string Problem;
		if (Text)
		{
			if (!TextToValue(P, *Text, Value, Problem))
			{
				Error = "parameter '" + Name + "' of " + FunctionName + " " + Problem;
				return false;
			}
			continue;
		}
		if (Kind == "in/out")
		{
			continue; // starts from its type's default
		}
		const FString DefaultKey = FString(TEXT("CPP_Default_")) + P->GetName();
		if (const FString* Default = Function->FindMetaData(*DefaultKey))
		{
			if (!TextToValue(P, ToUtf8(*Default), Value, Problem, true))
			{
				Error = "the declared default of '" + Name + "' cannot be read: " + Problem;
				return false;
			}
			continue;
		}
		Error = "missing parameter '" + Name + "' (" + TypeLabel(P) + ") of " + FunctionName;
		return false;
	}

	UObject* Context = Library->GetDefaultObject();
	Context->ProcessEvent(Function, Parms.GetStructMemory());

	Out = Json::object();
	if (const FProperty* Return = Function->GetReturnProperty())
	{
		Out["return"] = ValueToJson(Return, Return->ContainerPtrToValuePtr<void>(Parms.GetStructMemory()));
	}
	for (TFieldIterator<FProperty> It(Function); It; ++It)
	{
		const std::string Kind = ParamKind(*It);
		if (Kind == "out" || Kind == "in/out")
		{
			Out[ToUtf8(It->GetName())] = ValueToJson(*It, It->ContainerPtrToValuePtr<void>(Parms.GetStructMemory()));
		}
	}
	return true;
}
} // namespace ZnHost
