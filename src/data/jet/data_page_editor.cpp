#include "data_page_editor.h"

#include <algorithm>

namespace quardele::jet {

DataPageEditor::DataPageEditor(Transaction& pages, std::uint32_t number)
    : pages_(pages), format_(pages.Layout()), number_(number) {
    const PagePtr page = pages.Read(number);
    const DataPage slots(*page, format_);
    owner_ = slots.Owner();
    for (int i = 0; i < slots.SlotCount(); ++i) {
        const auto bytes = slots.Row(i).Span();
        rows_.push_back({slots.Flags(i), ByteString(bytes.begin(), bytes.end())});
    }
}

void DataPageEditor::Initialise(Page& page, const Format& format, std::uint32_t owner) {
    const auto bytes = page.Mutable();
    std::fill(bytes.begin(), bytes.end(), std::uint8_t{0});
    bytes[0] = static_cast<std::uint8_t>(PageType::Data);
    bytes[1] = kLivePage;
    StoreLittle(bytes.subspan(format.data.freeBytes),
                static_cast<std::uint16_t>(page.size - format.data.slots));
    StoreLittle(bytes.subspan(format.data.owner), owner);
}

bool DataPageEditor::MayHold(const Page& page, const Format& format, std::uint32_t owner,
                             std::size_t length) {
    return page.Type() == PageType::Data && DataPage(page, format).Owner() == owner &&
           page.View().U16(format.data.freeBytes) >= length + 2;
}

bool DataPageEditor::HasLiveRows() const {
    return std::any_of(rows_.begin(), rows_.end(),
                       [](const Slot& row) { return row.flags != slot::kDeleted; });
}

std::size_t DataPageEditor::Used(const std::vector<Slot>& rows) const {
    std::size_t used = format_.data.slots + rows.size() * 2;
    for (const Slot& row : rows) {
        used += row.bytes.size();
    }
    return used;
}

bool DataPageEditor::Fits(const std::vector<Slot>& rows) const {
    return Used(rows) <= format_.pageSize;
}

std::size_t DataPageEditor::FreeBytes() const {
    return format_.pageSize - Used(rows_);
}

bool DataPageEditor::MakeFit(std::vector<Slot>& rows) const {
    if (Fits(rows)) {
        return true;
    }
    for (Slot& row : rows) {
        if (row.flags == slot::kDeleted) {
            row.bytes.clear();
        } else if (row.flags == slot::kMoved) {
            row.bytes.resize(kRowPointerSize);
        }
    }
    return Fits(rows);
}

bool DataPageEditor::Replace(std::uint8_t slotNumber, std::uint16_t flags, ByteString bytes) {
    std::vector<Slot> changed = rows_;
    changed.at(slotNumber) = {flags, std::move(bytes)};
    if (!MakeFit(changed)) {
        return false;
    }
    rows_ = std::move(changed);
    return true;
}

std::optional<std::uint8_t> DataPageEditor::Add(std::uint16_t flags, ByteString bytes) {
    if (!HasFreeSlot()) {
        return std::nullopt;
    }
    std::vector<Slot> changed = rows_.size() < kMostSlots ? rows_ : std::vector<Slot>();
    changed.push_back({flags, std::move(bytes)});
    if (!MakeFit(changed)) {
        return std::nullopt;
    }
    rows_ = std::move(changed);
    return static_cast<std::uint8_t>(rows_.size() - 1);
}

void DataPageEditor::Delete(std::uint8_t slotNumber) {
    rows_.at(slotNumber) = {slot::kDeleted, {}};
}

void DataPageEditor::Store() {
    Page& page = pages_.Write(number_);
    const auto bytes = page.Mutable();
    std::fill(bytes.begin() + static_cast<std::ptrdiff_t>(format_.data.slots), bytes.end(), std::uint8_t{0});
    StoreLittle(bytes.subspan(format_.data.freeBytes), static_cast<std::uint16_t>(FreeBytes()));
    StoreLittle(bytes.subspan(format_.data.rowCount), static_cast<std::uint16_t>(rows_.size()));
    std::size_t end = format_.pageSize;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        end -= rows_[i].bytes.size();
        std::copy(rows_[i].bytes.begin(), rows_[i].bytes.end(),
                  bytes.begin() + static_cast<std::ptrdiff_t>(end));
        StoreLittle(bytes.subspan(format_.data.slots + i * 2),
                    static_cast<std::uint16_t>(end | rows_[i].flags));
    }
}

}  // namespace quardele::jet
