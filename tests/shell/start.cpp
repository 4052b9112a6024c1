#include "start.h"

#include <QCoreApplication>
#include <QEvent>

#include <basic/conversion.h>
#include <dao/dao.h>
#include <forms/runtime.h>
#include <services/calendar_settings.h>
#include <services/translation.h>
#include <shell/main_window.h>
#include <shell/session.h>

namespace quardele::tests {

Start StartProgram() {
    StopProgram();
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

void RaiseTranslation(const std::vector<std::pair<basic::Text, basic::Text>>& translations) {
    constexpr std::ptrdiff_t kKeyLength = 20;
    const auto database =
        dao::DBEngine::Instance().Workspaces(0).OpenDatabase(u"C:\\QUARDELE\\DATA\\BDTRAD.MDB");
    const auto rows = database->OpenRecordset(u"TTRAD", dao::RecordsetType::Dynaset);
    for (const auto& [text, translation] : translations) {
        rows->Edit();
        rows->SetValue(u"T_ABREGE", basic::Left(text, kKeyLength));
        rows->SetValue(u"T_VALEUR", text);
        rows->SetValue(u"t_trad", translation);
        rows->Update();
        rows->MoveNext();
    }
    services::TranslationSettings& settings = services::Translation();
    settings.TranslationTable = database->OpenRecordset(u"TTRAD", dao::RecordsetType::Table);
    settings.TranslationTable->SetIndex(u"T_ABREGE");
    settings.TranslationOn = true;
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
