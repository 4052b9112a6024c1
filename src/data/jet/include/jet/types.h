// What a table of an Access file is made of, as the engine's users see it.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <basic/text.h>

namespace quardele::jet {

/// Type codes of columns as stored in the file.
enum class ColumnType : std::uint8_t {
    Boolean = 0x01,
    Byte = 0x02,
    Integer = 0x03,
    Long = 0x04,
    Currency = 0x05,
    Single = 0x06,
    Double = 0x07,
    Date = 0x08,
    Binary = 0x09,
    Text = 0x0A,
    Ole = 0x0B,
    Memo = 0x0C,
    Guid = 0x0F,
    Numeric = 0x10,
    Opaque = 0x11,
};

using basic::Text;
using basic::TextView;

/// One column. Ordinals elsewhere in this engine are positions in Table::Columns(), which is display order.
struct Column {
    Text name;
    ColumnType type = ColumnType::Text;
    /// Text: UTF-16 units; Binary: bytes; others: the natural size in bytes; 0 for Memo and OLE.
    int size = 0;
    std::uint8_t precision = 0;  ///< Numeric only
    std::uint8_t scale = 0;      ///< Numeric only
    bool autoNumber = false;
    /// Rules kept as properties beside the table definition.
    bool required = false;
    bool allowZeroLength = true;
    Text defaultValue;  ///< expression source text, empty for none
    /// Kept for Access's forms and shown only: an expression that values must fulfil, and what a form says of
    /// those that do not.
    Text validationRule{};
    Text validationText{};
};

struct IndexColumn {
    int column = 0;  ///< ordinal in Table::Columns()
    bool ascending = true;
};

struct Index {
    Text name;
    std::vector<IndexColumn> columns;
    bool primary = false;
    bool unique = false;
    bool ignoreNulls = false;
    bool required = false;
    /// False when its texts are in an order that is not ours (another language's, or Access 97's): such an
    /// index can be walked but Seek throws 3251 on it, and rows are not changed in its columns.
    bool seekable = false;
};

/// A column of an index to make.
struct IndexPart {
    Text column;
    bool ascending = true;
};

/// An index to make.
struct IndexDesign {
    Text name;
    std::vector<IndexPart> columns;  ///< 1 to 10
    bool primary = false;            ///< implies unique and required
    bool unique = false;
    bool ignoreNulls = false;
    bool required = false;
};

/// A table to make. Of a column counts all but what follows from its type (the size of a Long).
struct TableDesign {
    Text name;
    std::vector<Column> columns;  ///< 1 to 255
    std::vector<IndexDesign> indexes;
};

/// Identity of a row for the life of the row: page and slot where it was first written.
struct RowId {
    std::uint32_t page = 0;
    std::uint8_t slot = 0;
    friend auto operator<=>(const RowId&, const RowId&) = default;
};

enum class OpenMode {
    Shared,     ///< read and write, other processes too
    Exclusive,  ///< nobody else may open the file
    ReadOnly,   ///< never writes, not even a lock file
};

}  // namespace quardele::jet
