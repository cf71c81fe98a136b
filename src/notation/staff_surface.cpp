#include "notation/staff_surface.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace zelmar {

namespace {

const QColor kPaper(255, 255, 255);
const QColor kGuide(120, 140, 170);
const QColor kMarker(80, 140, 220, 56);
constexpr double kRimWidth = 2.0;  // pixels

}  // namespace

StaffSurface::StaffSurface(const char* name, Drawing& drawing, QWidget* parent)
    : QWidget(parent), drawing_(drawing) {
  setObjectName(QString::fromLatin1(name));
  // The paper covers all of it, so that nothing behind need be painted.
  setAttribute(Qt::WA_OpaquePaintEvent);
  drawing_.SetChanged([this] { update(); });
}

void StaffSurface::SetFocusRim(bool shown) {
  if (focus_rim_ == shown) return;
  focus_rim_ = shown;
  update();
}

void StaffSurface::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  // Every pixel that the surface touches, also where its edge falls within one: hence before the smoothing.
  painter.fillRect(rect(), kPaper);
  painter.setRenderHint(QPainter::Antialiasing);
  if (focus_rim_) PaintFocusRim(painter);
  for (const StaffItem* item : findChildren<StaffItem*>(QString(), Qt::FindDirectChildrenOnly))
    if (item->LiesBeneath() && !item->isHidden()) item->PaintLine(painter);
  drawing_.Replay(painter);
}

void StaffSurface::PaintFocusRim(QPainter& painter) const {
  // The paper is light in every colour scheme; a light accent is darkened on it.
  QColor colour = palette().color(QPalette::Highlight);
  if (colour.lightness() > 140) colour = colour.darker(140);
  const double half = kRimWidth / 2.0;
  const QRectF edges = QRectF(parentWidget()->rect()).translated(-pos());
  painter.setPen(QPen(colour, kRimWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(edges.adjusted(half, half, -half, -half));
}

StaffItem::StaffItem(const char* name, Look look, QWidget* parent) : QWidget(parent), look_(look) {
  setObjectName(QString::fromLatin1(name));
  setAttribute(Qt::WA_TransparentForMouseEvents);
  hide();
}

void StaffItem::SetPlace(const QRectF& place) {
  place_ = place;
  const QRectF pixels(place.topLeft() / kTwipsPerPixel, place.size() / kTwipsPerPixel);
  setGeometry(pixels.toAlignedRect().adjusted(0, 0, look_ == Look::kLine ? 1 : 0, 0));
}

void StaffItem::PaintLine(QPainter& painter) const {
  // On whole pixels of the screen, so that all lines are equally thick at every scale.
  const QTransform device = painter.deviceTransform();
  const double thickness = std::max(1.0, std::floor(device.m11()));
  const double left = std::round(geometry().left() * device.m11() + device.dx());
  const double x = (left + thickness / 2.0 - device.dx()) / device.m11();
  painter.setPen(QPen(kGuide, thickness / device.m11(), Qt::DashLine, Qt::FlatCap));
  painter.drawLine(QPointF(x, geometry().top()), QPointF(x, geometry().bottom()));
}

void StaffItem::paintEvent(QPaintEvent*) {
  if (LiesBeneath()) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(kMarker);
  painter.drawRoundedRect(rect(), 4, 4);
}

}  // namespace zelmar
