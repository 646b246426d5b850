// The bodies of the fuzz targets, shared by the libFuzzer programs (one *Fuzzer.cpp each) and by
// the GoogleTest that replays every saved crash input (Tests/ZnUtilsTools/FuzzRegressionTests.cpp),
// so a regression input runs exactly the code that once failed.
//
// Each target feeds the bytes to the decoders and then checks what must hold for any input: no
// crash, no sanitizer report, and records whose per-item arrays agree with their name arrays.
// A broken invariant traps, which both libFuzzer and the test harness report as a failure.
//
// Each target returns how much it decoded (keys, values or numbers; 0 when every path refused
// the text). libFuzzer ignores it; the seed test uses it to prove each seed reaches the decoders.
// The input layouts are in ZnFuzzInput.h.
#pragma once

#include "ZnFuzzInput.h"

#include "ZnDM_BpFuncLib.h"
#include "ZnBodyData.h"
#include "ZnFaceData.h"
#include "ZnQuatCurve.h"
#include "ZnFaceModel.h"
#include "ZnJsonReader.h"
#include "ZnJsonWindowCheck.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

namespace ZnFuzz
{
inline void Require(bool bCondition)
{
	if (!bCondition)
	{
		__builtin_trap();
	}
}

// The mode byte picks how the rest becomes an engine string: as UTF-8 text (the way texts arrive
// from the network) or as raw UTF-16 code units (reaching lone surrogates and NULs directly).
inline FString ToText(const uint8_t* Data, size_t Size)
{
	if (Size == 0)
	{
		return FString();
	}
	const bool bRawUtf16 = ZnFuzzInput::IsRawUtf16(Data[0]);
	++Data;
	--Size;
	if (bRawUtf16)
	{
		TArray<TCHAR> Units;
		for (size_t Index = 0; Index + 1 < Size; Index += 2)
		{
			TCHAR Unit = static_cast<TCHAR>(Data[Index] | (Data[Index + 1] << 8));
			Units.Add(Unit);
		}
		return FString(Units.Num(), Units.GetData());
	}
	const FUTF8ToTCHAR Converted(reinterpret_cast<const char*>(Data), static_cast<int32>(Size));
	return FString(Converted.Length(), Converted.Get());
}

/** Keys of every bone curve and of the root position. */
inline int32 CheckBody(const FZnBodyData& Body)
{
	// Item i of every per-bone array belongs to name i.
	Require(Body.BoneNames.Num() == Body.BoneFrames.Num());
	Require(Body.BoneNames.Num() == Body.BoneCurves.Num());
	for (const FZnQuatCurve& Curve : Body.BoneCurves)
	{
		// Sampling anywhere, including outside the keys, must be safe.
		if (Curve.Keys.Num() > 0)
		{
			Curve.Evaluate(Curve.Keys[0].Time, 0.0001f);
			Curve.Evaluate(Curve.Keys[Curve.Keys.Num() - 1].Time * 0.5f, 0.0001f);
			Curve.Evaluate(-1.0f, 0.1f);
		}
	}
	int32 Keys = Body.RootPositionCurve.GetNumKeys();
	for (const FZnQuatCurve& Curve : Body.BoneCurves)
	{
		Keys += Curve.Keys.Num();
	}
	return Keys;
}

/** Keys of every face curve. */
inline int32 CheckFace(const FZnFaceData& Face)
{
	Require(Face.CurveFrames.Num() == Face.Curves.Num());
	Require(Face.CurveNames.Num() == 0 || Face.CurveNames.Num() == Face.Curves.Num());
	int32 Keys = 0;
	for (const FFloatCurve& Curve : Face.Curves)
	{
		Keys += Curve.FloatCurve.GetNumKeys();
	}
	return Keys;
}

inline TArray<FString> BodyBoneList()
{
	TArray<FString> Bones;
	Bones.Add(FString(TEXT("Hips")));
	Bones.Add(FString(TEXT("Spine")));
	Bones.Add(FString(TEXT("hips")));
	Bones.Add(FString(TEXT("LeftHand")));
	return Bones;
}

// Version 1 body text, both entry points.
inline int32 BodyJson(const uint8_t* Data, size_t Size)
{
	const FString Text = ToText(Data, Size);
	FZnBodyData Body;
	UZnDM_BpFuncLib::ParseJsonToBodydata(Text, Body);
	const int32 Keys = CheckBody(Body);
	for (int32 Bone = 0; Bone < Body.BoneNames.Num(); ++Bone)
	{
		// Frames and keys come from the same rotations, in rising time order.
		Require(Body.BoneFrames[Bone].Num() == Body.BoneCurves[Bone].Keys.Num());
	}
	FZnBodyData Recommended;
	float TotalTime = -1.0f;
	UZnDM_BpFuncLib::ParseJsonToBodydataRecommend(Text, Recommended, TotalTime);
	const int32 RecommendedKeys = CheckBody(Recommended);
	Require(Recommended.BoneNames.Num() == Body.BoneNames.Num());
	return Keys + RecommendedKeys;
}

// Version 2 body frames: the whole input as one response array and as one streamed frame.
inline int32 BodyJsonV2(const uint8_t* Data, size_t Size)
{
	const FString Text = ToText(Data, Size);
	FZnBodyData Body;
	float TotalTime = 0.0f;
	UZnDM_BpFuncLib::ParseJsonToBodydataV2Response(Text, BodyBoneList(), Body, TotalTime);
	const int32 Keys = CheckBody(Body);

	UZnDM_BpFuncLib::BeginParseJsonToBodydataV2();
	UZnDM_BpFuncLib::ParseJsonToBodydataV2(Text, BodyBoneList());
	UZnDM_BpFuncLib::ParseJsonToBodydataV2(Text, BodyBoneList());
	FZnBodyData Streamed;
	UZnDM_BpFuncLib::EndParseJsonToBodydataV2(Streamed, TotalTime);
	return Keys + CheckBody(Streamed);
}

// Version 1 face text, both entry points.
inline int32 FaceJson(const uint8_t* Data, size_t Size)
{
	const FString Text = ToText(Data, Size);
	FZnFaceData Face;
	Face.totalTime = -7.0f;
	UZnDM_BpFuncLib::ParseJsonToFacedata(Text, Face);
	const int32 Keys = CheckFace(Face);
	// The plain reading over the tree reader gets the same verdict and, on a text it reads, the
	// same weights, keys and length.
	FZnFaceData Model;
	if (ZnFaceModel::Decode(Text, Model))
	{
		Require(ZnFaceModel::Difference(Face, Model).empty());
	}
	else
	{
		Require(Face.totalTime == -7.0f && Face.CurveFrames.Num() == 0);
	}
	for (const TArray<float>& Frames : Face.CurveFrames)
	{
		for (float Weight : Frames)
		{
			// Percent weights are clamped into 0..1, NaN included.
			Require(Weight >= 0.0f && Weight <= 1.0f);
		}
	}
	FZnFaceData Recommended;
	float TotalTime = -1.0f;
	UZnDM_BpFuncLib::ParseJsonToFacedataRecommend(Text, Recommended, TotalTime);
	return Keys + CheckFace(Recommended);
}

// Version 2 face frames (response and stream) and control-rig curves.
inline int32 FaceJsonV2(const uint8_t* Data, size_t Size)
{
	const FString Text = ToText(Data, Size);
	FZnFaceData Face;
	float TotalTime = 0.0f;
	UZnDM_BpFuncLib::ParseJsonToFacedataV2Response(Text, Face, TotalTime);
	int32 Keys = CheckFace(Face);

	UZnDM_BpFuncLib::BeginParseJsonToFacedataV2();
	UZnDM_BpFuncLib::ParseJsonToFacedataV2(Text);
	FZnFaceData Streamed;
	UZnDM_BpFuncLib::EndParseJsonToFacedataV2(Streamed, TotalTime);
	Keys += CheckFace(Streamed);

	FZnFaceData Rig;
	UZnDM_BpFuncLib::ParseJsonToFaceControlRigData(Text, Rig);
	return Keys + CheckFace(Rig);
}
// Walks every value the reader produced through the accessors scripts' parsers use; returns how
// many values it visited.
inline int32 WalkJson(const FZnJsonValue& Value, int32 Depth)
{
	int32 Visited = 1;
	Require(Depth < 100000);
	switch (Value.GetType())
	{
		case EZnJsonType::Array:
		{
			const FZnJsonArray Array = Value.AsArray();
			int32 Count = 0;
			for (const FZnJsonValue Element : Array)
			{
				Visited += WalkJson(Element, Depth + 1);
				++Count;
			}
			Require(Count == Array.Num());
			if (Count > 0)
			{
				Require(Array.GetValue(Count - 1).IsValid());
			}
			Require(!Array.GetValue(Count).IsValid());
			break;
		}
		case EZnJsonType::Object:
		{
			const FZnJsonObject Object = Value.AsObject();
			for (const FZnJsonField Field : Object)
			{
				// Lookup by the member's own name finds a member (the last one of that name).
				Require(Object.GetField(Field.Key).IsValid());
				Object.GetNumberField(Field.Key);
				Object.GetStringField(Field.Key);
				uint64 Unsigned = 0;
				Object.TryGetNumberField(Field.Key, Unsigned);
				int32 Signed = 0;
				Object.TryGetNumberField(Field.Key, Signed);
				Visited += WalkJson(Field.Value, Depth + 1);
			}
			break;
		}
		case EZnJsonType::String:
		{
			const FString Text = Value.AsString();
			Require(Value.AsUtf8().size() == 0 || Text.Len() > 0);
			break;
		}
		case EZnJsonType::Number:
		{
			float Single = 0.0f;
			Value.TryGetNumber(Single);
			int64 Wide = 0;
			Value.TryGetNumber(Wide);
			uint32 Narrow = 0;
			Value.TryGetNumber(Narrow);
			break;
		}
		default:
			Require(!Value.IsNumber() && !Value.IsArray() && !Value.IsObject());
			break;
	}
	return Visited;
}

// The JSON reader on its own: both entry points, then a walk over everything it parsed.
// The UTF-8 entry reads the bytes after the mode byte whatever the mode; the engine-string entry
// reads them as the mode says. Returns the values visited through the engine-string entry.
inline int32 JsonReader(const uint8_t* Data, size_t Size)
{
	FZnJsonReader Reader;
	if (Size > 0 && Reader.ParseUtf8(reinterpret_cast<const char*>(Data + 1), static_cast<int64>(Size - 1)))
	{
		Require(Reader.GetRoot().IsValid());
		WalkJson(Reader.GetRoot(), 0);
	}
	const FString Text = ToText(Data, Size);
	int32 Visited = 0;
	if (Reader.Parse(Text))
	{
		Visited = WalkJson(Reader.GetRoot(), 0);
	}
	FZnJsonObject Object;
	Reader.ParseObject(Text, Object);
	FZnJsonArray Array;
	Reader.ParseArray(Text, Array);
	return Visited;
}
// Windows change nothing: the first byte picks a window size (0: the size the reader picks
// itself), and the text read through windows of that size must get a whole parse's verdict and,
// when accepted, its values. Returns 1 when the windows read a container, 0 otherwise.
inline int32 JsonWindowReader(const uint8_t* Data, size_t Size)
{
	if (Size == 0)
	{
		return 0;
	}
	const size_t WindowBytes = Data[0];
	const FString Text = ToText(Data + 1, Size - 1);
	bool bReadContainer = false;
	Require(ZnJsonWindowCheck::CompareWithWholeParse(Text, WindowBytes, &bReadContainer).empty());
	return bReadContainer ? 1 : 0;
}

// Whatever a tight number array read accepts, a full parse of the array it read accepts too and
// reads to the same bits. Returns how many numbers the tight read took.
inline int32 TightNumbers(const uint8_t* Data, size_t Size)
{
	std::unique_ptr<char[]> Text(new char[Size + simdjson::SIMDJSON_PADDING]());
	std::memcpy(Text.get(), Data, Size);
	double Numbers[ZnJson::MaxPlainNumbers];
	int32 Count = -1;
	const char* End = ZnJson::ReadTightNumbers(Text.get(), Numbers, ZnJson::MaxPlainNumbers, Count);
	if (End == nullptr)
	{
		return 0;
	}
	Require(End > Text.get() && End <= Text.get() + Size && Count >= 0 && Count <= ZnJson::MaxPlainNumbers);
	simdjson::dom::parser Parser;
	simdjson::dom::array Array;
	Require(Parser.parse(Text.get(), size_t(End - Text.get()), false).get_array().get(Array) == simdjson::SUCCESS);
	Require(Array.size() == size_t(Count));
	int32 Index = 0;
	for (simdjson::dom::element Element : Array)
	{
		double Expected = 0.0;
		Require(Element.get_double().get(Expected) == simdjson::SUCCESS);
		// The tree reader stores "-0" as the integer 0; only there may the sign differ.
		Require(
			std::memcmp(&Expected, &Numbers[Index], sizeof(double)) == 0 || (Expected == 0.0 && Numbers[Index] == 0.0));
		++Index;
	}
	return Count;
}

} // namespace ZnFuzz
