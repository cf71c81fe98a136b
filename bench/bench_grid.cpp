// A grid of 100,000 rows and ten columns: filling and showing it, sorting it, and going on to the next cell
// of an edit, beside a bare table view over a bare model. A list of 20,000 entries: opening it, beside a
// plain combo box.

#include <QApplication>
#include <QTest>

#include "figure.h"
#include "shell/cell_grid.h"
#include "shell/entry_combo.h"
#include "shell/plain_grid.h"
#include "shell/table_model.h"
#include "shell/theme.h"

namespace {

using namespace zelmar;

constexpr int kRows = 100000;
constexpr int kColumns = 10;
constexpr int kRounds = 11;
constexpr int kEntries = 20000;

QString TextAt(int row, int column) {
  return QStringLiteral("Tune %1 of column %2").arg((row * 7919) % kRows).arg(column);
}

// As little as a model can be.
class BareModel : public QAbstractTableModel {
 public:
  int rowCount(const QModelIndex& = {}) const override { return rows; }
  int columnCount(const QModelIndex& = {}) const override { return kColumns; }
  QVariant data(const QModelIndex& index, int role) const override {
    return role == Qt::DisplayRole ? QVariant(TextAt(index.row(), index.column())) : QVariant();
  }
  void Fill() {
    beginResetModel();
    rows = kRows;
    endResetModel();
  }

  int rows = 0;
};

std::vector<TableColumn> Columns() {
  std::vector<TableColumn> columns;
  for (int column = 0; column < kColumns; ++column)
    columns.push_back({QStringLiteral("Column %1").arg(column),
                       [column](int row) { return TextAt(row, column); }, Qt::AlignLeft, 20});
  return columns;
}

void Show(QWidget& window) {
  window.resize(1000, 600);
  window.show();
  QCoreApplication::processEvents();
}

// Filling the model of a grid on show, up to the last pixel.
template <typename View, typename Fill>
double FillAndPaint(View& view, Fill fill) {
  return bench::MillisecondsOf([&] {
    fill();
    view.viewport()->repaint();
  });
}

struct BareTable {
  BareTable() {
    view.setModel(&model);
    Show(view);
  }
  BareModel model;
  QTableView view;
};

struct Grid {
  Grid() {
    model.SetRows([] { return kRows; });
    view.SetUp(&model, {});
    Show(view);
  }
  TableModel model{Columns()};
  PlainGrid view;
};

void MeasureFilling() {
  const auto fill = bench::RunInTurns(
      kRounds,
      [] {
        Grid grid;
        return FillAndPaint(grid.view, [&] { grid.model.Reset(); });
      },
      [] {
        BareTable table;
        return FillAndPaint(table.view, [&] { table.model.Fill(); });
      });
  bench::PrintFigure("filling and showing 100,000 rows, limit in ms", fill.measured, fill.yardstick, "ms",
                     fill.measured, 100.0);
  bench::PrintFigure("the same beside a bare table view", fill.measured, fill.yardstick, "ms",
                     fill.measured / fill.yardstick, bench::kNoLimit);
}

void MeasureRefreshing() {
  Grid grid;
  BareTable table;
  grid.model.Reset();
  table.model.Fill();
  const auto refresh = bench::RunInTurns(
      kRounds, [&] { return FillAndPaint(grid.view, [&] { grid.model.Refresh(); }); },
      [&] { return FillAndPaint(table.view, [&] { table.model.Fill(); }); });
  bench::PrintFigure("filling 100,000 rows anew in place, limit in ms", refresh.measured, refresh.yardstick,
                     "ms", refresh.measured, 100.0);
}

// The yardstick sorts the same texts, with no more than their own order.
void MeasureSorting() {
  Grid grid;
  grid.model.Reset();
  const auto sort = bench::RunInTurns(
      3,
      [&] {
        grid.model.sort(-1);
        return FillAndPaint(grid.view, [&] { grid.model.sort(1); });
      },
      [] {
        return bench::MillisecondsOf([] {
          std::vector<QString> texts;
          texts.reserve(kRows);
          for (int row = 0; row < kRows; ++row) texts.push_back(TextAt(row, 1));
          std::stable_sort(texts.begin(), texts.end());
        });
      });
  bench::PrintFigure("sorting 100,000 rows as people look up names", sort.measured, sort.yardstick, "ms",
                     sort.measured / sort.yardstick, bench::kNoLimit);
}

// From key to the next open cell. The yardstick moves the current cell of a bare table down.
void MeasureEditing() {
  BareTable table;
  table.model.Fill();
  table.view.setCurrentIndex(table.model.index(kRows / 2, 1));
  TableModel model(Columns());
  model.SetRows([] { return kRows; });
  CellGrid grid;
  CellColumn cell{.column = 1};
  cell.store = [](int, const QString&) {};
  grid.SetUp(&model, {}, {cell});
  model.Reset();
  Show(grid);
  grid.activateWindow();
  QApplication::setActiveWindow(&grid);
  grid.setFocus();
  grid.setCurrentIndex(model.index(kRows / 2, 1));
  grid.EditCell();
  const auto move = bench::RunInTurns(
      50,
      [&] {
        return bench::MillisecondsOf([&] {
          QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("5"));
          QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
          grid.viewport()->repaint();
        });
      },
      [&] {
        return bench::MillisecondsOf([&] {
          QTest::keyClick(&table.view, Qt::Key_Down);
          table.view.viewport()->repaint();
        });
      });
  if (!grid.IsEditing() || grid.CurrentRow() != kRows / 2 + 50) {
    std::fprintf(stderr, "the edit did not go down\n");
    std::exit(1);
  }
  bench::PrintFigure("storing a cell and opening the next, 100,000 rows", move.measured, move.yardstick, "ms",
                     move.measured / move.yardstick, 2.0);
}

void MeasureList() {
  std::vector<ComboEntry> entries;
  QStringList texts;
  for (int entry = 0; entry < kEntries; ++entry) {
    entries.push_back({TextAt(entry, 0), entry});
    texts.append(entries.back().text);
  }
  const auto open = bench::RunInTurns(
      5,
      [&] {
        EntryCombo combo(Typing::kFree);
        Show(combo);
        return bench::MillisecondsOf([&] {
          combo.SetEntries(entries);
          combo.showPopup();
        });
      },
      [&] {
        QComboBox combo;
        combo.setEditable(true);
        Show(combo);
        return bench::MillisecondsOf([&] {
          combo.addItems(texts);
          combo.showPopup();
        });
      });
  bench::PrintFigure("filling and opening a list of 20,000 entries", open.measured, open.yardstick, "ms",
                     open.measured / open.yardstick, 1.0);
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  ApplyTheme(application, ColourScheme::kLight);
  bench::PrintHeading();
  MeasureFilling();
  MeasureRefreshing();
  MeasureSorting();
  MeasureEditing();
  MeasureList();
  return bench::over_limit ? 3 : 0;
}
