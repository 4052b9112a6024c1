// docs/sql-dialect.md: what the page says is what happens.
#include <fstream>

#include "functions.h"
#include "sql_fixture.h"

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

}  // namespace
}  // namespace quardele::sql
