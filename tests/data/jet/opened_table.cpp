#include "opened_table.h"

namespace quardele::jet::test {

int Ordinal(const Table& table, const Text& column) {
    const int ordinal = table.FindColumn(column);
    EXPECT_GE(ordinal, 0) << basic::ToUtf8(column);
    return ordinal;
}

void Set(Table& table, RowId row, const Text& column, Variant value) {
    const ColumnChange change{Ordinal(table, column), std::move(value)};
    table.Update(row, {&change, 1});
}

Variant Get(const Table& table, RowId row, const Text& column) {
    return table.Fetch(row)->Value(Ordinal(table, column));
}

std::vector<RowId> AllRows(const Table& table) {
    std::vector<RowId> rows;
    RowScan scan = table.Scan();
    while (const auto row = scan.NextId()) {
        rows.push_back(*row);
    }
    return rows;
}

RowId Add(Table& table, const std::vector<Named>& values) {
    std::vector<ColumnChange> changes;
    for (const Named& named : values) {
        changes.push_back({Ordinal(table, named.column), named.value});
    }
    return table.Insert(changes);
}

}  // namespace quardele::jet::test
