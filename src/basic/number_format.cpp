#include <basic/number_format.h>

#include <algorithm>

#include <basic/conversion.h>

#include "date_pattern.h"
#include "number_pattern.h"
#include "text_pattern.h"

namespace quardele::basic {
namespace {

using Sections = std::vector<PatternUnits>;

constexpr std::size_t kNullSection = 3;

template <class Predicate>
bool Any(const Sections& sections, Predicate predicate) {
    return std::any_of(sections.begin(), sections.end(), predicate);
}

bool IsForNumbers(const Sections& sections) {
    return Any(sections, [](const PatternUnits& section) { return HasSign(section, kDigitSigns); });
}

bool IsForTexts(const Sections& sections) {
    return Any(sections, [](const PatternUnits& section) { return HasSign(section, kTextSigns); });
}

Text Number(const Variant& value, const Sections& sections) {
    if (value.IsNull()) {
        return kNullSection < sections.size() ? WriteNumber({}, false, sections[kNullSection]) : Text();
    }
    const double number = CDbl(value);
    const std::size_t wanted = number < 0 ? 1 : (number == 0 ? 2 : 0);
    const bool own = wanted < sections.size() && !sections[wanted].empty();
    const Variant exact = value.IsText() ? Variant(number) : value;
    return WriteNumber(DigitsOf(exact), number < 0 && !own, sections[own ? wanted : 0]);
}

Text DateOrItself(const Variant& value, const PatternUnits& section, const WeekRules& rules) {
    if (value.IsText() && !IsDate(value)) {
        return value.As<Text>();
    }
    return WriteDate(CDate(value), section, rules);
}

Text Characters(const Variant& value, const Sections& sections) {
    const Text text = Joined(value);
    const bool second = text.empty() && sections.size() > 1;
    if (value.IsNull() && !second) {
        return {};
    }
    return WriteText(text, sections[second ? 1 : 0]);
}

}  // namespace

Text FormatValue(const Variant& value, TextView pattern, const WeekRules& rules) {
    if (pattern.empty()) {
        return Joined(value);
    }
    const Sections sections = SectionsOf(pattern);
    const bool isNumber = value.IsNull() || value.IsDate() || IsNumeric(value);
    if (IsForNumbers(sections)) {
        return isNumber ? Number(value, sections) : Joined(value);
    }
    if (HasDatePlace(sections.front())) {
        return value.IsNull() || value.IsEmpty() ? Text() : DateOrItself(value, sections.front(), rules);
    }
    return IsForTexts(sections) || !isNumber ? Characters(value, sections) : Number(value, sections);
}

}  // namespace quardele::basic
