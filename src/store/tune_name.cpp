#include "store/tune_name.h"

#include "store/database_error.h"
#include "store/schema.h"

namespace zelmar {

namespace {

[[noreturn]] void Refuse(int number, const QString& code_name, const QString& reason) {
  throw DatabaseError(
      number,
      QStringLiteral("The name %1 cannot be used: %2. Please choose another.").arg(code_name, reason));
}

}  // namespace

QString FoldedCodeName(QString code_name) {
  for (QChar& c : code_name)
    if (c >= u'A' && c <= u'Z') c = QChar(c.unicode() + (u'a' - u'A'));
  return code_name;
}

void RequireNameForStatements(const QString& code_name) {
  // Doubled marks make a text of their own, that of another tune.
  if (code_name.contains(u'\''))
    Refuse(database_error::kSyntax, code_name,
           QStringLiteral("a quotation mark ' ends a text in the statements of the database"));
  if (code_name.trimmed().isEmpty())
    throw DatabaseError(
        database_error::kSyntax,
        QStringLiteral("A tune cannot be saved under a name without letters. Please choose another."));
}

void RequireTableName(const QString& code_name) {
  if (code_name.contains(u']'))
    Refuse(database_error::kSyntax, code_name,
           QStringLiteral("a bracket ] ends the name of a table in the statements of the database"));
  if (code_name.startsWith(u"sqlite_", Qt::CaseInsensitive))
    Refuse(database_error::kSyntax, code_name,
           QStringLiteral("the database keeps names that begin like this for itself"));
  for (const QString& table : SharedTableNames())
    if (FoldedCodeName(code_name) == FoldedCodeName(table))
      Refuse(database_error::kTableExists, code_name,
             QStringLiteral("the database has a table of this name for all tunes"));
}

}  // namespace zelmar
