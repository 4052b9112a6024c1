// docs/sql-dialect.md: what the page says is what happens.
#include <fstream>

#include "change_fixture.h"
#include "expressions/functions.h"

namespace quardele::sql {
namespace {

std::vector<std::string> PageLines() {
    std::ifstream file(std::filesystem::path(QUARDELE_SOURCE_DIR) / "docs/sql-dialect.md");
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// The two cells of a table row whose cells are code; empty for other lines.
std::pair<std::string, std::string> CellsOf(const std::string& line) {
    const std::string open = "| `";
    const std::string between = "` | `";
    const std::string close = "` |";
    const std::size_t middle = line.find(between);
    if (line.rfind(open, 0) != 0 || middle == std::string::npos || line.size() < close.size()) {
        return {};
    }
    const std::size_t value = middle + between.size();
    return {line.substr(open.size(), middle - open.size()),
            line.substr(value, line.size() - close.size() - value)};
}

TEST(DialectPageTest, ExpressionsHaveTheirValues) {
    bool examples = false;
    int count = 0;
    std::string all;
    for (const std::string& line : PageLines()) {
        if (line == "| Expression | Value |") {
            examples = true;
        } else if (line.empty()) {
            examples = false;
        } else if (const auto [expression, value] = CellsOf(line); examples && !expression.empty()) {
            EXPECT_EQ(Eval(expression), value) << expression;
            all += expression + "\n";
            ++count;
        }
    }
    EXPECT_GT(count, 80);
    for (const auto functions : {TextFunctions(), NumberFunctions(), DateFunctions()}) {
        for (const Function& function : functions) {
            EXPECT_NE(all.find(basic::ToUtf8(function.name) + "("), std::string::npos)
                << basic::ToUtf8(function.name) << " has no example";
        }
    }
}

TEST(DialectPageTest, StatementsGiveRows) {
    bool examples = false;
    int count = 0;
    for (const std::string& line : PageLines()) {
        if (line.rfind("```", 0) == 0) {
            examples = line == "```sql";
        } else if (examples) {
            EXPECT_FALSE(Rows(Workshop(), line).empty()) << line;
            ++count;
        }
    }
    EXPECT_GT(count, 4);
}

using DialectPageActionTest = ChangeTest;

TEST_F(DialectPageActionTest, StatementsDoWhatTheyAreMeantTo) {
    bool examples = false;
    std::string all;
    for (const std::string& line : PageLines()) {
        if (line.rfind("```", 0) == 0) {
            examples = line == "```action";
        } else if (examples) {
            EXPECT_EQ(DescriptionOfAction(line), "") << line;
            all += line + "\n";
        }
    }
    for (const std::string start : {"INSERT INTO", "UPDATE", "DELETE", "CREATE TABLE", "CREATE INDEX",
                                    "CREATE UNIQUE INDEX", "ALTER TABLE", "DROP TABLE"}) {
        EXPECT_NE(all.find(start + " "), std::string::npos) << start << " has no example";
    }
    EXPECT_EQ(Get("SELECT TTYP_LIBELLE FROM TTYP WHERE TTYP_CODE IN ('MOT', 'ECL')"),
              Lines{"'CONTRÔLE DU MOTEUR'"});
    EXPECT_EQ(Get("SELECT Count(*) FROM TPAYS WHERE TPAYS_CODE IN ('TMO', 'TEC')"), Lines{"2"});
    EXPECT_TRUE(Data()->HasTable(u"TTARIF"));
    EXPECT_FALSE(Data()->HasTable(u"TNOTE"));
}

}  // namespace
}  // namespace quardele::sql
