#include "CodeGenerator.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <stdexcept>

namespace ZnHeaderTool
{
namespace
{
// Engine flag values (kept in step with UObject/ObjectMacros.h).
constexpr uint64_t CPF_Edit = 0x1ull;
constexpr uint64_t CPF_ConstParm = 0x2ull;
constexpr uint64_t CPF_BlueprintVisible = 0x4ull;
constexpr uint64_t CPF_BlueprintReadOnly = 0x10ull;
constexpr uint64_t CPF_EditFixedSize = 0x40ull;
constexpr uint64_t CPF_Parm = 0x80ull;
constexpr uint64_t CPF_OutParm = 0x100ull;
constexpr uint64_t CPF_ZeroConstructor = 0x200ull;
constexpr uint64_t CPF_ReturnParm = 0x400ull;
constexpr uint64_t CPF_DisableEditOnTemplate = 0x800ull;
constexpr uint64_t CPF_Transient = 0x2000ull;
constexpr uint64_t CPF_Config = 0x4000ull;
constexpr uint64_t CPF_DisableEditOnInstance = 0x10000ull;
constexpr uint64_t CPF_EditConst = 0x20000ull;
constexpr uint64_t CPF_DuplicateTransient = 0x200000ull;
constexpr uint64_t CPF_SaveGame = 0x1000000ull;
constexpr uint64_t CPF_NoClear = 0x2000000ull;
constexpr uint64_t CPF_ReferenceParm = 0x8000000ull;
constexpr uint64_t CPF_BlueprintAssignable = 0x10000000ull;
constexpr uint64_t CPF_IsPlainOldData = 0x40000000ull;
constexpr uint64_t CPF_Interp = 0x200000000ull;
constexpr uint64_t CPF_NonTransactional = 0x400000000ull;
constexpr uint64_t CPF_NoDestructor = 0x1000000000ull;
constexpr uint64_t CPF_SimpleDisplay = 0x20000000000ull;
constexpr uint64_t CPF_AdvancedDisplay = 0x40000000000ull;
constexpr uint64_t CPF_BlueprintCallable = 0x100000000000ull;
constexpr uint64_t CPF_BlueprintAuthorityOnly = 0x200000000000ull;
constexpr uint64_t CPF_NativeAccessSpecifierPublic = 0x10000000000000ull;
constexpr uint64_t CPF_NativeAccessSpecifierProtected = 0x20000000000000ull;
constexpr uint64_t CPF_NativeAccessSpecifierPrivate = 0x40000000000000ull;

constexpr uint32_t FUNC_Final = 0x00000001;
constexpr uint32_t FUNC_Exec = 0x00000200;
constexpr uint32_t FUNC_Native = 0x00000400;
constexpr uint32_t FUNC_Static = 0x00002000;
constexpr uint32_t FUNC_MulticastDelegate = 0x00010000;
constexpr uint32_t FUNC_Public = 0x00020000;
constexpr uint32_t FUNC_Private = 0x00040000;
constexpr uint32_t FUNC_Protected = 0x00080000;
constexpr uint32_t FUNC_Delegate = 0x00100000;
constexpr uint32_t FUNC_HasOutParms = 0x00400000;
constexpr uint32_t FUNC_HasDefaults = 0x00800000;
constexpr uint32_t FUNC_BlueprintCallable = 0x04000000;
constexpr uint32_t FUNC_BlueprintPure = 0x10000000;
constexpr uint32_t FUNC_Const = 0x40000000;

constexpr uint32_t CLASS_Abstract = 0x00000001u;
constexpr uint32_t CLASS_Native = 0x00000080u;
constexpr uint32_t CLASS_RequiredAPI = 0x00000200u;
constexpr uint32_t CLASS_Constructed = 0x00100000u;
constexpr uint32_t STRUCT_Native = 0x00000001u;

std::string Hex(uint64_t V)
{
	char B[32];
	std::snprintf(B, sizeof(B), "0x%016llx", static_cast<unsigned long long>(V));
	return B;
}

std::string Hex32(uint32_t V)
{
	char B[16];
	std::snprintf(B, sizeof(B), "0x%08x", V);
	return B;
}

/** A C++ string literal holding Text (UTF-8 bytes kept, specials escaped). */
std::string Quote(const std::string& Text)
{
	std::string Out = "\"";
	bool bPrevHex = false;
	for (unsigned char C : Text)
	{
		bool bHex = false;
		switch (C)
		{
			case '\\':
				Out += "\\\\";
				break;
			case '"':
				Out += "\\\"";
				break;
			case '\n':
				Out += "\\n";
				break;
			case '\r':
				Out += "\\r";
				break;
			case '\t':
				Out += "\\t";
				break;
			default:
				if (C < 0x20 || C >= 0x7f)
				{
					char B[8];
					std::snprintf(B, sizeof(B), "\\x%02x", C);
					Out += B;
					bHex = true;
				}
				else
				{
					if (bPrevHex && std::isxdigit(C))
					{
						Out += "\"\""; // end the hex escape before a hex digit
					}
					Out += static_cast<char>(C);
				}
				break;
		}
		bPrevHex = bHex;
	}
	return Out + "\"";
}

std::string StripPrefix(const std::string& Name)
{
	if (Name.size() > 1 && (Name[0] == 'F' || Name[0] == 'U' || Name[0] == 'A') &&
		std::isupper(static_cast<unsigned char>(Name[1])))
	{
		return Name.substr(1);
	}
	return Name;
}

std::string ToUpper(std::string S)
{
	for (char& C : S)
	{
		C = static_cast<char>(std::toupper(static_cast<unsigned char>(C)));
	}
	return S;
}

enum class EKind
{
	Byte,
	Int,
	Int64,
	Float,
	Double,
	Bool,
	Str,
	Name,
	Object,
	Struct,
	Array,
	Enum,
	InlineMulticastDelegate,
	Delegate
};

const char* KindName(EKind K)
{
	switch (K)
	{
		case EKind::Byte:
			return "Byte";
		case EKind::Int:
			return "Int";
		case EKind::Int64:
			return "Int64";
		case EKind::Float:
			return "Float";
		case EKind::Double:
			return "Double";
		case EKind::Bool:
			return "Bool";
		case EKind::Str:
			return "Str";
		case EKind::Name:
			return "Name";
		case EKind::Object:
			return "Object";
		case EKind::Struct:
			return "Struct";
		case EKind::Array:
			return "Array";
		case EKind::Enum:
			return "Enum";
		case EKind::InlineMulticastDelegate:
			return "InlineMulticastDelegate";
		case EKind::Delegate:
			return "Delegate";
	}
	return "";
}

struct FResolved
{
	EKind Kind = EKind::Int;
	std::string Cpp; // value type: "FString", "TArray<uint8>", "UZnDM_HttpRequest*", "ZnRegion"
	std::string TypeFunc; // construct function / StaticClass of the referenced type
	std::shared_ptr<FResolved> Inner;
	bool bPod = false;
};

struct FTypeTable
{
	std::string Module;
	std::map<std::string, const FEnumDecl*> Enums;
	std::map<std::string, const FStructDecl*> Structs;
	std::map<std::string, const FStructDecl*> Classes;
	std::map<std::string, const FDelegateDecl*> Delegates;
	std::set<std::string> EngineClasses = {"UObject", "UBlueprintFunctionLibrary", "AActor", "UClass", "UScriptStruct",
		"UEnum", "UFunction", "UPackage", "UWorld", "UEngine"};

