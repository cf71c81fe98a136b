// Letters of a drawing, and a text in them as it is fitted into its room.
#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QPointF>
#include <QRectF>
#include <QString>

namespace zelmar {

// A face, its height in points and its weight. Where the face is not installed, one of the same widths is
// looked for.
struct Lettering {
  QString face;
  double points = 0.0;
  bool bold = false;
  double narrowest =
      1.0;  // share of their width down to which letters are narrowed that find too little room
  bool operator==(const Lettering&) const = default;
};

// A text as it is written at `scale` units of a painter to the twip. A text that finds less than `room` twips
// is narrowed as its lettering allows, and ends in dots where that is not enough; 0 for no limit. Blanks at
// its head keep their width.
class WrittenText {
 public:
  WrittenText(const QString& text, const Lettering& lettering, QPointF top_left, double room, double scale);

  // To be written from Start on, the left end of the base line, once the painter is stretched by these.
  const QString& Letters() const { return letters_; }
  const QFont& Font() const { return font_; }
  QPointF Start() const { return start_; }
  double StretchAcross() const { return across_; }
  double StretchDown() const { return down_; }
  // The box about the letters, in units of the painter.
  QRectF Box() const;

 private:
  void FitInto(double room, double narrowest);

  QFont font_;
  QFontMetricsF metrics_;
  QString letters_;
  QPointF start_;
  double across_;
  double down_;
};

// Width of the text in twips, where it finds room.
double TextWidth(const QString& text, const Lettering& lettering);

// The box in twips about the letters of a text with its top left corner there.
QRectF BoxOfText(const QString& text, const Lettering& lettering, QPointF top_left, double room);

}  // namespace zelmar
