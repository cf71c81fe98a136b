// The words, tracks and themes of one tune in a big library, by the statements of a load, against the same
// statements in a library without indexes; and what it takes to give an older library its indexes.

#include <QCoreApplication>

#include "figure.h"
#include "platform/memory.h"
#include "platform/services.h"
#include "sample_tune.h"
#include "store/recordset.h"
#include "store/statement_dialect.h"

namespace {

using namespace zelmar;
using bench::Require;

constexpr int kTunes = 3000;
constexpr int kTracks = 12000;
constexpr int kThemes = 6000;
constexpr int kWords = 150000;
constexpr int kRounds = 301;
constexpr int kRoundsWithoutIndex = 11;
constexpr double kLimitMilliseconds = 1.0;

struct ChildTable {
  const char* what;
  const char* statement;
  const char* order;
  int rows;  // of one tune
};
constexpr ChildTable kChildTables[] = {
    {"words of one tune of 3,000", "SELECT * FROM tblWords WHERE FileName = ", " ORDER BY Bar,Beat,Tick",
     kWords / kTunes},
    {"tracks of one tune of 3,000", "SELECT * FROM tblTracks WHERE CodeName = ", " ORDER BY TrackNo",
     kTracks / kTunes},
    {"themes of one tune of 3,000", "SELECT * FROM tblThemes WHERE CodeName = ", " ORDER BY ThemeNo",
     kThemes / kTunes},
};

// In no order, as a library grows.
QString NameOf(int round) {
  return QStringLiteral("tune %1").arg(round * 7919LL % kTunes);
}

// Each statement fills a table; the tunes' rows lie among each other.
void Fill() {
  const QString rows = QStringLiteral(
      "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < %1 - 1) INSERT INTO %2 "
      "SELECT "
      "'tune ' || (i %% %3), %4 FROM n");
  const struct {
    int rows;
    const char* table;
    const char* values;
  } kFillings[] = {
      {kTracks, "tblTracks", "i / 3000 + 1, 'Track', 1, 0, 0, 0, 0"},
      {kThemes, "tblThemes", "i / 3000 + 1, 1, 4, 'C4 D4 E4 F4 G4', 1, 100"},
      {kWords, "tblWords", "i / 3000 / 4 + 1, i / 3000 % 4 + 1, 0, 'word'"},
  };
  auto database = bench::SampleDatabase::Handle();
  database.transaction();
  QSqlQuery query(database);
  for (const auto& filling : kFillings)
    Require(query.exec(QString(rows)
                           .replace(QStringLiteral("%1"), QString::number(filling.rows))
                           .replace(QStringLiteral("%2"), QString::fromLatin1(filling.table))
                           .replace(QStringLiteral("%%"), QStringLiteral("%"))
                           .replace(QStringLiteral("%3"), QString::number(kTunes))
                           .replace(QStringLiteral("%4"), QString::fromLatin1(filling.values))),
            "the library is not filled");
  Require(database.commit(), "the library is not filled");
}

// Milliseconds from the statement until its last row is read.
double LookUp(const std::shared_ptr<Connection>& connection, const ChildTable& table, int round) {
  int rows = 0;
  qsizetype letters = 0;
  const double time = bench::MillisecondsOf([&] {
    const auto found = Recordset::OpenStatement(
        connection,
        QLatin1String(table.statement) + StatementDialect::Quoted(NameOf(round)) + QLatin1String(table.order),
        CursorType::kForwardOnly, LockType::kOptimistic);
    for (; !found->Eof(); found->MoveNext(), ++rows)
      for (int field = 0; field < found->FieldCount(); ++field) letters += found->TextOrBlank(field).size();
  });
  Require(rows == table.rows && letters > 0, "the rows of a tune are not all there");
  return time;
}

double LookUps(const QString& path, const ChildTable& table, int rounds) {
  const auto connection = Connection::Open(path);
  std::vector<double> times;
  for (int round = 0; round < rounds; ++round) times.push_back(LookUp(connection, table, round));
  return bench::Median(times);
}

}  // namespace

int main(int argc, char** argv) {
  KeepFreedMemory();
  const QCoreApplication application(argc, argv);
  const bench::SampleDatabase database;
  {
    QSqlQuery query(bench::SampleDatabase::Handle());
    for (const LibraryIndex& index : LibraryIndexes())
      Require(query.exec(QStringLiteral("DROP INDEX ") + index.name), "the library is not an older one");
  }
  Fill();
  bench::SampleDatabase::Handle().close();

  std::vector<double> without;
  for (const ChildTable& table : kChildTables)
    without.push_back(LookUps(database.Path(), table, kRoundsWithoutIndex));
  // The first change of an older library; the same change again is the yardstick.
  const auto change = [&database] {
    return bench::MillisecondsOf([&database] {
      Connection::Open(database.Path())->Execute(QStringLiteral("DELETE * FROM tblRecentFiles"));
    });
  };
  const double first_change = change();
  const double next_change = change();

  bench::PrintHeading();
  std::size_t row = 0;
  for (const ChildTable& table : kChildTables) {
    const double time = LookUps(database.Path(), table, kRounds);
    bench::PrintFigure(table.what, time, kLimitMilliseconds, "ms", time / kLimitMilliseconds, 1.0);
    const QString compared = QStringLiteral("  the same / without an index");
    bench::PrintFigure(qPrintable(compared), time, without[row], "ms", time / without[row], bench::kNoLimit);
    ++row;
  }
  bench::PrintFigure("first change of an older library, with its indexes / next", first_change, next_change,
                     "ms", first_change / next_change, bench::kNoLimit);
  return bench::over_limit ? 3 : 0;
}
