#include "tables.h"

#include <algorithm>
#include <numeric>

#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/text/XTextRangeCompare.hpp>
#include <com/sun/star/text/XTextTablesSupplier.hpp>

#include "cell_place.h"
#include "cells.h"
#include "text_range.h"
#include "word_error.h"

namespace quardele::word::writer {

namespace {

using css::text::XText;
using css::text::XTextTable;
using css::uno::UNO_QUERY_THROW;

/// The element of a 1-based index.
template <class List>
const typename List::value_type& ElementAt(const List& list, const Arguments& arguments) {
    const int index = arguments.IntegerAt(0, u"Index");
    if (index < 1 || index > static_cast<int>(list.size())) {
        throw Failure(WordError::NoSuchElement);
    }
    return list[static_cast<std::size_t>(index) - 1];
}

}  // namespace

int ColumnCount(const Reference<XTextTable>& table) {
    int count = 0;
    for (const CellName& cell : CellsOf(table)) {
        count = std::max(count, cell.column + 1);
    }
    return count;
}

TableList BodyTables(const OpenDocument& document) {
    const auto body = document.Model()->getText();
    const Reference<css::container::XIndexAccess> all(
        Reference<css::text::XTextTablesSupplier>(document.Model(), UNO_QUERY_THROW)->getTextTables(),
        UNO_QUERY_THROW);
    TableList tables;
    for (sal_Int32 index = 0; index < all->getCount(); ++index) {
        const Reference<XTextTable> table(all->getByIndex(index), UNO_QUERY_THROW);
        if (Contains(body, table->getAnchor())) {
            tables.push_back(table);
        }
    }
    // Writer lists them in the order in which they were made.
    const Reference<css::text::XTextRangeCompare> compare(body, UNO_QUERY_THROW);
    std::sort(tables.begin(), tables.end(), [&](const auto& left, const auto& right) {
        return compare->compareRegionStarts(left->getAnchor(), right->getAnchor()) > 0;
    });
    return tables;
}

std::span<const Member<Tables>> Tables::Members() {
    static constexpr Member<Tables> kMembers[] = {
        {u"Count", &Tables::Count},
        {u"Item", &Tables::Item},
    };
    return kMembers;
}

Value Tables::Item(const Arguments& arguments) {
    return Make<Table>(Doc(), ElementAt(tables_, arguments));
}

std::span<const Member<Table>> Table::Members() {
    static constexpr Member<Table> kMembers[] = {{u"Columns", &Table::Columns}, {u"Select", &Table::Select}};
    return kMembers;
}

Value Table::Columns(const Arguments& arguments) {
    std::vector<int> columns(static_cast<std::size_t>(ColumnCount(table_)));
    std::iota(columns.begin(), columns.end(), 0);
    return CollectionOrItem(Make<writer::Columns>(Doc(), std::move(columns)), arguments);
}

Value Table::Select(const Arguments&) {
    const auto cells = CellsOf(table_);
    const Reference<XText> first(table_->getCellByName(ToUno(CellText(cells.front()))), UNO_QUERY_THROW);
    Doc()->Cursor()->gotoRange(first->getStart(), false);
    SelectRows(*Doc(), cells.front().row, cells.back().row);
    return {};
}

std::span<const Member<Columns>> Columns::Members() {
    static constexpr Member<Columns> kMembers[] = {
        {u"Count", &Columns::Count},
        {u"Item", &Columns::Item},
    };
    return kMembers;
}

Value Columns::Item(const Arguments& arguments) {
    return Make<Column>(Doc(), ElementAt(columns_, arguments));
}

std::span<const Member<Column>> Column::Members() {
    static constexpr Member<Column> kMembers[] = {{u"Index", &Column::Index}};
    return kMembers;
}

}  // namespace quardele::word::writer
