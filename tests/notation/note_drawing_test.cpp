// One note: where it stands, its head, stem, flags and dot, and its ledger lines.
#include <cmath>
#include <limits>
#include <map>

#include "notation/bar_fixture.h"

namespace zelmar {
namespace {

using NoteDrawing = BarTest;

constexpr double kHeadRadius = 3.0 / 8.0;

struct PitchRow {
  int step;
  std::vector<int> treble;
  std::vector<int> bass;
};

const PitchRow kPitchRows[] = {
    {-4, {55}, {34, 35}},    {-3, {56, 57}, {36, 37}}, {-2, {58, 59}, {38}},    {-1, {60, 61}, {39, 40}},
    {0, {62}, {41, 42}},     {1, {63, 64}, {43}},      {2, {65, 66}, {44, 45}}, {3, {67}, {46, 47}},
    {4, {68, 69}, {48, 49}}, {5, {70, 71}, {50}},      {6, {72, 73}, {51, 52}}, {7, {74}, {53, 54}},
    {8, {75, 76}, {55}},     {9, {77, 78}, {56, 57}},  {10, {79}, {58, 59}},    {11, {80, 81}, {60, 61}},
    {12, {82, 83}, {62}},    {13, {84, 85}, {63, 64}}, {14, {86}, {65}},
};

TEST_F(NoteDrawing, EveryPitchStandsOnItsStep) {
  for (const PitchRow& row : kPitchRows) {
    for (const bool treble : {true, false}) {
      sheet_.SetClef(treble ? QStringLiteral("Treble") : QStringLiteral("Bass"));
      for (const int pitch : treble ? row.treble : row.bass) {
        SCOPED_TRACE(pitch);
        StartTune();
        AddNote(pitch, 2, 60);
        Show();
        ASSERT_EQ(CountOf(Role::kNoteHead), 1U);
        ExpectCircle(Of(Role::kNoteHead)[0], BeatX(2.5), StepY(row.step), kHeadRadius, true);
      }
    }
  }
}

TEST_F(NoteDrawing, SpellingMovesTheNoteByAStep) {
  struct Row {
    int pitch;
    const char16_t* mark;
    int step;
    Role sign;
  };
  constexpr Row kRows[] = {{63, u"#", 0, Role::kSharp},  {63, u" ", 1, Role::kFlat},
                           {63, u"", 1, Role::kFlat},    {61, u"b", 0, Role::kFlat},
                           {61, u" ", -1, Role::kSharp}, {65, u"#", 1, Role::kSharp},
                           {71, u"b", 6, Role::kFlat}};
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.pitch);
    StartTune();
    AddNote(row.pitch, 1, 0, 1.0, row.mark);
    Show();
    ASSERT_EQ(CountOf(Role::kNoteHead), 1U);
    EXPECT_NEAR(Of(Role::kNoteHead)[0].from.y(), StepY(row.step) * kGap, kClose);
    EXPECT_GT(CountOf(row.sign), 0U);
    EXPECT_EQ(CountOf(row.sign == Role::kSharp ? Role::kFlat : Role::kSharp), 0U);
  }
}

TEST_F(NoteDrawing, ASpellingThatLeavesTheStaffIsNotDrawn) {
  for (const auto& [pitch, mark] : {std::pair(55, u"#"), std::pair(86, u"b")}) {
    StartTune();
    AddNote(pitch, 1, 0, 1.0, mark);
    Show();
    EXPECT_EQ(CountOf(Role::kNoteHead), 0U);
    EXPECT_EQ(CountOf(Role::kLedgerLine), 0U);
  }
}

struct CompassRow {
  const char* clef;
  std::uint8_t ledger_lines;
  int lowest;
  int highest;
};

TEST_F(NoteDrawing, AStaffShowsItsShareOfThePitches) {
  constexpr CompassRow kRows[] = {{"Treble", 0, 62, 86}, {"Treble", 1, 58, 86}, {"Treble", 2, 55, 86},
                                  {"Bass", 0, 34, 59},   {"Bass", 1, 34, 62},   {"Bass", 2, 34, 65}};
  for (const CompassRow& row : kRows) {
    sheet_.SetClef(QString::fromLatin1(row.clef));
    sheet_.SetMiddleLedgerLines(row.ledger_lines);
    for (int pitch = 0; pitch <= 127; ++pitch) {
      StartTune();
      AddNote(pitch);
      Show();
      EXPECT_EQ(CountOf(Role::kNoteHead), pitch >= row.lowest && pitch <= row.highest ? 1U : 0U)
          << row.clef << " " << int{row.ledger_lines} << " " << pitch;
    }
  }
}

