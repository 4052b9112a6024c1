#include "empty_file.h"

#include <algorithm>

#include <basic/date.h>

#include "data_page_editor.h"
#include "file_header.h"
#include "page_cache.h"
#include "system_tables.h"
#include "table_layout.h"

namespace quardele::jet {

namespace {

constexpr std::size_t kMapBytes = 64;

void InsertAll(Transaction& pages, std::uint32_t table, const std::vector<std::vector<NamedValue>>& rows) {
    for (const auto& row : rows) {
        InsertNamed(pages, table, row);
    }
}

void MakeSystemTables(Transaction& pages) {
    PageAllocator allocator(pages);
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

void MakeFreePageMap(Transaction& pages) {
    Page& page = pages.Append();
    // The page belongs to the file; its number stands for that.
    DataPageEditor::Initialise(page, pages.Layout(), kGlobalMapPage);
    ByteString free(usage_map::kInlineHeader + kMapBytes, 0xFF);
    std::fill_n(free.begin(), usage_map::kInlineHeader, std::uint8_t{0});
    free[usage_map::kInlineHeader] = 0xFC;  // the header and this page are in use
    DataPageEditor editor(pages, page.number);
    const bool stored = editor.Add(0, free).has_value() && editor.Add(0, ByteString(free.size())).has_value();
    if (!stored) {
        ThrowDamaged(kGlobalMapPage, u"page de cartes sans place");
    }
    editor.Store();
}

void WriteEmptyFile(OsFile& file) {
    file.WriteAt(0, NewHeaderPage());
    PageCache cache(file, kJet4);
    Transaction pages(cache);
    MakeFreePageMap(pages);
    MakeSystemTables(pages);
    InsertAll(pages, kCatalogPage, FirstObjects(basic::Now()));
    InsertAll(pages, kRightsPage, FirstRights());
    pages.Commit([&file](std::span<const PagePtr> changed) {
        for (const PagePtr& page : changed) {
            file.WriteAt(std::uint64_t{page->number} * page->size, page->View().Span());
        }
    });
}

}  // namespace quardele::jet
