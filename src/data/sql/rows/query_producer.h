// The rows of a query that stands in the FROM clause of another.
#pragma once

#include "rows/producer.h"

namespace quardele::sql {

struct SelectPlan;

/// Runs the query once for each run of the statement and keeps its rows in the context.
class QueryProducer final : public Producer {
 public:
    QueryProducer(std::size_t source, std::shared_ptr<const SelectPlan> query, NodeList conditions)
        : source_(source), query_(std::move(query)), conditions_(std::move(conditions)) {}

    bool Produce(RowContext& row, const Emit& emit) const override;
    [[nodiscard]] double Estimate() const override;

 private:
    std::size_t source_;
    std::shared_ptr<const SelectPlan> query_;
    NodeList conditions_;
};

/// The rows of a join, leaving out those that repeat the rows of some of its sources: DISTINCTROW.
class DistinctRowProducer final : public Producer {
 public:
    DistinctRowProducer(ProducerPtr input, std::vector<std::size_t> sources)
        : input_(std::move(input)), sources_(std::move(sources)) {}

    bool Produce(RowContext& row, const Emit& emit) const override;
    [[nodiscard]] double Estimate() const override { return input_->Estimate(); }

 private:
    ProducerPtr input_;
    std::vector<std::size_t> sources_;
};

}  // namespace quardele::sql
