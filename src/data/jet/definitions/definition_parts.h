// A table definition taken apart where its lists join, so that something can be added to one of them while
// everything else stays as it is, byte for byte. Access 2000-2003 only.
#pragma once

#include <vector>

#include <jet/types.h>

#include "bytes.h"
#include "rows/row_pointer.h"

namespace quardele::jet {

/// An entry of a list whose names stand in a list of their own.
struct NamedPart {
    ByteString bytes;
    Text name;
};

struct DefinitionParts {
    /// An empty definition of a user table, without maps.
    DefinitionParts();
    /// Throws 3343 when the definition does not hold together.
    static DefinitionParts Split(const ByteView& definition);
    /// The definition as one string, with its length and the lengths of its lists set.
    [[nodiscard]] ByteString Join() const;

    void SetMaxColumns(std::uint16_t count);
    void SetVariableColumns(std::uint16_t count);

    ByteString header;
    std::vector<ByteString> statistics;  ///< one for each of realIndexes
    std::vector<NamedPart> columns;
    std::vector<ByteString> realIndexes;
    std::vector<NamedPart> indexes;
    std::vector<ByteString> longValueMaps;  ///< one for each Memo or OLE column
};

}  // namespace quardele::jet
