// The one way in which a window or a command starts a tune.
#pragma once

#include <cstdint>

namespace zelmar {

class Tune;

// Plays from the head of `bar` (from 1; 0 means 1), with the start at what the clock reads now. Returns at
// the end of the playing and serves events meanwhile: the caller holds the tune, and looks afterwards whether
// it still exists itself.
void PlayFromNow(Tune& tune, std::int16_t bar = 1);

// The same within a playing of that tune: it takes that one's place, and the Play that is under way goes on
// with it. Returns at once.
void JumpFromNow(Tune& tune, std::int16_t bar);

}  // namespace zelmar
