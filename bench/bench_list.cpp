// A printed list of 10,000 rows: until its first page stands on the screen and until all of it is laid out,
// against the bare measuring of each of its cells once.

#include <QApplication>
#include <QFontMetricsF>

#include "app/zelmar_application.h"
#include "figure.h"
#include "platform/memory.h"
#include "platform/widgets/page_printing.h"
#include "shell/list_painting.h"
#include "shell/list_preview.h"
#include "shell/theme.h"

namespace {

using namespace zelmar;
using bench::Require;

constexpr int kGroups = 100;
constexpr int kRowsOfGroup = 100;
constexpr int kRounds = 7;

// One title in ten is too long for its column.
PrintedList MakeList() {
  PrintedList list;
  list.title = QStringLiteral("Zelmar database by Composer");
  list.columns = {{QStringLiteral("Title"), 3.0},
                  {QStringLiteral("Period"), 1.0},
                  {QStringLiteral("Category"), 1.0},
                  {QStringLiteral("Ensemble"), 1.0}};
  for (int i = 0; i < kGroups; ++i) {
    PrintedGroup group{QStringLiteral("Composer %1").arg(i)};
    for (int row = 0; row < kRowsOfGroup; ++row) {
      QString title = QStringLiteral("Tune no. %1 of %2").arg(row).arg(i);
      if (row % 10 == 0)
        title += QStringLiteral(" with a title that goes on and on and on and on and on and on");
      group.rows.push_back(
          {title, QStringLiteral("Baroque"), QStringLiteral("Concerto"), QStringLiteral("Orchestra")});
    }
    list.groups.push_back(std::move(group));
  }
  return list;
}

const PrintedList& List() {
  static const PrintedList list = MakeList();
  return list;
}

double FirstPage() {
  return bench::MillisecondsOf([] {
    ListPreview preview(List());
    preview.resize(1000, 700);
    preview.show();
    preview.repaint();
    Require(preview.Layout().PageCount() >= 1, "there is no first page");
  });
}

double AllPages() {
  const QSizeF room = UsualPaper().paintRect(QPageLayout::Point).size();
  return bench::MillisecondsOf([&room] {
    ListLayout layout(std::make_shared<PrintedList>(List()), std::make_shared<ListLettering>(9.0),
                      room.width(), room.height());
    layout.Finish();
    Require(layout.PageCount() > 100, "there are too few pages");
  });
}

double BareMeasuring() {
  const ListLettering letters(9.0);
  double width = 0.0;
  const double time = bench::MillisecondsOf([&] {
    for (const PrintedGroup& group : List().groups)
      for (const QStringList& row : group.rows)
        for (const QString& cell : row) width += letters.Width(PrintedStyle::kRow, cell);
  });
  Require(width > 0.0, "the cells have no width");
  return time;
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  KeepFreedMemory();
  ZelmarApplication application(argc, argv);
  ApplyTheme(application, ColourScheme::kLight);
  bench::PrintHeading();
  const auto first = bench::RunInTurns(kRounds, &FirstPage, &BareMeasuring);
  bench::PrintFigure("list of 10,000 rows, first page shown / measuring its cells", first.measured,
                     first.yardstick, "ms", first.measured / first.yardstick, 3.0);
  const auto all = bench::RunInTurns(kRounds, &AllPages, &BareMeasuring);
  bench::PrintFigure("list of 10,000 rows, laid out / measuring its cells", all.measured, all.yardstick, "ms",
                     all.measured / all.yardstick, 3.0);
  return bench::over_limit ? 3 : 0;
}
