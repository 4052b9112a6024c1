// Bands on pages.
#pragma once

#include <functional>
#include <vector>

#include "bands.h"

namespace quardele::engine {

/// What stands above and below the body of every page.
struct PageFrame {
    qreal height = 0;  ///< of the page inside its margins
    /// At a record and a page.
    std::function<Strip(const Position&)> header;
    std::function<Strip(const Position&)> footer;
    /// What the footer needs at most, told when the page begins.
    std::function<qreal(const Position&)> footerRoom;
    /// By group: whether its header is repeated on new pages, and whether it wants to stand on one page.
    std::vector<bool> repeatHeader;
    std::vector<bool> keepTogether;
};

/// At least one page. A band that does not fit goes to the next page; one that is higher than a page, or may
/// be parted, goes on there. A group's header is never alone on a page, unless it leaves no room for a line:
/// what is too high to stand below it as a whole is parted there. Throws RuntimeError 3001 when headers and
/// footers leave no room.
[[nodiscard]] std::vector<Pieces> Paginate(std::vector<Band> bands, const PageFrame& frame);

}  // namespace quardele::engine
