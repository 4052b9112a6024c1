// What stands on the pages of a document. Lengths are twips, counted from the top left corner inside the
// margins.
#pragma once

#include <variant>
#include <vector>

#include <QColor>
#include <QFont>
#include <QImage>
#include <QRectF>
#include <QString>

namespace quardele::engine {

/// One line of text; its area is the line's, as wide as the text.
struct TextMark {
    QString text;
    std::size_t font = 0;  ///< in Content::fonts
    QColor color;
    int pending = -1;  ///< number of a text that is known only when all pages are
};
struct LineMark {
    QColor color;
    int thickness = 0;
};
struct BoxMark {
    QColor color;
    int thickness = 0;
    QColor fill;  ///< invalid for none
    int radius = 0;
};
struct PictureMark {
    std::size_t picture = 0;  ///< in Content::pictures
};

struct Piece {
    QRectF area;
    std::variant<TextMark, LineMark, BoxMark, PictureMark> mark;
};

using Pieces = std::vector<Piece>;

struct Content {
    std::vector<QFont> fonts;
    std::vector<QImage> pictures;
    std::vector<Pieces> pages;
};

}  // namespace quardele::engine
