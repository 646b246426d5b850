// FVector: a 3D vector of doubles (the engine's large-world-coordinate layout). Units are the
// caller's; the engine's convention is centimetres for positions.
#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Math/UnrealMathUtility.h"

struct FVector
{
	double X;
	double Y;
	double Z;

	CORE_API static const FVector ZeroVector;
	CORE_API static const FVector OneVector;
	CORE_API static const FVector UpVector;
	CORE_API static const FVector DownVector;
	CORE_API static const FVector ForwardVector;
	CORE_API static const FVector BackwardVector;
	CORE_API static const FVector RightVector;
	CORE_API static const FVector LeftVector;

	/** Zero, unlike the engine's uninitialised default, so that a forgotten value is never garbage. */
	constexpr FVector()
		: X(0)
		, Y(0)
		, Z(0)
	{
	}
	explicit constexpr FVector(double InF)
		: X(InF)
		, Y(InF)
		, Z(InF)
	{
	}
	constexpr FVector(double InX, double InY, double InZ)
		: X(InX)
		, Y(InY)
		, Z(InZ)
	{
	}
	explicit constexpr FVector(EForceInit)
		: X(0)
		, Y(0)
		, Z(0)
	{
	}

	constexpr FVector operator+(const FVector& V) const { return FVector(X + V.X, Y + V.Y, Z + V.Z); }
	constexpr FVector operator-(const FVector& V) const { return FVector(X - V.X, Y - V.Y, Z - V.Z); }
	constexpr FVector operator*(const FVector& V) const { return FVector(X * V.X, Y * V.Y, Z * V.Z); }
	constexpr FVector operator/(const FVector& V) const { return FVector(X / V.X, Y / V.Y, Z / V.Z); }
	constexpr FVector operator*(double Scale) const { return FVector(X * Scale, Y * Scale, Z * Scale); }
	FVector operator/(double Scale) const
	{
		const double RScale = 1.0 / Scale;
		return FVector(X * RScale, Y * RScale, Z * RScale);
	}
	constexpr FVector operator+(double Bias) const { return FVector(X + Bias, Y + Bias, Z + Bias); }
	constexpr FVector operator-(double Bias) const { return FVector(X - Bias, Y - Bias, Z - Bias); }
	constexpr FVector operator-() const { return FVector(-X, -Y, -Z); }
	/** Dot product. */
	constexpr double operator|(const FVector& V) const { return X * V.X + Y * V.Y + Z * V.Z; }
	/** Cross product. */
	constexpr FVector operator^(const FVector& V) const
	{
		return FVector(Y * V.Z - Z * V.Y, Z * V.X - X * V.Z, X * V.Y - Y * V.X);
	}

	FVector& operator+=(const FVector& V)
	{
		X += V.X;
		Y += V.Y;
		Z += V.Z;
		return *this;
	}
	FVector& operator-=(const FVector& V)
	{
		X -= V.X;
		Y -= V.Y;
		Z -= V.Z;
		return *this;
	}
	FVector& operator*=(const FVector& V)
	{
		X *= V.X;
		Y *= V.Y;
		Z *= V.Z;
		return *this;
	}
	FVector& operator*=(double Scale)
	{
		X *= Scale;
		Y *= Scale;
		Z *= Scale;
		return *this;
	}
	FVector& operator/=(double V)
	{
		const double RV = 1.0 / V;
		X *= RV;
		Y *= RV;
		Z *= RV;
		return *this;
	}

	/** Exact component comparison. */
	constexpr bool operator==(const FVector& V) const { return X == V.X && Y == V.Y && Z == V.Z; }
	constexpr bool operator!=(const FVector& V) const { return !(*this == V); }

	/** 0 is X, 1 is Y, anything else Z (checked). */
	double& operator[](int32 Index)
	{
		check(Index >= 0 && Index < 3);
		return Index == 0 ? X : (Index == 1 ? Y : Z);
	}
	double operator[](int32 Index) const
	{
		check(Index >= 0 && Index < 3);
		return Index == 0 ? X : (Index == 1 ? Y : Z);
	}
	double& Component(int32 Index) { return (*this)[Index]; }
	double Component(int32 Index) const { return (*this)[Index]; }

	static constexpr double DotProduct(const FVector& A, const FVector& B) { return A | B; }
	static constexpr FVector CrossProduct(const FVector& A, const FVector& B) { return A ^ B; }
	static double Dist(const FVector& A, const FVector& B) { return (A - B).Size(); }
	static double Distance(const FVector& A, const FVector& B) { return Dist(A, B); }
	static constexpr double DistSquared(const FVector& A, const FVector& B) { return (A - B).SizeSquared(); }

