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
constexpr double kStartLeaves = 0.05;
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

/// Whether the first column of an entry, a text, has a key that begins so.
bool HasStart(const jet::IndexCursor& cursor, std::string_view start) {
    const auto key = cursor.KeyBytes();
    // The value stands behind its marker.
    return key.size() > start.size() &&
           std::equal(start.begin(), start.end(), key.begin() + 1,
                      [](char left, std::uint8_t right) { return static_cast<std::uint8_t>(left) == right; });
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
        if (!range_->start.empty()) {
            return rows * kStartLeaves;
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
        if (const auto ids = range_->start.empty() ? RowsInRange(row) : RowsWithStart()) {
            return std::all_of(ids->begin(), ids->end(),
                               [&](jet::RowId id) { return !Accepts(id, row) || emit(); });
        }
    }
    return Scan(row, emit);
}

bool TableProducer::Scan(RowContext& row, const Emit& emit) const {
    jet::RowScan scan = table_.Scan();
    while (row.Advance(source_, scan)) {
        if (AllTrue(conditions_, row) && !emit()) {
            return false;
        }
    }
    return true;
}

bool TableProducer::NeverFails() const {
    return std::all_of(conditions_.begin(), conditions_.end(),
                       [](const NodePtr& condition) { return condition->NeverFails(); });
}

bool TableProducer::Accepts(jet::RowId id, RowContext& row) const {
    auto stored = table_.Fetch(id);
    return stored && Accepts(std::move(*stored), row);
}

bool TableProducer::Accepts(jet::Row stored, RowContext& row) const {
    row.SetRow(source_, std::move(stored));
    return AllTrue(conditions_, row);
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
    const std::size_t most = range_->prefix.empty() ? MostSought() : SIZE_MAX;
    for (bool more = true; more && !IsBehind(cursor, last); more = cursor.Next()) {
        if (ids.size() >= most) {
            return std::nullopt;
        }
        ids.push_back(cursor.Current());
    }
    std::sort(ids.begin(), ids.end());
    return ids;
}

std::optional<std::vector<jet::RowId>> TableProducer::RowsWithStart() const {
    const std::string start = jet::SortKeyStart(range_->start);
    const Variant first(range_->start);
    const std::size_t most = MostSought();
    std::vector<jet::RowId> ids;
    jet::IndexCursor cursor = table_.OpenIndex(range_->index);
    for (bool more = cursor.Seek(jet::SeekOperator::GreaterOrEqual, {&first, 1});
         more && HasStart(cursor, start); more = cursor.Next()) {
        if (ids.size() >= most) {
            return std::nullopt;
        }
        ids.push_back(cursor.Current());
    }
    std::sort(ids.begin(), ids.end());
    return ids;
}

std::size_t TableProducer::MostSought() const {
    return table_.RowCount() / kScanFrom + 1;
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

bool KnownRowProducer::Produce(RowContext& row, const Emit& emit) const {
    row.SetKey(source_, id_);
    return emit();
}

bool FilterProducer::Produce(RowContext& row, const Emit& emit) const {
    return input_->Produce(row, [&] { return !AllTrue(conditions_, row) || emit(); });
}

}  // namespace quardele::sql
