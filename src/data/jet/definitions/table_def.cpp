#include "definitions/table_def.h"

#include <algorithm>
#include <numeric>

#include "rows/text_codec.h"

namespace quardele::jet {

namespace {

/// No definition of 255 columns and 32 indexes comes near to this.
constexpr std::size_t kLargestDefinition = std::size_t{1} << 20;

/// The side of a relationship that refers to the other one.
constexpr std::uint8_t kChildSide = 2;
/// What becomes of the rows that refer to one.
constexpr std::uint8_t kCascade = 1;
constexpr std::uint8_t kSetNull = 2;

// A definition is one string of bytes, cut into pages that name their successor.
ByteString Gather(const PageSource& pages, std::uint32_t first) {
    const auto& at = pages.Layout().def;
    ByteString string;
    std::size_t wanted = at.end;
    for (std::uint32_t number = first; string.size() < wanted;) {
        const PagePtr page = pages.Read(number);
        if (page->Type() != PageType::TableDef) {
            ThrowDamaged(number, u"définition de table attendue");
        }
        const ByteView view = page->View();
        if (string.empty()) {
            wanted = std::max<std::size_t>(view.U32(at.length), at.end);
            if (wanted > kLargestDefinition) {
                ThrowDamaged(number, u"définition de table trop longue");
            }
        }
        const auto part = string.empty() ? view : view.From(at.pageHeader);
        string.insert(string.end(), part.Span().begin(), part.Span().end());
        number = view.U32(at.next);
    }
    string.resize(wanted);
    return string;
}

class Parser {
 public:
    Parser(const Format& format, const ByteView& bytes, TableDef& table)
        : format_(format), bytes_(bytes), table_(table), position_(format.def.end) {}

    void Parse() {
        ParseHeader();
        position_ += realCount_ * format_.def.indexStatistics;
        ParseColumns();
        ParseRealIndexes();
        ParseLogicalIndexes();
        ParseLongValueMaps();
    }

 private:
    [[nodiscard]] ByteView Take(std::size_t length) {
        const ByteView part = bytes_.Sub(position_, length);
        position_ += length;
        return part;
    }

    [[nodiscard]] Text TakeName() {
        const std::size_t prefix = format_.column.nameLengthBytes;
        const ByteView length = Take(prefix);
        const ByteView name = Take(prefix == 1 ? length.U8(0) : length.U16(0));
        return format_.wideText ? DecodePlainText(name) : DecodeText(name, format_);
    }

    void ParseHeader() {
        const auto& at = format_.def;
        table_.rowCount = bytes_.U32(at.rowCount);
        table_.lastAutoNumber = bytes_.U32(at.lastAutoNumber);
        table_.maxColumns = bytes_.U16(at.maxColumns);
        table_.variableColumns = bytes_.U16(at.variableColumns);
        table_.ownedMap = LoadRowPointer(bytes_, at.ownedMap);
        table_.freeMap = LoadRowPointer(bytes_, at.freeMap);
        columnCount_ = bytes_.U16(at.columns);
        logicalCount_ = bytes_.U32(at.logicalIndexes);
        realCount_ = bytes_.U32(at.realIndexes);
        if (columnCount_ * format_.column.size > bytes_.Size() ||
            logicalCount_ * std::uint64_t{format_.logicalIndex.size} > bytes_.Size() ||
            realCount_ * std::uint64_t{format_.realIndex.size} > bytes_.Size()) {
            ThrowDamaged(table_.page, u"nombres impossibles dans une définition de table");
        }
    }

    void ParseColumns();
    void SortForDisplay();
    void ParseRealIndexes();
    void ParseLogicalIndexes();
    [[nodiscard]] Relation ReadRelation(const ByteView& bytes, std::size_t realIndex) const;
    void ParseLongValueMaps();

    [[nodiscard]] int OrdinalOf(std::uint16_t number) const {
        const auto found =
            std::find_if(table_.stored.begin(), table_.stored.end(),
                         [number](const StoredColumn& column) { return column.number == number; });
        if (found == table_.stored.end()) {
            ThrowDamaged(table_.page, u"colonne inconnue dans une définition de table");
        }
        return static_cast<int>(found - table_.stored.begin());
    }

    [[nodiscard]] bool IsSeekable(const RealIndex& index) const;

