#include "ZnByteArray.h"

#include <cstring>
#include <limits>
#include <new>

namespace
{
// Every storage block starts with this header; the buffer's data pointer points just past it, so
// the buffer's own fields stay exactly data, capacity, position and dataLength.
struct FZnByteStorageHeader
{
	int64 RefCount;
	int64 Size;
};

constexpr int64 HeaderSize = sizeof(FZnByteStorageHeader);
constexpr int64 MaxSize = std::numeric_limits<int32>::max();

FZnByteStorageHeader* HeaderOf(uint8* Data)
{
	return reinterpret_cast<FZnByteStorageHeader*>(Data - HeaderSize);
}

uint8* AllocateStorage(int64 Size)
{
	if (Size < 1)
	{
		Size = 1;
	}
	uint8* Block = new uint8[static_cast<size_t>(HeaderSize + Size)]();
	new (Block) FZnByteStorageHeader{1, Size};
	return Block + HeaderSize;
}

template <typename T>
void ToLittleEndian(T Value, uint8* Out)
{
	for (size_t Index = 0; Index < sizeof(T); ++Index)
	{
		Out[Index] = static_cast<uint8>(Value >> (8 * Index));
	}
}

template <typename T>
T FromLittleEndian(const uint8* In)
{
	T Value = 0;
	for (size_t Index = 0; Index < sizeof(T); ++Index)
	{
		Value |= static_cast<T>(static_cast<T>(In[Index]) << (8 * Index));
	}
	return Value;
}
} // namespace

// Out-of-class definitions, so the sizes can also be bound to references.
const int32 ZnByteArray::BOOL_SIZE;
const int32 ZnByteArray::BYTE_SIZE;
const int32 ZnByteArray::CHAR_SIZE;
const int32 ZnByteArray::SHORT_SIZE;
const int32 ZnByteArray::INT_SIZE;
const int32 ZnByteArray::FLOAT_SIZE;
const int32 ZnByteArray::LONG64_SIZE;
const int32 ZnByteArray::DOUBLE_SIZE;

ZnByteArray::ZnByteArray()
	: ZnByteArray(256)
{
}

ZnByteArray::ZnByteArray(int32 InitialCapacity)
	: data(nullptr)
	, capacity(InitialCapacity < 0 ? 0 : InitialCapacity)
	, position(0)
	, dataLength(0)
{
	data = AllocateStorage(capacity);
}

ZnByteArray::ZnByteArray(const ZnByteArray& Other)
	: data(Other.data)
	, capacity(Other.capacity)
	, position(Other.position)
	, dataLength(Other.dataLength)
{
	++HeaderOf(data)->RefCount;
}

ZnByteArray& ZnByteArray::operator=(const ZnByteArray& Other)
{
	if (this != &Other)
	{
		++HeaderOf(Other.data)->RefCount;
		Release();
		data = Other.data;
		capacity = Other.capacity;
		position = Other.position;
		dataLength = Other.dataLength;
	}
	return *this;
}

ZnByteArray::~ZnByteArray()
{
	Release();
}

void ZnByteArray::Release()
{
	FZnByteStorageHeader* Header = HeaderOf(data);
	if (--Header->RefCount == 0)
	{
		Header->~FZnByteStorageHeader();
		delete[] reinterpret_cast<uint8*>(Header);
	}
	data = nullptr;
}

int64 ZnByteArray::StorageSize() const
{
	return HeaderOf(data)->Size;
}

void ZnByteArray::Reallocate(int64 NewStorageSize, int64 BytesToKeep)
{
	uint8* NewData = AllocateStorage(NewStorageSize);
	const int64 Keep = BytesToKeep < NewStorageSize ? BytesToKeep : NewStorageSize;
	if (Keep > 0)
	{
		std::memcpy(NewData, data, static_cast<size_t>(Keep));
	}
	Release();
	data = NewData;
}

void ZnByteArray::ResetPos()
{
	position = 0;
	dataLength = 0;
}

void ZnByteArray::EndPos()
{
	position = capacity;
}

uint8* ZnByteArray::RemainData() const
{
	const int64 Size = StorageSize();
	return data + (position < Size ? position : Size);
}

void ZnByteArray::CopyData(const uint8* Bytes, int32 Length)
{
	if (Bytes == nullptr || Length < 0)
	{
		Length = 0;
	}
	if (capacity < Length)
	{
		// The capacity field is left as it was on purpose; only the storage follows the new content.
		Reallocate(Length, 0);
	}
	if (Length > 0)
	{
		std::memcpy(data, Bytes, static_cast<size_t>(Length));
	}
	dataLength = Length;
	position = 0;
}

void ZnByteArray::ensureCapacity(int32 N)
{
	const int64 Needed = static_cast<int64>(position) + N;
	if (Needed < capacity)
	{
		return;
	}
	const int64 Grown = static_cast<int64>(capacity) + 2 * static_cast<int64>(N < 0 ? 0 : N);
	if (Grown > MaxSize || Needed > MaxSize)
	{
		return;
	}
	// The storage may need to be larger than the capacity field says: after CopyData it already
	// is, and after reads past the end the cursor may lie beyond capacity + 2N. Keeping all of the
	// old storage and covering the cursor means no data is lost and no write leaves the storage.
	int64 NewSize = Grown;
	if (Needed > NewSize)
	{
		NewSize = Needed;
	}
	const int64 OldSize = StorageSize();
	if (OldSize > NewSize)
	{
		NewSize = OldSize;
	}
	Reallocate(NewSize, OldSize);
	capacity = static_cast<int32>(Grown);
}