	std::string EnumFunc(const std::string& Name) const { return "Z_Construct_UEnum_" + Module + "_" + Name; }
	std::string StructFunc(const std::string& Name) const { return "Z_Construct_UScriptStruct_" + Name; }
	std::string ClassFunc(const std::string& Name) const { return "Z_Construct_UClass_" + Name; }
	std::string DelegateFunc(const std::string& Name) const
	{
		return "Z_Construct_UDelegateFunction_" + Module + "_" + StripPrefix(Name) + "__DelegateSignature";
	}

	FResolved Resolve(const FTypeRef& T, const std::string& Where) const
	{
		FResolved R;
		auto Fail = [&](const std::string& What) { throw std::runtime_error(Where + ": error: " + What); };
		if (T.bPointer)
		{
			if (!T.Arguments.empty() || (T.Name.empty() || (T.Name[0] != 'U' && T.Name[0] != 'A')) ||
				(!Classes.count(T.Name) && !EngineClasses.count(T.Name)))
			{
				Fail("'" + T.ValueCpp() + "' is not a pointer to a reflected class");
			}
			R.Kind = EKind::Object;
			R.Cpp = T.Name + "*";
			R.TypeFunc = "&" + T.Name + "::StaticClass";
			R.bPod = true;
			return R;
		}
		static const std::map<std::string, std::pair<EKind, bool>> Simple = {{"bool", {EKind::Bool, true}},
			{"int32", {EKind::Int, true}}, {"int", {EKind::Int, true}}, {"int64", {EKind::Int64, true}},
			{"uint8", {EKind::Byte, true}}, {"float", {EKind::Float, true}}, {"double", {EKind::Double, true}},
			{"FString", {EKind::Str, false}}, {"FName", {EKind::Name, false}}};
		auto It = Simple.find(T.Name);
		if (It != Simple.end() && T.Arguments.empty())
		{
			R.Kind = It->second.first;
			R.bPod = It->second.second;
			R.Cpp = T.Name == "int" ? "int32" : T.Name;
			return R;
		}
		if (T.Name == "TArray")
		{
			if (T.Arguments.size() != 1)
			{
				Fail("TArray takes one element type");
			}
			R.Kind = EKind::Array;
			R.Inner = std::make_shared<FResolved>(Resolve(T.Arguments[0], Where));
			if (R.Inner->Kind == EKind::Array)
			{
				Fail("arrays of arrays are not reflected");
			}
			R.Cpp = "TArray<" + R.Inner->Cpp + ">";
			return R;
		}
		if (T.Name == "TEnumAsByte" && T.Arguments.size() == 1 && Enums.count(T.Arguments[0].Name))
		{
			R.Kind = EKind::Byte;
			R.Cpp = "TEnumAsByte<" + T.Arguments[0].Name + ">";
			R.TypeFunc = "&" + EnumFunc(T.Arguments[0].Name);
			R.bPod = true;
			return R;
		}
		if (!T.Arguments.empty())
		{
			Fail("'" + T.ValueCpp() + "' is not a reflected type");
		}
		if (auto E = Enums.find(T.Name); E != Enums.end())
		{
			if (E->second->Underlying != "uint8")
			{
				Fail("enumeration " + T.Name + " must have the underlying type uint8 to be reflected");
			}
			R.Kind = EKind::Enum;
			R.Cpp = T.Name;
			R.TypeFunc = "&" + EnumFunc(T.Name);
			R.bPod = true;
			R.Inner = std::make_shared<FResolved>();
			R.Inner->Kind = EKind::Byte;
			R.Inner->Cpp = "uint8";
			R.Inner->bPod = true;
			return R;
		}
		if (Structs.count(T.Name))
		{
			R.Kind = EKind::Struct;
			R.Cpp = T.Name;
			R.TypeFunc = "&" + StructFunc(T.Name);
			return R;
		}
		if (auto D = Delegates.find(T.Name); D != Delegates.end())
		{
			R.Kind = D->second->bMulticast ? EKind::InlineMulticastDelegate : EKind::Delegate;
			R.Cpp = T.Name;
			R.TypeFunc = "&" + DelegateFunc(T.Name);
			return R;
		}
		Fail("'" + T.ValueCpp() +
			"' is not a reflected type (supported: bool, int32, int64, uint8, float, double, "
			"FString, FName, TArray, module enumerations, records, delegates and class pointers)");
		return R;
	}
};

struct FMetaList
{
	std::vector<std::pair<std::string, std::string>> Pairs;
	void Set(const std::string& K, const std::string& V)
	{
		for (auto& P : Pairs)
		{
			if (P.first == K)
			{
				P.second = V;
				return;
			}
		}
		Pairs.emplace_back(K, V);
	}
	void Add(const FMetaData& M)
	{
		for (const auto& P : M.Pairs)
		{
			Set(P.first, P.second);
		}
	}
	void AddComment(const std::string& Comment)
	{
		if (Comment.empty())
		{
			return;
		}
		Set("Comment", Comment);
		const std::string Tip = CommentToToolTip(Comment);
		if (!Tip.empty())
		{
			Set("ToolTip", Tip);
		}
	}
	/** Sorted by key, as the engine's tool writes metadata. */
	std::vector<std::pair<std::string, std::string>> Sorted() const
	{
		auto Copy = Pairs;
		std::stable_sort(Copy.begin(), Copy.end(), [](const auto& A, const auto& B) { return A.first < B.first; });
		return Copy;
	}
};

class FWriter
{
public:
	std::ostringstream S;
	template <typename T>
	FWriter& operator<<(const T& V)
	{
		S << V;
		return *this;
	}
};

/** Emits "static const FMetaDataPairParam Name[] = {...};" (declaration inside Statics) and definition text. */
std::string MetaArrayDefinition(const std::string& Qualified, const FMetaList& Meta)
{
	if (Meta.Pairs.empty())
	{
		return "";
	}
	std::string S = "const UECodeGen_Private::FMetaDataPairParam " + Qualified + "[] = {\n";
	for (const auto& P : Meta.Sorted())
	{
		S += "\t{" + Quote(P.first) + ", " + Quote(P.second) + "},\n";
	}
	return S + "};\n";
}

std::string MetaArgs(const std::string& Qualified, const FMetaList& Meta)
{
	if (Meta.Pairs.empty())
	{
		return "nullptr, 0";
	}
	return Qualified + ", " + std::to_string(Meta.Pairs.size());
}

/** One property to emit: a class/record member, a parameter or a delegate parameter. */
struct FPropEmit
{
	std::string Name;
	FResolved Type;
	uint64_t Flags = 0;
	FMetaList Meta;
	std::string OffsetExpr; // e.g. STRUCT_OFFSET(FZnAPIConfig, Name)
};

uint64_t TypeFlags(const FResolved& T)
{
	if (T.bPod)
	{
		return CPF_ZeroConstructor | CPF_IsPlainOldData | CPF_NoDestructor;
	}
	if (T.Kind == EKind::Str || T.Kind == EKind::Name || T.Kind == EKind::Array)
	{
		return CPF_ZeroConstructor;
	}
	return 0;
}

/** Declares and defines the property parameter statics of one container. */
void EmitProperties(
	const std::string& Statics, const std::vector<FPropEmit>& Props, std::string& Decl, std::string& Defs)
{
	for (const FPropEmit& P : Props)
	{
		const std::string Base = "NewProp_" + P.Name;
		std::string InnerRef = "nullptr";
		if (P.Type.Inner)
		{
			const FResolved& In = *P.Type.Inner;
			const bool bEnumUnderlying = P.Type.Kind == EKind::Enum;
			const std::string InnerVar = Base + (bEnumUnderlying ? "_Underlying" : "_Inner");
			Decl += "\tstatic const UECodeGen_Private::FPropertyParams " + InnerVar + ";\n";
			Defs += "const UECodeGen_Private::FPropertyParams " + Statics + "::" + InnerVar + " = {" +
				Quote(bEnumUnderlying ? "UnderlyingType" : P.Name) +
				", UECodeGen_Private::EPropertyGenFlags::" + KindName(In.Kind) + ", (EPropertyFlags)" +
				Hex(TypeFlags(In)) + "ull, 0, &UECodeGen_Private::TPropertyTypeOps<" + In.Cpp + ">::Ops, " +
				(In.Kind == EKind::Object ? In.TypeFunc : "nullptr") + ", " +
				(In.Kind == EKind::Struct ? In.TypeFunc : "nullptr") + ", " +
				((In.Kind == EKind::Enum || In.Kind == EKind::Byte) && !In.TypeFunc.empty() ? In.TypeFunc : "nullptr") +
				", " +
				(In.Kind == EKind::InlineMulticastDelegate || In.Kind == EKind::Delegate ? In.TypeFunc : "nullptr") +
				", nullptr, nullptr, 0};\n";
			if (In.Inner)
			{
				throw std::runtime_error("property " + P.Name + ": arrays of enumerations are not reflected");
			}
			InnerRef = "&" + Statics + "::" + InnerVar;
		}
		std::string MetaRef = "nullptr, 0";
		if (!P.Meta.Pairs.empty())
		{
			Decl += "\tstatic const UECodeGen_Private::FMetaDataPairParam " + Base + "_MetaData[];\n";
			Defs += MetaArrayDefinition(Statics + "::" + Base + "_MetaData", P.Meta);
			MetaRef = MetaArgs(Statics + "::" + Base + "_MetaData", P.Meta);
		}
		const FResolved& T = P.Type;
		Decl += "\tstatic const UECodeGen_Private::FPropertyParams " + Base + ";\n";
		Defs += "const UECodeGen_Private::FPropertyParams " + Statics + "::" + Base + " = {" + Quote(P.Name) +
			", UECodeGen_Private::EPropertyGenFlags::" + KindName(T.Kind) + ", (EPropertyFlags)" +
			Hex(P.Flags | TypeFlags(T)) + "ull, " + P.OffsetExpr + ", &UECodeGen_Private::TPropertyTypeOps<" + T.Cpp +
			">::Ops, " + (T.Kind == EKind::Object ? T.TypeFunc : "nullptr") + ", " +
			(T.Kind == EKind::Struct ? T.TypeFunc : "nullptr") + ", " +
			((T.Kind == EKind::Enum || T.Kind == EKind::Byte) && !T.TypeFunc.empty() ? T.TypeFunc : "nullptr") + ", " +
			(T.Kind == EKind::InlineMulticastDelegate || T.Kind == EKind::Delegate ? T.TypeFunc : "nullptr") + ", " +
			InnerRef + ", " + MetaRef + "};\n";
	}
	if (!Props.empty())
	{
		Decl += "\tstatic const UECodeGen_Private::FPropertyParams* const PropPointers[];\n";
		Defs += "const UECodeGen_Private::FPropertyParams* const " + Statics + "::PropPointers[] = {\n";
		for (const FPropEmit& P : Props)
		{
			Defs += "\t&" + Statics + "::NewProp_" + P.Name + ",\n";
		}
		Defs += "};\n";
	}
}

std::string PropArgs(const std::string& Statics, size_t Count)
{
	return Count ? Statics + "::PropPointers, " + std::to_string(Count) : "nullptr, 0";
}

struct FGenerator
{
	const FModuleDecl& Module;
	FTypeTable Types;

