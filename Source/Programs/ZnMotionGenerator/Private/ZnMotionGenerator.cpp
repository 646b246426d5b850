#include "ZnMotionGenerator.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <unordered_map>

#include <fast_float/fast_float.h>

namespace
{
constexpr double Pi = 3.14159265358979323846;
constexpr double FrameRate = 30.0;

// splitmix64: tiny, well mixed and identical everywhere, unlike the standard distributions whose
// output differs between library implementations.
class FZnGenRandom
{
public:
	explicit FZnGenRandom(uint64 Seed)
		: State(Seed * 0x9E3779B97F4A7C15ull + 0x632BE59BD9B4E019ull)
	{
	}

	uint64 Next()
	{
		uint64 Z = (State += 0x9E3779B97F4A7C15ull);
		Z = (Z ^ (Z >> 30)) * 0xBF58476D1CE4E5B9ull;
		Z = (Z ^ (Z >> 27)) * 0x94D049BB133111EBull;
		return Z ^ (Z >> 31);
	}

	// Uniform in [0, 1).
	double Unit() { return static_cast<double>(Next() >> 11) * (1.0 / 9007199254740992.0); }
	double Range(double Lo, double Hi) { return Lo + (Hi - Lo) * Unit(); }

private:
	uint64 State;
};

const char* const BodyBones[] = {"Hips", "LeftUpLeg", "RightUpLeg", "LeftLeg", "RightLeg", "LeftFoot", "RightFoot",
	"Spine", "Spine1", "Neck", "Head", "LeftShoulder", "RightShoulder", "LeftArm", "RightArm", "LeftForeArm",
	"RightForeArm", "LeftHand", "RightHand", "LeftToeBase", "RightToeBase", "Spine2"};

const char* const FingerNames[] = {"Thumb", "Index", "Middle", "Ring", "Pinky"};

const char* const FaceChannels[] = {"EyeBlinkRight", "EyeLookDownRight", "EyeLookInRight", "EyeLookOutRight",
	"EyeLookUpRight", "EyeSquintRight", "EyeWideRight", "EyeBlinkLeft", "EyeLookDownLeft", "EyeLookInLeft",
	"EyeLookOutLeft", "EyeLookUpLeft", "EyeSquintLeft", "EyeWideLeft", "JawForward", "JawLeft", "JawRight", "JawOpen",
	"MouthClose", "MouthFunnel", "MouthPucker", "MouthRight", "MouthLeft", "MouthSmileLeft", "MouthSmileRight",
	"MouthFrownRight", "MouthFrownLeft", "MouthDimpleRight", "MouthDimpleLeft", "MouthStretchRight", "MouthStretchLeft",
	"MouthRollLower", "MouthRollUpper", "MouthShrugLower", "MouthShrugUpper", "MouthPressRight", "MouthPressLeft",
	"MouthLowerDownRight", "MouthLowerDownLeft", "MouthUpperUpRight", "MouthUpperUpLeft", "BrowDownRight",
	"BrowDownLeft", "BrowInnerUp", "BrowOuterUpRight", "BrowOuterUpLeft", "CheekPuff", "CheekSquintRight",
	"CheekSquintLeft", "NoseSneerRight", "NoseSneerLeft"};
constexpr int32 FaceChannelCount = 51;

bool StartsWith(const std::string& Text, const char* Prefix)
{
	return Text.compare(0, std::strlen(Prefix), Prefix) == 0;
}

bool EndsWith(const std::string& Text, const char* Suffix)
{
	const size_t Len = std::strlen(Suffix);
	return Text.size() >= Len && Text.compare(Text.size() - Len, Len, Suffix) == 0;
}

std::string ParentOf(const std::string& Bone)
{
	static const std::unordered_map<std::string, std::string> Parents = {{"LeftUpLeg", "Hips"}, {"RightUpLeg", "Hips"},
		{"LeftLeg", "LeftUpLeg"}, {"RightLeg", "RightUpLeg"}, {"LeftFoot", "LeftLeg"}, {"RightFoot", "RightLeg"},
		{"LeftToeBase", "LeftFoot"}, {"RightToeBase", "RightFoot"}, {"Spine", "Hips"}, {"Spine1", "Spine"},
		{"Spine2", "Spine1"}, {"Neck", "Spine2"}, {"Head", "Neck"}, {"LeftShoulder", "Spine2"},
		{"RightShoulder", "Spine2"}, {"LeftArm", "LeftShoulder"}, {"RightArm", "RightShoulder"},
		{"LeftForeArm", "LeftArm"}, {"RightForeArm", "RightArm"}, {"LeftForeArm1", "LeftForeArm"},
		{"RightForeArm1", "RightForeArm"}, {"LeftHand", "LeftForeArm"}, {"RightHand", "RightForeArm"}};
	const auto Found = Parents.find(Bone);
	if (Found != Parents.end())
	{
		return Found->second;
	}
	// Finger joints: joint 1 hangs off the hand, joints 2 and 3 off the previous joint.
	const char Joint = Bone.empty() ? '0' : Bone.back();
	const std::string Side = StartsWith(Bone, "Left") ? "LeftHand" : "RightHand";
	if (Joint == '1')
	{
		return Side;
	}
	if (Joint == '2' || Joint == '3')
	{
		return Bone.substr(0, Bone.size() - 1) + static_cast<char>(Joint - 1);
	}
	return std::string();
}

// Rest offset and swing amplitude per Euler axis, in degrees, for a body part.
struct FZnJointRange
{
	double Base[3];
	double Amp[3];
};

FZnJointRange RangeOf(const std::string& Bone)
{
	const bool bRight = StartsWith(Bone, "Right");
	const double Side = bRight ? -1.0 : 1.0;
	if (Bone == "Hips")
	{
		return {{0, 0, 0}, {4, 20, 4}};
	}
	if (StartsWith(Bone, "Spine"))
	{
		return {{2, 0, 0}, {6, 8, 4}};
	}
	if (Bone == "Neck")
	{
		return {{0, 0, 0}, {8, 12, 5}};
	}
	if (Bone == "Head")
	{
		return {{-3, 0, 0}, {12, 25, 8}};
	}
	if (EndsWith(Bone, "Shoulder"))
	{
		return {{0, 0, 5 * Side}, {3, 4, 6}};
	}
	if (EndsWith(Bone, "ForeArm1"))
	{
		return {{0, 0, 0}, {30, 0, 0}};
	}
	if (EndsWith(Bone, "ForeArm"))
	{
		// The elbow bends one way only.
		return {{8, -45 * Side, 0}, {8, 40, 5}};
	}
	if (EndsWith(Bone, "Arm"))
	{
		return {{0, 10 * Side, -65 * Side}, {20, 25, 20}};
	}
	if (EndsWith(Bone, "UpLeg"))
	{
		return {{-8, 0, 2 * Side}, {25, 6, 6}};
	}
	if (EndsWith(Bone, "Leg"))
	{
		return {{30, 0, 0}, {28, 3, 3}};
	}
	if (EndsWith(Bone, "Foot"))
	{
		return {{-5, 0, 0}, {15, 5, 5}};
	}
	if (EndsWith(Bone, "ToeBase"))
	{
		return {{10, 0, 0}, {10, 0, 0}};
	}
	if (EndsWith(Bone, "Hand"))
	{
		return {{0, 0, 0}, {15, 10, 25}};
	}
	if (Bone.find("Thumb") != std::string::npos)
	{
		return {{10, 15 * Side, 20}, {10, 10, 15}};
	}
	// Other finger joints curl about one axis, more towards the tip.
	return {{0, 0, 25 * Side}, {2, 3, 22}};
}

FZnGenQuat EulerToQuat(double RollDeg, double YawDeg, double PitchDeg)
{
	const double Hx = RollDeg * Pi / 360.0;
	const double Hy = YawDeg * Pi / 360.0;
	const double Hz = PitchDeg * Pi / 360.0;
	const double Cx = std::cos(Hx), Sx = std::sin(Hx);
	const double Cy = std::cos(Hy), Sy = std::sin(Hy);
	const double Cz = std::cos(Hz), Sz = std::sin(Hz);
	// Q = Qz * Qy * Qx
	FZnGenQuat Q;
	Q.W = Cz * Cy * Cx + Sz * Sy * Sx;
	Q.X = Cz * Cy * Sx - Sz * Sy * Cx;
	Q.Y = Cz * Sy * Cx + Sz * Cy * Sx;
	Q.Z = Sz * Cy * Cx - Cz * Sy * Sx;
	return Q;
}

// A smooth signal in about -1..1: two low-frequency sinusoids with random frequency and phase.
struct FZnWave
{
	double F1, P1, F2, P2, Mix;

