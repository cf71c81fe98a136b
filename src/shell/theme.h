// The look of the program: one palette in a light and a dark form, and the style sheet that goes with it.
#pragma once

#include "shell/colour_scheme.h"

class QApplication;

namespace zelmar {

// What the system asks for. ZELMAR_COLOUR_SCHEME, "light" or "dark", has the last word.
ColourScheme SystemColourScheme(const QApplication& application);

// Applies the scheme that the system asks for now, after it has changed its mind.
void FollowSystemTheme(QApplication& application);

void ApplyTheme(QApplication& application, ColourScheme scheme);

}  // namespace zelmar
