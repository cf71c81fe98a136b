#include "model/globals.h"

#include <utility>

namespace zelmar {

Globals& Global() {
  static Globals globals;
  return globals;
}

void ResetGlobals() {
  Global() = Globals();
}

void AddRecentTune(QString code_name, QString caption) {
  Globals& globals = Global();
  for (std::size_t i = kRecentTuneCount - 1; i > 0; --i) {
    globals.RecentCodeNames[i] = globals.RecentCodeNames[i - 1];
    globals.RecentCaptions[i] = globals.RecentCaptions[i - 1];
  }
  globals.RecentCodeNames[0] = std::move(code_name);
  globals.RecentCaptions[0] = std::move(caption);
}

std::int16_t SmallerOf(std::int16_t first, std::int16_t second) {
  return first < second ? first : second;
}

QString CapitaliseFirst(const QString& text) {
  if (text.size() <= 1) return text.toUpper();
  return QString(text.front().toUpper()) + text.back();
}

QString BlanksToUnderscores(const QString& text) {
  QString result = text;
  for (int i = 0; i < 2; ++i) {
    const qsizetype blank = result.indexOf(QLatin1Char(' '));
    if (blank >= 0) result[blank] = QLatin1Char('_');
  }
  return result;
}

}  // namespace zelmar
