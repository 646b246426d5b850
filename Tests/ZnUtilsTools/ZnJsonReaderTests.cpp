#include "ZnJsonReader.h"

#include "ZnDecodeTestHelpers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

using ZnDecodeTest::Text;

namespace
{
const std::string Sample =
	"{\"name\":\"Hips\",\"count\":3,\"ratio\":2.5,\"neg\":-4,\"big\":18446744073709551615,\"flag\":true,"
	"\"none\":null,\"list\":[1,2,3],\"child\":{\"url\":\"http://x\"},\"text\":\"12\"}";
}

TEST(ZnJsonReaderTests, ReadsEveryKindOfMember)
{
	FZnJsonReader Reader;
	FZnJsonObject Root;
	ASSERT_TRUE(Reader.ParseObject(Text(Sample), Root));
	EXPECT_TRUE(Root.GetStringField("name").Equals(TEXT("Hips"), ESearchCase::CaseSensitive));
	EXPECT_EQ(Root.GetNumberField("count"), 3.0);
	EXPECT_EQ(Root.GetNumberField("ratio"), 2.5);
	EXPECT_TRUE(Root.GetBoolField("flag"));
	EXPECT_EQ(Root.GetArrayField("list").Num(), 3);
	EXPECT_TRUE(
		Root.GetObjectField("child").GetStringField("url").Equals(TEXT("http://x"), ESearchCase::CaseSensitive));
	EXPECT_EQ(Root.GetField("none").GetType(), EZnJsonType::Null);
	EXPECT_EQ(Root.GetField("list").GetType(), EZnJsonType::Array);
	EXPECT_EQ(Root.GetField("child").GetType(), EZnJsonType::Object);
	EXPECT_EQ(Root.GetField("text").GetType(), EZnJsonType::String);
	EXPECT_EQ(Root.GetField("flag").GetType(), EZnJsonType::Boolean);
	EXPECT_EQ(Root.GetField("big").GetType(), EZnJsonType::Number);
	EXPECT_EQ(Root.GetField("missing").GetType(), EZnJsonType::None);
	EXPECT_EQ(Root.Num(), 10);
	EXPECT_TRUE(Root.HasTypedField("count", EZnJsonType::Number));
	EXPECT_FALSE(Root.HasTypedField("text", EZnJsonType::Number));
}

TEST(ZnJsonReaderTests, MissingMembersReadAsZeroEmptyOrInvalid)
{
	FZnJsonReader Reader;
	FZnJsonObject Root;
	ASSERT_TRUE(Reader.ParseObject(Text(Sample), Root));
	EXPECT_EQ(Root.GetNumberField("nope"), 0.0);
	EXPECT_TRUE(Root.GetStringField("nope").IsEmpty());
	EXPECT_FALSE(Root.GetBoolField("nope"));
	EXPECT_EQ(Root.GetArrayField("nope").Num(), 0);
	EXPECT_FALSE(Root.GetArrayField("nope").IsValid());
	EXPECT_FALSE(Root.GetObjectField("nope").IsValid());
	EXPECT_FALSE(Root.HasField("nope"));
	// Lookups on an invalid object miss too.
	EXPECT_EQ(Root.GetObjectField("nope").GetNumberField("count"), 0.0);
	int32 Iterations = 0;
	for (FZnJsonValue Value : Root.GetArrayField("nope"))
	{
		(void)Value;
		++Iterations;
	}
	for (FZnJsonField Field : Root.GetObjectField("nope"))
	{
		(void)Field;
		++Iterations;
	}
	EXPECT_EQ(Iterations, 0);
}

TEST(ZnJsonReaderTests, MembersOfAnotherKindReadAsZeroEmptyOrInvalid)
{
	FZnJsonReader Reader;
	FZnJsonObject Root;
	ASSERT_TRUE(Reader.ParseObject(Text(Sample), Root));
	// No conversion between kinds: a numeric string is not a number, a number is not a string.
	EXPECT_EQ(Root.GetNumberField("text"), 0.0);
	EXPECT_EQ(Root.GetNumberField("flag"), 0.0);
	EXPECT_EQ(Root.GetNumberField("none"), 0.0);
	EXPECT_TRUE(Root.GetStringField("count").IsEmpty());
	EXPECT_FALSE(Root.GetBoolField("count"));
	EXPECT_EQ(Root.GetArrayField("child").Num(), 0);
	EXPECT_FALSE(Root.GetObjectField("list").IsValid());
}