void ZnByteArray::Advance(int64 Count)
{
	const int64 Next = static_cast<int64>(position) + Count;
	position = static_cast<int32>(Next > MaxSize ? MaxSize : (Next < 0 ? 0 : Next));
}

void ZnByteArray::WriteBytes(const uint8* In, int32 Count)
{
	ensureCapacity(Count);
	if (static_cast<int64>(position) + Count > StorageSize())
	{
		// Only when growth was refused for size: the write is dropped rather than overrun.
		return;
	}
	std::memcpy(data + position, In, static_cast<size_t>(Count));
	Advance(Count);
}

void ZnByteArray::ReadBytes(uint8* Out, int32 Count)
{
	const int64 Size = StorageSize();
	const int64 Start = position;
	if (Start + Count <= Size)
	{
		std::memcpy(Out, data + Start, static_cast<size_t>(Count));
	}
	else
	{
		for (int32 Index = 0; Index < Count; ++Index)
		{
			const int64 At = Start + Index;
			Out[Index] = At < Size ? data[At] : 0;
		}
	}
	Advance(Count);
}

void ZnByteArray::WriteBool8(bool Value)
{
	WriteByte8(Value ? 1 : 0);
}

void ZnByteArray::WriteByte8(uint8 Value)
{
	WriteBytes(&Value, BYTE_SIZE);
}

void ZnByteArray::WriteShort16(uint16 Value)
{
	uint8 Bytes[SHORT_SIZE];
	ToLittleEndian(Value, Bytes);
	WriteBytes(Bytes, SHORT_SIZE);
}

void ZnByteArray::WriteInt32(int32 Value)
{
	uint8 Bytes[INT_SIZE];
	ToLittleEndian(static_cast<uint32>(Value), Bytes);
	WriteBytes(Bytes, INT_SIZE);
}

void ZnByteArray::WriteFloat32(float Value)
{
	uint32 Bits;
	std::memcpy(&Bits, &Value, sizeof(Bits));
	uint8 Bytes[FLOAT_SIZE];
	ToLittleEndian(Bits, Bytes);
	WriteBytes(Bytes, FLOAT_SIZE);
}

void ZnByteArray::WriteLong64(uint64 Value)
{
	uint8 Bytes[LONG64_SIZE];
	ToLittleEndian(Value, Bytes);
	WriteBytes(Bytes, LONG64_SIZE);
}

void ZnByteArray::WriteDouble64(double Value)
{
	uint64 Bits;
	std::memcpy(&Bits, &Value, sizeof(Bits));
	uint8 Bytes[DOUBLE_SIZE];
	ToLittleEndian(Bits, Bytes);
	WriteBytes(Bytes, DOUBLE_SIZE);
}

void ZnByteArray::WriteRawBytes(const uint8* Bytes, int32 Length)
{
	if (Bytes != nullptr && Length > 0)
	{
		WriteBytes(Bytes, Length);
	}
}

void ZnByteArray::WriteUTF(const uint8* Bytes, int32 Length)
{
	if (Bytes != nullptr && Length > 0)
	{
		WriteInt32(Length);
		WriteBytes(Bytes, Length);
	}
}

void ZnByteArray::UpdateHeadInt32(int32 Value)
{
	if (capacity >= INT_SIZE)
	{
		ToLittleEndian(static_cast<uint32>(Value), data);
	}
}

bool ZnByteArray::ReadBool8()
{
	return ReadByte8() != 0;
}

uint8 ZnByteArray::ReadByte8()
{
	uint8 Value;
	ReadBytes(&Value, BYTE_SIZE);
	return Value;
}

uint16 ZnByteArray::ReadShort16()
{
	uint8 Bytes[SHORT_SIZE];
	ReadBytes(Bytes, SHORT_SIZE);
	return FromLittleEndian<uint16>(Bytes);
}

int32 ZnByteArray::ReadInt32()
{
	uint8 Bytes[INT_SIZE];
	ReadBytes(Bytes, INT_SIZE);
	return static_cast<int32>(FromLittleEndian<uint32>(Bytes));
}

float ZnByteArray::ReadFloat32()
{
	uint8 Bytes[FLOAT_SIZE];
	ReadBytes(Bytes, FLOAT_SIZE);
	const uint32 Bits = FromLittleEndian<uint32>(Bytes);
	float Value;
	std::memcpy(&Value, &Bits, sizeof(Value));
	return Value;
}

uint64 ZnByteArray::ReadLong64()
{
	uint8 Bytes[LONG64_SIZE];
	ReadBytes(Bytes, LONG64_SIZE);
	return FromLittleEndian<uint64>(Bytes);
}

double ZnByteArray::ReadDouble64()
{
	uint8 Bytes[DOUBLE_SIZE];
	ReadBytes(Bytes, DOUBLE_SIZE);
	const uint64 Bits = FromLittleEndian<uint64>(Bytes);
	double Value;
	std::memcpy(&Value, &Bits, sizeof(Value));
	return Value;
}

int32 ZnByteArray::ReadInt32(const uint8* Bytes)
{
	return Bytes != nullptr ? static_cast<int32>(FromLittleEndian<uint32>(Bytes)) : 0;
}

int32 ZnByteArray::ReadHeadInt() const
{
	if (capacity < INT_SIZE)
	{
		return -9999;
	}
	return static_cast<int32>(FromLittleEndian<uint32>(data));
}

int32 ZnByteArray::ReadUTF(uint8* Destination, int32 Maximum)
{
	const int32 Start = position;
	const int32 Length = ReadInt32();
	if (Maximum < Length || Length < 0 || (Destination == nullptr && Length > 0))
	{
		position = Start;
		return -1;
	}
	if (Length > 0)
	{
		ReadBytes(Destination, Length);
	}
	return Length;
}
