#include "notation/drawing.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPaintEngine>
#include <QPainter>
#include <numbers>

namespace zelmar {

namespace {

QColor ColourOf(InkColour colour) {
  return QColor(static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
                static_cast<int>(colour >> 16 & 0xFF));
}

QFont FontOf(const Lettering& lettering, double scale) {
  QFont font(lettering.face);
  font.setPixelSize(std::max(1, qRound(lettering.points * kTwipsPerPoint * scale)));
  font.setBold(lettering.bold);
  return font;
}

double Degrees(double radians) {
  return radians * 180.0 / std::numbers::pi;
}

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
    pixel_x_ = device.m11();
    pixel_y_ = device.m22();
    origin_ = QPointF(device.dx(), device.dy());
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

  // The nearest centre at which a line of `width` device pixels covers whole pixels.
  static double Settled(double centre, double width) {
    return std::round(centre - width / 2.0) + width / 2.0;
  }

  void PlayLine(const Primitive& line) {
    QPointF from = line.from * scale_;
    QPointF to = line.to * scale_;
    double width = WidthOf(line);
    const bool level = line.from.y() == line.to.y();
    const bool upright = line.from.x() == line.to.x();
    if (!on_pixels_ || level == upright) {
      UsePen(line.colour, width);
      painter_.drawLine(from, to);
      return;
    }
    const double pixel = level ? pixel_y_ : pixel_x_;
    const double origin = level ? origin_.y() : origin_.x();
    const double device_width = std::max(1.0, std::round(width * pixel));
    const double settled = Settled((level ? from.y() : from.x()) * pixel + origin, device_width);
    const double place = (settled - origin) / pixel;
    if (level) {
      from.setY(place);
      to.setY(place);
    } else {
      from.setX(place);
      to.setX(place);
    }
    width = device_width / pixel;
    UsePen(line.colour, width, Qt::FlatCap);
    painter_.drawLine(from, to);
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
    const QFont font = FontOf(drawing_.LetteringOf(text), scale_);
    painter_.setFont(font);
    const QFontMetricsF metrics(font);
    QString letters = drawing_.TextOf(text);
    const double room = text.room * scale_;
    if (room > 0.0 && metrics.horizontalAdvance(letters) > room)
      letters = metrics.elidedText(letters, Qt::ElideRight, room);
    painter_.drawText(text.from * scale_ + QPointF(0.0, metrics.ascent()), letters);
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
  double pixel_x_ = 1.0;
  double pixel_y_ = 1.0;
  QPointF origin_;
  bool pen_set_ = false;
  InkColour pen_colour_ = 0;
  double pen_width_ = 0.0;
  Qt::PenCapStyle pen_cap_ = Qt::RoundCap;
  bool brush_set_ = false;
  bool brush_filled_ = false;
  InkColour brush_colour_ = 0;
};

}  // namespace

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

void Drawing::Replay(QPainter& painter, double scale) const {
  announced_ = false;
  painter.save();
  painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
  Player player(*this, painter, scale);
  for (const Primitive& primitive : primitives_) player.Play(primitive);
  painter.restore();
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

double TextWidth(const QString& text, const Lettering& lettering) {
  constexpr double kFine = 4.0 / kTwipsPerPixel;  // measured large, so that hinting does not matter
  return QFontMetricsF(FontOf(lettering, kFine)).horizontalAdvance(text) / kFine;
}

}  // namespace zelmar
