// When the beats of one playing come: each where the time model of the tune has it, counted from the head of
// the bar at which the playing began.
#pragma once

#include <cstdint>

namespace zelmar {

class Tune;

class BeatClock {
 public:
  BeatClock() = default;
  explicit BeatClock(std::int16_t start_bar) : start_bar_(start_bar) {}

  // Milliseconds from the start of the playing to the next beat; the first call tells of the second beat, as
  // the first one is at 0. Throws as TimeFromPulse does. Beyond the last bar that can be counted beats come
  // at the tempo in force.
  double Next(const Tune& tune);

 private:
  std::int16_t start_bar_ = 1;
  std::int32_t beats_ = 0;  // from the start of the playing to the last one told of
  double last_ = 0.0;
};

}  // namespace zelmar
