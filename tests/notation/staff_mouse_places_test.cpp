// Where a press of the mouse falls: quarters of a beat, the notes found there, and controls that have no
// place.
#include <QPainter>
#include <limits>

#include "notation/staff_hand.h"
#include "notation/staff_steps.h"
#include "platform/failure.h"

namespace zelmar {
namespace {

using namespace testing_support;

constexpr int kG4 = 3;  // steps on a treble staff
constexpr int kB4 = 5;
constexpr int kC5 = 6;

using StaffMouse = StaffHand;

// --- Rounding

TEST_F(StaffMouse, PositionsGoToTheNearestQuarterAndAHalfStaysBelow) {
  const std::pair<double, double> rows[] = {{1.0, 1.0},   {1.1, 1.0},    {1.125, 1.0},  {1.126, 1.25},
                                            {1.25, 1.25}, {2.374, 2.25}, {2.375, 2.25}, {2.376, 2.5},
                                            {4.99, 5.0},  {0.9, 1.0},    {0.87, 0.75},  {-0.1, 0.0}};
  for (const auto& [position, quarter] : rows)
    EXPECT_DOUBLE_EQ(NearestQuarterBeat(position), quarter) << position;
}

TEST_F(StaffMouse, EveryQuarterOfABeatIsReached) {
  Show();
  for (int quarter = 0; quarter < 16; ++quarter) {
    tune_->SetTones(std::make_shared<Tones>());
    Press(Pixel(1 + quarter / 4.0, kB4));
    ASSERT_EQ(Notes().size(), 1) << quarter;
    EXPECT_EQ(Notes()[0]->Beat(), 1 + quarter / 4);
    EXPECT_EQ(Notes()[0]->Tick(), 30 * (quarter % 4));
  }
}

TEST_F(StaffMouse, TheLastQuarterThatRoundsUpToTheNextBarDoesNothing) {
  Show();
  Press(Pixel(4.95, kB4));
  EXPECT_TRUE(Notes().isEmpty());
  Press(Pixel(4.8, kB4));
  ASSERT_EQ(Notes().size(), 1);
  EXPECT_EQ(Notes()[0]->Tick(), 90);
}

TEST_F(StaffMouse, PlacesBesideTheBarAndTheStaffDoNothing) {
  AddNote(QStringLiteral("G4"), 1);
  Show();
  // Before beat 1 but behind the signatures; above and below the steps; both ends of the control.
  Press(QPoint(static_cast<int>((staff_->NotesLeft() - 79) / 15) + 1, 1));
  Press(Pixel(2, kHighestStep + 2));
  Press(Pixel(2, kLowestStep - 2));
  Press(QPoint(599, 0));
  Press(QPoint(599, 199));
  Press(QPoint(599, 100));
  EXPECT_EQ(Notes().size(), 1);
  EXPECT_TRUE(Sent().empty());
}

TEST_F(StaffMouse, QuaverBeatsCount60Pulses) {
  tune_->SetBeatLength(8);
  tune_->SetBeatsPerBar(6);
  Show();
  Press(Pixel(5.5, kB4));
  ASSERT_EQ(Notes().size(), 1);
  EXPECT_EQ(Notes()[0]->Beat(), 5);
  EXPECT_EQ(Notes()[0]->Tick(), 30);
  EXPECT_EQ(Notes()[0]->BeatLength(), 8);
  EXPECT_EQ(Notes()[0]->BeatsPerBar(), 6);
  Press(Pixel(5.5, kB4));
  EXPECT_EQ(Notes().size(), 1);  // found and heard
}

// --- Finding

TEST_F(StaffMouse, LetterAndOctaveDecideAndTheFirstInOrderIsFound) {
  const auto sharp = AddNote(QStringLiteral("C#5"), 2);
  const auto natural = AddNote(QStringLiteral("C5"), 2);
  Show();
  Press(Pixel(2, kC5));
  EXPECT_EQ(staff_->ThisTone(), sharp);
  tune_->Remove(1);
  Press(Pixel(2, kC5));
  EXPECT_EQ(staff_->ThisTone(), natural);
}

TEST_F(StaffMouse, NotesOfOtherTracksBarsAndOctavesAreNotFound) {
  tune_->Tracks()->Add(QStringLiteral("Other"), 2, 4, 1, false, 0, 0, QStringLiteral("2"));
  AddNote(QStringLiteral("C5"), 2, 0, 1.0, 1, 2);
  AddNote(QStringLiteral("C4"), 2);
  AddNote(QStringLiteral("C5"), 2, 0, 1.0, 2);
  Show();
  std::int16_t index = 9;
  staff_->FindMatchingNote(72, 2.0, index);
  EXPECT_EQ(index, 0);
  EXPECT_EQ(staff_->ThisTone(), nullptr);
}

TEST_F(StaffMouse, TheWalkEndsAtTheFirstNoteOfALaterBar) {
  AddNote(QStringLiteral("C5"), 1, 0, 1.0, 2);
  AddNote(QStringLiteral("C5"), 2);
  Show();
  std::int16_t index = 9;
  staff_->FindMatchingNote(72, 2.0, index);
  EXPECT_EQ(index, 0);
}

TEST_F(StaffMouse, EventsThatAreNoNotesAreSkipped) {
  AddNote(QStringLiteral("C5"), 2)->SetEventType(7);
  AddNote(QStringLiteral("C5"), 1, 0, 1.0, 5)->SetEventType(7);
  const auto note = AddNote(QStringLiteral("C5"), 2, 10);
  Show();
  std::int16_t index = 9;
  staff_->FindMatchingNote(72, 2.0, index);
  EXPECT_EQ(index, 3);
  EXPECT_EQ(staff_->ThisTone(), note);
}

TEST_F(StaffMouse, ANoteBeyondTheReachOfTheIndexIsAnOverflowAndNothingChanges) {
  constexpr int kMostPlaces = std::numeric_limits<std::int16_t>::max();
  const auto tones = std::make_shared<Tones>();
  const auto pushed = std::make_shared<Tones>();
  const auto note = AddNote(QStringLiteral("G4"), 2);
  for (int place = 1; place <= kMostPlaces; ++place) {
    const auto other = std::make_shared<Tone>();
    other->SetTrack(2);
    other->SetAbsRef(note->AbsRef() + place);
    if (place < kMostPlaces) tones->Add(other);
    pushed->Add(other);
  }
  tones->Add(note);
  tune_->SetTones(tones);
  Show();
  std::int16_t index = 0;
  staff_->FindMatchingNote(67, 2.0, index);
  EXPECT_EQ(index, kMostPlaces);

  pushed->Add(note);
  tune_->SetTones(pushed);
  tune_->SetChangedSinceLastSaved(false);
  const QPointF twips = QPointF(Pixel(2, kG4)) * 15.0;
  for (const int button : {CtlQuilStaff::kLeftButton, CtlQuilStaff::kRightButton})
    for (const int shift : {0, CtlQuilStaff::kShift, CtlQuilStaff::kCtrl}) {
      try {
        staff_->picBox_MouseDown(button, shift, static_cast<float>(twips.x()), static_cast<float>(twips.y()));
        ADD_FAILURE() << "no overflow";
      } catch (const OverflowError& error) {
        EXPECT_EQ(error.Description(), QStringLiteral("Overflow"));
      }
      EXPECT_EQ(staff_->MatchIndex(), 0);
      EXPECT_EQ(staff_->ThisTone(), nullptr);
      EXPECT_FALSE(staff_->DraggingNote());
    }
  EXPECT_EQ(tune_->Tones()->Count(), kMostPlaces + 1);
  EXPECT_DOUBLE_EQ(note->Duration(), 1.0);
  EXPECT_FALSE(tune_->ChangedSinceLastSaved());
  EXPECT_TRUE(Sent().empty());
  EXPECT_EQ(dialogue_.shown, 0);
}

// --- Bad input

TEST_F(StaffMouse, WithoutATuneNothingHappens) {
  tune_ = nullptr;
  Show();
  for (const auto button : {Qt::LeftButton, Qt::RightButton})
    for (const auto modifier : {Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier}) {
      Press(Pixel(2, kG4), button, modifier);
      Release(Pixel(2, kG4), button, modifier);
    }
  EXPECT_TRUE(Sent().empty());
  std::int16_t index = 4;
  staff_->FindMatchingNote(60, 1.0, index);
  EXPECT_EQ(index, 0);
  staff_->FillDialogBox(0, 0);
  EXPECT_EQ(dialogue_.shown, 0);
}

TEST_F(StaffMouse, ATuneWithoutTracksTakesNotesOfNoChannel) {
  tune_->Tracks()->Clear();
  Show();
  Press(Pixel(2, kG4));
  Release(Pixel(2, kG4));
  ASSERT_EQ(Notes().size(), 1);
  EXPECT_EQ(Notes()[0]->Channel(), 0);
  EXPECT_EQ(Notes()[0]->Volume(), 0);
}

TEST_F(StaffMouse, ABeatLengthOfNothingIsReadAsFour) {
  tune_->SetBeatLength(0);
  Show();
  Press(Pixel(2.5, kG4));
  Release(Pixel(2.5, kG4));
  ASSERT_EQ(Notes().size(), 1);
  EXPECT_EQ(Notes()[0]->Tick(), 60);
}

TEST_F(StaffMouse, ABarOfNoBeatsIsNoHarm) {
  tune_->SetBeatsPerBar(0);
  Show();
  for (int x = 0; x < 600; x += 7) Press(QPoint(x, 100), Qt::LeftButton, Qt::ShiftModifier);
  EXPECT_TRUE(Notes().isEmpty());
}

TEST_F(StaffMouse, AControlOfNoSizeTakesPressesWithoutHarm) {
  AddNote(QStringLiteral("G4"), 2);
  Show();
  staff_->setMinimumSize(0, 0);
  for (const QSize size : {QSize(0, 0), QSize(1, 1), QSize(600, 0), QSize(0, 200), QSize(30, 200)}) {
    staff_->resize(size);
    QCoreApplication::processEvents();
    for (const QPoint place : {QPoint(0, 0), QPoint(size.width(), size.height()), QPoint(29, 100)})
      for (const auto button : {Qt::LeftButton, Qt::RightButton}) {
        Press(place, button);
        staff_->picBox_MouseDown(1, 0, static_cast<float>(place.x() * 15),
                                 static_cast<float>(place.y() * 15));
        Release(place, button);
      }
    QImage picture(10, 10, QImage::Format_ARGB32);
    QPainter painter(&picture);
    staff_->render(&painter);
  }
  EXPECT_EQ(dialogue_.shown, 0);
}

}  // namespace
}  // namespace zelmar
