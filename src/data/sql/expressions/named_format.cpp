#include "expressions/named_format.h"

#include <algorithm>
#include <iterator>

#include <basic/conversion.h>
#include <basic/date.h>
#include <basic/locale.h>
#include <basic/number_format.h>

namespace quardele::sql {
namespace {

Text GeneralDate(const Variant& value, TextView /*unused*/) {
    return basic::IsDate(value) || value.IsNumber() ? basic::CStr(basic::CDate(value)) : basic::CStr(value);
}

Text ShortDate(const Variant& value, TextView /*unused*/) {
    return basic::Format(value, basic::SessionLocale().shortDate);
}

Text DatePattern(const Variant& value, TextView pattern) {
    return basic::Format(value, pattern);
}

Text NumberPattern(const Variant& value, TextView pattern) {
    return basic::FormatValue(value, pattern);
}

Text GeneralNumber(const Variant& value, TextView /*unused*/) {
    return value.IsDate() ? basic::NumberText(basic::CDbl(value)) : basic::CStr(value);
}

/// The two words of `words`, separated by "/": for true and for false.
Text TruthWords(const Variant& value, TextView words) {
    if (!value.IsDate() && !basic::IsNumeric(value)) {
        return basic::CStr(value);
    }
    const std::size_t middle = words.find(u'/');
    return Text(basic::CDbl(value) != 0 ? words.substr(0, middle) : words.substr(middle + 1));
}

struct NamedFormat {
    TextView name;
    Text (*write)(const Variant& value, TextView detail);
    TextView detail;
};

constexpr NamedFormat kFormats[] = {
    {u"General Date", GeneralDate, {}},          {u"Long Date", DatePattern, u"dddd d mmmm yyyy"},
    {u"Medium Date", DatePattern, u"dd-mmm-yy"}, {u"Short Date", ShortDate, {}},
    {u"Long Time", DatePattern, u"hh:nn:ss"},    {u"Medium Time", DatePattern, u"hh:nn"},
    {u"Short Time", DatePattern, u"hh:nn"},      {u"General Number", GeneralNumber, {}},
    {u"Currency", NumberPattern, u"#,##0.00 €"}, {u"Fixed", NumberPattern, u"0.00"},
    {u"Standard", NumberPattern, u"#,##0.00"},   {u"Percent", NumberPattern, u"0.00%"},
    {u"Scientific", NumberPattern, u"0.00E+00"}, {u"Yes/No", TruthWords, u"Oui/Non"},
    {u"True/False", TruthWords, u"Vrai/Faux"},   {u"On/Off", TruthWords, u"Actif/Inactif"},
};

}  // namespace

std::optional<Text> FormatByName(const Variant& value, TextView name) {
    const auto* found =
        std::find_if(std::begin(kFormats), std::end(kFormats),
                     [name](const NamedFormat& format) { return basic::EqualNoCase(format.name, name); });
    if (found == std::end(kFormats)) {
        return std::nullopt;
    }
    return value.IsNull() ? Text() : found->write(value, found->detail);
}

}  // namespace quardele::sql
