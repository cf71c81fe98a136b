// What a replay really paints: some primitives of a drawing alone, and the box about their ink.
#pragma once

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <functional>

#include "notation/drawing.h"

namespace zelmar {

// A drawing with those primitives only of which `wanted` is true; it is told their places.
inline Drawing Selected(const Drawing& drawing,
                        const std::function<bool(const Primitive&, std::size_t place)>& wanted) {
  Drawing selected;
  for (std::size_t place = 0; place < drawing.Primitives().size(); ++place) {
    const Primitive& p = drawing.Primitives()[place];
    if (!wanted(p, place)) continue;
    selected.SetPenWidth(p.pen_width);
    switch (p.shape) {
      case Shape::kLine:
        selected.Line(p.role, p.colour, p.from, p.to);
        break;
      case Shape::kCircle:
        selected.Circle(p.role, p.colour, p.from, p.radius, p.filled);
        break;
      case Shape::kArc:
        selected.Arc(p.role, p.colour, p.from, p.radius, p.start_angle, p.end_angle, p.aspect);
        break;
      case Shape::kText:
        selected.Text(p.role, p.colour, p.from, drawing.TextOf(p), drawing.LetteringOf(p), p.room);
        break;
      case Shape::kPath:
        selected.Path(p.role, p.colour, drawing.PathOf(p), p.filled);
        break;
    }
  }
  return selected;
}

inline Drawing OfRole(const Drawing& drawing, Role role) {
  return Selected(drawing, [role](const Primitive& p, std::size_t) { return p.role == role; });
}

// What a replay paints on a surface of that size in twips, each pixel four times as fine as on a screen.
inline constexpr double kInkPixels = 4.0 / kTwipsPerPixel;
inline QImage PictureOf(const Drawing& drawing, QSizeF surface) {
  QImage image((surface * kInkPixels).toSize(), QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  drawing.Replay(painter, kInkPixels);
  return image;
}

// A pixel counts when half of it is covered, by ink of any colour.
inline bool IsInk(const QImage& picture, int x, int y) {
  const QRgb pixel = reinterpret_cast<const QRgb*>(picture.constScanLine(y))[x];
  return std::min({qRed(pixel), qGreen(pixel), qBlue(pixel)}) < 128;
}

// The box in twips about everything that a replay paints on the surface. Null where that is nothing.
inline QRectF InkOf(const Drawing& drawing, QSizeF surface) {
  const QImage picture = PictureOf(drawing, surface);
  QRect ink;
  for (int y = 0; y < picture.height(); ++y) {
    int left = 0, right = picture.width() - 1;
    while (left <= right && !IsInk(picture, left, y)) ++left;
    while (right > left && !IsInk(picture, right, y)) --right;
    if (left <= right) ink |= QRect(left, y, right - left + 1, 1);
  }
  return {QPointF(ink.topLeft()) / kInkPixels, QSizeF(ink.size()) / kInkPixels};
}

}  // namespace zelmar
