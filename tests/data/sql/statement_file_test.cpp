// statements.txt: every statement is read, written, read again and compared, then run on the files.
#include <fstream>

#include "sql_fixture.h"
#include "syntax/parser.h"
#include "syntax/printer.h"

namespace quardele::sql {
namespace {

struct Entry {
    std::string category;
    std::string name;
    std::string file = "DATA/talmeon.mdb";
    int error = 0;
    std::string statement;
    int line = 0;
};

void PrintTo(const Entry& entry, std::ostream* out) {
    *out << entry.category << ": " << entry.name << " (line " << entry.line << ")";
}

/// What stands between two marks in a line, empty when it is not there.
std::string Between(const std::string& line, const std::string& open, char close) {
    const std::size_t start = line.find(open);
    if (start == std::string::npos) {
        return {};
    }
    const std::size_t first = start + open.size();
    return line.substr(first, line.find(close, first) - first);
}

std::vector<Entry> ReadEntries() {
    std::ifstream file(std::filesystem::path(QUARDELE_SOURCE_DIR) / "tests/data/sql/statements.txt");
    std::vector<Entry> entries;
    Entry next;
    std::string line;
    for (int number = 1; std::getline(file, line); ++number) {
        if (line.rfind("## ", 0) == 0) {
            next.category = line.substr(3);
        } else if (line.rfind("-- ", 0) == 0) {
            next.name = line.substr(3);
            const std::string error = Between(line, "(error ", ')');
            next.error = error.empty() ? 0 : std::stoi(error);
            const std::string where = Between(line, "[in ", ']');
            next.file = where.empty() ? "DATA/talmeon.mdb" : where;
        } else if (!line.empty() && line[0] != '#') {
            next.statement = line;
            next.line = number;
            entries.push_back(next);
            next.name.clear();
        }
    }
    return entries;
}

class StatementFileTest : public testing::TestWithParam<Entry> {};

TEST_P(StatementFileTest, IsNamed) {
    EXPECT_FALSE(GetParam().name.empty());
}

TEST_P(StatementFileTest, ReadsBackAsItIsWritten) {
    if (GetParam().error != 0) {
        return;  // may not even be readable
    }
    const Text printed = Print(ParseStatement(basic::FromUtf8(GetParam().statement)));
    EXPECT_EQ(basic::ToUtf8(Print(ParseStatement(printed))), basic::ToUtf8(printed));
}

TEST_P(StatementFileTest, RunsOrGivesItsError) {
    EXPECT_EQ(ErrorOfStatement(Open(GetParam().file), GetParam().statement), GetParam().error)
        << DescriptionOf(Open(GetParam().file), GetParam().statement);
}

TEST_P(StatementFileTest, GivesTheSameRowsWhenWrittenBack) {
    if (GetParam().error != 0) {
        return;
    }
    const auto database = Open(GetParam().file);
    const Text printed = Print(ParseStatement(basic::FromUtf8(GetParam().statement)));
    EXPECT_EQ(Rows(database, basic::ToUtf8(printed)), Rows(database, GetParam().statement));
}

INSTANTIATE_TEST_SUITE_P(All, StatementFileTest, testing::ValuesIn(ReadEntries()));

TEST(StatementFile, HoldsManyStatements) {
    EXPECT_GT(ReadEntries().size(), 100U);
}

}  // namespace
}  // namespace quardele::sql
