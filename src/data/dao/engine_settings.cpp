#include "engine_settings.h"

#include <fstream>
#include <string>

#include <basic/configuration.h>
#include <basic/conversion.h>
#include <basic/text.h>

namespace quardele::dao {

namespace {

void TakeLine(EngineSettings& settings, const basic::Text& line) {
    const std::size_t equals = line.find(u'=');
    if (equals != basic::Text::npos &&
        basic::EqualNoCase(basic::Trim(line.substr(0, equals)), u"OUVERTURE")) {
        settings.alone = basic::EqualNoCase(basic::Trim(line.substr(equals + 1)), u"EXCLUSIVE");
    }
}

}  // namespace

EngineSettings EngineSettings::FromFile(const std::filesystem::path& file) {
    EngineSettings settings;
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);) {
        if (line.ends_with('\r')) {
            line.pop_back();
        }
        TakeLine(settings, basic::FromUtf8(line));
    }
    return settings;
}

EngineSettings& EngineSettings::Session() {
    static EngineSettings session = [] {
        const auto file = basic::ConfigurationFile("engine.ini");
        return file ? FromFile(*file) : EngineSettings();
    }();
    return session;
}

}  // namespace quardele::dao
