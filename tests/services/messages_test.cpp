// The texts of the program's boxes, as its sources write them: a net for texts that no test shows. What
// passes through the translation is told by tests that raise the boxes (translated_start_test,
// translated_boxes_test of the vehicles and of the reminders, translated_tools_test). The net sees literals
// inside the call only, neither messages that are put together before it nor the boxes of forms/, which knows
// no translation.
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::IsEmpty;

std::string ContentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream content;
    content << stream.rdbuf();
    return content.str();
}

/// From each MsgBox( to the end of its statement.
std::set<std::string> BoxStatements() {
    static const std::regex kBox(R"((MsgBox|TellFailure|ReportError|showBox_)\([^;]*;)");
    std::set<std::string> statements;
    const std::filesystem::path root = std::filesystem::path(QUARDELE_SOURCE_DIR) / "src";
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
        if (entry.path().extension() != ".cpp" || entry.path().parent_path().filename() == "forms") {
            continue;
        }
        const std::string source = ContentOf(entry.path());
        for (std::sregex_iterator box(source.begin(), source.end(), kBox), end; box != end; ++box) {
            statements.insert(box->str());
        }
    }
    return statements;
}

/// The literals of a statement that hold words, those inside TRAD( left out.
std::set<std::string> PlainTexts(std::string statement) {
    static const std::regex kTranslated(R"(TRAD\(\s*QStringLiteral\(\s*("[^"]*"\s*)+\)\))");
    static const std::regex kLiteral(R"re((?:QStringLiteral\(\s*|showBox_\(u)"([^"]*)")re");
    static const std::regex kWord("[A-Za-z]{2}");
    statement = std::regex_replace(statement, kTranslated, "");
    std::set<std::string> texts;
    for (std::sregex_iterator literal(statement.begin(), statement.end(), kLiteral), end; literal != end;
         ++literal) {
        const std::string text = (*literal)[1];
        if (std::regex_search(text, kWord)) {
            texts.insert(text);
        }
    }
    return texts;
}

/// Prefixes of failures, whose descriptions are the runtime's; the box of the hidden menu entry; what joins
/// the folder and the name of a workbook; Word's own boxes. They stay as they are in every language.
const std::set<std::string>& KnownPlainTexts() {
    static const std::set<std::string> texts{
        "   sous le nom :  ",
        "CLASSER (ERR. ",
        "CMD_Imprimer, Erreur ",
        "Cmd_Annul Err. ",
        "Cmd_Update Err. ",
        "Evitez de fermer Word vous même avant de quitter",
        "H: %1\\r\\nW: %2",
        "Load: (%1) : ",
        "Procedure Init_Params_Locaux : ",
        "Proc. TRAD : ",
        "Procédure APPLI/appel_word : ",
        "Procédure CTX_DATREL_CLICK  Erreur %1 : ",
        "Recherche (ERR. ",
        "SELECTION (ERREUR ",
        "SELECTION ERR. ",
        "control appli: (%1) : ",
    };
    return texts;
}

std::set<std::string> AllPlainTexts() {
    std::set<std::string> all;
    for (const std::string& statement : BoxStatements()) {
        all.merge(PlainTexts(statement));
    }
    return all;
}

}  // namespace

TEST(Messages, NoOtherTextGoesPastTheTranslation) {
    std::set<std::string> unknown = AllPlainTexts();
    ASSERT_FALSE(unknown.empty());
    for (const std::string& known : KnownPlainTexts()) {
        unknown.erase(known);
    }
    EXPECT_THAT(unknown, IsEmpty());
}

TEST(Messages, TheseTextsAreNeverTranslated) {
    std::set<std::string> missing = KnownPlainTexts();
    for (const std::string& found : AllPlainTexts()) {
        missing.erase(found);
    }
    EXPECT_THAT(missing, IsEmpty());
}
