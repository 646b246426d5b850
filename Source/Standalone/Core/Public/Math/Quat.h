// FQuat: a rotation quaternion of doubles (X, Y, Z vector part, W scalar part). A rotation
// quaternion should be of unit length; operations that need that say so.
#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Math/Rotator.h"
#include "Math/UnrealMathUtility.h"
#include "Math/Vector.h"

struct FQuat
{
	double X;
	double Y;
	double Z;
	double W;

	/** (0, 0, 0, 1). */
	CORE_API static const FQuat Identity;

	/** Identity, unlike the engine's uninitialised default, so that an unset rotation does nothing. */
	constexpr FQuat()
		: X(0)
		, Y(0)
		, Z(0)
		, W(1)
	{
	}
	explicit constexpr FQuat(EForceInit ZeroOrNot)
		: X(0)
		, Y(0)
		, Z(0)
		, W(ZeroOrNot == ForceInitToZero ? 0.0 : 1.0)
	{
	}
	constexpr FQuat(double InX, double InY, double InZ, double InW)
		: X(InX)
		, Y(InY)
		, Z(InZ)
		, W(InW)
	{
	}
	/** The rotation of R (see FRotator::Quaternion). */
	explicit CORE_API FQuat(const FRotator& R);
	/** Rotation of AngleRad radians about Axis, which must be of unit length. */
	CORE_API FQuat(const FVector& Axis, double AngleRad);

	/** Hamilton product: the result applies Q first, then this rotation. */
	CORE_API FQuat operator*(const FQuat& Q) const;
	FQuat& operator*=(const FQuat& Q)
	{
		*this = *this * Q;
		return *this;
	}
	/** Rotates V (same as RotateVector). */
	FVector operator*(const FVector& V) const { return RotateVector(V); }
	constexpr FQuat operator*(double Scale) const { return FQuat(X * Scale, Y * Scale, Z * Scale, W * Scale); }
	constexpr FQuat operator/(double Scale) const { return FQuat(X / Scale, Y / Scale, Z / Scale, W / Scale); }
	constexpr FQuat operator+(const FQuat& Q) const { return FQuat(X + Q.X, Y + Q.Y, Z + Q.Z, W + Q.W); }
	constexpr FQuat operator-(const FQuat& Q) const { return FQuat(X - Q.X, Y - Q.Y, Z - Q.Z, W - Q.W); }
	constexpr FQuat operator-() const { return FQuat(-X, -Y, -Z, -W); }
	FQuat& operator+=(const FQuat& Q)
	{
		X += Q.X;
		Y += Q.Y;
		Z += Q.Z;
		W += Q.W;
		return *this;
	}
	FQuat& operator*=(double Scale)
	{
		X *= Scale;
		Y *= Scale;
		Z *= Scale;
		W *= Scale;
		return *this;
	}
	/** Dot product of the four components. */
	constexpr double operator|(const FQuat& Q) const { return X * Q.X + Y * Q.Y + Z * Q.Z + W * Q.W; }

	/** Exact component comparison. */
	constexpr bool operator==(const FQuat& Q) const { return X == Q.X && Y == Q.Y && Z == Q.Z && W == Q.W; }
	constexpr bool operator!=(const FQuat& Q) const { return !(*this == Q); }

	/** Same rotation within Tolerance per component, treating Q and -Q as equal. */
	bool Equals(const FQuat& Q, double Tolerance = UE_KINDA_SMALL_NUMBER) const
	{
		return (FMath::Abs(X - Q.X) <= Tolerance && FMath::Abs(Y - Q.Y) <= Tolerance &&
				   FMath::Abs(Z - Q.Z) <= Tolerance && FMath::Abs(W - Q.W) <= Tolerance) ||
			(FMath::Abs(X + Q.X) <= Tolerance && FMath::Abs(Y + Q.Y) <= Tolerance && FMath::Abs(Z + Q.Z) <= Tolerance &&
				FMath::Abs(W + Q.W) <= Tolerance);
	}
	bool IsIdentity(double Tolerance = UE_SMALL_NUMBER) const { return Equals(Identity, Tolerance); }

	constexpr double SizeSquared() const { return X * X + Y * Y + Z * Z + W * W; }
	double Size() const { return std::sqrt(SizeSquared()); }
	bool IsNormalized() const { return FMath::Abs(1.0 - SizeSquared()) < UE_THRESH_QUAT_NORMALIZED; }
	bool ContainsNaN() const
	{
		return !FMath::IsFinite(X) || !FMath::IsFinite(Y) || !FMath::IsFinite(Z) || !FMath::IsFinite(W);
	}

