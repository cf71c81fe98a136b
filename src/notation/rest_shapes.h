// The rests as outlines of our own, to be filled.
#pragma once

#include <QPainterPath>
#include <QPointF>

#include "notation/drawing.h"

namespace zelmar {

// The rest of that role about `centre`, a point of the middle line; `line_gap` in twips.
QPainterPath RestShape(Role role, QPointF centre, double line_gap);

}  // namespace zelmar
