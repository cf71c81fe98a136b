// Names of keys, spellings of notes and tunes made of lists, each against a plain reading of its table.
#include <gtest/gtest.h>

#include <cmath>

#include "model/tune.h"
#include "platform/failure.h"
#include "support/dice.h"

namespace zelmar {
namespace {

using testing_support::Dice;

const char* const kMajor[15] = {"Cb", "Gb", "Db", "Ab", "Eb", "Bb", "F", "C",
                                "G",  "D",  "A",  "E",  "B",  "F#", "C#"};
const char* const kMinor[15] = {"Ab", "Eb", "Bb", "F",  "C",  "G",  "D", "A",
                                "E",  "B",  "F#", "C#", "G#", "D#", "A#"};

TEST(NameOfTheKey, IsThatOfTheTableInBothModes) {
  Tune tune;
  for (int sharps = -7; sharps <= 7; ++sharps) {
    tune.SetKeySignature(static_cast<std::int16_t>(sharps));
    tune.SetKeyMode(0);
    EXPECT_EQ(tune.key(), QString::fromLatin1(kMajor[sharps + 7]) + " Major");
    tune.SetKeyMode(1);
    EXPECT_EQ(tune.key(), QString::fromLatin1(kMinor[sharps + 7]) + " Minor");
    EXPECT_EQ(tune.EquivMajorKey(), QString::fromLatin1(kMajor[sharps + 7]));
  }
}

TEST(NameOfTheKey, FailsOutsideTheTable) {
  Tune tune;
  for (const int sharps : {-8, 8, 32767, -32768}) {
    tune.SetKeySignature(static_cast<std::int16_t>(sharps));
    EXPECT_THROW(tune.key(), SubscriptError);
    EXPECT_EQ(tune.EquivMajorKey(), QString());
  }
  tune.SetKeySignature(0);
  tune.SetKeyMode(2);
  EXPECT_THROW(tune.key(), SubscriptError);
}

TEST(EquivalentMajorKey, IsTakenByNameAndMarksTheTune) {
  Tune tune;
  for (int sharps = -7; sharps <= 7; ++sharps) {
    tune.SetChangedSinceLastSaved(false);
    tune.SetEquivMajorKey(QString::fromLatin1(kMajor[sharps + 7]));
    EXPECT_EQ(tune.KeySignature(), sharps);
    EXPECT_TRUE(tune.ChangedSinceLastSaved());
  }
  tune.SetChangedSinceLastSaved(false);
  tune.SetEquivMajorKey(QStringLiteral("G#"));
  EXPECT_EQ(tune.KeySignature(), 7);
  EXPECT_TRUE(tune.ChangedSinceLastSaved());
}

// The two lists of spellings, read one line after the other.
QString PlainSpelling(const QString& pitch, int k, int mode, QString mark) {
  const QChar first = pitch[0], second = pitch[1];
  const bool natural = second.isDigit();
  if (second == 'b' && k >= 1)
    mark = "#";
  else if (second == '#' && k < 0)
    mark = "b";
  else if (first == 'C' && natural && k >= 7)
    mark = "#";
  else if (first == 'B' && natural && k < -5)
    mark = "b";
  else if (first == 'F' && natural && k >= 6)
    mark = "#";
  else if (first == 'E' && natural && k == -7)
    mark = "b";
  if (mode == 1) {
    const QString head = pitch.left(2);
    if (k == -2 && head == "F#")
      mark = " ";
    else if (k == -1 && head == "C#")
      mark = " ";
    else if (k == 0 && head == "Ab")
      mark = "#";
    else if (k == 1 && head == "Eb")
      mark = "#";
    else if (k == 2 && head == "Bb")
      mark = "#";
    else if (k == 3 && first == 'F' && second != '#')
      mark = "#";
    else if (k == 4 && first == 'C' && second != '#')
      mark = "#";
  }
  return mark;
}

class Spellings : public ::testing::TestWithParam<int> {};

TEST_P(Spellings, OfEveryPitchInBothModesAreThoseOfTheLists) {
  for (const int mode : {0, 1}) {
    for (const char* const before : {" ", "#", "b"}) {
      Tune tune;
      tune.SetKeySignature(static_cast<std::int16_t>(GetParam()));
      tune.SetKeyMode(static_cast<std::uint8_t>(mode));
      for (std::int16_t number = 12; number < 128; ++number) {
        auto tone = std::make_shared<Tone>();
        tone->SetNumber(number);
        tone->SetEnHarmonic(QString::fromLatin1(before));
        tone->SetAbsRef(number);
        tune.Add(tone);
      }
      tune.CalcEnharmonics();
      for (const auto& tone : tune)
        EXPECT_EQ(tone->EnHarmonic(),
                  PlainSpelling(tone->Pitch(), GetParam(), mode, QString::fromLatin1(before)))
            << tone->Pitch().toStdString() << " mode " << mode << " before " << before;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Keys, Spellings, ::testing::Range(-7, 8));

TEST(NumberOfAPitch, AndItsNameBelongTogetherOverAllOctaves) {
  static const char* const kNames[] = {"C", "C#", "D", "Eb", "E", "F", "F#", "G", "Ab", "A", "Bb", "B"};
  Tone tone;
  for (int number = 0; number < 128; ++number) {
    tone.SetNumber(static_cast<std::int16_t>(number));
    EXPECT_EQ(tone.Number(), number);
    EXPECT_EQ(tone.Pitch(), QString::fromLatin1(kNames[number % 12]) + QString::number(number / 12 - 1));
    EXPECT_EQ(tone.NoteName(), QString::fromLatin1(kNames[number % 12]).leftJustified(2));
  }
}

TEST(NumberOfAPitch, IsReadFromEveryWrittenName) {
  struct Name {
    const char* written;
    const char* read;
    int pitch_class;
  };
  static const Name kNames[] = {
      {"C", "C", 0},    {"B#", "C", 0}, {"C#", "C#", 1}, {"Db", "C#", 1}, {"D", "D", 2},  {"D#", "Eb", 3},
      {"Eb", "Eb", 3},  {"E", "E", 4},  {"Fb", "E", 4},  {"F", "F", 5},   {"E#", "F", 5}, {"F#", "F#", 6},
      {"Gb", "F#", 6},  {"G", "G", 7},  {"G#", "Ab", 8}, {"Ab", "Ab", 8}, {"A", "A", 9},  {"A#", "Bb", 10},
      {"Bb", "Bb", 10}, {"B", "B", 11}, {"Cb", "B", 11}};
  for (const Name& name : kNames)
    for (int octave = 0; octave <= 9; ++octave)
      for (const bool lower : {false, true}) {
        QString text = QString::fromLatin1(name.written) + QString::number(octave);
        if (lower) text[0] = text[0].toLower();
        static const QStringList kRefused = {"A9", "G#9", "Bb9", "B9",  "g#9",
                                             "a9", "bb9", "b9",  "B#9", "b#9"};
        Tone tone;
        tone.SetNumber(2);
        tone.SetPitch(text);
        if (kRefused.contains(text)) {
          EXPECT_EQ(tone.Number(), 2) << text.toStdString();
          continue;
        }
        EXPECT_EQ(tone.Pitch(), QString::fromLatin1(name.read) + QString::number(octave))
            << text.toStdString();
        EXPECT_EQ(tone.Number(), name.pitch_class + 12 * octave + 12) << text.toStdString();
      }
}

class RefusedPitches : public ::testing::Test, public ToneListener {
 public:
  void PitchRefused(Tone&, PitchRefusal reason) override { heard_.push_back(reason); }

 protected:
  std::vector<PitchRefusal> heard_;
};

TEST_F(RefusedPitches, AreToldOfInTheOrderOfTheChecks) {
  const std::pair<const char*, PitchRefusal> kTexts[] = {
      {"", PitchRefusal::kLength},        {"C", PitchRefusal::kLength},
      {"C#44", PitchRefusal::kLength},    {"H4", PitchRefusal::kLetter},
      {"@4", PitchRefusal::kLetter},      {"Hxx", PitchRefusal::kLetter},
      {"CC", PitchRefusal::kOctave},      {"C#b", PitchRefusal::kOctave},
      {"Cx4", PitchRefusal::kAccidental}, {"CB4", PitchRefusal::kAccidental},
      {"C-1", PitchRefusal::kAccidental}, {"A9", PitchRefusal::kRange},
      {"b#9", PitchRefusal::kRange},      {"h4", PitchRefusal::kLetter}};
  for (const auto& [text, reason] : kTexts) {
    Tone tone;
    tone.SetPitch(QStringLiteral("F#3"));
    tone.SetListener(this);
    heard_.clear();
    tone.SetPitch(QString::fromLatin1(text));
    ASSERT_EQ(heard_.size(), 1U) << text;
    EXPECT_EQ(heard_[0], reason) << text;
    EXPECT_EQ(tone.Pitch(), QStringLiteral("F#3")) << text;
  }
}

TEST_F(RefusedPitches, AreNotTheOthersOfTheHighestOctave) {
  for (const char* text : {"A#9", "Ab9", "a#9", "ab9", "G9", "C9"}) {
    Tone tone;
    tone.SetListener(this);
    tone.SetPitch(QString::fromLatin1(text));
    EXPECT_TRUE(heard_.empty()) << text;
  }
}

TEST(SpelledName, TurnsNinePairsAndLeavesTheRest) {
  static const char* const kTurned[][3] = {{"C#", "b", "Db"}, {"Eb", "#", "D#"}, {"E", "b", "Fb"},
                                           {"F", "#", "E#"},  {"F#", "b", "Gb"}, {"Ab", "#", "G#"},
                                           {"Bb", "#", "A#"}, {"B", "b", "Cb"},  {"C", "#", "B#"}};
  static const char* const kNames[] = {"C", "C#", "D", "Eb", "E", "F", "F#", "G", "Ab", "A", "Bb", "B"};
  for (const char* const name : kNames)
    for (const char* const mark : {" ", "#", "b"}) {
      Tone tone;
      tone.SetPitch(QString::fromLatin1(name) + "5");
      tone.SetEnHarmonic(QString::fromLatin1(mark));
      QString wanted = QString::fromLatin1(name) + "5";
      for (const auto& turned : kTurned)
        if (QLatin1String(turned[0]) == QLatin1String(name) &&
            QLatin1String(turned[1]) == QLatin1String(mark)) {
          const int octave = QLatin1String(name) == QLatin1String("B")   ? 6
                             : QLatin1String(name) == QLatin1String("C") ? 4
                                                                         : 5;
          wanted = QString::fromLatin1(turned[2]) + QString::number(octave);
        }
      EXPECT_EQ(tone.EnharmonicName(), wanted) << name << ' ' << mark;
    }
}

TEST(MelodyOfAList, StandsOneNoteToABeatWithOddNumbers) {
  for (const int beats : {2, 3, 4, 5})
    for (const int length : {2, 4, 8}) {
      Tune tune;
      tune.SetBeatsPerBar(static_cast<std::int16_t>(beats));
      tune.SetBeatLength(static_cast<std::uint8_t>(length));
      QStringList pitches;
      for (int i = 0; i < 11; ++i) pitches.append(QStringLiteral("E%1").arg(i % 8));
      tune.CreateMelody(5, 99, 7, pitches);
      ASSERT_EQ(tune.Count(), 11);
      EXPECT_EQ(tune.Tracks()->Count(), 2);
      EXPECT_EQ(tune.Tracks()->Item(2)->Description(), QStringLiteral("One Only Track"));
      for (int i = 0; i < 11; ++i) {
        const Tone& tone = *tune.Item(i + 1);
        EXPECT_EQ(tone.AbsRef(), 2 * i + 1);
        EXPECT_EQ(tone.Bar(), i / beats + 1);
        EXPECT_EQ(tone.Beat(), i % beats + 1);
        EXPECT_EQ(tone.Tick(), 0);
        EXPECT_EQ(tone.Duration(), 4.0 / length);
        EXPECT_EQ(tone.Pitch(), pitches[i]);
        EXPECT_EQ(tone.Instrument(), 5);
        EXPECT_EQ(tone.Volume(), 99);
        EXPECT_EQ(tone.Channel(), 7);
        EXPECT_EQ(tone.Track(), 1);
      }
    }
}

TEST(RhythmOfAList, LaysTheNotesOutEndToEnd) {
  for (unsigned seed = 1; seed <= 10; ++seed) {
    Dice random(seed);
    Tune tune;
    const int beats = 2 + random(5), length = 1 << (1 + random(3));
    tune.SetBeatsPerBar(static_cast<std::int16_t>(beats));
    tune.SetBeatLength(static_cast<std::uint8_t>(length));
    QStringList pitches;
    QList<double> durations;
    for (int i = 0; i < 20; ++i) {
      pitches.append(QStringLiteral("C4"));
      durations.append((1 + random(12)) * 0.25);
    }
    tune.CreateMelody(0, 100, 1, pitches);
    tune.CreateRhythm(durations);
    const int pulses_per_beat = 480 / length;
    int pulse = 0;
    for (int i = 0; i < 20; ++i) {
      const Tone& tone = *tune.Item(i + 1);
      EXPECT_EQ(tone.Bar(), pulse / pulses_per_beat / beats + 1) << seed << ' ' << i;
      EXPECT_EQ(tone.Beat(), pulse / pulses_per_beat % beats + 1) << seed << ' ' << i;
      EXPECT_EQ(tone.Tick(), pulse % pulses_per_beat) << seed << ' ' << i;
      EXPECT_EQ(tone.Duration(), durations[i]);
      EXPECT_EQ(tone.BeatLength(), length);
      pulse += static_cast<int>(durations[i] * 120);
    }
  }
}

TEST(RhythmOfAList, FailsWhenItHasMoreDurationsThanTheTuneHasNotes) {
  Tune tune;
  tune.CreateMelody(0, 100, 1, {"C4", "D4"});
  EXPECT_THROW(tune.CreateRhythm({1, 1, 1}), SubscriptError);
}

TEST(RhythmOfAList, WritesARestAsMoreThanAHundred) {
  Tune tune;
  tune.CreateMelody(0, 100, 1, {"C4", "D4", "E4"});
  tune.CreateRhythmArray({0.0F, 1.0F, 101.0F, 0.5F, 102.5F, 1.0F});
  EXPECT_EQ(tune.Item(1)->Beat(), 1);
  EXPECT_EQ(tune.Item(2)->Bar(), 1);
  EXPECT_EQ(tune.Item(2)->Beat(), 3);
  EXPECT_EQ(tune.Item(2)->Tick(), 0);
  EXPECT_EQ(tune.Item(3)->Bar(), 2);
  EXPECT_EQ(tune.Item(3)->Beat(), 2);
  EXPECT_EQ(tune.Item(3)->Tick(), 0);
}

}  // namespace
}  // namespace zelmar
