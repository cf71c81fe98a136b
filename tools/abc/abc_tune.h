// One tune as read from ABC text: catalogue data, tracks, events, words and themes, ready for the database.
#pragma once

#include <QString>
#include <vector>

#include "model/event_type.h"

namespace zelmar {

// Values of the catalogue, as the reference tables spell them. Empty where the text says nothing.
struct AbcCatalogue {
  QString code_name;
  QString title;
  QString description;
  QString composer = QStringLiteral("Various");
  QString country;
  QString category;
  QString solo_instrument;
  QString ensemble;
  QString length = QStringLiteral("Full");
  QString style;
  QString midi_mode = QStringLiteral("GM");
  int rank = 9999;
};

// One voice of the text. `base_volume` is the voice's mezzo-forte.
struct AbcTrack {
  QString id;
  QString name;
  int number = 1;
  int channel = 1;
  int instrument = 0;
  int bank_msb = 0;
  int bank_lsb = 0;
  int base_volume = 80;
};

// A note, a change of tempo, a controller or a pitch bend. Bar and beat count from 1, tick from 0; 120 pulses
// to the crotchet.
struct AbcEvent {
  EventType event_type = MUSIC_NOTE;
  int abs_ref = 0;
  int bar = 1;
  int beat = 1;
  int tick = 0;
  int track = 1;
  int channel = 1;
  int instrument = 0;     // low seven bits of the tempo in a change of tempo, and of a pitch bend
  int volume = 80;        // high seven bits of the same two; the value of a controller
  double duration = 1.0;  // crotchets
  QString pitch = QStringLiteral("C4");
  QString enharmonic = QStringLiteral(" ");

  friend bool operator==(const AbcEvent&, const AbcEvent&) = default;
};

// A syllable; one that its word continues behind ends in "-".
struct AbcWord {
  int bar = 1;
  int beat = 1;
  int tick = 0;
  QString text;

  friend bool operator==(const AbcWord&, const AbcWord&) = default;
};

struct AbcTheme {
  int number = 1;
  int start_bar = 1;
  int end_bar = 1;
  int track = 1;
  int rank = 9999;
  QString text;
};

struct AbcTune {
  AbcCatalogue catalogue;
  int beats_per_bar = 4;
  int beat_length = 4;
  int key_signature = 0;  // sharps, flats negative
  int key_mode = 0;       // 1 for keys with a minor third
  int tempo = 120;        // crotchets a minute
  int melody_track = 1;
  int bar_count = 0;
  int lead_in_pulses = 0;  // silence that completes the bar of the pickup
  std::vector<AbcTrack> tracks;
  std::vector<AbcEvent> events;  // in time order; AbsRef counts up from 1
  std::vector<AbcWord> words;
  std::vector<AbcTheme> themes;
};

}  // namespace zelmar
