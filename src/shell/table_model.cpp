#include "shell/table_model.h"

#include <QCollator>
#include <algorithm>
#include <numeric>
#include <optional>

namespace zelmar {

namespace {

bool IsNumber(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::Float:
      return true;
    default:
      return false;
  }
}

// What a row is compared by, reckoned once a row.
struct SortKey {
  enum class Kind { kNumber, kText, kEmpty } kind = Kind::kEmpty;
  double number = 0.0;
  std::optional<QCollatorSortKey> text;
};

SortKey KeyOf(const QVariant& value, const QCollator& collator) {
  if (IsNumber(value)) return {SortKey::Kind::kNumber, value.toDouble(), std::nullopt};
  const QString text = value.toString();
  if (text.isEmpty()) return {};
  return {SortKey::Kind::kText, 0.0, collator.sortKey(text)};
}

// Below, equal to or above 0.
int Compare(const SortKey& first, const SortKey& second) {
  if (first.kind == SortKey::Kind::kText) return first.text->compare(*second.text);
  return (first.number > second.number) - (first.number < second.number);
}

QVariant AlignmentOf(const TableColumn& column) {
  return static_cast<int>(column.alignment | Qt::AlignVCenter);
}

QCollator PeopleOrder() {
  QCollator collator{QLocale(QLocale::English)};
  collator.setCaseSensitivity(Qt::CaseInsensitive);
  collator.setNumericMode(true);
  return collator;
}

}  // namespace

TableModel::TableModel(std::vector<TableColumn> columns, QObject* parent)
    : QAbstractTableModel(parent), columns_(std::move(columns)), editable_(columns_.size()) {}

void TableModel::SetRows(std::function<int()> count) {
  count_ = std::move(count);
}

void TableModel::Reset() {
  beginResetModel();
  rows_ = count_ ? count_() : 0;
  SortRows();
  endResetModel();
}

void TableModel::Refresh() {
  const int count = count_ ? count_() : 0;
  if (count < rows_) RowsRemoved(count, rows_ - count);
  if (count > rows_) {
    beginInsertRows({}, rows_, count - 1);
    if (!order_.empty())
      for (int row = rows_; row < count; ++row) order_.push_back(row);
    rows_ = count;
    endInsertRows();
  }
  if (rows_ == 0) return;
  if (sorted_by_ >= 0) sort(sorted_by_, direction_);
  Q_EMIT dataChanged(index(0, 0), index(rows_ - 1, columnCount() - 1));
}

void TableModel::RowChanged(int row) {
  const int place = PlaceOf(row);
  if (place >= 0) Q_EMIT dataChanged(index(place, 0), index(place, columnCount() - 1));
}

void TableModel::RowsRemoved(int row, int count) {
  const int end = std::min(row + count, rows_);
  if (row < 0 || row >= end) return;
  if (order_.empty()) {
    beginRemoveRows({}, row, end - 1);
    rows_ -= end - row;
    endRemoveRows();
    return;
  }
  // Sorted rows stand apart: each run of places goes by itself. The numbers of the rows behind close up at
  // the end.
  for (int place = rows_ - 1; place >= 0; --place) {
    const int here = order_[static_cast<std::size_t>(place)];
    if (here < row || here >= end) continue;
    beginRemoveRows({}, place, place);
    order_.erase(order_.begin() + place);
    --rows_;
    endRemoveRows();
  }
  for (int& other : order_)
    if (other >= end) other -= end - row;
}

void TableModel::SetEditable(int column) {
  editable_[static_cast<std::size_t>(column)] = true;
}

int TableModel::RowAt(int place) const {
  if (place < 0 || place >= rows_) return -1;
  return order_.empty() ? place : order_[static_cast<std::size_t>(place)];
}

int TableModel::PlaceOf(int row) const {
  if (row < 0 || row >= rows_) return -1;
  if (order_.empty()) return row;
  const auto found = std::find(order_.begin(), order_.end(), row);
  return found == order_.end() ? -1 : static_cast<int>(found - order_.begin());
}

int TableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int TableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

// Rows may have gone from what they come from before the table is told of it.
QVariant TableModel::Value(int row, int column) const {
  return row < count_() ? columns_[static_cast<std::size_t>(column)].value(row) : QVariant();
}

QVariant TableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rows_) return {};
  if (role == Qt::TextAlignmentRole) return AlignmentOf(Column(index.column()));
  if (role != Qt::DisplayRole && role != Qt::EditRole) return {};
  return Value(RowAt(index.row()), index.column()).toString();
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  if (role == Qt::DisplayRole) return Column(section).heading;
  if (role == Qt::TextAlignmentRole) return AlignmentOf(Column(section));
  return {};
}

Qt::ItemFlags TableModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags flags = QAbstractTableModel::flags(index) | Qt::ItemNeverHasChildren;
  if (index.isValid() && editable_[static_cast<std::size_t>(index.column())]) flags |= Qt::ItemIsEditable;
  return flags;
}

void TableModel::sort(int column, Qt::SortOrder order) {
  sorted_by_ = column < columnCount() ? column : -1;
  direction_ = order;
  MovePlaces();
}

// Selection and current row go with their rows.
void TableModel::MovePlaces() {
  Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
  const QModelIndexList before = persistentIndexList();
  std::vector<int> rows;
  for (const QModelIndex& old : before) rows.push_back(RowAt(old.row()));
  SortRows();
  std::vector<int> places(static_cast<std::size_t>(rows_));
  for (int place = 0; place < rows_; ++place) places[static_cast<std::size_t>(RowAt(place))] = place;
  QModelIndexList after;
  for (qsizetype i = 0; i < before.size(); ++i)
    after.append(
        index(places[static_cast<std::size_t>(rows[static_cast<std::size_t>(i)])], before[i].column()));
  changePersistentIndexList(before, after);
  Q_EMIT layoutChanged({}, VerticalSortHint);
}

void TableModel::SortRows() {
  order_.clear();
  if (sorted_by_ < 0 || rows_ == 0) return;
  const QCollator collator = PeopleOrder();
  std::vector<SortKey> keys;
  keys.reserve(static_cast<std::size_t>(rows_));
  for (int row = 0; row < rows_; ++row) keys.push_back(KeyOf(Value(row, sorted_by_), collator));
  order_.resize(static_cast<std::size_t>(rows_));
  std::iota(order_.begin(), order_.end(), 0);
  const bool rising = direction_ == Qt::AscendingOrder;
  std::stable_sort(order_.begin(), order_.end(), [&keys, rising](int first, int second) {
    const SortKey& a = keys[static_cast<std::size_t>(first)];
    const SortKey& b = keys[static_cast<std::size_t>(second)];
    if (a.kind != b.kind) return a.kind < b.kind;
    const int difference = Compare(a, b);
    return rising ? difference < 0 : difference > 0;
  });
}

}  // namespace zelmar
