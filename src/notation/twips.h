// The units of drawings: 1440 twips to the inch, on a screen of 96 dots to the inch.
#pragma once

namespace zelmar {

inline constexpr double kTwipsPerPixel = 15.0;
inline constexpr double kTwipsPerPoint = 20.0;

}  // namespace zelmar
