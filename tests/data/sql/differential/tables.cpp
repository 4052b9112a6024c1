#include "tables.h"

#include <sql/statement.h>

#include "literals.h"
#include "reference_functions.h"

namespace quardele::sql::differential {

namespace {

constexpr ColumnOfTables kColumns[] = {
    {"Id", "LONG", "INTEGER", Kind::Number},      {"A", "LONG", "INTEGER", Kind::Number},
    {"N", "SHORT", "INTEGER", Kind::Number},      {"B", "DOUBLE", "REAL", Kind::Number},
    {"E", "DECIMAL(9, 2)", "REAL", Kind::Number}, {"C", "CURRENCY", "REAL", Kind::Amount},
    {"S", "TEXT(20)", "TEXT", Kind::Text},        {"U", "TEXT(255)", "TEXT", Kind::Text},
    {"D", "DATETIME", "REAL", Kind::Date},        {"F", "YESNO", "INTEGER", Kind::Condition},
};

constexpr const char* kIndexes[] = {"A",         "S",      "D",    "B",      "C",    "N",
                                    "U",         "S DESC", "A, S", "D DESC", "S, A", "A DESC, D",
                                    "N, B DESC", "U, S",   "D, N", "F, A",   "E",    "C, Id"};
constexpr int kMostRows = 18;
constexpr int kManyRows = 150;
constexpr int kMostIndexes = 5;
constexpr int kNulls = 15;  ///< percent

bool IsWhole(const ColumnOfTables& column) {
    return std::string(column.theirs) == "INTEGER";
}

Expression CellOf(const ColumnOfTables& column, Random& random) {
    if (column.kind == Kind::Condition) {
        Expression truth = Literal(Kind::Condition, random);
        truth.theirs = truth.ours == "True" ? "-1" : "0";
        return truth;
    }
    if (random.Chance(kNulls)) {
        return NullOf(column.kind);
    }
    Expression cell = Literal(column.kind, random);
    while (IsWhole(column) && cell.ours.find('.') != std::string::npos) {
        cell = Literal(column.kind, random);
    }
    return cell;
}

}  // namespace

std::span<const ColumnOfTables> Columns() {
    return kColumns;
}

Tables::Tables(const std::filesystem::path& folder, unsigned seed)
    : random_(seed), ours_(jet::Database::Create(folder / ("donnees" + std::to_string(seed) + ".mdb"))) {
    AddReferenceFunctions(theirs_);
    jet::Step step = ours_->Begin();
    for (int table = 0; table < kTables; ++table) {
        MakeTable(table);
    }
    step.Commit();
}

void Tables::DoOurs(const std::string& statement) {
    script_ += statement + ";\n";
    Execute(*ours_, basic::FromUtf8(statement));
}

void Tables::MakeTable(int table) {
    std::string ourColumns;
    std::string theirColumns;
    for (const ColumnOfTables& column : kColumns) {
        const std::string comma = ourColumns.empty() ? "" : ", ";
        ourColumns += comma + column.name + " " + column.ours;
        theirColumns += comma + column.name + " " + column.theirs;
    }
    DoOurs("CREATE TABLE " + TableName(table, Side::Plain) + " (" + ourColumns + ")");
    DoOurs("CREATE TABLE " + TableName(table, Side::Indexed) + " (" + ourColumns + ")");
    theirs_.Execute("CREATE TABLE " + TableName(table, Side::SQLite) + " (" + theirColumns + ")");
    MakeIndexes(table);
    const bool many = table == 0 && random_.Chance(15);
    const int rows = many ? kManyRows : random_.Between(0, kMostRows);
    for (int id = 1; id <= rows; ++id) {
        AddRow(table, id);
    }
}

void Tables::MakeIndexes(int table) {
    const std::string on = " ON " + TableName(table, Side::Indexed) + " (";
    if (random_.Chance(70)) {
        DoOurs("CREATE UNIQUE INDEX Cle" + on + "Id) WITH PRIMARY");
    }
    for (int index = random_.Below(kMostIndexes + 1); index > 0; --index) {
        DoOurs("CREATE INDEX I" + std::to_string(index) + on + random_.OneOf(kIndexes) + ")" +
               (random_.Chance(15) ? " WITH IGNORE NULL" : ""));
    }
}

void Tables::AddRow(int table, int id) {
    std::string ours = std::to_string(id);
    std::string theirs = ours;
    for (const ColumnOfTables& column : Columns().subspan(1)) {
        const Expression cell = CellOf(column, random_);
        ours += ", " + cell.ours;
        theirs += ", " + cell.theirs;
    }
    for (const Side side : {Side::Plain, Side::Indexed}) {
        DoOurs("INSERT INTO " + TableName(table, side) + " VALUES (" + ours + ")");
    }
    theirs_.Execute("INSERT INTO " + TableName(table, Side::SQLite) + " VALUES (" + theirs + ")");
}

}  // namespace quardele::sql::differential
