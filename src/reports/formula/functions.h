// The functions of formulas.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include <formula/formula.h>

namespace quardele::formula {

using Arguments = std::span<const Variant>;

struct Function {
    TextView name;
    std::size_t least = 0;  ///< arguments
    std::size_t most = 0;
    Variant (*apply)(Arguments arguments) = nullptr;
    /// Others give Null as soon as an argument is Null.
    bool takesNull = false;
};

/// A function by name, case ignored; null when there is none.
[[nodiscard]] const Function* FindFunction(TextView name);

// The tables, by subject.
[[nodiscard]] std::span<const Function> TextFunctions();
[[nodiscard]] std::span<const Function> NumberFunctions();
[[nodiscard]] std::span<const Function> DateFunctions();

/// The text of an argument; throws 13 for another type.
[[nodiscard]] const Text& TextIn(const Variant& value);

}  // namespace quardele::formula
