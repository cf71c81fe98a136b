#include "notation/rest_shapes.h"

#include <QTransform>

namespace zelmar {

namespace {

constexpr double kBlockWidth = 1.3;
constexpr double kBlockHeight = 0.5;
constexpr double kDotRadius = 0.27;

// All shapes are in line gaps about a point of the middle line, y downward.

// Hangs from the line above the middle one.
QPainterPath WholeBar() {
  QPainterPath path;
  path.addRect(-kBlockWidth / 2.0, -1.0, kBlockWidth, kBlockHeight);
  return path;
}

// Lies on the middle line.
QPainterPath Minim() {
  QPainterPath path;
  path.addRect(-kBlockWidth / 2.0, -kBlockHeight, kBlockWidth, kBlockHeight);
  return path;
}

// A zigzag with a thick middle stroke and a hook below.
QPainterPath Crotchet() {
  QPainterPath path(QPointF(-0.22, -1.45));
  path.lineTo(0.36, -0.68);
  path.cubicTo(0.1, -0.42, 0.06, -0.2, 0.46, 0.42);
  path.cubicTo(0.1, 0.26, -0.22, 0.36, -0.06, 0.72);
  path.cubicTo(-0.02, 0.92, 0.1, 1.08, 0.22, 1.22);
  path.cubicTo(-0.3, 0.98, -0.62, 0.62, -0.42, 0.3);
  path.cubicTo(-0.3, 0.12, -0.1, 0.06, 0.08, 0.14);
  path.lineTo(-0.4, -0.46);
  path.cubicTo(-0.08, -0.76, 0.0, -1.02, -0.22, -1.45);
  path.closeSubpath();
  return path;
}

// A slanted stem with a dot and a curve for each flag, `flags` of them, the first at `top`.
QPainterPath Flagged(int flags, double top) {
  constexpr double kFoot = 1.0;
  constexpr double kLean = 0.3;  // sideways for one gap down
  constexpr double kThickness = 0.14;
  const auto stem_x = [](double y) { return 0.02 - kLean * y; };
  QPainterPath path;
  path.setFillRule(Qt::WindingFill);
  for (int flag = 0; flag < flags; ++flag) {
    const double y = top + flag;
    const double x = stem_x(y) - 0.62;
    path.addEllipse(QPointF(x, y), kDotRadius, kDotRadius);
    QPainterPath curve(QPointF(x, y + kDotRadius));
    curve.cubicTo(x + 0.3, y + kDotRadius + 0.08, x + 0.5, y + 0.1, stem_x(y) + 0.08, y - 0.2);
    curve.lineTo(stem_x(y) + 0.02, y + 0.1);
    curve.cubicTo(x + 0.55, y + 0.32, x + 0.3, y + 0.5, x - 0.05, y + kDotRadius);
    curve.closeSubpath();
    path.addPath(curve);
  }
  QPainterPath stem(QPointF(stem_x(top - 0.2), top - 0.2));
  stem.lineTo(stem_x(top - 0.2) + kThickness, top - 0.2);
  stem.lineTo(stem_x(kFoot) + kThickness, kFoot);
  stem.lineTo(stem_x(kFoot), kFoot);
  stem.closeSubpath();
  path.addPath(stem);
  return path.simplified();
}

const QPainterPath& UnitShape(Role role) {
  static const QPainterPath whole_bar = WholeBar();
  static const QPainterPath minim = Minim();
  static const QPainterPath crotchet = Crotchet();
  static const QPainterPath quaver = Flagged(1, -0.5);
  static const QPainterPath semiquaver = Flagged(2, -0.5);
  switch (role) {
    case Role::kWholeBarRest:
      return whole_bar;
    case Role::kMinimRest:
      return minim;
    case Role::kCrotchetRest:
      return crotchet;
    case Role::kQuaverRest:
      return quaver;
    default:
      return semiquaver;
  }
}

}  // namespace

QPainterPath RestShape(Role role, QPointF centre, double line_gap) {
  return QTransform(line_gap, 0.0, 0.0, line_gap, centre.x(), centre.y()).map(UnitShape(role));
}

}  // namespace zelmar
