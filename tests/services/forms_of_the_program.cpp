#include "forms_of_the_program.h"

#include <filesystem>

namespace quardele::tests {

std::set<QString> FormsOfTheProgram() {
    std::set<QString> names{QStringLiteral("F_CALENDAR"), QStringLiteral("F_CALENDAR2")};
    const std::filesystem::path source = std::filesystem::path(QUARDELE_SOURCE_DIR) / "src";
    for (const auto& entry : std::filesystem::recursive_directory_iterator(source)) {
        if (entry.path().extension() == ".ui") {
            names.insert(QString::fromStdString(entry.path().stem().string()).toUpper());
        }
    }
    return names;
}

}  // namespace quardele::tests
