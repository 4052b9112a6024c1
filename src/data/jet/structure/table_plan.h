// What becomes of a table's design in the file.
#pragma once

#include "definitions/definition_parts.h"

namespace quardele::jet {

/// The definition of a new table, without maps and roots. Throws as Database::CreateTable says.
[[nodiscard]] DefinitionParts PlanTable(const TableDesign& design);

/// The rules of the table's columns as properties.
[[nodiscard]] ByteString PlanProperties(const TableDesign& design);

/// Adds the record that will name the maps of a Memo or OLE column; nothing for other columns.
void AppendLongValueRecord(ColumnType type, std::uint16_t number, DefinitionParts& parts);

}  // namespace quardele::jet
