// What waits for another program that holds the database: for how long, with what served, and how it ends.
#include "store/database_wait.h"

#include <QSqlDatabase>

#include "store/connect_database.h"
#include "store/loading_fixture.h"
#include "store/saving_fixture.h"
#include "support/other_program.h"

namespace zelmar::testing_support {
namespace {

const QString kInsert = QStringLiteral("INSERT INTO tblFamily VALUES ('Strings')");

class HeldDatabase : public LoadingTest {
 protected:
  HeldDatabase() {
    SetDatabaseWaitListener([this](bool waiting) { told.push_back(waiting); });
  }
  ~HeldDatabase() override { SetDatabaseWaitListener({}); }

  // The virtual seconds that `work` takes.
  template <typename Work>
  double SecondsOf(Work work) {
    const double start = platform.clock->SecondsSinceMidnight();
    work();
    const double passed = platform.clock->SecondsSinceMidnight() - start;
    return passed < 0.0 ? passed + 86400.0 : passed;
  }

  // Calls `action` once, at the first serving behind `seconds` of virtual time.
  template <typename Action>
  void After(double seconds, Action action) {
    const double moment = platform.clock->SecondsSinceMidnight() + seconds;
    platform.events->on_serve = [this, moment, action, done = false](int) mutable {
      if (done || platform.clock->SecondsSinceMidnight() < moment) return;
      done = true;
      action();
    };
  }

  QStringList Families() const { return database.Column(QStringLiteral("SELECT * FROM tblFamily")); }

