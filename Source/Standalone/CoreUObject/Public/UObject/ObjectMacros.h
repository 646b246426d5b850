// The reflection markup of module headers and the flags of the reflected types.
//
// The markup macros (UCLASS, UPROPERTY, ...) expand to nothing: ZnHeaderTool reads them from
// the headers at build time and writes the reflection glue. GENERATED_BODY() pastes the
// current file id (defined by the including header's *.generated.h) and the line number into
// the name of a macro that the generated header defines, so every reflected type receives the
// declarations written for it at exactly that line.
#pragma once

#include "HAL/Platform.h"
#include "UObject/ReflectedTypeAccessors.h"

#define UCLASS(...)
#define USTRUCT(...)
#define UENUM(...)
#define UFUNCTION(...)
#define UPROPERTY(...)
#define UPARAM(...)
#define UMETA(...)
#define UDELEGATE(...)
#define UINTERFACE(...)

#define BODY_MACRO_COMBINE_INNER(A, B, C, D) A##B##C##D
#define BODY_MACRO_COMBINE(A, B, C, D) BODY_MACRO_COMBINE_INNER(A, B, C, D)

#define GENERATED_BODY(...) BODY_MACRO_COMBINE(CURRENT_FILE_ID, _, __LINE__, _GENERATED_BODY);
#define GENERATED_BODY_LEGACY(...) BODY_MACRO_COMBINE(CURRENT_FILE_ID, _, __LINE__, _GENERATED_BODY_LEGACY);
#define GENERATED_USTRUCT_BODY(...) GENERATED_BODY()
#define GENERATED_UCLASS_BODY(...) GENERATED_BODY_LEGACY()

#define RELAY_CONSTRUCTOR(TClass, TSuperClass) \
	TClass()                                   \
		: TSuperClass()                        \
	{                                          \
	}

#define NO_API

#define ENUM_CLASS_FLAGS_OPS(Enum)                                              \
	inline constexpr Enum operator|(Enum A, Enum B)                             \
	{                                                                           \
		return (Enum)((__underlying_type(Enum))A | (__underlying_type(Enum))B); \
	}                                                                           \
	inline constexpr Enum operator&(Enum A, Enum B)                             \
	{                                                                           \
		return (Enum)((__underlying_type(Enum))A & (__underlying_type(Enum))B); \
	}                                                                           \
	inline constexpr Enum operator~(Enum A)                                     \
	{                                                                           \
		return (Enum) ~(__underlying_type(Enum))A;                              \
	}                                                                           \
	inline Enum& operator|=(Enum& A, Enum B)                                    \
	{                                                                           \
		return A = A | B;                                                       \
	}                                                                           \
	inline Enum& operator&=(Enum& A, Enum B)                                    \
	{                                                                           \
		return A = A & B;                                                       \
	}

/** Flags of an object instance. */
enum EObjectFlags : uint32
{
	RF_NoFlags = 0x00000000,
	RF_Public = 0x00000001,
	RF_Standalone = 0x00000002,
	RF_MarkAsNative = 0x00000004,
	RF_Transactional = 0x00000008,
	RF_ClassDefaultObject = 0x00000010,
	RF_ArchetypeObject = 0x00000020,
	RF_Transient = 0x00000040,
	RF_MarkAsRootSet = 0x00000080,
};
ENUM_CLASS_FLAGS_OPS(EObjectFlags)

/** Flags of a reflected class. */
enum EClassFlags : uint32
{
	CLASS_None = 0x00000000u,
	CLASS_Abstract = 0x00000001u,
	CLASS_DefaultConfig = 0x00000002u,
	CLASS_Config = 0x00000004u,
	CLASS_Transient = 0x00000008u,
	CLASS_Native = 0x00000080u,
	CLASS_RequiredAPI = 0x00000200u,
	CLASS_MinimalAPI = 0x00080000u,
	CLASS_Constructed = 0x00100000u,
	CLASS_Intrinsic = 0x10000000u,
};
ENUM_CLASS_FLAGS_OPS(EClassFlags)

/** Flags of a reflected function (the engine's values). */
enum EFunctionFlags : uint32
{
	FUNC_None = 0x00000000,
	FUNC_Final = 0x00000001,
	FUNC_RequiredAPI = 0x00000002,
	FUNC_BlueprintAuthorityOnly = 0x00000004,
	FUNC_BlueprintCosmetic = 0x00000008,
	FUNC_Net = 0x00000040,
	FUNC_NetReliable = 0x00000080,
	FUNC_NetRequest = 0x00000100,
	FUNC_Exec = 0x00000200,
	FUNC_Native = 0x00000400,
	FUNC_Event = 0x00000800,
	FUNC_NetResponse = 0x00001000,
	FUNC_Static = 0x00002000,
	FUNC_NetMulticast = 0x00004000,
	FUNC_UbergraphFunction = 0x00008000,
	FUNC_MulticastDelegate = 0x00010000,
	FUNC_Public = 0x00020000,
	FUNC_Private = 0x00040000,
	FUNC_Protected = 0x00080000,
	FUNC_Delegate = 0x00100000,
	FUNC_NetServer = 0x00200000,
	FUNC_HasOutParms = 0x00400000,
	FUNC_HasDefaults = 0x00800000,
	FUNC_NetClient = 0x01000000,
	FUNC_DLLImport = 0x02000000,
	FUNC_BlueprintCallable = 0x04000000,
	FUNC_BlueprintEvent = 0x08000000,
	FUNC_BlueprintPure = 0x10000000,
	FUNC_EditorOnly = 0x20000000,
	FUNC_Const = 0x40000000,
	FUNC_NetValidate = 0x80000000,
};
ENUM_CLASS_FLAGS_OPS(EFunctionFlags)

