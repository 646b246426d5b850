#include "ZnLipSync.h"

#include "ZnFaceChannels.h"
#include "ZnLoudness.h"
#include "ZnVisemes.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double FrameSeconds = 1.0 / ZnSpeechFrameRate;

void Accumulate(FZnMouthPose& Sum, const FZnMouthPose& Pose, float Weight)
{
	Sum.JawOpen += Pose.JawOpen * Weight;
	Sum.MouthClose += Pose.MouthClose * Weight;
	Sum.Funnel += Pose.Funnel * Weight;
	Sum.Pucker += Pose.Pucker * Weight;
	Sum.Stretch += Pose.Stretch * Weight;
	Sum.Smile += Pose.Smile * Weight;
	Sum.LowerDown += Pose.LowerDown * Weight;
	Sum.UpperUp += Pose.UpperUp * Weight;
	Sum.RollLower += Pose.RollLower * Weight;
	Sum.Press += Pose.Press * Weight;
}

// The loudness gain: compressive, so quiet sounds still move the mouth visibly.
double Gain(double Level)
{
	return std::pow(std::clamp(Level, 0.0, 1.0), 0.7);
}

std::vector<FZnMouthPose> Blend(const std::vector<FZnMouthPose>& Poses)
{
	std::vector<FZnMouthPose> Blended(Poses.size());
	for (size_t Frame = 0; Frame < Poses.size(); ++Frame)
	{
		const FZnMouthPose& Previous = Poses[Frame == 0 ? 0 : Frame - 1];
		const FZnMouthPose& Next = Poses[Frame + 1 < Poses.size() ? Frame + 1 : Frame];
		Accumulate(Blended[Frame], Previous, 0.25f);
		Accumulate(Blended[Frame], Poses[Frame], 0.5f);
		Accumulate(Blended[Frame], Next, 0.25f);
	}
	return Blended;
}

void SetBoth(std::vector<double>& Weights, int32 Left, int32 Right, double Value)
{
	Weights[static_cast<size_t>(Left)] = Value;
	Weights[static_cast<size_t>(Right)] = Value;
}

void WritePose(const FZnMouthPose& Pose, double Level, std::vector<double>& W)
{
	const FZnFaceChannels& C = FZnFaceChannels::Get();
	const double G = Gain(Level);
	const double Lips = 100.0 * (0.4 + 0.6 * G);
	W[static_cast<size_t>(C.JawOpen)] = 100.0 * G * (0.3 + 0.7 * Pose.JawOpen);
	W[static_cast<size_t>(C.MouthClose)] = Lips * Pose.MouthClose;
	W[static_cast<size_t>(C.MouthFunnel)] = Lips * Pose.Funnel;
	W[static_cast<size_t>(C.MouthPucker)] = Lips * Pose.Pucker;
	W[static_cast<size_t>(C.MouthRollLower)] = Lips * Pose.RollLower;
	SetBoth(W, C.MouthStretchLeft, C.MouthStretchRight, Lips * Pose.Stretch);
	SetBoth(W, C.MouthSmileLeft, C.MouthSmileRight, Lips * Pose.Smile);
	SetBoth(W, C.MouthLowerDownLeft, C.MouthLowerDownRight, Lips * Pose.LowerDown);
	SetBoth(W, C.MouthUpperUpLeft, C.MouthUpperUpRight, Lips * Pose.UpperUp);
	SetBoth(W, C.MouthPressLeft, C.MouthPressRight, Lips * Pose.Press);
}

void CloseLips(std::vector<double>& W)
{
	const FZnFaceChannels& C = FZnFaceChannels::Get();
	W[static_cast<size_t>(C.JawOpen)] = std::min(W[static_cast<size_t>(C.JawOpen)], 6.0);
	W[static_cast<size_t>(C.MouthClose)] = std::max(W[static_cast<size_t>(C.MouthClose)], 70.0);
	SetBoth(W, C.MouthPressLeft, C.MouthPressRight, std::max(W[static_cast<size_t>(C.MouthPressLeft)], 40.0));
	for (const int32 Open :
		{C.MouthFunnel, C.MouthLowerDownLeft, C.MouthLowerDownRight, C.MouthUpperUpLeft, C.MouthUpperUpRight})
	{
		W[static_cast<size_t>(Open)] *= 0.2;
	}
}
} // namespace

