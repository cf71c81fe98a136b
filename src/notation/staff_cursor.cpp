#include "notation/staff_cursor.h"

#include <QPainter>
#include <algorithm>

#include "notation/drawing.h"

namespace zelmar {

namespace {

constexpr double kShortestGap = 4.0;  // pixels: a cursor on the smallest staff can still be seen

}  // namespace

StaffCursor::StaffCursor(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("StaffCursor"));
  setAttribute(Qt::WA_TransparentForMouseEvents);
  hide();
}

void StaffCursor::SetPlace(int quarter, int step) {
  quarter_ = quarter;
  step_ = step;
}

void StaffCursor::StandAt(double x, double y, double gap) {
  gap_ = std::max(gap / kTwipsPerPixel, kShortestGap);
  const QPointF middle(x / kTwipsPerPixel, y / kTwipsPerPixel);
  // As wide as a head with its ring, and as high as the surface: a hairline shows the moment in the bar.
  const int height = parentWidget()->height();
  setGeometry(QRectF(middle.x() - 1.5 * gap_, 0, 3.0 * gap_, height).toAlignedRect());
  middle_ = middle - pos();
  update();
}

void StaffCursor::SetCarrying(bool carrying) {
  carrying_ = carrying;
  update();
}

void StaffCursor::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  // The paper is light in every colour scheme; a light accent is darkened on it.
  QColor colour = palette().color(QPalette::Highlight);
  if (colour.lightness() > 140) colour = colour.darker(180);
  QColor faint = colour;
  faint.setAlphaF(0.45F);
  painter.setPen(QPen(faint, 1.0, Qt::DotLine));
  painter.drawLine(QPointF(middle_.x(), 0), QPointF(middle_.x(), height()));
  QColor fill = colour;
  fill.setAlphaF(carrying_ ? 0.55F : 0.18F);
  painter.setBrush(fill);
  painter.setPen(QPen(colour, 2.0));
  painter.drawEllipse(middle_, gap_ * 1.0, gap_ * 0.75);
}

}  // namespace zelmar
