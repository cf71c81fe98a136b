// The notes and tempos of a MIDI file, for comparison with those of a tune.
#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

namespace zelmar::testing_support {

struct MidiNote {
  int number = 0;
  int start = 0;  // ticks of the file
  int end = 0;

  friend auto operator<=>(const MidiNote&, const MidiNote&) = default;
};

struct MidiTempo {
  int start = 0;
  int microseconds = 500000;  // a crotchet
};

struct MidiNotes {
  int division = 0;                           // ticks a crotchet
  std::vector<std::vector<MidiNote>> tracks;  // those that hold notes, in order of start and number
  std::vector<MidiTempo> tempos;
  QString mistake;  // empty for a good file
};

MidiNotes ReadMidiNotes(const QByteArray& file);

}  // namespace zelmar::testing_support
