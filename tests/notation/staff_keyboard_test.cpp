// The keyboard on a staff: its cursor, and the keys that press and release there.
#include "notation/staff_cursor.h"
#include "notation/staff_hand.h"
#include "notation/staff_steps.h"

namespace zelmar {
namespace {

using namespace testing_support;

constexpr int kG4 = 3;

class StaffKeyboard : public StaffHand {
 protected:
  void Start() {
    Show();
    // As a Tab brings it.
    staff_->setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(staff_->hasFocus());
  }
  const StaffCursor& Cursor() const { return Find<StaffCursor>(*staff_, "StaffCursor"); }
  void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}, int times = 1) {
    for (int i = 0; i < times; ++i) QTest::keyClick(staff_.data(), key, modifiers);
  }
  // The cursor stands at beat 1 on the middle line at first.
  void MoveTo(double position, int step) {
    Key(Qt::Key_Left, {}, 40);
    Key(Qt::Key_Down, {}, 40);
    Key(Qt::Key_Right, {}, static_cast<int>((position - 1) * 4));
    Key(Qt::Key_Up, {}, step - kLowestStep);
  }
};

TEST_F(StaffKeyboard, TheFocusIsSeen) {
  Show();
  EXPECT_FALSE(staff_->picBox()->FocusRim());
  EXPECT_FALSE(Cursor().isVisible());
  staff_->setFocus(Qt::TabFocusReason);
  EXPECT_TRUE(staff_->picBox()->FocusRim());
  EXPECT_TRUE(Cursor().isVisible());
  const QImage with = staff_->grab().toImage();
  staff_->clearFocus();
  EXPECT_FALSE(staff_->picBox()->FocusRim());
  EXPECT_FALSE(Cursor().isVisible());
  const QImage without = staff_->grab().toImage();
  for (const QPoint edge : {QPoint(0, 20), QPoint(599, 20), QPoint(300, 199)}) {
    EXPECT_EQ(without.pixelColor(edge), QColor(Qt::white));
    EXPECT_NE(with.pixelColor(edge), without.pixelColor(edge));
  }
}

TEST_F(StaffKeyboard, TheRimOfTheFocusGoesRoundStaffAndWordsAndHidesNothing) {
  tune_->Words()->Add(0, 1, 1, QStringLiteral("grace"));
  AddNote(QStringLiteral("D6"), 1);
  AddNote(QStringLiteral("G3"), 4, 90);
  Show();
  staff_->SetShowWords(true);
  staff_->RePaint();
  const QImage without = staff_->grab().toImage();
  staff_->setFocus(Qt::MouseFocusReason);
  const QImage with = staff_->grab().toImage();
  int ink = 0;
  for (int y = 0; y < without.height(); ++y)
    for (int x = 0; x < without.width(); ++x) {
      const int before = qGray(without.pixel(x, y));
      ink += before < 255 ? 1 : 0;
      ASSERT_LE(qGray(with.pixel(x, y)), before) << x << ", " << y;
      const bool edge = x < 2 || y < 2 || x >= without.width() - 2 || y >= without.height() - 2;
      ASSERT_TRUE(edge ? qGray(with.pixel(x, y)) < 200 : with.pixel(x, y) == without.pixel(x, y))
          << x << ", " << y;
    }
  EXPECT_GT(ink, 1000);
}

TEST_F(StaffKeyboard, AFocusByTheMouseShowsNoCursor) {
  Show();
  staff_->setFocus(Qt::MouseFocusReason);
  EXPECT_FALSE(Cursor().isVisible());
  EXPECT_TRUE(staff_->picBox()->FocusRim());
  Key(Qt::Key_Right);
  EXPECT_TRUE(Cursor().isVisible());
}

