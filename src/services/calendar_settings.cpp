#include <services/calendar_settings.h>

namespace quardele::services {

CalendarSettings& Calendar() {
    static CalendarSettings settings;
    return settings;
}

}  // namespace quardele::services
