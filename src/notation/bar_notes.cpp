#include "notation/bar_notes.h"

#include <algorithm>

#include "notation/note_values.h"
#include "notation/written_rests.h"

namespace zelmar {

namespace {

constexpr double kQuaver = 0.5;
constexpr double kDottedCrotchet = 1.5;
constexpr double kSplitFrom = 0.624;    // a note on the last beat of a group of three runs on from here
constexpr float kShortestStem = 0.75F;  // line gaps
constexpr int kGroup = 3;               // beats of a group in compound time
constexpr int kMostFlags = 2;

// Pitches from which on a stem by itself points down.
constexpr int kTrebleDownFrom = 72;
constexpr int kBassDownFrom = 52;

bool IsMinimLong(double duration) {
  return duration >= 1.876 && duration <= 2.125;
}

}  // namespace

BarNotes::BarNotes(Drawing& staff, const BarFrame& frame, const Style& style)
    : staff_(staff), frame_(frame), style_(style) {}

bool BarNotes::IsSplit(const Tone& tone) const {
  const int beat = tone.Beat();
  return frame_.CompoundTime() && (beat == 3 || beat == 6 || beat == 9) && tone.Duration() >= kSplitFrom;
}

// The duration of the first symbol that the note is written with.
double BarNotes::FirstValue(const Tone& tone) const {
  if (IsSplit(tone)) return kQuaver;
  if (frame_.CompoundTime() && IsMinimLong(tone.Duration())) return kDottedCrotchet;
  return tone.Duration();
}

void BarNotes::DrawNoteSymbol(const Tone& tone, const QString& colour) {
  const bool carries_flags = flag_bearer_ == nullptr || flag_bearer_ == &tone;
  if (IsSplit(tone))
    DrawSplit(tone, carries_flags, colour);
  else if (frame_.CompoundTime() && IsMinimLong(tone.Duration()))
    DrawMinimLong(tone, carries_flags, colour);
  else
    DrawWritten(tone, carries_flags, colour);
}

// A quaver that ends the group of beats, tied to what is left of the note in the next.
void BarNotes::DrawSplit(const Tone& tone, bool carries_flags, const QString& colour) {
  Tone quaver = tone;
  quaver.SetDuration(kQuaver);
  DrawWritten(quaver, carries_flags, colour);
  // A tie never crosses the bar line.
  if (tone.Beat() >= frame_.beats_per_bar) return;
  staff_.SetPenWidth(kStemPen);
  staff_.Arc(Role::kTie, InkOf(colour),
             QPointF(PenX_ + frame_.BeatWidth() / 2.0, PenY_ + frame_.line_gap / 2.0), 2.0 * frame_.line_gap,
             0.7, 2.3, 0.8);

  Tone rest_of_note = tone;
  rest_of_note.SetDuration(tone.Duration() - kQuaver);
  rest_of_note.SetBeat(static_cast<std::int16_t>(tone.Beat() + 1));
  const float pen_x = PenX_;
  const float head_x = HeadX_;
  PenX_ += frame_.BeatWidth();
  HeadX_ += frame_.BeatWidth();
  staff_.SetPenWidth(kNotePen);
  DrawWritten(rest_of_note, carries_flags, colour);
  DrawLedgerLines();
  PenX_ = pen_x;
  HeadX_ = head_x;
}

// Compound time has no minim of its own: a dotted crotchet, and a rest for what is left. The second half of a
// split note is none of these and stays as it is.
void BarNotes::DrawMinimLong(const Tone& tone, bool carries_flags, const QString& colour) {
  Tone dotted = tone;
  dotted.SetDuration(kDottedCrotchet);
  DrawWritten(dotted, carries_flags, colour);
  DrawRestAfter(tone);
}

void BarNotes::DrawWritten(const Tone& tone, bool carries_flags, const QString& colour) {
  const double duration = tone.Duration();
  const NoteValue* const value = NoteValueOf(duration);
  const bool flagged = value != nullptr && value->flags > 0;
  if (carries_flags || !flagged) SettleHanging(tone, duration);
  if (value == nullptr) return;

  staff_.SetPenWidth(kNotePen);
  staff_.Circle(Role::kNoteHead, InkOf(colour), QPointF(HeadX_, PenY_), 3.0 * frame_.line_gap / 8.0,
                !value->open);
  if (flagged && carries_flags && !value->dotted)
    DrawFlagged(tone, value->flags, colour);
  else if (value->stem)
    DrawStem(tone.Number(), carries_flags ? value->flags : 0, colour);
  if (value->dotted)
    staff_.Circle(Role::kDot, InkOf(colour), QPointF(PenX_ + frame_.line_gap, PenY_), frame_.line_gap / 10.0,
                  true);
}

// What a dotted crotchet leaves of a note as long as a minim. A chord has one such rest.
void BarNotes::DrawRestAfter(const Tone& tone) {
  const int beat = tone.Beat() + kGroup;
  if (rest_drawn_ || beat > frame_.beats_per_bar) return;
  rest_drawn_ = true;
  Rest rest;
  rest.SetDuration(kQuaver);
  rest.SetBar(tone.Bar());
  rest.SetBeat(static_cast<std::int16_t>(beat));
  rest.SetTick(tone.Tick());
  DrawWrittenRest(staff_, frame_, style_.rest_ink, rest);
}

void BarNotes::DrawStem(std::int16_t pitch, int flags, const QString& colour) {
  staff_.SetPenWidth(kStemPen);
  if (StemDirection_ == StemDirection::kUndecided) {
    const bool down = (style_.clef == ClefKind::kTreble && pitch >= kTrebleDownFrom) ||
                      (style_.clef == ClefKind::kBass && pitch >= kBassDownFrom);
    StemDirection_ = down ? StemDirection::kDown : StemDirection::kUp;
  }
  const InkColour ink = InkOf(colour);
  const float g = frame_.line_gap;
  // Down is up turned over, but a flag always flies to the right of its stem.
  const float toward_end = StemDirection_ == StemDirection::kUp ? -1.0F : 1.0F;
  StemEndX_ = PenX_ - toward_end * g / 2.0F;
  StemEndY_ = PenY_ + toward_end * 2.0F * g;
  staff_.Line(Role::kStem, ink, QPointF(StemEndX_, PenY_), QPointF(StemEndX_, StemEndY_));
  for (int flag = 0; flag < std::min(flags, kMostFlags); ++flag) {
    const float y = StemEndY_ - toward_end * static_cast<float>(flag) * g / 2.0F;
    staff_.Line(Role::kFlag, ink, QPointF(StemEndX_, y),
                QPointF(StemEndX_ + g / 2.0F, y - toward_end * g / 2.0F));
  }
}

// --- Beams ---

void BarNotes::DrawFlagged(const Tone& tone, int flags, const QString& colour) {
  if (!style_.beaming_on)
    DrawStem(tone.Number(), flags, colour);
  else if (flags == kQuaverFlags && frame_.CompoundTime())
    DrawOfThree(tone, colour);
  else
    DrawOfPair(tone, flags, colour);
}

void BarNotes::DrawOfPair(const Tone& tone, int flags, const QString& colour) {
  if (hanging_.WaitsForPartner(flags)) {
    StemDirection_ = hanging_.Stem(HangingStem::kFirst).direction;
    DrawStem(tone.Number(), 0, colour);
    DrawBeam(flags, colour);
    hanging_.EndPartner(flags);
    return;
  }
  DrawStem(tone.Number(), 0, colour);
  hanging_.WaitForPartner(tone, flags, SaveStem(tone, colour));
}

// Quavers of compound time: the first of a group waits, the third brings the beam.
void BarNotes::DrawOfThree(const Tone& tone, const QString& colour) {
  const int before = hanging_.GroupCount();
  if (before == 0 && (tone.Beat() - 1) % kGroup != 0) {
    DrawStem(tone.Number(), kQuaverFlags, colour);
    return;
  }
  if (before > 0) StemDirection_ = hanging_.Stem(HangingStem::kFirst).direction;
  DrawStem(tone.Number(), 0, colour);
  if (before == kGroup - 1) {
    ReachBeam(hanging_.Stem(HangingStem::kSecond));
    DrawBeam(kQuaverFlags, colour);
  }
  hanging_.AddToGroup(tone, SaveStem(tone, colour));
}

// From the stem of the first note that waited to the last stem drawn.
void BarNotes::DrawBeam(int flags, const QString& colour) {
  const InkColour ink = InkOf(colour);
  const SavedStem& first = hanging_.Stem(HangingStem::kFirst);
  const float toward_heads = (first.direction == StemDirection::kUp ? 0.75F : -0.75F) * frame_.line_gap;
  staff_.SetPenWidth(kNotePen);
  for (int beam = 0; beam < flags; ++beam) {
    const float shift = static_cast<float>(beam) * toward_heads;
    staff_.Line(Role::kBeam, ink, QPointF(first.end_x, first.end_y + shift),
                QPointF(StemEndX_, StemEndY_ + shift));
  }
  staff_.SetPenWidth(kLinePen);
}

// Brings the stem of a middle note to the beam, be it too short or too long for it.
void BarNotes::ReachBeam(const SavedStem& stem) {
  const SavedStem& first = hanging_.Stem(HangingStem::kFirst);
  const float width = StemEndX_ - first.end_x;
  if (width <= 0.0F) return;
  const float share = (stem.end_x - first.end_x) / width;
  const float beam_y = first.end_y + share * (StemEndY_ - first.end_y);
  const float length = stem.direction == StemDirection::kUp ? stem.pen_y - beam_y : beam_y - stem.pen_y;
  if (length >= kShortestStem * frame_.line_gap) staff_.MoveEnd(stem.line, QPointF(stem.end_x, beam_y));
}

void BarNotes::SettleHanging(const Tone& tone, double duration) {
  if (hanging_.Continues(tone, duration)) return;
  BreakGroup();
  CancelHangingQuaver(kQuaverFlags, HangingStem::kFirst);
  CancelHangingQuaver(kSemiquaverFlags, HangingStem::kFirst);
}

// A group of three that finds no end falls back to flags.
void BarNotes::BreakGroup() {
  if (hanging_.GroupCount() == kGroup - 1) {
    CancelHangingQuaver(kQuaverFlags, HangingStem::kSecond);
    CancelHangingQuaver(kQuaverFlags, HangingStem::kFirst);
  }
  hanging_.EndGroup();
}

void BarNotes::EndBar() {
  BreakGroup();
  CancelHangingQuaver(kQuaverFlags, HangingStem::kEndOfBar);
  CancelHangingQuaver(kSemiquaverFlags, HangingStem::kEndOfBar);
}

void BarNotes::CancelHangingQuaver(int flags, HangingStem which) {
  if (!hanging_.MustEnd(flags, which)) return;
  const float pen_x = PenX_;
  const float pen_y = PenY_;
  const StemDirection direction = StemDirection_;
  const SavedStem& stem = hanging_.Stem(which);
  PenX_ = stem.pen_x;
  PenY_ = stem.pen_y;
  // The flag goes on the stem that stands already.
  StemDirection_ = stem.direction;
  DrawStem(stem.pitch, flags, stem.colour);
  PenX_ = pen_x;
  PenY_ = pen_y;
  StemDirection_ = direction;
  hanging_.EndNotes();
}

SavedStem BarNotes::SaveStem(const Tone& tone, const QString& colour) const {
  return {PenX_,          PenY_,         StemEndX_, StemEndY_,
          StemDirection_, tone.Number(), colour,    staff_.Primitives().size() - 1};
}

}  // namespace zelmar
