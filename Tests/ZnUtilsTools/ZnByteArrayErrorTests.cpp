#include "ZnByteArray.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <vector>

// Reads do not check the cursor; past the storage every byte reads as zero and nothing outside
// the storage is touched (the sanitizer build proves the second half).

TEST(ZnByteArrayErrorTests, ReadingPastTheStorageGivesZeros)
{
	ZnByteArray Buffer(4);
	Buffer.WriteShort16(0xBEEF); // 0 + 2 < 4: no growth
	EXPECT_EQ(Buffer.Length(), 4);
	Buffer.ResetPos();
	EXPECT_EQ(Buffer.ReadShort16(), 0xBEEF);
	EXPECT_EQ(Buffer.ReadLong64(), 0u); // two bytes inside, six past the end
	EXPECT_EQ(Buffer.GetPos(), 10);
	EXPECT_EQ(Buffer.ReadDouble64(), 0.0);
	EXPECT_EQ(Buffer.ReadInt32(), 0);
	EXPECT_FALSE(Buffer.ReadBool8());
	EXPECT_EQ(Buffer.GetPos(), 23);
}

TEST(ZnByteArrayErrorTests, AValueStraddlingTheEndKeepsItsBytesInside)
{
	ZnByteArray Buffer(6);
	Buffer.WriteInt32(0x44332211);
	Buffer.ResetPos();
	EXPECT_EQ(Buffer.ReadShort16(), 0x2211);
	EXPECT_EQ(Buffer.ReadLong64(), 0x4433u);
}

TEST(ZnByteArrayErrorTests, ReadingPastTheDefaultStorage)
{
	ZnByteArray Buffer;
	Buffer.EndPos();
	EXPECT_EQ(Buffer.ReadDouble64(), 0.0);
	EXPECT_EQ(Buffer.ReadFloat32(), 0.0f);
	EXPECT_EQ(Buffer.GetPos(), 268);
	EXPECT_EQ(Buffer.RemainData(), Buffer.Data() + 256) << "a cursor past the storage points at its end";
}

TEST(ZnByteArrayErrorTests, ReadingPastTheValidDataReturnsWhatTheStorageHolds)
{
	ZnByteArray Buffer;
	Buffer.WriteInt32(0x44332211);
	const uint8 Source[] = {1};
	Buffer.CopyData(Source, 1);
	EXPECT_EQ(Buffer.ReadByte8(), 1);
	EXPECT_EQ(Buffer.RemainLength(), 0);
	// Byte 1 onward is left over from the earlier write; no check against the valid data.
	EXPECT_EQ(Buffer.ReadByte8(), 0x22);
	EXPECT_EQ(Buffer.ReadShort16(), 0x4433);
	EXPECT_EQ(Buffer.RemainLength(), -3);
}

TEST(ZnByteArrayErrorTests, WritingAtACursorPastTheStorageEnlargesIt)
{
	ZnByteArray Buffer(8);
	Buffer.ReadLong64();
	Buffer.ReadLong64();
	Buffer.ReadLong64();
	EXPECT_EQ(Buffer.GetPos(), 24);
	Buffer.WriteInt32(7);
	EXPECT_EQ(Buffer.Length(), 16) << "the reported capacity follows the growth rule";
	EXPECT_EQ(Buffer.GetPos(), 28);
	Buffer.ResetPos();
	for (int32 Index = 0; Index < 6; ++Index)
	{
		ASSERT_EQ(Buffer.ReadInt32(), 0);
	}
	EXPECT_EQ(Buffer.ReadInt32(), 7);
}

TEST(ZnByteArrayErrorTests, ReadUtfPastTheStorageReadsAnEmptyString)
{
	ZnByteArray Buffer(2);
	uint8 Destination[4] = {0xAA, 0xAA, 0xAA, 0xAA};
	EXPECT_EQ(Buffer.ReadUTF(Destination, 4), 0);
	EXPECT_EQ(Buffer.GetPos(), 4);
	EXPECT_EQ(Destination[0], 0xAA);
}

TEST(ZnByteArrayErrorTests, ReadUtfWithANegativeStoredLengthFails)
{
	ZnByteArray Buffer;
	Buffer.WriteInt32(-5);
	Buffer.ResetPos();
	uint8 Destination[16] = {};
	EXPECT_EQ(Buffer.ReadUTF(Destination, 16), -1);
	EXPECT_EQ(Buffer.GetPos(), 0);
}

TEST(ZnByteArrayErrorTests, ReadUtfWithoutDestinationFails)
{
	ZnByteArray Buffer;
	const uint8 Text[] = {'a', 'b'};
	Buffer.WriteUTF(Text, 2);
	Buffer.ResetPos();
	EXPECT_EQ(Buffer.ReadUTF(nullptr, 100), -1);
	EXPECT_EQ(Buffer.GetPos(), 0);
}

