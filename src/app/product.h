// What the program says about itself, and where its site is.
#pragma once

#include <QLatin1String>
#include <QString>

namespace zelmar {

// Deployment sets these three; the reserved name leads nowhere.
inline constexpr QLatin1String kWebSite("http://www.zelmar.example/");
inline constexpr QLatin1String kEnquiryAddress("enquiries@zelmar.example");
inline constexpr QLatin1String kWebSiteTitle("Zelmar Web Site");

// Major, minor and revision number joined by ".".
inline QString VersionText() {
  return QStringLiteral(ZELMAR_VERSION);
}

}  // namespace zelmar
