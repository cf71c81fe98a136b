#include "shell/page_canvas.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

#include "platform/widgets/spacing.h"
#include "shell/list_painting.h"

namespace zelmar {

namespace {

constexpr double kPointsToTheInch = 72.0;
constexpr double kGap = spacing::kLarge;  // around each sheet
constexpr int kWheelStep = 120;           // of a wheel by one notch
constexpr int kWheelPercent = 10;

// What is found is marked in colours of paper, which is white in either scheme.
constexpr QRgb kHitColour = qRgb(255, 226, 130);
constexpr QRgb kCurrentHitColour = qRgb(255, 170, 60);

// A page as a screen reader says it.
QString WordsOf(const PrintedPage& page) {
  QStringList lines;
  for (const PrintedLine& line : page) {
    QStringList pieces;
    for (const PrintedPiece& piece : line.pieces) pieces.append(piece.text);
    lines.append(pieces.join(QStringLiteral(", ")));
  }
  return lines.join(u'\n');
}

}  // namespace

PageCanvas::PageCanvas(const ListLayout* layout, std::shared_ptr<const ListLettering> lettering,
                       const QPageLayout& paper, QWidget* parent)
    : QAbstractScrollArea(parent), layout_(layout), lettering_(std::move(lettering)), paper_(paper) {
  setFocusPolicy(Qt::StrongFocus);
  setAccessibleName(tr("Pages"));
  // A bar that comes and goes would change the width that pages are fitted to.
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
}

void PageCanvas::TakePages() {
  SetScrollBars();
  viewport()->update();
  TellPage();
}

// --- Sizes ---

double PageCanvas::PixelsPerPoint() const {
  if (fit_ == Fit::kPercent) return percent_ / 100.0 * logicalDpiY() / kPointsToTheInch;
  const QSizeF paper = paper_.fullRect(QPageLayout::Point).size();
  const double width = std::max(1.0, viewport()->width() - 2 * kGap) / paper.width();
  const double height = std::max(1.0, viewport()->height() - 2 * kGap) / paper.height();
  return fit_ == Fit::kPageWidth ? width : std::min(width, height);
}

int PageCanvas::Percent() const {
  return static_cast<int>(std::lround(100.0 * PixelsPerPoint() * kPointsToTheInch / logicalDpiY()));
}

QSizeF PageCanvas::SheetSize() const {
  return paper_.fullRect(QPageLayout::Point).size() * PixelsPerPoint();
}

QRectF PageCanvas::SheetOf(int page) const {
  const QSizeF sheet = SheetSize();
  const double left =
      std::max(kGap, (viewport()->width() - sheet.width()) / 2.0) - horizontalScrollBar()->value();
  const double top = kGap + (page - 1) * (sheet.height() + kGap) - verticalScrollBar()->value();
  return {QPointF(left, top), sheet};
}

void PageCanvas::SetScrollBars() {
  const QSizeF sheet = SheetSize();
  const double whole_height = kGap + layout_->PageCount() * (sheet.height() + kGap);
  verticalScrollBar()->setPageStep(viewport()->height());
  verticalScrollBar()->setSingleStep(static_cast<int>(30 * PixelsPerPoint()) + 1);
  verticalScrollBar()->setRange(
      0, std::max(0, static_cast<int>(std::ceil(whole_height)) - viewport()->height()));
  horizontalScrollBar()->setPageStep(viewport()->width());
  horizontalScrollBar()->setRange(
      0, std::max(0, static_cast<int>(std::ceil(sheet.width() + 2 * kGap)) - viewport()->width()));
  if (std::exchange(told_percent_, Percent()) != Percent()) Q_EMIT PercentChanged(Percent());
}

template <typename Change>
void PageCanvas::KeepingPlace(Change change) {
  const double before = SheetSize().height() + kGap;
  const double place = verticalScrollBar()->value() / before;
  change();
  SetScrollBars();
  verticalScrollBar()->setValue(static_cast<int>(std::lround(place * (SheetSize().height() + kGap))));
  viewport()->update();
  TellPage();
}

void PageCanvas::SetFit(Fit fit) {
  KeepingPlace([&] { fit_ = fit; });
}

void PageCanvas::SetPercent(int percent) {
  KeepingPlace([&] {
    fit_ = Fit::kPercent;
    percent_ = std::clamp(percent, kLeastPercent, kMostPercent);
  });
}

void PageCanvas::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  KeepingPlace([] {});
}

// --- Pages ---

