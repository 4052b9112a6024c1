// The rows of a condition whose parts are found in different ways.
#pragma once

#include "rows/producer.h"

namespace quardele::sql {

/// Rows that at least one of several producers finds; each comes once. They come in physical order: of the
/// first of the sources, then of the next.
class AlternativesProducer final : public Producer {
 public:
    /// Every alternative makes rows of the same sources.
    AlternativesProducer(std::vector<ProducerPtr> alternatives, std::vector<std::size_t> sources)
        : alternatives_(std::move(alternatives)), sources_(std::move(sources)) {}

    bool Produce(RowContext& row, const Emit& emit) const override;
    [[nodiscard]] double Estimate() const override;
    [[nodiscard]] double Cost() const override;

 private:
    [[nodiscard]] std::vector<jet::RowId> Collect(RowContext& row) const;

    std::vector<ProducerPtr> alternatives_;
    std::vector<std::size_t> sources_;
};

}  // namespace quardele::sql
