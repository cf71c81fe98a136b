#include "notation/clef_pictures.h"

namespace zelmar {

QPainterPath TrebleClef(const QRectF& place) {
  QPainterPath path;
  path.addEllipse(place);
  return path;
}

QPainterPath BassClef(const QRectF& place) {
  QPainterPath path;
  path.addEllipse(place);
  return path;
}

}  // namespace zelmar
