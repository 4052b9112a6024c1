#include "structure/named_row.h"

#include "rows/row_insert.h"

namespace quardele::jet {

std::vector<ColumnChange> ChangesOf(const TableDef& table, std::span<const NamedValue> values) {
    std::vector<ColumnChange> changes;
    for (const auto& [name, value] : values) {
        const int ordinal = table.FindColumn(name);
        if (ordinal < 0) {
            ThrowDamaged(table.page, u"table du système sans ses colonnes");
        }
        changes.push_back({.column = ordinal, .value = value});
    }
    return changes;
}

RowId InsertNamed(Transaction& pages, std::uint32_t table, std::span<const NamedValue> values) {
    const TableDef def = TableDef::Read(pages, table);
    return RowInsert(pages, def).Run(ChangesOf(def, values));
}

}  // namespace quardele::jet
