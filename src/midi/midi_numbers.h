// The numbers of MIDI's channel messages, as its standard has them.
#pragma once

#include <cstdint>

namespace zelmar {

inline constexpr int kChannelCount = 16;

// Values of a data byte: a pitch, a velocity, a controller's value.
inline constexpr int kDataValues = 128;
inline constexpr std::uint8_t kHighestData = kDataValues - 1;
inline constexpr std::uint8_t kMiddleData = kDataValues / 2;

// The kind of a message, in the high half of its status byte; the low half is the channel from 0.
inline constexpr unsigned int kKindBits = 0xF0;
inline constexpr unsigned int kChannelBits = 0x0F;
inline constexpr unsigned char kNoteOff = 0x80;
inline constexpr unsigned char kNoteOn = 0x90;
inline constexpr unsigned char kKeyPressure = 0xA0;
inline constexpr unsigned char kController = 0xB0;
inline constexpr unsigned char kProgramChange = 0xC0;
inline constexpr unsigned char kChannelPressure = 0xD0;
inline constexpr unsigned char kPitchBend = 0xE0;

}  // namespace zelmar
