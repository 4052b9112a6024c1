// Word's Range object: a stretch of text.
#pragma once

#include <utility>

#include <com/sun/star/text/XTextRange.hpp>

#include "document_object.h"

namespace quardele::word::writer {

class Range final : public DocumentObject<Range> {
 public:
    Range(OpenDocumentPtr document, Reference<css::text::XTextRange> range)
        : DocumentObject(std::move(document)), range_(std::move(range)) {}
    static std::span<const Member<Range>> Members();

 private:
    // By the clipboard; Writer does it for the selection only, which this stretch is made.
    Value Copy(const Arguments&);
    Value Cut(const Arguments&);
    Value Paste(const Arguments&);
    /// Positions in the story, in characters; see FlatText.
    Value End(const Arguments&);
    Value Start(const Arguments&);
    /// Paragraph ends inside it read as carriage returns.
    Value GetText(const Arguments&);

    void Select();
    [[nodiscard]] int PositionOf(const Reference<css::text::XTextRange>& place) const;

    Reference<css::text::XTextRange> range_;
};

/// A stretch between two positions of the body, which may cross the borders of cells.
class FlatRange final : public DocumentObject<FlatRange> {
 public:
    FlatRange(OpenDocumentPtr document, int start, int end)
        : DocumentObject(std::move(document)), start_(start), end_(end) {}
    static std::span<const Member<FlatRange>> Members();

 private:
    Value End(const Arguments&) { return end_; }
    Value GetText(const Arguments&);
    Value Start(const Arguments&) { return start_; }

    int start_;
    int end_;
};

}  // namespace quardele::word::writer
