// Where the selection stands in a table, and the ways to other cells.
#pragma once

#include <cstddef>
#include <vector>

#include <com/sun/star/text/XText.hpp>
#include <com/sun/star/text/XTextTable.hpp>

#include "cell_name.h"
#include "open_document.h"

namespace quardele::word::writer {

/// The table under the selection; null when there is none.
[[nodiscard]] Reference<css::text::XTextTable> TableUnder(const OpenDocument& document);
/// Names of a table's cells in reading order.
[[nodiscard]] std::vector<CellName> CellsOf(const Reference<css::text::XTextTable>& table);

class CellPlace {
 public:
    /// Throws RuntimeError 4605 when the selection is not in a table.
    explicit CellPlace(const OpenDocument& document);

    /// 0-based.
    [[nodiscard]] int Column() const { return cells_[current_].column; }
    [[nodiscard]] int Row() const { return cells_[current_].row; }
    /// Writer's name of the current cell.
    [[nodiscard]] Text Name() const { return ToText(names_[static_cast<sal_Int32>(current_)]); }

    /// The last or first cell of the current row or column.
    enum class Line { Row, Column };
    [[nodiscard]] Reference<css::text::XText> LastOf(Line line) const;
    [[nodiscard]] Reference<css::text::XText> FirstOf(Line line) const;
    /// The cell behind the current one; at the end of the table a row is added for it.
    [[nodiscard]] Reference<css::text::XText> Next();
    /// The cell before the current one; the first cell stays.
    [[nodiscard]] Reference<css::text::XText> Previous() const;

 private:
    void ReadCells();
    [[nodiscard]] bool IsOn(Line line, const CellName& cell) const;
    [[nodiscard]] Reference<css::text::XText> CellAt(std::size_t index) const;

    Reference<css::text::XTextTable> table_;
    css::uno::Sequence<rtl::OUString> names_;
    std::vector<CellName> cells_;
    std::size_t current_ = 0;
};

}  // namespace quardele::word::writer
