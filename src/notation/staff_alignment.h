// Snapping of notes to the nearest written value and to the grid of the bar.
#pragma once

#include <cstdint>

#include "model/tone.h"

namespace zelmar {

// The bar that notes are snapped in.
struct BarMeasure {
  std::int16_t pulses_per_beat = 120;
  std::int16_t beats_per_bar = 4;
};

// Snaps the duration when `save_durations` is set, then the start when `align_boundaries` is set.
void AlignNote(Tone& tone, const BarMeasure& measure, bool save_durations, bool align_boundaries);

// Moves the start to the nearest multiple of `grid` pulses, halves upward, into the next beat or bar if need
// be.
void RoundBoundary(Tone& tone, const BarMeasure& measure, std::int16_t grid);

}  // namespace zelmar
