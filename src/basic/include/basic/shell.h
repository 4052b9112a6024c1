// Starting other programs. One source file for Windows, one for other machines.
#pragma once

#include <basic/text.h>

namespace quardele::basic {

/// Starts a program, with a normal window that gets the focus, and returns at once; nobody waits for its end.
/// The command line starts with the program's Windows path, which may stand in double quotes; without them
/// the shortest beginning that names a file is the program, so that blanks in its path do no harm. What
/// follows reaches the program as it stands on Windows; elsewhere it is taken apart at blanks that stand
/// outside double quotes, which are dropped, as a program of Windows takes its own command line apart. Throws
/// RuntimeError 53 when there is no such program, 76 for a drive that the table lacks, 5 for a file that
/// cannot be run.
void Shell(TextView commandLine);

}  // namespace quardele::basic
