// Finding and opening the databases at start-up.
#pragma once

namespace quardele::shell {

/// Finds the path database beside the current folder, opens the data database into the session and checks
/// that it carries the program's version. Ends the process when the path database, the entry of the data
/// database or the version is not there; any other failure shows a box and leaves open what was opened.
void CONTROL_APPLI();

}  // namespace quardele::shell
