// The rows of a run that nobody has asked for yet.
#pragma once

#include <cstdint>
#include <memory>
#include <unordered_set>

#include "plan/select_plan.h"
#include "rows/executor.h"
#include "rows/key_steps.h"

namespace quardele::sql {

/// Finds the rows of a statement of one table in steps. While the file stays as it is, they are those that
/// one run would find, in its order. When it changes between two steps, the rows that were found stay, and
/// the others are those of the file as it is by then; no row is found twice.
class PendingRows {
 public:
    /// Null when the rows of a plan must all be found at once. The plan must outlive it.
    [[nodiscard]] static std::unique_ptr<PendingRows> Of(const SelectPlan& plan);

    PendingRows(const SelectPlan& plan, std::unique_ptr<KeySteps> steps);

    /// Adds rows to those found before until there are so many; false when there are no more to come.
    [[nodiscard]] bool Find(std::size_t wanted, ResultRows& rows);

 private:
    void FindRest(ResultRows& rows);
    void Add(jet::RowId row, std::uint32_t mark, ResultRows& rows);
    void Remember(const ResultRows& rows);
    [[nodiscard]] std::uint64_t State() const { return plan_.tables.front()->Home().StateNumber(); }

    const SelectPlan& plan_;
    std::unique_ptr<KeySteps> steps_;
    std::uint64_t state_;  ///< of the file when the first row was found
    bool remembers_ = false;
    std::unordered_set<std::uint64_t> known_;  ///< once a row could come again: those found
};

}  // namespace quardele::sql