	static FZnWave Make(FZnGenRandom& Random, double MinHz, double MaxHz)
	{
		FZnWave Wave;
		Wave.F1 = Random.Range(MinHz, MaxHz);
		Wave.P1 = Random.Range(0.0, 2.0 * Pi);
		Wave.F2 = Random.Range(MaxHz, MaxHz * 2.5);
		Wave.P2 = Random.Range(0.0, 2.0 * Pi);
		Wave.Mix = Random.Range(0.15, 0.4);
		return Wave;
	}

	double At(double T) const
	{
		return (1.0 - Mix) * std::sin(2.0 * Pi * F1 * T + P1) + Mix * std::sin(2.0 * Pi * F2 * T + P2);
	}
};

double Clamp(double V, double Lo, double Hi)
{
	return V < Lo ? Lo : (V > Hi ? Hi : V);
}

void AppendInt(std::string& Out, int64 Value)
{
	char Buffer[32];
	const auto Result = std::to_chars(Buffer, Buffer + sizeof(Buffer), Value);
	Out.append(Buffer, Result.ptr);
}

void AppendString(std::string& Out, const std::string& Text)
{
	// Names are plain ASCII identifiers; nothing needs escaping.
	Out += '"';
	Out += Text;
	Out += '"';
}

std::vector<int32> NaturalOrderIfEmpty(const std::vector<int32>& Order, int32 Count)
{
	if (!Order.empty())
	{
		return Order;
	}
	std::vector<int32> Natural(static_cast<size_t>(Count));
	for (int32 I = 0; I < Count; ++I)
	{
		Natural[static_cast<size_t>(I)] = I;
	}
	return Natural;
}

// Numbers separated by commas, without the brackets (the callers own those).
void AppendNumberList(std::string& Out, const std::vector<double>& Values)
{
	for (size_t Index = 0; Index < Values.size(); ++Index)
	{
		if (Index != 0)
		{
			Out += ',';
		}
		FZnMotionGenerator::AppendNumber(Out, Values[Index]);
	}
}

// The one-text shape of a V2 clip: every frame's own text, joined into one array in the given order.
template <typename FFrameToJson>
std::string JoinFramesAsArray(const std::vector<int32>& FrameOrder, int32 FrameCount, FFrameToJson&& FrameToJson)
{
	std::string Out = "[";
	bool bFirst = true;
	for (int32 Frame : NaturalOrderIfEmpty(FrameOrder, FrameCount))
	{
		if (!bFirst)
		{
			Out += ',';
		}
		bFirst = false;
		Out += FrameToJson(Frame);
	}
	Out += ']';
	return Out;
}

// Speech-like activity: syllables at about 4 per second inside phrases of 1.5 to 4 seconds with pauses.
struct FZnSpeech
{
	std::vector<double> PhraseStart, PhraseEnd;
	double SyllableHz, SyllablePhase;

