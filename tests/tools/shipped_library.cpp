#include "shipped_library.h"

#include <gtest/gtest.h>

#include <QDir>
#include <algorithm>

namespace zelmar::testing_support {

namespace {

bool IsDemonstration(const AbcTune& tune) {
  return tune.catalogue.length == QStringLiteral("demo");
}

std::vector<AbcTune> ReadTunes() {
  std::vector<AbcTune> tunes;
  const QDir folder(DataFolder() + QStringLiteral("/tunes"));
  for (const QString& name : folder.entryList({QStringLiteral("*.abc")}, QDir::Files, QDir::Name)) {
    try {
      tunes.push_back(ReadAbcFile(folder.filePath(name)));
    } catch (const Failure& failure) {
      ADD_FAILURE() << failure.what();
    }
  }
  return tunes;
}

}  // namespace

QString DataFolder() {
  return QStringLiteral(ZELMAR_SOURCE_DIRECTORY "/data");
}

const std::vector<AbcTune>& AllTunes() {
  static const std::vector<AbcTune> tunes = ReadTunes();
  return tunes;
}

const std::vector<AbcTune>& Tunes() {
  static const std::vector<AbcTune> tunes = [] {
    std::vector<AbcTune> chosen = AllTunes();
    std::erase_if(chosen, IsDemonstration);
    return chosen;
  }();
  return tunes;
}

const std::vector<AbcTune>& Demonstrations() {
  static const std::vector<AbcTune> tunes = [] {
    std::vector<AbcTune> chosen = AllTunes();
    std::erase_if(chosen, [](const AbcTune& tune) { return !IsDemonstration(tune); });
    return chosen;
  }();
  return tunes;
}

CsvTable Table(const char* name) {
  try {
    return ReadCsvFile(DataFolder() + QStringLiteral("/tables/%1.csv").arg(QLatin1String(name)));
  } catch (const Failure& failure) {
    ADD_FAILURE() << failure.what();
    return {};
  }
}

QStringList Column(const char* table_name, const char* column) {
  const CsvTable table = Table(table_name);
  const qsizetype index = table.columns.indexOf(QLatin1String(column));
  EXPECT_GE(index, 0) << table_name << "." << column;
  QStringList values;
  if (index < 0) return values;
  for (const CsvTable::Row& row : table.rows) values.append(row.cells[index]);
  return values;
}

}  // namespace zelmar::testing_support