TEST(ZnByteArrayErrorTests, ReadUtfWithANegativeMaximumFails)
{
	ZnByteArray Buffer;
	const uint8 Text[] = {'a'};
	Buffer.WriteUTF(Text, 1);
	Buffer.ResetPos();
	uint8 Destination[4] = {};
	EXPECT_EQ(Buffer.ReadUTF(Destination, -1), -1);
	EXPECT_EQ(Buffer.GetPos(), 0);
}

TEST(ZnByteArrayErrorTests, ReadUtfOfAStringLongerThanTheStorageZeroFillsTheRest)
{
	ZnByteArray Buffer(8);
	Buffer.WriteInt32(6);
	Buffer.WriteByte8('x');
	Buffer.ResetPos();
	uint8 Destination[6];
	std::memset(Destination, 0xAA, sizeof(Destination));
	EXPECT_EQ(Buffer.ReadUTF(Destination, 6), 6);
	EXPECT_EQ(Destination[0], 'x');
	EXPECT_EQ(Destination[4], 0);
	EXPECT_EQ(Destination[5], 0);
	EXPECT_EQ(Buffer.GetPos(), 10);
}

TEST(ZnByteArrayErrorTests, HeadIntOfABufferShorterThanFourBytesIsMinus9999)
{
	ZnByteArray Buffer(3);
	EXPECT_EQ(Buffer.ReadHeadInt(), -9999);
	Buffer.UpdateHeadInt32(0x01010101);
	EXPECT_EQ(Buffer.ReadHeadInt(), -9999);
	EXPECT_EQ(Buffer.Data()[0], 0) << "the update is ignored below four bytes";
	EXPECT_EQ(Buffer.GetPos(), 0);
}

TEST(ZnByteArrayErrorTests, EmptyAndNegativeCapacitiesStillWork)
{
	ZnByteArray Empty(0);
	EXPECT_EQ(Empty.Length(), 0);
	EXPECT_EQ(Empty.ReadHeadInt(), -9999);
	Empty.WriteByte8(5); // 0 + 1 >= 0: 0 + 2
	EXPECT_EQ(Empty.Length(), 2);
	EXPECT_EQ(Empty.Data()[0], 5);

	ZnByteArray Negative(-10);
	EXPECT_EQ(Negative.Length(), 0);
	Negative.WriteInt32(1);
	EXPECT_EQ(Negative.Length(), 8);
}

TEST(ZnByteArrayErrorTests, NullOrNonPositiveRawWritesDoNothing)
{
	ZnByteArray Buffer;
	const uint8 Byte = 1;
	Buffer.WriteRawBytes(nullptr, 10);
	Buffer.WriteRawBytes(&Byte, 0);
	Buffer.WriteRawBytes(&Byte, -4);
	Buffer.WriteUTF(nullptr, 3);
	Buffer.WriteUTF(&Byte, -1);
	EXPECT_EQ(Buffer.GetPos(), 0);
	EXPECT_EQ(Buffer.Length(), 256);
	EXPECT_EQ(Buffer.ReadHeadInt(), 0);
}

TEST(ZnByteArrayErrorTests, CopyDataOfNothingLeavesAnEmptyContent)
{
	ZnByteArray Buffer;
	const uint8 Source[] = {1, 2};
	Buffer.CopyData(Source, 2);
	Buffer.ReadByte8();
	Buffer.CopyData(nullptr, 5);
	EXPECT_EQ(Buffer.RemainLength(), 0);
	EXPECT_EQ(Buffer.GetPos(), 0);
	Buffer.CopyData(Source, -3);
	EXPECT_EQ(Buffer.RemainLength(), 0);
	EXPECT_EQ(Buffer.Length(), 256);
}

TEST(ZnByteArrayErrorTests, NegativeCapacityRequestsNeverShrink)
{
	ZnByteArray Buffer;
	Buffer.ensureCapacity(-100);
	EXPECT_EQ(Buffer.Length(), 256);
	Buffer.EndPos();
	Buffer.ensureCapacity(-1); // 256 - 1 < 256
	EXPECT_EQ(Buffer.Length(), 256);
	Buffer.ensureCapacity(0); // 256 + 0 >= 256: reallocates to the same size
	EXPECT_EQ(Buffer.Length(), 256);
}

TEST(ZnByteArrayErrorTests, GrowthPastTwoGigabytesIsRefused)
{
	ZnByteArray Buffer;
	Buffer.ensureCapacity(std::numeric_limits<int32>::max());
	EXPECT_EQ(Buffer.Length(), 256);
	Buffer.WriteInt32(3);
	EXPECT_EQ(Buffer.ReadHeadInt(), 3);
}

TEST(ZnByteArrayErrorTests, StaticReadInt32OfNullIsZero)
{
	EXPECT_EQ(ZnByteArray::ReadInt32(nullptr), 0);
}