	explicit FGenerator(const FModuleDecl& InModule)
		: Module(InModule)
	{
		Types.Module = Module.Name;
		for (const FHeaderDecl& H : Module.Headers)
		{
			for (const FEnumDecl& E : H.Enums)
			{
				Types.Enums[E.Name] = &E;
			}
			for (const FStructDecl& S : H.Structs)
			{
				(S.bIsClass ? Types.Classes : Types.Structs)[S.Name] = &S;
			}
			for (const FDelegateDecl& D : H.Delegates)
			{
				Types.Delegates[D.Name] = &D;
			}
		}
	}

	std::string PackageFunc() const { return "Z_Construct_UPackage__Script_" + Module.Name; }
	std::string PackageName() const { return "/Script/" + Module.Name; }

	static std::string FileId(const FHeaderDecl& H, const std::string& ModuleName)
	{
		std::string Id = "FID_" + ModuleName + "_" + H.ModuleRelativePath;
		for (char& C : Id)
		{
			if (!std::isalnum(static_cast<unsigned char>(C)))
			{
				C = '_';
			}
		}
		return Id;
	}

	std::string Prototypes() const
	{
		std::string S = "UPackage* " + PackageFunc() + "();\n";
		for (const auto& E : Types.Enums)
		{
			S += "UEnum* " + Types.EnumFunc(E.first) + "();\n";
		}
		for (const auto& St : Types.Structs)
		{
			S += "UScriptStruct* " + Types.StructFunc(St.first) + "();\n";
		}
		for (const auto& C : Types.Classes)
		{
			S += "UClass* " + Types.ClassFunc(C.first) + "();\n";
		}
		for (const auto& D : Types.Delegates)
		{
			S += "UFunction* " + Types.DelegateFunc(D.first) + "();\n";
		}
		return S;
	}

