// The caption of the main window.
#pragma once

class QWidget;

namespace zelmar {

// Puts the caption that the area has made of the main window's title and that of a maximised window into
// shape: the application's title, with which both begin, stands there once, and behind it the system's mark
// of unsaved work while there is any.
// Called for each change of it.
void TidyMainTitle(QWidget& window);

// Has the caption made anew when work has become unsaved or saved. Called every now and then.
void RenewMainTitle(QWidget& window);

}  // namespace zelmar
