#include "ZnFaceDataDecoder.h"

#include "ZnHuman_Skeleton.h"
#include "ZnJsonReader.h"
#include "ZnJsonWindowReader.h"
#include "ZnMotionDecoding.h"
#include "ZnSimd.h"

namespace
{
using namespace simdjson;

// Percent to 0..1 in single precision; "not at least 0" also catches NaN.
inline float ToWeight(double Percent)
{
	return ZnSimd::Scalar::PercentToWeight(Percent);
}

// ToWeight over a frame, four weights at a time.
void ToWeights(const double* Percents, int32 Count, float* OutWeights)
{
	int32 Index = 0;
	for (; Index + 4 <= Count; Index += 4)
	{
		ZnSimd::Native::PercentsToWeights4(Percents + Index, OutWeights + Index);
	}
	for (; Index < Count; ++Index)
	{
		OutWeights[Index] = ToWeight(Percents[Index]);
	}
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

	// One frame's weights in percent, as read; weights past the channels are ignored.
	void Add(const double* Percents, int32 Count, float Time, bool bAppendKey, FZnFaceData& Record)
	{
		const int32 FrameChannels = Count < FZnFaceDataDecoder::ChannelCount ? Count : FZnFaceDataDecoder::ChannelCount;
		const int32 Slot = Num++;
		ToWeights(Percents, FrameChannels, Weights[Slot]);
		Times[Slot] = Time;
		Channels[Slot] = FrameChannels;
		bAppendKeys[Slot] = bAppendKey;
		bUniform &= FrameChannels == FZnFaceDataDecoder::ChannelCount && bAppendKey;
		if (Num == Capacity)
		{
			Flush(Record);
		}
	}
};

// Frames written plainly are read in one go; a frame longer than this is rare enough to read the
// ordinary way.
constexpr int32 PlainFrameCapacity = FZnFaceDataDecoder::ChannelCount + 13;

// Where a frame falls in time, and whether it is known to lie past every key already set: frame
// times rise, so a frame more than the keys' tolerance after the one before does.
struct FFrameClock
{
	uint64 FrameCount = 0;

	float Time() const { return ZnMotion::FrameTime(FrameCount); }

