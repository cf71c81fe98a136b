#include "app/keyboard_memory.h"

#include <QApplication>
#include <QMdiArea>
#include <QMdiSubWindow>

namespace zelmar {

KeyboardMemory::KeyboardMemory(QMdiArea& area) : QObject(&area), area_(area) {
  connect(qApp, &QApplication::focusChanged, this, &KeyboardMemory::FocusChanged);
}

QWidget* KeyboardMemory::LastControlIn(const QMdiSubWindow& window) const {
  return controls_.value(&window);
}

void KeyboardMemory::FocusChanged(QWidget*, QWidget* control) {
  if (control == nullptr || !area_.isAncestorOf(control)) return;
  // A maximised window that goes out of sight hands the keyboard on within itself first.
  if (!control->isVisible()) return;
  // What went with its window makes room.
  controls_.removeIf([](const auto& entry) { return entry.value().isNull(); });
  for (const QMdiSubWindow* window : area_.subWindowList())
    if (window->isAncestorOf(control)) controls_.insert(window, control);
}

}  // namespace zelmar
