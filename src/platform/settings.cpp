#include "platform/settings.h"

#include "platform/paths.h"

namespace zelmar {

QSettings Settings() {
  return QSettings(ApplicationDirectory() + QStringLiteral("/Zelmar.ini"), QSettings::IniFormat);
}

}  // namespace zelmar
