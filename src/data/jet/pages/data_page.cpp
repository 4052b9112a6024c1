#include "pages/data_page.h"

namespace quardele::jet {

DataPage::DataPage(const Page& page, const Format& format)
    : view_(page.View()), format_(&format), slotCount_(page.View().U16(format.data.rowCount)) {
    if (page.Type() != PageType::Data) {
        ThrowDamaged(page.number, u"page de données attendue");
    }
    if (format.data.slots + static_cast<std::size_t>(slotCount_) * 2 > page.size) {
        ThrowDamaged(page.number, u"nombre de lignes impossible");
    }
}

std::uint16_t DataPage::Entry(int slotNumber) const {
    if (slotNumber >= slotCount_) {
        ThrowDamaged(view_.Page(), u"ligne inexistante");
    }
    return view_.U16(format_->data.slots + static_cast<std::size_t>(slotNumber) * 2);
}

ByteView DataPage::Row(int slotNumber) const {
    const std::size_t start = Offset(slotNumber);
    const std::size_t end = slotNumber == 0 ? view_.Size() : Offset(slotNumber - 1);
    const std::size_t slotsEnd = format_->data.slots + static_cast<std::size_t>(slotCount_) * 2;
    if (start < slotsEnd || start > end || end > view_.Size()) {
        ThrowDamaged(view_.Page(), u"ligne hors de sa page");
    }
    return view_.Sub(start, end - start);
}

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
