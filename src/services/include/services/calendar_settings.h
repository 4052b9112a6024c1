// What the workstation and the session say of calendars.
#pragma once

#include <cstdint>

namespace quardele::services {

struct CalendarSettings {
    /// Local parameter of the workstation: 0 for the calendar that opens on today, anything else for the one
    /// that opens on the date of the box.
    std::int16_t PARAM_CALENDRIER = 0;
    /// Set by whoever asks for a calendar, cleared when it goes; nothing reads it.
    bool calendarOpen = false;
};
[[nodiscard]] CalendarSettings& TheCalendarSettings();

}  // namespace quardele::services
