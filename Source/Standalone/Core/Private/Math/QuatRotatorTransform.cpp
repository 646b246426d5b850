#include "Math/Quat.h"
#include "Math/Rotator.h"
#include "Math/Transform.h"
#include "Math/Vector.h"

const FVector FVector::ZeroVector(0, 0, 0);
const FVector FVector::OneVector(1, 1, 1);
const FVector FVector::UpVector(0, 0, 1);
const FVector FVector::DownVector(0, 0, -1);
const FVector FVector::ForwardVector(1, 0, 0);
const FVector FVector::BackwardVector(-1, 0, 0);
const FVector FVector::RightVector(0, 1, 0);
const FVector FVector::LeftVector(0, -1, 0);
const FRotator FRotator::ZeroRotator(0, 0, 0);
const FQuat FQuat::Identity(0, 0, 0, 1);
const FTransform FTransform::Identity;

FRotator::FRotator(const FQuat& Quat)
{
	*this = Quat.Rotator();
}

FQuat FRotator::Quaternion() const
{
	// Float constants as in the engine, so that the half-angle factor carries its rounding.
	const double DegToRad = double(UE_PI / (180.f));
	const double RadsDividedBy2 = DegToRad / 2.f;
	double SP, SY, SR;
	double CP, CY, CR;

	const double PitchNoWinding = FMath::Fmod(Pitch, 360.0);
	const double YawNoWinding = FMath::Fmod(Yaw, 360.0);
	const double RollNoWinding = FMath::Fmod(Roll, 360.0);

	FMath::SinCos(&SP, &CP, PitchNoWinding * RadsDividedBy2);
	FMath::SinCos(&SY, &CY, YawNoWinding * RadsDividedBy2);
	FMath::SinCos(&SR, &CR, RollNoWinding * RadsDividedBy2);

	FQuat RotationQuat;
	RotationQuat.X = CR * SP * SY - SR * CP * CY;
	RotationQuat.Y = -CR * SP * CY - SR * CP * SY;
	RotationQuat.Z = CR * CP * SY - SR * SP * CY;
	RotationQuat.W = CR * CP * CY + SR * SP * SY;
	return RotationQuat;
}

FVector FRotator::Vector() const
{
	const double PitchNoWinding = FMath::Fmod(Pitch, 360.0);
	const double YawNoWinding = FMath::Fmod(Yaw, 360.0);
	double CP, SP, CY, SY;
	FMath::SinCos(&SP, &CP, FMath::DegreesToRadians(PitchNoWinding));
	FMath::SinCos(&SY, &CY, FMath::DegreesToRadians(YawNoWinding));
	return FVector(CP * CY, CP * SY, SP);
}

FVector FRotator::RotateVector(const FVector& V) const
{
	return Quaternion().RotateVector(V);
}

FVector FRotator::UnrotateVector(const FVector& V) const
{
	return Quaternion().UnrotateVector(V);
}

FQuat::FQuat(const FRotator& R)
{
	*this = R.Quaternion();
}

FQuat::FQuat(const FVector& Axis, double AngleRad)
{
	const double HalfA = 0.5 * AngleRad;
	double S, C;
	FMath::SinCos(&S, &C, HalfA);
	X = S * Axis.X;
	Y = S * Axis.Y;
	Z = S * Axis.Z;
	W = C;
}

FQuat FQuat::operator*(const FQuat& Q) const
{
	return FQuat(W * Q.X + X * Q.W + Y * Q.Z - Z * Q.Y, W * Q.Y - X * Q.Z + Y * Q.W + Z * Q.X,
		W * Q.Z + X * Q.Y - Y * Q.X + Z * Q.W, W * Q.W - X * Q.X - Y * Q.Y - Z * Q.Z);
}

FVector FQuat::RotateVector(const FVector& V) const
{
	// V' = V + w * T + (Q x T) with T = 2 (Q x V), Q the vector part.
	const FVector Q(X, Y, Z);
	const FVector T = 2.0 * FVector::CrossProduct(Q, V);
	return V + (W * T) + FVector::CrossProduct(Q, T);
}

FVector FQuat::UnrotateVector(const FVector& V) const
{
	const FVector Q(-X, -Y, -Z);
	const FVector T = 2.0 * FVector::CrossProduct(Q, V);
	return V + (W * T) + FVector::CrossProduct(Q, T);
}

FVector FQuat::GetRotationAxis() const
{
	const double S = FMath::Sqrt(FMath::Max(1.0 - (W * W), 0.0));
	if (S >= 0.0001)
	{
		return FVector(X / S, Y / S, Z / S);
	}
	return FVector(1.0, 0.0, 0.0);
}

void FQuat::ToAxisAndAngle(FVector& Axis, double& Angle) const
{
	Angle = GetAngle();
	Axis = GetRotationAxis();
}

FRotator FQuat::Rotator() const
{
	const double SingularityTest = Z * X - W * Y;
	const double YawY = 2.f * (W * Z + X * Y);
	const double YawX = (1.f - 2.f * (FMath::Square(Y) + FMath::Square(Z)));

	// Both constants are float expressions in the engine; their float rounding is part of the
	// angles it prints, so they are kept as floats here.
	const double SingularityThreshold = 0.4999995f;
	const double RadToDeg = (180.f / UE_PI);
	double Pitch, Yaw, Roll;

	if (SingularityTest < -SingularityThreshold)
	{
		Pitch = -90.f;
		Yaw = (FMath::Atan2(YawY, YawX) * RadToDeg);
		Roll = FRotator::NormalizeAxis(-Yaw - (2.f * FMath::Atan2(X, W) * RadToDeg));
	}
	else if (SingularityTest > SingularityThreshold)
	{
		Pitch = 90.f;
		Yaw = (FMath::Atan2(YawY, YawX) * RadToDeg);
		Roll = FRotator::NormalizeAxis(Yaw - (2.f * FMath::Atan2(X, W) * RadToDeg));
	}
	else
	{
		Pitch = (FMath::FastAsin(2.f * SingularityTest) * RadToDeg);
		Yaw = (FMath::Atan2(YawY, YawX) * RadToDeg);
		Roll = (FMath::Atan2(-2.f * (W * X + Y * Z), (1.f - 2.f * (FMath::Square(X) + FMath::Square(Y)))) * RadToDeg);
	}
	return FRotator(Pitch, Yaw, Roll);
}

