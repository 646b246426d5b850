#include "CodeGenerator.h"
#include "HeaderParser.h"

#include <gtest/gtest.h>

using namespace ZnHeaderTool;

namespace
{
std::vector<FToken> Tokens(const std::string& Text)
{
	return Tokenize(Text, "Test.h");
}

const FToken& FindToken(const std::vector<FToken>& All, const std::string& Text)
{
	for (const FToken& T : All)
	{
		if (T.Text == Text)
		{
			return T;
		}
	}
	static FToken None;
	return None;
}

std::string DefaultOf(const std::string& Expression)
{
	std::vector<FToken> T = Tokens(Expression);
	T.pop_back(); // the end token
	return DefaultValueText(T);
}

FHeaderDecl Parse(const std::string& Text)
{
	FHeaderDecl H = ParseHeader("Public/Test.h", Text);
	H.BaseName = "Test";
	H.ModuleRelativePath = "Public/Test.h";
	H.IncludePath = "Test.h";
	H.bIncludesGeneratedHeader = true;
	return H;
}
} // namespace

TEST(HeaderLexerTests, CommentDirectlyAboveATokenIsKeptAsWritten)
{
	const auto T = Tokens("//\xE5\x9B\xBD\xE5\x86\x85\nUENUM()\n");
	EXPECT_EQ(FindToken(T, "UENUM").Comment, "//\xE5\x9B\xBD\xE5\x86\x85\n");
	const auto Two = Tokens("// first\n// second\nUFUNCTION()");
	EXPECT_EQ(FindToken(Two, "UFUNCTION").Comment, "// first\n// second\n");
	const auto Indented = Tokens("\t\t//(const UObject* WorldContextObject);\n\tUFUNCTION()");
	EXPECT_EQ(FindToken(Indented, "UFUNCTION").Comment, "//(const UObject* WorldContextObject);\n");
}

TEST(HeaderLexerTests, BlankLineCodeAndTildeCommentsDetachAComment)
{
	EXPECT_EQ(FindToken(Tokens("// far\n\nUENUM()"), "UENUM").Comment, "");
	EXPECT_EQ(FindToken(Tokens("//~ for readers only\nUENUM()"), "UENUM").Comment, "");
	EXPECT_EQ(FindToken(Tokens("// kept\n//~ dropped\nUENUM()"), "UENUM").Comment, "");
	EXPECT_EQ(FindToken(Tokens("int x; // about x\nUENUM()"), "UENUM").Comment, "");
	EXPECT_EQ(FindToken(Tokens("// about include\n#include \"a.h\"\nUENUM()"), "UENUM").Comment, "");
	EXPECT_EQ(FindToken(Tokens("/* block */\nUENUM()"), "UENUM").Comment, "/* block */");
}

TEST(HeaderLexerTests, LiteralsAndPreprocessorLinesAreSkippedSafely)
{
	const auto T = Tokens("#define X(a) \\\n  a\nconst char* S = R\"x(UENUM() \"quoted\")x\"; char C = '\\''; UCLASS");
	EXPECT_EQ(FindToken(T, "UENUM").Kind, ETokenKind::End) << "text inside a raw string is not markup";
	EXPECT_EQ(FindToken(T, "UCLASS").Line, 3);
	EXPECT_EQ(FindToken(T, "X").Kind, ETokenKind::End) << "preprocessor lines are dropped";
}

TEST(HeaderLexerTests, ToolTipStripsCommentMarkers)
{
	EXPECT_EQ(CommentToToolTip("//\xE5\x9B\xBD\xE5\x86\x85\xE3\x80\x81\xE5\x9B\xBD\xE5\xA4\x96\n"),
		"\xE5\x9B\xBD\xE5\x86\x85\xE3\x80\x81\xE5\x9B\xBD\xE5\xA4\x96");
	EXPECT_EQ(CommentToToolTip("// one\n//   two  \n//\n"), "one\ntwo");
	EXPECT_EQ(CommentToToolTip("/**\n * Does a thing.\n * Twice.\n */"), "Does a thing.\nTwice.");
	EXPECT_EQ(CommentToToolTip("//static bool F(FString a, FString& b);\n"), "static bool F(FString a, FString& b);");
}

TEST(HeaderParserTests, DefaultsTakeTheEnginesTextForm)
{
	EXPECT_EQ(DefaultOf("TEXT(\"wav\")"), "wav");
	EXPECT_EQ(DefaultOf("\"aixia\""), "aixia");
	EXPECT_EQ(DefaultOf("FString(TEXT(\"male\"))"), "male");
	EXPECT_EQ(DefaultOf("FString()"), "");
	EXPECT_EQ(DefaultOf("50"), "50");
	EXPECT_EQ(DefaultOf("-1"), "-1");
	EXPECT_EQ(DefaultOf("10u"), "10");
	EXPECT_EQ(DefaultOf("false"), "false");
	EXPECT_EQ(DefaultOf("true"), "true");
	EXPECT_EQ(DefaultOf("0.5f"), "0.500000");
	EXPECT_EQ(DefaultOf("1.0"), "1.000000");
	EXPECT_EQ(DefaultOf("ZnDM_HttpVerb::POST"), "POST");
	EXPECT_EQ(DefaultOf("nullptr"), "None");
}

