// The logo pictures beside the help pages.
#pragma once

#include <QLatin1String>
#include <QPixmap>

namespace zelmar {

inline constexpr QLatin1String kLogoOfTheProgram("ZelmarLogoNew.jpg");
inline constexpr QLatin1String kLogoOfTheWeb("ZelmarLogoWeb.jpg");

// A logo as large as fits into `largest` (in pixels at scale 1), sharp at the scale factor `ratio`; null
// when there is no such picture.
QPixmap LogoWithin(const QSize& largest, double ratio, QLatin1String name = kLogoOfTheProgram);

}  // namespace zelmar
