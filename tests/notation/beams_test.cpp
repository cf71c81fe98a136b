// Beams of quavers and semiquavers where a beat is a crotchet, and each way in which a beam breaks.
#include <algorithm>
#include <cmath>
#include <limits>

#include "notation/bar_fixture.h"

namespace zelmar {
namespace {

class Beams : public BarTest {
 protected:
  struct Note {
    int beat;
    int tick;
    double duration;
    int pitch = 67;
  };

  void ShowNotes(const std::vector<Note>& notes) {
    StartTune();
    for (const Note& note : notes) AddNote(note.pitch, note.beat, note.tick, note.duration);
    Show();
  }
};

TEST_F(Beams, TwoQuaversOfABeatAreJoined) {
  ShowNotes({{2, 0, 0.5, 67}, {2, 60, 0.5, 69}});
  EXPECT_EQ(CountOf(Role::kFlag), 0U);
  const auto beams = Of(Role::kBeam);
  ASSERT_EQ(beams.size(), 1U);
  ExpectLine(beams[0], {BeatX(2) + 0.5, StepY(3) - 2.0, BeatX(2.5) + 0.5, StepY(4) - 2.0}, 3.0, kBlackInk);
  ASSERT_EQ(CountOf(Role::kStem), 2U);
}

TEST_F(Beams, TwoSemiquaversHaveASecondBeamTowardTheHeads) {
  for (const bool up : {true, false}) {
    SCOPED_TRACE(up);
    const int first = up ? 67 : 74;
    const int step = up ? 3 : 7;
    const double side = up ? 1.0 : -1.0;
    ShowNotes({{2, 30, 0.25, first}, {2, 60, 0.25, first}});
    EXPECT_EQ(CountOf(Role::kFlag), 0U);
    const auto beams = Of(Role::kBeam);
    ASSERT_EQ(beams.size(), 2U);
    for (std::size_t i = 0; i < 2; ++i) {
      const double y = StepY(step) - side * (2.0 - 0.75 * static_cast<double>(i));
      ExpectLine(beams[i], {BeatX(2.25) + side * 0.5, y, BeatX(2.5) + side * 0.5, y}, 3.0, kBlackInk);
    }
  }
}

TEST_F(Beams, APartnerTakesTheStemOfTheNoteThatWaits) {
  ShowNotes({{1, 0, 0.5, 60}, {1, 60, 0.5, 79}});
  const auto stems = Of(Role::kStem);
  ASSERT_EQ(stems.size(), 2U);
  ExpectLine(stems[1], {BeatX(1.5) + 0.5, StepY(10), BeatX(1.5) + 0.5, StepY(10) - 2.0}, 2.0, kBlackInk);
}

TEST_F(Beams, FourSemiquaversAreTwoPairs) {
  ShowNotes({{1, 0, 0.25}, {1, 30, 0.25}, {1, 60, 0.25}, {1, 90, 0.25}});
  EXPECT_EQ(CountOf(Role::kBeam), 4U);
  EXPECT_EQ(CountOf(Role::kFlag), 0U);
}

TEST_F(Beams, ThreeQuaversOfABeatAreAPairAndOneWithItsFlag) {
  ShowNotes({{1, 0, 0.4}, {1, 40, 0.4}, {1, 80, 0.4}});
  EXPECT_EQ(CountOf(Role::kBeam), 1U);
  ASSERT_EQ(CountOf(Role::kFlag), 1U);
  EXPECT_NEAR(Of(Role::kFlag)[0].from.x(), (BeatX(1.0 + 80.0 / 120.0) + 0.5) * kGap, kClose);
}

struct BreakRow {
  const char* name;
  std::vector<std::array<double, 3>> notes;  // beat, tick, duration
  std::size_t beams;
  std::size_t flags;
};

TEST_F(Beams, ABeamBreaksWhereItsRuleEnds) {
  const BreakRow kRows[] = {
      {"quavers 70 pulses apart", {{1, 0, 0.5}, {1, 70, 0.5}}, 1, 0},
      {"quavers 71 pulses apart", {{1, 0, 0.5}, {1, 71, 0.5}}, 0, 2},
      {"quavers 80 pulses apart", {{1, 0, 0.5}, {1, 80, 0.5}}, 0, 2},
      {"quavers of two beats", {{1, 60, 0.5}, {2, 0, 0.5}}, 0, 2},
      {"a quaver alone", {{1, 0, 0.5}}, 0, 1},
      {"a quaver before a crotchet", {{1, 0, 0.5}, {1, 60, 1.0}}, 0, 1},
      {"a quaver before a semiquaver", {{1, 0, 0.5}, {1, 60, 0.25}}, 0, 3},
      {"a quaver before a dotted quaver", {{1, 0, 0.5}, {1, 60, 0.75}}, 0, 2},
      {"a quaver before a note too short to be seen", {{1, 0, 0.5}, {1, 30, 0.1}, {1, 60, 0.5}}, 0, 2},
      {"semiquavers 40 pulses apart", {{1, 0, 0.25}, {1, 40, 0.25}}, 2, 0},
      {"semiquavers 41 pulses apart", {{1, 0, 0.25}, {1, 41, 0.25}}, 0, 4},
      {"semiquavers of two beats", {{1, 90, 0.25}, {2, 0, 0.25}}, 0, 4},
      {"a semiquaver alone", {{1, 0, 0.25}}, 0, 2},
      {"a semiquaver before a quaver", {{1, 0, 0.25}, {1, 30, 0.5}}, 0, 3},
      {"a semiquaver before one of 0.37", {{1, 0, 0.25}, {1, 30, 0.37}}, 0, 4},
      {"a semiquaver before one of 0.36", {{1, 0, 0.25}, {1, 30, 0.36}}, 2, 0},
      {"a dotted quaver and its semiquaver", {{1, 0, 0.75}, {1, 90, 0.25}}, 0, 3},
      {"a dotted quaver never waits", {{1, 0, 0.75}, {1, 60, 0.5}}, 0, 2},
  };
  for (const BreakRow& row : kRows) {
    SCOPED_TRACE(row.name);
    std::vector<Note> notes;
    for (const auto& [beat, tick, duration] : row.notes)
      notes.push_back({static_cast<int>(beat), static_cast<int>(tick), duration});
    ShowNotes(notes);
    EXPECT_EQ(CountOf(Role::kBeam), row.beams);
    EXPECT_EQ(CountOf(Role::kFlag), row.flags);
  }
}

TEST_F(Beams, ABeamNeverCrossesABarLine) {
  StartTune();
  AddNote(67, 1, 0, 0.5, u" ", 1);
  AddNote(67, 1, 30, 0.5, u" ", 2);
  for (const std::int16_t bar : {std::int16_t{1}, std::int16_t{2}}) {
    Show(bar);
    EXPECT_EQ(CountOf(Role::kNoteHead), 1U);
    EXPECT_EQ(CountOf(Role::kFlag), 1U);
    EXPECT_EQ(CountOf(Role::kBeam), 0U);
  }
}

TEST_F(Beams, ACancelledNoteGetsItsFlagInItsOwnPlaceAndColour) {
  StartTune();
  AddNote(67, 1, 0, 0.5);
  AddNote(79, 2, 0, 1.0);
  sheet_.Attach(tune_);
  sheet_.DisplayBar(1, 1, 1);
  const auto flags = Of(Role::kFlag);
  ASSERT_EQ(flags.size(), 1U);
  ExpectLine(flags[0], {2.5, StepY(3) - 2.0, 3.0, StepY(3) - 1.5}, 2.0, kRedInk);
  // The crotchet keeps its own stem, which goes down.
  const Primitive last_stem = Of(Role::kStem).back();
  ExpectLine(last_stem, {BeatX(2) - 0.5, StepY(10), BeatX(2) - 0.5, StepY(10) + 2.0}, 2.0, kBlackInk);
}

TEST_F(Beams, AFlagGoesOnTheStemThatStands) {
  // Between the middles of chord and single note: its stem went down, and stays down.
  sheet_.SetClef(QStringLiteral("Bass"));
  ShowNotes({{1, 0, 0.5, 51}});
  for (const Primitive& stem : Of(Role::kStem)) EXPECT_GT(stem.to.y(), stem.from.y());
  EXPECT_EQ(CountOf(Role::kFlag), 1U);
}

TEST_F(Beams, WithBeamingOffEveryNoteHasItsFlagsAtOnce) {
  sheet_.SetBeamingOn(false);
  ShowNotes({{1, 0, 0.5}, {1, 60, 0.5}, {2, 0, 0.25}, {2, 30, 0.25}});
  EXPECT_EQ(CountOf(Role::kBeam), 0U);
  EXPECT_EQ(CountOf(Role::kFlag), 6U);
  EXPECT_EQ(CountOf(Role::kStem), 4U);
}

TEST_F(Beams, ChordsAreJoinedAsOneNoteEach) {
  ShowNotes({{1, 0, 0.5, 60}, {1, 0, 0.5, 64}, {1, 60, 0.5, 62}, {1, 60, 0.5, 65}});
  EXPECT_EQ(CountOf(Role::kFlag), 0U);
  const auto beams = Of(Role::kBeam);
  ASSERT_EQ(beams.size(), 1U);
  // From the top of one chord to the top of the other.
  ExpectLine(beams[0], {2.5, StepY(1) - 2.0, BeatX(1.5) + 0.5, StepY(2) - 2.0}, 3.0, kBlackInk);
  EXPECT_EQ(CountOf(Role::kStem), 4U);
}

TEST_F(Beams, APartnerChordTurnsItsSecondsWithItsStem) {
  // The second chord alone would point down and push its lower head to the left.
  ShowNotes({{1, 0, 0.5, 60}, {1, 60, 0.5, 79}, {1, 60, 0.5, 81}});
  const auto heads = Of(Role::kNoteHead);
  ASSERT_EQ(heads.size(), 3U);
  EXPECT_NEAR(heads[1].from.x(), BeatX(1.5) * kGap, kClose);
  EXPECT_NEAR(heads[2].from.x(), (BeatX(1.5) + 1.0) * kGap, kClose);
  ASSERT_EQ(CountOf(Role::kBeam), 1U);
  EXPECT_NEAR(Of(Role::kBeam)[0].to.y(), (StepY(11) - 2.0) * kGap, kClose) << "at the upper note's stem";
}

TEST_F(Beams, CancellingWhereNothingWaitsDrawsNothing) {
  StartTune();
  Show();
  const std::size_t before = sheet_.StaffDrawing().Primitives().size();
  BarNotes notes = sheet_.StartNotes();
  notes.CancelHangingQuaver(kQuaverFlags, HangingStem::kFirst);
  notes.CancelHangingQuaver(kSemiquaverFlags, HangingStem::kFirst);
  notes.CancelHangingQuaver(kQuaverFlags, HangingStem::kSecond);
  notes.CancelHangingQuaver(kQuaverFlags, HangingStem::kEndOfBar);
  EXPECT_EQ(sheet_.StaffDrawing().Primitives().size(), before);
}

// --- Compound time ---

class CompoundTime : public BarTest {
 protected:
  // Notes of beat and duration, on the G line unless told.
  struct Note {
    int beat;
    double duration;
    int pitch = 67;
    int tick = 0;
  };

