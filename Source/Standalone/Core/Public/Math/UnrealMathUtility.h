// FMath and the engine's math constants. Note that UE_PI / PI are float constants, as in the
// engine: code such as the quaternion-to-rotator conversion mixes them into double arithmetic
// and its results depend on that.
#pragma once

#include "CoreTypes.h"

#include <cmath>
#include <type_traits>

#undef PI
#define UE_PI (3.1415926535897932f)
#define UE_DOUBLE_PI (3.141592653589793238462643383279502884197169399)
#define UE_HALF_PI (1.57079632679f)
#define UE_TWO_PI (6.28318530717f)
#define UE_SMALL_NUMBER (1.e-8f)
#define UE_KINDA_SMALL_NUMBER (1.e-4f)
#define UE_BIG_NUMBER (3.4e+38f)
#define UE_EULERS_NUMBER (2.71828182845904523536f)
#define UE_DOUBLE_SMALL_NUMBER (1.e-8)
#define UE_DOUBLE_KINDA_SMALL_NUMBER (1.e-4)
#define UE_THRESH_QUAT_NORMALIZED (0.01f)
#define UE_DELTA (0.00001f)
#define UE_THRESH_VECTOR_NORMALIZED_SQ (0.01f)
#define PI UE_PI
#define HALF_PI UE_HALF_PI
#define TWO_PI UE_TWO_PI
#define SMALL_NUMBER UE_SMALL_NUMBER
#define KINDA_SMALL_NUMBER UE_KINDA_SMALL_NUMBER
#define BIG_NUMBER UE_BIG_NUMBER
#define THRESH_QUAT_NORMALIZED UE_THRESH_QUAT_NORMALIZED
#define DELTA UE_DELTA
#define FASTASIN_HALF_PI (1.5707963050f)

#define MAX_int32 (0x7fffffff)
#define MIN_int32 (-0x7fffffff - 1)
#define MAX_uint8 (0xff)
#define MAX_uint16 (0xffff)
#define MAX_uint32 (0xffffffffu)
#define MAX_int64 (0x7fffffffffffffffll)
#define MAX_flt (3.402823466e+38F)
#define MAX_dbl (1.7976931348623158e+308)

struct FMath
{
	// Bit counting, as the platform math layer provides it (64 for a zero value).
	static FORCEINLINE uint64 CountTrailingZeros64(uint64 Value)
	{
		return Value == 0 ? 64 : uint64(__builtin_ctzll(Value));
	}
	static FORCEINLINE uint64 CountLeadingZeros64(uint64 Value)
	{
		return Value == 0 ? 64 : uint64(__builtin_clzll(Value));
	}
	static FORCEINLINE int32 CountBits(uint64 Bits)
	{
		// The generic form: no population-count instruction is assumed.
		Bits -= (Bits >> 1) & 0x5555555555555555ull;
		Bits = (Bits & 0x3333333333333333ull) + ((Bits >> 2) & 0x3333333333333333ull);
		Bits = (Bits + (Bits >> 4)) & 0x0f0f0f0f0f0f0f0full;
		return int32((Bits * 0x0101010101010101ull) >> 56);
	}

	// Floating-point Abs clears the sign bit, so Abs(-0.0) is +0.0 (the generic version below
	// would keep the negative zero, which then shows up as "-0.000000" in printed angles).
	static FORCEINLINE float Abs(const float A) { return std::fabs(A); }
	static FORCEINLINE double Abs(const double A) { return std::fabs(A); }
	template <typename T>
	static constexpr FORCEINLINE T Abs(const T A)
	{
		return (A < T(0)) ? -A : A;
	}
	template <typename T>
	static constexpr FORCEINLINE T Sign(const T A)
	{
		return (A > T(0)) ? T(1) : ((A < T(0)) ? T(-1) : T(0));
	}
	template <typename T>
	static constexpr FORCEINLINE T Max(const T A, const T B)
	{
		return (B < A) ? A : B;
	}
	template <typename T>
	static constexpr FORCEINLINE T Min(const T A, const T B)
	{
		return (A < B) ? A : B;
	}
	template <typename T>
	static constexpr FORCEINLINE T Max3(const T A, const T B, const T C)
	{
		return Max(Max(A, B), C);
	}
	template <typename T>
	static constexpr FORCEINLINE T Min3(const T A, const T B, const T C)
	{
		return Min(Min(A, B), C);
	}
	template <typename T>
	static constexpr FORCEINLINE T Clamp(const T X, const T MinValue, const T MaxValue)
	{
		return X < MinValue ? MinValue : (X < MaxValue ? X : MaxValue);
	}
	template <typename T>
	static constexpr FORCEINLINE T Square(const T A)
	{
		return A * A;
	}
	template <typename T>
	static constexpr FORCEINLINE T Cube(const T A)
	{
		return A * A * A;
	}
	template <typename T, typename U>
	static constexpr FORCEINLINE T Lerp(const T& A, const T& B, const U& Alpha)
	{
		return T(A + Alpha * (B - A));
	}

