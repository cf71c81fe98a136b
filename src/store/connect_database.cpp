#include "store/connect_database.h"

#include <QFileInfo>
#include <QHash>

#include "model/globals.h"
#include "platform/paths.h"
#include "platform/services.h"
#include "store/connection.h"
#include "store/database_error.h"
#include "store/failure_words.h"

namespace zelmar {

namespace {

QString& FailureWords() {
  static QString words;
  return words;
}

// Tells of a library that can only be read, unless the user knows.
void TellReadOnly(const Connection& connection, const QString& path, ReadOnlyNotice notice) {
  static QHash<QString, WriteObstacle> known;
  const WriteObstacle obstacle = connection.Obstacle();
  const bool is_known = known.value(path, WriteObstacle::kNone) == obstacle;
  known.insert(path, obstacle);
  if (is_known || obstacle == WriteObstacle::kNone || notice == ReadOnlyNotice::kLeftToCaller) return;
  ShowMessage(MessageIcon::kExclamation,
              ReadOnlyWords(connection) +
                  QStringLiteral(" Its tunes can be opened and played; nothing can be saved in it."),
              QStringLiteral("Database opened for reading"));
}

}  // namespace

void ConnectDatabase(std::shared_ptr<Connection>& connection, ReadOnlyNotice notice) {
  Globals& globals = Global();
  globals.DatabaseFailed = false;
  connection.reset();
  FailureWords().clear();
  const QString path = ResolvePath(globals.DatabasePath);
  try {
    connection = Connection::Open(path);
  } catch (const DatabaseError& error) {
    FailureWords() = WordsOfFailedOpening(error, path);
    // Of a file that is there it is said what is wrong with it.
    const QString trouble =
        QFileInfo(path).isFile()
            ? FailureWords()
            : QStringLiteral("Zelmar Database cannot be found at the path = ") + globals.DatabasePath;
    ShowMessage(
        MessageIcon::kInformation,
        trouble + QStringLiteral(
                      "   Please go to the Options menu and choose 'Connect Database'  in order to connect "
                      "to your current database of melodies, composers etc."));
    globals.DatabaseFailed = true;
    return;
  }
  TellReadOnly(*connection, path, notice);
}

QString ConnectFailureWords() {
  return FailureWords();
}

QString ReadOnlyWords(const Connection& connection) {
  if (connection.Obstacle() == WriteObstacle::kNone) return {};
  return QStringLiteral("The database %1 can be read and not changed: %2.")
      .arg(Global().DatabasePath, ReasonOf(connection.Obstacle()));
}

}  // namespace zelmar
