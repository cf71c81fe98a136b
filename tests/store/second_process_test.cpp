// Two programs on one database: no row of either is lost.
#include <QCoreApplication>
#include <QProcess>

#include "platform/real_clock.h"
#include "store/store_fixture.h"

namespace zelmar::testing_support {
namespace {

constexpr char kPathVariable[] = "ZELMAR_SECOND_PROCESS_DATABASE";
constexpr char kRowsVariable[] = "ZELMAR_SECOND_PROCESS_ROWS";

class SecondProcess : public StoreTest {
 protected:
  SecondProcess() {
    // The other process does not wait for a virtual clock.
    Platform().clock = std::make_shared<RealClock>();
    Platform().events = std::make_shared<RealEventService>();
  }

  static void AddFamily(Connection& connection, const QString& name) {
    connection.Execute(QStringLiteral("INSERT INTO tblFamily VALUES ('%1')").arg(name));
  }

  // Starts this program again, for the one test that adds `rows` families to the database.
  void Start(QProcess& process, int rows) const {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QString::fromLatin1(kPathVariable), database.Path());
    environment.insert(QString::fromLatin1(kRowsVariable), QString::number(rows));
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QCoreApplication::applicationFilePath(),
                  {QStringLiteral("--gtest_filter=SecondProcess.AddsItsRows")});
    ASSERT_TRUE(process.waitForStarted());
  }
  static void ExpectWell(QProcess& process) {
    ASSERT_TRUE(process.state() == QProcess::NotRunning || process.waitForFinished());
    EXPECT_EQ(process.exitCode(), 0) << process.readAll().toStdString();
  }

  QStringList Families() const {
    return database.Column(QStringLiteral("SELECT Family FROM tblFamily ORDER BY Family"));
  }
};

// By itself it writes into its own sample; started by the tests below, into theirs.
TEST_F(SecondProcess, AddsItsRows) {
  const QString path = qEnvironmentVariable(kPathVariable, database.Path());
  const int rows = qEnvironmentVariable(kRowsVariable, QStringLiteral("3")).toInt();
  for (int i = 0; i < rows; ++i) AddFamily(*Connection::Open(path), QStringLiteral("other %1").arg(i));
  const auto added = Recordset::OpenStatement(
      Connection::Open(path), QStringLiteral("SELECT Family FROM tblFamily WHERE Family LIKE 'other *'"));
  EXPECT_EQ(added->RecordCount(), rows);
}

// Without its locks our log would be taken away by a visitor that closes, and what we and the next visitor
// write afterwards would go into two logs.
TEST_F(SecondProcess, AConnectionOpenedMeanwhileLeavesTheLocksOfTheOthers) {
  const auto lasting = database.Connect();
  AddFamily(*lasting, QStringLiteral("first"));
  const auto meanwhile = database.Connect();
  const auto visit = [&](int rows) {
    QProcess process;
    Start(process, rows);
    ExpectWell(process);
  };
  visit(0);
  AddFamily(*lasting, QStringLiteral("between"));
  visit(1);
  AddFamily(*lasting, QStringLiteral("last"));
  meanwhile->Close();
  lasting->Close();
  EXPECT_EQ(Families().join(u','), QStringLiteral("between,first,last,other 0"));
}

TEST_F(SecondProcess, TwoThatWriteAtOnceLoseNothing) {
  constexpr int kRows = 100;
  const auto lasting = database.Connect();
  QProcess process;
  Start(process, kRows);
  int own = 0;
  do {
    AddFamily(*database.Connect(), QStringLiteral("short %1").arg(own));
    AddFamily(*lasting, QStringLiteral("lasting %1").arg(own));
    ++own;
  } while (own < kRows || !process.waitForFinished(1));
  ExpectWell(process);
  lasting->Close();
  EXPECT_EQ(Families().size(), kRows + 2 * own);
}

}  // namespace
}  // namespace zelmar::testing_support
