// Shared by the decoder tests: texts from narrow literals and field-by-field record comparison.
#pragma once

#include "ZnBodyData.h"
#include "ZnFaceData.h"
#include "Misc/DateTime.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace ZnDecodeTest
{
// An engine string from ASCII or UTF-8 text.
inline FString Text(const std::string& Utf8)
{
	const FUTF8ToTCHAR Converted(Utf8.data(), int32(Utf8.size()));
	return FString(Converted.Length(), Converted.Get());
}

inline bool SameBits(float A, float B)
{
	return std::memcmp(&A, &B, sizeof(float)) == 0;
}

inline bool SameBits(double A, double B)
{
	return std::memcmp(&A, &B, sizeof(double)) == 0;
}

inline bool SameQuat(const FQuat& A, const FQuat& B)
{
	return SameBits(A.X, B.X) && SameBits(A.Y, B.Y) && SameBits(A.Z, B.Z) && SameBits(A.W, B.W);
}

inline bool SameRichCurve(const FRichCurve& A, const FRichCurve& B)
{
	if (A.Keys.Num() != B.Keys.Num())
	{
		return false;
	}
	for (int32 Index = 0; Index < A.Keys.Num(); ++Index)
	{
		if (!SameBits(A.Keys[Index].Time, B.Keys[Index].Time) || !SameBits(A.Keys[Index].Value, B.Keys[Index].Value))
		{
			return false;
		}
	}
	return true;
}

inline bool SameQuatCurve(const FZnQuatCurve& A, const FZnQuatCurve& B)
{
	if (A.Keys.Num() != B.Keys.Num())
	{
		return false;
	}
	for (int32 Index = 0; Index < A.Keys.Num(); ++Index)
	{
		if (!SameBits(A.Keys[Index].Time, B.Keys[Index].Time) || !SameQuat(A.Keys[Index].Value, B.Keys[Index].Value))
		{
			return false;
		}
	}
	return true;
}

// Every field except id, bit for bit.
inline bool SameBodyContents(const FZnBodyData& A, const FZnBodyData& B)
{
	if (!SameBits(A.totalTime, B.totalTime) || A.BoneNames.Num() != B.BoneNames.Num() ||
		A.BoneFrames.Num() != B.BoneFrames.Num() || A.BoneCurves.Num() != B.BoneCurves.Num())
	{
		return false;
	}
	for (int32 Bone = 0; Bone < A.BoneNames.Num(); ++Bone)
	{
		if (!A.BoneNames[Bone].Equals(B.BoneNames[Bone], ESearchCase::CaseSensitive))
		{
			return false;
		}
	}
	for (int32 Bone = 0; Bone < A.BoneFrames.Num(); ++Bone)
	{
		if (A.BoneFrames[Bone].Num() != B.BoneFrames[Bone].Num())
		{
			return false;
		}
		for (int32 Frame = 0; Frame < A.BoneFrames[Bone].Num(); ++Frame)
		{
			if (!SameQuat(A.BoneFrames[Bone][Frame], B.BoneFrames[Bone][Frame]))
			{
				return false;
			}
		}
	}
	for (int32 Bone = 0; Bone < A.BoneCurves.Num(); ++Bone)
	{
		if (!SameQuatCurve(A.BoneCurves[Bone], B.BoneCurves[Bone]))
		{
			return false;
		}
	}
	for (int32 Channel = 0; Channel < 3; ++Channel)
	{
		if (!SameRichCurve(A.RootPositionCurve.FloatCurves[Channel], B.RootPositionCurve.FloatCurves[Channel]))
		{
			return false;
		}
	}
	return SameBits(A.RootStartPosition.X, B.RootStartPosition.X) &&
		SameBits(A.RootStartPosition.Y, B.RootStartPosition.Y) &&
		SameBits(A.RootStartPosition.Z, B.RootStartPosition.Z);
}

inline bool SameBody(const FZnBodyData& A, const FZnBodyData& B)
{
	return A.id == B.id && SameBodyContents(A, B);
}

// Every field except id, bit for bit.
inline bool SameFaceContents(const FZnFaceData& A, const FZnFaceData& B)
{
	if (!SameBits(A.totalTime, B.totalTime) || A.CurveNames.Num() != B.CurveNames.Num() ||
		A.CurveFrames.Num() != B.CurveFrames.Num() || A.Curves.Num() != B.Curves.Num())
	{
		return false;
	}
	for (int32 Curve = 0; Curve < A.CurveNames.Num(); ++Curve)
	{
		if (!A.CurveNames[Curve].Equals(B.CurveNames[Curve], ESearchCase::CaseSensitive))
		{
			return false;
		}
	}
	for (int32 Curve = 0; Curve < A.CurveFrames.Num(); ++Curve)
	{
		if (A.CurveFrames[Curve].Num() != B.CurveFrames[Curve].Num())
		{
			return false;
		}
		for (int32 Frame = 0; Frame < A.CurveFrames[Curve].Num(); ++Frame)
		{
			if (!SameBits(A.CurveFrames[Curve][Frame], B.CurveFrames[Curve][Frame]))
			{
				return false;
			}
		}
	}
	for (int32 Curve = 0; Curve < A.Curves.Num(); ++Curve)
	{
		if (!SameRichCurve(A.Curves[Curve].FloatCurve, B.Curves[Curve].FloatCurve))
		{
			return false;
		}
	}
	return true;
}

inline bool SameFace(const FZnFaceData& A, const FZnFaceData& B)
{
	return A.id == B.id && SameFaceContents(A, B);
}

// A record that no decoder would produce, to prove that a failed decode left it alone.
inline FZnBodyData SentinelBody()
{
	FZnBodyData Body;
	Body.id = 4242;
	Body.totalTime = 77.5f;
	Body.BoneNames.Add(TEXT("Sentinel"));
	Body.BoneFrames[Body.BoneFrames.AddDefaulted()].Add(FQuat(0.5, 0.5, 0.5, 0.5));
	Body.BoneCurves[Body.BoneCurves.AddDefaulted()].UpdateOrAddKey(3.0f, FQuat(0.5, 0.5, 0.5, 0.5), 0.0001f);
	Body.RootPositionCurve.UpdateOrAddKey(FVector(1.0, 2.0, 3.0), 3.0f);
	Body.RootStartPosition = FVector(7.0, 8.0, 9.0);
	return Body;
}

inline FZnFaceData SentinelFace()
{
	FZnFaceData Face;
	Face.id = 4242;
	Face.totalTime = 77.5f;
	Face.CurveNames.Add(TEXT("Sentinel"));
	Face.CurveFrames[Face.CurveFrames.AddDefaulted()].Add(0.25f);
	Face.Curves[Face.Curves.AddDefaulted()].UpdateOrAddKey(0.25f, 3.0f);
	return Face;
}
} // namespace ZnDecodeTest