int PageCanvas::CurrentPage() const {
  if (layout_->PageCount() == 0) return 0;
  // The one that a reader looks at: a third down the window.
  const double y = verticalScrollBar()->value() + viewport()->height() / 3.0;
  const bool is_at_end = verticalScrollBar()->value() == verticalScrollBar()->maximum();
  const int page = is_at_end && verticalScrollBar()->maximum() > 0
                       ? layout_->PageCount()
                       : 1 + static_cast<int>(y / (SheetSize().height() + kGap));
  return std::clamp(page, 1, layout_->PageCount());
}

void PageCanvas::ShowPage(int page) {
  const int wanted = std::clamp(page, 1, std::max(1, layout_->PageCount()));
  verticalScrollBar()->setValue(static_cast<int>(std::lround((wanted - 1) * (SheetSize().height() + kGap))));
}

void PageCanvas::TellPage() {
  const int page = CurrentPage();
  if (std::exchange(told_page_, page) == page) return;
  if (page > 0) setAccessibleDescription(WordsOf(layout_->Page(page)));
  Q_EMIT PageChanged(page);
}

void PageCanvas::scrollContentsBy(int, int) {
  viewport()->update();
  TellPage();
}

void PageCanvas::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Home:
      ShowPage(1);
      return;
    case Qt::Key_End:
      verticalScrollBar()->setValue(verticalScrollBar()->maximum());
      return;
    default:
      QAbstractScrollArea::keyPressEvent(event);
  }
}

void PageCanvas::wheelEvent(QWheelEvent* event) {
  if ((event->modifiers() & Qt::ControlModifier) == 0) return QAbstractScrollArea::wheelEvent(event);
  SetPercent(Percent() + kWheelPercent * event->angleDelta().y() / kWheelStep);
}

// --- What was found ---

void PageCanvas::SetHits(std::vector<ListHit> hits) {
  hits_ = std::move(hits);
  current_hit_ = hits_.size();
  viewport()->update();
}

void PageCanvas::ShowHit(std::size_t hit) {
  if (hit >= hits_.size()) return;
  current_hit_ = hit;
  viewport()->update();
  const auto& [page, place] = hits_[hit];
  const PrintedLine line = layout_->Page(page)[place.front().line];
  const double top =
      SheetOf(page).top() + (paper_.paintRect(QPageLayout::Point).top() + line.top) * PixelsPerPoint();
  if (top >= 0.0 && top + line.height * PixelsPerPoint() <= viewport()->height()) return;
  verticalScrollBar()->setValue(verticalScrollBar()->value() +
                                static_cast<int>(top - viewport()->height() / 3.0));
}

// --- Painting ---

void PageCanvas::paintEvent(QPaintEvent*) {
  QPainter painter(viewport());
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(viewport()->rect(), palette().color(QPalette::Window));
  for (int page = 1; page <= layout_->PageCount(); ++page) {
    const QRectF sheet = SheetOf(page);
    if (sheet.top() > viewport()->height()) break;
    if (sheet.bottom() >= 0) PaintSheet(painter, page, sheet);
  }
}

void PageCanvas::PaintSheet(QPainter& painter, int page, const QRectF& sheet) const {
  painter.setPen(palette().color(QPalette::Mid));
  painter.setBrush(Qt::white);
  painter.drawRect(sheet);
  const PrintedPage lines = layout_->Page(page);
  painter.save();
  painter.setClipRect(sheet);
  painter.translate(sheet.topLeft());
  painter.scale(PixelsPerPoint(), PixelsPerPoint());
  painter.translate(paper_.paintRect(QPageLayout::Point).topLeft());
  PaintHits(painter, page, lines);
  lettering_->Paint(painter, lines);
  painter.restore();
}

void PageCanvas::PaintHits(QPainter& painter, int page, const PrintedPage& lines) const {
  const auto first = std::lower_bound(hits_.begin(), hits_.end(), page,
                                      [](const ListHit& hit, int wanted) { return hit.page < wanted; });
  for (auto hit = first; hit != hits_.end() && hit->page == page; ++hit) {
    const bool is_current = static_cast<std::size_t>(hit - hits_.begin()) == current_hit_;
    for (const FoundLetters& found : hit->place) {
      const PrintedLine& line = lines[found.line];
      painter.fillRect(lettering_->PlaceOf(line, line.pieces[found.piece], found.from, found.count),
                       QColor(is_current ? kCurrentHitColour : kHitColour));
    }
  }
}

}  // namespace zelmar
