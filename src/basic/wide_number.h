// Whole numbers of 256 bits: what products of decimals and decimals of equal scales need.
#pragma once

#include <array>
#include <compare>
#include <cstdint>

namespace quardele::basic {

class WideNumber {
 public:
    WideNumber() = default;
    explicit WideNumber(std::uint64_t value);
    /// From 32-bit groups, the most significant first.
    explicit WideNumber(const std::array<std::uint32_t, 4>& groups);
    [[nodiscard]] static WideNumber PowerOfTen(int exponent);

    [[nodiscard]] bool IsZero() const;
    [[nodiscard]] bool IsOdd() const { return (groups_[0] & 1) != 0; }
    /// The lowest 128 bits, the most significant group first.
    [[nodiscard]] std::array<std::uint32_t, 4> LowGroups() const;

    /// All bytes, the most significant first.
    [[nodiscard]] std::array<std::uint8_t, 32> Bytes() const;

    // The results must fit: callers keep numbers within 28 digits before they combine them.
    void Add(const WideNumber& other);
    /// `other` must not be greater.
    void Subtract(const WideNumber& other);
    void MultiplyBy(std::uint32_t factor);
    [[nodiscard]] WideNumber Times(const WideNumber& other) const;
    /// Divides and returns the remainder.
    std::uint32_t DivideBy(std::uint32_t divisor);

    friend std::strong_ordering operator<=>(const WideNumber& left, const WideNumber& right);
    friend bool operator==(const WideNumber& left, const WideNumber& right) = default;

 private:
    std::array<std::uint32_t, 8> groups_{};  ///< the least significant first
};

}  // namespace quardele::basic
