#include "rows/pending_rows.h"

#include <utility>

#include "rows/table_steps.h"

namespace quardele::sql {
namespace {

constexpr int kSlotBits = 8;

std::uint64_t NumberOf(jet::RowId row) {
    return std::uint64_t{row.page} << kSlotBits | row.slot;
}

}  // namespace

std::unique_ptr<PendingRows> PendingRows::Of(const SelectPlan& plan) {
    RowContext nothing(plan.tables);
    if (!plan.steps || !plan.IsKeyed() || !AllTrue(plan.plan.constants, nothing)) {
        return nullptr;
    }
    const jet::Table& table = *plan.tables.front();
    const TableProducer* rows = plan.plan.rows->AsTable();
    std::unique_ptr<KeySteps> steps;
    if (plan.steps->walk) {
        const bool asks = rows != nullptr && rows->HasConditions();
        steps = std::make_unique<IndexSteps>(table, *plan.steps->walk, asks ? rows : nullptr, plan.tables);
    } else {
        steps = std::make_unique<ScanSteps>(table, *rows, plan.tables);
    }
    return std::make_unique<PendingRows>(plan, std::move(steps));
}

PendingRows::PendingRows(const SelectPlan& plan, std::unique_ptr<KeySteps> steps)
    : plan_(plan), steps_(std::move(steps)), state_(State()) {}

bool PendingRows::Find(std::size_t wanted, ResultRows& rows) {
    while (rows.size < wanted) {
        const auto next = steps_->Next();
        if (next) {
            const jet::KeyMarks* marks = rows.marks.OfSingleTable();
            Add(*next, marks == nullptr ? jet::KeyMarks::kNone : steps_->MarkOf(*marks), rows);
            continue;
        }
        if (steps_->IsLongWay()) {
            FindRest(rows);
        }
        return false;
    }
    return true;
}

void PendingRows::FindRest(ResultRows& rows) {
    Remember(rows);
    const ResultRows all = ExecuteMarked(plan_);
    for (std::size_t row = 0; row < all.size; ++row) {
        Add(all.keys.front()[row], all.marks.MarkOf(row), rows);
    }
}

void PendingRows::Add(jet::RowId row, std::uint32_t mark, ResultRows& rows) {
    // A row that has another key by now may lie ahead once more.
    if (State() != state_) {
        Remember(rows);
    }
    if (remembers_ && !known_.insert(NumberOf(row)).second) {
        return;
    }
    rows.keys.front().push_back(row);
    rows.marks.Add(mark);
    ++rows.size;
}

void PendingRows::Remember(const ResultRows& rows) {
    if (!std::exchange(remembers_, true)) {
        for (const jet::RowId row : rows.keys.front()) {
            known_.insert(NumberOf(row));
        }
    }
}

}  // namespace quardele::sql
