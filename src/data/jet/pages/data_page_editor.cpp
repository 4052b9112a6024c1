#include "pages/data_page_editor.h"

#include <algorithm>
#include <cstring>

namespace quardele::jet {

DataPageEditor::DataPageEditor(Transaction& pages, std::uint32_t number)
    : pages_(pages), format_(pages.Layout()), number_(number) {
    const PagePtr page = pages.Read(number);
    const DataPage slots(*page, format_);
    slots.CheckRows();
    owner_ = slots.Owner();
    slotCount_ = static_cast<std::size_t>(slots.SlotCount());
    image_ = page->bytes;
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
    if (page.Type() != PageType::Data || page.View().U16(format.data.freeBytes) < length + 2) {
        return false;
    }
    const DataPage slots(page, format);
    return slots.Owner() == owner &&
           (static_cast<std::size_t>(slots.SlotCount()) < kMostSlots || !slots.HasLiveRows());
}

bool DataPageEditor::HasLiveRows() const {
    for (std::size_t i = 0; i < slotCount_; ++i) {
        if ((Entry(i) & slot::kFlagsMask) != slot::kDeleted) {
            return true;
        }
    }
    return false;
}

std::span<std::uint8_t> DataPageEditor::SlotAt(std::size_t slotNumber) {
    return std::span(image_).subspan(format_.data.slots + slotNumber * 2, 2);
}

std::uint16_t DataPageEditor::Entry(std::size_t slotNumber) const {
    const std::size_t at = format_.data.slots + slotNumber * 2;
    return static_cast<std::uint16_t>(image_[at] | image_[at + 1] << 8);
}

std::size_t DataPageEditor::FreeBytes() const {
    return RowsStart() - SlotsEnd();
}

std::size_t DataPageEditor::Junk(std::size_t slotNumber) const {
    const std::size_t flags = Entry(slotNumber) & slot::kFlagsMask;
    const std::size_t length = Length(slotNumber);
    if (flags == slot::kDeleted) {
        return length;
    }
    return flags == slot::kMoved && length > kRowPointerSize ? length - kRowPointerSize : 0;
}

bool DataPageEditor::MakeRoom(std::size_t bytes, std::size_t except) {
    if (bytes <= FreeBytes()) {
        return true;
    }
    std::size_t room = FreeBytes();
    for (std::size_t i = 0; i < slotCount_; ++i) {
        room += i == except ? 0 : Junk(i);
    }
    if (bytes > room) {
        return false;
    }
    for (std::size_t i = 0; i < slotCount_; ++i) {
        if (i != except) {
            DropJunk(i);
        }
    }
    return true;
}

// A row grows and shrinks at its front; the pointer of a moved one stands there, in front of what the row has
// left behind, which other programs leave as it is.
void DataPageEditor::DropJunk(std::size_t slotNumber) {
    const std::size_t junk = Junk(slotNumber);
    const std::size_t kept = Length(slotNumber) - junk;
    const auto start = image_.begin() + static_cast<std::ptrdiff_t>(Start(slotNumber));
    std::copy_backward(start, start + static_cast<std::ptrdiff_t>(kept),
                       start + static_cast<std::ptrdiff_t>(junk + kept));
    Resize(slotNumber, kept);
}

void DataPageEditor::Resize(std::size_t slotNumber, std::size_t length) {
    const std::size_t old = Length(slotNumber);
    if (length == old) {
        return;
    }
    const auto moved = std::span(image_).subspan(RowsStart(), Start(slotNumber) - RowsStart());
    std::memmove(moved.data() + old - length, moved.data(), moved.size());
    for (std::size_t i = slotNumber; i < slotCount_; ++i) {
        StoreLittle(SlotAt(i), static_cast<std::uint16_t>(Entry(i) + old - length));
    }
}

void DataPageEditor::Fill(std::size_t slotNumber, std::uint16_t flags, std::span<const std::uint8_t> bytes) {
    const std::size_t start = Start(slotNumber);
    std::copy(bytes.begin(), bytes.end(), image_.begin() + static_cast<std::ptrdiff_t>(start));
    StoreLittle(SlotAt(slotNumber), static_cast<std::uint16_t>(start | flags));
}

bool DataPageEditor::Replace(std::uint8_t slotNumber, std::uint16_t flags,
                             std::span<const std::uint8_t> bytes) {
    const std::size_t old = Length(slotNumber);
    if (bytes.size() > old && !MakeRoom(bytes.size() - old, slotNumber)) {
        return false;
    }
    Resize(slotNumber, bytes.size());
    Fill(slotNumber, flags, bytes);
    return true;
}

std::optional<std::uint8_t> DataPageEditor::Add(std::uint16_t flags, std::span<const std::uint8_t> bytes) {
    if (!HasFreeSlot()) {
        return std::nullopt;
    }
    if (slotCount_ == kMostSlots) {
        slotCount_ = 0;
    }
    if (!MakeRoom(bytes.size() + 2, slotCount_)) {
        return std::nullopt;
    }
    const std::size_t start = RowsStart() - bytes.size();
    const std::size_t added = slotCount_++;
    StoreLittle(SlotAt(added), static_cast<std::uint16_t>(start));
    Fill(added, flags, bytes);
    return static_cast<std::uint8_t>(added);
}

void DataPageEditor::Delete(std::uint8_t slotNumber) {
    Resize(slotNumber, 0);
    Fill(slotNumber, slot::kDeleted, {});
}

void DataPageEditor::Store() {
    const auto begin = image_.begin();
    std::fill(begin + static_cast<std::ptrdiff_t>(SlotsEnd()),
              begin + static_cast<std::ptrdiff_t>(RowsStart()), std::uint8_t{0});
    const auto image = std::span(image_);
    StoreLittle(image.subspan(format_.data.freeBytes), static_cast<std::uint16_t>(FreeBytes()));
    StoreLittle(image.subspan(format_.data.rowCount), static_cast<std::uint16_t>(slotCount_));
    pages_.Write(number_).bytes = image_;
}

}  // namespace quardele::jet
