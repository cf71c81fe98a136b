// The two forms of the palette.
#pragma once

namespace zelmar {

enum class ColourScheme { kLight, kDark };

}  // namespace zelmar
