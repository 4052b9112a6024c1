// A table as it goes onto paper. All lengths are twips of paper.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include <QColor>
#include <QPageLayout>
#include <QString>

namespace quardele::print {

struct SheetColumn {
    QString heading;
    /// At least, where the paper is as wide: a column whose texts need more gets what its page has left.
    int width = 0;
    Qt::Alignment alignment = Qt::AlignLeft;
};

/// What a cell shows in place of a text: a box to tick, a ticked one, a barred circle.
enum class Mark { None, Box, TickedBox, Barred };

struct SheetCell {
    QString text;
    Mark mark = Mark::None;
    bool bold = false;
    bool italic = false;
    std::optional<QColor> fill;
};

struct Sheet {
    /// At the foot of each page; the name of the document.
    QString title;
    /// Markup of the text above the cells, see header_text.h.
    QString header;
    /// As the printer has it unless set.
    std::optional<QPageLayout::Orientation> orientation;
    std::vector<SheetColumn> columns;
    int rows = 0;
    /// A cell by row and column, from 0. Called for every cell when the pages are laid out, and while
    /// painting for those of a page, each time that the page is painted.
    std::function<SheetCell(int row, int column)> cell;
    /// What stands in front of a row, on every page; none unless set.
    std::function<QString(int row)> rowHeading;
    bool headings = true;
    /// A frame around the cells of a page, lines between them.
    bool border = true;
    bool lines = true;
    /// Headings on grey.
    bool shadows = false;
};

}  // namespace quardele::print
