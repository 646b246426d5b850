// Which synthesiser voice speaks a request. Pure; any thread.
//
// - A VoiceName naming an installed voice (as the synthesiser spells it, e.g. "en-us" or
//   "gmw/en-US") is used as given; other names (a cloud voice such as "aixia") are ignored.
// - Otherwise a text with any Han character gets the Mandarin voice "cmn-latn-pinyin" and every
//   other text the English voice "en". The Mandarin voice without the suffix reads latin letters
//   as English, and the installed dictionary spells many characters in pinyin with tone digits,
//   which that voice would then read out as English words; the pinyin voice reads them as Mandarin.
// - Gender "female" adds the variant "+f3"; "male" and anything else keep the voice's own, which
//   is male for both default voices.
#pragma once

#include "ZnContentSource.h"

#include <string>

// True when the UTF-8 Text holds a CJK unified ideograph (basic block, extension A, or the
// compatibility block). Malformed UTF-8 is skipped byte by byte, never read past the end.
bool ContainsHanCharacter(const std::string& Text);

// The voice name to hand the synthesiser for Request when its VoiceName is not an installed voice.
std::string DefaultVoiceFor(const FZnSpeechRequest& Request);

// The variant suffix for Gender ("+f3" or "").
std::string VoiceVariantFor(const std::string& Gender);
