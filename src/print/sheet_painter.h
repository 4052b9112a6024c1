// The pages of a sheet, laid out for paper of one size and painted one by one. Lengths are twips.
#pragma once

#include <vector>

#include <QPainter>
#include <QSize>

#include <print/pages.h>
#include <print/sheet.h>

#include "header_painter.h"

namespace quardele::print {

class SheetPainter {
 public:
    /// The sheet must outlive the painter. The paper is the part of the page inside the margins.
    SheetPainter(const Sheet& sheet, QSize paper);

    [[nodiscard]] int Count() const { return static_cast<int>(pages_.size()); }
    /// Paints a page (from 1) at the painter's origin, one unit being a twip.
    void Paint(QPainter& painter, int page) const;

 private:
    /// Where a column stands on a page.
    struct PlacedColumn {
        int column = 0;
        int left = 0;
        int width = 0;
    };

    [[nodiscard]] int HeadingHeight() const;
    [[nodiscard]] std::vector<PlacedColumn> Placed(const Page& page) const;
    void PaintHeadings(QPainter& painter, const std::vector<PlacedColumn>& columns, const QRect& area) const;
    void PaintRow(QPainter& painter, const std::vector<PlacedColumn>& columns, int row,
                  const QRect& area) const;
    void PaintCell(QPainter& painter, int row, int column, const QRect& area) const;
    void PaintGrid(QPainter& painter, const std::vector<PlacedColumn>& columns, int rows,
                   const QRect& area) const;
    void PaintFoot(QPainter& painter, int page) const;

    const Sheet& sheet_;
    QSize paper_;
    HeaderPainter header_;
    int rowHeadingWidth_ = 0;
    int headerHeight_ = 0;
    int headingHeight_ = 0;
    int footHeight_ = 0;
    int rowHeight_ = 0;
    std::vector<int> widths_;
    std::vector<Page> pages_;
};

}  // namespace quardele::print
