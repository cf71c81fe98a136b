#include <gtest/gtest.h>

#include "abc_support.h"

namespace zelmar {
namespace {

using namespace testing_support;

struct Mistake {
  const char* name;
  const char* text;
  const char* message;
};

void PrintTo(const Mistake& mistake, std::ostream* out) {
  *out << mistake.name;
}

std::string NameOf(const testing::TestParamInfo<Mistake>& info) {
  return info.param.name;
}

class AbcBodyMistakes : public testing::TestWithParam<Mistake> {};

// The body begins in line 6.
TEST_P(AbcBodyMistakes, AreToldWithTheirPlace) {
  EXPECT_EQ(MistakeInBody(GetParam().text), GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    All, AbcBodyMistakes,
    testing::Values(
        Mistake{"UnknownCharacter", "C D ? E |", "t.abc:6:5: The character \"?\" means nothing here."},
        Mistake{"ShortBar", "C4 | C D E | F4 |", "t.abc:6:6: This bar adds up to 3/4 and not to 4/4."},
        Mistake{"LongBar", "C4 |\nC D E F G | F4 |", "t.abc:7:1: This bar adds up to 5/4 and not to 4/4."},
        Mistake{"LongFirstBar", "C D E F G | F4 |", "t.abc:6:1: This bar adds up to 5/4 and not to 4/4."},
        Mistake{"ShortLastBar", "C4 | C D E |]",
                "t.abc:6:6: The last bar adds up to 3/4 and completes neither a bar nor a pickup."},
        Mistake{"LastBarDoesNotFitThePickup", "G | C4 | D2 |]",
                "t.abc:6:10: The last bar adds up to 2/4 and completes neither a bar nor a pickup."},
        Mistake{"RepeatPartsDoNotFit", "|: G | C4 | D2 :|",
                "t.abc:6:13: This bar adds up to 3/4 and not to 4/4."},
        Mistake{"OddLengthBar", "C4 | C3/8 D |E4|", "t.abc:6:6: This bar adds up to 11/32 and not to 4/4."},
        Mistake{"ZeroLength", "C0 |", "t.abc:6:2: A length cannot be 0."},
        Mistake{"DividedByThree", "C/3 |", "t.abc:6:2: A length is divided by a power of two up to 512."},
        Mistake{"DividedByNought", "C/0 |", "t.abc:6:2: A length is divided by a power of two up to 512."},
        Mistake{"DividedTooOften", "C////////// |",
                "t.abc:6:2: A length is divided by a power of two up to 512."},
        Mistake{"HugeNumber", "C123456 |", "t.abc:6:2: This number is too large."},
        Mistake{"AccidentalAlone", "^ C |", "t.abc:6:2: A note from A to G is missing here."},
        Mistake{"NoteTooHigh", "c'''' b''''' |",
                "t.abc:6:7: This note lies outside the range from C0 to G9."},
        Mistake{"NoteTooLow", "C,,,,, |", "t.abc:6:1: This note lies outside the range from C0 to G9."},
        Mistake{"OpenChord", "[CEG |", "t.abc:6:6: A note from A to G is missing here."},
        Mistake{"OpenChordAtLineEnd", "C [CEG", "t.abc:6:3: The bracket of the chord is never closed."},
        Mistake{"EmptyChord", "C [] |", "t.abc:6:3: This chord has no notes."},
        Mistake{"OpenField", "C [Q:1/4=60 |", "t.abc:6:3: The bracket of the field is never closed."},
        Mistake{"UnknownInlineField", "C [Y:1] |", "t.abc:6:3: The field Y: means nothing within the music."},
        Mistake{"UnknownField", "C4 |\nY:1", "t.abc:7:1: The field Y: means nothing within the music."},
        Mistake{"FieldOfTheHeader", "C4 |\nC:me", "t.abc:7:1: The field C: means nothing within the music."},
        Mistake{"OpenGrace", "C {gf D |", "t.abc:6:3: The braces of the grace notes are never closed."},
        Mistake{"OpenQuotation", "\"Am C D |", "t.abc:6:1: The quotation mark is never closed."},
        Mistake{"OpenDecoration", "C !f D |", "t.abc:6:3: The exclamation mark is never closed."},
        Mistake{"Jump", "C4 !D.C.! |", "t.abc:6:4: Jumps are not supported; write the music out."},
        Mistake{"JumpLetter", "C4 S |", "t.abc:6:4: Jumps are not supported; write the music out."},
        Mistake{"Overlay", "C4 & E4 |",
                "t.abc:6:4: Voice overlays are not supported; give the line a voice of its own."},
        Mistake{"MetreChange", "C4 | [M:3/4] C3 |",
                "t.abc:6:6: A tune has one metre; it cannot change within the tune."},
        Mistake{"MetreChangeByLine", "C4 |\nM:3/4\nC3 |",
                "t.abc:7:1: A tune has one metre; it cannot change within the tune."},
        Mistake{"BrokenAtTheStart", ">C D |",
                "t.abc:6:1: A broken rhythm stands between two notes, with at most three signs."},
        Mistake{"BrokenTwice", "C>>>>D E2 |",
                "t.abc:6:2: A broken rhythm stands between two notes, with at most three signs."},
        Mistake{"BrokenAcrossABar", "C2 C |>D |",
                "t.abc:6:7: A broken rhythm stands between two notes, with at most three signs."},
        Mistake{"BrokenAtTheEnd", "C4>", "t.abc:6:3: The broken rhythm has no note behind it."},
        Mistake{"TupletTooLarge", "(12CDE |",
                "t.abc:6:1: A tuplet is (p, (p:q or (p:q:r with p from 2 to 9."},
        Mistake{"TupletOfOne", "(1CDE |", "t.abc:6:1: A tuplet is (p, (p:q or (p:q:r with p from 2 to 9."},
        Mistake{"TupletWithinTuplet", "(3C(3DEF |", "t.abc:6:4: Tuplets within tuplets are not supported."},
        Mistake{"TupletWithoutEnd", "C4 | (3CD", "t.abc:6:6: The tuplet has too few notes."},
        Mistake{"TieToAnotherPitch", "C2-D2 |", "t.abc:6:1: This tie leads to no note of the same pitch."},
        Mistake{"TieToARest", "C2-z2 |", "t.abc:6:1: This tie leads to no note of the same pitch."},
        Mistake{"TieAtTheEnd", "C4- |", "t.abc:6:1: This tie leads to no note of the same pitch."},
        Mistake{"TieIntoABarRest", "C4- | Z |", "t.abc:6:1: This tie leads to no note of the same pitch."},
        Mistake{"TieWithoutANote", "z2 -C2 |", "t.abc:6:4: A tie stands directly behind a note."},
        Mistake{"BarRestInTheMiddle", "C2 Z |",
                "t.abc:6:4: A rest of whole bars begins at the head of a bar."},
        Mistake{"BarRestOfNought", "Z0 |", "t.abc:6:1: A rest lasts 1 to 9999 bars."},
        Mistake{"TooManyBars", "Z9999 | Z |", "t.abc:6:9: A tune has at most 9999 bars."},
        Mistake{"ColonAlone", "C : D |", "t.abc:6:3: A colon stands only in a repeat sign."},
        Mistake{"OddBarLine", "C4 |:| D4", "t.abc:6:4: This bar line cannot be read."},
        Mistake{"EndlessBarLine", "C4 ||||||||||||||", "t.abc:6:4: This bar line has too many signs."},
        Mistake{"EndingNought", "|: C4 |0 D4 :|",
                "t.abc:6:8: An ending is numbered from 1 to 9, such as 1, 1,3 or 1-3."},
        Mistake{"EndingBackwards", "|: C4 |3-1 D4 :|",
                "t.abc:6:8: An ending is numbered from 1 to 9, such as 1, 1,3 or 1-3."},
        Mistake{"MissingEnding", "|: C4 |2 D4 :|", "t.abc:6:7: There is no ending for pass 1."},
        Mistake{"EndingOutOfOrder", "|: C4 |1,3 D4 :|2 E4 :|",
                "t.abc:6:15: The last pass must end in the ending that is written last."},
        Mistake{"MoreSyllablesThanNotes", "C2 D2 |\nw: one two three",
                "t.abc:7:12: There are more syllables here than notes in the line above."},
        Mistake{"BackslashInTheMiddle", "C2 \\ D2 |",
                "t.abc:6:4: A backslash stands only at the end of a line that goes on."},
        Mistake{"UnequalVoices", "[V:1] C4 | D4 |\n[V:2] E4 |",
                "t.abc:7:4: Voice 2 is not as long as the first voice: 4 against 8 crotchets."},
        Mistake{"UnequalPickups", "[V:1] G | D4 |\n[V:2] E2 | D4 |",
                "t.abc:7:4: The pickup of voice 2 is not as long as that of the first voice."},
        Mistake{"TwoTempos", "[V:1] [Q:1/4=60] C4 |\n[V:2] [Q:1/4=70] E4 |",
                "t.abc:7:7: Two tempos begin at the same moment."},
        Mistake{"TempoOfNought", "[Q:1/4=0] C4 |",
                "t.abc:6:4: A tempo lies between 1 and 16383 crotchets a minute."},
        Mistake{"TempoTooFast", "[Q:1/1=9999] C4 |",
                "t.abc:6:4: A tempo lies between 1 and 16383 crotchets a minute."},
        Mistake{"TempoInNoForm", "[Q:fast] C4 |",
                "t.abc:6:4: A tempo reads like 1/4=120, with a text in quotes if wished."},
        Mistake{"TempoOverNought", "[Q:1/0=60] C4 |",
                "t.abc:6:4: A tempo reads like 1/4=120, with a text in quotes if wished."},
        Mistake{"VoiceWithoutAName", "[V:] C4 |", "t.abc:6:4: A voice needs a name."},
        Mistake{"VoiceWithAnUnknownProperty", "V:1 colour=red\nC4 |",
                "t.abc:6:5: \"colour=red\" is no property of a voice."},
        Mistake{"VoiceWithAnOctave", "V:1 octave=-1\nC4 |",
                "t.abc:6:5: Notes are written as they sound; octave is not supported."},
        Mistake{"OctaveClef", "V:1 clef=treble-8\nC4 |",
                "t.abc:6:5: Notes are written as they sound; octave clefs are not supported."},
        Mistake{"ContinuedField", "C4 |\nw: one\n+: two",
                "t.abc:8:1: Continued fields are not supported; write one line."},
        Mistake{"CatalogueLineInTheMusic", "C4 |\n%%zelmar-rank 1",
                "t.abc:7:1: Lines of the catalogue stand in the header, between X: and K:."},
        Mistake{"SecondTune", "C4 |\n\nX:2\nT:u", "t.abc:8:1: A file holds one tune; this is a second."},
        Mistake{"TextBehindTheTune", "C4 |\n\nD4 |",
                "t.abc:8:1: An empty line ends the tune, and nothing may follow it."},
        Mistake{"NoNotes", "z4 |", "t.abc:7:1: The tune has no notes."}),
    NameOf);

class AbcHeaderMistakes : public testing::TestWithParam<Mistake> {};

TEST_P(AbcHeaderMistakes, AreToldWithTheirPlace) {
  EXPECT_EQ(MistakeOf(GetParam().text), GetParam().message);
}

constexpr char kMetreSentence[] =
    "t.abc:3:3: A metre is C, C| or two whole numbers such as 3/4, the second a power of two up to 32.";
constexpr char kUnitSentence[] = "t.abc:3:3: A unit length is 1 over a power of two up to 512, such as 1/8.";

INSTANTIATE_TEST_SUITE_P(
    All, AbcHeaderMistakes,
    testing::Values(
        Mistake{"Empty", "", "t.abc:1:1: There is no tune here."},
        Mistake{"OnlyAComment", "% nothing\n", "t.abc:2:1: There is no tune here."},
        Mistake{"NoNumber", "T:t\nK:C\n", "t.abc:1:1: A tune begins with a number (X:)."},
        Mistake{"NoKey", "X:1\nT:t\nM:4/4\n\nC4 |", "t.abc:4:1: The header ends without a key (K:)."},
        Mistake{"NoKeyAtTheEnd", "X:1\nT:t", "t.abc:2:1: The header ends without a key (K:)."},
        Mistake{"NoTitle", "X:1\nM:4/4\nK:C\nC8 |", "t.abc:3:1: The header has no title (T:)."},
        Mistake{"NoMetre", "X:1\nT:t\nK:C\nC8 |", "t.abc:3:1: The header has no metre (M:)."},
        Mistake{"NotAField", "X:1\nT:t\nhello\n", "t.abc:3:1: A line of the header is a field such as T:."},
        Mistake{"UnknownField", "X:1\nT:t\nY:1\n", "t.abc:3:1: The field Y: means nothing in the header."},
        Mistake{"Macro", "X:1\nT:t\nm: ~G2 = G\n",
                "t.abc:3:1: Macros and symbols of one's own are not supported."},
        Mistake{"FreeMetre", "X:1\nT:t\nM:none\n", kMetreSentence},
        Mistake{"MetreOfThirds", "X:1\nT:t\nM:4/3\n", kMetreSentence},
        Mistake{"MetreOfNought", "X:1\nT:t\nM:0/4\n", kMetreSentence},
        Mistake{"MetreTooFine", "X:1\nT:t\nM:4/64\n", kMetreSentence},
        Mistake{"MetreWithTail", "X:1\nT:t\nM:4/4 x\n",
                "t.abc:3:7: A metre is C, C| or two whole numbers such as 3/4, the second a power of two up "
                "to 32."},
        Mistake{"UnitOfThree", "X:1\nT:t\nL:1/3\n", kUnitSentence},
        Mistake{"UnitOfNought", "X:1\nT:t\nL:1/0\n", kUnitSentence},
        Mistake{"UnitOfTwoQuarters", "X:1\nT:t\nL:3/4\n", kUnitSentence},
        Mistake{"UnknownMode", "X:1\nT:t\nM:4/4\nK:C blue\n",
                "t.abc:4:5: \"blue\" is neither a key, a mode, an accidental nor a clef."},
        Mistake{"UnknownKey", "X:1\nT:t\nM:4/4\nK:H\n",
                "t.abc:4:3: \"H\" is neither a key, a mode, an accidental nor a clef."},
        Mistake{"TooManySharps", "X:1\nT:t\nM:4/4\nK:G#\n",
                "t.abc:4:3: This key has more than seven sharps or flats."},
        Mistake{"Bagpipe", "X:1\nT:t\nM:4/4\nK:HP\n",
                "t.abc:4:3: The keys of the bagpipe are not supported; give the key by its name."},
        Mistake{"UnknownCatalogueLine", "X:1\n%%zelmar-colour red\n",
                "t.abc:2:3: There is no catalogue line zelmar-colour."},
        Mistake{"EmptyCatalogueLine", "X:1\n%%zelmar-category\n", "t.abc:2:3: zelmar-category needs a text."},
        Mistake{"RankOfNought", "X:1\n%%zelmar-rank 0\n",
                "t.abc:2:15: The rank is a whole number from 1 to 9999."},
        Mistake{"RankWithTail", "X:1\n%%zelmar-rank 1 x\n",
                "t.abc:2:17: Nothing more is expected in this line."},
        Mistake{"RankInLetters", "X:1\n%%zelmar-rank 1x\n",
                "t.abc:2:15: The rank is a whole number from 1 to 9999."},
        Mistake{"MelodyTrackWithoutAVoice", "X:1\nT:t\n%%zelmar-melody-track 2\nM:4/4\nK:C\nC8 |\n",
                "t.abc:3:23: The melody track has no voice."},
        Mistake{"UnknownReach", "X:1\n%%propagate-accidentals far\n",
                "t.abc:2:25: Accidentals reach as far as not, octave or pitch."},
        Mistake{"UnknownVoice", "X:1\nT:t\n%%zelmar-voice Q volume=3\nM:4/4\nK:C\nC8 |\n",
                "t.abc:3:16: There is no voice \"Q\"."},
        Mistake{"InstrumentTooHigh", "X:1\n%%zelmar-voice 1 instrument=128\n",
                "t.abc:2:29: An instrument is a whole number from 0 to 127."},
        Mistake{"ChannelTooHigh", "X:1\n%%zelmar-voice 1 channel=17\n",
                "t.abc:2:26: A channel is a whole number from 1 to 16."},
        Mistake{"VolumeOfNought", "X:1\n%%zelmar-voice 1 volume=0\n",
                "t.abc:2:25: A volume is a whole number from 1 to 127."},
        Mistake{
            "UnknownEquipment", "X:1\n%%zelmar-voice 1 colour=3\n",
            "t.abc:2:18: A voice has an instrument=, a channel=, a volume=, a bank-msb= and a bank-lsb=."},
        Mistake{"ThemeWithoutBars", "X:1\n%%zelmar-theme 1 x\n",
                "t.abc:2:18: The first bar of a theme is a whole number from 1 to 9999."},
        Mistake{"ThemeTwice", "X:1\n%%zelmar-theme 1 1 1 1 1 a\n%%zelmar-theme 1 1 1 1 1 b\n",
                "t.abc:3:16: There are two themes number 1."},
        Mistake{"ThemeOutsideTheTune", "X:1\nT:t\n%%zelmar-theme 1 1 2 1 1 a\nM:4/4\nK:C\nC8 |\n",
                "t.abc:3:16: A theme lies within the tune, which has 1 bars."},
        Mistake{"ThemeBackwards", "X:1\nT:t\n%%zelmar-theme 1 2 1 1 1 a\nM:4/4\nK:C\nC8 | C8 |\n",
                "t.abc:3:16: A theme lies within the tune, which has 2 bars."},
        Mistake{"ThemeOfAMissingTrack", "X:1\nT:t\n%%zelmar-theme 1 1 1 2 1 a\nM:4/4\nK:C\nC8 |\n",
                "t.abc:3:16: The track of the theme has no voice."},
        Mistake{"UnsafeCodeName", "X:1\nT:t\n%%zelmar-codename a'b\nM:4/4\nK:C\nC8 |\n",
                "t.abc:1:1: A CodeName has letters, digits, blanks, \"_\" and \"-\" only."},
        Mistake{"NotUtf8", "X:1\nT:a\xff\n", "t.abc:2:4: The text is not UTF-8."}),
    NameOf);

TEST(AbcMistakes, AFileThatCannotBeReadIsAFailure) {
  try {
    ReadAbcFile(QStringLiteral("/nowhere/t.abc"));
    FAIL() << "no failure";
  } catch (const Failure& failure) {
    EXPECT_TRUE(failure.Description().startsWith(QStringLiteral("The tune /nowhere/t.abc cannot be read: ")));
  }
}

TEST(AbcMistakes, SixteenVoicesAreTooMany) {
  QByteArray body;
  for (int voice = 1; voice <= 16; ++voice) body += "[V:" + QByteArray::number(voice) + "] C4 |\n";
  EXPECT_EQ(MistakeInBody(body), "t.abc:21:4: A tune has at most 15 voices.");
}

}  // namespace
}  // namespace zelmar
