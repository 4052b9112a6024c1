#include "csv_writer.h"

#include <algorithm>
#include <array>
#include <charconv>

#include <basic/date.h>
#include <basic/variant.h>

namespace quardele::mdb {

namespace {

constexpr std::size_t kFlushAt = std::size_t{1} << 16;
constexpr std::string_view kHexDigits = "0123456789abcdef";

template <class Number>
void AppendNumber(Number value, std::string& line) {
    std::array<char, 40> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    line.append(digits.data(), end.ptr);
}

// A number of at most four digits, with zeros in front.
void AppendDigits(int value, int digits, std::string& line) {
    std::array<char, 4> text{};
    for (int i = digits; i-- > 0; value /= 10) {
        text[static_cast<std::size_t>(i)] = static_cast<char>('0' + value % 10);
    }
    line.append(text.data(), static_cast<std::size_t>(digits));
}

constexpr bool NeedsQuotes(char unit) {
    return unit == ',' || unit == '"' || unit == '\n' || unit == '\r';
}

bool IsDate(double days) {
    constexpr double kFirst = -657434;  // 01/01/0100
    constexpr double kEnd = 2958466;    // behind 31/12/9999
    return days > kFirst - 1 && days < kEnd - 0.5 / 86400;
}

void AppendDate(basic::Date date, std::string& line) {
    const basic::CivilDate day = basic::CivilOf(date);
    const basic::TimeOfDay time = basic::TimeOf(date);
    AppendDigits(day.year, 4, line);
    line += '-';
    AppendDigits(day.month, 2, line);
    line += '-';
    AppendDigits(day.day, 2, line);
    line += ' ';
    AppendDigits(time.hour, 2, line);
    line += ':';
    AppendDigits(time.minute, 2, line);
    line += ':';
    AppendDigits(time.second, 2, line);
}

// Digits with a point before the last `scale` of them.
void AppendScaled(std::string digits, bool negative, std::size_t scale, std::string& line) {
    if (digits.size() <= scale) {
        digits.insert(0, scale + 1 - digits.size(), '0');
    }
    if (scale > 0) {
        digits.insert(digits.size() - scale, 1, '.');
    }
    line += negative ? "-" : "";
    line += digits;
}

std::string DigitsOf(basic::Decimal decimal) {
    std::string digits;
    bool isZero = false;
    while (!isZero) {
        std::uint64_t remainder = 0;
        isZero = true;
        for (std::uint32_t& word : decimal.magnitude) {
            const std::uint64_t part = remainder << 32 | word;
            word = static_cast<std::uint32_t>(part / 10);
            remainder = part % 10;
            isZero = isZero && word == 0;
        }
        digits.insert(digits.begin(), static_cast<char>('0' + remainder));
    }
    return digits;
}

void AppendCurrency(basic::Currency amount, std::string& line) {
    const bool negative = amount.tenThousandths < 0;
    const auto bits = static_cast<std::uint64_t>(amount.tenThousandths);
    AppendScaled(std::to_string(negative ? ~bits + 1 : bits), negative, 4, line);
}

void AppendHex(std::span<const std::uint8_t> bytes, std::string& line) {
    for (const std::uint8_t byte : bytes) {
        line += kHexDigits[byte >> 4];
        line += kHexDigits[byte & 0x0F];
    }
}

// As people write them: the first three groups are numbers, stored little-endian.
void AppendGuid(const basic::Guid& guid, std::string& line) {
    constexpr std::array<std::size_t, 16> kOrder = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
    line += '{';
    for (std::size_t i = 0; i < kOrder.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) {
            line += '-';
        }
        std::string digits;
        AppendHex(std::span(&guid.bytes[kOrder[i]], 1), digits);
        for (const char digit : digits) {
            line += digit >= 'a' ? static_cast<char>(digit - 'a' + 'A') : digit;
        }
    }
    line += '}';
}

}  // namespace

void CsvWriter::WriteHeader(const jet::Table& table) {
    const auto& columns = table.Columns();
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (i > 0) {
            buffer_ += ',';
        }
        AppendText(basic::ToUtf8(columns[i].name));
    }
    EndLine();
}

void CsvWriter::WriteRow(const jet::Table& table, const jet::Row& row) {
    const auto& columns = table.Columns();
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (i > 0) {
            buffer_ += ',';
        }
        Append(row, static_cast<int>(i), columns[i]);
    }
    EndLine();
}

void CsvWriter::EndLine() {
    buffer_ += '\n';
    if (buffer_.size() >= kFlushAt) {
        Flush();
    }
}

void CsvWriter::Flush() {
    out_.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
    buffer_.clear();
}

void CsvWriter::Append(const jet::Row& row, int ordinal, const jet::Column& column) {
    if (row.IsNull(ordinal)) {
        return;
    }
    switch (column.type) {
        case jet::ColumnType::Boolean:
            buffer_ += row.NumberAt(ordinal) != 0 ? '1' : '0';
            return;
        case jet::ColumnType::Text:
        case jet::ColumnType::Memo:
            utf8_.clear();
            row.AppendUtf8At(ordinal, utf8_);
            AppendText(utf8_);
            return;
        case jet::ColumnType::Date:
            AppendMoment(row.NumberAt(ordinal));
            return;
        case jet::ColumnType::Double:
            AppendNumber(row.NumberAt(ordinal), buffer_);
            return;
        case jet::ColumnType::Single:
            AppendNumber(static_cast<float>(row.NumberAt(ordinal)), buffer_);
            return;
        case jet::ColumnType::Byte:
        case jet::ColumnType::Integer:
        case jet::ColumnType::Long:
            AppendNumber(static_cast<std::int64_t>(row.NumberAt(ordinal)), buffer_);
            return;
        default:
            break;
    }
    const basic::Variant value = row.Value(ordinal);
    if (value.Is<basic::Currency>()) {
        AppendCurrency(value.As<basic::Currency>(), buffer_);
    } else if (value.Is<basic::Decimal>()) {
        const auto& decimal = value.As<basic::Decimal>();
        AppendScaled(DigitsOf(decimal), decimal.negative, decimal.scale, buffer_);
    } else if (value.Is<basic::Guid>()) {
        AppendGuid(value.As<basic::Guid>(), buffer_);
    } else if (value.Is<basic::Binary>()) {
        AppendHex(value.As<basic::Binary>(), buffer_);
    }
}

// A file may hold what is no date; the number itself says more than an error.
void CsvWriter::AppendMoment(double days) {
    if (IsDate(days)) {
        AppendDate({days}, buffer_);
    } else {
        AppendNumber(days, buffer_);
    }
}

// A text is put between quotes when a reader could mistake it: for Null, for two fields, for two lines.
void CsvWriter::AppendText(std::string_view utf8) {
    if (!utf8.empty() && std::none_of(utf8.begin(), utf8.end(), NeedsQuotes)) {
        buffer_ += utf8;
        return;
    }
    buffer_ += '"';
    for (const char unit : utf8) {
        if (unit == '"') {
            buffer_ += '"';
        }
        buffer_ += unit;
    }
    buffer_ += '"';
}

}  // namespace quardele::mdb
