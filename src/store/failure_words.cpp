#include "store/failure_words.h"

#include "store/database_error.h"

namespace zelmar {

QString WordsForPerson(const Failure& failure) {
  const QString words = failure.Description();
  switch (failure.Number()) {
    case database_error::kInUse:
      return QStringLiteral("Another program keeps the database for itself (%1).").arg(words);
    case database_error::kReadOnly:
      return QStringLiteral("The database file cannot be written to (%1).").arg(words);
    case database_error::kDiskFull:
      return QStringLiteral("There is no room left for the database on its disk (%1).").arg(words);
    default:
      return words.endsWith(u'.') ? words : words + u'.';
  }
}

}  // namespace zelmar
