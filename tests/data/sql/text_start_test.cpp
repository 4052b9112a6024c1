// Conditions on the beginning of a text: an indexed column gives the same rows as one without an index.
#include "change_fixture.h"

namespace quardele::sql {
namespace {

class TextStartTest : public ChangeTest {
 protected:
    TextStartTest() {
        Do("CREATE TABLE T (K TEXT(60), C TEXT(60))");
        Do("CREATE INDEX BYK ON T (K)");
        for (const char* text :
             {"AB-1", "AB1",  "A-B-1", "ab-12", "AB-1-", "AB--1",       "AB-",  "AB",    "A",     "AC-1",
              "AB-2", "ÀB-1", "ÂB",    "ABÉ",   "ABE",   "ABe\xCC\x81", "AB 1", "AB 12", "AB'1",  "'AB",
              "-AB",  "Æ",    "AE",    "AEX",   "ß",     "ss",          "SSX",  "ſX",    "S1",    "s2",
              "ıx",   "I1",   "ix",    "œuf",   "OE",    "OEUF",        "oe1",  "Zèbre", "ZEBRE", "zebr",
              "Z",    "ZZZZ", "1",     "10",    "1-0",   "01",          "#1",   "*",     "*x",    "[a]",
              "?",    "É",    "E",     "e1",    "é1",    " A",          "  A",  "-",     "--",    "'"}) {
            std::string quoted;
            for (const char* at = text; *at != '\0'; ++at) {
                quoted += *at == '\'' ? "''" : std::string(1, *at);
            }
            Do("INSERT INTO T VALUES ('" + quoted + "', '" + quoted + "')");
        }
        // The rows looked for are few among many: an index is the shorter way.
        auto step = Data()->Begin();
        for (int i = 0; i < 400; ++i) {
            const std::string text = "M" + std::to_string(i);
            Do("INSERT INTO T VALUES ('" + text + "', '" + text + "')");
        }
        step.Commit();
    }

    void ExpectSame(const std::string& before, const std::string& behind) {
        const std::string select = "SELECT K FROM T WHERE ";
        EXPECT_EQ(Get(select + before + "K" + behind), Get(select + before + "C" + behind))
            << before << behind;
    }
};

TEST_F(TextStartTest, LeftPartsThatAreEqual) {
    for (const char* text : {"A", "AB", "AB-", "AB-1", "ab1", "A-B", "AB ", "AB 1", "ABE",  "ABÉ",
                             "E", "É",  "ss",  "S",    "ix",  "I",   "oe",  "Z",    "zebr", "-",
                             "",  " ",  "  A", "-AB",  "1",   "10",  "#",   "*",    "[a]",  "''"}) {
        for (int count = 0; count < 6; ++count) {
            ExpectSame("Left(", ", " + std::to_string(count) + ") = '" + text + "'");
        }
    }
}

TEST_F(TextStartTest, Patterns) {
    for (const char* pattern : {"A*", "ab*", "AB-*", "AB-1*", "AB-1", "AB?1", "AB-#*",  "ABE*",  "ABÉ*",
                                "É*", "E*",  "s*",   "ss*",   "i*",   "oe*",  "O*",     "Z*",    "zebr?",
                                "-*", "*",   "",     " *",    "1*",   "[*]*", "[a-b]*", "[[]a*", "''*"}) {
        ExpectSame("", std::string(" LIKE '") + pattern + "'");
        ExpectSame("NOT ", std::string(" LIKE '") + pattern + "'");
    }
    ExpectSame("", " ALIKE 'AB%'");
}

TEST_F(TextStartTest, BesideOtherConditions) {
    ExpectSame("Left(C, 2) = 'AB' AND ", " > 'AB-1'");
    ExpectSame("C LIKE 'A*' AND ", " LIKE 'AB*'");
    ExpectSame("'AB' = Left(", ", 2)");
    ExpectSame("C = 'S1' OR ", " LIKE 'AB*'");
}

}  // namespace
}  // namespace quardele::sql
