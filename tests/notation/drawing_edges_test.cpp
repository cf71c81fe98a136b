// How strokes end when they are painted: beams at their stems, bar lines at the edge of the surface, and no
// stroke outside its box.
#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "notation/ink.h"

namespace zelmar {
namespace {

constexpr double kScales[] = {1.0, 1.25, 1.5, 2.0, 3.0};

QImage Replayed(const Drawing& drawing, QSize size, double ratio, QPointF origin = {}) {
  QImage image(size * ratio, QImage::Format_RGB32);
  image.setDevicePixelRatio(ratio);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.translate(origin);
  drawing.Replay(painter);
  return image;
}

// Rows of the column that are more than half covered.
int InkOfColumn(const QImage& image, int x) {
  int ink = 0;
  for (int y = 0; y < image.height(); ++y) ink += IsInk(image, x, y) ? 1 : 0;
  return ink;
}

struct Columns {
  int first = -1;
  int last = -1;
};

Columns ColumnsOf(const QImage& image) {
  Columns columns;
  for (int x = 0; x < image.width(); ++x) {
    if (InkOfColumn(image, x) == 0) continue;
    if (columns.first < 0) columns.first = x;
    columns.last = x;
  }
  return columns;
}

// --- Beams ---

void Stem(Drawing& drawing, double x) {
  drawing.SetPenWidth(2);
  drawing.Line(Role::kStem, kBlackInk, {x, 450}, {x, 300});
}

void Beam(Drawing& drawing, QPointF from, QPointF to) {
  drawing.SetPenWidth(3);
  drawing.Line(Role::kBeam, kBlackInk, from, to);
}

TEST(BeamEnds, TheirEndsAreUprightAndFlushWithTheirStems) {
  for (const double scale : kScales) {
    for (const double rise : {-120.0, -37.0, 0.0, 20.0, 150.0}) {
      for (const double left : {150.0, 154.0, 158.5}) {
        SCOPED_TRACE(testing::Message() << scale << " rise " << rise << " from " << left);
        const double right = left + 303.0;
        Drawing stems, beam;
        Stem(stems, left);
        Stem(stems, right);
        Beam(beam, {left, 400}, {right, 400 + rise});
        const QImage picture = Replayed(beam, {60, 60}, scale);
        const Columns of_stems = ColumnsOf(Replayed(stems, {60, 60}, scale));
        const Columns of_beam = ColumnsOf(picture);
        EXPECT_EQ(of_beam.first, of_stems.first);
        EXPECT_EQ(of_beam.last, of_stems.last);
        // As thick at its ends as in its middle.
        const int middle = InkOfColumn(picture, (of_beam.first + of_beam.last) / 2);
        EXPECT_NEAR(InkOfColumn(picture, of_beam.first), middle, 1);
        EXPECT_NEAR(InkOfColumn(picture, of_beam.last), middle, 1);
        EXPECT_GE(middle, std::floor(3.0 * scale));
      }
    }
  }
}

TEST(BeamEnds, AVerySteepOneHasNoSpikes) {
  Drawing beam;
  Beam(beam, {150, 100}, {200, 700});
  const QImage picture = Replayed(beam, {60, 60}, 3.0);
  for (int x = 0; x < picture.width(); ++x)
    EXPECT_LE(InkOfColumn(picture, x), 3 * 3 * 2.5 + 12.0 + 3) << "the beam, and what it rises in a column";
}

// --- Bar lines ---

TEST(BarLineEdges, TheyAreEquallyThickAndWholeWhereverTheirStaffStands) {
  constexpr int kNearly = 5;       // levels: places are rounded
  constexpr double kWidth = 40.0;  // of the staff, in pixels at scale 1
  for (const double scale : kScales) {
    std::set<int> widths;
    for (double origin = 0.0; origin < 3.0; origin += 0.1) {
      SCOPED_TRACE(testing::Message() << scale << " at " << origin);
      Drawing drawing;
      drawing.SetPenWidth(4);
      drawing.Line(Role::kBarLine, kBlackInk, {kWidth * 15, 150}, {kWidth * 15, 600});
      const QImage picture = Replayed(drawing, {60, 60}, scale, {origin, 0.0});
      const int row = static_cast<int>(25 * scale);
      int width = 0;
      for (int x = 0; x < picture.width(); ++x) {
        const int grey = qGray(picture.pixel(x, row));
        EXPECT_TRUE(grey < kNearly || grey > 255 - kNearly) << x << ": " << grey;
        width += grey < kNearly ? 1 : 0;
        // Nothing lies beyond the edge of the surface, where it would be cut off.
        if (x + 1 > (kWidth + origin) * scale + 1e-6) {
          EXPECT_GT(grey, 255 - kNearly) << x;
        }
      }
      widths.insert(width);
    }
    EXPECT_EQ(widths, std::set<int>{static_cast<int>(std::lround(2.0 * scale))}) << scale;
  }
}

TEST(BarLineEdges, TheyReachOverTheOuterStaffLines) {
  Drawing drawing;
  for (const double y : {150.0, 600.0}) drawing.Line(Role::kStaffLine, kBlackInk, {0, y}, {600, y});
  const QRectF lines = InkOf(drawing, {900, 900});
  drawing.SetPenWidth(4);
  drawing.Line(Role::kBarLine, kBlackInk, {600, 150}, {600, 600});
  EXPECT_EQ(InkOf(drawing, {900, 900}).top(), lines.top());
  EXPECT_EQ(InkOf(drawing, {900, 900}).bottom(), lines.bottom());
}

// --- Boxes ---

TEST(PrimitiveBoxes, TheyHoldAllThatIsPainted) {
  constexpr double kPixel = 15.0 / 4.0;
  const auto expect_inside = [&](const Drawing& drawing, const char* what) {
    SCOPED_TRACE(what);
    const QRectF ink = InkOf(drawing, {1500, 1500});
    ASSERT_FALSE(ink.isNull());
    const QRectF box = drawing.BoxOf(drawing.Primitives()[0]);
    EXPECT_TRUE(box.adjusted(-kPixel, -kPixel, kPixel, kPixel).contains(ink))
        << ink.left() << " " << ink.top() << " to " << ink.right() << " " << ink.bottom();
    EXPECT_LT(box.width() - ink.width(), 150.0) << "and little more";
  };
  QPainterPath triangle(QPointF(300, 300));
  triangle.lineTo(700, 400);
  triangle.lineTo(400, 800);
  triangle.closeSubpath();
  for (const double pen : {1.0, 3.0, 4.0}) {
    for (const Role role : {Role::kFlag, Role::kSharp, Role::kBeam, Role::kStem, Role::kBarLine}) {
      for (const QPointF to :
           {QPointF(700, 500), QPointF(700, 1100), QPointF(400, 1100), QPointF(300, 900)}) {
        if (role == Role::kBarLine && to.x() != 300) continue;
        Drawing line;
        line.SetPenWidth(pen);
        line.Line(role, kBlackInk, {300, 600}, to);
        SCOPED_TRACE(testing::Message()
                     << static_cast<int>(role) << " pen " << pen << " to " << to.x() << ", " << to.y());
        expect_inside(line, "a line");
      }
    }
    Drawing circle, arc, path, disc;
    for (Drawing* drawing : {&circle, &arc, &path, &disc}) drawing->SetPenWidth(pen);
    circle.Circle(Role::kNoteHead, kBlackInk, {500, 500}, 200, false);
    disc.Circle(Role::kDot, kBlackInk, {500, 500}, 50, true);
    arc.Arc(Role::kTie, kBlackInk, {500, 700}, 200, 0.0, 3.14, 0.8);
    path.Path(Role::kClef, kBlackInk, triangle, true);
    expect_inside(circle, "a circle");
    expect_inside(disc, "a disc");
    expect_inside(arc, "an arc");
    expect_inside(path, "a path");
  }
}

}  // namespace
}  // namespace zelmar
