#include "notation/piano_layout.h"

#include <array>
#include <cmath>

namespace zelmar {

namespace {

constexpr int kWhiteInAnOctave = 7;
constexpr double kBlackWidth = 0.5;
constexpr double kBlackHeight = 9.0 / 14.0;

struct KeyOfOctave {
  bool black;
  double left;  // in widths of a white key, from the left of the octave's C
};

// The two black keys between C and E leave three equal tails of white keys beside them, and the three between
// F and B leave four: so the outer ones of each group stand away from its middle.
constexpr double kTailOfThree = (3.0 - 2.0 * kBlackWidth) / 3.0;
constexpr double kTailOfFour = (4.0 - 3.0 * kBlackWidth) / 4.0;
constexpr std::array<KeyOfOctave, kPianoKeysInAnOctave> kOctave = {{
    {false, 0.0},
    {true, kTailOfThree},
    {false, 1.0},
    {true, 2.0 * kTailOfThree + kBlackWidth},
    {false, 2.0},
    {false, 3.0},
    {true, 3.0 + kTailOfFour},
    {false, 4.0},
    {true, 3.0 + 2.0 * kTailOfFour + kBlackWidth},
    {false, 5.0},
    {true, 3.0 + 3.0 * kTailOfFour + 2.0 * kBlackWidth},
    {false, 6.0},
}};

const KeyOfOctave& PlaceInOctave(int index) {
  return kOctave[static_cast<std::size_t>(index % kPianoKeysInAnOctave)];
}

}  // namespace

bool IsBlackPianoKey(int index) {
  return PlaceInOctave(index).black;
}

int PianoKeyCount(int white_keys) {
  // The black keys among the white ones that are left over from whole octaves.
  constexpr std::array<int, kWhiteInAnOctave> kBlackOfRest = {0, 0, 1, 2, 2, 3, 4};
  return white_keys + 5 * (white_keys / kWhiteInAnOctave) +
         kBlackOfRest[static_cast<std::size_t>(white_keys % kWhiteInAnOctave)];
}

PianoLayout::PianoLayout(int white_keys, QSizeF size, double scale)
    : keys_(PianoKeyCount(white_keys)),
      white_width_(size.width() / white_keys),
      height_(size.height()),
      scale_(scale) {}

double PianoLayout::OnPixel(double value) const {
  return std::round(value * scale_) / scale_;
}

double PianoLayout::LeftOf(int index) {
  return kWhiteInAnOctave * (index / kPianoKeysInAnOctave) + PlaceInOctave(index).left;
}

QRectF PianoLayout::KeyRect(int index) const {
  const bool black = IsBlackPianoKey(index);
  const double left = OnPixel(LeftOf(index) * white_width_);
  const double right = OnPixel((LeftOf(index) + (black ? kBlackWidth : 1.0)) * white_width_);
  return {left, 0.0, right - left, OnPixel(black ? height_ * kBlackHeight : height_)};
}

int PianoLayout::KeyAt(QPointF place) const {
  int found = -1;
  for (int index = 0; index < keys_; ++index) {
    const QRectF key = KeyRect(index);
    const bool inside = place.x() >= key.left() && place.x() < key.right() && place.y() >= key.top() &&
                        place.y() < key.bottom();
    if (inside && (found < 0 || IsBlackPianoKey(index))) found = index;
  }
  return found;
}

}  // namespace zelmar
