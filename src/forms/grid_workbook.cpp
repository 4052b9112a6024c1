#include "grid_workbook.h"

#include <basic/conversion.h>
#include <forms/strings.h>

#include "grid_model.h"

namespace quardele::forms {
namespace {

/// Width of a digit in the default font of a workbook, in pixels.
constexpr double kDigitWidth = 7;

enum class Content { Text, Number, Date, Tick, Nothing };

struct Kind {
    Content content = Content::Text;
    /// The field has values of that kind: its texts are theirs. A text of another origin is taken for a value
    /// only when that is shown by the same text: "01000" is no number, and "12/03" has no year.
    bool stored = false;
};

Content ContentOfField(const dao::Field* field) {
    if (field == nullptr) {
        return Content::Text;
    }
    switch (field->type) {
        case dao::FieldType::Byte:
        case dao::FieldType::Integer:
        case dao::FieldType::Long:
        case dao::FieldType::Currency:
        case dao::FieldType::Single:
        case dao::FieldType::Double:
        case dao::FieldType::Decimal:
            return Content::Number;
        case dao::FieldType::Date:
            return Content::Date;
        default:
            return Content::Text;
    }
}

Content ContentOf(const GridModel& model, int column) {
    switch (model.Column(column).type) {
        case CellType::CheckBox:
            return Content::Tick;
        case CellType::Button:
            return Content::Nothing;
        case CellType::Date:
            return Content::Date;
        default:
            return model.Column(column).IsNumber() ? Content::Number : ContentOfField(model.FieldOf(column));
    }
}

Kind KindOf(const GridModel& model, int column) {
    const Content content = ContentOf(model, column);
    return {.content = content, .stored = content == ContentOfField(model.FieldOf(column))};
}

workbook::Cell NumberOrText(const basic::Text& text, bool stored) {
    if (!basic::IsNumeric(text)) {
        return text;
    }
    const double number = basic::CDbl(text);
    return stored || basic::CStr(number) == text ? workbook::Cell(number) : workbook::Cell(text);
}

workbook::Cell DateOrText(const basic::Text& text, bool stored) {
    const std::optional<basic::Date> date = basic::ParseDate(text);
    return date && (stored || basic::CStr(*date) == text) ? workbook::Cell(*date) : workbook::Cell(text);
}

workbook::Cell CellOf(const GridModel& model, int row, int column, const Kind& kind) {
    if (kind.content == Content::Tick) {
        return basic::Text(model.IsTicked(row, column) ? u"Oui" : u"Non");
    }
    const basic::Text text = ToText(model.Text(row, column));
    if (kind.content == Content::Nothing || text.empty()) {
        return {};
    }
    switch (kind.content) {
        case Content::Number:
            return NumberOrText(text, kind.stored);
        case Content::Date:
            return DateOrText(text, kind.stored);
        default:
            return text;
    }
}

std::vector<workbook::Column> Headings(const Grid& grid, const GridModel& model,
                                       const std::vector<int>& columns) {
    std::vector<workbook::Column> headings;
    for (const int column : columns) {
        const QString heading = QString(model.Column(column).heading).replace(u'\n', u' ');
        headings.push_back({ToText(heading), grid.columnWidth(column) / kDigitWidth});
    }
    return headings;
}

}  // namespace

std::vector<int> ShownColumns(const Grid& grid, const GridModel& model) {
    std::vector<int> columns;
    for (int column = 0; column < model.columnCount(); ++column) {
        if (!grid.isColumnHidden(column) && model.Column(column).width > 0) {
            columns.push_back(column);
        }
    }
    return columns;
}

std::unique_ptr<workbook::Workbook> WorkbookOf(const Grid& grid, const GridModel& model,
                                               const QString& sheetName) {
    const std::vector<int> columns = ShownColumns(grid, model);
    std::vector<Kind> kinds;
    for (const int column : columns) {
        kinds.push_back(KindOf(model, column));
    }
    auto book = std::make_unique<workbook::Workbook>(ToText(sheetName), Headings(grid, model, columns));
    std::vector<workbook::Cell> cells(columns.size());
    for (int row = 0; row < model.Rows(); ++row) {
        if (grid.isRowHidden(row)) {
            continue;
        }
        model.Load(row);
        for (std::size_t at = 0; at < columns.size() && row < model.Rows(); ++at) {
            cells[at] = CellOf(model, row, columns[at], kinds[at]);
        }
        if (row < model.Rows()) {  // no event of the row has emptied the grid
            book->AddRow(cells);
        }
    }
    return book;
}

}  // namespace quardele::forms
