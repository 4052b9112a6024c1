#include "child_forms.h"

#include <shell/main_window.h>

namespace quardele::tests {

void WireChildForms() {
    shell::TheMenuForms().vehicles = []() -> forms::Form& { return forms::Instance<VehiclesDouble>(); };
    shell::TheMenuForms().reminders = []() -> forms::Form& { return forms::Instance<RemindersDouble>(); };
}

}  // namespace quardele::tests
