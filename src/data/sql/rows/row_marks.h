// What tells whether the rows of a result are still those that were found.
#pragma once

#include <cstdint>
#include <vector>

#include <jet/key_marks.h>

#include "rows/row_context.h"

namespace quardele::sql {

/// A row that somebody else has deleted leaves its identity to one that is added later. As long as the files
/// are as they were, rows are what they were; after that they are asked for their keys. Rows of tables
/// without a unique key pass for what they were.
class RowMarks {
 public:
    /// Marks nothing, and everything passes.
    RowMarks() = default;
    /// Marks rows of these tables, which must outlive it; those of queries within the statement are null.
    explicit RowMarks(const Tables& tables);

    /// The next row of the result; when it is of one table, and has not been read, it is not marked.
    void Add(const RowContext& row);
    /// The next row of a result of one table, of which the number is known already.
    void Add(std::uint32_t mark);
    /// Puts the rows in another order, or leaves some out.
    void Rearrange(const std::vector<std::uint32_t>& order);
    void Resize(std::size_t rows);

    /// What marks the rows of a result's one table, and the number of one of them.
    [[nodiscard]] const jet::KeyMarks* OfSingleTable() const;
    [[nodiscard]] std::uint32_t MarkOf(std::size_t row) const;
    /// Whether a row that lies now where a row's part from a source was found is that part.
    [[nodiscard]] bool Fits(std::size_t row, std::size_t source, const jet::Row& now) const;
    /// Whether that must be asked.
    [[nodiscard]] bool Asks(std::size_t row, std::size_t source) const;
    /// Whether a row's part is not marked although its table has what marks it.
    [[nodiscard]] bool Lacks(std::size_t row, std::size_t source) const;
    /// A row's part has become another one, or has another key, by this program's own doing.
    void Set(std::size_t row, std::size_t source, const jet::Row* now);

 private:
    struct Part {
        jet::KeyMarks keys;
        std::vector<std::uint32_t> marks;  ///< one per row
    };

    [[nodiscard]] std::uint32_t MarkOf(std::size_t source, const RowContext& row,
                                       const jet::KeyMarks& keys) const;
    [[nodiscard]] std::uint64_t State() const;

    Tables tables_;
    std::vector<std::optional<Part>> parts_;  ///< one per source
    std::uint64_t state_ = 0;                 ///< of the files when the first row was found
};

}  // namespace quardele::sql
