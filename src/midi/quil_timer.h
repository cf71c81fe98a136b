// The timer of a playing tune: asks the wall clock, round after round, whether a beat or a bang is due.
//
// Fire blocks until Enabled is false. It serves the event queue before each check and waits in the event loop
// between rounds, so every other handler runs nested inside it.
#pragma once

#include <QObject>
#include <cstdint>
#include <optional>

#include "model/property.h"

namespace zelmar {

class QuilTimer : public QObject {
  Q_OBJECT

 public:
  // Raises both events at once, then each whenever its moment has come: a period behind the last one. A late
  // round catches up: marks advance by the period, and the periods are read afresh on every round.
  void Fire();

  // The reading of the clock, in milliseconds since midnight, at which the next beat is due. For whoever
  // hears of a beat and knows better than by Pulse when the next one is; holds for that one.
  void SetNextBeat(double milliseconds) { next_beat_ = milliseconds; }

 Q_SIGNALS:
  void Bang();
  void NewBeat();

 private:
  double NextBeat() const { return next_beat_.value_or(beat_mark_ + Pulse()); }

  double beat_mark_ = 0.0;  // when the last beat was due
  std::optional<double> next_beat_;
  ZELMAR_PROPERTY(bool, Enabled, false)
  ZELMAR_PROPERTY(std::int32_t, Interval, 0)  // milliseconds between bangs
  ZELMAR_PROPERTY(std::int16_t, Pulse, 0)     // milliseconds between beats
};

}  // namespace zelmar
