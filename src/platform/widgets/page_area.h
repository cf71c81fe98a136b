// A page that moves within its place when it has no room. Its keys are the window's, Page Down among them.
#pragma once

#include <QKeyEvent>
#include <QScrollArea>

namespace zelmar {

class PageArea : public QScrollArea {
 public:
  PageArea(QWidget* page, QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    setWidget(page);
  }

  // Room for the whole page.
  QSize sizeHint() const override { return widget()->sizeHint(); }

 protected:
  void keyPressEvent(QKeyEvent* event) override { event->ignore(); }
};

}  // namespace zelmar
