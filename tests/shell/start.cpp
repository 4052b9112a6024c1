#include "start.h"

#include <QCoreApplication>
#include <QEvent>

#include <forms/runtime.h>
#include <services/calendar_settings.h>
#include <services/translation.h>
#include <shell/main_window.h>
#include <shell/session.h>

namespace quardele::tests {

Start StartProgram() {
    StopProgram();
    return GoOnStarting();
}

Start GoOnStarting() {
    Start start;
    support::BoxAnswerer boxes;
    try {
        forms::Instance<shell::MDIMENU_VEH>().Show();
    } catch (const forms::ProcessEnded&) {
        start.ended = true;
    }
    start.shown = boxes.Shown();
    start.boxes = boxes.TakeTexts();
    return start;
}

shell::MDIMENU_VEH& MainWindow() {
    return forms::Instance<shell::MDIMENU_VEH>();
}

void StopProgram() {
    if (forms::IsLoaded<shell::MDIMENU_VEH>()) {
        MainWindow().Unload();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    shell::TheSession() = {};
    services::TheCalendarSettings() = {};
    services::Translation() = {};
}

}  // namespace quardele::tests
