#include "text_search.h"

#include <algorithm>

namespace quardele::engine {

void TextSearch::SetDocument(std::shared_ptr<const Document> document) {
    document_ = std::move(document);
    sought_.clear();
    found_.clear();
}

const Occurrence* TextSearch::Next(const QString& text, int fromPage) {
    if (document_ == nullptr) {
        return nullptr;
    }
    if (text != sought_) {
        sought_ = text;
        found_ = document_->Find(text);
        const auto first = std::find_if(found_.begin(), found_.end(), [fromPage](const Occurrence& place) {
            return place.page >= fromPage;
        });
        next_ = static_cast<std::size_t>(first - found_.begin());
    }
    if (found_.empty()) {
        return nullptr;
    }
    const Occurrence& place = found_[next_ % found_.size()];
    next_ = next_ % found_.size() + 1;
    return &place;
}

}  // namespace quardele::engine
