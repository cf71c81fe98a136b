// The window that tells about the tune that is being heard, as the transport bar knows it: it stands higher
// in the house, and says itself how it is put out of sight.
#pragma once

#include <functional>

namespace zelmar {

// What Stop does with that window; an empty function for none.
void SetNowListeningHider(std::function<void()> hide);

// Puts the window out of sight with its tune; nothing where there is none.
void HideNowListening();

}  // namespace zelmar
