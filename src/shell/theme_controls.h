// The look of tables, their headings, combo boxes, spin boxes, radio buttons and group boxes: the part of the
// style sheet that goes with the palette. Edges stand out from what is around them by 3 to 1 at least, and
// what has the keyboard bears a frame of double width.
#pragma once

#include <QString>

#include "shell/colour_scheme.h"

namespace zelmar {

QString ControlStyles(ColourScheme scheme);

}  // namespace zelmar
