// What the quick search looks for, as SQL.
#pragma once

#include <vector>

#include <QString>

namespace quardele::vehicles {

struct QuickSearchTerm {
    int number = 0;  ///< of the user field
    QString type;    ///< letter of the site's parameters: "N" a number, "D" a date, else a text
    QString value;   ///< as the operator typed it
};

/// All of the terms together, those without a value left out; empty without any. The fields are texts, which
/// numbers are compared with as texts; texts go in as they stand, and so does a value that is no date.
[[nodiscard]] QString QuickSearchCriterion(const std::vector<QuickSearchTerm>& terms);

}  // namespace quardele::vehicles
