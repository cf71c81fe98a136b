// The tunes that a person opened last, each of them once, for the front page.
//
// The list of recent tunes in the menu names a tune as often as it was opened, so that a tune that is opened
// again pushes another one out of it. What stands here is kept beside it, for each library, in the program's
// own settings. The demonstrations of the MIDI tests are played and not opened, and have no place in it.
#pragma once

#include <QList>
#include <QString>

namespace zelmar {

struct OpenedTune {
  QString code_name;
  QString caption;
};

// Puts the tune at the head of the list of the library in use. An empty name is none.
void NoteOpenedTune(const QString& code_name, const QString& caption);

// The last one first, kRecentTuneCount at most. What the list of recent tunes names and this one does not yet
// stands at its end.
QList<OpenedTune> OpenedTunes();

}  // namespace zelmar
