// Bar lines, endings, brackets and fields within the music.
#include <algorithm>

#include "abc/abc_midi.h"
#include "abc/abc_music.h"

namespace zelmar {

namespace {

[[noreturn]] void Fail(TextPosition position, const QString& sentence) {
  throw TextError(position, sentence);
}

// "1", "1,3", "1-3": the passes of an ending.
std::vector<int> ReadEndings(AbcCursor& cursor) {
  const TextPosition start = cursor.Position();
  const QString sentence = QStringLiteral("An ending is numbered from 1 to 9, such as 1, 1,3 or 1-3.");
  std::vector<int> endings;
  do {
    if (!cursor.AtDigit()) Fail(start, sentence);
    const int first = cursor.TakeNumber();
    int last = first;
    if (cursor.Peek() == u'-' && cursor.Peek(1).isDigit()) {
      cursor.Take();
      if (!cursor.AtDigit()) Fail(start, sentence);
      last = cursor.TakeNumber();
    }
    if (first < 1 || last < first || last > 9) Fail(start, sentence);
    for (int pass = first; pass <= last; ++pass) endings.push_back(pass);
  } while (cursor.Peek() == u',' && cursor.Peek(1).isDigit() && cursor.TakeIf(u','));
  return endings;
}

}  // namespace

void AbcMusic::ReadBarLine(AbcCursor& cursor) {
  const TextPosition position = cursor.Position();
  // All signs that make up the line: strokes, colons, and brackets that touch a stroke.
  QString signs;
  while (true) {
    const QChar c = cursor.Peek();
    const bool thick_start = c == u'[' && cursor.Peek(1) == u'|';
    const bool thick_end = c == u']' && signs.endsWith(u'|');
    if (c != u'|' && c != u':' && !thick_start && !thick_end) break;
    signs += cursor.Take();
    if (signs.size() > 12) Fail(position, QStringLiteral("This bar line has too many signs."));
  }
  const qsizetype first_stroke = signs.indexOf(u'|');
  const qsizetype colons_before = first_stroke < 0 ? signs.size() : first_stroke;
  AbcBarLine line;
  if (first_stroke < 0) {
    if (signs.size() != 2) Fail(position, QStringLiteral("A colon stands only in a repeat sign."));
    line.repeats_end = 1;
    line.repeat_start = true;
  } else {
    for (qsizetype i = 0; i < colons_before; ++i)
      if (signs[i] == u':') ++line.repeats_end;
    line.repeat_start = signs.endsWith(u':');
    line.double_bar = signs.count(u'|') > 1 || signs.contains(u']') || signs.contains(u'[');
    const QStringView inner = QStringView(signs).sliced(first_stroke);
    const bool colon_inside = inner.contains(u':') && inner.indexOf(u':') < inner.lastIndexOf(u'|');
    if (colon_inside) Fail(position, QStringLiteral("This bar line cannot be read."));
  }
  cursor.SkipBlanks();
  // A number that touches the line, or one in a bracket of its own behind it.
  if (cursor.AtDigit())
    line.endings = ReadEndings(cursor);
  else if (cursor.Peek() == u'[' && cursor.Peek(1).isDigit()) {
    cursor.Take();
    line.endings = ReadEndings(cursor);
  }
  CurrentState().bar_accidentals.clear();
  AddItem(AbcItemKind::kBarLine, position).bar_line = line;
}

void AbcMusic::ReadBracket(AbcCursor& cursor) {
  const TextPosition position = cursor.Position();
  if (cursor.Peek(1) == u'|') return ReadBarLine(cursor);
  if (cursor.Peek(1).isDigit()) {
    cursor.Take();
    AbcBarLine line;
    line.double_bar = true;  // an ending may open within a bar
    line.endings = ReadEndings(cursor);
    AddItem(AbcItemKind::kBarLine, position).bar_line = line;
    return;
  }
  if (cursor.Peek(1).isLetter() && cursor.Peek(2) == u':') {
    cursor.Take();
    const QChar letter = cursor.Take();
    cursor.Take();
    const TextPosition start = cursor.Position();
    const QString value = cursor.TakeUntil(u']');
    if (value.isNull()) Fail(position, QStringLiteral("The bracket of the field is never closed."));
    AbcCursor inner(value, start.line, start.column);
    if (!ReadField(letter, position, inner))
      Fail(position, QStringLiteral("The field %1: means nothing within the music.").arg(letter));
    return;
  }
  ReadChord(cursor);
}

void AbcMusic::ReadPart(TextPosition field, AbcCursor& cursor) {
  const QStringView label = cursor.Rest().trimmed();
  const bool is_letter = label.size() == 1 && label[0] >= u'A' && label[0] <= u'Z';
  part_ = {is_letter ? label[0].unicode() : 0, field};
}

bool AbcMusic::ReadField(QChar letter, TextPosition field, AbcCursor& cursor) {
  static constexpr QStringView ignored = u"NRTrs";
  if (ignored.contains(letter)) return true;
  switch (letter.unicode()) {
    case u'I':
      if (TakeMidiCommand(cursor)) ReadMidi(cursor);
      return true;
    case u'P':
      ReadPart(field, cursor);
      return true;
    case u'V':
      SelectVoice(cursor);
      return true;
    case u'K':
      CurrentState().key = ReadKey(cursor, CurrentState().key);
      CurrentState().bar_accidentals.clear();
      return true;
    case u'L':
      CurrentState().unit_length = ReadUnitLength(cursor);
      return true;
    case u'M':
      if (!(ReadMetre(cursor) == metre_))
        Fail(field, QStringLiteral("A tune has one metre; it cannot change within the tune."));
      return true;
    case u'Q':
      if (const auto tempo = ReadTempo(cursor, CurrentState().unit_length))
        AddItem(AbcItemKind::kTempo, field).value = *tempo;
      return true;
    default:
      return false;
  }
}

}  // namespace zelmar
