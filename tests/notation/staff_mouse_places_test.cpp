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

// --- Rounding ---

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

// --- Finding ---

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
  std::int32_t index = 9;
  staff_->FindMatchingNote(72, 2.0, index);
  EXPECT_EQ(index, 0);
  EXPECT_EQ(staff_->ThisTone(), nullptr);
}

TEST_F(StaffMouse, TheWalkEndsAtTheFirstNoteOfALaterBar) {
  AddNote(QStringLiteral("C5"), 1, 0, 1.0, 2);
  AddNote(QStringLiteral("C5"), 2);
  Show();
  std::int32_t index = 9;
  staff_->FindMatchingNote(72, 2.0, index);
  EXPECT_EQ(index, 0);
}

TEST_F(StaffMouse, EventsThatAreNoNotesAreSkipped) {
  AddNote(QStringLiteral("C5"), 2)->SetEventType(7);
  AddNote(QStringLiteral("C5"), 1, 0, 1.0, 5)->SetEventType(7);
  const auto note = AddNote(QStringLiteral("C5"), 2, 10);
  Show();
  std::int32_t index = 9;
  staff_->FindMatchingNote(72, 2.0, index);
  EXPECT_EQ(index, 3);
  EXPECT_EQ(staff_->ThisTone(), note);
}

// --- Long tunes ---

constexpr int kLastBar = 5000;
constexpr int kEvents = 40000;

// 40,000 notes, more than a place of 16 bits tells apart, eight to a bar. The last bar is on show; its notes
// are G4 and C5 by turns.
class LongTune : public StaffHand {
 protected:
  LongTune() {
    const auto tones = std::make_shared<Tones>();
    for (int i = 0; i < kEvents; ++i) {
      const auto tone = std::make_shared<Tone>();
      tone->SetAbsRef(i + 1);
      tone->SetNumber(static_cast<std::int16_t>(i % 2 == 0 ? 67 : 72));
      tone->SetBar(static_cast<std::int16_t>(i / 8 + 1));
      tone->SetBeat(static_cast<std::int16_t>(i / 2 % 4 + 1));
      tone->SetTick(static_cast<std::int16_t>(i % 2 * 60));
      tone->SetDuration(0.5);
      tone->SetTrack(1);
      tone->SetChannel(3);
      tone->SetVolume(100);
      tones->Add(tone);
    }
    last_ = tones->Item(kEvents);
    tune_->SetTones(tones);
    tune_->SetLastAbsRef(kEvents);
    Show();
    staff_->SetCurrentBar(kLastBar);
    staff_->RePaint();
  }

  QPoint LastNote() const { return Pixel(4.5, kC5); }

  std::shared_ptr<Tone> last_;
};

TEST_F(LongTune, ItsLastNoteIsHeard) {
  Press(LastNote());
  EXPECT_EQ(staff_->MatchIndex(), kEvents);
  EXPECT_EQ(staff_->ThisTone(), last_);
  EXPECT_EQ(Sent().back(), NoteOn(72, 100));
}

TEST_F(LongTune, ItsLastNoteIsEdited) {
  Press(LastNote(), Qt::RightButton);
  EXPECT_EQ(dialogue_.shown, 1);
  EXPECT_EQ(dialogue_.tone, last_);
  Press(LastNote(), Qt::LeftButton, Qt::ShiftModifier);
  EXPECT_DOUBLE_EQ(last_->Duration(), 0.25);
}

TEST_F(LongTune, ItsLastNoteIsDragged) {
  Press(LastNote(), Qt::LeftButton, Qt::ControlModifier);
  EXPECT_TRUE(staff_->DraggingNote());
  Release(Pixel(4.75, kG4), Qt::LeftButton, Qt::ControlModifier);
  EXPECT_EQ(last_->Number(), 67);
  EXPECT_EQ(last_->Bar(), kLastBar);
  EXPECT_EQ(last_->Tick(), 90);
  EXPECT_TRUE(tune_->ChangedSinceLastSaved());
}

TEST_F(LongTune, ItsLastNoteIsRemovedAndOneIsAddedBehind) {
  Press(LastNote(), Qt::RightButton, Qt::ControlModifier);
  EXPECT_EQ(Notes().size(), kEvents - 1);
  EXPECT_FALSE(Notes().contains(last_));
  Press(Pixel(4.75, kG4));
  EXPECT_EQ(Notes().size(), kEvents);
  EXPECT_EQ(Notes().back()->Bar(), kLastBar);
  EXPECT_EQ(Notes().back()->Tick(), 90);
}

// --- Bad input ---

TEST_F(StaffMouse, WithoutATuneNothingHappens) {
  tune_ = nullptr;
  Show();
  for (const auto button : {Qt::LeftButton, Qt::RightButton})
    for (const auto modifier : {Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier}) {
      Press(Pixel(2, kG4), button, modifier);
      Release(Pixel(2, kG4), button, modifier);
    }
  EXPECT_TRUE(Sent().empty());
  std::int32_t index = 4;
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
