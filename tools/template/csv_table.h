// A table as comma-separated text: a line of column names, then one line a row.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <vector>

#include "abc/abc_error.h"

namespace zelmar {

// A cell in quotes may hold commas, line ends and doubled quotes. An empty cell without quotes is a null
// string, "" is an empty one.
struct CsvTable {
  struct Row {
    int line = 1;
    QStringList cells;  // as many as there are columns
    std::vector<TextPosition> positions;
  };

  QStringList columns;
  std::vector<Row> rows;
};

// Reads UTF-8 text; `file` names it in errors. Throws TextError: quotes that never close or are followed by
// text, rows with too few or too many cells, column names that are missing or double.
CsvTable ReadCsv(const QByteArray& text, const QString& file);

// Reads a file. Throws TextError for a mistake, Failure for a file that cannot be read.
CsvTable ReadCsvFile(const QString& path);

}  // namespace zelmar
