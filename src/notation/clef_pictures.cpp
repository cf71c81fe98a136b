#include "notation/clef_pictures.h"

#include <QTransform>
#include <cmath>
#include <vector>

namespace zelmar {

namespace {

// A point that the pen passes, with the width of its stroke there. In line gaps from the top left corner of
// the place, y downward.
struct Node {
  double x;
  double y;
  double width;
};

// From the curl about the line, round and up to the loop at the top, then down the stem to the hook.
constexpr Node kTrebleStroke[] = {
    {1.04, 4.94, 0.05}, {0.88, 4.60, 0.13}, {0.98, 4.10, 0.21}, {1.40, 3.74, 0.30}, {1.92, 4.02, 0.30},
    {2.12, 4.62, 0.22}, {1.86, 5.22, 0.16}, {1.26, 5.48, 0.17}, {0.60, 5.22, 0.28}, {0.24, 4.52, 0.40},
    {0.42, 3.68, 0.38}, {0.90, 2.92, 0.32}, {1.36, 2.26, 0.30}, {1.66, 1.50, 0.27}, {1.64, 0.76, 0.17},
    {1.44, 0.14, 0.06}, {1.12, 0.58, 0.17}, {1.00, 1.28, 0.22}, {1.04, 1.94, 0.15}, {1.18, 3.00, 0.11},
    {1.36, 4.50, 0.11}, {1.52, 5.72, 0.12}, {1.52, 6.36, 0.13}, {1.22, 6.82, 0.13}, {0.84, 6.82, 0.12},
    {0.62, 6.60, 0.10},
};
constexpr Node kTrebleBlob = {0.84, 6.48, 0.58};

// From the blob on the line over its top and down to the tail.
constexpr Node kBassStroke[] = {
    {0.18, 0.66, 0.10}, {0.24, 0.36, 0.14}, {0.48, 0.15, 0.17}, {0.88, 0.13, 0.21}, {1.30, 0.34, 0.34},
    {1.50, 0.90, 0.44}, {1.40, 1.62, 0.38}, {1.06, 2.34, 0.25}, {0.60, 2.90, 0.13}, {0.10, 3.36, 0.05},
};
constexpr Node kBassBlob = {0.50, 0.62, 0.66};
constexpr Node kBassDots[] = {{2.02, 0.19, 0.32}, {2.02, 0.81, 0.32}};

constexpr int kStepsPerNode = 8;

double Between(double before, double from, double to, double after, double t) {
  return 0.5 * (2.0 * from + (to - before) * t + (2.0 * before - 5.0 * from + 4.0 * to - after) * t * t +
                (3.0 * from - before - 3.0 * to + after) * t * t * t);
}

// The nodes with a smooth curve between them.
template <std::size_t Count>
std::vector<Node> Smooth(const Node (&nodes)[Count]) {
  std::vector<Node> curve;
  for (std::size_t i = 0; i + 1 < Count; ++i) {
    const Node& before = nodes[i == 0 ? 0 : i - 1];
    const Node& after = nodes[i + 2 < Count ? i + 2 : Count - 1];
    for (int step = 0; step < kStepsPerNode; ++step) {
      const double t = static_cast<double>(step) / kStepsPerNode;
      curve.push_back({Between(before.x, nodes[i].x, nodes[i + 1].x, after.x, t),
                       Between(before.y, nodes[i].y, nodes[i + 1].y, after.y, t),
                       Between(before.width, nodes[i].width, nodes[i + 1].width, after.width, t)});
    }
  }
  curve.push_back(nodes[Count - 1]);
  return curve;
}

// The outline of a stroke along the nodes.
template <std::size_t Count>
QPainterPath StrokeAlong(const Node (&nodes)[Count]) {
  const std::vector<Node> curve = Smooth(nodes);
  QPolygonF outline;
  std::vector<QPointF> way_back;
  for (std::size_t i = 0; i < curve.size(); ++i) {
    const Node& before = curve[i == 0 ? 0 : i - 1];
    const Node& after = curve[i + 1 < curve.size() ? i + 1 : i];
    const double dx = after.x - before.x;
    const double dy = after.y - before.y;
    const double length = std::hypot(dx, dy);
    const QPointF aside(-dy / length * curve[i].width / 2.0, dx / length * curve[i].width / 2.0);
    const QPointF here(curve[i].x, curve[i].y);
    outline << here + aside;
    way_back.push_back(here - aside);
  }
  for (auto point = way_back.rbegin(); point != way_back.rend(); ++point) outline << *point;
  QPainterPath path;
  path.setFillRule(Qt::WindingFill);
  path.addPolygon(outline);
  path.closeSubpath();
  return path;
}

QPainterPath Disc(const Node& node) {
  QPainterPath path;
  path.addEllipse(QPointF(node.x, node.y), node.width / 2.0, node.width / 2.0);
  return path;
}

QPainterPath MakeTreble() {
  return StrokeAlong(kTrebleStroke).united(Disc(kTrebleBlob));
}

QPainterPath MakeBass() {
  QPainterPath path = StrokeAlong(kBassStroke).united(Disc(kBassBlob));
  for (const Node& dot : kBassDots) path.addPath(Disc(dot));
  return path;
}

QPainterPath Placed(const QPainterPath& shape, const QRectF& place, double heights) {
  const double gap = place.height() / heights;
  return QTransform(gap, 0.0, 0.0, gap, place.left(), place.top()).map(shape);
}

}  // namespace

QPainterPath TrebleClef(const QRectF& place) {
  static const QPainterPath shape = MakeTreble();
  return Placed(shape, place, 7.0);
}

QPainterPath BassClef(const QRectF& place) {
  static const QPainterPath shape = MakeBass();
  return Placed(shape, place, 3.5);
}

}  // namespace zelmar
