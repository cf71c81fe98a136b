// Failures of the tune database.
#pragma once

#include "platform/failure.h"

class QSqlError;

namespace zelmar {

// The numbers that callers of the database test for, beside error_number::kTableNotFound.
namespace database_error {
inline constexpr int kOther = 3000;  // whatever the engine says in its own words
inline constexpr int kTableExists = 3010;
inline constexpr int kNoCurrentRecord = 3021;
inline constexpr int kDuplicateValue = 3022;  // a key column holds the value already
inline constexpr int kFileNotFound = 3024;
inline constexpr int kDiskFull = 3026;
inline constexpr int kReadOnly = 3027;        // rows that take no change
inline constexpr int kReadOnlyMedium = 3050;  // the file lies where nobody can write
inline constexpr int kProtected = 3051;       // this user may not write to the file or its folder
inline constexpr int kUnknownColumn = 3061;   // a name in a statement that no table has
inline constexpr int kSyntax = 3075;
inline constexpr int kNotAStatement = 3129;  // a command that the system has no use for
inline constexpr int kTextAfterStatement = 3142;
inline constexpr int kInUse = 3211;
inline constexpr int kForwardOnly = 3251;   // a move that the cursor cannot make
inline constexpr int kItemNotFound = 3265;  // a field that the recordset does not hold
inline constexpr int kNotADatabase = 3343;
}  // namespace database_error

class DatabaseError : public Failure {
 public:
  using Failure::Failure;
};

// No row here: an empty set, either end of it, a deleted row.
DatabaseError NoCurrentRecord();

// A statement that cannot be taken apart; `what` tells the place.
DatabaseError SyntaxError(const QString& what);

// The sentence with its end: `detail` in brackets, where it is not empty, and the full stop.
QString WithDetail(const QString& sentence, const QString& detail);

// Another program holds the database. `detail` as above.
DatabaseError InUse(const QString& detail);

// The engine's error under this system's numbers: kTableNotFound where a table is missing, else by its kind.
DatabaseError DatabaseErrorFrom(const QSqlError& error);

}  // namespace zelmar
