// What actions on a data file cost, counted in pages.
#pragma once

#include <cstdint>

#include <basic/text.h>
#include <jet/database.h>

namespace quardele::tests {

struct Traffic {
    std::uint64_t asked = 0;  ///< pages, those in memory included
    std::uint64_t read = 0;   ///< pages read from the file, those read ahead included
};

/// What all actions on the file have asked for so far; it must hold the vehicles.
[[nodiscard]] Traffic TrafficOf(jet::Database& database);

/// What an action asks for.
template <class Action>
[[nodiscard]] Traffic TrafficIn(jet::Database& database, const Action& action) {
    const Traffic before = TrafficOf(database);
    action();
    const Traffic after = TrafficOf(database);
    return {after.asked - before.asked, after.read - before.read};
}

/// Pages that hold the rows of a table.
[[nodiscard]] std::size_t RowPagesOf(jet::Database& database, basic::TextView table);

/// The statement of a vehicle's history, as the vehicle form asks for it.
[[nodiscard]] basic::Text HistoryOf(const basic::Text& registration);

}  // namespace quardele::tests
