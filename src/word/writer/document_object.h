// The shape of Word's objects that belong to one document.
#pragma once

#include <memory>
#include <utility>

#include "open_document.h"
#include "word_object.h"

namespace quardele::word::writer {

using OpenDocumentPtr = std::shared_ptr<OpenDocument>;

template <class Self>
class DocumentObject : public WordObject<Self> {
 public:
    explicit DocumentObject(OpenDocumentPtr document)
        : WordObject<Self>(document->GetOffice()), document_(std::move(document)) {}

 protected:
    [[nodiscard]] const OpenDocumentPtr& Doc() const { return document_; }
    [[nodiscard]] bool IsDeleted() final { return document_->IsClosed(); }

 private:
    OpenDocumentPtr document_;
};

}  // namespace quardele::word::writer
