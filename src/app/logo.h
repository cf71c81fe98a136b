// The logo picture beside the help pages.
#pragma once

#include <QPixmap>

namespace zelmar {

// The logo as large as fits into `largest` (in pixels at scale 1), sharp at the scale factor `ratio`; null
// when there is no such picture.
QPixmap LogoWithin(const QSize& largest, double ratio);

}  // namespace zelmar