	double Size() const { return std::sqrt(X * X + Y * Y + Z * Z); }
	constexpr double SizeSquared() const { return X * X + Y * Y + Z * Z; }
	double Size2D() const { return std::sqrt(X * X + Y * Y); }
	constexpr double SizeSquared2D() const { return X * X + Y * Y; }
	double Length() const { return Size(); }

	/** Every component within Tolerance of V's. */
	bool Equals(const FVector& V, double Tolerance = UE_KINDA_SMALL_NUMBER) const
	{
		return FMath::Abs(X - V.X) <= Tolerance && FMath::Abs(Y - V.Y) <= Tolerance && FMath::Abs(Z - V.Z) <= Tolerance;
	}
	bool AllComponentsEqual(double Tolerance = UE_KINDA_SMALL_NUMBER) const
	{
		return FMath::Abs(X - Y) <= Tolerance && FMath::Abs(X - Z) <= Tolerance && FMath::Abs(Y - Z) <= Tolerance;
	}
	bool IsNearlyZero(double Tolerance = UE_KINDA_SMALL_NUMBER) const
	{
		return FMath::Abs(X) <= Tolerance && FMath::Abs(Y) <= Tolerance && FMath::Abs(Z) <= Tolerance;
	}
	constexpr bool IsZero() const { return X == 0. && Y == 0. && Z == 0.; }
	bool IsNormalized() const { return FMath::Abs(1.0 - SizeSquared()) < UE_THRESH_VECTOR_NORMALIZED_SQ; }
	bool ContainsNaN() const { return !FMath::IsFinite(X) || !FMath::IsFinite(Y) || !FMath::IsFinite(Z); }

	/** Scales to unit length; returns false and leaves the vector unchanged when its squared size is below Tolerance.
	 */
	bool Normalize(double Tolerance = UE_SMALL_NUMBER)
	{
		const double SquareSum = SizeSquared();
		if (SquareSum > Tolerance)
		{
			const double Scale = FMath::InvSqrt(SquareSum);
			X *= Scale;
			Y *= Scale;
			Z *= Scale;
			return true;
		}
		return false;
	}
	/** Unit-length copy, or ResultIfZero when the squared size is not above Tolerance. */
	FVector GetSafeNormal(double Tolerance = UE_SMALL_NUMBER, const FVector& ResultIfZero = FVector(0, 0, 0)) const
	{
		const double SquareSum = SizeSquared();
		if (SquareSum == 1.)
		{
			return *this;
		}
		if (SquareSum < Tolerance)
		{
			return ResultIfZero;
		}
		return *this * FMath::InvSqrt(SquareSum);
	}
	FVector GetUnsafeNormal() const { return *this * FMath::InvSqrt(SizeSquared()); }

	FVector GetAbs() const { return FVector(FMath::Abs(X), FMath::Abs(Y), FMath::Abs(Z)); }
	double GetMax() const { return FMath::Max3(X, Y, Z); }
	double GetMin() const { return FMath::Min3(X, Y, Z); }
	double GetAbsMax() const { return FMath::Max3(FMath::Abs(X), FMath::Abs(Y), FMath::Abs(Z)); }
	double GetAbsMin() const { return FMath::Min3(FMath::Abs(X), FMath::Abs(Y), FMath::Abs(Z)); }
	FVector ComponentMin(const FVector& O) const
	{
		return FVector(FMath::Min(X, O.X), FMath::Min(Y, O.Y), FMath::Min(Z, O.Z));
	}
	FVector ComponentMax(const FVector& O) const
	{
		return FVector(FMath::Max(X, O.X), FMath::Max(Y, O.Y), FMath::Max(Z, O.Z));
	}

	void Set(double InX, double InY, double InZ)
	{
		X = InX;
		Y = InY;
		Z = InZ;
	}

	/** "X=1.000 Y=2.000 Z=3.000", as the engine prints vectors. */
	FString ToString() const { return FString::Printf(TEXT("X=%3.3f Y=%3.3f Z=%3.3f"), X, Y, Z); }
};

constexpr FVector operator*(double Scale, const FVector& V)
{
	return V * Scale;
}

inline uint32 GetTypeHash(const FVector& V)
{
	return HashCombine(HashCombine(GetTypeHash(V.X), GetTypeHash(V.Y)), GetTypeHash(V.Z));
}
