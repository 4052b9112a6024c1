#include "csv.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>

#include <basic/date.h>

namespace quardele::jet::test {

namespace {

constexpr double kSecond = 1.0 / 86400;

std::string Hex(std::span<const std::uint8_t> bytes) {
    std::string digits;
    for (const std::uint8_t byte : bytes) {
        char pair[3];
        std::snprintf(pair, sizeof pair, "%02x", byte);
        digits += pair;
    }
    return digits;
}

std::string GuidText(const basic::Guid& guid) {
    const std::string h = Hex(guid.bytes);
    const auto byte = [&h](std::size_t i) { return h.substr(i * 2, 2); };
    return "{" + byte(3) + byte(2) + byte(1) + byte(0) + "-" + byte(5) + byte(4) + "-" + byte(7) + byte(6) +
           "-" + h.substr(16, 4) + "-" + h.substr(20) + "}";
}

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char unit) { return static_cast<char>(std::tolower(unit)); });
    return text;
}

// Days since 30/12/1899 on a line that has no fold at that day, so that moments can be compared.
double Moment(double days) {
    return days >= 0 ? days : std::trunc(days) - (days - std::trunc(days));
}

// The reader behind the golden dumps counts days before 15/10/1582 in the Julian calendar; files count all
// days in the Gregorian one.
basic::CivilDate FromMixedCalendar(basic::CivilDate date) {
    if (date >= basic::CivilDate{1582, 10, 15}) {
        return date;
    }
    const int yearOfMarch = date.month > 2 ? date.year : date.year - 1;
    const int century = yearOfMarch / 100;
    const int ahead = century - century / 4 - 2;
    return basic::CivilOf({basic::DateOf(date.year, date.month, date.day).days + ahead});
}

bool SameDate(double days, const std::string& cell) {
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    if (std::sscanf(cell.c_str(), "%d-%d-%d %d:%d:%d", &year, &month, &day, &hour, &minute, &second) != 6) {
        return false;
    }
    const basic::CivilDate civil = FromMixedCalendar({year, month, day});
    const double expected = basic::DateOf(civil.year, civil.month, civil.day, hour, minute, second).days;
    return std::abs(Moment(expected) - Moment(days)) <= 1.01 * kSecond;
}

// Other readers print as many digits as they like; what they print is the number to that precision.
bool SameNumber(double number, const std::string& cell) {
    const double expected = std::strtod(cell.c_str(), nullptr);
    return std::abs(expected - number) <= 1e-6 * std::max(1.0, std::abs(number));
}

bool SameCell(const Row& row, int ordinal, const Column& column, const std::string& cell) {
    Text text;
    switch (column.type) {
        case ColumnType::Boolean:
            return cell == (row.NumberAt(ordinal) != 0 ? "1" : "0");
        case ColumnType::Date:
            return SameDate(row.NumberAt(ordinal), cell);
        case ColumnType::Text:
        case ColumnType::Memo:
            return row.TextAt(ordinal, text) && basic::ToUtf8(text) == cell;
        case ColumnType::Guid:
            return Lower(GuidText(row.Value(ordinal).As<basic::Guid>())) == Lower(cell);
        case ColumnType::Binary:
        case ColumnType::Ole:
        case ColumnType::Opaque:
            return Hex(row.Value(ordinal).As<basic::Binary>()) == Lower(cell);
        default:
            return SameNumber(row.NumberAt(ordinal), cell);
    }
}

bool IsBinary(const Column& column) {
    return column.type == ColumnType::Binary || column.type == ColumnType::Ole;
}

bool IsEmptyText(const Row& row, int ordinal, const Column& column) {
    Text text;
    return (column.type == ColumnType::Text || column.type == ColumnType::Memo) &&
           row.TextAt(ordinal, text) && text.empty();
}

// The field at a position, which moves to the comma or line end behind it.
CsvField TakeField(const std::string& content, std::size_t& at) {
    CsvField field;
    if (content[at] == '"') {
        field.emplace();
        for (++at; at < content.size(); ++at) {
            if (content[at] == '"' && (at + 1 == content.size() || content[at + 1] != '"')) {
                break;
            }
            at += content[at] == '"' ? 1 : 0;
            *field += content[at];
        }
    }
    const std::size_t end = std::min(content.find_first_of(",\n", at), content.size());
    if (!field && end > at) {
        field = content.substr(at, end - at);
    }
    at = end;
    return field;
}

}  // namespace

std::vector<CsvLine> ParseCsv(const std::string& content) {
    std::vector<CsvLine> lines;
    CsvLine line;
    for (std::size_t at = 0; at < content.size(); ++at) {
        line.push_back(TakeField(content, at));
        if (at == content.size() || content[at] == '\n') {
            lines.push_back(std::move(line));
            line.clear();
        } else if (at + 1 == content.size()) {
            line.emplace_back();  // nothing follows the last comma
            lines.push_back(std::move(line));
        }
    }
    return lines;
}

std::string Difference(const Table& table, const Row& row, const CsvLine& line, CsvLimits limits) {
    const auto& columns = table.Columns();
    if (line.size() != columns.size()) {
        return "line of " + std::to_string(line.size()) + " fields for " + std::to_string(columns.size()) +
               " columns";
    }
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const int ordinal = static_cast<int>(i);
        const CsvField& field = line[i];
        if (limits.noBinary && IsBinary(columns[i])) {
            continue;
        }
        if (limits.emptyIsNull && (!field || field->empty()) && IsEmptyText(row, ordinal, columns[i])) {
            continue;
        }
        const bool same =
            field ? !row.IsNull(ordinal) && SameCell(row, ordinal, columns[i], *field) : row.IsNull(ordinal);
        if (!same) {
            return "column " + basic::ToUtf8(columns[i].name) + ": expected " + field.value_or("Null");
        }
    }
    return {};
}

}  // namespace quardele::jet::test
