#include "ZnBodyDataDecoder.h"

#include "ZnJsonReader.h"
#include "ZnJsonWindowReader.h"
#include "ZnMotionDecoding.h"

// The clip is read in one forward pass, a window at a time. Member lookups follow the same rules as everywhere else
// (names without regard to case, a repeated member replaces the earlier one), so whatever a
// member produced is reset when it appears again. Structural problems that the format never
// produces are remembered and fail the decode at the end, after the whole text has been checked.

namespace
{
using namespace simdjson;

struct FBodyDecodeState
{
	FZnBodyData Record;
	bool bHipsIsObject = false;
	// An element of "curves", "rotas" or "pos" that is not an object.
	bool bCurvesMalformed = false;
	bool bPositionsMalformed = false;
	bool bSetRootStartPosition = true;
	// Frames in the previous bone: bones of one clip share a frame count, so this sizes the next.
	int32 FramesHint = 0;
};

// Index of a one-letter axis member (x, y, z, w in any case), or -1.
inline int32 AxisIndex(std::string_view Key)
{
	if (Key.size() != 1)
	{
		return -1;
	}
	// Lower-cases letters; no other character maps onto x, y, z or w.
	const char Axis = char(Key[0] | 0x20);
	return Axis == 'x' ? 0 : Axis == 'y' ? 1 : Axis == 'z' ? 2 : Axis == 'w' ? 3 : -1;
}

// Reads {"x":..,"y":..,"z":..(,"w":..)} when written plainly; false to have it read the ordinary way.
template <int32 Count>
bool ReadPlainAxes(ondemand::value& Value, float (&OutAxes)[Count])
{
	// Producers write the axes in order, lower case, without whitespace.
	double Tight[4];
	if (ZnJson::ReadTightLetterMembers(Value, Count == 4 ? "xyzw" : "xyz", Tight))
	{
		for (int32 Index = 0; Index < Count; ++Index)
		{
			OutAxes[Index] = float(Tight[Index]);
		}
		return true;
	}
	ZnJson::FPlainMember Members[8];
	const int32 MemberCount = ZnJson::ReadPlainNumberMembers(Value, Members, 8);
	if (MemberCount < 0)
	{
		return false;
	}
	double Axes[4] = {0.0, 0.0, 0.0, 0.0};
	for (int32 Member = 0; Member < MemberCount; ++Member)
	{
		const int32 Index = AxisIndex(Members[Member].GetName());
		if (Index >= 0 && Index < Count)
		{
			Axes[Index] = Members[Member].Number;
		}
	}
	for (int32 Index = 0; Index < Count; ++Index)
	{
		OutAxes[Index] = float(Axes[Index]);
	}
	return true;
}

// Reads {"x":..,"y":..,"z":..(,"w":..)}; missing or non-number members read 0.
template <int32 Count>
bool ReadAxes(ondemand::object& Object, int32 Depth, float (&OutAxes)[Count])
{
	double Axes[4] = {0.0, 0.0, 0.0, 0.0};
	for (simdjson_result<ondemand::field> FieldResult : Object)
	{
		ondemand::field Field;
		std::string_view Key;
		if (std::move(FieldResult).get(Field) != SUCCESS || !ZnJson::ReadKey(Field, Key))
		{
			return false;
		}
		ondemand::value& Value = Field.value();
		const int32 Index = AxisIndex(Key);
		const bool bRead = Index >= 0 && Index < Count ? ZnJson::ReadNumber(Value, Depth + 1, Axes[Index])
													   : ZnJson::SkipValue(Value, Depth + 1);
		if (!bRead)
		{
			return false;
		}
	}
	for (int32 Index = 0; Index < Count; ++Index)
	{
		OutAxes[Index] = float(Axes[Index]);
	}
	return true;
}

bool ReadRotations(ondemand::value& Value, int32 Depth, FBodyDecodeState& State, int32 Bone, bool& bOutMalformed)
{
	bOutMalformed = false;
	TArray<FQuat>& Frames = State.Record.BoneFrames[Bone];
	FZnQuatCurve& Curve = State.Record.BoneCurves[Bone];
	Frames.Reset();
	Curve.Keys.Reset();
	ondemand::json_type Type;
	if (Value.type().get(Type) != SUCCESS)
	{
		return false;
	}
	if (Type != ondemand::json_type::array)
	{
		return ZnJson::SkipValue(Value, Depth);
	}
	ondemand::array Rotations;
	if (Depth >= ZnJson::MaxDepth || Value.get_array().get(Rotations) != SUCCESS)
	{
		return false;
	}
	Frames.Reserve(State.FramesHint);
	Curve.Keys.Reserve(State.FramesHint);
	uint64 FrameNumber = 0;
	for (simdjson_result<ondemand::value> Element : Rotations)
	{
		ondemand::value RotationValue;
		ondemand::object Rotation;
		if (Element.get(RotationValue) != SUCCESS || RotationValue.type().get(Type) != SUCCESS)
		{
			return false;
		}
		if (Type != ondemand::json_type::object)
		{
			bOutMalformed = true;
			if (!ZnJson::SkipValue(RotationValue, Depth + 1))
			{
				return false;
			}
			continue;
		}
		float Axes[4];
		if (!ReadPlainAxes(RotationValue, Axes) &&
			(Depth + 1 >= ZnJson::MaxDepth || RotationValue.get_object().get(Rotation) != SUCCESS ||
				!ReadAxes(Rotation, Depth + 1, Axes)))
		{
			return false;
		}
		const FQuat Q = ZnMotion::ConvertRotation(Axes[0], Axes[1], Axes[2], Axes[3]);
		Frames.Add(Q);
		// Rising frame times: this appends in constant time.
		Curve.UpdateOrAddKey(ZnMotion::FrameTime(FrameNumber++), Q, ZnMotion::KeyTimeTolerance);
	}
	State.FramesHint = Frames.Num();
	return true;
}

bool ReadBone(ondemand::object& Bone, int32 Depth, FBodyDecodeState& State)
{
	const int32 Index = State.Record.BoneNames.Add(FString());
	State.Record.BoneFrames.AddDefaulted();
	State.Record.BoneCurves.AddDefaulted();
	// Only the last "rotas" of a bone counts, malformed or not.
	bool bRotationsMalformed = false;
	for (simdjson_result<ondemand::field> FieldResult : Bone)
	{
		ondemand::field Field;
		std::string_view Key;
		if (std::move(FieldResult).get(Field) != SUCCESS || !ZnJson::ReadKey(Field, Key))
		{
			return false;
		}
		ondemand::value& Value = Field.value();
		if (ZnJson::EqualsIgnoreCase(Key, "name"))
		{
			// A name of another kind reads as the empty string.
			std::string_view Name;
			ondemand::json_type Type;
			if (Value.type().get(Type) != SUCCESS)
			{
				return false;
			}
			if (Type == ondemand::json_type::string)
			{
				if (Value.get_string().get(Name) != SUCCESS)
				{
					return false;
				}
				State.Record.BoneNames[Index] = ZnJson::ToString(Name);
			}
			else
			{
				State.Record.BoneNames[Index].Empty();
				if (!ZnJson::SkipValue(Value, Depth + 1))
				{
					return false;
				}
			}
		}
		else if (ZnJson::EqualsIgnoreCase(Key, "rotas"))
		{
			if (!ReadRotations(Value, Depth + 1, State, Index, bRotationsMalformed))
			{
				return false;
			}
		}
		else if (!ZnJson::SkipValue(Value, Depth + 1))
		{
			return false;
		}
	}
	State.bCurvesMalformed |= bRotationsMalformed;
	return true;
}

// With bContinues the array goes on from the previous window: its bones are added to the ones read.
bool ReadCurves(ondemand::value& Value, int32 Depth, FBodyDecodeState& State, bool bContinues)
{
	if (!bContinues)
	{
		State.Record.BoneNames.Reset();
		State.Record.BoneFrames.Reset();
		State.Record.BoneCurves.Reset();
		State.bCurvesMalformed = false;
	}
	ondemand::json_type Type;
	if (Value.type().get(Type) != SUCCESS)
	{
		return false;
	}
	if (Type != ondemand::json_type::array)
	{
		return ZnJson::SkipValue(Value, Depth);
	}
	ondemand::array Curves;
	if (Depth >= ZnJson::MaxDepth || Value.get_array().get(Curves) != SUCCESS)
	{
		return false;
	}
	for (simdjson_result<ondemand::value> Element : Curves)
	{
		ondemand::value BoneValue;
		if (Element.get(BoneValue) != SUCCESS || BoneValue.type().get(Type) != SUCCESS)
		{
			return false;
		}
		if (Type != ondemand::json_type::object)
		{
			State.bCurvesMalformed = true;
			if (!ZnJson::SkipValue(BoneValue, Depth + 1))
			{
				return false;
			}
			continue;
		}
		ondemand::object Bone;
		if (Depth + 1 >= ZnJson::MaxDepth || BoneValue.get_object().get(Bone) != SUCCESS ||
			!ReadBone(Bone, Depth + 1, State))
		{
			return false;
		}
	}
	return true;
}

bool ReadPositions(ondemand::value& Value, int32 Depth, FBodyDecodeState& State)
{
	FZnBodyData& Record = State.Record;
	Record.RootPositionCurve = FVectorCurve();
	Record.RootStartPosition = FVector(0.0, 0.0, 0.0);
	State.bPositionsMalformed = false;
	ondemand::json_type Type;
	if (Value.type().get(Type) != SUCCESS)
	{
		return false;
	}
	if (Type != ondemand::json_type::array)
	{
		return ZnJson::SkipValue(Value, Depth);
	}
	ondemand::array Positions;
	if (Depth >= ZnJson::MaxDepth || Value.get_array().get(Positions) != SUCCESS)
	{
		return false;
	}
	for (FRichCurve& Channel : Record.RootPositionCurve.FloatCurves)
	{
		Channel.Keys.Reserve(State.FramesHint);
	}
	uint64 FrameNumber = 0;
	for (simdjson_result<ondemand::value> Element : Positions)
	{
		ondemand::value PositionValue;
		if (Element.get(PositionValue) != SUCCESS || PositionValue.type().get(Type) != SUCCESS)
		{
			return false;
		}
		if (Type != ondemand::json_type::object)
		{
			State.bPositionsMalformed = true;
			if (!ZnJson::SkipValue(PositionValue, Depth + 1))
			{
				return false;
			}
			continue;
		}
		ondemand::object Position;
		float Axes[3];
		if (!ReadPlainAxes(PositionValue, Axes) &&
			(Depth + 1 >= ZnJson::MaxDepth || PositionValue.get_object().get(Position) != SUCCESS ||
				!ReadAxes(Position, Depth + 1, Axes)))
		{
			return false;
		}
		const FVector P = ZnMotion::ConvertPosition(Axes[0], Axes[1], Axes[2]);
		if (FrameNumber == 0 && State.bSetRootStartPosition)
		{
			Record.RootStartPosition = P;
		}
		ZnMotion::AddCurveKey(Record.RootPositionCurve, P, ZnMotion::FrameTime(FrameNumber++));
	}
	return true;
}

bool ReadHips(ondemand::value& Value, int32 Depth, FBodyDecodeState& State)
{
	// Whatever an earlier "Hips" produced is replaced.
	State.Record.RootPositionCurve = FVectorCurve();
	State.Record.RootStartPosition = FVector(0.0, 0.0, 0.0);
	State.bPositionsMalformed = false;
	ondemand::json_type Type;
	if (Value.type().get(Type) != SUCCESS)
	{
		return false;
	}
	State.bHipsIsObject = Type == ondemand::json_type::object;
	if (!State.bHipsIsObject)
	{
		return ZnJson::SkipValue(Value, Depth);
	}
	ondemand::object Hips;
	if (Depth >= ZnJson::MaxDepth || Value.get_object().get(Hips) != SUCCESS)
	{
		return false;
	}
	for (simdjson_result<ondemand::field> FieldResult : Hips)
	{
		ondemand::field Field;
		std::string_view Key;
		if (std::move(FieldResult).get(Field) != SUCCESS || !ZnJson::ReadKey(Field, Key))
		{
			return false;
		}
		ondemand::value& Member = Field.value();
		const bool bRead = ZnJson::EqualsIgnoreCase(Key, "pos") ? ReadPositions(Member, Depth + 1, State)
																: ZnJson::SkipValue(Member, Depth + 1);
		if (!bRead)
		{
			return false;
		}
	}
	return true;
}

// One window of the clip: a root object holding some of the clip's members. With bContinues its
// first member carries on the array member the previous window ended in.
bool DecodeWindow(ondemand::document& Document, bool bContinues, FBodyDecodeState& State)
{
	ondemand::object Root;
	if (Document.get_object().get(Root) != SUCCESS)
	{
		return false;
	}
	for (simdjson_result<ondemand::field> FieldResult : Root)
	{
		ondemand::field Field;
		std::string_view Key;
		if (std::move(FieldResult).get(Field) != SUCCESS || !ZnJson::ReadKey(Field, Key))
		{
			return false;
		}
		ondemand::value& Value = Field.value();
		bool bRead = true;
		if (bContinues)
		{
			// Only "curves" is read as an array; any other member that continues is checked and passed over.
			bRead = ZnJson::EqualsIgnoreCase(Key, "curves") ? ReadCurves(Value, 2, State, true)
															: ZnJson::SkipValue(Value, 2);
			bContinues = false;
		}
		else if (ZnJson::EqualsIgnoreCase(Key, "totalTime"))
		{
			double TotalTime = 0.0;
			bRead = ZnJson::ReadNumber(Value, 2, TotalTime);
			State.Record.totalTime = float(TotalTime);
		}
		else if (ZnJson::EqualsIgnoreCase(Key, "curves"))
		{
			bRead = ReadCurves(Value, 2, State, false);
		}
		else if (ZnJson::EqualsIgnoreCase(Key, "Hips"))
		{
			bRead = ReadHips(Value, 2, State);
		}
		else
		{
			bRead = ZnJson::SkipValue(Value, 2);
		}
		if (!bRead)
		{
			return false;
		}
	}
	return ZnJson::IsAtEnd(Document);
}

bool DecodeWindows(FZnJsonWindowReader& Reader, FZnBodyData& OutBodyData, bool bSetRootStartPosition)
{
	FBodyDecodeState State;
	State.bSetRootStartPosition = bSetRootStartPosition;
	ondemand::document* Document = nullptr;
	bool bContinues = false;
	while (Reader.Next(Document, bContinues))
	{
		if (!DecodeWindow(*Document, bContinues, State))
		{
			return false;
		}
	}
	// Every clip has a "Hips" object and objects as its track elements; one without them is not
	// a clip, and the caller's record stays as it was.
	if (!Reader.IsComplete() || !State.bHipsIsObject || State.bCurvesMalformed || State.bPositionsMalformed)
	{
		return false;
	}
	OutBodyData = MoveTemp(State.Record);
	return true;
}
} // namespace

bool FZnBodyDataDecoder::Decode(const FString& JsonStr, FZnBodyData& OutBodyData, bool bSetRootStartPosition)
{
	FZnJsonWindowReader Reader;
	return Reader.Begin(JsonStr) && DecodeWindows(Reader, OutBodyData, bSetRootStartPosition);
}

bool FZnBodyDataDecoder::DecodeUtf8(
	const char* Utf8, int64 Length, FZnBodyData& OutBodyData, bool bSetRootStartPosition)
{
	FZnJsonWindowReader Reader;
	return Reader.BeginUtf8(Utf8, Length) && DecodeWindows(Reader, OutBodyData, bSetRootStartPosition);
}
