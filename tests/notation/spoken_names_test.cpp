// What a screen reader is told of staves, strips and the piano: names that say what is shown, and the note
// under the cursor.
#include <QAccessible>

#include "notation/ctl_piano.h"
#include "notation/staff_hand.h"
#include "notation/staff_steps.h"
#include "notation/track_staff.h"

namespace zelmar {
namespace {

using namespace testing_support;

class SpokenNames : public StaffHand {
 protected:
  // As the reader asks for them.
  static QString Told(QWidget& widget, QAccessible::Text what) {
    QAccessibleInterface* const reader = QAccessible::queryAccessibleInterface(&widget);
    return reader == nullptr ? QString() : reader->text(what);
  }
  static QString NameOf(QWidget& widget) { return Told(widget, QAccessible::Name); }
  QString CursorText() const { return Told(*staff_, QAccessible::Description); }

  void AddBars(int count) {
    for (int bar = 1; bar <= count; ++bar) AddNote(QStringLiteral("G4"), 1, 0, 1.0, bar);
  }
  void ShowStrip(std::int16_t across) {
    strip_ = std::make_unique<TrackStaff>();
    strip_->resize(900, 100);
    strip_->SetTune(tune_);
    strip_->SetBarsAcross(across);
    strip_->LoadBarsAcross(QStringLiteral("Treble"));
  }
  void TurnTo(std::int16_t bar) {
    tune_->SetBarNumber(bar);
    tune_->SetBeatWithinBar(1);
    Q_EMIT tune_->Ticked();
  }
  void Key(Qt::Key key, int times = 1) {
    for (int i = 0; i < times; ++i) QTest::keyClick(staff_.data(), key);
  }

