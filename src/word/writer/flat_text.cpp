#include "flat_text.h"

#include <com/sun/star/container/XEnumerationAccess.hpp>
#include <com/sun/star/lang/IllegalArgumentException.hpp>
#include <com/sun/star/text/XTextRangeCompare.hpp>
#include <com/sun/star/text/XTextTable.hpp>

#include "cell_place.h"
#include "word_error.h"

namespace quardele::word::writer {

namespace {

using css::text::XText;
using css::text::XTextRange;
using css::text::XTextTable;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

constexpr char16_t kParagraphEnd = u'\r';
constexpr char16_t kCellOrRowEnd = u'\a';

/// Whether a place lies in a paragraph, its two ends included.
bool IsIn(const Reference<XTextRange>& paragraph, const Reference<XTextRange>& place) {
    try {
        const Reference<css::text::XTextRangeCompare> compare(paragraph->getText(), UNO_QUERY_THROW);
        return compare->compareRegionStarts(paragraph->getStart(), place) >= 0 &&
               compare->compareRegionStarts(place, paragraph->getEnd()) >= 0;
    } catch (const css::lang::IllegalArgumentException&) {
        return false;
    }
}

}  // namespace

FlatText::FlatText(const Reference<XText>& story) {
    AddParagraphs(story);
}

void FlatText::AddParagraphs(const Reference<XText>& text) {
    const auto parts =
        Reference<css::container::XEnumerationAccess>(text, UNO_QUERY_THROW)->createEnumeration();
    while (parts->hasMoreElements()) {
        const Reference<css::uno::XInterface> part(parts->nextElement(), UNO_QUERY_THROW);
        if (const Reference<XTextTable> table(part, UNO_QUERY); table.is()) {
            AddTable(part);
            continue;
        }
        const Reference<XTextRange> range(part, UNO_QUERY_THROW);
        paragraphs_.push_back({static_cast<int>(units_.size()), range});
        units_ += ToText(range->getString());
        units_ += kParagraphEnd;
    }
}

void FlatText::AddTable(const Reference<css::uno::XInterface>& part) {
    const Reference<XTextTable> table(part, UNO_QUERY_THROW);
    int row = 0;
    for (const rtl::OUString& name : table->getCellNames()) {
        if (const int next = ParseCellName(ToText(name)).row; next != row) {
            units_ += kCellOrRowEnd;
            row = next;
        }
        AddParagraphs(Reference<XText>(table->getCellByName(name), UNO_QUERY_THROW));
        units_.back() = kCellOrRowEnd;
    }
    units_ += kCellOrRowEnd;
}

int FlatText::PositionOf(const Reference<XTextRange>& place) const {
    for (const Paragraph& paragraph : paragraphs_) {
        if (IsIn(paragraph.range, place)) {
            const auto before =
                paragraph.range->getText()->createTextCursorByRange(paragraph.range->getStart());
            before->gotoRange(place, true);
            return paragraph.start + before->getString().getLength();
        }
    }
    throw Failure(WordError::BadParameter);
}

Text FlatText::Between(int start, int end) const {
    if (start < 0 || end < start || end > static_cast<int>(units_.size())) {
        throw Failure(WordError::OutOfRange);
    }
    Text text;
    for (const char16_t unit :
         units_.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(end - start))) {
        text += unit == kCellOrRowEnd ? Text(u"\r\a") : Text(1, unit);
    }
    return text;
}

}  // namespace quardele::word::writer
