// Journals taken apart and put together again with checksums that are right, whatever the numbers say.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace quardele::jet::test {

struct MadeRecord {
    std::uint32_t page = 0;
    std::uint32_t kind = 0;           ///< 0 appended, 1 replaced
    std::vector<std::uint8_t> bytes;  ///< old and new page, or checksums of the sectors
};

struct MadeJournal {
    std::uint32_t pageSize = 0;
    std::uint32_t pageCount = 0;
    std::optional<std::uint32_t> statedRecords;  ///< as many as there are, unless it says otherwise
    std::uint32_t user = 0;
    std::uint64_t identity = 0;
    std::vector<std::uint8_t> mark;
    std::vector<MadeRecord> records;
    std::vector<std::uint8_t> behind;  ///< what follows the last record

    /// Of a journal that the engine has written.
    [[nodiscard]] static MadeJournal From(const std::vector<std::uint8_t>& bytes);
    [[nodiscard]] std::vector<std::uint8_t> Bytes() const;
};

}  // namespace quardele::jet::test