TEST(ZnJsonReaderTests, TryGetFormsReportMissingAndMistypedMembersAndLeaveTheOutputAlone)
{
	FZnJsonReader Reader;
	FZnJsonObject Root;
	ASSERT_TRUE(Reader.ParseObject(Text(Sample), Root));
	double Number = 7.0;
	EXPECT_FALSE(Root.TryGetNumberField("nope", Number));
	EXPECT_FALSE(Root.TryGetNumberField("text", Number));
	EXPECT_EQ(Number, 7.0);
	EXPECT_TRUE(Root.TryGetNumberField("ratio", Number));
	EXPECT_EQ(Number, 2.5);
	FString String = TEXT("keep");
	EXPECT_FALSE(Root.TryGetStringField("count", String));
	EXPECT_TRUE(String.Equals(TEXT("keep"), ESearchCase::CaseSensitive));
	EXPECT_TRUE(Root.TryGetStringField("text", String));
	EXPECT_TRUE(String.Equals(TEXT("12"), ESearchCase::CaseSensitive));
	bool bFlag = false;
	EXPECT_FALSE(Root.TryGetBoolField("none", bFlag));
	EXPECT_TRUE(Root.TryGetBoolField("flag", bFlag));
	EXPECT_TRUE(bFlag);
	FZnJsonArray Array;
	EXPECT_FALSE(Root.TryGetArrayField("child", Array));
	EXPECT_TRUE(Root.TryGetArrayField("list", Array));
	EXPECT_EQ(Array.Num(), 3);
	FZnJsonObject Object;
	EXPECT_FALSE(Root.TryGetObjectField("list", Object));
	EXPECT_TRUE(Root.TryGetObjectField("child", Object));
}

TEST(ZnJsonReaderTests, IntegerFormsTakeExactIntegersAndRoundFractionsHalfAwayFromZero)
{
	FZnJsonReader Reader;
	FZnJsonObject Root;
	ASSERT_TRUE(
		Reader.ParseObject(Text("{\"a\":2.5,\"b\":-2.5,\"c\":2.49,\"d\":18446744073709551615,\"e\":-1,\"f\":4294967296,"
								"\"g\":9007199254740993,\"h\":-2147483648,\"i\":1e2}"),
			Root));
	int32 Int = 0;
	EXPECT_TRUE(Root.TryGetNumberField("a", Int));
	EXPECT_EQ(Int, 3);
	EXPECT_TRUE(Root.TryGetNumberField("b", Int));
	EXPECT_EQ(Int, -3);
	EXPECT_TRUE(Root.TryGetNumberField("c", Int));
	EXPECT_EQ(Int, 2);
	EXPECT_TRUE(Root.TryGetNumberField("h", Int));
	EXPECT_EQ(Int, std::numeric_limits<int32>::min());
	EXPECT_FALSE(Root.TryGetNumberField("f", Int));
	EXPECT_TRUE(Root.TryGetNumberField("i", Int));
	EXPECT_EQ(Int, 100);
	uint64 Unsigned = 0;
	EXPECT_TRUE(Root.TryGetNumberField("d", Unsigned));
	EXPECT_EQ(Unsigned, std::numeric_limits<uint64>::max());
	EXPECT_TRUE(Root.TryGetNumberField("g", Unsigned));
	EXPECT_EQ(Unsigned, 9007199254740993ull);
	Unsigned = 5;
	EXPECT_FALSE(Root.TryGetNumberField("e", Unsigned));
	EXPECT_FALSE(Root.TryGetNumberField("b", Unsigned));
	EXPECT_EQ(Unsigned, 5u);
	uint32 Unsigned32 = 0;
	EXPECT_FALSE(Root.TryGetNumberField("f", Unsigned32));
	EXPECT_TRUE(Root.TryGetNumberField("a", Unsigned32));
	EXPECT_EQ(Unsigned32, 3u);
	int64 Int64 = 0;
	EXPECT_FALSE(Root.TryGetNumberField("d", Int64));
	EXPECT_TRUE(Root.TryGetNumberField("f", Int64));
	EXPECT_EQ(Int64, 4294967296ll);
	float Float = 0.0f;
	EXPECT_TRUE(Root.TryGetNumberField("c", Float));
	EXPECT_EQ(Float, 2.49f);
}

