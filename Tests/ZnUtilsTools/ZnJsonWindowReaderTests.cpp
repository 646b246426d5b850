// The window reader must give a decoder exactly the text a whole parse sees: the same values in
// the same order, and the same verdict on every malformed text. These tests read texts through
// windows of many sizes (down to a single byte, which cuts at every comma that may be cut),
// put the pieces back together and compare them with a whole parse.
#include "ZnDM_BpFuncLib.h"
#include "ZnJsonWindowCheck.h"
#include "ZnMotionGenerator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace
{
using namespace simdjson;
using namespace ZnJsonWindowCheck;

void ExpectSameAsWholeParse(const FString& Text, size_t WindowBytes)
{
	EXPECT_EQ(CompareWithWholeParse(Text, WindowBytes), "") << "window size " << WindowBytes;
}

const size_t WindowSizes[] = {1, 2, 3, 5, 8, 13, 64, 0};

const char* const WellFormedTexts[] = {
	R"([1,2,3,4,5])",
	R"({"a":[1,2,3],"b":{"c":[4,5]},"d":[[1],[2,[3]]],"e":"x,y]}"})",
	R"(["a\"],[", "\\", "\\\"", "}{", ",", "[", "{\"k\":[1,2]}"])",
	R"({"k\"ey":[1,2,3],"x":[{"y":"],"},{"z":[",",","]}],"\\":[0,-0.5,1e3]})",
	" \n [ 1 , 2 ,\t3 ,[ 4 , 5 ] ] \r\n",
	R"({ "a" : [ 1 , 2 ] , "b" : 3 , "c" : [ { "d" : [ 6 , 7 ] } , 8 ] })",
	R"([])",
	R"({})",
	R"({"a":[]})",
	R"([[],[],{}])",
	R"({"a":[],"b":[[]],"c":{}})",
	R"({"a":[1,2],"a":[3,4],"A":[5]})",
	R"([true,false,null,"",0,-1.25e-7,123456789012345678])",
	"12",
	"\"a,b\"",
};

TEST(ZnJsonWindowReader, WellFormedTextsReadTheSameThroughWindowsOfEverySize)
{
	for (const char* Text : WellFormedTexts)
	{
		for (size_t WindowBytes : WindowSizes)
		{
			SCOPED_TRACE(Text);
			ExpectSameAsWholeParse(Wide(Text), WindowBytes);
		}
	}
}

TEST(ZnJsonWindowReader, SmallWindowsCutBetweenRootElementsAndInsideMemberArrays)
{
	const FWindowed Array = ReadThroughWindows(Wide("[1,2,3,4,5]"), 1);
	EXPECT_TRUE(Array.bAccepted);
	EXPECT_EQ(Array.Windows, 5);
	EXPECT_EQ(Array.Continued, 0);

	// Cuts fall at the root's commas and inside "a"'s and "c"'s arrays, never inside "b".
	const FWindowed Object = ReadThroughWindows(Wide(R"({"a":[1,2,3],"b":{"x":1,"y":2},"c":[4,5]})"), 1);
	EXPECT_TRUE(Object.bAccepted);
	EXPECT_EQ(Object.Windows, 6);
	EXPECT_EQ(Object.Continued, 3);
	EXPECT_EQ(Object.Text, R"({"a":[1,2,3,],"b":{"x":1,"y":2,},"c":[4,5,],})");
}

TEST(ZnJsonWindowReader, CommasInsideStringsAndDeeperContainersAreNeverCuts)
{
	const FWindowed Result = ReadThroughWindows(Wide(R"(["a,b",[1,2],{"c":[3,4]},"d\",e"])"), 1);
	EXPECT_TRUE(Result.bAccepted);
	EXPECT_EQ(Result.Windows, 4);
	EXPECT_EQ(Result.Text, R"(["a,b",[1,2,],{"c":[3,4,],},"d",e",])");
}

TEST(ZnJsonWindowReader, ATextThatFitsOneWindowIsOneWindow)
{
	const FWindowed Result = ReadThroughWindows(Wide("[1,2,3]"), 0);
	EXPECT_TRUE(Result.bAccepted);
	EXPECT_EQ(Result.Windows, 1);
}

