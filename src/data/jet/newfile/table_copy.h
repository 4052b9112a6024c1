// Copying one table into a file that is being made.
#pragma once

#include <functional>
#include <map>
#include <vector>

#include "definitions/definition_parts.h"
#include "indexes/row_key.h"
#include "newfile/draft_file.h"
#include "rows/row_draft.h"
#include "structure/index_entries.h"
#include "table_impl.h"

namespace quardele::jet {

/// Where the definition of each table lies in the new file, by its page in the old one.
using NewPages = std::map<std::uint32_t, std::uint32_t>;

/// The table's definition for the new file, with no rows yet, no maps and no roots; relationships lead to the
/// new places of other tables.
[[nodiscard]] DefinitionParts EmptiedDefinition(const TableDef& table, const NewPages& pages);

class TableCopy {
 public:
    /// `identities` is the ordinal of a column that names tables by their pages, -1 for none. The source and
    /// the map must outlive it.
    TableCopy(const TableImpl& source, const NewPages& pages, int identities);

    /// Called with the number of rows that were done since the last call.
    using Progress = std::function<void(std::size_t rows)>;

    void CopyRows(DraftFile& target, const Progress& progress);
    void FillIndexes(DraftFile& target, const Progress& progress);

 private:
    struct Moved {
        RowId before;
        RowId after;
    };

    [[nodiscard]] RowDraft DraftOf(const Row& row, const TableDef& table) const;
    void Translate(RowFields& fields) const;
    [[nodiscard]] bool CopySome(RowScan& scan, Transaction& pages, PageAllocator& allocator);
    [[nodiscard]] IndexEntries EntriesIn(Transaction& pages, PageAllocator& allocator, const TableDef& table,
                                         std::size_t index) const;
    [[nodiscard]] IndexEntries TranslatedEntries(std::size_t index) const;

    const TableImpl& source_;
    const NewPages& pages_;
    int identities_;
    std::uint32_t target_;
    std::vector<Moved> rows_;  ///< in the order of the old identities
};

}  // namespace quardele::jet
