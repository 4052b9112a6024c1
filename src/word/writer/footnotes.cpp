#include "footnotes.h"

#include <algorithm>
#include <vector>

#include <com/sun/star/text/XFootnotesSupplier.hpp>

#include "behind_selection.h"
#include "text_range.h"

namespace quardele::word::writer {

namespace {

using css::text::XTextContent;
using css::uno::UNO_QUERY_THROW;
using Notes = std::vector<Reference<XTextContent>>;

Notes AllFootnotes(const OpenDocument& document) {
    const auto all =
        Reference<css::text::XFootnotesSupplier>(document.Model(), UNO_QUERY_THROW)->getFootnotes();
    Notes notes;
    for (sal_Int32 number = 0; number < all->getCount(); ++number) {
        notes.emplace_back(all->getByIndex(number), UNO_QUERY_THROW);
    }
    return notes;
}

}  // namespace

Reference<XTextContent> NextFootnote(const OpenDocument& document) {
    const Notes notes = AllFootnotes(document);
    const auto body = document.Model()->getText();
    const BehindSelection behind(document);
    const auto next = std::find_if(notes.begin(), notes.end(), [&](const auto& note) {
        return Contains(body, note->getAnchor()) && behind(note->getAnchor());
    });
    return next == notes.end() ? Reference<XTextContent>() : *next;
}

bool IsInFootnote(const OpenDocument& document) {
    const Notes notes = AllFootnotes(document);
    return std::any_of(notes.begin(), notes.end(), [&](const auto& note) {
        return Contains({note, UNO_QUERY_THROW}, document.Cursor().get());
    });
}

}  // namespace quardele::word::writer
