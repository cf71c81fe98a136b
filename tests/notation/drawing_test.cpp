// A recorded drawing is replayed at any scale, with its colours, on whole pixels where there are any.
#include "notation/drawing.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QSvgGenerator>
#include <QXmlStreamReader>

namespace zelmar {
namespace {

QImage Replayed(const Drawing& drawing, QSize size, double ratio) {
  QImage image(size * ratio, QImage::Format_RGB32);
  image.setDevicePixelRatio(ratio);
  image.fill(Qt::white);
  QPainter painter(&image);
  drawing.Replay(painter);
  return image;
}

QColor At(const QImage& image, double x, double y) {
  return image.pixelColor(static_cast<int>(x * image.devicePixelRatio()),
                          static_cast<int>(y * image.devicePixelRatio()));
}

TEST(Drawing, RecordsWhatWasDrawnWithItsPen) {
  Drawing drawing;
  drawing.SetPenWidth(4);
  drawing.Line(Role::kBarLine, kBlackInk, {1, 2}, {3, 4});
  drawing.SetPenWidth(2);
  drawing.Circle(Role::kDot, kRedInk, {5, 6}, 7, true);
  drawing.Text(Role::kHeading, kBlueInk, {8, 9}, QStringLiteral("text"), {QStringLiteral("Face"), 12, true},
               50);
  ASSERT_EQ(drawing.Primitives().size(), 3U);
  EXPECT_EQ(drawing.Primitives()[0].pen_width, 4.0);
  EXPECT_EQ(drawing.Primitives()[1].pen_width, 2.0);
  EXPECT_EQ(drawing.Primitives()[2].room, 50.0);
  EXPECT_EQ(drawing.TextOf(drawing.Primitives()[2]), QStringLiteral("text"));
  drawing.MoveEnd(0, {30, 40});
  EXPECT_EQ(drawing.Primitives()[0].to, QPointF(30, 40));
  drawing.Clear();
  EXPECT_TRUE(drawing.Primitives().empty());
  EXPECT_EQ(drawing.PenWidth(), 1.0);
}

TEST(Drawing, ATextOfNoHeightOrLengthIsNone) {
  Drawing drawing;
  drawing.Text(Role::kHeading, kBlackInk, {}, QString(), {QStringLiteral("Face"), 12, false});
  drawing.Text(Role::kHeading, kBlackInk, {}, QStringLiteral("text"), {QStringLiteral("Face"), 0, false});
  EXPECT_TRUE(drawing.Primitives().empty());
}

TEST(Drawing, ColoursHaveBlueInTheHighByte) {
  for (const auto& [ink, colour] :
       {std::pair(kBlackInk, QColor(0, 0, 0)), std::pair(kRedInk, QColor(255, 0, 0)),
        std::pair(kBlueInk, QColor(0, 0, 255)), std::pair(InkColour{0x102030}, QColor(0x30, 0x20, 0x10))}) {
    Drawing drawing;
    drawing.Circle(Role::kNoteHead, ink, {300, 300}, 200, true);
    EXPECT_EQ(At(Replayed(drawing, {40, 40}, 1.0), 20, 20), colour);
  }
}

TEST(Drawing, AnOpenCircleIsHollow) {
  Drawing drawing;
  drawing.Circle(Role::kNoteHead, kBlackInk, {300, 300}, 200, false);
  const QImage image = Replayed(drawing, {40, 40}, 1.0);
  EXPECT_EQ(At(image, 20, 20), QColor(Qt::white));
  EXPECT_LT(At(image, 20, 6.5).lightness(), 100);
}

class SharpLines : public ::testing::TestWithParam<double> {};

TEST_P(SharpLines, LevelAndUprightLinesCoverWholePixels) {
  const double ratio = GetParam();
  for (const double pen : {1.0, 2.0, 3.0, 4.0}) {
    for (double place = 300.0; place < 330.0; place += 3.7) {
      SCOPED_TRACE(place);
      Drawing drawing;
      drawing.SetPenWidth(pen);
      drawing.Line(Role::kStaffLine, kBlackInk, {0, place}, {900, place});
      const QImage level = Replayed(drawing, {60, 60}, ratio);
      drawing.Clear();
      drawing.SetPenWidth(pen);
      drawing.Line(Role::kStem, kBlackInk, {place, 0}, {place, 900});
      const QImage upright = Replayed(drawing, {60, 60}, ratio);
      int dark = 0;
      double centre = 0.0;
      for (int i = 0; i < level.height(); ++i) {
        const QColor across = level.pixelColor(level.width() / 2, i);
        EXPECT_TRUE(across == QColor(Qt::black) || across == QColor(Qt::white)) << i;
        EXPECT_EQ(upright.pixelColor(i, level.width() / 2), across);
        if (across == QColor(Qt::white)) continue;
        ++dark;
        centre += i + 0.5;
      }
      EXPECT_EQ(dark, std::max(1, static_cast<int>(std::round(pen * ratio))));
      EXPECT_NEAR(centre / dark, place / 15.0 * ratio, 0.51);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Scales, SharpLines, ::testing::Values(1.0, 1.25, 1.5, 2.0, 3.0));

TEST(Drawing, VectorsKeepTheirExactPlaces) {
  Drawing drawing;
  drawing.Line(Role::kStaffLine, kBlackInk, {0, 304}, {900, 304});
  QBuffer buffer;
  QSvgGenerator vectors;
  vectors.setOutputDevice(&buffer);
  vectors.setSize({60, 60});
  QPainter painter(&vectors);
  drawing.Replay(painter);
  painter.end();
  const QString text = QString::fromUtf8(buffer.data());
  EXPECT_TRUE(text.contains(QStringLiteral("20.2667"))) << text.toStdString();
}

TEST(Drawing, ATurnedOrMirroredPainterIsDrawnWithoutWholePixels) {
  Drawing drawing;
  drawing.Line(Role::kStaffLine, kBlackInk, {0, 300}, {900, 300});
  QImage image(60, 60, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.translate(40, 0);
  painter.rotate(90);
  drawing.Replay(painter);
  painter.end();
  EXPECT_LT(image.pixelColor(19, 30).lightness() + image.pixelColor(20, 30).lightness(), 400);
}

TEST(Drawing, AScaleOfItsOwnEnlargesEverything) {
  Drawing drawing;
  drawing.SetPenWidth(2);
  drawing.Circle(Role::kNoteHead, kBlackInk, {100, 100}, 50, true);
  QImage image(60, 60, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  drawing.Replay(painter, 0.3);
  painter.end();
  EXPECT_EQ(image.pixelColor(30, 30), QColor(Qt::black));
  EXPECT_EQ(image.pixelColor(30 - 18, 30), QColor(Qt::black)) << "15 of the radius, 4 of the pen";
  EXPECT_EQ(image.pixelColor(30 - 21, 30), QColor(Qt::white));
}

TEST(Drawing, APathKeepsItsPlaceAndThePainterItsState) {
  Drawing drawing;
  QPainterPath square;
  square.addRect(150, 150, 150, 150);
  drawing.Path(Role::kClef, kRedInk, square, true);
  QImage image(60, 60, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.translate(5, 5);
  const QTransform before = painter.transform();
  drawing.Replay(painter);
  EXPECT_EQ(painter.transform(), before);
  painter.end();
  EXPECT_EQ(image.pixelColor(16, 16), QColor(Qt::red));
  EXPECT_EQ(image.pixelColor(13, 13), QColor(Qt::white));
  EXPECT_EQ(image.pixelColor(26, 26), QColor(Qt::white));
}

int DarkColumns(const QImage& image, int from) {
  int columns = 0;
  for (int x = from; x < image.width(); ++x)
    for (int y = 0; y < image.height(); ++y)
      if (image.pixelColor(x, y).lightness() < 128) {
        ++columns;
        break;
      }
  return columns;
}

TEST(Drawing, ATextThatFindsNoRoomEndsWithinIt) {
  const Lettering letters{QStringLiteral("Times New Roman"), 12.0, false};
  for (const double room : {0.0, 60 * 15.0}) {
    Drawing drawing;
    drawing.Text(Role::kHeading, kBlackInk, {0, 0}, QStringLiteral("A heading that is much too long"),
                 letters, room);
    EXPECT_EQ(DarkColumns(Replayed(drawing, {200, 30}, 1.0), 62) == 0, room > 0.0);
  }
}

TEST(Drawing, ATextStandsBelowItsTopLeftCorner) {
  const Lettering letters{QStringLiteral("Ariel"), 12.0, true};
  Drawing drawing;
  drawing.Text(Role::kTimeSignature, kBlackInk, {300, 300}, QStringLiteral("4"), letters);
  const QImage image = Replayed(drawing, {80, 80}, 1.0);
  QRect ink;
  for (int y = 0; y < 80; ++y)
    for (int x = 0; x < 80; ++x)
      if (image.pixelColor(x, y).lightness() < 128) ink |= QRect(x, y, 1, 1);
  EXPECT_GE(ink.left(), 20);
  EXPECT_GE(ink.top(), 20);
  EXPECT_GE(ink.height(), 9);
  EXPECT_LE(ink.bottom(), 20 + 24);
}

TEST(Drawing, AChangeIsToldOnceUntilTheNextReplay) {
  Drawing drawing;
  int told = 0;
  drawing.SetChanged([&told] { ++told; });
  drawing.Line(Role::kStem, kBlackInk, {}, {1, 1});
  drawing.Line(Role::kStem, kBlackInk, {}, {1, 1});
  drawing.Clear();
  EXPECT_EQ(told, 1);
  Replayed(drawing, {10, 10}, 1.0);
  drawing.Clear();
  EXPECT_EQ(told, 2);
}

}  // namespace
}  // namespace zelmar
