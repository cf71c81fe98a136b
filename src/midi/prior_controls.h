// What a playing that begins later in a tune finds set: the controllers and pitch bends before its first bar.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "model/tones.h"

namespace zelmar {

// Of each channel from 1 to 16 the last event of each controller that playback sends, and its last pitch
// bend, that stand before the first event of `start_bar` or a later bar: in their order, so that what resets
// others does so here too.
std::vector<std::shared_ptr<Tone>> PriorControls(const Tones& tones, std::int16_t start_bar);

}  // namespace zelmar
