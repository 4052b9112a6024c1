#include "bookmark.h"

#include <atomic>

#include <basic/runtime_error.h>

namespace quardele::dao {
namespace {

constexpr std::size_t kPageBytes = 4;
constexpr std::size_t kRowIdBytes = kPageBytes + 1;
constexpr std::size_t kRunBytes = 8;
constexpr std::size_t kPositionBytes = 8;

void Append(Bookmark& bookmark, std::uint64_t number, std::size_t bytes) {
    for (std::size_t i = 0; i < bytes; ++i) {
        bookmark.bytes.push_back(static_cast<std::uint8_t>(number >> (8 * i)));
    }
}

std::uint64_t Read(const Bookmark& bookmark, std::size_t at, std::size_t bytes) {
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < bytes; ++i) {
        number |= std::uint64_t{bookmark.bytes[at + i]} << (8 * i);
    }
    return number;
}

void RequireSize(const Bookmark& bookmark, std::size_t bytes) {
    if (bookmark.bytes.size() != bytes) {
        throw basic::RuntimeError(basic::error::kInvalidBookmark);
    }
}

void RequireRun(const Bookmark& bookmark, std::size_t at, std::uint64_t run) {
    if (Read(bookmark, at, kRunBytes) != run) {
        throw basic::RuntimeError(basic::error::kInvalidBookmark);
    }
}

}  // namespace

std::uint64_t NextRun() {
    static std::atomic<std::uint64_t> last = 0;
    return ++last;
}

Bookmark BookmarkOf(std::uint64_t run, jet::RowId row) {
    Bookmark bookmark;
    Append(bookmark, row.page, kPageBytes);
    Append(bookmark, row.slot, 1);
    Append(bookmark, run, kRunBytes);
    return bookmark;
}

jet::RowId RowIdOf(const Bookmark& bookmark, std::uint64_t run) {
    RequireSize(bookmark, kRowIdBytes + kRunBytes);
    RequireRun(bookmark, kRowIdBytes, run);
    return {static_cast<std::uint32_t>(Read(bookmark, 0, kPageBytes)), bookmark.bytes[kPageBytes]};
}

Bookmark BookmarkOf(std::uint64_t run, std::size_t position) {
    Bookmark bookmark;
    Append(bookmark, run, kRunBytes);
    Append(bookmark, position, kPositionBytes);
    return bookmark;
}

std::size_t PositionOf(const Bookmark& bookmark, std::uint64_t run) {
    RequireSize(bookmark, kRunBytes + kPositionBytes);
    RequireRun(bookmark, 0, run);
    return static_cast<std::size_t>(Read(bookmark, kRunBytes, kPositionBytes));
}

}  // namespace quardele::dao
