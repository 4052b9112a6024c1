#include "newfile/draft_file.h"

#include <algorithm>

#include "pages/data_page_editor.h"

namespace quardele::jet {

namespace {

constexpr std::size_t kMapBytes = 64;

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

OsFile& WithHeader(OsFile& file, std::span<const std::uint8_t> header) {
    file.WriteAt(0, header);
    return file;
}

}  // namespace

DraftFile::DraftFile(OsFile& file, std::span<const std::uint8_t> header)
    : file_(WithHeader(file, header)), cache_(file, kJet4) {
    Change([](Transaction& pages, PageAllocator&) { MakeFreePageMap(pages); });
}

void DraftFile::Change(const std::function<void(Transaction&, PageAllocator&)>& change) {
    Transaction pages(cache_);
    PageAllocator allocator(pages);
    change(pages, allocator);
    pages.Commit([this](std::span<const PagePtr> changed) {
        for (const PagePtr& page : changed) {
            file_.WriteAt(std::uint64_t{page->number} * page->size, page->View().Span());
        }
    });
}

}  // namespace quardele::jet
