// Chords: the notes of one place in the bar, their common stem, and where each stands.
#include <algorithm>
#include <numeric>

#include "notation/bar_notes.h"
#include "notation/note_values.h"

namespace zelmar {

namespace {

constexpr int kTrebleMiddle = 71;
constexpr int kBassMiddle = 50;

constexpr int kFirstLedgerBelow = -1;
constexpr int kFirstLedgerAbove = 11;

}  // namespace

void BarNotes::AddToChord(const std::shared_ptr<Tone>& tone, bool first_in_bar, const QString& colour) {
  if (first_in_bar) {
    SetupChordStore();
  } else if (!chord_.Takes(*tone)) {
    PrintChord();
    // A chord that was too large to be drawn is dropped here.
    SetupChordStore();
  }
  chord_.Add(tone, colour);
}

void BarNotes::PrintChord() {
  const std::vector<ChordNote>& notes = chord_.Notes();
  if (notes.empty()) return;
  if (chord_.IsTooLarge()) {
    const ChordPlace place = chord_.Place();
    if (large_chords_.empty() || large_chords_.back() != place) large_chords_.push_back(place);
    return;
  }

  StemDirection_ = DirectionOfChord();
  flag_bearer_ = FlagBearer();
  // A partner takes the direction of the note that waits for it.
  if (flag_bearer_ != nullptr && hanging_.Continues(*flag_bearer_, FirstValue(*flag_bearer_))) {
    StemDirection_ = hanging_.Stem(HangingStem::kFirst).direction;
    flag_bearer_ = FlagBearer();
  }

  in_chord_ = true;
  rest_drawn_ = false;
  const StemDirection direction = StemDirection_;
  const std::vector<bool> displaced = DisplacedHeads();
  for (std::size_t i = 0; i < notes.size(); ++i) {
    HeadDisplaced_ = displaced[i];
    StemDirection_ = direction;
    DrawNote(*notes[i].tone, notes[i].colour);
  }
  HeadDisplaced_ = false;
  StemDirection_ = direction;
  JoinStems(notes.front().colour);
  in_chord_ = false;
  flag_bearer_ = nullptr;
  SetupChordStore();
}

StemDirection BarNotes::DirectionOfChord() const {
  int sum = 0;
  for (const ChordNote& note : chord_.Notes()) {
    if (style_.clef == ClefKind::kTreble) sum += note.tone->Number() - kTrebleMiddle;
    if (style_.clef == ClefKind::kBass) sum += note.tone->Number() - kBassMiddle;
  }
  return sum >= 1 ? StemDirection::kDown : StemDirection::kUp;
}

// Of each second one head stands on the other side of the stem.
std::vector<bool> BarNotes::DisplacedHeads() const {
  const std::vector<ChordNote>& notes = chord_.Notes();
  std::vector<std::size_t> ascending(notes.size());
  std::iota(ascending.begin(), ascending.end(), std::size_t{0});
  std::stable_sort(ascending.begin(), ascending.end(), [&notes](std::size_t a, std::size_t b) {
    return notes[a].tone->Number() < notes[b].tone->Number();
  });
  std::vector<bool> displaced(notes.size(), false);
  for (std::size_t i = 1; i < ascending.size(); ++i) {
    const std::size_t lower = ascending[i - 1];
    const std::size_t upper = ascending[i];
    const int apart = notes[upper].tone->Number() - notes[lower].tone->Number();
    if (apart == 1 || apart == 2) displaced[StemDirection_ == StemDirection::kUp ? upper : lower] = true;
  }
  return displaced;
}

// One note of a chord carries the flags or the beam of all: the one whose stem reaches farthest.
const Tone* BarNotes::FlagBearer() const {
  const bool up = StemDirection_ == StemDirection::kUp;
  const Tone* bearer = nullptr;
  int outermost = 0;
  for (const auto& [tone, colour] : chord_.Notes()) {
    const NoteValue* const value = NoteValueOf(FirstValue(*tone));
    const std::optional<int> step = ShownStep(*tone);
    if (value == nullptr || value->flags == 0 || !step) continue;
    if (bearer != nullptr && (up ? *step <= outermost : *step >= outermost)) continue;
    bearer = tone.get();
    outermost = *step;
  }
  return bearer;
}

// The stem of a wide chord runs from its lowest head to its highest.
void BarNotes::JoinStems(const QString& colour) {
  std::optional<int> lowest;
  std::optional<int> highest;
  for (const auto& [tone, its_colour] : chord_.Notes()) {
    const NoteValue* const value = NoteValueOf(FirstValue(*tone));
    const std::optional<int> step = ShownStep(*tone);
    if (value == nullptr || !value->stem || !step) continue;
    lowest = std::min(lowest.value_or(*step), *step);
    highest = std::max(highest.value_or(*step), *step);
  }
  constexpr int kStepsOfStem = 4;
  if (!lowest || *highest - *lowest <= kStepsOfStem) return;
  const ChordPlace place = chord_.Place();
  const float side = (StemDirection_ == StemDirection::kDown ? -0.5F : 0.5F) * frame_.line_gap;
  const float x = frame_.XOf(place.beat, place.tick) + side;
  staff_.SetPenWidth(kStemPen);
  staff_.Line(Role::kStem, InkOf(colour), QPointF(x, frame_.YOfStep(*lowest)),
              QPointF(x, frame_.YOfStep(*highest)));
}

std::optional<int> BarNotes::ShownStep(const Tone& tone) const {
  const std::int16_t pitch = tone.Number();
  if (!StaffShows(style_.clef, style_.middle_ledger_lines, pitch)) return std::nullopt;
  std::optional<int> step = StepOfPitch(style_.clef, pitch);
  if (!step) return std::nullopt;
  if (tone.EnHarmonic() == u"#") *step -= 1;
  if (tone.EnHarmonic() == u"b") *step += 1;
  if (*step < kLowestStep || *step > kHighestStep) return std::nullopt;
  return step;
}

void BarNotes::DrawNote(const Tone& tone, const QString& colour) {
  const std::optional<int> step = ShownStep(tone);
  if (!step) return;
  if (!in_chord_) rest_drawn_ = false;
  NoteStep_ = static_cast<std::int16_t>(*step);
  staff_.SetPenWidth(kNotePen);
  PenX_ = frame_.XOf(tone.Beat(), tone.Tick());
  HeadX_ = PenX_;
  if (HeadDisplaced_) HeadX_ += StemDirection_ == StemDirection::kDown ? -frame_.line_gap : frame_.line_gap;
  PenY_ = frame_.YOfStep(*step);
  DrawNoteSymbol(tone, colour);
  DrawAccidental(tone);
  DrawLedgerLines();
}

void BarNotes::DrawLedgerLines() {
  staff_.SetPenWidth(kLinePen);
  const auto draw = [this](int step) {
    const float y = frame_.YOfStep(step);
    staff_.Line(Role::kLedgerLine, kBlackInk, QPointF(PenX_ - frame_.line_gap, y),
                QPointF(PenX_ + frame_.line_gap, y));
  };
  for (int step = kFirstLedgerBelow; step >= NoteStep_; step -= 2) draw(step);
  for (int step = kFirstLedgerAbove; step <= NoteStep_; step += 2) draw(step);
}

}  // namespace zelmar
