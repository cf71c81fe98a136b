// The areas before the notes of the first staff of a row.
#include <cmath>

#include "notation/staff_hand.h"

namespace zelmar {
namespace {

using namespace testing_support;

class StaffAreas : public StaffHand {
 protected:
  void Watch() {
    corner_ = std::make_unique<QSignalSpy>(staff_, &CtlQuilStaff::ClickedTopCorner);
    clef_ = std::make_unique<QSignalSpy>(staff_, &CtlQuilStaff::ClickedClef);
    signature_ = std::make_unique<QSignalSpy>(staff_, &CtlQuilStaff::ClickedSignature);
  }
  QList<int> Counts() const {
    return {static_cast<int>(corner_->count()), static_cast<int>(clef_->count()),
            static_cast<int>(signature_->count())};
  }

  std::unique_ptr<QSignalSpy> corner_, clef_, signature_;
};

TEST_F(StaffAreas, TheTopCornerEndsAt200Twips) {
  Show();
  Watch();
  Press(QPoint(0, 0));
  Press(QPoint(13, 13));  // 195 twips
  EXPECT_EQ(Counts(), QList<int>({2, 0, 0}));
  EXPECT_FLOAT_EQ(corner_->at(1).at(0).toFloat(), 195.0F);
  EXPECT_FLOAT_EQ(corner_->at(1).at(1).toFloat(), 195.0F);
  EXPECT_EQ(staff_->Clef(), QStringLiteral("Treble"));
  Press(QPoint(13, 14));  // 210 twips down: the clef
  EXPECT_EQ(Counts(), QList<int>({2, 1, 0}));
  Press(QPoint(14, 13));
  EXPECT_EQ(Counts(), QList<int>({2, 2, 0}));
}

TEST_F(StaffAreas, APressOnTheClefFlipsItBeforeItIsTold) {
  Show();
  Watch();
  QStringList told;
  QObject::connect(staff_, &CtlQuilStaff::ClickedClef, staff_, [&] { told.append(staff_->Clef()); });
  Press(QPoint(38, 100));  // 570 of 575 twips
  Press(QPoint(38, 100));
  EXPECT_EQ(told, QStringList({QStringLiteral("Bass"), QStringLiteral("Treble")}));
  EXPECT_EQ(Counts(), QList<int>({0, 2, 0}));
  Press(QPoint(39, 100));  // 585
  EXPECT_EQ(Counts(), QList<int>({0, 2, 1}));
}

TEST_F(StaffAreas, TheClefIsSeenToFlip) {
  Show();
  ASSERT_TRUE(staff_->imgTreble().visible);
  Press(QPoint(20, 100));
  QCoreApplication::processEvents();
  EXPECT_FALSE(staff_->imgTreble().visible);
  EXPECT_TRUE(staff_->imgBass().visible);
}

TEST_F(StaffAreas, TheSignaturesEnd80TwipsBeforeTheNotes) {
  tune_->SetKeySignature(-3);
  AddNote(QStringLiteral("G4"), 1);
  Show();
  Watch();
  const int edge = static_cast<int>(std::ceil((staff_->NotesLeft() - 80.0F) / 15.0F));
  Press(QPoint(edge - 1, 100));
  EXPECT_EQ(Counts(), QList<int>({0, 0, 1}));
  Press(QPoint(edge, 100));
  EXPECT_EQ(Counts(), QList<int>({0, 0, 1}));
}

TEST_F(StaffAreas, TheyWorkWithoutEditsAndWithoutATune) {
  tune_ = nullptr;
  Show();
  Watch();
  staff_->SetAllowEdits(false);
  Press(QPoint(5, 5));
  Press(QPoint(20, 100));
  Press(QPoint(50, 100));
  EXPECT_EQ(Counts(), QList<int>({1, 1, 1}));
}

TEST_F(StaffAreas, OnlyTheFirstStaffOfARowHasThem) {
  AddNote(QStringLiteral("G4"), 1);
  Show();
  staff_->SetBarOffset(1);
  Watch();
  for (const QPoint place : {QPoint(5, 5), QPoint(20, 100), QPoint(50, 100)}) Press(place);
  EXPECT_EQ(Counts(), QList<int>({0, 0, 0}));
  EXPECT_EQ(staff_->Clef(), QStringLiteral("Treble"));
}

TEST_F(StaffAreas, AClefOfAnotherWordHasNoPitchesAndBecomesTrebleByAPress) {
  AddNote(QStringLiteral("G4"), 2);
  Show();
  Watch();
  staff_->SetClef(QStringLiteral("Alto"));
  staff_->RePaint();
  for (int step = -4; step <= 14; ++step) {
    Press(Pixel(2, step));
    Press(Pixel(2, step), Qt::RightButton, Qt::ControlModifier);
    Release(Pixel(2, step));
  }
  EXPECT_EQ(Notes().size(), 1);
  EXPECT_EQ(NotesOff(), 0);
  EXPECT_TRUE(Sent().empty());
  Press(QPoint(20, 100));
  EXPECT_EQ(staff_->Clef(), QStringLiteral("Treble"));
  EXPECT_EQ(Counts(), QList<int>({0, 1, 0}));
}

}  // namespace
}  // namespace zelmar
