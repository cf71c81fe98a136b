// The shipped tunes against an independent reader of the same notation: the program abc2midi.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <algorithm>

#include "abc2midi.h"

namespace zelmar {
namespace {

using namespace testing_support;

constexpr char kSources[] = ZELMAR_SOURCE_DIRECTORY "/data/tunes/";

std::vector<std::string> TuneNames() {
  std::vector<std::string> names;
  const QDir folder{QString::fromLatin1(kSources)};
  for (const QString& name : folder.entryList({QStringLiteral("*.abc")}, QDir::Files, QDir::Name))
    names.push_back(name.chopped(4).toStdString());
  return names;
}

class Abc2midi : public testing::TestWithParam<std::string> {};

TEST_P(Abc2midi, HearsTheSameNotesInEveryVoice) {
  const QString path =
      QString::fromLatin1(kSources) + QString::fromStdString(GetParam()) + QStringLiteral(".abc");
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray text = file.readAll();
  const AbcTune tune = ReadAbc(text, path);
  const MidiNotes midi = RunAbc2midi(text);
  ASSERT_EQ(midi.mistake, QString());
  ASSERT_GT(midi.division, 0);
  ASSERT_EQ(midi.division % 120, 0) << "a pulse must be a whole number of its ticks";
  ASSERT_EQ(midi.tracks.size(), tune.tracks.size());
  for (std::size_t track = 0; track < tune.tracks.size(); ++track) {
    const std::vector<MidiNote> ours = NotesOf(tune, tune.tracks[track].number, midi.division);
    const std::vector<MidiNote>& theirs = midi.tracks[track];
    ASSERT_EQ(ours.size(), theirs.size()) << "voice " << track + 1;
    for (std::size_t i = 0; i < ours.size(); ++i) {
      const std::string where = "voice " + std::to_string(track + 1) + ", note " + std::to_string(i + 1);
      EXPECT_EQ(ours[i].number, theirs[i].number) << where;
      EXPECT_LE(std::abs(ours[i].start - theirs[i].start), kSlack) << where;
      EXPECT_LE(std::abs(ours[i].end - theirs[i].end), kSlack) << where;
    }
  }
}

TEST_P(Abc2midi, HearsTheSameTempos) {
  const QString path =
      QString::fromLatin1(kSources) + QString::fromStdString(GetParam()) + QStringLiteral(".abc");
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray text = file.readAll();
  const AbcTune tune = ReadAbc(text, path);
  const MidiNotes midi = RunAbc2midi(text);
  ASSERT_EQ(midi.mistake, QString());
  std::vector<std::pair<int, int>> ours = {{0, tune.tempo}}, theirs;
  for (const AbcEvent& event : tune.events)
    if (event.event_type == TEMPO_CHANGE)
      ours.emplace_back(PulseOf(tune, event) * midi.division / 120, event.volume * 128 + event.instrument);
  for (const MidiTempo& tempo : midi.tempos)
    theirs.emplace_back(tempo.start, static_cast<int>(std::lround(60e6 / tempo.microseconds)));
  ASSERT_EQ(ours.size(), theirs.size());
  for (std::size_t i = 0; i < ours.size(); ++i) {
    EXPECT_LE(std::abs(ours[i].first - theirs[i].first), kSlack) << "tempo " << i + 1;
    EXPECT_EQ(ours[i].second, theirs[i].second) << "tempo " << i + 1;
  }
}

INSTANTIATE_TEST_SUITE_P(Shipped, Abc2midi, testing::ValuesIn(TuneNames()),
                         [](const auto& info) { return info.param; });

// The comparison itself: a wrong note, a late one and a lost one must not pass.
TEST(Abc2midiComparison, SeesPitchStartAndLengthOfEachNote) {
  const QByteArray header = "X:1\nT:t\nM:4/4\nL:1/4\nQ:1/4=100\nK:C\n";
  const MidiNotes midi = RunAbc2midi(header + "C D E2 | F4 |\n");
  ASSERT_EQ(midi.tracks.size(), 1U);
  ASSERT_EQ(midi.tracks[0].size(), 4U);
  const auto same_as = [&midi, &header](const QByteArray& body) {
    const std::vector<MidiNote> ours =
        NotesOf(ReadAbc(header + body, QStringLiteral("t.abc")), 1, midi.division);
    return std::ranges::equal(ours, midi.tracks[0], [](const MidiNote& a, const MidiNote& b) {
      return a.number == b.number && std::abs(a.start - b.start) <= kSlack &&
             std::abs(a.end - b.end) <= kSlack;
    });
  };
  EXPECT_TRUE(same_as("C D E2 | F4 |\n"));
  EXPECT_FALSE(same_as("C D ^E2 | F4 |\n"));
  EXPECT_FALSE(same_as("C> D E2 | F4 |\n"));
  EXPECT_FALSE(same_as("C D E z | F4 |\n"));
  EXPECT_FALSE(same_as("C D E2 | z4 |\n"));
}

}  // namespace
}  // namespace zelmar
