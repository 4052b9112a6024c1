// Scripts: where statements end, and what an error undoes.
#include "change_fixture.h"

namespace quardele::sql {
namespace {

std::vector<std::string> Parts(const std::string& script) {
    const Text text = basic::FromUtf8(script);
    std::vector<std::string> parts;
    for (const ScriptStatement& statement : SplitScript(text)) {
        parts.push_back(std::to_string(statement.line) + ":" + basic::ToUtf8(statement.text));
    }
    return parts;
}

using Strings = std::vector<std::string>;

TEST(SplitScriptTest, CutsAtSemicolonsAndKnowsTheLines) {
    EXPECT_EQ(Parts("a;b"), (Strings{"1:a", "1:b"}));
    EXPECT_EQ(Parts("\xEF\xBB\xBF a ;\r\n\r\n b\n c ;\n;;\n d"), (Strings{"1:a", "3:b\n c", "6:d"}));
    EXPECT_EQ(Parts(""), Strings{});
    EXPECT_EQ(Parts(" ;\n; "), Strings{});
}

TEST(SplitScriptTest, SemicolonsInsideTextsNamesAndDatesAreNone) {
    EXPECT_EQ(Parts("a ';' b; c"), (Strings{"1:a ';' b", "1:c"}));
    EXPECT_EQ(Parts("a 'l'';''' \";\" ; c"), (Strings{"1:a 'l'';''' \";\"", "1:c"}));
    EXPECT_EQ(Parts("[a;b] ; #1;2# ; c"), (Strings{"1:[a;b]", "1:#1;2#", "1:c"}));
    EXPECT_EQ(Parts("a ';\n'; b"), (Strings{"1:a ';\n'", "2:b"}));
}

TEST(SplitScriptTest, WhatIsNotClosedGoesToTheEnd) {
    for (const std::string open : {"'", "\"", "[", "#"}) {
        EXPECT_EQ(Parts("a; " + open + "b; c"), (Strings{"1:a", "1:" + open + "b; c"}));
    }
}

class ScriptTest : public ChangeTest {
 protected:
    /// Runs statements up to the first that fails.
    void Run(TextView script) {
        for (const ScriptStatement& statement : SplitScript(script)) {
            Execute(*Data(), statement.text);
        }
    }
};

constexpr TextView kScript =
    u"INSERT INTO TTYP VALUES ('AA', 'a');\n"
    u"UPDATE TTYP SET TTYP_LIBELLE = 'b;b' WHERE TTYP_CODE = 'AA';\n"
    u"INSERT INTO TTYP VALUES ('CT', 'deux fois');\n"
    u"DELETE FROM TTYP";

TEST_F(ScriptTest, WhatStandsBeforeAnErrorStaysDone) {
    EXPECT_EQ(ErrorOf([&] { Run(kScript); }), error::kDuplicateKey);
    EXPECT_EQ(GetElsewhere("SELECT TTYP_LIBELLE FROM TTYP WHERE TTYP_CODE = 'AA'"), Lines{"'b;b'"});
    EXPECT_EQ(Get("SELECT Count(*) FROM TTYP"), Lines{"13"});
}

TEST_F(ScriptTest, InOneStepAnErrorUndoesAll) {
    EXPECT_EQ(ErrorOf([&] {
                  jet::Step step = Data()->Begin();
                  Run(kScript);
                  step.Commit();
              }),
              error::kDuplicateKey);
    EXPECT_EQ(Get("SELECT Count(*) FROM TTYP"), Lines{"12"});
    EXPECT_EQ(GetElsewhere("SELECT Count(*) FROM TTYP WHERE TTYP_CODE = 'AA'"), Lines{"0"});
}

TEST_F(ScriptTest, InOneStepNobodyElseSeesAPart) {
    const auto other = jet::Database::Open(File());
    jet::Step step = Data()->Begin();
    Run(u"DELETE FROM TTYP; INSERT INTO TTYP VALUES ('AA', 'a')");
    other->Refresh();
    EXPECT_EQ(Rows(other, "SELECT Count(*) FROM TTYP"), Lines{"12"});
    step.Commit();
    other->Refresh();
    EXPECT_EQ(Rows(other, "SELECT Count(*) FROM TTYP"), Lines{"1"});
}

TEST_F(ScriptTest, AStatementWithinAnOpenStepIsAPartOfIt) {
    {
        const jet::Step step = Data()->Begin();
        EXPECT_EQ(Do("DELETE FROM TTYP WHERE TTYP_CODE = 'CT'"), 1U);
        EXPECT_EQ(ErrorOfAction("INSERT INTO TTYP VALUES ('BAT', 'x')"), error::kDuplicateKey);
        EXPECT_EQ(Get("SELECT Count(*) FROM TTYP"), Lines{"11"});
    }
    EXPECT_EQ(Get("SELECT Count(*) FROM TTYP"), Lines{"12"});
}

}  // namespace
}  // namespace quardele::sql
