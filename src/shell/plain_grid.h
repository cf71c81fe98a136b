// A table of rows to look at: set up once with its model, and used by mouse, keyboard and screen reader
// alike.
//
// A click on a row or Enter chooses it. A click on a heading sorts by that column, a second one the other
// way, a third puts the rows back in their own order. Ctrl+C copies the selection as text, a line a row with
// tabs between the columns. Tab leaves the table. A text that does not fit its column is shown in full as a
// hint.
#pragma once

#include <QTableView>
#include <vector>

namespace zelmar {

class TableModel;

enum class Selecting {
  kOneRow,
  kRowRange,  // rows that follow one another
  kOneCell
};
enum class Sorting { kByHeading, kOff };

struct GridSetup {
  Selecting selecting = Selecting::kOneRow;
  Sorting sorting = Sorting::kByHeading;
  int stretched = -1;  // the column that takes what room is left; -1 for none
  QString when_empty;  // what stands in a table without rows
};

class PlainGrid : public QTableView {
  Q_OBJECT

 public:
  explicit PlainGrid(QWidget* parent = nullptr);

  // Once; the grid does not own the model.
  void SetUp(TableModel* model, const GridSetup& setup);

  // Rows by their numbers (see TableModel), lowest first; -1 for no current row.
  std::vector<int> SelectedRows() const;
  int CurrentRow() const;
  // Selects the row and brings it into view; nothing for a row that is not there.
  void SelectRow(int row);
  // Brings the row to the top, or as far up as the table goes.
  void ScrollToTop(int row);
  QString SelectionAsText() const;

 Q_SIGNALS:
  // A person clicked the row, or pressed Enter on it.
  void Chosen(int row);
  // Another row is the current one; -1 when none is.
  void RowChanged(int row);

 protected:
  TableModel* Rows() const { return rows_; }

  bool event(QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

 private:
  void SetSizes();
  void TellWhenEmpty();
  void ShowWholeText(const QPoint& place);

  TableModel* rows_ = nullptr;
  QString when_empty_;
};

}  // namespace zelmar
