#include "child_forms.h"

#include <shell/main_window.h>

namespace quardele::tests {

QStringList& ChildForm::Unloaded() {
    static QStringList names;
    return names;
}

void ChildForm::Form_Unload(bool& /*cancel*/) {
    Unloaded().append(Name());
}

void WireChildForms() {
    shell::TheMenuForms().vehicles = []() -> forms::Form& { return forms::Instance<VehiclesDouble>(); };
    shell::TheMenuForms().reminders = []() -> forms::Form& { return forms::Instance<RemindersDouble>(); };
}

}  // namespace quardele::tests