	FZnSpeech(FZnGenRandom& Random, double Duration)
	{
		double T = Random.Range(0.0, 0.6);
		while (T < Duration + 1.0)
		{
			const double Length = Random.Range(1.5, 4.0);
			PhraseStart.push_back(T);
			PhraseEnd.push_back(T + Length);
			T += Length + Random.Range(0.3, 1.2);
		}
		SyllableHz = Random.Range(3.5, 5.0);
		SyllablePhase = Random.Range(0.0, 2.0 * Pi);
	}

	// Envelope 0..1 of the phrase around T, with soft edges.
	double Envelope(double T) const
	{
		for (size_t I = 0; I < PhraseStart.size(); ++I)
		{
			if (T >= PhraseStart[I] && T <= PhraseEnd[I])
			{
				const double Edge = std::min(T - PhraseStart[I], PhraseEnd[I] - T);
				return Clamp(Edge / 0.15, 0.0, 1.0);
			}
		}
		return 0.0;
	}

	// Jaw opening 0..1.
	double Open(double T) const
	{
		const double S = std::sin(2.0 * Pi * SyllableHz * T + SyllablePhase);
		return Envelope(T) * std::pow(std::max(0.0, S), 1.3);
	}
};
} // namespace

void FZnMotionGenerator::AppendNumber(std::string& Out, double Value)
{
	char Buffer[48];
	const auto Result = std::to_chars(
		Buffer, Buffer + sizeof(Buffer), static_cast<double>(static_cast<float>(Value)), std::chars_format::general, 9);
	Out.append(Buffer, Result.ptr);
}