	std::string GeneratedHeader(const FHeaderDecl& H) const
	{
		const std::string Fid = FileId(H, Module.Name);
		const std::string Api = ToUpper(Module.Name) + "_API";
		const std::string Guard = ToUpper(Module.Name) + "_" + H.BaseName + "_generated_h";
		std::string S;
		S += "// Reflection declarations for " + H.ModuleRelativePath + ", written by ZnHeaderTool. Do not edit.\n";
		S += "#include \"UObject/ObjectMacros.h\"\n#include \"UObject/ScriptMacros.h\"\n\n";
		S += "#ifdef " + Guard + "\n#error \"" + H.BaseName +
			".generated.h already included, missing '#pragma once' in " + H.BaseName + ".h\"\n#endif\n#define " +
			Guard + "\n\n";
		for (const FDelegateDecl& D : H.Delegates)
		{
			S += "// delegate " + D.Name + " (signature " + StripPrefix(D.Name) + "__DelegateSignature)\n";
		}
		for (const FStructDecl& St : H.Structs)
		{
			const std::string Prefix = Fid + "_" + std::to_string(St.GeneratedBodyLine);
			if (!St.bIsClass)
			{
				S += "#define " + Prefix + "_GENERATED_BODY \\\n\tfriend struct Z_Construct_UScriptStruct_" + St.Name +
					"_Statics; \\\n\tstatic class UScriptStruct* StaticStruct();\n\n";
				S += "template <>\n" + Api + " UScriptStruct* StaticStruct<struct " + St.Name + ">();\n\n";
				continue;
			}
			std::string Body = "\tDECLARE_CLASS(" + St.Name + ", " + St.Super +
				", COMPILED_IN_FLAGS(0), CASTCLASS_None, TEXT(" + Quote(PackageName()) + "), " +
				(St.ApiMacro.empty() ? "NO_API" : St.ApiMacro) + ") \\\n\tfriend struct Z_Construct_UClass_" + St.Name +
				"_Statics; \\\n";
			for (const FFunctionDecl& F : St.Functions)
			{
				Body += "\tDECLARE_FUNCTION(exec" + F.Name + "); \\\n";
			}
			S += "#define " + Prefix + "_GENERATED_BODY \\\npublic: \\\n" + Body + "private:\n\n";
			S += "#define " + Prefix + "_GENERATED_BODY_LEGACY \\\npublic: \\\n" + Body + "public:\n\n";
			S += "class " + St.Name + ";\ntemplate <>\n" + Api + " UClass* StaticClass<class " + St.Name + ">();\n\n";
		}
		S += "#undef CURRENT_FILE_ID\n#define CURRENT_FILE_ID " + Fid + "\n\n";
		for (const FEnumDecl& E : H.Enums)
		{
			std::string Each;
			for (const FEnumValue& V : E.Values)
			{
				Each += " op(" + (E.bEnumClass ? E.Name + "::" : std::string()) + V.Name + ")";
			}
			S += "#define FOREACH_ENUM_" + ToUpper(E.Name) + "(op)" + Each + "\n\n";
			if (E.bEnumClass && !E.Underlying.empty())
			{
				S += "enum class " + E.Name + " : " + E.Underlying + ";\n";
				S += "template <>\n" + Api + " UEnum* StaticEnum<" + E.Name + ">();\n\n";
			}
		}
		return S;
	}

	FMetaList BaseMeta(const FHeaderDecl& H, const std::string& Comment, const FSpecifiers& Specs) const
	{
		FMetaList M;
		M.AddComment(Comment);
		M.Set("ModuleRelativePath", H.ModuleRelativePath);
		M.Add(Specs.Meta);
		return M;
	}

	static uint64_t AccessFlag(const std::string& Access)
	{
		return Access == "public"	? CPF_NativeAccessSpecifierPublic
			: Access == "protected" ? CPF_NativeAccessSpecifierProtected
									: CPF_NativeAccessSpecifierPrivate;
	}

	FPropEmit MemberProperty(const FHeaderDecl& H, const std::string& Owner, const FVariable& V) const
	{
		const std::string Where = H.Path + ":" + std::to_string(V.Line);
		FPropEmit P;
		P.Name = V.Name;
		P.Type = Types.Resolve(V.Type, Where);
		P.OffsetExpr = "STRUCT_OFFSET(" + Owner + ", " + V.Name + ")";
		P.Meta = BaseMeta(H, V.Comment, V.Specifiers);
		uint64_t F = AccessFlag(V.Access);
		for (const auto& Item : V.Specifiers.Items)
		{
			const std::string& K = Item.first;
			if (K == "EditAnywhere")
			{
				F |= CPF_Edit;
			}
			else if (K == "EditDefaultsOnly")
			{
				F |= CPF_Edit | CPF_DisableEditOnInstance;
			}
			else if (K == "EditInstanceOnly")
			{
				F |= CPF_Edit | CPF_DisableEditOnTemplate;
			}
			else if (K == "VisibleAnywhere")
			{
				F |= CPF_Edit | CPF_EditConst;
			}
			else if (K == "VisibleDefaultsOnly")
			{
				F |= CPF_Edit | CPF_EditConst | CPF_DisableEditOnInstance;
			}
			else if (K == "VisibleInstanceOnly")
			{
				F |= CPF_Edit | CPF_EditConst | CPF_DisableEditOnTemplate;
			}
			else if (K == "BlueprintReadWrite")
			{
				F |= CPF_BlueprintVisible;
			}
			else if (K == "BlueprintReadOnly")
			{
				F |= CPF_BlueprintVisible | CPF_BlueprintReadOnly;
			}
			else if (K == "BlueprintAssignable")
			{
				F |= CPF_BlueprintAssignable;
			}
			else if (K == "BlueprintCallable")
			{
				F |= CPF_BlueprintCallable;
			}
			else if (K == "BlueprintAuthorityOnly")
			{
				F |= CPF_BlueprintAuthorityOnly;
			}
			else if (K == "Transient")
			{
				F |= CPF_Transient;
			}
			else if (K == "DuplicateTransient")
			{
				F |= CPF_DuplicateTransient;
			}
			else if (K == "Config")
			{
				F |= CPF_Config;
			}
			else if (K == "SaveGame")
			{
				F |= CPF_SaveGame;
			}
			else if (K == "AdvancedDisplay")
			{
				F |= CPF_AdvancedDisplay;
			}
			else if (K == "SimpleDisplay")
			{
				F |= CPF_SimpleDisplay;
			}
			else if (K == "EditFixedSize")
			{
				F |= CPF_EditFixedSize;
			}
			else if (K == "NoClear")
			{
				F |= CPF_NoClear;
			}
			else if (K == "Interp")
			{
				F |= CPF_Edit | CPF_BlueprintVisible | CPF_Interp;
			}
			else if (K == "NonTransactional")
			{
				F |= CPF_NonTransactional;
			}
			else if (K == "Category")
			{
				P.Meta.Set("Category", Item.second);
			}
			else if (K == "DisplayName")
			{
				P.Meta.Set("DisplayName", Item.second);
			}
			else
			{
				throw std::runtime_error(Where + ": error: unknown UPROPERTY specifier '" + K + "'");
			}
		}
		P.Flags = F;
		if ((F & CPF_BlueprintAssignable) && P.Type.Kind != EKind::InlineMulticastDelegate)
		{
			throw std::runtime_error(Where + ": error: BlueprintAssignable needs a multicast delegate");
		}
		return P;
	}

