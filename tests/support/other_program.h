// Another program at the same database file.
#pragma once

#include <gtest/gtest.h>

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

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

// Nobody else can write to the database for its lifetime, or until Release.
class LockedDatabase {
 public:
  explicit LockedDatabase(const SampleDatabase& database) : program_(database.Path()) {
    program_.Run("BEGIN IMMEDIATE");
  }
  ~LockedDatabase() { Release(); }
  LockedDatabase(const LockedDatabase&) = delete;
  LockedDatabase& operator=(const LockedDatabase&) = delete;

  void Release() {
    if (held_) program_.Run("ROLLBACK");
    held_ = false;
  }

 private:
  OtherProgram program_;
  bool held_ = true;
};

// As LockedDatabase, and nobody else can read it: only a file that keeps no log ahead can be shut off whole.
class ShutDatabase {
 public:
  explicit ShutDatabase(const QString& path) : program_(path) {
    program_.Run("PRAGMA journal_mode=DELETE");
    program_.Run("BEGIN EXCLUSIVE");
  }
  ~ShutDatabase() { Release(); }
  ShutDatabase(const ShutDatabase&) = delete;
  ShutDatabase& operator=(const ShutDatabase&) = delete;

  void Release() {
    if (held_) program_.Run("ROLLBACK");
    held_ = false;
  }

 private:
  OtherProgram program_;
  bool held_ = true;
};

}  // namespace zelmar::testing_support
