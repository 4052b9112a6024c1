// The letter that is being filled.
#pragma once

#include <automation/object.h>
#include <basic/text.h>
#include <word/gword.h>

namespace quardele::reminders {

/// What the letters do with Word: the session's vocabulary, on the application of the current letter. Refers
/// to both; owns neither.
class Letter {
 public:
    Letter(word::GWORD& vocabulary, automation::ObjectPtr& application)
        : vocabulary_(vocabulary), application_(application) {}

    /// Creates the document in a Word of its own; see C_Appel_Word.
    bool Start(const basic::Text& templatePath);

    /// The header of the first page, and back to the main text.
    void OpenHeader();
    void LeaveHeader();

    /// Moves the selection onto a bookmark; false when there is none of that name.
    bool GoTo(basic::TextView bookmark);
    /// Selects a bookmark that was seen before; without one of that name the selection stays, silently.
    void Select(basic::TextView bookmark);
    /// Types over the selection.
    void Type(const basic::Text& text);

    /// Columns of the table that the selection stands in, and the selection's own column, from 1. Failures
    /// of Word reach the caller: the selection may stand in no table.
    [[nodiscard]] int TableColumns() const;
    [[nodiscard]] int CurrentColumn() const;
    void ToEndOfTableRow();
    /// From the end of the table this adds a row.
    void ToNextCell();

    void SaveAs(const basic::Text& path);
    void Save(const basic::Text& path);

 private:
    word::GWORD& vocabulary_;
    automation::ObjectPtr& application_;
};

}  // namespace quardele::reminders
