#include <basic/decimal.h>

namespace quardele::basic {
namespace {

constexpr int kMostDigits = 28;

void AppendDigit(std::uint32_t digit, Decimal& decimal) {
    std::uint64_t carry = digit;
    for (std::size_t i = decimal.magnitude.size(); i-- > 0;) {
        carry += std::uint64_t{decimal.magnitude[i]} * 10;
        decimal.magnitude[i] = static_cast<std::uint32_t>(carry);
        carry >>= 32;
    }
}

}  // namespace

std::optional<Decimal> ReadDecimal(TextView written, char16_t point) {
    const Text trimmed = Trim(written);
    TextView text = trimmed;
    Decimal decimal;
    decimal.negative = text.starts_with(u'-');
    text.remove_prefix(decimal.negative || text.starts_with(u'+') ? 1 : 0);
    bool hasPoint = false;
    bool hasDigit = false;
    int significant = 0;
    for (const char16_t unit : text) {
        if (!hasPoint && (unit == point || unit == u'.')) {
            hasPoint = true;
            continue;
        }
        if (unit < u'0' || unit > u'9') {
            return std::nullopt;
        }
        hasDigit = true;
        significant += significant > 0 || unit != u'0' ? 1 : 0;
        if (hasPoint) {
            ++decimal.scale;
        }
        if (significant > kMostDigits || decimal.scale > kMostDigits) {
            return std::nullopt;
        }
        AppendDigit(static_cast<std::uint32_t>(unit - u'0'), decimal);
    }
    decimal.negative = decimal.negative && significant > 0;
    return hasDigit ? std::optional(decimal) : std::nullopt;
}

}  // namespace quardele::basic
