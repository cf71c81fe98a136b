// Which texts can be the CodeName of a tune. A CodeName goes into statements as it stands and names the event
// table of its tune, so some texts would break a statement or name a table of the database itself.
#pragma once

#include <QString>

namespace zelmar {

// The same text for two names that the database takes for one. Case is folded as the engine does it: the
// letters of ASCII alone.
QString FoldedCodeName(QString code_name);

// Throws DatabaseError (kSyntax) when a search for `code_name` would search for something else.
void RequireNameForStatements(const QString& code_name);

// Throws DatabaseError (kSyntax) when no table can be called `code_name`, or (kTableExists) when a shared
// table of the database is.
void RequireTableName(const QString& code_name);

}  // namespace zelmar
