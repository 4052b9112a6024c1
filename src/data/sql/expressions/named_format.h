// The formats of Format() that have names: "Short Date", "Standard", "Yes/No" ...
#pragma once

#include <optional>

#include <basic/variant.h>

namespace quardele::sql {

using basic::Text;
using basic::TextView;
using basic::Variant;

/// A value in the format of that name, in French; empty when there is no such format. A text
/// that is no date or number stays as it is, Null is the empty text.
[[nodiscard]] std::optional<Text> FormatByName(const Variant& value, TextView name);

}  // namespace quardele::sql
