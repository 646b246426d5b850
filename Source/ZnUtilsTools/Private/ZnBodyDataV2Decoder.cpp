#include "ZnBodyDataV2Decoder.h"

#include "ZnJsonReader.h"
#include "ZnMotionDecoding.h"

namespace
{
inline char LowerAscii(char Char)
{
	return (Char >= 'A' && Char <= 'Z') ? char(Char + 32) : Char;
}

inline uint32 HashLowered(std::string_view Key)
{
	uint32 Hash = 2166136261u;
	for (char Char : Key)
	{
		Hash = (Hash ^ uint8(LowerAscii(Char))) * 16777619u;
	}
	return Hash;
}

std::string LoweredUtf8(const FString& Name)
{
	FTCHARToUTF8 Converted(*Name, Name.Len());
	std::string Result(Converted.Get(), size_t(Converted.Length()));
	for (char& Char : Result)
	{
		Char = LowerAscii(Char);
	}
	return Result;
}
} // namespace

void FZnBodyDataV2Decoder::Reset()
{
	BoneNames.Empty();
	BoneFrames.Empty();
	BoneCurves.Empty();
	RootCurve = FVectorCurve();
	LargestTime = 0.0;
	bSlotsValid = false;
}

void FZnBodyDataV2Decoder::PrepareLookup(const TArray<FString>& Bones)
{
	bool bSameList = bLookupValid && LookupBones.Num() == Bones.Num();
	for (int32 Index = 0; bSameList && Index < Bones.Num(); ++Index)
	{
		bSameList = LookupBones[Index].Equals(Bones[Index], ESearchCase::CaseSensitive);
	}
	if (bSameList)
	{
		return;
	}
	LookupBones = Bones;
	LookupKeys.Reset();
	LookupKeyOfBone.Reset();
	for (const FString& Bone : Bones)
	{
		std::string Key = LoweredUtf8(Bone);
		int32 KeyIndex = LookupKeys.IndexOfByKey(Key);
		if (KeyIndex == INDEX_NONE)
		{
			KeyIndex = LookupKeys.Add(MoveTemp(Key));
		}
		LookupKeyOfBone.Add(KeyIndex);
	}
	uint32 Capacity = 4;
	while (Capacity < uint32(LookupKeys.Num()) * 2)
	{
		Capacity *= 2;
	}
	LookupMask = Capacity - 1;
	LookupTable.Init(INDEX_NONE, int32(Capacity));
	for (int32 KeyIndex = 0; KeyIndex < LookupKeys.Num(); ++KeyIndex)
	{
		uint32 Slot = HashLowered(LookupKeys[KeyIndex]) & LookupMask;
		while (LookupTable[int32(Slot)] != INDEX_NONE)
		{
			Slot = (Slot + 1) & LookupMask;
		}
		LookupTable[int32(Slot)] = KeyIndex;
	}
	FoundMembers.SetNum(LookupKeys.Num());
	bLookupValid = true;
	bSlotsValid = false;
}

int32 FZnBodyDataV2Decoder::FindLookupKey(std::string_view Key) const
{
	uint32 Slot = HashLowered(Key) & LookupMask;
	for (;;)
	{
		const int32 KeyIndex = LookupTable[int32(Slot)];
		if (KeyIndex == INDEX_NONE)
		{
			return INDEX_NONE;
		}
		const std::string& Candidate = LookupKeys[KeyIndex];
		if (ZnJson::EqualsIgnoreCase(Key, std::string_view(Candidate)))
		{
			return KeyIndex;
		}
		Slot = (Slot + 1) & LookupMask;
	}
}

void FZnBodyDataV2Decoder::ResolveSlots(const TArray<FString>& Bones)
{
	if (bSlotsValid)
	{
		return;
	}
	SlotOfBone.Reset();
	for (const FString& Bone : Bones)
	{
		int32 Slot = INDEX_NONE;
		for (int32 Index = 0; Index < BoneNames.Num(); ++Index)
		{
			if (BoneNames[Index].Equals(Bone, ESearchCase::IgnoreCase))
			{
				Slot = Index;
				break;
			}
		}
		if (Slot == INDEX_NONE)
		{
			Slot = BoneNames.Add(Bone);
			BoneFrames.AddDefaulted();
			BoneCurves.AddDefaulted();
		}
		SlotOfBone.Add(Slot);
	}
	bSlotsValid = true;
}

