// The values of rows against the definition of their table.
#pragma once

#include <map>
#include <vector>

#include "check/check_long_values.h"
#include "check/check_rows.h"

namespace quardele::jet {

class ValuesCheck {
 public:
    /// Claims the pages of long values. All must outlive the check.
    ValuesCheck(CheckContext& context, const CheckPlace& place, const TableDef& def);

    void Check(const CheckedRow& row, const RowLayout& layout);
    /// What only shows when all rows have been seen.
    void Finish();

 private:
    void CheckShape(const CheckedRow& row, const RowShape& shape) const;
    void CheckOffsets(const CheckedRow& row, const RowShape& shape) const;
    void CheckField(std::size_t ordinal, const ByteView& field);

    CheckContext& context_;
    const CheckPlace& place_;
    const TableDef& def_;
    std::vector<CheckPlace> columnPlaces_;
    std::map<std::size_t, LongValuesCheck> longValues_;  ///< by ordinal
    std::uint32_t largestNumber_ = 0;                    ///< of an AutoNumber column
};

}  // namespace quardele::jet
