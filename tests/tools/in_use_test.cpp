// Commands that need a file for themselves while somebody is in it.

#include "locks/lock_file.h"
#include "mdb_program.h"

namespace quardele::mdb::test {
namespace {

using testing::HasSubstr;

class InUseTest : public MdbTest {
 protected:
    void SetUp() override {
        MdbTest::SetUp();
        Exec("CREATE TABLE T (id LONG PRIMARY KEY)");
        ASSERT_EQ(other_.Enter(file_), jet::LockFile::Entry::Entered);
    }
    [[nodiscard]] std::string Refusal(const std::vector<std::string>& arguments) const {
        const Outcome refused = Mdb(arguments);
        EXPECT_EQ(refused.exitCode, 1);
        EXPECT_EQ(refused.out, "");
        return refused.err;
    }

    jet::LockFile other_;
};

TEST_F(InUseTest, StructuresAreNotChanged) {
    for (const char* statement :
         {"ALTER TABLE T ADD COLUMN more LONG", "CREATE INDEX more ON T (id)", "DROP TABLE T"}) {
        EXPECT_THAT(Refusal({"exec", file_, statement}), HasSubstr("mdb: error 3211: the table is in use"));
    }
    other_.Leave();
    Exec("ALTER TABLE T ADD COLUMN more LONG");
    EXPECT_EQ(Dump("T"), "id,more\n");
}

TEST_F(InUseTest, RowsAreChangedAndTablesMade) {
    Exec("INSERT INTO T (id) VALUES (7); CREATE TABLE U (id LONG)");
    EXPECT_EQ(Dump("T"), "id\n7\n");
}

TEST_F(InUseTest, NobodyIsAloneThere) {
    const std::string refusal = "mdb: error 3045: the file is in use";
    EXPECT_THAT(Refusal({"exec", file_, "INSERT INTO T (id) VALUES (7)", "--exclusive"}), HasSubstr(refusal));
    EXPECT_THAT(Refusal({"compact", file_, PathOf("copy.mdb")}), HasSubstr(refusal));
}

}  // namespace
}  // namespace quardele::mdb::test
