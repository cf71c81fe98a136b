// The program abc2midi, an independent reader of the same notation, and what the reader here found in the
// form of a MIDI file, to compare the two.
#pragma once

#include "abc/abc_reader.h"
#include "midi_notes.h"

namespace zelmar::testing_support {

// abc2midi leaves one of its ticks, a quarter of a pulse, between a note and the next.
inline constexpr int kSlack = 1;

// What abc2midi makes of a text. A failure of the program is one of the test.
MidiNotes RunAbc2midi(const QByteArray& text);

// Pulses of an event from the first note's place on: abc2midi starts with the pickup.
int PulseOf(const AbcTune& tune, const AbcEvent& event);

// The notes of one track in ticks of the other file.
std::vector<MidiNote> NotesOf(const AbcTune& tune, int track, int division);

// The controllers and pitch bends of one track likewise, in order.
std::vector<MidiControl> ControlsOf(const AbcTune& tune, int track, int division);

}  // namespace zelmar::testing_support
