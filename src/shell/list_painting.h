// The letters of a printed list: how much room they take, and how they are painted. The unit of its painter
// is a point, on paper and on the screen alike.
#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <memory>
#include <vector>

#include "model/list_layout.h"
#include "platform/services.h"

class QRectF;

namespace zelmar {

class ListLettering : public TextMeasure {
 public:
  // Of rows with letters of that size.
  explicit ListLettering(double point_size);

  double Width(PrintedStyle style, const QString& text) const override;
  double LineHeight(PrintedStyle style) const override;

  void Paint(QPainter& painter, const PrintedPage& page) const;
  // The place of some letters of a piece.
  QRectF PlaceOf(const PrintedLine& line, const PrintedPiece& piece, qsizetype from, qsizetype count) const;

 private:
  struct Letters {
    QFont font;
    QFontMetricsF metrics;
  };
  const Letters& Of(PrintedStyle style) const { return letters_[static_cast<std::size_t>(style)]; }

  std::vector<Letters> letters_;
};

// A list as pages for the printer and for a PDF file.
class ListPages : public PrintedPages {
 public:
  explicit ListPages(std::shared_ptr<const PrintedList> list);
  QString Title() const override { return list_->title; }
  int LayOut(double width, double height) override;
  void Paint(int page, QPainter& painter) override;

 private:
  std::shared_ptr<const PrintedList> list_;
  std::shared_ptr<const ListLettering> lettering_;
  std::unique_ptr<ListLayout> layout_;
};

}  // namespace zelmar
