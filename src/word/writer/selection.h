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
    // Moving; units are Word's: 1 character, 2 word, 4 paragraph, 5 line, 6 story, 9 column, 10 row, 12 cell.
    Value EndKey(const Arguments& arguments);
    /// To the next table; without one the selection stays. Throws RuntimeError 4120 for other ways.
    Value GoTo(const Arguments& arguments);
    /// To the next footnote; without one the selection stays.
    Value GoToNext(const Arguments& arguments);
    Value HomeKey(const Arguments& arguments);
    Value MoveDown(const Arguments& arguments);
    Value MoveLeft(const Arguments& arguments);
    Value MoveRight(const Arguments& arguments);
    Value SelectRow(const Arguments&);
    Value StartOf(const Arguments& arguments);

    // What it is.
    Value GetCells(const Arguments&);
    Value GetColumns(const Arguments& arguments);
    Value GetFont(const Arguments&);
    Value GetRange(const Arguments&);
    Value GetTables(const Arguments& arguments);
    Value GetText(const Arguments&);
    /// Word's codes: 1 and 3 page, 4 pages of the document, 12 whether in a table, 13 and 14 row, 15 rows of
    /// the table, 16 and 17 column, 18 columns of the table; rows and columns count from 1 and are -1 outside
    /// tables. Throws RuntimeError 4120 for other codes.
    Value Information(const Arguments& arguments);

    /// Rows above the current one, which are selected.
    Value InsertRows(const Arguments& arguments);
    /// Replaces the selection and stands behind the text. A bookmark around the selection keeps the text;
    /// a line end of any kind starts a paragraph.
    Value TypeText(const Arguments& arguments);

    void SelectContent(const Reference<css::text::XText>& cell);
    void GoToEdge(int unit, bool extend, bool end);
    void MoveByWords(int count, bool extend);
    void MoveByParagraphs(int count, bool extend);
    void MoveByCells(int count, bool forward);
    void Move(const Arguments& arguments, bool forward);
};

}  // namespace quardele::word::writer