  std::unique_ptr<TrackStaff> strip_;
};

TEST_F(SpokenNames, AStaffTellsItsTrackAndBar) {
  AddBars(3);
  Show();
  staff_->RePaint();
  EXPECT_EQ(NameOf(*staff_), QStringLiteral("Staff of track 1, Flute, bar 1"));
  staff_->SetCurrentBar(3);
  staff_->RePaint();
  EXPECT_EQ(NameOf(*staff_), QStringLiteral("Staff of track 1, Flute, bar 3"));
}

TEST_F(SpokenNames, ATrackIsToldAsTheTuneHasIt) {
  tune_->Tracks()->Add(QStringLiteral("100%1 Oboe"), 2, 1, 0, false, 0, 0, QStringLiteral("2"));
  tune_->Tracks()->Add(QString(), 3, 1, 0, false, 0, 0, QStringLiteral("3"));
  AddBars(1);
  Show();
  staff_->SetSelectedTrack(2);
  staff_->RePaint();
  EXPECT_EQ(NameOf(*staff_), QStringLiteral("Staff of track 2, 100%1 Oboe, bar 1"));
  staff_->SetSelectedTrack(3);
  staff_->RePaint();
  EXPECT_EQ(NameOf(*staff_), QStringLiteral("Staff of track 3, bar 1"));
  staff_->SetSelectedTrack(9);
  staff_->RePaint();
  EXPECT_EQ(NameOf(*staff_), QStringLiteral("Staff of track 9, bar 1"));
}

TEST_F(SpokenNames, AStaffWithoutATuneOrPastTheLastBarSaysSo) {
  CtlQuilStaff bare;
  EXPECT_EQ(NameOf(bare), QStringLiteral("Staff without a tune"));
  AddBars(2);
  Show();
  TurnTo(2);
  EXPECT_EQ(NameOf(*staff_), QStringLiteral("Staff of track 1, Flute, bar 2"));
  TurnTo(3);
  EXPECT_EQ(NameOf(*staff_), QStringLiteral("Staff of track 1, Flute, no bar"));
  staff_->Setup(nullptr);
  EXPECT_EQ(NameOf(*staff_), QStringLiteral("Staff without a tune"));
}

TEST_F(SpokenNames, AStripTellsItsBarsAlsoWhenTheTuneTurnsThePage) {
  AddBars(8);
  ShowStrip(3);
  EXPECT_EQ(NameOf(*strip_), QStringLiteral("Staff of track 1, Flute, bar 1 to 3"));
  EXPECT_EQ(NameOf(*strip_->MyStaff()[1]), QStringLiteral("Staff of track 1, Flute, bar 2"));
  strip_->RefreshAllStaffs(5);
  EXPECT_EQ(NameOf(*strip_), QStringLiteral("Staff of track 1, Flute, bar 5 to 7"));
  TurnTo(3);
  EXPECT_EQ(NameOf(*strip_), QStringLiteral("Staff of track 1, Flute, bar 3 to 5"));
  TurnTo(6);
  EXPECT_EQ(NameOf(*strip_), QStringLiteral("Staff of track 1, Flute, bar 6 to 8"));
  TurnTo(9);
  EXPECT_EQ(NameOf(*strip_), QStringLiteral("Staff of track 1, Flute"));
}

TEST_F(SpokenNames, AStripOfOneStaffTellsItsBar) {
  AddBars(2);
  ShowStrip(1);
  EXPECT_EQ(NameOf(*strip_), QStringLiteral("Staff of track 1, Flute, bar 1"));
  strip_->SetTune(nullptr);
  EXPECT_EQ(NameOf(*strip_), QStringLiteral("Staves without a tune"));
}

TEST_F(SpokenNames, TheNoteUnderTheCursorIsToldWithItsPlace) {
  AddNote(QStringLiteral("G4"), 1);
  AddNote(QStringLiteral("C#5"), 2, 60)->SetEnHarmonic(QStringLiteral("b"));
  Show();
  EXPECT_EQ(CursorText(), QString()) << "before the keyboard is there";
  staff_->setFocus(Qt::TabFocusReason);
  EXPECT_EQ(CursorText(), QStringLiteral("No note on B4, bar 1, beat 1"));
  Key(Qt::Key_Down, 2);
  EXPECT_EQ(CursorText(), QStringLiteral("Note G4, bar 1, beat 1"));
  Key(Qt::Key_Right);
  EXPECT_EQ(CursorText(), QStringLiteral("No note on G4, bar 1, beat 1.25"));
  Key(Qt::Key_Right, 5);
  Key(Qt::Key_Up, 3);
  EXPECT_EQ(CursorText(), QStringLiteral("Note Db5, bar 1, beat 2.5"));
}

TEST_F(SpokenNames, WhatAKeyDoesUnderTheCursorIsTold) {
  Show();
  staff_->setFocus(Qt::TabFocusReason);
  Key(Qt::Key_Return);
  EXPECT_EQ(CursorText(), QStringLiteral("Note B4, bar 1, beat 1"));
  Key(Qt::Key_Delete);
  EXPECT_EQ(CursorText(), QStringLiteral("No note on B4, bar 1, beat 1"));
}

TEST_F(SpokenNames, TheCursorFollowsToTheBarThatIsShown) {
  AddBars(1);
  AddNote(QStringLiteral("B4"), 1, 0, 1.0, 2);
  Show();
  staff_->setFocus(Qt::TabFocusReason);
  TurnTo(2);
  EXPECT_EQ(CursorText(), QStringLiteral("Note B4, bar 2, beat 1"));
}

TEST_F(SpokenNames, LookingForTheNoteTakesNothingUp) {
  const auto note = AddNote(QStringLiteral("B4"), 1);
  Show();
  staff_->setFocus(Qt::TabFocusReason);
  EXPECT_EQ(CursorText(), QStringLiteral("Note B4, bar 1, beat 1"));
  EXPECT_EQ(staff_->MatchIndex(), 0);
  EXPECT_EQ(staff_->ThisTone(), nullptr);
}

TEST_F(SpokenNames, APianoTellsItsKeysAndWhereTheLettersPlay) {
  CtlPiano piano;
  EXPECT_EQ(NameOf(piano), QStringLiteral("Piano keyboard"));
  EXPECT_EQ(Told(piano, QAccessible::Description),
            QStringLiteral("Keys C2 to E6. The letters Z to M play from C4 on."));
  QTest::keyClick(&piano, Qt::Key_BracketRight);
  EXPECT_EQ(Told(piano, QAccessible::Description),
            QStringLiteral("Keys C2 to E6. The letters Z to M play from C5 on."));
  piano.SetBottomOctave(4);
  piano.SetWhiteNoteCount(15);
  EXPECT_EQ(Told(piano, QAccessible::Description),
            QStringLiteral("Keys C4 to C6. The letters Z to M play from C4 on."));
}

}  // namespace
}  // namespace zelmar