TEST_F(NoteDrawing, MiddleCNeedsItsLedgerLine) {
  StartTune();
  AddNote(60);
  sheet_.SetMiddleLedgerLines(0);
  Show();
  EXPECT_EQ(CountOf(Role::kNoteHead), 0U);
  sheet_.SetMiddleLedgerLines(2);
  Show();
  EXPECT_EQ(CountOf(Role::kNoteHead), 1U);
  ASSERT_EQ(CountOf(Role::kLedgerLine), 1U);
  ExpectLine(Of(Role::kLedgerLine)[0], {1.0, 9.0, 3.0, 9.0}, 1.0, kBlackInk);
}

// The ledger steps between the staff and each step that has any.
const std::map<int, std::vector<int>> kLedgerSteps = {{-4, {-1, -3}}, {-3, {-1, -3}}, {-2, {-1}},
                                                      {-1, {-1}},     {11, {11}},     {12, {11}},
                                                      {13, {11, 13}}, {14, {11, 13}}};

TEST_F(NoteDrawing, LedgerLinesLeadFromTheStaffToTheNote) {
  constexpr int kNaturals[] = {55, 57, 59, 60, 62, 64, 65, 67, 69, 71, 72, 74, 76, 77, 79, 81, 83, 84, 86};
  for (int step = -4; step <= 14; ++step) {
    SCOPED_TRACE(step);
    StartTune();
    AddNote(kNaturals[step + 4], 2);
    Show();
    const auto found = kLedgerSteps.find(step);
    const std::vector<int> expected = found == kLedgerSteps.end() ? std::vector<int>{} : found->second;
    const auto lines = Of(Role::kLedgerLine);
    ASSERT_EQ(lines.size(), expected.size());
    for (std::size_t i = 0; i < lines.size(); ++i)
      ExpectLine(lines[i], {BeatX(2) - 1.0, StepY(expected[i]), BeatX(2) + 1.0, StepY(expected[i])}, 1.0,
                 kBlackInk);
  }
}

// --- Durations ---

struct DurationRow {
  const char* name;
  double from;
  double to;
  bool filled;
  bool stem;
  std::size_t flags;
  bool dot;
};

constexpr DurationRow kDurationRows[] = {
    // name            from   to    filled stem   flags dot
    {"semibreve", 3.125, 1000.0, false, false, 0, false},
    {"dotted minim", 2.126, 3.124, false, true, 0, true},
    {"minim", 1.876, 2.125, false, true, 0, false},
    {"dotted crotchet", 1.126, 1.875, true, true, 0, true},
    {"crotchet", 0.876, 1.125, true, true, 0, false},
    {"dotted quaver", 0.626, 0.875, true, true, 1, true},
    {"quaver", 0.376, 0.625, true, true, 1, false},
    {"semiquaver", 0.126, 0.375, true, true, 2, false},
};

class Durations : public BarTest,
                  public ::testing::WithParamInterface<std::tuple<DurationRow, bool, bool, const char*>> {};

TEST_P(Durations, EachIsWrittenAsItsNote) {
  const auto [row, up, beaming, colour] = GetParam();
  SCOPED_TRACE(row.name);
  sheet_.SetBeamingOn(beaming);
  for (const double duration : {row.from, (row.from + row.to) / 2.0, row.to}) {
    SCOPED_TRACE(duration);
    StartTune();
    AddNote(up ? 69 : 74, 2, 0, duration);
    sheet_.Attach(tune_);
    const bool red = std::string(colour) == "Red";
    sheet_.DisplayBar(1, 1, red ? 1 : 0, red ? 0 : 1);
    const InkColour ink = red ? kRedInk : kBlueInk;
    const double x = BeatX(2);
    const double y = StepY(up ? 4 : 7);
    const double side = up ? 1.0 : -1.0;  // the stem stands at the right of its head when it goes up
    const double end_y = y - side * 2.0;

    ASSERT_EQ(CountOf(Role::kNoteHead), 1U);
    ExpectCircle(Of(Role::kNoteHead)[0], x, y, kHeadRadius, row.filled, ink);
    EXPECT_EQ(Of(Role::kNoteHead)[0].pen_width, 3.0);

    // A note that found no partner has drawn its stem twice: once waiting, once with its flags.
    const auto stems = Of(Role::kStem);
    EXPECT_EQ(stems.empty(), !row.stem);
    for (const Primitive& stem : stems)
      ExpectLine(stem, {x + side / 2.0, y, x + side / 2.0, end_y}, 2.0, ink);

    const auto flags = Of(Role::kFlag);
    ASSERT_EQ(flags.size(), row.flags);
    for (std::size_t i = 0; i < flags.size(); ++i) {
      const double flag_y = end_y + side * 0.5 * static_cast<double>(i);
      ExpectLine(flags[i], {x + side / 2.0, flag_y, x + side / 2.0 + 0.5, flag_y + side * 0.5}, 2.0, ink);
    }
    EXPECT_EQ(CountOf(Role::kBeam), 0U);
    ASSERT_EQ(CountOf(Role::kDot), row.dot ? 1U : 0U);
    if (row.dot) ExpectCircle(Of(Role::kDot)[0], x + 1.0, y, 0.1, true, ink);
  }
}