TEST(ZnJsonReaderTests, NamesMatchWithoutRegardToAsciiCaseAndTheLaterDuplicateWins)
{
	FZnJsonReader Reader;
	FZnJsonObject Root;
	ASSERT_TRUE(Reader.ParseObject(Text("{\"Url\":\"first\",\"URL\":\"second\",\"\xC3\x84x\":1}"), Root));
	EXPECT_TRUE(Root.GetStringField("url").Equals(TEXT("second"), ESearchCase::CaseSensitive));
	EXPECT_TRUE(Root.HasField("uRL"));
	// Only ASCII letters fold.
	EXPECT_TRUE(Root.HasField("\xC3\x84x"));
	EXPECT_TRUE(Root.HasField("\xC3\x84X"));
	EXPECT_FALSE(Root.HasField("\xC3\xA4x"));
	EXPECT_EQ(Root.Num(), 3);
}

TEST(ZnJsonReaderTests, ObjectsIterateInTextOrderWithUnescapedNames)
{
	FZnJsonReader Reader;
	FZnJsonObject Root;
	ASSERT_TRUE(Reader.ParseObject(Text("{\"a\\\"b\":1,\"c\":[true],\"\":null}"), Root));
	std::string Keys;
	for (FZnJsonField Field : Root)
	{
		Keys += std::string(Field.Key) + "|";
	}
	EXPECT_EQ(Keys, "a\"b|c||");
}

TEST(ZnJsonReaderTests, ArraysIterateAndIndexInOrder)
{
	FZnJsonReader Reader;
	FZnJsonArray Root;
	ASSERT_TRUE(Reader.ParseArray(Text("[10,\"x\",[1,2],{\"k\":1}]"), Root));
	ASSERT_EQ(Root.Num(), 4);
	EXPECT_EQ(Root.GetValue(0).AsNumber(), 10.0);
	EXPECT_TRUE(Root.GetValue(1).AsString().Equals(TEXT("x"), ESearchCase::CaseSensitive));
	EXPECT_EQ(Root.GetValue(2).AsArray().Num(), 2);
	EXPECT_EQ(Root.GetValue(3).AsObject().GetNumberField("k"), 1.0);
	EXPECT_FALSE(Root.GetValue(4).IsValid());
	EXPECT_FALSE(Root.GetValue(-1).IsValid());
	double Sum = 0.0;
	for (FZnJsonValue Value : Root)
	{
		Sum += Value.AsNumber();
	}
	EXPECT_EQ(Sum, 10.0);
}

TEST(ZnJsonReaderTests, StringsComeBackAsUtf16WithEscapesAndSurrogatePairs)
{
	FZnJsonReader Reader;
	FZnJsonArray Root;
	ASSERT_TRUE(Reader.ParseArray(Text("[\"A\\u00e9\\n\\ud83d\\ude00\xE4\xB8\xAD\",\"\"]"), Root));
	const FString Value = Root.GetValue(0).AsString();
	ASSERT_EQ(Value.Len(), 6);
	EXPECT_EQ(Value[0], TCHAR('A'));
	EXPECT_EQ(Value[1], TCHAR(0xE9));
	EXPECT_EQ(Value[2], TCHAR('\n'));
	EXPECT_EQ(Value[3], TCHAR(0xD83D));
	EXPECT_EQ(Value[4], TCHAR(0xDE00));
	EXPECT_EQ(Value[5], TCHAR(0x4E2D));
	EXPECT_TRUE(Root.GetValue(1).IsString());
	EXPECT_TRUE(Root.GetValue(1).AsString().IsEmpty());
	EXPECT_EQ(Root.GetValue(0).AsUtf8(), std::string_view("A\xC3\xA9\n\xF0\x9F\x98\x80\xE4\xB8\xAD"));
}

TEST(ZnJsonReaderTests, NonAsciiEngineTextIsConvertedToUtf8)
{
	FString Json = TEXT("[\"\x00E9\x4E2D\"]");
	Json.GetCharArray().Insert(TCHAR(0xDE00), 4);
	Json.GetCharArray().Insert(TCHAR(0xD83D), 4);
	FZnJsonReader Reader;
	FZnJsonArray Root;
	ASSERT_TRUE(Reader.ParseArray(Json, Root));
	EXPECT_EQ(Root.GetValue(0).AsUtf8(), std::string_view("\xC3\xA9\xE4\xB8\xAD\xF0\x9F\x98\x80"));
}

