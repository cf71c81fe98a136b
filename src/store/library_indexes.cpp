#include "store/library_indexes.h"

#include <QFileInfo>
#include <QSqlQuery>
#include <QStringList>
#include <QVariant>

#include "platform/disk_room.h"
#include "store/schema.h"

namespace zelmar {

namespace {

// The statements that make the indexes that are not there, of tables that are.
QStringList MissingIndexes(const QSqlDatabase& database) {
  QStringList names;
  for (const LibraryIndex& index : LibraryIndexes()) names << index.table << index.name;
  QStringList there;
  QSqlQuery query(database);
  query.setForwardOnly(true);
  query.exec(QStringLiteral("SELECT name FROM sqlite_master WHERE name COLLATE NOCASE IN ('%1')")
                 .arg(names.join(QStringLiteral("','"))));
  while (query.next()) there.append(query.value(0).toString());
  QStringList statements;
  for (const LibraryIndex& index : LibraryIndexes())
    if (there.contains(index.table, Qt::CaseInsensitive) && !there.contains(index.name, Qt::CaseInsensitive))
      statements.append(IndexStatement(index));
  return statements;
}

// No index is longer than what it tells of, and the log holds it once more until it is emptied.
bool HasRoomFor(const QString& path) {
  return RoomOnDisk(path) >= 2 * static_cast<std::uint64_t>(QFileInfo(path).size());
}

}  // namespace

void AddMissingIndexes(const QSqlDatabase& database, const QString& path) {
  const QStringList statements = MissingIndexes(database);
  if (statements.isEmpty() || !HasRoomFor(path)) return;
  QSqlQuery query(database);
  bool made = query.exec(QStringLiteral("BEGIN IMMEDIATE"));
  if (!made) return;
  for (const QString& statement : statements) made = made && query.exec(statement);
  if (!made || !query.exec(QStringLiteral("COMMIT"))) query.exec(QStringLiteral("ROLLBACK"));
}

}  // namespace zelmar
