#include "grid_sheet.h"

#include <cmath>

#include <QFontMetricsF>
#include <QRegularExpression>

#include <print/cell_font.h>

#include "cell_marks.h"
#include "grid_model.h"
#include "grid_private.h"
#include "grid_workbook.h"

namespace quardele::forms {
namespace {

std::optional<QPageLayout::Orientation> OrientationOf(int setting) {
    switch (setting) {
        case 1:
            return QPageLayout::Portrait;
        case 2:
            return QPageLayout::Landscape;
        default:
            return std::nullopt;
    }
}

std::vector<int> LoadedRows(const Grid& grid, const GridModel& model) {
    std::vector<int> rows;
    for (int row = 0; row < model.Rows(); ++row) {
        if (!grid.isRowHidden(row)) {
            model.Load(row);
            rows.push_back(row);
        }
    }
    return rows;
}

/// What a pixel of a text on the screen is on paper, in twips.
double PaperScale(const QFont& screen, const QFont& paper) {
    const QString letters = QStringLiteral(
        "ABCDEFGHIJKLMNOPQRSTUVWXYZ abcdefghijklmnopqrstuvwxyz 0123456789 0123456789 /-.,:éèê");
    return QFontMetricsF(paper).horizontalAdvance(letters) / QFontMetricsF(screen).horizontalAdvance(letters);
}

/// A text's width on the screen is rounded to whole pixels, down as well.
constexpr int kRounding = 1;

int PaperWidth(int pixels, Qt::Alignment alignment, double scale) {
    const int room = GridDelegate::TextRect(QRect(0, 0, pixels, 1), alignment).width() + kRounding;
    return static_cast<int>(std::ceil(std::max(room, 0) * scale)) + 2 * print::kCellPadding;
}

/// What the longest word of a heading needs.
int HeadingWidth(const QString& heading) {
    static const QRegularExpression blanks(QStringLiteral("\\s+"));
    const QFontMetricsF metrics(print::CellFont(true));
    double widest = 0;
    for (const QString& word : heading.split(blanks)) {
        widest = std::max(widest, metrics.horizontalAdvance(word));
    }
    return static_cast<int>(std::ceil(widest)) + 2 * print::kCellPadding;
}

std::vector<print::SheetColumn> SheetColumns(const Grid& grid, const GridModel& model,
                                             const std::vector<int>& columns) {
    const double scale = PaperScale(grid.CellFont(), print::CellFont());
    std::vector<print::SheetColumn> result;
    for (const int column : columns) {
        const QString& heading = model.Column(column).heading;
        const Qt::Alignment alignment = model.Column(column).Alignment();
        result.push_back(
            {.heading = heading,
             .width = std::max(PaperWidth(grid.columnWidth(column), alignment, scale), HeadingWidth(heading)),
             .alignment = alignment});
    }
    return result;
}

print::SheetCell CellOf(const GridModel& model, int row, int column, bool colored) {
    const GridColumn& kind = model.Column(column);
    const CellLook look = model.Look(row, column);
    print::SheetCell cell;
    cell.bold = look.bold.value_or(false);
    cell.italic = look.italic.value_or(false);
    if (kind.type == CellType::CheckBox) {
        cell.mark = model.IsTicked(row, column) ? print::Mark::TickedBox : print::Mark::Box;
    } else if (kind.IsTyped()) {
        cell.text = model.Text(row, column);
        cell.mark = cell.text.isEmpty() && MeansNoHistory(look) ? print::Mark::Barred : print::Mark::None;
    }
    if (colored && look.backColor) {
        cell.fill = FromPlatform(*look.backColor);
    }
    return cell;
}

}  // namespace

print::Sheet SheetOf(const Grid& grid, const GridModel& model, const PrintSettings& settings) {
    const std::vector<int> columns = ShownColumns(grid, model);
    const std::vector<int> rows = LoadedRows(grid, model);
    print::Sheet sheet;
    sheet.title = grid.ToolTipText();
    sheet.header = settings.header;
    sheet.orientation = OrientationOf(settings.orientation);
    sheet.columns = SheetColumns(grid, model, columns);
    sheet.rows = static_cast<int>(rows.size());
    sheet.headings = settings.colHeaders;
    sheet.border = settings.border;
    sheet.lines = settings.lines;
    sheet.shadows = settings.shadows;
    sheet.cell = [&model, columns, rows, colored = settings.color](int row, int column) {
        const int shown = rows[static_cast<std::size_t>(row)];
        // While the pages are looked at, the grid may lose rows.
        return shown < model.Rows() ? CellOf(model, shown, columns[static_cast<std::size_t>(column)], colored)
                                    : print::SheetCell();
    };
    if (settings.rowHeaders && grid.RowHeader()) {
        sheet.rowHeading = [rows](int row) {
            return QString::number(rows[static_cast<std::size_t>(row)] + 1);
        };
    }
    return sheet;
}

}  // namespace quardele::forms
