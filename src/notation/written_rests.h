// How a rest of any length is written: broken up into the rests that have a sign of their own.
#pragma once

#include "model/companions.h"
#include "notation/bar_frame.h"
#include "notation/drawing.h"

namespace zelmar {

// Draws nothing for a duration that is not written.
void DrawWrittenRest(Drawing& staff, const BarFrame& frame, InkColour ink, const Rest& rest);

}  // namespace zelmar
