// What a tune tells about itself: its key, the spelling of its notes.
#include <gtest/gtest.h>

#include "model/key_tables.h"
#include "model/note_names.h"
#include "model/tune.h"
#include "platform/failure.h"

namespace zelmar {
namespace {

constexpr const char* kMajor[] = {"Cb", "Gb", "Db", "Ab", "Eb", "Bb", "F", "C",
                                  "G",  "D",  "A",  "E",  "B",  "F#", "C#"};
constexpr const char* kMinor[] = {"Ab", "Eb", "Bb", "F",  "C",  "G",  "D", "A",
                                  "E",  "B",  "F#", "C#", "G#", "D#", "A#"};

// --- Key ---

TEST(Key, NamesTheTonicOfEverySignatureInBothModes) {
  Tune tune;
  for (std::int16_t signature = -7; signature <= 7; ++signature) {
    tune.SetKeySignature(signature);
    tune.SetKeyMode(0);
    EXPECT_EQ(tune.key(), QLatin1String(kMajor[signature + 7]) + QStringLiteral(" Major"));
    tune.SetKeyMode(1);
    EXPECT_EQ(tune.key(), QLatin1String(kMinor[signature + 7]) + QStringLiteral(" Minor"));
  }
}

TEST(Key, ThreeSharpsInMinorAreFSharpMinor) {
  Tune tune;
  tune.SetKeySignature(3);
  tune.SetKeyMode(1);
  EXPECT_EQ(tune.key(), QStringLiteral("F# Minor"));
}

TEST(Key, AModeAboveOneOrASignatureOutsideSevenIsOutOfRange) {
  Tune tune;
  tune.SetKeyMode(2);
  EXPECT_THROW(tune.key(), SubscriptError);
  for (const int mode : {0, 1}) {
    tune.SetKeyMode(static_cast<std::uint8_t>(mode));
    for (const int signature : {-32768, -8, 8, 99, 32767}) {
      tune.SetKeySignature(static_cast<std::int16_t>(signature));
      EXPECT_THROW(tune.key(), SubscriptError) << signature;
    }
  }
}

TEST(Key, AgreesWithTheTableOfKeyNames) {
  LoadPitchNameTables();
  Tune tune;
  for (std::int16_t signature = -7; signature <= 7; ++signature) {
    tune.SetKeySignature(signature);
    for (const int mode : {0, 1}) {
      tune.SetKeyMode(static_cast<std::uint8_t>(mode));
      EXPECT_EQ(tune.key().section(QLatin1Char(' '), 0, 0),
                KeyNameFromSharps(signature, static_cast<std::uint8_t>(mode)));
    }
  }
}

TEST(EquivMajorKey, NamesTheMajorKeyOfTheSignatureInBothModes) {
  Tune tune;
  for (const int mode : {0, 1, 2}) {
    tune.SetKeyMode(static_cast<std::uint8_t>(mode));
    for (std::int16_t signature = -7; signature <= 7; ++signature) {
      tune.SetKeySignature(signature);
      EXPECT_EQ(tune.EquivMajorKey(), QLatin1String(kMajor[signature + 7]));
    }
  }
}

TEST(EquivMajorKey, IsEmptyForASignatureOutsideSeven) {
  Tune tune;
  for (const int signature : {-8, 8, 99}) {
    tune.SetKeySignature(static_cast<std::int16_t>(signature));
    EXPECT_EQ(tune.EquivMajorKey(), QString());
  }
}

TEST(EquivMajorKey, WritingANameSetsItsSignature) {
  Tune tune;
  for (std::int16_t signature = -7; signature <= 7; ++signature) {
    tune.SetKeySignature(99);
    tune.SetChangedSinceLastSaved(false);
    tune.SetEquivMajorKey(QString::fromLatin1(kMajor[signature + 7]));
    EXPECT_EQ(tune.KeySignature(), signature);
    EXPECT_TRUE(tune.ChangedSinceLastSaved());
  }
}

TEST(EquivMajorKey, WritingAnotherTextLeavesTheSignatureAndMarksTheTuneChanged) {
  Tune tune;
  tune.SetKeySignature(-3);
  for (const char* name : {"G#", "D#", "A#", "c", "C Major", " C", "", "H"}) {
    tune.SetChangedSinceLastSaved(false);
    tune.SetEquivMajorKey(QString::fromLatin1(name));
    EXPECT_EQ(tune.KeySignature(), -3) << name;
    EXPECT_TRUE(tune.ChangedSinceLastSaved()) << name;
  }
}

// --- CalcEnharmonics ---

// The mark that a note gets which had `before`.
QString MarkOf(const char* pitch, int signature, int mode, const char* before = "x") {
  Tune tune;
  tune.SetKeySignature(static_cast<std::int16_t>(signature));
  tune.SetKeyMode(static_cast<std::uint8_t>(mode));
  auto tone = std::make_shared<Tone>();
  tone->SetPitch(QString::fromLatin1(pitch));
  tone->SetEnHarmonic(QString::fromLatin1(before));
  tune.Add(tone);
  tune.CalcEnharmonics();
  return tone->EnHarmonic();
}

struct MarkRow {
  const char* pitch;
  int fewest_sharps;
  int most_sharps;
  const char* mark;
};

// In a major key a note has the mark of the row that holds it and the key, and else keeps what it had.
constexpr MarkRow kMajorMarks[] = {
    {"Eb4", 1, 20, "#"},   {"Ab4", 1, 20, "#"},   {"Bb4", 1, 20, "#"},
    {"C#4", -20, -1, "b"}, {"F#4", -20, -1, "b"}, {"C4", 7, 20, "#"},
    {"B4", -20, -6, "b"},  {"F4", 6, 20, "#"},    {"E4", -7, -7, "b"},
};

// What a minor key changes in the above.
constexpr MarkRow kMinorMarks[] = {
    {"F#4", -2, -2, " "}, {"C#4", -1, -1, " "}, {"Ab4", 0, 0, "#"}, {"Eb4", 1, 1, "#"},
    {"Bb4", 2, 2, "#"},   {"F4", 3, 3, "#"},    {"C4", 4, 4, "#"},
};

template <std::size_t kCount>
const char* RowMark(const MarkRow (&rows)[kCount], const QString& pitch, int signature) {
  for (const MarkRow& row : rows)
    if (pitch == QLatin1String(row.pitch) && signature >= row.fewest_sharps && signature <= row.most_sharps)
      return row.mark;
  return nullptr;
}

TEST(CalcEnharmonics, MarksEveryNoteInEveryMajorKeyByItsRow) {
  for (int signature = -20; signature <= 20; ++signature) {
    for (const QString& name : NoteNames()) {
      const QString pitch = name + QStringLiteral("4");
      const char* row = RowMark(kMajorMarks, pitch, signature);
      EXPECT_EQ(MarkOf(qPrintable(pitch), signature, 0), QLatin1String(row != nullptr ? row : "x"))
          << pitch.toStdString() << " in " << signature;
    }
  }
}

TEST(CalcEnharmonics, CorrectsTheLeadingNoteOfEveryMinorKey) {
  for (int signature = -20; signature <= 20; ++signature) {
    for (const QString& name : NoteNames()) {
      const QString pitch = name + QStringLiteral("4");
      const char* row = RowMark(kMinorMarks, pitch, signature);
      if (row == nullptr) row = RowMark(kMajorMarks, pitch, signature);
      EXPECT_EQ(MarkOf(qPrintable(pitch), signature, 1), QLatin1String(row != nullptr ? row : "x"))
          << pitch.toStdString() << " in " << signature;
    }
  }
}

TEST(CalcEnharmonics, AModeAboveOneHasNoLeadingNote) {
  EXPECT_EQ(MarkOf("Ab4", 0, 2), QStringLiteral("x"));
  EXPECT_EQ(MarkOf("C#4", -1, 2), QStringLiteral("b"));
}

TEST(CalcEnharmonics, AFlatIsGSharpInAMinorAndStaysAFlatInCMajor) {
  Tune tune;
  auto tone = std::make_shared<Tone>();
  tone->SetPitch(QStringLiteral("Ab4"));
  tune.Add(tone);
  tune.CalcEnharmonics();
  EXPECT_EQ(tone->EnharmonicName(), QStringLiteral("Ab4"));
  tune.SetKeyMode(1);
  tune.CalcEnharmonics();
  EXPECT_EQ(tone->EnharmonicName(), QStringLiteral("G#4"));
  // Nothing resets a mark: back in C major the note keeps it.
  tune.SetKeyMode(0);
  tune.CalcEnharmonics();
  EXPECT_EQ(tone->EnharmonicName(), QStringLiteral("G#4"));
}

TEST(CalcEnharmonics, CSharpInDMinorGoesBackToABlank) {
  EXPECT_EQ(MarkOf("C#5", -1, 0), QStringLiteral("b"));
  EXPECT_EQ(MarkOf("C#5", -1, 1), QStringLiteral(" "));
}

TEST(CalcEnharmonics, MarksEventsOfAllTypesAndAllOctaves) {
  Tune tune;
  tune.SetKeySignature(2);
  std::int32_t abs_ref = 1;
  for (const EventType type : {MUSIC_NOTE, MUSIC_NOTE_OFF, TEMPO_CHANGE, DUMMY_NOTE, EXPRESS_CONTROLLER}) {
    for (const int number : {3, 15, 63, 123}) {  // Eb-1 to Eb9
      auto tone = std::make_shared<Tone>();
      tone->SetAbsRef(abs_ref++);
      tone->SetEventType(type);
      tone->SetNumber(static_cast<std::int16_t>(number));
      tune.Add(tone);
    }
  }
  tune.SetChangedSinceLastSaved(false);
  tune.CalcEnharmonics();
  for (const auto& tone : tune) EXPECT_EQ(tone->EnHarmonic(), QStringLiteral("#"));
  EXPECT_FALSE(tune.ChangedSinceLastSaved());
}

// --- Tunes from lists ---

QStringList Pitches(int count) {
  return QStringList(count, QStringLiteral("C4"));
}

TEST(CreateMelodyArray, ReadsItsPitchesFromIndexOneToTheCount) {
  Tune tune;
  tune.SetBeatLength(8);
  tune.SetBeatsPerBar(2);
  tune.CreateMelodyArray(40, 90, 5,
                         {QStringLiteral("B9"), QStringLiteral("D4"), QStringLiteral("E4"),
                          QStringLiteral("F4"), QStringLiteral("G4")},
                         3);
  ASSERT_EQ(tune.Count(), 3);
  const char* const pitches[] = {"D4", "E4", "F4"};
  const int bars[] = {1, 1, 2};
  const int beats[] = {1, 2, 1};
  for (int i = 0; i < 3; ++i) {
    const Tone& tone = *tune.Item(i + 1);
    EXPECT_EQ(tone.Pitch(), QLatin1String(pitches[i]));
    EXPECT_EQ(tone.AbsRef(), 2 * i + 1);
    EXPECT_EQ(tone.Bar(), bars[i]);
    EXPECT_EQ(tone.Beat(), beats[i]);
    EXPECT_EQ(tone.Tick(), 0);
    EXPECT_DOUBLE_EQ(tone.Duration(), 0.5);
    EXPECT_EQ(tone.Instrument(), 40);
    EXPECT_EQ(tone.Volume(), 90);
    EXPECT_EQ(tone.Channel(), 5);
    EXPECT_EQ(tone.Track(), 1);
  }
  ASSERT_EQ(tune.Tracks()->Count(), 2);
  EXPECT_EQ(tune.Tracks()->Item(2)->Description(), QStringLiteral("One Only Track"));
}

TEST(CreateMelodyArray, AListThatEndsBeforeTheCountIsOutOfRange) {
  Tune tune;
  EXPECT_THROW(tune.CreateMelodyArray(0, 100, 1, Pitches(3), 3), SubscriptError);
  EXPECT_EQ(tune.Count(), 2);
}

TEST(CreateRhythm, PutsTheSecondNoteAtBeatTwoTickSixty) {
  Tune tune;
  tune.CreateMelody(0, 100, 1, Pitches(2));
  tune.CreateRhythm({1.5, 0.5});
  EXPECT_EQ(tune.Item(1)->Bar(), 1);
  EXPECT_EQ(tune.Item(1)->Beat(), 1);
  EXPECT_EQ(tune.Item(1)->Tick(), 0);
  EXPECT_DOUBLE_EQ(tune.Item(1)->Duration(), 1.5);
  EXPECT_EQ(tune.Item(2)->Bar(), 1);
  EXPECT_EQ(tune.Item(2)->Beat(), 2);
  EXPECT_EQ(tune.Item(2)->Tick(), 60);
  EXPECT_DOUBLE_EQ(tune.Item(2)->Duration(), 0.5);
}

TEST(CreateRhythm, RunsOnOverTheBarsAndLeavesFurtherEventsAsTheyAre) {
  Tune tune;
  tune.SetBeatsPerBar(3);
  tune.CreateMelody(0, 100, 1, Pitches(6));
  tune.Item(6)->SetDuration(7.0);
  tune.CreateRhythm({2.0, 1.0, 0.25, 3.75, 1.0});
  const int bars[] = {1, 1, 2, 2, 3};
  const int beats[] = {1, 3, 1, 1, 2};
  const int ticks[] = {0, 0, 0, 30, 0};
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(tune.Item(i + 1)->Bar(), bars[i]) << i;
    EXPECT_EQ(tune.Item(i + 1)->Beat(), beats[i]) << i;
    EXPECT_EQ(tune.Item(i + 1)->Tick(), ticks[i]) << i;
  }
  EXPECT_DOUBLE_EQ(tune.Item(6)->Duration(), 7.0);
  EXPECT_EQ(tune.Item(6)->Bar(), 2);
}

TEST(CreateRhythm, CountsBeatsOfTheTunesOwnLength) {
  Tune tune;
  tune.CreateMelody(0, 100, 1, Pitches(3));
  tune.SetBeatLength(8);
  tune.SetBeatsPerBar(6);
  tune.CreateRhythm({0.75, 2.25, 0.5});
  EXPECT_EQ(tune.Item(2)->Beat(), 2);
  EXPECT_EQ(tune.Item(2)->Tick(), 30);
  EXPECT_EQ(tune.Item(3)->Bar(), 2);
  EXPECT_EQ(tune.Item(3)->Beat(), 1);
  for (const auto& tone : tune) EXPECT_EQ(tone->BeatLength(), 8);
}

TEST(CreateRhythm, TakesTheSumInSinglePrecision) {
  // Ten tenths miss 1 in double precision and make it, rounded up, in single.
  Tune tune;
  tune.CreateMelody(0, 100, 1, Pitches(11));
  tune.CreateRhythm(QList<double>(11, 0.1));
  EXPECT_EQ(tune.Item(11)->Beat(), 2);
  EXPECT_EQ(tune.Item(11)->Tick(), 0);
}

TEST(CreateRhythm, MoreDurationsThanEventsFailAtTheFirstMissingOne) {
  Tune tune;
  tune.CreateMelody(0, 100, 1, Pitches(2));
  EXPECT_THROW(tune.CreateRhythm({0.5, 0.25, 0.25}), SubscriptError);
  EXPECT_EQ(tune.Item(2)->Tick(), 60);
}

TEST(CreateRhythm, AMetreOfZeroIsADivisionFailure) {
  Tune tune;
  tune.CreateMelody(0, 100, 1, Pitches(2));
  tune.SetBeatLength(0);
  EXPECT_THROW(tune.CreateRhythm({1.0, 1.0}), DivisionError);
  EXPECT_THROW(tune.CreateRhythmArray({0.0F, 1.0F}), DivisionError);
  tune.SetBeatLength(4);
  tune.SetBeatsPerBar(0);
  EXPECT_THROW(tune.CreateRhythm({1.0, 1.0}), DivisionError);
}

TEST(CreateRhythm, ABeatMayBeAWholeNote) {
  Tune tune;
  tune.CreateMelody(0, 100, 1, Pitches(2));
  tune.SetBeatLength(1);
  tune.CreateRhythm({4.0, 4.0});
  EXPECT_EQ(tune.Item(2)->BeatLength(), 1);
  EXPECT_EQ(tune.Item(2)->Beat(), 2);
  EXPECT_NO_THROW(tune.CreateRhythmArray({0.0F, 4.0F}));
}

TEST(CreateRhythm, ABeatLengthOfZeroFailsBeforeAnyEventIsTouched) {
  Tune tune;
  tune.CreateMelody(0, 100, 1, Pitches(2));
  const double before = tune.Item(1)->Duration();
  tune.SetBeatLength(0);
  EXPECT_THROW(tune.CreateRhythm({7.0}), DivisionError);
  EXPECT_THROW(tune.CreateRhythmArray({0.0F, 7.0F}), DivisionError);
  EXPECT_EQ(tune.Item(1)->Duration(), before);
  EXPECT_THROW(tune.CreateRhythm({}), DivisionError);
}

TEST(CreateRhythmArray, AValueAboveAHundredIsARest) {
  Tune tune;
  tune.CreateMelody(0, 100, 1, Pitches(4));
  tune.CreateRhythmArray({9.0F, 101.0F, 0.5F, 102.5F, 1.0F, 100.0F, 1.0F});
  const int bars[] = {1, 2, 2, 27};
  const int beats[] = {2, 1, 2, 2};
  const double durations[] = {0.5, 1.0, 100.0, 1.0};
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(tune.Item(i + 1)->Bar(), bars[i]) << i;
    EXPECT_EQ(tune.Item(i + 1)->Beat(), beats[i]) << i;
    EXPECT_EQ(tune.Item(i + 1)->Tick(), 0) << i;
    EXPECT_DOUBLE_EQ(tune.Item(i + 1)->Duration(), durations[i]) << i;
  }
}

TEST(CreateRhythmArray, StopsAtTheFirstValueThatIsNotAboveZero) {
  for (const float last : {0.0F, -1.0F}) {
    Tune tune;
    tune.CreateMelody(0, 100, 1, Pitches(3));
    tune.CreateRhythmArray({0.0F, 1.5F, 0.25F, last, 4.0F});
    EXPECT_EQ(tune.Item(2)->Tick(), 60);
    EXPECT_DOUBLE_EQ(tune.Item(3)->Duration(), 1.0);
  }
}

}  // namespace
}  // namespace zelmar
