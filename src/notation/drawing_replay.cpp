// Paints a recorded drawing.
#include <QPaintEngine>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <numbers>

#include "notation/drawing.h"

namespace zelmar {

namespace {

QColor ColourOf(InkColour colour) {
  return QColor(static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
                static_cast<int>(colour >> 16 & 0xFF));
}

// Strokes that meet others at their ends.
bool HasRoundEnds(Role role) {
  return role == Role::kFlat || role == Role::kFlag;
}

double Degrees(double radians) {
  return radians * 180.0 / std::numbers::pi;
}

// One axis of a painter, and the device pixels along it.
struct Axis {
  double pixels = 1.0;  // to a unit of the painter
  double origin = 0.0;  // of the painter, in device pixels

  // The nearest width of at least one whole pixel.
  double WholePixels(double width) const { return std::max(1.0, std::round(width * pixels)) / pixels; }
  // The nearest centre at which a line of so many whole pixels covers whole pixels.
  double Settled(double centre, double width) const {
    const double half = width * pixels / 2.0;
    return (std::round(centre * pixels + origin - half) + half - origin) / pixels;
  }
  // The end of the last pixel that lies wholly before the place.
  double LastWhole(double place) const {
    constexpr double kRounding = 1e-6;
    return (std::floor(place * pixels + origin + kRounding) - origin) / pixels;
  }
};

// Paints the primitives one after another and changes pen and brush only where they differ.
class Player {
 public:
  Player(const Drawing& drawing, QPainter& painter, double scale)
      : drawing_(drawing), painter_(painter), scale_(scale) {
    const QTransform device = painter.deviceTransform();
    const QPaintEngine* engine = painter.paintEngine();
    // Only what has pixels and is not turned can be put on whole pixels.
    on_pixels_ = engine != nullptr && engine->type() == QPaintEngine::Raster &&
                 device.type() <= QTransform::TxScale && device.m11() > 0.0 && device.m22() > 0.0;
    across_ = {device.m11(), device.dx()};
    down_ = {device.m22(), device.dy()};
  }

  void Play(const Primitive& primitive) {
    switch (primitive.shape) {
      case Shape::kLine:
        return PlayLine(primitive);
      case Shape::kCircle:
        return PlayCircle(primitive);
      case Shape::kArc:
        return PlayArc(primitive);
      case Shape::kText:
        return PlayText(primitive);
      case Shape::kPath:
        return PlayPath(primitive);
    }
  }

 private:
  void UsePen(InkColour colour, double width, Qt::PenCapStyle cap = Qt::RoundCap) {
    if (pen_set_ && colour == pen_colour_ && width == pen_width_ && cap == pen_cap_) return;
    painter_.setPen(QPen(ColourOf(colour), width, Qt::SolidLine, cap, Qt::RoundJoin));
    pen_set_ = true;
    pen_colour_ = colour;
    pen_width_ = width;
    pen_cap_ = cap;
  }

  void UseNoPen() {
    painter_.setPen(Qt::NoPen);
    pen_set_ = false;
  }

  void UseBrush(bool filled, InkColour colour) {
    if (brush_set_ && filled == brush_filled_ && colour == brush_colour_) return;
    if (filled)
      painter_.setBrush(ColourOf(colour));
    else
      painter_.setBrush(Qt::NoBrush);
    brush_set_ = true;
    brush_filled_ = filled;
    brush_colour_ = colour;
  }

  double WidthOf(const Primitive& primitive) const { return primitive.pen_width * kTwipsPerPixel * scale_; }

  void PlayLine(const Primitive& line) {
    if (line.role == Role::kBarLine) return PlayBarLine(line);
    QPointF from = line.from * scale_;
    QPointF to = line.to * scale_;
    const bool level = line.from.y() == line.to.y();
    const bool upright = line.from.x() == line.to.x();
    if (line.role == Role::kBeam && !upright && !(level && on_pixels_)) return PlayBeam(line);
    if (!on_pixels_ || level == upright) {
      UsePen(line.colour, WidthOf(line), HasRoundEnds(line.role) ? Qt::RoundCap : Qt::FlatCap);
      painter_.drawLine(from, to);
      return;
    }
    const Axis& axis = level ? down_ : across_;
    const double width = axis.WholePixels(WidthOf(line));
    const double place = axis.Settled(level ? from.y() : from.x(), width);
    if (level) {
      from.setY(place);
      to.setY(place);
      if (line.role == Role::kBeam) {
        from.setX(SideOfStem(from.x(), -0.5));
        to.setX(SideOfStem(to.x(), 0.5));
      }
    } else {
      from.setX(place);
      to.setX(place);
    }
    UsePen(line.colour, width, Qt::FlatCap);
    painter_.drawLine(from, to);
  }

