#include "column_widths.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <QFontMetricsF>

#include <print/cell_font.h>
#include <print/pages.h>

namespace quardele::print {
namespace {

/// Measures texts of cells, in the fonts that cells have.
class Ruler {
 public:
    /// The greater one of a width and the width of a cell's text. Most texts need no look at their letters:
    /// they have too few of them.
    [[nodiscard]] double Wider(double width, const SheetCell& cell) const {
        const Face& face = faces_[(cell.bold ? 1U : 0U) + (cell.italic ? 2U : 0U)];
        const bool mayBe = static_cast<double>(cell.text.size()) * face.widestLetter > width;
        return mayBe ? std::max(width, face.metrics.horizontalAdvance(cell.text)) : width;
    }

 private:
    struct Face {
        explicit Face(const QFont& font) : metrics(font), widestLetter(metrics.maxWidth()) {}
        QFontMetricsF metrics;
        double widestLetter;
    };

    std::array<Face, 4> faces_{Face(CellFont()), Face(CellFont(true)), Face(CellFont(false, true)),
                               Face(CellFont(true, true))};
};

/// What each column needs to show all its texts whole.
std::vector<int> WholeWidths(const Sheet& sheet) {
    const Ruler ruler;
    std::vector<double> widest(sheet.columns.size());
    for (int row = 0; row < sheet.rows; ++row) {
        for (std::size_t column = 0; column < widest.size(); ++column) {
            widest[column] = ruler.Wider(widest[column], sheet.cell(row, static_cast<int>(column)));
        }
    }
    std::vector<int> widths;
    widths.reserve(widest.size());
    for (const double width : widest) {
        widths.push_back(static_cast<int>(std::ceil(width)) + 2 * kCellPadding);
    }
    return widths;
}

}  // namespace

std::vector<int> WidthsOnPaper(const Sheet& sheet, int room) {
    std::vector<int> widths;
    for (const SheetColumn& column : sheet.columns) {
        widths.push_back(column.width);
    }
    return WidenedWidths(FittedWidths(std::move(widths), room), WholeWidths(sheet), room);
}

}  // namespace quardele::print
