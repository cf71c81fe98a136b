// What the database says about itself.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace zelmar {

struct DatabaseInfo {
  QString file_name;  // the part of DatabasePath behind its last separator
  QString title;
  QString description;
  QString read_only_words;  // why the database can only be read, as a sentence; empty when it can be changed
};

// Reads the database's title and description and sets DatabaseTitle. Nothing when the database fails. Throws
// DatabaseError when the table has no row.
std::optional<DatabaseInfo> FindDBInfo();

// The needed tables that the database in use lacks. None when the database fails.
QStringList MissingTables();

// Writes title and description. Does nothing when the database fails.
void SaveDBInfo(const QString& title, const QString& description);

}  // namespace zelmar
