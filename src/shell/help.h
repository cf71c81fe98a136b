// Help and other pages: shown in the help panel, or in a window of their own.
#pragma once

#include <QString>

namespace zelmar {

enum class HelpPlace { kPanel, kWindow, kModalWindow };

// Shows a page of the help tree, an absolute path, or a web address (which opens outside). In the panel a
// `target_frame` makes the page wait for a tenth of a second, so that the panel's own page is there before
// it. An empty title becomes "Quick Help Hints".
void ShowHelpPage(const QString& page, HelpPlace place, const QString& title = {},
                  const QString& target_frame = {});

// A page of the help book, such as "Introduction.htm".
void ShowHelpTopic(const QString& page, HelpPlace place = HelpPlace::kWindow);

// The topic of a window or menu item; the introduction where the book has none for it. A modal window asks
// for a modal place, since no other window answers while it is open.
void ShowHelpContext(int help_context, HelpPlace place = HelpPlace::kWindow);

// True when the help book has a page of its own for the topic number.
bool HasHelpContext(int help_context);

// Serves events until the time has passed.
void WaitMilliseconds(std::int16_t milliseconds);

}  // namespace zelmar
