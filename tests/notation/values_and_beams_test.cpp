// How every duration is drawn, which notes are joined, and which chords are too large.
#include "bar_fixture.h"

namespace zelmar {
namespace {

// --- Values of notes ---

TEST_F(BarTest, EveryDurationIsDrawnAsItsValue) {
  struct Value {
    double from, to;
    bool open, stem;
    int flags;
    bool dot;
  };
  static const Value kValues[] = {
      {3.125, 1e9, true, false, 0, false},   {2.126, 3.125, true, true, 0, true},
      {1.876, 2.125, true, true, 0, false},  {1.126, 1.875, false, true, 0, true},
      {0.876, 1.125, false, true, 0, false}, {0.626, 0.875, false, true, 1, true},
      {0.376, 0.625, false, true, 1, false}, {0.126, 0.375, false, true, 2, false}};
  for (int thousandths = 20; thousandths <= 4600; thousandths += 7) {
    const double duration = thousandths / 1000.0;
    StartTune();
    AddNote(67, 1, 0, duration);
    Show();
    const Value* value = nullptr;
    for (const Value& row : kValues)
      if (value == nullptr && duration >= row.from && duration <= row.to) value = &row;
    const auto heads = Of(Role::kNoteHead);
    ASSERT_EQ(heads.size(), value == nullptr ? 0U : 1U) << duration;
    if (value == nullptr) continue;
    ExpectCircle(heads[0], 2.0, StepY(3), 3.0 / 8.0, !value->open);
    for (const Primitive& stem : Of(Role::kStem)) EXPECT_NEAR(stem.from.x() / kGap, 2.5, 0.01) << duration;
    EXPECT_EQ(CountOf(Role::kStem) > 0, value->stem) << duration;
    EXPECT_EQ(CountOf(Role::kFlag), static_cast<std::size_t>(value->flags)) << duration;
    const auto dots = Of(Role::kDot);
    ASSERT_EQ(dots.size(), value->dot ? 1U : 0U) << duration;
    if (value->dot) {
      ExpectCircle(dots[0], 3.0, StepY(3), 0.1, true);
    }
    EXPECT_EQ(CountOf(Role::kBeam), 0U);
  }
}

TEST_F(BarTest, TwoQuaversAreJoinedWithinOneBeatAndSeventyPulses) {
  for (int from = 0; from < 60; from += 10)
    for (int apart = 1; from + apart < 240; apart += 3) {
      StartTune();
      AddNote(67, 1, from, 0.5);
      AddNote(69, (from + apart) / 120 + 1, (from + apart) % 120, 0.5);
      Show();
      const bool joined = from + apart < 120 && apart < 71;
      EXPECT_EQ(CountOf(Role::kBeam), joined ? 1U : 0U) << from << ' ' << apart;
      EXPECT_EQ(CountOf(Role::kFlag), joined ? 0U : 2U) << from << ' ' << apart;
    }
}

TEST_F(BarTest, TwoSemiquaversAreJoinedTwiceWithinOneBeatAndFortyPulses) {
  for (int from = 0; from < 90; from += 15)
    for (int apart = 1; from + apart < 200; apart += 3) {
      StartTune();
      AddNote(67, 1, from, 0.25);
      AddNote(69, (from + apart) / 120 + 1, (from + apart) % 120, 0.25);
      Show();
      const bool joined = from + apart < 120 && apart < 41;
      EXPECT_EQ(CountOf(Role::kBeam), joined ? 2U : 0U) << from << ' ' << apart;
      EXPECT_EQ(CountOf(Role::kFlag), joined ? 0U : 4U) << from << ' ' << apart;
    }
}

TEST_F(BarTest, WithoutBeamingEveryQuaverHasItsFlags) {
  sheet_.SetBeamingOn(false);
  for (int tick = 0; tick < 120; tick += 60) AddNote(67, 1, tick, 0.5);
  for (int tick = 0; tick < 120; tick += 30) AddNote(67, 2, tick, 0.25);
  Show();
  EXPECT_EQ(CountOf(Role::kBeam), 0U);
  EXPECT_EQ(CountOf(Role::kFlag), 2U + 8U);
}

TEST_F(BarTest, QuaversOfCompoundTimeAreJoinedInThrees) {
  for (int first = 1; first <= 10; ++first) {
    StartTune(12, 8);
    for (int i = 0; i < 3; ++i) {
      const auto note = AddNote(67, first + i, 0, 0.5);
      note->SetBeatLength(8);
    }
    Show();
    const bool group = first % 3 == 1;
    EXPECT_EQ(CountOf(Role::kNoteHead), 3U);
    if (group) {
      EXPECT_EQ(CountOf(Role::kBeam), 1U) << first;
      EXPECT_EQ(CountOf(Role::kFlag), 0U) << first;
      const auto beam = Of(Role::kBeam)[0];
      EXPECT_NEAR(beam.from.x() / kGap, BeatX(first) + 0.5, 0.2);
      EXPECT_NEAR(beam.to.x() / kGap, BeatX(first + 2) + 0.5, 0.2);
    } else {
      EXPECT_EQ(CountOf(Role::kBeam), 0U) << first;
    }
  }
}

// --- Large chords ---

TEST_F(BarTest, EachLargeChordIsReportedAndNotDrawn) {
  StartTune();
  for (int beat = 1; beat <= 3; ++beat)
    for (int i = 0; i < 22; ++i) AddNote(60 + i, beat);
  AddNote(67, 4);
  BarDrawing drawing;
  drawing.SetSurfaceSize(kSurfaceWidth, kSurfaceHeight, kSurfaceHeight);
  drawing.Attach(tune_);
  EXPECT_EQ(drawing.DisplayBar(1, 1).size(), 3U);
  Show();
  EXPECT_EQ(CountOf(Role::kNoteHead), 1U);
  EXPECT_TRUE(platform_.messages->shown.isEmpty()) << "telling is not the drawing's";
}

TEST_F(BarTest, TwentyNotesAreAChord) {
  StartTune();
  for (int i = 0; i < 20; ++i) AddNote(60 + i, 2);
  Show();
  EXPECT_TRUE(platform_.messages->shown.isEmpty());
  EXPECT_EQ(CountOf(Role::kNoteHead), 20U);
}

// --- Colours, signs in the run of a bar, rests ---

TEST_F(BarTest, ANoteFarBeyondSixteenBitsOfPlacesIsShownInItsColour) {
  for (int i = 0; i < 33000; ++i) AddNote(60)->SetEventType(7);
  AddNote(67, 2);
  AddNote(69, 3);
  sheet_.Attach(tune_);
  sheet_.DisplayBar(1, 1, 33001, 33002);
  const auto heads = Of(Role::kNoteHead);
  ASSERT_EQ(heads.size(), 2U);
  EXPECT_EQ(heads[0].colour, kRedInk);
  EXPECT_EQ(heads[1].colour, kBlueInk);
}

TEST_F(BarTest, ASharpIsTakenBackInItsBarAndNotInTheNext) {
  AddNote(66, 1);
  AddNote(65, 2);
  AddNote(65, 3);
  AddNote(65, 1, 0, 1.0, u" ", 2);
  Show();
  EXPECT_EQ(CountOf(Role::kSharp), 4U);
  EXPECT_EQ(CountOf(Role::kNatural), 4U);
  Show(2);
  EXPECT_EQ(CountOf(Role::kNatural), 0U);
}

TEST_F(BarTest, ANaturalIsTakenBackByTheSignOfTheKey) {
  StartTune(4, 4, 1);
  AddNote(65, 1);
  AddNote(66, 2);
  Show();
  EXPECT_GT(CountOf(Role::kNatural), 0U);
  EXPECT_EQ(CountOf(Role::kSharp), 4U);
  StartTune(4, 4, -1);
  AddNote(71, 1);
  AddNote(70, 2);
  Show();
  EXPECT_GT(CountOf(Role::kNatural), 0U);
  EXPECT_GT(CountOf(Role::kFlat), 0U);
}

TEST_F(BarTest, RestsOfWrittenLengthsAloneAreDrawn) {
  const auto rests = [&] {
    return CountOf(Role::kWholeBarRest) + CountOf(Role::kMinimRest) + CountOf(Role::kCrotchetRest) +
           CountOf(Role::kQuaverRest) + CountOf(Role::kSemiquaverRest);
  };
  for (int hundredths = 10; hundredths < 400; hundredths += 5) {
    const bool written = hundredths % 25 == 0 && hundredths != 375;
    for (const int tick : {0, 30, 60, 90}) {
      if (tick * 100 + hundredths * 120 > 480 * 100) continue;
      sheet_.Attach(tune_);
      sheet_.ClearStaff();
      Rest rest;
      rest.SetTick(static_cast<std::int16_t>(tick));
      rest.SetDuration(hundredths / 100.0);
      sheet_.MeasureHead();
      sheet_.DrawRest(rest);
      EXPECT_EQ(rests() > 0, written) << hundredths << " at " << tick;
      EXPECT_EQ(CountOf(Role::kWholeBarRest), 0U);
    }
  }
}

}  // namespace
}  // namespace zelmar