FQuat FQuat::FindBetweenNormals(const FVector& A, const FVector& B)
{
	const double NormAB = 1.0;
	double QW = NormAB + FVector::DotProduct(A, B);
	FQuat Result;
	if (QW >= 1e-6f * NormAB)
	{
		Result = FQuat(A.Y * B.Z - A.Z * B.Y, A.Z * B.X - A.X * B.Z, A.X * B.Y - A.Y * B.X, QW);
	}
	else
	{
		// Opposite directions: turn half way round an axis perpendicular to A.
		QW = 0.0;
		Result = FMath::Abs(A.X) > FMath::Abs(A.Y) ? FQuat(-A.Z, 0.0, A.X, QW) : FQuat(0.0, -A.Z, A.Y, QW);
	}
	Result.Normalize();
	return Result;
}

FQuat FQuat::Slerp_NotNormalized(const FQuat& Quat1, const FQuat& Quat2, double Slerp)
{
	const double RawCosom = Quat1.X * Quat2.X + Quat1.Y * Quat2.Y + Quat1.Z * Quat2.Z + Quat1.W * Quat2.W;
	// Opposite hemispheres: flip the sign so the shorter arc is taken.
	const double Cosom = FMath::FloatSelect(RawCosom, RawCosom, -RawCosom);

	double Scale0, Scale1;
	if (Cosom < double(0.9999f))
	{
		const double Omega = FMath::Acos(Cosom);
		const double InvSin = 1.f / FMath::Sin(Omega);
		Scale0 = FMath::Sin((1.f - Slerp) * Omega) * InvSin;
		Scale1 = FMath::Sin(Slerp * Omega) * InvSin;
	}
	else
	{
		Scale0 = 1.0f - Slerp;
		Scale1 = Slerp;
	}
	Scale1 = FMath::FloatSelect(RawCosom, Scale1, -Scale1);

	return FQuat(Scale0 * Quat1.X + Scale1 * Quat2.X, Scale0 * Quat1.Y + Scale1 * Quat2.Y,
		Scale0 * Quat1.Z + Scale1 * Quat2.Z, Scale0 * Quat1.W + Scale1 * Quat2.W);
}

FQuat FQuat::SlerpFullPath_NotNormalized(const FQuat& Quat1, const FQuat& Quat2, double Alpha)
{
	const double CosAngle = FMath::Clamp(Quat1 | Quat2, -1.0, 1.0);
	const double Angle = FMath::Acos(CosAngle);
	if (FMath::Abs(Angle) < UE_KINDA_SMALL_NUMBER)
	{
		return Quat1;
	}
	const double InvSinAngle = 1.f / FMath::Sin(Angle);
	const double Scale0 = FMath::Sin((1.0f - Alpha) * Angle) * InvSinAngle;
	const double Scale1 = FMath::Sin(Alpha * Angle) * InvSinAngle;
	return Quat1 * Scale0 + Quat2 * Scale1;
}

FQuat FQuat::FastLerp(const FQuat& A, const FQuat& B, double Alpha)
{
	const double Bias = FMath::FloatSelect(A | B, 1.0, -1.0);
	return (B * Alpha) + (A * (Bias * (1.0 - Alpha)));
}

namespace
{
FVector SafeScaleReciprocal(const FVector& InScale, double Tolerance = UE_SMALL_NUMBER)
{
	return FVector(FMath::Abs(InScale.X) <= Tolerance ? 0.0 : 1.0 / InScale.X,
		FMath::Abs(InScale.Y) <= Tolerance ? 0.0 : 1.0 / InScale.Y,
		FMath::Abs(InScale.Z) <= Tolerance ? 0.0 : 1.0 / InScale.Z);
}
} // namespace

FVector FTransform::InverseTransformPosition(const FVector& V) const
{
	return Rotation.UnrotateVector(V - Translation) * SafeScaleReciprocal(Scale3D);
}

FTransform FTransform::operator*(const FTransform& Other) const
{
	FTransform Result;
	Result.Rotation = Other.Rotation * Rotation;
	Result.Scale3D = Scale3D * Other.Scale3D;
	Result.Translation = Other.Rotation.RotateVector(Other.Scale3D * Translation) + Other.Translation;
	return Result;
}

FTransform FTransform::Inverse() const
{
	const FVector InvScale3D = SafeScaleReciprocal(Scale3D);
	const FQuat InvRotation = Rotation.Inverse();
	const FVector InvTranslation = -InvRotation.RotateVector(InvScale3D * Translation);
	return FTransform(InvRotation, InvTranslation, InvScale3D);
}

FString FTransform::ToString() const
{
	const FRotator R(Rotator());
	return FString::Printf(TEXT("%f,%f,%f|%f,%f,%f|%f,%f,%f"), Translation.X, Translation.Y, Translation.Z, R.Pitch,
		R.Yaw, R.Roll, Scale3D.X, Scale3D.Y, Scale3D.Z);
}
