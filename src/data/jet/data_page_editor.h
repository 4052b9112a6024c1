// Changing the rows of a data page.
#pragma once

#include <optional>
#include <vector>

#include "data_page.h"
#include "transaction.h"

namespace quardele::jet {

/// All rows of a data page, taken out to be changed and packed again. Slot numbers never change, because row
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
    [[nodiscard]] const ByteString& Row(std::uint8_t slotNumber) const { return rows_.at(slotNumber).bytes; }
    [[nodiscard]] bool HasLiveRows() const;
    /// Whether Add may succeed as far as slots go: there is one, or all rows are deleted.
    [[nodiscard]] bool HasFreeSlot() const { return rows_.size() < kMostSlots || !HasLiveRows(); }
    /// Bytes between the slots and the last row.
    [[nodiscard]] std::size_t FreeBytes() const;

    /// Gives a row new bytes and flags. Returns false, and changes nothing, when the page has no room for it.
    [[nodiscard]] bool Replace(std::uint8_t slotNumber, std::uint16_t flags, ByteString bytes);
    /// Adds a row; none when the page has no room. Where every slot is that of a deleted row, they are given
    /// anew.
    [[nodiscard]] std::optional<std::uint8_t> Add(std::uint16_t flags, ByteString bytes);
    /// Marks a row as deleted and gives back its bytes.
    void Delete(std::uint8_t slotNumber);

    /// Puts the page into the transaction.
    void Store();

 private:
    struct Slot {
        std::uint16_t flags = 0;
        ByteString bytes;
    };

    [[nodiscard]] std::size_t Used(const std::vector<Slot>& rows) const;
    [[nodiscard]] bool Fits(const std::vector<Slot>& rows) const;
    /// Takes the junk out of deleted and moved rows when there is no room otherwise.
    [[nodiscard]] bool MakeFit(std::vector<Slot>& rows) const;

    Transaction& pages_;
    const Format& format_;
    std::uint32_t number_;
    std::uint32_t owner_ = 0;
    std::vector<Slot> rows_;
};

}  // namespace quardele::jet
