#include "notation/ctl_quil_staff.h"

namespace zelmar {

void CtlQuilStaff::ThisTune_Ticked() {}

void CtlQuilStaff::Rewind() {}

void CtlQuilStaff::AddBar() {}

}  // namespace zelmar
