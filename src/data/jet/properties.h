// The properties that Access keeps beside a table's definition: one blob of names and values per table.
#pragma once

#include <basic/text.h>

#include "bytes.h"
#include "table_def.h"

namespace quardele::jet {

/// Sets Required, AllowZeroLength and DefaultValue of the table's columns from the blob; other properties
/// are passed over. Throws 3343 when the blob does not hold together.
void ApplyProperties(const ByteView& blob, const Format& format, TableDef& table);

}  // namespace quardele::jet
