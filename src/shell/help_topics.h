// The help book: its pages by their names, and by the topic numbers of windows and menu items.
#pragma once

#include <QString>

namespace zelmar {

enum class HelpPlace { kPanel, kWindow, kModalWindow };

// A page of the help book, such as "Introduction.htm", in a window of its own.
void ShowHelpTopic(const QString& page, HelpPlace place = HelpPlace::kWindow);

// The topic of a window or menu item; the introduction where the book has none for it. A modal window asks
// for a modal place, since no other window answers while it is open.
void ShowHelpContext(int help_context, HelpPlace place = HelpPlace::kWindow);

// True when the help book has a page of its own for the topic number.
bool HasHelpContext(int help_context);

}  // namespace zelmar