    const Format& format_;
    ByteView bytes_;
    TableDef& table_;
    std::size_t position_;
    std::size_t columnCount_ = 0;
    std::size_t logicalCount_ = 0;
    std::size_t realCount_ = 0;
};

StoredColumn ReadDescriptor(const ByteView& bytes, const Format& format) {
    const auto& at = format.column;
    StoredColumn column;
    column.type = static_cast<ColumnType>(bytes.U8(at.type));
    column.number = bytes.U16(at.number);
    column.variableIndex = bytes.U16(at.variableIndex);
    column.fixedOffset = bytes.U16(at.fixedOffset);
    column.length = bytes.U16(at.length);
    column.display = bytes.U16(at.display);
    column.lcid = bytes.U16(at.lcid);
    column.sortVersion = bytes.U8(at.sortVersion);
    if (column.type == ColumnType::Numeric) {
        column.precision = bytes.U8(at.precision);
        column.scale = bytes.U8(at.scale);
    }
    const std::uint8_t flags = bytes.U8(at.flags);
    column.fixed = (flags & column_flag::kFixed) != 0;
    column.autoNumber = (flags & (column_flag::kAutoNumber | column_flag::kAutoGuid)) != 0;
    column.compressed = format.wideText && (bytes.U8(at.extraFlags) & column_flag::kCompressed) != 0;
    return column;
}

int ShownSize(const StoredColumn& column, const Format& format) {
    switch (column.type) {
        case ColumnType::Text:
            return format.wideText ? column.length / 2 : column.length;
        case ColumnType::Boolean:
            return 1;
        case ColumnType::Memo:
        case ColumnType::Ole:
            return 0;
        default:
            return static_cast<int>(NaturalSize(column.type).value_or(column.length));
    }
}

void Parser::ParseColumns() {
    for (std::size_t i = 0; i < columnCount_; ++i) {
        table_.stored.push_back(ReadDescriptor(Take(format_.column.size), format_));
    }
    for (const StoredColumn& stored : table_.stored) {
        table_.columns.push_back({.name = TakeName(),
                                  .type = stored.type,
                                  .size = ShownSize(stored, format_),
                                  .precision = stored.precision,
                                  .scale = stored.scale,
                                  .autoNumber = stored.autoNumber,
                                  .defaultValue = {}});
    }
    SortForDisplay();
}

void Parser::SortForDisplay() {
    std::vector<std::size_t> order(columnCount_);
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [this](std::size_t left, std::size_t right) {
        const StoredColumn& a = table_.stored[left];
        const StoredColumn& b = table_.stored[right];
        return std::pair(a.display, a.number) < std::pair(b.display, b.number);
    });
    std::vector<StoredColumn> stored;
    std::vector<Column> columns;
    for (const std::size_t position : order) {
        stored.push_back(table_.stored[position]);
        columns.push_back(std::move(table_.columns[position]));
    }
    table_.stored = std::move(stored);
    table_.columns = std::move(columns);
}

void Parser::ParseRealIndexes() {
    const auto& at = format_.realIndex;
    for (std::size_t i = 0; i < realCount_; ++i) {
        const ByteView bytes = Take(at.size);
        RealIndex index;
        for (std::size_t j = 0; j < kMostIndexColumns; ++j) {
            const std::uint16_t number = bytes.U16(at.columns + j * 3);
            if (number != kNoColumn) {
                index.columns.push_back(
                    {.column = OrdinalOf(number), .ascending = bytes.U8(at.columns + j * 3 + 2) != 0});
            }
        }
        index.map = LoadRowPointer(bytes, at.map);
        index.root = bytes.U32(at.root);
        const std::uint8_t flags = bytes.U8(at.flags);
        index.unique = (flags & index_flag::kUnique) != 0;
        index.ignoreNulls = (flags & index_flag::kIgnoreNulls) != 0;
        index.required = (flags & index_flag::kRequired) != 0;
        index.seekable = IsSeekable(index);
        table_.realIndexes.push_back(std::move(index));
    }
}

// The order of texts of other languages, and that of Access 97, is not ours.
bool Parser::IsSeekable(const RealIndex& index) const {
    return std::all_of(index.columns.begin(), index.columns.end(), [this](const IndexColumn& part) {
        const StoredColumn& column = table_.stored[static_cast<std::size_t>(part.column)];
        return !column.IsText() || (format_.wideText && column.HasGeneralOrder());
    });
}

Relation Parser::ReadRelation(const ByteView& bytes, std::size_t realIndex) const {
    const auto& at = format_.logicalIndex;
    const std::uint8_t onDelete = bytes.U8(at.cascadeDelete);
    return {.realIndex = realIndex,
            .child = bytes.U8(at.side) == kChildSide,
            .table = bytes.U32(at.partnerTable),
            .partner = bytes.U32(at.partner),
            .cascadeUpdate = bytes.U8(at.cascadeUpdate) == kCascade,
            .onDelete = onDelete == kCascade   ? Relation::OnDelete::Cascade
                        : onDelete == kSetNull ? Relation::OnDelete::SetNull
                                               : Relation::OnDelete::Refuse};
}

void Parser::ParseLogicalIndexes() {
    const auto& at = format_.logicalIndex;
    for (std::size_t i = 0; i < logicalCount_; ++i) {
        const ByteView bytes = Take(at.size);
        const std::size_t real = bytes.U32(at.real);
        if (real >= realCount_) {
            ThrowDamaged(table_.page, u"index sans arbre");
        }
        RealIndex& index = table_.realIndexes[real];
        const std::uint8_t kind = bytes.U8(at.kind);
        if (kind == kPrimaryKind) {
            index.primary = index.unique = index.required = true;
        }
        index.related = index.related || kind == kRelationshipKind;
        if (kind == kRelationshipKind) {
            table_.relations.push_back(ReadRelation(bytes, real));
        }
        table_.numberOf.push_back(bytes.U32(at.number));
        table_.realOf.push_back(real);
        table_.indexes.emplace_back().primary = kind == kPrimaryKind;
    }
    for (std::size_t i = 0; i < logicalCount_; ++i) {
        const RealIndex& real = table_.realIndexes[table_.realOf[i]];
        Index& index = table_.indexes[i];
        index.name = TakeName();
        index.columns = real.columns;
        index.unique = real.unique;
        index.ignoreNulls = real.ignoreNulls;
        index.required = real.required;
        index.seekable = real.seekable;
    }
}

void Parser::ParseLongValueMaps() {
    while (bytes_.U16(position_) != long_value_map::kEnd) {
        const ByteView bytes = Take(long_value_map::kSize);
        StoredColumn& column = table_.stored[static_cast<std::size_t>(OrdinalOf(bytes.U16(0)))];
        column.ownedMap = LoadRowPointer(bytes, long_value_map::kOwned);
        column.freeMap = LoadRowPointer(bytes, long_value_map::kFree);
    }
}

}  // namespace

