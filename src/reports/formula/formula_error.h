// The errors of formulas.
#pragma once

#include <cstddef>

#include <basic/runtime_error.h>
#include <basic/text.h>

namespace quardele::formula {

using basic::Text;
using basic::TextView;

namespace error {
using namespace basic::error;
inline constexpr int kTooComplex = 3360;
}  // namespace error

/// Throws 3075: what is wrong, and the place in the formula (UTF-16 units from 0).
[[noreturn]] void FailSyntax(TextView reason, TextView formula, std::size_t position);
/// Throws 3085 with the name of the function.
[[noreturn]] void FailUnknownFunction(TextView name);

}  // namespace quardele::formula