double FZnMotionGenerator::AsWritten(double Value)
{
	std::string Text;
	AppendNumber(Text, Value);
	double Parsed = 0.0;
	// Not std::from_chars: libc++ before 20 cannot read floating point with it.
	fast_float::from_chars(Text.data(), Text.data() + Text.size(), Parsed);
	return Parsed;
}

std::vector<std::string> FZnMotionGenerator::ServiceBoneNames(bool bTwistBones, bool bFingers)
{
	std::vector<std::string> Names;
	for (const char* Bone : BodyBones)
	{
		Names.emplace_back(Bone);
		if (bTwistBones && (Names.back() == "LeftForeArm" || Names.back() == "RightForeArm"))
		{
			Names.push_back(Names.back() + "1");
		}
	}
	if (bFingers)
	{
		for (const char* Side : {"LeftHand", "RightHand"})
		{
			for (const char* Finger : FingerNames)
			{
				for (int32 Joint = 1; Joint <= 3; ++Joint)
				{
					Names.push_back(std::string(Side) + Finger + static_cast<char>('0' + Joint));
				}
			}
		}
	}
	return Names;
}

const std::vector<std::string>& FZnMotionGenerator::FaceChannelNames()
{
	static const std::vector<std::string> Names(std::begin(FaceChannels), std::end(FaceChannels));
	return Names;
}

FZnGenBodyClip FZnMotionGenerator::GenerateBody(const FZnGenBodyOptions& Options)
{
	FZnGenBodyClip Clip;
	FZnGenRandom Random(Options.Seed);
	const int32 Frames = std::max<int32>(0, Options.FrameCount);
	Clip.BoneNames = ServiceBoneNames(Options.bTwistBones, Options.bFingers);

	for (const std::string& Bone : Clip.BoneNames)
	{
		std::string Path = Bone;
		for (std::string Parent = ParentOf(Bone); !Parent.empty(); Parent = ParentOf(Parent))
		{
			Path = Parent + "/" + Path;
		}
		Clip.BonePaths.push_back(Path);

		const FZnJointRange Range = RangeOf(Bone);
		FZnWave Waves[3] = {
			FZnWave::Make(Random, 0.1, 0.6), FZnWave::Make(Random, 0.1, 0.6), FZnWave::Make(Random, 0.1, 0.6)};
		std::vector<FZnGenQuat> Track;
		Track.reserve(static_cast<size_t>(Frames));
		for (int32 Frame = 0; Frame < Frames; ++Frame)
		{
			const double T = Frame / FrameRate;
			double Angles[3];
			for (int32 Axis = 0; Axis < 3; ++Axis)
			{
				Angles[Axis] = Range.Base[Axis] + Range.Amp[Axis] * Waves[Axis].At(T);
			}
			const FZnGenQuat Exact = EulerToQuat(Angles[0], Angles[1], Angles[2]);
			// The service writes floats; keep exactly what the text will say.
			Track.push_back({AsWritten(Exact.X), AsWritten(Exact.Y), AsWritten(Exact.Z), AsWritten(Exact.W)});
		}
		Clip.Rotations.push_back(std::move(Track));
	}

	// Root: a slow wander over the floor, a little bob at step rate, standing about 0.95 m high.
	const FZnWave WanderX = FZnWave::Make(Random, 0.05, 0.2);
	const FZnWave WanderZ = FZnWave::Make(Random, 0.05, 0.2);
	const double StepHz = Random.Range(1.6, 2.0);
	const double Drift = Random.Range(-0.1, 0.1);
	Clip.RootPositions.reserve(static_cast<size_t>(Frames));
	for (int32 Frame = 0; Frame < Frames; ++Frame)
	{
		const double T = Frame / FrameRate;
		const double X = 0.25 * WanderX.At(T);
		const double Y = 0.95 + 0.015 * std::sin(2.0 * Pi * StepHz * T);
		const double Z = 0.25 * WanderZ.At(T) + Drift * T;
		Clip.RootPositions.push_back({AsWritten(X), AsWritten(Y), AsWritten(Z)});
	}
	Clip.TotalTime = AsWritten(Frames / FrameRate);
	return Clip;
}

