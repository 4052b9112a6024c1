#include "rows/union_producer.h"

#include "rows/executor.h"
#include "rows/key_table.h"
#include "rows/sort_key.h"

namespace quardele::sql {
namespace {

/// Calls `take` with the values of each row until it returns false.
template <class Take>
bool ForEachRow(const SelectPlan& plan, const RunEnvironment& environment, Take take) {
    const ResultRows rows = Execute(plan, environment);
    const std::size_t width = plan.itemNodes.size();
    std::vector<Variant> values(width);
    RowContext context(plan.tables, environment);
    for (std::size_t row = 0; row < rows.size; ++row) {
        for (std::size_t source = 0; source < rows.keys.size(); ++source) {
            context.SetKey(source, rows.keys[source][row]);
        }
        for (std::size_t i = 0; i < width; ++i) {
            values[i] = plan.IsKeyed() ? plan.itemNodes[i]->Value(context) : rows.values[row * width + i];
        }
        if (!take(values)) {
            return false;
        }
    }
    return true;
}

}  // namespace

UnionProducer::UnionProducer(std::vector<SelectPlan> parts, std::vector<bool> all)
    : parts_(std::move(parts)) {
    for (std::size_t i = 0; i < all.size(); ++i) {
        distinctParts_ = all[i] ? distinctParts_ : i + 2;
    }
    // Behind the last part whoever takes the rows drops those that came before.
    distinctParts_ = distinctParts_ == parts_.size() ? 0 : distinctParts_;
}

double UnionProducer::Estimate() const {
    double rows = 0;
    for (const SelectPlan& part : parts_) {
        rows += part.plan.rows->Estimate();
    }
    return rows;
}

bool UnionProducer::Produce(RowContext& row, const Emit& emit) const {
    KeyTable seen;
    std::string key;
    for (std::size_t part = 0; part < parts_.size(); ++part) {
        const bool goOn =
            ForEachRow(parts_[part], row.Environment(), [&](const std::vector<Variant>& values) {
                if (part < distinctParts_) {
                    key.clear();
                    for (const Variant& value : values) {
                        AppendSortKey(key, value);
                    }
                    if (!seen.Add(key)) {
                        return true;
                    }
                }
                row.SetResults(values);
                return emit();
            });
        if (!goOn) {
            return false;
        }
    }
    return true;
}

}  // namespace quardele::sql
