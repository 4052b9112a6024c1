// The rules of columns that are kept as properties: Required, AllowZeroLength and DefaultValue.
#pragma once

#include "definitions/property_blob.h"
#include "definitions/table_def.h"

namespace quardele::jet {

/// Sets the rules of the table's columns from the blob; other properties are passed over. Throws 3343 when
/// the blob does not hold together.
void ApplyProperties(const ByteView& blob, const Format& format, TableDef& table);

/// Writes the rules of a column into the blob.
void StoreRules(const Column& column, PropertyBlob& properties);

}  // namespace quardele::jet
