#include "local_params.h"

#include <fstream>

#include <basic/paths.h>
#include <forms/msg_box.h>
#include <forms/strings.h>
#include <services/calendar_settings.h>
#include <shell/form_support.h>
#include <shell/session.h>

#include "local_settings.h"

namespace quardele::shell {

namespace {

/// The one sequential file of the program. A failure while reading leaves it open.
std::ifstream& FileNumberOne() {
    static std::ifstream file;
    return file;
}

void OpenFileNumberOne(basic::TextView windowsPath) {
    std::ifstream& file = FileNumberOne();
    if (file.is_open()) {
        throw basic::RuntimeError(basic::error::kFileAlreadyOpen);
    }
    file.open(basic::NativePath(windowsPath), std::ios::binary);
    if (!file.is_open()) {
        throw basic::RuntimeError(basic::error::kPathFileAccess);
    }
}

void CloseFileNumberOne() {
    std::ifstream& file = FileNumberOne();
    file.close();
    file.clear();
}

void Store(const LocalSettings& settings) {
    Session& session = TheSession();
    session.MIRE_ACTIVE = settings.MIRE_ACTIVE;
    session.MIRE_VEH = forms::ToQString(settings.MIRE_VEH);
    session.PARAM_DEVCAL = forms::ToQString(settings.PARAM_DEVCAL);
    session.PARAM_SITE = forms::ToQString(settings.PARAM_SITE);
    services::TheCalendarSettings().PARAM_CALENDRIER = settings.PARAM_CALENDRIER;
}

void ReadFile(LocalSettings& settings) {
    const QString folder = Dossier_Parent(forms::ToQString(basic::CurDir()));
    const basic::Text path = forms::ToText(folder) + u"\\quardele.ini";
    if (basic::Dir(path).empty()) {
        return;
    }
    OpenFileNumberOne(path);
    ReadLocalSettings(FileNumberOne(), settings);
    CloseFileNumberOne();
}

}  // namespace

void Init_Params_Locaux() {
    LocalSettings settings;
    // These two keep what they have unless the file says something else.
    settings.PARAM_SITE = forms::ToText(TheSession().PARAM_SITE);
    settings.PARAM_CALENDRIER = services::TheCalendarSettings().PARAM_CALENDRIER;
    try {
        ReadFile(settings);
    } catch (const basic::RuntimeError& error) {
        forms::MsgBox(QStringLiteral("Procedure Init_Params_Locaux : ") +
                      forms::ToQString(error.Description()));
    }
    Store(settings);
}

}  // namespace quardele::shell