TEST_F(StaffKeyboard, ArrowsMoveTheCursorOverQuartersAndSteps) {
  Start();
  EXPECT_EQ(Cursor().Quarter(), 0);
  Key(Qt::Key_Right);
  Key(Qt::Key_Up);
  EXPECT_EQ(Cursor().Quarter(), 1);
  EXPECT_EQ(Cursor().Step(), 6);
  Key(Qt::Key_Right, Qt::ControlModifier, 2);
  EXPECT_EQ(Cursor().Quarter(), 9);
  Key(Qt::Key_Left, Qt::ControlModifier);
  Key(Qt::Key_Left);
  Key(Qt::Key_Down, {}, 2);
  EXPECT_EQ(Cursor().Quarter(), 4);
  EXPECT_EQ(Cursor().Step(), 4);
}

TEST_F(StaffKeyboard, TheCursorIsAsHighAsItsSurfaceWhereverItStands) {
  Start();
  for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Right, Qt::Key_Down}) {
    Key(key, {}, 3);
    EXPECT_EQ(Cursor().y(), 0);
    EXPECT_EQ(Cursor().height(), Cursor().parentWidget()->height());
  }
}

TEST_F(StaffKeyboard, TheCursorStaysInTheBarAndOnTheStaff) {
  Start();
  Key(Qt::Key_Left);
  EXPECT_EQ(Cursor().Quarter(), 0);
  Key(Qt::Key_Right, {}, 30);
  EXPECT_EQ(Cursor().Quarter(), 15);
  Key(Qt::Key_Up, {}, 30);
  EXPECT_EQ(Cursor().Step(), kHighestStep);
  Key(Qt::Key_Down, {}, 40);
  EXPECT_EQ(Cursor().Step(), kLowestStep);
}

TEST_F(StaffKeyboard, TheCursorIsSeenWhereItStands) {
  Start();
  MoveTo(3, kG4);
  EXPECT_NEAR(Cursor().geometry().center().x(), Pixel(3, kG4).x(), 2);
  staff_->resize(900, 200);
  EXPECT_NEAR(Cursor().geometry().center().x(), Pixel(3, kG4).x(), 2);
}

TEST_F(StaffKeyboard, APressByTheMouseBringsTheCursorAlong) {
  Start();
  Press(Pixel(2.5, kG4));
  Release(Pixel(2.5, kG4));
  EXPECT_FALSE(Cursor().isVisible());
  Key(Qt::Key_Up);
  EXPECT_EQ(Cursor().Quarter(), 6);
  EXPECT_EQ(Cursor().Step(), kG4);
}

// --- Pressing ---

TEST_F(StaffKeyboard, EnterAddsANoteAndHearsIt) {
  Start();
  MoveTo(2.25, kG4);
  Key(Qt::Key_Return);
  ASSERT_EQ(Notes().size(), 1);
  EXPECT_EQ(Notes()[0]->Pitch(), QStringLiteral("G4"));
  EXPECT_EQ(Notes()[0]->Beat(), 2);
  EXPECT_EQ(Notes()[0]->Tick(), 30);
  EXPECT_EQ(Sent(), Words({Patch(73), NoteOn(67, 90), NoteOn(67, 0)}));
  EXPECT_EQ(NotesOff(), 1);
  Key(Qt::Key_Enter, Qt::KeypadModifier);
  EXPECT_EQ(Notes().size(), 1);
  EXPECT_EQ(Sent().size(), 6U);
}

TEST_F(StaffKeyboard, EveryQuarterAndStepIsTheOneTheMouseFinds) {
  Start();
  for (int quarter = 0; quarter < 16; ++quarter)
    for (const int step : {kLowestStep, 0, 5, kHighestStep}) {
      tune_->SetTones(std::make_shared<Tones>());
      MoveTo(1 + quarter / 4.0, step);
      Key(Qt::Key_Return);
      ASSERT_EQ(Notes().size(), 1);
      EXPECT_EQ(Notes()[0]->Beat(), 1 + quarter / 4);
      EXPECT_EQ(Notes()[0]->Tick(), 30 * (quarter % 4));
      EXPECT_EQ(Notes()[0]->Number(), *PitchOfStep(ClefKind::kTreble, step));
    }
}

