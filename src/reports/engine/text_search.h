// Goes from place to place of a text in a document.
#pragma once

#include <memory>
#include <vector>

#include <engine/document.h>

namespace quardele::engine {

class TextSearch {
 public:
    /// Searches in other pages from now on; null for none.
    void SetDocument(std::shared_ptr<const Document> document);
    /// The place behind the last one found; of another text the first one from a page on. The first of the
    /// document follows the last. Null when there is none.
    [[nodiscard]] const Occurrence* Next(const QString& text, int fromPage);

 private:
    std::shared_ptr<const Document> document_;
    QString sought_;
    std::vector<Occurrence> found_;
    std::size_t next_ = 0;
};

}  // namespace quardele::engine
