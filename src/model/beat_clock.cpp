#include "model/beat_clock.h"

#include <limits>

#include "model/tune.h"
#include "platform/numbers.h"

namespace zelmar {

double BeatClock::Next(const Tune& tune) {
  ++beats_;
  if (tune.BeatsPerBar() == 0) throw DivisionError();
  const int per_bar = tune.BeatsPerBar();
  const std::int32_t bars_before = start_bar_ - 1 + beats_ / per_bar;
  const auto beat = static_cast<std::int16_t>(beats_ % per_bar + 1);
  // The beats before a bar are counted in 16 bits.
  if (std::int64_t{bars_before} * per_bar <= std::numeric_limits<std::int16_t>::max() - per_bar) {
    const auto time = [&tune](std::int32_t bar, std::int16_t beat_of_bar) {
      return tune.TimeFromPulse(static_cast<std::int16_t>(bar), beat_of_bar, 0, tune.BeatsPerBar(),
                                tune.BeatLength());
    };
    last_ = static_cast<double>(time(bars_before + 1, beat)) - time(start_bar_, 1);
  } else {
    last_ += Quotient(tune.MsPerCrotchet() * 4.0, tune.BeatLength());
  }
  return last_;
}

}  // namespace zelmar
