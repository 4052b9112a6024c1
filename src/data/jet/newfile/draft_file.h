// A data file that nobody else sees yet.
#pragma once

#include <functional>
#include <span>

#include "pages/page_allocator.h"

namespace quardele::jet {

/// Changes go straight to the file: while it has no name of its own there is nothing to undo, and whoever
/// makes it drops it on an error.
class DraftFile {
 public:
    /// Takes an empty file, which must outlive it, and gives it its header and its map of free pages.
    DraftFile(OsFile& file, std::span<const std::uint8_t> header);

    /// Runs a change and writes its pages. Large work goes in several, so that few pages are in memory.
    void Change(const std::function<void(Transaction&, PageAllocator&)>& change);

 private:
    OsFile& file_;
    PageCache cache_;
};

}  // namespace quardele::jet
