// Changing the rows of a data page.
#pragma once

#include <array>
#include <optional>
#include <span>

#include "commit/transaction.h"
#include "pages/data_page.h"

namespace quardele::jet {

/// A copy of a data page whose rows can be changed; they stay packed. Slot numbers never change, because row
/// identities are made of them; offsets may, because nothing outside the page knows them.
class DataPageEditor {
 public:
    /// Takes a page that exists; throws 3343 when it is no data page.
    DataPageEditor(Transaction& pages, std::uint32_t number);
    /// Makes an empty data page of one that was just allocated.
    static void Initialise(Page& page, const Format& format, std::uint32_t owner);

    /// Whether a page is one of this owner that says it has room for a row, so that it is worth taking apart.
    [[nodiscard]] static bool MayHold(const Page& page, const Format& format, std::uint32_t owner,
                                      std::size_t length);

    [[nodiscard]] std::uint32_t Owner() const { return owner_; }
    [[nodiscard]] bool HasLiveRows() const;
    /// Whether Add may succeed as far as slots go: there is one, or all rows are deleted.
    [[nodiscard]] bool HasFreeSlot() const { return slotCount_ < kMostSlots || !HasLiveRows(); }
    /// Bytes between the slots and the last row.
    [[nodiscard]] std::size_t FreeBytes() const;

    /// Gives a row new bytes and flags. Returns false, and changes nothing, when the page has no room for it.
    [[nodiscard]] bool Replace(std::uint8_t slotNumber, std::uint16_t flags,
                               std::span<const std::uint8_t> bytes);
    /// Adds a row; none when the page has no room. Where every slot is that of a deleted row, they are given
    /// anew.
    [[nodiscard]] std::optional<std::uint8_t> Add(std::uint16_t flags, std::span<const std::uint8_t> bytes);
    /// Marks a row as deleted and gives back its bytes.
    void Delete(std::uint8_t slotNumber);

    /// Puts the page into the transaction.
    void Store();

 private:
    [[nodiscard]] std::span<std::uint8_t> SlotAt(std::size_t slotNumber);
    [[nodiscard]] std::uint16_t Entry(std::size_t slotNumber) const;
    [[nodiscard]] std::size_t Start(std::size_t slotNumber) const {
        return Entry(slotNumber) & slot::kOffsetMask;
    }
    [[nodiscard]] std::size_t End(std::size_t slotNumber) const {
        return slotNumber == 0 ? format_.pageSize : Start(slotNumber - 1);
    }
    [[nodiscard]] std::size_t Length(std::size_t slotNumber) const {
        return End(slotNumber) - Start(slotNumber);
    }
    [[nodiscard]] std::size_t SlotsEnd() const { return format_.data.slots + slotCount_ * 2; }
    /// Where the last row starts.
    [[nodiscard]] std::size_t RowsStart() const {
        return slotCount_ == 0 ? format_.pageSize : Start(slotCount_ - 1);
    }

    /// Bytes that a slot needs no more: all of a deleted row, all of a moved one but its pointer.
    [[nodiscard]] std::size_t Junk(std::size_t slotNumber) const;
    /// Takes out the junk when so many bytes are not free, unless it would not help; `except` is going to be
    /// overwritten.
    [[nodiscard]] bool MakeRoom(std::size_t bytes, std::size_t except);
    /// Takes a slot's junk away and keeps the rest.
    void DropJunk(std::size_t slotNumber);
    /// Moves the rows behind a slot, so that it gets its new length.
    void Resize(std::size_t slotNumber, std::size_t length);
    void Fill(std::size_t slotNumber, std::uint16_t flags, std::span<const std::uint8_t> bytes);

    Transaction& pages_;
    const Format& format_;
    std::uint32_t number_;
    std::uint32_t owner_ = 0;
    std::size_t slotCount_ = 0;
    std::array<std::uint8_t, kLargestPage> image_;
};

}  // namespace quardele::jet
