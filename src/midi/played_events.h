// Which events of a tune playback waits for and sends; all others are passed over.
#pragma once

#include <algorithm>
#include <array>

#include "model/event_type.h"

namespace zelmar {

inline constexpr int kChannelCount = 16;

// Controllers that a tune may send.
inline constexpr std::array<EventType, 16> kPlayedControllers = {0,  1,  5,  7,  10, 11,  32,  64,
                                                                 65, 84, 91, 92, 93, 120, 121, 123};

inline bool IsPlayedController(EventType type) {
  return std::find(kPlayedControllers.begin(), kPlayedControllers.end(), type) != kPlayedControllers.end();
}

}  // namespace zelmar
