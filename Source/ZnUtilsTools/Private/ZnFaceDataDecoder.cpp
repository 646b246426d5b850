#include "ZnFaceDataDecoder.h"

#include "ZnHuman_Skeleton.h"
#include "ZnJsonReader.h"
#include "ZnJsonWindowReader.h"
#include "ZnMotionDecoding.h"

namespace
{
using namespace simdjson;

// Percent to 0..1 in single precision; "not at least 0" also catches NaN.
inline float ToWeight(double Percent)
{
	const float Weight = float(Percent) * 0.01f;
	return !(Weight >= 0.0f) ? 0.0f : (Weight >= 1.0f ? 1.0f : Weight);
}

// Adds one frame's weights (already converted) at Time. With bAppendKeys every channel's last key
// is known to lie well before Time.
void AddFrame(FZnFaceData& Record, const float* Weights, int32 Channels, float Time, bool bAppendKeys)
{
	TArray<float>* Frames = Record.CurveFrames.GetData();
	FFloatCurve* Curves = Record.Curves.GetData();
	for (int32 Channel = 0; Channel < Channels; ++Channel)
	{
		Frames[Channel].Add(Weights[Channel]);
		if (bAppendKeys)
		{
			// What UpdateOrAddKey does with a key past the last one.
			Curves[Channel].FloatCurve.Keys.Emplace(Time, Weights[Channel]);
		}
		else
		{
			ZnMotion::AddCurveKey(Curves[Channel].FloatCurve, Time, Weights[Channel]);
		}
	}
}

// Frames read plainly wait here, a few at a time, so that each channel's arrays grow once for
// the lot instead of once a frame, and are written in runs.
struct FFrameBatch
{
	static constexpr int32 Capacity = 16;
	float Weights[Capacity][FZnFaceDataDecoder::ChannelCount];
	float Times[Capacity];
	int32 Channels[Capacity];
	bool bAppendKeys[Capacity];
	int32 Num = 0;
	// Every frame so far has all channels and keys past every key set.
	bool bUniform = true;

	void Flush(FZnFaceData& Record)
	{
		if (bUniform)
		{
			TArray<float>* Frames = Record.CurveFrames.GetData();
			FFloatCurve* Curves = Record.Curves.GetData();
			for (int32 Channel = 0; Channel < FZnFaceDataDecoder::ChannelCount; ++Channel)
			{
				// Grown first: the data may move.
				const int32 FirstFrame = Frames[Channel].AddUninitialized(Num);
				float* FrameOut = Frames[Channel].GetData() + FirstFrame;
				TArray<FRichCurveKey>& Keys = Curves[Channel].FloatCurve.Keys;
				const int32 FirstKey = Keys.AddUninitialized(Num);
				FRichCurveKey* KeyOut = Keys.GetData() + FirstKey;
				for (int32 Frame = 0; Frame < Num; ++Frame)
				{
					FrameOut[Frame] = Weights[Frame][Channel];
					new (KeyOut + Frame) FRichCurveKey(Times[Frame], Weights[Frame][Channel]);
				}
			}
		}
		else
		{
			for (int32 Frame = 0; Frame < Num; ++Frame)
			{
				AddFrame(Record, Weights[Frame], Channels[Frame], Times[Frame], bAppendKeys[Frame]);
			}
		}
		Num = 0;
		bUniform = true;
	}
};

// One frame at Time; a frame that is not an array has no weights, so no keys at its time.
bool ReadFrame(ondemand::value& FrameValue, float Time, bool bAppendKeys, FFrameBatch& Batch, FZnFaceData& Record)
{
	ondemand::json_type Type;
	if (FrameValue.type().get(Type) != SUCCESS)
	{
		return false;
	}
	if (Type != ondemand::json_type::array)
	{
		return ZnJson::SkipValue(FrameValue, 2);
	}
	// Frames written plainly are read in one go; a frame longer than this is rare enough to read
	// the ordinary way.
	double Percents[FZnFaceDataDecoder::ChannelCount + 13];
	const int32 Count = ZnJson::ReadPlainNumbers(FrameValue, Percents, UE_ARRAY_COUNT(Percents));
	if (Count >= 0)
	{
		const int32 Channels = Count < FZnFaceDataDecoder::ChannelCount ? Count : FZnFaceDataDecoder::ChannelCount;
		const int32 Slot = Batch.Num++;
		for (int32 Channel = 0; Channel < Channels; ++Channel)
		{
			Batch.Weights[Slot][Channel] = ToWeight(Percents[Channel]);
		}
		Batch.Times[Slot] = Time;
		Batch.Channels[Slot] = Channels;
		Batch.bAppendKeys[Slot] = bAppendKeys;
		Batch.bUniform &= Channels == FZnFaceDataDecoder::ChannelCount && bAppendKeys;
		if (Batch.Num == FFrameBatch::Capacity)
		{
			Batch.Flush(Record);
		}
		return true;
	}
	// Frames keep their order in every channel.
	Batch.Flush(Record);
	ondemand::array Weights;
	if (FrameValue.get_array().get(Weights) != SUCCESS)
	{
		return false;
	}
	float Converted[FZnFaceDataDecoder::ChannelCount];
	int32 Channel = 0;
	for (simdjson_result<ondemand::value> Element : Weights)
	{
		ondemand::value WeightValue;
		if (Element.get(WeightValue) != SUCCESS)
		{
			return false;
		}
		if (Channel >= FZnFaceDataDecoder::ChannelCount)
		{
			if (!ZnJson::SkipValue(WeightValue, 3))
			{
				return false;
			}
			continue;
		}
		double Percent = 0.0;
		if (!ZnJson::ReadNumber(WeightValue, 3, Percent))
		{
			return false;
		}
		Converted[Channel++] = ToWeight(Percent);
	}
	AddFrame(Record, Converted, Channel, Time, bAppendKeys);
	return true;
}

// Frames of one file are alike in length, so the first window tells closely how many the whole
// text holds: every channel is sized once, and never grows (or copies itself) while decoding.
void SizeChannels(ondemand::array& Frames, double Progress, FZnFaceData& Record)
{
	size_t Count = 0;
	if (Progress <= 0.0 || Frames.count_elements().get(Count) != SUCCESS)
	{
		return;
	}
	const double Expected = double(Count) / Progress * 1.02 + 8.0;
	const int32 Reserved = Expected < 16777216.0 ? int32(Expected) : 16777216;
	for (int32 Channel = 0; Channel < FZnFaceDataDecoder::ChannelCount; ++Channel)
	{
		Record.CurveFrames[Channel].Reserve(Reserved);
		Record.Curves[Channel].FloatCurve.Keys.Reserve(Reserved);
	}
}

// The frames of one window: a root array holding the next run of the file's frames.
bool ReadWindow(
	ondemand::document& Document, const FZnJsonWindowReader& Reader, FZnFaceData& Record, uint64& FrameCount)
{
	ondemand::array Frames;
	if (Document.get_array().get(Frames) != SUCCESS)
	{
		return false;
	}
	if (FrameCount == 0 && !Reader.IsComplete())
	{
		SizeChannels(Frames, Reader.GetProgress(), Record);
	}
	FFrameBatch Batch;
	for (simdjson_result<ondemand::value> Element : Frames)
	{
		// Frame times rise, so a frame more than the keys' tolerance after the one before is
		// past every key already set.
		const float Time = ZnMotion::FrameTime(FrameCount);
		const bool bAppendKeys = FrameCount == 0 || Time - ZnMotion::FrameTime(FrameCount - 1) > UE_KINDA_SMALL_NUMBER;
		ondemand::value FrameValue;
		if (Element.get(FrameValue) != SUCCESS || !ReadFrame(FrameValue, Time, bAppendKeys, Batch, Record))
		{
			return false;
		}
		++FrameCount;
	}
	Batch.Flush(Record);
	return ZnJson::IsAtEnd(Document);
}

bool DecodeWindows(FZnJsonWindowReader& Reader, FZnFaceData& OutFaceData, bool bWithNames)
{
	FZnFaceData Record;
	Record.CurveFrames.SetNum(FZnFaceDataDecoder::ChannelCount);
	Record.Curves.SetNum(FZnFaceDataDecoder::ChannelCount);
	uint64 FrameCount = 0;
	ondemand::document* Document = nullptr;
	bool bContinues = false;
	while (Reader.Next(Document, bContinues))
	{
		if (!ReadWindow(*Document, Reader, Record, FrameCount))
		{
			return false;
		}
	}
	if (!Reader.IsComplete())
	{
		return false;
	}
	Record.totalTime = ZnMotion::FrameTime(FrameCount);
	if (bWithNames)
	{
		// The tables never change: one instance, built on first use, serves every decode.
		static const ZnHuman_Skeleton NameTables;
		Record.CurveNames = NameTables.FaceCurveNames;
	}
	OutFaceData = MoveTemp(Record);
	return true;
}
} // namespace

