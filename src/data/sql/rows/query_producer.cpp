#include "rows/query_producer.h"

#include <set>

#include "rows/executor.h"

namespace quardele::sql {

double QueryProducer::Estimate() const {
    return query_->plan.rows->Estimate();
}

bool QueryProducer::Produce(RowContext& row, const Emit& emit) const {
    ResultRows found = Execute(*query_, row.Environment());
    row.SetQueryRows(source_, std::make_shared<const std::vector<Variant>>(std::move(found.values)),
                     query_->columns.size());
    for (std::size_t i = 0; i < found.size; ++i) {
        row.SetKey(source_, QueryRowKey(i));
        if (AllTrue(conditions_, row) && !emit()) {
            return false;
        }
    }
    return true;
}

bool DistinctRowProducer::Produce(RowContext& row, const Emit& emit) const {
    std::set<std::vector<jet::RowId>> seen;
    return input_->Produce(row, [&] {
        std::vector<jet::RowId> ids;
        for (const std::size_t source : sources_) {
            ids.push_back(row.KeyOf(source));
        }
        return !seen.insert(std::move(ids)).second || emit();
    });
}

}  // namespace quardele::sql
