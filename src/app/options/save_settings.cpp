#include "app/options/save_settings.h"

#include "platform/failure.h"
#include "platform/paths.h"
#include "platform/services.h"

namespace zelmar {

void SaveSettings(PathFileWriter writer) {
  try {
    WritePathFile(ApplicationDirectory() + QLatin1Char('/') + kPathFileName, writer);
  } catch (const Failure& failure) {
    ShowMessage(MessageIcon::kExclamation,
                failure.Description() +
                    QStringLiteral(" The settings hold until Zelmar ends, and the next start does not know "
                                   "them."),
                QStringLiteral("Settings not saved"));
  }
}

}  // namespace zelmar
