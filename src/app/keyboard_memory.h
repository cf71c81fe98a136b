// Remembers which control of each child window had the keyboard last: the area itself forgets it when another
// window comes to the front.
#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QWidget>

class QMdiArea;
class QMdiSubWindow;

namespace zelmar {

class KeyboardMemory : public QObject {
  Q_OBJECT

 public:
  // A child of the area. Ends before it: windows that go with the area hand the keyboard on.
  explicit KeyboardMemory(QMdiArea& area);

  // Null for a window that has not had the keyboard yet, or whose control is gone.
  QWidget* LastControlIn(const QMdiSubWindow& window) const;

 private:
  void FocusChanged(QWidget* before, QWidget* control);

  QMdiArea& area_;
  QHash<const QMdiSubWindow*, QPointer<QWidget>> controls_;
};

}  // namespace zelmar
