// FRotator: an orientation as three angles in degrees (double). Pitch turns about the right
// (Y) axis, Yaw about the up (Z) axis, Roll about the forward (X) axis.
#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Math/UnrealMathUtility.h"
#include "Math/Vector.h"

struct FQuat;

struct FRotator
{
	double Pitch;
	double Yaw;
	double Roll;

	CORE_API static const FRotator ZeroRotator;

	/** Zero, unlike the engine's uninitialised default. */
	constexpr FRotator()
		: Pitch(0)
		, Yaw(0)
		, Roll(0)
	{
	}
	explicit constexpr FRotator(double InF)
		: Pitch(InF)
		, Yaw(InF)
		, Roll(InF)
	{
	}
	constexpr FRotator(double InPitch, double InYaw, double InRoll)
		: Pitch(InPitch)
		, Yaw(InYaw)
		, Roll(InRoll)
	{
	}
	explicit constexpr FRotator(EForceInit)
		: Pitch(0)
		, Yaw(0)
		, Roll(0)
	{
	}
	explicit CORE_API FRotator(const FQuat& Quat);

	constexpr FRotator operator+(const FRotator& R) const
	{
		return FRotator(Pitch + R.Pitch, Yaw + R.Yaw, Roll + R.Roll);
	}
	constexpr FRotator operator-(const FRotator& R) const
	{
		return FRotator(Pitch - R.Pitch, Yaw - R.Yaw, Roll - R.Roll);
	}
	constexpr FRotator operator*(double Scale) const { return FRotator(Pitch * Scale, Yaw * Scale, Roll * Scale); }
	FRotator& operator+=(const FRotator& R)
	{
		Pitch += R.Pitch;
		Yaw += R.Yaw;
		Roll += R.Roll;
		return *this;
	}
	FRotator& operator-=(const FRotator& R)
	{
		Pitch -= R.Pitch;
		Yaw -= R.Yaw;
		Roll -= R.Roll;
		return *this;
	}
	FRotator& operator*=(double Scale)
	{
		Pitch *= Scale;
		Yaw *= Scale;
		Roll *= Scale;
		return *this;
	}
	constexpr bool operator==(const FRotator& R) const { return Pitch == R.Pitch && Yaw == R.Yaw && Roll == R.Roll; }
	constexpr bool operator!=(const FRotator& R) const { return !(*this == R); }

	/** Angle in [0, 360): the remainder of Angle / 360, shifted up when negative. */
	static double ClampAxis(double Angle)
	{
		Angle = FMath::Fmod(Angle, 360.0);
		if (Angle < 0.0)
		{
			Angle += 360.0;
		}
		return Angle;
	}
	/** Angle in (-180, 180]. */
	static double NormalizeAxis(double Angle)
	{
		Angle = ClampAxis(Angle);
		if (Angle > 180.0)
		{
			Angle -= 360.0;
		}
		return Angle;
	}

	/** Copy with every angle in (-180, 180]. */
	FRotator GetNormalized() const { return FRotator(NormalizeAxis(Pitch), NormalizeAxis(Yaw), NormalizeAxis(Roll)); }
	void Normalize()
	{
		Pitch = NormalizeAxis(Pitch);
		Yaw = NormalizeAxis(Yaw);
		Roll = NormalizeAxis(Roll);
	}
	/** Copy with every angle in [0, 360). */
	FRotator GetDenormalized() const { return FRotator(ClampAxis(Pitch), ClampAxis(Yaw), ClampAxis(Roll)); }

	bool IsNearlyZero(double Tolerance = UE_KINDA_SMALL_NUMBER) const
	{
		return FMath::Abs(NormalizeAxis(Pitch)) <= Tolerance && FMath::Abs(NormalizeAxis(Yaw)) <= Tolerance &&
			FMath::Abs(NormalizeAxis(Roll)) <= Tolerance;
	}
	bool IsZero() const { return ClampAxis(Pitch) == 0. && ClampAxis(Yaw) == 0. && ClampAxis(Roll) == 0.; }
	/** Angles compared after normalisation, each within Tolerance degrees. */
	bool Equals(const FRotator& R, double Tolerance = UE_KINDA_SMALL_NUMBER) const
	{
		return FMath::Abs(NormalizeAxis(Pitch - R.Pitch)) <= Tolerance &&
			FMath::Abs(NormalizeAxis(Yaw - R.Yaw)) <= Tolerance &&
			FMath::Abs(NormalizeAxis(Roll - R.Roll)) <= Tolerance;
	}
	bool ContainsNaN() const { return !FMath::IsFinite(Pitch) || !FMath::IsFinite(Yaw) || !FMath::IsFinite(Roll); }

	/** Euler angles as a vector in the engine's order: X = Roll, Y = Pitch, Z = Yaw (degrees). */
	FVector Euler() const { return FVector(Roll, Pitch, Yaw); }
	/** Rotator from Euler angles (X = Roll, Y = Pitch, Z = Yaw). */
	static FRotator MakeFromEuler(const FVector& Euler) { return FRotator(Euler.Y, Euler.Z, Euler.X); }

	CORE_API FQuat Quaternion() const;
	/** The unit direction this rotator faces (its X axis). */
	CORE_API FVector Vector() const;
	CORE_API FVector RotateVector(const FVector& V) const;
	CORE_API FVector UnrotateVector(const FVector& V) const;

	/** "P=1.000000 Y=2.000000 R=3.000000", as the engine prints rotators. */
	FString ToString() const { return FString::Printf(TEXT("P=%f Y=%f R=%f"), Pitch, Yaw, Roll); }
};
