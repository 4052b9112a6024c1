#include "behind_selection.h"

#include "cell_place.h"

namespace quardele::word::writer {

BehindSelection::BehindSelection(const OpenDocument& document)
    : compare_(document.Model()->getText(), css::uno::UNO_QUERY_THROW), selection_(document.Cursor().get()) {
    // A table's own place stands for all that is in it.
    if (const auto table = TableUnder(document); table.is()) {
        selection_ = table->getAnchor();
    }
}

}  // namespace quardele::word::writer
