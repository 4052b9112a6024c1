#include <program/program.h>

#include <QApplication>

#include <forms/events.h>
#include <forms/runtime.h>
#include <reminders/frelances.h>
#include <shell/main_window.h>
#include <vehicles/fficveh.h>

namespace quardele {

void SetUpProgram(QApplication& application) {
    QApplication::setApplicationName(QStringLiteral("Gestion des véhicules"));
    QApplication::setApplicationVersion(QStringLiteral(QUARDELE_VERSION));
    forms::SetUpApplication(application);
    shell::TheMenuForms().vehicles = []() -> forms::Form& { return forms::Instance<vehicles::FFICVEH>(); };
    shell::TheMenuForms().reminders = []() -> forms::Form& {
        return forms::Instance<reminders::FRELANCES>();
    };
}

void StartProgram() {
    forms::RunHandler([] { forms::Instance<shell::MDIMENU_VEH>().Show(); });
}

}  // namespace quardele
