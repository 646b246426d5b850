// Tightly written number arrays ("[1.5,-0.25,0]") are read straight from the text. Whatever such a
// read accepts, a full parser must accept too and read to the same bits; anything else must be
// refused (nullptr), so that the caller reads the text the general way.
#include "ZnJsonReader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace
{
// The text in a heap block of its own, followed by the zeroed padding parser buffers have and
// nothing before it: a read before the text's first byte is a read outside the block.
class FPaddedText
{
public:
	explicit FPaddedText(const std::string& Text)
		: Bytes(new char[Text.size() + simdjson::SIMDJSON_PADDING]())
		, Length(Text.size())
	{
		std::memcpy(Bytes.get(), Text.data(), Text.size());
	}

	const char* Data() const { return Bytes.get(); }
	size_t Size() const { return Length; }

private:
	std::unique_ptr<char[]> Bytes;
	size_t Length;
};

struct FTightRead
{
	bool bRead = false;
	std::vector<double> Numbers;
	// Bytes from the opening bracket to the first one past the closing bracket.
	size_t Length = 0;
};

FTightRead ReadTight(const std::string& Text, int32 Capacity = ZnJson::MaxPlainNumbers)
{
	const FPaddedText Padded(Text);
	FTightRead Result;
	double Numbers[ZnJson::MaxPlainNumbers];
	int32 Count = -1;
	const char* End = ZnJson::ReadTightNumbers(Padded.Data(), Numbers, Capacity, Count);
	if (End != nullptr)
	{
		Result.bRead = true;
		Result.Numbers.assign(Numbers, Numbers + Count);
		Result.Length = size_t(End - Padded.Data());
	}
	return Result;
}

// The numbers of the array at the start of Text as simdjson reads them, keeping the sign of "-0"
// as the decoders' general path does; false when the array is not valid JSON.
bool ReadWithParser(const std::string& Text, std::vector<double>& OutNumbers)
{
	simdjson::ondemand::parser Parser;
	const simdjson::padded_string Padded(Text);
	simdjson::ondemand::document Document;
	simdjson::ondemand::array Array;
	if (Parser.iterate(Padded).get(Document) != simdjson::SUCCESS ||
		Document.get_array().get(Array) != simdjson::SUCCESS)
	{
		return false;
	}
	OutNumbers.clear();
	for (simdjson::simdjson_result<simdjson::ondemand::value> Element : Array)
	{
		double Number = 0.0;
		if (Element.get_double().get(Number) != simdjson::SUCCESS)
		{
			return false;
		}
		OutNumbers.push_back(Number);
	}
	return ZnJson::IsAtEnd(Document);
}

bool SameBits(double A, double B)
{
	return std::memcmp(&A, &B, sizeof(double)) == 0;
}

// Shapes producers print numbers in, from 1 to 17 significant digits.
const char* const Formats[] = {"%.9g", "%.17g", "%.3f", "%.12f", "%.6e", "%.0f", "%g", "%.16g", "%.1f"};

std::string RandomNumber(std::mt19937_64& Random, const char* Format)
{
	std::uniform_real_distribution<double> Unit(-1.0, 1.0);
	const double Scale = std::pow(10.0, double(int32(Random() % 15)) - 7.0);
	char Buffer[64];
	std::snprintf(Buffer, sizeof(Buffer), Format, Unit(Random) * Scale);
	return Buffer;
}

std::string TightArray(const std::vector<std::string>& Numbers)
{
	std::string Text = "[";
	for (size_t Index = 0; Index < Numbers.size(); ++Index)
	{
		Text += (Index > 0 ? "," : "") + Numbers[Index];
	}
	return Text + "]";
}

// Whatever the tight read accepts the parser reads alike (the array it stopped after, alone).
void ExpectAgreesWithParser(const std::string& Text)
{
	const FTightRead Tight = ReadTight(Text);
	if (!Tight.bRead)
	{
		return;
	}
	std::vector<double> Expected;
	ASSERT_TRUE(ReadWithParser(Text.substr(0, Tight.Length), Expected)) << Text;
	ASSERT_EQ(Tight.Numbers.size(), Expected.size()) << Text;
	for (size_t Index = 0; Index < Expected.size(); ++Index)
	{
		ASSERT_TRUE(SameBits(Tight.Numbers[Index], Expected[Index])) << Text << " number " << Index;
	}
}
} // namespace

TEST(ZnJsonTightNumbers, ArraysOfEveryLengthReadBitForBitAsTheParserReadsThem)
{
	std::mt19937_64 Random(11);
	int32 ReadTightly = 0;
	for (int32 Trial = 0; Trial < 3000; ++Trial)
	{
		// One shape per array, as a producer prints them.
		std::vector<std::string> Numbers(1 + Random() % ZnJson::MaxPlainNumbers);
		for (std::string& Number : Numbers)
		{
			Number = RandomNumber(Random, Formats[Trial % 9]);
		}
		const std::string Text = TightArray(Numbers);
		ExpectAgreesWithParser(Text);
		ReadTightly += ReadTight(Text).bRead ? 1 : 0;
	}
	// Every shape but seventeen digits (which exceed 2^53) is nearly always read tightly.
	EXPECT_GT(ReadTightly, 2000);
}

