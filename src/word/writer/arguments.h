// The arguments of a late-bound call.
#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include <automation/object.h>

namespace quardele::word::writer {

using automation::NamedArgument;
using automation::ObjectPtr;
using automation::Value;
using basic::Text;
using basic::TextView;

/// A value as a truth, converted as the Basic runtime does.
[[nodiscard]] bool Truth(const Value& value);

/// Each argument has a position (0-based) and a name; a call gives it by either. Valid during the call only.
class Arguments {
 public:
    Arguments() = default;
    Arguments(std::span<const Value> positional, std::span<const NamedArgument> named)
        : positional_(positional), named_(named) {}

    [[nodiscard]] bool IsEmpty() const { return positional_.empty() && named_.empty(); }
    /// Null when the argument is left out.
    [[nodiscard]] const Value* Find(std::size_t position, TextView name) const;
    /// The argument converted as the Basic runtime does; throws 449 when it is left out without a fallback.
    [[nodiscard]] Text TextAt(std::size_t position, TextView name) const;
    [[nodiscard]] int IntegerAt(std::size_t position, TextView name, std::optional<int> fallback = {}) const;
    [[nodiscard]] bool TruthAt(std::size_t position, TextView name, bool fallback) const;

 private:
    [[nodiscard]] const Value& Require(std::size_t position, TextView name) const;

    std::span<const Value> positional_;
    std::span<const NamedArgument> named_;
};

}  // namespace quardele::word::writer
