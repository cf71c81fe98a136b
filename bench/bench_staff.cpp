// One bar of sixteen semiquavers in chords of four, recorded and painted, against a bare loop that paints the
// same primitives with the same pens.

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>

#include "figure.h"
#include "notation/bar_drawing.h"

namespace {

using namespace zelmar;

constexpr int kWidth = 600;  // pixels
constexpr int kHeight = 200;
constexpr int kRounds = 201;
constexpr int kChordsOfBar = 16;
constexpr int kNotesOfChord = 4;
constexpr int kSameLevels = 1;  // rounding of places in floating point

std::shared_ptr<Tune> MakeTune() {
  auto tune = std::make_shared<Tune>();
  tune->SetKeySignature(3);
  int reference = 0;
  for (std::int16_t bar = 1; bar <= 400; ++bar) {
    for (int chord = 0; chord < kChordsOfBar; ++chord) {
      for (int note = 0; note < kNotesOfChord; ++note) {
        auto tone = std::make_shared<Tone>();
        tone->SetAbsRef(++reference);
        tone->SetBar(bar);
        tone->SetBeat(static_cast<std::int16_t>(1 + chord / 4));
        tone->SetTick(static_cast<std::int16_t>(30 * (chord % 4)));
        tone->SetDuration(0.25);
        tone->SetNumber(static_cast<std::int16_t>(60 + 4 * note + chord % 5));
        tune->Add(tone);
      }
    }
  }
  return tune;
}

// The primitives as a loop would hold them that was written for them alone: pens, brushes, places and fonts
// ready in pixels, and a pen or a brush only where it is another one than before. It draws the very picture
// that the recording draws.
class BareLoop {
 public:
  explicit BareLoop(const Drawing& drawing) {
    for (const Primitive& primitive : drawing.Primitives()) ready_.push_back(MakeReady(drawing, primitive));
    for (std::size_t i = 0; i < ready_.size(); ++i) {
      const Ready* const before = i > 0 ? &ready_[i - 1] : nullptr;
      ready_[i].new_pen = before == nullptr || before->pen != ready_[i].pen;
      ready_[i].new_brush = before == nullptr || before->brush != ready_[i].brush;
    }
  }

  void Paint(QPainter& painter) const {
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    for (const Ready& ready : ready_) {
      if (ready.new_pen) painter.setPen(ready.pen);
      if (ready.new_brush) painter.setBrush(ready.brush);
      switch (ready.shape) {
        case Shape::kLine:
          painter.drawLine(ready.from, ready.to);
          break;
        case Shape::kCircle:
          painter.drawEllipse(ready.box);
          break;
        case Shape::kArc:
          painter.drawArc(ready.box, ready.start, ready.span);
          break;
        case Shape::kText: {
          const QTransform before = painter.transform();
          painter.setFont(ready.font);
          painter.setTransform(ready.stretched, true);
          painter.drawText(QPointF(), ready.text);
          painter.setTransform(before);
          break;
        }
        case Shape::kPath:
          painter.drawPath(ready.path);
          break;
      }
    }
  }

 private:
  struct Ready {
    Shape shape = Shape::kLine;
    QPen pen;
    QBrush brush;
    bool new_pen = true;
    bool new_brush = true;
    QRectF box;
    QPointF from;
    QPointF to;
    int start = 0;
    int span = 0;
    QString text;
    QFont font;
    QTransform stretched;
    QPainterPath path;
  };

  static Ready MakeReady(const Drawing& drawing, const Primitive& primitive) {
    constexpr double scale = 1.0 / kTwipsPerPixel;
    const QColor colour(static_cast<int>(primitive.colour & 0xFF),
                        static_cast<int>(primitive.colour >> 8 & 0xFF),
                        static_cast<int>(primitive.colour >> 16 & 0xFF));
    Ready ready;
    ready.shape = primitive.shape;
    ready.from = primitive.from * scale;
    ready.to = primitive.to * scale;
    const bool round =
        primitive.shape != Shape::kLine || primitive.role == Role::kFlat || primitive.role == Role::kFlag;
    ready.pen =
        QPen(colour, primitive.pen_width, Qt::SolidLine, round ? Qt::RoundCap : Qt::FlatCap, Qt::RoundJoin);
    ready.brush = primitive.filled ? QBrush(colour) : QBrush(Qt::NoBrush);
    const double half_width = primitive.radius * scale;
    const double half_height = half_width * primitive.aspect;
    ready.box =
        QRectF(ready.from.x() - half_width, ready.from.y() - half_height, 2 * half_width, 2 * half_height);
    constexpr double kSixteenths = 16 * 180.0 / std::numbers::pi;
    ready.start = qRound(primitive.start_angle * kSixteenths);
    ready.span = qRound((primitive.end_angle - primitive.start_angle) * kSixteenths);
    if (primitive.role == Role::kBarLine)
      PutBarLine(ready);
    else if (primitive.role == Role::kBeam)
      PutBeam(primitive, colour, ready);
    else if (primitive.shape == Shape::kLine)
      PutOnPixels(primitive, ready);
    if (primitive.shape == Shape::kText) {
      const WrittenText written(drawing.TextOf(primitive), drawing.LetteringOf(primitive), primitive.from,
                                primitive.room, scale);
      ready.pen.setWidthF(1.0);
      ready.font = written.Font();
      ready.text = written.Letters();
      ready.stretched.translate(written.Start().x(), written.Start().y());
      ready.stretched.scale(written.StretchAcross(), written.StretchDown());
    }
    if (primitive.shape == Shape::kPath) {
      if (primitive.filled) ready.pen = Qt::NoPen;
      ready.path = QTransform::fromScale(scale, scale).map(drawing.PathOf(primitive));
    }
    return ready;
  }

