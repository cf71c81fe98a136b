// What combo boxes offer out of the tune database: the values of a statement.
#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "model/combo_entries.h"

namespace zelmar {

class Connection;

// One entry a row, in the statement's order: the text of one column and, where named, the number of another.
// Rows whose text is missing or blank are passed over. Throws DatabaseError.
std::vector<ComboEntry> StatementEntries(const std::shared_ptr<Connection>& connection,
                                         const QString& statement, const QString& text_column,
                                         const QString& number_column = {});

}  // namespace zelmar
