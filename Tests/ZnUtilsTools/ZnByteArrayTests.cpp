#include "ZnByteArray.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

namespace
{
std::vector<uint8> BytesAt(const ZnByteArray& Buffer, int32 Offset, int32 Count)
{
	return std::vector<uint8>(Buffer.Data() + Offset, Buffer.Data() + Offset + Count);
}
} // namespace

TEST(ZnByteArrayTests, SizeConstants)
{
	EXPECT_EQ(ZnByteArray::BOOL_SIZE, 1);
	EXPECT_EQ(ZnByteArray::BYTE_SIZE, 1);
	EXPECT_EQ(ZnByteArray::CHAR_SIZE, 1);
	EXPECT_EQ(ZnByteArray::SHORT_SIZE, 2);
	EXPECT_EQ(ZnByteArray::INT_SIZE, 4);
	EXPECT_EQ(ZnByteArray::FLOAT_SIZE, 4);
	EXPECT_EQ(ZnByteArray::LONG64_SIZE, 8);
	EXPECT_EQ(ZnByteArray::DOUBLE_SIZE, 8);
}

TEST(ZnByteArrayTests, NewBufferHasCapacity256AndCursorAtZero)
{
	ZnByteArray Buffer;
	EXPECT_EQ(Buffer.Length(), 256);
	EXPECT_EQ(Buffer.GetPos(), 0);
	EXPECT_EQ(Buffer.RemainLength(), 0);
	EXPECT_EQ(Buffer.RemainData(), Buffer.Data());
	EXPECT_EQ(Buffer.ReadHeadInt(), 0);
}

TEST(ZnByteArrayTests, WriteInt32OneStoresLittleEndianBytes)
{
	ZnByteArray Buffer;
	Buffer.WriteInt32(1);
	EXPECT_EQ(BytesAt(Buffer, 0, 4), (std::vector<uint8>{0x01, 0x00, 0x00, 0x00}));
	EXPECT_EQ(Buffer.GetPos(), 4);
}

TEST(ZnByteArrayTests, EveryTypeIsStoredLittleEndian)
{
	ZnByteArray Buffer;
	Buffer.WriteBool8(true);
	Buffer.WriteByte8(0xAB);
	Buffer.WriteShort16(0x1234);
	Buffer.WriteInt32(-2);
	Buffer.WriteFloat32(1.0f);
	Buffer.WriteLong64(0x0102030405060708ULL);
	Buffer.WriteDouble64(-2.0);
	EXPECT_EQ(Buffer.GetPos(), 1 + 1 + 2 + 4 + 4 + 8 + 8);
	EXPECT_EQ(BytesAt(Buffer, 0, 28),
		(std::vector<uint8>{0x01, 0xAB, 0x34, 0x12, 0xFE, 0xFF, 0xFF, 0xFF, 0x00, 0x00, 0x80, 0x3F, 0x08, 0x07, 0x06,
			0x05, 0x04, 0x03, 0x02, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xC0}));
}

