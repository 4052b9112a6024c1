#include "random_design.h"

#include <algorithm>
#include <array>

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

Column AutoNumber() {
    Column column;
    column.name = u"Numéro";
    column.type = ColumnType::Long;
    column.size = 4;
    column.autoNumber = true;
    return column;
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
    return column;
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
    return index;
}

TableDesign RandomDesign(Random& random, const Text& name) {
    TableDesign design;
    design.name = name;
    if (random.Chance(50)) {
        design.columns.push_back(AutoNumber());
        design.indexes.push_back(
            {.name = u"PrimaryKey", .columns = {{.column = u"Numéro"}}, .primary = true, .unique = true});
    }
    const std::size_t count = random.Chance(30) ? random.Below(40) : random.Below(8);
    for (std::size_t i = 0; i <= count; ++i) {
        design.columns.push_back(
            RandomColumn(random, Numbered(random.Pick(std::array<basic::TextView, 2>{u"Champ ", u"c_"}), i)));
    }
    return design;
}

}  // namespace quardele::jet::test
