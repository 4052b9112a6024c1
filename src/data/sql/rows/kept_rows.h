// The rows of tables that a result was made from, as they were read while it was made.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <jet/row_copies.h>

#include "rows/row_context.h"

namespace quardele::sql {

/// Rows of a sorted join lie all over the file, and have all been read to be sorted: whoever looks at the
/// result need not fetch them again one by one. They count for as long as the file is as it was.
class KeptRows {
 public:
    /// Keeps nothing.
    KeptRows() = default;
    /// Keeps rows of these tables, which must outlive it, unless they become too many.
    explicit KeptRows(const Tables& tables);

    /// The next row of the result: what has been read of it.
    void Add(const RowContext& row);
    /// Puts the rows in another order, or leaves some out.
    void Rearrange(const std::vector<std::uint32_t>& order);
    /// What a row had from a source, null when that is not known or no longer so.
    [[nodiscard]] const jet::Row* Find(std::size_t row, std::size_t source) const;
    /// A row may have changed.
    void Forget(std::size_t row);
    void Clear();

 private:
    using Parts = std::vector<std::optional<jet::Row>>;

    [[nodiscard]] std::uint64_t State() const;

    Tables tables_;
    std::uint64_t state_ = 0;  ///< of their files when the first row was read
    jet::RowCopies copies_;
    std::vector<Parts> rows_;  ///< one list per source
};

}  // namespace quardele::sql
