// Data pages and rows of a table, taken apart with findings instead of errors.
#pragma once

#include <functional>
#include <vector>

#include "check/check_context.h"
#include "definitions/table_def.h"
#include "rows/row_codec.h"

namespace quardele::jet {

/// A live row: its identity, where its data lie, and their bytes.
struct CheckedRow {
    RowId id;
    RowId data;  ///< the same, or the target of a moved row
    PagePtr page;
    ByteView bytes;
};

/// Calls use(row) for each live row on the pages. What cannot be read is passed over.
void ForEachReadableRow(const PageSource& pages, const TableDef& def,
                        const std::vector<std::uint32_t>& dataPages,
                        const std::function<void(const CheckedRow&)>& use);

/// Header, slots and free space of a data page, whatever it holds.
void CheckSlots(CheckContext& context, const CheckPlace& place, const Page& page);

/// The same for a table, with all findings: slots of pages, free space, moved rows.
class RowsCheck {
 public:
    /// All must outlive the check.
    RowsCheck(CheckContext& context, const CheckPlace& place, const TableDef& def,
              const std::vector<std::uint32_t>& dataPages);

    /// Calls use(row) for each live row that can be found.
    void Run(const std::function<void(const CheckedRow&)>& use);
    [[nodiscard]] std::uint64_t RowCount() const { return rowCount_; }

 private:
    void CheckPage(const PagePtr& page, const std::function<void(const CheckedRow&)>& use);
    void ReportOrphans(const Page& page);

    CheckContext& context_;
    const CheckPlace& place_;
    const TableDef& def_;
    const std::vector<std::uint32_t>& dataPages_;
    SlotMarks targets_;
    std::uint64_t targetCount_ = 0;
    std::uint64_t hiddenCount_ = 0;
    std::uint64_t rowCount_ = 0;
};

}  // namespace quardele::jet
