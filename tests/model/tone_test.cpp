#include "model/tone.h"

#include <gtest/gtest.h>

#include <QList>

#include "model/note_names.h"

namespace zelmar {
namespace {

struct Listener : ToneListener {
  void PitchRefused(Tone&, PitchRefusal reason) override { refusals.append(reason); }
  QList<PitchRefusal> refusals;
};

Tone Written(const char* pitch) {
  Tone tone;
  tone.SetPitch(QString::fromLatin1(pitch));
  return tone;
}

TEST(Tone, StartsWithItsDefaults) {
  const Tone tone;
  EXPECT_EQ(tone.EventType(), MUSIC_NOTE);
  EXPECT_EQ(tone.Pitch(), QStringLiteral("C4"));
  EXPECT_EQ(tone.Volume(), 127);
  EXPECT_EQ(tone.Instrument(), 0);
  EXPECT_DOUBLE_EQ(tone.Duration(), 1.0);
  EXPECT_EQ(tone.Bar(), 1);
  EXPECT_EQ(tone.Beat(), 1);
  EXPECT_EQ(tone.Tick(), 0);
  EXPECT_EQ(tone.OldVolume(), 127);
  EXPECT_EQ(tone.EnHarmonic(), QStringLiteral(" "));
  EXPECT_EQ(tone.Track(), 1);
  EXPECT_EQ(tone.AbsRef(), 0);
  EXPECT_EQ(tone.Channel(), 1);
  EXPECT_EQ(tone.BeatsPerBar(), 4);
  EXPECT_EQ(tone.BeatLength(), 4);
  EXPECT_FALSE(tone.SendPatch());
}

TEST(Tone, NoteNamesAreAMixOfSharpsAndFlats) {
  EXPECT_EQ(NoteNames().join(QLatin1Char(' ')), QStringLiteral("C C# D Eb E F F# G Ab A Bb B"));
}

TEST(Tone, PitchOfLowerCaseSharpIsCanonical) {
  const Tone tone = Written("c#4");
  EXPECT_EQ(tone.Pitch(), QStringLiteral("C#4"));
  EXPECT_EQ(tone.Number(), 61);
  EXPECT_EQ(Written("Db4").Pitch(), QStringLiteral("C#4"));
  EXPECT_EQ(Written("Db4").Number(), 61);
}

TEST(Tone, EverySpellingBecomesCanonicalWithoutTouchingTheOctave) {
  const struct {
    const char* written;
    const char* canonical;
  } rows[] = {{"Cb5", "B5"},  {"Fb3", "E3"},  {"E#2", "F2"},  {"B#3", "C3"},  {"Db1", "C#1"},
              {"D#6", "Eb6"}, {"Gb0", "F#0"}, {"G#4", "Ab4"}, {"A#4", "Bb4"}, {"Ab7", "Ab7"}};
  for (const auto& row : rows) EXPECT_EQ(Written(row.written).Pitch(), QString::fromLatin1(row.canonical));
}

TEST(Tone, TheOtherNamesAreCanonicalAlready) {
  for (const char* name : {"C", "C#", "D", "Eb", "E", "F", "F#", "G", "Ab", "A", "Bb", "B"}) {
    const QString pitch = QString::fromLatin1(name) + QLatin1Char('4');
    EXPECT_EQ(Written(qPrintable(pitch)).Pitch(), pitch);
    EXPECT_EQ(Written(qPrintable(pitch.toLower())).Pitch(), pitch);
  }
}

TEST(Tone, EventTypesHaveTheirCodes) {
  EXPECT_EQ(MUSIC_NOTE, 128);
  EXPECT_EQ(POLY_KEY_PRESSURE, 129);
  EXPECT_EQ(CHANNEL_PRESSURE, 130);
  EXPECT_EQ(PITCH_BEND, 131);
  EXPECT_EQ(DUMMY_NOTE, 132);
  EXPECT_EQ(TEMPO_CHANGE, 133);
  EXPECT_EQ(MUSIC_NOTE_OFF, 134);
}

TEST(Tone, CFlatIsWrittenWithoutAnOctaveShiftAndReadWithOne) {
  Tone tone = Written("Cb5");
  EXPECT_EQ(tone.Number(), 83);
  tone.SetEnHarmonic(QStringLiteral("b"));
  EXPECT_EQ(tone.EnharmonicName(), QStringLiteral("Cb6"));
}

TEST(Tone, EachCheckOfAPitchRaisesItsEventInOrder) {
  const struct {
    const char* text;
    PitchRefusal reason;
  } rows[] = {{"", PitchRefusal::kLength},        {"C", PitchRefusal::kLength},
              {"C##4", PitchRefusal::kLength},    {"H4", PitchRefusal::kLetter},
              {"h4", PitchRefusal::kLetter},      {"44", PitchRefusal::kLetter},
              {"Cb", PitchRefusal::kOctave},      {"C#x", PitchRefusal::kOctave},
              {"Cx4", PitchRefusal::kAccidental}, {"CB4", PitchRefusal::kAccidental},
              {"C-1", PitchRefusal::kAccidental}};
  for (const auto& row : rows) {
    Tone tone = Written("F#5");
    Listener listener;
    tone.SetListener(&listener);
    tone.SetPitch(QString::fromLatin1(row.text));
    EXPECT_EQ(listener.refusals, QList<PitchRefusal>{row.reason}) << row.text;
    EXPECT_EQ(tone.Pitch(), QStringLiteral("F#5")) << row.text;
  }
}

TEST(Tone, ExactlyTenPitchesAboveMidiAreRefused) {
  for (const char* text : {"A9", "G#9", "Bb9", "B9", "g#9", "a9", "bb9", "b9", "B#9", "b#9"}) {
    Tone tone;
    Listener listener;
    tone.SetListener(&listener);
    tone.SetPitch(QString::fromLatin1(text));
    EXPECT_EQ(listener.refusals, QList<PitchRefusal>{PitchRefusal::kRange}) << text;
    EXPECT_EQ(tone.Pitch(), QStringLiteral("C4")) << text;
  }
  EXPECT_EQ(Written("A#9").Pitch(), QStringLiteral("Bb9"));
  EXPECT_EQ(Written("Ab9").Pitch(), QStringLiteral("Ab9"));
  EXPECT_EQ(Written("G9").Number(), 127);
}

TEST(Tone, NumberIsTheMidiNoteNumber) {
  EXPECT_EQ(Written("C4").Number(), 60);
  EXPECT_EQ(Written("A4").Number(), 69);
  EXPECT_EQ(Written("C0").Number(), 12);
}

TEST(Tone, WritingNumberSetsNameAndOctave) {
  Tone tone;
  tone.SetNumber(61);
  EXPECT_EQ(tone.Pitch(), QStringLiteral("C#4"));
  tone.SetNumber(70);
  EXPECT_EQ(tone.Pitch(), QStringLiteral("Bb4"));
  for (std::int16_t number = 0; number <= 127; ++number) {
    tone.SetNumber(number);
    EXPECT_EQ(tone.Number(), number);
  }
}

TEST(Tone, OctaveBelowZeroIsReachedByNumberAndRefusedAsText) {
  Tone tone;
  tone.SetNumber(0);
  EXPECT_EQ(tone.Pitch(), QStringLiteral("C-1"));
  Listener listener;
  tone.SetListener(&listener);
  tone.SetPitch(tone.Pitch());
  EXPECT_EQ(listener.refusals.size(), 1);
}

TEST(Tone, NoteNameHasTwoCharacters) {
  EXPECT_EQ(Written("Ab4").NoteName(), QStringLiteral("Ab"));
  EXPECT_EQ(Written("B4").NoteName(), QStringLiteral("B "));
}

TEST(Tone, EnharmonicNameFollowsTheMark) {
  const struct {
    const char* pitch;
    const char* mark;
    const char* name;
  } rows[] = {{"C#4", "b", "Db4"}, {"Eb4", "#", "D#4"}, {"E4", "b", "Fb4"},  {"F4", "#", "E#4"},
              {"F#4", "b", "Gb4"}, {"Ab4", "#", "G#4"}, {"Bb4", "#", "A#4"}, {"B4", "b", "Cb5"},
              {"C4", "#", "B#3"},  {"C4", " ", "C4"},   {"C#4", "#", "C#4"}, {"G4", "b", "G4"},
              {"Eb4", "b", "Eb4"}, {"D4", "#", "D4"},   {"C#4", "x", "C#4"}, {"C4", "", "C4"}};
  for (const auto& row : rows) {
    Tone tone = Written(row.pitch);
    tone.SetEnHarmonic(QString::fromLatin1(row.mark));
    EXPECT_EQ(tone.EnharmonicName(), QString::fromLatin1(row.name)) << row.pitch << row.mark;
    EXPECT_EQ(tone.EnHarmonic(), QString::fromLatin1(row.mark));
  }
}

TEST(Tone, StaysSmall) {
  EXPECT_LE(sizeof(Tone), 64U);
}

}  // namespace
}  // namespace zelmar
