// A recorded drawing: the list of primitives of a staff or a strip of words, in twips (1440 to the inch).
//
// The widget, the printer and a test replay or read the same list. Pen widths are pixels at 96 dots to the
// inch, 15 twips each. A colour is a number with blue in the high byte.
#pragma once

#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <cstdint>
#include <functional>
#include <vector>

#include "notation/lettering.h"
#include "notation/twips.h"

class QPainter;

namespace zelmar {

using InkColour = std::uint32_t;
inline constexpr InkColour kBlackInk = 0;
inline constexpr InkColour kRedInk = 255;
inline constexpr InkColour kBlueInk = 0xFF0000;

// Pen widths. A beam goes on to the far sides of the stems that it joins.
inline constexpr double kLinePen = 1.0;  // of staff and ledger lines
inline constexpr double kStemPen = 2.0;
inline constexpr double kNotePen = 3.0;  // of heads, beams and rests
inline constexpr double kBarLinePen = 4.0;

// What a primitive stands for.
enum class Role : std::uint8_t {
  kStaffLine,
  kBarLine,
  kClef,
  kTimeSignature,
  kSharp,
  kFlat,
  kNatural,
  kNoteHead,
  kStem,
  kFlag,
  kBeam,
  kDot,
  kTie,
  kLedgerLine,
  kWholeBarRest,
  kMinimRest,
  kCrotchetRest,
  kQuaverRest,
  kSemiquaverRest,
  kHeading,
  kBarNumber,  // of the first staff, under its heading
  kWord,
};

enum class Shape : std::uint8_t { kLine, kCircle, kArc, kText, kPath };

struct Primitive {
  Shape shape = Shape::kLine;
  Role role = Role::kStaffLine;
  bool filled = false;  // a disc, or a path without an outline
  InkColour colour = kBlackInk;
  double pen_width = 1.0;
  QPointF from;              // start of a line; centre of a circle or an arc; top left corner of a text
  QPointF to;                // end of a line
  double radius = 0.0;       // of an arc, half its width
  double room = 0.0;         // for a text; 0 for no limit
  double start_angle = 0.0;  // radians, counter-clockwise from the right
  double end_angle = 0.0;
  double aspect = 1.0;    // height over width of an arc
  std::size_t index = 0;  // of the text or the path in the drawing
};

class Drawing {
 public:
  void Clear();

  // Pen and role of what is drawn next.
  void SetPenWidth(double width) { pen_width_ = width; }
  double PenWidth() const { return pen_width_; }

  void Line(Role role, InkColour colour, QPointF from, QPointF to);
  // Gives the line at that place among the primitives another end.
  void MoveEnd(std::size_t place, QPointF to);
  // Gives the text at that place at most so much room, in twips.
  void Confine(std::size_t place, double room);
  void Circle(Role role, InkColour colour, QPointF centre, double radius, bool filled);
  // From `start` to `end`, radians counter-clockwise. An aspect below 1 flattens it: the radius is the half
  // width.
  void Arc(Role role, InkColour colour, QPointF centre, double radius, double start, double end,
           double aspect);
  // A text that finds less than `room` twips to its right is narrowed as its lettering allows, and ends in
  // dots where that is not enough; 0 for no limit. Blanks at its head keep their width.
  void Text(Role role, InkColour colour, QPointF top_left, const QString& text, const Lettering& lettering,
            double room = 0.0);
  // A filled path, or its outline under the pen.
  void Path(Role role, InkColour colour, const QPainterPath& path, bool filled);

  const std::vector<Primitive>& Primitives() const { return primitives_; }
  const QString& TextOf(const Primitive& primitive) const { return texts_[primitive.index].text; }
  const Lettering& LetteringOf(const Primitive& primitive) const { return texts_[primitive.index].lettering; }
  const QPainterPath& PathOf(const Primitive& primitive) const { return paths_[primitive.index]; }

  // A box in twips that holds all that is painted for the primitive. Of a text, its letters.
  QRectF BoxOf(const Primitive& primitive) const;

  // Paints everything, antialiased, at `scale` units of the painter to the twip. Upright and level lines are
  // put on whole pixels where the painter has pixels. The ends of a beam are upright and flush with its
  // stems; a bar line keeps to the left of its place, so that the edge of the surface cuts nothing off it.
  void Replay(QPainter& painter, double scale = 1.0 / kTwipsPerPixel) const;

  // Called at the first change after a replay.
  void SetChanged(std::function<void()> changed) { changed_ = std::move(changed); }

 private:
  struct RecordedText {
    QString text;
    Lettering lettering;
  };

  Primitive& Append(Shape shape, Role role, InkColour colour);
  void NoteChange();

  std::vector<Primitive> primitives_;
  std::vector<RecordedText> texts_;
  std::vector<QPainterPath> paths_;
  double pen_width_ = 1.0;
  std::function<void()> changed_;
  mutable bool announced_ = false;
};

// Downward to the right; 0 for an upright line.
double SlopeOf(const Primitive& line);

// How much longer the upright end of a slanted beam is than its pen is wide. A very steep one grows thinner,
// or its ends would be spikes.
double UprightShare(double slope);

}  // namespace zelmar