TEST(ZnByteArrayTests, EveryTypeRoundTrips)
{
	ZnByteArray Buffer;
	Buffer.WriteBool8(true);
	Buffer.WriteBool8(false);
	Buffer.WriteByte8(0);
	Buffer.WriteByte8(255);
	Buffer.WriteShort16(0);
	Buffer.WriteShort16(0xFFFF);
	Buffer.WriteInt32(std::numeric_limits<int32>::min());
	Buffer.WriteInt32(std::numeric_limits<int32>::max());
	Buffer.WriteFloat32(-0.0f);
	Buffer.WriteFloat32(3.25f);
	Buffer.WriteFloat32(std::numeric_limits<float>::infinity());
	Buffer.WriteFloat32(std::numeric_limits<float>::quiet_NaN());
	Buffer.WriteLong64(std::numeric_limits<uint64>::max());
	Buffer.WriteLong64(0x8000000000000001ULL);
	Buffer.WriteDouble64(std::numeric_limits<double>::denorm_min());
	Buffer.WriteDouble64(-1234.5678);
	const int32 Written = Buffer.GetPos();

	Buffer.ResetPos();
	EXPECT_TRUE(Buffer.ReadBool8());
	EXPECT_FALSE(Buffer.ReadBool8());
	EXPECT_EQ(Buffer.ReadByte8(), 0);
	EXPECT_EQ(Buffer.ReadByte8(), 255);
	EXPECT_EQ(Buffer.ReadShort16(), 0);
	EXPECT_EQ(Buffer.ReadShort16(), 0xFFFF);
	EXPECT_EQ(Buffer.ReadInt32(), std::numeric_limits<int32>::min());
	EXPECT_EQ(Buffer.ReadInt32(), std::numeric_limits<int32>::max());
	const float NegativeZero = Buffer.ReadFloat32();
	EXPECT_EQ(NegativeZero, 0.0f);
	EXPECT_TRUE(std::signbit(NegativeZero));
	EXPECT_EQ(Buffer.ReadFloat32(), 3.25f);
	EXPECT_EQ(Buffer.ReadFloat32(), std::numeric_limits<float>::infinity());
	EXPECT_TRUE(std::isnan(Buffer.ReadFloat32()));
	EXPECT_EQ(Buffer.ReadLong64(), std::numeric_limits<uint64>::max());
	EXPECT_EQ(Buffer.ReadLong64(), 0x8000000000000001ULL);
	EXPECT_EQ(Buffer.ReadDouble64(), std::numeric_limits<double>::denorm_min());
	EXPECT_EQ(Buffer.ReadDouble64(), -1234.5678);
	EXPECT_EQ(Buffer.GetPos(), Written);
}

TEST(ZnByteArrayTests, ABoolReadsTrueForAnyNonZeroByte)
{
	ZnByteArray Buffer;
	Buffer.WriteByte8(7);
	Buffer.ResetPos();
	EXPECT_TRUE(Buffer.ReadBool8());
}

TEST(ZnByteArrayTests, WritingByteByByteGrowsAtPosition255ToCapacity258)
{
	ZnByteArray Buffer;
	for (int32 Index = 0; Index < 255; ++Index)
	{
		Buffer.WriteByte8(static_cast<uint8>(Index));
		ASSERT_EQ(Buffer.Length(), 256) << "after byte " << Index;
	}
	EXPECT_EQ(Buffer.GetPos(), 255);
	Buffer.WriteByte8(255);
	EXPECT_EQ(Buffer.Length(), 258);

	// Growth by twice the request, not by doubling: from here on every second byte grows it by 2.
	std::vector<int32> Lengths;
	for (int32 Index = 0; Index < 6; ++Index)
	{
		Buffer.WriteByte8(0xEE);
		Lengths.push_back(Buffer.Length());
	}
	EXPECT_EQ(Lengths, (std::vector<int32>{258, 260, 260, 262, 262, 264}));
	for (int32 Index = 0; Index < 256; ++Index)
	{
		ASSERT_EQ(Buffer.Data()[Index], static_cast<uint8>(Index));
	}
}

TEST(ZnByteArrayTests, AValueThatExactlyFillsTheBufferGrowsIt)
{
	ZnByteArray Buffer;
	for (int32 Index = 0; Index < 63; ++Index)
	{
		Buffer.WriteInt32(Index);
	}
	EXPECT_EQ(Buffer.Length(), 256);
	Buffer.WriteInt32(63); // 252 + 4 == 256
	EXPECT_EQ(Buffer.Length(), 264);
	Buffer.WriteDouble64(1.0); // 256 + 8 >= 264
	EXPECT_EQ(Buffer.Length(), 280);
	Buffer.ResetPos();
	for (int32 Index = 0; Index < 64; ++Index)
	{
		ASSERT_EQ(Buffer.ReadInt32(), Index);
	}
	EXPECT_EQ(Buffer.ReadDouble64(), 1.0);
}

TEST(ZnByteArrayTests, EnsureCapacityGrowsByTwiceTheRequest)
{
	ZnByteArray Buffer;
	Buffer.ensureCapacity(255);
	EXPECT_EQ(Buffer.Length(), 256);
	Buffer.ensureCapacity(256);
	EXPECT_EQ(Buffer.Length(), 768);
	EXPECT_EQ(Buffer.GetPos(), 0);
}

