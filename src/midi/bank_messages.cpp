#include "midi/bank_messages.h"

#include <QCoreApplication>

#include "platform/settings.h"

namespace zelmar {

namespace {

QString SuppressionKey() {
  return QStringLiteral("Midi/SuppressBankMessages");
}

}  // namespace

bool KeptBankSuppression() {
  if (QCoreApplication::instance() == nullptr) return false;
  return Settings().value(SuppressionKey(), false).toBool();
}

bool KeepBankSuppression(bool suppress) {
  // A file is not made for what holds without one.
  if (suppress == KeptBankSuppression()) return true;
  auto settings = Settings();
  settings.setValue(SuppressionKey(), suppress);
  settings.sync();
  return settings.status() == QSettings::NoError;
}

}  // namespace zelmar
