// The transport bar that the keys and commands of the main window reach.
#pragma once

namespace zelmar {

class PlayBar;

// The transport bar of the child window in front; null when that has none.
PlayBar* ActivePlayBar();

}  // namespace zelmar