TEST(ZnJsonWindowReader, EmptyAndBlankTextsAreRefused)
{
	FZnJsonWindowReader Reader;
	EXPECT_FALSE(Reader.Begin(FString()));
	EXPECT_FALSE(Reader.Begin(FString(u"\uFEFF")));
	EXPECT_FALSE(ReadThroughWindows(Wide("   \n "), 1).bAccepted);
	EXPECT_FALSE(ReadThroughWindows(Wide("   \n "), 0).bAccepted);
}

TEST(ZnJsonWindowReader, WindowTextIsHandedOutBeforeAndWithoutParsing)
{
	// Windows of 8 bytes over a root array: each cut falls at the last comma before the eighth
	// byte, and each window re-opens and closes the array.
	const FString Text = Wide("[[1,2],[3,4],[5,6],[7,8]]");
	FZnJsonWindowReader Reader;
	ASSERT_TRUE(Reader.Begin(Text, 8));
	std::vector<std::string> Texts;
	bool bContinues = false;
	while (Reader.NextText(bContinues))
	{
		Texts.emplace_back(Reader.GetText(), Reader.GetTextLength());
		// Zeroed padding follows every window.
		for (size_t Index = 0; Index < simdjson::SIMDJSON_PADDING; ++Index)
		{
			ASSERT_EQ(Reader.GetText()[Reader.GetTextLength() + Index], '\0');
		}
	}
	EXPECT_TRUE(Reader.IsComplete());
	EXPECT_EQ(Texts, (std::vector<std::string>{"[[1,2]]", "[[3,4]]", "[[5,6]]", "[[7,8]]"}));
}

TEST(ZnJsonWindowReader, ParsingAHandedOutWindowReadsItsValues)
{
	const FString Text = Wide("[10,20,30]");
	FZnJsonWindowReader Reader;
	ASSERT_TRUE(Reader.Begin(Text, 4));
	bool bContinues = false;
	std::vector<int64> Values;
	while (Reader.NextText(bContinues))
	{
		simdjson::ondemand::document* Document = nullptr;
		ASSERT_TRUE(Reader.ParseText(Document));
		for (int64 Value : Document->get_array())
		{
			Values.push_back(Value);
		}
	}
	EXPECT_TRUE(Reader.IsComplete());
	EXPECT_EQ(Values, (std::vector<int64>{10, 20, 30}));
}

TEST(ZnJsonWindowReader, ALastWindowThatDoesNotParseLeavesTheReadingUnfinished)
{
	// The text's end is handed out, then refused by the parser: the reading is not complete, and
	// nothing more is handed out.
	const FString Text = Wide("   \n  ");
	FZnJsonWindowReader Reader;
	ASSERT_TRUE(Reader.Begin(Text));
	bool bContinues = false;
	ASSERT_TRUE(Reader.NextText(bContinues));
	EXPECT_TRUE(Reader.IsComplete());
	simdjson::ondemand::document* Document = nullptr;
	EXPECT_FALSE(Reader.ParseText(Document));
	EXPECT_FALSE(Reader.IsComplete());
	EXPECT_FALSE(Reader.NextText(bContinues));
	EXPECT_FALSE(Reader.ParseText(Document));
}

TEST(ZnJsonWindowReader, NothingToParseBeforeAWindowIsHandedOut)
{
	FZnJsonWindowReader Reader;
	simdjson::ondemand::document* Document = nullptr;
	EXPECT_FALSE(Reader.ParseText(Document));
	const FString Text = Wide("[1]");
	ASSERT_TRUE(Reader.Begin(Text));
	EXPECT_FALSE(Reader.ParseText(Document));
	EXPECT_EQ(Reader.GetText(), nullptr);
}

TEST(ZnJsonWindowReader, AByteOrderMarkIsSkipped)
{
	const FWindowed Result = ReadThroughWindows(FString(u"\uFEFF[1,2]"), 1);
	EXPECT_TRUE(Result.bAccepted);
	EXPECT_EQ(Result.Text, "[1,2,]");
}

