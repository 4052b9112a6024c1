// The long values of one column: its pages, and each piece on them used once.
#pragma once

#include <memory>
#include <vector>

#include "check/check_context.h"
#include "definitions/table_def.h"

namespace quardele::jet {

class LongValuesCheck {
 public:
    /// Claims the pages of the column. All must outlive the check.
    LongValuesCheck(CheckContext& context, CheckPlace place, const StoredColumn& column);

    /// Reads the value of a row and takes its pieces.
    void Check(const ByteView& field);
    /// Pieces that no value has taken. Call it behind the last row.
    void ReportOrphans();

 private:
    void CheckPages();
    void CheckPieces(const ByteView& field);

    CheckContext& context_;
    CheckPlace place_;
    const StoredColumn& column_;
    std::vector<std::uint32_t> ownedPages_;
    std::unique_ptr<SlotMarks> taken_;
};

}  // namespace quardele::jet