struct KeyRow {
  Qt::Key key;
  Qt::KeyboardModifiers modifiers;
  double duration_after;  // of a crotchet
  int notes_after;
  int dialogues;
};

TEST_F(StaffKeyboard, KeysDoWhatTheButtonsDo) {
  const KeyRow rows[] = {
      {Qt::Key_Return, Qt::NoModifier, 1.0, 1, 0},   {Qt::Key_Return, Qt::ShiftModifier, 0.5, 1, 0},
      {Qt::Key_Enter, Qt::ShiftModifier, 0.5, 1, 0}, {Qt::Key_Minus, Qt::NoModifier, 0.5, 1, 0},
      {Qt::Key_Menu, Qt::NoModifier, 1.0, 1, 1},     {Qt::Key_F10, Qt::ShiftModifier, 1.0, 1, 1},
      {Qt::Key_Menu, Qt::ShiftModifier, 2.0, 1, 0},  {Qt::Key_Plus, Qt::NoModifier, 2.0, 1, 0},
      {Qt::Key_Plus, Qt::ShiftModifier, 2.0, 1, 0},  {Qt::Key_Menu, Qt::ControlModifier, 1.0, 0, 0},
      {Qt::Key_Delete, Qt::NoModifier, 1.0, 0, 0},
  };
  Start();
  for (const KeyRow& row : rows) {
    tune_->SetTones(std::make_shared<Tones>());
    const auto note = AddNote(QStringLiteral("G4"), 2);
    dialogue_.shown = 0;
    MoveTo(2, kG4);
    Key(row.key, row.modifiers);
    EXPECT_DOUBLE_EQ(note->Duration(), row.duration_after) << row.key;
    EXPECT_EQ(Notes().size(), row.notes_after) << row.key;
    EXPECT_EQ(dialogue_.shown, row.dialogues) << row.key;
  }
}

TEST_F(StaffKeyboard, TheSystemsMenuRequestOpensTheDialogueAndThatOfTheMouseDoesNot) {
  AddNote(QStringLiteral("G4"), 2);
  Start();
  MoveTo(2, kG4);
  QContextMenuEvent by_mouse(QContextMenuEvent::Mouse, Pixel(2, kG4), staff_->mapToGlobal(Pixel(2, kG4)));
  QCoreApplication::sendEvent(staff_, &by_mouse);
  EXPECT_EQ(dialogue_.shown, 0);
  QContextMenuEvent by_keys(QContextMenuEvent::Keyboard, QPoint(), QPoint());
  QCoreApplication::sendEvent(staff_, &by_keys);
  EXPECT_EQ(dialogue_.shown, 1);
}

TEST_F(StaffKeyboard, AHeldKeyPressesOnce) {
  const auto note = AddNote(QStringLiteral("G4"), 2, 0, 1.0);
  Start();
  MoveTo(2, kG4);
  Key(Qt::Key_Return, Qt::ShiftModifier);
  QKeyEvent again(QEvent::KeyPress, Qt::Key_Return, Qt::ShiftModifier, {}, true);
  QCoreApplication::sendEvent(staff_, &again);
  EXPECT_DOUBLE_EQ(note->Duration(), 0.5);
}

// --- Taking up and dropping ---

TEST_F(StaffKeyboard, CtrlEnterTakesANoteUpAndEnterDropsIt) {
  const auto note = AddNote(QStringLiteral("G4"), 2);
  Start();
  MoveTo(2, kG4);
  Key(Qt::Key_Return, Qt::ControlModifier);
  EXPECT_TRUE(staff_->DraggingNote());
  EXPECT_TRUE(Cursor().Carrying());
  EXPECT_EQ(staff_->cursor().shape(), Qt::CrossCursor);
  Key(Qt::Key_Right, {}, 5);
  Key(Qt::Key_Up, {}, 2);
  EXPECT_EQ(note->Beat(), 2);  // in the hand
  Key(Qt::Key_Return);
  EXPECT_FALSE(staff_->DraggingNote());
  EXPECT_FALSE(Cursor().Carrying());
  EXPECT_EQ(staff_->cursor().shape(), Qt::ArrowCursor);
  EXPECT_EQ(note->Pitch(), QStringLiteral("B4"));
  EXPECT_EQ(note->Beat(), 3);
  EXPECT_EQ(note->Tick(), 30);
  EXPECT_EQ(Notes().size(), 1);
}