  // Half the width of the stem at `x` to its left (-0.5) or right (0.5).
  double SideOfStem(double x, double side) const {
    const double width = kStemPen * kTwipsPerPixel * scale_;
    if (!on_pixels_) return x + side * width;
    const double whole = across_.WholePixels(width);
    return across_.Settled(x, whole) + side * whole;
  }

  // A slanted beam, with upright ends at the outer sides of its stems.
  void PlayBeam(const Primitive& beam) {
    const QPointF from = beam.from * scale_;
    const double slope = SlopeOf(beam);
    const double half = WidthOf(beam) / 2.0 * UprightShare(slope);
    const double left = SideOfStem(from.x(), -0.5);
    const double right = SideOfStem(beam.to.x() * scale_, 0.5);
    const double left_y = from.y() + (left - from.x()) * slope;
    const double right_y = from.y() + (right - from.x()) * slope;
    const QPointF corners[] = {
        {left, left_y - half}, {right, right_y - half}, {right, right_y + half}, {left, left_y + half}};
    UseNoPen();
    UseBrush(true, beam.colour);
    painter_.drawConvexPolygon(corners, 4);
  }

  // Its left half: the other one would lie beyond the surface.
  void PlayBarLine(const Primitive& line) {
    double right = line.from.x() * scale_;
    double width = WidthOf(line) / 2.0;
    if (on_pixels_) {
      right = across_.LastWhole(right);
      width = across_.WholePixels(width);
    }
    // Over the whole of the outer staff lines.
    const double over = kTwipsPerPixel * scale_ / 2.0;
    const double top = std::min(line.from.y(), line.to.y()) * scale_ - over;
    const double bottom = std::max(line.from.y(), line.to.y()) * scale_ + over;
    UsePen(line.colour, width, Qt::FlatCap);
    painter_.drawLine(QPointF(right - width / 2.0, top), QPointF(right - width / 2.0, bottom));
  }

  void PlayCircle(const Primitive& circle) {
    UsePen(circle.colour, WidthOf(circle));
    UseBrush(circle.filled, circle.colour);
    const double radius = circle.radius * scale_;
    painter_.drawEllipse(circle.from * scale_, radius, radius);
  }

  void PlayArc(const Primitive& arc) {
    UsePen(arc.colour, WidthOf(arc));
    UseBrush(false, arc.colour);
    const QPointF centre = arc.from * scale_;
    const double half_width = arc.radius * scale_;
    const double half_height = half_width * arc.aspect;
    const QRectF box(centre.x() - half_width, centre.y() - half_height, 2 * half_width, 2 * half_height);
    painter_.drawArc(box, qRound(16 * Degrees(arc.start_angle)),
                     qRound(16 * Degrees(arc.end_angle - arc.start_angle)));
  }

  void PlayText(const Primitive& text) {
    UsePen(text.colour, 1.0);
    const WrittenText written(drawing_.TextOf(text), drawing_.LetteringOf(text), text.from, text.room,
                              scale_);
    const QTransform before = painter_.transform();
    painter_.setFont(written.Font());
    painter_.translate(written.Start());
    painter_.scale(written.StretchAcross(), written.StretchDown());
    painter_.drawText(QPointF(), written.Letters());
    painter_.setTransform(before);
  }

  void PlayPath(const Primitive& path) {
    if (path.filled)
      UseNoPen();
    else
      UsePen(path.colour, WidthOf(path) / scale_);
    UseBrush(path.filled, path.colour);
    const QTransform before = painter_.transform();
    painter_.scale(scale_, scale_);
    painter_.drawPath(drawing_.PathOf(path));
    painter_.setTransform(before);
  }

  const Drawing& drawing_;
  QPainter& painter_;
  double scale_;
  bool on_pixels_ = false;
  Axis across_;
  Axis down_;
  bool pen_set_ = false;
  InkColour pen_colour_ = 0;
  double pen_width_ = 0.0;
  Qt::PenCapStyle pen_cap_ = Qt::RoundCap;
  bool brush_set_ = false;
  bool brush_filled_ = false;
  InkColour brush_colour_ = 0;
};

}  // namespace

void Drawing::Replay(QPainter& painter, double scale) const {
  announced_ = false;
  painter.save();
  painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
  Player player(*this, painter, scale);
  for (const Primitive& primitive : primitives_) player.Play(primitive);
  painter.restore();
}

}  // namespace zelmar
