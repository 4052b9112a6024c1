// The order of places in the body.
#pragma once

#include <com/sun/star/text/XTextRange.hpp>
#include <com/sun/star/text/XTextRangeCompare.hpp>

#include "open_document.h"

namespace quardele::word::writer {

/// Whether a place stands behind the selection, both in the body.
class BehindSelection {
 public:
    explicit BehindSelection(const OpenDocument& document);
    bool operator()(const Reference<css::text::XTextRange>& place) const {
        return compare_->compareRegionStarts(selection_, place) > 0;
    }

 private:
    Reference<css::text::XTextRangeCompare> compare_;
    Reference<css::text::XTextRange> selection_;
};

}  // namespace quardele::word::writer
