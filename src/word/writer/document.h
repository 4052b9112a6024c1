// Word's Document object.
#pragma once

#include "document_object.h"

namespace quardele::word::writer {

class Document final : public DocumentObject<Document> {
 public:
    using DocumentObject::DocumentObject;
    static std::span<const Member<Document>> Members();

 private:
    Value Bookmarks(const Arguments& arguments);
    Value Close(const Arguments& arguments);
    /// From one position of the body to another, in characters.
    Value Range(const Arguments& arguments);
    Value Save(const Arguments&);
    Value SaveAs(const Arguments& arguments);
    Value Saved(const Arguments&);
    void SetSaved(const Value& saved);
    Value Tables(const Arguments& arguments);
};

}  // namespace quardele::word::writer
