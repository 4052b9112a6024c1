// Runs of another length than those of every day.
#pragma once

#include <cstdlib>

namespace quardele::test {

/// A number of a test from the environment, or the usual one. Under wine, where processes start slowly, some
/// are smaller: CMakePresets.json says which.
[[nodiscard]] inline unsigned Setting(const char* name, unsigned usual) {
    const char* value = std::getenv(name);
    return value == nullptr ? usual : static_cast<unsigned>(std::strtoul(value, nullptr, 10));
}

}  // namespace quardele::test