TEST_F(StaffKeyboard, CtrlEnterOnNothingTakesNothingUp) {
  Start();
  Key(Qt::Key_Return, Qt::ControlModifier);
  EXPECT_FALSE(staff_->DraggingNote());
  EXPECT_FALSE(Cursor().Carrying());
}

TEST_F(StaffKeyboard, EscapePutsTheNoteBack) {
  const auto note = AddNote(QStringLiteral("G4"), 2);
  Start();
  MoveTo(2, kG4);
  Key(Qt::Key_Return, Qt::ControlModifier);
  Key(Qt::Key_Right, {}, 4);
  Key(Qt::Key_Escape);
  EXPECT_FALSE(staff_->DraggingNote());
  EXPECT_EQ(staff_->cursor().shape(), Qt::ArrowCursor);
  EXPECT_EQ(Sent().back(), NoteOn(67, 0));
  EXPECT_EQ(note->Beat(), 2);
  EXPECT_EQ(note->Pitch(), QStringLiteral("G4"));
}

TEST_F(StaffKeyboard, LosingTheFocusOrAPressByTheMousePutsTheNoteBack) {
  const auto note = AddNote(QStringLiteral("G4"), 2);
  Start();
  MoveTo(2, kG4);
  Key(Qt::Key_Return, Qt::ControlModifier);
  staff_->clearFocus();
  EXPECT_FALSE(staff_->DraggingNote());
  staff_->setFocus(Qt::TabFocusReason);
  Key(Qt::Key_Return, Qt::ControlModifier);
  ASSERT_TRUE(staff_->DraggingNote());
  Press(Pixel(4, kG4), Qt::LeftButton, Qt::ShiftModifier);
  EXPECT_FALSE(staff_->DraggingNote());
  EXPECT_EQ(note->Beat(), 2);
}

// --- Other keys ---

TEST_F(StaffKeyboard, OtherKeysGoOnToTheWindow) {
  Start();
  for (const auto key : {Qt::Key_F2, Qt::Key_PageUp, Qt::Key_Home, Qt::Key_A, Qt::Key_Escape}) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(staff_, &event);
    EXPECT_FALSE(event.isAccepted()) << key;
  }
}

TEST_F(StaffKeyboard, TabGoesOnToTheNextControl) {
  Show();
  QWidget next(&window_);
  next.setFocusPolicy(Qt::StrongFocus);
  next.show();
  QWidget::setTabOrder(staff_, &next);
  staff_->setFocus(Qt::TabFocusReason);
  Key(Qt::Key_Tab);
  EXPECT_TRUE(next.hasFocus());
}

TEST_F(StaffKeyboard, WithoutEditsOrWithoutATuneTheKeysGoOn) {
  Start();
  staff_->SetAllowEdits(false);
  Key(Qt::Key_Return);
  EXPECT_TRUE(Notes().isEmpty());
  staff_->SetAllowEdits(true);
  staff_->Setup(nullptr);
  QKeyEvent event(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
  QCoreApplication::sendEvent(staff_, &event);
  EXPECT_FALSE(event.isAccepted());
}

TEST_F(StaffKeyboard, TheDialogueMayCloseTheWindowOfItsStaff) {
  AddNote(QStringLiteral("G4"), 2);
  Start();
  MoveTo(2, kG4);
  dialogue_.on_show = [this] {
    staff_->deleteLater();
    LetClosedWindowsGo();
  };
  Key(Qt::Key_Menu);
  LetClosedWindowsGo();
  EXPECT_EQ(staff_, nullptr);
  EXPECT_EQ(dialogue_.shown, 1);
}

}  // namespace
}  // namespace zelmar
