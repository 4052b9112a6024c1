#include <algorithm>

#include <jet/collation.h>

#include "rows/key_table.h"
#include "rows/node_key.h"
#include "rows/producer.h"

namespace quardele::sql {
namespace {

/// The values that must be equal, as one key.
class JoinKey {
 public:
    /// False when one of the values is Null, which equals nothing.
    bool Make(const NodeList& nodes, RowContext& row) {
        bytes_.clear();
        return std::all_of(nodes.begin(), nodes.end(),
                           [&](const NodePtr& node) { return keys_.AppendUnlessNull(bytes_, *node, row); });
    }
    [[nodiscard]] std::string_view Bytes() const { return bytes_; }

 private:
    NodeKeys keys_;
    std::string bytes_;
};

/// A Null equals nothing, nor does a text that no index can hold.
bool IsSeekable(const Variant& value) {
    return !value.IsNull() && (!value.IsText() || jet::HasSortKey(value.As<Text>()));
}

void Clear(const std::vector<std::size_t>& sources, RowContext& row) {
    for (const std::size_t source : sources) {
        row.SetKey(source, kNoRow);
    }
}

}  // namespace

/// The inner side: one identity per source and row.
struct HashJoinProducer::InnerRows {
    KeyedRows byKey;
    std::vector<jet::RowId> ids;
    std::uint32_t count = 0;
};

double HashJoinProducer::Estimate() const {
    const double outer = parts_.outer->Estimate();
    return outerKeys_.empty() ? outer * parts_.inner->Estimate() : outer;
}

double HashJoinProducer::Cost() const {
    return parts_.outer->Cost() + parts_.inner->Cost() + parts_.inner->Estimate() + Estimate();
}

void HashJoinProducer::Collect(RowContext& row, InnerRows& inner) const {
    JoinKey key;
    parts_.inner->Produce(row, [&] {
        if (key.Make(innerKeys_, row)) {
            inner.byKey.Add(key.Bytes(), inner.count++);
            for (const std::size_t source : parts_.innerSources) {
                inner.ids.push_back(row.KeyOf(source));
            }
        }
        return true;
    });
}

bool HashJoinProducer::Produce(RowContext& row, const Emit& emit) const {
    InnerRows inner;
    Collect(row, inner);
    const std::size_t width = parts_.innerSources.size();
    JoinKey key;
    return parts_.outer->Produce(row, [&] {
        bool matched = false;
        if (key.Make(outerKeys_, row)) {
            for (std::uint32_t entry = inner.byKey.First(key.Bytes()); entry != KeyedRows::kEnd;
                 entry = inner.byKey.Next(entry)) {
                const std::size_t first = inner.byKey.Row(entry) * width;
                for (std::size_t i = 0; i < width; ++i) {
                    row.SetKey(parts_.innerSources[i], inner.ids[first + i]);
                }
                if (!AllTrue(parts_.on, row)) {
                    continue;
                }
                matched = true;
                if (!emit()) {
                    return false;
                }
            }
        }
        Clear(parts_.innerSources, row);
        return matched || !parts_.keepOuter || emit();
    });
}

bool IndexJoinProducer::Produce(RowContext& row, const Emit& emit) const {
    const TableProducer& table = *parts_.inner->AsTable();
    jet::IndexCursor cursor = table.Table().OpenIndex(index_);
    std::vector<Variant> sought(outerKeys_.size());
    std::vector<jet::RowId> ids;
    return parts_.outer->Produce(row, [&] {
        ids.clear();
        for (std::size_t i = 0; i < sought.size(); ++i) {
            sought[i] = outerKeys_[i]->Value(row);
        }
        for (bool found = std::all_of(sought.begin(), sought.end(), IsSeekable) &&
                          cursor.Seek(jet::SeekOperator::Equal, sought);
             found; found = cursor.Next() && cursor.Matches(sought)) {
            ids.push_back(cursor.Current());
        }
        bool matched = false;
        for (const jet::RowId id : ids) {
            if (!table.Accepts(id, row) || !AllTrue(parts_.on, row)) {
                continue;
            }
            matched = true;
            if (!emit()) {
                return false;
            }
        }
        Clear(parts_.innerSources, row);
        return matched || !parts_.keepOuter || emit();
    });
}

}  // namespace quardele::sql
