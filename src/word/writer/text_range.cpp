#include "text_range.h"

#include <algorithm>

#include <com/sun/star/lang/IllegalArgumentException.hpp>
#include <com/sun/star/text/XTextRangeCompare.hpp>

namespace quardele::word::writer {

using css::text::XText;
using css::text::XTextRange;
using css::uno::UNO_QUERY_THROW;

Reference<css::text::XTextCursor> ModelCursor(const Reference<XTextRange>& range) {
    return range->getText()->createTextCursorByRange(range);
}

Text TextOf(const Reference<XTextRange>& range) {
    Text text = ToText(ModelCursor(range)->getString());
    std::replace(text.begin(), text.end(), u'\n', u'\r');
    return text;
}

bool Contains(const Reference<XText>& text, const Reference<XTextRange>& range) {
    try {
        const Reference<css::text::XTextRangeCompare> compare(text, UNO_QUERY_THROW);
        compare->compareRegionStarts(range, text->getStart());
        return true;
    } catch (const css::lang::IllegalArgumentException&) {
        return false;
    }
}

}  // namespace quardele::word::writer
