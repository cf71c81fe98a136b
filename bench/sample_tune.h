// A database with one tune of any length, for the benchmark programs.
#pragma once

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QString>
#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>

#include "model/globals.h"
#include "store/schema.h"

namespace zelmar::bench {

class SampleDatabase {
 public:
  SampleDatabase() {
    auto database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("sample"));
    database.setDatabaseName(Path());
    Require(database.open(), database.lastError());
    QSqlQuery query(database);
    Require(query.exec(QStringLiteral("PRAGMA journal_mode=WAL")), query.lastError());
    for (const QString& statement : SchemaStatements()) Require(query.exec(statement), query.lastError());
    for (const LibraryIndex& index : LibraryIndexes())
      Require(query.exec(IndexStatement(index)), query.lastError());
    Global().DatabasePath = Path();
  }
  ~SampleDatabase() {
    QSqlDatabase::database(QStringLiteral("sample")).close();
    QSqlDatabase::removeDatabase(QStringLiteral("sample"));
  }
  SampleDatabase(const SampleDatabase&) = delete;
  SampleDatabase& operator=(const SampleDatabase&) = delete;

  QString Path() const { return directory_.filePath(QStringLiteral("Sample.mdb")); }
  static QSqlDatabase Handle() { return QSqlDatabase::database(QStringLiteral("sample")); }

  // A tune of `events` notes on four tracks, 16 notes to the bar of each, stored track after track.
  void AddTune(const QString& code_name, int events, int tempo = 120) {
    constexpr int kTracks = 4;
    auto database = Handle();
    database.transaction();
    QSqlQuery query(database);
    query.prepare(
        QStringLiteral("INSERT INTO tblMelodies VALUES (?,?,' ','Various',' ',' ',' ',' ','Full',' ',4,4,0,0,"
                       "?,'GM',255,1,9999,?)"));
    query.addBindValue(code_name);
    query.addBindValue(code_name);
    query.addBindValue(tempo);
    query.addBindValue(events);
    Require(query.exec(), query.lastError());
    for (int track = 1; track <= kTracks; ++track) {
      query.prepare(QStringLiteral("INSERT INTO tblTracks VALUES (?,?,'Track',?,?,0,0,0)"));
      query.addBindValue(code_name);
      query.addBindValue(track);
      query.addBindValue(track);
      query.addBindValue(8 * track);
      Require(query.exec(), query.lastError());
    }
    Require(query.exec(EventTableStatement(code_name)), query.lastError());
    query.prepare(QStringLiteral("INSERT INTO [%1] VALUES (128,?,?,?,?,?,?,?,?,100,' ')").arg(code_name));
    const int per_track = events / kTracks;
    static const char* const kNames[] = {"C4", "D4", "Eb4", "F#5", "G3", "Ab4", "Bb5", "B3"};
    for (int i = 0; i < events; ++i) {
      const int place = i % per_track;
      query.bindValue(0, i + 1);
      query.bindValue(1, 1 + place / 16);
      query.bindValue(2, 1 + place / 4 % 4);
      query.bindValue(3, 30 * (place % 4));
      query.bindValue(4, 1 + i / per_track % kTracks);
      query.bindValue(5, 0.25);
      query.bindValue(6, 8 * (1 + i / per_track));
      query.bindValue(7, QString::fromLatin1(kNames[i % 8]));
      Require(query.exec(), query.lastError());
    }
    Require(database.commit(), database.lastError());
  }

  // `count` rows of the catalogue, without any notes behind them.
  void FillCatalogue(int count) {
    static const char* const kComposers[] = {"Bach", "Various", "Mozart", "Haydn", "Purcell"};
    auto database = Handle();
    database.transaction();
    QSqlQuery query(database);
    query.prepare(
        QStringLiteral("INSERT INTO tblMelodies VALUES (?,?,' ',?,' ',' ',' ',' ','Full',' ',4,4,0,0,"
                       "120,'GM',255,1,9999,0)"));
    for (int i = 0; i < count; ++i) {
      // In no order, as a catalogue grows.
      const int number = static_cast<int>(i * 7919LL % count);
      query.bindValue(0, QStringLiteral("T%1").arg(number));
      query.bindValue(1, QStringLiteral("Sonata %1 in C").arg(number));
      query.bindValue(2, QString::fromLatin1(kComposers[i % 5]));
      Require(query.exec(), query.lastError());
    }
    Require(database.commit(), database.lastError());
  }

 private:
  static void Require(bool done, const QSqlError& error) {
    if (done) return;
    std::fprintf(stderr, "sample database: %s\n", qPrintable(error.text()));
    std::exit(1);
  }

  QTemporaryDir directory_;
};

}  // namespace zelmar::bench
