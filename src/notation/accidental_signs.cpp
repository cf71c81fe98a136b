#include "notation/accidental_signs.h"

#include <span>

namespace zelmar {

namespace {

// The strokes in line gaps from the note.
struct Stroke {
  double pen_width;
  double from_x;
  double from_y;
  double to_x;
  double to_y;
};

constexpr Stroke kNaturalStrokes[] = {
    {2, -1.0, -0.8, -1.0, 1.1},
    {2, -1.5, -1.6, -1.5, 0.3},
    {4, -1.5, 0.3, -1.0, 0.1},
    {4, -1.5, -0.6, -1.0, -0.8},
};

constexpr Stroke kSharpStrokes[] = {
    {2, -1.0, -1.0, -1.0, 0.8},
    {2, -1.5, -0.8, -1.5, 1.0},
    {3, -1.7, -0.25, -0.8, -0.5},
    {3, -1.7, 0.5, -0.8, 0.25},
};

// An upright, and a bowl that swells to the right and comes back to its foot. It is narrow, so that the last
// flat of a key stands clear of the time signature.
constexpr Stroke kFlatStrokes[] = {
    {2, -1.2, -1.6, -1.2, 0.5},        {1.5, -1.2, -0.2, -1.05, -0.4},   {1.5, -1.05, -0.4, -0.92, -0.36},
    {1.5, -0.92, -0.36, -0.88, -0.12}, {1.5, -0.88, -0.12, -0.97, 0.16}, {1.5, -0.97, 0.16, -1.2, 0.5},
};

std::span<const Stroke> StrokesOf(Role sign) {
  if (sign == Role::kSharp) return kSharpStrokes;
  if (sign == Role::kFlat) return kFlatStrokes;
  return kNaturalStrokes;
}

}  // namespace

void DrawSign(Drawing& staff, Role sign, const QPointF& note, double line_gap) {
  for (const Stroke& stroke : StrokesOf(sign)) {
    staff.SetPenWidth(stroke.pen_width);
    staff.Line(sign, kBlueInk, note + QPointF(stroke.from_x, stroke.from_y) * line_gap,
               note + QPointF(stroke.to_x, stroke.to_y) * line_gap);
  }
  staff.SetPenWidth(kStemPen);
}

}  // namespace zelmar
