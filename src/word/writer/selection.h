// Word's Selection object: what is selected in the active document, or the place of the caret.
#pragma once

#include <com/sun/star/text/XText.hpp>

#include "cell_place.h"
#include "document_object.h"

namespace quardele::word::writer {

class Selection final : public DocumentObject<Selection> {
 public:
    using DocumentObject::DocumentObject;
    static std::span<const Member<Selection>> Members();

 private:
    // Moving; units are Word's: 1 character, 5 line, 6 story, 9 column, 10 row, 12 cell.
    Value EndKey(const Arguments& arguments);
    Value HomeKey(const Arguments& arguments);
    Value MoveLeft(const Arguments& arguments);
    Value MoveRight(const Arguments& arguments);

    Value GetColumns(const Arguments& arguments);
    Value GetRange(const Arguments&);
    Value GetTables(const Arguments& arguments);
    Value GetText(const Arguments&);
    /// Replaces the selection and stands behind the text. A bookmark around the selection keeps the text;
    /// a line end of any kind starts a paragraph.
    Value TypeText(const Arguments& arguments);

    void SelectContent(const Reference<css::text::XText>& cell);
    void GoToEdge(int unit, bool extend, bool end);
};

}  // namespace quardele::word::writer