	/** A function or delegate parameter; Kind follows from const, reference and UPARAM(ref). */
	FPropEmit ParamProperty(
		const FHeaderDecl& H, const std::string& Parms, const FVariable& V, bool& bOut, FMetaList& FuncMeta) const
	{
		const std::string Where = H.Path + ":" + std::to_string(V.Line);
		FPropEmit P;
		P.Name = V.Name;
		P.Type = Types.Resolve(V.Type, Where);
		P.OffsetExpr = "STRUCT_OFFSET(" + Parms + ", " + V.Name + ")";
		uint64_t F = CPF_Parm;
		if (V.Type.bReference)
		{
			F |= CPF_OutParm;
			if (V.Type.bConst)
			{
				F |= CPF_ConstParm | CPF_ReferenceParm;
				P.Meta.Set("NativeConst", "");
			}
			bOut = true;
		}
		else if (V.Type.bConst && !V.Type.bPointer)
		{
			F |= CPF_ConstParm;
		}
		for (const auto& Item : V.Specifiers.Items)
		{
			if (Item.first == "ref")
			{
				if (!V.Type.bReference || V.Type.bConst)
				{
					throw std::runtime_error(Where + ": error: UPARAM(ref) needs a non-const reference parameter");
				}
				F |= CPF_ReferenceParm;
			}
			else if (Item.first == "DisplayName")
			{
				P.Meta.Set("DisplayName", Item.second);
			}
			else
			{
				throw std::runtime_error(Where + ": error: unknown UPARAM specifier '" + Item.first + "'");
			}
		}
		P.Meta.Add(V.Specifiers.Meta);
		P.Flags = F;
		if (V.bHasDefault)
		{
			FuncMeta.Set("CPP_Default_" + V.Name, V.DefaultText);
		}
		return P;
	}

	std::string EnumCode(const FHeaderDecl& H, const FEnumDecl& E) const
	{
		if (!E.bEnumClass)
		{
			throw std::runtime_error(
				H.Path + ":" + std::to_string(E.Line) + ": error: reflected enumerations must be scoped (enum class)");
		}
		FMetaList M = BaseMeta(H, E.Comment, E.Specifiers);
		for (const auto& Item : E.Specifiers.Items)
		{
			if (Item.first == "BlueprintType")
			{
				M.Set("BlueprintType", "true");
			}
			else if (Item.first == "DisplayName")
			{
				M.Set("DisplayName", Item.second);
			}
			else if (Item.first != "Flags")
			{
				throw std::runtime_error(
					H.Path + ":" + std::to_string(E.Line) + ": error: unknown UENUM specifier '" + Item.first + "'");
			}
		}
		for (const FEnumValue& V : E.Values)
		{
			if (!V.Comment.empty())
			{
				M.Set(V.Name + ".Comment", V.Comment);
				M.Set(V.Name + ".ToolTip", CommentToToolTip(V.Comment));
			}
			M.Set(V.Name + ".Name", E.Name + "::" + V.Name);
			for (const auto& P : V.Specifiers.Meta.Pairs)
			{
				M.Set(V.Name + "." + P.first, P.second);
			}
		}
		const std::string Id = "Z_Enum_" + E.Name;
		std::string S = "// ---- enumeration " + E.Name + "\n";
		S += "static const UECodeGen_Private::FEnumeratorParam " + Id + "_Enumerators[] = {\n";
		for (const FEnumValue& V : E.Values)
		{
			S += "\t{" + Quote(E.Name + "::" + V.Name) + ", (int64)" + E.Name + "::" + V.Name + "},\n";
		}
		S += "};\n";
		S += MetaArrayDefinition(Id + "_MetaData", M).empty() ? ""
															  : "static " + MetaArrayDefinition(Id + "_MetaData", M);
		S += "static const UECodeGen_Private::FEnumParams " + Id + "_Params = {&" + PackageFunc() + ", " +
			Quote(E.Name) + ", " + Quote(E.Name) + ", " + Id + "_Enumerators, " + std::to_string(E.Values.size()) +
			", (uint8)UEnum::ECppForm::EnumClass, (int32)sizeof(" + E.Name + "), " + MetaArgs(Id + "_MetaData", M) +
			"};\n";
		S += "UEnum* " + Types.EnumFunc(E.Name) +
			"()\n{\n\tstatic UEnum* ReturnEnum = nullptr;\n\tif (!ReturnEnum)\n\t{\n"
			"\t\tUECodeGen_Private::ConstructUEnum(ReturnEnum, " +
			Id + "_Params);\n\t}\n\treturn ReturnEnum;\n}\n";
		S += "template <>\n" + ToUpper(Module.Name) + "_API UEnum* StaticEnum<" + E.Name + ">()\n{\n\treturn " +
			Types.EnumFunc(E.Name) + "();\n}\n\n";
		return S;
	}

