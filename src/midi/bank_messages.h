// Whether bank controller messages are held back, kept from run to run.
#pragma once

namespace zelmar {

// What was kept at the end of the last choice; false when nothing was. Nothing is known of it before there is
// an application object.
bool KeptBankSuppression();

// Gives false when it cannot be saved.
bool KeepBankSuppression(bool suppress);

}  // namespace zelmar
