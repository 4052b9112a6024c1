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
/// The identities of the rows that a row of a result is made of, one per source.
using RowParts = std::vector<std::optional<jet::RowId>>;
/// The identity of a row that a query within the statement gives, by its position.
[[nodiscard]] constexpr jet::RowId QueryRowKey(std::size_t row) {
    return {static_cast<std::uint32_t>(row) + 1, 0};
}

class SubqueryResults;

/// What one run of a statement gives to the parts of it.
struct RunEnvironment {
    /// Of a subquery: the values that the row around it gives; owned by who runs it.
    std::span<const Variant> parameters = {};
    /// What the statement's subqueries came to; made when first asked for.
    std::shared_ptr<SubqueryResults> subqueries = {};
};

class RowContext {
 public:
    /// The tables must outlive the context; those of queries within the statement are null.
    explicit RowContext(const Tables& tables, RunEnvironment environment = {});

    /// A row that has been read already.
    void SetRow(std::size_t source, jet::Row row);
    /// The next row of a scan of the source's table; false, and no row, at its end.
    [[nodiscard]] bool Advance(std::size_t source, jet::RowScan& scan);
    /// A row to be read when a column is asked for.
    void SetKey(std::size_t source, jet::RowId key);
    void SetResults(std::span<const Variant> results) { results_ = results; }
    /// The rows of a source that is a query: their values, row by row. They are found by QueryRowKey.
    void SetQueryRows(std::size_t source, std::shared_ptr<const std::vector<Variant>> values,
                      std::size_t width);

    [[nodiscard]] jet::RowId KeyOf(std::size_t source) const { return slots_[source].key; }
    /// The row of a source, null when there is none. Throws 3167 when it has been deleted meanwhile.
    [[nodiscard]] const jet::Row* RowOf(std::size_t source);
    /// The row of a source as far as it has been read already, else null.
    [[nodiscard]] const jet::Row* ReadRow(std::size_t source) const {
        const Slot& slot = slots_[source];
        return slot.key != kNoRow && slot.row ? &*slot.row : nullptr;
    }
    [[nodiscard]] const Variant& Result(std::size_t column) const { return results_[column]; }
    /// The value of a source that is a query, Null when there is no row.
    [[nodiscard]] const Variant& QueryValue(std::size_t source, std::size_t column) const;
    [[nodiscard]] const Variant& Parameter(std::size_t position) const {
        return environment_.parameters[position];
    }
    [[nodiscard]] const std::shared_ptr<SubqueryResults>& Subqueries();
    /// Lets subqueries run anew.
    void ForgetSubqueries() { environment_.subqueries.reset(); }
    /// For a query within the statement.
    [[nodiscard]] const RunEnvironment& Environment();
    [[nodiscard]] std::size_t SourceCount() const { return slots_.size(); }

 private:
    struct Slot {
        const jet::Table* table = nullptr;
        jet::RowId key = kNoRow;
        std::optional<jet::Row> row;
        std::shared_ptr<const std::vector<Variant>> values;  ///< of a query's rows
        std::size_t width = 0;
    };

    std::vector<Slot> slots_;
    std::span<const Variant> results_;
    RunEnvironment environment_;
};

}  // namespace quardele::sql
