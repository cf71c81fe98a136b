// Pages of the help tree and others: shown in the help panel, or in a window of their own.
#pragma once

#include <QString>

#include "shell/help_topics.h"

namespace zelmar {

// Shows a page of the help tree, an absolute path, or a web address (which opens outside). In the panel a
// `target_frame` makes the page wait for a tenth of a second, so that the panel's own page is there before
// it. An empty title becomes "Quick Help Hints".
void ShowHelpPage(const QString& page, HelpPlace place, const QString& title = {},
                  const QString& target_frame = {});

// Serves events until the time has passed.
void WaitMilliseconds(std::int16_t milliseconds);

}  // namespace zelmar
