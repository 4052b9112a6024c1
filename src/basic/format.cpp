#include <algorithm>
#include <array>
#include <chrono>
#include <string>

#include <basic/conversion.h>
#include <basic/date.h>
#include <basic/locale.h>

#include "calendar_names.h"

namespace quardele::basic {
namespace {

/// What a date's placeholders are filled from.
struct Moment {
    explicit Moment(Date date) : day(CivilOf(date)), time(TimeOf(date)) {}

    CivilDate day;
    TimeOfDay time;
};

int WeekdayOf(const CivilDate& day) {
    const std::chrono::sys_days date = std::chrono::year(day.year) /
                                       std::chrono::month(static_cast<unsigned>(day.month)) /
                                       std::chrono::day(static_cast<unsigned>(day.day));
    return static_cast<int>(std::chrono::weekday(date).c_encoding());
}

Text Padded(int number, std::size_t width) {
    const std::string digits = std::to_string(number);
    Text text(width - std::min(width, digits.size()), u'0');
    return text.append(digits.begin(), digits.end());
}

struct Placeholder {
    TextView letters;
    Text (*write)(const Moment& moment);
};

// The longer ones first: "mmmm" is no twice "mm".
constexpr std::array<Placeholder, 16> kPlaceholders = {{
    {u"dddd", [](const Moment& m) { return Text(WeekdayName(WeekdayOf(m.day))); }},
    {u"ddd", [](const Moment& m) { return Text(ShortWeekdayName(WeekdayOf(m.day))); }},
    {u"dd", [](const Moment& m) { return Padded(m.day.day, 2); }},
    {u"d", [](const Moment& m) { return Padded(m.day.day, 1); }},
    {u"mmmm", [](const Moment& m) { return Text(MonthName(m.day.month)); }},
    {u"mmm", [](const Moment& m) { return Text(ShortMonthName(m.day.month)); }},
    {u"mm", [](const Moment& m) { return Padded(m.day.month, 2); }},
    {u"m", [](const Moment& m) { return Padded(m.day.month, 1); }},
    {u"yyyy", [](const Moment& m) { return Padded(m.day.year, 4); }},
    {u"yy", [](const Moment& m) { return Padded(m.day.year % 100, 2); }},
    {u"hh", [](const Moment& m) { return Padded(m.time.hour, 2); }},
    {u"h", [](const Moment& m) { return Padded(m.time.hour, 1); }},
    {u"nn", [](const Moment& m) { return Padded(m.time.minute, 2); }},
    {u"n", [](const Moment& m) { return Padded(m.time.minute, 1); }},
    {u"ss", [](const Moment& m) { return Padded(m.time.second, 2); }},
    {u"s", [](const Moment& m) { return Padded(m.time.second, 1); }},
}};

const Placeholder* PlaceholderAt(TextView pattern) {
    const auto* found =
        std::find_if(kPlaceholders.begin(), kPlaceholders.end(), [pattern](const Placeholder& p) {
            return EqualNoCase(p.letters, pattern.substr(0, p.letters.size()));
        });
    return found == kPlaceholders.end() ? nullptr : found;
}

}  // namespace

Text Format(Date date, TextView pattern) {
    const Moment moment(date);
    Text text;
    while (!pattern.empty()) {
        const Placeholder* placeholder = PlaceholderAt(pattern);
        if (placeholder != nullptr) {
            text += placeholder->write(moment);
        } else {
            text += pattern.front() == u'/' ? SessionLocale().dateSeparator : pattern.front();
        }
        pattern.remove_prefix(placeholder != nullptr ? placeholder->letters.size() : 1);
    }
    return text;
}

Text Format(const Variant& value, TextView pattern) {
    if (value.IsEmpty() || value.IsNull()) {
        return {};
    }
    if (value.IsText() && !IsDate(value)) {
        return value.As<Text>();
    }
    return Format(CDate(value), pattern);
}

}  // namespace quardele::basic
