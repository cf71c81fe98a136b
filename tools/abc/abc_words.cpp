// Lines of words: syllables laid under the notes of the music line before them.
#include "abc/abc_music.h"

namespace zelmar {

namespace {

// Walks the notes of a line, rests passed over.
class NoteWalker {
 public:
  NoteWalker(std::vector<AbcItem>& items, std::size_t start) : items_(items), index_(start) {}

  // The next note or chord; null behind the last.
  AbcItem* Next() {
    while (index_ < items_.size()) {
      AbcItem& item = items_[index_++];
      if (item.kind == AbcItemKind::kSound && !item.notes.empty()) return &item;
    }
    return nullptr;
  }
  // To behind the next bar line.
  void NextBar() {
    while (index_ < items_.size())
      if (items_[index_++].kind == AbcItemKind::kBarLine) return;
  }

 private:
  std::vector<AbcItem>& items_;
  std::size_t index_;
};

constexpr QStringView kSigns = u"-_*|";

}  // namespace

void AbcMusic::ReadWords(AbcCursor& cursor) {
  State& state = CurrentState();
  NoteWalker notes(CurrentVoice().items, state.line_start);
  const int verse = state.verse++;
  if (verse >= 16)
    throw TextError(cursor.Position(), QStringLiteral("A line of music has at most 16 verses."));
  const auto next_note = [&notes](TextPosition position) {
    AbcItem* note = notes.Next();
    if (note == nullptr)
      throw TextError(position,
                      QStringLiteral("There are more syllables here than notes in the line above."));
    return note;
  };
  while (!cursor.AtEnd()) {
    const TextPosition position = cursor.Position();
    const QChar c = cursor.Peek();
    if (c.isSpace()) {
      cursor.Take();
    } else if (c == u'|') {
      cursor.Take();
      notes.NextBar();
    } else if (c == u'*' || c == u'_' || c == u'-') {
      cursor.Take();
      next_note(position);
    } else {
      QString syllable;
      while (!cursor.AtEnd() && !cursor.Peek().isSpace() && !kSigns.contains(cursor.Peek())) {
        if (cursor.Peek() == u'\\' && cursor.Peek(1) == u'-') cursor.Take();
        const QChar sign = cursor.Take();
        syllable += sign == u'~' ? QChar(u' ') : sign;
      }
      if (cursor.TakeIf(u'-')) syllable += u'-';
      QStringList& verses = next_note(position)->verses;
      while (verses.size() <= verse) verses.append(QString());
      verses[verse] = syllable;
    }
  }
}

}  // namespace zelmar