	/** Scales to unit length; a quaternion whose squared size is below Tolerance becomes Identity. */
	void Normalize(double Tolerance = UE_SMALL_NUMBER)
	{
		const double SquareSum = SizeSquared();
		if (SquareSum >= Tolerance)
		{
			const double Scale = FMath::InvSqrt(SquareSum);
			X *= Scale;
			Y *= Scale;
			Z *= Scale;
			W *= Scale;
		}
		else
		{
			*this = Identity;
		}
	}
	FQuat GetNormalized(double Tolerance = UE_SMALL_NUMBER) const
	{
		FQuat Result(*this);
		Result.Normalize(Tolerance);
		return Result;
	}

	/** Inverse of a unit quaternion (the conjugate). */
	constexpr FQuat Inverse() const { return FQuat(-X, -Y, -Z, W); }

	CORE_API FVector RotateVector(const FVector& V) const;
	CORE_API FVector UnrotateVector(const FVector& V) const;
	FVector GetAxisX() const { return RotateVector(FVector(1, 0, 0)); }
	FVector GetAxisY() const { return RotateVector(FVector(0, 1, 0)); }
	FVector GetAxisZ() const { return RotateVector(FVector(0, 0, 1)); }
	FVector GetForwardVector() const { return GetAxisX(); }
	FVector GetRightVector() const { return GetAxisY(); }
	FVector GetUpVector() const { return GetAxisZ(); }
	FVector Vector() const { return GetAxisX(); }

	/** Rotation angle in radians, in [0, 2*pi]. */
	double GetAngle() const { return 2.0 * FMath::Acos(W); }
	/** Unit rotation axis; X axis when the angle is zero. */
	CORE_API FVector GetRotationAxis() const;
	CORE_API void ToAxisAndAngle(FVector& Axis, double& Angle) const;
	/** Angle in radians between the two rotations. */
	double AngularDistance(const FQuat& Q) const
	{
		const double InnerProd = X * Q.X + Y * Q.Y + Z * Q.Z + W * Q.W;
		return FMath::Acos((2 * InnerProd * InnerProd) - 1.0);
	}

	/**
	 * Rotator with the engine's algorithm: gimbal-lock threshold 0.4999995 on Z*X - W*Y, angles
	 * from the engine's Atan2 and FastAsin approximations, Roll normalised at the poles.
	 */
	CORE_API FRotator Rotator() const;
	/** Rotator().Euler(): degrees, X = Roll, Y = Pitch, Z = Yaw. */
	FVector Euler() const { return Rotator().Euler(); }
	/** Quaternion from Euler angles in degrees (X = Roll, Y = Pitch, Z = Yaw). */
	static FQuat MakeFromEuler(const FVector& Euler) { return FQuat(FRotator::MakeFromEuler(Euler)); }

	/** Rotation that turns direction A into direction B (both unit length). */
	CORE_API static FQuat FindBetweenNormals(const FVector& A, const FVector& B);
	static FQuat FindBetweenVectors(const FVector& A, const FVector& B)
	{
		return FindBetweenNormals(A.GetSafeNormal(), B.GetSafeNormal());
	}

	/**
	 * Spherical interpolation along the shorter arc without normalising the result. Falls back
	 * to linear blending when the rotations are within about 0.8 degrees (cosine >= 0.9999).
	 */
	CORE_API static FQuat Slerp_NotNormalized(const FQuat& Quat1, const FQuat& Quat2, double Slerp);
	/** Slerp_NotNormalized followed by GetNormalized. */
	static FQuat Slerp(const FQuat& Quat1, const FQuat& Quat2, double Slerp)
	{
		return Slerp_NotNormalized(Quat1, Quat2, Slerp).GetNormalized();
	}
	/** Spherical interpolation that may take the longer arc. */
	CORE_API static FQuat SlerpFullPath_NotNormalized(const FQuat& Quat1, const FQuat& Quat2, double Alpha);
	static FQuat SlerpFullPath(const FQuat& Quat1, const FQuat& Quat2, double Alpha)
	{
		return SlerpFullPath_NotNormalized(Quat1, Quat2, Alpha).GetNormalized();
	}
	/** Linear blend along the shorter arc, not normalised. */
	CORE_API static FQuat FastLerp(const FQuat& A, const FQuat& B, double Alpha);

	/** "X=0.000000000 Y=0.000000000 Z=0.000000000 W=1.000000000", as the engine prints quaternions. */
	FString ToString() const { return FString::Printf(TEXT("X=%.9f Y=%.9f Z=%.9f W=%.9f"), X, Y, Z, W); }
};

inline uint32 GetTypeHash(const FQuat& Q)
{
	return HashCombine(
		HashCombine(GetTypeHash(Q.X), GetTypeHash(Q.Y)), HashCombine(GetTypeHash(Q.Z), GetTypeHash(Q.W)));
}