  void ShowNotes(const std::vector<Note>& notes, std::int16_t beats = 6) {
    StartTune(beats, 8);
    for (const Note& note : notes) AddNote(note.pitch, note.beat, note.tick, note.duration);
    Show();
  }
};

TEST_F(CompoundTime, ThreeQuaversOfAGroupShareABeam) {
  for (const int first : {1, 4, 7, 10}) {
    SCOPED_TRACE(first);
    ShowNotes({{first, 0.5, 67}, {first + 1, 0.5, 69}, {first + 2, 0.5, 71}}, 12);
    EXPECT_EQ(CountOf(Role::kFlag), 0U);
    const auto beams = Of(Role::kBeam);
    ASSERT_EQ(beams.size(), 1U);
    ExpectLine(beams[0], {BeatX(first) + 0.5, StepY(3) - 2.0, BeatX(first + 2) + 0.5, StepY(5) - 2.0}, 3.0,
               kBlackInk);
  }
}

TEST_F(CompoundTime, TheMiddleStemMeetsTheBeam) {
  for (const int middle : {60, 71, 77}) {
    SCOPED_TRACE(middle);
    ShowNotes({{1, 0.5, 67}, {2, 0.5, middle}, {3, 0.5, 67}});
    ASSERT_EQ(CountOf(Role::kBeam), 1U);
    const auto stems = Of(Role::kStem);
    ASSERT_EQ(stems.size(), 3U);
    EXPECT_EQ(stems[1].from.x(), stems[1].to.x());
    // A head beyond the beam keeps its stem.
    EXPECT_NEAR(stems[1].to.y(), (middle == 77 ? StepY(9) - 2.0 : StepY(3) - 2.0) * kGap, kClose);
  }
}

TEST_F(CompoundTime, AGroupPointsAsItsFirstNote) {
  ShowNotes({{4, 0.5, 60}, {5, 0.5, 79}, {6, 0.5, 79}});
  EXPECT_EQ(CountOf(Role::kBeam), 1U);
  for (const Primitive& stem : Of(Role::kStem)) EXPECT_GT(stem.from.x(), 0.0);
  const auto stems = Of(Role::kStem);
  ASSERT_EQ(stems.size(), 3U);
  EXPECT_LT(stems[2].to.y(), stems[2].from.y());
}

struct GroupRow {
  const char* name;
  std::vector<std::array<double, 2>> notes;  // beat, duration
  std::size_t beams;
  std::size_t flags;
};

TEST_F(CompoundTime, ABrokenGroupFallsBackToFlags) {
  const GroupRow kRows[] = {
      {"one alone", {{1, 0.5}}, 0, 1},
      {"two at the end of the bar", {{4, 0.5}, {5, 0.5}}, 0, 2},
      {"two and a semiquaver", {{1, 0.5}, {2, 0.5}, {3, 0.25}}, 0, 4},
      {"two of another group", {{1, 0.5}, {2, 0.5}, {4, 0.5}, {5, 0.5}, {6, 0.5}}, 1, 2},
      {"a gap in the middle", {{1, 0.5}, {3, 0.5}}, 0, 2},
      {"a crotchet in the middle", {{1, 0.5}, {2, 1.0}}, 0, 1},
      {"a start inside a group", {{2, 0.5}, {3, 0.5}, {4, 0.5}}, 0, 3},
      {"semiquavers in the middle", {{1, 0.5}, {2, 0.25}, {3, 0.5}}, 0, 4},
      {"two whole groups", {{1, 0.5}, {2, 0.5}, {3, 0.5}, {4, 0.5}, {5, 0.5}, {6, 0.5}}, 2, 0},
  };
  for (const GroupRow& row : kRows) {
    SCOPED_TRACE(row.name);
    std::vector<Note> notes;
    for (const auto& [beat, duration] : row.notes) notes.push_back({static_cast<int>(beat), duration});
    ShowNotes(notes);
    EXPECT_EQ(CountOf(Role::kBeam), row.beams);
    EXPECT_EQ(CountOf(Role::kFlag), row.flags);
  }
}

TEST_F(CompoundTime, SemiquaversOfABeatArePairs) {
  ShowNotes({{1, 0.25, 67, 0}, {1, 0.25, 67, 30}, {2, 0.25, 67, 0}, {2, 0.25, 67, 30}});
  EXPECT_EQ(CountOf(Role::kBeam), 4U);
  EXPECT_EQ(CountOf(Role::kFlag), 0U);
}

TEST_F(CompoundTime, AMinimIsADottedCrotchetAndAQuaverRest) {
  ShowNotes({{1, 2.0}});
  ASSERT_EQ(CountOf(Role::kNoteHead), 1U);
  EXPECT_TRUE(Of(Role::kNoteHead)[0].filled);
  EXPECT_EQ(CountOf(Role::kDot), 1U);
  const auto rests = Of(Role::kQuaverRest);
  ASSERT_EQ(rests.size(), 1U);
  EXPECT_NEAR(sheet_.StaffDrawing().PathOf(rests[0]).boundingRect().center().x(), BeatX(4) * kGap,
              0.5 * kGap);
}

TEST_F(CompoundTime, AChordOfMinimsHasOneRestAndNoneFallsBehindTheBarLine) {
  ShowNotes({{1, 2.0, 64}, {1, 2.0, 67}});
  EXPECT_EQ(CountOf(Role::kNoteHead), 2U);
  EXPECT_EQ(CountOf(Role::kQuaverRest), 1U);
  ShowNotes({{4, 2.0}});
  EXPECT_EQ(CountOf(Role::kNoteHead), 1U);
  EXPECT_EQ(CountOf(Role::kQuaverRest), 0U);
}

struct SplitRow {
  const char* name;
  int beat;
  double duration;
  std::size_t heads;
  std::size_t dots;
};

TEST_F(CompoundTime, ANoteThatRunsOverTheGroupIsSplitAndTied) {
  constexpr SplitRow kRows[] = {
      {"a crotchet: two quavers", 3, 1.0, 2, 0},
      {"a dotted crotchet", 6, 1.5, 2, 0},
      {"a minim: and a dotted crotchet", 9, 2.0, 2, 1},
      {"just long enough", 3, 0.624, 1, 0},
      {"a minim of the middle beat is none", 2, 1.0, 1, 0},
      {"a quaver is none", 3, 0.5, 1, 0},
  };
  for (const SplitRow& row : kRows) {
    SCOPED_TRACE(row.name);
    ShowNotes({{row.beat, row.duration, 71}}, 12);
    const auto heads = Of(Role::kNoteHead);
    ASSERT_EQ(heads.size(), row.heads);
    EXPECT_EQ(CountOf(Role::kDot), row.dots);
    EXPECT_NEAR(heads[0].from.x(), BeatX(row.beat) * kGap, kClose);
    const bool split = row.beat % 3 == 0 && row.duration >= 0.624;
    const auto ties = Of(Role::kTie);
    ASSERT_EQ(ties.size(), split ? 1U : 0U);
    if (!split) continue;
    if (row.heads == 2) {
      EXPECT_NEAR(heads[1].from.x(), BeatX(row.beat + 1) * kGap, kClose);
      EXPECT_EQ(heads[1].from.y(), heads[0].from.y());
    }
    const Primitive& tie = ties[0];
    EXPECT_EQ(tie.shape, Shape::kArc);
    EXPECT_NEAR(tie.from.x(), BeatX(row.beat + 0.5) * kGap, kClose);
    EXPECT_NEAR(tie.from.y(), (StepY(5) + 0.5) * kGap, kClose);
    EXPECT_NEAR(tie.radius, 2.0 * kGap, kClose);
    EXPECT_EQ(tie.start_angle, 0.7);
    EXPECT_EQ(tie.end_angle, 2.3);
    EXPECT_EQ(tie.aspect, 0.8);
  }
}

TEST_F(CompoundTime, WhatIsLeftOfASplitNoteIsWrittenByTheTableAlone) {
  ShowNotes({{3, 2.5}}, 12);
  const auto heads = Of(Role::kNoteHead);
  ASSERT_EQ(heads.size(), 2U);
  EXPECT_TRUE(heads[0].filled);
  EXPECT_FALSE(heads[1].filled) << "a minim";
  const auto stems = Of(Role::kStem);
  EXPECT_TRUE(std::any_of(stems.begin(), stems.end(), [&](const Primitive& stem) {
    return std::abs(stem.from.x() - (BeatX(4) + 0.5) * kGap) < kClose;
  }));
  EXPECT_EQ(CountOf(Role::kDot), 0U);
  EXPECT_EQ(CountOf(Role::kQuaverRest), 0U);
}

struct OddDurationRow {
  const char* name;
  double duration;
  std::size_t heads;  // in the middle of the bar
};

TEST_F(CompoundTime, NothingNegativeAndHugeAtTheEndOfAGroup) {
  constexpr OddDurationRow kRows[] = {
      {"nothing", 0.0, 0},
      {"negative", -1.0, 0},
      {"negative and huge", -1e300, 0},
      {"huge", 1e300, 2},
      {"endless", std::numeric_limits<double>::infinity(), 2},
      {"no number", std::numeric_limits<double>::quiet_NaN(), 0},
  };
  for (const OddDurationRow& row : kRows)
    for (const int beats : {6, 9, 12})
      for (int beat = 3; beat <= std::min(beats, 9); beat += 3) {
        SCOPED_TRACE(testing::Message() << row.name << " on " << beat << " of " << beats);
        ShowNotes({{beat, row.duration, 71}}, static_cast<std::int16_t>(beats));
        const bool last = beat == beats;
        const auto heads = Of(Role::kNoteHead);
        ASSERT_EQ(heads.size(), last ? row.heads / 2 : row.heads);
        EXPECT_EQ(CountOf(Role::kTie), last ? 0U : row.heads / 2);
        EXPECT_EQ(CountOf(Role::kFlag), row.heads / 2);
        if (heads.size() == 2) {
          EXPECT_FALSE(heads[1].filled) << "a semibreve";
        }
        EXPECT_EQ(CountOf(Role::kStem), row.heads / 2);
      }
}

TEST_F(CompoundTime, NoTieCrossesTheBarLine) {
  ShowNotes({{6, 1.0}});
  ASSERT_EQ(CountOf(Role::kNoteHead), 1U);
  EXPECT_EQ(CountOf(Role::kFlag), 1U) << "a quaver";
  EXPECT_EQ(CountOf(Role::kTie), 0U);
}

TEST_F(CompoundTime, TheSecondHeadHasItsLedgerLinesAndNoSignOfItsOwn) {
  ShowNotes({{3, 1.5, 61}});
  ASSERT_EQ(CountOf(Role::kNoteHead), 2U);
  EXPECT_EQ(CountOf(Role::kSharp), 4U);
  const auto lines = Of(Role::kLedgerLine);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_NE(lines[0].from.x(), lines[1].from.x());
}

TEST_F(CompoundTime, ASplitNoteEndsTheGroupBeforeIt) {
  ShowNotes({{1, 0.5}, {2, 0.5}, {3, 1.0}, {5, 0.5}, {6, 0.5}});
  // Its quaver is the third of one group, its remainder the first of the next.
  EXPECT_EQ(CountOf(Role::kBeam), 2U);
  EXPECT_EQ(CountOf(Role::kTie), 1U);
  EXPECT_EQ(CountOf(Role::kFlag), 0U);
}

TEST_F(CompoundTime, NothingIsSplitWhereTheBeatIsACrotchet) {
  StartTune(4, 4);
  AddNote(67, 3, 0, 1.0);
  Show();
  EXPECT_EQ(CountOf(Role::kNoteHead), 1U);
  EXPECT_EQ(CountOf(Role::kTie), 0U);
}

}  // namespace
}  // namespace zelmar
