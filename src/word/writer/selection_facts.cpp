// What the selection is, and what it says of itself.
#include <com/sun/star/text/XPageCursor.hpp>

#include "cells.h"
#include "font.h"
#include "range.h"
#include "selection.h"
#include "tables.h"
#include "text_range.h"
#include "word_error.h"

namespace quardele::word::writer {

namespace {

using css::uno::UNO_QUERY_THROW;

constexpr int kNotInTable = -1;

// Word's codes of information.
constexpr int kAdjustedPage = 1;
constexpr int kPage = 3;
constexpr int kPages = 4;
constexpr int kIsInTable = 12;
constexpr int kFirstRow = 13;
constexpr int kLastRow = 14;
constexpr int kRows = 15;
constexpr int kFirstColumn = 16;
constexpr int kLastColumn = 17;
constexpr int kColumns = 18;

int RowsOf(const Reference<css::text::XTextTable>& table) {
    return static_cast<int>(table->getRows()->getCount());
}

Value OfTable(const OpenDocument& document, int code) {
    const auto table = TableUnder(document);
    if (code == kIsInTable) {
        return table.is();
    }
    if (!table.is()) {
        return kNotInTable;
    }
    switch (code) {
        case kRows:
            return RowsOf(table);
        case kColumns:
            return ColumnCount(table);
        case kFirstColumn:
        case kLastColumn:
            return CellPlace(document).Column() + 1;
        case kFirstRow:
            return SelectedRows(document).first + 1;
        default:
            return SelectedRows(document).last + 1;
    }
}

}  // namespace

Value Selection::GetCells(const Arguments&) {
    return Make<Cells>(Doc());
}

Value Selection::GetColumns(const Arguments& arguments) {
    const std::vector<int> column = {CellPlace(*Doc()).Column()};
    return CollectionOrItem(Make<Columns>(Doc(), column), arguments);
}

Value Selection::GetFont(const Arguments&) {
    return Make<Font>(Doc());
}

Value Selection::GetRange(const Arguments&) {
    return Make<Range>(Doc(), Doc()->Cursor().get());
}

Value Selection::GetTables(const Arguments& arguments) {
    const auto table = TableUnder(*Doc());
    TableList tables;
    if (table.is()) {
        tables.push_back(table);
    }
    return CollectionOrItem(Make<Tables>(Doc(), std::move(tables)), arguments);
}

Value Selection::GetText(const Arguments&) {
    return TextOf(Doc()->Cursor().get());
}

Value Selection::Information(const Arguments& arguments) {
    const int code = arguments.IntegerAt(0, u"Type");
    switch (code) {
        case kAdjustedPage:
        case kPage:
            return static_cast<int>(
                Reference<css::text::XPageCursor>(Doc()->Cursor(), UNO_QUERY_THROW)->getPage());
        case kPages:
            return static_cast<int>(Property<sal_Int32>(Doc()->Controller(), "PageCount"));
        default:
            break;
    }
    if (code < kIsInTable || code > kColumns) {
        throw Failure(WordError::BadParameter);
    }
    return OfTable(*Doc(), code);
}

}  // namespace quardele::word::writer
