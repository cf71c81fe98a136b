// Chords: the notes of one place in the bar, their common stem, and where each stands.
#include <algorithm>

#include "notation/bar_drawing.h"
#include "notation/note_values.h"
#include "notation/told_chords.h"
#include "platform/services.h"

namespace zelmar {

namespace {

constexpr int kTrebleMiddle = 71;
constexpr int kBassMiddle = 50;

}  // namespace

void BarDrawing::SetupChordStore() {
  ChordStore_->Tones()->Clear();
  ChordColours_.clear();
  ChordPosition_ = {};
}

void BarDrawing::AddToChord(const std::shared_ptr<Tone>& tone, bool first_in_bar, const QString& colour) {
  const Position position{tone->Bar(), tone->Beat(), tone->Tick()};
  if (first_in_bar) {
    SetupChordStore();
  } else if (position != ChordPosition_) {
    const std::weak_ptr<bool> alive = alive_;
    const std::uint32_t turn = turn_;
    PrintChord();
    if (alive.expired() || turn != turn_) return;
    // A chord that was too large to be printed is dropped here.
    SetupChordStore();
  }
  ChordPosition_ = position;
  ChordStore_->Tones()->Add(tone);
  ChordColours_.insert(QString::number(tone->AbsRef()), colour);
}

void BarDrawing::PrintChord() {
  std::vector<std::shared_ptr<Tone>> notes;
  for (const auto& tone : *ChordStore_->Tones()) notes.push_back(tone);
  if (notes.empty()) return;
  if (notes.size() > kLargestChord) {
    TellOfLargeChord(*notes.front());
    return;
  }

  StemDirection_ = DirectionOfChord(notes);
  flag_bearer_ = FlagBearer(notes);
  // A partner takes the direction of the note that waits for it.
  if (flag_bearer_ != nullptr && Continues(*flag_bearer_, FirstValue(*flag_bearer_))) {
    StemDirection_ = first_hanging_.direction;
    flag_bearer_ = FlagBearer(notes);
  }

  std::vector<std::size_t> ascending(notes.size());
  for (std::size_t i = 0; i < notes.size(); ++i) ascending[i] = i;
  std::stable_sort(ascending.begin(), ascending.end(), [&notes](std::size_t a, std::size_t b) {
    return notes[a]->Number() < notes[b]->Number();
  });
  std::vector<bool> displaced(notes.size(), false);
  for (std::size_t i = 1; i < ascending.size(); ++i) {
    const std::size_t lower = ascending[i - 1];
    const std::size_t upper = ascending[i];
    const int apart = notes[upper]->Number() - notes[lower]->Number();
    if (apart == 1 || apart == 2) displaced[StemDirection_ == kUp ? upper : lower] = true;
  }

  in_chord_ = true;
  rest_drawn_ = false;
  const std::uint8_t direction = StemDirection_;
  for (std::size_t i = 0; i < notes.size(); ++i) {
    HeadDisplaced_ = displaced[i];
    StemDirection_ = direction;
    DrawNote(*notes[i], ChordColours_.value(QString::number(notes[i]->AbsRef())));
  }
  HeadDisplaced_ = false;
  StemDirection_ = direction;
  JoinStems(notes, ChordColours_.value(QString::number(notes.front()->AbsRef())));
  in_chord_ = false;
  flag_bearer_ = nullptr;
  SetupChordStore();
}

void BarDrawing::TellOfLargeChord(const Tone& note) {
  const ToldChords::Place place{note.Track(), note.Bar(), note.Beat(), note.Tick()};
  if (tune_ && !ToldChords::AreNews(*tune_, place)) return;
  ShowMessage(MessageIcon::kCritical, QStringLiteral("More than 20 notes in this chord"),
              QStringLiteral("Not supported"));
}

std::uint8_t BarDrawing::DirectionOfChord(const std::vector<std::shared_ptr<Tone>>& notes) const {
  const ClefKind clef = ClefKindOf(Clef());
  int sum = 0;
  for (const auto& tone : notes) {
    if (clef == ClefKind::kTreble) sum += tone->Number() - kTrebleMiddle;
    if (clef == ClefKind::kBass) sum += tone->Number() - kBassMiddle;
  }
  return sum >= 1 ? kDown : kUp;
}

// One note of a chord carries the flags or the beam of all: the one whose stem reaches farthest.
const Tone* BarDrawing::FlagBearer(const std::vector<std::shared_ptr<Tone>>& notes) const {
  const bool up = StemDirection_ == kUp;
  const Tone* bearer = nullptr;
  int outermost = 0;
  for (const auto& tone : notes) {
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
void BarDrawing::JoinStems(const std::vector<std::shared_ptr<Tone>>& notes, const QString& colour) {
  std::optional<int> lowest;
  std::optional<int> highest;
  for (const auto& tone : notes) {
    const NoteValue* const value = NoteValueOf(FirstValue(*tone));
    const std::optional<int> step = ShownStep(*tone);
    if (value == nullptr || !value->stem || !step) continue;
    lowest = std::min(lowest.value_or(*step), *step);
    highest = std::max(highest.value_or(*step), *step);
  }
  constexpr int kStepsOfStem = 4;
  if (!lowest || *highest - *lowest <= kStepsOfStem) return;
  const Tone& tone = *notes.front();
  const float side = (StemDirection_ == kDown ? -0.5F : 0.5F) * LineGap_;
  const float x = XOf(tone.Beat(), tone.Tick()) + side;
  staff_.SetPenWidth(kStemPen);
  staff_.Line(Role::kStem, InkOf(colour), QPointF(x, YOfStep(*lowest)), QPointF(x, YOfStep(*highest)));
}

std::optional<int> BarDrawing::ShownStep(const Tone& tone) const {
  const ClefKind clef = ClefKindOf(Clef());
  const std::int16_t pitch = tone.Number();
  if (!StaffShows(clef, MiddleLedgerLines(), pitch)) return std::nullopt;
  std::optional<int> step = StepOfPitch(clef, pitch);
  if (!step) return std::nullopt;
  if (tone.EnHarmonic() == u"#") *step -= 1;
  if (tone.EnHarmonic() == u"b") *step += 1;
  if (*step < kLowestStep || *step > kHighestStep) return std::nullopt;
  return step;
}

void BarDrawing::DrawNote(const Tone& tone, const QString& colour) {
  const std::optional<int> step = ShownStep(tone);
  if (!step) return;
  if (!in_chord_) rest_drawn_ = false;
  NoteStep_ = static_cast<std::int16_t>(*step);
  staff_.SetPenWidth(3);
  PenX_ = XOf(tone.Beat(), tone.Tick());
  HeadX_ = PenX_;
  if (HeadDisplaced_) HeadX_ += StemDirection_ == kDown ? -LineGap_ : LineGap_;
  PenY_ = YOfStep(*step);
  DrawNoteSymbol(tone, colour);
  DrawAccidental(tone);
  DrawLedgerLines();
}

void BarDrawing::DrawLedgerLines() {
  staff_.SetPenWidth(1);
  const auto draw = [this](int step) {
    const float y = YOfStep(step);
    staff_.Line(Role::kLedgerLine, kBlackInk, QPointF(PenX_ - LineGap_, y), QPointF(PenX_ + LineGap_, y));
  };
  for (int step = -1; step >= NoteStep_; step -= 2) draw(step);
  for (int step = 11; step <= NoteStep_; step += 2) draw(step);
}

}  // namespace zelmar
