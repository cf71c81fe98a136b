#include "notation/drawing.h"

#include <algorithm>
#include <cmath>

namespace zelmar {

double SlopeOf(const Primitive& line) {
  const QPointF way = line.to - line.from;
  return way.x() == 0.0 ? 0.0 : way.y() / way.x();
}

double UprightShare(double slope) {
  constexpr double kSteepest = 2.5;
  return std::min(std::hypot(1.0, slope), kSteepest);
}

void Drawing::Clear() {
  primitives_.clear();
  texts_.clear();
  paths_.clear();
  pen_width_ = 1.0;
  NoteChange();
}

void Drawing::Line(Role role, InkColour colour, QPointF from, QPointF to) {
  Primitive& line = Append(Shape::kLine, role, colour);
  line.from = from;
  line.to = to;
}

void Drawing::MoveEnd(std::size_t place, QPointF to) {
  NoteChange();
  primitives_[place].to = to;
}

void Drawing::Confine(std::size_t place, double room) {
  double& limit = primitives_[place].room;
  if (limit > 0.0 && limit <= room) return;
  NoteChange();
  limit = room;
}

void Drawing::Circle(Role role, InkColour colour, QPointF centre, double radius, bool filled) {
  Primitive& circle = Append(Shape::kCircle, role, colour);
  circle.from = centre;
  circle.radius = radius;
  circle.filled = filled;
}

void Drawing::Arc(Role role, InkColour colour, QPointF centre, double radius, double start, double end,
                  double aspect) {
  Primitive& arc = Append(Shape::kArc, role, colour);
  arc.from = centre;
  arc.radius = radius;
  arc.start_angle = start;
  arc.end_angle = end;
  arc.aspect = aspect;
}

void Drawing::Text(Role role, InkColour colour, QPointF top_left, const QString& text,
                   const Lettering& lettering, double room) {
  // A surface of no height has no room for letters.
  if (text.isEmpty() || lettering.points <= 0.0) return;
  Primitive& written = Append(Shape::kText, role, colour);
  written.room = room;
  written.from = top_left;
  written.index = texts_.size();
  texts_.push_back({text, lettering});
}

void Drawing::Path(Role role, InkColour colour, const QPainterPath& path, bool filled) {
  Primitive& drawn = Append(Shape::kPath, role, colour);
  drawn.filled = filled;
  drawn.index = paths_.size();
  paths_.push_back(path);
}

Primitive& Drawing::Append(Shape shape, Role role, InkColour colour) {
  NoteChange();
  Primitive& primitive = primitives_.emplace_back();
  primitive.shape = shape;
  primitive.role = role;
  primitive.colour = colour;
  primitive.pen_width = pen_width_;
  return primitive;
}

void Drawing::NoteChange() {
  if (announced_) return;
  announced_ = true;
  if (changed_) changed_();
}

QRectF Drawing::BoxOf(const Primitive& primitive) const {
  const double pen =
      primitive.filled && primitive.shape == Shape::kPath ? 0.0 : primitive.pen_width * kTwipsPerPixel / 2.0;
  const auto with_pen = [pen](const QRectF& box) { return box.adjusted(-pen, -pen, pen, pen); };
  switch (primitive.shape) {
    case Shape::kLine: {
      const QRectF box = QRectF(primitive.from, primitive.to).normalized();
      if (primitive.role != Role::kBeam) return with_pen(box);
      // A beam goes on to the far sides of its stems, and its ends are longer than its pen is wide.
      const double slope = SlopeOf(primitive);
      const double stem = kStemPen * kTwipsPerPixel / 2.0;
      const double end = pen * UprightShare(slope) + stem * std::abs(slope);
      const double side = std::max(stem, pen);
      return box.adjusted(-side, -end, side, end);
    }
    case Shape::kCircle:
    case Shape::kArc: {
      const QPointF half(primitive.radius, primitive.radius * primitive.aspect);
      return with_pen(QRectF(primitive.from - half, primitive.from + half));
    }
    case Shape::kPath:
      return with_pen(PathOf(primitive).boundingRect());
    case Shape::kText:
      break;
  }
  return BoxOfText(TextOf(primitive), LetteringOf(primitive), primitive.from, primitive.room);
}

}  // namespace zelmar
