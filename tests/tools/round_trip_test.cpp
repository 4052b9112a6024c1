// What dump writes, import reads: every table of the real files goes through both and comes back the same.

#include <algorithm>

#include "mdb_program.h"
#include "setting.h"

namespace quardele::mdb::test {
namespace {

namespace fs = std::filesystem;

/// Each table takes six processes.
const unsigned kStride = quardele::test::Setting("QUARDELE_ROUND_TRIP_STRIDE", 1);

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text.find('\n', at);
        lines.push_back(text.substr(at, end - at));
        at = end == std::string::npos ? text.size() : end + 1;
    }
    return lines;
}

/// The statement for the columns of a table: no defaults, some of which are functions of Access alone, and no
/// indexes.
std::string ColumnsOnly(const std::string& schema) {
    std::string statement;
    for (const std::string& line : LinesOf(schema)) {
        const std::size_t end = std::min(line.find(" DEFAULT "), line.size());
        statement += line.substr(0, end) + (end < line.size() && line.ends_with(',') ? ",\n" : "\n");
        if (line == ");") {
            break;
        }
    }
    return statement;
}

class RoundTripTest : public MdbTest {
 protected:
    void GoThrough(const fs::path& source, const std::string& table) const {
        SCOPED_TRACE(source.filename().string() + ", " + table);
        const std::string schema = Mdb({"schema", source.string(), table}).out;
        const Outcome made = Mdb({"exec", file_, "-"}, ColumnsOnly(schema));
        ASSERT_EQ(made.exitCode, 0) << made.err << schema;
        const std::string rows = Mdb({"dump", source.string(), table}).out;
        const Outcome import = Mdb({"import", file_, table, "-"}, rows);
        ASSERT_EQ(import.exitCode, 0) << import.err;
        EXPECT_EQ(Dump(table), rows);
        ASSERT_EQ(Mdb({"exec", file_, "DROP TABLE [" + table + "]"}).exitCode, 0);
    }
};

TEST_F(RoundTripTest, EveryTableOfTheRealFilesComesBackTheSame) {
    SKIP_WITHOUT_CORPUS();
    unsigned tables = 0;
    for (const fs::path& source : jet::test::CorpusFiles()) {
        if (source.filename() == "password.mdb" || source.filename() == "linked.mdb") {
            continue;  // nothing to be had without the password; tables that lie elsewhere
        }
        for (const std::string& table : LinesOf(Mdb({"tables", source.string()}).out)) {
            if (tables++ % kStride == 0) {
                GoThrough(source, table);
            }
        }
    }
    EXPECT_GT(tables, 40U);
    const Outcome check = Mdb({"check", file_});
    EXPECT_EQ(check.exitCode, 0) << check.out;
}

}  // namespace
}  // namespace quardele::mdb::test
