// The rows that an expression is evaluated on: at any moment one of each source, or a row of results.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <vector>

#include <jet/table.h>

namespace quardele::sql {

using basic::Variant;
using Tables = std::vector<std::shared_ptr<jet::Table>>;

/// No row can have this identity: page 0 is the file's header. Marks a source that an outer join left
/// without a row.
inline constexpr jet::RowId kNoRow{};
/// Marks a row that has been deleted.
inline constexpr jet::RowId kDeletedRow{0, 1};

class RowContext {
 public:
    /// The tables must outlive the context.
    explicit RowContext(const Tables& tables);

    /// A row that has been read already.
    void SetRow(std::size_t source, jet::Row row);
    /// A row to be read when a column is asked for.
    void SetKey(std::size_t source, jet::RowId key);
    void SetResults(std::span<const Variant> results) { results_ = results; }

    [[nodiscard]] jet::RowId KeyOf(std::size_t source) const { return slots_[source].key; }
    /// The row of a source, null when there is none. Throws 3167 when it has been deleted meanwhile.
    [[nodiscard]] const jet::Row* RowOf(std::size_t source);
    [[nodiscard]] const Variant& Result(std::size_t column) const { return results_[column]; }
    [[nodiscard]] std::size_t SourceCount() const { return slots_.size(); }

 private:
    struct Slot {
        const jet::Table* table = nullptr;
        jet::RowId key = kNoRow;
        std::optional<jet::Row> row;
    };

    std::vector<Slot> slots_;
    std::span<const Variant> results_;
};

}  // namespace quardele::sql
