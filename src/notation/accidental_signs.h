// The strokes of sharps, flats and naturals.
#pragma once

#include <QPointF>

#include "notation/drawing.h"

namespace zelmar {

// Draws the sign that stands before a note whose head is at `note`; `sign` is kSharp, kFlat or kNatural, the
// distance between two staff lines `line_gap`.
void DrawSign(Drawing& staff, Role sign, const QPointF& note, double line_gap);

}  // namespace zelmar
