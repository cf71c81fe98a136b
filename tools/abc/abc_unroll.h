// Repeats and endings written out: the order in which the items of a voice are played.
#pragma once

#include <vector>

#include "abc/abc_voice.h"

namespace zelmar {

struct AbcPlayed {
  std::size_t item = 0;
  int pass = 1;  // which time the passage is played
};

// Throws TextError for endings that lead nowhere, and for music of more than 200,000 items.
std::vector<AbcPlayed> UnrollRepeats(const std::vector<AbcItem>& items);

}  // namespace zelmar
