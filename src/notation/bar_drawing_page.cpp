// The bar as a whole: its notes in order, its rests, its heading and its words.
#include <algorithm>
#include <vector>

#include "model/tune_text.h"
#include "notation/bar_drawing.h"
#include "notation/written_rests.h"
#include "platform/numbers.h"

namespace zelmar {

namespace {

// In line gaps.
constexpr double kHeadingHeight = 1.35;
constexpr double kLowHeadingHeight = 0.85;  // ends above the head of the highest step
constexpr double kBarNumberHeight = 1.2;
constexpr double kBarNumberIndent = 0.4;  // clear of the rim that the keyboard gives to a staff
constexpr double kWordHeight = 1.1;
constexpr double kSpaceBetweenTexts = 0.3;

constexpr double kSpaceBeforeSign = 0.05;
constexpr double kTimeSignatureRow = 2.0;

constexpr double kNarrowestWords = 0.6;
constexpr double kLeastRoom = 1.0;  // twips: no room at all would be no limit
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

std::vector<ChordPlace> BarDrawing::DisplayBar(std::int16_t bar, std::int16_t track, std::int32_t red_index,
                                               std::int32_t blue_index) {
  MeasureHead();
  ClearStaff();
  DrawStaff();
  if (ShowClef()) DrawClef(Clef());
  if (!tune_) return {};
  BarNotes notes = StartNotes();
  CollectNotes(notes, bar, track, red_index, blue_index);
  notes.PrintChord();
  notes.EndBar();
  ConfineTimeSignature();
  WriteInfo(bar);
  if (ShowWords()) WriteWords(bar);
  return notes.LargeChords();
}

BarNotes BarDrawing::StartNotes() {
  notes_from_ = staff_.Primitives().size();
  return BarNotes(staff_, frame_,
                  {ClefKindOf(Clef()), KeySignature(), MiddleLedgerLines(), BeamingOn(), PenColour()});
}

void BarDrawing::CollectNotes(BarNotes& notes, std::int16_t bar, std::int16_t track, std::int32_t red_index,
                              std::int32_t blue_index) const {
  static const QString black = QString::fromUtf16(kBlackWord);
  static const QString red = QString::fromUtf16(kRedWord);
  static const QString blue = QString::fromUtf16(kBlueWord);
  const Tones& tones = *tune_->Tones();
  bool first = true;
  for (qsizetype i = FirstOfBar(tones, bar); i > 0 && i <= tones.Count(); ++i) {
    const std::shared_ptr<Tone>& tone = tones.Item(i);
    if (tone->Bar() != bar) break;
    if (tone->EventType() != MUSIC_NOTE || tone->Track() != track) continue;
    notes.AddToChord(tone, first, i == red_index ? red : i == blue_index ? blue : black);
    first = false;
  }
}

void BarDrawing::DisplayRests(std::int16_t bar, std::int16_t) {
  MeasureHead();
  if (!rests_) return;
  const std::shared_ptr<Rests> rests = rests_;
  qsizetype low = 1;
  qsizetype high = rests->Count() + 1;
  while (low < high) {
    const qsizetype middle = (low + high) / 2;
    if (rests->Item(middle)->Bar() < bar)
      low = middle + 1;
    else
      high = middle;
  }
  for (qsizetype i = low; i <= rests->Count() && rests->Item(i)->Bar() == bar; ++i) DrawRest(*rests->Item(i));
  ConfineTimeSignature();
}

void BarDrawing::DrawRest(const Rest& rest) {
  DrawWrittenRest(staff_, frame_, PenColour(), rest);
}

// What the first notes or rests of the bar have at their left is not written over, be it a stem or a sign.
void BarDrawing::ConfineTimeSignature() {
  for (std::size_t place = 0; place < notes_from_; ++place) {
    const Primitive digits = staff_.Primitives()[place];
    if (digits.role != Role::kTimeSignature) continue;
    const QRectF row(digits.from, QSizeF(digits.room, kTimeSignatureRow * LineGap()));
    double end = row.right();
    for (const QRectF& ink : NotesWithin(row)) end = std::min(end, ink.left());
    const double room = end - digits.from.x() - kSpaceBeforeSign * LineGap();
    if (end < row.right()) staff_.Confine(place, std::max(room, kLeastRoom));
  }
}

std::vector<QRectF> BarDrawing::NotesWithin(const QRectF& box) const {
  std::vector<QRectF> found;
  const auto& primitives = staff_.Primitives();
  for (std::size_t place = notes_from_; place < primitives.size(); ++place)
    if (const QRectF ink = staff_.BoxOf(primitives[place]); ink.intersects(box)) found.push_back(ink);
  return found;
}

void BarDrawing::WriteInfo(std::int16_t bar) {
  if (BarOffset() != 0) {
    WriteHeading(QString::number(bar), kRedInk, StaffWidth() / 8.0);
    return;
  }
  if (!tune_) return;
  QString heading = TrackLabel();
  if (ShowTitle()) heading.prepend(ComposerAndTitle(*tune_, kTwoBlanks) + kTwoBlanks);
  WriteHeading(heading, PenColour(), 0.0);
  if (ShowClef()) WriteBarNumber(bar);
}

// Above the clef, where no note comes: the heading of the first staff has other things to say.
void BarDrawing::WriteBarNumber(std::int16_t bar) {
  staff_.Text(Role::kBarNumber, kRedInk, QPointF(kBarNumberIndent * LineGap(), kHeadingHeight * LineGap()),
              QString::number(bar), {kHeadingFace, kBarNumberHeight * LineGap() / kTwipsPerPoint, false},
              NotesLeft());
}

// Over notes that reach up to it a heading is written smaller, and ends or makes way where even that is not
// enough: a sign of the highest notes leaves no room above it.
void BarDrawing::WriteHeading(const QString& text, InkColour ink, double left) {
  Lettering letters{kHeadingFace, kHeadingHeight * LineGap() / kTwipsPerPoint, false};
  double room = StaffWidth() - left;
  const auto in_the_way = [&] { return NotesWithin(BoxOfText(text, letters, QPointF(left, 0.0), room)); };
  const QRectF top(0.0, 0.0, StaffWidth(), 2.0 * kHeadingHeight * LineGap());
  if (!text.isEmpty() && letters.points > 0.0 && !NotesWithin(top).empty() && !in_the_way().empty()) {
    letters.points *= kLowHeadingHeight / kHeadingHeight;
    const double space = kSpaceBetweenTexts * LineGap();
    if (left > 0.0) {
      for (auto notes = in_the_way(); !notes.empty() && left < StaffWidth(); notes = in_the_way()) {
        for (const QRectF& note : notes) left = std::max(left, note.right() + space);
        room = 0.0;
      }
    } else {
      for (const QRectF& note : in_the_way())
        room = std::min(room, std::max(note.left() - space, kLeastRoom));
    }
  }
  staff_.Text(Role::kHeading, ink, QPointF(left, 0.0), text, letters, room);
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
  struct PlacedWord {
    double x;
    QString text;
  };
  std::vector<PlacedWord> placed;
  tune_->Words()->ForEach([&](const Word& word) {
    if (word.Bar() != bar) return;
    const double position = word.Beat() + static_cast<double>(word.Tick()) / frame_.ticks_per_beat;
    const double x =
        3.0 * LineGap() + (position - 1.0) / frame_.beats_per_bar * (StaffWidth() - 5.0 * LineGap());
    placed.push_back({x, word.WordText()});
  });
  // New words are put at the end whatever their place.
  std::stable_sort(placed.begin(), placed.end(),
                   [](const PlacedWord& a, const PlacedWord& b) { return a.x < b.x; });

  const Lettering letters{kHeadingFace, kWordHeight * LineGap() / kTwipsPerPoint, false, kNarrowestWords};
  const InkColour ink = PenColour();
  for (std::size_t i = 0; i < placed.size(); ++i) {
    QString text = placed[i].text;
    // Words of one moment are written as one.
    while (i + 1 < placed.size() && placed[i + 1].x == placed[i].x) text += u' ' + placed[++i].text;
    const bool last = i + 1 == placed.size();
    const double end = last ? StaffWidth() : placed[i + 1].x - kSpaceBetweenTexts * LineGap();
    words_.Text(Role::kWord, ink, QPointF(placed[i].x, 0.0), text, letters,
                std::max(end - placed[i].x, kLeastRoom));
  }
}

}  // namespace zelmar
