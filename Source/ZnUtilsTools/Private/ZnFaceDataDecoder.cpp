#include "ZnFaceDataDecoder.h"

#include "ZnHuman_Skeleton.h"
#include "ZnJsonReader.h"
#include "ZnMotionDecoding.h"

bool FZnFaceDataDecoder::Decode(const FString& JsonStr, FZnFaceData& OutFaceData, bool bWithNames)
{
	if (JsonStr.IsEmpty())
	{
		return false;
	}
	FZnJsonReader Reader;
	return Reader.Parse(JsonStr) && DecodeRoot(Reader.GetRoot(), OutFaceData, bWithNames);
}

bool FZnFaceDataDecoder::DecodeUtf8(const char* Utf8, int64 Length, FZnFaceData& OutFaceData, bool bWithNames)
{
	FZnJsonReader Reader;
	return Reader.ParseUtf8(Utf8, Length) && DecodeRoot(Reader.GetRoot(), OutFaceData, bWithNames);
}

bool FZnFaceDataDecoder::DecodeRoot(const FZnJsonValue& RootValue, FZnFaceData& OutFaceData, bool bWithNames)
{
	FZnJsonArray Frames;
	if (!RootValue.TryGetArray(Frames))
	{
		return false;
	}
	const int32 FrameCount = Frames.Num();

	FZnFaceData Record;
	Record.totalTime = ZnMotion::FrameTime(uint64(FrameCount));
	if (bWithNames)
	{
		Record.CurveNames = ZnHuman_Skeleton().FaceCurveNames;
	}
	Record.CurveFrames.SetNum(ChannelCount);
	Record.Curves.SetNum(ChannelCount);
	for (int32 Channel = 0; Channel < ChannelCount; ++Channel)
	{
		Record.CurveFrames[Channel].Reserve(FrameCount);
		Record.Curves[Channel].FloatCurve.Keys.Reserve(FrameCount);
	}

	uint64 FrameNumber = 0;
	for (FZnJsonValue FrameValue : Frames)
	{
		const float Time = ZnMotion::FrameTime(FrameNumber++);
		// A frame that is not an array has no weights: no keys at its time.
		int32 Channel = 0;
		for (FZnJsonValue WeightValue : FrameValue.AsArray())
		{
			if (Channel >= ChannelCount)
			{
				break;
			}
			// Percent to 0..1 in single precision; "not at least 0" also catches NaN.
			float Weight = float(WeightValue.AsNumber()) * 0.01f;
			if (!(Weight >= 0.0f))
			{
				Weight = 0.0f;
			}
			else if (Weight >= 1.0f)
			{
				Weight = 1.0f;
			}
			Record.CurveFrames[Channel].Add(Weight);
			ZnMotion::AddCurveKey(Record.Curves[Channel].FloatCurve, Time, Weight);
			++Channel;
		}
	}

	OutFaceData = MoveTemp(Record);
	return true;
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