	bool IsPastEveryKey() const
	{
		return FrameCount == 0 ||
			ZnMotion::FrameTime(FrameCount) - ZnMotion::FrameTime(FrameCount - 1) > UE_KINDA_SMALL_NUMBER;
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
	double Percents[PlainFrameCapacity];
	const int32 Count = ZnJson::ReadPlainNumbers(FrameValue, Percents, PlainFrameCapacity);
	if (Count >= 0)
	{
		Batch.Add(Percents, Count, Time, bAppendKeys, Record);
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
// text holds: every channel is sized once, and never grows (or copies itself) while decoding. A
// frame that fills every channel takes at least two characters a channel, which bounds the
// estimate by what the text can hold whatever the first window looked like.
void SizeChannels(double FramesSoFar, const FZnJsonWindowReader& Reader, FZnFaceData& Record)
{
	const double Progress = Reader.GetProgress();
	if (Progress <= 0.0)
	{
		return;
	}
	const double MostFrames = double(Reader.GetInputLength()) / double(2 * FZnFaceDataDecoder::ChannelCount) + 8.0;
	double Expected = FramesSoFar / Progress * 1.02 + 8.0;
	Expected = Expected < MostFrames ? Expected : MostFrames;
	const int32 Reserved = Expected < 16777216.0 ? int32(Expected) : 16777216;
	for (int32 Channel = 0; Channel < FZnFaceDataDecoder::ChannelCount; ++Channel)
	{
		Record.CurveFrames[Channel].Reserve(Reserved);
		Record.Curves[Channel].FloatCurve.Keys.Reserve(Reserved);
	}
}

// The frames of a window written tightly ("[[1.5,0,...],[...]]", no whitespace between values),
// read straight from its text: the parser's index and its walk over every number are skipped.
// Returns how many frames were read before anything else turned up; bOutWhole is set when that
// was the whole window, then checked as strictly as the parser would.
int32 ReadTightWindow(
	const char* Text, size_t Length, FFrameClock& Clock, FFrameBatch& Batch, FZnFaceData& Record, bool& bOutWhole)
{
	bOutWhole = false;
	const char* const End = Text + Length;
	const char* Cursor = ZnJson::SkipJsonSpace(Text, End);
	if (Cursor == End || *Cursor != '[')
	{
		return 0;
	}
	++Cursor;
	int32 Read = 0;
	if (*Cursor != ']')
	{
		for (;;)
		{
			double Percents[PlainFrameCapacity];
			int32 Count = 0;
			const char* After = ZnJson::ReadTightNumbers(Cursor, Percents, PlainFrameCapacity, Count);
			if (After == nullptr || After >= End)
			{
				return Read;
			}
			Batch.Add(Percents, Count, Clock.Time(), Clock.IsPastEveryKey(), Record);
			++Clock.FrameCount;
			++Read;
			Cursor = After;
			if (*Cursor != ',')
			{
				break;
			}
			++Cursor;
		}
	}
	if (*Cursor != ']')
	{
		return Read;
	}
	bOutWhole = ZnJson::SkipJsonSpace(Cursor + 1, End) == End;
	return Read;
}

// The frames of one window, the first SkipFrames of them already read from its text: a root
// array holding the next run of the file's frames. The first window of several sizes the channels.
bool ReadWindow(ondemand::document& Document, const FZnJsonWindowReader& Reader, bool bSizeChannels, int32 SkipFrames,
	FFrameClock& Clock, FFrameBatch& Batch, FZnFaceData& Record)
{
	ondemand::array Frames;
	if (Document.get_array().get(Frames) != SUCCESS)
	{
		return false;
	}
	if (bSizeChannels)
	{
		size_t Count = 0;
		if (Frames.count_elements().get(Count) == SUCCESS)
		{
			SizeChannels(double(Count), Reader, Record);
		}
	}
	int32 Index = 0;
	for (simdjson_result<ondemand::value> Element : Frames)
	{
		ondemand::value FrameValue;
		if (Element.get(FrameValue) != SUCCESS)
		{
			return false;
		}
		if (Index++ < SkipFrames)
		{
			if (!ZnJson::SkipValue(FrameValue, 2))
			{
				return false;
			}
			continue;
		}
		if (!ReadFrame(FrameValue, Clock.Time(), Clock.IsPastEveryKey(), Batch, Record))
		{
			return false;
		}
		++Clock.FrameCount;
	}
	return ZnJson::IsAtEnd(Document);
}

bool DecodeWindows(FZnJsonWindowReader& Reader, FZnFaceData& OutFaceData, bool bWithNames)
{
	FZnFaceData Record;
	Record.CurveFrames.SetNum(FZnFaceDataDecoder::ChannelCount);
	Record.Curves.SetNum(FZnFaceDataDecoder::ChannelCount);
	FFrameClock Clock;
	FFrameBatch Batch;
	bool bContinues = false;
	while (Reader.NextText(bContinues))
	{
		const bool bSizeChannels = Clock.FrameCount == 0 && !Reader.IsComplete();
		bool bWhole = false;
		const int32 Read = ReadTightWindow(Reader.GetText(), Reader.GetTextLength(), Clock, Batch, Record, bWhole);
		if (!bWhole)
		{
			ondemand::document* Document = nullptr;
			if (!Reader.ParseText(Document) ||
				!ReadWindow(*Document, Reader, bSizeChannels, Read, Clock, Batch, Record))
			{
				return false;
			}
		}
		else if (bSizeChannels)
		{
			// Sized once the first window is read, at the cost of copying its frames.
			SizeChannels(double(Read), Reader, Record);
		}
	}
	if (!Reader.IsComplete())
	{
		return false;
	}
	Batch.Flush(Record);
	// The length is the time the frame after the last would have.
	Record.totalTime = Clock.Time();
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
