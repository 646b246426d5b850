#include "ZnSpeechBody.h"

#include "ZnBodyRotation.h"
#include "ZnLoudness.h"
#include "ZnSpeechRandom.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace
{
constexpr double Pi = 3.14159265358979323846;
constexpr uint64 BodySalt = 0xB0D7ull;
constexpr double IdleShare = 0.2;
constexpr double RootWanderShare = 1.0 / 7.0;

// A bump that rises from 0 at Peak - Rise to 1 at Peak and falls back to 0 at Peak + Fall, eased.
double Bump(double Time, double Peak, double Rise, double Fall)
{
	double Amount = 0.0;
	if (Time > Peak - Rise && Time <= Peak)
	{
		Amount = 1.0 - (Peak - Time) / Rise;
	}
	else if (Time > Peak && Time < Peak + Fall)
	{
		Amount = 1.0 - (Time - Peak) / Fall;
	}
	return Amount * Amount * (3.0 - 2.0 * Amount);
}

FZnGenQuat AverageRotation(const std::vector<FZnGenQuat>& Track)
{
	FZnGenQuat Sum{0.0, 0.0, 0.0, 0.0};
	for (const FZnGenQuat& Q : Track)
	{
		// Keep every sample on the first one's side of the sphere so opposite signs do not cancel.
		const double Sign =
			Q.X * Track[0].X + Q.Y * Track[0].Y + Q.Z * Track[0].Z + Q.W * Track[0].W < 0.0 ? -1.0 : 1.0;
		Sum.X += Sign * Q.X;
		Sum.Y += Sign * Q.Y;
		Sum.Z += Sign * Q.Z;
		Sum.W += Sign * Q.W;
	}
	return Normalized(Sum);
}

struct FZnBoneTurn
{
	EZnAxis Axis;
	double Degrees;
};

// Extra local rotations per bone for one frame, composed onto the idle in the order added.
using FZnBoneTurns = std::map<std::string, std::vector<FZnBoneTurn>>;

void AddBeat(FZnBoneTurns& Turns, const char* Side, double Amount)
{
	// The generator's arms hang with the left side's angles mirrored: the sign follows the side.
	const double Mirror = std::string(Side) == "Right" ? -1.0 : 1.0;
	Turns[std::string(Side) + "ForeArm"].push_back({EZnAxis::Y, -14.0 * Mirror * Amount});
	Turns[std::string(Side) + "Arm"].push_back({EZnAxis::Z, 8.0 * Mirror * Amount});
	Turns[std::string(Side) + "Hand"].push_back({EZnAxis::X, 10.0 * Amount});
}
} // namespace

std::vector<FZnGesture> PlanGestures(const std::vector<FZnWordAccent>& Accents)
{
	std::vector<FZnGesture> Gestures;
	double LastBeat = -1e9;
	double LastNod = -1e9;
	int32 BeatCount = 0;
	for (const FZnWordAccent& Accent : Accents)
	{
		if ((Accent.bPhraseStart || Accent.bStressed) && Accent.Start - LastBeat >= 0.6)
		{
			EZnGestureKind Kind = BeatCount % 3 == 2 ? EZnGestureKind::BeatLeft : EZnGestureKind::BeatRight;
			if (Accent.bPhraseStart && Accent.bStressed)
			{
				Kind = EZnGestureKind::BeatBoth;
			}
			Gestures.push_back({Accent.Start, Kind});
			LastBeat = Accent.Start;
			++BeatCount;
		}
		if (Accent.bStressed && Accent.Start - LastNod >= 1.2)
		{
			Gestures.push_back({Accent.Start, EZnGestureKind::Nod});
			LastNod = Accent.Start;
		}
	}
	return Gestures;
}

