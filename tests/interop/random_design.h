// Tables of any shape.
#pragma once

#include <optional>

#include <basic/variant.h>
#include <jet/table.h>

#include "random.h"

namespace quardele::jet::test {

/// A column of any type that can be made, with rules and perhaps a default; no AutoNumber.
[[nodiscard]] Column RandomColumn(Random& random, const Text& name);
/// What the default of such a column comes to; none for columns without one, and for defaults of others.
[[nodiscard]] std::optional<Variant> ConstantDefault(const Column& column);
/// An index over one to four of the columns.
[[nodiscard]] IndexDesign RandomIndex(Random& random, const Text& name, const std::vector<Column>& columns);
/// 1 to 40 columns; perhaps an AutoNumber, a number or a GUID, and a primary key on it, or one over several
/// columns.
[[nodiscard]] TableDesign RandomDesign(Random& random, const Text& name);

}  // namespace quardele::jet::test
