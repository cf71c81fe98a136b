// One bar of sixteen semiquavers in chords of four, recorded and painted, against a bare loop that paints the
// same primitives with the same pens.

#include <QApplication>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>

#include "figure.h"
#include "notation/bar_drawing.h"

namespace {

using namespace zelmar;

constexpr int kWidth = 600;  // pixels
constexpr int kHeight = 200;
constexpr int kRounds = 201;
constexpr int kChordsOfBar = 16;
constexpr int kNotesOfChord = 4;

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
// ready in pixels.
class BareLoop {
 public:
  explicit BareLoop(const Drawing& drawing) {
    constexpr double scale = 1.0 / kTwipsPerPixel;
    for (const Primitive& primitive : drawing.Primitives()) {
      Ready ready{primitive.shape,      {}, Qt::NoBrush, {}, primitive.from * scale,
                  primitive.to * scale, {}, {},          {}};
      const QColor colour(static_cast<int>(primitive.colour & 0xFF),
                          static_cast<int>(primitive.colour >> 8 & 0xFF),
                          static_cast<int>(primitive.colour >> 16 & 0xFF));
      ready.pen = QPen(colour, primitive.pen_width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
      if (primitive.filled) ready.brush = colour;
      const double radius = primitive.radius * scale;
      ready.box = QRectF(ready.from.x() - radius, ready.from.y() - radius, 2 * radius, 2 * radius);
      if (primitive.shape == Shape::kText) {
        const Lettering& letters = drawing.LetteringOf(primitive);
        ready.font = QFont(letters.face);
        ready.font.setPixelSize(std::max(1, qRound(letters.points * kTwipsPerPoint * scale)));
        ready.font.setBold(letters.bold);
        ready.from.ry() += QFontMetricsF(ready.font).ascent();
        ready.text = drawing.TextOf(primitive);
      }
      if (primitive.shape == Shape::kPath) {
        ready.pen = Qt::NoPen;
        ready.path = QTransform::fromScale(scale, scale).map(drawing.PathOf(primitive));
      }
      ready_.push_back(ready);
    }
  }

  void Paint(QPainter& painter) const {
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    for (const Ready& ready : ready_) {
      painter.setPen(ready.pen);
      painter.setBrush(ready.brush);
      switch (ready.shape) {
        case Shape::kLine:
          painter.drawLine(ready.from, ready.to);
          break;
        case Shape::kText:
          painter.setFont(ready.font);
          painter.drawText(ready.from, ready.text);
          break;
        case Shape::kPath:
          painter.drawPath(ready.path);
          break;
        default:
          painter.drawEllipse(ready.box);
      }
    }
  }

 private:
  struct Ready {
    Shape shape;
    QPen pen;
    QBrush brush;
    QRectF box;
    QPointF from;
    QPointF to;
    QString text;
    QFont font;
    QPainterPath path;
  };

  std::vector<Ready> ready_;
};

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  BarDrawing sheet;
  sheet.SetSurfaceSize(kWidth * kTwipsPerPixel, kHeight * kTwipsPerPixel, kHeight * kTwipsPerPixel);
  sheet.Attach(MakeTune());
  sheet.DisplayBar(200, 1);
  const BareLoop bare(sheet.StaffDrawing());
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
