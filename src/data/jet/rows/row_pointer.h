// Row pointers as stored in maps, descriptors and moved rows: row number, then page number.
#pragma once

#include <jet/types.h>

#include "bytes.h"

namespace quardele::jet {

/// A place: page and slot. Page 0 means "none".
using RowPointer = RowId;

inline constexpr std::size_t kRowPointerSize = 4;

[[nodiscard]] inline RowPointer LoadRowPointer(const ByteView& bytes, std::size_t at) {
    return {.page = bytes.U24(at + 1), .slot = bytes.U8(at)};
}

inline void StoreRowPointer(std::span<std::uint8_t> target, RowPointer pointer) {
    target[0] = pointer.slot;
    StoreU24(target.subspan(1), pointer.page);
}

}  // namespace quardele::jet
