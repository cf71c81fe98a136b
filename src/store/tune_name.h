// Which texts can be the CodeName of a tune. A CodeName names the event table of its tune, and reports and
// other programs put it into statements as it stands, so some texts would break a statement or name a table
// of the database itself.
#pragma once

#include <QString>

namespace zelmar {

// The same text for two names that the database takes for one. Case is folded as the engine does it: the
// letters of ASCII alone.
QString FoldedCodeName(QString code_name);

// Empty for a text that can be the CodeName of a tune; else why it cannot, as a sentence. Wildcards are
// letters like others: no statement looks for a CodeName by a pattern.
QString WhyNotATuneName(const QString& code_name);

// The one guard before any statement that saves, drops or deletes by name. Throws DatabaseError with the
// words of WhyNotATuneName: kTableExists where a table or an index of all tunes has the name, else kSyntax.
void RequireTuneName(const QString& code_name);

}  // namespace zelmar
