#include "rows/executor.h"

#include <algorithm>
#include <utility>

#include "rows/grouper.h"
#include "rows/key_table.h"
#include "rows/row_sorter.h"
#include "rows/sort_key.h"

namespace quardele::sql {
namespace {

void MakeOrderKey(const std::vector<OrderStep>& order, RowContext& row, std::string& key) {
    key.clear();
    for (const OrderStep& step : order) {
        Variant scratch;
        AppendSortKey(key, step.node->Peek(row, scratch), step.descending);
    }
}

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

ResultRows ExecuteKeyed(const SelectPlan& plan, const RunEnvironment& environment) {
    ResultRows result;
    result.keys.resize(plan.tables.size());
    RowContext row(plan.tables, environment);
    RowSorter sorter;
    std::string key;
    ProduceRows(plan, row, [&] {
        for (std::size_t source = 0; source < result.keys.size(); ++source) {
            result.keys[source].push_back(row.KeyOf(source));
        }
        if (!plan.order.empty()) {
            MakeOrderKey(plan.order, row, key);
            sorter.Add(key);
        }
        return !HasEnough(plan, ++result.size);
    });
    if (!plan.order.empty()) {
        const std::vector<std::uint32_t> order = sorter.Order(plan.top);
        result.size = order.size();
        for (auto& keys : result.keys) {
            keys = Rearranged(keys, order);
        }
    } else {
        result.size = RowsWanted(plan.top, result.size);
        for (auto& keys : result.keys) {
            keys.resize(result.size);
        }
    }
    return result;
}

/// Collects the values of result rows.
class ValueRows {
 public:
    ValueRows(const SelectPlan& plan, const RunEnvironment& environment)
        : plan_(plan), results_(plan.tables, environment) {}

    /// Whether more rows are wanted.
    bool Add(RowContext& row) {
        const std::size_t first = values_.size();
        for (const NodePtr& item : plan_.itemNodes) {
            values_.push_back(item->Value(row));
        }
        if (plan_.distinct && !IsNew(first)) {
            values_.resize(first);
            return true;
        }
        MakeKey(row, first);
        sorter_.Add(key_);
        return !HasEnough(plan_, sorter_.Size()) || plan_.distinct;
    }

    ResultRows Finish() {
        const std::vector<std::uint32_t> order = sorter_.Order(plan_.top);
        ResultRows result;
        result.size = order.size();
        result.values = Rearranged(values_, order, plan_.itemNodes.size());
        return result;
    }

 private:
    bool IsNew(std::size_t first) {
        rowKey_.clear();
        for (std::size_t i = first; i < values_.size(); ++i) {
            AppendSortKey(rowKey_, values_[i]);
        }
        return seen_.Add(rowKey_);
    }

    /// What the row is sorted by. Distinct rows without an order are sorted by all their columns.
    void MakeKey(RowContext& row, std::size_t first) {
        if (!plan_.distinct) {
            MakeOrderKey(plan_.order, row, key_);
        } else if (plan_.order.empty()) {
            key_ = rowKey_;
        } else {
            results_.SetResults(std::span(values_).subspan(first));
            MakeOrderKey(plan_.order, results_, key_);
        }
    }

    const SelectPlan& plan_;
    RowContext results_;
    std::vector<Variant> values_;
    RowSorter sorter_;
    KeyTable seen_;
    std::string rowKey_;
    std::string key_;
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

}  // namespace quardele::sql
