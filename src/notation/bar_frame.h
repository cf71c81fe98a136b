// Where things stand in a bar: the lines of its staff, and its beats between the head and the bar line.
#pragma once

#include <cstdint>

namespace zelmar {

// Lengths are twips, times pulses.
struct BarFrame {
  float line_gap = 0.0F;
  float staff_width = 0.0F;
  float notes_left = 0.0F;  // of the first beat
  std::int16_t ticks_per_beat = 120;
  std::int16_t beats_per_bar = 4;

  float BeatWidth() const { return (staff_width - notes_left) / static_cast<float>(beats_per_bar); }
  float XOf(std::int16_t beat, std::int16_t tick) const {
    const float position =
        static_cast<float>(beat) + static_cast<float>(tick) / static_cast<float>(ticks_per_beat);
    return (position - 1.0F) / static_cast<float>(beats_per_bar) * (staff_width - notes_left) + notes_left;
  }
  float YOfStep(int step) const { return 8.5F * line_gap - static_cast<float>(step) * line_gap / 2.0F; }
  // A beat is a quaver, and three of them are a group.
  bool CompoundTime() const { return ticks_per_beat == 60; }
};

}  // namespace zelmar
