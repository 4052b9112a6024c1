// Statements that change a file.

#include "mdb_program.h"
#include "system.h"

namespace quardele::mdb::test {
namespace {

using testing::HasSubstr;

class ExecTest : public MdbTest {
 protected:
    void SetUp() override {
        MdbTest::SetUp();
        Exec("CREATE TABLE T (id LONG PRIMARY KEY, t TEXT(20)); INSERT INTO T (id, t) VALUES (1, 'one')");
    }
};

TEST_F(ExecTest, TheNumberOfRowsIsPrinted) {
    EXPECT_EQ(Mdb({"exec", file_, "INSERT INTO T (id) VALUES (2)"}).out, "1 row\n");
    EXPECT_EQ(Mdb({"exec", file_, "UPDATE T SET t = 'x'"}).out, "2 rows\n");
    EXPECT_EQ(MdbInFrench({"exec", file_, "DELETE FROM T WHERE id = 2"}).out, "1 ligne\n");
    EXPECT_EQ(MdbInFrench({"exec", file_, "DELETE FROM T WHERE id = 2"}).out, "0 ligne\n");
    EXPECT_EQ(Mdb({"exec", file_, "ALTER TABLE T ADD COLUMN u LONG"}).out, "0 rows\n");
    EXPECT_EQ(Dump("T"), "id,t,u\n1,x,\n");
    EXPECT_EQ(Mdb({"exec", file_, "DROP TABLE T"}).exitCode, 0);
    EXPECT_EQ(Mdb({"tables", file_}).out, "");
}

TEST_F(ExecTest, SeveralStatementsComeFromTheInput) {
    const Outcome exec = Mdb({"exec", file_, "-"},
                             "INSERT INTO T (id, t) VALUES (2, 'a;b');\n"
                             "INSERT INTO T (id) VALUES (3);\n\n");
    EXPECT_EQ(exec.exitCode, 0) << exec.err;
    EXPECT_EQ(exec.out, "2 rows\n");
    EXPECT_EQ(Dump("T"), "id,t\n1,one\n2,a;b\n3,\n");
}

TEST_F(ExecTest, CommentsInFrontOfStatementsArePassedOver) {
    const Outcome exec = Mdb({"exec", file_, "-"},
                             "-- two rows; one of them 'new\n"
                             "INSERT INTO T (id, t) VALUES (2, '--');\r\n"
                             "  -- [and\n\n-- the other\n"
                             "INSERT INTO T (id, t) VALUES (4--1, 'b'); -- done");
    EXPECT_EQ(exec.exitCode, 0) << exec.err;
    EXPECT_EQ(exec.out, "2 rows\n");
    EXPECT_EQ(Dump("T"), "id,t\n1,one\n2,--\n5,b\n");
    EXPECT_THAT(Mdb({"exec", file_, "-"}, "-- a\n-- b\nDELETE FROM T;\n-- c\nDELETE FROM").err,
                HasSubstr("mdb: line 5: "));
}

constexpr const char* kSecondFails =
    "INSERT INTO T (id) VALUES (2);\n"
    "INSERT INTO T (id) VALUES (1);\n"
    "INSERT INTO T (id) VALUES (3);\n";

TEST_F(ExecTest, WhatPrecedesAnErrorStaysAndTheErrorNamesItsLine) {
    const Outcome exec = Mdb({"exec", file_, "-"}, kSecondFails);
    EXPECT_EQ(exec.exitCode, 1);
    EXPECT_THAT(exec.err,
                HasSubstr("mdb: line 2: error 3022: the change would make equal keys in a unique index"));
    EXPECT_EQ(Dump("T"), "id,t\n1,one\n2,\n");
}

TEST_F(ExecTest, AnAtomicScriptIsAllOrNothing) {
    const Outcome exec = MdbInFrench({"exec", file_, "-", "--atomic"}, kSecondFails);
    EXPECT_EQ(exec.exitCode, 1);
    EXPECT_THAT(exec.err, HasSubstr("mdb : ligne 2 : erreur 3022 : "));
    EXPECT_EQ(Dump("T"), "id,t\n1,one\n");
}

TEST_F(ExecTest, AnErrorOfASingleStatementHasNoLine) {
    const Outcome exec = Mdb({"exec", file_, "UPDATE T SET"});
    EXPECT_EQ(exec.exitCode, 1);
    EXPECT_THAT(exec.err, testing::StartsWith("mdb: error 3144: syntax error in UPDATE"));
}

// On Windows arguments are UTF-16, and always become UTF-8.
TEST_F(ExecTest, ArgumentsThatAreNotInUtf8AreRefused) {
    if (quardele::test::kIsWindows) {
        GTEST_SKIP() << "arguments of this system are never of another encoding";
    }
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"exec", file_, "INSERT INTO T (id, t) VALUES (2, '\xE9t\xE9')"},
          {"query", file_, "SELECT '\xE9' FROM T"},
          {"dump", file_, "\xE9"}}) {
        const Outcome outcome = Mdb(arguments);
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_EQ(outcome.err, "mdb: the text is not in UTF-8\n");
    }
    EXPECT_EQ(Dump("T"), "id,t\n1,one\n");
}

TEST_F(ExecTest, AScriptThatIsNotInUtf8IsRefused) {
    EXPECT_EQ(Mdb({"exec", file_, "-"}, "DELETE FROM T WHERE t <> '\xE9'").exitCode, 1);
    EXPECT_EQ(Dump("T"), "id,t\n1,one\n");
}

// What comes through a pipe or from a file is UTF-8 whatever the code page of the system.
TEST_F(ExecTest, AScriptInUtf8MayBeginWithAByteOrderMark) {
    const std::string insert = "INSERT INTO T (id, t) VALUES (2, 'é€ΩЖ')";
    EXPECT_EQ(Mdb({"exec", file_, "-"}, "\xEF\xBB\xBF" + insert).err, "");
    EXPECT_EQ(Mdb({"import", file_, "T", "-"}, "\xEF\xBB\xBFid,t\n3,Ωé\n").err, "");
    EXPECT_EQ(Dump("T"), "id,t\n1,one\n2,é€ΩЖ\n3,Ωé\n");
}

TEST_F(ExecTest, ASelectIsRefused) {
    const Outcome exec = Mdb({"exec", file_, "SELECT * FROM T"});
    EXPECT_EQ(exec.exitCode, 1);
    EXPECT_THAT(exec.err, HasSubstr("error 3065"));
}

TEST_F(ExecTest, ExclusiveOpeningIsPossible) {
    EXPECT_EQ(Mdb({"exec", file_, "INSERT INTO T (id) VALUES (9)", "--exclusive"}).exitCode, 0);
    const auto other = jet::Database::Open(file_);
    const Outcome refused = Mdb({"exec", file_, "INSERT INTO T (id) VALUES (10)", "--exclusive"});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_THAT(refused.err, HasSubstr("error 3"));
}

TEST(ReadOnlyFileTest, Access97IsNotWritten) {
    SKIP_WITHOUT_CORPUS();
    const jet::test::TempFolder folder;
    const auto file = folder.Copy(jet::test::CorpusFile("common1V1997.mdb"));
    const Outcome exec = Mdb({"exec", file.string(), "DELETE FROM Table1"});
    EXPECT_EQ(exec.exitCode, 1);
    EXPECT_THAT(exec.err, HasSubstr("mdb: error 3027: the database or table is read only"));
}

}  // namespace
}  // namespace quardele::mdb::test
