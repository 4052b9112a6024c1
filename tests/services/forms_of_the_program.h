// The forms that tests of the whole program have to look at.
#pragma once

#include <set>

#include <QString>

namespace quardele::tests {

/// Names of the forms that the program has: one to each layout file of its source, and the calendars, which
/// have none.
[[nodiscard]] std::set<QString> FormsOfTheProgram();

}  // namespace quardele::tests
