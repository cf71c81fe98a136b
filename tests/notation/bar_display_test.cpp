// A bar among the others: which notes it holds, its heading, and its words.
#include "notation/bar_fixture.h"

namespace zelmar {
namespace {

using BarDisplay = BarTest;

TEST_F(BarDisplay, OnlyTheNotesOfTheBarAndTrackAreDrawn) {
  constexpr int kNaturals[] = {55, 57, 59, 60, 62, 64, 65, 67, 69, 71, 72, 74, 76, 77, 79, 81, 83, 84, 86};
  constexpr int kBars = 18;
  StartTune();
  for (int bar = 1; bar <= kBars; ++bar) {
    if (bar == 7) continue;
    for (int beat = 1; beat <= 4; ++beat) {
      AddNote(kNaturals[bar], beat, 0, 1.0, u" ", bar, 1);
      AddNote(86, beat, 0, 1.0, u" ", bar, 2);
      AddNote(86, beat, 0, 1.0, u" ", bar, 1)->SetEventType(MUSIC_NOTE_OFF);
    }
  }
  for (int bar = 1; bar <= kBars; ++bar) {
    if (bar == 7) continue;
    SCOPED_TRACE(bar);
    Show(static_cast<std::int16_t>(bar));
    const auto heads = Of(Role::kNoteHead);
    ASSERT_EQ(heads.size(), 4U);
    for (std::size_t i = 0; i < 4; ++i)
      ExpectCircle(heads[i], BeatX(static_cast<double>(i) + 1.0), StepY(bar - 4), 3.0 / 8.0, true);
  }
  for (const int bar : {0, 7, kBars + 1, -1, 32767, -32768}) {
    SCOPED_TRACE(bar);
    Show(static_cast<std::int16_t>(bar));
    EXPECT_EQ(CountOf(Role::kNoteHead), 0U);
    EXPECT_EQ(CountOf(Role::kStaffLine), 5U);
  }
}

TEST_F(BarDisplay, ATrackThatDoesNotExistHasNoNotes) {
  StartTune();
  AddNote(67);
  sheet_.Attach(tune_);
  for (const int track : {0, 2, 255, 256, -1, 32767}) {
    sheet_.DisplayBar(1, static_cast<std::int16_t>(track));
    EXPECT_EQ(CountOf(Role::kNoteHead), track == 1 ? 1U : 0U) << track;
  }
  sheet_.DisplayBar(1, 1);
  EXPECT_EQ(CountOf(Role::kNoteHead), 1U);
}

TEST_F(BarDisplay, ATuneWithoutNotesOrTracksIsAnEmptyStaff) {
  StartTune();
  Show();
  EXPECT_EQ(CountOf(Role::kStaffLine), 5U);
  EXPECT_EQ(CountOf(Role::kNoteHead), 0U);
  tune_->SetTracks(std::make_shared<Tracks>());
  AddNote(67);
  Show();
  sheet_.DisplayRests(1, 1);
  EXPECT_EQ(CountOf(Role::kNoteHead), 1U);
}

struct ColourRow {
  std::int32_t red;
  std::int32_t blue;
  InkColour first;
  InkColour second;
};

TEST_F(BarDisplay, TwoNotesOfTheTuneMayBeRedAndBlue) {
  constexpr ColourRow kRows[] = {{0, 0, kBlackInk, kBlackInk},
                                 {1, 2, kRedInk, kBlueInk},
                                 {2, 1, kBlueInk, kRedInk},
                                 {1, 1, kRedInk, kBlackInk},
                                 {99, -1, kBlackInk, kBlackInk}};
  StartTune();
  AddNote(67, 1);
  AddNote(67, 2);
  sheet_.Attach(tune_);
  for (const ColourRow& row : kRows) {
    SCOPED_TRACE(row.red);
    sheet_.DisplayBar(1, 1, row.red, row.blue);
    const auto heads = Of(Role::kNoteHead);
    ASSERT_EQ(heads.size(), 2U);
    EXPECT_EQ(heads[0].colour, row.first);
    EXPECT_EQ(heads[1].colour, row.second);
    EXPECT_EQ(Of(Role::kStem)[0].colour, row.first);
  }
}

TEST_F(BarDisplay, ABarIsDrawnAnewAndNotOver) {
  StartTune();
  AddNote(67);
  Show();
  const std::size_t once = sheet_.StaffDrawing().Primitives().size();
  Show();
  EXPECT_EQ(sheet_.StaffDrawing().Primitives().size(), once);
}

// --- Surfaces of no size ---

TEST_F(BarDisplay, ASurfaceOfNoSizeIsDrawnAndHarmsNothing) {
  StartTune(4, 4, 3);
  AddNote(61, 1, 0, 0.5);
  AddNote(61, 1, 60, 0.5);
  sheet_.SetShowClef(true);
  sheet_.SetShowTitle(true);
  for (const auto& [width, height] : {std::pair(0.0, 0.0), std::pair(4000.0, 0.0), std::pair(0.0, 1200.0),
                                      std::pair(-50.0, -50.0), std::pair(15.0, 15.0)}) {
    sheet_.SetSurfaceSize(width, height, height);
    Show();
    sheet_.DisplayRests(1, 1);
    std::int16_t pitch = 5;
    if (height <= 0.0) {
      sheet_.FindPitch(0.0F, 0.0F, pitch);
      EXPECT_EQ(pitch, 5);
    }
    EXPECT_EQ(CountOf(Role::kNoteHead), 2U);
  }
}

}  // namespace
}  // namespace zelmar
