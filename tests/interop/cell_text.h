// Values in the words of the readers that we are compared with.
#pragma once

#include <optional>
#include <string>

#include <jet/table.h>

namespace quardele::jet::test {

/// Null is none.
using CellText = std::optional<std::string>;

/// As dump.mjs prints a value; its head says how.
[[nodiscard]] CellText ExactText(const Column& column, const Variant& value);

/// As mdb-export prints a value, within its limits: empty texts look like Null, texts and binary values that
/// are no OLE values end at a zero, each half of a pair of surrogates is a question mark, a GUID is the
/// hexadecimal form of its text without the last hyphen, a Single is rounded to 8 and a Double to 16 digits,
/// and days before 1900 or after the year 4637 are "1900-01-00 00:00:00".
[[nodiscard]] CellText ExportText(const Column& column, const Variant& value);

/// As mdb-schema prints a column's type: the size of a Binary is left out, that of a Memo or OLE is always
/// 255.
[[nodiscard]] std::string SchemaType(const Column& column);

}  // namespace quardele::jet::test
