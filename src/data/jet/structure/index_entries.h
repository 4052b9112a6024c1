// The entries of an index, collected to be sorted.
#pragma once

#include <span>
#include <vector>

#include "bytes.h"
#include "rows/row_pointer.h"

namespace quardele::jet {

/// Keys with their rows, in one piece of memory.
class IndexEntries {
 public:
    void Add(std::span<const std::uint8_t> key, RowId row);
    void Sort();

    [[nodiscard]] std::size_t Size() const { return places_.size(); }
    [[nodiscard]] std::span<const std::uint8_t> At(std::size_t position) const {
        return std::span(bytes_).subspan(places_[position].start, places_[position].length);
    }
    /// The entry without its row.
    [[nodiscard]] std::span<const std::uint8_t> KeyAt(std::size_t position) const;
    /// The number of different keys, once sorted.
    [[nodiscard]] std::size_t DistinctKeys() const;

 private:
    struct Place {
        std::size_t start;
        std::size_t length;
    };

    ByteString bytes_;
    std::vector<Place> places_;
};

}  // namespace quardele::jet
