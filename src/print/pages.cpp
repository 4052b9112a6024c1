#include <print/pages.h>

#include <algorithm>

namespace quardele::print {

std::vector<int> FittedWidths(std::vector<int> widths, int room) {
    for (int& width : widths) {
        width = std::min(width, room);
    }
    return widths;
}

std::vector<Range> ColumnGroups(const std::vector<int>& widths, int room) {
    std::vector<Range> groups(1);
    int used = 0;
    for (const int width : widths) {
        if (groups.back().count > 0 && used + width > room) {
            groups.push_back({.first = groups.back().first + groups.back().count});
            used = 0;
        }
        ++groups.back().count;
        used += width;
    }
    return groups;
}

std::vector<Page> Paginate(const std::vector<int>& widths, int rows, int rowHeight, Room room) {
    const std::vector<Range> groups = ColumnGroups(widths, room.width);
    const int perPage = std::max(1, room.height / rowHeight);
    std::vector<Page> pages;
    int row = 0;
    do {
        const Range band{.first = row, .count = std::min(perPage, rows - row)};
        for (const Range& group : groups) {
            pages.push_back({.rows = band, .columns = group});
        }
        row += perPage;
    } while (row < rows);
    return pages;
}

}  // namespace quardele::print
