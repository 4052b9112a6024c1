#include <algorithm>

#include <jet/collation.h>

#include "rows/producer.h"

namespace quardele::sql {
namespace {

/// Reading rows one by one through an index costs more than reading all of them in their order when more
/// than one in so many is wanted.
constexpr std::size_t kScanFrom = 4;

// What a kind of condition leaves of a table, as long as nothing better is known.
constexpr double kEqualityLeaves = 0.01;
constexpr double kRangeLeaves = 0.3;
constexpr double kConditionLeaves = 0.5;

/// The values of the nodes; empty when one is Null, which nothing equals, or a text that no index can hold.
struct SeekValues {
    std::vector<Variant> values;
    bool seekable = true;
    bool hasNull = false;

    void Add(const Node& node, RowContext& row) {
        values.push_back(node.Value(row));
        hasNull = hasNull || values.back().IsNull();
        seekable = seekable && (!values.back().IsText() || jet::HasSortKey(values.back().As<Text>()));
    }
};

using Bound = std::optional<IndexRange::Bound>;

bool SeekFirst(jet::IndexCursor& cursor, const std::vector<Variant>& values, const Bound& low) {
    if (values.empty()) {
        return cursor.First();
    }
    const bool strict = low && low->strict;
    return cursor.Seek(strict ? jet::SeekOperator::Greater : jet::SeekOperator::GreaterOrEqual, values);
}

bool SeekLast(jet::IndexCursor& cursor, const std::vector<Variant>& values, const Bound& high) {
    if (values.empty()) {
        return cursor.Last();
    }
    const bool strict = high && high->strict;
    return cursor.Seek(strict ? jet::SeekOperator::Less : jet::SeekOperator::LessOrEqual, values);
}

bool IsBehind(const jet::IndexCursor& cursor, const jet::IndexCursor& last) {
    const auto key = cursor.KeyBytes();
    const auto lastKey = last.KeyBytes();
    return std::lexicographical_compare(lastKey.begin(), lastKey.end(), key.begin(), key.end());
}

}  // namespace

TableProducer::TableProducer(std::size_t source, const jet::Table& table, NodeList conditions,
                             std::optional<IndexRange> range, bool selective)
    : source_(source),
      table_(table),
      conditions_(std::move(conditions)),
      range_(std::move(range)),
      selective_(selective) {}

double TableProducer::Estimate() const {
    const auto rows = static_cast<double>(table_.RowCount());
    if (range_) {
        if (range_->single) {
            return 1;
        }
        return rows * (range_->prefix.empty() ? kRangeLeaves : kEqualityLeaves);
    }
    if (selective_) {
        return rows * kEqualityLeaves;
    }
    return conditions_.empty() ? rows : rows * kConditionLeaves;
}

double TableProducer::Cost() const {
    return range_ ? Estimate() * kSeekCost : static_cast<double>(table_.RowCount());
}

bool TableProducer::Produce(RowContext& row, const Emit& emit) const {
    if (range_) {
        if (const auto ids = RowsInRange(row)) {
            return std::all_of(ids->begin(), ids->end(),
                               [&](jet::RowId id) { return ProduceRow(id, row, emit); });
        }
    }
    return Scan(row, emit);
}

bool TableProducer::Scan(RowContext& row, const Emit& emit) const {
    jet::RowScan scan = table_.Scan();
    while (auto stored = scan.Next()) {
        row.SetRow(source_, std::move(*stored));
        if (AllTrue(conditions_, row) && !emit()) {
            return false;
        }
    }
    return true;
}

bool TableProducer::ProduceRow(jet::RowId id, RowContext& row, const Emit& emit) const {
    auto stored = table_.Fetch(id);
    if (!stored) {
        return true;
    }
    row.SetRow(source_, std::move(*stored));
    return !AllTrue(conditions_, row) || emit();
}

/// The rows that the index range holds, in physical order; empty when a scan is the better or only way.
std::optional<std::vector<jet::RowId>> TableProducer::RowsInRange(RowContext& row) const {
    SeekValues low;
    for (const NodePtr& node : range_->prefix) {
        low.Add(*node, row);
    }
    SeekValues high = low;
    if (range_->low) {
        low.Add(*range_->low->value, row);
    }
    if (range_->high) {
        high.Add(*range_->high->value, row);
    }
    std::vector<jet::RowId> ids;
    if (low.hasNull || high.hasNull) {
        return ids;
    }
    if (!low.seekable || !high.seekable) {
        return std::nullopt;
    }
    jet::IndexCursor cursor = table_.OpenIndex(range_->index);
    jet::IndexCursor last = table_.OpenIndex(range_->index);
    if (!SeekFirst(cursor, low.values, range_->low) || !SeekLast(last, high.values, range_->high)) {
        return ids;
    }
    const std::size_t most = range_->prefix.empty() ? table_.RowCount() / kScanFrom + 1 : SIZE_MAX;
    for (bool more = true; more && !IsBehind(cursor, last); more = cursor.Next()) {
        if (ids.size() >= most) {
            return std::nullopt;
        }
        ids.push_back(cursor.Current());
    }
    std::sort(ids.begin(), ids.end());
    return ids;
}

bool IndexOrderProducer::Produce(RowContext& row, const Emit& emit) const {
    jet::IndexCursor cursor = table_.OpenIndex(index_);
    for (bool found = backwards_ ? cursor.Last() : cursor.First(); found;
         found = backwards_ ? cursor.Previous() : cursor.Next()) {
        row.SetKey(source_, cursor.Current());
        if (!emit()) {
            return false;
        }
    }
    return true;
}

bool FilterProducer::Produce(RowContext& row, const Emit& emit) const {
    return input_->Produce(row, [&] { return !AllTrue(conditions_, row) || emit(); });
}

}  // namespace quardele::sql
