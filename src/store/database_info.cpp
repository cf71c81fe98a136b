#include "store/database_info.h"

#include <algorithm>

#include "model/globals.h"
#include "store/connect_database.h"
#include "store/recordset.h"
#include "store/schema.h"

namespace zelmar {

namespace {

QString PartBehindLastSeparator(const QString& path) {
  return path.mid(std::max(path.lastIndexOf(u'\\'), path.lastIndexOf(u'/')) + 1);
}

QString TextOrEmpty(const Recordset& row, const QString& field) {
  return row.IsNull(field) ? QString() : row.Text(field);
}

}  // namespace

std::optional<DatabaseInfo> FindDBInfo() {
  std::shared_ptr<Connection> connection;
  ConnectDatabase(connection);
  if (Global().DatabaseFailed) return {};
  const auto row = Recordset::OpenStatement(connection, QStringLiteral("SELECT * FROM tblDBInfo"));
  row->MoveFirst();
  DatabaseInfo info;
  info.file_name = PartBehindLastSeparator(Global().DatabasePath);
  info.title = TextOrEmpty(*row, QStringLiteral("Title"));
  info.description = TextOrEmpty(*row, QStringLiteral("Description"));
  info.read_only_words = ReadOnlyWords(*connection);
  Global().DatabaseTitle = info.title;
  return info;
}

QStringList MissingTables() {
  std::shared_ptr<Connection> connection;
  ConnectDatabase(connection);
  if (Global().DatabaseFailed) return {};
  const QStringList there = connection->TableNames();
  QStringList missing = NeededTables();
  missing.removeIf([&there](const QString& name) { return there.contains(name, Qt::CaseInsensitive); });
  return missing;
}

void SaveDBInfo(const QString& title, const QString& description) {
  std::shared_ptr<Connection> connection;
  ConnectDatabase(connection);
  if (Global().DatabaseFailed) return;
  const auto row = Recordset::OpenTable(connection, QStringLiteral("tblDBInfo"));
  row->MoveFirst();
  row->SetValue(QStringLiteral("Title"), title);
  row->SetValue(QStringLiteral("Description"), description);
  row->UpdateBatch();
}

}  // namespace zelmar
