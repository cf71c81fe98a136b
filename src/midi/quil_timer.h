// The timer of a playing tune: asks the wall clock, round after round, whether a beat or a bang is due.
//
// Fire blocks until Enabled is false. It serves the event queue before each check and waits in the event loop
// between rounds, so every other handler runs nested inside it.
#pragma once

#include <QObject>
#include <cstdint>

#include "model/property.h"

namespace zelmar {

class QuilTimer : public QObject {
  Q_OBJECT

 public:
  // Raises both events at once, then each whenever its period has passed. A late round catches up: marks
  // advance by the period, and the periods are read afresh on every round.
  void Fire();

 Q_SIGNALS:
  void Bang();
  void NewBeat();

 private:
  ZELMAR_PROPERTY(bool, Enabled, false)
  ZELMAR_PROPERTY(std::int32_t, Interval, 0)  // milliseconds between bangs
  ZELMAR_PROPERTY(std::int16_t, Pulse, 0)     // milliseconds between beats
};

}  // namespace zelmar
