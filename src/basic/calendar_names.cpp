#include "calendar_names.h"

#include <algorithm>
#include <array>

namespace quardele::basic {
namespace {

constexpr std::array<TextView, 12> kMonths = {u"janvier",   u"février", u"mars",     u"avril",
                                              u"mai",       u"juin",    u"juillet",  u"août",
                                              u"septembre", u"octobre", u"novembre", u"décembre"};
constexpr std::array<TextView, 12> kShortMonths = {u"janv.", u"févr.", u"mars",  u"avr.", u"mai",  u"juin",
                                                   u"juil.", u"août",  u"sept.", u"oct.", u"nov.", u"déc."};
constexpr std::array<TextView, 12> kEnglishMonths = {u"january",   u"february", u"march",    u"april",
                                                     u"may",       u"june",     u"july",     u"august",
                                                     u"september", u"october",  u"november", u"december"};
constexpr std::array<TextView, 7> kWeekdays = {u"dimanche", u"lundi",    u"mardi", u"mercredi",
                                               u"jeudi",    u"vendredi", u"samedi"};
constexpr std::array<TextView, 7> kShortWeekdays = {u"dim.", u"lun.", u"mar.", u"mer.",
                                                    u"jeu.", u"ven.", u"sam."};

constexpr std::size_t kFewestLetters = 3;

/// Small letters without the accents that month names have.
Text Plain(TextView name) {
    Text plain = LCase(name);
    std::replace(plain.begin(), plain.end(), u'é', u'e');
    std::replace(plain.begin(), plain.end(), u'û', u'u');
    return plain;
}

}  // namespace

TextView MonthName(int month) {
    return kMonths.at(static_cast<std::size_t>(month - 1));
}
TextView ShortMonthName(int month) {
    return kShortMonths.at(static_cast<std::size_t>(month - 1));
}
TextView WeekdayName(int weekday) {
    return kWeekdays.at(static_cast<std::size_t>(weekday));
}
TextView ShortWeekdayName(int weekday) {
    return kShortWeekdays.at(static_cast<std::size_t>(weekday));
}

std::optional<int> MonthOfName(TextView name) {
    const Text plain = Plain(name);
    if (plain.size() < kFewestLetters) {
        return {};
    }
    std::optional<int> found;
    for (std::size_t i = 0; i < kMonths.size(); ++i) {
        if (!Plain(kMonths[i]).starts_with(plain) && !kEnglishMonths[i].starts_with(plain)) {
            continue;
        }
        if (found) {
            return {};
        }
        found = static_cast<int>(i) + 1;
    }
    return found;
}

}  // namespace quardele::basic
