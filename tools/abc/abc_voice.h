// One voice of a tune as it is written: notes, rests, bar lines and changes, before repeats are unrolled.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "abc/abc_error.h"
#include "abc/abc_tune.h"
#include "abc/fraction.h"

namespace zelmar {

struct AbcNote {
  int number = 60;  // MIDI note number
  int letter = 0;   // as written: 0 for C to 6 for B, octave, alteration in semitones
  int octave = 4;
  int alteration = 0;
  QString enharmonic = QStringLiteral(" ");
  Fraction duration;  // crotchets
  bool tied = false;
  TextPosition position;
};

struct AbcBarLine {
  int repeats_end = 0;  // how often the passage before is played again
  bool repeat_start = false;
  bool double_bar = false;
  std::vector<int> endings;  // the passes in which what follows is played; empty for every pass

  // Where a bar may stand broken in two, its parts adding up.
  bool MayBreakBar() const { return repeats_end > 0 || repeat_start || double_bar; }
};

// What a kControl sends: a controller with its value, or a pitch bend with its low seven bits as `instrument`
// and its high ones as `volume`, as events keep them.
struct AbcControl {
  EventType event_type = 0;
  int instrument = 0;
  int volume = 0;
};

enum class AbcItemKind { kSound, kBarLine, kTempo, kLoudness, kBarRest, kControl, kProgram, kPart };

struct AbcItem {
  AbcItemKind kind = AbcItemKind::kSound;
  TextPosition position;
  // kSound: a note, a chord, or a rest, which has no notes.
  std::vector<AbcNote> notes;
  Fraction duration;   // crotchets that the item takes; of a kBarRest, all its bars
  QStringList verses;  // the syllable of each verse; null where a verse has none
  AbcBarLine bar_line;
  // The tempo; the steps of loudness above the voice's mezzo-forte; the program; the letter of a part, 0 for
  // a label that is no capital letter.
  int value = 0;
  AbcControl control;
};

struct AbcVoice {
  AbcTrack track;
  TextPosition position;
  std::vector<AbcItem> items;
};

}  // namespace zelmar
