// Values as bytes whose plain order is the order of the values: what sorting, grouping and hashing go by.
#pragma once

#include <string>

#include <basic/variant.h>

namespace quardele::sql {

using basic::Variant;

/// Appends a value. Null comes first; then numbers, dates and truth values by their number; texts by the
/// file's collation, so that equal keys are texts that the database holds equal; binary data; GUIDs. Keys of
/// several values one behind the other compare value by value.
void AppendSortKey(std::string& key, const Variant& value, bool descending = false);
/// The same for a text that lies in no Variant.
void AppendTextKey(std::string& key, basic::TextView text);
/// Makes what was appended from `start` on the key of a descending value.
void InvertKey(std::string& key, std::size_t start);

}  // namespace quardele::sql
