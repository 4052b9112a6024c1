#include "newfile/table_copy.h"

#include <algorithm>

#include "definitions/catalog_format.h"
#include "indexes/index_update.h"
#include "indexes/index_walk.h"
#include "rows/long_value.h"
#include "rows/row_codec.h"
#include "rows/row_store.h"
#include "structure/index_filling.h"

namespace quardele::jet {

namespace {

/// A change of the new file ends after so many rows, or bytes.
constexpr std::size_t kRowsAtATime = 2000;
constexpr std::size_t kBytesAtATime = std::size_t{4} << 20;

/// The new number of a table by its old one; none for numbers that mean other objects.
std::optional<std::uint32_t> NewIdentity(const NewPages& pages, std::uint32_t identity) {
    if (identity >= static_cast<std::uint32_t>(catalog_format::kRoot)) {
        return std::nullopt;
    }
    const auto found = pages.find(identity & catalog_format::kPageMask);
    return found == pages.end() ? std::nullopt
                                : std::optional((identity & ~catalog_format::kPageMask) | found->second);
}

// Old files may lack the record of a column.
void AddMissingRecords(const TableDef& table, DefinitionParts& parts) {
    for (const StoredColumn& column : table.stored) {
        const bool has = std::any_of(
            parts.longValueMaps.begin(), parts.longValueMaps.end(),
            [&column](const ByteString& record) { return ByteView(record, 0).U16(0) == column.number; });
        if (column.IsLong() && !has) {
            StoreLittle(std::span(parts.longValueMaps.emplace_back(long_value_map::kSize)), column.number);
        }
    }
}

std::size_t BytesOf(const RowDraft& draft, std::size_t columns) {
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < columns; ++i) {
        bytes += draft.At(i) ? draft.At(i)->size() : 0;
    }
    return bytes;
}

}  // namespace

DefinitionParts EmptiedDefinition(const TableDef& table, const NewPages& pages) {
    DefinitionParts parts = DefinitionParts::Split({table.bytes, table.page});
    StoreLittle(std::span(parts.header).subspan(kJet4.def.rowCount), std::uint32_t{0});
    for (ByteString& statistics : parts.statistics) {
        std::fill(statistics.begin(), statistics.end(), std::uint8_t{0});
    }
    for (NamedPart& index : parts.indexes) {
        const std::size_t at = kJet4.logicalIndex.partnerTable;
        if (const auto partner = pages.find(ByteView(index.bytes, table.page).U32(at));
            partner != pages.end()) {
            StoreLittle(std::span(index.bytes).subspan(at), partner->second);
        }
    }
    AddMissingRecords(table, parts);
    return parts;
}

TableCopy::TableCopy(const TableImpl& source, const NewPages& pages, int identities)
    : source_(source), pages_(pages), identities_(identities), target_(pages.at(source.Def().page)) {}

void TableCopy::CopyRows(DraftFile& target, const Progress& progress) {
    RowScan scan = source_.Scan();
    for (bool more = true; more;) {
        const std::size_t before = rows_.size();
        target.Change([&](Transaction& pages, PageAllocator& allocator) {
            more = CopySome(scan, pages, allocator);
            TableCounters(pages, target_).AddRows(static_cast<int>(rows_.size() - before));
        });
        progress(rows_.size() - before);
    }
}

// False when there are no more rows.
bool TableCopy::CopySome(RowScan& scan, Transaction& pages, PageAllocator& allocator) {
    const TableDef table = TableDef::Read(pages, target_);
    RowStore rows(pages, allocator, table);
    LongValueWriter longValues(pages, allocator);
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < kRowsAtATime && bytes < kBytesAtATime; ++i) {
        const auto row = scan.Next();
        if (!row) {
            return false;
        }
        RowDraft draft = DraftOf(*row, table);
        bytes += BytesOf(draft, table.stored.size());
        draft.Fit();
        rows_.push_back({.before = row->Id(), .after = rows.Add(draft.Store(longValues))});
    }
    return true;
}

// The values' bytes go over as they are; only where long ones lie is decided anew.
RowDraft TableCopy::DraftOf(const Row& row, const TableDef& table) const {
    const ByteView bytes(row.Bytes(), row.Id().page);
    ByteString fixedArea;
    RowFields fields = SplitRow(bytes, source_.Def(), source_.Layout(), fixedArea);
    Translate(fields);
    RowDraft draft(table, fields, std::move(fixedArea));
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (table.stored[i].IsLong() && fields[i] && !fields[i]->empty()) {
            draft.Give(i, ReadLongValue(source_.Pages(), {*fields[i], row.Id().page}));
        }
    }
    return draft;
}

void TableCopy::Translate(RowFields& fields) const {
    if (identities_ < 0) {
        return;
    }
    auto& field = fields[static_cast<std::size_t>(identities_)];
    if (!field) {
        return;
    }
    if (const auto identity = NewIdentity(pages_, ByteView(*field, source_.Def().page).U32(0))) {
        StoreLittle(std::span(*field), *identity);
    }
}

void TableCopy::FillIndexes(DraftFile& target, const Progress& progress) {
    for (std::size_t index = 0; index < source_.Def().realIndexes.size(); ++index) {
        target.Change([&](Transaction& pages, PageAllocator& allocator) {
            const TableDef table = TableDef::Read(pages, target_);
            FillIndex(pages, allocator, table, index, EntriesIn(pages, allocator, table, index));
        });
        progress(rows_.size());
    }
}

// The rows come once more for each index: keeping the keys of all indexes in memory would take more of it
// than the pages do.
IndexEntries TableCopy::EntriesIn(Transaction& pages, PageAllocator& allocator, const TableDef& table,
                                  std::size_t index) const {
    const RealIndex& real = table.realIndexes[index];
    const IndexUpdate keys(pages, allocator, table);
    IndexEntries entries;
    RowScan scan = source_.Scan();
    for (const Moved& moved : rows_) {
        const auto row = scan.Next();
        if (!row || row->Id() != moved.before) {
            ThrowDamaged(source_.Def().page, u"table modifiée pendant sa copie");
        }
        const RowKey key = keys.KeyIn(real, DraftOf(*row, table));
        if (!key.known) {
            return TranslatedEntries(index);
        }
        if (!(real.ignoreNulls && key.allNull)) {
            entries.Add(key.bytes, moved.after);
        }
    }
    entries.Sort();
    return entries;
}

// Where the order of texts is not ours to make, the keys of the old index are taken over.
IndexEntries TableCopy::TranslatedEntries(std::size_t index) const {
    const TableDef& def = source_.Def();
    IndexEntries entries;
    IndexWalk walk(source_.Pages(), def.page, def.realIndexes[index]);
    for (bool found = walk.First(); found; found = walk.Next()) {
        const auto entry = std::span(walk.Entry());
        const RowId row = EntryRow(entry, def.realIndexes[index].root);
        const auto moved = std::lower_bound(rows_.begin(), rows_.end(), row,
                                            [](const Moved& m, RowId id) { return m.before < id; });
        if (moved != rows_.end() && moved->before == row) {
            entries.Add(entry.first(entry.size() - kEntryRow), moved->after);
        }
    }
    entries.Sort();
    return entries;
}

}  // namespace quardele::jet
