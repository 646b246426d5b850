#include "ZnFaceDataV2Decoder.h"

#include "ZnJsonReader.h"
#include "ZnMotionDecoding.h"

void FZnFaceDataV2Decoder::Reset(int32 ChannelCount)
{
	Weights.Empty();
	Curves.Empty();
	Weights.SetNum(ChannelCount);
	Curves.SetNum(ChannelCount);
	LargestTime = 0.0;
}

bool FZnFaceDataV2Decoder::AddFrameAt(const FZnJsonValue& FrameValue, double& OutTime)
{
	FZnJsonObject Frame;
	uint64 FrameIndex = 0;
	if (!FrameValue.TryGetObject(Frame) || !Frame.TryGetNumberField("frameIndex", FrameIndex))
	{
		return false;
	}
	const double Time = ZnMotion::StreamedFrameTime(FrameIndex);
	const float KeyTime = float(Time);
	const int32 ChannelCount = Weights.Num();
	int32 Channel = 0;
	for (FZnJsonValue WeightValue : Frame.GetArrayField("bs"))
	{
		if (Channel >= ChannelCount)
		{
			break;
		}
		// Percent to 0..1 in double, narrowed last; "not at least 0" also catches NaN.
		double Weight = WeightValue.AsNumber() * 0.01;
		Weight = Weight >= 0.0 ? (Weight < 1.0 ? Weight : 1.0) : 0.0;
		const float Narrowed = float(Weight);
		Weights[Channel].Add(Narrowed);
		ZnMotion::AddCurveKey(Curves[Channel].FloatCurve, KeyTime, Narrowed);
		++Channel;
	}
	OutTime = Time;
	return true;
}

bool FZnFaceDataV2Decoder::AddFrame(const FZnJsonValue& FrameValue)
{
	double Time = 0.0;
	if (!AddFrameAt(FrameValue, Time))
	{
		return false;
	}
	if (!(LargestTime >= Time))
	{
		LargestTime = Time;
	}
	return true;
}

bool FZnFaceDataV2Decoder::AddFrameText(const FString& JsonStr)
{
	if (JsonStr.IsEmpty())
	{
		return false;
	}
	FZnJsonReader Reader;
	return Reader.Parse(JsonStr) && Reader.GetRoot().IsObject() && AddFrame(Reader.GetRoot());
}

void FZnFaceDataV2Decoder::Assemble(FZnFaceData& OutFaceData, float& OutTotalTime) const
{
	FZnFaceData Record;
	Record.CurveFrames = Weights;
	Record.Curves = Curves;
	Record.totalTime = float(LargestTime);
	OutFaceData = MoveTemp(Record);
	OutTotalTime = float(LargestTime);
}

bool FZnFaceDataV2Decoder::DecodeResponse(const FString& JsonStr, FZnFaceData& OutFaceData, float& OutTotalTime)
{
	if (JsonStr.IsEmpty())
	{
		return false;
	}
	FZnJsonReader Reader;
	FZnJsonArray Frames;
	if (!Reader.ParseArray(JsonStr, Frames))
	{
		return false;
	}
	FZnFaceDataV2Decoder State;
	State.Reset(ResponseChannelCount);
	// Frames usually come in order, one weight per channel each.
	for (int32 Channel = 0; Channel < ResponseChannelCount; ++Channel)
	{
		State.Weights[Channel].Reserve(Frames.Num());
		State.Curves[Channel].FloatCurve.Keys.Reserve(Frames.Num());
	}
	// The running length is kept as a float but compared in double.
	float TotalTime = 0.0f;
	for (FZnJsonValue Frame : Frames)
	{
		double Time = 0.0;
		if (State.AddFrameAt(Frame, Time))
		{
			TotalTime = double(TotalTime) >= Time ? TotalTime : float(Time);
		}
	}

	FZnFaceData Record;
	Record.CurveFrames = MoveTemp(State.Weights);
	Record.Curves = MoveTemp(State.Curves);
	Record.totalTime = TotalTime;
	OutFaceData = MoveTemp(Record);
	OutTotalTime = TotalTime;
	return true;
}

FZnFaceDataV2Decoder& FZnFaceDataV2Decoder::GetStream()
{
	static FZnFaceDataV2Decoder Stream;
	return Stream;
}
