// What operators type into filters and searches can be anything: it gives rows or an error, and changes
// nothing.
#include "query_fixture.h"

namespace quardele::sql {
namespace {

class HostileTextTest : public SmallFileTest {
 protected:
    /// The tables as they are, and that nothing else is there.
    [[nodiscard]] Lines Everything() {
        return Get("SELECT * FROM V UNION ALL SELECT Immat, Typ, Mois FROM D");
    }
};

constexpr const char* kHostile[] = {
    "x'; DELETE FROM V; --",
    "x' OR 1=1; DROP TABLE V",
    "1=1) ; DROP TABLE V",
    "1=1; UPDATE V SET Km = 0",
    "1=1 UNION DELETE FROM V",
    "Immat IN (DELETE FROM V)",
    "EXISTS (INSERT INTO V VALUES ('ZZ', 'Z', 1))",
    "(UPDATE V SET Km = 0) = 1",
    "(SELECT 1; DELETE FROM V) = 1",
    "1=1 INTO COPIE",
    "1=1 /* */ ; DELETE FROM V",
    "1=1 -- ; DELETE FROM V",
    "'",
    "''",
    "\"",
    "[",
    "]",
    "[V",
    "#",
    ";",
    ";;;;",
    "%s%n",
    "L'AVION",
    "Immat = 'L'AVION'",
    "Immat = '[A]'; SELECT 1",
};

TEST_F(HostileTextTest, NeverChangesAnything) {
    const Lines before = Everything();
    const auto query = Query::Prepare(Data(), u"SELECT * FROM V");
    const RowSet rows = query->Run();
    for (const std::string text : kHostile) {
        SCOPED_TRACE(text);
        for (const std::string& statement : std::vector<std::string>{
                 "SELECT * FROM V WHERE " + text, "SELECT * FROM V WHERE (" + text + ") ORDER BY Immat;",
                 "SELECT * FROM V WHERE Immat = '" + text + "'", "SELECT * FROM V ORDER BY " + text,
                 "SELECT " + text + " FROM V", text}) {
            const int number = ErrorOfStatement(Data(), statement);
            EXPECT_TRUE(number == 0 || (number > 3000 && number < 3500)) << number << ": " << statement;
        }
        const int number =
            ErrorOf([&] { static_cast<void>(Condition(query, basic::FromUtf8(text)).FindForward(rows, 0)); });
        EXPECT_TRUE(number > 3000 && number < 3500) << number;
        EXPECT_EQ(Everything(), before);
    }
}

TEST_F(HostileTextTest, OnlyASelectIsAStatementOfAList) {
    for (const char* statement :
         {"DELETE FROM V", "UPDATE V SET Km = 1", "INSERT INTO V VALUES ('Z', 'Z', 1)", "DROP TABLE V",
          "CREATE TABLE X (a LONG)", "ALTER TABLE V ADD x LONG", "CREATE INDEX I ON V (Km)"}) {
        EXPECT_EQ(ErrorOfStatement(Data(), statement), 3129) << statement;
        EXPECT_EQ(ErrorOfStatement(Data(), std::string("SELECT 1; ") + statement), 3142) << statement;
    }
    EXPECT_EQ(ErrorOfStatement(Data(), "SELECT * INTO X FROM V"), 3131);
    EXPECT_FALSE(Data()->HasTable(u"X"));
}

TEST_F(HostileTextTest, DeepNestingIsAnError) {
    const auto query = Query::Prepare(Data(), u"SELECT * FROM V");
    const std::string deep = std::string(10000, '(') + "1=1" + std::string(10000, ')');
    EXPECT_EQ(ErrorOfStatement(Data(), "SELECT * FROM V WHERE " + deep), 3360);
    EXPECT_EQ(ErrorOf([&] { const Condition condition(query, basic::FromUtf8(deep)); }), 3360);
    std::string choices;
    for (int i = 0; i < 10000; ++i) {
        choices += "IIf(1,";
    }
    EXPECT_EQ(ErrorOfStatement(Data(), "SELECT " + choices), 3360);
}

TEST_F(HostileTextTest, LongTextsAreReadOrRefused) {
    const std::string longText(60000, 'x');
    EXPECT_EQ(Get("SELECT Count(*) FROM V WHERE Immat = '" + longText + "'"), Lines{"0"});
    EXPECT_EQ(Get("SELECT Count(*) FROM V WHERE Immat LIKE '*" + longText + "*'"), Lines{"0"});
    EXPECT_EQ(ErrorOfStatement(Data(), "SELECT * FROM V WHERE Immat = '" + longText + longText + "'"), 3360);
    EXPECT_EQ(ErrorOfStatement(Data(), "SELECT * FROM [" + longText + "]"), 3078);
    EXPECT_EQ(ErrorOfStatement(Data(), "SELECT * FROM V WHERE [" + longText + "] = 1"), 3061);
}

TEST_F(HostileTextTest, DoubledQuotesMakeAnyTextAValue) {
    EXPECT_EQ(Eval("'x''; DELETE FROM V; --'"), "'x''; DELETE FROM V; --'");
    EXPECT_EQ(Eval("\"l'avion\""), "'l''avion'");
    EXPECT_EQ(Eval("\"dit \"\"oui\"\"\""), "'dit \"oui\"'");
}

}  // namespace
}  // namespace quardele::sql