	static FORCEINLINE float Sqrt(float Value) { return std::sqrt(Value); }
	static FORCEINLINE double Sqrt(double Value) { return std::sqrt(Value); }
	static FORCEINLINE float InvSqrt(float Value) { return 1.0f / std::sqrt(Value); }
	static FORCEINLINE double InvSqrt(double Value) { return 1.0 / std::sqrt(Value); }
	static FORCEINLINE float Sin(float Value) { return std::sin(Value); }
	static FORCEINLINE double Sin(double Value) { return std::sin(Value); }
	static FORCEINLINE float Cos(float Value) { return std::cos(Value); }
	static FORCEINLINE double Cos(double Value) { return std::cos(Value); }
	static FORCEINLINE float Tan(float Value) { return std::tan(Value); }
	static FORCEINLINE double Tan(double Value) { return std::tan(Value); }
	/** Input is clamped to [-1, 1] so that rounding never produces NaN. */
	static FORCEINLINE float Asin(float Value) { return std::asin(Value < -1.f ? -1.f : (Value < 1.f ? Value : 1.f)); }
	static FORCEINLINE double Asin(double Value) { return std::asin(Value < -1. ? -1. : (Value < 1. ? Value : 1.)); }
	static FORCEINLINE float Acos(float Value) { return std::acos(Value < -1.f ? -1.f : (Value < 1.f ? Value : 1.f)); }
	static FORCEINLINE double Acos(double Value) { return std::acos(Value < -1. ? -1. : (Value < 1. ? Value : 1.)); }
	static FORCEINLINE float Atan(float Value) { return std::atan(Value); }
	static FORCEINLINE double Atan(double Value) { return std::atan(Value); }
	/**
	 * The engine's minimax approximation of atan2 (maximum relative error about 7.2e-7), not the
	 * C library's; exact at 0 and at multiples of 90 degrees. Atan2(0, 0) is 0.
	 */
	static CORE_API float Atan2(float Y, float X);
	static CORE_API double Atan2(double Y, double X);
	static FORCEINLINE float Exp(float Value) { return std::exp(Value); }
	static FORCEINLINE double Exp(double Value) { return std::exp(Value); }
	static FORCEINLINE float Loge(float Value) { return std::log(Value); }
	static FORCEINLINE double Loge(double Value) { return std::log(Value); }
	static FORCEINLINE float Pow(float A, float B) { return std::pow(A, B); }
	static FORCEINLINE double Pow(double A, double B) { return std::pow(A, B); }

	static FORCEINLINE void SinCos(float* ScalarSin, float* ScalarCos, float Value)
	{
		*ScalarSin = std::sin(Value);
		*ScalarCos = std::cos(Value);
	}
	static FORCEINLINE void SinCos(double* ScalarSin, double* ScalarCos, double Value)
	{
		*ScalarSin = std::sin(Value);
		*ScalarCos = std::cos(Value);
	}

	/**
	 * The engine's 7th-degree polynomial arcsine (error about 1e-5 rad); input outside [-1, 1]
	 * is treated as +-1.
	 */
	template <typename T>
	static FORCEINLINE T FastAsin(T Value)
	{
		const bool bNonNegative = (Value >= T(0.0f));
		const T X = Abs(Value);
		T OneMinusX = T(1.0f) - X;
		if (OneMinusX < T(0.0f))
		{
			OneMinusX = T(0.0f);
		}
		const T Root = std::sqrt(OneMinusX);
		// acos(|x|) by a 7-degree minimax approximation
		T Result = ((((((T(-0.0012624911f) * X + T(0.0066700901f)) * X - T(0.0170881256f)) * X + T(0.0308918810f)) * X -
						 T(0.0501743046f)) *
							X +
						T(0.0889789874f)) *
						   X -
					   T(0.2145988016f)) *
				X +
			T(FASTASIN_HALF_PI);
		Result *= Root;
		// asin(x) = pi/2 - acos(x); acos(-x) = pi - acos(x)
		return bNonNegative ? T(FASTASIN_HALF_PI) - Result : Result - T(FASTASIN_HALF_PI);
	}

