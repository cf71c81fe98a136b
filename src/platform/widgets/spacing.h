// The one scale of distances, in pixels at scale 1. Layouts use these and no other.
#pragma once

namespace zelmar::spacing {

inline constexpr int kHair = 2;
inline constexpr int kTight = 4;
inline constexpr int kSmall = 8;
inline constexpr int kMedium = 12;
inline constexpr int kLarge = 16;
inline constexpr int kWide = 24;
inline constexpr int kHuge = 40;

}  // namespace zelmar::spacing
