// Word's Bookmarks collection and its elements. Names ignore case.
#pragma once

#include <utility>

#include <com/sun/star/text/XTextContent.hpp>

#include "document_object.h"

namespace quardele::word::writer {

class Bookmarks final : public DocumentObject<Bookmarks> {
 public:
    using DocumentObject::DocumentObject;
    static std::span<const Member<Bookmarks>> Members();

 private:
    /// Marks the selection; a bookmark that has the name already moves there.
    Value Add(const Arguments& arguments);
    Value Count(const Arguments&);
    Value Exists(const Arguments& arguments);
    Value Item(const Arguments& arguments);

    /// Null when there is none of that name.
    [[nodiscard]] Reference<css::text::XTextContent> Find(const Text& name) const;
};

class Bookmark final : public DocumentObject<Bookmark> {
 public:
    Bookmark(OpenDocumentPtr document, Reference<css::text::XTextContent> bookmark)
        : DocumentObject(std::move(document)), bookmark_(std::move(bookmark)) {}
    static std::span<const Member<Bookmark>> Members();

 private:
    Value GetRange(const Arguments&);
    Value Select(const Arguments&);

    Reference<css::text::XTextContent> bookmark_;
};

}  // namespace quardele::word::writer