INSTANTIATE_TEST_SUITE_P(AllValues, Durations,
                         ::testing::Combine(::testing::ValuesIn(kDurationRows), ::testing::Bool(),
                                            ::testing::Bool(), ::testing::Values("Red", "Blue")));

TEST_F(NoteDrawing, ADurationBetweenTheRangesHasNoHead) {
  constexpr double kNone[] = {2.1255, 1.8755, 1.1255, 0.8755, 0.6255, 0.3755, 0.1255, 0.1, 0.0, -1.0, -1e9};
  for (const double duration : kNone) {
    SCOPED_TRACE(duration);
    StartTune();
    AddNote(72, 1, 0, duration);
    Show();
    EXPECT_EQ(CountOf(Role::kNoteHead) + CountOf(Role::kStem) + CountOf(Role::kFlag), 0U);
  }
  StartTune();
  AddNote(72, 1, 0, std::nan(""));
  Show();
  EXPECT_EQ(CountOf(Role::kNoteHead), 0U);
}

TEST_F(NoteDrawing, AnEndlessDurationIsASemibreve) {
  for (const double duration : {3.125, 1e300, std::numeric_limits<double>::infinity()}) {
    StartTune();
    AddNote(72, 1, 0, duration);
    Show();
    ASSERT_EQ(CountOf(Role::kNoteHead), 1U);
    EXPECT_FALSE(Of(Role::kNoteHead)[0].filled);
    EXPECT_EQ(CountOf(Role::kStem), 0U);
  }
}

// --- Stems that nothing has decided yet ---

struct StemRow {
  const char* clef;
  std::int16_t pitch;
  bool up;
};

TEST_F(NoteDrawing, AnUndecidedStemGoesTowardTheMiddleLine) {
  constexpr StemRow kRows[] = {
      {"Treble", 71, true}, {"Treble", 72, false}, {"Bass", 51, true}, {"Bass", 52, false}, {"", 86, true}};
  for (const StemRow& row : kRows) {
    SCOPED_TRACE(row.pitch);
    sheet_.SetClef(QString::fromLatin1(row.clef));
    StartTune();
    Show();
    sheet_.StartNotes().DrawStem(row.pitch, 0, QStringLiteral("Black"));
    ASSERT_EQ(CountOf(Role::kStem), 1U);
    const Primitive stem = Of(Role::kStem)[0];
    EXPECT_EQ(stem.to.y() < stem.from.y(), row.up);
  }
}

TEST_F(NoteDrawing, AnUnknownColourIsBlack) {
  StartTune();
  const auto tone = AddNote(71);
  Show();
  sheet_.StartNotes().DrawNote(*tone, QStringLiteral("Green"));
  EXPECT_EQ(Of(Role::kNoteHead).back().colour, kBlackInk);
  sheet_.StartNotes().DrawNote(*tone);
  EXPECT_EQ(Of(Role::kNoteHead).back().colour, kBlackInk);
}

TEST_F(NoteDrawing, BadMeasuresAreDrawnAsIfTheyWereOneBeat) {
  for (const std::int16_t beats : {std::int16_t{0}, std::int16_t{-3}}) {
    StartTune();
    tune_->SetBeatsPerBar(beats);
    tune_->SetBeatLength(0);
    AddNote(72);
    Show();
    ASSERT_EQ(CountOf(Role::kNoteHead), 1U);
    EXPECT_TRUE(std::isfinite(Of(Role::kNoteHead)[0].from.x()));
  }
}

}  // namespace
}  // namespace zelmar
