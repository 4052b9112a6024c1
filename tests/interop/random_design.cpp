#include "random_design.h"

#include <algorithm>
#include <array>

#include <basic/date.h>

namespace quardele::jet::test {

namespace {

constexpr std::array kTypes = {
    ColumnType::Boolean,  ColumnType::Byte,   ColumnType::Integer, ColumnType::Long,
    ColumnType::Currency, ColumnType::Single, ColumnType::Double,  ColumnType::Date,
    ColumnType::Binary,   ColumnType::Text,   ColumnType::Text,    ColumnType::Text,
    ColumnType::Ole,      ColumnType::Memo,   ColumnType::Guid,    ColumnType::Numeric};

constexpr int kLargestPrecision = 28;

Text Numbered(basic::TextView stem, std::size_t number) {
    return Text(stem) + basic::FromUtf8(std::to_string(number));
}

Column AutoNumber(ColumnType type) {
    Column column;
    column.name = u"Numéro";
    column.type = type;
    column.autoNumber = true;
    return column;
}

bool IsText(const Column& column) {
    return column.type == ColumnType::Text || column.type == ColumnType::Memo;
}

/// An expression whose value ConstantDefault knows; none for other types.
Text DefaultExpression(ColumnType type) {
    switch (type) {
        case ColumnType::Boolean:
            return u"True";
        case ColumnType::Date:
            return u"#12/31/2026#";
        case ColumnType::Text:
        case ColumnType::Memo:
            return u"\"d\"";
        case ColumnType::Byte:
        case ColumnType::Integer:
        case ColumnType::Long:
        case ColumnType::Currency:
        case ColumnType::Single:
        case ColumnType::Double:
            return u"7";
        default:
            return {};
    }
}

/// Over two or three columns, whose values are many enough for a key.
void MakeCompositeKey(Random& random, TableDesign& design) {
    std::vector<Column> fit;
    for (const Column& column : design.columns) {
        if (column.type != ColumnType::Boolean && column.type != ColumnType::Byte &&
            column.type != ColumnType::Ole) {
            fit.push_back(column);
        }
    }
    if (fit.size() < 2) {
        return;
    }
    IndexDesign index = RandomIndex(random, u"PrimaryKey", fit);
    while (index.columns.size() < 2) {
        index = RandomIndex(random, u"PrimaryKey", fit);
    }
    index.primary = true;
    index.unique = true;
    index.ignoreNulls = false;
    design.indexes.push_back(std::move(index));
}

}  // namespace

Column RandomColumn(Random& random, const Text& name) {
    Column column;
    column.name = name;
    column.type = random.Pick(kTypes);
    if (column.type == ColumnType::Text || column.type == ColumnType::Binary) {
        column.size = random.Between(1, 255);
    }
    if (column.type == ColumnType::Numeric) {
        column.precision = static_cast<std::uint8_t>(random.Between(1, kLargestPrecision));
        column.scale = static_cast<std::uint8_t>(random.Between(0, column.precision));
    }
    column.required = column.type != ColumnType::Boolean && random.Chance(15);
    column.allowZeroLength = !IsText(column) || random.Chance(70);
    if (random.Chance(25)) {
        column.defaultValue = DefaultExpression(column.type);
    }
    return column;
}

std::optional<Variant> ConstantDefault(const Column& column) {
    if (column.defaultValue.empty() || column.defaultValue != DefaultExpression(column.type)) {
        return std::nullopt;
    }
    switch (column.type) {
        case ColumnType::Boolean:
            return true;
        case ColumnType::Date:
            return basic::DateOf(2026, 12, 31);
        case ColumnType::Byte:
            return std::uint8_t{7};
        case ColumnType::Integer:
            return std::int16_t{7};
        case ColumnType::Long:
            return std::int32_t{7};
        case ColumnType::Currency:
            return basic::Currency{70000};
        case ColumnType::Single:
            return 7.0F;
        case ColumnType::Double:
            return 7.0;
        default:
            return Text(u"d");
    }
}

IndexDesign RandomIndex(Random& random, const Text& name, const std::vector<Column>& columns) {
    IndexDesign index;
    index.name = name;
    std::vector<Text> names;
    for (const Column& column : columns) {
        names.push_back(column.name);
    }
    const int wanted = random.Chance(60) ? 1 : random.Between(2, 4);
    for (int i = 0; i < wanted && !names.empty(); ++i) {
        const auto chosen = names.begin() + static_cast<std::ptrdiff_t>(random.Below(names.size()));
        index.columns.push_back({.column = *chosen, .ascending = random.Chance(70)});
        names.erase(chosen);
    }
    index.unique = random.Chance(25);
    index.ignoreNulls = random.Chance(25);
    index.required = !index.ignoreNulls && random.Chance(10);
    return index;
}

TableDesign RandomDesign(Random& random, const Text& name) {
    TableDesign design;
    design.name = name;
    const bool hasNumber = random.Chance(50);
    if (hasNumber) {
        design.columns.push_back(AutoNumber(random.Chance(70) ? ColumnType::Long : ColumnType::Guid));
        design.indexes.push_back(
            {.name = u"PrimaryKey", .columns = {{.column = u"Numéro"}}, .primary = true, .unique = true});
    }
    const std::size_t count = random.Chance(30) ? random.Below(40) : random.Below(8);
    for (std::size_t i = 0; i <= count; ++i) {
        design.columns.push_back(
            RandomColumn(random, Numbered(random.Pick(std::array<basic::TextView, 2>{u"Champ ", u"c_"}), i)));
    }
    if (!hasNumber && random.Chance(60)) {
        MakeCompositeKey(random, design);
    }
    return design;
}

}  // namespace quardele::jet::test
