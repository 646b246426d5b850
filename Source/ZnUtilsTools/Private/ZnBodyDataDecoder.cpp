#include "ZnBodyDataDecoder.h"

#include "ZnJsonReader.h"
#include "ZnMotionDecoding.h"

namespace
{
// One pass over a small {"x":..,"y":..,"z":..,"w":..} object. Names match without regard to case
// and a repeated name overrides the earlier one, like every other member lookup; a missing or
// non-number member reads 0.
template <int32 Count>
void ReadAxes(const FZnJsonObject& Object, float (&OutAxes)[Count])
{
	FZnJsonValue Found[Count];
	for (FZnJsonField Field : Object)
	{
		if (Field.Key.size() != 1)
		{
			continue;
		}
		// Lower-cases letters; no other character maps onto x, y, z or w.
		const char Axis = char(Field.Key[0] | 0x20);
		const int32 Index = Axis == 'x' ? 0 : Axis == 'y' ? 1 : Axis == 'z' ? 2 : Axis == 'w' ? 3 : -1;
		if (Index >= 0 && Index < Count)
		{
			Found[Index] = Field.Value;
		}
	}
	for (int32 Index = 0; Index < Count; ++Index)
	{
		OutAxes[Index] = float(Found[Index].AsNumber());
	}
}
} // namespace

bool FZnBodyDataDecoder::Decode(const FString& JsonStr, FZnBodyData& OutBodyData, bool bSetRootStartPosition)
{
	if (JsonStr.IsEmpty())
	{
		return false;
	}
	FZnJsonReader Reader;
	return Reader.Parse(JsonStr) && DecodeRoot(Reader.GetRoot(), OutBodyData, bSetRootStartPosition);
}

bool FZnBodyDataDecoder::DecodeUtf8(
	const char* Utf8, int64 Length, FZnBodyData& OutBodyData, bool bSetRootStartPosition)
{
	FZnJsonReader Reader;
	return Reader.ParseUtf8(Utf8, Length) && DecodeRoot(Reader.GetRoot(), OutBodyData, bSetRootStartPosition);
}

bool FZnBodyDataDecoder::DecodeRoot(const FZnJsonValue& RootValue, FZnBodyData& OutBodyData, bool bSetRootStartPosition)
{
	FZnJsonObject Root;
	if (!RootValue.TryGetObject(Root))
	{
		return false;
	}
	// The root position comes last in the record but is checked first: a clip without it is
	// rejected before any work is done.
	FZnJsonObject Hips;
	if (!Root.TryGetObjectField("Hips", Hips))
	{
		return false;
	}

	FZnBodyData Record;
	Record.totalTime = float(Root.GetNumberField("totalTime"));

	const FZnJsonArray Curves = Root.GetArrayField("curves");
	Record.BoneNames.Reserve(Curves.Num());
	Record.BoneFrames.Reserve(Curves.Num());
	Record.BoneCurves.Reserve(Curves.Num());
	for (FZnJsonValue CurveValue : Curves)
	{
		FZnJsonObject Bone;
		if (!CurveValue.TryGetObject(Bone))
		{
			return false;
		}
		FString Name;
		FZnJsonArray Rotas;
		for (FZnJsonField Field : Bone)
		{
			// Later duplicates win, as with any member lookup; "path" is not needed.
			if (ZnJson::EqualsIgnoreCase(Field.Key, "name"))
			{
				Name = Field.Value.AsString();
			}
			else if (ZnJson::EqualsIgnoreCase(Field.Key, "rotas"))
			{
				Rotas = Field.Value.AsArray();
			}
		}

		const int32 FrameCount = Rotas.Num();
		TArray<FQuat>& Frames = Record.BoneFrames[Record.BoneFrames.AddDefaulted()];
		FZnQuatCurve& Curve = Record.BoneCurves[Record.BoneCurves.AddDefaulted()];
		Record.BoneNames.Add(MoveTemp(Name));
		Frames.Reserve(FrameCount);
		Curve.Keys.Reserve(FrameCount);
		uint64 FrameNumber = 0;
		for (FZnJsonValue RotationValue : Rotas)
		{
			FZnJsonObject Rotation;
			if (!RotationValue.TryGetObject(Rotation))
			{
				return false;
			}
			float Axes[4];
			ReadAxes(Rotation, Axes);
			const FQuat Value = ZnMotion::ConvertRotation(Axes[0], Axes[1], Axes[2], Axes[3]);
			Frames.Add(Value);
			// Rising frame times: this appends in constant time.
			Curve.UpdateOrAddKey(ZnMotion::FrameTime(FrameNumber++), Value, ZnMotion::KeyTimeTolerance);
		}
	}

	const FZnJsonArray Positions = Hips.GetArrayField("pos");
	for (FRichCurve& Channel : Record.RootPositionCurve.FloatCurves)
	{
		Channel.Keys.Reserve(Positions.Num());
	}
	uint64 FrameNumber = 0;
	for (FZnJsonValue PositionValue : Positions)
	{
		FZnJsonObject Position;
		if (!PositionValue.TryGetObject(Position))
		{
			return false;
		}
		float Axes[3];
		ReadAxes(Position, Axes);
		const FVector Value = ZnMotion::ConvertPosition(Axes[0], Axes[1], Axes[2]);
		if (FrameNumber == 0 && bSetRootStartPosition)
		{
			Record.RootStartPosition = Value;
		}
		Record.RootPositionCurve.UpdateOrAddKey(Value, ZnMotion::FrameTime(FrameNumber++));
	}

	OutBodyData = MoveTemp(Record);
	return true;
}
