// Decodes the service's frame-by-frame body format (V2): each frame object carries its own
// 1-based "frameIndex", the root position under "pos"."Hips" and one rotation per bone under "rot".
#pragma once

#include "CoreMinimal.h"
#include "ZnBodyData.h"
#include "ZnJsonReader.h"

#include <string>

// An animation being accumulated from V2 frames. Bones are kept in order of first appearance;
// names are compared without regard to case. Not thread-safe: drive one instance from one thread.
class FZnBodyDataV2Decoder
{
public:
	// Forgets every frame.
	void Reset();

	// Adds one frame object, reading the bones named in Bones (a name listed twice, in any case,
	// is read twice). Returns false and changes nothing when the frame has no usable "frameIndex"
	// (missing, negative, not a number) or lacks what every frame has: a "pos" object holding a
	// "Hips" array of 3 numbers, and a "rot" object holding an array of 4 numbers for every bone
	// asked for. Frames may come in any order; keys are placed by time, frame lists by arrival.
	bool AddFrame(const FZnJsonValue& Frame, const TArray<FString>& Bones);

	// Parses one frame text and adds it; false when the text is empty or not a JSON object.
	bool AddFrameText(const FString& JsonStr, const TArray<FString>& Bones);

	// Writes the animation so far as a new record (new id; RootStartPosition zero) and its length:
	// the largest frame time seen. The accumulated frames stay.
	void Assemble(FZnBodyData& OutBodyData, float& OutTotalTime) const;

	// One-shot decode of a JSON array of frames with a state of its own. Empty text: outputs
	// untouched. Text that is not a JSON array: an empty record and a length of 0.
	static void DecodeResponse(
		const FString& JsonStr, const TArray<FString>& Bones, FZnBodyData& OutBodyData, float& OutTotalTime);

	// The module-wide stream behind the script functions (game thread only, one stream at a time).
	static FZnBodyDataV2Decoder& GetStream();

private:
	// Maps each entry of a bone list to a distinct lower-case member name, and those to a small
	// hash table, so a frame's "rot" object is matched in one pass without allocating.
	void PrepareLookup(const TArray<FString>& Bones);
	int32 FindLookupKey(std::string_view Key) const;
	void ResolveSlots(const TArray<FString>& Bones);

	TArray<FString> BoneNames;
	TArray<TArray<FQuat>> BoneFrames;
	TArray<FZnQuatCurve> BoneCurves;
	FVectorCurve RootCurve;
	double LargestTime = 0.0;

	// Lookup for the bone list last used (rebuilt when the list changes).
	TArray<FString> LookupBones;
	TArray<std::string> LookupKeys;
	TArray<int32> LookupKeyOfBone;
	TArray<int32> LookupTable;
	uint32 LookupMask = 0;
	bool bLookupValid = false;
	// Per entry of the bone list, its index in BoneNames; valid until Reset or a new list.
	TArray<int32> SlotOfBone;
	bool bSlotsValid = false;
	// Per lookup key, the member found in the current frame.
	TArray<FZnJsonValue> FoundMembers;
};
