// The workstation's local parameters.
#pragma once

namespace quardele::shell {

/// Reads quardele.ini of the parent of the current folder into the session. A missing file leaves the
/// defaults; a failure shows a box and keeps what was read so far.
void Init_Params_Locaux();

}  // namespace quardele::shell
