#include "model/tune_position.h"

#include "model/pulses.h"
#include "platform/numbers.h"

namespace zelmar {

void TunePosition::Rewind() {
  BarNumber_ = 1;
  BeatWithinBar_ = 1;
  BeatNumber_ = 1;
}

void TunePosition::WorkOutBarAndBeat(std::int16_t beats_per_bar) {
  if (beats_per_bar == 0) throw DivisionError();
  BarNumber_ =
      IntegerPart<std::int16_t>((static_cast<double>(beats_per_bar) + BeatNumber_ - 1) / beats_per_bar);
  BeatWithinBar_ = Narrow<std::int16_t>(BeatNumber_ - (BarNumber_ - 1) * beats_per_bar);
}

void TunePosition::AdoptTempo(std::int16_t tempo) {
  MsPerCrotchet_ = static_cast<float>(MillisecondsOfCrotchet(tempo));
  TempoCurrent_ = tempo;
}

}  // namespace zelmar
