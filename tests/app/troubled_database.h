// Databases that can be read and take no row.
#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QSqlQuery>

#include "app/option_windows_fixture.h"
#include "support/full_disk.h"
#include "support/sample_database.h"

namespace zelmar {

// Files grow so far and no farther: enough for the index of the database's log, too little for a row with a
// long text in the log itself.
inline constexpr rlim_t kRoomWithoutLongTexts = 34000;
inline QString LongText() {
  return QString(60000, u'x');
}

// A second hand at the engine, past all that this program does of itself.
class OtherProgram {
 public:
  explicit OtherProgram(const QString& path)
      : engine_(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), kName)) {
    engine_.setDatabaseName(path);
    EXPECT_TRUE(engine_.open());
  }
  ~OtherProgram() {
    engine_.close();
    engine_ = QSqlDatabase();
    QSqlDatabase::removeDatabase(kName);
  }
  OtherProgram(const OtherProgram&) = delete;
  OtherProgram& operator=(const OtherProgram&) = delete;
  void Run(const QString& statement) {
    QSqlQuery query(engine_);
    EXPECT_TRUE(query.exec(statement)) << qPrintable(statement);
  }

 private:
  inline static const QString kName = QStringLiteral("other program");
  QSqlDatabase engine_;
};

class LockedDatabase {
 public:
  explicit LockedDatabase(const testing_support::SampleDatabase& database) : program_(database.Path()) {
    program_.Run(QStringLiteral("BEGIN IMMEDIATE"));
  }
  ~LockedDatabase() { program_.Run(QStringLiteral("ROLLBACK")); }
  LockedDatabase(const LockedDatabase&) = delete;
  LockedDatabase& operator=(const LockedDatabase&) = delete;

 private:
  OtherProgram program_;
};

// Neither the file nor its folder can be written to.
class ReadOnlyDatabase {
 public:
  explicit ReadOnlyDatabase(const testing_support::SampleDatabase& database)
      : file_(database.Path()), folder_(database.Directory()) {
    // Nobody can read a database with a log where no log can be made.
    OtherProgram(file_).Run(QStringLiteral("PRAGMA journal_mode=DELETE"));
    const auto readers = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
    const auto openers = QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther;
    EXPECT_TRUE(QFile::setPermissions(file_, readers));
    EXPECT_TRUE(QFile::setPermissions(folder_, readers | openers));
    user_ = std::make_unique<PlainUser>();
  }
  ~ReadOnlyDatabase() {
    user_.reset();
    const auto owner = QFile::ReadOwner | QFile::WriteOwner;
    QFile::setPermissions(folder_, owner | QFile::ExeOwner);
    QFile::setPermissions(file_, owner);
  }
  ReadOnlyDatabase(const ReadOnlyDatabase&) = delete;
  ReadOnlyDatabase& operator=(const ReadOnlyDatabase&) = delete;

 private:
  QString file_;
  QString folder_;
  std::unique_ptr<PlainUser> user_;
};

}  // namespace zelmar
