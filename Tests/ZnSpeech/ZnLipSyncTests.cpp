// The mouth follows the speech: it opens with the loudness, rests in pauses and closes for every
// p, b and m, all read back from the decoded face.
#include "ZnSpeechTestHelpers.h"

#include "ZnSpeechSynthesizer.h"
#include "ZnVisemes.h"

#include <gtest/gtest.h>

#include <numeric>

using namespace ZnSpeechTest;

namespace
{
const char* const Paragraph =
	"When the morning came, the people of the harbour walked down to the water. Nobody spoke for a "
	"while. Then an old fisherman lifted his hand, pointed at the horizon, and said: look, the boats "
	"are coming back. Everybody cheered, and the children ran along the pier, waving and shouting.";

double Correlation(const std::vector<double>& A, const std::vector<double>& B)
{
	const size_t Count = std::min(A.size(), B.size());
	const double MeanA = std::accumulate(A.begin(), A.begin() + static_cast<std::ptrdiff_t>(Count), 0.0) / Count;
	const double MeanB = std::accumulate(B.begin(), B.begin() + static_cast<std::ptrdiff_t>(Count), 0.0) / Count;
	double Cov = 0.0, VarA = 0.0, VarB = 0.0;
	for (size_t Index = 0; Index < Count; ++Index)
	{
		Cov += (A[Index] - MeanA) * (B[Index] - MeanB);
		VarA += (A[Index] - MeanA) * (A[Index] - MeanA);
		VarB += (B[Index] - MeanB) * (B[Index] - MeanB);
	}
	return Cov / std::sqrt(VarA * VarB);
}

} // namespace

TEST(ZnLipSyncTests, JawOpeningFollowsTheLoudnessOverAParagraph)
{
	const FZnGeneratedMedia Media = Speak(Paragraph);
	const FTestAudio Audio = ReadCanonicalWav(Media.Wav);
	ASSERT_GT(Audio.Duration(), 10.0);
	const FZnFaceData Face = DecodeFace(Media.FaceJson);
	const std::vector<float> Jaw = Curve(Face, "JawOpen");
	const std::vector<double> Levels = ForwardFrameRms(Audio, static_cast<int32>(Jaw.size()));
	const double R = Correlation(Levels, std::vector<double>(Jaw.begin(), Jaw.end()));
	EXPECT_GE(R, 0.6);
	RecordProperty("Correlation", std::to_string(R));
	// The jaw really moves: it opens wide on vowels and rests near zero.
	EXPECT_GT(*std::max_element(Jaw.begin(), Jaw.end()), 0.6f);
	EXPECT_LT(*std::min_element(Jaw.begin(), Jaw.end()), 0.02f);
}

TEST(ZnLipSyncTests, JawRestsInPausesOfAFifthOfASecondOrMore)
{
	FZnSpeechRequest Request;
	Request.Text = Paragraph;
	const FZnSynthesizedSpeech Speech = Synthesize(Request);
	const FZnGeneratedMedia Media = Speak(Request);
	const std::vector<float> Jaw = Curve(DecodeFace(Media.FaceJson), "JawOpen");

	int32 PausesSeen = 0;
	for (size_t Index = 0; Index < Speech.Phonemes.size(); ++Index)
	{
		const double Start = Speech.Phonemes[Index].Time;
		// Consecutive pause events make one pause.
		size_t Next = Index;
		while (Next < Speech.Phonemes.size() && Speech.Phonemes[Next].Name.empty())
		{
			++Next;
		}
		if (Next == Index)
		{
			continue;
		}
		const double End = Next < Speech.Phonemes.size() ? Speech.Phonemes[Next].Time : Speech.DurationSeconds();
		Index = Next - 1;
		if (End - Start < 0.2)
		{
			continue;
		}
		++PausesSeen;
		// Frames wholly inside the pause, a frame clear of either edge.
		for (int32 Frame = static_cast<int32>(std::ceil(Start * 30.0)) + 1;
			 Frame <= static_cast<int32>(std::floor(End * 30.0)) - 1 && Frame < static_cast<int32>(Jaw.size()); ++Frame)
		{
			EXPECT_LE(Jaw[static_cast<size_t>(Frame)], 0.05f)
				<< "frame " << Frame << " in the pause " << Start << ".." << End;
		}
	}
	// The paragraph has sentence breaks and a trailing pause.
	EXPECT_GE(PausesSeen, 3);
}

