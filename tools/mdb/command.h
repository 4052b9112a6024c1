// The commands of the program, as a table: all that the parser, the help and the manual test know of them.
#pragma once

#include <span>
#include <string_view>

#include "session.h"

namespace quardele::mdb {

struct Command {
    const char* name;
    Message operands;  ///< as the help writes them
    std::size_t leastOperands;
    std::size_t mostOperands;
    std::span<const Option> options;
    Message summary;  ///< one line
    Message help;     ///< what more there is to say; may have several lines
    /// Does the work and returns the exit code. Throws Failure or basic::RuntimeError.
    int (*run)(const Arguments& arguments, Session& session);
};

[[nodiscard]] std::span<const Command> Commands();
/// Null when there is none of this name.
[[nodiscard]] const Command* FindCommand(std::string_view name);

}  // namespace quardele::mdb
