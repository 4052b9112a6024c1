// The definition of a table as its pages state it.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include <jet/types.h>

#include "file/page.h"
#include "rows/row_pointer.h"

namespace quardele::jet {

/// What the file says of a column beyond jet::Column.
struct StoredColumn {
    ColumnType type = ColumnType::Text;
    std::uint16_t number = 0;         ///< identity: bit in the null bitmap, reference from indexes
    std::uint16_t variableIndex = 0;  ///< position in a row's offset table, for variable columns
    std::uint16_t fixedOffset = 0;    ///< behind the row's column count, for fixed columns
    std::uint16_t length = 0;         ///< in bytes
    std::uint16_t display = 0;
    std::uint16_t lcid = 0;
    std::uint8_t sortVersion = 0;
    std::uint8_t precision = 0;
    std::uint8_t scale = 0;
    bool fixed = false;
    bool autoNumber = false;
    bool compressed = false;  ///< text may be stored compressed
    RowPointer ownedMap;      ///< Memo and OLE: pages of its long values
    RowPointer freeMap;       ///< those with room

    [[nodiscard]] bool IsLong() const { return type == ColumnType::Memo || type == ColumnType::Ole; }
    [[nodiscard]] bool IsText() const { return type == ColumnType::Memo || type == ColumnType::Text; }
    /// Whether its texts have the order that this engine writes.
    [[nodiscard]] bool HasGeneralOrder() const { return lcid == kGeneralLcid && sortVersion == 0; }
};

/// Bytes that a value of the type takes; empty for Text, Binary, Memo, OLE, opaque data and Boolean.
[[nodiscard]] constexpr std::optional<std::size_t> NaturalSize(ColumnType type) {
    switch (type) {
        case ColumnType::Byte:
            return 1;
        case ColumnType::Integer:
            return 2;
        case ColumnType::Long:
        case ColumnType::Single:
            return 4;
        case ColumnType::Currency:
        case ColumnType::Double:
        case ColumnType::Date:
            return 8;
        case ColumnType::Guid:
            return 16;
        case ColumnType::Numeric:
            return 17;
        default:
            return std::nullopt;
    }
}

/// One tree; several indexes may share it.
struct RealIndex {
    std::vector<IndexColumn> columns;
    RowPointer map;
    std::uint32_t root = 0;
    bool unique = false;
    bool ignoreNulls = false;
    bool required = false;
    bool primary = false;
    bool seekable = false;
    bool related = false;  ///< an enforced relationship to another table uses it
};

/// One side of an enforced relationship between two tables.
struct Relation {
    enum class OnDelete { Refuse, Cascade, SetNull };

    std::size_t realIndex = 0;   ///< of the columns that relate the tables
    bool child = false;          ///< this table refers to the other one; otherwise it is referred to
    std::uint32_t table = 0;     ///< first page of the other table's definition
    std::uint32_t partner = 0;   ///< number of the other table's index
    bool cascadeUpdate = false;  ///< rows follow when the key that they refer to changes
    OnDelete onDelete = OnDelete::Refuse;
};

class TableDef {
 public:
    /// Reads the definition that starts on a page. Throws 3343.
    static TableDef Read(const PageSource& pages, std::uint32_t page);

    std::uint32_t page = 0;  ///< the table's identity
    std::uint32_t rowCount = 0;
    std::uint32_t lastAutoNumber = 0;
    std::uint16_t maxColumns = 0;       ///< 1 + the highest column number ever given
    std::uint16_t variableColumns = 0;  ///< deleted ones included
    RowPointer ownedMap;
    RowPointer freeMap;
    /// In display order; both lists have the same positions.
    std::vector<Column> columns;
    std::vector<StoredColumn> stored;
    std::vector<RealIndex> realIndexes;
    std::vector<Index> indexes;
    std::vector<std::size_t> realOf;      ///< for each of indexes, its position in realIndexes
    std::vector<std::uint32_t> numberOf;  ///< for each of indexes, the number that relationships know it by
    std::vector<Relation> relations;
    ByteString bytes;  ///< the definition as it was read

    [[nodiscard]] int FindColumn(TextView name) const;
    /// Whether the pages still state the same columns, indexes and maps; counters and statistics may differ.
    [[nodiscard]] bool IsCurrent(const PageSource& pages) const;
};

}  // namespace quardele::jet