  static double Settled(double centre, double width) {
    return std::round(centre - width / 2.0) + width / 2.0;
  }

  // Before the edge of the surface, and over the outer staff lines.
  static void PutBarLine(Ready& ready) {
    ready.pen.setWidthF(2.0);
    ready.from.rx() = ready.to.rx() = std::floor(ready.from.x()) - 1.0;
    ready.from.ry() -= 0.5;
    ready.to.ry() += 0.5;
  }

  // From the far side of one stem to that of the other.
  static void PutBeam(const Primitive& beam, const QColor& colour, Ready& ready) {
    const double left = Settled(ready.from.x(), kStemPen) - kStemPen / 2.0;
    const double right = Settled(ready.to.x(), kStemPen) + kStemPen / 2.0;
    if (beam.from.y() == beam.to.y()) {
      PutOnPixels(beam, ready);
      ready.from.setX(left);
      ready.to.setX(right);
      return;
    }
    const double slope = SlopeOf(beam);
    const double half = beam.pen_width / 2.0 * UprightShare(slope);
    const double left_y = ready.from.y() + (left - ready.from.x()) * slope;
    const double right_y = ready.from.y() + (right - ready.from.x()) * slope;
    ready.shape = Shape::kPath;
    ready.path.addPolygon(QPolygonF({QPointF(left, left_y - half), QPointF(right, right_y - half),
                                     QPointF(right, right_y + half), QPointF(left, left_y + half)}));
    ready.path.closeSubpath();
    ready.pen = Qt::NoPen;
    ready.brush = colour;
  }

  // A level or an upright line covers whole pixels.
  static void PutOnPixels(const Primitive& line, Ready& ready) {
    const bool level = line.from.y() == line.to.y();
    const bool upright = line.from.x() == line.to.x();
    if (level == upright) return;
    const double width = std::max(1.0, std::round(line.pen_width));
    if (level) {
      ready.from.setY(Settled(ready.from.y(), width));
      ready.to.setY(ready.from.y());
    } else {
      ready.from.setX(Settled(ready.from.x(), width));
      ready.to.setX(ready.from.x());
    }
    ready.pen.setWidthF(width);
    ready.pen.setCapStyle(Qt::FlatCap);
  }

  std::vector<Ready> ready_;
};

template <typename Paint>
QImage PictureOf(Paint paint) {
  QImage image(kWidth, kHeight, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::white);
  QPainter painter(&image);
  paint(painter);
  painter.end();
  return image;
}

// How far two pictures are apart at most, in levels of 255 of one colour of one pixel.
int Difference(const QImage& first, const QImage& second) {
  int largest = 0;
  for (int y = 0; y < first.height(); ++y)
    for (int x = 0; x < first.width(); ++x) {
      const QColor one = first.pixelColor(x, y);
      const QColor other = second.pixelColor(x, y);
      largest = std::max({largest, std::abs(one.red() - other.red()), std::abs(one.green() - other.green()),
                          std::abs(one.blue() - other.blue())});
    }
  return largest;
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  BarDrawing sheet;
  sheet.SetSurfaceSize(kWidth * kTwipsPerPixel, kHeight * kTwipsPerPixel, kHeight * kTwipsPerPixel);
  sheet.Attach(MakeTune());
  sheet.DisplayBar(200, 1);
  const BareLoop bare(sheet.StaffDrawing());
  const int difference =
      Difference(PictureOf([&](QPainter& painter) { sheet.StaffDrawing().Replay(painter); }),
                 PictureOf([&](QPainter& painter) { bare.Paint(painter); }));
  if (difference > kSameLevels) {
    std::printf("The bare loop draws another picture: %d levels apart.\n", difference);
    return 1;
  }
  QImage image(kWidth, kHeight, QImage::Format_ARGB32_Premultiplied);
  QPainter painter(&image);

  bench::PrintHeading();
  const auto shown = bench::RunInTurns(
      kRounds,
      [&] {
        return bench::MillisecondsOf([&] {
          sheet.DisplayBar(200, 1);
          painter.fillRect(image.rect(), Qt::white);
          sheet.StaffDrawing().Replay(painter);
        });
      },
      [&] {
        return bench::MillisecondsOf([&] {
          painter.fillRect(image.rect(), Qt::white);
          bare.Paint(painter);
        });
      });
  bench::PrintFigure("DisplayBar, 64 notes, recorded and painted / bare loop", shown.measured,
                     shown.yardstick, "ms", shown.measured / shown.yardstick, 2.5);
  const auto recorded = bench::RunInTurns(
      kRounds, [&] { return bench::MillisecondsOf([&] { sheet.DisplayBar(200, 1); }); },
      [&] {
        return bench::MillisecondsOf([&] {
          painter.fillRect(image.rect(), Qt::white);
          bare.Paint(painter);
        });
      });
  bench::PrintFigure("the recording alone / bare loop", recorded.measured, recorded.yardstick, "ms",
                     recorded.measured / recorded.yardstick, bench::kNoLimit);
  return bench::over_limit ? 3 : 0;
}
