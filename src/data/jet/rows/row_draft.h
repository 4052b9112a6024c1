// A row on its way into the file: what it shall hold, before anything is written.
#pragma once

#include "rows/long_value_writer.h"
#include "rows/row_builder.h"

namespace quardele::jet {

class RowDraft {
 public:
    /// A new row, all Null.
    explicit RowDraft(const TableDef& table);
    /// A stored row; its fields as SplitRow gives them.
    RowDraft(const TableDef& table, RowFields fields, ByteString fixedArea);

    /// Gives a column its new value: the stored bytes, of a long value its data.
    void Give(std::size_t ordinal, std::optional<ByteString> value);
    /// The field of a column, or of a long value that was given its data.
    [[nodiscard]] const std::optional<ByteString>& At(std::size_t ordinal) const { return fields_[ordinal]; }
    [[nodiscard]] bool IsGiven(std::size_t ordinal) const { return given_[ordinal]; }

    /// Decides which long values stay in the row: short ones, unless it grows too long with them. Throws 3047
    /// when it is too long without any.
    void Fit();
    /// Stores the given long values that lie outside, and gives the row's bytes. Needs Fit.
    [[nodiscard]] ByteString Store(LongValueWriter& longValues);

 private:
    [[nodiscard]] bool IsLongAndGiven(std::size_t ordinal) const;
    [[nodiscard]] std::size_t Length() const;
    void TakeInlineValuesOut();

    const TableDef& table_;
    RowFields fields_;
    std::vector<bool> given_;
    ByteString fixedArea_;
    std::size_t longestInline_ = long_value::kLargestInline;
};

}  // namespace quardele::jet
