#include "store/tune_removal.h"

#include "store/connection.h"
#include "store/database_error.h"
#include "store/event_table.h"
#include "store/statement_dialect.h"
#include "store/tune_name.h"

namespace zelmar {

namespace {

// A deletion by name: the statement up to the value.
constexpr char kFromCatalogue[] = "DELETE * FROM tblMelodies WHERE CodeName = ";
constexpr char kFromChords[] = "DELETE * FROM tblChords WHERE CodeName = ";
constexpr char kFromTracks[] = "DELETE * FROM tblTracks WHERE CodeName = ";
constexpr char kFromWords[] = "DELETE * FROM tblWords WHERE FileName = ";

void Delete(Connection& connection, const char* statement, const QString& code_name) {
  connection.Execute(QLatin1String(statement) + StatementDialect::Quoted(code_name));
}

// A database need not have the table of chords.
void DeleteChords(Connection& connection, const QString& code_name) {
  try {
    Delete(connection, kFromChords, code_name);
  } catch (const DatabaseError& failure) {
    if (failure.Number() != error_number::kTableNotFound) throw;
  }
}

void Drop(Connection& connection, const QString& code_name) {
  connection.Execute(QStringLiteral("DROP TABLE ") + StatementDialect::Bracketed(code_name));
}

}  // namespace

void RemoveTune(const std::shared_ptr<Connection>& connection, const QString& code_name) {
  RequireTuneName(code_name);
  const bool has_events = HasEventTable(connection, code_name);
  connection->Together([&] {
    for (const char* statement : {kFromCatalogue, kFromWords, kFromTracks})
      Delete(*connection, statement, code_name);
    if (has_events) Drop(*connection, code_name);
  });
}

void RemoveTuneReferences(const std::shared_ptr<Connection>& connection, const QString& code_name) {
  RequireTuneName(code_name);
  connection->Together([&] {
    Delete(*connection, kFromCatalogue, code_name);
    DeleteChords(*connection, code_name);
    for (const char* statement : {kFromTracks, kFromWords}) Delete(*connection, statement, code_name);
  });
}

void DropEventTable(const std::shared_ptr<Connection>& connection, const QString& code_name) {
  RequireTuneName(code_name);
  if (HasEventTable(connection, code_name)) Drop(*connection, code_name);
}

void RemoveTrackRows(const std::shared_ptr<Connection>& connection, const QString& code_name) {
  RequireTuneName(code_name);
  Delete(*connection, kFromTracks, code_name);
}

void RemoveWordRows(const std::shared_ptr<Connection>& connection, const QString& code_name) {
  RequireTuneName(code_name);
  Delete(*connection, kFromWords, code_name);
}

}  // namespace zelmar
