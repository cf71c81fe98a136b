#include "midi/quil_timer.h"

#include <algorithm>

#include "platform/services.h"

namespace zelmar {

namespace {

double ClockMilliseconds() {
  return SecondsSinceMidnight() * 1000.0;
}

// A clock that was waited for until that very moment may read a rounding error less.
bool HasCome(double milliseconds) {
  constexpr double kRounding = 1e-6;
  return ClockMilliseconds() >= milliseconds - kRounding;
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
    if (HasCome(NextBeat())) {
      beat_mark_ = NextBeat();
      next_beat_.reset();
      Q_EMIT NewBeat();
    }
    ServeEvents();
    if (!Enabled()) break;
    if (HasCome(bang_mark + Interval())) {
      bang_mark += Interval();
      Q_EMIT Bang();
    }
    if (Enabled()) WaitUntil(std::min(bang_mark + Interval(), NextBeat()) / 1000.0);
  }
}

}  // namespace zelmar
