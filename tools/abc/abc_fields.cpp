#include "abc/abc_fields.h"

#include <QStringList>

namespace zelmar {

namespace {

[[noreturn]] void Fail(TextPosition position, const QString& sentence) {
  throw TextError(position, sentence);
}

Fraction ReadFraction(AbcCursor& cursor, const QString& sentence) {
  cursor.SkipBlanks();
  const TextPosition start = cursor.Position();
  if (!cursor.AtDigit()) Fail(start, sentence);
  const int numerator = cursor.TakeNumber();
  if (!cursor.TakeIf(u'/')) return {numerator, 1};
  if (!cursor.AtDigit()) Fail(start, sentence);
  const int denominator = cursor.TakeNumber();
  if (numerator == 0 || denominator == 0) Fail(start, sentence);
  return {numerator, denominator};
}

void ExpectEnd(AbcCursor& cursor, const QString& sentence) {
  cursor.SkipBlanks();
  if (!cursor.AtEnd()) Fail(cursor.Position(), sentence);
}

struct Mode {
  const char16_t* name;
  int fifths;
  bool minor_third;
};

// How many fifths the signature of a mode lies above that of the major key on the same note.
constexpr Mode kModes[] = {
    {u"maj", 0, false},  {u"ion", 0, false}, {u"min", -3, true}, {u"m", -3, true},   {u"aeo", -3, true},
    {u"mix", -1, false}, {u"dor", -2, true}, {u"phr", -4, true}, {u"lyd", 1, false}, {u"loc", -5, true},
};

const Mode* FindMode(const QString& word) {
  const QString start = word.toLower().left(3);
  for (const Mode& mode : kModes)
    if (start == QStringView(mode.name)) return &mode;
  return nullptr;
}

// Letters in the order in which a signature sharpens them, as indexes from C.
constexpr int kSharpOrder[7] = {3, 0, 4, 1, 5, 2, 6};
// Fifths from C to each letter.
constexpr int kFifthsOfLetter[7] = {0, 2, 4, -1, 1, 3, 5};

AbcAccidentals AccidentalsOf(int sharps) {
  AbcAccidentals accidentals{};
  for (int i = 0; i < sharps; ++i) accidentals[static_cast<std::size_t>(kSharpOrder[i])] = 1;
  for (int i = 0; i < -sharps; ++i) accidentals[static_cast<std::size_t>(kSharpOrder[6 - i])] = -1;
  return accidentals;
}

// "^f", "_b", "=c", "^^g" as words of a key.
bool TakeKeyAccidental(const QString& word, AbcKey& key) {
  static const QStringList marks = {QStringLiteral("^^"), QStringLiteral("__"), QStringLiteral("^"),
                                    QStringLiteral("_"), QStringLiteral("=")};
  static constexpr int alterations[] = {2, -2, 1, -1, 0};
  for (qsizetype i = 0; i < marks.size(); ++i) {
    if (!word.startsWith(marks[i])) continue;
    const int letter = word.size() == marks[i].size() + 1 ? LetterIndex(word.back()) : -1;
    if (letter < 0) return false;
    key.accidentals[static_cast<std::size_t>(letter)] = alterations[i];
    return true;
  }
  return false;
}

}  // namespace

int LetterIndex(QChar letter) {
  static constexpr QStringView letters = u"CDEFGAB";
  return static_cast<int>(letters.indexOf(letter.toUpper()));
}

AbcMetre ReadMetre(AbcCursor& cursor) {
  const QString sentence = QStringLiteral(
      "A metre is C, C| or two whole numbers such as 3/4, the second a power of two up to 32.");
  cursor.SkipBlanks();
  const TextPosition start = cursor.Position();
  AbcMetre metre;
  if (cursor.TakeIf(u'C')) {
    if (cursor.TakeIf(u'|')) metre = {2, 2};
  } else {
    if (!cursor.AtDigit()) Fail(start, sentence);
    metre.beats = cursor.TakeNumber();
    if (!cursor.TakeIf(u'/') || !cursor.AtDigit()) Fail(start, sentence);
    metre.length = cursor.TakeNumber();
    const bool power_of_two = metre.length > 0 && (metre.length & (metre.length - 1)) == 0;
    if (metre.beats < 1 || metre.beats > 64 || !power_of_two || metre.length > 32) Fail(start, sentence);
  }
  ExpectEnd(cursor, sentence);
  return metre;
}

Fraction ReadUnitLength(AbcCursor& cursor) {
  const QString sentence = QStringLiteral("A unit length is 1 over a power of two up to 512, such as 1/8.");
  cursor.SkipBlanks();
  const TextPosition start = cursor.Position();
  const Fraction length = ReadFraction(cursor, sentence);
  const std::int64_t denominator = length.Denominator();
  if (length.Numerator() != 1 || (denominator & (denominator - 1)) != 0 || denominator > 512)
    Fail(start, sentence);
  ExpectEnd(cursor, sentence);
  return length * Fraction(4);
}

std::optional<int> ReadTempo(AbcCursor& cursor, const Fraction& unit_crotchets) {
  const QString sentence = QStringLiteral("A tempo reads like 1/4=120, with a text in quotes if wished.");
  const auto skip_text = [&cursor, &sentence] {
    cursor.SkipBlanks();
    const TextPosition start = cursor.Position();
    if (cursor.TakeIf(u'"') && cursor.TakeUntil(u'"').isNull()) Fail(start, sentence);
    cursor.SkipBlanks();
  };
  skip_text();
  if (cursor.AtEnd()) return std::nullopt;
  const TextPosition start = cursor.Position();
  Fraction beat;
  bool has_beat = false;
  Fraction last;
  while (true) {
    last = ReadFraction(cursor, sentence);
    cursor.SkipBlanks();
    if (cursor.TakeIf(u'=')) {
      beat = beat + last;
      has_beat = true;
      last = ReadFraction(cursor, sentence);
      break;
    }
    if (!cursor.AtDigit()) break;
    beat = beat + last;
  }
  if (!has_beat && !(beat == Fraction())) Fail(start, sentence);
  skip_text();
  ExpectEnd(cursor, sentence);
  // A bare number counts unit lengths.
  const Fraction crotchets = last * (has_beat ? beat * Fraction(4) : unit_crotchets);
  const double tempo = crotchets.Value();
  if (tempo < 1 || tempo > 16383)
    Fail(start, QStringLiteral("A tempo lies between 1 and 16383 crotchets a minute."));
  return RoundHalfEven<std::int32_t>(tempo);
}

bool PassClefWord(const QString& word, TextPosition position) {
  static const QStringList clefs = {QStringLiteral("treble"), QStringLiteral("bass"), QStringLiteral("alto"),
                                    QStringLiteral("tenor"),  QStringLiteral("none"), QStringLiteral("perc")};
  static const QStringList layout = {
      QStringLiteral("stafflines"), QStringLiteral("middle"), QStringLiteral("name"),  QStringLiteral("nm"),
      QStringLiteral("subname"),    QStringLiteral("snm"),    QStringLiteral("sname"), QStringLiteral("stem"),
      QStringLiteral("staves"),     QStringLiteral("up"),     QStringLiteral("down")};
  const qsizetype equals = word.indexOf(u'=');
  const QString property = word.left(equals < 0 ? word.size() : equals);
  const QString value = equals < 0 ? QString() : word.sliced(equals + 1);
  if (property == QStringLiteral("octave") || property == QStringLiteral("transpose")) {
    if (value == QStringLiteral("0")) return true;
    Fail(position, QStringLiteral("Notes are written as they sound; %1 is not supported.").arg(property));
  }
  const QString clef = property == QStringLiteral("clef") ? value : property;
  for (const QString& known : clefs) {
    if (!clef.startsWith(known)) continue;
    const QString suffix = clef.sliced(known.size());
    if (suffix == QStringLiteral("-8") || suffix == QStringLiteral("+8"))
      Fail(position, QStringLiteral("Notes are written as they sound; octave clefs are not supported."));
    return suffix.isEmpty() || (suffix.size() == 1 && suffix[0].isDigit());
  }
  return layout.contains(property);
}

AbcKey ReadKey(AbcCursor& cursor, const AbcKey& current) {
  AbcKey key = current;
  cursor.SkipBlanks();
  const TextPosition start = cursor.Position();
  const QChar tonic = cursor.Peek();
  const QString first = AbcCursor(cursor.Rest(), 1).TakeWord();
  bool named = false;
  if (first.isEmpty() || first == QStringLiteral("none")) {
    cursor.TakeWord();
    key = AbcKey{};
  } else if (first == QStringLiteral("HP") || first == QStringLiteral("Hp")) {
    Fail(start, QStringLiteral("The keys of the bagpipe are not supported; give the key by its name."));
  } else if (tonic >= u'A' && tonic <= u'G') {
    named = true;
    cursor.Take();
    int fifths = kFifthsOfLetter[LetterIndex(tonic)];
    if (cursor.TakeIf(u'#'))
      fifths += 7;
    else if (cursor.TakeIf(u'b'))
      fifths -= 7;
    bool minor_third = false;
    AbcCursor ahead = cursor;
    const QString word = ahead.TakeWord();
    if (const Mode* mode = FindMode(word)) {
      fifths += mode->fifths;
      minor_third = mode->minor_third;
      cursor = ahead;
    } else if (word.toLower() == QStringLiteral("exp")) {
      fifths = 0;
      cursor = ahead;
    }
    if (fifths < -7 || fifths > 7)
      Fail(start, QStringLiteral("This key has more than seven sharps or flats."));
    key = {fifths, minor_third, AccidentalsOf(fifths)};
  }
  while (true) {
    cursor.SkipBlanks();
    if (cursor.AtEnd()) return key;
    const TextPosition position = cursor.Position();
    const QString word = cursor.TakeWord();
    if ((named && TakeKeyAccidental(word, key)) || PassClefWord(word, position)) continue;
    Fail(position, QStringLiteral("\"%1\" is neither a key, a mode, an accidental nor a clef.").arg(word));
  }
}

}  // namespace zelmar
