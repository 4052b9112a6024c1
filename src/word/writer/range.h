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
    /// Paragraph ends inside it read as carriage returns.
    Value GetText(const Arguments&);

    Reference<css::text::XTextRange> range_;
};

}  // namespace quardele::word::writer
