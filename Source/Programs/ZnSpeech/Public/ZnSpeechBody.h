// A body that moves with the speech. Pure and seeded; any thread.
//
// The idle is the motion generator's clip for the request's seed, brought down to a fifth of its
// swing around each bone's average pose (and a seventh of its root wander), with two slow
// rhythms on top: breathing (one breath every 3.5 to 5 s: the three spine bones bend 0.8 degrees
// and the shoulders rise 0.6 degrees, the root 4 mm) and a weight shift from foot to foot (every
// 8 to 14 s: the root sways 2.5 cm sideways and the hips roll 1.5 degrees with it).
//
// Beat gestures fall on word starts: the first word of every phrase and every stressed word, at
// least 0.6 s apart. The forearm bends a further 14 degrees, the upper arm lifts 8 and the hand
// flicks 10, peaking at the word's start (rising over 0.2 s before it, settling over 0.45 s
// after). Beats alternate: two with the right hand, one with the left; a stressed word that also
// starts a phrase gets both hands. Head nods fall on stressed words at least 1.2 s apart: the
// head dips 5 degrees and the neck 2, peaking 0.1 s after the word starts.
#pragma once

#include "ZnContentSource.h"
#include "ZnMotionGenerator.h"
#include "ZnSpeechAccents.h"

#include <vector>

enum class EZnGestureKind : uint8
{
	BeatRight,
	BeatLeft,
	BeatBoth,
	Nod
};

struct FZnGesture
{
	// The word start (seconds) the gesture peaks on.
	double Time = 0.0;
	EZnGestureKind Kind = EZnGestureKind::BeatRight;
};

std::vector<FZnGesture> PlanGestures(const std::vector<FZnWordAccent>& Accents);

// FrameCount frames of the generator's 54 bones (twist and finger bones included), values as the
// JSON text will say them.
FZnGenBodyClip BuildSpeechBody(int32 FrameCount, const std::vector<FZnGesture>& Gestures, uint64 Seed);

// V1: {"totalTime","curves","Hips"}; V2: an array of frame objects {"frameIndex","pos","rot"}.
std::string BodyToJson(const FZnGenBodyClip& Body, EZnBodyShape Shape);
