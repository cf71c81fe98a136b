// The dialect of the system's statements, and how the engine says the same.
//
// The system writes `delete * from`, [names] and `names`, IIf, & between texts, a!b, TOP n (rows that tie
// with the last one are kept), `select * into [x] from y`, LIKE with % or *, and the two-level SHAPE. Names
// match without regard to case; text between quotation marks, either kind, goes through untouched. In a LIKE
// pattern _ stands for one character; ? stands for itself. ORDER BY puts texts in the order of people
// (people_collation.h); equality, DISTINCT and GROUP BY are as the columns have it.
#pragma once

#include <QString>

#include "store/engine_statement.h"

namespace zelmar {

enum class RowIdentity { kLeftOut, kWhereThereIsOne };

class StatementDialect {
 public:
  // Throws DatabaseError: kSyntax for an unfinished text or bracket, kTextAfterStatement for anything behind
  // a semicolon, kNotAStatement for a command that the system does not have.
  static EngineStatement Translate(const QString& statement, RowIdentity identity = RowIdentity::kLeftOut);

  // `value` as a text of a statement, between apostrophes, with its own doubled. The one way in which a value
  // goes into a statement.
  static QString Quoted(const QString& value);
  // `name` between square brackets, for a statement. Throws DatabaseError (kSyntax) when it holds one itself.
  static QString Bracketed(const QString& name);
  // A table name as it may be written, without its brackets or backquotes.
  static QString BareName(const QString& name);
};

}  // namespace zelmar
