// The entries that the rows of a table should have in an index.
#pragma once

#include <optional>
#include <vector>

#include "check/check_rows.h"
#include "indexes/index_fingerprint.h"
#include "indexes/row_key.h"

namespace quardele::jet {

/// Collects what the rows say, and compares it with what a tree says. Keys whose order is not known (texts of
/// other languages, characters outside the tables) are compared by their rows only.
class EntriesCheck {
 public:
    /// All must outlive the check.
    EntriesCheck(CheckContext& context, const CheckPlace& place, const TableDef& def, const RealIndex& index);

    /// Takes a row into account.
    void AddRow(const CheckedRow& row, const RowLayout& layout);
    /// An entry of the index, key and row, as it is compared.
    [[nodiscard]] std::span<const std::uint8_t> Comparable(std::span<const std::uint8_t> entry) const;
    [[nodiscard]] bool Agrees(const Fingerprint& tree) const { return tree == expected_; }

    using UseEntry = std::function<void(std::span<const std::uint8_t> entry, std::uint32_t page)>;
    using WalkTree = std::function<void(const UseEntry& use)>;
    /// Finds the entries that differ and reports them. `walk` calls its argument for each entry of the tree.
    void ReportDifferences(const std::vector<std::uint32_t>& dataPages, const WalkTree& walk) const;

 private:
    struct Expected {
        ByteString entry;
        bool known = false;
        bool anyNull = false;
    };
    /// The row's entry; none when the index passes it over.
    [[nodiscard]] std::optional<Expected> EntryOf(const CheckedRow& row, const RowLayout& layout) const;

    CheckContext& context_;
    const CheckPlace& place_;
    const TableDef& def_;
    const RealIndex& index_;
    Fingerprint expected_;
    std::vector<RowId> unknown_;  ///< rows whose keys are not known, in ascending order
};

}  // namespace quardele::jet
