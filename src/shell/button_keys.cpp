#include "shell/button_keys.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QRadioButton>

namespace zelmar {

bool PressesButton(const QWidget& window, const QKeyEvent& key) {
  if (key.key() != Qt::Key_Return && key.key() != Qt::Key_Enter) return false;
  if ((key.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) return false;
  auto* const button = qobject_cast<QAbstractButton*>(window.focusWidget());
  if (button == nullptr || !button->hasFocus() || !button->isEnabled()) return false;
  if (qobject_cast<QCheckBox*>(button) != nullptr || qobject_cast<QRadioButton*>(button) != nullptr)
    return false;
  // A key that is held presses once.
  if (!key.isAutoRepeat()) button->click();
  return true;
}

}  // namespace zelmar
