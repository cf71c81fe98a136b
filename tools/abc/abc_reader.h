// Reads a tune in ABC notation, version 2.1 of the standard.
//
// One file holds one tune. Read: X T M L Q K V P w and the fields of information, notes with accidentals,
// lengths, broken rhythm, tuplets, ties, chords, rests, repeats with endings and parts in their order (both
// written out in the events), voices, verses, inline fields and the marks of dynamics. Grace notes, chord
// symbols, other decorations, slurs and the layout are read and dropped. What would change the sound and is
// not read (jumps, voice overlays, a second metre, octave clefs, macros) is an error, and so is a bar that
// does not add up.
//
// Commands for the synthesiser are spelled as abc2midi spells them, and stand in the music, on a line of
// their own or between notes as [I:MIDI ...]. Each holds for its voice from its place on, in every pass:
//   %%MIDI program <0 to 127>                the instrument of the notes that follow
//   %%MIDI control <number> <value>          a controller, bank selects (0 and 32) among them
//   %%MIDI pitchbend <low byte> <high byte>  seven bits each; 0 64 is no bend
// Any other command is an error. A note is held through a change by a tie: C2-[I:MIDI control 11 90]C2.
//
// What ABC has no field for stands in lines of the header that other programs take for comments:
//   %%zelmar-codename, -composer, -category, -style, -ensemble, -instrument, -country, -length, -description
//   with a text (several descriptions are joined), -rank and -melody-track with a number,
//   -midi-mode with GM, GM2, GS or XG: what the synthesiser is put into before the tune
//   %%zelmar-voice <id> [instrument=<0 to 127>] [channel=<1 to 16>] [volume=<1 to 127>]
//                       [bank-msb=<0 to 127>] [bank-lsb=<0 to 127>]
//   %%zelmar-theme <number> <start bar> <end bar> <track, 0 for the melody track> <rank> <free text>
// Bars of themes are counted with the repeats written out; the bar of a pickup is bar 1.
#pragma once

#include <QByteArray>
#include <QString>

#include "abc/abc_error.h"
#include "abc/abc_tune.h"

namespace zelmar {

// Reads UTF-8 text. `file` names it in errors, and its base name is the default CodeName. Throws TextError
// at the first mistake.
AbcTune ReadAbc(const QByteArray& text, const QString& file);

// Reads a file. Throws TextError for a mistake, Failure for a file that cannot be read.
AbcTune ReadAbcFile(const QString& path);

}  // namespace zelmar
