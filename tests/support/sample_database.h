// A temporary application directory with a tune database in it, and short ways to fill that.
#pragma once

#include <QStringList>
#include <QTemporaryDir>
#include <QVariant>
#include <memory>
#include <vector>

#include "store/connection.h"

namespace zelmar::testing_support {

struct SampleTrack {
  int number = 1;
  QString name = QStringLiteral("Piano");
  int channel = 1;
  int instrument = 0;
  bool muted = false;
  int bank_msb = 0;
  int bank_lsb = 0;
};

struct SampleEvent {
  int event_type = 128;
  int abs_ref = 0;  // 0 stands for the next number
  int bar = 1;
  int beat = 1;
  int tick = 0;
  int track = 1;
  double duration = 1.0;
  int instrument = 0;
  QString pitch = QStringLiteral("C4");
  int volume = 100;
  QVariant enharmonic = QStringLiteral(" ");
};

struct SampleWord {
  int bar = 1;
  int beat = 1;
  int tick = 0;
  QString text;
};

struct SampleTheme {
  int number = 1;
  int start_bar = 1;
  int end_bar = 2;
  QString notes;
  int track = 0;
  int rank = 100;
};

struct SampleTune {
  QString code_name;
  QString title = QStringLiteral("A Title");
  QVariant description = QStringLiteral("About it");
  QVariant composer = QStringLiteral("Bach");
  QVariant country = QStringLiteral("Germany");
  QVariant category = QStringLiteral("Concerto");
  QVariant solo_instrument = QStringLiteral("Violin");
  QVariant ensemble = QStringLiteral("Solo");
  QVariant length = QStringLiteral("Full");
  QVariant style = QStringLiteral("Baroque");
  int beat_length = 4;
  int beats_per_bar = 4;
  int key_mode = 0;
  int key_signature = 0;
  int tempo = 120;
  QString midi_mode = QStringLiteral("GM");
  int accomp_pattern = 1;
  int melody_track = 1;
  int rank = 500;
  std::vector<SampleTrack> tracks = {SampleTrack()};
  std::vector<SampleEvent> events;
  std::vector<SampleWord> words;
  std::vector<SampleTheme> themes;
};

// One quarter note to a beat of 4/4 for each pitch of the list, from bar 1 on, on track 1.
std::vector<SampleEvent> SampleMelody(const QStringList& pitches);

// Sets the application directory and DatabasePath for its lifetime; the directory goes with it.
class SampleDatabase {
 public:
  SampleDatabase();
  ~SampleDatabase();

  // The application directory, without a separator at the end.
  QString Directory() const { return directory_.path(); }
  QString Path() const { return path_; }

  // A connection of its own, for looking and for changing.
  std::shared_ptr<Connection> Connect() const { return Connection::Open(path_); }
  void Execute(const QString& statement) const { Connect()->Execute(statement); }
  // The first column of every row of a statement, as texts.
  QStringList Column(const QString& statement) const;

  // Adds the catalogue row, the tracks, words and themes, and the event table with its events.
  void AddTune(const SampleTune& tune) const;
  // As AddTune with one track and a melody.
  void AddTune(const QString& code_name, const QStringList& pitches) const;
  // Adds a row to any table, in column order.
  void AddRow(const QString& table, const QVariantList& values) const;
  // Adds `count` notes to an event table, four to a beat, as fast as the engine can.
  void AddNotes(const QString& code_name, int count) const;

 private:
  QTemporaryDir directory_;
  QString path_;
};

}  // namespace zelmar::testing_support
