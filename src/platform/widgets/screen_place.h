// The size of a window that is to be shown, within the screen that it opens on.
#pragma once

#include <QSize>

class QWidget;

namespace zelmar {

// Gives the window the size that is wanted, or as much of it as its screen has room for, the frame of a
// window manager included. Sizes are in pixels at scale 1, so a larger scale leaves a smaller screen.
void ResizeWithinScreen(QWidget& window, QSize wanted);

// Brings a window that is not shown yet back onto its screen, smaller where it is larger than that: its place
// may be from another screen. A window that fits is left where it is.
void KeepWithinScreen(QWidget& window);

// What a screen of that size leaves inside the frame of a window.
QSize RoomInsideFrame(QSize screen);

}  // namespace zelmar
