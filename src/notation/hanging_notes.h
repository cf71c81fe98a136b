// The notes of a bar that wait for a beam partner.
#pragma once

#include <QString>
#include <cstdint>

#include "model/tone.h"

namespace zelmar {

enum class StemDirection : std::uint8_t { kUndecided, kUp, kDown };

// The flags or beams of a note.
inline constexpr int kQuaverFlags = 1;
inline constexpr int kSemiquaverFlags = 2;

// Whose stem gets the flags when no partner comes.
enum class HangingStem {
  kFirst,     // of the pair or the group
  kSecond,    // of a group of three
  kEndOfBar,  // the first one's, but none of a group that has two already
};

bool IsQuaver(double duration);

// Pen, stem and colour as they were when the note was drawn.
struct SavedStem {
  float pen_x = 0.0F;
  float pen_y = 0.0F;
  float end_x = 0.0F;
  float end_y = 0.0F;
  StemDirection direction = StemDirection::kUndecided;
  std::int16_t pitch = 0;
  QString colour;
  std::size_t line = 0;  // its place among the primitives
};

class HangingNotes {
 public:
  // A quaver or a semiquaver waits for a partner in its beat.
  void WaitForPartner(const Tone& tone, int flags, const SavedStem& stem);
  bool WaitsForPartner(int flags) const { return flags == kQuaverFlags ? quaver_ : semiquaver_; }
  // A note of a group of three in compound time; the third one ends the waiting.
  void AddToGroup(const Tone& tone, const SavedStem& stem);
  int GroupCount() const { return count_; }

  // Whether a note of that duration goes on with what waits, so that a beam can join them.
  bool Continues(const Tone& tone, double duration) const;
  // Whether there is a note that CancelHangingQuaver has to end.
  bool MustEnd(int flags, HangingStem which) const;
  const SavedStem& Stem(HangingStem which) const { return which == HangingStem::kSecond ? second_ : first_; }

  void EndPartner(int flags) { (flags == kQuaverFlags ? quaver_ : semiquaver_) = false; }
  void EndNotes() { quaver_ = semiquaver_ = false; }
  void EndGroup() { count_ = 0; }

 private:
  bool quaver_ = false;
  bool semiquaver_ = false;
  std::int16_t bar_ = 0, beat_ = 0, tick_ = 0;  // of the first note that waits
  int count_ = 0;                               // quavers of a group of three so far
  SavedStem first_;
  SavedStem second_;
};

}  // namespace zelmar
