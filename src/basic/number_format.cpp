#include <basic/number_format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>

#include <basic/conversion.h>
#include <basic/date.h>
#include <basic/locale.h>

namespace quardele::basic {
namespace {

constexpr TextView kPlaceholders = u"0#";
constexpr std::size_t kMostDecimals = 15;
constexpr char16_t kThousands = u'\u00A0';

/// What a pattern asks for.
struct Layout {
    Text before;
    Text behind;
    std::size_t wholeDigits = 0;    ///< at least
    std::size_t leastDecimals = 0;  ///< zeros shown
    std::size_t mostDecimals = 0;
    bool thousands = false;
    bool percent = false;
};

Layout LayoutOf(TextView pattern) {
    Layout layout;
    const std::size_t first = pattern.find_first_of(kPlaceholders);
    const std::size_t last = pattern.find_last_of(kPlaceholders);
    layout.before = pattern.substr(0, first);
    layout.behind = pattern.substr(last + 1);
    layout.percent = pattern.find(u'%') != TextView::npos;
    bool decimals = false;
    for (const char16_t unit : pattern.substr(first, last - first + 1)) {
        if (unit == u'.') {
            decimals = true;
        } else if (unit == u',') {
            layout.thousands = true;
        } else if (kPlaceholders.find(unit) == TextView::npos) {
            continue;
        } else if (!decimals) {
            layout.wholeDigits += unit == u'0' ? 1 : 0;
        } else if (layout.mostDecimals < kMostDecimals) {
            ++layout.mostDecimals;
            layout.leastDecimals = unit == u'0' ? layout.mostDecimals : layout.leastDecimals;
        }
    }
    return layout;
}

/// The digits with a fixed number of decimals, halves away from zero.
std::string FixedDigits(double number, std::size_t decimals) {
    const double scale = std::pow(10.0, static_cast<double>(decimals));
    const double scaled = number * scale;
    const double rounded = std::fabs(scaled) < 1e15 ? std::round(scaled) / scale : number;
    std::array<char, 400> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), rounded,
                                   std::chars_format::fixed, static_cast<int>(decimals));
    return std::string(digits.data(), end.ptr);
}

Text WholePart(std::string digits, const Layout& layout) {
    if (digits == "0" && layout.wholeDigits == 0) {
        digits.clear();
    }
    if (digits.size() < layout.wholeDigits) {
        digits.insert(0, layout.wholeDigits - digits.size(), '0');
    }
    Text text;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (layout.thousands && i > 0 && (digits.size() - i) % 3 == 0) {
            text += kThousands;
        }
        text += static_cast<char16_t>(digits[i]);
    }
    return text;
}

Text NumberPattern(double number, TextView pattern) {
    const Layout layout = LayoutOf(pattern);
    const std::string digits =
        FixedDigits(std::fabs(number) * (layout.percent ? 100 : 1), layout.mostDecimals);
    const std::size_t point = std::min(digits.find('.'), digits.size());
    std::string decimals = point < digits.size() ? digits.substr(point + 1) : std::string();
    while (decimals.size() > layout.leastDecimals && decimals.back() == '0') {
        decimals.pop_back();
    }
    Text text = number < 0 ? u"-" : u"";
    text += layout.before + WholePart(digits.substr(0, point), layout);
    if (!decimals.empty()) {
        text += SessionLocale().decimalSeparator + Text(decimals.begin(), decimals.end());
    }
    return text + layout.behind;
}

}  // namespace

Text FormatValue(const Variant& value, TextView pattern) {
    if (value.IsNull() || pattern.find_first_of(kPlaceholders) == TextView::npos) {
        return Format(value, pattern);
    }
    if (value.IsText() && !IsNumeric(value)) {
        return value.As<Text>();
    }
    return NumberPattern(CDbl(value), pattern);
}

}  // namespace quardele::basic
