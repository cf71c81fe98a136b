#include <QKeyEvent>

#include "notation/ctl_quil_staff.h"

namespace zelmar {

void CtlQuilStaff::keyPressEvent(QKeyEvent* event) {
  QWidget::keyPressEvent(event);
}

void CtlQuilStaff::keyReleaseEvent(QKeyEvent* event) {
  QWidget::keyReleaseEvent(event);
}

void CtlQuilStaff::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
}

void CtlQuilStaff::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
}

}  // namespace zelmar
