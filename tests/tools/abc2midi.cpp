#include "abc2midi.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <algorithm>

#include "model/tone.h"

namespace zelmar::testing_support {

namespace {

// A copy of the tune without what abc2midi would play on its own account: no gaps between notes, no drone,
// no chords from chord symbols, no spread chords. Each voice has to be told.
QByteArray PlainCopy(const QByteArray& text) {
  static const QByteArray plain =
      "%%MIDI trim 0/1\n%%MIDI gchordoff\n%%MIDI droneoff\n%%MIDI chordattack 0\n";
  QByteArray copy;
  bool in_music = false;
  for (const QByteArray& line : text.split('\n')) {
    copy += line + '\n';
    const bool ends_header = !in_music && line.startsWith("K:");
    in_music = in_music || ends_header;
    if (ends_header || (in_music && line.startsWith("V:"))) copy += plain;
  }
  EXPECT_TRUE(in_music);
  copy.chop(1);
  return copy;
}

}  // namespace

MidiNotes RunAbc2midi(const QByteArray& text) {
  QTemporaryDir folder;
  QFile source(folder.filePath(QStringLiteral("tune.abc")));
  EXPECT_TRUE(source.open(QIODevice::WriteOnly));
  source.write(PlainCopy(text));
  source.close();
  const QString program = QStandardPaths::findExecutable(QStringLiteral("abc2midi"));
  if (program.isEmpty()) {
    ADD_FAILURE() << "abc2midi is not installed; it comes with the package abcmidi.";
    return {};
  }
  const QString output = folder.filePath(QStringLiteral("tune.mid"));
  QProcess process;
  process.setWorkingDirectory(folder.path());  // it may leave files of its own behind
  process.setProcessChannelMode(QProcess::MergedChannels);
  process.start(program, {source.fileName(), QStringLiteral("-o"), output, QStringLiteral("-NGRA"),
                          QStringLiteral("-NGUI"), QStringLiteral("-NFER")});
  if (!process.waitForFinished(30000)) {
    ADD_FAILURE() << "abc2midi does not end.";
    process.kill();
    return {};
  }
  const QByteArray messages = process.readAll();
  EXPECT_FALSE(messages.contains("Error")) << messages.toStdString();
  QFile file(output);
  if (!file.open(QIODevice::ReadOnly)) {
    ADD_FAILURE() << "abc2midi made no file: " << messages.toStdString();
    return {};
  }
  return ReadMidiNotes(file.readAll());
}

int PulseOf(const AbcTune& tune, const AbcEvent& event) {
  const int beats = (event.bar - 1) * tune.beats_per_bar + event.beat - 1;
  return beats * 480 / tune.beat_length + event.tick - tune.lead_in_pulses;
}

std::vector<MidiNote> NotesOf(const AbcTune& tune, int track, int division) {
  std::vector<MidiNote> notes;
  for (const AbcEvent& event : tune.events) {
    if (event.event_type != MUSIC_NOTE || event.track != track) continue;
    Tone tone;
    tone.SetPitch(event.pitch);
    const int start = PulseOf(tune, event) * division / 120;
    const int length = static_cast<int>(std::lround(event.duration * division));
    notes.push_back({tone.Number(), start, start + length});
  }
  std::ranges::sort(notes, {},
                    [](const MidiNote& note) { return std::tuple(note.start, note.number, note.end); });
  return notes;
}

std::vector<MidiControl> ControlsOf(const AbcTune& tune, int track, int division) {
  using Kind = MidiControl::Kind;
  std::vector<MidiControl> controls;
  for (const AbcEvent& event : tune.events) {
    if (event.track != track) continue;
    const int start = PulseOf(tune, event) * division / 120;
    if (event.event_type < MUSIC_NOTE)
      controls.push_back({Kind::kController, start, event.event_type, event.volume});
    if (event.event_type == PITCH_BEND)
      controls.push_back({Kind::kPitchBend, start, event.instrument, event.volume});
  }
  return controls;
}

}  // namespace zelmar::testing_support