	std::string StructCode(const FHeaderDecl& H, const FStructDecl& St) const
	{
		const std::string Statics = "Z_Construct_UScriptStruct_" + St.Name + "_Statics";
		FMetaList M = BaseMeta(H, St.Comment, St.Specifiers);
		for (const auto& Item : St.Specifiers.Items)
		{
			if (Item.first == "BlueprintType")
			{
				M.Set("BlueprintType", "true");
			}
			else if (Item.first == "Atomic" || Item.first == "Immutable" || Item.first == "NoExport")
			{
			}
			else
			{
				throw std::runtime_error(
					H.Path + ":" + std::to_string(St.Line) + ": error: unknown USTRUCT specifier '" + Item.first + "'");
			}
		}
		std::vector<FPropEmit> Props;
		for (const FVariable& V : St.Properties)
		{
			Props.push_back(MemberProperty(H, St.Name, V));
		}
		std::string Decl;
		std::string Defs;
		EmitProperties(Statics, Props, Decl, Defs);
		std::string SuperFunc = "nullptr";
		if (!St.Super.empty())
		{
			if (!Types.Structs.count(St.Super))
			{
				throw std::runtime_error(H.Path + ":" + std::to_string(St.Line) + ": error: base " + St.Super + " of " +
					St.Name + " is not a reflected record");
			}
			SuperFunc = "&" + Types.StructFunc(St.Super);
		}
		std::string S = "// ---- record " + St.Name + "\n";
		S += "struct " + Statics + "\n{\n" + Decl;
		if (!M.Pairs.empty())
		{
			S += "\tstatic const UECodeGen_Private::FMetaDataPairParam Struct_MetaDataParams[];\n";
		}
		S += "\tstatic const UECodeGen_Private::FStructParams ReturnStructParams;\n};\n";
		S += Defs;
		S += MetaArrayDefinition(Statics + "::Struct_MetaDataParams", M);
		S += "const UECodeGen_Private::FStructParams " + Statics + "::ReturnStructParams = {&" + PackageFunc() + ", " +
			SuperFunc + ", " + Quote(StripPrefix(St.Name)) + ", &UECodeGen_Private::TPropertyTypeOps<" + St.Name +
			">::Ops, " + PropArgs(Statics, Props.size()) + ", " + Hex32(STRUCT_Native) + ", " +
			MetaArgs(Statics + "::Struct_MetaDataParams", M) + "};\n";
		S += "UScriptStruct* " + Types.StructFunc(St.Name) +
			"()\n{\n\tstatic UScriptStruct* ReturnStruct = nullptr;\n\tif (!ReturnStruct)\n\t{\n"
			"\t\tUECodeGen_Private::ConstructUScriptStruct(ReturnStruct, " +
			Statics + "::ReturnStructParams);\n\t}\n\treturn ReturnStruct;\n}\n";
		S += "UScriptStruct* " + St.Name + "::StaticStruct()\n{\n\treturn " + Types.StructFunc(St.Name) + "();\n}\n";
		S += "template <>\n" + ToUpper(Module.Name) + "_API UScriptStruct* StaticStruct<" + St.Name +
			">()\n{\n\treturn " + Types.StructFunc(St.Name) + "();\n}\n\n";
		return S;
	}

	/** Parameter block, thunk and construction of one function. Returns the construct function's name. */
	std::string FunctionCode(const FHeaderDecl& H, const FStructDecl& C, const FFunctionDecl& F, std::string& Out) const
	{
		const std::string Where = H.Path + ":" + std::to_string(F.Line);
		const std::string Parms = StripPrefix(C.Name) + "_event" + F.Name + "_Parms";
		const std::string Statics = "Z_Construct_UFunction_" + C.Name + "_" + F.Name + "_Statics";
		const std::string Construct = "Z_Construct_UFunction_" + C.Name + "_" + F.Name;
		FMetaList M = BaseMeta(H, F.Comment, F.Specifiers);
		uint32_t Flags = FUNC_Native;
		if (!F.bVirtual)
		{
			Flags |= FUNC_Final;
		}
		if (F.bStatic)
		{
			Flags |= FUNC_Static;
		}
		if (F.bConst)
		{
			Flags |= FUNC_Const;
		}
		Flags |= F.Access == "public" ? FUNC_Public : F.Access == "protected" ? FUNC_Protected : FUNC_Private;
		for (const auto& Item : F.Specifiers.Items)
		{
			const std::string& K = Item.first;
			if (K == "BlueprintCallable")
			{
				Flags |= FUNC_BlueprintCallable;
			}
			else if (K == "BlueprintPure")
			{
				Flags |= FUNC_BlueprintCallable | FUNC_BlueprintPure;
			}
			else if (K == "Exec")
			{
				Flags |= FUNC_Exec;
			}
			else if (K == "Category")
			{
				M.Set("Category", Item.second);
			}
			else if (K == "DisplayName")
			{
				M.Set("DisplayName", Item.second);
			}
			else if (K == "BlueprintCosmetic" || K == "BlueprintAuthorityOnly")
			{
			}
			else
			{
				throw std::runtime_error(Where + ": error: unknown UFUNCTION specifier '" + K + "'");
			}
		}
		std::vector<FPropEmit> Props;
		bool bOut = false;
		bool bDefaults = false;
		for (const FVariable& V : F.Params)
		{
			Props.push_back(ParamProperty(H, Parms, V, bOut, M));
			bDefaults |= V.bHasDefault;
		}
		if (F.bHasReturn)
		{
			FPropEmit R;
			R.Name = "ReturnValue";
			R.Type = Types.Resolve(F.Return, Where);
			if (F.Return.bReference)
			{
				throw std::runtime_error(Where + ": error: a reflected function cannot return a reference");
			}
			R.Flags = CPF_Parm | CPF_OutParm | CPF_ReturnParm;
			R.OffsetExpr = "STRUCT_OFFSET(" + Parms + ", ReturnValue)";
			Props.push_back(R);
			bOut = true;
		}
		if (bOut)
		{
			Flags |= FUNC_HasOutParms;
		}
		if (bDefaults)
		{
			Flags |= FUNC_HasDefaults;
		}

		std::string S = "// ---- " + C.Name + "::" + F.Name + "\n";
		S += "struct " + Parms + "\n{\n";
		for (const FPropEmit& P : Props)
		{
			S += "\t" + P.Type.Cpp + " " + P.Name + ";\n";
		}
		S += "};\n";
		// The native thunk: reads the parameter block, calls the function, writes the result back.
		S += "DEFINE_FUNCTION(" + C.Name + "::exec" + F.Name + ")\n{\n";
		if (!F.Params.empty())
		{
			S += "\t" + Parms + "& Parms = *reinterpret_cast<" + Parms + "*>(Stack.Locals);\n";
		}
		S += "\tP_FINISH;\n\tP_NATIVE_BEGIN;\n\t";
		if (F.bHasReturn)
		{
			S += "*reinterpret_cast<" + Props.back().Type.Cpp + "*>(Z_Param__Result) = ";
		}
		S += F.bStatic ? C.Name + "::" + F.Name + "(" : "P_THIS->" + F.Name + "(";
		for (size_t I = 0; I < F.Params.size(); ++I)
		{
			S += (I ? ", " : "") + std::string("Parms.") + F.Params[I].Name;
		}
		S += ");\n\tP_NATIVE_END;\n}\n";
		std::string Decl;
		std::string Defs;
		EmitProperties(Statics, Props, Decl, Defs);
		S += "struct " + Statics + "\n{\n" + Decl;
		S += "\tstatic const UECodeGen_Private::FMetaDataPairParam Function_MetaDataParams[];\n";
		S += "\tstatic const UECodeGen_Private::FFunctionParams FuncParams;\n};\n";
		S += Defs;
		S += MetaArrayDefinition(Statics + "::Function_MetaDataParams", M);
		S += "const UECodeGen_Private::FFunctionParams " + Statics + "::FuncParams = {&" + C.Name +
			"::StaticClass, nullptr, " + Quote(F.Name) + ", " + PropArgs(Statics, Props.size()) + ", " +
			(Props.empty() ? "0" : "(int32)sizeof(" + Parms + ")") + ", (int32)alignof(" + Parms + "), " +
			Hex32(Flags) + ", &" + C.Name + "::exec" + F.Name + ", " +
			MetaArgs(Statics + "::Function_MetaDataParams", M) + "};\n";
		S += "UFunction* " + Construct +
			"()\n{\n\tstatic UFunction* ReturnFunction = nullptr;\n\tif (!ReturnFunction)\n\t{\n"
			"\t\tUECodeGen_Private::ConstructUFunction(ReturnFunction, " +
			Statics + "::FuncParams);\n\t}\n\treturn ReturnFunction;\n}\n";
		Out += S;
		return Construct;
	}

