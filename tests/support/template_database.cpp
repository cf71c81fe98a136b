#include "support/template_database.h"

#include <QFile>

#include "model/globals.h"

namespace zelmar::testing_support {

TemplateDatabase::TemplateDatabase(const QString& built) {
  const QString copy = directory_.filePath(QStringLiteral("Shipped.mdb"));
  if (!QFile::copy(built, copy)) return;
  path_ = copy;
  Global().DatabasePath = copy;
}

}  // namespace zelmar::testing_support
