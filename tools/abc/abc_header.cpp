#include "abc/abc_header.h"

#include <QStringList>
#include <algorithm>

#include "abc/abc_midi.h"

namespace zelmar {

namespace {

[[noreturn]] void Fail(TextPosition position, const QString& sentence) {
  throw TextError(position, sentence);
}

struct TextLine {
  const char16_t* name;
  QString AbcCatalogue::*field;
};

constexpr TextLine kTextLines[] = {
    {u"zelmar-codename", &AbcCatalogue::code_name},         {u"zelmar-composer", &AbcCatalogue::composer},
    {u"zelmar-category", &AbcCatalogue::category},          {u"zelmar-style", &AbcCatalogue::style},
    {u"zelmar-ensemble", &AbcCatalogue::ensemble},          {u"zelmar-country", &AbcCatalogue::country},
    {u"zelmar-instrument", &AbcCatalogue::solo_instrument}, {u"zelmar-length", &AbcCatalogue::length},
};

const QStringList& MidiModes() {
  static const QStringList modes = {QStringLiteral("GM"), QStringLiteral("GM2"), QStringLiteral("GS"),
                                    QStringLiteral("XG")};
  return modes;
}

[[noreturn]] void FailMidiInTheHeader(TextPosition position) {
  Fail(position,
       QStringLiteral("Commands for the synthesiser stand in the music, behind K:, in the voice that they "
                      "are for."));
}

int TakeNumber(AbcCursor& cursor, int lowest, int highest, const QString& name) {
  cursor.SkipBlanks();
  const TextPosition position = cursor.Position();
  const int number = cursor.AtDigit() ? cursor.TakeNumber() : -1;
  const bool ends = cursor.AtEnd() || cursor.Peek().isSpace();
  if (number < lowest || number > highest || !ends)
    Fail(position, QStringLiteral("%1 is a whole number from %2 to %3.").arg(name).arg(lowest).arg(highest));
  return number;
}

void ExpectEnd(AbcCursor& cursor) {
  cursor.SkipBlanks();
  if (!cursor.AtEnd()) Fail(cursor.Position(), QStringLiteral("Nothing more is expected in this line."));
}

}  // namespace

bool AbcHeader::ReadField(QChar letter, TextPosition field, AbcCursor& cursor) {
  static constexpr QStringView ignored = u"XCOAZNGHRBDFSWrs";
  if (ignored.contains(letter)) return false;
  switch (letter.unicode()) {
    case u'T':
      // Further titles are the same tune under another name.
      if (!has_title_) catalogue_.title = cursor.Rest().trimmed().toString();
      has_title_ = true;
      return false;
    case u'M':
      metre_ = ReadMetre(cursor);
      return false;
    case u'L':
      unit_length_ = ReadUnitLength(cursor);
      return false;
    case u'Q':
      tempo_ = Line{cursor.Rest().toString(), cursor.Position()};
      return false;
    case u'P':
      order_ = ReadPlayOrder(cursor);
      return false;
    case u'I':
      if (TakeMidiCommand(cursor)) FailMidiInTheHeader(field);
      return false;
    case u'V':
      voices_.push_back({cursor.Rest().toString(), cursor.Position()});
      return false;
    case u'K':
      key_ = ReadKey(cursor, AbcKey{});
      return true;
    case u'm':
    case u'U':
      Fail(field, QStringLiteral("Macros and symbols of one's own are not supported."));
    default:
      Fail(field, QStringLiteral("The field %1: means nothing in the header.").arg(letter));
  }
}

void AbcHeader::ReadDirective(AbcCursor& cursor) {
  const TextPosition start = cursor.Position();
  if (TakeMidiCommand(cursor)) FailMidiInTheHeader(start);
  const QString name = cursor.TakeWord();
  cursor.SkipBlanks();
  if (name == QStringLiteral("propagate-accidentals")) {
    const TextPosition position = cursor.Position();
    const QString reach = cursor.TakeWord();
    if (reach == QStringLiteral("not"))
      reach_ = AccidentalReach::kNote;
    else if (reach == QStringLiteral("octave"))
      reach_ = AccidentalReach::kOctave;
    else if (reach == QStringLiteral("pitch"))
      reach_ = AccidentalReach::kAllOctaves;
    else
      Fail(position, QStringLiteral("Accidentals reach as far as not, octave or pitch."));
    return;
  }
  if (!IsCatalogueLine(name)) return;
  const QString text = cursor.Rest().trimmed().toString();
  for (const TextLine& line : kTextLines) {
    if (name != QStringView(line.name)) continue;
    if (text.isEmpty()) Fail(start, QStringLiteral("%1 needs a text.").arg(name));
    catalogue_.*line.field = text;
    return;
  }
  if (name == QStringLiteral("zelmar-description")) {
    if (!catalogue_.description.isEmpty()) catalogue_.description += u' ';
    catalogue_.description += text;
  } else if (name == QStringLiteral("zelmar-rank")) {
    catalogue_.rank = TakeNumber(cursor, 1, 9999, QStringLiteral("The rank"));
    ExpectEnd(cursor);
  } else if (name == QStringLiteral("zelmar-midi-mode")) {
    if (!MidiModes().contains(text))
      Fail(start, QStringLiteral("The mode of the synthesiser is GM, GM2, GS or XG."));
    catalogue_.midi_mode = text;
  } else if (name == QStringLiteral("zelmar-melody-track")) {
    melody_track_position_ = cursor.Position();
    melody_track_ = TakeNumber(cursor, 1, 15, QStringLiteral("The melody track"));
    ExpectEnd(cursor);
  } else if (name == QStringLiteral("zelmar-voice")) {
    ReadVoiceLine(cursor);
  } else if (name == QStringLiteral("zelmar-theme")) {
    ReadThemeLine(cursor);
  } else {
    Fail(start, QStringLiteral("There is no catalogue line %1.").arg(name));
  }
}

void AbcHeader::ReadVoiceLine(AbcCursor& cursor) {
  struct Property {
    QStringView name;
    std::optional<int> Equipment::*field;
    int lowest, highest;
    const char* what;
  };
  static constexpr Property properties[] = {
      {u"instrument", &Equipment::instrument, 0, 127, "An instrument"},
      {u"channel", &Equipment::channel, 1, 16, "A channel"},
      {u"volume", &Equipment::volume, 1, 127, "A volume"},
      {u"bank-msb", &Equipment::bank_msb, 0, 127, "A half of a bank"},
      {u"bank-lsb", &Equipment::bank_lsb, 0, 127, "A half of a bank"},
  };
  Equipment equipment;
  equipment.position = cursor.Position();
  equipment.voice = cursor.TakeWord();
  while (true) {
    cursor.SkipBlanks();
    if (cursor.AtEnd()) break;
    const TextPosition position = cursor.Position();
    const auto property = std::ranges::find(properties, QStringView(cursor.TakeUntil(u'=')), &Property::name);
    if (property == std::end(properties))
      Fail(position,
           QStringLiteral("A voice has an instrument=, a channel=, a volume=, a bank-msb= and a bank-lsb=."));
    equipment.*property->field =
        TakeNumber(cursor, property->lowest, property->highest, QLatin1String(property->what));
  }
  equipment_.push_back(equipment);
}

void AbcHeader::ReadThemeLine(AbcCursor& cursor) {
  PlacedTheme placed;
  placed.position = cursor.Position();
  AbcTheme& theme = placed.theme;
  theme.number = TakeNumber(cursor, 1, 255, QStringLiteral("The number of a theme"));
  theme.start_bar = TakeNumber(cursor, 1, 9999, QStringLiteral("The first bar of a theme"));
  theme.end_bar = TakeNumber(cursor, 1, 9999, QStringLiteral("The last bar of a theme"));
  theme.track = TakeNumber(cursor, 0, 15, QStringLiteral("The track of a theme"));
  theme.rank = TakeNumber(cursor, 1, 9999, QStringLiteral("The rank of a theme"));
  theme.text = cursor.Rest().trimmed().toString();
  for (const PlacedTheme& other : themes_)
    if (other.theme.number == theme.number)
      Fail(placed.position, QStringLiteral("There are two themes number %1.").arg(theme.number));
  themes_.push_back(placed);
}

Fraction AbcHeader::UnitLength() const {
  if (unit_length_) return *unit_length_;
  const bool short_metre = 4 * metre_->beats < 3 * metre_->length;
  return Fraction(4, short_metre ? 16 : 8);
}

AbcMusic AbcHeader::StartMusic(TextPosition end) const {
  if (!has_title_ || catalogue_.title.isEmpty()) Fail(end, QStringLiteral("The header has no title (T:)."));
  if (!metre_) Fail(end, QStringLiteral("The header has no metre (M:)."));
  AbcMusic music(*metre_, UnitLength(), key_, reach_);
  for (const Line& line : voices_) {
    AbcCursor cursor(line.text, line.position.line, line.position.column);
    music.DeclareVoice(cursor);
  }
  return music;
}

void AbcHeader::Describe(AbcTune& tune) const {
  const QString code_name = catalogue_.code_name.isEmpty() ? tune.catalogue.code_name : catalogue_.code_name;
  tune.catalogue = catalogue_;
  tune.catalogue.code_name = code_name;
  tune.beats_per_bar = metre_->beats;
  tune.beat_length = metre_->length;
  tune.key_signature = key_.sharps;
  tune.key_mode = key_.minor_third ? 1 : 0;
  tune.melody_track = melody_track_;
  if (!tempo_) return;
  AbcCursor cursor(tempo_->text, tempo_->position.line, tempo_->position.column);
  if (const auto tempo = ReadTempo(cursor, UnitLength())) tune.tempo = *tempo;
}

void AbcHeader::EquipVoices(std::deque<AbcVoice>& voices) const {
  for (const Equipment& equipment : equipment_) {
    const auto voice =
        std::ranges::find(voices, equipment.voice, [](const AbcVoice& one) { return one.track.id; });
    if (voice == voices.end())
      Fail(equipment.position, QStringLiteral("There is no voice \"%1\".").arg(equipment.voice));
    voice->track.instrument = equipment.instrument.value_or(voice->track.instrument);
    voice->track.channel = equipment.channel.value_or(voice->track.channel);
    voice->track.base_volume = equipment.volume.value_or(voice->track.base_volume);
    voice->track.bank_msb = equipment.bank_msb.value_or(voice->track.bank_msb);
    voice->track.bank_lsb = equipment.bank_lsb.value_or(voice->track.bank_lsb);
  }
  if (melody_track_ > static_cast<int>(voices.size()))
    Fail(melody_track_position_, QStringLiteral("The melody track has no voice."));
}

void AbcHeader::AddThemes(AbcTune& tune) const {
  for (const PlacedTheme& placed : themes_) {
    const AbcTheme& theme = placed.theme;
    if (theme.end_bar < theme.start_bar || theme.end_bar > tune.bar_count)
      Fail(placed.position,
           QStringLiteral("A theme lies within the tune, which has %1 bars.").arg(tune.bar_count));
    if (theme.track > static_cast<int>(tune.tracks.size()))
      Fail(placed.position, QStringLiteral("The track of the theme has no voice."));
    tune.themes.push_back(theme);
  }
}

}  // namespace zelmar
