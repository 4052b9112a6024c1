// Interrupted changes as the command shows and ends them.

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

TEST_F(RecoverTest, AMissingFileIsAnError) {
    EXPECT_THAT(Mdb({"recover", PathOf("missing.mdb")}).err,
                HasSubstr("mdb: error 3024: the file does not exist"));
}

}  // namespace
}  // namespace quardele::mdb::test
