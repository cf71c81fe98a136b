// What an event is. Codes below 128 are the MIDI controller numbers; those from 128 up are the system's own.
#pragma once

#include <cstdint>

namespace zelmar {

using EventType = std::uint8_t;

inline constexpr EventType BANK_SELECT_MSB_0 = 0;
inline constexpr EventType MOD_WHEEL = 1;
inline constexpr EventType BREATH_CONTROLLER = 2;
inline constexpr EventType FOOT_CONTROLLER = 4;
inline constexpr EventType PORTAMENTO_TIME = 5;
inline constexpr EventType MAIN_VOLUME = 7;
inline constexpr EventType BALANCE = 8;
inline constexpr EventType PAN = 10;
inline constexpr EventType EXPRESS_CONTROLLER = 11;
inline constexpr EventType BANK_SELECT_LSB_32 = 32;
inline constexpr EventType DAMPER_PEDAL = 64;
inline constexpr EventType PORTAMENTO = 65;
inline constexpr EventType SOSTENUTO = 66;
inline constexpr EventType SOFT_PEDAL = 67;
inline constexpr EventType HOLD_2 = 69;
inline constexpr EventType PORTAMENTO_CONTROL = 84;
inline constexpr EventType EXTERNAL_FX_DEPTH = 91;
inline constexpr EventType TREMELO_DEPTH = 92;
inline constexpr EventType CHORUS_DEPTH = 93;
inline constexpr EventType DETUNE_DEPTH = 94;
inline constexpr EventType PHASER_DEPTH = 95;
inline constexpr EventType DATA_INCREMENT = 96;
inline constexpr EventType DATA_DECREMENT = 97;
inline constexpr EventType ALL_SOUNDS_OFF = 120;
inline constexpr EventType RESET_ALL_CONTROLLERS = 121;
inline constexpr EventType ALL_NOTES_OFF = 123;
inline constexpr EventType MUSIC_NOTE = 128;
inline constexpr EventType POLY_KEY_PRESSURE = 129;
inline constexpr EventType CHANNEL_PRESSURE = 130;
inline constexpr EventType PITCH_BEND = 131;
inline constexpr EventType DUMMY_NOTE = 132;
inline constexpr EventType TEMPO_CHANGE = 133;
inline constexpr EventType MUSIC_NOTE_OFF = 134;

inline constexpr int kEventTypeCount = MUSIC_NOTE_OFF + 1;  // those that have a name and all below

// Instrument of an EXPRESS_CONTROLLER event that applies to all tracks.
inline constexpr std::uint8_t kAllTracksInstrument = 99;

}  // namespace zelmar
