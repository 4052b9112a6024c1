#include "newfile/system_tables.h"

#include <algorithm>
#include <span>

#include "definitions/catalog_format.h"
#include "definitions/column_descriptor.h"
#include "definitions/index_descriptor.h"
#include "structure/table_plan.h"

namespace quardele::jet {

namespace {

using namespace catalog_format;

/// Flags of the columns of system tables, the fixed one apart. Those of accounts have their own.
constexpr std::uint8_t kSystemColumn = 0x12;
constexpr std::uint8_t kAccountColumn = 0x32;
constexpr std::uint16_t kLongestText = 510;

struct SystemColumn {
    TextView name;
    ColumnType type;
    std::uint16_t number;
    std::uint8_t flags = kSystemColumn;
};

// In the order of their descriptors, which is that of their names.

constexpr SystemColumn kObjectColumns[] = {
    {u"Connect", ColumnType::Memo, 9},
    {u"Database", ColumnType::Memo, 8},
    {u"DateCreate", ColumnType::Date, 4},
    {u"DateUpdate", ColumnType::Date, 5},
    {u"Flags", ColumnType::Long, 7},
    {u"ForeignName", ColumnType::Text, 10},
    {u"Id", ColumnType::Long, 0},
    {u"Lv", ColumnType::Ole, 13},
    {u"LvExtra", ColumnType::Ole, 16},
    {u"LvModule", ColumnType::Ole, 15},
    {u"LvProp", ColumnType::Ole, 14},
    {u"Name", ColumnType::Text, 2},
    {u"Owner", ColumnType::Binary, 6, kAccountColumn},
    {u"ParentId", ColumnType::Long, 1},
    {u"RmtInfoLong", ColumnType::Ole, 12},
    {u"RmtInfoShort", ColumnType::Binary, 11},
    {u"Type", ColumnType::Integer, 3},
};
constexpr SystemColumn kRightsColumns[] = {
    {u"ACM", ColumnType::Long, 2},
    {u"FInheritable", ColumnType::Boolean, 3},
    {u"ObjectId", ColumnType::Long, 0},
    {u"SID", ColumnType::Binary, 1, kAccountColumn},
};
constexpr SystemColumn kQueryColumns[] = {
    {u"Attribute", ColumnType::Byte, 1}, {u"Expression", ColumnType::Memo, 5},
    {u"Flag", ColumnType::Integer, 6},   {u"LvExtra", ColumnType::Long, 7},
    {u"Name1", ColumnType::Text, 3},     {u"Name2", ColumnType::Text, 4},
    {u"ObjectId", ColumnType::Long, 0},  {u"Order", ColumnType::Binary, 2},
};
constexpr SystemColumn kRelationshipColumns[] = {
    {u"ccolumn", ColumnType::Long, 2},
    {u"grbit", ColumnType::Long, 1},
    {u"icolumn", ColumnType::Long, 3},
    {u"szColumn", ColumnType::Text, 5},
    {u"szObject", ColumnType::Text, 4},
    {u"szReferencedColumn", ColumnType::Text, 7},
    {u"szReferencedObject", ColumnType::Text, 6},
    {u"szRelationship", ColumnType::Text, 0},
};

std::uint16_t LengthOf(ColumnType type) {
    switch (type) {
        case ColumnType::Text:
        case ColumnType::Binary:
            return kLongestText;
        case ColumnType::Boolean:
            return 1;
        default:
            return FixedSize(type);
    }
}

// Columns lie in the rows in the order of their numbers.
ColumnPlace PlaceOf(const SystemColumn& column, std::span<const SystemColumn> all) {
    ColumnPlace place{.number = column.number};
    for (const SystemColumn& other : all) {
        if (other.number < column.number) {
            place.variableIndex =
                static_cast<std::uint16_t>(place.variableIndex + (IsVariable(other.type) ? 1 : 0));
            place.fixedOffset = static_cast<std::uint16_t>(place.fixedOffset + FixedSize(other.type));
        }
    }
    if (IsVariable(column.type) || column.type == ColumnType::Boolean) {
        place.fixedOffset = 0;
    }
    return place;
}

void AppendColumn(const SystemColumn& column, std::span<const SystemColumn> all, DefinitionParts& parts) {
    const auto& at = kJet4.column;
    ByteString bytes =
        ColumnDescriptor({.name = {}, .type = column.type, .defaultValue = {}}, PlaceOf(column, all));
    const std::uint8_t fixed = IsVariable(column.type) ? std::uint8_t{0} : column_flag::kFixed;
    bytes[at.flags] = column.flags | fixed;
    bytes[at.extraFlags] = 0;
    StoreLittle(std::span(bytes).subspan(at.length), LengthOf(column.type));
    parts.columns.push_back({.bytes = std::move(bytes), .name = Text(column.name)});
}

DefinitionParts Define(std::span<const SystemColumn> columns, std::span<const std::uint16_t> longValues,
                       std::span<const IndexDesign> indexes) {
    DefinitionParts parts;
    parts.header[kJet4.def.kind] = kSystemTable;
    std::uint16_t variable = 0;
    for (const SystemColumn& column : columns) {
        AppendColumn(column, columns, parts);
        variable = static_cast<std::uint16_t>(variable + (IsVariable(column.type) ? 1 : 0));
    }
    parts.SetMaxColumns(static_cast<std::uint16_t>(columns.size()));
    parts.SetVariableColumns(variable);
    for (const std::uint16_t number : longValues) {
        StoreLittle(std::span(parts.longValueMaps.emplace_back(long_value_map::kSize)), number);
    }
    for (const IndexDesign& index : indexes) {
        AppendIndex(index, parts);
    }
    return parts;
}

// The keys of system tables do not say that they refuse Nulls.
void SetFlags(DefinitionParts& parts, std::uint8_t flags) {
    for (ByteString& index : parts.realIndexes) {
        index[kJet4.realIndex.flags] = flags | index_flag::kAlways;
    }
}

DefinitionParts DefineObjects() {
    constexpr std::uint16_t kLongValues[] = {9, 8, 13, 16, 15, 14, 12};
    const IndexDesign indexes[] = {
        {.name = u"ParentIdName", .columns = {{.column = u"ParentId"}, {.column = u"Name"}}},
        {.name = u"Id", .columns = {{.column = u"Id"}}, .primary = true}};
    DefinitionParts parts = Define(kObjectColumns, kLongValues, indexes);
    SetFlags(parts, index_flag::kUnique);
    std::swap(parts.indexes[0], parts.indexes[1]);
    return parts;
}

DefinitionParts DefineRights() {
    const IndexDesign index{.name = u"ObjectId", .columns = {{.column = u"ObjectId"}}};
    DefinitionParts parts = Define(kRightsColumns, {}, {&index, 1});
    SetFlags(parts, index_flag::kRequired);
    return parts;
}

DefinitionParts DefineQueries() {
    constexpr std::uint16_t kLongValues[] = {5};
    const IndexDesign index{
        .name = u"ObjectIdAttribute",
        .columns = {{.column = u"ObjectId"}, {.column = u"Attribute"}, {.column = u"Order"}},
        .primary = true};
    DefinitionParts parts = Define(kQueryColumns, kLongValues, {&index, 1});
    SetFlags(parts, index_flag::kUnique);
    return parts;
}

DefinitionParts DefineRelationships() {
    const IndexDesign indexes[] = {
        {.name = u"szRelationship", .columns = {{.column = u"szRelationship"}}},
        {.name = u"szObject", .columns = {{.column = u"szObject"}}},
        {.name = u"szReferencedObject", .columns = {{.column = u"szReferencedObject"}}}};
    DefinitionParts parts = Define(kRelationshipColumns, {}, indexes);
    SetFlags(parts, index_flag::kIgnoreNulls);
    std::rotate(parts.indexes.begin(), parts.indexes.begin() + 1, parts.indexes.end());
    return parts;
}

/// The accounts as the date of creation of new files hides them.
const basic::Binary kAdministrator = {0x64, 0x8B};
const basic::Binary kUsers = {0x65, 0x8B};
const basic::Binary kEngine = {0x65, 0x89};
const basic::Binary kCreator = {0x65, 0x8E};

}  // namespace

std::vector<DefinitionParts> SystemDefinitions() {
    return {DefineObjects(), DefineRights(), DefineQueries(), DefineRelationships()};
}

std::vector<std::vector<NamedValue>> FirstObjects(basic::Date created) {
    struct Object {
        std::int32_t id;
        std::int32_t parent;
        TextView name;
        int type;
    };
    constexpr Object kObjects[] = {
        {kTables, kRoot, u"Tables", kContainer},
        {kDatabases, kRoot, u"Databases", kContainer},
        {kRelationships, kRoot, u"Relationships", kContainer},
        {kDatabaseDocument, kDatabases, u"MSysDb", kDocument},
        {kCatalogPage, kTables, u"MSysObjects", kLocalTable},
        {kRightsPage, kTables, u"MSysACEs", kLocalTable},
        {kQueriesPage, kTables, u"MSysQueries", kLocalTable},
        {kRelationshipsPage, kTables, u"MSysRelationships", kLocalTable},
    };
    std::vector<std::vector<NamedValue>> rows;
    for (const Object& object : kObjects) {
        rows.push_back({{u"Id", object.id},
                        {u"ParentId", object.parent},
                        {u"Name", object.name},
                        {u"Type", static_cast<std::int16_t>(object.type)},
                        {u"DateCreate", created},
                        {u"DateUpdate", created},
                        {u"Flags", static_cast<std::int32_t>(kSystemObject)},
                        {u"Owner", object.type == kDocument ? kAdministrator : kEngine}});
    }
    return rows;
}

std::vector<std::vector<NamedValue>> FirstRights() {
    struct Right {
        std::int32_t object;
        bool inheritable;
        std::int32_t rights;
        const basic::Binary& account;
    };
    const Right kRights[] = {
        {kCatalogPage, false, 0x60000, kAdministrator},
        {kRightsPage, false, 0x60000, kAdministrator},
        {kQueriesPage, false, 0x60000, kAdministrator},
        {kRelationshipsPage, false, 0xE0000, kAdministrator},
        {kTables, true, 0xF00FE, kCreator},
        {kTables, false, 0x60001, kAdministrator},
        {kRelationships, true, 0xF00FE, kCreator},
        {kRelationships, false, 0x60001, kAdministrator},
        {kDatabases, false, 0x60000, kAdministrator},
        {kDatabaseDocument, false, 0x6000E, kAdministrator},
        {kDatabaseDocument, false, 0xE, kUsers},
        {kQueriesPage, false, 0x14, kUsers},
        {kRelationshipsPage, false, 0x14, kUsers},
        {kCatalogPage, false, 0x14, kUsers},
        {kTables, true, 0xFFEFF, kUsers},
        {kRelationships, true, 0xFFFFF, kUsers},
    };
    std::vector<std::vector<NamedValue>> rows;
    for (const Right& right : kRights) {
        rows.push_back({{u"ObjectId", right.object},
                        {u"FInheritable", right.inheritable},
                        {u"ACM", right.rights},
                        {u"SID", right.account}});
    }
    return rows;
}

}  // namespace quardele::jet
