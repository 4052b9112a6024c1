// The bits that tell where entries end, against the same done bit by bit.

#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "indexes/entry_ends.h"

namespace quardele::jet::test {
namespace {

constexpr std::size_t kBytes = 453;

std::vector<bool> BitsOf(const std::vector<std::uint8_t>& bytes) {
    std::vector<bool> bits;
    for (std::size_t i = 0; i < bytes.size() * 8; ++i) {
        bits.push_back((bytes[i / 8] >> i % 8 & 1) != 0);
    }
    return bits;
}

TEST(EntryEnds, AreFoundForwardAndBackward) {
    std::vector<std::uint8_t> bytes(kBytes);
    for (const std::size_t bit : {7u, 8u, 63u, 64u, 700u, 3600u, 3623u}) {
        bytes[bit / 8] = static_cast<std::uint8_t>(bytes[bit / 8] | 1u << bit % 8);
    }
    const auto bits = BitsOf(bytes);
    for (std::size_t at = 0; at < bits.size(); ++at) {
        std::optional<std::size_t> next;
        for (std::size_t i = bits.size(); i-- > at;) {
            next = bits[i] ? i : next;
        }
        std::optional<std::size_t> previous;
        for (std::size_t i = 0; i <= at; ++i) {
            previous = bits[i] ? i : previous;
        }
        ASSERT_EQ(NextBit(bytes, at), next) << at;
        ASSERT_EQ(PreviousBit(bytes, at), previous) << at;
    }
    EXPECT_EQ(NextBit(bytes, kBytes * 8), std::nullopt);
}

TEST(EntryEnds, MoveWithTheEntries) {
    std::mt19937 random(20261121);
    std::vector<std::uint8_t> bytes(kBytes);
    std::vector<std::size_t> lengths;
    const auto expected = [&lengths] {
        std::vector<std::uint8_t> made(kBytes);
        std::size_t end = 0;
        for (const std::size_t length : lengths) {
            end += length;
            made[end / 8] = static_cast<std::uint8_t>(made[end / 8] | 1u << end % 8);
        }
        return made;
    };
    std::size_t used = 0;
    for (int round = 0; round < 5000; ++round) {
        const std::size_t position = lengths.empty() ? 0 : random() % (lengths.size() + 1);
        std::size_t at = 0;
        for (std::size_t i = 0; i < position; ++i) {
            at += lengths[i];
        }
        const std::size_t length = 5 + random() % (random() % 10 == 0 ? 800 : 40);
        if (used + length <= 3616 && random() % 3 != 0) {
            lengths.insert(lengths.begin() + static_cast<std::ptrdiff_t>(position), length);
            InsertEnd(bytes, at, length);
            used += length;
        } else if (position < lengths.size()) {
            RemoveEnd(bytes, at, lengths[position]);
            used -= lengths[position];
            lengths.erase(lengths.begin() + static_cast<std::ptrdiff_t>(position));
        }
        ASSERT_EQ(bytes, expected()) << round;
    }
}

}  // namespace
}  // namespace quardele::jet::test
