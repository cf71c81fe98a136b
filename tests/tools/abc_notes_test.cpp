#include <gtest/gtest.h>

#include "abc_support.h"

namespace zelmar {
namespace {

using namespace testing_support;

TEST(AbcNotes, LettersAndMarksGiveTheOctave) {
  EXPECT_EQ(Pitches(ReadBody("C,, C, C c | c' c'' B b |")), "C2 C3 C4 C5 C6 C7 B4 B5");
  EXPECT_EQ(Pitches(ReadBody("C,' c,' z2 |")), "C4 C5");
}

TEST(AbcNotes, BarsAndBeatsCountFromOneAndTicksFromNought) {
  EXPECT_EQ(Notes(ReadBody("C D/ E/ F G | A4 |")),
            "1.1.0 C4 1; 1.2.0 D4 0.5; 1.2.60 E4 0.5; 1.3.0 F4 1; 1.4.0 G4 1; 2.1.0 A4 4");
}

TEST(AbcNotes, InSixEightABeatIsAQuaver) {
  const AbcTune tune = ReadBody("C D/ E/ F | G3/2 A3/2 |", "6/8");
  EXPECT_EQ(tune.beats_per_bar, 6);
  EXPECT_EQ(tune.beat_length, 8);
  EXPECT_EQ(Notes(tune), "1.1.0 C4 1; 1.3.0 D4 0.5; 1.4.0 E4 0.5; 1.5.0 F4 1; 2.1.0 G4 1.5; 2.4.0 A4 1.5");
}

TEST(AbcNotes, CutTimeCountsMinims) {
  const AbcTune tune = ReadBody("C D E F |", "C|");
  EXPECT_EQ(tune.beats_per_bar, 2);
  EXPECT_EQ(tune.beat_length, 2);
  EXPECT_EQ(Notes(tune), "1.1.0 C4 1; 1.1.120 D4 1; 1.2.0 E4 1; 1.2.120 F4 1");
  EXPECT_EQ(ReadBody("C D E F |", "C").beat_length, 4);
}

TEST(AbcNotes, LengthsMultiplyAndDivideTheUnit) {
  EXPECT_EQ(Durations(ReadBody("C2 D/ E/2 F// G/4 A1/2 | c3/2 d3/ e |")),
            "2 0.5 0.5 0.25 0.25 0.5 1.5 1.5 1");
}

TEST(AbcNotes, WithoutAUnitLengthTheMetreDecides) {
  const auto first_length = [](const QByteArray& metre, const QByteArray& body) {
    return ReadAbc("X:1\nT:t\nM:" + metre + "\nK:C\n" + body, QStringLiteral("t.abc")).events.at(0).duration;
  };
  EXPECT_DOUBLE_EQ(first_length("2/4", "C8|"), 0.25 * 8);
  EXPECT_DOUBLE_EQ(first_length("3/4", "C6|"), 0.5 * 6);
}

TEST(AbcNotes, SpellingKeepsTheWrittenAccidental) {
  EXPECT_EQ(Pitches(ReadBody("^C _D ^D _E | ^E _F ^F _G | ^G _A ^A _B | ^B _C =C ^^C |__D B, _C, _c |")),
            "C#4 C#4b Eb4# Eb4 F4# E4b F#4 F#4b Ab4# Ab4 Bb4# Bb4 C5# B3b C4 D4 C4 B3 B2b B4b");
}

TEST(AbcNotes, AccidentalLastsToTheBarEndInAllOctaves) {
  EXPECT_EQ(Pitches(ReadBody("^F F f F, | F =F f ^f |")), "F#4 F#4 F#5 F#3 F4 F4 F5 F#5");
}

TEST(AbcNotes, AccidentalReachCanBeTheOctaveOrTheNote) {
  EXPECT_EQ(Pitches(ReadBody("^F F f f |", "4/4", "%%propagate-accidentals octave\n")), "F#4 F#4 F5 F5");
  EXPECT_EQ(Pitches(ReadBody("^F F f f |", "4/4", "%%propagate-accidentals not\n")), "F#4 F4 F5 F5");
  EXPECT_EQ(Pitches(ReadBody("^F F f f |", "4/4", "%%propagate-accidentals pitch\n")), "F#4 F#4 F#5 F#5");
}

TEST(AbcNotes, BrokenRhythmLengthensOneNoteByWhatTheOtherLoses) {
  EXPECT_EQ(Durations(ReadBody("C>D E<F | C>>D E<<F | C>>>D E > F |")),
            "1.5 0.5 0.5 1.5 1.75 0.25 0.25 1.75 1.875 0.125 1.5 0.5");
  EXPECT_EQ(Durations(ReadBody("[CE]>{g}D z>F |")), "1.5 1.5 0.5 0.5");
}

TEST(AbcNotes, TupletsPutPNotesInTheTimeOfQ) {
  const AbcTune tune = ReadBody("(3CDE (3:2F/G/A/ z | (2CD z |(5:4:5C/D/E/F/G/ z2 |");
  EXPECT_NEAR(tune.events.at(0).duration, 2.0 / 3, 1e-12);
  EXPECT_EQ(tune.events.at(1).tick, 80);
  EXPECT_EQ(tune.events.at(2).beat, 2);
  EXPECT_EQ(tune.events.at(2).tick, 40);
  EXPECT_NEAR(tune.events.at(3).duration, 1.0 / 3, 1e-12);
  EXPECT_DOUBLE_EQ(tune.events.at(6).duration, 1.5);
  EXPECT_DOUBLE_EQ(tune.events.at(8).duration, 0.4);
  EXPECT_EQ(tune.events.at(9).tick, 48);
}

TEST(AbcNotes, TupletDefaultsFollowTheMetre) {
  EXPECT_DOUBLE_EQ(ReadBody("(5C/D/E/F/G/ C3/2 |", "6/8").events.at(0).duration, 0.3);
  EXPECT_DOUBLE_EQ(ReadBody("(5C/D/E/F/G/ C3 |", "4/4").events.at(0).duration, 0.2);
  EXPECT_DOUBLE_EQ(ReadBody("(4C/D/E/F/ C5/2 |", "4/4").events.at(0).duration, 0.375);
  EXPECT_DOUBLE_EQ(ReadBody("(3:2:2C2D z2 |", "4/4").events.at(0).duration, 4.0 / 3);
}

TEST(AbcNotes, TiesMakeOneNote) {
  EXPECT_EQ(Notes(ReadBody("C2- C D- | D4- | D2 z2 |")), "1.1.0 C4 3; 1.4.0 D4 7");
}

TEST(AbcNotes, TieCarriesTheAccidentalOverTheBarLine) {
  EXPECT_EQ(Notes(ReadBody("z3 ^F- | F F2 z |")), "1.4.0 F#4 2; 2.2.0 F4 2");
}

TEST(AbcNotes, ChordsSoundTogetherAndTakeTheLengthOfTheirFirstNote) {
  EXPECT_EQ(Notes(ReadBody("[CEG]2 [C/E/]2 [CE2] |")),
            "1.1.0 C4 2; 1.1.0 E4 2; 1.1.0 G4 2; 1.3.0 C4 1; 1.3.0 E4 1; 1.4.0 C4 1; 1.4.0 E4 2");
}

TEST(AbcNotes, TiesOfChordsJoinNoteByNote) {
  EXPECT_EQ(Notes(ReadBody("[C-E]2 [CF]2 | [CE]2- [CE]2 |")),
            "1.1.0 C4 4; 1.1.0 E4 2; 1.3.0 F4 2; 2.1.0 C4 4; 2.1.0 E4 4");
}

TEST(AbcNotes, RestsTakeTimeAndLeaveNoEvent) {
  EXPECT_EQ(Notes(ReadBody("z C x D | Z | Z2 | z3 E | X | F4 |")),
            "1.2.0 C4 1; 1.4.0 D4 1; 5.4.0 E4 1; 7.1.0 F4 4");
}

TEST(AbcNotes, DynamicsMoveTheVoicesOwnVolume) {
  EXPECT_EQ(Volumes(ReadBody("C !p!D !mf!E !f!F | !ff!C !pp!D !ppp!E !fff!F |")),
            "80 50 80 95 110 35 20 125");
  EXPECT_EQ(Volumes(ReadBody("C !fff!D !ppp!E !mp!F |", "4/4", "%%zelmar-voice 1 volume=90\nV:1\n")),
            "90 127 30 75");
}

TEST(AbcNotes, GraceNotesChordSymbolsSlursAndOtherDecorationsAreDropped) {
  EXPECT_EQ(Notes(ReadBody("{gf}\"Am\"C ~D .E !trill!F | (G \"^slow\"H A) `u B y $ v c |")),
            "1.1.0 C4 1; 1.2.0 D4 1; 1.3.0 E4 1; 1.4.0 F4 1; 2.1.0 G4 1; 2.2.0 A4 1; 2.3.0 B4 1; 2.4.0 C5 1");
}

TEST(AbcNotes, EnharmonicMarksReadBackAsWritten) {
  const AbcTune tune = ReadBody("_d4 | ^a4 |");
  EXPECT_EQ(tune.events.at(0).pitch, QStringLiteral("C#5"));
  EXPECT_EQ(tune.events.at(0).enharmonic, QStringLiteral("b"));
  EXPECT_EQ(tune.events.at(1).enharmonic, QStringLiteral("#"));
  EXPECT_EQ(ReadBody("c4 |").events.at(0).enharmonic, QStringLiteral(" "));
}

}  // namespace
}  // namespace zelmar
