// The rows of one table, found one by one as they are asked for.
#pragma once

#include <optional>

#include <jet/key_marks.h>

namespace quardele::sql {

class KeySteps {
 public:
    virtual ~KeySteps() = default;
    /// The next row; empty at the end. Changes of the file between two calls are no harm: the walk goes on
    /// behind the row that it found last, in the file as it is by then.
    [[nodiscard]] virtual std::optional<jet::RowId> Next() = 0;
    /// The number of the row found last, kNone when it cannot be had without reading a row.
    [[nodiscard]] virtual std::uint32_t MarkOf(const jet::KeyMarks& marks) const = 0;
    /// Whether finding all rows at once has become the shorter way to those that are left.
    [[nodiscard]] virtual bool IsLongWay() const { return false; }
};

}  // namespace quardele::sql