  std::vector<bool> told;
};

TEST_F(HeldDatabase, AChangeWaitsTwoSecondsWithTheQueueServed) {
  const LockedDatabase locked(database);
  const auto connection = database.Connect();
  const int served = platform.events->serve_count;
  const double seconds = SecondsOf(
      [&] { EXPECT_EQ(FailureNumber([&] { connection->Execute(kInsert); }), database_error::kInUse); });
  EXPECT_GE(seconds, 2.0);
  EXPECT_LT(seconds, 2.1);
  EXPECT_GE(platform.events->serve_count - served, 100) << "once in 20 ms";
  EXPECT_EQ(told, (std::vector<bool>{true, false}));
}

TEST_F(HeldDatabase, AWaitOverMidnightIsNoLonger) {
  platform.clock->SetSeconds(86399.0);
  const LockedDatabase locked(database);
  // A clock of a day: past its end it begins anew.
  platform.events->on_serve = [this](int) {
    if (platform.clock->SecondsSinceMidnight() >= 86400.0) platform.clock->SetSeconds(0.0);
  };
  const double seconds = SecondsOf(
      [&] { EXPECT_EQ(FailureNumber([&] { database.Execute(kInsert); }), database_error::kInUse); });
  EXPECT_NEAR(seconds, 2.0, 0.1);
}

TEST_F(HeldDatabase, AChangeGoesOnWhenTheOtherProgramIsDone) {
  LockedDatabase locked(database);
  After(1.0, [&locked] { locked.Release(); });
  const double seconds = SecondsOf([&] { database.Execute(kInsert); });
  EXPECT_NEAR(seconds, 1.0, 0.05);
  EXPECT_EQ(Families(), QStringList(QStringLiteral("Strings")));
  EXPECT_EQ(told, (std::vector<bool>{true, false}));
}

TEST_F(HeldDatabase, AShortWaitIsNotShown) {
  LockedDatabase locked(database);
  After(0.1, [&locked] { locked.Release(); });
  database.Execute(kInsert);
  EXPECT_TRUE(told.empty());
}

TEST_F(HeldDatabase, NobodyWaitsForAFreeDatabase) {
  const int served = platform.events->serve_count;
  database.Execute(kInsert);
  Families();
  EXPECT_EQ(platform.events->serve_count, served);
}

TEST_F(HeldDatabase, AWaitThatIsCancelledEndsAtOnceAndSaysSo) {
  const LockedDatabase locked(database);
  After(0.5, [] { CancelDatabaseWaits(); });
  QString words;
  const double seconds = SecondsOf([&] {
    try {
      database.Execute(kInsert);
    } catch (const DatabaseError& failure) {
      EXPECT_EQ(failure.Number(), database_error::kInUse);
      words = failure.Description();
    }
  });
  EXPECT_NEAR(seconds, 0.5, 0.05);
  EXPECT_EQ(words,
            QStringLiteral("Another program keeps the database for itself (the wait for it was ended)."));
  EXPECT_EQ(told, (std::vector<bool>{true, false}));
  EXPECT_TRUE(Families().isEmpty());
}

TEST_F(HeldDatabase, ACancelledWaitIsForgottenByTheNext) {
  CancelDatabaseWaits();
  LockedDatabase locked(database);
  After(0.3, [&locked] { locked.Release(); });
  database.Execute(kInsert);
  EXPECT_EQ(Families().size(), 1);
}

TEST_F(HeldDatabase, RowsOfARecordsetWaitAndAreWrittenOnce) {
  LockedDatabase locked(database);
  const auto rows = Recordset::OpenTable(database.Connect(), QStringLiteral("tblFamily"));
  for (const char16_t* family : {u"Winds", u"Brass"}) {
    rows->AddNew();
    rows->SetValue(0, QString::fromUtf16(family));
  }
  After(0.4, [&locked] { locked.Release(); });
  rows->UpdateBatch();
  rows->MoveFirst();
  rows->SetValue(0, QStringLiteral("Woodwinds"));
  rows->UpdateBatch();
  EXPECT_EQ(Families(), QStringList({QStringLiteral("Woodwinds"), QStringLiteral("Brass")}));
}

// --- What comes while it waits ---

TEST_F(HeldDatabase, StatementsOfNestedCommandsReadThroughOtherConnections) {
  LockedDatabase locked(database);
  QStringList seen;
  After(0.5, [&] {
    seen = database.Column(QStringLiteral("SELECT Title FROM tblDBInfo"));
    locked.Release();
    database.Execute(QStringLiteral("INSERT INTO tblFamily VALUES ('Nested')"));
  });
  database.Execute(kInsert);
  EXPECT_EQ(seen, QStringList(QStringLiteral("Sample Tunes")));
  EXPECT_EQ(Families(), QStringList({QStringLiteral("Nested"), QStringLiteral("Strings")}));
}

TEST_F(HeldDatabase, ANestedWaitThatFailsLeavesTheOuterOneToGoOn) {
  LockedDatabase locked(database);
  int nested = 0;
  bool inside = false;
  platform.events->on_serve = [&](int) {
    if (inside) return;
    inside = true;
    EXPECT_EQ(FailureNumber([&] { database.Execute(kInsert); }), database_error::kInUse);
    ++nested;
    locked.Release();
  };
  database.Execute(kInsert);
  EXPECT_EQ(nested, 1);
  EXPECT_EQ(Families().size(), 1);
}

TEST_F(HeldDatabase, AFailureOfANestedCommandLeavesNothingWaiting) {
  const LockedDatabase locked(database);
  After(0.5, [] { throw Failure(error_number::kInvalidCall, QStringLiteral("nested")); });
  EXPECT_EQ(FailureNumber([&] { database.Execute(kInsert); }), error_number::kInvalidCall);
  EXPECT_EQ(told, (std::vector<bool>{true, false}));
}

TEST_F(HeldDatabase, TheConnectionMayBeClosedAndLetGoMeanwhile) {
  const LockedDatabase locked(database);
  auto connection = database.Connect();
  After(0.3, [&connection] { connection->Close(); });
  EXPECT_EQ(FailureNumber([&] { connection->Execute(kInsert); }), database_error::kOther);
  connection = database.Connect();
  After(0.3, [&connection] { connection.reset(); });
  EXPECT_EQ(FailureNumber([&] { connection->Execute(kInsert); }), database_error::kInUse);
  EXPECT_EQ(connection, nullptr);
  EXPECT_EQ(QSqlDatabase::connectionNames(), QStringList(QStringLiteral("other program")));
}

TEST_F(HeldDatabase, TheConnectionOfARecordsetMayBeClosedWhileItsRowsWait) {
  const LockedDatabase locked(database);
  const auto connection = database.Connect();
  const auto rows = Recordset::OpenTable(connection, QStringLiteral("tblFamily"));
  for (int count = 1; count <= 2; ++count) {
    rows->AddNew();
    rows->SetValue(0, QStringLiteral("Family %1").arg(count));
  }
  After(0.3, [&connection] { connection->Close(); });
  EXPECT_EQ(FailureNumber([&] { rows->UpdateBatch(); }), database_error::kOther);
  EXPECT_TRUE(rows->Eof());
}

// --- Reading ---

TEST_F(HeldDatabase, OpeningAndReadingWaitTheSameWay) {
  ShutDatabase shut(database.Path());
  std::shared_ptr<Connection> connection;
  const double seconds = SecondsOf([&] { ConnectDatabase(connection); });
  EXPECT_NEAR(seconds, 2.0, 0.1);
  EXPECT_TRUE(Global().DatabaseFailed);
  EXPECT_EQ(ConnectFailureWords(),
            QStringLiteral("Another program holds the database %1.").arg(database.Path()));
  After(1.0, [&shut] { shut.Release(); });
  ConnectDatabase(connection);
  EXPECT_FALSE(Global().DatabaseFailed);
}

TEST_F(HeldDatabase, ALoadWaitsForItsTune) {
  database.AddTune(QStringLiteral("Tune"), {QStringLiteral("C4")});
  ShutDatabase shut(database.Path());
  After(1.0, [&shut] { shut.Release(); });
  EXPECT_NE(Load(QStringLiteral("Tune")), nullptr);
  EXPECT_TRUE(loader.LoadedOk());
}

TEST_F(HeldDatabase, ALoaderMayGoWhileItWaits) {
  database.AddTune(QStringLiteral("Tune"), {QStringLiteral("C4")});
  auto going = std::make_unique<TuneLoader>();
  ShutDatabase shut(database.Path());
  After(0.5, [&] {
    going.reset();
    shut.Release();
  });
  QString name = QStringLiteral("Tune");
  going->DoLoad(name);
  EXPECT_EQ(going, nullptr);
  EXPECT_EQ(window.MyTune(), nullptr);
}

// --- Saving ---

class HeldSave : public SavingTest {};

TEST_F(HeldSave, WaitsAndGoesOnWhenTheOtherProgramIsDone) {
  const auto tune = MakeTune();
  LockedDatabase locked(database);
  const double moment = platform.clock->SecondsSinceMidnight() + 1.5;
  platform.events->on_serve = [&](int) {
    if (platform.clock->SecondsSinceMidnight() >= moment) locked.Release();
  };
  bool failed = true;
  SaveTune(tune, QStringLiteral("Mine"), failed, SavePortion::kAll);
  EXPECT_FALSE(failed);
  EXPECT_FALSE(tune->ChangedSinceLastSaved());
  EXPECT_EQ(Events("Mine").size(), 4);
}

// The other program takes the database between two rows: what is written is a first part, and it is told.
TEST_F(HeldSave, CancelledInTheMiddleTellsWhatIsWritten) {
  const auto tune = MakeTune();
  tune->Words()->Add(0, 1, 2, QStringLiteral("in excelsis"));
  std::unique_ptr<LockedDatabase> locked;
  platform.events->on_serve = [&](int) {
    if (locked)
      CancelDatabaseWaits();
    else if (!Select("select * from tblWords where FileName = 'Mine'").isEmpty())
      locked = std::make_unique<LockedDatabase>(database);
  };
  bool failed = false;
  QString words;
  try {
    SaveTune(tune, QStringLiteral("Mine"), failed, SavePortion::kAll);
  } catch (const DatabaseError& failure) {
    words = failure.Description();
  }
  platform.events->on_serve = nullptr;
  locked.reset();
  EXPECT_TRUE(
      words.startsWith(QStringLiteral("\"Mine\" is not saved. Another program keeps the database for itself "
                                      "(the wait for it was ended).")))
      << words.toStdString();
  EXPECT_TRUE(words.contains(QStringLiteral("Written to the database before that: catalogue data, words.")))
      << words.toStdString();
  EXPECT_TRUE(tune->ChangedSinceLastSaved());
  EXPECT_TRUE(Select("select * from tblThemes where CodeName = 'Mine'").isEmpty());
}

}  // namespace
}  // namespace zelmar::testing_support
