#include "commands.h"

#include <jet/database.h>

#include "csv_writer.h"

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

void ShowColumn(const jet::Column& column, std::ostream& out) {
    out << "  " << basic::ToUtf8(column.name) << ' '
        << (column.autoNumber ? "COUNTER" : TypeName(column.type));
    if (column.type == jet::ColumnType::Text || column.type == jet::ColumnType::Binary) {
        out << '(' << column.size << ')';
    } else if (column.type == jet::ColumnType::Numeric) {
        out << '(' << int{column.precision} << ',' << int{column.scale} << ')';
    }
    out << (column.required ? " NOT NULL" : "") << (column.allowZeroLength ? "" : " NOT EMPTY");
    if (!column.defaultValue.empty()) {
        out << " DEFAULT " << basic::ToUtf8(column.defaultValue);
    }
    out << '\n';
}

void ShowIndex(const jet::Table& table, const jet::Index& index, std::ostream& out) {
    out << "  "
        << (index.primary  ? "PRIMARY KEY "
            : index.unique ? "UNIQUE INDEX "
                           : "INDEX ")
        << basic::ToUtf8(index.name) << " (";
    const char* separator = "";
    for (const jet::IndexColumn& part : index.columns) {
        out << separator << basic::ToUtf8(table.Columns()[static_cast<std::size_t>(part.column)].name)
            << (part.ascending ? "" : " DESC");
        separator = ", ";
    }
    out << ')' << (index.ignoreNulls ? " IGNORE NULL" : "")
        << (index.required && !index.primary ? " NOT NULL" : "") << '\n';
}

void ShowTable(const jet::Table& table, std::ostream& out) {
    out << basic::ToUtf8(table.Name()) << '\n';
    for (const jet::Column& column : table.Columns()) {
        ShowColumn(column, out);
    }
    for (const jet::Index& index : table.Indexes()) {
        ShowIndex(table, index, out);
    }
}

}  // namespace

void ListTables(const std::filesystem::path& file, std::ostream& out) {
    const auto database = jet::Database::Open(file, jet::OpenMode::ReadOnly);
    for (const jet::CatalogEntry& entry : database->Catalog()) {
        if (!entry.system) {
            out << basic::ToUtf8(entry.name) << '\n';
        }
    }
}

void ShowSchema(const std::filesystem::path& file, const std::string& table, std::ostream& out) {
    const auto database = jet::Database::Open(file, jet::OpenMode::ReadOnly);
    if (!table.empty()) {
        ShowTable(*database->OpenTable(basic::FromUtf8(table)), out);
        return;
    }
    for (const jet::CatalogEntry& entry : database->Catalog()) {
        if (!entry.system && !entry.linked) {
            ShowTable(*database->OpenTable(entry.name), out);
        }
    }
}

void DumpTable(const std::filesystem::path& file, const std::string& table, std::ostream& out) {
    const auto database = jet::Database::Open(file, jet::OpenMode::ReadOnly);
    const auto opened = database->OpenTable(basic::FromUtf8(table));
    CsvWriter csv(out);
    csv.WriteHeader(*opened);
    jet::RowScan scan = opened->Scan();
    while (const auto row = scan.Next()) {
        csv.WriteRow(*opened, *row);
    }
}

}  // namespace quardele::mdb
