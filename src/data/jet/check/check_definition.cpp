#include "check/check_definition.h"

#include <algorithm>
#include <set>

namespace quardele::jet {

namespace {

// What stands at fixed places of every definition of Access 2000-2003.
constexpr std::uint32_t kMark = 1625;       ///< at the start of the parts
constexpr std::uint32_t kIndexMark = 1923;  ///< at the start of each real index
constexpr std::size_t kMarkOfTable = 12;
constexpr std::size_t kMarkOfColumn = 1;
constexpr std::size_t kZerosOfColumn = 17;
constexpr std::uint8_t kUserTable = 0x4E;
constexpr std::uint8_t kSystemTable = 0x53;

/// Where the parts of a definition start, if the counts in its header are right.
struct Parts {
    std::size_t columns, realIndexes, logicalIndexes, end;
};

std::size_t SkipNames(const ByteView& bytes, std::size_t at, std::size_t count, const Format& format) {
    const std::size_t prefix = format.column.nameLengthBytes;
    for (std::size_t i = 0; i < count; ++i) {
        at += prefix + (prefix == 1 ? bytes.U8(at) : bytes.U16(at));
    }
    return at;
}

Parts PartsOf(const TableDef& def, const Format& format) {
    const ByteView bytes(def.bytes, def.page);
    Parts parts{};
    parts.columns = format.def.end + def.realIndexes.size() * format.def.indexStatistics;
    const std::size_t names = parts.columns + def.stored.size() * format.column.size;
    parts.realIndexes = SkipNames(bytes, names, def.stored.size(), format);
    parts.logicalIndexes = parts.realIndexes + def.realIndexes.size() * format.realIndex.size;
    parts.end = SkipNames(bytes, parts.logicalIndexes + def.indexes.size() * format.logicalIndex.size,
                          def.indexes.size(), format);
    while (bytes.U16(parts.end) != long_value_map::kEnd) {
        parts.end += long_value_map::kSize;
    }
    parts.end += sizeof(long_value_map::kEnd);
    return parts;
}

class DefinitionCheck {
 public:
    DefinitionCheck(CheckContext& context, const CheckPlace& place, const TableDef& def)
        : format_(context.pages.Layout()),
          report_(context.report),
          place_(place),
          def_(def),
          bytes_(def.bytes, def.page) {}

    void Run() {
        const Parts parts = PartsOf(def_, format_);
        if (parts.end != def_.bytes.size()) {
            Report(u"longueur impossible");
        }
        if (format_.wideText) {
            CheckConstants(parts);
        }
        CheckColumns();
        CheckFixedArea();
        CheckIndexNumbers(parts);
    }

 private:
    void Report(TextView what) { report_.Add(FaultCode::Definition, place_, def_.page, Text(what)); }

    [[nodiscard]] bool HasMarks(std::size_t first, std::size_t count, std::size_t size,
                                std::uint32_t mark) const {
        for (std::size_t i = 0; i < count; ++i) {
            if (bytes_.U32(first + i * size) != mark) {
                return false;
            }
        }
        return true;
    }

    void CheckConstants(const Parts& parts) {
        const std::uint8_t kind = bytes_.U8(format_.def.kind);
        const std::size_t columns = def_.stored.size();
        const bool isWhole =
            bytes_.U32(kMarkOfTable) == kMark && (kind == kUserTable || kind == kSystemTable) &&
            HasMarks(parts.columns + kMarkOfColumn, columns, format_.column.size, kMark) &&
            HasMarks(parts.columns + kZerosOfColumn, columns, format_.column.size, 0) &&
            HasMarks(parts.realIndexes, def_.realIndexes.size(), format_.realIndex.size, kIndexMark) &&
            HasMarks(parts.logicalIndexes, def_.indexes.size(), format_.logicalIndex.size, kMark);
        if (!isWhole) {
            Report(u"valeurs constantes altérées");
        }
    }

    [[nodiscard]] static bool IsKnown(ColumnType type) {
        return NaturalSize(type).has_value() || type == ColumnType::Boolean || type == ColumnType::Binary ||
               type == ColumnType::Text || type == ColumnType::Memo || type == ColumnType::Ole ||
               type == ColumnType::Opaque;
    }

    // Numbers are bits in the rows' bitmaps, variable indexes positions in their tables of offsets.
    void CheckColumns() {
        std::set<std::uint16_t> numbers;
        std::set<std::uint16_t> variableIndexes;
        std::set<Text> names;
        for (std::size_t i = 0; i < def_.stored.size(); ++i) {
            const StoredColumn& column = def_.stored[i];
            const Text& name = def_.columns[i].name;
            const bool isPlaced = column.fixed || (column.variableIndex < def_.variableColumns &&
                                                   variableIndexes.insert(column.variableIndex).second);
            const bool isNumbered = column.number < def_.maxColumns && numbers.insert(column.number).second;
            const bool isNamed = !name.empty() && names.insert(basic::UCase(name)).second;
            if (!isPlaced || !isNumbered || !isNamed || !IsKnown(column.type)) {
                report_.Add(FaultCode::Definition, {place_.table, name}, def_.page, u"colonne impossible");
            }
        }
    }

    void CheckFixedArea() {
        std::vector<const StoredColumn*> fixed;
        for (const StoredColumn& column : def_.stored) {
            if (column.fixed && column.type != ColumnType::Boolean) {
                fixed.push_back(&column);
            }
        }
        std::sort(fixed.begin(), fixed.end(), [](const StoredColumn* left, const StoredColumn* right) {
            return left->fixedOffset < right->fixedOffset;
        });
        std::size_t end = 0;
        for (const StoredColumn* column : fixed) {
            if (column->fixedOffset < end) {
                Report(u"deux colonnes à la même place");
            }
            end = column->fixedOffset + NaturalSize(column->type).value_or(column->length);
        }
    }

    void CheckIndexNumbers(const Parts& parts) {
        std::set<std::uint32_t> numbers;
        for (std::size_t i = 0; i < def_.indexes.size(); ++i) {
            const std::size_t at = parts.logicalIndexes + i * format_.logicalIndex.size;
            if (!numbers.insert(bytes_.U32(at + format_.logicalIndex.number)).second) {
                Report(u"deux index du même numéro");
            }
        }
    }

    const Format& format_;
    CheckReport& report_;
    const CheckPlace& place_;
    const TableDef& def_;
    ByteView bytes_;
};

}  // namespace

// A page that leads back cannot be claimed again.
void ClaimDefinition(CheckContext& context, const CheckPlace& place, std::uint32_t first) {
    const std::uint32_t owner = context.ledger.AddOwner(place);
    context.report.Guard(FaultCode::Definition, place, first, [&] {
        for (std::uint32_t number = first; number != 0 && context.ledger.Claim(number, owner);) {
            const PagePtr page = context.pages.Read(number);
            if (page->Type() != PageType::TableDef) {
                ThrowDamaged(number, u"définition de table attendue");
            }
            number = page->View().U32(context.pages.Layout().def.next);
        }
    });
}

void CheckDefinition(CheckContext& context, const CheckPlace& place, const TableDef& def) {
    context.report.Guard(FaultCode::Definition, place, def.page,
                         [&] { DefinitionCheck(context, place, def).Run(); });
}

}  // namespace quardele::jet
