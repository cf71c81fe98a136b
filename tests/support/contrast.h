// How far two colours stand apart for the eye.
#pragma once

#include <QColor>
#include <algorithm>
#include <cmath>

namespace zelmar {

// The relative luminance of WCAG 2, 0 (black) to 1 (white).
inline double Luminance(const QColor& colour) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

// The contrast ratio of WCAG 2, from 1 to 21.
inline double Contrast(const QColor& a, const QColor& b) {
  const auto [darker, lighter] = std::minmax({Luminance(a), Luminance(b)});
  return (lighter + 0.05) / (darker + 0.05);
}

}  // namespace zelmar
