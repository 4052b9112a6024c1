// Values from text, as dump writes them.
#pragma once

#include <jet/types.h>

#include <basic/variant.h>

#include "csv_reader.h"

namespace quardele::mdb {

/// The value of a field for a column; Null for nothing at all, which is false in a column of truth values.
/// Throws Failure when the text does not mean a value of the column's type.
[[nodiscard]] basic::Variant ParseCell(const CsvField& field, const jet::Column& column);

}  // namespace quardele::mdb
