#include "table_rows.h"

namespace quardele::bench {

namespace {

jet::TableDesign DesignLike(const jet::Table& table) {
    jet::TableDesign design{.name = table.Name(), .columns = table.Columns(), .indexes = {}};
    for (const jet::Index& index : table.Indexes()) {
        jet::IndexDesign& made = design.indexes.emplace_back();
        made.name = index.name;
        made.primary = index.primary;
        made.unique = index.unique;
        made.ignoreNulls = index.ignoreNulls;
        made.required = index.required;
        for (const jet::IndexColumn& part : index.columns) {
            made.columns.push_back({.column = table.Columns()[static_cast<std::size_t>(part.column)].name,
                                    .ascending = part.ascending});
        }
    }
    return design;
}

}  // namespace

TableRows ReadRows(const std::filesystem::path& file, basic::TextView name, std::size_t most) {
    TableRows rows;
    rows.table = jet::Database::Open(file, jet::OpenMode::ReadOnly)->OpenTable(name);
    const auto columns = static_cast<int>(rows.table->Columns().size());
    jet::RowScan scan = rows.table->Scan();
    for (auto row = scan.Next(); row && rows.ours.size() < most; row = scan.Next()) {
        auto& ours = rows.ours.emplace_back();
        auto& theirs = rows.theirs.emplace_back();
        for (int column = 0; column < columns; ++column) {
            ours.push_back({column, row->Value(column)});
            theirs.push_back(ValueFor(ours.back().value));
        }
    }
    return rows;
}

void MakeOurFile(const std::filesystem::path& file, const jet::Table& like) {
    jet::Database::Create(file)->CreateTable(DesignLike(like));
}

void InsertOurs(jet::Table& table, const TableRows& rows, std::size_t first, std::size_t end) {
    for (std::size_t i = first; i < end; ++i) {
        table.Insert(rows.ours[i]);
    }
}

void InsertTheirs(SqliteFile& file, const TableRows& rows, std::size_t first, std::size_t end) {
    SqliteStatement insert(file, InsertInto(*rows.table));
    for (std::size_t i = first; i < end; ++i) {
        insert.BindAll(rows.theirs[i]);
        insert.Run();
    }
}

}  // namespace quardele::bench
