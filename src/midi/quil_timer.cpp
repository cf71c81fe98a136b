#include "midi/quil_timer.h"

#include <algorithm>

#include "platform/services.h"

namespace zelmar {

namespace {

// What a reading of the clock loses, in milliseconds, on its way from seconds and back.
constexpr double kClockRounding = 1e-6;

double ClockMilliseconds() {
  return SecondsSinceMidnight() * 1000.0;
}

}  // namespace

void QuilTimer::Fire() {
  SetEnabled(true);
  next_beat_.reset();
  Q_EMIT Bang();
  Q_EMIT NewBeat();
  double bang_mark = ClockMilliseconds();
  beat_mark_ = bang_mark;
  while (Enabled()) {
    ServeEvents();
    if (!Enabled()) break;
    if (ClockMilliseconds() - NextBeat() >= -kClockRounding) {
      beat_mark_ = NextBeat();
      next_beat_.reset();
      Q_EMIT NewBeat();
    }
    ServeEvents();
    if (!Enabled()) break;
    if (ClockMilliseconds() - bang_mark >= Interval()) {
      bang_mark += Interval();
      Q_EMIT Bang();
    }
    if (Enabled()) WaitUntil(std::min(bang_mark + Interval(), NextBeat()) / 1000.0);
  }
}

}  // namespace zelmar
