// SaveTune "ALL" of n events against a bare loop that inserts the same rows, one commit each, through a
// connection with the same settings, and the memory that a save takes.

#include <malloc.h>

#include <QCoreApplication>

#include "figure.h"
#include "model/main_window_link.h"
#include "platform/memory.h"
#include "platform/services.h"
#include "sample_tune.h"
#include "store/tune_loader.h"
#include "store/tune_saver.h"

namespace {

using namespace zelmar;
using bench::Require;

QString NameOf(int events) {
  return QStringLiteral("tune%1").arg(events);
}

std::shared_ptr<Tune> Load(int events) {
  TuneLoader loader;
  QString name = NameOf(events);
  loader.DoLoad(name);
  if (!loader.LoadedOk()) std::exit(1);
  return TheMainWindow().MyTune();
}

// Like the program, which keeps no connection between its commands: the last one that closes, be it the
// save's or the bare loop's, moves the log into the file.
void CloseSample() {
  bench::SampleDatabase::Handle().close();
}

double Save(const std::shared_ptr<Tune>& tune) {
  bool failed = false;
  const double time =
      bench::MillisecondsOf([&] { SaveTune(tune, tune->FileName(), failed, SavePortion::kAll); });
  Require(!failed && !tune->ChangedSinceLastSaved(), "the tune was not saved");
  return time;
}

// The rows as values, so that the loop itself does nothing but insert them.
std::vector<QVariantList> RowsOf(const Tune& tune) {
  std::vector<QVariantList> rows;
  for (const auto& tone : tune)
    if (tone->EventType() != MUSIC_NOTE_OFF)
      rows.push_back({tone->EventType(), tone->AbsRef(), tone->Bar(), tone->Beat(), tone->Tick(),
                      tone->Track(), tone->Duration(), tone->Instrument(), tone->Pitch(), tone->Volume(),
                      tone->EnHarmonic()});
  return rows;
}

double BareLoop(const QString& path, const std::vector<QVariantList>& rows) {
  {
    QSqlQuery empty(bench::SampleDatabase::Handle());
    Require(empty.exec(QStringLiteral("DELETE FROM bare")), "the bare table was not emptied");
  }
  CloseSample();
  const double time = bench::MillisecondsOf([&] {
    auto database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("bare"));
    database.setDatabaseName(path);
    Require(database.open(), "no database");
    {
      QSqlQuery query(database);
      query.exec(QStringLiteral("PRAGMA journal_mode=WAL"));
      query.exec(QStringLiteral("PRAGMA synchronous=NORMAL"));
      query.prepare(QStringLiteral("INSERT INTO bare VALUES (?,?,?,?,?,?,?,?,?,?,?)"));
      for (const QVariantList& row : rows) {
        for (int i = 0; i < row.size(); ++i) query.bindValue(i, row[i]);
        Require(query.exec(), "a row was not inserted");
      }
    }
    database.close();
    database = QSqlDatabase();
    QSqlDatabase::removeDatabase(QStringLiteral("bare"));
  });
  return time;
}

double PeakBytesAnEvent(const std::shared_ptr<Tune>& tune, int events) {
  struct Watch : EventService {
    void Serve() override {
      const auto info = mallinfo2();
      peak = std::max(peak, static_cast<double>(info.uordblks + info.hblkhd));
    }
    void WaitUntil(double) override {}
    double peak = 0.0;
  };
  const auto watch = std::make_shared<Watch>();
  const auto before = Platform().events;
  Platform().events = watch;
  watch->Serve();
  const double start = watch->peak;
  Save(tune);
  Platform().events = before;
  return (watch->peak - start) / events;
}

}  // namespace

int main(int argc, char** argv) {
  KeepFreedMemory();
  const QCoreApplication application(argc, argv);
  bench::SampleDatabase database;
  {
    QSqlQuery query(bench::SampleDatabase::Handle());
    Require(query.exec(EventTableStatement(QStringLiteral("bare"))), "no bare table");
  }
  bench::PrintHeading();
  double per_event[3];
  int row = 0;
  for (const int events : {1000, 10000, 100000}) {
    database.AddTune(NameOf(events), events);
    const auto tune = Load(events);
    const auto rows = RowsOf(*tune);
    CloseSample();
    const auto pair = bench::RunInTurns(
        events > 50000 ? 5 : 15, [&tune] { return Save(tune); },
        [&] { return BareLoop(database.Path(), rows); });
    const QString what = QStringLiteral("SaveFile of %1 events / bare loop").arg(events);
    bench::PrintFigure(qPrintable(what), pair.measured, pair.yardstick, "ms", pair.measured / pair.yardstick,
                       1.5);
    per_event[row++] = 1000.0 * pair.measured / events;
  }
  // Linear: the cost of an event may not grow with the length of the tune.
  bench::PrintFigure("SaveFile, cost of an event, 100,000 / 10,000 events", per_event[2], per_event[1], "us",
                     per_event[2] / per_event[1], 1.5);
  const double bytes = PeakBytesAnEvent(Load(100000), 100000);
  bench::PrintFigure("bytes an event that a save takes / 32", bytes, 32.0, "B", bytes / 32.0, 1.0);
  return bench::over_limit ? 3 : 0;
}