	/** Remainder of X / Y with the sign of X; a divisor closer to 0 than 1e-8 gives 0. */
	static FORCEINLINE float Fmod(float X, float Y) { return std::fabs(Y) <= 1.e-8f ? 0.f : std::fmod(X, Y); }
	static FORCEINLINE double Fmod(double X, double Y) { return std::fabs(Y) <= 1.e-8 ? 0. : std::fmod(X, Y); }

	static FORCEINLINE int32 TruncToInt(float F) { return int32(F); }
	static FORCEINLINE int32 TruncToInt(double F) { return int32(F); }
	static FORCEINLINE float TruncToFloat(float F) { return std::trunc(F); }
	static FORCEINLINE double TruncToDouble(double F) { return std::trunc(F); }
	static FORCEINLINE int32 FloorToInt(float F) { return int32(std::floor(F)); }
	static FORCEINLINE int32 FloorToInt(double F) { return int32(std::floor(F)); }
	static FORCEINLINE int32 CeilToInt(float F) { return int32(std::ceil(F)); }
	static FORCEINLINE int32 CeilToInt(double F) { return int32(std::ceil(F)); }
	/** Halves round up (towards +infinity), as in the engine: RoundToInt(-0.5) is 0. */
	static FORCEINLINE int32 RoundToInt(float F) { return FloorToInt(F + 0.5f); }
	static FORCEINLINE int32 RoundToInt(double F) { return FloorToInt(F + 0.5); }
	static FORCEINLINE float FloorToFloat(float F) { return std::floor(F); }
	static FORCEINLINE double FloorToDouble(double F) { return std::floor(F); }
	static FORCEINLINE float RoundToFloat(float F) { return std::floor(F + 0.5f); }
	static FORCEINLINE double RoundToDouble(double F) { return std::floor(F + 0.5); }
	static FORCEINLINE float Frac(float F) { return F - std::floor(F); }
	static FORCEINLINE double Frac(double F) { return F - std::floor(F); }

	static FORCEINLINE bool IsNaN(float A) { return std::isnan(A); }
	static FORCEINLINE bool IsNaN(double A) { return std::isnan(A); }
	static FORCEINLINE bool IsFinite(float A) { return std::isfinite(A); }
	static FORCEINLINE bool IsFinite(double A) { return std::isfinite(A); }

	static FORCEINLINE bool IsNearlyEqual(float A, float B, float ErrorTolerance = UE_SMALL_NUMBER)
	{
		return Abs(A - B) <= ErrorTolerance;
	}
	static FORCEINLINE bool IsNearlyEqual(double A, double B, double ErrorTolerance = UE_DOUBLE_SMALL_NUMBER)
	{
		return Abs(A - B) <= ErrorTolerance;
	}
	static FORCEINLINE bool IsNearlyZero(float Value, float ErrorTolerance = UE_SMALL_NUMBER)
	{
		return Abs(Value) <= ErrorTolerance;
	}
	static FORCEINLINE bool IsNearlyZero(double Value, double ErrorTolerance = UE_DOUBLE_SMALL_NUMBER)
	{
		return Abs(Value) <= ErrorTolerance;
	}

	template <typename T>
	static constexpr FORCEINLINE bool IsPowerOfTwo(T Value)
	{
		return (Value & (Value - 1)) == T(0);
	}

	/** Same as C's ternary on the sign of Comparand: >= 0 picks ValueGEZero. */
	template <typename T>
	static constexpr FORCEINLINE T FloatSelect(T Comparand, T ValueGEZero, T ValueLTZero)
	{
		return Comparand >= T(0) ? ValueGEZero : ValueLTZero;
	}

	template <typename T>
	static constexpr FORCEINLINE T RadiansToDegrees(const T& RadVal)
	{
		return RadVal * (T(180.f) / T(UE_PI));
	}
	template <typename T>
	static constexpr FORCEINLINE T DegreesToRadians(const T& DegVal)
	{
		return DegVal * (T(UE_PI) / T(180.f));
	}

	/** Integer random number in [0, RAND_MAX] from the C library; seeded by RandInit. */
	static CORE_API int32 Rand();
	static CORE_API void RandInit(int32 Seed);
	/** Uniform in [0, 1). */
	static CORE_API float FRand();
	/** Uniform integer in [Min, Max]. */
	static CORE_API int32 RandRange(int32 Min, int32 Max);
	static CORE_API float FRandRange(float InMin, float InMax);
};
