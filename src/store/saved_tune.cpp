#include "store/saved_tune.h"

#include "model/globals.h"
#include "store/connect_database.h"
#include "store/recordset.h"
#include "store/tune_name.h"

namespace zelmar {

std::optional<QString> TitleOfSavedTune(const QString& code_name) {
  RequireNameForStatements(code_name);
  RequireTableName(code_name);
  std::shared_ptr<Connection> connection;
  ConnectDatabase(connection);
  if (Global().DatabaseFailed) return std::nullopt;
  const auto row = Recordset::OpenStatement(
      connection, QStringLiteral("SELECT Title FROM tblMelodies WHERE CodeName = '") + code_name + u'\'');
  if (!row->Eof()) return row->TextOrBlank(0);
  for (const QString& table : connection->TableNames())
    if (FoldedCodeName(table) == FoldedCodeName(code_name)) return table;
  return std::nullopt;
}

}  // namespace zelmar
