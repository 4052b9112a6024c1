#include <print/pages.h>

#include <algorithm>
#include <numeric>

namespace quardele::print {
namespace {

/// What is left free beside the columns of a group, the repeated one included.
int SpareRoom(const std::vector<int>& widths, const Range& group, int room) {
    const auto first = widths.begin() + group.first;
    const int repeated = group.first > 0 ? RepeatedWidth(widths, room) : 0;
    return std::max(0, room - std::accumulate(first, first + group.count, repeated));
}

/// The first column stands on several pages: what it gets must be free on all of them, and leave the others
/// the half of the room without which it would not be repeated.
void WidenRepeated(std::vector<int>& widths, int wanted, const std::vector<Range>& groups, int room) {
    int spare = room / 2 - widths.front();
    for (const Range& group : groups) {
        spare = std::min(spare, SpareRoom(widths, group, room));
    }
    widths.front() += std::clamp(wanted - widths.front(), 0, spare);
}

/// The columns of a range that want more, with what they lack, the least first.
using Lack = std::pair<int, std::size_t>;
std::vector<Lack> Lacking(const std::vector<int>& widths, const std::vector<int>& wanted,
                          const Range& range) {
    std::vector<Lack> lacking;
    for (int column = range.first; column < range.first + range.count; ++column) {
        const auto slot = static_cast<std::size_t>(column);
        if (wanted[slot] > widths[slot]) {
            lacking.emplace_back(wanted[slot] - widths[slot], slot);
        }
    }
    std::sort(lacking.begin(), lacking.end());
    return lacking;
}

/// Gives columns all they want where that makes no more groups, and no other choice of the repeated column.
void WidenWithinGroups(std::vector<int>& widths, const std::vector<int>& wanted, int room) {
    const std::size_t mostGroups = ColumnGroups(widths, room).size();
    const bool repeats = RepeatedWidth(widths, room) > 0;
    for (const auto& [lack, column] : Lacking(widths, wanted, {0, static_cast<int>(widths.size())})) {
        std::vector<int> wider = widths;
        wider[column] += lack;
        if (FittedWidths(wider, room) == wider && ColumnGroups(wider, room).size() <= mostGroups &&
            (RepeatedWidth(wider, room) > 0) == repeats) {
            widths = std::move(wider);
        }
    }
}

void WidenGroup(std::vector<int>& widths, const std::vector<int>& wanted, const Range& group, int spare) {
    for (const auto& [lack, column] : Lacking(widths, wanted, group)) {
        const int given = std::min(lack, spare);
        widths[column] += given;
        spare -= given;
    }
}

}  // namespace

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

std::vector<int> WidenedWidths(std::vector<int> widths, const std::vector<int>& wanted, int room) {
    WidenWithinGroups(widths, wanted, room);
    const std::vector<Range> groups = ColumnGroups(widths, room);
    const bool repeats = RepeatedWidth(widths, room) > 0;
    if (repeats) {
        WidenRepeated(widths, wanted.front(), groups, room);
    }
    for (Range group : groups) {
        const int spare = SpareRoom(widths, group, room);
        if (repeats && group.first == 0) {
            group = {.first = 1, .count = group.count - 1};
        }
        WidenGroup(widths, wanted, group, spare);
    }
    return widths;
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
