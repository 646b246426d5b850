#include "CodeGenerator.h"
#include "HeaderParser.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace ZnHeaderTool;

namespace
{
/** The error message of generating a module from one header, or "" when it succeeds. */
std::string ErrorOf(const std::string& Text, bool bIncludesGenerated = true)
{
	try
	{
		FModuleDecl Module;
		Module.Name = "Mod";
		FHeaderDecl H = ParseHeader("Public/Bad.h", Text);
		H.BaseName = "Bad";
		H.ModuleRelativePath = "Public/Bad.h";
		H.IncludePath = "Bad.h";
		H.bIncludesGeneratedHeader = bIncludesGenerated;
		Module.Headers.push_back(H);
		GenerateModule(Module);
	}
	catch (const std::runtime_error& E)
	{
		return E.what();
	}
	return "";
}

const std::string ClassStart = "UCLASS()\nclass UObj : public UObject\n{\n\tGENERATED_BODY()\npublic:\n";
} // namespace

TEST(HeaderToolErrorTests, UnknownSpecifiersAreReportedWithFileAndLine)
{
	EXPECT_EQ(ErrorOf(ClassStart + "\tUFUNCTION(BlueprintCalable)\n\tstatic void F();\n};\n"),
		"Public/Bad.h:6: error: unknown UFUNCTION specifier 'BlueprintCalable'");
	EXPECT_NE(ErrorOf(ClassStart + "\tUPROPERTY(EditEverywhere)\n\tint32 X;\n};\n").find("unknown UPROPERTY specifier"),
		std::string::npos);
	EXPECT_NE(ErrorOf("UCLASS(Blueprintz)\nclass UObj : public UObject\n{\n\tGENERATED_BODY()\n};\n")
				  .find("unknown UCLASS specifier 'Blueprintz'"),
		std::string::npos);
}

TEST(HeaderToolErrorTests, TypesOutsideTheReflectedSetAreRejected)
{
	EXPECT_NE(ErrorOf(ClassStart + "\tUFUNCTION(BlueprintCallable)\n\tstatic void F(std::string S);\n};\n")
				  .find("is not a reflected type"),
		std::string::npos);
	EXPECT_NE(ErrorOf(ClassStart + "\tUFUNCTION(BlueprintCallable)\n\tstatic void F(FVector2D V);\n};\n")
				  .find("'FVector2D' is not a reflected type"),
		std::string::npos);
	EXPECT_NE(ErrorOf(ClassStart + "\tUPROPERTY()\n\tTArray<TArray<int32>> Grid;\n};\n").find("arrays of arrays"),
		std::string::npos);
	EXPECT_NE(ErrorOf("UENUM()\nenum class EBig : int32 { A };\n" + ClassStart +
				  "\tUFUNCTION(BlueprintCallable)\n\tstatic void F(EBig E);\n};\n")
				  .find("underlying type uint8"),
		std::string::npos);
}

TEST(HeaderToolErrorTests, StructuralMistakesAreReported)
{
	EXPECT_NE(
		ErrorOf("UCLASS()\nclass UObj : public UObject\n{\n};\n").find("has no GENERATED_BODY()"), std::string::npos);
	EXPECT_NE(ErrorOf(ClassStart + "};\n", false).find("must include \"Bad.generated.h\""), std::string::npos);
	EXPECT_NE(
		ErrorOf(ClassStart + "\tUFUNCTION(BlueprintCallable)\n\tstatic void F(const FString& S UPARAM(ref));\n};\n"),
		"");
	EXPECT_NE(
		ErrorOf(ClassStart + "\tUFUNCTION(BlueprintCallable)\n\tstatic void F(UPARAM(ref) const FString& S);\n};\n")
			.find("UPARAM(ref) needs a non-const reference"),
		std::string::npos);
	EXPECT_NE(ErrorOf(ClassStart +
				  "\tUFUNCTION(BlueprintCallable)\n\tstatic void F();\n\tUFUNCTION(BlueprintCallable)\n"
				  "\tstatic void F(int32 X);\n};\n")
				  .find("cannot be overloaded"),
		std::string::npos);
	EXPECT_NE(ErrorOf("UENUM()\nenum EPlain { A };\n").find("must be scoped"), std::string::npos);
	EXPECT_NE(ErrorOf("UFUNCTION()\nvoid Free();\n").find("outside a reflected class"), std::string::npos);
	EXPECT_NE(ErrorOf("UCLASS()\nclass UObj\n{\n\tGENERATED_BODY()\n};\n").find("must derive from UObject"),
		std::string::npos);
	EXPECT_NE(
		ErrorOf("UCLASS()\nclass UObj : public UUnknownBase\n{\n\tGENERATED_BODY()\n};\n").find("is not a known class"),
		std::string::npos);
	EXPECT_NE(ErrorOf("/* never closed\nUENUM()").find("unterminated comment"), std::string::npos);
	EXPECT_NE(ErrorOf("USTRUCT()\nstruct FRec\n{\n\tGENERATED_BODY()\n\tUFUNCTION()\n\tvoid F();\n};\n")
				  .find("UFUNCTION in a record"),
		std::string::npos);
}
