// A list of tunes as a table: the rows of a statement, each with the CodeName that it stands for.
#pragma once

#include <QAbstractTableModel>
#include <QStringList>
#include <memory>
#include <vector>

namespace zelmar {

class Connection;

class TuneListModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  // True for the row of the tune that plays.
  static constexpr int kPlayingRole = Qt::UserRole;

  using QAbstractTableModel::QAbstractTableModel;

  // Shows the rows in the order of the statement, one of whose fields is CodeName. That one is not shown; the
  // other fields are the columns. Throws DatabaseError, and keeps the rows that it had.
  void Load(std::shared_ptr<Connection> connection, const QString& statement);
  void Clear();

  QString CodeName(int row) const { return rows_[static_cast<std::size_t>(row)].code_name; }
  // The field Title, or the first one where there is none.
  QString Title(int row) const;
  // -1 when no row stands for that tune.
  int RowOf(const QString& code_name) const;
  // The field that a column shows, as the statement names it.
  const QString& FieldOf(int column) const { return fields_[column]; }

  // Marks the rows of the tune that plays, of none for an empty name. The mark is kept through a Load.
  void SetPlaying(const QString& code_name);
  const QString& Playing() const { return playing_; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& place, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  struct Row {
    QString code_name;
    QStringList cells;
  };

  bool IsPlaying(const Row& row) const;
  void Set(QStringList fields, std::vector<Row> rows);

  QStringList fields_;
  std::vector<Row> rows_;
  QString playing_;
};

// A column name of the catalogue as the head of a column: "SoloInstrument" reads "Solo instrument".
QString HeadingOf(const QString& field);

}  // namespace zelmar
