// A short tour without a person: for a machine that has no display.
#pragma once

#include <QString>

namespace zelmar {

// Starts the program, opens a short tune of the library, plays it whole and saves a picture of the main
// window while it plays. Gives the exit code: 0, or 1 with a line on the error stream that says what was
// wrong. A tour asks nobody: what would be a message box is a line too.
int Tour(const QString& picture);

}  // namespace zelmar
