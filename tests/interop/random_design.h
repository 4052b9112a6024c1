// Tables of any shape.
#pragma once

#include <jet/types.h>

#include "random.h"

namespace quardele::jet::test {

/// A column of any type that can be made; no AutoNumber.
[[nodiscard]] Column RandomColumn(Random& random, const Text& name);
/// An index over one to four of the columns.
[[nodiscard]] IndexDesign RandomIndex(Random& random, const Text& name, const std::vector<Column>& columns);
/// 1 to 40 columns, perhaps an AutoNumber and a primary key on it.
[[nodiscard]] TableDesign RandomDesign(Random& random, const Text& name);

}  // namespace quardele::jet::test
