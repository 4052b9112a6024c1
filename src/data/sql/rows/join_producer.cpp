#include <jet/collation.h>

#include "rows/key_table.h"
#include "rows/producer.h"
#include "rows/sort_key.h"

namespace quardele::sql {
namespace {

/// The values that must be equal, as one key; false when one of them is Null, which equals nothing.
bool MakeKey(const NodeList& nodes, RowContext& row, std::string& key) {
    key.clear();
    for (const NodePtr& node : nodes) {
        Variant scratch;
        const Variant& value = node->Peek(row, scratch);
        if (value.IsNull()) {
            return false;
        }
        AppendSortKey(key, value);
    }
    return true;
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

void HashJoinProducer::Collect(RowContext& row, InnerRows& inner) const {
    std::string key;
    parts_.inner->Produce(row, [&] {
        if (MakeKey(innerKeys_, row, key)) {
            inner.byKey.Add(key, inner.count++);
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
    std::string key;
    return parts_.outer->Produce(row, [&] {
        bool matched = false;
        if (MakeKey(outerKeys_, row, key)) {
            for (std::uint32_t entry = inner.byKey.First(key); entry != KeyedRows::kEnd;
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
    std::vector<Variant> sought(1);
    std::vector<jet::RowId> ids;
    return parts_.outer->Produce(row, [&] {
        ids.clear();
        sought[0] = outerKey_->Value(row);
        const bool seekable =
            !sought[0].IsNull() && (!sought[0].IsText() || jet::HasSortKey(sought[0].As<Text>()));
        for (bool found = seekable && cursor.Seek(jet::SeekOperator::Equal, sought); found;
             found = cursor.Next() && cursor.Matches(sought)) {
            ids.push_back(cursor.Current());
        }
        bool matched = false;
        for (const jet::RowId id : ids) {
            const bool goOn = table.ProduceRow(id, row, [&] {
                if (!AllTrue(parts_.on, row)) {
                    return true;
                }
                matched = true;
                return emit();
            });
            if (!goOn) {
                return false;
            }
        }
        Clear(parts_.innerSources, row);
        return matched || !parts_.keepOuter || emit();
    });
}

}  // namespace quardele::sql
