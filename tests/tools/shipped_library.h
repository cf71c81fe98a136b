// The library that ships, read from its texts.
#pragma once

#include <QStringList>
#include <vector>

#include "abc/abc_reader.h"
#include "template/csv_table.h"

namespace zelmar::testing_support {

QString DataFolder();

// Every tune in order of its file; a text that cannot be read is a failure of the test.
const std::vector<AbcTune>& AllTunes();
// Those for people who want to know music, and those that show what a synthesiser can do.
const std::vector<AbcTune>& Tunes();
const std::vector<AbcTune>& Demonstrations();

// A table of the library, and the values of one of its columns.
CsvTable Table(const char* name);
QStringList Column(const char* table_name, const char* column);

}  // namespace zelmar::testing_support