bool FZnBodyDataV2Decoder::AddFrame(const FZnJsonValue& FrameValue, const TArray<FString>& Bones)
{
	FZnJsonObject Frame;
	uint64 FrameIndex = 0;
	if (!FrameValue.TryGetObject(Frame) || !Frame.TryGetNumberField("frameIndex", FrameIndex))
	{
		return false;
	}
	// Everything is checked before anything is stored, so a malformed frame leaves no trace.
	FZnJsonArray HipsPosition;
	FZnJsonObject Rotations;
	if (!Frame.GetObjectField("pos").TryGetArrayField("Hips", HipsPosition) || HipsPosition.Num() < 3 ||
		!Frame.TryGetObjectField("rot", Rotations))
	{
		return false;
	}
	PrepareLookup(Bones);
	for (FZnJsonValue& Member : FoundMembers)
	{
		Member = FZnJsonValue();
	}
	if (LookupKeys.Num() > 0)
	{
		for (FZnJsonField Field : Rotations)
		{
			const int32 KeyIndex = FindLookupKey(Field.Key);
			if (KeyIndex != INDEX_NONE)
			{
				// A later duplicate member replaces the earlier one.
				FoundMembers[KeyIndex] = Field.Value;
			}
		}
	}
	for (const FZnJsonValue& Member : FoundMembers)
	{
		FZnJsonArray Rotation;
		if (!Member.TryGetArray(Rotation) || Rotation.Num() < 4)
		{
			return false;
		}
	}

	const double Time = ZnMotion::StreamedFrameTime(FrameIndex);
	const float KeyTime = float(Time);

	double Position[3];
	ZnMotion::ReadLeadingNumbers(HipsPosition, Position);
	ZnMotion::AddCurveKey(
		RootCurve, ZnMotion::ConvertPosition(float(Position[0]), float(Position[1]), float(Position[2])), KeyTime);

	ResolveSlots(Bones);
	for (int32 BoneIndex = 0; BoneIndex < Bones.Num(); ++BoneIndex)
	{
		double Rotation[4];
		ZnMotion::ReadLeadingNumbers(FoundMembers[LookupKeyOfBone[BoneIndex]].AsArray(), Rotation);
		const FQuat Value =
			ZnMotion::ConvertRotation(float(Rotation[0]), float(Rotation[1]), float(Rotation[2]), float(Rotation[3]));
		const int32 Slot = SlotOfBone[BoneIndex];
		BoneCurves[Slot].UpdateOrAddKey(KeyTime, Value, ZnMotion::KeyTimeTolerance);
		LargestTime = LargestTime < Time ? Time : LargestTime;
		BoneFrames[Slot].Add(Value);
	}
	return true;
}

bool FZnBodyDataV2Decoder::AddFrameText(const FString& JsonStr, const TArray<FString>& Bones)
{
	if (JsonStr.IsEmpty())
	{
		return false;
	}
	FZnJsonReader Reader;
	return Reader.Parse(JsonStr) && Reader.GetRoot().IsObject() && AddFrame(Reader.GetRoot(), Bones);
}

void FZnBodyDataV2Decoder::Assemble(FZnBodyData& OutBodyData, float& OutTotalTime) const
{
	FZnBodyData Record;
	Record.BoneNames = BoneNames;
	Record.BoneFrames = BoneFrames;
	Record.BoneCurves = BoneCurves;
	Record.RootPositionCurve = RootCurve;
	Record.totalTime = float(LargestTime);
	OutBodyData = MoveTemp(Record);
	OutTotalTime = float(LargestTime);
}

void FZnBodyDataV2Decoder::DecodeResponse(
	const FString& JsonStr, const TArray<FString>& Bones, FZnBodyData& OutBodyData, float& OutTotalTime)
{
	if (JsonStr.IsEmpty())
	{
		return;
	}
	FZnBodyDataV2Decoder State;
	FZnJsonReader Reader;
	FZnJsonArray Frames;
	if (Reader.ParseArray(JsonStr, Frames))
	{
		for (FZnJsonValue Frame : Frames)
		{
			State.AddFrame(Frame, Bones);
		}
	}
	// The private state dies here, so its arrays are handed over instead of copied.
	FZnBodyData Record;
	Record.BoneNames = MoveTemp(State.BoneNames);
	Record.BoneFrames = MoveTemp(State.BoneFrames);
	Record.BoneCurves = MoveTemp(State.BoneCurves);
	Record.RootPositionCurve = MoveTemp(State.RootCurve);
	Record.totalTime = float(State.LargestTime);
	OutBodyData = MoveTemp(Record);
	OutTotalTime = float(State.LargestTime);
}

FZnBodyDataV2Decoder& FZnBodyDataV2Decoder::GetStream()
{
	static FZnBodyDataV2Decoder Stream;
	return Stream;
}