TEST(ZnJsonWindowReader, NonAsciiTextAndSurrogatePairsSurviveEveryChunkBoundary)
{
	// Chunks of one unit split every surrogate pair between two conversions.
	const FString Text(u"[\"é\",\"日本\",\"😀😀\",{\"ключ\":[\"😀\",\"x😀y\"]},\"\U0001F600\"]");
	for (size_t WindowBytes : WindowSizes)
	{
		ExpectSameAsWholeParse(Text, WindowBytes);
	}
	const FWindowed Result = ReadThroughWindows(Text, 8);
	EXPECT_EQ(Result.Text, "[\"é\",\"日本\",\"😀😀\",{\"ключ\":[\"😀\",\"x😀y\",],},\"😀\",]");
}

TEST(ZnJsonWindowReader, LoneSurrogatesReadAsReplacementCharactersAsInAWholeParse)
{
	FString Text(u"[\"a\",\"b\"]");
	Text[2] = TCHAR(0xD800);
	ExpectSameAsWholeParse(Text, 1);
	EXPECT_EQ(ReadThroughWindows(Text, 1).Text, "[\"\xEF\xBF\xBD\",\"b\",]");
}

TEST(ZnJsonWindowReader, Utf8InputReadsLikeEngineText)
{
	const std::string Text = "\xEF\xBB\xBF{\"a\":[1,2,3],\"b\":\"c\u00e9\"}";
	FZnJsonWindowReader Reader;
	ASSERT_TRUE(Reader.BeginUtf8(Text.data(), int64(Text.size()), 1));
	const FWindowed Result = ReadAllWindows(Reader);
	EXPECT_TRUE(Result.bAccepted);
	EXPECT_EQ(Result.Windows, 4);
	EXPECT_EQ(Result.Text, "{\"a\":[1,2,3,],\"b\":\"c\xC3\xA9\",}");
}

TEST(ZnJsonWindowReader, InvalidUtf8IsRefusedInWhicheverWindowItFallsIn)
{
	std::string Text = "[\"a\",\"b\",\"c\",\"d\"]";
	Text[14] = char(0xC3);
	FZnJsonWindowReader Reader;
	ASSERT_TRUE(Reader.BeginUtf8(Text.data(), int64(Text.size()), 1));
	EXPECT_FALSE(ReadAllWindows(Reader).bAccepted);
}

// Every single-byte change of a text: deleted, or replaced by a byte that matters to the cutting.
TEST(ZnJsonWindowReader, EveryOneByteChangeGetsTheWholeParsesVerdict)
{
	const char* const Texts[] = {
		R"({"a":[1,2,[3]],"b":{"c":[4,5]},"d":"x,\"y]"})",
		R"([[1,2],{"k":[3,4]},"s,]",5])",
		R"({"k\\":[{"x":1},{"y":[2,3]}],"z":[]})",
	};
	const char Replacements[] = {',', ']', '}', '[', '{', '"', '\\', ' ', 'x', '0', ':', '-', '.'};
	for (const char* Original : Texts)
	{
		const std::string Text(Original);
		for (size_t Position = 0; Position < Text.size(); ++Position)
		{
			std::vector<std::string> Variants;
			Variants.push_back(Text.substr(0, Position) + Text.substr(Position + 1));
			for (char Replacement : Replacements)
			{
				std::string Changed = Text;
				Changed[Position] = Replacement;
				Variants.push_back(Changed);
			}
			for (const std::string& Variant : Variants)
			{
				for (size_t WindowBytes : {size_t(1), size_t(4)})
				{
					SCOPED_TRACE(Variant);
					ExpectSameAsWholeParse(Wide(Variant), WindowBytes);
				}
			}
		}
	}
}

