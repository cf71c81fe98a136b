#include "midi/quil_timer.h"

#include <algorithm>

#include "platform/services.h"

namespace zelmar {

namespace {

double ClockMilliseconds() {
  return SecondsSinceMidnight() * 1000.0;
}

}  // namespace

void QuilTimer::Fire() {
  SetEnabled(true);
  Q_EMIT Bang();
  Q_EMIT NewBeat();
  double bang_mark = ClockMilliseconds();
  double beat_mark = bang_mark;
  while (Enabled()) {
    ServeEvents();
    if (!Enabled()) break;
    if (ClockMilliseconds() - beat_mark >= Pulse()) {
      beat_mark += Pulse();
      Q_EMIT NewBeat();
    }
    ServeEvents();
    if (!Enabled()) break;
    if (ClockMilliseconds() - bang_mark >= Interval()) {
      bang_mark += Interval();
      Q_EMIT Bang();
    }
    if (Enabled()) WaitUntil(std::min(bang_mark + Interval(), beat_mark + Pulse()) / 1000.0);
  }
}

}  // namespace zelmar
