// The platform services that need widgets: message boxes, input boxes, file choosers, the printer, and web
// addresses.
#pragma once

#include <QString>

namespace zelmar {

// What stands in a caption where none is given.
inline constexpr QLatin1String kApplicationTitle("Zelmar");

// Puts the real services in place. Needs the application object.
void InstallWidgetServices();

// "Midi Files (*.MID)|*.MID" as the chooser of this system takes it: letters match in either case.
QString ChooserFilter(const QString& filter);

}  // namespace zelmar
