// The functions that expressions can call, but for those that leave some arguments unread (IIf, Switch,
// Choose), which the compiler knows.
#pragma once

#include <cstddef>
#include <span>

#include <basic/variant.h>

#include "expressions/types.h"

namespace quardele::sql {

/// The values of a call; owned by the caller.
using Arguments = std::span<const Variant* const>;

struct Function {
    enum class Nulls { Spread, Taken };
    /// Fixed: `type` always. FirstNumber: the first argument's type when that is one of numbers, else `type`.
    /// Common: what all arguments have in common.
    enum class Result { Fixed, FirstNumber, Common };

    TextView name;
    std::size_t least;  ///< number of arguments
    std::size_t most;
    StaticType type;
    Variant (*call)(Arguments);
    /// Spread: a Null among the arguments makes the result Null without a call.
    Nulls nulls = Nulls::Spread;
    Result result = Result::Fixed;
    /// Whether equal arguments give equal results at any time.
    bool pure = true;
};

inline constexpr std::size_t kMostArguments = 6;

/// A function by name, case ignored; null when there is none.
[[nodiscard]] const Function* FindFunction(TextView name);

// The parts of the table.
[[nodiscard]] std::span<const Function> TextFunctions();
[[nodiscard]] std::span<const Function> NumberFunctions();
[[nodiscard]] std::span<const Function> DateFunctions();

}  // namespace quardele::sql
