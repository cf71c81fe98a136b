// How staves keep in step with the playback: the bar on show and the place of the beat marker.
#include "notation/staff_hand.h"
#include "notation/track_staff.h"

namespace zelmar {
namespace {

using namespace testing_support;

// What the bar of a staff must be, followed by hand from the start of the row.
class PageOfARow {
 public:
  explicit PageOfARow(int staves) : staves_(staves) {}
  void Beat(int bar, int beat) {
    if (beat == 1 && (staves_ == 1 || bar % staves_ == 0)) left_ = bar;
  }
  int Left() const { return left_; }

 private:
  int staves_;
  int left_ = 1;
};

class StaffFollowing : public ::testing::TestWithParam<int> {
 protected:
  ScriptedPlatform platform_;
};

TEST_P(StaffFollowing, EveryBeatOf40BarsStandsWhereItIsDue) {
  const int staves = GetParam();
  const auto tune = TuneOfBars(40);
  QWidget window;
  window.resize(1000, 300);
  TrackStaff strip(&window);
  strip.resize(1000, 200);
  window.show();
  strip.SetTune(tune);
  strip.SetBarsAcross(static_cast<std::int16_t>(staves));
  strip.LoadBarsAcross(QStringLiteral("Treble"));
  ASSERT_EQ(strip.MyStaff().size(), static_cast<std::size_t>(staves));

  PageOfARow page(staves);
  int beats = 0;
  QObject::connect(tune.get(), &Tune::Ticked, &strip, [&] {
    const int bar = tune->BarNumber(), beat = tune->BeatWithinBar();
    page.Beat(bar, beat);
    ++beats;
    for (int i = 0; i < staves; ++i) {
      const CtlQuilStaff& staff = *strip.MyStaff()[static_cast<std::size_t>(i)];
      ASSERT_EQ(staff.CurrentBar(), page.Left() + i) << bar << "/" << beat;
      const StaffItem& marker = *staff.BeatMarker();
      ASSERT_EQ(marker.isVisibleTo(&strip), page.Left() + i == bar) << bar << "/" << beat << " staff " << i;
      const auto& drawn = staff.StaffDrawing().Primitives();
      const bool notes =
          std::any_of(drawn.begin(), drawn.end(), [](const auto& p) { return p.role == Role::kNoteHead; });
      ASSERT_EQ(notes, page.Left() + i <= 40);
      if (page.Left() + i != bar) continue;
      const double room = staff.StaffWidth() - staff.NotesLeft();
      EXPECT_NEAR(marker.Place().x(),
                  staff.NotesLeft() + (beat - 1) * room / 4 + 0.1 * static_cast<double>(staff.LineGap()),
                  0.01);
      EXPECT_NEAR(marker.Place().width(), room / 4, 0.01);
      EXPECT_NEAR(marker.Place().y(), 0.1 * staff.height() * 15, 0.01);
      EXPECT_NEAR(marker.Place().height(), 0.8 * staff.height() * 15, 0.01);
      // On the screen as in the numbers.
      EXPECT_NEAR(marker.geometry().x(), marker.Place().x() / 15, 1.0);
    }
  });
  tune->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
  tune->Play();
  EXPECT_GE(beats, 160);
}

INSTANTIATE_TEST_SUITE_P(Rows, StaffFollowing, ::testing::Values(1, 3, 5),
                         [](const auto& row) { return "Of" + std::to_string(row.param); });

using StaffBars = StaffHand;

TEST_F(StaffBars, PastTheLastBarTheStaffIsEmpty) {
  AddNote(QStringLiteral("G4"), 1);
  Show();
  staff_->SetBarOffset(2);
  tune_->SetBarNumber(1);
  tune_->SetBeatWithinBar(1);
  staff_->ThisTune_Ticked();
  EXPECT_EQ(staff_->CurrentBar(), 3);
  for (const auto& drawn : staff_->StaffDrawing().Primitives())
    EXPECT_TRUE(drawn.role == Role::kStaffLine || drawn.role == Role::kBarLine);
  EXPECT_EQ(staff_->StaffDrawing().Primitives().size(), 6U);
}

TEST_F(StaffBars, ThePageTurnsOnTheFirstBeatOnly) {
  AddNote(QStringLiteral("G4"), 1, 0, 1.0, 9);
  Show();
  tune_->SetBarNumber(5);
  tune_->SetBeatWithinBar(2);
  staff_->ThisTune_Ticked();
  EXPECT_EQ(staff_->CurrentBar(), 1);
  tune_->SetBeatWithinBar(1);
  staff_->ThisTune_Ticked();
  EXPECT_EQ(staff_->CurrentBar(), 5);
}

TEST_F(StaffBars, WithoutAMarkerThePageTurnsAllTheSame) {
  AddNote(QStringLiteral("G4"), 1, 0, 1.0, 9);
  Show();
  tune_->SetBarNumber(5);
  tune_->SetBeatWithinBar(1);
  staff_->ThisTune_Ticked();
  EXPECT_TRUE(staff_->BeatMarker()->isVisible());
  staff_->SetShowBeatMarker(false);
  tune_->SetBarNumber(6);
  staff_->ThisTune_Ticked();
  EXPECT_EQ(staff_->CurrentBar(), 6);
  EXPECT_FALSE(staff_->BeatMarker()->isVisible());
}

TEST_F(StaffBars, RewindGoesToTheFirstBarOfTheRow) {
  Show();
  staff_->SetCurrentBar(20);
  staff_->Rewind();
  EXPECT_EQ(staff_->CurrentBar(), 1);
  staff_->SetBarOffset(4);
  staff_->Rewind();
  EXPECT_EQ(staff_->CurrentBar(), 5);
}

TEST_F(StaffBars, ARewoundTuneIsShownFromItsFirstBarWithNoBeatMarked) {
  AddNote(QStringLiteral("G4"), 1);
  AddNote(QStringLiteral("G4"), 1, 0, 1.0, 9);
  Show();
  tune_->SetBarNumber(9);
  tune_->SetBeatWithinBar(1);
  staff_->ThisTune_Ticked();
  ASSERT_TRUE(staff_->BeatMarker()->isVisible());
  tune_->Rewind();
  EXPECT_EQ(staff_->CurrentBar(), 1);
  EXPECT_FALSE(staff_->BeatMarker()->isVisible());
  const auto& drawn = staff_->StaffDrawing().Primitives();
  EXPECT_EQ(
      std::count_if(drawn.begin(), drawn.end(), [](const auto& p) { return p.role == Role::kNoteHead; }), 1);
  // The second staff of a row shows bar 2, and one past the last bar is empty.
  staff_->SetBarOffset(1);
  tune_->Rewind();
  EXPECT_EQ(staff_->CurrentBar(), 2);
  staff_->SetBarOffset(9);
  tune_->Rewind();
  EXPECT_EQ(staff_->CurrentBar(), 10);
  for (const auto& primitive : staff_->StaffDrawing().Primitives())
    EXPECT_TRUE(primitive.role == Role::kStaffLine || primitive.role == Role::kBarLine);
}

TEST_F(StaffBars, AStaffIsNotRewoundWithATuneThatItHasLeft) {
  const auto first = TuneOfBars(4);
  tune_ = first;
  Show();
  tune_ = TuneOfBars(4);
  staff_->Setup(tune_);
  staff_->SetCurrentBar(3);
  first->Rewind();
  EXPECT_EQ(staff_->CurrentBar(), 3);
  tune_->Rewind();
  EXPECT_EQ(staff_->CurrentBar(), 1);
}

TEST_F(StaffBars, AddBarGoesToANewBarAtTheEnd) {
  AddNote(QStringLiteral("G4"), 1, 0, 1.0, 9);
  Show();
  staff_->AddBar();
  EXPECT_EQ(staff_->CurrentBar(), 10);
  EXPECT_EQ(staff_->BarCount(), 10);
  staff_->AddBar();
  EXPECT_EQ(staff_->CurrentBar(), 11);
}

TEST_F(StaffBars, ATickWithoutATuneOrWithoutASizeIsNoHarm) {
  tune_ = nullptr;
  Show();
  staff_->ThisTune_Ticked();
  EXPECT_FALSE(staff_->BeatMarker()->isVisible());
  tune_ = TuneOfBars(3);
  tune_->SetBarNumber(2);
  tune_->SetBeatWithinBar(1);
  staff_->Setup(tune_);
  staff_->SetBarsAcross(0);
  staff_->resize(0, 0);
  staff_->ThisTune_Ticked();
  EXPECT_EQ(staff_->CurrentBar(), 2);
}

TEST_F(StaffBars, AStaffThatIsClosedWhileItsTunePlaysIsForgotten) {
  tune_ = TuneOfBars(4);
  Show();
  QObject::connect(tune_.get(), &Tune::Ticked, &window_, [this] {
    if (tune_->BarNumber() == 2) delete staff_;
  });
  tune_->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
  tune_->Play();
  EXPECT_EQ(staff_, nullptr);
  EXPECT_EQ(tune_->BarNumber(), tune_->BarCount());
}

TEST_F(StaffBars, AStaffFollowsItsNewTuneAndNoLongerTheOldOne) {
  const auto first = TuneOfBars(4);
  tune_ = first;
  Show();
  tune_ = TuneOfBars(4);
  staff_->Setup(tune_);
  first->SetBarNumber(3);
  first->SetBeatWithinBar(1);
  Q_EMIT first->Ticked();
  EXPECT_EQ(staff_->CurrentBar(), 1);
  tune_->SetBarNumber(2);
  tune_->SetBeatWithinBar(1);
  Q_EMIT tune_->Ticked();
  EXPECT_EQ(staff_->CurrentBar(), 2);
}

}  // namespace
}  // namespace zelmar
