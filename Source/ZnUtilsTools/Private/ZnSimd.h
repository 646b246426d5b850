// The few vector operations the JSON readers and the face decoder use, each in three forms that
// give the same bits: SSE2 (every x86-64 processor), NEON (every 64-bit ARM processor) and plain
// C++ for anything else. ZnSimd::Native is the form this build uses; defining ZN_FORCE_SCALAR=1
// makes it the plain one, which is how the tests run the readers' portable path on any machine.
// ZnSimd::Scalar is always compiled, so tests compare it with the native form directly too.
//
// Blocks are 16 bytes read from any address (no alignment needed); masks hold one bit per byte,
// byte 0 in bit 0. Callers make sure the 16 bytes are readable (the parser buffers' padding).
#pragma once

#include "CoreMinimal.h"

#include <cstring>

#if !defined(ZN_FORCE_SCALAR)
#define ZN_FORCE_SCALAR 0
#endif

#if !ZN_FORCE_SCALAR && (defined(__SSE2__) || defined(_M_X64) || (defined(_M_IX86_FP) && _M_IX86_FP >= 2))
#define ZN_SIMD_SSE2 1
#define ZN_SIMD_NEON 0
#include <emmintrin.h>
#elif !ZN_FORCE_SCALAR && (defined(__ARM_NEON) || defined(_M_ARM64)) && (defined(__aarch64__) || defined(_M_ARM64))
#define ZN_SIMD_SSE2 0
#define ZN_SIMD_NEON 1
#include <arm_neon.h>
#else
#define ZN_SIMD_SSE2 0
#define ZN_SIMD_NEON 0
#endif

namespace ZnSimd
{
// Sixteen zero bytes, then sixteen 0xFF bytes: the sixteen from offset N mask the last N lanes.
alignas(16) constexpr uint8 LastLanes[32] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF,
	0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};

namespace Scalar
{
struct FBytes16
{
	uint8 Lanes[16];
};

FORCEINLINE FBytes16 Load16(const char* Bytes)
{
	FBytes16 Block;
	std::memcpy(Block.Lanes, Bytes, 16);
	return Block;
}

// Bit i set where lane i equals Byte.
FORCEINLINE uint32 EqualMask(const FBytes16& Block, char Byte)
{
	uint32 Mask = 0;
	for (int32 Lane = 0; Lane < 16; ++Lane)
	{
		Mask |= uint32(Block.Lanes[Lane] == uint8(Byte)) << Lane;
	}
	return Mask;
}

// Bit i set where lane i, with the 0x20 bit set, equals Byte: '[' and '{' (or ']' and '}') at once.
FORCEINLINE uint32 FoldedEqualMask(const FBytes16& Block, char Byte)
{
	uint32 Mask = 0;
	for (int32 Lane = 0; Lane < 16; ++Lane)
	{
		Mask |= uint32((Block.Lanes[Lane] | 0x20) == uint8(Byte)) << Lane;
	}
	return Mask;
}

// Bit i set where lane i is an ASCII digit.
FORCEINLINE uint32 DigitMask(const FBytes16& Block)
{
	uint32 Mask = 0;
	for (int32 Lane = 0; Lane < 16; ++Lane)
	{
		Mask |= uint32(uint8(Block.Lanes[Lane] - '0') <= 9) << Lane;
	}
	return Mask;
}

// The value of DigitCount (1 to 16) digits that end at End, the last one at End[-1], with a decimal
// point FractionDigits before the end when bPoint. Reads the 17 bytes before End.
FORCEINLINE uint64 DigitsEndingAt(const char* End, int32 DigitCount, int32 FractionDigits, bool bPoint)
{
	const char* Digit = End - DigitCount - (bPoint ? 1 : 0);
	const char* Point = bPoint ? End - FractionDigits - 1 : nullptr;
	uint64 Value = 0;
	for (; Digit != End; ++Digit)
	{
		if (Digit != Point)
		{
			Value = Value * 10 + uint64(*Digit - '0');
		}
	}
	return Value;
}

// Sixteen UTF-16 units as sixteen bytes when all of them are ASCII; false (nothing written) otherwise.
FORCEINLINE bool PackAscii16(const TCHAR* In, char* Out)
{
	uint32 Wide = 0;
	for (int32 Index = 0; Index < 16; ++Index)
	{
		Wide |= uint32(In[Index]);
	}
	if (Wide >= 0x80)
	{
		return false;
	}
	for (int32 Index = 0; Index < 16; ++Index)
	{
		Out[Index] = char(In[Index]);
	}
	return true;
}

// Two quotients at once, each negated when its flag says so: Out[i] = +-(Numerators[i] / Divisors[i]).
FORCEINLINE void DividePair(const double Numerators[2], const double Divisors[2], const bool bNegative[2], double* Out)
{
	for (int32 Lane = 0; Lane < 2; ++Lane)
	{
		const double Quotient = Numerators[Lane] / Divisors[Lane];
		Out[Lane] = bNegative[Lane] ? -Quotient : Quotient;
	}
}

// A percent as a weight in 0..1 in single precision: converted to float, times 0.01f, and clamped,
// where anything not at least 0 (NaN included) becomes 0.
FORCEINLINE float PercentToWeight(double Percent)
{
	const float Weight = float(Percent) * 0.01f;
	return !(Weight >= 0.0f) ? 0.0f : (Weight >= 1.0f ? 1.0f : Weight);
}

// Four of them at once.
FORCEINLINE void PercentsToWeights4(const double* Percents, float* OutWeights)
{
	for (int32 Lane = 0; Lane < 4; ++Lane)
	{
		OutWeights[Lane] = PercentToWeight(Percents[Lane]);
	}
}
} // namespace Scalar

