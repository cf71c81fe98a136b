// DoLoad of a tune of n events against a bare loop that runs the same statement and reads the same eleven
// columns, and the memory that a loaded tune holds.

#include <malloc.h>

#include <QCoreApplication>

#include "figure.h"
#include "model/main_window_link.h"
#include "platform/memory.h"
#include "sample_tune.h"
#include "store/tune_loader.h"

namespace {

using namespace zelmar;

QString NameOf(int events) {
  return QStringLiteral("tune%1").arg(events);
}

double Load(int events) {
  TheMainWindow().SetMyTune(nullptr);
  TuneLoader loader;
  QString name = NameOf(events);
  const double time = bench::MillisecondsOf([&] { loader.DoLoad(name); });
  if (!loader.LoadedOk() || TheMainWindow().MyTune()->Count() != 2 * events) {
    std::fprintf(stderr, "%s was not loaded\n", qPrintable(name));
    std::exit(1);
  }
  return time;
}

double BareLoop(int events) {
  double sum = 0.0;
  const double time = bench::MillisecondsOf([&] {
    QSqlQuery query(bench::SampleDatabase::Handle());
    query.setForwardOnly(true);
    query.exec(QStringLiteral(
                   "SELECT EventType, AbsRef, Bar, Beat, Tick, Track, Duration, Instrument, Pitch, Volume, "
                   "EnHarmonic FROM [%1]")
                   .arg(NameOf(events)));
    while (query.next()) {
      for (const int column : {0, 1, 2, 3, 4, 5, 7, 9}) sum += query.value(column).toInt();
      sum += query.value(6).toDouble();
      sum += static_cast<double>(query.value(8).toString().size() + query.value(10).toString().size());
    }
  });
  if (sum == 0.0) std::exit(1);
  return time;
}

double BytesAnEvent(int events) {
  TheMainWindow().SetMyTune(nullptr);
  Load(1000);  // whatever is made once is made
  TheMainWindow().SetMyTune(nullptr);
  const auto in_use = [] {
    const auto info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
  };
  const double before = in_use();
  Load(events);
  return (in_use() - before) / events;
}

}  // namespace

int main(int argc, char** argv) {
  KeepFreedMemory();
  const QCoreApplication application(argc, argv);
  bench::SampleDatabase database;
  bench::PrintHeading();
  double per_event[3];
  int row = 0;
  for (const int events : {1000, 10000, 100000}) {
    database.AddTune(NameOf(events), events);
    const auto pair = bench::RunInTurns(
        events > 50000 ? 7 : 21, [events] { return Load(events); }, [events] { return BareLoop(events); });
    const QString what = QStringLiteral("DoLoad of %1 events / bare loop").arg(events);
    bench::PrintFigure(qPrintable(what), pair.measured, pair.yardstick, "ms", pair.measured / pair.yardstick,
                       2.0);
    per_event[row++] = 1000.0 * pair.measured / events;
  }
  // Linear: the cost of an event may not grow with the length of the tune.
  bench::PrintFigure("DoLoad, cost of an event, 100,000 / 10,000 events", per_event[2], per_event[1], "us",
                     per_event[2] / per_event[1], 1.5);
  const double bytes = BytesAnEvent(100000);
  bench::PrintFigure("bytes an event of a loaded tune / 300", bytes, 300.0, "B", bytes / 300.0, 1.0);
  return bench::over_limit ? 3 : 0;
}
