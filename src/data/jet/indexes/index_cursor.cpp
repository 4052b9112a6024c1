#include <algorithm>

#include <jet/collation.h>

#include <basic/runtime_error.h>

#include "indexes/index_walk.h"
#include "indexes/key_encoder.h"
#include "rows/value_encoder.h"
#include "table_impl.h"

namespace quardele::jet {

namespace {

/// What to look for: the start of the entries that equal the values, or a point between entries.
struct SoughtKey {
    ByteString bytes;
    bool exact = true;    ///< some entry may equal the values
    bool behind = false;  ///< when not exact: the point lies behind the entries that start with the bytes
};

void CheckSeekable(const StoredColumn& column, const Variant& value) {
    if (column.IsText() && value.IsText() && !HasSortKey(value.As<Text>())) {
        throw basic::RuntimeError(
            basic::error::kOperationNotSupported,
            u"Ce texte contient des caractères dont l'ordre dans les index n'est pas connu.");
    }
}

SoughtKey MakeSoughtKey(const TableImpl& table, const RealIndex& index, std::span<const Variant> values) {
    if (!index.seekable) {
        throw basic::RuntimeError(basic::error::kOperationNotSupported,
                                  u"L'ordre des textes de cet index n'est pas connu.");
    }
    if (values.size() > index.columns.size()) {
        throw basic::RuntimeError(basic::error::kInvalidArgument);
    }
    SoughtKey key;
    for (std::size_t i = 0; i < values.size() && key.exact; ++i) {
        const IndexColumn& part = index.columns[i];
        const StoredColumn& column = table.Def().stored[static_cast<std::size_t>(part.column)];
        if (values[i].IsNull()) {
            AppendKey(column, part.ascending, std::nullopt, table.Layout(), key.bytes);
            continue;
        }
        CheckSeekable(column, values[i]);
        if (column.IsText() && values[i].IsText()) {
            AppendTextKey(values[i].As<Text>(), part.ascending, key.bytes);
            continue;
        }
        const SoughtValue sought = EncodeSought(column, values[i]);
        AppendKey(column, part.ascending, ByteView(sought.bytes, table.Def().page), table.Layout(),
                  key.bytes);
        key.exact = sought.side == 0;
        key.behind = (sought.side < 0) == part.ascending;
    }
    return key;
}

}  // namespace

struct IndexCursor::State {
    State(const TableImpl& ofTable, const RealIndex& ofIndex)
        : table(ofTable), index(ofIndex), walk(ofTable.Pages(), ofTable.Def().page, ofIndex) {}

    /// Moves the walk and remembers where it is. Until it has arrived the entry is the old one, so that the
    /// move can be made again.
    template <class Move>
    bool Find(const Move& move) {
        valid = table.Owner().Reading([&] { return move(walk); });
        generation = table.Owner().Pages().Generation();
        return valid;
    }
    // Pages have changed since the entry was read: where it lay means nothing any more.
    [[nodiscard]] bool IsStale() const { return generation != table.Owner().Pages().Generation(); }

    const TableImpl& table;
    const RealIndex& index;
    IndexWalk walk;
    bool valid = false;
    std::uint64_t generation = 0;
    ByteString sought;  ///< by the last Seek
};

IndexCursor::IndexCursor(std::unique_ptr<State> state) : state_(std::move(state)) {}
IndexCursor::IndexCursor(IndexCursor&&) noexcept = default;
IndexCursor& IndexCursor::operator=(IndexCursor&&) noexcept = default;
IndexCursor::~IndexCursor() = default;

bool IndexCursor::First() {
    return state_->Find([](IndexWalk& walk) { return walk.First(); });
}

bool IndexCursor::Last() {
    return state_->Find([](IndexWalk& walk) { return walk.Last(); });
}

bool IndexCursor::Next() {
    return state_->valid && state_->Find([this](IndexWalk& walk) {
        if (state_->IsStale()) {
            const ByteString entry = walk.Entry();
            return walk.FirstFrom(entry, true);
        }
        return walk.Next();
    });
}

bool IndexCursor::Previous() {
    return state_->valid && state_->Find([this](IndexWalk& walk) {
        if (state_->IsStale()) {
            const ByteString entry = walk.Entry();
            return walk.LastBefore(entry, false);
        }
        return walk.Previous();
    });
}

bool IndexCursor::Seek(SeekOperator op, std::span<const Variant> values) {
    state_->valid = false;
    SoughtKey key = MakeSoughtKey(state_->table, state_->index, values);
    const bool found = state_->Find([&](IndexWalk& walk) {
        switch (op) {
            case SeekOperator::Equal:
                return key.exact && walk.FirstFrom(key.bytes, false) && StartsWith(walk.Entry(), key.bytes);
            case SeekOperator::GreaterOrEqual:
                return walk.FirstFrom(key.bytes, !key.exact && key.behind);
            case SeekOperator::Greater:
                return walk.FirstFrom(key.bytes, key.exact || key.behind);
            case SeekOperator::LessOrEqual:
                return walk.LastBefore(key.bytes, key.exact || key.behind);
            case SeekOperator::Less:
                return walk.LastBefore(key.bytes, !key.exact && key.behind);
        }
        return false;
    });
    state_->sought = std::move(key.bytes);
    return found;
}

bool IndexCursor::NextEqual() {
    return Next() && StartsWith(state_->walk.Entry(), state_->sought);
}

bool IndexCursor::Matches(std::span<const Variant> values) const {
    if (!state_->valid) {
        return false;
    }
    const SoughtKey key = MakeSoughtKey(state_->table, state_->index, values);
    return key.exact && StartsWith(state_->walk.Entry(), key.bytes);
}

bool IndexCursor::Valid() const {
    return state_->valid;
}

RowId IndexCursor::Current() const {
    return EntryRow(state_->walk.Entry(), state_->index.root);
}

std::span<const std::uint8_t> IndexCursor::KeyBytes() const {
    const ByteString& entry = state_->walk.Entry();
    return std::span(entry).first(entry.size() - kEntryRow);
}

IndexCursor TableImpl::OpenIndex(int index) const {
    if (index < 0 || static_cast<std::size_t>(index) >= def_.realOf.size()) {
        throw basic::RuntimeError(basic::error::kIndexNotFound);
    }
    const RealIndex& real = def_.realIndexes[def_.realOf[static_cast<std::size_t>(index)]];
    return IndexCursor(std::make_unique<IndexCursor::State>(*this, real));
}

IndexCursor Table::OpenIndex(int index) const {
    return impl_->OpenIndex(index);
}

}  // namespace quardele::jet
