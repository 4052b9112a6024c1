#include "pages/data_page.h"

namespace quardele::jet {

bool DataPage::HasLiveRows() const {
    for (int i = 0; i < slotCount_; ++i) {
        if (Flags(i) != slot::kDeleted) {
            return true;
        }
    }
    return false;
}

void DataPage::CheckRows() const {
    for (int i = 0; i < slotCount_; ++i) {
        static_cast<void>(Row(i));
    }
}

RowBytes ReadRow(const PageSource& pages, RowPointer pointer) {
    PagePtr page = pages.Read(pointer.page);
    const ByteView bytes = DataPage(*page, pages.Layout()).Row(pointer.slot);
    return {std::move(page), bytes};
}

}  // namespace quardele::jet
