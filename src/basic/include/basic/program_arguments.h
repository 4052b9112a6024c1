// The words that the program was called with.
#pragma once

#include <string>
#include <vector>

namespace quardele::basic {

/// The arguments behind the program's name, in UTF-8. On Windows main gets them in the system's code page,
/// where many names have no place: there they are taken from the system itself. Elsewhere they are the bytes
/// that main got, whatever these are.
[[nodiscard]] std::vector<std::string> ProgramArguments(int argc, char** argv);

}  // namespace quardele::basic
