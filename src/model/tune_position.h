// Where a tune stands: the bar and beat that its views show, and the tempo in force there. Whoever plays the
// tune or goes to a place in it writes here.
#pragma once

#include <cstdint>

#include "model/property.h"

namespace zelmar {

class TunePosition {
 public:
  // At bar 1, beat 1.
  void Rewind();
  // Makes BarNumber and BeatWithinBar those of BeatNumber. Throws DivisionError for 0 beats per bar,
  // OverflowError for a bar that has no number.
  void WorkOutBarAndBeat(std::int16_t beats_per_bar);
  // Sets TempoCurrent and MsPerCrotchet. Throws DivisionError for 0.
  void AdoptTempo(std::int16_t tempo);

  ZELMAR_PROPERTY(std::int16_t, BarNumber, 0)
  ZELMAR_PROPERTY(std::int16_t, BeatWithinBar, 0)
  ZELMAR_PROPERTY(std::int32_t, BeatNumber, 0)  // beats counted from the start of the tune
  ZELMAR_PROPERTY(std::int16_t, TempoCurrent, 120)
  ZELMAR_PROPERTY(float, MsPerCrotchet, 500.0F)
};

}  // namespace zelmar
