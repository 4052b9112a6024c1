#include "rows/join_producer.h"

#include "rows/inner_rows.h"

namespace quardele::sql {
namespace {

/// So many seeks, which read the row as well, take as long as making the hash takes for one inner row.
constexpr double kSeeksPerHashedRow = 0.5;

void Clear(const std::vector<std::size_t>& sources, RowContext& row) {
    for (const std::size_t source : sources) {
        row.SetKey(source, kNoRow);
    }
}

}  // namespace

double JoinProducer::Estimate() const {
    const double outer = parts_.outer->Estimate();
    const bool anyRow = !byIndex_ && byHash_.outerKeys.empty();
    return anyRow ? outer * parts_.inner->Estimate() : outer;
}

double JoinProducer::Cost() const {
    const Producer& outer = *parts_.outer;
    if (byIndex_ && byIndex_->forMany) {
        return outer.Cost() + outer.Estimate() * (1 + kSeekCost);
    }
    return outer.Cost() + parts_.inner->Cost() + parts_.inner->Estimate() + Estimate();
}

std::size_t JoinProducer::MostSeeks() const {
    if (!byIndex_) {
        return 0;
    }
    return byIndex_->forMany ? SIZE_MAX : static_cast<std::size_t>(parts_.inner->Cost() * kSeeksPerHashedRow);
}

bool JoinProducer::Produce(RowContext& row, const Emit& emit) const {
    std::optional<SoughtInnerRows> sought;
    std::optional<HashedInnerRows> hashed;
    if (byIndex_) {
        sought.emplace(parts_, *byIndex_);
    } else {
        hashed.emplace(parts_, byHash_, row);
    }
    std::size_t seeksLeft = MostSeeks();
    bool matched = false;
    const Emit use = [&] {
        if (!AllTrue(parts_.on, row)) {
            return true;
        }
        matched = true;
        return emit();
    };
    return parts_.outer->Produce(row, [&] {
        matched = false;
        if (!hashed && (seeksLeft-- == 0 || !sought->Take(row))) {
            hashed.emplace(parts_, byHash_, row);
        }
        if (!(hashed ? hashed->Each(row, use) : sought->Each(row, use))) {
            return false;
        }
        Clear(parts_.innerSources, row);
        return matched || !parts_.keepOuter || emit();
    });
}

}  // namespace quardele::sql
