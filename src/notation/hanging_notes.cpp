#include "notation/hanging_notes.h"

namespace zelmar {

namespace {

constexpr double kSemiquaverEnd = 0.37;  // a waiting semiquaver is left alone by longer notes
constexpr int kQuaverReach = 71;         // pulses within which a partner must come
constexpr int kSemiquaverReach = 41;
constexpr int kGroupBeforeLast = 2;  // notes of a group of three that lacks one

}  // namespace

bool IsQuaver(double duration) {
  return duration >= 0.376 && duration <= 0.625;
}

void HangingNotes::WaitForPartner(const Tone& tone, int flags, const SavedStem& stem) {
  first_ = stem;
  bar_ = tone.Bar();
  beat_ = tone.Beat();
  tick_ = tone.Tick();
  (flags == kQuaverFlags ? quaver_ : semiquaver_) = true;
}

void HangingNotes::AddToGroup(const Tone& tone, const SavedStem& stem) {
  ++count_;
  if (count_ == 1) {
    WaitForPartner(tone, kQuaverFlags, stem);
  } else if (count_ == kGroupBeforeLast) {
    second_ = stem;
  } else {
    quaver_ = false;
    count_ = 0;
  }
}

bool HangingNotes::Continues(const Tone& tone, double duration) const {
  if (tone.Bar() != bar_) return false;
  if (count_ > 0) return IsQuaver(duration) && tone.Beat() == beat_ + count_;
  if (tone.Beat() != beat_) return false;
  const int pulses = tone.Tick() - tick_;
  if (quaver_) return IsQuaver(duration) && pulses < kQuaverReach;
  return semiquaver_ && duration < kSemiquaverEnd && pulses < kSemiquaverReach;
}

bool HangingNotes::MustEnd(int flags, HangingStem which) const {
  return WaitsForPartner(flags) || (count_ == kGroupBeforeLast && which != HangingStem::kEndOfBar);
}

}  // namespace zelmar