/** Flags of a reflected property or function parameter (the engine's values). */
enum EPropertyFlags : uint64
{
	CPF_None = 0,
	CPF_Edit = 0x0000000000000001ull,
	CPF_ConstParm = 0x0000000000000002ull,
	CPF_BlueprintVisible = 0x0000000000000004ull,
	CPF_ExportObject = 0x0000000000000008ull,
	CPF_BlueprintReadOnly = 0x0000000000000010ull,
	CPF_Net = 0x0000000000000020ull,
	CPF_EditFixedSize = 0x0000000000000040ull,
	CPF_Parm = 0x0000000000000080ull,
	CPF_OutParm = 0x0000000000000100ull,
	CPF_ZeroConstructor = 0x0000000000000200ull,
	CPF_ReturnParm = 0x0000000000000400ull,
	CPF_DisableEditOnTemplate = 0x0000000000000800ull,
	CPF_Transient = 0x0000000000002000ull,
	CPF_Config = 0x0000000000004000ull,
	CPF_DisableEditOnInstance = 0x0000000000010000ull,
	CPF_EditConst = 0x0000000000020000ull,
	CPF_GlobalConfig = 0x0000000000040000ull,
	CPF_InstancedReference = 0x0000000000080000ull,
	CPF_DuplicateTransient = 0x0000000000200000ull,
	CPF_SaveGame = 0x0000000001000000ull,
	CPF_NoClear = 0x0000000002000000ull,
	CPF_ReferenceParm = 0x0000000008000000ull,
	CPF_BlueprintAssignable = 0x0000000010000000ull,
	CPF_Deprecated = 0x0000000020000000ull,
	CPF_IsPlainOldData = 0x0000000040000000ull,
	CPF_RepSkip = 0x0000000080000000ull,
	CPF_RepNotify = 0x0000000100000000ull,
	CPF_Interp = 0x0000000200000000ull,
	CPF_NonTransactional = 0x0000000400000000ull,
	CPF_EditorOnly = 0x0000000800000000ull,
	CPF_NoDestructor = 0x0000001000000000ull,
	CPF_AutoWeak = 0x0000004000000000ull,
	CPF_ContainsInstancedReference = 0x0000008000000000ull,
	CPF_AssetRegistrySearchable = 0x0000010000000000ull,
	CPF_SimpleDisplay = 0x0000020000000000ull,
	CPF_AdvancedDisplay = 0x0000040000000000ull,
	CPF_Protected = 0x0000080000000000ull,
	CPF_BlueprintCallable = 0x0000100000000000ull,
	CPF_BlueprintAuthorityOnly = 0x0000200000000000ull,
	CPF_TextExportTransient = 0x0000400000000000ull,
	CPF_NonPIEDuplicateTransient = 0x0000800000000000ull,
	CPF_ExposeOnSpawn = 0x0001000000000000ull,
	CPF_PersistentInstance = 0x0002000000000000ull,
	CPF_UObjectWrapper = 0x0004000000000000ull,
	CPF_HasGetValueTypeHash = 0x0008000000000000ull,
	CPF_NativeAccessSpecifierPublic = 0x0010000000000000ull,
	CPF_NativeAccessSpecifierProtected = 0x0020000000000000ull,
	CPF_NativeAccessSpecifierPrivate = 0x0040000000000000ull,
	CPF_SkipSerialization = 0x0080000000000000ull,
};
ENUM_CLASS_FLAGS_OPS(EPropertyFlags)

/** Flags of a reflected record. */
enum EStructFlags : uint32
{
	STRUCT_NoFlags = 0x00000000,
	STRUCT_Native = 0x00000001,
	STRUCT_Atomic = 0x00000010,
	STRUCT_Immutable = 0x00000020,
	STRUCT_HasInstancedReference = 0x00000040,
};
ENUM_CLASS_FLAGS_OPS(EStructFlags)

#define STRUCT_OFFSET(Struct, Member) ((int32) __builtin_offsetof(Struct, Member))

/** Cast flags are not used by this build; the argument is kept for the engine's macro shape. */
#define CASTCLASS_None 0
#define COMPILED_IN_FLAGS(TStaticFlags) (TStaticFlags | CLASS_Intrinsic)
