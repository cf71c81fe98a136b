// Staff steps: the lines and spaces of a five-line staff and the pitches that stand on them.
//
// Step 1 is the bottom line, step 9 the top line; odd steps are lines. Steps run from -4 to 14.
#pragma once

#include <QString>
#include <array>
#include <cstdint>
#include <optional>

namespace zelmar {

inline constexpr int kLowestStep = -4;
inline constexpr int kMiddleStep = 5;
inline constexpr int kHighestStep = 14;
inline constexpr std::size_t kStepCount = kHighestStep - kLowestStep + 1;

enum class ClefKind : std::uint8_t { kTreble, kBass, kNone };

// "Treble" or "Bass"; any other word is no clef.
ClefKind ClefKindOf(const QString& clef);

// The natural pitch of a step. None for a step outside the staff, or without a clef.
std::optional<std::int16_t> PitchOfStep(ClefKind clef, int step);

// The step of a pitch in its canonical spelling; without a clef, as on a treble staff. None for a pitch that
// no step shows.
std::optional<int> StepOfPitch(ClefKind clef, int pitch);

// Whether a staff of the clef shows the pitch, with `ledger_lines` (0 to 2) open toward its partner.
bool StaffShows(ClefKind clef, int ledger_lines, int pitch);

}  // namespace zelmar
