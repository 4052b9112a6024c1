// A hash table of byte strings that numbers them in the order of their arrival.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quardele::sql {

class KeyTable {
 public:
    KeyTable();

    /// The number of a key; a new one gets the next number, Size().
    std::uint32_t Insert(std::string_view key);
    /// Inserts a key; whether it was new.
    bool Add(std::string_view key);
    [[nodiscard]] std::optional<std::uint32_t> Find(std::string_view key) const;
    [[nodiscard]] std::uint32_t Size() const { return static_cast<std::uint32_t>(entries_.size()); }
    [[nodiscard]] std::string_view KeyOf(std::uint32_t number) const;

 private:
    struct Entry {
        std::uint64_t hash;
        std::size_t offset;
        std::size_t length;
    };

    struct Place {
        std::uint32_t number = 0;  ///< + 1, 0 for a free place
        std::uint32_t tag =
            0;  ///< upper half of the hash: tells most other keys apart without a look at them
    };

    /// The place of a key: its own, or the free one where it would go.
    [[nodiscard]] std::size_t PlaceOf(std::string_view key, std::uint64_t hash) const;
    void Grow();

    std::string bytes_;
    std::vector<Entry> entries_;
    std::vector<Place> places_;  ///< a power of two of them
};

/// Rows by key: several rows may have the same key, and come back in the order in which they were added.
class KeyedRows {
 public:
    void Add(std::string_view key, std::uint32_t row);

    static constexpr std::uint32_t kEnd = UINT32_MAX;
    /// The first entry of a key, kEnd when it has none; follow with Next.
    [[nodiscard]] std::uint32_t First(std::string_view key) const;
    [[nodiscard]] std::uint32_t Next(std::uint32_t entry) const { return entries_[entry].next; }
    [[nodiscard]] std::uint32_t Row(std::uint32_t entry) const { return entries_[entry].row; }

 private:
    struct Entry {
        std::uint32_t row;
        std::uint32_t next;
    };
    struct Chain {
        std::uint32_t first;
        std::uint32_t last;
    };

    KeyTable keys_;
    std::vector<Chain> chains_;
    std::vector<Entry> entries_;
};

}  // namespace quardele::sql