FZnGenFaceClip FZnMotionGenerator::GenerateFace(const FZnGenFaceOptions& Options)
{
	FZnGenFaceClip Clip;
	FZnGenRandom Random(Options.Seed ^ 0xFACEull);
	const int32 Frames = std::max<int32>(0, Options.FrameCount);
	const double Duration = Frames / FrameRate;
	Clip.ChannelNames = FaceChannelNames();

	// Blinks every 2 to 6 seconds, about a quarter of a second each.
	std::vector<double> Blinks;
	for (double T = Random.Range(0.3, 2.5); T < Duration + 1.0; T += Random.Range(2.0, 6.0))
	{
		Blinks.push_back(T);
	}
	// Gaze holds still for a while and then jumps (saccades), smoothed over a few frames.
	std::vector<double> GazeTimes{0.0}, GazeX{0.0}, GazeY{0.0};
	for (double T = Random.Range(0.5, 1.5); T < Duration + 1.0; T += Random.Range(0.4, 2.5))
	{
		GazeTimes.push_back(T);
		GazeX.push_back(Random.Range(-1.0, 1.0));
		GazeY.push_back(Random.Range(-0.6, 0.6));
	}
	const FZnSpeech Speech(Random, Duration);
	FZnWave Slow[FaceChannelCount];
	for (FZnWave& Wave : Slow)
	{
		Wave = FZnWave::Make(Random, 0.05, 0.3);
	}
	const FZnWave Round = FZnWave::Make(Random, 0.3, 0.9);
	const FZnWave Smile = FZnWave::Make(Random, 0.03, 0.12);

	Clip.Weights.reserve(static_cast<size_t>(Frames));
	for (int32 Frame = 0; Frame < Frames; ++Frame)
	{
		const double T = Frame / FrameRate;
		double Blink = 0.0;
		for (double B : Blinks)
		{
			const double D = std::abs(T - B);
			if (D < 0.13)
			{
				Blink = std::max(Blink, 1.0 - D / 0.13);
			}
		}
		size_t Gaze = 0;
		while (Gaze + 1 < GazeTimes.size() && GazeTimes[Gaze + 1] <= T)
		{
			++Gaze;
		}
		const double Settle = Gaze == 0 ? 1.0 : Clamp((T - GazeTimes[Gaze]) / 0.07, 0.0, 1.0);
		const size_t Prev = Gaze == 0 ? 0 : Gaze - 1;
		const double LookX = GazeX[Prev] + (GazeX[Gaze] - GazeX[Prev]) * Settle;
		const double LookY = GazeY[Prev] + (GazeY[Gaze] - GazeY[Prev]) * Settle;

		const double Open = Speech.Open(T);
		const double Talk = Speech.Envelope(T);
		const double Rounding = 0.5 + 0.5 * Round.At(T);
		const double Smiling = Clamp(0.5 + 0.6 * Smile.At(T), 0.0, 1.0);

		std::vector<double> W(FaceChannelCount, 0.0);
		const auto Noise = [&](int32 Channel, double Amp) { return Amp * (0.5 + 0.5 * Slow[Channel].At(T)); };
		W[0] = 100.0 * Blink + Noise(0, 4.0);
		W[7] = 100.0 * std::min(1.0, Blink * 1.03) + Noise(7, 4.0);
		// Right eye: looking down/in/out/up; the left eye mirrors in and out.
		W[1] = 45.0 * std::max(0.0, -LookY) + 20.0 * Blink;
		W[2] = 40.0 * std::max(0.0, -LookX);
		W[3] = 40.0 * std::max(0.0, LookX);
		W[4] = 45.0 * std::max(0.0, LookY);
		W[8] = W[1];
		W[9] = 40.0 * std::max(0.0, LookX);
		W[10] = 40.0 * std::max(0.0, -LookX);
		W[11] = W[4];
		W[5] = 8.0 + 15.0 * Smiling + Noise(5, 5.0);
		W[12] = 8.0 + 15.0 * Smiling + Noise(12, 5.0);
		W[6] = Noise(6, 12.0) * (1.0 - Blink);
		W[13] = Noise(13, 12.0) * (1.0 - Blink);
		W[14] = Noise(14, 6.0);
		W[15] = Noise(15, 4.0);
		W[16] = Noise(16, 4.0);
		W[17] = 55.0 * Open + 3.0;
		W[18] = 12.0 * Talk * (1.0 - Open) + Noise(18, 3.0);
		W[19] = 40.0 * Talk * Rounding * Open;
		W[20] = 45.0 * Talk * Rounding * (1.0 - Open);
		W[21] = Noise(21, 8.0);
		W[22] = Noise(22, 8.0);
		W[23] = 60.0 * Smiling * (1.0 - 0.5 * Rounding);
		W[24] = 58.0 * Smiling * (1.0 - 0.5 * Rounding);
		W[25] = 20.0 * (1.0 - Smiling) * Noise(25, 1.0);
		W[26] = 20.0 * (1.0 - Smiling) * Noise(26, 1.0);
		W[27] = 15.0 * Smiling;
		W[28] = 15.0 * Smiling;
		W[29] = 25.0 * Talk * (1.0 - Rounding) * Open;
		W[30] = 25.0 * Talk * (1.0 - Rounding) * Open;
		W[31] = 20.0 * Talk * (1.0 - Open) * (1.0 - Rounding);
		W[32] = 15.0 * Talk * (1.0 - Open) * (1.0 - Rounding);
		W[33] = Noise(33, 15.0) * (1.0 - Talk);
		W[34] = Noise(34, 10.0) * (1.0 - Talk);
		W[35] = 30.0 * Talk * std::max(0.0, 0.3 - Open);
		W[36] = 30.0 * Talk * std::max(0.0, 0.3 - Open);
		W[37] = 35.0 * Open * Talk;
		W[38] = 35.0 * Open * Talk;
		W[39] = 25.0 * Open * Talk * (1.0 - Rounding);
		W[40] = 25.0 * Open * Talk * (1.0 - Rounding);
		W[41] = Noise(41, 10.0);
		W[42] = Noise(42, 10.0);
		W[43] = 35.0 * Talk * Noise(43, 1.0) + 5.0;
		W[44] = 20.0 * Talk * Noise(44, 1.0);
		W[45] = 20.0 * Talk * Noise(45, 1.0);
		W[46] = Noise(46, 6.0);
		W[47] = 25.0 * Smiling;
		W[48] = 25.0 * Smiling;
		W[49] = Noise(49, 8.0);
		W[50] = Noise(50, 8.0);

		for (int32 Channel = 0; Channel < FaceChannelCount; ++Channel)
		{
			double Value = Clamp(W[static_cast<size_t>(Channel)], 0.0, 100.0);
			if (Options.bOvershoot && Random.Unit() < 0.02)
			{
				Value = Random.Unit() < 0.5 ? -Random.Range(0.0, 25.0) : 100.0 + Random.Range(0.0, 60.0);
			}
			W[static_cast<size_t>(Channel)] = AsWritten(Value);
		}
		Clip.Weights.push_back(std::move(W));
	}
	return Clip;
}

