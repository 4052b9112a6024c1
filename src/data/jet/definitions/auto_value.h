// Values that the engine gives to the AutoNumber columns of a new row.
#pragma once

#include "definitions/table_counters.h"
#include "definitions/table_def.h"

namespace quardele::jet {

/// Whether an AutoNumber column draws its numbers instead of counting.
[[nodiscard]] bool IsRandomAutoNumber(const Column& column);
/// The stored bytes of the next value: the number behind the last one, a random number or a random GUID.
[[nodiscard]] ByteString NextAutoValue(const Column& column, const TableCounters& counters);

}  // namespace quardele::jet
