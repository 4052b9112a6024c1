// Index keys: bytes whose plain order is the order of the index.
#pragma once

#include <optional>

#include "bytes.h"
#include "definitions/table_def.h"

namespace quardele::jet {

/// Appends the key of one column. `data` are the stored bytes of the value (of a memo its data, of a Boolean
/// one byte), none for Null. The texts' order is "General". Throws 3251 for a type that is not indexed.
void AppendKey(const StoredColumn& column, bool ascending, const std::optional<ByteView>& data,
               const Format& format, ByteString& key);

/// The same for a text that is not Null, of which only the start counts.
void AppendTextKey(TextView text, bool ascending, ByteString& key);
/// The start of a text that counts in a key.
[[nodiscard]] TextView KeyPart(TextView text);

}  // namespace quardele::jet
