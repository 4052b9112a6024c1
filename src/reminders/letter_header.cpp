#include "letter_header.h"

#include <basic/conversion.h>
#include <basic/date.h>

namespace quardele::reminders {

using basic::Text;
using basic::TextView;

void LetterHeader::Fill(const Text& customer, bool known) {
    letter_.OpenHeader();
    if (letter_.GoTo(u"CODCLI")) {
        letter_.Type(customer);
    }
    if (known) {
        TypeParticulars();
    }
    if (letter_.GoTo(u"DATIMPR")) {
        letter_.Type(basic::CStr(basic::Today()));
    }
}

void LetterHeader::TypeParticulars() {
    TypeField(u"RS", u"TCLI_RS");
    for (const TextView field : {u"TCLI_ADRFACT1", u"TCLI_ADRFACT2", u"TCLI_ADRFACT3"}) {
        TypeAddressLine(field);
    }
    TypeTown();
    TypeCountry();
    TypeField(u"CONTACT", u"TCLI_CONTACT1");
    TypeField(u"TEL", u"TCLI_TEL1");
    TypeField(u"FAX", u"TCLI_FAX1");
}

void LetterHeader::TypeField(TextView bookmark, TextView field) {
    if (letter_.GoTo(bookmark)) {
        letter_.Type(basic::CStr(customers_.Value(field)));
    }
}

/// An empty line takes no number, so that the address closes up; a line whose number the template lacks does.
void LetterHeader::TypeAddressLine(TextView field) {
    const Text line = basic::Joined(customers_.Value(field));
    if (basic::Trim(line).empty()) {
        return;
    }
    if (letter_.GoTo(AddressBookmark())) {
        letter_.Type(line);
    }
    ++addressLine_;
}

/// Unlike the lines above, the town takes a number whenever the template has it, and never otherwise.
void LetterHeader::TypeTown() {
    if (!letter_.GoTo(AddressBookmark())) {
        return;
    }
    letter_.Type(basic::Joined(customers_.Value(u"TCLI_CODPFACT")) + basic::Space(3) +
                 basic::Joined(customers_.Value(u"TCLI_VILLEFACT")));
    ++addressLine_;
}

void LetterHeader::TypeCountry() {
    const Text code = basic::Joined(customers_.Value(u"TCLI_PAYSFACT"));
    if (!basic::Trim(code).empty() && letter_.GoTo(AddressBookmark())) {
        letter_.Type(CountryName(code));
    }
}

Text LetterHeader::AddressBookmark() const {
    return u"ADR" + basic::CStr(addressLine_);
}

Text LetterHeader::CountryName(const Text& code) {
    countries_.FindFirst(u"TPAYS_CODE = '" + code + u"'");
    return countries_.NoMatch() ? code : basic::CStr(countries_.Value(u"TPAYS_LIBELLE"));
}

}  // namespace quardele::reminders
