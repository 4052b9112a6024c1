// Compacting as a command; what is kept is tested with the engine.

#include "mdb_program.h"

namespace quardele::mdb::test {
namespace {

using testing::HasSubstr;

class CompactTest : public MdbTest {
 protected:
    void SetUp() override {
        MdbTest::SetUp();
        Exec("CREATE TABLE T (id LONG PRIMARY KEY, m MEMO)");
        std::string csv = "id,m\n";
        for (int i = 0; i < 2000; ++i) {
            csv += std::to_string(i) + ',' + std::string(100, 'x') + '\n';
        }
        ASSERT_EQ(Mdb({"import", file_, "T", "-"}, csv).exitCode, 0);
        Exec("DELETE FROM T WHERE id > 10");
    }
};

TEST_F(CompactTest, TheCopyHasTheRowsAndLessPages) {
    const std::string target = PathOf("copy.mdb");
    const auto before = jet::test::ReadBytes(file_);
    const Outcome compact = Mdb({"compact", file_, target});
    EXPECT_EQ(compact.exitCode, 0) << compact.err;
    EXPECT_EQ(compact.out + compact.err, "");
    EXPECT_EQ(Mdb({"dump", target, "T"}).out, Dump("T"));
    EXPECT_EQ(Mdb({"check", target, "--notes"}).out, "");
    EXPECT_LT(std::filesystem::file_size(target), before.size() / 2);
    EXPECT_EQ(jet::test::ReadBytes(file_), before);
}

TEST_F(CompactTest, ATargetThatExistsIsKept) {
    const std::string target = PathOf("copy.mdb");
    jet::test::WriteBytes(target, {1, 2, 3});
    const Outcome compact = Mdb({"compact", file_, target});
    EXPECT_EQ(compact.exitCode, 1);
    EXPECT_THAT(compact.err, HasSubstr("mdb: error 3204: the file exists already"));
    EXPECT_THAT(MdbInFrench({"compact", file_, target}).err, HasSubstr("mdb : erreur 3204 : "));
    EXPECT_EQ(jet::test::ReadBytes(target).size(), 3U);
}

TEST_F(CompactTest, AFileThatIsOpenIsNotCompacted) {
    const auto other = jet::Database::Open(file_);
    const Outcome compact = Mdb({"compact", file_, PathOf("copy.mdb")});
    EXPECT_EQ(compact.exitCode, 1);
    EXPECT_THAT(compact.err, HasSubstr("mdb: error 3"));
    EXPECT_FALSE(std::filesystem::exists(PathOf("copy.mdb")));
}

}  // namespace
}  // namespace quardele::mdb::test
