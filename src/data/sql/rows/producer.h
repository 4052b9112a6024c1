// The parts of a plan: each makes rows, one by one, in a row context.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "expressions/node.h"

namespace quardele::sql {

/// Called for each row, which lies in the context; false asks for no more.
using Emit = std::function<bool()>;

/// Sources as bits, by their position in the FROM order.
using SourceSet = std::uint64_t;

[[nodiscard]] constexpr SourceSet SetOf(std::size_t source) {
    return SourceSet{1} << source;
}
[[nodiscard]] constexpr bool IsWithin(SourceSet inner, SourceSet outer) {
    return (inner & ~outer) == 0;
}

class TableProducer;

class Producer {
 public:
    virtual ~Producer() = default;
    /// False when `emit` asked to stop.
    virtual bool Produce(RowContext& row, const Emit& emit) const = 0;
    /// About how many rows will come.
    [[nodiscard]] virtual double Estimate() const = 0;
    /// About what that takes, in rows that a scan reads.
    [[nodiscard]] virtual double Cost() const { return Estimate(); }
    /// Itself when it reads one table, else null.
    [[nodiscard]] virtual const TableProducer* AsTable() const { return nullptr; }
};

using ProducerPtr = std::unique_ptr<const Producer>;

/// What finding one row through an index costs, in rows of a scan.
inline constexpr double kSeekCost = 4;

/// The part of an index that conditions leave: equal values for its first columns, and bounds for the next.
struct IndexRange {
    struct Bound {
        NodePtr value;
        bool strict = false;
    };
    int index = 0;
    NodeList prefix;
    std::optional<Bound> low;
    std::optional<Bound> high;
    /// Not empty: the first column begins with this text, and there are no other bounds.
    Text start = {};
    /// At most one row can match.
    bool single = false;
};

/// The rows of one table for which all conditions are true.
class TableProducer final : public Producer {
 public:
    /// `selective`: one of the conditions is an equality, which leaves few rows.
    TableProducer(std::size_t source, const jet::Table& table, NodeList conditions,
                  std::optional<IndexRange> range, bool selective = false);

    bool Produce(RowContext& row, const Emit& emit) const override;
    [[nodiscard]] double Estimate() const override;
    [[nodiscard]] double Cost() const override;
    [[nodiscard]] const TableProducer* AsTable() const override { return this; }

    [[nodiscard]] std::size_t Source() const { return source_; }
    [[nodiscard]] const jet::Table& Table() const { return table_; }
    [[nodiscard]] bool HasConditions() const { return !conditions_.empty(); }
    /// Whether rows are looked for through an index, so that there are few of them.
    [[nodiscard]] bool HasRange() const { return range_.has_value(); }
    /// Whether the conditions hold for any row whatsoever without an error.
    [[nodiscard]] bool NeverFails() const;

    /// Puts a row into the context; whether the conditions hold for it. One that is gone is not accepted.
    [[nodiscard]] bool Accepts(jet::RowId id, RowContext& row) const;
    [[nodiscard]] bool Accepts(jet::Row stored, RowContext& row) const;

 private:
    bool Scan(RowContext& row, const Emit& emit) const;
    [[nodiscard]] std::optional<std::vector<jet::RowId>> RowsInRange(RowContext& row) const;
    [[nodiscard]] std::optional<std::vector<jet::RowId>> RowsWithStart() const;
    /// So many rows of an index are read one by one.
    [[nodiscard]] std::size_t MostSought() const;

    std::size_t source_;
    const jet::Table& table_;
    NodeList conditions_;
    std::optional<IndexRange> range_;
    bool selective_;
};

/// All rows of one table in the order of an index, without reading them.
class IndexOrderProducer final : public Producer {
 public:
    IndexOrderProducer(std::size_t source, const jet::Table& table, int index, bool backwards)
        : source_(source), table_(table), index_(index), backwards_(backwards) {}

    bool Produce(RowContext& row, const Emit& emit) const override;
    [[nodiscard]] double Estimate() const override { return static_cast<double>(table_.RowCount()); }

 private:
    std::size_t source_;
    const jet::Table& table_;
    int index_;
    bool backwards_;
};

/// One row of a table, which is known.
class KnownRowProducer final : public Producer {
 public:
    KnownRowProducer(std::size_t source, jet::RowId id) : source_(source), id_(id) {}

    bool Produce(RowContext& row, const Emit& emit) const override;
    [[nodiscard]] double Estimate() const override { return 1; }

 private:
    std::size_t source_;
    jet::RowId id_;
};

/// What a SELECT without FROM reads: one row without sources.
class SingleRowProducer final : public Producer {
 public:
    bool Produce(RowContext&, const Emit& emit) const override { return emit(); }
    [[nodiscard]] double Estimate() const override { return 1; }
};

/// The rows of another producer for which all conditions are true.
class FilterProducer final : public Producer {
 public:
    FilterProducer(ProducerPtr input, NodeList conditions)
        : input_(std::move(input)), conditions_(std::move(conditions)) {}

    bool Produce(RowContext& row, const Emit& emit) const override;
    [[nodiscard]] double Estimate() const override { return input_->Estimate() / 2; }
    [[nodiscard]] double Cost() const override { return input_->Cost(); }

 private:
    ProducerPtr input_;
    NodeList conditions_;
};

}  // namespace quardele::sql
