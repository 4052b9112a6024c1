#include "newfile/empty_file.h"

#include <basic/date.h>

#include "file/file_header.h"
#include "newfile/draft_file.h"
#include "newfile/system_tables.h"
#include "structure/table_layout.h"

namespace quardele::jet {

namespace {

void InsertAll(Transaction& pages, std::uint32_t table, const std::vector<std::vector<NamedValue>>& rows) {
    for (const auto& row : rows) {
        InsertNamed(pages, table, row);
    }
}

void MakeSystemTables(Transaction& pages, PageAllocator& allocator) {
    const auto definitions = SystemDefinitions();
    std::vector<std::uint32_t> numbers;
    for (std::size_t i = 0; i < definitions.size(); ++i) {
        numbers.push_back(allocator.Allocate().number);
    }
    MapRows maps(pages, allocator);
    for (std::size_t i = 0; i < definitions.size(); ++i) {
        LayOutTable(pages, allocator, maps, numbers[i], definitions[i]);
    }
}

}  // namespace

void WriteEmptyFile(OsFile& file) {
    DraftFile draft(file, NewHeaderPage());
    draft.Change([](Transaction& pages, PageAllocator& allocator) {
        MakeSystemTables(pages, allocator);
        InsertAll(pages, kCatalogPage, FirstObjects(basic::Now()));
        InsertAll(pages, kRightsPage, FirstRights());
    });
}

}  // namespace quardele::jet
