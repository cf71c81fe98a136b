// Pages of a printed list on the screen, one below the other, as large as a person wants them.
#pragma once

#include <QAbstractScrollArea>
#include <QPageLayout>
#include <memory>
#include <vector>

#include "model/list_search.h"

namespace zelmar {

class ListLettering;

// What a search found: a place on a page.
struct ListHit {
  int page = 1;
  FoundPlace place;
};

class PageCanvas : public QAbstractScrollArea {
  Q_OBJECT

 public:
  // How large pages are shown: fitted to the window, or in so many percent of their size on paper.
  enum class Fit { kWholePage, kPageWidth, kPercent };
  static constexpr int kLeastPercent = 25;
  static constexpr int kMostPercent = 400;

  PageCanvas(const ListLayout* layout, std::shared_ptr<const ListLettering> lettering,
             const QPageLayout& paper, QWidget* parent = nullptr);

  // Pages came; the layout has them.
  void TakePages();

  void SetFit(Fit fit);
  void SetPercent(int percent);
  // The size on the screen beside that on paper, whatever it comes of.
  int Percent() const;
  Fit HowItFits() const { return fit_; }

  // The page at the top of the window, from 1; 0 without pages.
  int CurrentPage() const;
  void ShowPage(int page);

  // Marks what was found; the hits are those of one page after another.
  void SetHits(std::vector<ListHit> hits);
  // Marks that one more than the others and brings it into sight.
  void ShowHit(std::size_t hit);

 Q_SIGNALS:
  void PageChanged(int page);
  void PercentChanged(int percent);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  double PixelsPerPoint() const;
  QSizeF SheetSize() const;  // pixels
  // The sheet of a page, in pixels of the viewport.
  QRectF SheetOf(int page) const;
  void SetScrollBars();
  // Does what changes sizes and keeps the page and the place on it in sight.
  template <typename Change>
  void KeepingPlace(Change change);
  void PaintSheet(QPainter& painter, int page, const QRectF& sheet) const;
  void PaintHits(QPainter& painter, int page, const PrintedPage& lines) const;
  void TellPage();

  const ListLayout* layout_;
  std::shared_ptr<const ListLettering> lettering_;
  QPageLayout paper_;
  Fit fit_ = Fit::kPageWidth;
  int percent_ = 100;
  int told_page_ = 0;
  int told_percent_ = 0;
  std::vector<ListHit> hits_;
  std::size_t current_hit_ = 0;
};

}  // namespace zelmar
