#include "rows/executor.h"

#include <algorithm>
#include <utility>

#include "rows/grouper.h"
#include "rows/node_key.h"
#include "rows/row_sorter.h"
#include "rows/value_numbers.h"

namespace quardele::sql {
namespace {

/// Puts rows before a sorter by the values that order them.
class OrderKey {
 public:
    /// False when the row is not wanted, which its first values may tell.
    bool AddTo(RowSorter& sorter, const std::vector<OrderStep>& order, RowContext& row) {
        bytes_.clear();
        for (const OrderStep& step : order) {
            keys_.Append(bytes_, *step.node, row, step.descending);
            if (sorter.IsBeyondTop(bytes_)) {
                return false;
            }
        }
        return sorter.Add(bytes_);
    }

 private:
    NodeKeys keys_;
    std::string bytes_;
};

/// Hands the rows of the sources to `emit`.
void ProduceRows(const SelectPlan& plan, RowContext& row, const Emit& emit) {
    if (AllTrue(plan.plan.constants, row)) {
        plan.plan.rows->Produce(row, emit);
    }
}

/// Without an order a TOP is served by the first rows.
bool HasEnough(const SelectPlan& plan, std::size_t count) {
    return plan.top && !plan.top->percent && plan.order.empty() &&
           static_cast<double>(count) >= plan.top->count;
}

template <class T>
std::vector<T> Rearranged(const std::vector<T>& items, const std::vector<std::uint32_t>& order,
                          std::size_t width = 1) {
    std::vector<T> arranged;
    arranged.reserve(order.size() * width);
    for (const std::uint32_t row : order) {
        const auto first = items.begin() + static_cast<std::ptrdiff_t>(row * width);
        arranged.insert(arranged.end(), first, first + static_cast<std::ptrdiff_t>(width));
    }
    return arranged;
}

ResultRows ExecuteKeyed(const SelectPlan& plan, const RunEnvironment& environment, RowMarks marks = {}) {
    ResultRows result;
    result.marks = std::move(marks);
    result.keys.resize(plan.tables.size());
    RowContext row(plan.tables, environment);
    RowSorter sorter(plan.top);
    OrderKey key;
    const bool sorted = !plan.order.empty();
    if (sorted && plan.tables.size() > 1) {
        result.kept = KeptRows(plan.tables);
    }
    ProduceRows(plan, row, [&] {
        if (sorted && !key.AddTo(sorter, plan.order, row)) {
            return true;
        }
        result.kept.Add(row);
        result.marks.Add(row);
        for (std::size_t source = 0; source < result.keys.size(); ++source) {
            result.keys[source].push_back(row.KeyOf(source));
        }
        return !HasEnough(plan, ++result.size);
    });
    if (sorted) {
        const std::vector<std::uint32_t> order = sorter.Order();
        result.kept.Rearrange(order);
        result.marks.Rearrange(order);
        result.size = order.size();
        for (auto& keys : result.keys) {
            keys = Rearranged(keys, order);
        }
    } else {
        result.size = RowsWanted(plan.top, result.size);
        for (auto& keys : result.keys) {
            keys.resize(result.size);
        }
        result.marks.Resize(result.size);
    }
    return result;
}

/// Collects the values of result rows.
class ValueRows {
 public:
    ValueRows(const SelectPlan& plan, const RunEnvironment& environment)
        : plan_(plan), results_(plan.tables, environment), sorter_(plan.top) {}

    /// Whether more rows are wanted.
    bool Add(RowContext& row) {
        if (plan_.distinct && !IsNew(row)) {
            return true;
        }
        const std::size_t first = values_.size();
        for (const NodePtr& item : plan_.itemNodes) {
            values_.push_back(item->Value(row));
        }
        if (!IsSorted()) {
            return !HasEnough(plan_, ++size_);
        }
        if (!Sort(row, first)) {
            values_.resize(first);
        }
        return true;
    }

    ResultRows Finish() {
        ResultRows result;
        if (IsSorted()) {
            const std::vector<std::uint32_t> order = sorter_.Order();
            result.size = order.size();
            result.values = Rearranged(values_, order, plan_.itemNodes.size());
        } else {
            result.size = RowsWanted(plan_.top, size_);
            values_.resize(result.size * plan_.itemNodes.size());
            result.values = std::move(values_);
        }
        return result;
    }

 private:
    [[nodiscard]] bool IsSorted() const { return plan_.distinct || !plan_.order.empty(); }

    bool IsNew(RowContext& row) {
        const std::uint32_t before = seen_.Size();
        return seen_.NumberOf(plan_.itemNodes, row) == before;
    }

    /// Distinct rows without an order are sorted by all their columns. False when the row is not wanted.
    bool Sort(RowContext& row, std::size_t first) {
        if (!plan_.distinct) {
            return key_.AddTo(sorter_, plan_.order, row);
        }
        if (plan_.order.empty()) {
            return sorter_.Add(seen_.KeyOf(seen_.Size() - 1));
        }
        results_.SetResults(std::span(values_).subspan(first));
        return key_.AddTo(sorter_, plan_.order, results_);
    }

    const SelectPlan& plan_;
    RowContext results_;
    std::vector<Variant> values_;
    std::size_t size_ = 0;  ///< rows so far, when they stay in the order in which they come
    RowSorter sorter_;
    ValueNumbers seen_;
    OrderKey key_;
};

ResultRows ExecuteValues(const SelectPlan& plan, const RunEnvironment& environment) {
    ValueRows rows(plan, environment);
    RowContext row(plan.tables, environment);
    if (!plan.groups) {
        ProduceRows(plan, row, [&] { return rows.Add(row); });
        return rows.Finish();
    }
    Grouper grouper(*plan.groups);
    ProduceRows(plan, row, [&] {
        grouper.Add(row);
        return true;
    });
    grouper.Finish(row, [&] { return rows.Add(row); });
    return rows.Finish();
}

}  // namespace

ResultRows Execute(const SelectPlan& plan, const RunEnvironment& environment) {
    return plan.IsKeyed() ? ExecuteKeyed(plan, environment) : ExecuteValues(plan, environment);
}

ResultRows ExecuteMarked(const SelectPlan& plan) {
    return ExecuteKeyed(plan, {}, RowMarks(plan.tables));
}

}  // namespace quardele::sql
