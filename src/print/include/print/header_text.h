// The text above the cells of a printed page, as its markup describes it.
#pragma once

#include <vector>

#include <QString>

namespace quardele::print {

/// Where a piece of a line stands on the page's width.
enum class Place { Left, Centre, Right };

struct HeaderPiece {
    QString text;
    Place place = Place::Left;
    bool bold = false;
    int points = 10;
};

/// A line without pieces is blank; its height is that of its points.
struct HeaderLine {
    std::vector<HeaderPiece> pieces;
    int points = 10;
};

/// The lines of a page: /l /c /r change the place of what follows, /fb1 and /fb0 turn bold on and off,
/// /fz"14" sets the size in points (1 to 96), /n starts a new line, /p is the number of the page. All of them
/// hold on over the lines' ends. Any other "/" is a text's own.
[[nodiscard]] std::vector<HeaderLine> HeaderLines(const QString& markup, int page);
/// Whether the markup has a page number of its own.
[[nodiscard]] bool ShowsPageNumber(const QString& markup);

}  // namespace quardele::print
