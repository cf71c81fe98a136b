#include "notation/staff_surface.h"

#include <QPainter>

namespace zelmar {

namespace {

const QColor kPaper(255, 255, 255);
const QColor kGuide(120, 140, 170);
const QColor kMarker(80, 140, 220, 56);

}  // namespace

StaffSurface::StaffSurface(const char* name, Drawing& drawing, QWidget* parent)
    : QWidget(parent), drawing_(drawing) {
  setObjectName(QString::fromLatin1(name));
  // The paper covers all of it, so that nothing behind need be painted.
  setAttribute(Qt::WA_OpaquePaintEvent);
  drawing_.SetChanged([this] { update(); });
}

void StaffSurface::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), kPaper);
  drawing_.Replay(painter);
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

void StaffItem::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (look_ == Look::kLine) {
    painter.setPen(QPen(kGuide, 1.0, Qt::DashLine, Qt::FlatCap));
    painter.drawLine(QPointF(0.5, 0.0), QPointF(0.5, height()));
    return;
  }
  painter.setPen(Qt::NoPen);
  painter.setBrush(kMarker);
  painter.drawRoundedRect(rect(), 4, 4);
}

}  // namespace zelmar