FZnGenControlRigClip FZnMotionGenerator::GenerateControlRig(const FZnGenFaceOptions& Options, int32 CurveCount)
{
	return FaceToControlRig(GenerateFace(Options), CurveCount);
}

FZnGenControlRigClip FZnMotionGenerator::FaceToControlRig(const FZnGenFaceClip& Face, int32 CurveCount)
{
	FZnGenControlRigClip Clip;
	const int32 Curves = std::clamp<int32>(CurveCount, 0, FaceChannelCount);
	for (int32 Curve = 0; Curve < Curves; ++Curve)
	{
		Clip.CurveNames.push_back("ctrl_" + Face.ChannelNames[static_cast<size_t>(Curve)]);
	}
	for (const std::vector<double>& Frame : Face.Weights)
	{
		std::vector<double> Values;
		Values.reserve(static_cast<size_t>(Curves));
		for (int32 Curve = 0; Curve < Curves; ++Curve)
		{
			// Gaze controls are signed (out minus in); everything else is a 0..1 amount.
			double Value = Frame[static_cast<size_t>(Curve)] / 100.0;
			if (Curve == 2 || Curve == 9)
			{
				Value = (Frame[static_cast<size_t>(Curve + 1)] - Frame[static_cast<size_t>(Curve)]) / 100.0;
			}
			Values.push_back(AsWritten(Value));
		}
		Clip.Values.push_back(std::move(Values));
	}
	return Clip;
}

