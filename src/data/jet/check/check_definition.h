// The definition of a table against itself, apart from what it refers to.
#pragma once

#include "check/check_context.h"
#include "definitions/table_def.h"

namespace quardele::jet {

/// Claims page after page of a definition.
void ClaimDefinition(CheckContext& context, const CheckPlace& place, std::uint32_t first);

/// Length, constants, columns, places of columns in rows, numbers of indexes.
void CheckDefinition(CheckContext& context, const CheckPlace& place, const TableDef& def);

}  // namespace quardele::jet
