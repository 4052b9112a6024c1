// Tables as the statements that would make them. What these statements cannot say stands in comments, which
// exec passes over.

#include <algorithm>

#include "commands.h"
#include "failure.h"
#include "relationships.h"

namespace quardele::mdb {

namespace {

const char* TypeName(jet::ColumnType type) {
    switch (type) {
        case jet::ColumnType::Boolean:
            return "BIT";
        case jet::ColumnType::Byte:
            return "BYTE";
        case jet::ColumnType::Integer:
            return "SHORT";
        case jet::ColumnType::Long:
            return "LONG";
        case jet::ColumnType::Currency:
            return "CURRENCY";
        case jet::ColumnType::Single:
            return "SINGLE";
        case jet::ColumnType::Double:
            return "DOUBLE";
        case jet::ColumnType::Date:
            return "DATETIME";
        case jet::ColumnType::Binary:
        case jet::ColumnType::Opaque:
            return "BINARY";
        case jet::ColumnType::Text:
            return "TEXT";
        case jet::ColumnType::Ole:
            return "LONGBINARY";
        case jet::ColumnType::Memo:
            return "MEMO";
        case jet::ColumnType::Guid:
            return "GUID";
        case jet::ColumnType::Numeric:
            return "DECIMAL";
    }
    return "?";
}

std::string NameInBrackets(const jet::Text& name) {
    return '[' + basic::ToUtf8(name) + ']';
}

void ShowColumn(const jet::Column& column, Output& out) {
    const bool isCounter = column.autoNumber && column.type == jet::ColumnType::Long;
    out << "  " << NameInBrackets(column.name) << " " << (isCounter ? "COUNTER" : TypeName(column.type));
    if (column.type == jet::ColumnType::Text || column.type == jet::ColumnType::Binary) {
        out << "(" << std::to_string(column.size) << ")";
    } else if (column.type == jet::ColumnType::Numeric) {
        out << "(" << std::to_string(column.precision) << "," << std::to_string(column.scale) << ")";
    }
    out << (column.required ? " NOT NULL" : "");
    // Access lets a default begin with an equals sign, which is no part of the expression.
    const bool isNewGuid = column.autoNumber && column.type == jet::ColumnType::Guid;
    const std::string expression = isNewGuid ? "GenGUID()" : basic::ToUtf8(column.defaultValue);
    if (!expression.empty()) {
        out << " DEFAULT " << std::string_view(expression).substr(expression.starts_with('=') ? 1 : 0);
    }
}

void ShowIndex(const jet::Table& table, const jet::Index& index, Output& out) {
    out << (index.unique && !index.primary ? "CREATE UNIQUE INDEX " : "CREATE INDEX ")
        << NameInBrackets(index.name) << " ON " << NameInBrackets(table.Name()) << " (";
    const char* separator = "";
    for (const jet::IndexColumn& part : index.columns) {
        out << separator << NameInBrackets(table.Columns()[static_cast<std::size_t>(part.column)].name)
            << (part.ascending ? "" : " DESC");
        separator = ", ";
    }
    out << ")"
        << (index.primary       ? " WITH PRIMARY"
            : index.required    ? " WITH DISALLOW NULL"
            : index.ignoreNulls ? " WITH IGNORE NULL"
                                : "")
        << ";\n";
}

// On one line, whatever it has in it: a comment ends with its line.
std::string OnOneLine(const jet::Text& text) {
    std::string line = basic::ToUtf8(text);
    std::replace_if(
        line.begin(), line.end(), [](char unit) { return unit == '\n' || unit == '\r'; }, ' ');
    return line;
}

void ShowProperty(const jet::Table& table, const jet::Column& column, const char* name,
                  const std::string& value, Output& out) {
    out << "-- " << OnOneLine(table.Name()) << "." << OnOneLine(column.name) << ": " << name << " = " << value
        << "\n";
}

/// Rules that no statement makes, by the names that they have in Access.
void ShowRules(const jet::Table& table, Output& out) {
    for (const jet::Column& column : table.Columns()) {
        const bool isText = column.type == jet::ColumnType::Text || column.type == jet::ColumnType::Memo;
        if (isText && !column.allowZeroLength) {
            ShowProperty(table, column, "AllowZeroLength", "No", out);
        }
        if (!column.validationRule.empty()) {
            ShowProperty(table, column, "ValidationRule", OnOneLine(column.validationRule), out);
        }
        if (!column.validationText.empty()) {
            ShowProperty(table, column, "ValidationText", OnOneLine(column.validationText), out);
        }
    }
}

std::string ColumnList(const std::vector<jet::Text>& names) {
    std::string list;
    for (const jet::Text& name : names) {
        list += (list.empty() ? "" : ", ") + ('[' + OnOneLine(name) + ']');
    }
    return "(" + list + ")";
}

void ShowRelationship(const Relationship& relationship, Output& out) {
    out << "-- ALTER TABLE [" << OnOneLine(relationship.table) << "] ADD CONSTRAINT ["
        << OnOneLine(relationship.name) << "] FOREIGN KEY " << ColumnList(relationship.columns)
        << " REFERENCES [" << OnOneLine(relationship.referredTo) << "] "
        << ColumnList(relationship.referredColumns)
        << (relationship.cascadeUpdate ? " ON UPDATE CASCADE" : "")
        << (relationship.cascadeDelete ? " ON DELETE CASCADE" : "")
        << (relationship.enforced ? "" : " NOT ENFORCED") << ";\n";
}

// The side of a relationship that is referred to has an index with a name that nobody can give.
bool IsOfRelationship(const jet::Index& index) {
    return index.name.starts_with(u'.');
}

void ShowTable(const jet::Table& table, Output& out) {
    out << "CREATE TABLE " << NameInBrackets(table.Name()) << " (\n";
    const char* separator = "";
    for (const jet::Column& column : table.Columns()) {
        out << separator;
        ShowColumn(column, out);
        separator = ",\n";
    }
    out << "\n);\n";
    for (const jet::Index& index : table.Indexes()) {
        if (!IsOfRelationship(index)) {
            ShowIndex(table, index, out);
        }
    }
    ShowRules(table, out);
}

}  // namespace

int RunSchema(const Arguments& arguments, Session& session) {
    const auto database = OpenFile(arguments);
    const auto relationships = RelationshipsOf(*database);
    if (!arguments.Operand(1).empty()) {
        const auto table = OpenTable(*database, arguments);
        ShowTable(*table, session.out);
        for (const Relationship& relationship : relationships) {
            if (basic::EqualNoCase(relationship.table, table->Name())) {
                ShowRelationship(relationship, session.out);
            }
        }
        return kDone;
    }
    for (const jet::CatalogEntry& entry : database->Catalog()) {
        if (!entry.system && !entry.linked) {
            ShowTable(*database->OpenTable(entry.name), session.out);
        }
    }
    for (const Relationship& relationship : relationships) {
        ShowRelationship(relationship, session.out);
    }
    return kDone;
}

}  // namespace quardele::mdb
