#include "platform/widgets/folding_row.h"

#include <algorithm>

namespace zelmar {

FoldingRow::FoldingRow(int gap, int row_gap) : gap_(gap), row_gap_(row_gap) {
  setContentsMargins(0, 0, 0, 0);
}

FoldingRow::~FoldingRow() {
  qDeleteAll(items_);
}

void FoldingRow::AddGroup(QLayout* group) {
  addChildLayout(group);
  addItem(group);
}

QLayoutItem* FoldingRow::takeAt(int index) {
  return index >= 0 && index < items_.size() ? items_.takeAt(index) : nullptr;
}

QSize FoldingRow::Wanted(qsizetype index) const {
  if (wanted_.size() != items_.size()) {
    wanted_.clear();
    for (const QLayoutItem* item : items_) wanted_.append(item->sizeHint());
  }
  return wanted_[index];
}

void FoldingRow::invalidate() {
  wanted_.clear();
  QLayout::invalidate();
}

template <typename Place>
int FoldingRow::ForEachRow(int width, Place place) const {
  int top = 0;
  for (qsizetype first = 0; first < items_.size();) {
    qsizetype end = first;
    int used = 0;
    int height = 0;
    for (; end < items_.size(); ++end) {
      const QSize wanted = Wanted(end);
      const int with_it = used + (end > first ? gap_ : 0) + wanted.width();
      if (end > first && with_it > width) break;
      used = with_it;
      height = std::max(height, wanted.height());
    }
    if (first > 0) top += row_gap_;
    place(first, end, top, height);
    top += height;
    first = end;
  }
  return top;
}

int FoldingRow::heightForWidth(int width) const {
  return ForEachRow(width, [](qsizetype, qsizetype, int, int) {});
}

QSize FoldingRow::sizeHint() const {
  QSize size(0, 0);
  for (qsizetype i = 0; i < items_.size(); ++i) {
    const QSize wanted = Wanted(i);
    size = {size.width() + (size.width() > 0 ? gap_ : 0) + wanted.width(),
            std::max(size.height(), wanted.height())};
  }
  return size;
}

QSize FoldingRow::minimumSize() const {
  QSize size(0, 0);
  for (const QLayoutItem* item : items_) size = size.expandedTo(item->minimumSize());
  return size;
}

void FoldingRow::setGeometry(const QRect& place) {
  QLayout::setGeometry(place);
  ForEachRow(place.width(), [this, &place](qsizetype first, qsizetype end, int top, int height) {
    int left = 0;
    for (qsizetype i = first; i < end; ++i) {
      const int width = std::min(Wanted(i).width(), place.width());
      if (i > first && i == items_.size() - 1) left = std::max(left, place.width() - width);
      items_[i]->setGeometry({place.left() + left, place.top() + top, width, height});
      left += width + gap_;
    }
  });
}

}  // namespace zelmar
