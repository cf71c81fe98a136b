#include "notation/staff_steps.h"

#include <algorithm>

namespace zelmar {

namespace {

using StepPitches = std::array<std::int16_t, kStepCount>;

// The natural pitch of each step, -4 first.
constexpr StepPitches kTreblePitches = {55, 57, 59, 60, 62, 64, 65, 67, 69, 71,
                                        72, 74, 76, 77, 79, 81, 83, 84, 86};
constexpr StepPitches kBassPitches = {35, 36, 38, 40, 41, 43, 45, 47, 48, 50,
                                      52, 53, 55, 57, 59, 60, 62, 64, 65};

// The highest pitch of each step in canonical spelling: C# stands with C, E flat with E.
constexpr StepPitches kTrebleTops = {55, 57, 59, 61, 62, 64, 66, 67, 69, 71,
                                     73, 74, 76, 78, 79, 81, 83, 85, 86};
constexpr StepPitches kBassTops = {35, 37, 38, 40, 42, 43, 45, 47, 49, 50,
                                   52, 54, 55, 57, 59, 61, 62, 64, 65};
constexpr int kTrebleBottom = 55;
constexpr int kBassBottom = 34;

struct Compass {
  int lowest[3];  // by the ledger lines open toward the partner staff
  int highest[3];
};

constexpr Compass kTrebleCompass = {{62, 58, 55}, {86, 86, 86}};
constexpr Compass kBassCompass = {{34, 34, 34}, {59, 62, 65}};

constexpr bool IsBass(ClefKind clef) {
  return clef == ClefKind::kBass;
}

}  // namespace

ClefKind ClefKindOf(const QString& clef) {
  if (clef == u"Treble") return ClefKind::kTreble;
  if (clef == u"Bass") return ClefKind::kBass;
  return ClefKind::kNone;
}

std::optional<std::int16_t> PitchOfStep(ClefKind clef, int step) {
  if (clef == ClefKind::kNone || step < kLowestStep || step > kHighestStep) return std::nullopt;
  const StepPitches& pitches = IsBass(clef) ? kBassPitches : kTreblePitches;
  return pitches[static_cast<std::size_t>(step - kLowestStep)];
}

std::optional<int> StepOfPitch(ClefKind clef, int pitch) {
  const StepPitches& tops = IsBass(clef) ? kBassTops : kTrebleTops;
  if (pitch < (IsBass(clef) ? kBassBottom : kTrebleBottom) || pitch > tops.back()) return std::nullopt;
  return kLowestStep + static_cast<int>(std::lower_bound(tops.begin(), tops.end(), pitch) - tops.begin());
}

bool StaffShows(ClefKind clef, int ledger_lines, int pitch) {
  const Compass& compass = IsBass(clef) ? kBassCompass : kTrebleCompass;
  const auto open = static_cast<std::size_t>(std::clamp(ledger_lines, 0, 2));
  return pitch >= compass.lowest[open] && pitch <= compass.highest[open];
}

}  // namespace zelmar