	std::string ClassCode(const FHeaderDecl& H, const FStructDecl& C) const
	{
		const std::string Where = H.Path + ":" + std::to_string(C.Line);
		if (!Types.Classes.count(C.Super) && !Types.EngineClasses.count(C.Super))
		{
			throw std::runtime_error(Where + ": error: base " + C.Super + " of " + C.Name + " is not a known class");
		}
		FMetaList M;
		M.AddComment(C.Comment);
		M.Set("IncludePath", H.IncludePath);
		M.Set("ModuleRelativePath", H.ModuleRelativePath);
		uint32_t ClassFlags = CLASS_Native | CLASS_Constructed;
		if (!C.ApiMacro.empty())
		{
			ClassFlags |= CLASS_RequiredAPI;
		}
		for (const auto& Item : C.Specifiers.Items)
		{
			const std::string& K = Item.first;
			if (K == "BlueprintType")
			{
				M.Set("BlueprintType", "true");
			}
			else if (K == "Blueprintable")
			{
				M.Set("BlueprintType", "true");
				M.Set("IsBlueprintBase", "true");
			}
			else if (K == "NotBlueprintable")
			{
				M.Set("IsBlueprintBase", "false");
			}
			else if (K == "Category")
			{
				M.Set("Category", Item.second);
			}
			else if (K == "Abstract")
			{
				ClassFlags |= CLASS_Abstract;
			}
			else if (K == "Transient" || K == "MinimalAPI" || K == "NotPlaceable" || K == "Placeable")
			{
			}
			else
			{
				throw std::runtime_error(Where + ": error: unknown UCLASS specifier '" + K + "'");
			}
		}
		M.Add(C.Specifiers.Meta);
		std::string S = "// ---- class " + C.Name + "\n";
		std::vector<std::string> FuncConstructs;
		std::set<std::string> Seen;
		for (const FFunctionDecl& F : C.Functions)
		{
			if (!Seen.insert(F.Name).second)
			{
				throw std::runtime_error(H.Path + ":" + std::to_string(F.Line) + ": error: " + C.Name + "::" + F.Name +
					" is declared twice (reflected functions cannot be overloaded)");
			}
			FuncConstructs.push_back(FunctionCode(H, C, F, S));
		}
		const std::string Statics = "Z_Construct_UClass_" + C.Name + "_Statics";
		std::vector<FPropEmit> Props;
		for (const FVariable& V : C.Properties)
		{
			Props.push_back(MemberProperty(H, C.Name, V));
		}
		std::string Decl;
		std::string Defs;
		EmitProperties(Statics, Props, Decl, Defs);
		S += "struct " + Statics + "\n{\n" + Decl;
		if (!FuncConstructs.empty())
		{
			S += "\tstatic UFunction* (*const FuncInfo[])();\n";
		}
		S += "\tstatic const UECodeGen_Private::FMetaDataPairParam Class_MetaDataParams[];\n";
		S += "\tstatic const UECodeGen_Private::FClassParams ClassParams;\n};\n";
		S += Defs;
		if (!FuncConstructs.empty())
		{
			S += "UFunction* (*const " + Statics + "::FuncInfo[])() = {\n";
			for (const std::string& Fn : FuncConstructs)
			{
				S += "\t&" + Fn + ",\n";
			}
			S += "};\n";
		}
		S += MetaArrayDefinition(Statics + "::Class_MetaDataParams", M);
		S += "const UECodeGen_Private::FClassParams " + Statics + "::ClassParams = {&" + PackageFunc() + ", &" +
			C.Super + "::StaticClass, " + Quote(StripPrefix(C.Name)) + ", " + Quote(std::string(1, C.Name[0])) +
			", (int32)sizeof(" + C.Name + "), (int32)alignof(" + C.Name + "), &" + C.Name + "::__DefaultConstructor, " +
			(FuncConstructs.empty() ? std::string("nullptr, 0")
									: Statics + "::FuncInfo, " + std::to_string(FuncConstructs.size())) +
			", " + PropArgs(Statics, Props.size()) + ", " + Hex32(ClassFlags) + ", " +
			MetaArgs(Statics + "::Class_MetaDataParams", M) + "};\n";
		S += "UClass* " + Types.ClassFunc(C.Name) +
			"()\n{\n\tstatic UClass* OuterClass = nullptr;\n\tif (!OuterClass)\n\t{\n"
			"\t\tUECodeGen_Private::ConstructUClass(OuterClass, " +
			Statics + "::ClassParams);\n\t}\n\treturn OuterClass;\n}\n";
		S += "UClass* " + C.Name + "::GetPrivateStaticClass()\n{\n\treturn " + Types.ClassFunc(C.Name) + "();\n}\n";
		S += "template <>\n" + ToUpper(Module.Name) + "_API UClass* StaticClass<" + C.Name + ">()\n{\n\treturn " +
			C.Name + "::StaticClass();\n}\n\n";
		return S;
	}

