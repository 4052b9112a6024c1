#include "structure/definition_pages.h"

#include <algorithm>

namespace quardele::jet {

namespace {

/// More pages than this are a circle.
constexpr std::size_t kMostPages = 256;

// The free bytes leave out the eight of the page header once more.
std::uint16_t FreeBytes(const Format& format, std::size_t used) {
    const std::size_t taken = used + format.def.pageHeader;
    return static_cast<std::uint16_t>(taken < format.pageSize ? format.pageSize - taken : 0);
}

// `content` goes behind the header of eight bytes; all pages look alike in this way, because the string
// begins with the header of its first page.
void StorePage(Page& page, const Format& format, std::uint32_t next, std::span<const std::uint8_t> content) {
    const auto bytes = page.Mutable();
    std::fill(bytes.begin(), bytes.end(), std::uint8_t{0});
    bytes[0] = static_cast<std::uint8_t>(PageType::TableDef);
    bytes[1] = kLivePage;
    StoreLittle(bytes.subspan(format.data.freeBytes),
                FreeBytes(format, format.def.pageHeader + content.size()));
    StoreLittle(bytes.subspan(format.def.next), next);
    std::copy(content.begin(), content.end(),
              bytes.begin() + static_cast<std::ptrdiff_t>(format.def.pageHeader));
}

}  // namespace

std::vector<std::uint32_t> ContinuationPages(const PageSource& pages, std::uint32_t first) {
    std::vector<std::uint32_t> numbers;
    for (std::uint32_t number = first;;) {
        const PagePtr page = pages.Read(number);
        if (page->Type() != PageType::TableDef || numbers.size() == kMostPages) {
            ThrowDamaged(number, u"définition de table attendue");
        }
        number = page->View().U32(pages.Layout().def.next);
        if (number == 0) {
            return numbers;
        }
        numbers.push_back(number);
    }
}

void StoreDefinition(Transaction& pages, PageAllocator& allocator, std::uint32_t first,
                     const ByteString& definition) {
    const Format& format = pages.Layout();
    const std::size_t room = format.pageSize - format.def.pageHeader;
    auto rest = std::span(definition).subspan(format.def.pageHeader);
    std::vector<std::uint32_t> numbers = {first};
    if (pages.Read(first)->Type() == PageType::TableDef) {
        const auto further = ContinuationPages(pages, first);
        numbers.insert(numbers.end(), further.begin(), further.end());
    }
    const std::size_t wanted = (rest.size() + room - 1) / room;
    while (numbers.size() < wanted) {
        numbers.push_back(allocator.Allocate().number);
    }
    for (; numbers.size() > wanted; numbers.pop_back()) {
        allocator.Free(numbers.back());
    }
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const auto content = rest.first(std::min(room, rest.size()));
        rest = rest.subspan(content.size());
        const std::uint32_t next = i + 1 < numbers.size() ? numbers[i + 1] : 0;
        StorePage(pages.Write(numbers[i]), format, next, content);
    }
}

}  // namespace quardele::jet
