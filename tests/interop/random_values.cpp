#include "random_values.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>

#include <jet/collation.h>

namespace quardele::jet::test {

namespace {

using basic::TextView;

/// Letters of texts that may be keys.
constexpr std::array<TextView, 4> kKeyLetters = {u"abcdefghijklmnopqrstuvwxyzABCXYZ", u"0123456789 -'.,;/+()",
                                                 u"éèêàùçÉÈÀôöüßœŒæ", u"abc ABC éà -'"};

/// And of those that need no key: quotes and line ends, other scripts, a unit with a low byte of zero, pairs
/// of surrogates.
constexpr std::array<TextView, 7> kLetters = {
    u"abcdefghijklmnop ", u"\"',;\t\r\n\\{}",       u"éèêàùçÿþß¡¿", u"αβγδεζΩΨ",
    u"МирЖдлякирилл",     u"\u0100\u0200\u3000abc", u"漢字かなカナ"};
constexpr TextView kSurrogates = u"\U0001F697\U0001F527";

void AppendPair(Random& random, Text& text) {
    text += kSurrogates.substr(random.Below(kSurrogates.size() / 2) * 2, 2);
}

Text FreeText(Random& random, std::size_t length) {
    const TextView letters = random.Pick(kLetters);
    Text text;
    while (text.size() < length) {
        if (random.Chance(2) && text.size() + 2 <= length) {
            AppendPair(random, text);
        } else if (random.Chance(5)) {
            text += random.Pick(random.Pick(kLetters));
        } else {
            text += random.Pick(letters);
        }
    }
    return text;
}

Text KeyText(Random& random, std::size_t length) {
    Text text;
    while (text.size() < length) {
        text += random.Pick(random.Pick(kKeyLetters));
    }
    return HasSortKey(text) ? text : Text(length, u'k');
}

std::size_t TextLength(Random& random, int longest) {
    const auto limit = static_cast<std::size_t>(longest);
    return random.Chance(8) ? limit : random.Below(std::min<std::size_t>(limit, 40) + 1);
}

/// In bytes.
std::size_t LongLength(Random& random) {
    switch (random.Below(8)) {
        case 0:
            return random.Below(120000);
        case 1:
        case 2:
            return static_cast<std::size_t>(random.Between(4040, 4110));
        case 3:
            return random.Below(12000);
        case 4:
        case 5:
            return static_cast<std::size_t>(random.Between(50, 80));
        default:
            return random.Below(50);
    }
}

basic::Binary Bytes(Random& random, std::size_t length) {
    basic::Binary bytes(length);
    std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<std::uint8_t>(random.Bits()); });
    return bytes;
}

/// Small numbers, any, and the ends.
template <class Integer>
Integer RandomInteger(Random& random) {
    switch (random.Below(8)) {
        case 0:
            return std::numeric_limits<Integer>::min();
        case 1:
            return std::numeric_limits<Integer>::max();
        case 2:
        case 3:
            return static_cast<Integer>(random.Between(0, 20));
        default:
            return static_cast<Integer>(random.Bits());
    }
}

double RandomDouble(Random& random) {
    switch (random.Below(5)) {
        case 0:
            return 0;
        case 1:
            return random.Between(-1000, 1000) / 8.0;
        default:
            return std::ldexp(static_cast<double>(random.Bits() >> 11), random.Between(-150, 30)) *
                   (random.Chance(50) ? -1 : 1);
    }
}

float RandomSingle(Random& random) {
    return random.Chance(30) ? static_cast<float>(random.Between(-1000, 1000)) / 8.0F
                             : std::ldexp(static_cast<float>(random.Bits() >> 40), random.Between(-80, 60));
}

/// A day of any year, or one of our days, with or without a time.
basic::Date RandomDate(Random& random) {
    constexpr double kSecondsOfDay = 86400;
    const double day = random.Chance(10) ? random.Between(-657434, 2958465) : random.Between(0, 60000);
    const double time = random.Chance(50) ? 0 : random.Between(0, 86399) / kSecondsOfDay;
    return {day < 0 ? day - time : day + time};
}

basic::Decimal RandomDecimal(Random& random, const Column& column) {
    basic::Decimal decimal{.negative = random.Chance(30), .scale = column.scale, .magnitude = {}};
    const int digits = random.Between(0, std::min<int>(column.precision, 18));
    std::uint64_t number = random.Bits() % static_cast<std::uint64_t>(std::llround(std::pow(10.0, digits)));
    decimal.magnitude[3] = static_cast<std::uint32_t>(number);
    decimal.magnitude[2] = static_cast<std::uint32_t>(number >> 32);
    decimal.negative = decimal.negative && number != 0;
    return decimal;
}

basic::Guid RandomGuid(Random& random) {
    basic::Guid guid;
    std::generate(guid.bytes.begin(), guid.bytes.end(),
                  [&] { return static_cast<std::uint8_t>(random.Bits()); });
    return guid;
}

Variant RandomText(Random& random, const Column& column, const ValueLimits& limits) {
    const int longest = std::min(column.size, limits.longestText);
    const std::size_t length = TextLength(random, longest);
    return limits.keyText ? KeyText(random, length) : FreeText(random, length);
}

Variant RandomMemo(Random& random, const ValueLimits& limits) {
    return limits.keyText ? KeyText(random, random.Below(120)) : FreeText(random, LongLength(random) / 2);
}

Variant RandomBytes(Random& random, const Column& column, const ValueLimits& limits) {
    const int longest = std::min(column.size, limits.longestText);
    return Bytes(random, static_cast<std::size_t>(random.Between(1, longest)));
}

}  // namespace

Variant RandomValue(Random& random, const Column& column, const ValueLimits& limits) {
    if (column.type != ColumnType::Boolean && !limits.noNull && random.Chance(12)) {
        return basic::Null();
    }
    switch (column.type) {
        case ColumnType::Boolean:
            return random.Chance(50);
        case ColumnType::Byte:
            return RandomInteger<std::uint8_t>(random);
        case ColumnType::Integer:
            return RandomInteger<std::int16_t>(random);
        case ColumnType::Long:
            return RandomInteger<std::int32_t>(random);
        case ColumnType::Currency:
            return basic::Currency{RandomInteger<std::int64_t>(random)};
        case ColumnType::Single:
            return RandomSingle(random);
        case ColumnType::Double:
            return RandomDouble(random);
        case ColumnType::Date:
            return RandomDate(random);
        case ColumnType::Numeric:
            return RandomDecimal(random, column);
        case ColumnType::Guid:
            return RandomGuid(random);
        case ColumnType::Text:
            return RandomText(random, column, limits);
        case ColumnType::Memo:
            return RandomMemo(random, limits);
        case ColumnType::Ole:
            return Bytes(random, LongLength(random) + 1);
        default:
            return RandomBytes(random, column, limits);
    }
}

}  // namespace quardele::jet::test
