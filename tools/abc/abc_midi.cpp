#include "abc/abc_midi.h"

#include "abc/abc_music.h"

namespace zelmar {

namespace {

[[noreturn]] void Fail(TextPosition position, const QString& sentence) {
  throw TextError(position, sentence);
}

constexpr int kMostData = 127;

int TakeData(AbcCursor& cursor, const QString& sentence) {
  cursor.SkipBlanks();
  const TextPosition position = cursor.Position();
  const int number = cursor.AtDigit() ? cursor.TakeNumber() : -1;
  const bool ends = cursor.AtEnd() || cursor.Peek().isSpace();
  if (number < 0 || number > kMostData || !ends) Fail(position, sentence);
  return number;
}

}  // namespace

bool TakeMidiCommand(AbcCursor& cursor) {
  AbcCursor ahead = cursor;
  ahead.SkipBlanks();
  for (const QChar letter : QStringView(u"MIDI"))
    if (!ahead.TakeIf(letter)) return false;
  if (!ahead.TakeIf(u'=') && !ahead.AtEnd() && !ahead.Peek().isSpace()) return false;
  cursor = ahead;
  return true;
}

void AbcMusic::ReadMidi(AbcCursor& cursor) {
  cursor.SkipBlanks();
  const TextPosition start = cursor.Position();
  const QString command = cursor.TakeWord();
  const QString sentence = QStringLiteral(
      "The commands are control <number> <value>, program <number> and pitchbend <low seven bits> <high "
      "seven "
      "bits>, with numbers from 0 to 127.");
  if (command == QStringLiteral("control")) {
    const int controller = TakeData(cursor, sentence);
    const int value = TakeData(cursor, sentence);
    AddItem(AbcItemKind::kControl, start).control = {static_cast<EventType>(controller), 0, value};
  } else if (command == QStringLiteral("pitchbend")) {
    const int low = TakeData(cursor, sentence);
    const int high = TakeData(cursor, sentence);
    AddItem(AbcItemKind::kControl, start).control = {PITCH_BEND, low, high};
  } else if (command == QStringLiteral("program")) {
    const int program = TakeData(cursor, sentence);
    AddItem(AbcItemKind::kProgram, start).value = program;
  } else {
    Fail(start, sentence);
  }
  cursor.SkipBlanks();
  if (!cursor.AtEnd()) Fail(cursor.Position(), sentence);
}

}  // namespace zelmar
