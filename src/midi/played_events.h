// Which events of a tune playback waits for and sends; all others are passed over.
#pragma once

#include <algorithm>
#include <array>

#include "model/event_type.h"

namespace zelmar {

// Controllers that a tune may send.
inline constexpr std::array<EventType, 16> kPlayedControllers = {
    BANK_SELECT_MSB_0,  MOD_WHEEL,          PORTAMENTO_TIME, MAIN_VOLUME,    PAN,
    EXPRESS_CONTROLLER, BANK_SELECT_LSB_32, DAMPER_PEDAL,    PORTAMENTO,     PORTAMENTO_CONTROL,
    EXTERNAL_FX_DEPTH,  TREMELO_DEPTH,      CHORUS_DEPTH,    ALL_SOUNDS_OFF, RESET_ALL_CONTROLLERS,
    ALL_NOTES_OFF};

inline bool IsPlayedController(EventType type) {
  return std::find(kPlayedControllers.begin(), kPlayedControllers.end(), type) != kPlayedControllers.end();
}

}  // namespace zelmar
