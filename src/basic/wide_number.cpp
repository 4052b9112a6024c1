#include "wide_number.h"

#include <algorithm>

namespace quardele::basic {
namespace {

constexpr int kGroupBits = 32;

}  // namespace

WideNumber::WideNumber(std::uint64_t value) {
    groups_[0] = static_cast<std::uint32_t>(value);
    groups_[1] = static_cast<std::uint32_t>(value >> kGroupBits);
}

WideNumber::WideNumber(const std::array<std::uint32_t, 4>& groups) {
    std::copy(groups.rbegin(), groups.rend(), groups_.begin());
}

WideNumber WideNumber::PowerOfTen(int exponent) {
    WideNumber power(1);
    for (int i = 0; i < exponent; ++i) {
        power.MultiplyBy(10);
    }
    return power;
}

bool WideNumber::IsZero() const {
    return *this == WideNumber();
}

std::array<std::uint32_t, 4> WideNumber::LowGroups() const {
    return {groups_[3], groups_[2], groups_[1], groups_[0]};
}

std::array<std::uint8_t, 32> WideNumber::Bytes() const {
    std::array<std::uint8_t, 32> bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const std::size_t fromEnd = bytes.size() - 1 - i;
        bytes[i] = static_cast<std::uint8_t>(groups_[fromEnd / 4] >> fromEnd % 4 * 8);
    }
    return bytes;
}

void WideNumber::Add(const WideNumber& other) {
    std::uint64_t carry = 0;
    for (std::size_t i = 0; i < groups_.size(); ++i) {
        carry += std::uint64_t{groups_[i]} + other.groups_[i];
        groups_[i] = static_cast<std::uint32_t>(carry);
        carry >>= kGroupBits;
    }
}

void WideNumber::Subtract(const WideNumber& other) {
    std::uint64_t borrow = 0;
    for (std::size_t i = 0; i < groups_.size(); ++i) {
        const std::uint64_t difference = std::uint64_t{groups_[i]} - other.groups_[i] - borrow;
        groups_[i] = static_cast<std::uint32_t>(difference);
        borrow = difference >> kGroupBits != 0 ? 1 : 0;
    }
}

void WideNumber::MultiplyBy(std::uint32_t factor) {
    std::uint64_t carry = 0;
    for (std::uint32_t& group : groups_) {
        carry += std::uint64_t{group} * factor;
        group = static_cast<std::uint32_t>(carry);
        carry >>= kGroupBits;
    }
}

WideNumber WideNumber::Times(const WideNumber& other) const {
    WideNumber product;
    for (std::size_t i = 0; i < groups_.size(); ++i) {
        std::uint64_t carry = 0;
        for (std::size_t j = 0; i + j < groups_.size(); ++j) {
            carry += std::uint64_t{groups_[i]} * other.groups_[j] + product.groups_[i + j];
            product.groups_[i + j] = static_cast<std::uint32_t>(carry);
            carry >>= kGroupBits;
        }
    }
    return product;
}

std::uint32_t WideNumber::DivideBy(std::uint32_t divisor) {
    std::uint64_t remainder = 0;
    for (std::size_t i = groups_.size(); i-- > 0;) {
        remainder = remainder << kGroupBits | groups_[i];
        groups_[i] = static_cast<std::uint32_t>(remainder / divisor);
        remainder %= divisor;
    }
    return static_cast<std::uint32_t>(remainder);
}

std::strong_ordering operator<=>(const WideNumber& left, const WideNumber& right) {
    return std::lexicographical_compare_three_way(left.groups_.rbegin(), left.groups_.rend(),
                                                  right.groups_.rbegin(), right.groups_.rend());
}

}  // namespace quardele::basic