std::string FZnMotionGenerator::BodyToJson(const FZnGenBodyClip& Clip)
{
	std::string Out;
	Out.reserve(static_cast<size_t>(Clip.FrameCount()) * Clip.BoneNames.size() * 64 + 4096);
	Out += "{\"totalTime\":";
	AppendNumber(Out, Clip.TotalTime);
	Out += ",\"curves\":[";
	for (size_t Bone = 0; Bone < Clip.BoneNames.size(); ++Bone)
	{
		if (Bone != 0)
		{
			Out += ',';
		}
		Out += "{\"name\":";
		AppendString(Out, Clip.BoneNames[Bone]);
		Out += ",\"path\":";
		AppendString(Out, Clip.BonePaths[Bone]);
		Out += ",\"rotas\":[";
		const std::vector<FZnGenQuat>& Track = Clip.Rotations[Bone];
		for (size_t Frame = 0; Frame < Track.size(); ++Frame)
		{
			Out += Frame == 0 ? "{\"x\":" : ",{\"x\":";
			AppendNumber(Out, Track[Frame].X);
			Out += ",\"y\":";
			AppendNumber(Out, Track[Frame].Y);
			Out += ",\"z\":";
			AppendNumber(Out, Track[Frame].Z);
			Out += ",\"w\":";
			AppendNumber(Out, Track[Frame].W);
			Out += '}';
		}
		Out += "]}";
	}
	Out += "],\"Hips\":{\"name\":\"Hips\",\"path\":\"Hips\",\"pos\":[";
	for (size_t Frame = 0; Frame < Clip.RootPositions.size(); ++Frame)
	{
		Out += Frame == 0 ? "{\"x\":" : ",{\"x\":";
		AppendNumber(Out, Clip.RootPositions[Frame].X);
		Out += ",\"y\":";
		AppendNumber(Out, Clip.RootPositions[Frame].Y);
		Out += ",\"z\":";
		AppendNumber(Out, Clip.RootPositions[Frame].Z);
		Out += '}';
	}
	Out += "]}}";
	return Out;
}

