#include "date_pattern.h"

#include <algorithm>
#include <array>
#include <string>

#include <basic/conversion.h>
#include <basic/date.h>
#include <basic/locale.h>

#include "calendar_names.h"

namespace quardele::basic {
namespace {

constexpr TextView kLongDate = u"dddd d mmmm yyyy";
constexpr TextView kTime = u"hh:nn:ss";
constexpr int kNoon = 12;

/// What the places of a pattern are filled from.
struct Moment {
    Date date;
    WeekRules rules;
    bool halfDays;  ///< hours count to twelve
    CivilDate day = CivilOf(date);
    TimeOfDay time = TimeOf(date);
    Date start = DateOf(day.year, day.month, day.day);  ///< of the day

    [[nodiscard]] int Weekday() const { return basic::Weekday(start, kSunday) - 1; }
    [[nodiscard]] int Hour() const { return halfDays ? (time.hour + kNoon - 1) % kNoon + 1 : time.hour; }
};

Text Padded(int number, std::size_t width) {
    const std::string digits = std::to_string(number);
    Text text(width - std::min(width, digits.size()), u'0');
    return text.append(digits.begin(), digits.end());
}

/// Which half of the day it is: the part of `words` in front of its "/" or behind it.
Text HalfOfDay(const Moment& moment, TextView words) {
    const std::size_t middle = words.find(u'/');
    return Text(moment.time.hour < kNoon ? words.substr(0, middle) : words.substr(middle + 1));
}

struct Place {
    TextView letters;
    Text (*write)(const Moment& moment, TextView letters);
};

// The longer ones first: "mmmm" is no twice "mm".
constexpr std::array<Place, 27> kPlaces = {{
    {u"dddddd", [](const Moment& m, TextView) { return Format(m.date, kLongDate); }},
    {u"ddddd", [](const Moment& m, TextView) { return Format(m.date, SessionLocale().shortDate); }},
    {u"dddd", [](const Moment& m, TextView) { return Text(WeekdayName(m.Weekday())); }},
    {u"ddd", [](const Moment& m, TextView) { return Text(ShortWeekdayName(m.Weekday())); }},
    {u"dd", [](const Moment& m, TextView) { return Padded(m.day.day, 2); }},
    {u"d", [](const Moment& m, TextView) { return Padded(m.day.day, 1); }},
    {u"mmmm", [](const Moment& m, TextView) { return Text(MonthName(m.day.month)); }},
    {u"mmm", [](const Moment& m, TextView) { return Text(ShortMonthName(m.day.month)); }},
    {u"mm", [](const Moment& m, TextView) { return Padded(m.day.month, 2); }},
    {u"m", [](const Moment& m, TextView) { return Padded(m.day.month, 1); }},
    {u"yyyy", [](const Moment& m, TextView) { return Padded(m.day.year, 4); }},
    {u"yy", [](const Moment& m, TextView) { return Padded(m.day.year % 100, 2); }},
    {u"y", [](const Moment& m, TextView) { return Padded(DayOfYear(m.start), 1); }},
    {u"ww", [](const Moment& m, TextView) { return Padded(WeekOfYear(m.start, m.rules), 1); }},
    {u"w", [](const Moment& m, TextView) { return Padded(Weekday(m.start, m.rules.firstDay), 1); }},
    {u"q", [](const Moment& m, TextView) { return Padded((m.day.month - 1) / 3 + 1, 1); }},
    {u"hh", [](const Moment& m, TextView) { return Padded(m.Hour(), 2); }},
    {u"h", [](const Moment& m, TextView) { return Padded(m.Hour(), 1); }},
    {u"nn", [](const Moment& m, TextView) { return Padded(m.time.minute, 2); }},
    {u"n", [](const Moment& m, TextView) { return Padded(m.time.minute, 1); }},
    {u"ss", [](const Moment& m, TextView) { return Padded(m.time.second, 2); }},
    {u"s", [](const Moment& m, TextView) { return Padded(m.time.second, 1); }},
    {u"ttttt", [](const Moment& m, TextView) { return Format(m.date, kTime); }},
    {u"c", [](const Moment& m, TextView) { return CStr(m.date); }},
    {u"AM/PM", HalfOfDay},
    {u"A/P", HalfOfDay},
    // The workstation's own words for the halves of the day: French has none.
    {u"AMPM", [](const Moment&, TextView) { return Text(); }},
}};

/// The letters of a pattern from a place on, as far as they may mean parts of a date.
Text LettersFrom(const PatternUnits& section, std::size_t at) {
    constexpr std::size_t kLongestPlace = 6;
    Text letters;
    while (at < section.size() && !section[at].literal && letters.size() < kLongestPlace) {
        letters += section[at++].unit;
    }
    return letters;
}

const Place* PlaceAt(TextView letters) {
    const auto* found = std::find_if(kPlaces.begin(), kPlaces.end(), [letters](const Place& place) {
        return EqualNoCase(place.letters, letters.substr(0, place.letters.size()));
    });
    return found == kPlaces.end() ? nullptr : found;
}

/// Calls `take` with each place and its letters, and with each unit where there is none: null.
template <class Take>
void Walk(const PatternUnits& section, Take take) {
    for (std::size_t at = 0; at < section.size();) {
        const Text letters = LettersFrom(section, at);
        const Place* place = letters.empty() ? nullptr : PlaceAt(letters);
        take(section[at], place, TextView(letters).substr(0, place == nullptr ? 0 : place->letters.size()));
        at += place == nullptr ? 1 : place->letters.size();
    }
}

bool IsHalfOfDay(TextView letters) {
    return !letters.empty() && (letters.front() == u'a' || letters.front() == u'A');
}

}  // namespace

bool HasDatePlace(const PatternUnits& section) {
    bool found = false;
    Walk(section,
         [&found](const PatternUnit&, const Place* place, TextView) { found = found || place != nullptr; });
    return found;
}

Text WriteDate(Date date, const PatternUnits& section, const WeekRules& rules) {
    Moment moment{date, rules, false};
    Walk(section, [&moment](const PatternUnit&, const Place*, TextView letters) {
        moment.halfDays = moment.halfDays || IsHalfOfDay(letters);
    });
    Text text;
    bool behindHour = false;  // where "m" means minutes
    Walk(section, [&](const PatternUnit& unit, const Place* place, TextView letters) {
        if (place == nullptr) {
            text += unit.IsSign(u"/") ? SessionLocale().dateSeparator : unit.unit;
            return;
        }
        const bool minutes = behindHour && letters.size() <= 2 && (letters[0] == u'm' || letters[0] == u'M');
        text += minutes ? Padded(moment.time.minute, letters.size()) : place->write(moment, letters);
        behindHour = letters[0] == u'h' || letters[0] == u'H';
    });
    return text;
}

}  // namespace quardele::basic
