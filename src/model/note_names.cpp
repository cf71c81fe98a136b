#include "model/note_names.h"

#include <QStringList>

namespace zelmar {

namespace {

struct Spelling {
  const char16_t* written;
  const char16_t* canonical;
};

constexpr Spelling kSpellings[] = {{u"Cb", u"B"},  {u"Fb", u"E"},  {u"E#", u"F"},
                                   {u"B#", u"C"},  {u"Db", u"C#"}, {u"D#", u"Eb"},
                                   {u"Gb", u"F#"}, {u"G#", u"Ab"}, {u"A#", u"Bb"}};

}  // namespace

const QStringList& NoteNames() {
  static const QStringList names = [] {
    QStringList list;
    for (const char16_t* name : kNoteNames) list.append(QString::fromUtf16(name));
    return list;
  }();
  return names;
}

int PitchClassOfName(QStringView name) {
  for (const Spelling& spelling : kSpellings)
    if (name == QStringView(spelling.written)) name = spelling.canonical;
  for (std::size_t i = 0; i < kNoteNames.size(); ++i)
    if (name == QStringView(kNoteNames[i])) return static_cast<int>(i);
  return -1;
}

}  // namespace zelmar
