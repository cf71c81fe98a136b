// The bar as a whole: its notes in order, its heading and its words.
#include <algorithm>

#include "model/tune_text.h"
#include "notation/bar_drawing.h"
#include "platform/numbers.h"

namespace zelmar {

namespace {

constexpr double kHeadingHeight = 1.35;  // line gaps
constexpr double kWordPoints = 9.0;
const QString kHeadingFace = QStringLiteral("Times New Roman");
const QString kTwoBlanks = QStringLiteral("  ");

// Place of the first event of the bar in Tones, 0 when it has none.
qsizetype FirstOfBar(const Tones& tones, std::int16_t bar) {
  qsizetype low = 1;
  qsizetype high = tones.Count();
  while (low <= high) {
    qsizetype middle = (low + high) / 2;
    const std::int16_t found = tones.Item(middle)->Bar();
    if (found < bar) {
      low = middle + 1;
    } else if (found > bar) {
      high = middle - 1;
    } else {
      while (middle > 1 && tones.Item(middle - 1)->Bar() == bar) --middle;
      return middle;
    }
  }
  return 0;
}

}  // namespace

void BarDrawing::DisplayBar(std::int16_t bar, std::int16_t track, std::int32_t red_index,
                            std::int32_t blue_index) {
  const std::uint32_t turn = ++turn_;
  MeasureHead();
  ClearStaff();
  DrawStaff();
  if (ShowClef()) DrawClef(Clef());
  if (!tune_) return;
  StartBar();
  const std::weak_ptr<bool> alive = alive_;
  DrawNotesOfBar(bar, track, red_index, blue_index);
  // A message about a chord may have let another bar be drawn, or the drawing go.
  if (alive.expired() || turn != turn_) return;
  EndBar();
  WriteInfo(bar);
  if (ShowWords()) WriteWords(bar);
}

void BarDrawing::StartBar() {
  SetupChordStore();
  AccidentalShown_.fill(false);
  HangingQuaver_ = false;
  HangingSemiquaver_ = false;
  HangingCount_ = 0;
  HeadDisplaced_ = false;
  StemDirection_ = kUndecided;
}

void BarDrawing::DrawNotesOfBar(std::int16_t bar, std::int16_t track, std::int32_t red_index,
                                std::int32_t blue_index) {
  static const QString black = QString::fromUtf16(kBlackWord);
  static const QString red = QString::fromUtf16(kRedWord);
  static const QString blue = QString::fromUtf16(kBlueWord);
  const std::uint32_t turn = turn_;
  const std::weak_ptr<bool> alive = alive_;
  const std::shared_ptr<Tones> tones = tune_->Tones();
  bool first = true;
  for (qsizetype i = FirstOfBar(*tones, bar); i > 0 && i <= tones->Count(); ++i) {
    const std::shared_ptr<Tone> tone = tones->Item(i);
    if (tone->Bar() != bar) break;
    if (tone->EventType() != MUSIC_NOTE || tone->Track() != track) continue;
    AddToChord(tone, first, i == red_index ? red : i == blue_index ? blue : black);
    if (alive.expired() || turn != turn_) return;
    first = false;
  }
  PrintChord();
}

void BarDrawing::EndBar() {
  BreakGroup();
  CancelHangingQuaver(1, 99);
  CancelHangingQuaver(2, 99);
}

void BarDrawing::WriteInfo(std::int16_t bar) {
  const Lettering letters{kHeadingFace, kHeadingHeight * LineGap_ / kTwipsPerPoint, false};
  if (BarOffset() != 0) {
    const double left = StaffWidth_ / 8.0;
    staff_.Text(Role::kHeading, kRedInk, QPointF(left, 0.0), QString::number(bar), letters,
                StaffWidth_ - left);
    return;
  }
  if (!tune_) return;
  QString heading = TrackLabel();
  if (ShowTitle()) heading.prepend(ComposerAndTitle(*tune_, kTwoBlanks) + kTwoBlanks);
  staff_.Text(Role::kHeading, PenColour(), QPointF(0.0, 0.0), heading, letters, StaffWidth_);
}

QString BarDrawing::TrackLabel() const {
  if (!ShowTrack()) return {};
  for (const auto& track : *tune_->Tracks())
    if (track->TrackNumber() == SelectedTrack())
      return QStringLiteral("(%1) %2").arg(SelectedTrack()).arg(track->Description());
  return QStringLiteral("Track Unknown");
}

void BarDrawing::WriteWords(std::int16_t bar) {
  words_.Clear();
  const Lettering letters{kHeadingFace, kWordPoints, false};
  const InkColour ink = PenColour();
  // New words are put at the end whatever their place, so the order tells nothing.
  tune_->Words()->ForEach([&](const Word& word) {
    if (word.Bar() != bar) return;
    const double position = word.Beat() + static_cast<double>(word.Tick()) / ticks_per_beat_;
    const double x = 3.0 * LineGap_ + (position - 1.0) / beats_per_bar_ * (StaffWidth_ - 5.0 * LineGap_);
    words_.Text(Role::kWord, ink, QPointF(x, 0.0), word.WordText(), letters);
  });
}

}  // namespace zelmar
