// Short ways to read ABC text and to say what came of it.
#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <string>

#include "abc/abc_reader.h"

namespace zelmar::testing_support {

// A tune in C with crotchets as unit length; `extra` lines go into the header.
inline AbcTune ReadBody(const QByteArray& body, const QByteArray& metre = "4/4", const QByteArray& extra = {},
                        const QByteArray& key = "C") {
  return ReadAbc("X:1\nT:t\nM:" + metre + "\nL:1/4\n" + extra + "K:" + key + "\n" + body + "\n",
                 QStringLiteral("t.abc"));
}

// "bar.beat.tick pitch duration" of every note, in order, joined by "; ".
inline std::string Notes(const AbcTune& tune, int track = 0) {
  QStringList notes;
  for (const AbcEvent& event : tune.events) {
    if (event.event_type != MUSIC_NOTE || (track != 0 && event.track != track)) continue;
    notes.append(QStringLiteral("%1.%2.%3 %4%5 %6")
                     .arg(event.bar)
                     .arg(event.beat)
                     .arg(event.tick)
                     .arg(event.pitch, event.enharmonic.trimmed())
                     .arg(event.duration));
  }
  return notes.join(QStringLiteral("; ")).toStdString();
}

// Pitches with their marks alone.
inline std::string Pitches(const AbcTune& tune, int track = 0) {
  QStringList notes;
  for (const AbcEvent& event : tune.events)
    if (event.event_type == MUSIC_NOTE && (track == 0 || event.track == track))
      notes.append(event.pitch + event.enharmonic.trimmed());
  return notes.join(u' ').toStdString();
}

inline std::string Durations(const AbcTune& tune) {
  QStringList durations;
  for (const AbcEvent& event : tune.events) durations.append(QString::number(event.duration));
  return durations.join(u' ').toStdString();
}

inline std::string Volumes(const AbcTune& tune) {
  QStringList volumes;
  for (const AbcEvent& event : tune.events) volumes.append(QString::number(event.volume));
  return volumes.join(u' ').toStdString();
}

// "bar.beat.tick=text" of every word.
inline std::string Words(const AbcTune& tune) {
  QStringList words;
  for (const AbcWord& word : tune.words)
    words.append(QStringLiteral("%1.%2.%3=%4").arg(word.bar).arg(word.beat).arg(word.tick).arg(word.text));
  return words.join(QStringLiteral("; ")).toStdString();
}

// "file:line:column: sentence" of the mistake in a text; "no mistake" for a good one.
inline std::string MistakeOf(const QByteArray& text) {
  try {
    ReadAbc(text, QStringLiteral("t.abc"));
  } catch (const TextError& error) {
    return error.Description().toStdString();
  }
  return "no mistake";
}

// Of a body whose first line is line 6 of the file.
inline std::string MistakeInBody(const QByteArray& body) {
  return MistakeOf("X:1\nT:t\nM:4/4\nL:1/4\nK:C\n" + body + "\n");
}

}  // namespace zelmar::testing_support
