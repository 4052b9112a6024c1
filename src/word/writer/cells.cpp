#include "cells.h"

#include <algorithm>

#include <com/sun/star/table/XCellRange.hpp>
#include <com/sun/star/table/XTableRows.hpp>
#include <com/sun/star/text/XTextTableCursor.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>

#include <basic/conversion.h>

#include "word_error.h"

namespace quardele::word::writer {

namespace {

using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

constexpr int kAutomatic = 0;
constexpr int kAtLeast = 1;
constexpr int kExactly = 2;

Reference<css::text::XTextTable> RequireTable(const OpenDocument& document) {
    auto table = TableUnder(document);
    if (!table.is()) {
        throw Failure(WordError::NotInTable);
    }
    return table;
}

/// "A2:F2" when cells are selected; the name of the current cell otherwise.
Text SelectedCells(const OpenDocument& document) {
    const Reference<css::view::XSelectionSupplier> supplier(document.Controller(), UNO_QUERY_THROW);
    const Reference<css::text::XTextTableCursor> cells(supplier->getSelection(), UNO_QUERY);
    if (cells.is()) {
        return ToText(cells->getRangeName());
    }
    return CellPlace(document).Name();
}

/// The cells of a row, in reading order.
std::vector<CellName> CellsOfRow(const Reference<css::text::XTextTable>& table, int row) {
    std::vector<CellName> cells = CellsOf(table);
    std::erase_if(cells, [row](const CellName& cell) { return cell.row != row; });
    return cells;
}

template <class Change>
void OnSelectedRows(const OpenDocument& document, const Change& change) {
    const auto rows = RequireTable(document)->getRows();
    const RowSpan span = SelectedRows(document);
    for (int row = span.first; row <= span.last; ++row) {
        change(Reference<css::uno::XInterface>(rows->getByIndex(row), UNO_QUERY_THROW));
    }
}

}  // namespace

RowSpan SelectedRows(const OpenDocument& document) {
    const auto table = RequireTable(document);
    const Text name = SelectedCells(document);
    const std::size_t colon = name.find(u':');
    const CellName one = ParseCellName(TextView(name).substr(0, colon));
    const CellName other = colon == Text::npos ? one : ParseCellName(TextView(name).substr(colon + 1));
    const auto [first, last] = std::minmax(one.row, other.row);
    const auto [left, right] = std::minmax(one.column, other.column);
    const bool whole = left == 0 && right + 1 >= static_cast<int>(CellsOfRow(table, last).size());
    return {first, last, whole};
}

void SelectRows(const OpenDocument& document, int first, int last) {
    const auto table = RequireTable(document);
    const auto top = CellsOfRow(table, first);
    const auto bottom = CellsOfRow(table, last);
    if (top.empty() || bottom.empty()) {
        throw Failure(WordError::NoSuchElement);
    }
    const Reference<css::table::XCellRange> cells(table, UNO_QUERY_THROW);
    const Text range = CellText(top.front()) + u":" + CellText(bottom.back());
    Reference<css::view::XSelectionSupplier>(document.Controller(), UNO_QUERY_THROW)
        ->select(css::uno::Any(cells->getCellRangeByName(ToUno(range))));
}

std::span<const Member<Cells>> Cells::Members() {
    static constexpr Member<Cells> kMembers[] = {
        {u"AutoFit", &Cells::AutoFit},
        {u"Delete", &Cells::Delete},
        {u"HeightRule", &Cells::HeightRule, &Cells::SetHeightRule},
    };
    return kMembers;
}

Value Cells::AutoFit(const Arguments&) {
    static_cast<void>(RequireTable(*Doc()));
    Doc()->Dispatch(".uno:SetOptimalColumnWidth");
    return {};
}

Value Cells::Delete(const Arguments&) {
    const auto table = RequireTable(*Doc());
    const RowSpan span = SelectedRows(*Doc());
    if (!span.whole) {
        throw Failure(WordError::CommandFailed);
    }
    table->getRows()->removeByIndex(span.first, span.last - span.first + 1);
    return {};
}

Value Cells::HeightRule(const Arguments&) {
    bool automatic = true;
    OnSelectedRows(*Doc(),
                   [&](const auto& row) { automatic = automatic && Property<bool>(row, "IsAutoHeight"); });
    return automatic ? kAutomatic : kExactly;
}

void Cells::SetHeightRule(const Value& rule) {
    const int number = basic::CLng(rule.Plain());
    if (number < kAutomatic || number > kExactly) {
        throw Failure(WordError::BadParameter);
    }
    // Rows that grow with their contents keep the height that they have as the least one.
    OnSelectedRows(*Doc(), [&](const auto& row) { SetProperty(row, "IsAutoHeight", number <= kAtLeast); });
}

}  // namespace quardele::word::writer
