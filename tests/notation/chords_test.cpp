// Chords: what belongs to one, the direction of its stem, its seconds, its limit.
#include "notation/bar_fixture.h"

namespace zelmar {
namespace {

using Chords = BarTest;

TEST_F(Chords, NotesOfOnePlaceShareAStemDirection) {
  StartTune();
  AddNote(60, 1);
  AddNote(79, 1);
  AddNote(60, 2);
  AddNote(60, 2, 30);
  AddNote(79, 3);
  Show();
  const auto stems = Of(Role::kStem);
  ASSERT_EQ(CountOf(Role::kNoteHead), 5U);
  // The wide chord has a third stretch of stem between its notes.
  ASSERT_EQ(stems.size(), 6U);
  for (const std::size_t i : {0, 1, 3, 4}) EXPECT_LT(stems[i].to.y(), stems[i].from.y()) << i;
  EXPECT_GT(stems[5].to.y(), stems[5].from.y());
}

struct DirectionRow {
  const char* clef;
  std::vector<int> pitches;
  bool up;
};

TEST_F(Chords, TheSumOfTheDistancesFromTheMiddleDecides) {
  const DirectionRow kRows[] = {
      {"Treble", {71}, true},      {"Treble", {72}, false},   {"Treble", {65, 77}, true},
      {"Treble", {65, 79}, false}, {"Bass", {50}, true},      {"Bass", {51}, false},
      {"Bass", {43, 57}, true},    {"Bass", {43, 58}, false}, {"", {86}, true},
  };
  for (const DirectionRow& row : kRows) {
    SCOPED_TRACE(std::string(row.clef) + " " + std::to_string(row.pitches.back()));
    sheet_.SetClef(QString::fromLatin1(row.clef));
    StartTune();
    for (const int pitch : row.pitches) AddNote(pitch);
    Show();
    ASSERT_GE(CountOf(Role::kStem), row.pitches.size());
    for (std::size_t i = 0; i < row.pitches.size(); ++i)
      EXPECT_EQ(Of(Role::kStem)[i].to.y() < Of(Role::kStem)[i].from.y(), row.up);
  }
}

TEST_F(Chords, ANoteThatIsNotShownCountsForTheDirectionAllTheSame) {
  StartTune();
  AddNote(36);
  AddNote(86);
  Show();
  ASSERT_EQ(CountOf(Role::kNoteHead), 1U);
  EXPECT_LT(Of(Role::kStem)[0].to.y(), Of(Role::kStem)[0].from.y());
}

struct SecondRow {
  const char* name;
  std::vector<int> pitches;       // in the order of Tones
  std::vector<double> displaced;  // gaps from the place of the chord
};

TEST_F(Chords, SecondsStandOnBothSidesOfTheStem) {
  const SecondRow kRows[] = {
      {"up, the upper", {60, 62}, {0, 1}},       {"up, in any order", {62, 60}, {1, 0}},
      {"a semitone", {64, 65}, {0, 1}},          {"down, the lower", {79, 81}, {-1, 0}},
      {"down, in any order", {81, 79}, {0, -1}}, {"a third stays", {60, 64}, {0, 0}},
      {"a unison stays", {60, 60}, {0, 0}},      {"each pair by itself", {60, 62, 64}, {0, 1, 1}},
  };
  for (const SecondRow& row : kRows) {
    SCOPED_TRACE(row.name);
    StartTune();
    for (const int pitch : row.pitches) AddNote(pitch, 2);
    Show();
    const auto heads = Of(Role::kNoteHead);
    ASSERT_EQ(heads.size(), row.pitches.size());
    for (std::size_t i = 0; i < heads.size(); ++i)
      EXPECT_NEAR(heads[i].from.x(), (BeatX(2) + row.displaced[i]) * kGap, kClose) << i;
  }
}

TEST_F(Chords, TheStemOfADisplacedHeadStaysWithTheChord) {
  StartTune();
  AddNote(60, 2);
  AddNote(62, 2);
  AddNote(60, 3);
  Show();
  const auto stems = Of(Role::kStem);
  ASSERT_EQ(stems.size(), 3U);
  EXPECT_EQ(stems[0].from.x(), stems[1].from.x());
  EXPECT_NEAR(Of(Role::kNoteHead)[2].from.x(), BeatX(3) * kGap, kClose) << "the next chord is not displaced";
}

TEST_F(Chords, AWideChordHasOneUnbrokenStem) {
  StartTune();
  AddNote(60, 1);  // a tenth: steps -1 and 8
  AddNote(76, 1);
  Show();
  const auto stems = Of(Role::kStem);
  ASSERT_EQ(stems.size(), 3U);
  ExpectLine(stems[2], {2.5, StepY(-1), 2.5, StepY(8)}, 2.0, kBlackInk);
}

TEST_F(Chords, AChordHasItsFlagsOnce) {
  for (const bool up : {true, false}) {
    SCOPED_TRACE(up);
    StartTune();
    for (const int pitch : {up ? 60 : 72, up ? 64 : 76, up ? 67 : 79}) AddNote(pitch, 1, 0, 0.25);
    Show();
    EXPECT_EQ(CountOf(Role::kNoteHead), 3U);
    const auto flags = Of(Role::kFlag);
    ASSERT_EQ(flags.size(), 2U);
    // At the end that is farthest from the heads.
    EXPECT_NEAR(flags[0].from.y(), (up ? StepY(3) - 2.0 : StepY(6) + 2.0) * kGap, kClose);
  }
}

TEST_F(Chords, AChordOf20IsDrawn) {
  StartTune();
  for (int i = 0; i < 20; ++i) AddNote(60 + i);
  Show();
  EXPECT_EQ(CountOf(Role::kNoteHead), 20U);
  EXPECT_TRUE(large_chords_.empty());
}

TEST_F(Chords, AChordOf21IsToldOfAndOnlyTheOthersAreDrawn) {
  StartTune();
  AddNote(64, 1);
  for (int i = 0; i < 21; ++i) AddNote(60 + i, 2, 30);
  AddNote(64, 3);
  for (int i = 0; i < 25; ++i) AddNote(60 + i, 4);
  Show();
  EXPECT_EQ(large_chords_, (std::vector<ChordPlace>{{1, 1, 2, 30}, {1, 1, 4, 0}}));
  const auto heads = Of(Role::kNoteHead);
  ASSERT_EQ(heads.size(), 2U);
  EXPECT_NEAR(heads[1].from.x(), BeatX(3) * kGap, kClose);
}

TEST_F(Chords, DrawingAsksNobodyAnything) {
  StartTune();
  for (int i = 0; i < 21; ++i) AddNote(60 + i);
  Show();
  ASSERT_EQ(large_chords_.size(), 1U);
  EXPECT_TRUE(platform_.messages->shown.isEmpty());
}

TEST_F(Chords, TooLargeAChordStaysInTheStore) {
  StartTune();
  std::vector<std::shared_ptr<Tone>> tones;
  for (int i = 0; i < 21; ++i) tones.push_back(AddNote(60 + i));
  sheet_.Attach(tune_);
  sheet_.MeasureHead();
  BarNotes notes = sheet_.StartNotes();
  for (const auto& tone : tones) notes.AddToChord(tone, tone == tones.front());
  notes.PrintChord();
  EXPECT_EQ(notes.LargeChords().size(), 1U);
  notes.AddToChord(AddNote(90), false);
  notes.PrintChord();
  EXPECT_EQ(CountOf(Role::kNoteHead), 0U) << "a note more of the same chord";
  EXPECT_EQ(notes.LargeChords().size(), 1U);
  notes.AddToChord(AddNote(64, 2), false);
  notes.PrintChord();
  EXPECT_EQ(CountOf(Role::kNoteHead), 1U) << "another chord";
}

TEST_F(Chords, NotesAreCollectedUntilTheNextPlace) {
  StartTune();
  const auto first = AddNote(60, 1);
  const auto second = AddNote(64, 1);
  const auto third = AddNote(67, 1, 1);
  sheet_.Attach(tune_);
  sheet_.MeasureHead();
  BarNotes notes = sheet_.StartNotes();
  notes.AddToChord(first, true);
  notes.AddToChord(second, false, QStringLiteral("Blue"));
  EXPECT_EQ(CountOf(Role::kNoteHead), 0U);
  notes.AddToChord(third, false, QStringLiteral("Red"));
  ASSERT_EQ(CountOf(Role::kNoteHead), 2U);
  EXPECT_EQ(Of(Role::kNoteHead)[0].colour, kBlackInk);
  EXPECT_EQ(Of(Role::kNoteHead)[1].colour, kBlueInk);
  notes.PrintChord();
  ASSERT_EQ(CountOf(Role::kNoteHead), 3U);
  EXPECT_EQ(Of(Role::kNoteHead)[2].colour, kRedInk);
  notes.PrintChord();
  EXPECT_EQ(CountOf(Role::kNoteHead), 3U) << "a printed chord is gone";
}

TEST_F(Chords, CollectingLeavesTheNotesAsTheyAre) {
  StartTune(6, 8);
  const auto tone = AddNote(60);
  tune_->SetChangedSinceLastSaved(false);
  Show();
  EXPECT_EQ(tone->BeatsPerBar(), 6);
  EXPECT_FALSE(tune_->ChangedSinceLastSaved());
}

}  // namespace
}  // namespace zelmar
