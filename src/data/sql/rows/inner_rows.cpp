#include "rows/inner_rows.h"

#include <algorithm>

#include <jet/collation.h>

namespace quardele::sql {
namespace {

/// Of longer texts an index holds the beginning only.
constexpr std::size_t kMostIndexedUnits = 255;

/// Whether an index finds all that equals a value, and nothing else.
bool IsTold(const Variant& value) {
    return !value.IsText() ||
           (value.As<Text>().size() <= kMostIndexedUnits && jet::HasSortKey(value.As<Text>()));
}

}  // namespace

bool JoinKey::Make(const NodeList& nodes, RowContext& row) {
    bytes_.clear();
    return std::all_of(nodes.begin(), nodes.end(),
                       [&](const NodePtr& node) { return keys_.AppendUnlessNull(bytes_, *node, row); });
}

HashedInnerRows::HashedInnerRows(const JoinParts& parts, const JoinByHash& way, RowContext& row)
    : parts_(parts), way_(way) {
    std::uint32_t count = 0;
    parts_.inner->Produce(row, [&] {
        if (key_.Make(way_.innerKeys, row)) {
            byKey_.Add(key_.Bytes(), count++);
            for (const std::size_t source : parts_.innerSources) {
                ids_.push_back(row.KeyOf(source));
            }
        }
        return true;
    });
}

bool HashedInnerRows::Each(RowContext& row, const Emit& use) {
    if (!key_.Make(way_.outerKeys, row)) {
        return true;
    }
    const std::size_t width = parts_.innerSources.size();
    for (std::uint32_t entry = byKey_.First(key_.Bytes()); entry != KeyedRows::kEnd;
         entry = byKey_.Next(entry)) {
        const std::size_t first = byKey_.Row(entry) * width;
        for (std::size_t i = 0; i < width; ++i) {
            row.SetKey(parts_.innerSources[i], ids_[first + i]);
        }
        if (!use()) {
            return false;
        }
    }
    return true;
}

SoughtInnerRows::SoughtInnerRows(const JoinParts& parts, const JoinByIndex& way)
    : way_(way),
      table_(*parts.inner->AsTable()),
      cursor_(table_.Table().OpenIndex(way.index)),
      values_(way.outerKeys.size()) {
    const jet::Index& index = table_.Table().Indexes()[static_cast<std::size_t>(way.index)];
    single_ = index.unique && index.columns.size() == values_.size();
}

bool SoughtInnerRows::Take(RowContext& row) {
    sought_ = !TakeValues(row) && sought_;
    return sought_ || std::all_of(values_.begin(), values_.end(), IsTold);
}

bool SoughtInnerRows::Each(RowContext& row, const Emit& use) {
    if (!sought_) {
        Seek(row);
    }
    const std::size_t source = table_.Source();
    return std::all_of(rows_.begin(), rows_.end(), [&](const jet::Row& inner) {
        row.SetRow(source, inner);
        return !AllTrue(way_.on, row) || use();
    });
}

bool SoughtInnerRows::TakeValues(RowContext& row) {
    bool changed = false;
    for (std::size_t i = 0; i < values_.size(); ++i) {
        const Node& node = *way_.outerKeys[i];
        if (ClassOf(node.Type()) == TypeClass::Texts) {
            changed = TakeText(node, row, values_[i]) || changed;
            continue;
        }
        Variant value = node.Value(row);
        if (value != values_[i]) {
            values_[i] = std::move(value);
            changed = true;
        }
    }
    return changed;
}

bool SoughtInnerRows::TakeText(const Node& node, RowContext& row, Variant& value) {
    const auto text = node.Characters(row, buffer_);
    if (text ? value.IsText() && value.As<Text>() == *text : value.IsNull()) {
        return false;
    }
    value = text ? Variant(Text(*text)) : Variant(basic::Null());
    return true;
}

bool SoughtInnerRows::HasNull() const {
    return std::any_of(values_.begin(), values_.end(), [](const Variant& value) { return value.IsNull(); });
}

void SoughtInnerRows::Seek(RowContext& row) {
    sought_ = true;
    rows_.clear();
    for (bool found = !HasNull() && cursor_.Seek(jet::SeekOperator::Equal, values_); found;
         found = !single_ && cursor_.NextEqual()) {
        if (table_.Accepts(cursor_.Current(), row)) {
            rows_.push_back(*row.ReadRow(table_.Source()));
        }
    }
}

}  // namespace quardele::sql
