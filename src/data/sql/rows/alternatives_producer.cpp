#include "rows/alternatives_producer.h"

#include <algorithm>
#include <numeric>

namespace quardele::sql {

double AlternativesProducer::Estimate() const {
    double rows = 0;
    for (const ProducerPtr& alternative : alternatives_) {
        rows += alternative->Estimate();
    }
    return rows;
}

double AlternativesProducer::Cost() const {
    double cost = 0;
    for (const ProducerPtr& alternative : alternatives_) {
        cost += alternative->Cost() + alternative->Estimate();
    }
    return cost;
}

/// The identities of all rows, those of one row side by side.
std::vector<jet::RowId> AlternativesProducer::Collect(RowContext& row) const {
    std::vector<jet::RowId> ids;
    for (const ProducerPtr& alternative : alternatives_) {
        alternative->Produce(row, [&] {
            for (const std::size_t source : sources_) {
                ids.push_back(row.KeyOf(source));
            }
            return true;
        });
    }
    return ids;
}

bool AlternativesProducer::Produce(RowContext& row, const Emit& emit) const {
    const std::vector<jet::RowId> ids = Collect(row);
    const std::size_t width = sources_.size();
    const auto rowAt = [&](std::uint32_t number) { return std::span(ids).subspan(number * width, width); };
    std::vector<std::uint32_t> order(ids.size() / width);
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
        return std::ranges::lexicographical_compare(rowAt(a), rowAt(b));
    });
    const auto end = std::unique(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
        return std::ranges::equal(rowAt(a), rowAt(b));
    });
    return std::all_of(order.begin(), end, [&](std::uint32_t number) {
        for (std::size_t i = 0; i < width; ++i) {
            row.SetKey(sources_[i], rowAt(number)[i]);
        }
        return emit();
    });
}

}  // namespace quardele::sql
