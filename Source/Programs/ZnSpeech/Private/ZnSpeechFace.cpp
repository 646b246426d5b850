#include "ZnSpeechFace.h"

#include "ZnEyeModel.h"
#include "ZnFaceChannels.h"
#include "ZnLipSync.h"

#include <algorithm>

FZnGenFaceClip BuildSpeechFace(const FZnSpeechFaceInputs& Inputs)
{
	FZnGenFaceClip Face;
	Face.ChannelNames = FZnMotionGenerator::FaceChannelNames();
	Face.Weights.assign(static_cast<size_t>(std::max<int32>(0, Inputs.FrameCount)),
		std::vector<double>(static_cast<size_t>(FZnFaceChannels::Get().Count), 0.0));
	if (Inputs.Phonemes != nullptr)
	{
		AddMouthFromPhonemes(*Inputs.Phonemes, Inputs.DurationSeconds, Inputs.Levels, Face);
	}
	else
	{
		AddMouthFromLevels(Inputs.Levels, Face);
	}
	AddBlinks(PlanBlinks(Inputs.FrameCount, Inputs.Seed), Face);
	AddGaze(Inputs.Seed, Face);
	AddBrowLifts(Inputs.Accents, Face);
	for (std::vector<double>& Frame : Face.Weights)
	{
		for (double& Weight : Frame)
		{
			Weight = FZnMotionGenerator::AsWritten(std::clamp(Weight, 0.0, 100.0));
		}
	}
	return Face;
}

std::string FaceToJson(const FZnGenFaceClip& Face, EZnFaceShape Shape)
{
	switch (Shape)
	{
		case EZnFaceShape::V2:
			return FZnMotionGenerator::FaceToJsonV2(Face);
		case EZnFaceShape::ControlRig:
			return FZnMotionGenerator::ControlRigToJson(FZnMotionGenerator::FaceToControlRig(Face));
		default:
			return FZnMotionGenerator::FaceToJson(Face);
	}
}
