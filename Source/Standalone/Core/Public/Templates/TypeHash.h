// GetTypeHash for the built-in types, as the engine's hashed containers expect.
#pragma once

#include "CoreTypes.h"

#include <type_traits>

FORCEINLINE constexpr uint32 HashCombine(uint32 A, uint32 C)
{
	uint32 B = 0x9e3779b9;
	A += B;
	A -= B;
	A -= C;
	A ^= (C >> 13);
	B -= C;
	B -= A;
	B ^= (A << 8);
	C -= A;
	C -= B;
	C ^= (B >> 13);
	A -= B;
	A -= C;
	A ^= (C >> 12);
	B -= C;
	B -= A;
	B ^= (A << 16);
	C -= A;
	C -= B;
	C ^= (B >> 5);
	A -= B;
	A -= C;
	A ^= (C >> 3);
	B -= C;
	B -= A;
	B ^= (A << 10);
	C -= A;
	C -= B;
	C ^= (B >> 15);
	return C;
}

FORCEINLINE constexpr uint32 GetTypeHash(uint8 Value)
{
	return Value;
}
FORCEINLINE constexpr uint32 GetTypeHash(int8 Value)
{
	return uint32(Value);
}
FORCEINLINE constexpr uint32 GetTypeHash(uint16 Value)
{
	return Value;
}
FORCEINLINE constexpr uint32 GetTypeHash(int16 Value)
{
	return uint32(Value);
}
FORCEINLINE constexpr uint32 GetTypeHash(uint32 Value)
{
	return Value;
}
FORCEINLINE constexpr uint32 GetTypeHash(int32 Value)
{
	return uint32(Value);
}
FORCEINLINE constexpr uint32 GetTypeHash(uint64 Value)
{
	return uint32(Value) + (uint32(Value >> 32) * 23);
}
FORCEINLINE constexpr uint32 GetTypeHash(int64 Value)
{
	return GetTypeHash(uint64(Value));
}
FORCEINLINE constexpr uint32 GetTypeHash(char Value)
{
	return uint32(uint8(Value));
}
FORCEINLINE constexpr uint32 GetTypeHash(char16_t Value)
{
	return uint32(Value);
}
FORCEINLINE constexpr uint32 GetTypeHash(char32_t Value)
{
	return uint32(Value);
}
FORCEINLINE constexpr uint32 GetTypeHash(bool Value)
{
	return Value ? 1u : 0u;
}
FORCEINLINE uint32 GetTypeHash(float Value)
{
	uint32 Bits;
	__builtin_memcpy(&Bits, &Value, sizeof(Bits));
	return Value == 0.0f ? 0u : Bits;
}
FORCEINLINE uint32 GetTypeHash(double Value)
{
	uint64 Bits;
	__builtin_memcpy(&Bits, &Value, sizeof(Bits));
	return Value == 0.0 ? 0u : GetTypeHash(Bits);
}
FORCEINLINE uint32 GetTypeHash(const void* Value)
{
	const UPTRINT Ptr = reinterpret_cast<UPTRINT>(Value) >> 4;
	return GetTypeHash(uint64(Ptr));
}
template <typename T>
FORCEINLINE uint32 GetTypeHash(T* Value)
{
	return GetTypeHash(static_cast<const void*>(Value));
}
template <typename EnumType, typename = typename std::enable_if<std::is_enum<EnumType>::value>::type>
FORCEINLINE constexpr uint32 GetTypeHash(EnumType Value)
{
	return GetTypeHash(static_cast<typename std::underlying_type<EnumType>::type>(Value));
}
// long and long long are distinct types on Linux even though both are 64 bits wide.
FORCEINLINE constexpr uint32 GetTypeHash(long long Value)
{
	return GetTypeHash(uint64(Value));
}
FORCEINLINE constexpr uint32 GetTypeHash(unsigned long long Value)
{
	return GetTypeHash(uint64(Value));
}
