#include "store/tune_list_model.h"

#include <QPointer>
#include <algorithm>

#include "store/recordset.h"
#include "store/tune_name.h"

namespace zelmar {

namespace {

bool IsField(const QString& field, QStringView name) {
  return field.compare(name, Qt::CaseInsensitive) == 0;
}

}  // namespace

QString HeadingOf(const QString& field) {
  QString heading = field.left(1).toUpper();
  for (qsizetype i = 1; i < field.size(); ++i) {
    const bool begins_word = field[i].isUpper() && field[i - 1].isLower();
    if (begins_word) heading += u' ';
    heading += begins_word ? field[i].toLower() : field[i];
  }
  return heading;
}

void TuneListModel::Load(std::shared_ptr<Connection> connection, const QString& statement) {
  // The database may serve events while it waits, and the window of the list may go meanwhile.
  const QPointer<TuneListModel> self(this);
  const auto rows = Recordset::OpenStatement(std::move(connection), statement);
  const int code_name = rows->Field(QStringLiteral("CodeName"));
  QStringList fields;
  for (int field = 0; field < rows->FieldCount(); ++field)
    if (field != code_name) fields.append(rows->FieldName(field));
  std::vector<Row> read;
  for (; !rows->Eof(); rows->MoveNext()) {
    Row row{rows->Value(code_name).toString(), {}};
    row.cells.reserve(fields.size());
    for (int field = 0; field < rows->FieldCount(); ++field)
      if (field != code_name) row.cells.append(rows->Value(field).toString());
    read.push_back(std::move(row));
  }
  if (self) Set(std::move(fields), std::move(read));
}

void TuneListModel::Clear() {
  Set(fields_, {});
}

void TuneListModel::Set(QStringList fields, std::vector<Row> rows) {
  beginResetModel();
  fields_ = std::move(fields);
  rows_ = std::move(rows);
  endResetModel();
}

QString TuneListModel::Title(int row) const {
  const auto title = std::find_if(fields_.begin(), fields_.end(),
                                  [](const QString& field) { return IsField(field, u"Title"); });
  const qsizetype column = title == fields_.end() ? 0 : title - fields_.begin();
  return rows_[static_cast<std::size_t>(row)].cells.value(column);
}

int TuneListModel::RowOf(const QString& code_name) const {
  const QString folded = FoldedCodeName(code_name);
  for (std::size_t row = 0; row < rows_.size(); ++row)
    if (FoldedCodeName(rows_[row].code_name) == folded) return static_cast<int>(row);
  return -1;
}

bool TuneListModel::IsPlaying(const Row& row) const {
  return !playing_.isEmpty() && FoldedCodeName(row.code_name) == FoldedCodeName(playing_);
}

void TuneListModel::SetPlaying(const QString& code_name) {
  if (code_name == playing_) return;
  playing_ = code_name;
  if (!rows_.empty()) Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

int TuneListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int TuneListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(fields_.size());
}

QVariant TuneListModel::data(const QModelIndex& place, int role) const {
  if (!place.isValid()) return {};
  const Row& row = rows_[static_cast<std::size_t>(place.row())];
  if (role == kPlayingRole) return IsPlaying(row);
  const QString& cell = row.cells[place.column()];
  if (role == Qt::AccessibleTextRole && place.column() == 0 && IsPlaying(row))
    return cell + QStringLiteral(", playing");
  return role == Qt::DisplayRole || role == Qt::ToolTipRole ? QVariant(cell) : QVariant();
}

QVariant TuneListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= fields_.size())
    return {};
  return HeadingOf(fields_[section]);
}

}  // namespace zelmar
