#include "both_sides.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include <basic/date.h>
#include <sql/query.h>

#include "table_rows.h"

namespace quardele::bench {

namespace fs = std::filesystem;

namespace {

constexpr std::array<basic::TextView, 5> kTables = {u"TVEH", u"TVEH_DETAIL", u"TCLI", u"TAFF",
                                                    u"TAFF_DETAIL"};

double AddMonths(double months, double days) {
    return basic::DateAdd(u"m", months, basic::Date{days}).days;
}

void Copy(const jet::Table& table, SqliteFile& sqlite) {
    sqlite.CreateLike(table);
    SqliteStatement insert(sqlite, InsertInto(table));
    const auto columns = static_cast<int>(table.Columns().size());
    std::vector<SqliteValue> values;
    sqlite.Execute("BEGIN");
    jet::RowScan scan = table.Scan();
    while (const auto row = scan.Next()) {
        values.clear();
        for (int column = 0; column < columns; ++column) {
            values.push_back(ValueFor(row->Value(column)));
        }
        insert.BindAll(values);
        insert.Run();
    }
    sqlite.Execute("COMMIT");
}

std::string Shown(const SqliteValue& value) {
    if (const auto* const text = std::get_if<std::string>(&value)) {
        return *text;
    }
    if (std::holds_alternative<std::monostate>(value)) {
        return "Null";
    }
    const auto* const whole = std::get_if<std::int64_t>(&value);
    std::array<char, 40> shown{};
    std::snprintf(shown.data(), shown.size(), "%.12g",
                  whole != nullptr ? static_cast<double>(*whole) : std::get<double>(value));
    return shown.data();
}

std::vector<std::string> Sorted(std::vector<std::string> lines) {
    std::sort(lines.begin(), lines.end());
    return lines;
}

}  // namespace

BothSides::BothSides(const fs::path& file)
    : database_(jet::Database::Open(file)), sqlite_(folder_.Path() / "copie.sqlite") {
    for (const basic::TextView name : kTables) {
        Copy(*database_->OpenTable(name), sqlite_);
    }
    sqlite_.AddFunction(kAddMonths, AddMonths);
}

std::size_t BothSides::RunOurs(const Statement& statement) const {
    const auto query = sql::Query::Prepare(database_, basic::FromUtf8(statement.ours));
    const bool whole = statement.rowsRead == 0;
    const sql::RowSet rows = whole ? query->Run() : query->RunInSteps();
    const std::size_t wanted =
        whole ? rows.Size() : std::min(rows.Found(statement.rowsRead), statement.rowsRead);
    const auto columns = static_cast<int>(query->Columns().size());
    for (std::size_t row = 0; row < wanted; ++row) {
        for (int column = 0; column < columns; ++column) {
            (void)rows.Value(row, column);
        }
    }
    return wanted;
}

std::size_t BothSides::RunTheirs(const Statement& statement) {
    SqliteStatement query(sqlite_, statement.theirs);
    const int columns = query.ColumnCount();
    std::size_t rows = 0;
    while ((statement.rowsRead == 0 || rows < statement.rowsRead) && query.Step()) {
        for (int column = 0; column < columns; ++column) {
            (void)query.ValueAt(column);
        }
        ++rows;
    }
    return rows;
}

std::vector<std::string> BothSides::OurLines(const Statement& statement) const {
    const auto query = sql::Query::Prepare(database_, basic::FromUtf8(statement.ours));
    const sql::RowSet rows = query->Run();
    const auto columns = static_cast<int>(query->Columns().size());
    std::vector<std::string> lines(rows.Size());
    for (std::size_t row = 0; row < rows.Size(); ++row) {
        for (int column = 0; column < columns; ++column) {
            lines[row] += Shown(ValueFor(rows.Value(row, column))) + '|';
        }
    }
    return Sorted(std::move(lines));
}

std::vector<std::string> BothSides::TheirLines(const Statement& statement) {
    SqliteStatement query(sqlite_, statement.theirs);
    std::vector<std::string> lines;
    while (query.Step()) {
        std::string& line = lines.emplace_back();
        for (int column = 0; column < query.ColumnCount(); ++column) {
            line += Shown(query.ValueAt(column)) + '|';
        }
    }
    return Sorted(std::move(lines));
}

}  // namespace quardele::bench