TableDef TableDef::Read(const PageSource& pages, std::uint32_t page) {
    TableDef table;
    table.page = page;
    table.bytes = Gather(pages, page);
    Parser(pages.Layout(), {table.bytes, page}, table).Parse();
    return table;
}

// Once for each change of a row, so without parsing anything.
bool TableDef::IsCurrent(const PageSource& pages) const {
    const auto& at = pages.Layout().def;
    const auto known = std::span(bytes);
    const auto holds = [&known](const ByteView& view, std::size_t from, std::size_t start,
                                std::size_t length) {
        return CompareBytes(view.Sub(from, length).Span(), known.subspan(start, length)) == 0;
    };
    const std::size_t statistics = at.end + realIndexes.size() * at.indexStatistics;
    std::size_t done = 0;
    for (std::uint32_t number = page; done < bytes.size();) {
        const PagePtr held = pages.Read(number);
        const ByteView view = held->View();
        if (held->Type() != PageType::TableDef) {
            return false;
        }
        if (done == 0) {
            done = std::min(view.Size(), bytes.size());
            if (std::max<std::size_t>(view.U32(at.length), at.end) != bytes.size() || statistics > done ||
                !holds(view, at.kind, at.kind, at.end - at.kind) ||
                !holds(view, statistics, statistics, done - statistics)) {
                return false;
            }
        } else {
            const std::size_t length = std::min(view.Size() - at.pageHeader, bytes.size() - done);
            if (!holds(view, at.pageHeader, done, length)) {
                return false;
            }
            done += length;
        }
        number = view.U32(at.next);
    }
    return true;
}

int TableDef::FindColumn(TextView name) const {
    const auto found = std::find_if(columns.begin(), columns.end(), [name](const Column& column) {
        return basic::EqualNoCase(column.name, name);
    });
    return found == columns.end() ? -1 : static_cast<int>(found - columns.begin());
}

}  // namespace quardele::jet
