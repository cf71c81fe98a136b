#include "platform/widgets/screen_place.h"

#include <QScreen>
#include <QWidget>
#include <algorithm>

namespace zelmar {

namespace {

// Of a window manager with a generous title bar: the real one is known only once the window is shown.
constexpr QSize kFrame(16, 48);

}  // namespace

QSize RoomInsideFrame(QSize screen) {
  return screen - kFrame;
}

void ResizeWithinScreen(QWidget& window, QSize wanted) {
  const QScreen* const screen = window.screen();
  window.resize(screen != nullptr ? wanted.boundedTo(RoomInsideFrame(screen->availableSize())) : wanted);
}

void KeepWithinScreen(QWidget& window) {
  const QScreen* const screen = window.screen();
  if (screen == nullptr || window.isMaximized() || window.isFullScreen()) return;
  const QRect room = screen->availableGeometry();
  if (room.contains(window.frameGeometry())) return;
  window.resize(window.size().boundedTo(RoomInsideFrame(room.size())));
  const QSize framed = window.size() + kFrame;
  window.move(std::clamp(window.x(), room.left(), room.left() + room.width() - framed.width()),
              std::clamp(window.y(), room.top(), room.top() + room.height() - framed.height()));
}

}  // namespace zelmar
