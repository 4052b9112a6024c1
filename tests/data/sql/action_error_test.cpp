// What is told about action statements that cannot be read: a number, and a text that names the place.
#include "change_fixture.h"
#include "syntax/action_parser.h"

namespace quardele::sql {
namespace {

struct Case {
    const char* statement;
    int number;
};

void PrintTo(const Case& c, std::ostream* out) {
    *out << c.statement;
}

class ActionErrorTest : public testing::TestWithParam<Case> {};

TEST_P(ActionErrorTest, HasItsNumberAndAFrenchText) {
    try {
        static_cast<void>(ParseAction(basic::FromUtf8(GetParam().statement)));
        FAIL() << "was read";
    } catch (const basic::RuntimeError& failure) {
        EXPECT_EQ(failure.Number(), GetParam().number) << basic::ToUtf8(failure.Description());
        EXPECT_FALSE(failure.Description().empty());
    }
}

INSTANTIATE_TEST_SUITE_P(NoAction, ActionErrorTest,
                         testing::Values(Case{"", 3129}, Case{";", 3129}, Case{"TTYP", 3129},
                                         Case{"GRANT x", 3129}, Case{"[INSERT] INTO T VALUES (1)", 3129},
                                         Case{"SELECT 1", 3065}, Case{"DELETE FROM T; DELETE FROM T", 3142},
                                         Case{"DROP TABLE T;;", 3142}));

INSTANTIATE_TEST_SUITE_P(
    Insert, ActionErrorTest,
    testing::Values(Case{"INSERT", 3134}, Case{"INSERT T VALUES (1)", 3134}, Case{"INSERT INTO", 3134},
                    Case{"INSERT INTO 'T' VALUES (1)", 3134}, Case{"INSERT INTO T", 3134},
                    Case{"INSERT INTO T ()", 3134}, Case{"INSERT INTO T (a b) VALUES (1)", 3134},
                    Case{"INSERT INTO T (a, ) VALUES (1)", 3134}, Case{"INSERT INTO T (a VALUES (1)", 3134},
                    Case{"INSERT INTO T (1) VALUES (1)", 3134}, Case{"INSERT INTO T VALUES", 3134},
                    Case{"INSERT INTO T VALUES 1", 3134}, Case{"INSERT INTO T VALUES ()", 3075},
                    Case{"INSERT INTO T VALUES (1, )", 3075}, Case{"INSERT INTO T VALUES (1 2)", 3075},
                    Case{"INSERT INTO T VALUES (1", 3075}, Case{"INSERT INTO T VALUES (1))", 3075},
                    Case{"INSERT INTO T VALUES ('1)", 3075}, Case{"INSERT INTO T VALUES (1) x", 3134},
                    Case{"INSERT INTO T VALUES (1), (2)", 3134}, Case{"INSERT INTO T SELECT", 3141},
                    Case{"INSERT INTO T SELECT * FROM", 3131}, Case{"INSERT INTO T UPDATE", 3134}));

INSTANTIATE_TEST_SUITE_P(
    Update, ActionErrorTest,
    testing::Values(Case{"UPDATE", 3131}, Case{"UPDATE SET a = 1", 3131}, Case{"UPDATE T", 3144},
                    Case{"UPDATE T a = 1", 3144}, Case{"UPDATE T SET", 3144}, Case{"UPDATE T SET a", 3144},
                    Case{"UPDATE T SET a =", 3075}, Case{"UPDATE T SET 1 = 1", 3144},
                    Case{"UPDATE T SET a = 1,", 3144}, Case{"UPDATE T SET a == 1", 3075},
                    Case{"UPDATE T SET a.b.c = 1", 3144}, Case{"UPDATE T SET a = 1 b = 2", 3075},
                    Case{"UPDATE T SET a = 1 WHERE", 3075}, Case{"UPDATE T SET a = 1 WHERE b = 1)", 3075},
                    Case{"UPDATE T SET a = 1 WHERE b = 1 ORDER BY a", 3075}));

INSTANTIATE_TEST_SUITE_P(
    Delete, ActionErrorTest,
    testing::Values(Case{"DELETE", 3128}, Case{"DELETE T", 3128}, Case{"DELETE a, b FROM T", 3128},
                    Case{"DELETE * T", 3128}, Case{"DELETE FROM", 3131}, Case{"DELETE FROM T x y", 3128},
                    Case{"DELETE FROM T WHERE", 3075}, Case{"DELETE FROM T WHERE a = 1 b", 3075},
                    Case{"DELETE FROM T ORDER BY a", 3128}, Case{"DELETE FROM T INNER JOIN U", 3131}));

INSTANTIATE_TEST_SUITE_P(
    CreateTable, ActionErrorTest,
    testing::Values(
        Case{"CREATE", 3295}, Case{"CREATE VIEW V AS SELECT 1", 3295}, Case{"CREATE TABLE", 3290},
        Case{"CREATE TABLE T", 3290}, Case{"CREATE TABLE T ()", 3292}, Case{"CREATE TABLE T (a)", 3292},
        Case{"CREATE TABLE T (a TEXT", 3290}, Case{"CREATE TABLE T (a TEXT,)", 3292},
        Case{"CREATE TABLE T (a TEXT b TEXT)", 3290}, Case{"CREATE TABLE T (a TEXTE)", 3292},
        Case{"CREATE TABLE T (a [TEXT])", 3292}, Case{"CREATE TABLE T (a TEXT(0))", 3292},
        Case{"CREATE TABLE T (a TEXT(256))", 3292}, Case{"CREATE TABLE T (a TEXT(1.5))", 3292},
        Case{"CREATE TABLE T (a TEXT('5'))", 3292}, Case{"CREATE TABLE T (a TEXT(5)", 3290},
        Case{"CREATE TABLE T (a LONG(4))", 3290}, Case{"CREATE TABLE T (a BINARY(511))", 3292},
        Case{"CREATE TABLE T (a DECIMAL(29))", 3292}, Case{"CREATE TABLE T (a DECIMAL(5,6))", 3292},
        Case{"CREATE TABLE T (a LONG NOT)", 3292}, Case{"CREATE TABLE T (a LONG DEFAULT)", 3075},
        Case{"CREATE TABLE T (a LONG PRIMARY)", 3289}, Case{"CREATE TABLE T (a LONG CONSTRAINT)", 3289},
        Case{"CREATE TABLE T (a LONG CONSTRAINT c)", 3289},
        Case{"CREATE TABLE T (a LONG, PRIMARY KEY)", 3289},
        Case{"CREATE TABLE T (a LONG, PRIMARY KEY ())", 3289},
        Case{"CREATE TABLE T (a LONG, CONSTRAINT c UNIQUE a)", 3289},
        Case{"CREATE TABLE T (a LONG, CONSTRAINT c CHECK (a > 1))", 3289},
        Case{"CREATE TABLE T (a LONG REFERENCES U (b))", 3251},
        Case{"CREATE TABLE T (a LONG, CONSTRAINT c FOREIGN KEY (a) REFERENCES U (b))", 3251},
        Case{"CREATE TABLE T (a LONG, FOREIGN KEY (a) REFERENCES U (b))", 3251},
        Case{"CREATE TABLE T (a LONG) WITH x", 3290}));

INSTANTIATE_TEST_SUITE_P(
    OtherDefinitions, ActionErrorTest,
    testing::Values(Case{"CREATE UNIQUE TABLE T (a LONG)", 3291}, Case{"CREATE INDEX", 3291},
                    Case{"CREATE INDEX I", 3291}, Case{"CREATE INDEX I ON", 3291},
                    Case{"CREATE INDEX I ON T", 3291}, Case{"CREATE INDEX I ON T ()", 3291},
                    Case{"CREATE INDEX I ON T (a b)", 3291}, Case{"CREATE INDEX I ON T (a) WITH", 3291},
                    Case{"CREATE INDEX I ON T (a) WITH NULL", 3291},
                    Case{"CREATE INDEX I ON T (a) WITH DISALLOW", 3291},
                    Case{"CREATE INDEX I ON T (a) x", 3291}, Case{"ALTER", 3293}, Case{"ALTER TABLE", 3293},
                    Case{"ALTER TABLE T", 3293}, Case{"ALTER TABLE T ADD", 3292},
                    Case{"ALTER TABLE T ADD a", 3292}, Case{"ALTER TABLE T ADD COLUMN a LONG x", 3293},
                    Case{"ALTER TABLE T ADD CONSTRAINT c", 3289}, Case{"ALTER TABLE T DROP COLUMN a", 3251},
                    Case{"ALTER TABLE T ALTER COLUMN a LONG", 3251}, Case{"ALTER TABLE T RENAME a", 3293},
                    Case{"DROP", 3295}, Case{"DROP TABLE", 3295}, Case{"DROP TABLE T U", 3295},
                    Case{"DROP VIEW T", 3295}, Case{"DROP INDEX I ON T", 3251}));

TEST(ActionErrorTextTest, NamesTheStatementAndThePlace) {
    const auto text = [](const char* statement) {
        try {
            static_cast<void>(ParseAction(basic::FromUtf8(statement)));
        } catch (const basic::RuntimeError& failure) {
            return basic::ToUtf8(failure.Description());
        }
        return std::string();
    };
    EXPECT_EQ(
        text("INSERT INTO T VALUE (1)"),
        "Erreur de syntaxe (VALUES ou SELECT attendu) dans l'instruction INSERT INTO « INSERT INTO T VALUE "
        "(1) », près de « VALUE ».");
    EXPECT_EQ(
        text("UPDATE T SET a WHERE b"),
        "Erreur de syntaxe (« = » attendu) dans l'instruction UPDATE « a WHERE b », près de « WHERE ».");
    EXPECT_EQ(text("CREATE TABLE T (a TEXT(300))"),
              "Erreur de syntaxe (nombre de 1 à 255 attendu) dans la définition de champ « CREATE TABLE T (a "
              "TEXT(300)) », près de « 300 ».");
}

TEST(ActionErrorTextTest, TooLongAndTooDeepAreTold) {
    EXPECT_EQ(ErrorOf([] { static_cast<void>(ParseAction(Text(65537, u' '))); }), 3360);
    EXPECT_EQ(
        ErrorOf([] { static_cast<void>(ParseAction(u"INSERT INTO T VALUES (" + Text(1000, u'(') + u"1")); }),
        3360);
}

}  // namespace
}  // namespace quardele::sql
