// What the fuzz targets found, as small as it gets.
#include <gtest/gtest.h>

#include "indexes/index_walk.h"
#include "input_pages.h"

namespace quardele::fuzz {
namespace {

constexpr std::uint16_t kTable = 1;
constexpr std::uint16_t kLeaf = 2;

/// A leaf of two entries with keys of one byte, which follows itself in both directions.
Bytes CircularLeaf(std::uint8_t firstKey, std::uint8_t secondKey) {
    constexpr std::size_t kEntry = 5;
    const auto& at = jet::kJet4.index;
    Bytes leaf(at.entries + 2 * kEntry);
    leaf[0] = static_cast<std::uint8_t>(jet::PageType::IndexLeaf);
    leaf[at.owner] = kTable;
    leaf[at.previous] = kLeaf;
    leaf[at.next] = kLeaf;
    leaf[at.bitmap] = 1U << kEntry;
    leaf[at.bitmap + 1] = 1U << (2 * kEntry - 8);
    leaf[at.entries] = firstKey;
    leaf[at.entries + kEntry] = secondKey;
    Bytes pages;
    AppendWord(pages, kLeaf);
    AppendWord(pages, leaf.size());
    AppendBytes(pages, leaf);
    return pages;
}

class EndlessLeaf : public testing::TestWithParam<std::pair<std::uint8_t, std::uint8_t>> {};

// Keys that fall within a leaf hid from the walk that it had come back to where it was.
TEST_P(EndlessLeaf, EndsWithAnError) {
    const Bytes bytes = CircularLeaf(GetParam().first, GetParam().second);
    InputReader input(bytes);
    const InputPages pages(jet::kJet4, input);
    jet::RealIndex index;
    index.root = kLeaf;
    const auto entriesOf = [&](bool forward) {
        jet::IndexWalk walk(pages, kTable, index);
        constexpr int kEntries = 2;
        int count = 0;
        for (bool found = forward ? walk.First() : walk.Last(); found && count <= kEntries;
             found = forward ? walk.Next() : walk.Previous()) {
            ++count;
        }
        return count;
    };
    EXPECT_THROW(static_cast<void>(entriesOf(true)), basic::RuntimeError);
    EXPECT_THROW(static_cast<void>(entriesOf(false)), basic::RuntimeError);
}

INSTANTIATE_TEST_SUITE_P(KeysGrowOrFall, EndlessLeaf,
                         testing::Values(std::pair{std::uint8_t{0x10}, std::uint8_t{0x20}},
                                         std::pair{std::uint8_t{0x20}, std::uint8_t{0x10}}));

}  // namespace
}  // namespace quardele::fuzz
