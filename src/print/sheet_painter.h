// The pages of a sheet, laid out for paper of one size and painted one by one. Lengths are twips.
#pragma once

#include <vector>

#include <QFont>
#include <QPainter>
#include <QSize>

#include <print/header_text.h>
#include <print/pages.h>
#include <print/sheet.h>

namespace quardele::print {

inline constexpr qreal kTwipsPerPoint = 20;
inline constexpr qreal kTwipsPerInch = 1440;

class SheetPainter {
 public:
    /// The sheet must outlive the painter. The paper is the part of the page inside the margins.
    SheetPainter(const Sheet& sheet, QSize paper);

    [[nodiscard]] int Count() const { return static_cast<int>(pages_.size()); }
    /// Paints a page (from 1) at the painter's origin, one unit being a twip.
    void Paint(QPainter& painter, int page) const;

 private:
    [[nodiscard]] int HeaderHeight() const;
    [[nodiscard]] int HeadingHeight() const;
    void PaintHeader(QPainter& painter, int page) const;
    void PaintHeaderLine(QPainter& painter, const HeaderLine& line, int top) const;
    void PaintHeadings(QPainter& painter, const Page& page, const QRect& area) const;
    void PaintRow(QPainter& painter, const Page& page, int row, const QRect& area) const;
    void PaintCell(QPainter& painter, int row, int column, const QRect& area) const;
    void PaintLines(QPainter& painter, const Page& page, const QRect& area) const;
    void PaintFoot(QPainter& painter, int page) const;
    [[nodiscard]] int WidthOf(const Page& page) const;

    const Sheet& sheet_;
    QSize paper_;
    int rowHeadingWidth_ = 0;
    int headerHeight_ = 0;
    int headingHeight_ = 0;
    int footHeight_ = 0;
    int rowHeight_ = 0;
    std::vector<int> widths_;
    std::vector<Page> pages_;
};

}  // namespace quardele::print
