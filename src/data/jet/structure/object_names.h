// Names of tables, columns and indexes.
#pragma once

#include <basic/text.h>

namespace quardele::jet {

/// Throws 3125 for a name that is empty, longer than 64 units, starts with a blank or has a control character
/// or one of . ! ` [ ] in it.
void CheckName(basic::TextView name);

}  // namespace quardele::jet