// Several changes at once, at random places, in a text with every kind of value and nesting.
TEST(ZnJsonWindowReader, RandomlyDamagedTextsGetTheWholeParsesVerdict)
{
	const std::string Text =
		R"({"totalTime":1.5,"curves":[{"name":"a\"b","rotas":[{"x":1,"y":[2,3]},{"z":"],"}]},)"
		R"({"name":"c","rotas":[[1,2],[3,[4]],{}]}],"Hips":{"pos":[{"x":0.5},{"y":-1e-3}]},"s":["x,","y"]})";
	const char Bytes[] = {',', ']', '}', '[', '{', '"', '\\', ' ', 'x', '0', ':', '-', '.', 'e'};
	std::mt19937 Random(20261122);
	int32 Accepted = 0;
	for (int32 Trial = 0; Trial < 3000; ++Trial)
	{
		std::string Changed = Text;
		const int32 Changes = 1 + int32(Random() % 3);
		for (int32 Change = 0; Change < Changes; ++Change)
		{
			const size_t Position = Random() % Changed.size();
			switch (Random() % 3)
			{
				case 0:
					Changed.erase(Position, 1);
					break;
				case 1:
					Changed.insert(Changed.begin() + std::ptrdiff_t(Position), Bytes[Random() % sizeof(Bytes)]);
					break;
				default:
					Changed[Position] = Bytes[Random() % sizeof(Bytes)];
					break;
			}
		}
		for (size_t WindowBytes : {size_t(1), size_t(7), size_t(40)})
		{
			ASSERT_EQ(CompareWithWholeParse(Wide(Changed), WindowBytes), "")
				<< Changed << " in windows of " << WindowBytes;
		}
		FZnJsonReader Whole;
		Accepted += Whole.Parse(Wide(Changed)) ? 1 : 0;
	}
	// Some damage leaves valid JSON (a changed digit, a space): both verdicts were exercised.
	EXPECT_GT(Accepted, 100);
	EXPECT_LT(Accepted, 2900);
}

TEST(ZnJsonWindowReader, GeneratedClipsReadTheSameInDefaultAndTinyWindows)
{
	FZnGenBodyOptions BodyOptions;
	BodyOptions.FrameCount = 40;
	BodyOptions.Seed = 3;
	const FString Body = Wide(FZnMotionGenerator::BodyToJson(FZnMotionGenerator::GenerateBody(BodyOptions)));
	FZnGenFaceOptions FaceOptions;
	FaceOptions.FrameCount = 40;
	FaceOptions.Seed = 3;
	const FString Face = Wide(FZnMotionGenerator::FaceToJson(FZnMotionGenerator::GenerateFace(FaceOptions)));
	for (size_t WindowBytes : {size_t(0), size_t(1), size_t(100), size_t(1000)})
	{
		ExpectSameAsWholeParse(Body, WindowBytes);
		ExpectSameAsWholeParse(Face, WindowBytes);
	}
	EXPECT_GT(ReadThroughWindows(Body, 1000).Windows, 10);
	EXPECT_GT(ReadThroughWindows(Face, 1000).Windows, 10);
}
} // namespace

