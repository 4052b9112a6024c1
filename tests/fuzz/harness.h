// A fuzz target: a use of the engine that takes any bytes. Two drivers feed it, libFuzzer for long runs and
// one of our own that makes the same inputs every time for short ones.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include <basic/runtime_error.h>

namespace quardele::fuzz {

using Bytes = std::vector<std::uint8_t>;
using BytesView = std::span<const std::uint8_t>;

/// Uses an input in the target's way. basic::RuntimeError is the only exception that may leave it; anything
/// else is a finding.
void Use(BytesView input);

/// Inputs to begin with; at least one.
[[nodiscard]] std::vector<Bytes> Seeds();

/// Does something that may end in a RuntimeError, and goes on all the same.
template <class Action>
void Attempt(const Action& action) {
    try {
        action();
    } catch (const basic::RuntimeError&) {
        return;
    }
}

}  // namespace quardele::fuzz
