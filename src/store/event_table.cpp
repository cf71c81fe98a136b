#include "store/event_table.h"

#include "store/database_error.h"
#include "store/tune_rows.h"

namespace zelmar {

std::unique_ptr<Recordset> OpenEventTable(const std::shared_ptr<Connection>& connection,
                                          const QString& code_name, LockType lock) {
  return Recordset::OpenTable(connection, u'[' + code_name + u']', CursorType::kForwardOnly, lock);
}

bool HasEventTable(const std::shared_ptr<Connection>& connection, const QString& code_name) {
  try {
    const EventFields fields(*OpenEventTable(connection, code_name));
    return true;
  } catch (const DatabaseError& failure) {
    if (failure.Number() == database_error::kItemNotFound)
      throw DatabaseError(database_error::kTableExists,
                          QStringLiteral("The table [%1] is there and does not hold the events of a tune. %2")
                              .arg(code_name, failure.Description()));
    if (failure.Number() != error_number::kTableNotFound) throw;
    return false;
  }
}

}  // namespace zelmar
