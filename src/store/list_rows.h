// The groups of a printed list, out of the rows of the database.
#pragma once

#include <QStringList>
#include <vector>

#include "model/printed_list.h"

namespace zelmar {

class Recordset;

// A group for each row of a two-level shape, from the current one on: its head the field `head`, its rows
// those of the chapter with the fields told. Throws DatabaseError (kItemNotFound) for what the rows do not
// have.
std::vector<PrintedGroup> GroupsOfShape(Recordset& shape, const QString& head, const QString& chapter,
                                        const QStringList& fields);

// One group without a head: the rows from the current one on.
PrintedGroup GroupOfRows(Recordset& rows, const QStringList& fields);

}  // namespace zelmar
