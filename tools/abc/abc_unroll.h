// Repeats and endings written out: the order in which the items of a voice are played.
#pragma once

#include <span>
#include <vector>

#include "abc/abc_voice.h"

namespace zelmar {

struct AbcPlayed {
  std::size_t item = 0;
  int pass = 1;  // which time the passage is played
};

inline constexpr std::size_t kMostPlayed = 200000;

// Throws TextError for endings that lead nowhere, and for music of more than kMostPlayed items.
std::vector<AbcPlayed> UnrollRepeats(std::span<const AbcItem> items);

}  // namespace zelmar
