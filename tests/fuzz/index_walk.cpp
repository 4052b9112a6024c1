// Walks through index trees whose pages say anything.
#include "indexes/index_walk.h"

#include "indexes/index_node.h"
#include "input_pages.h"
#include "seed_files.h"

namespace quardele::fuzz {

namespace {

constexpr std::size_t kMostSeeds = 150;
constexpr std::size_t kPagesOfSeed = 4;
constexpr std::size_t kKeyOfSeed = 40;

void WalkForward(jet::IndexWalk walk) {
    for (bool found = walk.First(); found; found = walk.Next()) {
        static_cast<void>(jet::EntryRow(walk.Entry(), walk.PageNumber()));
    }
}

void WalkBackward(jet::IndexWalk walk) {
    for (bool found = walk.Last(); found; found = walk.Previous()) {
        static_cast<void>(jet::EntryRow(walk.Entry(), walk.PageNumber()));
    }
}

void Search(jet::IndexWalk& walk, BytesView key) {
    for (const bool behind : {false, true}) {
        Attempt([&] { static_cast<void>(walk.FirstFrom(key, behind) && walk.Next()); });
        Attempt([&] { static_cast<void>(walk.LastBefore(key, behind) && walk.Previous()); });
    }
}

}  // namespace

// Format, length and bytes of a key to look for, page of the table, root, pages.
void Use(BytesView bytes) {
    InputReader input(bytes);
    const jet::Format& format = ChosenFormat(input);
    const BytesView key = input.Take(input.Byte());
    const std::uint16_t table = input.Word();
    jet::RealIndex index;
    index.root = input.Word();
    const InputPages pages(format, input);
    jet::IndexWalk walk(pages, table, index);
    Attempt([&] { WalkForward(walk); });
    Attempt([&] { WalkBackward(walk); });
    Search(walk, key);
    static_cast<void>(jet::IndexNode::Load(pages, index.root, table));
}

std::vector<Bytes> Seeds() {
    std::vector<Bytes> seeds;
    ForEachTable([&](const jet::TableImpl& table) {
        for (const jet::RealIndex& index : table.Def().realIndexes) {
            jet::IndexWalk walk(table.Pages(), table.Def().page, index);
            std::vector<std::uint32_t> numbers = {index.root};
            Bytes key;
            for (bool found = walk.First(); found && numbers.size() < kPagesOfSeed; found = walk.Next()) {
                if (walk.PageNumber() != numbers.back()) {
                    numbers.push_back(walk.PageNumber());
                }
                key = walk.Entry();
            }
            key.resize(std::min(key.size(), kKeyOfSeed));
            Bytes input = {FormatChoice(table.Layout()), static_cast<std::uint8_t>(key.size())};
            AppendBytes(input, key);
            AppendWord(input, table.Def().page);
            AppendWord(input, index.root);
            for (const std::uint32_t number : numbers) {
                AppendPage(input, *table.Pages().Read(number));
            }
            seeds.push_back(std::move(input));
        }
    });
    return Thinned(std::move(seeds), kMostSeeds);
}

}  // namespace quardele::fuzz
