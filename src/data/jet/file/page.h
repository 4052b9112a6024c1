// Pages in memory. A page that somebody holds never changes: who changes one makes a copy.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>

#include "bytes.h"
#include "format.h"

namespace quardele::jet {

struct Page {
    std::uint32_t number = 0;
    std::uint32_t size = 0;  ///< bytes used of the array
    std::array<std::uint8_t, kLargestPage> bytes;

    [[nodiscard]] ByteView View() const { return {std::span(bytes).first(size), number}; }
    [[nodiscard]] std::span<std::uint8_t> Mutable() { return std::span(bytes).first(size); }
    [[nodiscard]] PageType Type() const { return static_cast<PageType>(bytes[0]); }
};

using PagePtr = std::shared_ptr<const Page>;

/// Where pages come from: the cache, or a transaction with its changes on top.
class PageSource {
 public:
    explicit PageSource(const Format& format) : format_(format) {}
    virtual ~PageSource() = default;
    PageSource(const PageSource&) = delete;
    PageSource& operator=(const PageSource&) = delete;

    [[nodiscard]] const Format& Layout() const { return format_; }
    [[nodiscard]] virtual std::uint32_t PageCount() const = 0;
    /// What was computed from pages is stale when this number differs from what it was then.
    [[nodiscard]] virtual std::uint64_t Generation() const = 0;
    /// The page with this number. Throws 3343 when it is 0 or lies behind the end: no link may lead there.
    [[nodiscard]] PagePtr Read(std::uint32_t number) const {
        CheckInside(number);
        return ReadInside(number);
    }
    /// The first of some pages in ascending order, at least one, that will be asked for one after the other:
    /// some of the others may be read along with it. Throws like Read.
    [[nodiscard]] PagePtr ReadFirst(std::span<const std::uint32_t> pages) const {
        CheckInside(pages.front());
        return ReadFirstInside(pages);
    }

 protected:
    [[nodiscard]] virtual PagePtr ReadInside(std::uint32_t number) const = 0;
    [[nodiscard]] virtual PagePtr ReadFirstInside(std::span<const std::uint32_t> pages) const {
        return ReadInside(pages.front());
    }

 private:
    void CheckInside(std::uint32_t number) const {
        if (number == kHeaderPage || number >= PageCount()) {
            ThrowDamaged(number, u"renvoi hors du fichier");
        }
    }

    const Format& format_;
};

}  // namespace quardele::jet
