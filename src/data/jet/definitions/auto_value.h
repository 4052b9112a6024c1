// Values that the engine gives to the AutoNumber columns of a new row.
#pragma once

#include "definitions/table_counters.h"
#include "definitions/table_def.h"

namespace quardele::jet {

/// The stored bytes of the next value: the number behind the last one, a random number or a random GUID.
[[nodiscard]] ByteString NextAutoValue(const Column& column, const TableCounters& counters);
/// Notes that a row has or will have a value in an AutoNumber column: numbers that are counted go on behind
/// it.
void NoteAutoValue(const Column& column, const ByteString& bytes, TableCounters& counters);

}  // namespace quardele::jet
