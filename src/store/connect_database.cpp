#include "store/connect_database.h"

#include <QFileInfo>

#include "model/globals.h"
#include "platform/paths.h"
#include "platform/services.h"
#include "store/connection.h"
#include "store/database_error.h"

namespace zelmar {

namespace {

QString& FailureWords() {
  static QString words;
  return words;
}

QString WordsOf(const DatabaseError& error, const QString& path) {
  if (error.Number() == database_error::kNotADatabase)
    return QStringLiteral("The file %1 is not a database.").arg(path);
  if (error.Number() == database_error::kInUse)
    return QStringLiteral("Another program holds the database %1.").arg(path);
  if (error.Number() == database_error::kFileNotFound && !QFileInfo::exists(path))
    return QStringLiteral("There is no file %1.").arg(path);
  return QStringLiteral("The file %1 cannot be opened; perhaps it or its folder is protected.").arg(path);
}

}  // namespace

void ConnectDatabase(std::shared_ptr<Connection>& connection) {
  Globals& globals = Global();
  globals.DatabaseFailed = false;
  connection.reset();
  FailureWords().clear();
  const QString path = ResolvePath(globals.DatabasePath);
  try {
    connection = Connection::Open(path);
  } catch (const DatabaseError& error) {
    FailureWords() = WordsOf(error, path);
    ShowMessage(MessageIcon::kInformation,
                QStringLiteral("Zelmar Database cannot be found at the path = ") + globals.DatabasePath +
                    QStringLiteral(
                        "   Please go to the Options menu and choose 'Connect Database'  in order to connect "
                        "to your current database of melodies, composers etc."));
    globals.DatabaseFailed = true;
  }
}

QString ConnectFailureWords() {
  return FailureWords();
}

}  // namespace zelmar