std::string FZnMotionGenerator::BodyFrameToJsonV2(const FZnGenBodyClip& Clip, int32 Frame)
{
	std::string Out;
	Out.reserve(Clip.BoneNames.size() * 64 + 128);
	const FZnGenVec& Root = Clip.RootPositions[static_cast<size_t>(Frame)];
	Out += "{\"frameIndex\":";
	AppendInt(Out, static_cast<int64>(Frame) + 1);
	Out += ",\"pos\":{\"Hips\":[";
	AppendNumber(Out, Root.X);
	Out += ',';
	AppendNumber(Out, Root.Y);
	Out += ',';
	AppendNumber(Out, Root.Z);
	Out += "]},\"rot\":{";
	for (size_t Bone = 0; Bone < Clip.BoneNames.size(); ++Bone)
	{
		const FZnGenQuat& Q = Clip.Rotations[Bone][static_cast<size_t>(Frame)];
		if (Bone != 0)
		{
			Out += ',';
		}
		AppendString(Out, Clip.BoneNames[Bone]);
		Out += ":[";
		AppendNumber(Out, Q.X);
		Out += ',';
		AppendNumber(Out, Q.Y);
		Out += ',';
		AppendNumber(Out, Q.Z);
		Out += ',';
		AppendNumber(Out, Q.W);
		Out += ']';
	}
	Out += "}}";
	return Out;
}

std::string FZnMotionGenerator::BodyToJsonV2(const FZnGenBodyClip& Clip, const std::vector<int32>& FrameOrder)
{
	return JoinFramesAsArray(
		FrameOrder, Clip.FrameCount(), [&Clip](int32 Frame) { return BodyFrameToJsonV2(Clip, Frame); });
}

std::string FZnMotionGenerator::FaceToJson(const FZnGenFaceClip& Clip)
{
	std::string Out;
	Out.reserve(Clip.Weights.size() * FaceChannelCount * 12 + 16);
	Out += '[';
	for (size_t Frame = 0; Frame < Clip.Weights.size(); ++Frame)
	{
		Out += Frame == 0 ? "[" : ",[";
		AppendNumberList(Out, Clip.Weights[Frame]);
		Out += ']';
	}
	Out += ']';
	return Out;
}

std::string FZnMotionGenerator::FaceFrameToJsonV2(const FZnGenFaceClip& Clip, int32 Frame)
{
	std::string Out = "{\"frameIndex\":";
	AppendInt(Out, static_cast<int64>(Frame) + 1);
	Out += ",\"bs\":[";
	AppendNumberList(Out, Clip.Weights[static_cast<size_t>(Frame)]);
	Out += "]}";
	return Out;
}

std::string FZnMotionGenerator::FaceToJsonV2(const FZnGenFaceClip& Clip, const std::vector<int32>& FrameOrder)
{
	return JoinFramesAsArray(
		FrameOrder, Clip.FrameCount(), [&Clip](int32 Frame) { return FaceFrameToJsonV2(Clip, Frame); });
}

std::string FZnMotionGenerator::ControlRigToJson(const FZnGenControlRigClip& Clip)
{
	std::string Out = "{\"curve_names\":[";
	for (size_t Curve = 0; Curve < Clip.CurveNames.size(); ++Curve)
	{
		if (Curve != 0)
		{
			Out += ',';
		}
		AppendString(Out, Clip.CurveNames[Curve]);
	}
	Out += "],\"curve_data\":[";
	for (size_t Frame = 0; Frame < Clip.Values.size(); ++Frame)
	{
		Out += Frame == 0 ? "[" : ",[";
		AppendNumberList(Out, Clip.Values[Frame]);
		Out += ']';
	}
	Out += "]}";
	return Out;
}

std::vector<int32> FZnMotionGenerator::ShuffledFrameOrder(int32 Count, uint64 Seed)
{
	std::vector<int32> Order = NaturalOrderIfEmpty({}, std::max<int32>(0, Count));
	FZnGenRandom Random(Seed ^ 0x5EEDull);
	for (size_t I = Order.size(); I > 1; --I)
	{
		const size_t J = static_cast<size_t>(Random.Next() % I);
		std::swap(Order[I - 1], Order[J]);
	}
	return Order;
}
