// A growable byte buffer with one cursor, for simple binary messages: typed values one after
// another (little-endian, floats as their IEEE 754 bits), an optional 32-bit total at the head
// and length-prefixed byte strings. Native only; not visible to scripts.
//
// Kept on purpose, because existing message code relies on them:
// - Length() reports the capacity field, not the number of bytes written.
// - Writes never change the valid-data count (dataLength); only CopyData sets it, and ResetPos
//   clears it together with the cursor, so RemainLength() is 0 after ResetPos.
// - The buffer grows when position + n >= capacity (also when a value would exactly fill it), by
//   twice the requested amount: capacity + 2n, not by doubling.
// - CopyData leaves the capacity field unchanged even when it replaces the storage with a larger one.
// - WriteUTF of an empty string writes nothing at all, not even a zero length.
//
// Bounds: reads do not check the cursor against the written data; reading past it returns what
// the storage holds. Reading past the end of the storage itself never touches memory outside
// it: every such byte reads as zero (and the cursor still advances). A write at a cursor beyond
// the storage (possible after reading past it) enlarges the storage enough to hold the value;
// the bytes in between read as zero. New storage always starts zeroed. A write or growth that
// would take the buffer past 2^31 - 1 bytes is dropped.
//
// Sharing: copying a buffer (assignment or construction) copies its fields, so both copies use the
// same storage and see each other's writes, exactly like a shallow copy. The storage is counted,
// though, and freed by the last buffer that uses it, so either copy may be destroyed first and no
// storage is freed twice or leaked. When one copy grows or CopyData replaces its storage, that copy
// moves to new storage and the other keeps the old one. Copies that share storage belong to one
// thread at a time.
#pragma once

#include "CoreTypes.h"

class ZNUTILSTOOLS_API ZnByteArray
{
public:
	static const int32 BOOL_SIZE = 1;
	static const int32 BYTE_SIZE = 1;
	static const int32 CHAR_SIZE = 1;
	static const int32 SHORT_SIZE = 2;
	static const int32 INT_SIZE = 4;
	static const int32 FLOAT_SIZE = 4;
	static const int32 LONG64_SIZE = 8;
	static const int32 DOUBLE_SIZE = 8;

	// Capacity 256, cursor 0, no valid data; the storage starts zeroed.
	ZnByteArray();

	// Starts with InitialCapacity bytes (negative counts as 0) instead of 256; for callers that know
	// their message size, and for small-buffer behaviour such as ReadHeadInt's -9999.
	explicit ZnByteArray(int32 InitialCapacity);

	// Both share the storage afterwards; see "Sharing" above.
	ZnByteArray(const ZnByteArray& Other);
	ZnByteArray& operator=(const ZnByteArray& Other);

	~ZnByteArray();

	// Start of the storage. Valid until the next write that grows the buffer or the next CopyData.
	uint8* Data() const { return data; }

	// The capacity field (see above), not the amount of data written.
	int32 Length() const { return capacity; }

	int32 GetPos() const { return position; }

	// Cursor to 0, and the valid-data count to 0 as well.
	void ResetPos();

	// Cursor to the capacity field.
	void EndPos();

	// Storage start + cursor; a cursor past the storage gives the storage's end.
	uint8* RemainData() const;

	// dataLength - cursor; negative once the cursor has passed the valid data.
	int32 RemainLength() const { return dataLength - position; }

	// Replaces the content with Length bytes from Bytes: valid-data count = Length, cursor = 0.
	// Null Bytes or Length <= 0 leave an empty content (count 0, cursor 0).
	void CopyData(const uint8* Bytes, int32 Length);

	// Grows when position + N >= capacity, to capacity + 2N. N <= 0 grows only when the cursor is
	// at or past the capacity, and then by nothing but reallocation.
	void ensureCapacity(int32 N);

	void WriteBool8(bool Value);
	void WriteByte8(uint8 Value);
	void WriteShort16(uint16 Value);
	void WriteInt32(int32 Value);
	void WriteFloat32(float Value);
	void WriteLong64(uint64 Value);
	void WriteDouble64(double Value);

	// Copies Length bytes as they are; null Bytes or Length <= 0 writes nothing.
	void WriteRawBytes(const uint8* Bytes, int32 Length);

	// A 32-bit length, then the bytes. Null Bytes or Length <= 0 writes nothing at all.
	void WriteUTF(const uint8* Bytes, int32 Length);

	// Overwrites the first four bytes when the capacity is at least 4; the cursor stays.
	void UpdateHeadInt32(int32 Value);

	bool ReadBool8();
	uint8 ReadByte8();
	uint16 ReadShort16();
	int32 ReadInt32();
	float ReadFloat32();
	uint64 ReadLong64();
	double ReadDouble64();

	// The little-endian int32 at Bytes, which must point at four readable bytes; null gives 0.
	static int32 ReadInt32(const uint8* Bytes);

	// The first four bytes as an int32, or -9999 when the capacity is below 4; the cursor stays.
	int32 ReadHeadInt() const;

	// Reads a 32-bit length L and then L bytes into Destination, without a terminating zero, and
	// returns L. When L is larger than Maximum, negative, or Destination is null while L > 0, the
	// cursor is put back where it was and the result is -1.
	int32 ReadUTF(uint8* Destination, int32 Maximum);

private:
	void ReadBytes(uint8* Out, int32 Count);
	void WriteBytes(const uint8* In, int32 Count);
	void Advance(int64 Count);
	int64 StorageSize() const;
	void Reallocate(int64 NewStorageSize, int64 BytesToKeep);
	void Release();

	uint8* data;
	int32 capacity;
	int32 position;
	int32 dataLength;
};
