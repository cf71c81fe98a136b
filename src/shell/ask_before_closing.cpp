#include "shell/ask_before_closing.h"

#include <QEvent>
#include <QPointer>
#include <QWidget>

namespace zelmar {

namespace {

class ClosingGuard : public QObject {
 public:
  ClosingGuard(QWidget& window, std::function<bool()> may_close)
      : QObject(&window), may_close_(std::move(may_close)) {
    window.installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Close) return QObject::eventFilter(watched, event);
    const QPointer<QObject> self(this);
    const auto ask = may_close_;
    const bool may_close = ask();
    // A window that went in the meantime does not take its event any more.
    if (self && may_close) return false;
    event->ignore();
    return true;
  }

 private:
  std::function<bool()> may_close_;
};

}  // namespace

void AskBeforeClosing(QWidget& window, std::function<bool()> may_close) {
  new ClosingGuard(window, std::move(may_close));
}

}  // namespace zelmar
