// Enter on a button.
#pragma once

class QKeyEvent;
class QWidget;

namespace zelmar {

// Presses the button of `window` that has the keyboard, as Space does, when the key is Enter. Boxes that are
// ticked and not pressed leave Enter alone. True when the key was taken; for a window's keyPressEvent, which
// hears of what the button itself has no use for.
bool PressesButton(const QWidget& window, const QKeyEvent& key);

}  // namespace zelmar
