// Another program at the same database file.
#pragma once

#include <gtest/gtest.h>

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <initializer_list>

#include "support/sample_database.h"

namespace zelmar::testing_support {

// A second hand at the engine, past all that this program does of itself. One at a time.
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
    EXPECT_TRUE(query.exec(statement))
        << qPrintable(statement) << ' ' << qPrintable(query.lastError().text());
  }
  void Run(const char* statement) { Run(QString::fromLatin1(statement)); }

 private:
  inline static const QString kName = QStringLiteral("other program");
  QSqlDatabase engine_;
};

// Holds the database for its lifetime, or until Release.
class HoldingProgram {
 public:
  ~HoldingProgram() { Release(); }
  HoldingProgram(const HoldingProgram&) = delete;
  HoldingProgram& operator=(const HoldingProgram&) = delete;

  void Release() {
    if (held_) program_.Run("ROLLBACK");
    held_ = false;
  }

 protected:
  HoldingProgram(const QString& path, std::initializer_list<const char*> statements) : program_(path) {
    for (const char* statement : statements) program_.Run(statement);
  }

 private:
  OtherProgram program_;
  bool held_ = true;
};

// Nobody else can write to the database.
class LockedDatabase : public HoldingProgram {
 public:
  explicit LockedDatabase(const SampleDatabase& database)
      : HoldingProgram(database.Path(), {"BEGIN IMMEDIATE"}) {}
};

// Nobody else can read it either: only a file that keeps no log ahead can be shut off whole.
class ShutDatabase : public HoldingProgram {
 public:
  explicit ShutDatabase(const QString& path)
      : HoldingProgram(path, {"PRAGMA journal_mode=DELETE", "BEGIN EXCLUSIVE"}) {}
};

}  // namespace zelmar::testing_support
