#include "ZnRecordCompare.h"

#include "ZnQuatCurve.h"

#include <cstring>

namespace
{
// Bitwise, so that -0 and 0 or two NaNs with different payloads count as different.
template <typename T>
bool SameBits(T A, T B)
{
	return std::memcmp(&A, &B, sizeof(T)) == 0;
}

bool SameQuat(const FQuat& A, const FQuat& B)
{
	return SameBits(A.X, B.X) && SameBits(A.Y, B.Y) && SameBits(A.Z, B.Z) && SameBits(A.W, B.W);
}

bool SameRichCurve(const FRichCurve& A, const FRichCurve& B)
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

std::string Describe(const char* What, int32 Index)
{
	return std::string(What) + " differs at index " + std::to_string(Index);
}
} // namespace

bool ZnRecordCompare::SameBody(const FZnBodyData& A, const FZnBodyData& B, std::string& OutWhy)
{
	if (!SameBits(A.totalTime, B.totalTime))
	{
		OutWhy = "totalTime differs";
		return false;
	}
	if (A.BoneNames.Num() != B.BoneNames.Num() || A.BoneFrames.Num() != B.BoneFrames.Num() ||
		A.BoneCurves.Num() != B.BoneCurves.Num())
	{
		OutWhy = "bone counts differ";
		return false;
	}
	for (int32 Bone = 0; Bone < A.BoneNames.Num(); ++Bone)
	{
		if (!A.BoneNames[Bone].Equals(B.BoneNames[Bone]))
		{
			OutWhy = Describe("BoneNames", Bone);
			return false;
		}
	}
	for (int32 Bone = 0; Bone < A.BoneFrames.Num(); ++Bone)
	{
		const TArray<FQuat>& FramesA = A.BoneFrames[Bone];
		const TArray<FQuat>& FramesB = B.BoneFrames[Bone];
		if (FramesA.Num() != FramesB.Num())
		{
			OutWhy = Describe("BoneFrames length", Bone);
			return false;
		}
		for (int32 Frame = 0; Frame < FramesA.Num(); ++Frame)
		{
			if (!SameQuat(FramesA[Frame], FramesB[Frame]))
			{
				OutWhy = Describe("BoneFrames", Bone) + " frame " + std::to_string(Frame);
				return false;
			}
		}
	}
	for (int32 Bone = 0; Bone < A.BoneCurves.Num(); ++Bone)
	{
		const TArray<FZnQuatCurveKey>& KeysA = A.BoneCurves[Bone].Keys;
		const TArray<FZnQuatCurveKey>& KeysB = B.BoneCurves[Bone].Keys;
		if (KeysA.Num() != KeysB.Num())
		{
			OutWhy = Describe("BoneCurves length", Bone);
			return false;
		}
		for (int32 Key = 0; Key < KeysA.Num(); ++Key)
		{
			if (!SameBits(KeysA[Key].Time, KeysB[Key].Time) || !SameQuat(KeysA[Key].Value, KeysB[Key].Value))
			{
				OutWhy = Describe("BoneCurves", Bone) + " key " + std::to_string(Key);
				return false;
			}
		}
	}
	for (int32 Channel = 0; Channel < 3; ++Channel)
	{
		if (!SameRichCurve(A.RootPositionCurve.FloatCurves[Channel], B.RootPositionCurve.FloatCurves[Channel]))
		{
			OutWhy = Describe("RootPositionCurve channel", Channel);
			return false;
		}
	}
	if (!SameBits(A.RootStartPosition.X, B.RootStartPosition.X) ||
		!SameBits(A.RootStartPosition.Y, B.RootStartPosition.Y) ||
		!SameBits(A.RootStartPosition.Z, B.RootStartPosition.Z))
	{
		OutWhy = "RootStartPosition differs";
		return false;
	}
	return true;
}

bool ZnRecordCompare::SameFace(const FZnFaceData& A, const FZnFaceData& B, std::string& OutWhy)
{
	if (!SameBits(A.totalTime, B.totalTime))
	{
		OutWhy = "totalTime differs";
		return false;
	}
	if (A.CurveNames.Num() != B.CurveNames.Num() || A.CurveFrames.Num() != B.CurveFrames.Num() ||
		A.Curves.Num() != B.Curves.Num())
	{
		OutWhy = "curve counts differ";
		return false;
	}
	for (int32 Curve = 0; Curve < A.CurveNames.Num(); ++Curve)
	{
		if (!A.CurveNames[Curve].Equals(B.CurveNames[Curve]))
		{
			OutWhy = Describe("CurveNames", Curve);
			return false;
		}
	}
	for (int32 Curve = 0; Curve < A.CurveFrames.Num(); ++Curve)
	{
		const TArray<float>& FramesA = A.CurveFrames[Curve];
		const TArray<float>& FramesB = B.CurveFrames[Curve];
		if (FramesA.Num() != FramesB.Num())
		{
			OutWhy = Describe("CurveFrames length", Curve);
			return false;
		}
		for (int32 Frame = 0; Frame < FramesA.Num(); ++Frame)
		{
			if (!SameBits(FramesA[Frame], FramesB[Frame]))
			{
				OutWhy = Describe("CurveFrames", Curve) + " frame " + std::to_string(Frame);
				return false;
			}
		}
	}
	for (int32 Curve = 0; Curve < A.Curves.Num(); ++Curve)
	{
		if (!SameRichCurve(A.Curves[Curve].FloatCurve, B.Curves[Curve].FloatCurve))
		{
			OutWhy = Describe("Curves", Curve);
			return false;
		}
	}
	return true;
}
