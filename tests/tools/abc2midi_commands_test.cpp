// Commands for the synthesiser and orders of parts, where abc2midi has the same reading of them.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <algorithm>

#include "abc2midi.h"

namespace zelmar {
namespace {

using namespace testing_support;

QByteArray Header(const QByteArray& extra = {}) {
  return "X:1\nT:t\nM:4/4\nL:1/4\nQ:1/4=120\n" + extra + "K:C\n";
}

bool Near(int a, int b) {
  return std::abs(a - b) <= kSlack;
}

void ExpectSameNotes(const QByteArray& text) {
  SCOPED_TRACE(text.toStdString());
  const AbcTune tune = ReadAbc(text, QStringLiteral("t.abc"));
  const MidiNotes midi = RunAbc2midi(text);
  ASSERT_EQ(midi.mistake, QString());
  ASSERT_EQ(midi.tracks.size(), tune.tracks.size());
  for (std::size_t track = 0; track < tune.tracks.size(); ++track) {
    const std::vector<MidiNote> ours = NotesOf(tune, static_cast<int>(track) + 1, midi.division);
    EXPECT_TRUE(std::ranges::equal(ours, midi.tracks[track], [](const MidiNote& a, const MidiNote& b) {
      // It lets a part of its own begin one tick late.
      return a.number == b.number && std::abs(a.start - b.start) <= 2 * kSlack &&
             std::abs(a.end - b.end) <= 2 * kSlack;
    }));
  }
}

// Whether the moment lies between two notes, or at the head of the first.
bool IsBetweenNotes(const std::vector<MidiNote>& notes, int start) {
  const auto begins = [start](const MidiNote& note) { return note.start == start; };
  const auto ends = [start](const MidiNote& note) { return note.end == start; };
  return std::ranges::any_of(notes, begins) && (start == 0 || std::ranges::any_of(notes, ends));
}

// The same commands in the same order, at the same moments. Beside a rest or within a tied note abc2midi
// gives a command the moment of the note before, so there no moment is compared.
void ExpectSameControls(const QByteArray& text) {
  SCOPED_TRACE(text.toStdString());
  const AbcTune tune = ReadAbc(text, QStringLiteral("t.abc"));
  const MidiNotes midi = RunAbc2midi(text);
  ASSERT_EQ(midi.mistake, QString());
  ASSERT_EQ(midi.controls.size(), tune.tracks.size());
  for (std::size_t track = 0; track < tune.tracks.size(); ++track) {
    std::vector<MidiControl> theirs = midi.controls[track];
    std::erase_if(theirs,
                  [](const MidiControl& control) { return control.kind == MidiControl::Kind::kProgram; });
    const std::vector<MidiControl> ours = ControlsOf(tune, static_cast<int>(track) + 1, midi.division);
    const std::vector<MidiNote> notes = NotesOf(tune, static_cast<int>(track) + 1, midi.division);
    ASSERT_EQ(ours.size(), theirs.size());
    for (std::size_t i = 0; i < ours.size(); ++i) {
      EXPECT_EQ(ours[i].kind, theirs[i].kind) << i;
      EXPECT_EQ(ours[i].first, theirs[i].first) << i;
      EXPECT_EQ(ours[i].second, theirs[i].second) << i;
      EXPECT_TRUE(!IsBetweenNotes(notes, ours[i].start) || Near(ours[i].start, theirs[i].start)) << i;
    }
  }
}

// The program in force at each note of a track, in order of the notes.
std::vector<int> ProgramsOf(const MidiNotes& midi, std::size_t track) {
  std::vector<int> programs;
  for (const MidiNote& note : midi.tracks[track]) {
    int program = 0;
    for (const MidiControl& control : midi.controls[track])
      if (control.kind == MidiControl::Kind::kProgram && control.start <= note.start) program = control.first;
    programs.push_back(program);
  }
  return programs;
}

std::vector<int> ProgramsOf(const AbcTune& tune, int track) {
  std::vector<int> programs;
  for (const AbcEvent& event : tune.events)
    if (event.event_type == MUSIC_NOTE && event.track == track) programs.push_back(event.instrument);
  return programs;
}

class Abc2midiOrders : public testing::TestWithParam<const char*> {};

TEST_P(Abc2midiOrders, AreReadAlike) {
  ExpectSameNotes(Header(QByteArray("P:") + GetParam() + "\n") +
                  "P:A\nC2 D2 |\nP:B\n|: E2 F2 |1 G4 :|2 A4 ||\nP:C\nB,4 |\n");
}

INSTANTIATE_TEST_SUITE_P(All, Abc2midiOrders,
                         testing::Values("AABB", "CBA", "A2B2", "AAB3", "(AB)3", "A(AB)2C", "((AB)2C)2",
                                         "A.B.A.C"));

TEST(Abc2midiParts, MusicBeforeTheFirstPartIsReadAlike) {
  ExpectSameNotes(Header("P:A2(BA)2.C\n") + "G4 |\nP:A\nC4 |\nP:B\nD4 |\nP:C\nE4 |\n");
}

TEST(Abc2midiParts, PartsOfTwoVoicesAreReadAlike) {
  ExpectSameNotes(Header("P:BAB\n") + "P:A\nV:1\nC4 |\nV:2\nE4 |\nP:B\nV:1\nD4 |\nV:2\nF4 |\n");
}

TEST(Abc2midiCommands, ControllersAndBendsAreReadAlike) {
  ExpectSameControls(Header() +
                     "%%MIDI control 91 100\nC [I:MIDI control 11 30] D [I:MIDI=control 11 60] E F |\n"
                     "%%MIDI pitchbend 3 70\nG2 [I:MIDI pitchbend 0 64] A2 |\n");
  ExpectSameControls(Header() +
                     "V:1\nC4 |\n%%MIDI control 10 0\nD4 |\nV:2\n%%MIDI control 7 20\nE4 | F4 |\n");
}

TEST(Abc2midiCommands, AHeldNoteIsOneNoteForBoth) {
  const QByteArray text = Header() + "C-[I:MIDI control 11 30]C-[I:MIDI control 11 60]C2 |\n";
  ExpectSameNotes(text);
  ExpectSameControls(text);
}

TEST(Abc2midiCommands, ProgramsAreReadAlike) {
  const QByteArray text =
      Header() + "%%MIDI program 40\nC D [I:MIDI program 41] E F |\n%%MIDI program 3\nG4 |\n";
  EXPECT_EQ(ProgramsOf(RunAbc2midi(text), 0), ProgramsOf(ReadAbc(text, QStringLiteral("t.abc")), 1));
}

// The demonstrations live by their commands, so an independent reader must find the same ones.
TEST(Abc2midiCommands, TheDemonstrationsAreReadAlike) {
  const QDir folder(QStringLiteral(ZELMAR_SOURCE_DIRECTORY "/data/tunes"));
  int demonstrations = 0;
  for (const QString& name : folder.entryList({QStringLiteral("*.abc")}, QDir::Files)) {
    QFile file(folder.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    if (!text.contains("%%zelmar-length demo")) continue;
    ++demonstrations;
    SCOPED_TRACE(name.toStdString());
    ExpectSameControls(text);
    const AbcTune tune = ReadAbc(text, name);
    const MidiNotes midi = RunAbc2midi(text);
    ASSERT_EQ(midi.tracks.size(), tune.tracks.size());
    for (std::size_t track = 0; track < tune.tracks.size(); ++track)
      EXPECT_EQ(ProgramsOf(midi, track), ProgramsOf(tune, static_cast<int>(track) + 1));
  }
  EXPECT_EQ(demonstrations, 8);
}

}  // namespace
}  // namespace zelmar
