// A tree of 10,000 tunes in five branches: until its branches are open, and until all of it is built for a
// search, against the statements of the whole tree alone, each read to its end.

#include <QApplication>
#include <QTreeView>

#include "app/zelmar_application.h"
#include "figure.h"
#include "platform/memory.h"
#include "sample_tune.h"
#include "shell/theme.h"
#include "shell/tune_tree.h"
#include "store/connection.h"
#include "store/record_source.h"

namespace {

using namespace zelmar;
using bench::Require;

constexpr int kTunes = 10000;
constexpr int kRounds = 7;

void Run(const QString& sql) {
  QSqlQuery query(bench::SampleDatabase::Handle());
  if (!query.exec(sql)) std::fprintf(stderr, "%s\n", qPrintable(query.lastError().text()));
  Require(query.isActive() || query.numRowsAffected() >= 0, "the catalogue cannot be filled");
}

// A table of `count` values, and the tunes spread over them.
struct Reference {
  const char* insert;  // with %1 for the number of the row
  int count;
};
constexpr Reference kReferences[] = {
    {"INSERT INTO tblComposer VALUES ('Composer %1','First',1700,1770,'Austria','Style ' || (%1 % 8))", 80},
    {"INSERT INTO tblFamily VALUES ('Family %1')", 16},
    {"INSERT INTO tblInstruments VALUES (%1,'Instrument %1','Family ' || (%1 % 16),0,4,NULL,NULL)", 128},
    {"INSERT INTO tblStyles VALUES ('Style %1',%1,%1,NULL)", 8},
    {"INSERT INTO tblCategory VALUES ('Category %1',NULL)", 15},
    {"INSERT INTO tblEnsemble VALUES ('Ensemble %1')", 14},
};

void FillCatalogue() {
  Run(QStringLiteral("BEGIN"));
  for (const Reference& reference : kReferences)
    for (int i = 0; i < reference.count; ++i) Run(QString::fromLatin1(reference.insert).arg(i));
  Run(QStringLiteral(
          "WITH RECURSIVE tune(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM tune WHERE n < %1) INSERT INTO "
          "tblMelodies SELECT 'Tune' || n,'The Title of Tune ' || n,' ','Composer ' || (n %% 80),' ',"
          "'Category ' || (n %% 15),'Instrument ' || (n %% 128),'Ensemble ' || (n %% 14),'Full','Style ' || "
          "(n %% 8),4,4,0,0,120,'GM',255,1,9999,0 FROM tune")
          .arg(kTunes)
          .replace(QStringLiteral("%%"), QStringLiteral("%")));
  Run(QStringLiteral("COMMIT"));
}

// A level above tunes: its statement, the column of its value, and that of the tunes which it is compared
// with.
struct Way {
  const char* key;
  const char* above;
  const char* value;
  const char* column;
  const char* prefix;
};
constexpr Way kWays[] = {
    {"Composers", "select COMPOSER from tblComposer Order by COMPOSER", "COMPOSER", "Composer", "XXX"},
    {"Families", "select InstrumentName FROM tblInstruments", "InstrumentName", "SoloInstrument", "XXF"},
    {"Periods", "select style from tblStyles ORDER BY FromYear", "style", "Style", "XXP"},
    {"Categories", "select Category from tblCategory ORDER BY Category", "Category", "Category", "XXC"},
    {"Ensembles", "select Ensemble from tblEnsemble ORDER BY Ensemble", "Ensemble", "Ensemble", "XXE"},
};

QString TunesOf(const Way& way) {
  return QStringLiteral(
             "select CodeName,Title,Composer,length,ensemble FROM tblMelodies WHERE %1 = {parent} ORDER BY "
             "Title")
      .arg(QLatin1String(way.column));
}

std::vector<TreeBranch> Branches() {
  std::vector<TreeBranch> branches;
  for (const Way& way : kWays) {
    const QString value = QLatin1String(way.value);
    const TreeLevel tunes{TunesOf(way), QStringLiteral("{Title}[  by {Composer}] - {Length} - {Ensemble}"),
                          QLatin1String(way.prefix) + QStringLiteral("{CodeName}")};
    branches.push_back({QLatin1String(way.key),
                        QLatin1String(way.key),
                        {{QLatin1String(way.above),
                          u'{' + value + u'}',
                          QLatin1String(way.key) + QStringLiteral("{%1}").arg(value),
                          value,
                          {},
                          {},
                          {tunes}}}});
  }
  return branches;
}

std::shared_ptr<Connection> connection;

double OpenBranches() {
  return bench::MillisecondsOf([] {
    TuneTree tree(QStringLiteral("TreeListening"));
    tree.Model().Begin(QStringLiteral("Top"), QStringLiteral("Zelmar"), Branches(), connection);
    tree.resize(600, 700);
    tree.show();
    tree.ExpandTop();
    QCoreApplication::processEvents();
    Require(tree.Model().NodeCount() == 6 + 80 + 128 + 8 + 15 + 14, "the branches are not open");
  });
}

double BuildAll() {
  return bench::MillisecondsOf([] {
    TuneTree tree(QStringLiteral("TreeListening"));
    tree.Model().Begin(QStringLiteral("Top"), QStringLiteral("Zelmar"), Branches(), connection);
    tree.show();
    tree.Model().BuildAll();
    Require(tree.Model().Matches(QStringLiteral("tune 9999")).size() == std::size(kWays),
            "a tune is not found");
  });
}

double StatementsAlone() {
  qsizetype letters = 0;
  const double time = bench::MillisecondsOf([&letters] {
    for (const Way& way : kWays) {
      QSqlQuery above(bench::SampleDatabase::Handle());
      above.exec(QLatin1String(way.above));
      while (above.next()) {
        QSqlQuery tunes(bench::SampleDatabase::Handle());
        tunes.setForwardOnly(true);
        tunes.exec(TunesOf(way).replace(QStringLiteral("{parent}"), InStatement(above.value(0))));
        while (tunes.next())
          for (int field = 0; field < 5; ++field) letters += tunes.value(field).toString().size();
      }
    }
  });
  Require(letters > 0, "the statements give nothing");
  return time;
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  KeepFreedMemory();
  ZelmarApplication application(argc, argv);
  ApplyTheme(application, ColourScheme::kLight);
  const bench::SampleDatabase database;
  FillCatalogue();
  connection = Connection::Open(database.Path());
  bench::PrintHeading();
  const auto opened = bench::RunInTurns(kRounds, &OpenBranches, &StatementsAlone);
  bench::PrintFigure("tree of 10,000 tunes, branches open / all its statements", opened.measured,
                     opened.yardstick, "ms", opened.measured / opened.yardstick, 1.0);
  const auto built = bench::RunInTurns(kRounds, &BuildAll, &StatementsAlone);
  bench::PrintFigure("tree of 10,000 tunes, built and searched / its statements", built.measured,
                     built.yardstick, "ms", built.measured / built.yardstick, 3.0);
  connection.reset();
  return bench::over_limit ? 3 : 0;
}
