#include "mutation.h"

#include <algorithm>
#include <iterator>
#include <span>

#include "bytes.h"
#include "format.h"
#include "support.h"

namespace quardele::jet::test {

namespace {

constexpr std::size_t kVersionAt = 0x14;

std::uint8_t ChangedByte(std::uint8_t byte, std::mt19937& random) {
    const auto any = static_cast<std::uint8_t>(random());
    const auto flipped = static_cast<std::uint8_t>(byte ^ 1U << random() % 8);
    const auto next = static_cast<std::uint8_t>(byte + 1);
    const std::uint8_t values[] = {0, 1, 0xFF, 0x7F, any, flipped, next};
    return values[random() % std::size(values)];
}

/// Anywhere, or near a place where structure begins: the head of the page, the slots or the first entries,
/// the lowest and the highest row.
std::size_t OffsetIn(std::size_t pageSize, std::mt19937& random) {
    constexpr std::size_t kHead = 80;
    constexpr std::size_t kEntries = 600;
    constexpr std::size_t kTail = 120;
    switch (random() % 4) {
        case 0:
            return random() % kHead;
        case 1:
            return random() % kEntries;
        case 2:
            return pageSize - 1 - random() % kTail;
        default:
            return random() % pageSize;
    }
}

}  // namespace

MutableFile::MutableFile(const std::filesystem::path& original)
    : original_(original), bytes_(ReadBytes(original)) {
    pageSize_ = bytes_.at(kVersionAt) == 0 ? kJet3.pageSize : kJet4.pageSize;
    for (std::size_t page = 0; page < bytes_.size() / pageSize_; ++page) {
        pages_[UseOf(page)].push_back(page);
    }
}

bool MutableFile::IsWritable() const {
    return pageSize_ == kJet4.pageSize;
}

PageUse MutableFile::UseOf(std::size_t page) const {
    constexpr std::uint32_t kLongValueOwner = 0x4C41564C;  // LVAL
    const std::span<const std::uint8_t> all = bytes_;
    const ByteView view(all.subspan(page * pageSize_, pageSize_), kHeaderPage);
    const std::uint32_t owner = view.U32(4);
    if (page == 0) {
        return PageUse::Header;
    }
    switch (view.U8(0)) {
        case 1:
            return owner <= 1                 ? PageUse::Map
                   : owner == kLongValueOwner ? PageUse::LongValues
                   : owner == kCatalogPage    ? PageUse::Catalogue
                                              : PageUse::Rows;
        case 2:
            return PageUse::Definition;
        case 3:
            return PageUse::IndexNode;
        case 4:
            return PageUse::IndexLeaf;
        case 5:
            return PageUse::Map;
        default:
            return PageUse::Other;
    }
}

MutableFile::Mutation MutableFile::Mutated(std::mt19937& random) const {
    constexpr std::size_t kMostChanges = 6;
    const auto chosen = std::next(pages_.begin(), static_cast<std::ptrdiff_t>(random() % pages_.size()));
    Mutation mutation{.use = chosen->first, .bytes = bytes_};
    for (std::size_t changes = 1 + random() % kMostChanges; changes > 0; --changes) {
        const std::size_t page = chosen->second[random() % chosen->second.size()];
        std::uint8_t& byte = mutation.bytes.at(page * pageSize_ + OffsetIn(pageSize_, random));
        byte = ChangedByte(byte, random);
    }
    return mutation;
}

}  // namespace quardele::jet::test