bool FZnFaceDataDecoder::Decode(const FString& JsonStr, FZnFaceData& OutFaceData, bool bWithNames)
{
	FZnJsonWindowReader Reader;
	return Reader.Begin(JsonStr) && DecodeWindows(Reader, OutFaceData, bWithNames);
}

bool FZnFaceDataDecoder::DecodeUtf8(const char* Utf8, int64 Length, FZnFaceData& OutFaceData, bool bWithNames)
{
	FZnJsonWindowReader Reader;
	return Reader.BeginUtf8(Utf8, Length) && DecodeWindows(Reader, OutFaceData, bWithNames);
}

bool FZnFaceDataDecoder::DecodeControlRig(const FString& JsonStr, FZnFaceData& OutFaceData)
{
	if (JsonStr.IsEmpty())
	{
		return false;
	}
	FZnJsonReader Reader;
	FZnJsonObject Root;
	if (!Reader.ParseObject(JsonStr, Root))
	{
		return false;
	}

	FZnFaceData Record;
	const FZnJsonArray Names = Root.GetArrayField("curve_names");
	const FZnJsonArray Frames = Root.GetArrayField("curve_data");
	const int32 FrameCount = Frames.Num();
	Record.CurveNames.Reserve(Names.Num());
	Record.CurveFrames.Reserve(Names.Num());
	Record.Curves.Reserve(Names.Num());
	for (FZnJsonValue Name : Names)
	{
		Record.CurveNames.Add(Name.AsString());
		Record.CurveFrames[Record.CurveFrames.AddDefaulted()].Reserve(FrameCount);
		Record.Curves[Record.Curves.AddDefaulted()].FloatCurve.Keys.Reserve(FrameCount);
	}
	const int32 CurveCount = Record.CurveNames.Num();

	uint64 FrameNumber = 0;
	for (FZnJsonValue FrameValue : Frames)
	{
		const float Time = ZnMotion::FrameTime(FrameNumber++);
		int32 Curve = 0;
		for (FZnJsonValue Value : FrameValue.AsArray())
		{
			// Values without a named curve have nowhere to go.
			if (Curve >= CurveCount)
			{
				break;
			}
			const float Raw = float(Value.AsNumber());
			Record.CurveFrames[Curve].Add(Raw);
			ZnMotion::AddCurveKey(Record.Curves[Curve].FloatCurve, Time, Raw);
			++Curve;
		}
	}
	Record.totalTime = ZnMotion::FrameTime(uint64(FrameCount));

	OutFaceData = MoveTemp(Record);
	return true;
}
