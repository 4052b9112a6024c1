// docs/sql-dialect.md: what the page says is what happens.
#include <fstream>
#include <regex>
#include <set>

#include "change_fixture.h"
#include "expressions/functions.h"

namespace quardele::sql {
namespace {

using PageTable = std::vector<std::vector<std::string>>;

std::vector<std::string> LinesOfFile(const std::string& path) {
    std::ifstream file(std::filesystem::path(QUARDELE_SOURCE_DIR) / path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> PageLines() {
    return LinesOfFile("docs/sql-dialect.md");
}

/// What stands between the bars of a row, without blanks around, code without its back quotes.
std::vector<std::string> CellsOf(const std::string& line) {
    std::vector<std::string> cells;
    const std::string between = " | ";
    for (std::size_t at = 2; at < line.size();) {
        const std::size_t end = std::min(line.find(between, at), line.size() - 2);
        std::string cell = line.substr(at, end - at);
        if (cell.size() > 1 && cell.front() == '`' && cell.back() == '`') {
            cell = cell.substr(1, cell.size() - 2);
        }
        cells.push_back(cell);
        at = end + between.size();
    }
    return cells;
}

/// The rows of all tables that have a header.
PageTable TablesUnder(const std::string& header) {
    PageTable rows;
    bool inside = false;
    for (const std::string& line : PageLines()) {
        if (line == header) {
            inside = true;
        } else if (line.empty()) {
            inside = false;
        } else if (inside && line.rfind("| `", 0) == 0) {
            rows.push_back(CellsOf(line));
        }
    }
    return rows;
}

/// A statement of the page, and the rows that stand below it.
struct Example {
    std::string statement;
    Lines rows;
};

/// The statements of all blocks of a language.
std::vector<Example> Examples(const std::string& language) {
    const std::string indent = "    ";
    std::vector<Example> examples;
    bool inside = false;
    for (const std::string& line : PageLines()) {
        if (line.rfind("```", 0) == 0) {
            inside = line == "```" + language;
        } else if (inside && line.rfind(indent, 0) == 0) {
            examples.back().rows.push_back(line.substr(indent.size()));
        } else if (inside) {
            examples.push_back({line, {}});
        }
    }
    return examples;
}

TEST(DialectPageTest, ExpressionsHaveTheirValues) {
    const PageTable rows = TablesUnder("| Expression | Value |");
    std::string all;
    for (const auto& cells : rows) {
        ASSERT_EQ(cells.size(), 2U) << cells.front();
        EXPECT_EQ(Eval(cells[0]), cells[1]) << cells[0];
        all += cells[0] + "\n";
    }
    EXPECT_GT(rows.size(), 130U);
    for (const auto functions : {TextFunctions(), NumberFunctions(), DateFunctions()}) {
        for (const Function& function : functions) {
            EXPECT_NE(all.find(basic::ToUtf8(function.name) + "("), std::string::npos)
                << basic::ToUtf8(function.name) << " has no example";
        }
    }
}

/// Tests on the tables of the page.
class DialectPageTablesTest : public ChangeTest {
 protected:
    DialectPageTablesTest() {
        for (const Example& example : Examples("setup")) {
            Do(example.statement);
        }
    }

    /// The error of a row of the page: of a SELECT, a search, or an action.
    [[nodiscard]] std::pair<int, std::string> ErrorOfExample(const std::string& example) {
        try {
            RunExample(example);
        } catch (const basic::RuntimeError& failure) {
            return {failure.Number(), basic::ToUtf8(failure.Description())};
        }
        return {0, ""};
    }

 private:
    void RunExample(const std::string& example) {
        const std::string search = "FindFirst ";
        const std::string execution = "Execute ";
        if (example.rfind("SELECT", 0) == 0) {
            static_cast<void>(Get(example));
        } else if (example.rfind(search, 0) == 0) {
            const auto query = Query::Prepare(Data(), u"SELECT * FROM VEHICULE");
            const Condition condition(query, basic::FromUtf8(example.substr(search.size())));
            static_cast<void>(condition.FindForward(query->Run(), 0));
        } else {
            Do(example.rfind(execution, 0) == 0 ? example.substr(execution.size()) : example);
        }
    }
};

TEST_F(DialectPageTablesTest, StatementsGiveTheirRows) {
    const std::vector<Example> examples = Examples("sql");
    for (const Example& example : examples) {
        SCOPED_TRACE(example.statement);
        EXPECT_EQ(DescriptionOf(Data(), example.statement), "");
        EXPECT_EQ(Get(example.statement), example.rows);
    }
    EXPECT_GT(examples.size(), 35U);
}

TEST_F(DialectPageTablesTest, ErrorsHaveTheirNumbersAndTexts) {
    const PageTable rows = TablesUnder("| Statement | Number | Text |");
    std::set<std::string> numbers = {"3360"};  // no statement of a page is that long
    for (const auto& cells : rows) {
        ASSERT_EQ(cells.size(), 3U) << cells.front();
        const auto [number, text] = ErrorOfExample(cells[0]);
        EXPECT_EQ(std::to_string(number), cells[1]) << cells[0];
        EXPECT_EQ(text, cells[2]) << cells[0];
        numbers.insert(cells[1]);
    }
    const std::regex declared("inline constexpr int k\\w+ = (\\d+);");
    std::smatch found;
    for (const std::string& line : LinesOfFile("src/data/sql/sql_error.h")) {
        if (std::regex_search(line, found, declared)) {
            EXPECT_TRUE(numbers.contains(found[1])) << found[1] << " has no example";
        }
    }
}

using DialectPageActionTest = ChangeTest;

TEST_F(DialectPageActionTest, StatementsDoWhatTheyAreMeantTo) {
    std::string all;
    for (const Example& example : Examples("action")) {
        EXPECT_EQ(DescriptionOfAction(example.statement), "") << example.statement;
        all += example.statement + "\n";
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
