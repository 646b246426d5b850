#include "Sha1.h"

#include <gtest/gtest.h>

// Deprecated in OpenSSL 3 but still the only way to run the bare compression function, which the
// reference for the service's signed-byte digest needs.
#define OPENSSL_SUPPRESS_DEPRECATED
#include <openssl/sha.h>

#include <chrono>
#include <cstdint>
#include <random>
#include <string>
#include <thread>

namespace
{
std::string ToHex(const uint32_t H[5])
{
	char Text[41];
	std::snprintf(Text, sizeof(Text), "%08x%08x%08x%08x%08x", H[0], H[1], H[2], H[3], H[4]);
	return Text;
}

std::string StandardSha1(const std::string& Message)
{
	unsigned char Digest[SHA_DIGEST_LENGTH];
	SHA1(reinterpret_cast<const unsigned char*>(Message.data()), Message.size(), Digest);
	uint32_t H[5];
	for (int Word = 0; Word < 5; ++Word)
	{
		H[Word] = (uint32_t(Digest[Word * 4]) << 24) | (uint32_t(Digest[Word * 4 + 1]) << 16) |
			(uint32_t(Digest[Word * 4 + 2]) << 8) | uint32_t(Digest[Word * 4 + 3]);
	}
	return ToHex(H);
}

// The service's digest, derived independently: pad as SHA-1 does, assemble each word from
// sign-extended message bytes by addition, then run OpenSSL's own compression over the words.
std::string SignedByteSha1(const std::string& Message)
{
	const size_t Length = Message.size();
	const size_t Blocks = (Length + 8) / 64 + 1;
	std::vector<int64_t> Elements(Blocks * 64, 0);
	for (size_t Index = 0; Index < Length; ++Index)
	{
		Elements[Index] = static_cast<signed char>(Message[Index]);
	}
	Elements[Length] = 0x80;
	const uint64_t Bits = uint64_t(Length) * 8;
	for (int Byte = 0; Byte < 8; ++Byte)
	{
		Elements[Elements.size() - 1 - Byte] = int64_t((Bits >> (8 * Byte)) & 0xFF);
	}

	SHA_CTX Context;
	SHA1_Init(&Context);
	for (size_t Block = 0; Block < Blocks; ++Block)
	{
		unsigned char Words[64];
		for (int Word = 0; Word < 16; ++Word)
		{
			const int64_t* E = &Elements[Block * 64 + Word * 4];
			const uint32_t Value = uint32_t(((E[0] * 256 + E[1]) * 256 + E[2]) * 256 + E[3]);
			Words[Word * 4] = uint8_t(Value >> 24);
			Words[Word * 4 + 1] = uint8_t(Value >> 16);
			Words[Word * 4 + 2] = uint8_t(Value >> 8);
			Words[Word * 4 + 3] = uint8_t(Value);
		}
		SHA1_Transform(&Context, Words);
	}
	const uint32_t H[5] = {Context.h0, Context.h1, Context.h2, Context.h3, Context.h4};
	return ToHex(H);
}

std::string RandomMessage(std::mt19937& Random, size_t Length, int MaxByte)
{
	std::uniform_int_distribution<int> Byte(0, MaxByte);
	std::string Message(Length, '\0');
	for (char& C : Message)
	{
		C = static_cast<char>(Byte(Random));
	}
	return Message;
}
} // namespace

TEST(Sha1Tests, EmptyMessageGivesTheStandardEmptyDigest)
{
	EXPECT_EQ(Sha1::sha1(""), "da39a3ee5e6b4b0d3255bfef95601890afd80709");
}

TEST(Sha1Tests, AbcGivesTheStandardTestValue)
{
	EXPECT_EQ(Sha1::sha1("abc"), "a9993e364706816aba3e25717850c26c9cd0d89d");
}

