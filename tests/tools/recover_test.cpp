// Interrupted changes as the command shows and ends them.

#include <algorithm>

#include "mdb_program.h"

namespace quardele::mdb::test {
namespace {

using testing::HasSubstr;

class RecoverTest : public MdbTest {};

TEST_F(RecoverTest, WithoutAJournalThereIsNothingToDo) {
    const Outcome recover = Mdb({"recover", file_});
    EXPECT_EQ(recover.exitCode, 0) << recover.err;
    EXPECT_EQ(recover.out, "no interrupted write\n");
    EXPECT_EQ(MdbInFrench({"recover", file_}).out, "aucune écriture interrompue\n");
    for (const char* option : {"--rollback", "--keep"}) {
        const Outcome refused = Mdb({"recover", file_, option});
        EXPECT_EQ(refused.exitCode, 1);
        EXPECT_THAT(refused.err, HasSubstr("mdb: error 3219: this cannot be done in this state"));
    }
}

// What a program with the original engine leaves that dies in its write: its commit slot is 0.
TEST_F(RecoverTest, AWriteOfAnotherProgramThatDidNotEndIsToldAndCanBeTakenForEnded) {
    constexpr std::size_t kSlotOfUserFour = 0xE00 + 2 * 4;
    auto bytes = jet::test::ReadBytes(file_);
    std::fill_n(bytes.begin() + kSlotOfUserFour, 2, std::uint8_t{0});
    jet::test::WriteBytes(file_, bytes);
    const Outcome check = Mdb({"check", file_});
    EXPECT_EQ(check.exitCode, 1);
    EXPECT_EQ(check.out, "page 0: a write of another program did not end, user 4 (mdb compact)\n");
    EXPECT_THAT(Mdb({"exec", file_, "CREATE TABLE X (a LONG)"}).err, HasSubstr("mdb: error 3343: "));
    EXPECT_EQ(Mdb({"compact", file_, PathOf("copy.mdb")}).exitCode, 0);
    EXPECT_EQ(Mdb({"check", PathOf("copy.mdb")}).out, "");
    EXPECT_THAT(Mdb({"recover", file_}).out, HasSubstr("a write of another program did not end, user 4: "));
    EXPECT_EQ(Mdb({"recover", file_, "--keep"}).out, "the file is taken as it is and may be changed again\n");
    EXPECT_EQ(Mdb({"exec", file_, "CREATE TABLE X (a LONG)"}).exitCode, 0);
    EXPECT_EQ(Mdb({"check", file_}).out, "");
}

TEST_F(RecoverTest, AMissingFileIsAnError) {
    EXPECT_THAT(Mdb({"recover", PathOf("missing.mdb")}).err,
                HasSubstr("mdb: error 3024: the file does not exist"));
}

}  // namespace
}  // namespace quardele::mdb::test
