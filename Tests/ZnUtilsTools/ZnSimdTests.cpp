// The vector operations of the JSON readers and the face decoder against their plain C++ twins:
// same bits for every input, including bytes past ASCII, NaN and values out of range. On x86-64
// the native form is SSE2, on 64-bit ARM (the arm64 preset, run under qemu) NEON. Each operation
// is also checked against a value worked out here independently.
#include "ZnSimd.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <string>

namespace
{
template <typename Type>
bool SameBits(Type A, Type B)
{
	return std::memcmp(&A, &B, sizeof(Type)) == 0;
}

// Bytes a JSON scan meets, and some it never should.
const char Interesting[] = {'0', '5', '9', '/', ':', '.', ',', '-', '+', 'e', ']', '[', '{', '}', '"', '\\', ' ', '\n',
	'\0', '\x7F', '\x80', '\xAF', '\xB0', '\xB9', '\xFF', '\x3B', '\x5B', '\x7B', '\x5D', '\x7D'};
} // namespace

TEST(ZnSimd, ByteMasksMatchThePlainFormAndEachByte)
{
	std::mt19937 Random(7);
	for (int32 Trial = 0; Trial < 20000; ++Trial)
	{
		char Bytes[16];
		for (char& Byte : Bytes)
		{
			Byte = Trial % 2 == 0 ? char(Random()) : Interesting[Random() % sizeof(Interesting)];
		}
		const auto Plain = ZnSimd::Scalar::Load16(Bytes);
		const auto Native = ZnSimd::Native::Load16(Bytes);
		uint32 Digits = 0;
		for (int32 Lane = 0; Lane < 16; ++Lane)
		{
			Digits |= uint32(Bytes[Lane] >= '0' && Bytes[Lane] <= '9') << Lane;
		}
		ASSERT_EQ(ZnSimd::Native::DigitMask(Native), Digits);
		ASSERT_EQ(ZnSimd::Scalar::DigitMask(Plain), Digits);
		for (char Wanted : {',', '"', '\\', '-', '.', '0', ']', '\x80', '\xFF'})
		{
			uint32 Expected = 0;
			for (int32 Lane = 0; Lane < 16; ++Lane)
			{
				Expected |= uint32(Bytes[Lane] == Wanted) << Lane;
			}
			ASSERT_EQ(ZnSimd::Native::EqualMask(Native, Wanted), Expected);
			ASSERT_EQ(ZnSimd::Scalar::EqualMask(Plain, Wanted), Expected);
		}
		for (char Wanted : {'{', '}'})
		{
			uint32 Expected = 0;
			for (int32 Lane = 0; Lane < 16; ++Lane)
			{
				Expected |= uint32(Bytes[Lane] == Wanted || Bytes[Lane] == char(Wanted - 0x20)) << Lane;
			}
			ASSERT_EQ(ZnSimd::Native::FoldedEqualMask(Native, Wanted), Expected);
			ASSERT_EQ(ZnSimd::Scalar::FoldedEqualMask(Plain, Wanted), Expected);
		}
	}
}

TEST(ZnSimd, DigitsEndingAtReadsEveryLengthAndPointPosition)
{
	std::mt19937 Random(11);
	for (int32 Trial = 0; Trial < 20000; ++Trial)
	{
		const int32 DigitCount = 1 + int32(Random() % 16);
		const int32 FractionDigits = int32(Random() % uint32(DigitCount));
		const bool bPoint = FractionDigits > 0;
		std::string Digits;
		for (int32 Index = 0; Index < DigitCount; ++Index)
		{
			Digits += char('0' + Random() % 10);
		}
		std::string Written = Digits;
		if (bPoint)
		{
			Written.insert(Written.size() - size_t(FractionDigits), ".");
		}
		// Anything may stand before the number: the forms must ignore it.
		char Buffer[48];
		for (char& Byte : Buffer)
		{
			Byte = Interesting[Random() % sizeof(Interesting)];
		}
		char* const End = Buffer + 40;
		std::memcpy(End - Written.size(), Written.data(), Written.size());
		const uint64 Expected = std::stoull(Digits);
		ASSERT_EQ(ZnSimd::Native::DigitsEndingAt(End, DigitCount, FractionDigits, bPoint), Expected) << Written;
		ASSERT_EQ(ZnSimd::Scalar::DigitsEndingAt(End, DigitCount, FractionDigits, bPoint), Expected) << Written;
	}
}

