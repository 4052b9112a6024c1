// A Windows program gets its arguments as one line, which it takes apart itself.
#pragma once

#include <vector>

#include <basic/text.h>

namespace quardele::basic {

/// The arguments behind the program's name, by the rules that Microsoft documents for the C runtime: blanks
/// part them, quotation marks keep blanks together, two marks within marks are one of the text, and
/// backslashes count by halves where a mark follows them. The system's own function for it
/// (CommandLineToArgvW) lies in a library whose loading takes longer than a short command.
[[nodiscard]] std::vector<Text> SplitCommandLine(TextView line);

}  // namespace quardele::basic
