// Joins of two producers, with two ways to the inner rows of an outer one.
#pragma once

#include <optional>
#include <vector>

#include "rows/producer.h"

namespace quardele::sql {

/// For each row of `outer`, in its order, the rows of `inner` for which `on` is true; with `keepOuter` an
/// outer row without any comes once with the inner sources empty.
struct JoinParts {
    ProducerPtr outer;
    ProducerPtr inner;
    std::vector<std::size_t> innerSources;
    NodeList on;
    bool keepOuter = false;
};

/// Holds the inner rows' identities in memory, found by a hash of the values that must be equal.
struct JoinByHash {
    NodeList outerKeys;
    NodeList innerKeys;
};

/// Seeks the inner rows, of one table, in an index whose leading columns must equal values of the outer row.
struct JoinByIndex {
    NodeList outerKeys;
    int index = 0;
    NodeList on;           ///< equalities that the index does not serve
    bool forMany = false;  ///< the better way even when there are many outer rows
};

/// A join that may go through an index begins with it, and makes the hash when it turns out that there are
/// many outer rows, or at the first whose values the index cannot be asked for.
class JoinProducer final : public Producer {
 public:
    JoinProducer(JoinParts parts, std::optional<JoinByIndex> byIndex, JoinByHash byHash)
        : parts_(std::move(parts)), byIndex_(std::move(byIndex)), byHash_(std::move(byHash)) {}

    bool Produce(RowContext& row, const Emit& emit) const override;
    [[nodiscard]] double Estimate() const override;
    [[nodiscard]] double Cost() const override;

 private:
    [[nodiscard]] std::size_t MostSeeks() const;

    JoinParts parts_;
    std::optional<JoinByIndex> byIndex_;
    JoinByHash byHash_;
};

}  // namespace quardele::sql