TEST(ZnSimd, AsciiPackingTakesOnlyAllAsciiRuns)
{
	std::mt19937 Random(13);
	for (int32 Trial = 0; Trial < 20000; ++Trial)
	{
		TCHAR Units[16];
		bool bAscii = true;
		for (TCHAR& Unit : Units)
		{
			const uint32 Kind = Random() % 40;
			Unit = Kind == 0 ? TCHAR(0x80 + Random() % 0xFF80) : (Kind == 1 ? TCHAR(0x7F) : TCHAR(Random() % 0x80));
			bAscii = bAscii && Unit < 0x80;
		}
		char Native[16];
		char Plain[16];
		std::memset(Native, 'x', sizeof(Native));
		std::memset(Plain, 'x', sizeof(Plain));
		ASSERT_EQ(ZnSimd::Native::PackAscii16(Units, Native), bAscii);
		ASSERT_EQ(ZnSimd::Scalar::PackAscii16(Units, Plain), bAscii);
		if (bAscii)
		{
			for (int32 Index = 0; Index < 16; ++Index)
			{
				ASSERT_EQ(Native[Index], char(Units[Index]));
				ASSERT_EQ(Plain[Index], char(Units[Index]));
			}
		}
	}
}

TEST(ZnSimd, PairedDivisionGivesEachQuotientsBitsAndSign)
{
	std::mt19937_64 Random(17);
	const double Powers[] = {1e0, 1e1, 1e2, 1e5, 1e8, 1e15, 1e16, 1e22};
	for (int32 Trial = 0; Trial < 20000; ++Trial)
	{
		const double Numerators[2] = {
			double(int64(Random() % ((uint64(1) << 53) + 1))), double(int64(Random() % 1000))};
		const double Divisors[2] = {Powers[Random() % 8], Powers[Random() % 8]};
		const bool bNegative[2] = {Random() % 2 == 0, Random() % 2 == 0};
		double Native[2];
		double Plain[2];
		ZnSimd::Native::DividePair(Numerators, Divisors, bNegative, Native);
		ZnSimd::Scalar::DividePair(Numerators, Divisors, bNegative, Plain);
		for (int32 Lane = 0; Lane < 2; ++Lane)
		{
			const double Quotient = Numerators[Lane] / Divisors[Lane];
			const double Expected = bNegative[Lane] ? -Quotient : Quotient;
			ASSERT_TRUE(SameBits(Native[Lane], Expected)) << Numerators[Lane] << " / " << Divisors[Lane];
			ASSERT_TRUE(SameBits(Plain[Lane], Expected));
		}
	}
	// A zero keeps the sign it is given.
	const double Zeros[2] = {0.0, 0.0};
	const double Ones[2] = {1.0, 10.0};
	const bool bSigns[2] = {true, false};
	double Out[2];
	ZnSimd::Native::DividePair(Zeros, Ones, bSigns, Out);
	EXPECT_TRUE(SameBits(Out[0], -0.0));
	EXPECT_TRUE(SameBits(Out[1], 0.0));
}

TEST(ZnSimd, PercentsBecomeTheSameClampedWeights)
{
	const double Nan = std::numeric_limits<double>::quiet_NaN();
	const double Infinity = std::numeric_limits<double>::infinity();
	const double Edge[] = {0.0, -0.0, 100.0, 99.99999, 100.00001, -1e-300, 1e-300, 50.0, 1e300, -1e300, Nan, Infinity,
		-Infinity, 33.333333333333336, 0.0000001, 4.1980682e-05};
	// Worked out by hand: a percent times 0.01 in single precision, clamped to 0..1.
	float Weights[4];
	const double Known[4] = {50.0, 150.0, -3.0, Nan};
	ZnSimd::Native::PercentsToWeights4(Known, Weights);
	EXPECT_EQ(Weights[0], 0.5f);
	EXPECT_EQ(Weights[1], 1.0f);
	EXPECT_TRUE(SameBits(Weights[2], 0.0f));
	EXPECT_TRUE(SameBits(Weights[3], 0.0f));

	std::mt19937_64 Random(19);
	std::uniform_real_distribution<double> Percent(-20.0, 120.0);
	for (int32 Trial = 0; Trial < 20000; ++Trial)
	{
		double Percents[4];
		for (double& Value : Percents)
		{
			Value = Random() % 4 == 0 ? Edge[Random() % (sizeof(Edge) / sizeof(Edge[0]))] : Percent(Random);
		}
		float Native[4];
		float Plain[4];
		ZnSimd::Native::PercentsToWeights4(Percents, Native);
		ZnSimd::Scalar::PercentsToWeights4(Percents, Plain);
		for (int32 Lane = 0; Lane < 4; ++Lane)
		{
			ASSERT_TRUE(SameBits(Native[Lane], Plain[Lane])) << Percents[Lane];
			ASSERT_TRUE(Plain[Lane] >= 0.0f && Plain[Lane] <= 1.0f) << Percents[Lane];
		}
	}
}
