#include "mutator.h"

#include <algorithm>
#include <array>

namespace quardele::fuzz {

namespace {

constexpr std::size_t kMostChanges = 6;
constexpr std::size_t kLongestPart = 64;
constexpr std::array<std::uint32_t, 12> kNumbers = {
    0, 1, 2, 0x7F, 0x80, 0xFF, 0xFFF, 0x1000, 0xFFFF, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};

[[nodiscard]] auto At(Bytes& input, std::size_t position) {
    return input.begin() + static_cast<Bytes::difference_type>(position);
}

}  // namespace

Bytes Mutator::Input(unsigned number) {
    random_.seed(number);
    Bytes input = seeds_[Below(seeds_.size())];
    for (std::size_t changes = 1 + Below(kMostChanges); changes > 0; --changes) {
        Change(input);
    }
    return input;
}

void Mutator::Change(Bytes& input) {
    const std::size_t at = Below(input.size());
    const std::size_t length = std::min(1 + Below(kLongestPart), input.size() - at);
    switch (input.empty() ? 0 : Below(7)) {
        case 0:
            input.insert(At(input, at), AnyByte());
            return;
        case 1:
            input[at] = AnyByte();
            return;
        case 2:
            input[at] = static_cast<std::uint8_t>(input[at] ^ 1U << Below(8));
            return;
        case 3:
            return StoreNumber(input);
        case 4:
            input.erase(At(input, at), At(input, at + length));
            return;
        case 5: {
            const Bytes part(At(input, at), At(input, at + length));
            input.insert(At(input, Below(input.size())), part.begin(), part.end());
            return;
        }
        default:
            Splice(input);
    }
}

// A number of one, two or four bytes at which counting goes wrong.
void Mutator::StoreNumber(Bytes& input) {
    std::uint32_t number = kNumbers[Below(kNumbers.size())];
    const std::size_t at = Below(input.size());
    const std::size_t end = std::min(input.size(), at + (std::size_t{1} << Below(3)));
    for (std::size_t i = at; i < end; ++i, number >>= 8) {
        input[i] = static_cast<std::uint8_t>(number & 0xFF);
    }
}

// The end of another seed behind the start of this one.
void Mutator::Splice(Bytes& input) {
    const Bytes& other = seeds_[Below(seeds_.size())];
    const auto from = static_cast<Bytes::difference_type>(Below(other.size()));
    input.resize(Below(input.size()));
    input.insert(input.end(), other.begin() + from, other.end());
}

}  // namespace quardele::fuzz
