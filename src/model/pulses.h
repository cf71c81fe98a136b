// The arithmetic of musical time: 120 pulses to the crotchet, 480 to the semibreve.
#pragma once

#include <cstdint>

namespace zelmar {

inline constexpr std::int32_t kPulsesPerCrotchet = 120;
inline constexpr std::int32_t kPulsesPerSemibreve = 480;

// Pulses of a note value that goes `beat_length` times into a semibreve, not rounded. Throws DivisionError
// for 0.
double PulsesOfValue(std::uint8_t beat_length);

// Pulses from the start of a tune to a position. Bars and beats count from 1, ticks from 0. The bars and the
// beats are each rounded to the nearest whole, a half to the even neighbour. Throws OverflowError when the
// beats before the bar pass 16 bits or the result 32, DivisionError when `beat_length` is 0.
std::int32_t PulseFromBarBeatTick(std::int16_t bar, std::int16_t beat, std::int16_t tick,
                                  std::int16_t beats_per_bar, std::uint8_t beat_length);

// Milliseconds of a crotchet at a tempo in crotchets a minute. Throws DivisionError for 0.
double MillisecondsOfCrotchet(std::int16_t tempo);

}  // namespace zelmar
