// The text above the cells of every page.
#pragma once

#include <vector>

#include <QPainter>
#include <QSize>

#include <print/header_text.h>

namespace quardele::print {

/// Lengths are twips; a unit of the painter is one.
class HeaderPainter {
 public:
    /// The paper is the part of the page inside the margins.
    HeaderPainter(QString markup, QSize paper);

    /// Half of the paper at most, unless the first line alone is higher.
    [[nodiscard]] int Height() const;
    /// Paints the text of a page (from 1) at the painter's origin.
    void Paint(QPainter& painter, int page) const;

 private:
    [[nodiscard]] std::vector<HeaderLine> Lines(int page) const;
    void PaintLine(QPainter& painter, const HeaderLine& line, int top) const;

    QString markup_;
    QSize paper_;
};

}  // namespace quardele::print
