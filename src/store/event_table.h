// The event table of a tune: opened by the tune's name, and told from tables that hold no events.
#pragma once

#include <QString>
#include <memory>

#include "store/recordset.h"

namespace zelmar {

// Opens the table; a look at it reads no more than its first row. Throws DatabaseError, with
// error_number::kTableNotFound where there is none.
std::unique_ptr<Recordset> OpenEventTable(const std::shared_ptr<Connection>& connection,
                                          const QString& code_name, LockType lock = LockType::kReadOnly);

// False when there is no table of that name. Throws DatabaseError (kTableExists) for one that lacks the
// columns of an event.
bool HasEventTable(const std::shared_ptr<Connection>& connection, const QString& code_name);

}  // namespace zelmar
