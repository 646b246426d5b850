// FTransform: scale, then rotation, then translation, applied to a point in that order.
#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Math/Quat.h"
#include "Math/Rotator.h"
#include "Math/Vector.h"

struct FTransform
{
	CORE_API static const FTransform Identity;

	/** Identity: no rotation, no translation, unit scale. */
	FTransform()
		: Rotation(0, 0, 0, 1)
		, Translation(0, 0, 0)
		, Scale3D(1, 1, 1)
	{
	}
	explicit FTransform(const FVector& InTranslation)
		: Rotation(0, 0, 0, 1)
		, Translation(InTranslation)
		, Scale3D(1, 1, 1)
	{
	}
	explicit FTransform(const FQuat& InRotation)
		: Rotation(InRotation)
		, Translation(0, 0, 0)
		, Scale3D(1, 1, 1)
	{
	}
	explicit FTransform(const FRotator& InRotation)
		: Rotation(InRotation)
		, Translation(0, 0, 0)
		, Scale3D(1, 1, 1)
	{
	}
	FTransform(const FQuat& InRotation, const FVector& InTranslation, const FVector& InScale3D = FVector(1, 1, 1))
		: Rotation(InRotation)
		, Translation(InTranslation)
		, Scale3D(InScale3D)
	{
	}
	FTransform(const FRotator& InRotation, const FVector& InTranslation, const FVector& InScale3D = FVector(1, 1, 1))
		: Rotation(InRotation)
		, Translation(InTranslation)
		, Scale3D(InScale3D)
	{
	}

	const FQuat& GetRotation() const { return Rotation; }
	FRotator Rotator() const { return Rotation.Rotator(); }
	const FVector& GetTranslation() const { return Translation; }
	const FVector& GetLocation() const { return Translation; }
	const FVector& GetScale3D() const { return Scale3D; }

	void SetRotation(const FQuat& NewRotation) { Rotation = NewRotation; }
	void SetTranslation(const FVector& NewTranslation) { Translation = NewTranslation; }
	void SetLocation(const FVector& NewLocation) { Translation = NewLocation; }
	void SetScale3D(const FVector& NewScale3D) { Scale3D = NewScale3D; }
	void SetComponents(const FQuat& InRotation, const FVector& InTranslation, const FVector& InScale3D)
	{
		Rotation = InRotation;
		Translation = InTranslation;
		Scale3D = InScale3D;
	}
	void SetIdentity() { *this = FTransform(); }
	void AddToTranslation(const FVector& Delta) { Translation += Delta; }
	void NormalizeRotation() { Rotation.Normalize(); }

	FVector TransformPosition(const FVector& V) const { return Rotation.RotateVector(Scale3D * V) + Translation; }
	FVector TransformPositionNoScale(const FVector& V) const { return Rotation.RotateVector(V) + Translation; }
	FVector TransformVector(const FVector& V) const { return Rotation.RotateVector(Scale3D * V); }
	FVector TransformVectorNoScale(const FVector& V) const { return Rotation.RotateVector(V); }
	FQuat TransformRotation(const FQuat& Q) const { return Rotation * Q; }
	/** Inverse of TransformPosition; a zero scale component gives 0 on that axis. */
	CORE_API FVector InverseTransformPosition(const FVector& V) const;

	/** This transform followed by Other (the engine's order: A * B applies A first). */
	CORE_API FTransform operator*(const FTransform& Other) const;
	FTransform& operator*=(const FTransform& Other)
	{
		*this = *this * Other;
		return *this;
	}
	/** Inverse, exact for uniform scale; a zero scale component inverts to 0. */
	CORE_API FTransform Inverse() const;

	bool Equals(const FTransform& Other, double Tolerance = UE_KINDA_SMALL_NUMBER) const
	{
		return Rotation.Equals(Other.Rotation, Tolerance) && Translation.Equals(Other.Translation, Tolerance) &&
			Scale3D.Equals(Other.Scale3D, Tolerance);
	}

	/** "X,Y,Z|Pitch,Yaw,Roll|SX,SY,SZ" with six decimals. */
	CORE_API FString ToString() const;

protected:
	FQuat Rotation;
	FVector Translation;
	FVector Scale3D;
};