TEST(Sha1Tests, TwoBlockStandardVector)
{
	EXPECT_EQ(Sha1::sha1("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
		"84983e441c3bd26ebaae4aa1f95129e5e54670f1");
}

TEST(Sha1Tests, DigestIsFortyLowercaseHexDigits)
{
	const std::string Digest = Sha1::sha1("The quick brown fox jumps over the lazy dog");
	EXPECT_EQ(Digest, "2fd4e1c67a2d28fced849ee1bb76e7391b93eb12");
	ASSERT_EQ(Digest.size(), 40u);
	for (char C : Digest)
	{
		EXPECT_TRUE((C >= '0' && C <= '9') || (C >= 'a' && C <= 'f')) << C;
	}
}

TEST(Sha1Tests, FiftyFiveBytesFitOneBlockAndFiftySixNeedTwo)
{
	// Both sides of the padding boundary, and the block boundary itself.
	for (size_t Length : {55u, 56u, 63u, 64u, 65u, 119u, 120u, 128u})
	{
		const std::string Message(Length, 'x');
		EXPECT_EQ(Sha1::sha1(Message), StandardSha1(Message)) << "length " << Length;
	}
}

TEST(Sha1Tests, RandomAsciiMessagesOfEveryLengthMatchStandardSha1)
{
	std::mt19937 Random(20261122);
	int Checked = 0;
	for (size_t Length = 0; Length <= 200; ++Length)
	{
		for (int Round = 0; Round < 15; ++Round)
		{
			const std::string Message = RandomMessage(Random, Length, 0x7F);
			ASSERT_EQ(Sha1::sha1(Message), StandardSha1(Message)) << "length " << Length;
			++Checked;
		}
	}
	EXPECT_EQ(Checked, 201 * 15);
}

TEST(Sha1Tests, MessagesWithHighBytesDifferFromStandardSha1)
{
	// A high byte anywhere but the first byte of a 32-bit word borrows from the bytes above it.
	std::mt19937 Random(7);
	std::uniform_int_distribution<int> High(0x80, 0xFF);
	for (size_t Length = 2; Length <= 200; ++Length)
	{
		for (int Round = 0; Round < 5; ++Round)
		{
			std::string Message = RandomMessage(Random, Length, 0xFF);
			std::uniform_int_distribution<size_t> At(0, Length - 1);
			size_t Index = At(Random);
			if (Index % 4 == 0)
			{
				Index = Index + 1 < Length ? Index + 1 : Index - 1;
			}
			Message[Index] = static_cast<char>(High(Random));
			const std::string Digest = Sha1::sha1(Message);
			ASSERT_NE(Digest, StandardSha1(Message)) << "length " << Length;
			ASSERT_EQ(Digest, SignedByteSha1(Message)) << "length " << Length;
		}
	}
}

TEST(Sha1Tests, HighBytesOnlyAtTheTopOfAWordGiveStandardSha1)
{
	// Sign extension of a word's most significant byte only spills past bit 31, where the 32-bit
	// arithmetic drops it: such messages hash like standard SHA-1.
	std::string Message(64, 'a');
	for (size_t Index = 0; Index < Message.size(); Index += 4)
	{
		Message[Index] = static_cast<char>(0x80 + Index);
	}
	EXPECT_EQ(Sha1::sha1(Message), StandardSha1(Message));
	EXPECT_EQ(Sha1::sha1("\xFF"), StandardSha1("\xFF"));
}

TEST(Sha1Tests, RandomBinaryMessagesMatchTheSignedByteReference)
{
	std::mt19937 Random(99);
	for (size_t Length = 0; Length <= 200; ++Length)
	{
		for (int Round = 0; Round < 5; ++Round)
		{
			const std::string Message = RandomMessage(Random, Length, 0xFF);
			ASSERT_EQ(Sha1::sha1(Message), SignedByteSha1(Message)) << "length " << Length;
		}
	}
}

TEST(Sha1Tests, NonAsciiTextUsesSignExtendedBytes)
{
	// UTF-8 of a short Chinese greeting; every byte is 0x80 or above.
	const std::string Message = "\xE4\xBD\xA0\xE5\xA5\xBD";
	EXPECT_NE(Sha1::sha1(Message), StandardSha1(Message));
	EXPECT_EQ(Sha1::sha1(Message), SignedByteSha1(Message));
}

TEST(Sha1Tests, SignedByteReferenceAgreesWithStandardSha1ForAscii)
{
	// Guards the reference itself: on bytes below 0x80 it must be plain SHA-1.
	for (const char* Message : {"", "abc", "a123b", "0123456789012345678901234567890123456789012345678901234"})
	{
		EXPECT_EQ(SignedByteSha1(Message), StandardSha1(Message));
	}
}

TEST(Sha1Tests, SignatureConcatenatesIdThenTimestampThenSecret)
{
	EXPECT_EQ(Sha1::GetSha1("a", "b", "123"), Sha1::sha1("a123b"));
	EXPECT_EQ(Sha1::GetSha1("a", "b", "123"), StandardSha1("a123b"));
	EXPECT_NE(Sha1::GetSha1("a", "b", "123"), Sha1::sha1("ab123"));
}

TEST(Sha1Tests, SignatureWithEmptyTimestampUsesTheCurrentMillisecond)
{
	const int64 Before = Sha1::getUnix();
	const std::string Signature = Sha1::GetSha1("app", "secret", "");
	const int64 After = Sha1::getUnix();
	bool Found = false;
	for (int64 Stamp = Before; Stamp <= After && !Found; ++Stamp)
	{
		Found = Signature == Sha1::sha1("app" + std::to_string(Stamp) + "secret");
	}
	EXPECT_TRUE(Found);
}

TEST(Sha1Tests, SignaturesInDifferentMillisecondsDiffer)
{
	const std::string First = Sha1::GetSha1("app", "secret", "");
	std::this_thread::sleep_for(std::chrono::milliseconds(3));
	const std::string Second = Sha1::GetSha1("app", "secret", "");
	EXPECT_NE(First, Second);
}

TEST(Sha1Tests, UnixTimeIsMillisecondsSinceTheEpoch)
{
	using namespace std::chrono;
	const int64 Reference = duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
	const int64 Now = Sha1::getUnix();
	EXPECT_LE(std::llabs(Now - Reference), 1000);
	// Some time after 2020 and before 2100, in milliseconds.
	EXPECT_GT(Now, 1577836800000LL);
	EXPECT_LT(Now, 4102444800000LL);
}

TEST(Sha1Tests, UnixTimeTextIsPlainDecimalDigits)
{
	const int64 Before = Sha1::getUnix();
	const std::string Text = Sha1::getUnixStr();
	const int64 After = Sha1::getUnix();
	ASSERT_EQ(Text.size(), 13u);
	for (char C : Text)
	{
		EXPECT_TRUE(C >= '0' && C <= '9') << Text;
	}
	const int64 Value = std::stoll(Text);
	EXPECT_GE(Value, Before);
	EXPECT_LE(Value, After);
}

// ---- The script functions over engine strings ----

#include "ZnDM_BpFuncLib.h"
#include "ZnServiceTestHelpers.h"

namespace
{
using ZnServiceTest::Utf8;

std::vector<uint8> BytesOf(const TArray<uint8>& Array)
{
	return std::vector<uint8>(Array.GetData(), Array.GetData() + Array.Num());
}
} // namespace

TEST(Sha1Tests, ScriptSignatureUsesTheCurrentMillisecond)
{
	const int64 Before = Sha1::getUnix();
	const std::string Signature = Utf8(UZnDM_BpFuncLib::Sha1(TEXT("app"), TEXT("secret")));
	const int64 After = Sha1::getUnix();
	ASSERT_EQ(Signature.size(), 40u);
	bool Found = false;
	for (int64 Stamp = Before; Stamp <= After && !Found; ++Stamp)
	{
		Found = Signature == StandardSha1("app" + std::to_string(Stamp) + "secret");
	}
	EXPECT_TRUE(Found);
}

TEST(Sha1Tests, ScriptSignatureHashesUtf8)
{
	// U+00E9 is C3 A9 in UTF-8; with the signed-byte words the digest is the service's, not standard.
	const FString AppId = FString(UTF8_TO_TCHAR("caf\xC3\xA9"));
	const int64 Before = Sha1::getUnix();
	const std::string Signature = Utf8(UZnDM_BpFuncLib::Sha1(AppId, TEXT("")));
	const int64 After = Sha1::getUnix();
	bool Found = false;
	for (int64 Stamp = Before; Stamp <= After && !Found; ++Stamp)
	{
		Found = Signature == SignedByteSha1("caf\xC3\xA9" + std::to_string(Stamp));
	}
	EXPECT_TRUE(Found);
}

TEST(Sha1Tests, StringToByteArrayGivesUtf8WithoutTerminator)
{
	EXPECT_EQ(BytesOf(UZnDM_BpFuncLib::StringToByteArray(TEXT("abc"))), (std::vector<uint8>{'a', 'b', 'c'}));
	EXPECT_EQ(UZnDM_BpFuncLib::StringToByteArray(TEXT("")).Num(), 0);
	EXPECT_EQ(BytesOf(UZnDM_BpFuncLib::StringToByteArray(FString(UTF8_TO_TCHAR("\xE4\xBD\xA0 \xF0\x9F\x98\x80")))),
		(std::vector<uint8>{0xE4, 0xBD, 0xA0, ' ', 0xF0, 0x9F, 0x98, 0x80}));
}

TEST(Sha1Tests, StringToByteArrayIsWhatTheSignatureHashes)
{
	const FString Text = FString(UTF8_TO_TCHAR("id\xE2\x82\xAC"));
	const std::vector<uint8> Bytes = BytesOf(UZnDM_BpFuncLib::StringToByteArray(Text));
	const std::string AsString(Bytes.begin(), Bytes.end());
	EXPECT_EQ(Sha1::GetSha1(AsString, "s", "1"), Sha1::sha1(AsString + "1s"));
	EXPECT_EQ(AsString, "id\xE2\x82\xAC");
}
