// Where the keys of a piano keyboard lie. Keys are counted from 0, which is a C; half a white key's width is
// that of a black one.
#pragma once

#include <QRectF>
#include <QSizeF>

namespace zelmar {

inline constexpr int kMostPianoKeys = 53;
inline constexpr int kPianoKeysInAnOctave = 12;

bool IsBlackPianoKey(int index);

// Number of keys, white and black, of a keyboard with so many white ones.
int PianoKeyCount(int white_keys);

// The keys of one keyboard at one size. Edges lie on whole pixels of a screen of that scale.
class PianoLayout {
 public:
  PianoLayout(int white_keys, QSizeF size, double scale = 1.0);

  QRectF KeyRect(int index) const;
  // The key at a place, black ones lying over white ones; -1 for none.
  int KeyAt(QPointF place) const;

 private:
  double OnPixel(double value) const;
  // Left edge of a key in widths of a white key.
  static double LeftOf(int index);

  int keys_;
  double white_width_;
  double height_;
  double scale_;
};

}  // namespace zelmar
