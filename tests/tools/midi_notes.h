// The notes, controllers and tempos of a MIDI file, for comparison with those of a tune.
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

// A controller, a program or a pitch bend, with its bytes as on the wire; the channel is left out.
struct MidiControl {
  enum class Kind { kController = 0xB, kProgram = 0xC, kPitchBend = 0xE } kind = Kind::kController;
  int start = 0;  // ticks of the file
  int first = 0;
  int second = 0;  // 0 for a program

  friend bool operator==(const MidiControl&, const MidiControl&) = default;
};

struct MidiTempo {
  int start = 0;
  int microseconds = 500000;  // a crotchet
};

struct MidiNotes {
  int division = 0;                                // ticks a crotchet
  std::vector<std::vector<MidiNote>> tracks;       // those that hold notes, in order of start and number
  std::vector<std::vector<MidiControl>> controls;  // of the same tracks, in order of the file
  std::vector<MidiTempo> tempos;
  QString mistake;  // empty for a good file
};

MidiNotes ReadMidiNotes(const QByteArray& file);

}  // namespace zelmar::testing_support
