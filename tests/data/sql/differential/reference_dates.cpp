#include "reference_dates.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace quardele::sql::differential {

namespace {

using namespace std::chrono;

constexpr sys_days kFirstDay = year{1899} / December / 30;
constexpr int kHours = 24;
constexpr int kWeek = 7;

sys_days DayOf(double date) {
    return kFirstDay + days(static_cast<int>(std::floor(date)));
}

double DateOf(sys_days day) {
    return static_cast<double>((day - kFirstDay).count());
}

/// The last day of a month where it has fewer days.
double AddMonths(int number, double date) {
    const year_month_day day(DayOf(date));
    const year_month month = year_month(day.year(), day.month()) + months(number);
    const std::chrono::day last = (month / std::chrono::last).day();
    return DateOf(month / std::min(day.day(), last)) + date - std::floor(date);
}

int MonthsOf(double date) {
    const year_month_day day(DayOf(date));
    return static_cast<int>(day.year()) * 12 + static_cast<int>(static_cast<unsigned>(day.month())) - 1;
}

int HoursOf(double date) {
    return static_cast<int>(std::floor(date * kHours));
}

/// Weeks from Sunday to Saturday, counted from any of them: day 1, 31/12/1899, was a Sunday.
int WeekOf(double date) {
    return (static_cast<int>(std::floor(date)) - 1) / kWeek;
}

}  // namespace

double DateSerial(int year, int month, int day) {
    const year_month first = year_month(std::chrono::year(year), January) + months(month - 1);
    return DateOf(sys_days(first / 1) + days(day - 1));
}

int DatePart(const std::string& interval, double date) {
    if (interval == "h") {
        return HoursOf(date) - static_cast<int>(std::floor(date)) * kHours;
    }
    if (interval == "w") {
        return static_cast<int>(weekday(DayOf(date)).c_encoding()) + 1;
    }
    const year_month_day day(DayOf(date));
    if (interval == "y") {
        return static_cast<int>((DayOf(date) - sys_days(day.year() / January / 1)).count()) + 1;
    }
    if (interval == "d") {
        return static_cast<int>(static_cast<unsigned>(day.day()));
    }
    if (interval == "yyyy") {
        return static_cast<int>(day.year());
    }
    const int month = MonthsOf(date) % 12;
    return interval == "q" ? month / 3 + 1 : month + 1;
}

double DateAdd(const std::string& interval, int number, double date) {
    if (interval == "d") {
        return date + number;
    }
    if (interval == "ww") {
        return date + number * kWeek;
    }
    const int inMonth = interval == "m" ? 1 : interval == "q" ? 3 : 12;
    return AddMonths(number * inMonth, date);
}

int DateDiff(const std::string& interval, double from, double to) {
    if (interval == "d") {
        return static_cast<int>(std::floor(to) - std::floor(from));
    }
    if (interval == "h") {
        return HoursOf(to) - HoursOf(from);
    }
    if (interval == "w") {
        return DateDiff("d", from, to) / kWeek;
    }
    if (interval == "ww") {
        return WeekOf(to) - WeekOf(from);
    }
    const int inMonth = interval == "m" ? 1 : interval == "q" ? 3 : 12;
    return MonthsOf(to) / inMonth - MonthsOf(from) / inMonth;
}

}  // namespace quardele::sql::differential
