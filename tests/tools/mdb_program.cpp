#include "mdb_program.h"

#include <fstream>
#include <sstream>
#include <utility>

#include "child_process.h"

namespace quardele::mdb::test {

namespace fs = std::filesystem;

namespace {

std::string TextOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

}  // namespace

Outcome Mdb(const std::vector<std::string>& arguments, const std::string& input, const std::string& locale) {
    const jet::test::TempFolder folder;
    const fs::path errors = folder.Path() / "errors";
    quardele::test::SetEnvironment("LC_ALL", locale);
    quardele::test::Process mdb(QUARDELE_MDB, arguments, errors);
    mdb.Write(input);
    std::string output = mdb.ReadOutput();
    const int exitCode = mdb.Wait();
    return {exitCode, std::move(output), TextOf(errors)};
}

void MdbTest::SetUp() {
    file_ = PathOf("data.mdb");
    const Outcome made = Mdb({"create", file_});
    ASSERT_EQ(made.exitCode, 0) << made.err;
}

void MdbTest::Exec(const std::string& script) const {
    const Outcome done = Mdb({"exec", file_, "-", "--atomic"}, script);
    ASSERT_EQ(done.exitCode, 0) << done.err;
}

std::string MdbTest::Dump(const std::string& table) const {
    const Outcome dump = Mdb({"dump", file_, table});
    EXPECT_EQ(dump.exitCode, 0) << dump.err;
    return dump.out;
}

}  // namespace quardele::mdb::test