FZnGenBodyClip BuildSpeechBody(int32 FrameCount, const std::vector<FZnGesture>& Gestures, uint64 Seed)
{
	FZnGenBodyOptions Options;
	Options.FrameCount = std::max<int32>(0, FrameCount);
	Options.Seed = Seed;
	FZnGenBodyClip Body = FZnMotionGenerator::GenerateBody(Options);
	if (Body.FrameCount() == 0)
	{
		return Body;
	}

	FZnSpeechRandom Random(Seed, BodySalt);
	const double BreathHz = 1.0 / Random.Range(3.5, 5.0);
	const double BreathPhase = Random.Range(0.0, 2.0 * Pi);
	const double ShiftHz = 1.0 / Random.Range(8.0, 14.0);
	const double ShiftPhase = Random.Range(0.0, 2.0 * Pi);

	FZnGenVec MeanRoot;
	for (const FZnGenVec& Root : Body.RootPositions)
	{
		MeanRoot.X += Root.X / Body.FrameCount();
		MeanRoot.Y += Root.Y / Body.FrameCount();
		MeanRoot.Z += Root.Z / Body.FrameCount();
	}

	std::vector<FZnGenQuat> Averages;
	for (const std::vector<FZnGenQuat>& Track : Body.Rotations)
	{
		Averages.push_back(AverageRotation(Track));
	}
	for (int32 Frame = 0; Frame < Body.FrameCount(); ++Frame)
	{
		const double Time = static_cast<double>(Frame) / ZnSpeechFrameRate;
		const double Breath = std::sin(2.0 * Pi * BreathHz * Time + BreathPhase);
		const double Shift = std::sin(2.0 * Pi * ShiftHz * Time + ShiftPhase);

		FZnBoneTurns Turns;
		Turns["Spine"].push_back({EZnAxis::X, 0.8 * Breath});
		Turns["Spine1"].push_back({EZnAxis::X, 0.8 * Breath});
		Turns["Spine2"].push_back({EZnAxis::X, 0.8 * Breath});
		Turns["LeftShoulder"].push_back({EZnAxis::Z, 0.6 * Breath});
		Turns["RightShoulder"].push_back({EZnAxis::Z, -0.6 * Breath});
		Turns["Hips"].push_back({EZnAxis::Z, 1.5 * Shift});
		for (const FZnGesture& Gesture : Gestures)
		{
			if (Gesture.Kind == EZnGestureKind::Nod)
			{
				const double Nod = Bump(Time, Gesture.Time + 0.1, 0.2, 0.4);
				if (Nod > 0.0)
				{
					Turns["Head"].push_back({EZnAxis::X, 5.0 * Nod});
					Turns["Neck"].push_back({EZnAxis::X, 2.0 * Nod});
				}
				continue;
			}
			const double Beat = Bump(Time, Gesture.Time, 0.2, 0.45);
			if (Beat <= 0.0)
			{
				continue;
			}
			if (Gesture.Kind != EZnGestureKind::BeatLeft)
			{
				AddBeat(Turns, "Right", Beat);
			}
			if (Gesture.Kind != EZnGestureKind::BeatRight)
			{
				AddBeat(Turns, "Left", Beat);
			}
		}

		for (size_t Bone = 0; Bone < Body.BoneNames.size(); ++Bone)
		{
			FZnGenQuat& Rotation = Body.Rotations[Bone][static_cast<size_t>(Frame)];
			FZnGenQuat Pose = Nlerp(Averages[Bone], Rotation, IdleShare);
			const auto Found = Turns.find(Body.BoneNames[Bone]);
			if (Found != Turns.end())
			{
				for (const FZnBoneTurn& Turn : Found->second)
				{
					Pose = Compose(Pose, AxisRotation(Turn.Axis, Turn.Degrees));
				}
			}
			Pose = Normalized(Pose);
			Rotation = {FZnMotionGenerator::AsWritten(Pose.X), FZnMotionGenerator::AsWritten(Pose.Y),
				FZnMotionGenerator::AsWritten(Pose.Z), FZnMotionGenerator::AsWritten(Pose.W)};
		}
	}

	for (int32 Frame = 0; Frame < Body.FrameCount(); ++Frame)
	{
		const double Time = static_cast<double>(Frame) / ZnSpeechFrameRate;
		FZnGenVec& Root = Body.RootPositions[static_cast<size_t>(Frame)];
		const double Breath = std::sin(2.0 * Pi * BreathHz * Time + BreathPhase);
		const double Shift = std::sin(2.0 * Pi * ShiftHz * Time + ShiftPhase);
		const double X = MeanRoot.X + RootWanderShare * (Root.X - MeanRoot.X) + 0.025 * Shift;
		const double Y = MeanRoot.Y + RootWanderShare * (Root.Y - MeanRoot.Y) + 0.004 * Breath;
		const double Z = MeanRoot.Z + RootWanderShare * (Root.Z - MeanRoot.Z);
		Root = {FZnMotionGenerator::AsWritten(X), FZnMotionGenerator::AsWritten(Y), FZnMotionGenerator::AsWritten(Z)};
	}
	return Body;
}

std::string BodyToJson(const FZnGenBodyClip& Body, EZnBodyShape Shape)
{
	return Shape == EZnBodyShape::V2 ? FZnMotionGenerator::BodyToJsonV2(Body) : FZnMotionGenerator::BodyToJson(Body);
}
