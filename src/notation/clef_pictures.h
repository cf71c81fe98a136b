// The clefs as outlines of our own, to be filled.
#pragma once

#include <QPainterPath>
#include <QRectF>

namespace zelmar {

// Seven line gaps high and a third as wide; its curl goes round the line that is 4.5 gaps below its top.
QPainterPath TrebleClef(const QRectF& place);

// 3.5 line gaps high and 7/3 wide; its dots stand about the line half a gap below its top.
QPainterPath BassClef(const QRectF& place);

}  // namespace zelmar
