// What an event is. Codes below 128 are the MIDI controller numbers; those from 128 up are the system's own.
#pragma once

#include <cstdint>

namespace zelmar {

using EventType = std::uint8_t;

inline constexpr EventType BANK_SELECT_MSB_0 = 0;
inline constexpr EventType EXPRESS_CONTROLLER = 11;
inline constexpr EventType BANK_SELECT_LSB_32 = 32;
inline constexpr EventType MUSIC_NOTE = 128;
inline constexpr EventType POLY_KEY_PRESSURE = 129;
inline constexpr EventType CHANNEL_PRESSURE = 130;
inline constexpr EventType PITCH_BEND = 131;
inline constexpr EventType DUMMY_NOTE = 132;
inline constexpr EventType TEMPO_CHANGE = 133;
inline constexpr EventType MUSIC_NOTE_OFF = 134;

// Instrument of an EXPRESS_CONTROLLER event that applies to all tracks.
inline constexpr std::uint8_t kAllTracksInstrument = 99;

}  // namespace zelmar