	std::string DelegateCode(const FHeaderDecl& H, const FDelegateDecl& D) const
	{
		const std::string Parms = "_Script_" + Module.Name + "_event" + StripPrefix(D.Name) + "_Parms";
		const std::string Statics = Types.DelegateFunc(D.Name) + "_Statics";
		FMetaList M = BaseMeta(H, D.Comment, D.Specifiers);
		std::vector<FPropEmit> Props;
		bool bOut = false;
		for (const FVariable& V : D.Params)
		{
			Props.push_back(ParamProperty(H, Parms, V, bOut, M));
		}
		uint32_t Flags = FUNC_Public | FUNC_Delegate | (D.bMulticast ? FUNC_MulticastDelegate : 0u);
		if (bOut)
		{
			Flags |= FUNC_HasOutParms;
		}
		std::string S = "// ---- delegate " + D.Name + "\n";
		S += "struct " + Parms + "\n{\n";
		for (const FPropEmit& P : Props)
		{
			S += "\t" + P.Type.Cpp + " " + P.Name + ";\n";
		}
		S += "};\n";
		std::string Decl;
		std::string Defs;
		EmitProperties(Statics, Props, Decl, Defs);
		S += "struct " + Statics + "\n{\n" + Decl;
		S += "\tstatic const UECodeGen_Private::FMetaDataPairParam Function_MetaDataParams[];\n";
		S += "\tstatic const UECodeGen_Private::FFunctionParams FuncParams;\n};\n";
		S += Defs;
		S += MetaArrayDefinition(Statics + "::Function_MetaDataParams", M);
		S += "const UECodeGen_Private::FFunctionParams " + Statics + "::FuncParams = {nullptr, &" + PackageFunc() +
			", " + Quote(StripPrefix(D.Name) + "__DelegateSignature") + ", " + PropArgs(Statics, Props.size()) + ", " +
			(Props.empty() ? "0" : "(int32)sizeof(" + Parms + ")") + ", (int32)alignof(" + Parms + "), " +
			Hex32(Flags) + ", nullptr, " + MetaArgs(Statics + "::Function_MetaDataParams", M) + "};\n";
		S += "UFunction* " + Types.DelegateFunc(D.Name) +
			"()\n{\n\tstatic UFunction* ReturnFunction = nullptr;\n\tif (!ReturnFunction)\n\t{\n"
			"\t\tUECodeGen_Private::ConstructUDelegateFunction(ReturnFunction, " +
			Statics + "::FuncParams);\n\t}\n\treturn ReturnFunction;\n}\n\n";
		return S;
	}

	std::string GenCpp(const FHeaderDecl& H) const
	{
		std::string S =
			"// Reflection registration for " + H.ModuleRelativePath + ", written by ZnHeaderTool. Do not edit.\n";
		if (!H.HasReflection())
		{
			return S + "// This header declares no reflected types.\n";
		}
		S += "#include \"UObject/GeneratedCppIncludes.h\"\n#include \"" + H.IncludePath + "\"\n\n";
		S += "#if defined(__GNUC__)\n#pragma GCC diagnostic ignored \"-Winvalid-offsetof\"\n#endif\n\n";
		S += Prototypes() + "\n";
		std::vector<std::string> Enums, Structs, Classes;
		for (const FDelegateDecl& D : H.Delegates)
		{
			S += DelegateCode(H, D);
		}
		for (const FEnumDecl& E : H.Enums)
		{
			S += EnumCode(H, E);
			Enums.push_back(Types.EnumFunc(E.Name));
		}
		for (const FStructDecl& St : H.Structs)
		{
			if (St.bIsClass)
			{
				S += ClassCode(H, St);
				Classes.push_back(Types.ClassFunc(St.Name));
			}
			else
			{
				S += StructCode(H, St);
				Structs.push_back(Types.StructFunc(St.Name));
			}
		}
		// Deferred registration: the package's lists pick these up when the library is loaded.
		const std::string Fid = FileId(H, Module.Name);
		auto List = [&](const char* Type, const std::string& Name, const std::vector<std::string>& Funcs)
		{
			if (Funcs.empty())
			{
				return std::string("nullptr, 0");
			}
			std::string L = "static " + std::string(Type) + " (*const " + Name + "[])() = {";
			for (const std::string& F : Funcs)
			{
				L += "&" + F + ", ";
			}
			S += L + "};\n";
			return Name + ", " + std::to_string(Funcs.size());
		};
		const std::string ClassArgs = List("UClass*", Fid + "_Classes", Classes);
		const std::string StructArgs = List("UScriptStruct*", Fid + "_Structs", Structs);
		const std::string EnumArgs = List("UEnum*", Fid + "_Enums", Enums);
		S += "static UECodeGen_Private::FRegisterCompiledInInfo Z_CompiledInDeferFile_" + Fid + "(&" + PackageFunc() +
			", " + ClassArgs + ", " + StructArgs + ", " + EnumArgs + ");\n";
		return S;
	}

	std::string InitGenCpp() const
	{
		std::string S = "// Package registration for " + PackageName() + ", written by ZnHeaderTool. Do not edit.\n";
		S += "#include \"UObject/GeneratedCppIncludes.h\"\n\n";
		S += Prototypes() + "\n";
		std::string Singletons = "nullptr, 0";
		if (!Types.Delegates.empty())
		{
			S += "static UFunction* (*const Z_Package_Singletons[])() = {\n";
			for (const auto& D : Types.Delegates)
			{
				S += "\t&" + Types.DelegateFunc(D.first) + ",\n";
			}
			S += "};\n";
			Singletons = "Z_Package_Singletons, " + std::to_string(Types.Delegates.size());
		}
		S += "static const UECodeGen_Private::FPackageParams Z_Package_Params = {" + Quote(PackageName()) + ", " +
			Singletons + "};\n";
		S += "UPackage* " + PackageFunc() +
			"()\n{\n\tstatic UPackage* ReturnPackage = nullptr;\n\tif (!ReturnPackage)\n\t{\n"
			"\t\tUECodeGen_Private::ConstructUPackage(ReturnPackage, Z_Package_Params);\n\t}\n\treturn "
			"ReturnPackage;\n}\n";
		S += "static UECodeGen_Private::FRegisterCompiledInInfo Z_CompiledInDeferPackage_" + Module.Name + "(&" +
			PackageFunc() + ", nullptr, 0, nullptr, 0, nullptr, 0);\n";
		return S;
	}
};
} // namespace

std::vector<FGeneratedFile> GenerateModule(const FModuleDecl& Module)
{
	FGenerator Gen(Module);
	std::vector<FGeneratedFile> Files;
	for (const FHeaderDecl& H : Module.Headers)
	{
		if (H.HasReflection() && !H.bIncludesGeneratedHeader)
		{
			throw std::runtime_error(H.Path + ":1: error: a header with reflected types must include \"" + H.BaseName +
				".generated.h\" as its last include");
		}
		Files.push_back({"Inc/" + H.BaseName + ".generated.h", Gen.GeneratedHeader(H)});
		Files.push_back({H.BaseName + ".gen.cpp", Gen.GenCpp(H)});
	}
	Files.push_back({Module.Name + ".init.gen.cpp", Gen.InitGenCpp()});
	return Files;
}
} // namespace ZnHeaderTool
