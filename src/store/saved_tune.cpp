#include "store/saved_tune.h"

#include "model/globals.h"
#include "store/connect_database.h"
#include "store/recordset.h"
#include "store/statement_dialect.h"
#include "store/tune_name.h"

namespace zelmar {

std::optional<QString> TitleOfSavedTune(const QString& code_name) {
  RequireTuneName(code_name);
  std::shared_ptr<Connection> connection;
  // A save that follows tells of a database that can only be read.
  ConnectDatabase(connection, ReadOnlyNotice::kLeftToCaller);
  if (Global().DatabaseFailed) return std::nullopt;
  const auto row =
      Recordset::OpenStatement(connection, QStringLiteral("SELECT Title FROM tblMelodies WHERE CodeName = ") +
                                               StatementDialect::Quoted(code_name));
  if (!row->Eof()) return row->TextOrBlank(0);
  for (const QString& table : connection->TableNames())
    if (FoldedCodeName(table) == FoldedCodeName(code_name)) return table;
  return std::nullopt;
}

}  // namespace zelmar