#if ZN_SIMD_SSE2
namespace Sse2
{
struct FBytes16
{
	__m128i Lanes;
};

FORCEINLINE FBytes16 Load16(const char* Bytes)
{
	return FBytes16{_mm_loadu_si128(reinterpret_cast<const __m128i*>(Bytes))};
}

FORCEINLINE uint32 EqualMask(const FBytes16& Block, char Byte)
{
	return uint32(_mm_movemask_epi8(_mm_cmpeq_epi8(Block.Lanes, _mm_set1_epi8(Byte))));
}

FORCEINLINE uint32 FoldedEqualMask(const FBytes16& Block, char Byte)
{
	return uint32(
		_mm_movemask_epi8(_mm_cmpeq_epi8(_mm_or_si128(Block.Lanes, _mm_set1_epi8(0x20)), _mm_set1_epi8(Byte))));
}

FORCEINLINE uint32 DigitMask(const FBytes16& Block)
{
	// Bytes at or above 0x80 compare as negative, so only '0' to '9' pass both tests.
	return uint32(_mm_movemask_epi8(_mm_and_si128(
		_mm_cmpgt_epi8(Block.Lanes, _mm_set1_epi8('0' - 1)), _mm_cmplt_epi8(Block.Lanes, _mm_set1_epi8('9' + 1)))));
}

FORCEINLINE __m128i LastLanesMask(int32 Count)
{
	return _mm_loadu_si128(reinterpret_cast<const __m128i*>(LastLanes + Count));
}

// Sixteen bytes loaded to end with the number put its last digit in the last lane; the integer
// digits come from a load one byte earlier, which closes the point's gap; then pairs, fours and
// eights are combined by multiply-adds.
FORCEINLINE uint64 DigitsEndingAt(const char* End, int32 DigitCount, int32 FractionDigits, bool bPoint)
{
	const __m128i Zero = _mm_set1_epi8('0');
	const __m128i Fraction = _mm_loadu_si128(reinterpret_cast<const __m128i*>(End - 16));
	const __m128i Integer = _mm_loadu_si128(reinterpret_cast<const __m128i*>(End - 17));
	const __m128i FromFraction = LastLanesMask(bPoint ? FractionDigits : 16);
	const __m128i Joined = _mm_or_si128(_mm_and_si128(FromFraction, Fraction), _mm_andnot_si128(FromFraction, Integer));
	const __m128i Digits = _mm_and_si128(_mm_sub_epi8(Joined, Zero), LastLanesMask(DigitCount));
	// Lane 0 holds the most significant digit.
	const __m128i Pairs =
		_mm_packs_epi32(_mm_madd_epi16(_mm_unpacklo_epi8(Digits, _mm_setzero_si128()), _mm_set1_epi32(0x0001000A)),
			_mm_madd_epi16(_mm_unpackhi_epi8(Digits, _mm_setzero_si128()), _mm_set1_epi32(0x0001000A)));
	const __m128i Fours = _mm_madd_epi16(Pairs, _mm_set1_epi32(0x00010064));
	const __m128i Eights = _mm_madd_epi16(_mm_packs_epi32(Fours, Fours), _mm_set1_epi32(0x00012710));
	const uint64 High = uint32(_mm_cvtsi128_si32(Eights));
	const uint64 Low = uint32(_mm_cvtsi128_si32(_mm_srli_si128(Eights, 4)));
	return High * 100000000 + Low;
}

FORCEINLINE bool PackAscii16(const TCHAR* In, char* Out)
{
	static_assert(sizeof(TCHAR) == 2, "engine text is UTF-16");
	const __m128i Low = _mm_loadu_si128(reinterpret_cast<const __m128i*>(In));
	const __m128i High = _mm_loadu_si128(reinterpret_cast<const __m128i*>(In + 8));
	const __m128i Wide = _mm_and_si128(_mm_or_si128(Low, High), _mm_set1_epi16(int16(0xFF80)));
	if (_mm_movemask_epi8(_mm_cmpeq_epi8(Wide, _mm_setzero_si128())) != 0xFFFF)
	{
		return false;
	}
	_mm_storeu_si128(reinterpret_cast<__m128i*>(Out), _mm_packus_epi16(Low, High));
	return true;
}

FORCEINLINE void DividePair(const double Numerators[2], const double Divisors[2], const bool bNegative[2], double* Out)
{
	const __m128d Signs = _mm_set_pd(bNegative[1] ? -0.0 : 0.0, bNegative[0] ? -0.0 : 0.0);
	_mm_storeu_pd(Out, _mm_xor_pd(_mm_div_pd(_mm_loadu_pd(Numerators), _mm_loadu_pd(Divisors)), Signs));
}

FORCEINLINE void PercentsToWeights4(const double* Percents, float* OutWeights)
{
	const __m128 Low = _mm_cvtpd_ps(_mm_loadu_pd(Percents));
	const __m128 High = _mm_cvtpd_ps(_mm_loadu_pd(Percents + 2));
	const __m128 Weight = _mm_mul_ps(_mm_movelh_ps(Low, High), _mm_set1_ps(0.01f));
	const __m128 One = _mm_set1_ps(1.0f);
	const __m128 AtLeastZero = _mm_and_ps(Weight, _mm_cmpge_ps(Weight, _mm_setzero_ps()));
	const __m128 AtLeastOne = _mm_cmpge_ps(Weight, One);
	_mm_storeu_ps(OutWeights, _mm_or_ps(_mm_andnot_ps(AtLeastOne, AtLeastZero), _mm_and_ps(AtLeastOne, One)));
}
} // namespace Sse2
namespace Native = Sse2;
#elif ZN_SIMD_NEON
namespace Neon
{
struct FBytes16
{
	uint8x16_t Lanes;
};

FORCEINLINE FBytes16 Load16(const char* Bytes)
{
	return FBytes16{vld1q_u8(reinterpret_cast<const uint8*>(Bytes))};
}

// NEON has no byte mask instruction: each lane keeps its own bit of a byte, and three pairwise
// additions gather the bytes' bits into the two halves' mask bytes.
FORCEINLINE uint32 ToMask(uint8x16_t Matches)
{
	alignas(16) static constexpr uint8 Bits[16] = {1, 2, 4, 8, 16, 32, 64, 128, 1, 2, 4, 8, 16, 32, 64, 128};
	uint8x16_t Picked = vandq_u8(Matches, vld1q_u8(Bits));
	Picked = vpaddq_u8(Picked, Picked);
	Picked = vpaddq_u8(Picked, Picked);
	Picked = vpaddq_u8(Picked, Picked);
	return uint32(vgetq_lane_u16(vreinterpretq_u16_u8(Picked), 0));
}

FORCEINLINE uint32 EqualMask(const FBytes16& Block, char Byte)
{
	return ToMask(vceqq_u8(Block.Lanes, vdupq_n_u8(uint8(Byte))));
}

FORCEINLINE uint32 FoldedEqualMask(const FBytes16& Block, char Byte)
{
	return ToMask(vceqq_u8(vorrq_u8(Block.Lanes, vdupq_n_u8(0x20)), vdupq_n_u8(uint8(Byte))));
}

FORCEINLINE uint32 DigitMask(const FBytes16& Block)
{
	return ToMask(vcleq_u8(vsubq_u8(Block.Lanes, vdupq_n_u8('0')), vdupq_n_u8(9)));
}

FORCEINLINE uint8x16_t LastLanesMask(int32 Count)
{
	return vld1q_u8(LastLanes + Count);
}

// As the SSE2 form: the two loads joined at the point, then pairs, fours and eights combined by
// widening pairwise additions of weighted lanes.
FORCEINLINE uint64 DigitsEndingAt(const char* End, int32 DigitCount, int32 FractionDigits, bool bPoint)
{
	const uint8x16_t Fraction = vld1q_u8(reinterpret_cast<const uint8*>(End - 16));
	const uint8x16_t Integer = vld1q_u8(reinterpret_cast<const uint8*>(End - 17));
	const uint8x16_t Joined = vbslq_u8(LastLanesMask(bPoint ? FractionDigits : 16), Fraction, Integer);
	const uint8x16_t Digits = vandq_u8(vsubq_u8(Joined, vdupq_n_u8('0')), LastLanesMask(DigitCount));
	// Lane 0 holds the most significant digit.
	alignas(16) static constexpr uint8 Tens[16] = {10, 1, 10, 1, 10, 1, 10, 1, 10, 1, 10, 1, 10, 1, 10, 1};
	alignas(16) static constexpr uint16 Hundreds[8] = {100, 1, 100, 1, 100, 1, 100, 1};
	alignas(16) static constexpr uint32 TenThousands[4] = {10000, 1, 10000, 1};
	const uint16x8_t Pairs = vpaddlq_u8(vmulq_u8(Digits, vld1q_u8(Tens)));
	const uint32x4_t Fours = vpaddlq_u16(vmulq_u16(Pairs, vld1q_u16(Hundreds)));
	const uint64x2_t Eights = vpaddlq_u32(vmulq_u32(Fours, vld1q_u32(TenThousands)));
	return vgetq_lane_u64(Eights, 0) * 100000000 + vgetq_lane_u64(Eights, 1);
}

FORCEINLINE bool PackAscii16(const TCHAR* In, char* Out)
{
	static_assert(sizeof(TCHAR) == 2, "engine text is UTF-16");
	const uint16x8_t Low = vld1q_u16(reinterpret_cast<const uint16*>(In));
	const uint16x8_t High = vld1q_u16(reinterpret_cast<const uint16*>(In + 8));
	if (vmaxvq_u16(vorrq_u16(Low, High)) >= 0x80)
	{
		return false;
	}
	vst1q_u8(reinterpret_cast<uint8*>(Out), vcombine_u8(vmovn_u16(Low), vmovn_u16(High)));
	return true;
}

FORCEINLINE void DividePair(const double Numerators[2], const double Divisors[2], const bool bNegative[2], double* Out)
{
	alignas(16) const uint64 Signs[2] = {bNegative[0] ? uint64(1) << 63 : 0, bNegative[1] ? uint64(1) << 63 : 0};
	const float64x2_t Quotients = vdivq_f64(vld1q_f64(Numerators), vld1q_f64(Divisors));
	vst1q_f64(Out, vreinterpretq_f64_u64(veorq_u64(vreinterpretq_u64_f64(Quotients), vld1q_u64(Signs))));
}

FORCEINLINE void PercentsToWeights4(const double* Percents, float* OutWeights)
{
	const float32x4_t Floats = vcombine_f32(vcvt_f32_f64(vld1q_f64(Percents)), vcvt_f32_f64(vld1q_f64(Percents + 2)));
	// A multiplication alone (no fused multiply-add), as the scalar form rounds it.
	const float32x4_t Weight = vmulq_f32(Floats, vdupq_n_f32(0.01f));
	const float32x4_t AtLeastZero =
		vreinterpretq_f32_u32(vandq_u32(vreinterpretq_u32_f32(Weight), vcgeq_f32(Weight, vdupq_n_f32(0.0f))));
	vst1q_f32(OutWeights, vbslq_f32(vcgeq_f32(Weight, vdupq_n_f32(1.0f)), vdupq_n_f32(1.0f), AtLeastZero));
}
} // namespace Neon
namespace Native = Neon;
#else
namespace Native = Scalar;
#endif
} // namespace ZnSimd