TEST(ZnByteArrayTests, GrowingKeepsTheWrittenBytes)
{
	ZnByteArray Buffer(4);
	const uint8 Payload[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
	Buffer.WriteRawBytes(Payload, 3);
	EXPECT_EQ(Buffer.Length(), 4);
	Buffer.WriteRawBytes(Payload + 3, 7); // 3 + 7 >= 4: 4 + 14
	EXPECT_EQ(Buffer.Length(), 18);
	EXPECT_EQ(BytesAt(Buffer, 0, 10), std::vector<uint8>(Payload, Payload + 10));
}

TEST(ZnByteArrayTests, WritesNeverChangeTheValidDataCount)
{
	ZnByteArray Buffer;
	const uint8 Source[10] = {};
	Buffer.CopyData(Source, 10);
	EXPECT_EQ(Buffer.RemainLength(), 10);
	Buffer.WriteInt32(5);
	EXPECT_EQ(Buffer.GetPos(), 4);
	EXPECT_EQ(Buffer.RemainLength(), 6);
	Buffer.WriteLong64(5);
	EXPECT_EQ(Buffer.RemainLength(), -2);
}

TEST(ZnByteArrayTests, RawBytesAreCopiedAsTheyAre)
{
	ZnByteArray Buffer;
	const uint8 Payload[] = {0x00, 0xFF, 0x7F, 0x80};
	Buffer.WriteRawBytes(Payload, 4);
	EXPECT_EQ(Buffer.GetPos(), 4);
	EXPECT_EQ(BytesAt(Buffer, 0, 4), std::vector<uint8>(Payload, Payload + 4));
}

TEST(ZnByteArrayTests, UtfIsLengthPrefixedAndRoundTrips)
{
	ZnByteArray Buffer;
	const char* Text = "h\xC3\xA9llo";
	Buffer.WriteUTF(reinterpret_cast<const uint8*>(Text), 6);
	EXPECT_EQ(Buffer.GetPos(), 10);
	EXPECT_EQ(BytesAt(Buffer, 0, 4), (std::vector<uint8>{6, 0, 0, 0}));

	Buffer.ResetPos();
	uint8 Destination[16];
	std::memset(Destination, 0xAA, sizeof(Destination));
	EXPECT_EQ(Buffer.ReadUTF(Destination, 6), 6);
	EXPECT_EQ(Buffer.GetPos(), 10);
	EXPECT_EQ(std::memcmp(Destination, Text, 6), 0);
	EXPECT_EQ(Destination[6], 0xAA) << "no terminating zero is written";
}

TEST(ZnByteArrayTests, WriteUtfWithLengthZeroLeavesTheBufferUnchanged)
{
	ZnByteArray Buffer;
	const uint8 Byte = 'x';
	Buffer.WriteUTF(&Byte, 0);
	EXPECT_EQ(Buffer.GetPos(), 0);
	EXPECT_EQ(Buffer.Length(), 256);
	EXPECT_EQ(Buffer.ReadHeadInt(), 0);
}

TEST(ZnByteArrayTests, ReadUtfIntoATooSmallDestinationReturnsMinusOneAndKeepsTheCursor)
{
	ZnByteArray Buffer;
	Buffer.WriteByte8(9);
	const uint8 Text[] = {'a', 'b', 'c', 'd', 'e'};
	Buffer.WriteUTF(Text, 5);
	Buffer.ResetPos();
	EXPECT_EQ(Buffer.ReadByte8(), 9);

	uint8 Destination[8] = {};
	EXPECT_EQ(Buffer.ReadUTF(Destination, 4), -1);
	EXPECT_EQ(Buffer.GetPos(), 1);
	EXPECT_EQ(Destination[0], 0);
	EXPECT_EQ(Buffer.ReadUTF(Destination, 5), 5);
	EXPECT_EQ(Buffer.GetPos(), 10);
	EXPECT_EQ(Destination[4], 'e');
}

TEST(ZnByteArrayTests, ResetPosAfterCopyDataMakesRemainLengthZero)
{
	ZnByteArray Buffer;
	const uint8 Source[] = {1, 2, 3};
	Buffer.CopyData(Source, 3);
	EXPECT_EQ(Buffer.RemainLength(), 3);
	Buffer.ResetPos();
	EXPECT_EQ(Buffer.GetPos(), 0);
	EXPECT_EQ(Buffer.RemainLength(), 0);
	// The bytes are still there; only the count was cleared.
	EXPECT_EQ(Buffer.ReadByte8(), 1);
}

TEST(ZnByteArrayTests, CopyDataOfAThousandBytesKeepsLength256)
{
	ZnByteArray Buffer;
	std::vector<uint8> Source(1000);
	for (size_t Index = 0; Index < Source.size(); ++Index)
	{
		Source[Index] = static_cast<uint8>(Index * 7);
	}
	Buffer.CopyData(Source.data(), 1000);
	EXPECT_EQ(Buffer.Length(), 256);
	EXPECT_EQ(Buffer.GetPos(), 0);
	EXPECT_EQ(Buffer.RemainLength(), 1000);
	EXPECT_EQ(BytesAt(Buffer, 0, 1000), Source);
	for (size_t Index = 0; Index < Source.size(); ++Index)
	{
		ASSERT_EQ(Buffer.ReadByte8(), Source[Index]);
	}
	EXPECT_EQ(Buffer.RemainLength(), 0);
}

TEST(ZnByteArrayTests, CopyDataThatFitsReusesTheStorageAndRewindsTheCursor)
{
	ZnByteArray Buffer;
	Buffer.WriteInt32(77);
	uint8* Before = Buffer.Data();
	const uint8 Source[] = {9, 8, 7};
	Buffer.CopyData(Source, 3);
	EXPECT_EQ(Buffer.Data(), Before);
	EXPECT_EQ(Buffer.GetPos(), 0);
	EXPECT_EQ(Buffer.RemainLength(), 3);
	EXPECT_EQ(BytesAt(Buffer, 0, 4), (std::vector<uint8>{9, 8, 7, 0}));
}

TEST(ZnByteArrayTests, WritingAfterALargeCopyKeepsTheCopiedBytes)
{
	ZnByteArray Buffer;
	std::vector<uint8> Source(600, 0x5A);
	Buffer.CopyData(Source.data(), 600);
	for (int32 Index = 0; Index < 75; ++Index)
	{
		Buffer.ReadInt32();
	}
	Buffer.WriteInt32(-1); // at 300, past the reported capacity of 256: grows it to 264
	EXPECT_EQ(Buffer.Length(), 264);
	EXPECT_EQ(Buffer.GetPos(), 304);
	EXPECT_EQ(BytesAt(Buffer, 296, 12),
		(std::vector<uint8>{0x5A, 0x5A, 0x5A, 0x5A, 0xFF, 0xFF, 0xFF, 0xFF, 0x5A, 0x5A, 0x5A, 0x5A}));
	EXPECT_EQ(Buffer.Data()[599], 0x5A);
}

TEST(ZnByteArrayTests, HeadIntIsPatchedWithoutMovingTheCursor)
{
	ZnByteArray Buffer;
	Buffer.WriteInt32(0);
	Buffer.WriteDouble64(2.5);
	Buffer.WriteShort16(3);
	const int32 Total = Buffer.GetPos();
	Buffer.UpdateHeadInt32(Total);
	EXPECT_EQ(Buffer.GetPos(), Total);
	EXPECT_EQ(Buffer.ReadHeadInt(), 14);
	EXPECT_EQ(Buffer.GetPos(), Total);
	EXPECT_EQ(ZnByteArray::ReadInt32(Buffer.Data()), 14);
}

TEST(ZnByteArrayTests, StaticReadInt32ReadsTheFourBytesAtThePointer)
{
	const uint8 Bytes[] = {0x78, 0x56, 0x34, 0x12, 0xFF};
	EXPECT_EQ(ZnByteArray::ReadInt32(Bytes), 0x12345678);
	const uint8 Negative[] = {0xFF, 0xFF, 0xFF, 0xFF};
	EXPECT_EQ(ZnByteArray::ReadInt32(Negative), -1);
}

TEST(ZnByteArrayTests, EndPosMovesTheCursorToTheCapacity)
{
	ZnByteArray Buffer;
	Buffer.EndPos();
	EXPECT_EQ(Buffer.GetPos(), 256);
	EXPECT_EQ(Buffer.RemainData(), Buffer.Data() + 256);
	Buffer.WriteByte8(1); // 256 + 1 >= 256
	EXPECT_EQ(Buffer.Length(), 258);
	EXPECT_EQ(Buffer.Data()[256], 1);
}

TEST(ZnByteArrayTests, RemainDataFollowsTheCursor)
{
	ZnByteArray Buffer;
	const uint8 Source[] = {1, 2, 3, 4, 5};
	Buffer.CopyData(Source, 5);
	Buffer.ReadShort16();
	EXPECT_EQ(Buffer.RemainData(), Buffer.Data() + 2);
	EXPECT_EQ(*Buffer.RemainData(), 3);
	EXPECT_EQ(Buffer.RemainLength(), 3);
}

TEST(ZnByteArrayTests, CopyAssignmentSharesTheStorage)
{
	ZnByteArray First;
	First.WriteInt32(42);
	ZnByteArray Second;
	Second = First;
	EXPECT_EQ(Second.Data(), First.Data());
	EXPECT_EQ(Second.GetPos(), 4);
	EXPECT_EQ(Second.Length(), 256);

	// A shallow copy: writes through one are seen through the other.
	Second.WriteInt32(43);
	EXPECT_EQ(ZnByteArray::ReadInt32(First.Data() + 4), 43);
	EXPECT_EQ(First.GetPos(), 4) << "fields were copied, not linked";
}

TEST(ZnByteArrayTests, EitherCopyMayBeDestroyedFirst)
{
	ZnByteArray* Original = new ZnByteArray();
	Original->WriteInt32(1234);
	ZnByteArray Copy;
	Copy = *Original;
	delete Original; // the storage outlives it because Copy still uses it
	EXPECT_EQ(Copy.ReadHeadInt(), 1234);
	Copy.WriteInt32(5);
	EXPECT_EQ(ZnByteArray::ReadInt32(Copy.Data() + 4), 5);
}

TEST(ZnByteArrayTests, CopyConstructionSharesTheStorageToo)
{
	ZnByteArray First;
	First.WriteShort16(7);
	{
		ZnByteArray Second(First);
		EXPECT_EQ(Second.Data(), First.Data());
		EXPECT_EQ(Second.GetPos(), 2);
	}
	EXPECT_EQ(First.ReadHeadInt(), 7);
}

TEST(ZnByteArrayTests, GrowingOneCopyLeavesTheOtherOnTheOldStorage)
{
	ZnByteArray First;
	First.WriteInt32(9);
	ZnByteArray Second;
	Second = First;
	uint8* Shared = First.Data();
	Second.ensureCapacity(1000);
	EXPECT_NE(Second.Data(), Shared);
	EXPECT_EQ(First.Data(), Shared);
	EXPECT_EQ(Second.ReadHeadInt(), 9);
	Second.UpdateHeadInt32(10);
	EXPECT_EQ(First.ReadHeadInt(), 9);
	EXPECT_EQ(Second.ReadHeadInt(), 10);
}

TEST(ZnByteArrayTests, AssigningReleasesTheTargetsOwnStorage)
{
	// Run under the leak checker: the target's first storage must be freed, not orphaned.
	ZnByteArray Target;
	Target.ensureCapacity(4096);
	ZnByteArray Source;
	Source.WriteByte8(3);
	Target = Source;
	EXPECT_EQ(Target.Length(), 256);
	EXPECT_EQ(Target.Data()[0], 3);
}

TEST(ZnByteArrayTests, SelfAssignmentKeepsTheBuffer)
{
	ZnByteArray Buffer;
	Buffer.WriteInt32(11);
	ZnByteArray& Alias = Buffer;
	Buffer = Alias;
	EXPECT_EQ(Buffer.ReadHeadInt(), 11);
	EXPECT_EQ(Buffer.GetPos(), 4);
}
