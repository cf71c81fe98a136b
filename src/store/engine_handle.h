// The engine's own handle behind a connection of Qt, for what Qt does not pass on.
#pragma once

class QSqlDatabase;
struct sqlite3;

namespace zelmar {

// Null when `database` is not open.
sqlite3* EngineHandle(const QSqlDatabase& database);

}  // namespace zelmar
