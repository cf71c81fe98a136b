// The tables of a tune database, as the engine's own statements. Column order is part of the contract: rows
// are inserted without naming columns.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace zelmar {

// One CREATE TABLE statement for every shared table, and for TemplateTune, from which event tables are
// cloned.
QStringList SchemaStatements();

// The names of those tables.
QStringList SharedTableNames();
// The names of the shared tables, and of TemplateTune, that the program asks a database for.
QStringList NeededTables();

// An index of a shared table by the name of the tune that its rows belong to.
struct LibraryIndex {
  QString name;
  QString table;
  QString column;
};
std::vector<LibraryIndex> LibraryIndexes();
QString IndexStatement(const LibraryIndex& index);

// The CREATE TABLE statement of the event table `name`.
QString EventTableStatement(const QString& name);

}  // namespace zelmar
