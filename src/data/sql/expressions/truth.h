// Three-valued logic: what a condition can come to.
#pragma once

#include <algorithm>
#include <cstdint>

namespace quardele::sql {

/// In this order AND is the minimum and OR the maximum.
enum class Truth : std::uint8_t { False, Unknown, True };

[[nodiscard]] constexpr Truth TruthOf(bool value) {
    return value ? Truth::True : Truth::False;
}

[[nodiscard]] constexpr Truth Not(Truth value) {
    return static_cast<Truth>(static_cast<int>(Truth::True) - static_cast<int>(value));
}
[[nodiscard]] constexpr Truth And(Truth left, Truth right) {
    return std::min(left, right);
}
[[nodiscard]] constexpr Truth Or(Truth left, Truth right) {
    return std::max(left, right);
}

[[nodiscard]] constexpr Truth Eqv(Truth left, Truth right) {
    if (left == Truth::Unknown || right == Truth::Unknown) {
        return Truth::Unknown;
    }
    return TruthOf(left == right);
}
[[nodiscard]] constexpr Truth Xor(Truth left, Truth right) {
    return Not(Eqv(left, right));
}
[[nodiscard]] constexpr Truth Imp(Truth left, Truth right) {
    return Or(Not(left), right);
}

}  // namespace quardele::sql
