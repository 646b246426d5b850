// Blinks, gaze and brows of a speaking face. Pure and seeded: the same inputs give the same
// curves; any thread.
//
// Blinks: the first comes 0.4 to 2.0 s in; the gaps between blink starts are 1.4 s plus an
// exponentially distributed wait with a mean of 2.0 s, capped at 7 s, so they come irregularly
// at about 15 a minute, as in conversation. A blink closes in two frames (45 %, 90 %), stays
// shut for one (100 %) and opens over two to four frames, so it is 5 to 7 frames long; both eyes
// together. A blink that would not end inside the clip is left out.
//
// Gaze: the eyes hold a point for 0.6 to 2.4 s, then jump (a saccade, over two frames) to a new
// one within a small cone around the listener (look weights up to 18 % sideways and 12 % up or
// down), returning to the centre every third jump.
//
// Brows: each stressed word lifts the inner and outer brows by 35 %, rising over 0.1 s before the
// word starts and falling over 0.35 s after it ends.
#pragma once

#include "ZnMotionGenerator.h"
#include "ZnSpeechAccents.h"

#include <vector>

struct FZnBlink
{
	int32 FirstFrame = 0;
	// Percent per frame from FirstFrame on.
	std::vector<double> Closure;
};

std::vector<FZnBlink> PlanBlinks(int32 FrameCount, uint64 Seed);

// Writes the blink, gaze and brow channels of every frame of Face.
void AddBlinks(const std::vector<FZnBlink>& Blinks, FZnGenFaceClip& Face);
void AddGaze(uint64 Seed, FZnGenFaceClip& Face);
void AddBrowLifts(const std::vector<FZnWordAccent>& Accents, FZnGenFaceClip& Face);
