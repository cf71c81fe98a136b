// From voices as written to events in time, with the bars checked on the way.
#pragma once

#include <deque>

#include "abc/abc_fields.h"
#include "abc/abc_parts.h"
#include "abc/abc_tune.h"
#include "abc/abc_voice.h"

namespace zelmar {

// Fills tracks, events, words, bar count and lead-in of the tune, whose metre and melody track are set.
// Throws TextError for a bar that does not add up, a tie that leads nowhere, voices of unequal length, a part
// of the order that a voice does not have.
void TimeVoices(const std::deque<AbcVoice>& voices, const AbcMetre& metre, const AbcPlayOrder& order,
                AbcTune& tune);

}  // namespace zelmar
