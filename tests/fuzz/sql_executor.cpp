// Statements and conditions of any text, run on a small data file: rows or an error.
#include <algorithm>
#include <stdexcept>

#include <sql/query.h>

#include "sql_database.h"
#include "syntax/lexer.h"

namespace quardele::fuzz {

namespace {

/// The longest text that is read as a statement.
constexpr std::size_t kLongest = 65536;
/// More tables, functions that make long texts or long numbers in one statement take long without any fault.
constexpr std::ptrdiff_t kMostTables = 5;
constexpr std::ptrdiff_t kMostLongTexts = 1;
constexpr std::size_t kMostRowsRead = 200;

[[nodiscard]] bool MakesLongTexts(const sql::Token& token) {
    return token.IsWord(u"SPACE") || token.IsWord(u"STRING") || token.IsWord(u"REPLACE");
}

[[nodiscard]] bool IsCheap(jet::Database& database, basic::TextView text) {
    const std::vector<sql::Token> tokens = sql::Tokenize(text);
    const auto tables = std::count_if(tokens.begin(), tokens.end(), [&](const sql::Token& token) {
        return sql::IsName(token) && database.HasTable(token.text);
    });
    return tables <= kMostTables &&
           std::count_if(tokens.begin(), tokens.end(), MakesLongTexts) <= kMostLongTexts;
}

void ReadRows(const std::shared_ptr<jet::Database>& database, basic::TextView text, sql::RowValues values) {
    const auto query = sql::Query::Prepare(database, text, values);
    const sql::RowSet rows = query->Run();
    const std::size_t read = std::min(rows.Size(), kMostRowsRead);
    for (std::size_t row = 0; row < read; ++row) {
        for (std::size_t column = 0; column < query->Columns().size(); ++column) {
            static_cast<void>(rows.Value(row, static_cast<int>(column)));
        }
    }
}

/// A search among all vehicles, forwards and backwards, which agree on whether there is anything.
void Search(const std::shared_ptr<jet::Database>& database, basic::TextView text) {
    const auto query = sql::Query::Prepare(database, u"SELECT * FROM VEHICULE");
    const sql::RowSet rows = query->Run();
    const sql::Condition condition(query, text);
    const bool forward = condition.FindForward(rows, 0).has_value();
    if (forward != condition.FindBackward(rows, rows.Size() - 1).has_value()) {
        throw std::logic_error("found in one direction only: " + basic::ToUtf8(text));
    }
}

}  // namespace

// UTF-8.
void Use(BytesView input) {
    const BytesView start = input.first(std::min(input.size(), kLongest));
    const basic::Text text = basic::FromUtf8(std::string(start.begin(), start.end()));
    const auto database = SqlDatabase();
    if (!IsCheap(*database, text)) {
        return;
    }
    Attempt([&] { ReadRows(database, text, sql::RowValues::Live); });
    Attempt([&] { ReadRows(database, text, sql::RowValues::Fixed); });
    Attempt([&] { Search(database, text); });
}

std::vector<Bytes> Seeds() {
    return SqlSeeds();
}

}  // namespace quardele::fuzz
