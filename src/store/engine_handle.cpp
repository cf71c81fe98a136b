#include "store/engine_handle.h"

#include <sqlite3.h>

#include <QSqlDatabase>
#include <QSqlDriver>
#include <QVariant>
#include <cstring>

namespace zelmar {

sqlite3* EngineHandle(const QSqlDatabase& database) {
  const QVariant handle = database.driver()->handle();
  if (!handle.isValid() || std::strcmp(handle.typeName(), "sqlite3*") != 0) return nullptr;
  return *static_cast<sqlite3* const*>(handle.constData());
}

}  // namespace zelmar