TEST(ZnJsonReaderTests, LongAsciiAndMixedTextsRoundTrip)
{
	// Runs of ASCII longer than the fast path's block, broken by wide characters at every offset.
	for (int32 Offset = 0; Offset < 40; ++Offset)
	{
		std::string Utf8 = "[\"" + std::string(size_t(Offset), 'a') + "\xC3\xA9" + std::string(37, 'b') + "\"]";
		FZnJsonReader Reader;
		FZnJsonArray Root;
		ASSERT_TRUE(Reader.ParseArray(Text(Utf8), Root)) << Offset;
		EXPECT_EQ(Root.GetValue(0).AsUtf8(), std::string_view(Utf8).substr(2, Utf8.size() - 4)) << Offset;
	}
}

TEST(ZnJsonReaderTests, ByteOrderMarkIsSkipped)
{
	FZnJsonReader Reader;
	FZnJsonArray Root;
	FString Json = TEXT("[1]");
	Json.GetCharArray().Insert(TCHAR(0xFEFF), 0);
	EXPECT_TRUE(Reader.ParseArray(Json, Root));
	EXPECT_TRUE(Reader.ParseUtf8("\xEF\xBB\xBF[1]", 6));
	EXPECT_EQ(Reader.GetRoot().AsArray().Num(), 1);
}

TEST(ZnJsonReaderTests, NestedReadersOnOneThreadStayIndependent)
{
	FZnJsonReader Outer;
	FZnJsonObject OuterRoot;
	ASSERT_TRUE(Outer.ParseObject(Text("{\"a\":1}"), OuterRoot));
	{
		FZnJsonReader Inner;
		FZnJsonObject InnerRoot;
		ASSERT_TRUE(Inner.ParseObject(Text("{\"a\":2}"), InnerRoot));
		EXPECT_EQ(InnerRoot.GetNumberField("a"), 2.0);
	}
	EXPECT_EQ(OuterRoot.GetNumberField("a"), 1.0);
	// The shared buffers are free again for the next reader.
	FZnJsonReader Next;
	FZnJsonObject NextRoot;
	ASSERT_TRUE(Next.ParseObject(Text("{\"a\":3}"), NextRoot));
	EXPECT_EQ(NextRoot.GetNumberField("a"), 3.0);
	EXPECT_EQ(OuterRoot.GetNumberField("a"), 1.0);
}

TEST(ZnJsonReaderTests, ParsingAgainReplacesTheRoot)
{
	FZnJsonReader Reader;
	ASSERT_TRUE(Reader.Parse(Text("[1,2]")));
	EXPECT_EQ(Reader.GetRoot().AsArray().Num(), 2);
	ASSERT_TRUE(Reader.Parse(Text("{\"b\":[1,2,3]}")));
	EXPECT_EQ(Reader.GetRoot().AsObject().GetArrayField("b").Num(), 3);
	EXPECT_FALSE(Reader.Parse(Text("[")));
	EXPECT_FALSE(Reader.GetRoot().IsValid());
}

TEST(ZnJsonReaderTests, ScalarRootsParseButAreNeitherObjectNorArray)
{
	FZnJsonReader Reader;
	EXPECT_TRUE(Reader.Parse(Text("\"x\"")));
	EXPECT_TRUE(Reader.GetRoot().IsString());
	FZnJsonObject Object;
	EXPECT_FALSE(Reader.ParseObject(Text("[]"), Object));
	FZnJsonArray Array;
	EXPECT_FALSE(Reader.ParseArray(Text("{}"), Array));
	EXPECT_TRUE(Reader.ParseArray(Text(" [] "), Array));
	EXPECT_EQ(Array.Num(), 0);
	EXPECT_TRUE(Array.IsValid());
}

TEST(ZnJsonReaderTests, TinyNumbersReadAsZeroAndNegativeZeroKeepsItsSign)
{
	FZnJsonReader Reader;
	FZnJsonArray Root;
	ASSERT_TRUE(Reader.ParseArray(Text("[1e-400,-0.0,1.7976931348623157e308]"), Root));
	EXPECT_EQ(Root.GetValue(0).AsNumber(), 0.0);
	EXPECT_TRUE(std::signbit(Root.GetValue(1).AsNumber()));
	EXPECT_EQ(Root.GetValue(2).AsNumber(), std::numeric_limits<double>::max());
}
