// The keyboard on a staff: arrows move a cursor, and keys press and release there as a mouse would.

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <algorithm>

#include "notation/ctl_quil_staff.h"
#include "notation/staff_cursor.h"

namespace zelmar {

namespace {

constexpr int kQuartersOfABeat = 4;

struct PressOfAKey {
  int key;
  Qt::KeyboardModifiers modifiers;
  int button;
  int shift;
};

// The keys that stand for a button. Those of the right button that not every keyboard has stand twice.
constexpr PressOfAKey kPresses[] = {
    {Qt::Key_Return, Qt::NoModifier, CtlQuilStaff::kLeftButton, 0},
    {Qt::Key_Enter, Qt::NoModifier, CtlQuilStaff::kLeftButton, 0},
    {Qt::Key_Return, Qt::ShiftModifier, CtlQuilStaff::kLeftButton, CtlQuilStaff::kShift},
    {Qt::Key_Enter, Qt::ShiftModifier, CtlQuilStaff::kLeftButton, CtlQuilStaff::kShift},
    {Qt::Key_Return, Qt::ControlModifier, CtlQuilStaff::kLeftButton, CtlQuilStaff::kCtrl},
    {Qt::Key_Enter, Qt::ControlModifier, CtlQuilStaff::kLeftButton, CtlQuilStaff::kCtrl},
    {Qt::Key_Minus, Qt::NoModifier, CtlQuilStaff::kLeftButton, CtlQuilStaff::kShift},
    {Qt::Key_Menu, Qt::NoModifier, CtlQuilStaff::kRightButton, 0},
    {Qt::Key_F10, Qt::ShiftModifier, CtlQuilStaff::kRightButton, 0},
    {Qt::Key_Menu, Qt::ShiftModifier, CtlQuilStaff::kRightButton, CtlQuilStaff::kShift},
    {Qt::Key_Plus, Qt::NoModifier, CtlQuilStaff::kRightButton, CtlQuilStaff::kShift},
    {Qt::Key_Plus, Qt::ShiftModifier, CtlQuilStaff::kRightButton, CtlQuilStaff::kShift},
    {Qt::Key_Menu, Qt::ControlModifier, CtlQuilStaff::kRightButton, CtlQuilStaff::kCtrl},
    {Qt::Key_Delete, Qt::NoModifier, CtlQuilStaff::kRightButton, CtlQuilStaff::kCtrl},
};

}  // namespace

void CtlQuilStaff::keyPressEvent(QKeyEvent* event) {
  const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
  if (!HandleKey(event->key(), modifiers, event->isAutoRepeat())) QWidget::keyPressEvent(event);
}

bool CtlQuilStaff::HandleKey(int key, Qt::KeyboardModifiers modifiers, bool repeated) {
  if (!AllowEdits() || !ThisTune()) return false;
  const bool by_beats = modifiers == Qt::ControlModifier;
  if (modifiers == Qt::NoModifier || by_beats) {
    const int quarters = by_beats ? kQuartersOfABeat : 1;
    switch (key) {
      case Qt::Key_Left:
        MoveCursor(-quarters, 0);
        return true;
      case Qt::Key_Right:
        MoveCursor(quarters, 0);
        return true;
      case Qt::Key_Up:
        MoveCursor(0, 1);
        return true;
      case Qt::Key_Down:
        MoveCursor(0, -1);
        return true;
      default:
        break;
    }
  }
  if (key == Qt::Key_Escape && cursor_->Carrying()) {
    CancelCarrying();
    return true;
  }
  for (const PressOfAKey& press : kPresses) {
    if (press.key != key || press.modifiers != modifiers) continue;
    // A key that is held is one press.
    if (!repeated) PressAtCursor(press.button, press.shift);
    return true;
  }
  return false;
}

void CtlQuilStaff::PressAtCursor(int button, int shift) {
  ShowCursor();
  const auto x = static_cast<float>(CursorPlace().x());
  const auto y = static_cast<float>(CursorPlace().y());
  if (cursor_->Carrying()) {
    if (button != kLeftButton) return;
    cursor_->SetCarrying(false);
    picBox_MouseUp(button, 0, x, y);
    return;
  }
  const QPointer<CtlQuilStaff> self(this);
  picBox_MouseDown(button, shift, x, y);
  if (!self) return;
  // A note that was taken up stays in the hand until the next press.
  if (DraggingNote_)
    cursor_->SetCarrying(true);
  else
    picBox_MouseUp(button, shift, x, y);
  if (self) ShowCursor();
}

void CtlQuilStaff::CancelCarrying() {
  if (!cursor_->Carrying()) return;
  cursor_->SetCarrying(false);
  DraggingNote_ = false;
  EndSound();
  unsetCursor();
}

// --- The cursor ---

void CtlQuilStaff::MoveCursor(int quarters, int steps) {
  // A cursor that is out of sight shows itself first.
  if (!cursor_->isVisibleTo(this)) {
    ShowCursor();
    return;
  }
  cursor_->SetPlace(cursor_->Quarter() + quarters, cursor_->Step() + steps);
  ShowCursor();
}

void CtlQuilStaff::MoveCursorTo(double position, float y) {
  if (LineGap() <= 0.0F) return;
  const double step = (8.5 * LineGap() - static_cast<double>(y)) * 2.0 / LineGap();
  cursor_->SetPlace(static_cast<int>((position - 1.0) * kQuartersOfABeat),
                    static_cast<int>(std::lround(step)));
}

QPointF CtlQuilStaff::CursorPlace() const {
  const double beats = cursor_->Quarter() / static_cast<double>(kQuartersOfABeat);
  const double room = static_cast<double>(StaffWidth()) - static_cast<double>(NotesLeft());
  return {NotesLeft() + beats / BeatsPerBar() * room, YOfStep(cursor_->Step())};
}

void CtlQuilStaff::ShowCursor() {
  MeasureHead();
  cursor_->SetPlace(std::clamp(cursor_->Quarter(), 0, BeatsPerBar() * kQuartersOfABeat - 1),
                    std::clamp(cursor_->Step(), kLowestStep, kHighestStep));
  const QPointF place = CursorPlace();
  cursor_->StandAt(place.x(), place.y(), LineGap());
  cursor_->raise();
  cursor_->show();
  TellCursor();
}

void CtlQuilStaff::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  ShowFocusRim(true);
  const bool by_keys = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason ||
                       event->reason() == Qt::ShortcutFocusReason;
  if (by_keys && AllowEdits() && ThisTune()) ShowCursor();
}

void CtlQuilStaff::ShowFocusRim(bool shown) {
  for (StaffSurface* surface : {picBox_, picWords_}) surface->SetFocusRim(shown);
}

void CtlQuilStaff::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  // A box over the window, or another program, takes nothing out of the hand.
  if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
    CancelCarrying();
  cursor_->hide();
  ShowFocusRim(false);
}

// The menu key of the system arrives here where it is no key press; the mouse has been dealt with.
void CtlQuilStaff::contextMenuEvent(QContextMenuEvent* event) {
  event->accept();
  if (event->reason() == QContextMenuEvent::Keyboard && AllowEdits() && ThisTune())
    PressAtCursor(kRightButton, 0);
}

}  // namespace zelmar
