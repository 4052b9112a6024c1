// The manual page against the program.

#include <cstdlib>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>

#include "command.h"
#include "error_text.h"
#include "mdb_program.h"

namespace quardele::mdb::test {
namespace {

namespace fs = std::filesystem;

using testing::HasSubstr;

fs::path Manual() {
    return fs::path(QUARDELE_SOURCE_DIR) / "docs" / "man" / "mdb.1";
}

std::string TextOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

/// An option as the manual writes it, with hyphens that stay hyphens.
std::string Written(const std::string& option) {
    std::string written;
    for (const char unit : option) {
        written += unit == '-' ? "\\-" : std::string(1, unit);
    }
    return written;
}

TEST(ManualTest, EveryCommandAndOptionIsDescribed) {
    const std::string manual = TextOf(Manual());
    for (const Command& command : Commands()) {
        EXPECT_THAT(manual, HasSubstr(std::string(".TP\n.BI ") + command.name + " \" ")) << command.name;
        for (const Option& option : command.options) {
            const std::string tag = option.value == nullptr ? ".TP\n.B " : ".TP\n.BI ";
            EXPECT_THAT(manual, HasSubstr(tag + Written(option.name)));
        }
    }
}

bool HasTool(const std::string& name) {
    return std::system(("command -v " + name + " > /dev/null 2>&1").c_str()) == 0;
}

TEST(ManualTest, ThePageIsSetWithoutWarnings) {
    const std::string page = '\'' + Manual().string() + '\'';
    const std::string command = HasTool("groff")    ? "groff -man -ww -Tutf8 " + page
                                : HasTool("mandoc") ? "mandoc -Tlint " + page
                                                    : std::string();
    if (command.empty()) {
        GTEST_SKIP() << "neither groff nor mandoc is installed";
    }
    const jet::test::TempFolder folder;
    const fs::path warnings = folder.Path() / "warnings";
    EXPECT_EQ(std::system((command + " > /dev/null 2> '" + warnings.string() + '\'').c_str()), 0);
    EXPECT_EQ(TextOf(warnings), "");
}

/// The numbers of the errors that a header declares, by their names.
std::map<std::string, int> ErrorsOf(const fs::path& header) {
    const std::string text = TextOf(fs::path(QUARDELE_SOURCE_DIR) / header);
    const std::regex constant("constexpr int (k\\w+) = (\\d+);");
    std::map<std::string, int> errors;
    for (std::sregex_iterator found(text.begin(), text.end(), constant); found != std::sregex_iterator();
         ++found) {
        errors[found->str(1)] = std::stoi(found->str(2));
    }
    return errors;
}

TEST(ManualTest, EveryErrorThatIsDeclaredHasAnEnglishText) {
    std::map<std::string, int> errors = ErrorsOf("src/basic/include/basic/runtime_error.h");
    errors.merge(ErrorsOf("src/data/sql/sql_error.h"));
    EXPECT_EQ(errors["kNotADatabase"], basic::error::kNotADatabase);
    EXPECT_EQ(errors["kSubqueryRows"], 3354);
    for (const auto& [name, number] : errors) {
        EXPECT_TRUE(HasEnglishText(number)) << name << ' ' << number;
    }
}

TEST(ManualTest, AParticularDescriptionIsKeptBehindTheEnglishText) {
    const basic::RuntimeError error(3251, u"Tel cas n'est pas prévu.");
    EXPECT_EQ(ErrorText(error, Language::English),
              "error 3251: this is not supported (Tel cas n'est pas prévu.)");
    EXPECT_EQ(ErrorText(error, Language::French), "erreur 3251 : Tel cas n'est pas prévu.");
    EXPECT_EQ(ErrorText(basic::RuntimeError(3251), Language::English), "error 3251: this is not supported");
}

}  // namespace
}  // namespace quardele::mdb::test
