// Where things lie in the file: one table of offsets per file version. All offsets are in bytes from the
// start of the page or structure named; integers are little-endian unless said otherwise.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quardele::jet {

/// The largest page of any version.
inline constexpr std::size_t kLargestPage = 4096;
/// Pages with a fixed place.
inline constexpr std::uint32_t kHeaderPage = 0;
inline constexpr std::uint32_t kGlobalMapPage = 1;
inline constexpr std::uint32_t kCatalogPage = 2;
/// A file may not grow beyond 2 GiB.
inline constexpr std::uint64_t kLargestFile = std::uint64_t{1} << 31;
/// Row numbers are one byte and 255 is never used.
inline constexpr std::size_t kMostSlots = 255;

/// First byte of each page.
enum class PageType : std::uint8_t {
    Header = 0,
    Data = 1,
    TableDef = 2,
    IndexNode = 3,
    IndexLeaf = 4,
    UsageBitmap = 5
};

/// Second byte of each page that is in use.
inline constexpr std::uint8_t kLivePage = 1;
/// Put over the type of a page that was given back.
inline constexpr std::uint8_t kFreedPage = 0x08;
/// Data pages with less room than this are not worth trying for new rows.
inline constexpr std::size_t kWorthTrying = 500;

/// The header page; the same in both versions but for the masked area's length.
namespace header {
inline constexpr std::size_t kEngineName = 0x04;
inline constexpr std::size_t kVersion = 0x14;
inline constexpr std::size_t kMaskStart = 0x18;
inline constexpr std::size_t kCodePage = 0x3C;
inline constexpr std::size_t kEncryptionKey = 0x3E;
inline constexpr std::size_t kPassword = 0x42;
inline constexpr std::size_t kCreationDate = 0x72;
}  // namespace header

/// Bits and masks of the slots of a data page.
namespace slot {
inline constexpr std::uint16_t kOffsetMask = 0x1FFF;
inline constexpr std::uint16_t kMoved = 0x4000;    ///< holds a pointer to the row's data
inline constexpr std::uint16_t kHidden = 0x8000;   ///< the data of a moved row; alone
inline constexpr std::uint16_t kDeleted = 0xC000;  ///< both bits
inline constexpr std::uint16_t kFlagsMask = 0xC000;
}  // namespace slot

/// Stands in every table definition, column descriptor and logical index, and its sister in real indexes.
inline constexpr std::uint32_t kSignature = 1625;
inline constexpr std::uint32_t kIndexSignature = 1923;
/// Kinds of tables.
inline constexpr std::uint8_t kUserTable = 0x4E;
inline constexpr std::uint8_t kSystemTable = 0x53;
/// What a table may have.
inline constexpr std::size_t kMostColumns = 255;
inline constexpr std::size_t kMostIndexes = 32;

/// Flags of a column descriptor.
namespace column_flag {
inline constexpr std::uint8_t kFixed = 0x01;
inline constexpr std::uint8_t kMayBeNull = 0x02;
inline constexpr std::uint8_t kAutoNumber = 0x04;
inline constexpr std::uint8_t kAutoGuid = 0x40;
inline constexpr std::uint8_t kCompressed = 0x01;  ///< in the extra flags
}  // namespace column_flag

/// Flags of a real index.
namespace index_flag {
inline constexpr std::uint8_t kUnique = 0x01;
inline constexpr std::uint8_t kIgnoreNulls = 0x02;
inline constexpr std::uint8_t kRequired = 0x08;
inline constexpr std::uint8_t kAlways = 0x80;  ///< Access 2000 and later set it on every index
}  // namespace index_flag

/// Kinds of a logical index.
inline constexpr std::uint8_t kPrimaryKind = 1;
inline constexpr std::uint8_t kRelationshipKind = 2;
inline constexpr std::size_t kMostIndexColumns = 10;
inline constexpr std::uint16_t kNoColumn = 0xFFFF;

/// The text order that this engine writes: "General", sort version 0.
inline constexpr std::uint16_t kGeneralLcid = 0x0409;

/// Long values: the 12-byte descriptor in the row and its storage forms.
namespace long_value {
inline constexpr std::size_t kDescriptor = 12;
inline constexpr std::uint32_t kLengthMask = 0x3FFFFFFF;
inline constexpr std::uint32_t kInline = 0x80000000;
inline constexpr std::uint32_t kSingle = 0x40000000;
inline constexpr std::uint32_t kFormMask = 0xC0000000;
inline constexpr std::size_t kLargestInline = 64;
inline constexpr std::size_t kLargestSingle = 4076;
inline constexpr std::size_t kLargestPiece = 4072;
inline constexpr std::size_t kPointer = 4;
/// Owner field of the pages of long values, the letters LVAL.
inline constexpr std::uint32_t kOwner = 0x4C41564C;
}  // namespace long_value

/// Usage maps.
namespace usage_map {
inline constexpr std::uint8_t kInline = 0;
inline constexpr std::uint8_t kReference = 1;
inline constexpr std::size_t kInlineHeader = 5;
inline constexpr std::size_t kReferenceHeader = 1;
inline constexpr std::size_t kBitmapStart = 4;  ///< on a bitmap page
}  // namespace usage_map

/// Rows of text and binary data may not be longer.
inline constexpr std::size_t kLargestRow = 4060;

