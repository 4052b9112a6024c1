// The customer's particulars in the header of a letter.
#pragma once

#include <dao/dao.h>

#include "letter.h"

namespace quardele::reminders {

/// Fills the header of one letter. Every bookmark is optional; what has none is left out.
class LetterHeader {
 public:
    /// `customers` stands on the letter's customer, if that one is known; `countries` may stand anywhere.
    LetterHeader(Letter& letter, const dao::Recordset& customers, dao::Recordset& countries)
        : letter_(letter), customers_(customers), countries_(countries) {}

    /// An unknown customer's letter shows code and date only. Throws RuntimeError 94 for a Null that a
    /// bookmark asks for, other than in the address.
    void Fill(const basic::Text& customer, bool known);

 private:
    void TypeParticulars();
    void TypeField(basic::TextView bookmark, basic::TextView field);
    void TypeAddressLine(basic::TextView field);
    void TypeTown();
    void TypeCountry();
    [[nodiscard]] basic::Text AddressBookmark() const;
    [[nodiscard]] basic::Text CountryName(const basic::Text& code);

    Letter& letter_;
    const dao::Recordset& customers_;
    dao::Recordset& countries_;
    /// Number of the next address bookmark.
    int addressLine_ = 1;
};

}  // namespace quardele::reminders
