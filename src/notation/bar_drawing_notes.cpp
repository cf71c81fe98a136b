// One note: head, stem, flags, dot and tie, and the beams between notes.
#include <cmath>

#include "notation/bar_drawing.h"
#include "notation/note_values.h"
#include "notation/staff_alignment.h"

namespace zelmar {

namespace {

constexpr double kQuaver = 0.5;
constexpr double kDottedCrotchet = 1.5;
constexpr double kSplitFrom = 0.624;     // a note on the last beat of a group of three runs on from here
constexpr double kSemiquaverEnd = 0.37;  // a waiting semiquaver is left alone by longer notes
constexpr int kQuaverReach = 71;         // pulses within which a partner must come
constexpr int kSemiquaverReach = 41;
constexpr float kShortestStem = 0.75F;  // line gaps
constexpr int kGroup = 3;               // beats of a group in compound time
constexpr int kEndOfBar = 99;

bool IsQuaver(double duration) {
  return duration >= 0.376 && duration <= 0.625;
}

bool IsMinimLong(double duration) {
  return duration >= 1.876 && duration <= 2.125;
}

}  // namespace

bool BarDrawing::IsSplit(const Tone& tone) const {
  const int beat = tone.Beat();
  return CompoundTime() && (beat == 3 || beat == 6 || beat == 9) && tone.Duration() >= kSplitFrom;
}

// The duration of the first symbol that the note is written with.
double BarDrawing::FirstValue(const Tone& tone) const {
  if (IsSplit(tone)) return kQuaver;
  if (CompoundTime() && IsMinimLong(tone.Duration())) return kDottedCrotchet;
  return tone.Duration();
}

void BarDrawing::DrawNoteSymbol(const Tone& tone, const QString& colour) {
  const bool carries_flags = flag_bearer_ == nullptr || flag_bearer_ == &tone;
  if (IsSplit(tone))
    DrawSplit(tone, carries_flags, colour);
  else if (CompoundTime() && IsMinimLong(tone.Duration()))
    DrawMinimLong(tone, carries_flags, colour);
  else
    DrawWritten(tone, carries_flags, colour);
}

// A quaver that ends the group of beats, tied to what is left of the note in the next.
void BarDrawing::DrawSplit(const Tone& tone, bool carries_flags, const QString& colour) {
  Tone quaver = tone;
  quaver.SetDuration(kQuaver);
  DrawWritten(quaver, carries_flags, colour);
  // A tie never crosses the bar line.
  if (tone.Beat() >= beats_per_bar_) return;
  staff_.SetPenWidth(2);
  staff_.Arc(Role::kTie, InkOf(colour), QPointF(PenX_ + BeatWidth() / 2.0, PenY_ + LineGap_ / 2.0),
             2.0 * LineGap_, 0.7, 2.3, 0.8);

  Tone rest_of_note = tone;
  rest_of_note.SetDuration(tone.Duration() - kQuaver);
  rest_of_note.SetBeat(static_cast<std::int16_t>(tone.Beat() + 1));
  const float pen_x = PenX_;
  const float head_x = HeadX_;
  PenX_ += BeatWidth();
  HeadX_ += BeatWidth();
  staff_.SetPenWidth(3);
  DrawWritten(rest_of_note, carries_flags, colour);
  DrawLedgerLines();
  PenX_ = pen_x;
  HeadX_ = head_x;
}

// Compound time has no minim of its own: a dotted crotchet, and a rest for what is left. The second half of a
// split note is none of these and stays as it is.
void BarDrawing::DrawMinimLong(const Tone& tone, bool carries_flags, const QString& colour) {
  Tone dotted = tone;
  dotted.SetDuration(kDottedCrotchet);
  DrawWritten(dotted, carries_flags, colour);
  DrawRestAfter(tone);
}

void BarDrawing::DrawWritten(const Tone& tone, bool carries_flags, const QString& colour) {
  const double duration = tone.Duration();
  const NoteValue* const value = NoteValueOf(duration);
  const bool flagged = value != nullptr && value->flags > 0;
  if (carries_flags || !flagged) SettleHanging(tone, duration);
  if (value == nullptr) return;

  staff_.SetPenWidth(3);
  staff_.Circle(Role::kNoteHead, InkOf(colour), QPointF(HeadX_, PenY_), 3.0 * LineGap_ / 8.0, !value->open);
  if (flagged && carries_flags && !value->dotted)
    DrawFlagged(tone, value->flags, colour);
  else if (value->stem)
    DrawStem(tone.Number(), carries_flags ? value->flags : 0, colour);
  if (value->dotted)
    staff_.Circle(Role::kDot, InkOf(colour), QPointF(PenX_ + LineGap_, PenY_), LineGap_ / 10.0, true);
}

// What a dotted crotchet leaves of a note as long as a minim. A chord has one such rest.
void BarDrawing::DrawRestAfter(const Tone& tone) {
  const int beat = tone.Beat() + kGroup;
  if (rest_drawn_ || beat > beats_per_bar_) return;
  rest_drawn_ = true;
  Rest rest;
  rest.SetDuration(kQuaver);
  rest.SetBar(tone.Bar());
  rest.SetBeat(static_cast<std::int16_t>(beat));
  rest.SetTick(tone.Tick());
  DrawRest(rest);
}

void BarDrawing::DrawStem(std::int16_t pitch, int flags, const QString& colour) {
  staff_.SetPenWidth(kStemPen);
  if (StemDirection_ == kUndecided) {
    const ClefKind clef = ClefKindOf(Clef());
    const bool down = (clef == ClefKind::kTreble && pitch >= 72) || (clef == ClefKind::kBass && pitch >= 52);
    StemDirection_ = down ? kDown : kUp;
  }
  const InkColour ink = InkOf(colour);
  const float g = LineGap_;
  // Down is up turned over, but a flag always flies to the right of its stem.
  const float toward_end = StemDirection_ == kUp ? -1.0F : 1.0F;
  StemEndX_ = PenX_ - toward_end * g / 2.0F;
  StemEndY_ = PenY_ + toward_end * 2.0F * g;
  staff_.Line(Role::kStem, ink, QPointF(StemEndX_, PenY_), QPointF(StemEndX_, StemEndY_));
  for (int flag = 0; flag < std::min(flags, 2); ++flag) {
    const float y = StemEndY_ - toward_end * static_cast<float>(flag) * g / 2.0F;
    staff_.Line(Role::kFlag, ink, QPointF(StemEndX_, y),
                QPointF(StemEndX_ + g / 2.0F, y - toward_end * g / 2.0F));
  }
}

// --- Beams ---

void BarDrawing::DrawFlagged(const Tone& tone, int flags, const QString& colour) {
  if (!BeamingOn())
    DrawStem(tone.Number(), flags, colour);
  else if (flags == 1 && CompoundTime())
    DrawOfThree(tone, colour);
  else
    DrawOfPair(tone, flags, colour);
}

void BarDrawing::DrawOfPair(const Tone& tone, int flags, const QString& colour) {
  bool& waiting = flags == 1 ? HangingQuaver_ : HangingSemiquaver_;
  if (waiting) {
    StemDirection_ = first_hanging_.direction;
    DrawStem(tone.Number(), 0, colour);
    DrawBeam(flags, colour);
    waiting = false;
    return;
  }
  DrawStem(tone.Number(), 0, colour);
  first_hanging_ = SaveStem(tone, colour);
  HangingTone_ = tone;
  waiting = true;
}

// Quavers of compound time: the first of a group waits, the third brings the beam.
void BarDrawing::DrawOfThree(const Tone& tone, const QString& colour) {
  if (HangingCount_ == 0 && (tone.Beat() - 1) % kGroup != 0) {
    DrawStem(tone.Number(), 1, colour);
    return;
  }
  if (HangingCount_ > 0) StemDirection_ = first_hanging_.direction;
  DrawStem(tone.Number(), 0, colour);
  if (HangingCount_ == 0) {
    first_hanging_ = SaveStem(tone, colour);
    HangingTone_ = tone;
    HangingQuaver_ = true;
    HangingCount_ = 1;
  } else if (HangingCount_ == 1) {
    second_hanging_ = SaveStem(tone, colour);
    HangingCount_ = 2;
  } else {
    ReachBeam(second_hanging_);
    DrawBeam(1, colour);
    HangingQuaver_ = false;
    HangingCount_ = 0;
  }
}

// From the stem of the first note that waited to the last stem drawn.
void BarDrawing::DrawBeam(int flags, const QString& colour) {
  const InkColour ink = InkOf(colour);
  const float toward_heads = (first_hanging_.direction == kUp ? 0.75F : -0.75F) * LineGap_;
  staff_.SetPenWidth(3);
  for (int beam = 0; beam < flags; ++beam) {
    const float shift = static_cast<float>(beam) * toward_heads;
    staff_.Line(Role::kBeam, ink, QPointF(first_hanging_.end_x, first_hanging_.end_y + shift),
                QPointF(StemEndX_, StemEndY_ + shift));
  }
  staff_.SetPenWidth(1);
}

// Brings the stem of a middle note to the beam, be it too short or too long for it.
void BarDrawing::ReachBeam(const SavedStem& stem) {
  const float width = StemEndX_ - first_hanging_.end_x;
  if (width <= 0.0F) return;
  const float share = (stem.end_x - first_hanging_.end_x) / width;
  const float beam_y = first_hanging_.end_y + share * (StemEndY_ - first_hanging_.end_y);
  const float length = stem.direction == kUp ? stem.pen_y - beam_y : beam_y - stem.pen_y;
  if (length >= kShortestStem * LineGap_) staff_.MoveEnd(stem.line, QPointF(stem.end_x, beam_y));
}

// Whether the note goes on with what waits, so that a beam can join them.
bool BarDrawing::Continues(const Tone& tone, double duration) const {
  if (tone.Bar() != HangingTone_.Bar()) return false;
  if (HangingCount_ > 0) return IsQuaver(duration) && tone.Beat() == HangingTone_.Beat() + HangingCount_;
  if (tone.Beat() != HangingTone_.Beat()) return false;
  const int pulses = tone.Tick() - HangingTone_.Tick();
  if (HangingQuaver_) return IsQuaver(duration) && pulses < kQuaverReach;
  return HangingSemiquaver_ && duration < kSemiquaverEnd && pulses < kSemiquaverReach;
}

void BarDrawing::SettleHanging(const Tone& tone, double duration) {
  if (Continues(tone, duration)) return;
  BreakGroup();
  CancelHangingQuaver(1, 0);
  CancelHangingQuaver(2, 0);
}

// A group of three that finds no end falls back to flags.
void BarDrawing::BreakGroup() {
  if (HangingCount_ == 2) {
    CancelHangingQuaver(1, 2);
    CancelHangingQuaver(1, 0);
  }
  HangingCount_ = 0;
}

void BarDrawing::CancelHangingQuaver(int flags, int which) {
  const bool waits = (flags == 1 && HangingQuaver_) || (flags == 2 && HangingSemiquaver_) ||
                     (HangingCount_ == 2 && which != kEndOfBar);
  if (!waits) return;
  const float pen_x = PenX_;
  const float pen_y = PenY_;
  const std::uint8_t direction = StemDirection_;
  const SavedStem& stem = which == 2 ? second_hanging_ : first_hanging_;
  PenX_ = stem.pen_x;
  PenY_ = stem.pen_y;
  // The flag goes on the stem that stands already.
  StemDirection_ = stem.direction;
  DrawStem(stem.pitch, flags, stem.colour);
  PenX_ = pen_x;
  PenY_ = pen_y;
  StemDirection_ = direction;
  HangingQuaver_ = false;
  HangingSemiquaver_ = false;
}

BarDrawing::SavedStem BarDrawing::SaveStem(const Tone& tone, const QString& colour) const {
  return {PenX_,          PenY_,         StemEndX_, StemEndY_,
          StemDirection_, tone.Number(), colour,    staff_.Primitives().size() - 1};
}

// --- Alignment ---

void BarDrawing::AlignNote(Tone& tone, bool save_durations, bool align_boundaries) const {
  zelmar::AlignNote(tone, {ticks_per_beat_, beats_per_bar_}, save_durations, align_boundaries);
}

void BarDrawing::RoundBoundary(Tone& tone, std::int16_t grid) const {
  zelmar::RoundBoundary(tone, {ticks_per_beat_, beats_per_bar_}, grid);
}

}  // namespace zelmar
