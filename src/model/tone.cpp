#include "model/tone.h"

#include <QHash>
#include <memory>

#include "model/note_names.h"
#include "model/sound_link.h"
#include "platform/numbers.h"

namespace zelmar {

namespace {

// Pitches above the MIDI range, as they may be written. Other spellings of the same notes pass.
constexpr const char16_t* kRefusedPitches[] = {u"A9", u"G#9", u"Bb9", u"B9",  u"g#9",
                                               u"a9", u"bb9", u"b9",  u"B#9", u"b#9"};

struct EnharmonicSpelling {
  int pitch_class;
  const char16_t* mark;
  const char16_t* name;
  int octave_shift;
};

constexpr EnharmonicSpelling kEnharmonics[] = {
    {1, u"b", u"Db", 0},  {3, u"#", u"D#", 0},  {4, u"b", u"Fb", 0},
    {5, u"#", u"E#", 0},  {6, u"b", u"Gb", 0},  {8, u"#", u"G#", 0},
    {10, u"#", u"A#", 0}, {11, u"b", u"Cb", 1}, {0, u"#", u"B#", -1},
};

}  // namespace

const QString& Tone::Blank() {
  static const QString blank = QStringLiteral(" ");
  return blank;
}

QString Tone::Pitch() const {
  return NoteNames().at(pitch_class_) + QString::number(octave_);
}

void Tone::SetPitch(const QString& text) {
  if (text.size() < 2 || text.size() > 3) return Refuse(PitchRefusal::kLength);
  const QChar letter = text.front();
  const bool is_letter = (letter >= u'A' && letter <= u'G') || (letter >= u'a' && letter <= u'g');
  if (!is_letter) return Refuse(PitchRefusal::kLetter);
  const QChar digit = text.back();
  if (digit < u'0' || digit > u'9') return Refuse(PitchRefusal::kOctave);
  if (text.size() == 3 && text[1] != u'b' && text[1] != u'#') return Refuse(PitchRefusal::kAccidental);
  if (digit == u'9') {
    for (const char16_t* refused : kRefusedPitches)
      if (text == QStringView(refused)) return Refuse(PitchRefusal::kRange);
  }

  // A tune of many events passes here once for each, so the class is worked out and not looked up.
  constexpr int kNaturals[] = {9, 11, 0, 2, 4, 5, 7};  // A to G
  const int natural = kNaturals[letter.toUpper().unicode() - u'A'];
  const int accidental = text.size() == 2 ? 0 : text[1] == u'#' ? 1 : -1;
  pitch_class_ = static_cast<std::uint8_t>((natural + accidental + 12) % 12);
  octave_ = static_cast<std::int16_t>(digit.unicode() - u'0');
}

std::int16_t Tone::Number() const {
  return Narrow<std::int16_t>(pitch_class_ + 12 * octave_ + 12);
}

void Tone::SetNumber(std::int16_t number) {
  const auto octave = IntegerPart<std::int16_t>(number / 12.0);
  pitch_class_ = static_cast<std::uint8_t>(number - octave * 12);
  octave_ = Narrow<std::int16_t>(octave - 1);
}

QString Tone::NoteName() const {
  return NoteNames().at(pitch_class_).leftJustified(2);
}

QString Tone::EnharmonicName() const {
  for (const EnharmonicSpelling& spelling : kEnharmonics)
    if (spelling.pitch_class == pitch_class_ && EnHarmonic() == QStringView(spelling.mark))
      return QString::fromUtf16(spelling.name) + QString::number(octave_ + spelling.octave_shift);
  return Pitch();
}

void Tone::SetEnHarmonic(const QString& mark) {
  // Marks that only a foreign database holds are kept too; the table owns its texts for good.
  static QHash<QString, std::shared_ptr<const QString>> marks;
  if (mark == Blank()) {
    enharmonic_ = &Blank();
    return;
  }
  auto& interned = marks[mark];
  if (!interned) interned = std::make_shared<const QString>(mark);
  enharmonic_ = interned.get();
}

void Tone::Play() const {
  TheSoundLink().Sound(*this);
}

void Tone::Refuse(PitchRefusal reason) {
  if (listener_ != nullptr) listener_->PitchRefused(*this, reason);
}

}  // namespace zelmar
