// Brings back the unsaved tunes of programs that ended before they were saved.
#pragma once

namespace zelmar {

class RecoveryKeeper;

// Asks about each recovery file whose program is gone, the newest first, until one is brought back: Yes makes
// it the current tune, unsaved and with its FileName, No removes the file, Cancel leaves it for the next
// start. A file that cannot be read is told of and set aside under another name. To be called once the main
// window stands; without a file it costs a look into two folders.
void OfferWhatWasLeft(RecoveryKeeper& keeper);

}  // namespace zelmar
