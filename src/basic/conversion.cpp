#include <basic/conversion.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <type_traits>

#include <basic/date.h>
#include <basic/locale.h>
#include <basic/runtime_error.h>

#include "number_reader.h"
#include "number_text.h"

namespace quardele::basic {
namespace {

constexpr double kTenThousand = 10000;
/// 01/01/0100 and the day behind 31/12/9999, as days.
constexpr double kFirstDay = -657434;
constexpr double kBehindLastDay = 2958466;

/// The text without what counts as blank at its ends: blanks, tabs and line ends.
TextView Stripped(TextView text) {
    constexpr TextView kBlanks = u" \t\n\v\f\r";
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

/// The number that the whole of a text spells.
std::optional<WrittenNumber> NumberIn(TextView text) {
    text = Stripped(text);
    auto number = ReadNumber(text, SessionLocale().decimalSeparator);
    if (number && number->length != text.size()) {
        number.reset();
    }
    return number;
}

WrittenNumber RequireNumber(TextView text) {
    if (auto number = NumberIn(text)) {
        return *number;
    }
    throw RuntimeError(error::kTypeMismatch);
}

double RequireFinite(double value) {
    if (!std::isfinite(value)) {
        throw RuntimeError(error::kOverflow);
    }
    return value;
}

/// Halves to the even neighbour, whatever rounding mode the process has.
double RoundHalfEven(double value) {
    const double below = std::floor(value);
    const double rest = value - below;
    const bool up = rest > 0.5 || (rest == 0.5 && std::fmod(below, 2) != 0);
    return up ? below + 1 : below;
}

template <class Integer>
Integer RoundTo(double value) {
    constexpr auto kLeast = static_cast<double>(std::numeric_limits<Integer>::min());
    const double rounded = RoundHalfEven(value);
    if (rounded >= kLeast && rounded < -kLeast) {
        return static_cast<Integer>(rounded);
    }
    throw RuntimeError(error::kOverflow);
}

Text DateText(Date date) {
    const TimeOfDay time = TimeOf(date);
    const bool hasTime = time.hour != 0 || time.minute != 0 || time.second != 0;
    const bool hasDay = CivilOf(date) != CivilDate();
    Text text = hasDay ? Format(date, SessionLocale().shortDate) : Text();
    if (hasTime || !hasDay) {
        text += (hasDay ? u" " : u"") + Format(date, u"hh:nn:ss");
    }
    return text;
}

Text GuidText(const Guid& guid) {
    constexpr char16_t kHexDigits[] = u"0123456789ABCDEF";
    constexpr int kWrittenOrder[] = {3, 2, 1, 0, -1, 5, 4, -1, 7, 6, -1, 8, 9, -1, 10, 11, 12, 13, 14, 15};
    Text text = u"{";
    for (const int index : kWrittenOrder) {
        if (index < 0) {
            text += u'-';
            continue;
        }
        const std::uint8_t byte = guid.bytes[static_cast<std::size_t>(index)];
        text += kHexDigits[byte >> 4];
        text += kHexDigits[byte & 0x0F];
    }
    return text + u"}";
}

struct ToText {
    Text operator()(Empty /*value*/) const { return {}; }
    Text operator()(Null /*value*/) const { throw RuntimeError(error::kInvalidNull); }
    Text operator()(bool value) const { return value ? u"Vrai" : u"Faux"; }
    template <class Number>
    requires std::is_arithmetic_v<Number> Text operator()(Number value) const {
        return NumberText(static_cast<double>(value));
    }
    Text operator()(float value) const { return SingleText(value); }
    Text operator()(Currency value) const { return CurrencyText(value); }
    Text operator()(const Decimal& value) const { return DecimalText(value); }
    Text operator()(Date value) const { return DateText(value); }
    Text operator()(const Guid& value) const { return GuidText(value); }
    Text operator()(const Text& value) const { return value; }
    Text operator()(const Binary& /*value*/) const { throw RuntimeError(error::kTypeMismatch); }
};

struct ToNumber {
    std::optional<double> operator()(bool value) const { return value ? -1 : 0; }
    template <class Number>
    requires std::is_arithmetic_v<Number> std::optional<double>
    operator()(Number value) const { return static_cast<double>(value); }
    std::optional<double> operator()(Currency value) const {
        return static_cast<double>(value.tenThousandths) / kTenThousand;
    }
    std::optional<double> operator()(const Decimal& value) const { return DecimalValue(value); }
    std::optional<double> operator()(Date value) const { return value.days; }
    template <class Other>
    requires(!std::is_arithmetic_v<Other>) std::optional<double>
    operator()(const Other& /*value*/) const { return {}; }
};

std::optional<bool> TruthWord(TextView text) {
    text = Stripped(text);
    if (EqualNoCase(text, u"True") || EqualNoCase(text, u"Vrai")) {
        return true;
    }
    if (EqualNoCase(text, u"False") || EqualNoCase(text, u"Faux")) {
        return false;
    }
    return {};
}

}  // namespace

Text CStr(const Variant& value) {
    return std::visit(ToText(), value.Stored());
}

Text Joined(const Variant& value) {
    return value.IsNull() ? Text() : CStr(value);
}

std::optional<double> NumberOf(const Variant& value) {
    return std::visit(ToNumber(), value.Stored());
}

double CDbl(const Variant& value) {
    if (value.IsText()) {
        return RequireFinite(RequireNumber(value.As<Text>()).Value());
    }
    if (value.IsEmpty()) {
        return 0;
    }
    if (const auto number = NumberOf(value)) {
        return *number;
    }
    throw RuntimeError(value.IsNull() ? error::kInvalidNull : error::kTypeMismatch);
}

std::int16_t CInt(const Variant& value) {
    return RoundTo<std::int16_t>(CDbl(value));
}

std::int32_t CLng(const Variant& value) {
    return RoundTo<std::int32_t>(CDbl(value));
}

bool CBool(const Variant& value) {
    if (value.IsText()) {
        if (const auto truth = TruthWord(value.As<Text>())) {
            return *truth;
        }
    }
    return CDbl(value) != 0;
}

Date CDate(const Variant& value) {
    if (value.IsText()) {
        if (const auto date = ParseDate(value.As<Text>())) {
            return *date;
        }
        throw RuntimeError(error::kTypeMismatch);
    }
    const double days = CDbl(value);
    if (days > kFirstDay - 1 && days < kBehindLastDay) {
        return Date{days};
    }
    throw RuntimeError(error::kOverflow);
}

Currency CCur(const Variant& value) {
    if (value.Is<Currency>()) {
        return value.As<Currency>();
    }
    if (!value.IsText()) {
        return Currency{RoundTo<std::int64_t>(CDbl(value) * kTenThousand)};
    }
    if (const auto amount = RequireNumber(value.As<Text>()).TenThousandths()) {
        return Currency{*amount};
    }
    throw RuntimeError(error::kOverflow);
}

double Val(TextView text) {
    Text dense;
    constexpr TextView kPassedOver = u" \t\n";
    std::copy_if(text.begin(), text.end(), std::back_inserter(dense),
                 [kPassedOver](char16_t c) { return kPassedOver.find(c) == TextView::npos; });
    if (const auto number = ReadNumberOfBase(dense)) {
        return RequireFinite(*number);
    }
    const auto number = ReadNumber(dense, u'.');
    return number ? RequireFinite(number->Value()) : 0;
}

bool IsNumeric(const Variant& value) {
    if (value.IsText()) {
        const auto number = NumberIn(value.As<Text>());
        return number && std::isfinite(number->Value());
    }
    return value.IsEmpty() || value.IsNumber();
}

bool IsDate(const Variant& value) {
    return value.IsDate() || (value.IsText() && ParseDate(value.As<Text>()).has_value());
}

}  // namespace quardele::basic
