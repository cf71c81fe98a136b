// The machine's clock and Qt's event queue.
#pragma once

#include "platform/services.h"

namespace zelmar {

class RealClock : public Clock {
 public:
  double SecondsSinceMidnight() override;
};

class RealEventService : public EventService {
 public:
  void Serve() override;
  void WaitUntil(double seconds) override;
};

}  // namespace zelmar
