#include <services/calendar_settings.h>

namespace quardele::services {

CalendarSettings& TheCalendarSettings() {
    static CalendarSettings settings;
    return settings;
}

}  // namespace quardele::services
