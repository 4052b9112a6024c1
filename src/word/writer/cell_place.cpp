#include "cell_place.h"

#include <algorithm>
#include <iterator>

#include <com/sun/star/table/XCell.hpp>

#include "word_error.h"

namespace quardele::word::writer {

namespace {

using css::text::XText;
using css::text::XTextTable;

std::vector<CellName> Parsed(const css::uno::Sequence<rtl::OUString>& names) {
    std::vector<CellName> cells;
    cells.reserve(static_cast<std::size_t>(names.getLength()));
    for (const rtl::OUString& name : names) {
        cells.push_back(ParseCellName(ToText(name)));
    }
    return cells;
}

}  // namespace

Reference<XTextTable> TableUnder(const OpenDocument& document) {
    return Property<Reference<XTextTable>>(document.Cursor(), "TextTable");
}

std::vector<CellName> CellsOf(const Reference<XTextTable>& table) {
    return Parsed(table->getCellNames());
}

CellPlace::CellPlace(const OpenDocument& document) : table_(TableUnder(document)) {
    if (!table_.is()) {
        throw Failure(WordError::NotInTable);
    }
    ReadCells();
    const auto cell = Property<Reference<css::table::XCell>>(document.Cursor(), "Cell");
    const auto name = Property<rtl::OUString>(cell, "CellName");
    const auto found = std::find(names_.begin(), names_.end(), name);
    if (found == names_.end()) {
        throw Failure(WordError::NotInTable);
    }
    current_ = static_cast<std::size_t>(std::distance(names_.begin(), found));
}

void CellPlace::ReadCells() {
    names_ = table_->getCellNames();
    cells_ = Parsed(names_);
}

bool CellPlace::IsOn(Line line, const CellName& cell) const {
    return line == Line::Row ? cell.row == cells_[current_].row : cell.column == cells_[current_].column;
}

Reference<XText> CellPlace::CellAt(std::size_t index) const {
    return {table_->getCellByName(names_[static_cast<sal_Int32>(index)]), css::uno::UNO_QUERY_THROW};
}

Reference<XText> CellPlace::LastOf(Line line) const {
    const auto last =
        std::find_if(cells_.rbegin(), cells_.rend(), [&](const CellName& cell) { return IsOn(line, cell); });
    return CellAt(static_cast<std::size_t>(std::distance(last, cells_.rend())) - 1);
}

Reference<XText> CellPlace::FirstOf(Line line) const {
    const auto first =
        std::find_if(cells_.begin(), cells_.end(), [&](const CellName& cell) { return IsOn(line, cell); });
    return CellAt(static_cast<std::size_t>(std::distance(cells_.begin(), first)));
}

Reference<XText> CellPlace::Next() {
    if (current_ + 1 == cells_.size()) {
        const auto rows = table_->getRows();
        rows->insertByIndex(rows->getCount(), 1);
        ReadCells();
    }
    return CellAt(current_ + 1);
}

Reference<XText> CellPlace::Previous() const {
    return CellAt(current_ == 0 ? 0 : current_ - 1);
}

}  // namespace quardele::word::writer
