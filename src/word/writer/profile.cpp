#include "profile.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include <basic/runtime_error.h>

namespace quardele::word::writer {

namespace {

namespace fs = std::filesystem;

struct Setting {
    const char* path;
    const char* name;
    const char* value;
};

// French where its language pack is installed; none of the boxes and bars that a new profile greets with; the
// letter as it will be printed, without marks around bookmarks; no question about the file format on saving.
constexpr Setting kSettings[] = {
    {"/org.openoffice.Office.Linguistic/General", "UILocale", "fr"},
    {"/org.openoffice.Setup/L10N", "ooLocale", "fr"},
    {"/org.openoffice.Setup/Product", "WhatsNew", "false"},
    {"/org.openoffice.Setup/Product", "LastTimeDonateShown", "4102444800"},
    {"/org.openoffice.Setup/Product", "LastTimeGetInvolvedShown", "4102444800"},
    {"/org.openoffice.Office.Common/Misc", "FirstRun", "false"},
    {"/org.openoffice.Office.Common/Misc", "ShowTipOfTheDay", "false"},
    {"/org.openoffice.Office.Common/Save/Document", "WarnAlienFormat", "false"},
    {"/org.openoffice.Office.Writer/Content/NonprintingCharacter", "Bookmarks", "false"},
};

std::string Environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

fs::path UserDataFolder() {
    if (const std::string data = Environment("XDG_DATA_HOME"); !data.empty()) {
        return data;
    }
    if (const std::string home = Environment("HOME"); !home.empty()) {
        return fs::path(home) / ".local" / "share";
    }
    return fs::temp_directory_path() / ("quardele-" + std::to_string(getuid()));
}

fs::path ProfileFolder(bool showsWindows) {
    if (const std::string told = Environment("QUARDELE_WRITER_PROFILE"); !told.empty()) {
        return fs::absolute(told);
    }
    return UserDataFolder() / "quardele" / (showsWindows ? "writer" : "writer-headless");
}

void WriteSettings(const fs::path& file) {
    std::ofstream out(file);
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<oor:items xmlns:oor=\"http://openoffice.org/2001/registry\">\n";
    for (const Setting& setting : kSettings) {
        out << "<item oor:path=\"" << setting.path << "\"><prop oor:name=\"" << setting.name
            << "\" oor:op=\"fuse\"><value>" << setting.value << "</value></prop></item>\n";
    }
    out << "</oor:items>\n";
    if (!out.flush()) {
        throw fs::filesystem_error("settings", file, std::make_error_code(std::errc::io_error));
    }
}

}  // namespace

fs::path PreparedProfile(bool showsWindows) {
    const fs::path profile = ProfileFolder(showsWindows);
    const fs::path settings = profile / "user" / "registrymodifications.xcu";
    try {
        if (!fs::exists(settings)) {
            fs::create_directories(settings.parent_path());
            WriteSettings(settings);
        }
    } catch (const fs::filesystem_error&) {
        throw basic::RuntimeError(basic::error::kCannotCreateObject,
                                  basic::DescriptionOf(basic::error::kCannotCreateObject) +
                                      u" : le profil de LibreOffice ne peut pas être créé dans " +
                                      basic::FromUtf8(profile.string()));
    }
    return profile;
}

}  // namespace quardele::word::writer