TEST(HeaderParserTests, EnumerationValuesMetadataAndComments)
{
	const FHeaderDecl H = Parse("//\xE5\x9B\xBD\nUENUM(BlueprintType)\nenum class ERegion : uint8\n{\n"
								"\tEN_US UMETA(DisplayName = \"English\"),\n\tZH_CN = 5,\n\tNEXT\n};\n");
	ASSERT_EQ(H.Enums.size(), 1u);
	const FEnumDecl& E = H.Enums[0];
	EXPECT_EQ(E.Name, "ERegion");
	EXPECT_TRUE(E.bEnumClass);
	EXPECT_EQ(E.Underlying, "uint8");
	EXPECT_EQ(E.Comment, "//\xE5\x9B\xBD\n");
	ASSERT_EQ(E.Values.size(), 3u);
	EXPECT_EQ(E.Values[0].Value, 0);
	EXPECT_EQ(*E.Values[0].Specifiers.Meta.Find("DisplayName"), "English");
	EXPECT_EQ(E.Values[1].Value, 5);
	EXPECT_EQ(E.Values[2].Value, 6);
	EXPECT_TRUE(E.Specifiers.Has("BlueprintType"));
}

TEST(HeaderParserTests, FunctionParametersKeepKindsDefaultsAndOrder)
{
	const FHeaderDecl H =
		Parse("UCLASS()\nclass API_X_API UThing : public UObject\n{\n\tGENERATED_BODY()\npublic:\n"
			  "\tUFUNCTION(BlueprintCallable, Category = \"A|B\", meta = (CallableWithoutWorldContext, "
			  "AdvancedDisplay = \"0.0-1.0\"))\n"
			  "\tstatic bool Go(const FString& In, UPARAM(ref) float& Both, TArray<uint8>& Out, int32 N = "
			  "5, const TArray<FString>& L = TArray<FString>());\n"
			  "\tUFUNCTION(BlueprintCallable)\n\tvoid Member() const {}\n};\n");
	ASSERT_EQ(H.Structs.size(), 1u);
	const FStructDecl& C = H.Structs[0];
	EXPECT_TRUE(C.bIsClass);
	EXPECT_EQ(C.Super, "UObject");
	EXPECT_EQ(C.ApiMacro, "API_X_API");
	EXPECT_EQ(C.GeneratedBodyLine, 4);
	ASSERT_EQ(C.Functions.size(), 2u);
	const FFunctionDecl& F = C.Functions[0];
	EXPECT_TRUE(F.bStatic);
	EXPECT_EQ(F.Return.Name, "bool");
	EXPECT_EQ(*F.Specifiers.Find("Category"), "A|B");
	EXPECT_EQ(*F.Specifiers.Meta.Find("CallableWithoutWorldContext"), "");
	EXPECT_EQ(*F.Specifiers.Meta.Find("AdvancedDisplay"), "0.0-1.0");
	ASSERT_EQ(F.Params.size(), 5u);
	EXPECT_TRUE(F.Params[0].Type.bConst && F.Params[0].Type.bReference);
	EXPECT_TRUE(F.Params[1].bHasUParam);
	EXPECT_TRUE(F.Params[1].Specifiers.Has("ref"));
	EXPECT_EQ(F.Params[2].Type.ValueCpp(), "TArray<uint8>");
	EXPECT_EQ(F.Params[3].DefaultText, "5");
	EXPECT_TRUE(F.Params[4].bHasDefault);
	EXPECT_TRUE(C.Functions[1].bConst);
	EXPECT_FALSE(C.Functions[1].bStatic);
}

TEST(HeaderParserTests, PropertiesAccessAndDelegates)
{
	const FHeaderDecl H = Parse(
		"DECLARE_DYNAMIC_MULTICAST_DELEGATE_ThreeParams(FOnDone, bool, bOk, FString, Text, const TArray<uint8>&, "
		"Bytes);\n"
		"USTRUCT(BlueprintType)\nstruct FRec\n{\n\tGENERATED_BODY()\n\tUPROPERTY(EditAnywhere, Category = \"C\")\n"
		"\tint64 id = 0;\n};\n"
		"UCLASS()\nclass UObj : public UObject\n{\n\tGENERATED_BODY()\n\tUPROPERTY()\n\tbool bHidden = false;\n"
		"public:\n\tUPROPERTY(BlueprintAssignable)\n\tFOnDone OnDone;\n};\n");
	ASSERT_EQ(H.Delegates.size(), 1u);
	EXPECT_EQ(H.Delegates[0].Name, "FOnDone");
	EXPECT_TRUE(H.Delegates[0].bMulticast);
	ASSERT_EQ(H.Delegates[0].Params.size(), 3u);
	EXPECT_EQ(H.Delegates[0].Params[2].Name, "Bytes");
	EXPECT_TRUE(H.Delegates[0].Params[2].Type.bReference);
	ASSERT_EQ(H.Structs.size(), 2u);
	EXPECT_EQ(H.Structs[0].Properties[0].Access, "public");
	EXPECT_EQ(H.Structs[0].Properties[0].Type.Name, "int64");
	EXPECT_EQ(H.Structs[1].Properties[0].Access, "private") << "a class body after GENERATED_BODY is private";
	EXPECT_EQ(H.Structs[1].Properties[1].Access, "public");
}

