#include "contents.h"

namespace quardele::jet::test {

TableContents ReadContents(const Table& table) {
    TableContents contents{.columns = table.Columns(), .rows = {}};
    RowScan scan = table.Scan();
    while (const auto row = scan.Next()) {
        auto& values = contents.rows.emplace_back();
        for (std::size_t i = 0; i < contents.columns.size(); ++i) {
            values.push_back(row->Value(static_cast<int>(i)));
        }
    }
    return contents;
}

Contents ReadContents(const std::filesystem::path& file) {
    Contents contents;
    const auto database = Database::Open(file, OpenMode::ReadOnly);
    for (const CatalogEntry& entry : database->Catalog()) {
        if (!entry.system && !entry.linked) {
            contents[entry.name] = ReadContents(*database->OpenTable(entry.name));
        }
    }
    return contents;
}

}  // namespace quardele::jet::test
