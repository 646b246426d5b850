#include "ZnEyeModel.h"

#include "ZnFaceChannels.h"
#include "ZnLoudness.h"
#include "ZnSpeechRandom.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr uint64 BlinkSalt = 0xB11Cull;
constexpr uint64 GazeSalt = 0x6A2Eull;

void Raise(std::vector<double>& Weights, int32 Channel, double Value)
{
	double& Weight = Weights[static_cast<size_t>(Channel)];
	Weight = std::max(Weight, Value);
}
} // namespace

std::vector<FZnBlink> PlanBlinks(int32 FrameCount, uint64 Seed)
{
	FZnSpeechRandom Random(Seed, BlinkSalt);
	std::vector<FZnBlink> Blinks;
	const double Duration = static_cast<double>(FrameCount) / ZnSpeechFrameRate;
	for (double Time = Random.Range(0.4, 2.0); Time < Duration;)
	{
		FZnBlink Blink;
		Blink.FirstFrame = static_cast<int32>(std::lround(Time * ZnSpeechFrameRate));
		Blink.Closure = {45.0, 90.0, 100.0};
		const int32 OpeningFrames = Random.Between(2, 4);
		for (int32 Step = 1; Step <= OpeningFrames; ++Step)
		{
			Blink.Closure.push_back(100.0 * (1.0 - static_cast<double>(Step) / (OpeningFrames + 1)));
		}
		if (Blink.FirstFrame + static_cast<int32>(Blink.Closure.size()) <= FrameCount)
		{
			Blinks.push_back(std::move(Blink));
		}
		const double Wait = -2.0 * std::log(1.0 - Random.Unit());
		Time += std::min(7.0, 1.4 + Wait);
	}
	return Blinks;
}

void AddBlinks(const std::vector<FZnBlink>& Blinks, FZnGenFaceClip& Face)
{
	const FZnFaceChannels& C = FZnFaceChannels::Get();
	for (const FZnBlink& Blink : Blinks)
	{
		for (size_t Step = 0; Step < Blink.Closure.size(); ++Step)
		{
			const size_t Frame = static_cast<size_t>(Blink.FirstFrame) + Step;
			if (Frame < Face.Weights.size())
			{
				Raise(Face.Weights[Frame], C.EyeBlinkLeft, Blink.Closure[Step]);
				Raise(Face.Weights[Frame], C.EyeBlinkRight, Blink.Closure[Step]);
			}
		}
	}
}

void AddGaze(uint64 Seed, FZnGenFaceClip& Face)
{
	const FZnFaceChannels& C = FZnFaceChannels::Get();
	FZnSpeechRandom Random(Seed, GazeSalt);
	// Look direction: X to the face's left (positive) or right, Y up or down, both in look-weight percent.
	double FromX = 0.0, FromY = 0.0, ToX = 0.0, ToY = 0.0;
	int32 JumpFrame = 0;
	int32 Jumps = 0;
	int32 NextJump = static_cast<int32>(std::lround(Random.Range(0.6, 2.4) * ZnSpeechFrameRate));
	for (size_t Frame = 0; Frame < Face.Weights.size(); ++Frame)
	{
		if (static_cast<int32>(Frame) == NextJump)
		{
			FromX = ToX;
			FromY = ToY;
			++Jumps;
			const bool bBackToListener = Jumps % 3 == 0;
			ToX = bBackToListener ? 0.0 : Random.Range(-18.0, 18.0);
			ToY = bBackToListener ? 0.0 : Random.Range(-12.0, 12.0);
			JumpFrame = NextJump;
			NextJump += static_cast<int32>(std::lround(Random.Range(0.6, 2.4) * ZnSpeechFrameRate));
		}
		const double Progress = std::clamp((static_cast<int32>(Frame) - JumpFrame + 1) / 2.0, 0.0, 1.0);
		const double X = FromX + (ToX - FromX) * Progress;
		const double Y = FromY + (ToY - FromY) * Progress;
		std::vector<double>& W = Face.Weights[Frame];
		// Looking to the face's left turns the left eye outwards and the right eye inwards.
		W[static_cast<size_t>(C.EyeLookOutLeft)] = std::max(0.0, X);
		W[static_cast<size_t>(C.EyeLookInRight)] = std::max(0.0, X);
		W[static_cast<size_t>(C.EyeLookInLeft)] = std::max(0.0, -X);
		W[static_cast<size_t>(C.EyeLookOutRight)] = std::max(0.0, -X);
		W[static_cast<size_t>(C.EyeLookUpLeft)] = std::max(0.0, Y);
		W[static_cast<size_t>(C.EyeLookUpRight)] = std::max(0.0, Y);
		W[static_cast<size_t>(C.EyeLookDownLeft)] = std::max(0.0, -Y);
		W[static_cast<size_t>(C.EyeLookDownRight)] = std::max(0.0, -Y);
	}
}

void AddBrowLifts(const std::vector<FZnWordAccent>& Accents, FZnGenFaceClip& Face)
{
	const FZnFaceChannels& C = FZnFaceChannels::Get();
	constexpr double Lift = 35.0;
	constexpr double Rise = 0.1;
	constexpr double Fall = 0.35;
	for (const FZnWordAccent& Accent : Accents)
	{
		if (!Accent.bStressed)
		{
			continue;
		}
		const int64 First =
			std::max<int64>(0, static_cast<int64>(std::floor((Accent.Start - Rise) * ZnSpeechFrameRate)));
		const int64 Last = std::min<int64>(static_cast<int64>(Face.Weights.size()) - 1,
			static_cast<int64>(std::ceil((Accent.End + Fall) * ZnSpeechFrameRate)));
		for (int64 Frame = First; Frame <= Last; ++Frame)
		{
			const double Time = static_cast<double>(Frame) / ZnSpeechFrameRate;
			double Amount = 1.0;
			if (Time < Accent.Start)
			{
				Amount = 1.0 - (Accent.Start - Time) / Rise;
			}
			else if (Time > Accent.End)
			{
				Amount = 1.0 - (Time - Accent.End) / Fall;
			}
			// Smoothstep, so the brows ease in and out instead of moving at constant speed.
			Amount = std::clamp(Amount, 0.0, 1.0);
			Amount = Amount * Amount * (3.0 - 2.0 * Amount);
			std::vector<double>& W = Face.Weights[static_cast<size_t>(Frame)];
			Raise(W, C.BrowInnerUp, Lift * Amount);
			Raise(W, C.BrowOuterUpLeft, Lift * Amount);
			Raise(W, C.BrowOuterUpRight, Lift * Amount);
		}
	}
}
