// The check as a command; what it finds is tested with the engine.

#include <algorithm>
#include <regex>

#include "mdb_program.h"

namespace quardele::mdb::test {
namespace {

using testing::HasSubstr;

class CheckCommandTest : public MdbTest {
 protected:
    void SetUp() override {
        MdbTest::SetUp();
        Exec(
            "CREATE TABLE T (id LONG PRIMARY KEY); INSERT INTO T (id) VALUES (1);"
            "INSERT INTO T (id) VALUES (66051)");
    }

    /// Changes the key of an entry of the index.
    void DamageIndex() const {
        auto bytes = jet::test::ReadBytes(file_);
        const std::vector<std::uint8_t> key = {0x7F, 0x80, 0x01, 0x02, 0x03};
        const auto found = std::search(bytes.begin(), bytes.end(), key.begin(), key.end());
        ASSERT_NE(found, bytes.end());
        found[4] = 4;
        jet::test::WriteBytes(file_, bytes);
    }
};

TEST_F(CheckCommandTest, ASoundFileSaysNothing) {
    const Outcome check = Mdb({"check", file_, "--notes"});
    EXPECT_EQ(check.exitCode, 0);
    EXPECT_EQ(check.out, "");
    EXPECT_EQ(check.err, "");
}

TEST_F(CheckCommandTest, EachFaultIsALineAndTheExitCodeIsOne) {
    DamageIndex();
    const Outcome check = Mdb({"check", file_});
    EXPECT_EQ(check.exitCode, 1);
    const std::regex faults(
        "page [0-9]+, table T, index or column [A-Za-z]+: row [0-9]+:1 is missing from the index\n"
        "page [0-9]+, table T, index or column [A-Za-z]+: the index has a wrong entry for row [0-9]+:1\n");
    EXPECT_TRUE(std::regex_match(check.out, faults)) << check.out;
    EXPECT_EQ(check.err, "");
    EXPECT_THAT(MdbInFrench({"check", file_}).out, HasSubstr(":1 manque dans l'index\n"));
}

TEST_F(CheckCommandTest, NotesAreShownOnRequest) {
    SKIP_WITHOUT_CORPUS();
    const std::string file = jet::test::CorpusFile("common1V2000.mdb").string();
    EXPECT_EQ(Mdb({"check", file}).out, "");
    const Outcome check = Mdb({"check", file, "--notes"});
    EXPECT_EQ(check.exitCode, 0);
    EXPECT_THAT(check.out,
                HasSubstr("note: page 3, table MSysACEs: stated and real number of rows: 61 / 64\n"));
    EXPECT_THAT(MdbInFrench({"check", file, "--notes"}).out, HasSubstr("note : page 34 : pages perdues : "));
}

TEST_F(CheckCommandTest, AFileThatIsNoDatabaseIsAFault) {
    jet::test::WriteBytes(file_, std::vector<std::uint8_t>(8192, 'x'));
    const Outcome check = Mdb({"check", file_});
    EXPECT_EQ(check.exitCode, 1);
    EXPECT_EQ(check.out, "page 0: the file cannot be read as a database\n");
}

TEST_F(CheckCommandTest, AMissingFileIsAnError) {
    const Outcome check = Mdb({"check", PathOf("missing.mdb")});
    EXPECT_EQ(check.exitCode, 1);
    EXPECT_THAT(check.err, HasSubstr("mdb: error 3024: the file does not exist"));
}

}  // namespace
}  // namespace quardele::mdb::test