void AddMouthFromPhonemes(const std::vector<FZnPhonemeEvent>& Phonemes, double DurationSeconds,
	const std::vector<double>& Levels, FZnGenFaceClip& Face)
{
	const size_t FrameCount = Face.Weights.size();
	std::vector<FZnMouthPose> Poses(FrameCount);
	for (size_t Index = 0; Index < Phonemes.size(); ++Index)
	{
		const double Start = Phonemes[Index].Time;
		const double End = Index + 1 < Phonemes.size() ? Phonemes[Index + 1].Time : DurationSeconds;
		if (End <= Start)
		{
			continue;
		}
		const FZnMouthPose& Pose = MouthPoseOf(VisemeOfPhoneme(Phonemes[Index].Name));
		const int64 First =
			std::max<int64>(0, static_cast<int64>(std::floor((Start + 0.5 * FrameSeconds) / FrameSeconds)));
		const int64 Last = std::min<int64>(static_cast<int64>(FrameCount) - 1,
			static_cast<int64>(std::ceil((End + 0.5 * FrameSeconds) / FrameSeconds)));
		for (int64 Frame = std::max<int64>(0, First - 1); Frame <= Last; ++Frame)
		{
			const double WindowStart = (Frame - 0.5) * FrameSeconds;
			const double Overlap = std::min(End, WindowStart + FrameSeconds) - std::max(Start, WindowStart);
			if (Overlap > 0.0)
			{
				Accumulate(Poses[static_cast<size_t>(Frame)], Pose, static_cast<float>(Overlap / FrameSeconds));
			}
		}
	}
	const std::vector<FZnMouthPose> Blended = Blend(Poses);
	for (size_t Frame = 0; Frame < FrameCount; ++Frame)
	{
		WritePose(Blended[Frame], Frame < Levels.size() ? Levels[Frame] : 0.0, Face.Weights[Frame]);
	}
	for (size_t Index = 0; Index < Phonemes.size(); ++Index)
	{
		if (VisemeOfPhoneme(Phonemes[Index].Name) != EZnViseme::Bilabial)
		{
			continue;
		}
		const double Start = Phonemes[Index].Time;
		const double End = Index + 1 < Phonemes.size() ? Phonemes[Index + 1].Time : DurationSeconds;
		const int64 First = std::max<int64>(0, static_cast<int64>(std::ceil(Start / FrameSeconds - 0.5)));
		const int64 Last = std::max<int64>(First, static_cast<int64>(std::floor(End / FrameSeconds)));
		for (int64 Frame = First; Frame <= Last && Frame < static_cast<int64>(FrameCount); ++Frame)
		{
			CloseLips(Face.Weights[static_cast<size_t>(Frame)]);
		}
	}
}

void AddMouthFromLevels(const std::vector<double>& Levels, FZnGenFaceClip& Face)
{
	const FZnFaceChannels& C = FZnFaceChannels::Get();
	const size_t FrameCount = Face.Weights.size();
	for (size_t Frame = 0; Frame < FrameCount; ++Frame)
	{
		const auto LevelAt = [&Levels](size_t Index) { return Index < Levels.size() ? Levels[Index] : 0.0; };
		const double Smoothed = 0.25 * LevelAt(Frame == 0 ? 0 : Frame - 1) + 0.5 * LevelAt(Frame) +
			0.25 * LevelAt(Frame + 1 < FrameCount ? Frame + 1 : Frame);
		const double Jaw = 100.0 * 0.85 * Gain(Smoothed);
		std::vector<double>& W = Face.Weights[Frame];
		W[static_cast<size_t>(C.JawOpen)] = Jaw;
		SetBoth(W, C.MouthLowerDownLeft, C.MouthLowerDownRight, Jaw / 3.0);
	}
}
