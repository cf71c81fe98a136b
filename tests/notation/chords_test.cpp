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
  EXPECT_TRUE(platform_.messages->shown.isEmpty());
}

TEST_F(Chords, AChordOf21GivesTheMessageAndOnlyTheOthersAreDrawn) {
  StartTune();
  AddNote(64, 1);
  for (int i = 0; i < 21; ++i) AddNote(60 + i, 2);
  AddNote(64, 3);
  AddNote(67, 4);
  Show();
  ASSERT_EQ(platform_.messages->shown.size(), 1);
  EXPECT_EQ(platform_.messages->shown[0].icon, MessageIcon::kCritical);
  EXPECT_EQ(platform_.messages->shown[0].text, QStringLiteral("More than 20 notes in this chord"));
  EXPECT_EQ(platform_.messages->shown[0].title, QStringLiteral("Not supported"));
  const auto heads = Of(Role::kNoteHead);
  ASSERT_EQ(heads.size(), 3U);
  EXPECT_NEAR(heads[1].from.x(), BeatX(3) * kGap, kClose);
}

TEST_F(Chords, TooLargeAChordStaysInTheStore) {
  StartTune();
  std::vector<std::shared_ptr<Tone>> tones;
  for (int i = 0; i < 21; ++i) tones.push_back(AddNote(60 + i));
  sheet_.Attach(tune_);
  sheet_.MeasureHead();
  sheet_.SetupChordStore();
  for (const auto& tone : tones) sheet_.AddToChord(tone, tone == tones.front());
  sheet_.PrintChord();
  EXPECT_EQ(platform_.messages->shown.size(), 1);
  sheet_.AddToChord(AddNote(90), false);
  sheet_.PrintChord();
  EXPECT_EQ(CountOf(Role::kNoteHead), 0U) << "a note more of the same chord";
  sheet_.AddToChord(AddNote(64, 2), false);
  sheet_.PrintChord();
  EXPECT_EQ(CountOf(Role::kNoteHead), 1U) << "another chord";
}

class LargeChords : public Chords {
 protected:
  void AddLargeChord(int beat, int bar = 1, int track = 1) {
    for (int i = 0; i < 21; ++i) AddNote(60 + i, beat, 0, 1.0, u" ", bar, track);
  }
  qsizetype Messages() const { return platform_.messages->shown.size(); }
};

TEST_F(LargeChords, EachIsToldOfOnceHoweverOftenItIsDrawn) {
  StartTune();
  AddLargeChord(1);
  AddLargeChord(3);
  AddLargeChord(1, 2);
  for (int round = 0; round < 3; ++round) {
    Show(1);
    EXPECT_EQ(Messages(), round == 0 ? 2 : 3);
    Show(2);
    EXPECT_EQ(Messages(), 3);
  }
}

TEST_F(LargeChords, AnotherStaffOfTheTuneTellsNothingNew) {
  StartTune();
  AddLargeChord(1);
  Show();
  BarDrawing other;
  other.SetSurfaceSize(kSurfaceWidth, kSurfaceHeight, kSurfaceHeight);
  other.Attach(tune_);
  other.DisplayBar(1, 1);
  EXPECT_EQ(Messages(), 1);
}

TEST_F(LargeChords, AnotherTrackHasItsOwn) {
  StartTune();
  tune_->Tracks()->Add(QStringLiteral("Two"), 2, 2, 0, false, 0, 0, QStringLiteral("2"));
  AddLargeChord(1);
  AddLargeChord(1, 1, 2);
  Show();
  sheet_.SetSelectedTrack(2);
  Show();
  EXPECT_EQ(Messages(), 2);
}

TEST_F(LargeChords, ATuneThatIsLoadedAgainTellsAgain) {
  for (int load = 1; load <= 3; ++load) {
    StartTune();
    AddLargeChord(1);
    Show();
    Show();
    EXPECT_EQ(Messages(), load);
  }
}

TEST_F(Chords, NotesAreCollectedUntilTheNextPlace) {
  StartTune();
  const auto first = AddNote(60, 1);
  const auto second = AddNote(64, 1);
  const auto third = AddNote(67, 1, 1);
  sheet_.Attach(tune_);
  sheet_.MeasureHead();
  sheet_.AddToChord(first, true);
  sheet_.AddToChord(second, false, QStringLiteral("Blue"));
  EXPECT_EQ(CountOf(Role::kNoteHead), 0U);
  sheet_.AddToChord(third, false, QStringLiteral("Red"));
  ASSERT_EQ(CountOf(Role::kNoteHead), 2U);
  EXPECT_EQ(Of(Role::kNoteHead)[0].colour, kBlackInk);
  EXPECT_EQ(Of(Role::kNoteHead)[1].colour, kBlueInk);
  sheet_.PrintChord();
  ASSERT_EQ(CountOf(Role::kNoteHead), 3U);
  EXPECT_EQ(Of(Role::kNoteHead)[2].colour, kRedInk);
  sheet_.PrintChord();
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
