#include "results.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <stdexcept>

#include <basic/conversion.h>
#include <basic/runtime_error.h>

#include "reference_functions.h"

namespace quardele::sql::differential {

namespace {

using Row = std::vector<std::string>;

std::string Shown(double number) {
    std::array<char, 40> digits{};
    // The zero takes the sign away from another zero.
    std::snprintf(digits.data(), digits.size(), "%.12g", number + 0.0);
    return digits.data();
}

std::string Shown(const std::string& text, const Select& select) {
    return "'" + (select.anyOfEqualTexts ? Folded(text) : text) + "'";
}

std::string Shown(const Variant& value, const Select& select) {
    if (value.IsNull()) {
        return "Null";
    }
    return value.IsText() ? Shown(basic::ToUtf8(value.As<Text>()), select)
                          : Shown(value.IsDate() ? value.As<basic::Date>().days : basic::CDbl(value));
}

std::string Shown(const bench::SqliteValue& value, const Select& select) {
    if (std::holds_alternative<std::monostate>(value)) {
        return "Null";
    }
    if (const auto* const text = std::get_if<std::string>(&value)) {
        return Shown(*text, select);
    }
    const auto* const whole = std::get_if<std::int64_t>(&value);
    return Shown(whole != nullptr ? static_cast<double>(*whole) : std::get<double>(value));
}

/// What a row is sorted by, texts as all that are equal to them.
Row KeysOf(const Select& select, const Row& row) {
    Row keys;
    for (const Order& order : select.order) {
        keys.push_back(Folded(row[order.item]));
    }
    return keys;
}

std::vector<Row> KeysOf(const Select& select, const std::vector<Row>& rows) {
    std::vector<Row> keys;
    std::transform(rows.begin(), rows.end(), std::back_inserter(keys),
                   [&select](const Row& row) { return KeysOf(select, row); });
    return keys;
}

/// The first rows, and those that are sorted like the last one of them.
void TakeTop(const Select& select, std::vector<Row>& rows) {
    const double share = static_cast<double>(rows.size()) * select.top / 100;
    auto count = static_cast<std::size_t>(select.percent ? std::ceil(share) : select.top);
    if (count == 0 || count >= rows.size()) {
        return;
    }
    const Row last = KeysOf(select, rows[count - 1]);
    while (count < rows.size() && KeysOf(select, rows[count]) == last) {
        ++count;
    }
    rows.resize(count);
}

std::vector<Row> Sorted(std::vector<Row> rows) {
    std::sort(rows.begin(), rows.end());
    return rows;
}

/// How many rows there are, and those that the other side has not.
std::string Listed(const std::vector<Row>& rows, const std::vector<Row>& others) {
    std::string text = std::to_string(rows.size()) + " rows\n";
    std::vector<Row> alone;
    std::set_difference(rows.begin(), rows.end(), others.begin(), others.end(), std::back_inserter(alone));
    for (const Row& row : alone) {
        for (const std::string& cell : row) {
            text += " " + cell;
        }
        text += "\n";
    }
    return text;
}

}  // namespace

Result RunOurs(const std::shared_ptr<jet::Database>& database, const Select& select, Side side,
               RowValues values) {
    Result result;
    try {
        const auto query = Query::Prepare(database, basic::FromUtf8(Write(select, side)), values);
        const RowSet rows = query->Run();
        for (std::size_t row = 0; row < rows.Size(); ++row) {
            Row& cells = result.rows.emplace_back();
            for (std::size_t column = 0; column < query->Columns().size(); ++column) {
                cells.push_back(Shown(rows.Value(row, static_cast<int>(column)), select));
            }
        }
    } catch (const basic::RuntimeError& failure) {
        result.error = std::to_string(failure.Number()) + " " + basic::ToUtf8(failure.Description());
    }
    return result;
}

Result RunTheirs(bench::SqliteFile& file, const Select& select) {
    Result result;
    try {
        bench::SqliteStatement statement(file, Write(select, Side::SQLite));
        while (statement.Step()) {
            Row& cells = result.rows.emplace_back();
            for (int column = 0; column < statement.ColumnCount(); ++column) {
                cells.push_back(Shown(statement.ValueAt(column), select));
            }
        }
    } catch (const std::runtime_error& failure) {
        result.error = failure.what();
    }
    return result;
}

std::string Difference(const Select& select, const Result& ours, Result theirs) {
    if (!ours.error.empty() || !theirs.error.empty()) {
        return ours.error + theirs.error;
    }
    TakeTop(select, theirs.rows);
    const std::vector<Row> ourRows = Sorted(ours.rows);
    const std::vector<Row> theirRows = Sorted(theirs.rows);
    if (ourRows != theirRows) {
        return "ours: " + Listed(ourRows, theirRows) + "theirs: " + Listed(theirRows, ourRows);
    }
    const std::vector<Row> ourKeys = KeysOf(select, ours.rows);
    const std::vector<Row> theirKeys = KeysOf(select, theirs.rows);
    return ourKeys == theirKeys
               ? ""
               : "other order, ours:\n" + Listed(ourKeys, {}) + "theirs:\n" + Listed(theirKeys, {});
}

}  // namespace quardele::sql::differential
