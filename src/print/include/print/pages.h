// Which rows and columns stand on which page. Lengths are of any one unit.
#pragma once

#include <vector>

namespace quardele::print {

struct Range {
    int first = 0;
    int count = 0;

    friend bool operator==(const Range&, const Range&) = default;
};

struct Page {
    Range rows;
    Range columns;
    /// The sheet's first column stands in front of the others once more.
    bool firstColumnToo = false;

    friend bool operator==(const Page&, const Page&) = default;
};

/// The room that a page has for cells.
struct Room {
    int width = 0;
    int height = 0;
};

/// What the first column takes on the pages of the others, so that they tell whose lines they are: nothing
/// where all columns fit side by side, or where it would take more than half of the room.
[[nodiscard]] int RepeatedWidth(const std::vector<int>& widths, int room);
/// No column wider than the room that it has: what is wider could not be shown on any page.
[[nodiscard]] std::vector<int> FittedWidths(std::vector<int> widths, int room);
/// Columns side by side as far as they fit, beside the repeated one; a column that does not fit alone has a
/// page of its own.
[[nodiscard]] std::vector<Range> ColumnGroups(const std::vector<int>& widths, int room);
/// The room that the pages of such widths leave free, given to columns that want more, to the one that lacks
/// the least first, so that as many as can be get all they want. Columns may move to the next page for that,
/// but no more pages are needed, and no column gets narrower.
[[nodiscard]] std::vector<int> WidenedWidths(std::vector<int> widths, const std::vector<int>& wanted,
                                             int room);
/// All pages in the order of printing: the pages of the same rows follow each other, so that they can be laid
/// side by side. At least one row stands on a page; a sheet without rows or columns has one page.
[[nodiscard]] std::vector<Page> Paginate(const std::vector<int>& widths, int rows, int rowHeight, Room room);

}  // namespace quardele::print
