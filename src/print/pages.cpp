#include <print/pages.h>

#include <algorithm>
#include <numeric>

namespace quardele::print {

int RepeatedWidth(const std::vector<int>& widths, int room) {
    const bool allFit = std::accumulate(widths.begin(), widths.end(), 0L) <= room;
    return allFit || widths.front() > room / 2 ? 0 : widths.front();
}

std::vector<int> FittedWidths(std::vector<int> widths, int room) {
    const int repeated = RepeatedWidth(widths, room);
    for (std::size_t column = 0; column < widths.size(); ++column) {
        widths[column] = std::min(widths[column], column == 0 ? room : room - repeated);
    }
    return widths;
}

std::vector<Range> ColumnGroups(const std::vector<int>& widths, int room) {
    const int repeated = RepeatedWidth(widths, room);
    std::vector<Range> groups(1);
    int used = 0;
    for (const int width : widths) {
        if (groups.back().count > 0 && used + width > room) {
            groups.push_back({.first = groups.back().first + groups.back().count});
            used = repeated;
        }
        ++groups.back().count;
        used += width;
    }
    return groups;
}

std::vector<Page> Paginate(const std::vector<int>& widths, int rows, int rowHeight, Room room) {
    const std::vector<Range> groups = ColumnGroups(widths, room.width);
    const bool repeats = RepeatedWidth(widths, room.width) > 0;
    const int perPage = std::max(1, room.height / rowHeight);
    std::vector<Page> pages;
    int row = 0;
    do {
        const Range band{.first = row, .count = std::min(perPage, rows - row)};
        for (const Range& group : groups) {
            pages.push_back({.rows = band, .columns = group, .firstColumnToo = repeats && group.first > 0});
        }
        row += perPage;
    } while (row < rows);
    return pages;
}

}  // namespace quardele::print