namespace
{
// Reads the first element of a root array with the plain reader; -2 when the text does not read.
int32 ReadPlainFirstElement(const std::string& Text, double* OutNumbers, int32 Capacity)
{
	FZnJsonWindowReader Reader;
	simdjson::ondemand::document* Document = nullptr;
	bool bContinues = false;
	simdjson::ondemand::array Root;
	const FString Wide = ZnJson::ToString(Text);
	if (!Reader.Begin(Wide) || !Reader.Next(Document, bContinues) ||
		Document->get_array().get(Root) != simdjson::SUCCESS)
	{
		return -2;
	}
	for (simdjson::simdjson_result<simdjson::ondemand::value> Element : Root)
	{
		simdjson::ondemand::value Value;
		if (Element.get(Value) != simdjson::SUCCESS)
		{
			return -2;
		}
		return ZnJson::ReadPlainNumbers(Value, OutNumbers, Capacity);
	}
	return -2;
}

TEST(ZnJsonPlainNumbers, EveryNumberReadsBitForBitAsTheFullParserReadsIt)
{
	std::mt19937_64 Random(7);
	std::uniform_real_distribution<double> Unit(-1.0, 1.0);
	const char* const Formats[] = {"%.9g", "%.17g", "%.3f", "%.12f", "%.6e", "%.0f", "%g"};
	int32 ReadPlainly = 0;
	for (int32 Trial = 0; Trial < 4000; ++Trial)
	{
		const double Scale = std::pow(10.0, double(int32(Random() % 13)) - 6.0);
		char Buffer[64];
		std::snprintf(Buffer, sizeof(Buffer), Formats[Trial % 7], Unit(Random) * Scale);
		const std::string Text = std::string("[[") + Buffer + "," + Buffer + "]]";
		// What the decoders' ordinary path reads (it keeps the sign of "-0", as the engine does).
		simdjson::ondemand::parser Parser;
		const simdjson::padded_string Padded(Text);
		double Expected = 0.0;
		simdjson::ondemand::document Document;
		ASSERT_EQ(Parser.iterate(Padded).get(Document), simdjson::SUCCESS);
		ASSERT_EQ(Document.at(0).at(0).get_double().get(Expected), simdjson::SUCCESS) << Text;
		double Numbers[4];
		const int32 Count = ReadPlainFirstElement(Text, Numbers, 4);
		if (Count >= 0)
		{
			ASSERT_EQ(Count, 2) << Text;
			ASSERT_EQ(std::memcmp(&Numbers[0], &Expected, sizeof(double)), 0) << Text;
			ASSERT_EQ(std::memcmp(&Numbers[1], &Expected, sizeof(double)), 0) << Text;
			++ReadPlainly;
		}
	}
	// The shapes producers write (up to 17 digits, small exponents) nearly all take the plain way.
	EXPECT_GT(ReadPlainly, 3000);
}

TEST(ZnJsonPlainNumbers, MemberNumbersAndSpacedArraysReadBitForBitAsTheFullParserReadsThem)
{
	// Members and arrays with whitespace are read number by number, each number's digits composed
	// from a load that ends at it (or, for the first numbers of a text, word by word).
	std::mt19937_64 Random(5);
	std::uniform_real_distribution<double> Unit(-1.0, 1.0);
	const char* const Formats[] = {"%.9g", "%.17g", "%.3f", "%.12f", "%.6e", "%.0f", "%g", "%.15g"};
	int32 ReadPlainly = 0;
	for (int32 Trial = 0; Trial < 3000; ++Trial)
	{
		const double Scale = std::pow(10.0, double(int32(Random() % 13)) - 6.0);
		char Numbers[3][64];
		for (char* Number : Numbers)
		{
			std::snprintf(Number, 64, Formats[Trial % 8], Unit(Random) * Scale);
		}
		const std::string Text = (Trial % 2 ? std::string("[{\"x\":") : std::string("[{ \"x\" : ")) + Numbers[0] +
			",\"y\":" + Numbers[1] + ", \"w\":" + Numbers[2] + "}, [" + Numbers[0] + ", " + Numbers[1] + "]]";
		simdjson::ondemand::parser Parser;
		const simdjson::padded_string Padded(Text);
		simdjson::ondemand::document Document;
		ASSERT_EQ(Parser.iterate(Padded).get(Document), simdjson::SUCCESS);
		// The members in order, as the decoders' general path reads them.
		double Expected[3];
		simdjson::ondemand::object Object;
		ASSERT_EQ(Document.at(0).get_object().get(Object), simdjson::SUCCESS) << Text;
		int32 Member = 0;
		for (simdjson::simdjson_result<simdjson::ondemand::field> Field : Object)
		{
			ASSERT_EQ(Field.value().get_double().get(Expected[Member++]), simdjson::SUCCESS) << Text;
		}
		ASSERT_EQ(Member, 3);

		const FString Wide = ZnJson::ToString(Text);
		FZnJsonWindowReader Reader;
		simdjson::ondemand::document* Windowed = nullptr;
		bool bContinues = false;
		simdjson::ondemand::array Root;
		ASSERT_TRUE(Reader.Begin(Wide) && Reader.Next(Windowed, bContinues));
		ASSERT_EQ(Windowed->get_array().get(Root), simdjson::SUCCESS);
		int32 Element = 0;
		for (simdjson::simdjson_result<simdjson::ondemand::value> Item : Root)
		{
			simdjson::ondemand::value Value;
			ASSERT_EQ(Item.get(Value), simdjson::SUCCESS);
			if (Element++ == 0)
			{
				ZnJson::FPlainMember Members[4];
				const int32 Count = ZnJson::ReadPlainNumberMembers(Value, Members, 4);
				if (Count < 0)
				{
					continue;
				}
				ASSERT_EQ(Count, 3) << Text;
				for (int32 Index = 0; Index < 3; ++Index)
				{
					ASSERT_EQ(std::memcmp(&Members[Index].Number, &Expected[Index], sizeof(double)), 0) << Text;
				}
				++ReadPlainly;
			}
			else
			{
				double Read[4];
				if (ZnJson::ReadPlainNumbers(Value, Read, 4) == 2)
				{
					ASSERT_EQ(std::memcmp(&Read[0], &Expected[0], sizeof(double)), 0) << Text;
					ASSERT_EQ(std::memcmp(&Read[1], &Expected[1], sizeof(double)), 0) << Text;
				}
			}
		}
	}
	EXPECT_GT(ReadPlainly, 2000);
}

TEST(ZnJsonPlainNumbers, LetterMembersAreReadOnlyWhenWrittenExactlyAsProducersWriteThem)
{
	// Reads the first element of a root array with ReadTightLetterMembers; false when refused.
	const auto Read = [](const std::string& Text, const char* Letters, double* Out) -> bool
	{
		const FString Wide = ZnJson::ToString(Text);
		FZnJsonWindowReader Reader;
		simdjson::ondemand::document* Document = nullptr;
		bool bContinues = false;
		simdjson::ondemand::array Root;
		if (!Reader.Begin(Wide) || !Reader.Next(Document, bContinues) ||
			Document->get_array().get(Root) != simdjson::SUCCESS)
		{
			return false;
		}
		for (simdjson::simdjson_result<simdjson::ondemand::value> Element : Root)
		{
			simdjson::ondemand::value Value;
			return Element.get(Value) == simdjson::SUCCESS && ZnJson::ReadTightLetterMembers(Value, Letters, Out);
		}
		return false;
	};
	double Axes[4] = {};
	ASSERT_TRUE(Read(R"([{"x":0.0303169899,"y":-0.151650622,"z":4.1980682e-05,"w":1}])", "xyzw", Axes));
	EXPECT_EQ(Axes[0], 0.0303169899);
	EXPECT_EQ(Axes[1], -0.151650622);
	EXPECT_EQ(Axes[2], 4.1980682e-05);
	EXPECT_EQ(Axes[3], 1.0);
	ASSERT_TRUE(Read(R"([{"x":1,"y":2,"z":3},4])", "xyz", Axes));
	EXPECT_EQ(Axes[2], 3.0);
	for (const char* Text :
		{R"([{"x":1,"y":2,"z":3}])", R"([{"X":1,"y":2,"z":3,"w":4}])", R"([{"y":2,"x":1,"z":3,"w":4}])",
			R"([{ "x":1,"y":2,"z":3,"w":4}])", R"([{"x" :1,"y":2,"z":3,"w":4}])", R"([{"x":1,"y":2,"z":3,"w":4 }])",
			R"([{"x":1,"y":2,"z":3,"w":4,"v":5}])", R"([{"x":1,"y":2,"z":3,"w":"4"}])",
			R"([{"x":1,"y":2,"z":3,"w":[4]}])", R"([{"x":01,"y":2,"z":3,"w":4}])", R"([{"x":1.,"y":2,"z":3,"w":4}])",
			R"([{"x":1e,"y":2,"z":3,"w":4}])", R"([{"x":1,"y":2,"z":3,"w":12345678901234567890}])",
			R"([{"xx":1,"y":2,"z":3,"w":4}])", R"([[1,2,3,4]])", R"([1])"})
	{
		EXPECT_FALSE(Read(Text, "xyzw", Axes)) << Text;
	}
	EXPECT_FALSE(Read(R"([{"x":1,"y":2,"z":3,"w":4}])", "xyz", Axes));
	EXPECT_FALSE(Read(R"([{"a":1,"b":2,"c":3,"d":4,"e":5}])", "abcde", Axes));
}

TEST(ZnJsonPlainNumbers, CommonShapesAreReadPlainly)
{
	double Numbers[8];
	ASSERT_EQ(
		ReadPlainFirstElement("[[0,-0,12.3456789,-0.0303169899,100,1e3,2.5E-2,123456789.123456]]", Numbers, 8), 8);
	EXPECT_EQ(Numbers[0], 0.0);
	EXPECT_TRUE(std::signbit(Numbers[1]));
	EXPECT_EQ(Numbers[2], 12.3456789);
	EXPECT_EQ(Numbers[3], -0.0303169899);
	EXPECT_EQ(Numbers[4], 100.0);
	EXPECT_EQ(Numbers[5], 1000.0);
	EXPECT_EQ(Numbers[6], 0.025);
	EXPECT_EQ(Numbers[7], 123456789.123456);
	ASSERT_EQ(ReadPlainFirstElement("[[ 1 ,\n2\t, 3 ]]", Numbers, 8), 3);
	EXPECT_EQ(Numbers[2], 3.0);
	EXPECT_EQ(ReadPlainFirstElement("[[]]", Numbers, 8), 0);
}

TEST(ZnJsonPlainNumbers, AnythingElseIsLeftToTheFullParser)
{
	double Numbers[4];
	// Malformed numbers, values of other kinds, too many digits or too large a power, too many.
	for (const char* Text : {"[[01]]", "[[1.]]", "[[.5]]", "[[-]]", "[[1e]]", "[[1,]]", "[[1 2]]", "[[\"1\"]]",
			 "[[true]]", "[[1,[2]]]", "[[12345678901234567890]]", "[[1e23]]", "[[1e-23]]", "[[9007199254740993]]",
			 "[[1,2,3,4,5]]", "[{\"x\":1}]", "[1]"})
	{
		EXPECT_EQ(ReadPlainFirstElement(Text, Numbers, 4), -1) << Text;
	}
}

TEST(ZnJsonPlainNumbers, MembersAreReadWithTheirNamesInOrder)
{
	FZnJsonWindowReader Reader;
	simdjson::ondemand::document* Document = nullptr;
	bool bContinues = false;
	simdjson::ondemand::array Root;
	const FString Text = ZnJson::ToString(R"([{"x":1.5, "Y" : -2,"x":3},{"a\"":1},{"b":"s"},{}])");
	ASSERT_TRUE(Reader.Begin(Text));
	ASSERT_TRUE(Reader.Next(Document, bContinues));
	ASSERT_EQ(Document->get_array().get(Root), simdjson::SUCCESS);
	std::vector<int32> Counts;
	ZnJson::FPlainMember Members[4];
	for (simdjson::simdjson_result<simdjson::ondemand::value> Element : Root)
	{
		simdjson::ondemand::value Value;
		ASSERT_EQ(Element.get(Value), simdjson::SUCCESS);
		Counts.push_back(ZnJson::ReadPlainNumberMembers(Value, Members, 4));
		if (Counts.size() == 1)
		{
			EXPECT_EQ(Members[0].GetName(), "x");
			EXPECT_EQ(Members[1].GetName(), "Y");
			EXPECT_EQ(Members[2].GetName(), "x");
			EXPECT_EQ(Members[0].Number, 1.5);
			EXPECT_EQ(Members[1].Number, -2.0);
			EXPECT_EQ(Members[2].Number, 3.0);
		}
	}
	// An escaped name and a string value go the full way; an empty object is plain.
	EXPECT_EQ(Counts, (std::vector<int32>{3, -1, -1, 0}));
}
} // namespace