struct Format {
    std::uint32_t pageSize;
    std::size_t headerMaskLength;
    bool wideText;  ///< UTF-16 with compression, instead of 8-bit text

    struct {
        std::size_t freeBytes, owner, rowCount, slots;
    } data;

    struct {
        std::size_t next;        ///< next page of the definition
        std::size_t pageHeader;  ///< bytes of each continuation page before its content
        std::size_t length, rowCount, lastAutoNumber, kind, maxColumns, variableColumns, columns,
            logicalIndexes, realIndexes, ownedMap, freeMap, end;
        std::size_t indexStatistics;  ///< bytes per real index
        std::size_t distinctKeys;     ///< in one of those
    } def;

    struct {
        std::size_t size, type, number, variableIndex, display, lcid, sortVersion, precision, scale, flags,
            extraFlags, fixedOffset, length;
        std::size_t nameLengthBytes;
    } column;

    struct {
        std::size_t size, columns, map, root, flags;
    } realIndex;

    struct {
        std::size_t size, number, real, side, partner, partnerTable, cascadeUpdate, cascadeDelete, kind;
    } logicalIndex;

    struct {
        std::size_t owner, previous, next, tail, prefix, prefixBytes, level, bitmap, entries;
    } index;

    [[nodiscard]] constexpr std::size_t PagesPerBitmap() const {
        return (pageSize - usage_map::kBitmapStart) * 8;
    }
};

/// Tail records of a table definition: column number, owned map, free map.
namespace long_value_map {
inline constexpr std::size_t kSize = 10;
inline constexpr std::size_t kOwned = 2;
inline constexpr std::size_t kFree = 6;
inline constexpr std::uint16_t kEnd = 0xFFFF;
}  // namespace long_value_map

/// Access 2000-2003.
inline constexpr Format kJet4{
    .pageSize = 4096,
    .headerMaskLength = 128,
    .wideText = true,
    .data = {.freeBytes = 2, .owner = 4, .rowCount = 12, .slots = 14},
    .def = {.next = 4,
            .pageHeader = 8,
            .length = 8,
            .rowCount = 16,
            .lastAutoNumber = 20,
            .kind = 40,
            .maxColumns = 41,
            .variableColumns = 43,
            .columns = 45,
            .logicalIndexes = 47,
            .realIndexes = 51,
            .ownedMap = 55,
            .freeMap = 59,
            .end = 63,
            .indexStatistics = 12,
            .distinctKeys = 4},
    .column = {.size = 25,
               .type = 0,
               .number = 5,
               .variableIndex = 7,
               .display = 9,
               .lcid = 11,
               .sortVersion = 14,
               .precision = 11,
               .scale = 12,
               .flags = 15,
               .extraFlags = 16,
               .fixedOffset = 21,
               .length = 23,
               .nameLengthBytes = 2},
    .realIndex = {.size = 52, .columns = 4, .map = 34, .root = 38, .flags = 46},
    .logicalIndex = {.size = 28,
                     .number = 4,
                     .real = 8,
                     .side = 12,
                     .partner = 13,
                     .partnerTable = 17,
                     .cascadeUpdate = 21,
                     .cascadeDelete = 22,
                     .kind = 23},
    .index = {.owner = 4,
              .previous = 12,
              .next = 16,
              .tail = 20,
              .prefix = 24,
              .prefixBytes = 2,
              .level = 26,
              .bitmap = 27,
              .entries = 480},
};

/// Access 97, for reading only. Its column descriptors have no extra flags; the field names the plain flags'
/// high byte, which is always 0 there.
inline constexpr Format kJet3{
    .pageSize = 2048,
    .headerMaskLength = 126,
    .wideText = false,
    .data = {.freeBytes = 2, .owner = 4, .rowCount = 8, .slots = 10},
    .def = {.next = 4,
            .pageHeader = 8,
            .length = 8,
            .rowCount = 12,
            .lastAutoNumber = 16,
            .kind = 20,
            .maxColumns = 21,
            .variableColumns = 23,
            .columns = 25,
            .logicalIndexes = 27,
            .realIndexes = 31,
            .ownedMap = 35,
            .freeMap = 39,
            .end = 43,
            .indexStatistics = 8,
            .distinctKeys = 4},
    .column = {.size = 18,
               .type = 0,
               .number = 1,
               .variableIndex = 3,
               .display = 5,
               .lcid = 7,
               .sortVersion = 9,
               .precision = 11,
               .scale = 12,
               .flags = 13,
               .extraFlags = 13,
               .fixedOffset = 14,
               .length = 16,
               .nameLengthBytes = 1},
    .realIndex = {.size = 39, .columns = 0, .map = 30, .root = 34, .flags = 38},
    .logicalIndex = {.size = 20,
                     .number = 0,
                     .real = 4,
                     .side = 8,
                     .partner = 9,
                     .partnerTable = 13,
                     .cascadeUpdate = 17,
                     .cascadeDelete = 18,
                     .kind = 19},
    .index = {.owner = 4,
              .previous = 8,
              .next = 12,
              .tail = 16,
              .prefix = 20,
              .prefixBytes = 1,
              .level = 21,
              .bitmap = 22,
              .entries = 248},
};

}  // namespace quardele::jet
