// The table of a letter that the due visits go into.
#pragma once

#include <vector>

#include <dao/dao.h>
#include <forms/grid.h>

#include "letter.h"

namespace quardele::reminders {

/// Knows which column of the letter's table shows what. Without a table it has no column.
class DetailTable {
 public:
    /// `workTypes` is searched by its index.
    explicit DetailTable(dao::Recordset& workTypes) : workTypes_(workTypes) {}

    /// Finds the columns by their bookmarks and leaves the selection in the first column; false when the
    /// letter has none of the bookmarks. Throws what Word reports when one stands outside every table.
    bool Find(Letter& letter);
    /// Writes a row of the list into the table row below the selection.
    void AddLine(Letter& letter, forms::Grid& list, int row);

 private:
    bool GoToAnyBookmark(Letter& letter);
    void ReadColumns(Letter& letter);
    [[nodiscard]] basic::Text CellContent(const basic::Text& bookmark, forms::Grid& list, int row);
    [[nodiscard]] basic::Text WorkTypeLabel(const basic::Text& code);

    dao::Recordset& workTypes_;
    /// The bookmark of each column, empty where a column has none.
    std::vector<basic::Text> T_COLONNES;
};

}  // namespace quardele::reminders
