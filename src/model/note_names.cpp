#include "model/note_names.h"

#include <QStringList>

namespace zelmar {

const QStringList& NoteNames() {
  static const QStringList names = [] {
    QStringList list;
    for (const char16_t* name : kNoteNames) list.append(QString::fromUtf16(name));
    return list;
  }();
  return names;
}

}  // namespace zelmar