TEST(CodeGeneratorTests, GeneratedHeaderDefinesTheBodyMacroForItsLine)
{
	FModuleDecl Module;
	Module.Name = "Mod";
	Module.Headers.push_back(
		Parse("#pragma once\n#include \"Test.generated.h\"\nUCLASS()\nclass UObj : public UObject\n{\n"
			  "\tGENERATED_BODY()\npublic:\n\tUFUNCTION(BlueprintCallable)\n"
			  "\tstatic int32 Twice(int32 V = 2) { return V * 2; }\n};\n"));
	const std::vector<FGeneratedFile> Files = GenerateModule(Module);
	ASSERT_EQ(Files.size(), 3u);
	EXPECT_EQ(Files[0].RelativePath, "Inc/Test.generated.h");
	EXPECT_EQ(Files[1].RelativePath, "Test.gen.cpp");
	EXPECT_EQ(Files[2].RelativePath, "Mod.init.gen.cpp");
	const std::string& Header = Files[0].Text;
	EXPECT_NE(Header.find("#define FID_Mod_Public_Test_h_6_GENERATED_BODY \\"), std::string::npos);
	EXPECT_NE(Header.find("#define CURRENT_FILE_ID FID_Mod_Public_Test_h"), std::string::npos);
	EXPECT_NE(Header.find("DECLARE_FUNCTION(execTwice);"), std::string::npos);
	const std::string& Cpp = Files[1].Text;
	EXPECT_NE(Cpp.find("{\"CPP_Default_V\", \"2\"}"), std::string::npos);
	EXPECT_NE(Cpp.find("{\"ModuleRelativePath\", \"Public/Test.h\"}"), std::string::npos);
	EXPECT_NE(Cpp.find("{\"IncludePath\", \"Test.h\"}"), std::string::npos);
	EXPECT_NE(Cpp.find("*reinterpret_cast<int32*>(Z_Param__Result) = UObj::Twice(Parms.V);"), std::string::npos);
	EXPECT_NE(Files[2].Text.find("\"/Script/Mod\""), std::string::npos);
}

TEST(CodeGeneratorTests, HeaderWithoutMarkupGivesEmptyButValidFiles)
{
	FModuleDecl Module;
	Module.Name = "Mod";
	FHeaderDecl H = Parse("#pragma once\nstruct FPlain { int X; };\n");
	H.bIncludesGeneratedHeader = false;
	Module.Headers.push_back(H);
	const std::vector<FGeneratedFile> Files = GenerateModule(Module);
	ASSERT_EQ(Files.size(), 3u);
	EXPECT_EQ(Files[1].Text.find("#include"), std::string::npos);
	EXPECT_EQ(Files[0].Text.find("GENERATED_BODY"), std::string::npos);
}

TEST(CodeGeneratorTests, ParameterFlagsFollowConstReferenceAndUParam)
{
	FModuleDecl Module;
	Module.Name = "Mod";
	Module.Headers.push_back(
		Parse("UCLASS()\nclass UObj : public UObject\n{\n\tGENERATED_BODY()\npublic:\n"
			  "\tUFUNCTION(BlueprintCallable)\n\tstatic void F(FString A, const FString& B, FString& C, "
			  "UPARAM(ref) FString& D);\n};\n"));
	const std::string Cpp = GenerateModule(Module)[1].Text;
	// by value: Parm; const&: Parm|OutParm|ConstParm|ReferenceParm; &: Parm|OutParm; ref: adds ReferenceParm.
	EXPECT_NE(
		Cpp.find("NewProp_A = {\"A\", UECodeGen_Private::EPropertyGenFlags::Str, (EPropertyFlags)0x0000000000000280"),
		std::string::npos);
	EXPECT_NE(
		Cpp.find("NewProp_B = {\"B\", UECodeGen_Private::EPropertyGenFlags::Str, (EPropertyFlags)0x0000000008000382"),
		std::string::npos);
	EXPECT_NE(
		Cpp.find("NewProp_C = {\"C\", UECodeGen_Private::EPropertyGenFlags::Str, (EPropertyFlags)0x0000000000000380"),
		std::string::npos);
	EXPECT_NE(
		Cpp.find("NewProp_D = {\"D\", UECodeGen_Private::EPropertyGenFlags::Str, (EPropertyFlags)0x0000000008000380"),
		std::string::npos);
	EXPECT_NE(Cpp.find("{\"NativeConst\", \"\"}"), std::string::npos);
	// Native | Final | Static | Public | HasOutParms | BlueprintCallable
	EXPECT_NE(Cpp.find("0x04422401"), std::string::npos);
}