TEST(ZnLipSyncTests, LipsCloseForEveryBilabialWithinOneFrame)
{
	FZnSpeechRequest Request;
	Request.Text = "Bob may buy a big blue map, maybe, but Pam prefers apples and plums.";
	const FZnSynthesizedSpeech Speech = Synthesize(Request);
	const FZnFaceData Face = DecodeFace(Speak(Request).FaceJson);
	const std::vector<float> Close = Curve(Face, "MouthClose");
	const std::vector<float> Jaw = Curve(Face, "JawOpen");

	int32 Bilabials = 0;
	for (const FZnPhonemeEvent& Phoneme : Speech.Phonemes)
	{
		const char First = Phoneme.Name.empty() ? '\0' : Phoneme.Name[0];
		if (First != 'p' && First != 'b' && First != 'm')
		{
			continue;
		}
		++Bilabials;
		const int32 Nearest = static_cast<int32>(std::lround(Phoneme.Time * 30.0));
		bool bClosed = false;
		for (int32 Frame = std::max(0, Nearest - 1); Frame <= Nearest + 1 && Frame < static_cast<int32>(Close.size());
			 ++Frame)
		{
			const double FrameTime = Frame / 30.0;
			if (std::abs(FrameTime - Phoneme.Time) <= 1.0 / 30.0 && Close[static_cast<size_t>(Frame)] >= 0.5f &&
				Jaw[static_cast<size_t>(Frame)] <= 0.1f)
			{
				bClosed = true;
			}
		}
		EXPECT_TRUE(bClosed) << "'" << Phoneme.Name << "' at " << Phoneme.Time << " s";
	}
	// b, m, b, b, m, m, b, p, m, p, p, p, m counted by ear; the synthesiser may merge a few.
	EXPECT_GE(Bilabials, 10);
}

TEST(ZnLipSyncTests, RoundedAndSpreadVowelsShapeTheLips)
{
	// "Who knew" is all rounded vowels, "we see she eats" all spread ones.
	const FZnFaceData Rounded = DecodeFace(Speak("Who knew? Two blue shoes.").FaceJson);
	const FZnFaceData Spread = DecodeFace(Speak("Neat kitty, eat it, Lizzy.").FaceJson);
	const auto Peak = [](const std::vector<float>& Values) { return *std::max_element(Values.begin(), Values.end()); };
	EXPECT_GT(Peak(Curve(Rounded, "MouthPucker")), 0.4f);
	EXPECT_LT(Peak(Curve(Spread, "MouthPucker")), Peak(Curve(Rounded, "MouthPucker")) / 2);
	EXPECT_GT(Peak(Curve(Spread, "MouthStretchLeft")), 0.25f);
	EXPECT_LT(Peak(Curve(Rounded, "MouthStretchLeft")), Peak(Curve(Spread, "MouthStretchLeft")));
}

TEST(ZnLipSyncTests, FricativesFAndVRollTheLowerLip)
{
	const FZnFaceData Face = DecodeFace(Speak("Five fine violins.").FaceJson);
	const std::vector<float> Roll = Curve(Face, "MouthRollLower");
	EXPECT_GT(*std::max_element(Roll.begin(), Roll.end()), 0.3f);
}

TEST(ZnLipSyncTests, VisemeTableSortsPhonemesByTheirFirstSound)
{
	EXPECT_EQ(VisemeOfPhoneme(""), EZnViseme::Silence);
	EXPECT_EQ(VisemeOfPhoneme("p"), EZnViseme::Bilabial);
	EXPECT_EQ(VisemeOfPhoneme("m"), EZnViseme::Bilabial);
	EXPECT_EQ(VisemeOfPhoneme("v"), EZnViseme::Labiodental);
	EXPECT_EQ(VisemeOfPhoneme("tʃ"), EZnViseme::Postalveolar);
	EXPECT_EQ(VisemeOfPhoneme("tɕ"), EZnViseme::Postalveolar);
	EXPECT_EQ(VisemeOfPhoneme("th"), EZnViseme::Alveolar);
	EXPECT_EQ(VisemeOfPhoneme("uː"), EZnViseme::RoundedClose);
	EXPECT_EQ(VisemeOfPhoneme("ɔː"), EZnViseme::RoundedOpen);
	EXPECT_EQ(VisemeOfPhoneme("aɪ"), EZnViseme::OpenVowel);
	EXPECT_EQ(VisemeOfPhoneme("iː"), EZnViseme::SpreadVowel);
	EXPECT_EQ(VisemeOfPhoneme("ə"), EZnViseme::MidVowel);
	// Unknown names get a neutral, slightly open mouth rather than nothing.
	EXPECT_EQ(VisemeOfPhoneme("\xff\xfe"), EZnViseme::Velar);
	EXPECT_GT(MouthPoseOf(EZnViseme::OpenVowel).JawOpen, MouthPoseOf(EZnViseme::MidVowel).JawOpen);
	EXPECT_GT(MouthPoseOf(EZnViseme::RoundedClose).Pucker, 0.5f);
}
