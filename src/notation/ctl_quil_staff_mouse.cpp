#include <QMouseEvent>

#include "notation/ctl_quil_staff.h"

namespace zelmar {

void CtlQuilStaff::FindMatchingNote(std::int16_t, double, std::int16_t&) {}

void CtlQuilStaff::FillDialogBox(float, float) {}

void CtlQuilStaff::picBox_MouseDown(int, int, float, float) {}

void CtlQuilStaff::picBox_MouseUp(int, int, float, float) {}

void CtlQuilStaff::mousePressEvent(QMouseEvent* event) {
  QWidget::mousePressEvent(event);
}

void CtlQuilStaff::mouseReleaseEvent(QMouseEvent* event) {
  QWidget::mouseReleaseEvent(event);
}

void CtlQuilStaff::mouseMoveEvent(QMouseEvent* event) {
  QWidget::mouseMoveEvent(event);
}

void CtlQuilStaff::mouseDoubleClickEvent(QMouseEvent* event) {
  QWidget::mouseDoubleClickEvent(event);
}

void CtlQuilStaff::contextMenuEvent(QContextMenuEvent* event) {
  QWidget::contextMenuEvent(event);
}

}  // namespace zelmar
