#include "cell_text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdio>
#include <cstdlib>

#include <basic/date.h>

namespace quardele::jet::test {

namespace {

template <class... Values>
std::string Printed(const char* format, Values... values) {
    std::array<char, 64> buffer{};
    const int length = std::snprintf(buffer.data(), buffer.size(), format, values...);
    return {buffer.data(), static_cast<std::size_t>(length)};
}

template <class Bytes>
std::string Hex(const Bytes& bytes, const char* format) {
    std::string digits;
    for (const auto byte : bytes) {
        digits += Printed(format, static_cast<unsigned>(static_cast<unsigned char>(byte)));
    }
    return digits;
}

std::string Upper(const basic::Binary& bytes) {
    return Hex(bytes, "%02X");
}

std::string GuidText(const basic::Guid& guid) {
    const auto group = [&guid](std::initializer_list<std::size_t> places) {
        basic::Binary bytes;
        for (const std::size_t place : places) {
            bytes.push_back(guid.bytes[place]);
        }
        return Upper(bytes);
    };
    return "{" + group({3, 2, 1, 0}) + "-" + group({5, 4}) + "-" + group({7, 6}) + "-" + group({8, 9}) + "-" +
           group({10, 11, 12, 13, 14, 15}) + "}";
}

/// The digits of a whole number with so many of them behind a point.
std::string WithDecimals(std::string digits, bool negative, std::size_t decimals) {
    if (digits.size() <= decimals) {
        digits.insert(0, decimals + 1 - digits.size(), '0');
    }
    if (decimals > 0) {
        digits.insert(digits.size() - decimals, ".");
    }
    return negative ? "-" + digits : digits;
}

std::string AmountText(basic::Currency amount) {
    std::string digits = std::to_string(amount.tenThousandths);
    const bool negative = digits.front() == '-';
    return WithDecimals(negative ? digits.substr(1) : digits, negative, 4);
}

/// Divides a number by ten, most significant word first, and gives the remainder.
unsigned DivideByTen(std::array<std::uint32_t, 4>& number) {
    std::uint64_t rest = 0;
    for (std::uint32_t& word : number) {
        const std::uint64_t part = rest << 32 | word;
        word = static_cast<std::uint32_t>(part / 10);
        rest = part % 10;
    }
    return static_cast<unsigned>(rest);
}

std::string DecimalText(const basic::Decimal& decimal) {
    auto magnitude = decimal.magnitude;
    std::string digits;
    do {
        digits.insert(digits.begin(), static_cast<char>('0' + DivideByTen(magnitude)));
    } while (magnitude != std::array<std::uint32_t, 4>{});
    return WithDecimals(digits, decimal.negative, decimal.scale);
}

std::string MomentText(basic::Date date) {
    const basic::CivilDate day = basic::CivilOf(date);
    const basic::TimeOfDay time = basic::TimeOf(date);
    return Printed("%04d-%02d-%02d %02d:%02d:%02d", day.year, day.month, day.day, time.hour, time.minute,
                   time.second);
}

std::string NumberBits(double number) {
    return Printed("%016llx", static_cast<unsigned long long>(std::bit_cast<std::uint64_t>(number)));
}

std::string PlainText(ColumnType type, const Variant& value) {
    switch (type) {
        case ColumnType::Boolean:
            return value.As<bool>() ? "1" : "0";
        case ColumnType::Byte:
            return std::to_string(value.As<std::uint8_t>());
        case ColumnType::Integer:
            return std::to_string(value.As<std::int16_t>());
        case ColumnType::Long:
            return std::to_string(value.As<std::int32_t>());
        case ColumnType::Currency:
            return AmountText(value.As<basic::Currency>());
        case ColumnType::Numeric:
            return DecimalText(value.As<basic::Decimal>());
        default:
            return basic::ToUtf8(value.As<Text>());
    }
}

CellText ExportedBinary(const basic::Binary& bytes) {
    const auto end = std::find(bytes.begin(), bytes.end(), std::uint8_t{0});
    return end == bytes.begin() ? CellText() : Upper({bytes.begin(), end});
}

std::string ExportedGuid(const basic::Guid& guid) {
    const std::string text = GuidText(guid);
    return text.substr(0, text.rfind('-')) + text.substr(text.rfind('-') + 1);
}

CellText ExportedText(const Text& text) {
    constexpr auto kIsSurrogate = [](char16_t unit) { return unit >= 0xD800 && unit <= 0xDFFF; };
    Text shown = text.substr(0, text.find(u'\0'));
    std::replace_if(shown.begin(), shown.end(), kIsSurrogate, u'?');
    return shown.empty() ? CellText() : basic::ToUtf8(shown);
}

std::string ExportedDate(basic::Date date) {
    constexpr double kLastDay = 1e6;
    return date.days < 0 || date.days > kLastDay ? "1900-01-00 00:00:00" : MomentText(date);
}

}  // namespace

CellText ExactText(const Column& column, const Variant& value) {
    if (value.IsNull()) {
        return {};
    }
    switch (column.type) {
        case ColumnType::Single:
            return NumberBits(static_cast<double>(value.As<float>()));
        case ColumnType::Double:
            return NumberBits(value.As<double>());
        case ColumnType::Date:
            return MomentText(value.As<basic::Date>());
        case ColumnType::Guid:
            return GuidText(value.As<basic::Guid>());
        case ColumnType::Binary:
        case ColumnType::Ole:
            return Hex(value.As<basic::Binary>(), "%02x");
        default:
            return PlainText(column.type, value);
    }
}

CellText ExportText(const Column& column, const Variant& value) {
    if (value.IsNull()) {
        return {};
    }
    switch (column.type) {
        case ColumnType::Single:
            return Printed("%.8g", static_cast<double>(value.As<float>()));
        case ColumnType::Double:
            return Printed("%.16g", value.As<double>());
        case ColumnType::Date:
            return ExportedDate(value.As<basic::Date>());
        case ColumnType::Text:
        case ColumnType::Memo:
            return ExportedText(value.As<Text>());
        case ColumnType::Guid:
            return Hex(ExportedGuid(value.As<basic::Guid>()), "%02X");
        case ColumnType::Binary:
            return ExportedBinary(value.As<basic::Binary>());
        case ColumnType::Ole:
            return Upper(value.As<basic::Binary>());
        default:
            return PlainText(column.type, value);
    }
}

std::string SchemaType(const Column& column) {
    switch (column.type) {
        case ColumnType::Boolean:
            return "Boolean";
        case ColumnType::Byte:
            return "Byte";
        case ColumnType::Integer:
            return "Integer";
        case ColumnType::Long:
            return "Long Integer";
        case ColumnType::Currency:
            return "Currency";
        case ColumnType::Single:
            return "Single";
        case ColumnType::Double:
            return "Double";
        case ColumnType::Date:
            return "DateTime";
        case ColumnType::Binary:
            return "Binary";
        case ColumnType::Text:
            return Printed("Text (%d)", column.size);
        case ColumnType::Ole:
            return "OLE (255)";
        case ColumnType::Memo:
            return "Memo/Hyperlink (255)";
        case ColumnType::Guid:
            return "Replication ID";
        case ColumnType::Numeric:
            return Printed("Numeric (%d, %d)", int{column.precision}, int{column.scale});
        case ColumnType::Opaque:
            break;
    }
    return "Unknown";
}

}  // namespace quardele::jet::test