namespace
{
// The iterator's own number reader misreads numbers of more than 19 significant digits; the
// decoders' reader must give what a whole parse gives, bit for bit.
TEST(ZnJsonLongNumbers, NumbersOfManyDigitsReadAsAWholeParseReadsThem)
{
	const char* const Numbers[] = {"-0.16242501000000000445023471", "16.242501000000000445023471",
		"0.100000000000000000000000000001", "123456.78901234567890123456", "1.00000000000000000000000001e-5",
		"-9.8765432109876543210e300", "0.0000000000000000000000000000001", "1234567890.1234567890123",
		"0.000000000000000000000000000000000000000000000000000000000000000000000000000000001e-300",
		" 7.1234567890123456789012 ", "-0.16214981e000000000000000000000000000000000",
		"1E+00000000000000000000000000000002"};
	for (const char* Number : Numbers)
	{
		const std::string Text = std::string("[") + Number + "]";
		FZnJsonReader Whole;
		ASSERT_TRUE(Whole.Parse(ZnJson::ToString(Text))) << Text;
		const double Expected = Whole.GetRoot().AsArray().GetValue(0).AsNumber();

		FZnJsonWindowReader Reader;
		const FString Wide = ZnJson::ToString(Text);
		simdjson::ondemand::document* Document = nullptr;
		bool bContinues = false;
		simdjson::ondemand::array Root;
		ASSERT_TRUE(Reader.Begin(Wide) && Reader.Next(Document, bContinues));
		ASSERT_EQ(Document->get_array().get(Root), simdjson::SUCCESS);
		for (simdjson::simdjson_result<simdjson::ondemand::value> Element : Root)
		{
			simdjson::ondemand::value Value;
			ASSERT_EQ(Element.get(Value), simdjson::SUCCESS);
			double Read = -1.0;
			ASSERT_TRUE(ZnJson::ReadNumber(Value, 2, Read)) << Text;
			EXPECT_EQ(std::memcmp(&Read, &Expected, sizeof(double)), 0)
				<< Text << ": " << Read << " against " << Expected;
		}
	}
}

TEST(ZnJsonLongNumbers, LongTokensThatAreNotJsonNumbersAreStillRefused)
{
	for (const char* Text : {"[0001.5000000000000000000000]", "[1.000000000000000000000000e]",
			 "[123456789012345678901234567890]", "[1.00000000000000000000000000.5]"})
	{
		FZnJsonReader Whole;
		EXPECT_FALSE(Whole.Parse(ZnJson::ToString(Text))) << Text;
		EXPECT_FALSE(ZnJsonWindowCheck::ReadThroughWindows(ZnJson::ToString(Text), 0).bAccepted) << Text;
	}
	EXPECT_TRUE(ZnJson::IsJsonFraction("-0.5e+0000000000000000001 "));
	EXPECT_FALSE(ZnJson::IsJsonFraction("12345678901234567890123"));
	EXPECT_FALSE(ZnJson::IsJsonFraction("01.5"));
	EXPECT_FALSE(ZnJson::IsJsonFraction("1.e5"));
}

TEST(ZnJsonLongNumbers, ALongNumberTooLargeForADoubleIsRefused)
{
	const FString Text = ZnJson::ToString("[1.00000000000000000000000001e400]");
	FZnJsonReader Whole;
	EXPECT_FALSE(Whole.Parse(Text));
	EXPECT_FALSE(ZnJsonWindowCheck::ReadThroughWindows(Text, 0).bAccepted);
}

TEST(ZnJsonLongNumbers, AFaceWeightOfManyDigitsIsReadExactly)
{
	// 70 values: the frame is read value by value, through the long-number path.
	std::string Frame = "[16.242501000000000445023471";
	for (int32 Index = 1; Index < 70; ++Index)
	{
		Frame += ",1";
	}
	Frame += "]";
	FZnFaceData Face;
	UZnDM_BpFuncLib::ParseJsonToFacedata(ZnJson::ToString("[" + Frame + "]"), Face);
	ASSERT_EQ(Face.CurveFrames.Num(), 51);
	ASSERT_EQ(Face.CurveFrames[0].Num(), 1);
	EXPECT_EQ(Face.CurveFrames[0][0], float(16.242501000000000445023471) * 0.01f);
	EXPECT_EQ(Face.CurveFrames[50][0], 0.01f);
}
} // namespace
