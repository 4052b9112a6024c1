// Data pages: rows from the end of the page downwards, found through slots. Pages of long values and of usage
// maps are data pages as well.
#pragma once

#include "file/page.h"
#include "rows/row_pointer.h"

namespace quardele::jet {

/// The slots of a data page, checked. Refers to the page's bytes.
class DataPage {
 public:
    /// Throws 3343 when the page is no data page or has more slots than room.
    DataPage(const Page& page, const Format& format);

    [[nodiscard]] int SlotCount() const { return slotCount_; }
    [[nodiscard]] std::uint32_t Owner() const { return view_.U32(format_->data.owner); }
    /// kMoved, kHidden, kDeleted or 0.
    [[nodiscard]] std::uint16_t Flags(int slotNumber) const { return Entry(slotNumber) & slot::kFlagsMask; }
    /// The bytes of a slot, whatever its flags. Throws 3343 when they overlap the slots or the row before.
    [[nodiscard]] ByteView Row(int slotNumber) const;
    [[nodiscard]] bool HasLiveRows() const;
    /// Throws when Row would for any slot.
    void CheckRows() const;

 private:
    [[nodiscard]] std::uint16_t Entry(int slotNumber) const;
    [[nodiscard]] std::size_t Offset(int slotNumber) const { return Entry(slotNumber) & slot::kOffsetMask; }

    ByteView view_;
    const Format* format_;
    int slotCount_;
};

// Asked for every row, and so here.

inline DataPage::DataPage(const Page& page, const Format& format)
    : view_(page.View()), format_(&format), slotCount_(page.View().U16(format.data.rowCount)) {
    if (page.Type() != PageType::Data) {
        ThrowDamaged(page.number, u"page de données attendue");
    }
    if (format.data.slots + static_cast<std::size_t>(slotCount_) * 2 > page.size) {
        ThrowDamaged(page.number, u"nombre de lignes impossible");
    }
}

inline std::uint16_t DataPage::Entry(int slotNumber) const {
    if (slotNumber >= slotCount_) {
        ThrowDamaged(view_.Page(), u"ligne inexistante");
    }
    return view_.U16(format_->data.slots + static_cast<std::size_t>(slotNumber) * 2);
}

inline ByteView DataPage::Row(int slotNumber) const {
    const std::size_t start = Offset(slotNumber);
    const std::size_t end = slotNumber == 0 ? view_.Size() : Offset(slotNumber - 1);
    const std::size_t slotsEnd = format_->data.slots + static_cast<std::size_t>(slotCount_) * 2;
    if (start < slotsEnd || start > end || end > view_.Size()) {
        ThrowDamaged(view_.Page(), u"ligne hors de sa page");
    }
    return view_.Sub(start, end - start);
}

/// The bytes of a row with the page that holds them.
struct RowBytes {
    PagePtr page;
    ByteView bytes;
};

/// The bytes that a row pointer names. Throws 3343 when there is no such slot.
[[nodiscard]] RowBytes ReadRow(const PageSource& pages, RowPointer pointer);

}  // namespace quardele::jet
