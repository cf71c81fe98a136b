// Parts and the order in which they are played.
#include <gtest/gtest.h>

#include "abc_support.h"

namespace zelmar {
namespace {

using namespace testing_support;

// A tune of the order, with parts A, B and C of one bar each: a, b and c.
AbcTune InOrder(const QByteArray& order) {
  return ReadBody("P:A\nA4 |\nP:B\nB4 |\nP:C\nC4 |", "4/4", "P:" + order + "\n");
}

// The letters of the parts as they were played.
std::string Played(const QByteArray& order) {
  std::string played;
  const AbcTune tune = InOrder(order);
  for (const AbcEvent& event : tune.events) played += event.pitch[0].toLatin1();
  return played;
}

struct OrderRow {
  const char* name;
  const char* order;
  const char* played;
};

void PrintTo(const OrderRow& row, std::ostream* out) {
  *out << row.order;
}

class AbcOrders : public testing::TestWithParam<OrderRow> {};

TEST_P(AbcOrders, PlayThePartsThatTheyName) {
  EXPECT_EQ(Played(GetParam().order), GetParam().played);
}

INSTANTIATE_TEST_SUITE_P(
    All, AbcOrders,
    testing::Values(OrderRow{"LetterByLetter", "AABB", "AABB"}, OrderRow{"OtherThanWritten", "CAB", "CAB"},
                    OrderRow{"NotAllOfThem", "BB", "BB"}, OrderRow{"Numbers", "A2B3", "AABBB"},
                    OrderRow{"NumberOfTheLastAlone", "AAB3", "AABBB"}, OrderRow{"Once", "A1B", "AB"},
                    OrderRow{"Group", "(AB)3", "ABABAB"}, OrderRow{"GroupWithoutANumber", "(AB)C", "ABC"},
                    OrderRow{"GroupBehindAPart", "A(AB)2C", "AABABC"},
                    OrderRow{"Nested", "((AB)2C)2", "ABABCABABC"},
                    OrderRow{"NumbersWithinGroups", "(A2B)2", "AABAAB"},
                    OrderRow{"Dots", "A.B.A2.C", "ABAAC"}, OrderRow{"DotsInGroups", ".(A.B)2.", "ABAB"},
                    OrderRow{"Blanks", " A B ( A ) ", "ABA"}, OrderRow{"TwoDigits", "A12B", "AAAAAAAAAAAAB"},
                    OrderRow{"EmptyGroup", "A()3B", "AB"}, OrderRow{"NoOrder", "", "ABC"}),
    [](const auto& info) { return info.param.name; });

TEST(AbcParts, WithoutAnOrderLabelsMeanNothing) {
  EXPECT_EQ(Pitches(ReadBody("P:B\nC4 |\nP:Variation 1\nD4 |\n[P:A] E4 |")), "C4 D4 E4");
}

TEST(AbcParts, EachPlayOfAPartHasItsBarsAndBeats) {
  EXPECT_EQ(Notes(ReadBody("P:A\nC2 D2 |\nP:B\nE4 |", "4/4", "P:ABA\n")),
            "1.1.0 C4 2; 1.3.0 D4 2; 2.1.0 E4 4; 3.1.0 C4 2; 3.3.0 D4 2");
  EXPECT_EQ(ReadBody("P:A\nC2 D2 |\nP:B\nE4 |", "4/4", "P:ABA\n").bar_count, 3);
}

TEST(AbcParts, ALabelMayStandWithinALine) {
  EXPECT_EQ(Pitches(ReadBody("[P:A] C4 | [P:B] D4 |", "4/4", "P:BA\n")), "D4 C4");
}

TEST(AbcParts, MusicBeforeTheFirstLabelIsPlayedOnceAtTheHead) {
  EXPECT_EQ(Pitches(ReadBody("G4 |\nP:A\nC4 |\nP:B\nD4 |", "4/4", "P:ABA\n")), "G4 C4 D4 C4");
}

TEST(AbcParts, RepeatsAreThoseOfThePartTheyStandIn) {
  EXPECT_EQ(Pitches(ReadBody("P:A\n|: C4 :|\nP:B\nD4 |", "4/4", "P:ABA\n")), "C4 C4 D4 C4 C4");
  // An end of a repeat goes back to the head of its part, not of the tune.
  EXPECT_EQ(Pitches(ReadBody("P:A\nC4 |\nP:B\nD4 :|", "4/4", "P:AB\n")), "C4 D4 D4");
  // A repeat that is open at the end of its part does not reach into the next one.
  EXPECT_EQ(Pitches(ReadBody("P:A\n|: C4 |\nP:B\nD4 :|", "4/4", "P:AB\n")), "C4 D4 D4");
}

TEST(AbcParts, EndingsCountAnewInEveryPlay) {
  EXPECT_EQ(Pitches(ReadBody("P:A\n|: C4 |1 D4 :|2 E4 ||\nP:B\nF4 |", "4/4", "P:AAB\n")),
            "C4 D4 C4 E4 C4 D4 C4 E4 F4");
}

TEST(AbcParts, APartMayBeginWithAPickup) {
  EXPECT_EQ(Notes(ReadBody("P:A\nG | C3 ||\nP:B\nA | D3 |]", "4/4", "P:A2B\n")),
            "1.4.0 G4 1; 2.1.0 C4 3; 2.4.0 G4 1; 3.1.0 C4 3; 3.4.0 A4 1; 4.1.0 D4 3");
}

TEST(AbcParts, ATieLeadsFromOnePartIntoTheNext) {
  EXPECT_EQ(Notes(ReadBody("P:A\nC2 D2- |\nP:B\nD4 |", "4/4", "P:AB\n")), "1.1.0 C4 2; 1.3.0 D4 6");
}

TEST(AbcParts, OneLabelCountsForTheVoicesBehindIt) {
  const AbcTune tune = ReadBody("P:A\nV:1\nC4 |\nV:2\nE4 |\nP:B\nV:1\nD4 |\nV:2\nF4 |", "4/4", "P:BAB\n");
  EXPECT_EQ(Pitches(tune, 1), "D4 C4 D4");
  EXPECT_EQ(Pitches(tune, 2), "F4 E4 F4");
}

TEST(AbcParts, AVoiceMayBringItsOwnLabels) {
  const AbcTune tune = ReadBody("V:1\nP:A\nC4 |\nP:B\nD4 |\nV:2\nP:A\nE4 |\nP:B\nF4 |", "4/4", "P:BA\n");
  EXPECT_EQ(Pitches(tune, 1), "D4 C4");
  EXPECT_EQ(Pitches(tune, 2), "F4 E4");
}

TEST(AbcParts, TheSameLabelAtEverySystemIsOnePart) {
  const AbcTune tune = ReadBody(
      "P:A\nV:1\nC4 |\nV:2\nE4 |\nP:A\nV:1\nD4 |\nV:2\nF4 |\nP:B\nV:1\nG4 |\nV:2\nB4 |", "4/4", "P:AB\n");
  EXPECT_EQ(Pitches(tune, 1), "C4 D4 G4");
  EXPECT_EQ(Pitches(tune, 2), "E4 F4 B4");
}

TEST(AbcParts, VersesGoOnFromPlayToPlay) {
  EXPECT_EQ(Words(ReadBody("P:A\nC4 |\nw: one\nw: two\nP:B\nD4 |\nw: and", "4/4", "P:ABA\n")),
            "1.1.0=one; 2.1.0=and; 3.1.0=two");
  EXPECT_EQ(Words(ReadBody("P:A\n|: C4 :|\nw: one\nw: two\nw: three", "4/4", "P:AA\n")),
            "1.1.0=one; 2.1.0=two; 3.1.0=three; 4.1.0=three");
}

TEST(AbcParts, LoudnessAndInstrumentStayWhatTheLastPlayedPartMadeThem) {
  const AbcTune tune = ReadBody("P:A\nC4 |\nP:B\n!f!\n%%MIDI program 40\nD4 |", "4/4", "P:ABA\n");
  EXPECT_EQ(Volumes(tune), "80 95 95");
  EXPECT_EQ(tune.events.at(0).instrument, 0);
  EXPECT_EQ(tune.events.at(2).instrument, 40);
}

TEST(AbcParts, ThemesCountBarsAsTheyArePlayed) {
  const AbcTune tune =
      ReadBody("P:A\nC4 |\nP:B\nD4 |", "4/4", "P:ABAB\n%%zelmar-theme 1 3 4 1 9 the return\n");
  ASSERT_EQ(tune.themes.size(), 1U);
  EXPECT_EQ(tune.themes[0].end_bar, 4);
}

struct OrderMistake {
  const char* name;
  const char* order;
  const char* message;
};

void PrintTo(const OrderMistake& mistake, std::ostream* out) {
  *out << mistake.order;
}

class AbcOrderMistakes : public testing::TestWithParam<OrderMistake> {};

TEST_P(AbcOrderMistakes, AreToldWithTheirPlace) {
  EXPECT_EQ(MistakeOf("X:1\nT:t\nM:4/4\nL:1/4\nP:" + QByteArray(GetParam().order) +
                      "\nK:C\nP:A\nA4 |\nP:B\nB4 |\n"),
            GetParam().message);
}

constexpr char kForm[] = ": The order of the parts reads like AABB, A2.B2 or (AB)3C.";

INSTANTIATE_TEST_SUITE_P(
    All, AbcOrderMistakes,
    testing::Values(OrderMistake{"MissingPart", "AB.X", "t.abc:5:6: There is no part X in voice 1."},
                    OrderMistake{"MissingInAGroup", "A(B X)2", "t.abc:5:7: There is no part X in voice 1."},
                    OrderMistake{"OpenBracket", "A(BA", "t.abc:5:4: This bracket is never closed."},
                    OrderMistake{"Nought", "A0B", "t.abc:5:4: A part cannot be played 0 times."},
                    OrderMistake{"TooMany", "A999B9", "t.abc:5:7: An order has at most 1000 parts."},
                    OrderMistake{"TooManyInGroups", "((((A99)99)99)99)99",
                                 "t.abc:5:6: An order has at most 1000 parts."},
                    OrderMistake{"HugeNumber", "A999999", "t.abc:5:4: This number is too large."}),
    [](const auto& info) { return info.param.name; });

TEST(AbcParts, AnOrderInNoFormIsToldWithItsPlace) {
  for (const auto& [order, column] : std::initializer_list<std::pair<const char*, int>>{
           {"ab", 3}, {"A)", 4}, {"2A", 3}, {"A-B", 4}, {"A,B", 4}, {"Intro", 4}}) {
    const std::string message = "t.abc:5:" + std::to_string(column) + kForm;
    EXPECT_EQ(MistakeOf("X:1\nT:t\nM:4/4\nL:1/4\nP:" + QByteArray(order) + "\nK:C\nP:A\nA4 |\n"), message)
        << order;
  }
  const QByteArray deep = QByteArray("(").repeated(21) + "A" + QByteArray(")").repeated(21);
  EXPECT_EQ(MistakeOf("X:1\nT:t\nM:4/4\nL:1/4\nP:" + deep + "\nK:C\nP:A\nA4 |\n"),
            std::string("t.abc:5:23") + kForm);
}

TEST(AbcParts, APartThatOneVoiceLacksIsToldWithThePlaceInTheOrder) {
  EXPECT_EQ(MistakeOf("X:1\nT:t\nM:4/4\nL:1/4\nP:AB\nK:C\nV:1\nP:A\nA4 |\nP:B\nB4 |\nV:2\nP:A\nA8 |\n"),
            "t.abc:5:4: There is no part B in voice 2.");
}

TEST(AbcParts, APartThatBeginsTwiceIsToldWithItsPlace) {
  EXPECT_EQ(MistakeOf("X:1\nT:t\nM:4/4\nL:1/4\nP:AB\nK:C\nP:A\nA4 |\nP:B\nB4 |\nP:A\nC4 |\n"),
            "t.abc:11:1: Part A begins twice.");
}

TEST(AbcParts, ALabelThatNoOrderCanNameIsToldWithItsPlace) {
  EXPECT_EQ(MistakeOf("X:1\nT:t\nM:4/4\nL:1/4\nP:A\nK:C\nP:A\nA4 |\nP:Trio\nB4 |\n"),
            "t.abc:9:1: A part that an order can name is one capital letter.");
}

TEST(AbcParts, PartsThatMakeATuneTooLongAreToldAndNotPlayed) {
  const QByteArray body = "P:A\n" + QByteArray("CDEF|\n").repeated(500);
  EXPECT_EQ(MistakeOf("X:1\nT:t\nM:4/4\nL:1/4\nP:A1000\nK:C\n" + body),
            "t.abc:5:3: With its parts this voice is too long.");
}

}  // namespace
}  // namespace zelmar
