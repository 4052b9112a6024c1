#include "structure/table_plan.h"

#include <algorithm>

#include <basic/runtime_error.h>

#include "definitions/column_descriptor.h"
#include "definitions/index_descriptor.h"
#include "definitions/properties.h"
#include "structure/object_names.h"

namespace quardele::jet {

namespace {

void CheckColumns(const std::vector<Column>& columns) {
    if (columns.empty() || columns.size() > kMostColumns) {
        throw basic::RuntimeError(basic::error::kTooManyFields, u"Une table a de 1 à 255 champs.");
    }
    for (auto column = columns.begin(); column != columns.end(); ++column) {
        CheckColumn(*column);
        if (IsCounter(*column) && std::any_of(columns.begin(), column, IsCounter)) {
            ThrowImpossibleType(*column);
        }
        const bool twice = std::any_of(columns.begin(), column, [&](const Column& other) {
            return basic::EqualNoCase(other.name, column->name);
        });
        if (twice) {
            throw basic::RuntimeError(basic::error::kFieldExists,
                                      basic::Describe(basic::error::kFieldExists, column->name));
        }
    }
}

// Variable columns come in two runs: long values lie behind all others.
std::vector<std::uint16_t> VariableIndexes(const std::vector<Column>& columns) {
    std::vector<std::uint16_t> indexes(columns.size());
    std::uint16_t next = 0;
    for (const bool longOnes : {false, true}) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (IsVariable(columns[i].type) && IsLong(columns[i].type) == longOnes) {
                indexes[i] = next++;
            }
        }
    }
    return indexes;
}

void AppendColumns(const std::vector<Column>& columns, DefinitionParts& parts) {
    const auto variableIndexes = VariableIndexes(columns);
    ColumnPlace place;
    std::uint16_t variable = 0;
    for (const Column& column : columns) {
        const bool lies = IsVariable(column.type);
        place.display = static_cast<std::uint16_t>(place.number + 1);
        place.variableIndex = lies ? variableIndexes[place.number] : variable;
        // Of a Boolean only the null bit is used.
        const std::uint16_t offset = place.fixedOffset;
        place.fixedOffset = lies || column.type == ColumnType::Boolean ? std::uint16_t{0} : offset;
        parts.columns.push_back({.bytes = ColumnDescriptor(column, place), .name = column.name});
        AppendLongValueRecord(column.type, place.number, parts);
        variable = static_cast<std::uint16_t>(variable + (lies ? 1 : 0));
        place.fixedOffset = static_cast<std::uint16_t>(offset + FixedSize(column.type));
        ++place.number;
    }
    CheckRowLength(place.fixedOffset, variable, columns.size());
    parts.SetMaxColumns(place.number);
    parts.SetVariableColumns(variable);
}

}  // namespace

void AppendLongValueRecord(ColumnType type, std::uint16_t number, DefinitionParts& parts) {
    if (IsLong(type)) {
        StoreLittle(std::span(parts.longValueMaps.emplace_back(long_value_map::kSize)), number);
    }
}

DefinitionParts PlanTable(const TableDesign& design) {
    CheckName(design.name);
    CheckColumns(design.columns);
    DefinitionParts parts;
    AppendColumns(design.columns, parts);
    for (const IndexDesign& index : design.indexes) {
        AppendIndex(index, parts);
    }
    return parts;
}

ByteString PlanProperties(const TableDesign& design) {
    PropertyBlob properties;
    for (const Column& column : design.columns) {
        StoreRules(column, properties);
    }
    return properties.Bytes();
}

}  // namespace quardele::jet
