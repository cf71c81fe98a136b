// Rows for a table view, out of columns that are told as data: heading, value, alignment, width.
//
//   TableModel model({{tr("Bar"), [&](int row) { return tune.Item(row + 1)->Bar(); }, Qt::AlignRight, 5},
//   ...}); model.SetRows([&] { return tune.Count(); }); model.Reset();
//
// Values are read when they are shown, so any number of rows is there at once. A row's number, from 0, is its
// place in what the rows come from; sorting changes where it stands and not its number.
#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <QVariant>
#include <functional>
#include <vector>

namespace zelmar {

struct TableColumn {
  QString heading;
  std::function<QVariant(int row)> value;  // a text or a number; numbers sort by their value
  Qt::Alignment alignment = Qt::AlignLeft;
  int width = 12;  // in letters of the table's font
};

class TableModel : public QAbstractTableModel {
 public:
  explicit TableModel(std::vector<TableColumn> columns, QObject* parent = nullptr);

  // How many rows there are: asked by Reset and Refresh.
  void SetRows(std::function<int()> count);
  // Other rows than before: the place in the table is lost.
  void Reset();
  // The same rows with other values, perhaps some more or fewer at the end: place, selection and sorting
  // stay.
  void Refresh();
  void RowChanged(int row);
  // `count` rows from `row` on are gone from what the rows come from.
  void RowsRemoved(int row, int count);

  const TableColumn& Column(int column) const { return columns_[static_cast<std::size_t>(column)]; }
  void SetEditable(int column);
  // The number of the row that stands at a place, and the place of a row.
  int RowAt(int place) const;
  int PlaceOf(int row) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  // By value where they are numbers, as people look up names where they are texts; numbers come first, what
  // is empty comes last in either order, and rows that tie keep theirs. Column -1 puts the rows back in their
  // own order.
  void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

 private:
  QVariant Value(int row, int column) const;
  void SortRows();
  void MovePlaces();

  std::vector<TableColumn> columns_;
  std::vector<bool> editable_;
  std::function<int()> count_;
  int rows_ = 0;
  std::vector<int> order_;  // the row at each place; empty while they stand in their own order
  int sorted_by_ = -1;
  Qt::SortOrder direction_ = Qt::AscendingOrder;
};

// Rows of its own, of one type: getters take the row itself.
template <typename Row>
struct RowColumn {
  QString heading;
  std::function<QVariant(const Row& row)> value;
  Qt::Alignment alignment = Qt::AlignLeft;
  int width = 12;
};

template <typename Row>
class RowsModel : public TableModel {
 public:
  explicit RowsModel(const std::vector<RowColumn<Row>>& columns, QObject* parent = nullptr)
      : TableModel(OverRows(columns), parent) {
    SetRows([this] { return static_cast<int>(rows_.size()); });
  }

  void SetContent(std::vector<Row> rows) {
    rows_ = std::move(rows);
    Reset();
  }
  void SetRow(int row, Row value) {
    rows_.at(static_cast<std::size_t>(row)) = std::move(value);
    RowChanged(row);
  }
  const std::vector<Row>& Content() const { return rows_; }
  const Row& At(int row) const { return rows_.at(static_cast<std::size_t>(row)); }

 private:
  std::vector<TableColumn> OverRows(const std::vector<RowColumn<Row>>& columns) {
    std::vector<TableColumn> result;
    for (const RowColumn<Row>& column : columns)
      result.push_back({column.heading, [this, value = column.value](int row) { return value(At(row)); },
                        column.alignment, column.width});
    return result;
  }

  std::vector<Row> rows_;
};

}  // namespace zelmar
