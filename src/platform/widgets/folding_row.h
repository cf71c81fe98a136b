// A row of groups that folds: what does not fit beside the others begins a row below.
//
// The last group of a row that holds several stands at its right end. Groups keep the width that they ask for
// and are as high as their row.
#pragma once

#include <QLayout>
#include <QList>

namespace zelmar {

class FoldingRow : public QLayout {
  Q_OBJECT

 public:
  // Pixels between two groups, and between two rows.
  FoldingRow(int gap, int row_gap);
  ~FoldingRow() override;

  void AddGroup(QLayout* group);

  void addItem(QLayoutItem* item) override { items_.append(item); }
  int count() const override { return static_cast<int>(items_.size()); }
  QLayoutItem* itemAt(int index) const override { return items_.value(index); }
  QLayoutItem* takeAt(int index) override;
  Qt::Orientations expandingDirections() const override { return Qt::Horizontal; }
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;
  QSize sizeHint() const override;
  QSize minimumSize() const override;
  void setGeometry(const QRect& place) override;
  void invalidate() override;

 private:
  // Walks over the rows that a width leads to, and gives the height of them all.
  template <typename Place>
  int ForEachRow(int width, Place place) const;

  // What a group asks for; asked for once until something changes.
  QSize Wanted(qsizetype index) const;

  QList<QLayoutItem*> items_;
  mutable QList<QSize> wanted_;
  int gap_;
  int row_gap_;
};

}  // namespace zelmar
