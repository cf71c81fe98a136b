#include "store/database_error.h"

#include <QSqlError>
#include <algorithm>
#include <iterator>

namespace zelmar {

namespace {

constexpr int kPrimaryCodeMask = 0xFF;  // the engine puts details into the higher bits

// Numbers by the engine's own code.
struct CodeNumber {
  int code;
  int number;
};
constexpr int kBusyCodes[] = {5, 6};  // a lock of another connection
constexpr CodeNumber kByCode[] = {
    {8, database_error::kReadOnly},        {11, database_error::kNotADatabase},
    {13, database_error::kDiskFull},       {14, database_error::kFileNotFound},
    {19, database_error::kDuplicateValue}, {26, database_error::kNotADatabase},
};

// Numbers by how the engine words the error, where its code is the same for many.
struct WordingNumber {
  const char16_t* part;
  int number;
};
constexpr WordingNumber kByWording[] = {
    {u"no such column", database_error::kUnknownColumn},
    {u"has no column named", database_error::kUnknownColumn},
    {u"already exists", database_error::kTableExists},
    {u"syntax error", database_error::kSyntax},
    {u"unrecognized token", database_error::kSyntax},
    {u"incomplete input", database_error::kSyntax},
};

}  // namespace

QString WithDetail(const QString& sentence, const QString& detail) {
  return (detail.isEmpty() ? sentence : QStringLiteral("%1 (%2)").arg(sentence, detail)) + u'.';
}

DatabaseError NoCurrentRecord() {
  return {database_error::kNoCurrentRecord, QStringLiteral("There is no current row.")};
}

DatabaseError SyntaxError(const QString& what) {
  return {database_error::kSyntax, QStringLiteral("Syntax error in statement: %1").arg(what)};
}

DatabaseError InUse(const QString& detail) {
  return {database_error::kInUse,
          WithDetail(QStringLiteral("Another program keeps the database for itself"), detail)};
}

DatabaseError DatabaseErrorFrom(const QSqlError& error) {
  const QString words = error.databaseText();
  const auto missing_table = QStringLiteral("no such table: ");
  if (words.startsWith(missing_table))
    return {error_number::kTableNotFound,
            QStringLiteral("The table '%1' is not in the database.").arg(words.mid(missing_table.size()))};
  for (const WordingNumber& wording : kByWording)
    if (words.contains(QStringView(wording.part))) return {wording.number, words};
  const int code = error.nativeErrorCode().toInt() & kPrimaryCodeMask;
  if (std::find(std::begin(kBusyCodes), std::end(kBusyCodes), code) != std::end(kBusyCodes))
    return InUse(words);
  for (const CodeNumber& known : kByCode)
    if (known.code == code) return {known.number, words};
  return {database_error::kOther, words.isEmpty() ? error.text() : words};
}

}  // namespace zelmar
