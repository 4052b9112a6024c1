// Walks through one table, row by row.
#pragma once

#include "plan/index_choice.h"
#include "rows/key_steps.h"
#include "rows/producer.h"

namespace quardele::sql {

/// Rows in the order of an index; with `conditions` those for which they hold, each of which must be read.
class IndexSteps final : public KeySteps {
 public:
    /// `conditions` may be null; all must outlive the steps.
    IndexSteps(const jet::Table& table, IndexWalk walk, const TableProducer* conditions,
               const Tables& tables);

    [[nodiscard]] std::optional<jet::RowId> Next() override;
    [[nodiscard]] std::uint32_t MarkOf(const jet::KeyMarks& marks) const override;
    [[nodiscard]] bool IsLongWay() const override;

 private:
    bool Advance();

    jet::IndexCursor cursor_;
    int index_;
    bool backwards_;
    bool started_ = false;
    const TableProducer* conditions_;
    RowContext row_;
    std::size_t looked_ = 0;  ///< rows that were read
};

/// Rows in physical order for which conditions hold.
class ScanSteps final : public KeySteps {
 public:
    /// All must outlive the steps.
    ScanSteps(const jet::Table& table, const TableProducer& conditions, const Tables& tables);

    [[nodiscard]] std::optional<jet::RowId> Next() override;
    [[nodiscard]] std::uint32_t MarkOf(const jet::KeyMarks& marks) const override;

 private:
    jet::RowScan scan_;
    const TableProducer& conditions_;
    RowContext row_;
};

}  // namespace quardele::sql