TEST(ZnJsonTightNumbers, CommonShapesAndTheirValues)
{
	const FTightRead Read =
		ReadTight("[0,-0,12.3456789,-0.0303169899,100,0.956583619,4.1980682e-05,1234567.123456789]");
	ASSERT_TRUE(Read.bRead);
	ASSERT_EQ(Read.Numbers.size(), 8u);
	EXPECT_TRUE(SameBits(Read.Numbers[0], 0.0));
	EXPECT_TRUE(SameBits(Read.Numbers[1], -0.0));
	EXPECT_EQ(Read.Numbers[2], 12.3456789);
	EXPECT_EQ(Read.Numbers[3], -0.0303169899);
	EXPECT_EQ(Read.Numbers[4], 100.0);
	EXPECT_EQ(Read.Numbers[5], 0.956583619);
	EXPECT_EQ(Read.Numbers[6], 4.1980682e-05);
	EXPECT_EQ(Read.Numbers[7], 1234567.123456789);
	EXPECT_EQ(Read.Length, 79u);
}

TEST(ZnJsonTightNumbers, EmptyArrayAndWhatFollowsTheBracket)
{
	const FTightRead Empty = ReadTight("[]");
	ASSERT_TRUE(Empty.bRead);
	EXPECT_TRUE(Empty.Numbers.empty());
	EXPECT_EQ(Empty.Length, 2u);
	// The read ends at the bracket; what follows is the caller's.
	const FTightRead Followed = ReadTight("[1,2],[3] x");
	ASSERT_TRUE(Followed.bRead);
	EXPECT_EQ(Followed.Numbers, (std::vector<double>{1.0, 2.0}));
	EXPECT_EQ(Followed.Length, 5u);
}

TEST(ZnJsonTightNumbers, NumbersAtTheVeryStartOfTheTextAreReadWithoutLookingBeforeIt)
{
	// Each text sits at the start of its own block, so a load from before it would leave the
	// block (the sanitizer build reports that).
	for (const char* Text : {"[1]", "[0.5]", "[-7.25]", "[12345678.12345678]", "[1,2]", "[0.956583619,3]"})
	{
		ExpectAgreesWithParser(Text);
		EXPECT_TRUE(ReadTight(Text).bRead) << Text;
	}
}

TEST(ZnJsonTightNumbers, LongNumbersAndNumbersAcrossBlocks)
{
	// Sixteen digits at most take the short way, longer ones the general one; numbers of every
	// length fall across the 64-byte blocks somewhere in a long array.
	std::vector<std::string> Numbers;
	for (int32 Digits = 1; Digits <= 19; ++Digits)
	{
		std::string Integer(size_t(Digits), '7');
		Numbers.push_back(Integer);
		Numbers.push_back("-0." + Integer);
		Numbers.push_back(Integer.substr(0, size_t(Digits + 1) / 2) + "." + Integer.substr(0, size_t(Digits) / 2 + 1));
	}
	for (size_t Start = 0; Start + 20 <= Numbers.size(); ++Start)
	{
		ExpectAgreesWithParser(
			TightArray(std::vector<std::string>(Numbers.begin() + long(Start), Numbers.begin() + long(Start) + 20)));
	}
	EXPECT_TRUE(ReadTight("[9007199254740992]").bRead);
	// Past 2^53 a value would need rounding twice: left to the parser.
	EXPECT_FALSE(ReadTight("[9007199254740993]").bRead);
	EXPECT_FALSE(ReadTight("[12345678901234567890]").bRead);
}

TEST(ZnJsonTightNumbers, AnythingElseIsRefused)
{
	for (const char* Text : {"", "1", "[", "[1", "[1,", "[1,]", "[,1]", "[,]", "[01]", "[-01]", "[00]", "[1.]", "[.5]",
			 "[-]", "[--1]", "[+1]", "[1-2]", "[1..2]", "[1.2.3]", "[1e]", "[1e+]", "[1E5.5]", "[ 1]", "[1 ]", "[1, 2]",
			 "[1,\n2]", "[\"1\"]", "[true]", "[null]", "[[1]]", "[1,[2]]", "[{}]", "[1}", "[0x10]", "[Infinity]",
			 "[NaN]", "[1e400]", "[1e23]", "[1e-23]",
			 "[\xC2\xA0"
			 "1]"})
	{
		EXPECT_FALSE(ReadTight(Text).bRead) << Text;
	}
	// A number as long as a whole block, and more numbers than asked for.
	EXPECT_FALSE(ReadTight("[0." + std::string(70, '1') + "]").bRead);
	EXPECT_FALSE(ReadTight("[1,2,3,4,5]", 4).bRead);
	EXPECT_TRUE(ReadTight("[1,2,3,4]", 4).bRead);
	std::vector<std::string> TooMany(size_t(ZnJson::MaxPlainNumbers) + 1, "1");
	EXPECT_FALSE(ReadTight(TightArray(TooMany), 1000).bRead);
}

TEST(ZnJsonTightNumbers, NoOneByteChangeMakesItAcceptWhatTheParserRefuses)
{
	const std::string Base = "[0.956583619,0,-10.6393404,4.1980682e-05,3,100,-0.5,12345.678,0,0.001]";
	const char Replacements[] = {'0', '1', '9', '-', '+', '.', ',', ']', '[', 'e', 'E', ' ', '"', 'x', '\0', '\x80'};
	int32 Accepted = 0;
	for (size_t Position = 0; Position < Base.size(); ++Position)
	{
		for (char Replacement : Replacements)
		{
			std::string Text = Base;
			Text[Position] = Replacement;
			ExpectAgreesWithParser(Text);
			Accepted += ReadTight(Text).bRead ? 1 : 0;
			// And the same with the byte taken out, or one put in before it.
			ExpectAgreesWithParser(Base.substr(0, Position) + Base.substr(Position + 1));
			ExpectAgreesWithParser(Base.substr(0, Position) + Replacement + Base.substr(Position));
		}
	}
	EXPECT_GT(Accepted, 100);
}
