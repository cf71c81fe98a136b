#include "midi/prior_controls.h"

#include <algorithm>
#include <bitset>

#include "midi/midi_numbers.h"
#include "midi/played_events.h"

namespace zelmar {

std::vector<std::shared_ptr<Tone>> PriorControls(const Tones& tones, std::int16_t start_bar) {
  constexpr int kTypes = 256;
  std::bitset<static_cast<std::size_t>(kChannelCount * kTypes)> found;
  std::vector<std::shared_ptr<Tone>> controls;
  qsizetype place = 1;
  while (place <= tones.Count() && tones.Item(place)->Bar() < start_bar) ++place;
  while (--place > 0) {
    const std::shared_ptr<Tone>& tone = tones.Item(place);
    const EventType type = tone->EventType();
    if (type != PITCH_BEND && !IsPlayedController(type)) continue;
    if (tone->Channel() < 1 || tone->Channel() > kChannelCount) continue;
    auto entry = found[static_cast<std::size_t>((tone->Channel() - 1) * kTypes + type)];
    if (entry) continue;
    entry = true;
    controls.push_back(tone);
  }
  std::reverse(controls.begin(), controls.end());
  return controls;
}

}  // namespace zelmar
