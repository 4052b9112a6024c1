// What operators are told about statements that cannot be run: a number, and a text that names the place.
#include "sql_fixture.h"

namespace quardele::sql {
namespace {

struct Case {
    const char* statement;
    int number;
};

void PrintTo(const Case& c, std::ostream* out) {
    *out << c.statement;
}

class StatementErrorTest : public testing::TestWithParam<Case> {};

TEST_P(StatementErrorTest, HasItsNumberAndAFrenchText) {
    EXPECT_EQ(ErrorOfStatement(Stock(), GetParam().statement), GetParam().number);
    EXPECT_FALSE(DescriptionOf(Stock(), GetParam().statement).empty());
}

INSTANTIATE_TEST_SUITE_P(NoSelect, StatementErrorTest,
                         testing::Values(Case{"", 3129}, Case{"TSITE", 3129}, Case{"DELETE FROM TSITE", 3129},
                                         Case{"DROP TABLE TSITE", 3129}, Case{";", 3129},
                                         Case{"SELECT 1; DELETE FROM TSITE", 3142},
                                         Case{"SELECT * FROM TSITE;;", 3142}));

INSTANTIATE_TEST_SUITE_P(SelectList, StatementErrorTest,
                         testing::Values(Case{"SELECT", 3141}, Case{"SELECT FROM TSITE", 3141},
                                         Case{"SELECT , TSITE_CODE FROM TSITE", 3141},
                                         Case{"SELECT TSITE_CODE, FROM TSITE", 3141},
                                         Case{"SELECT TSITE_CODE AS FROM TSITE", 3141},
                                         Case{"SELECT TSITE_CODE AS 'x' FROM TSITE", 3141},
                                         Case{"SELECT * ", 3141}, Case{"SELECT X.* FROM TSITE", 3141},
                                         Case{"SELECT TOP 0 * FROM TSITE", 3141},
                                         Case{"SELECT TOP 1.5 * FROM TSITE", 3141},
                                         Case{"SELECT TSITE_CODE TSITE_LIBELLE FROM TSITE", 3075}));

INSTANTIATE_TEST_SUITE_P(
    From, StatementErrorTest,
    testing::Values(Case{"SELECT * FROM", 3131}, Case{"SELECT * FROM WHERE 1", 3131},
                    Case{"SELECT * FROM TSITE,", 3131}, Case{"SELECT * FROM (TSITE", 3131},
                    Case{"SELECT * FROM TSITE INNER TSITE", 3131},
                    Case{"SELECT * FROM TSITE INNER JOIN TSITE AS b", 3131},
                    Case{"SELECT * FROM TSITE JOIN TSITE AS b ON 1", 3131},
                    Case{"SELECT * FROM TSITE AS a b", 3131}, Case{"SELECT * FROM 'TSITE'", 3131},
                    Case{"SELECT * FROM INCONNUE", 3078}, Case{"SELECT * FROM [TSITE", 3131}));

INSTANTIATE_TEST_SUITE_P(Expressions, StatementErrorTest,
                         testing::Values(Case{"SELECT * FROM TSITE WHERE", 3075},
                                         Case{"SELECT * FROM TSITE WHERE TSITE_CODE = ", 3075},
                                         Case{"SELECT * FROM TSITE WHERE TSITE_CODE = 'L'AVION'", 3075},
                                         Case{"SELECT * FROM TSITE WHERE TSITE_CODE = 'PAR", 3075},
                                         Case{"SELECT * FROM TSITE WHERE (TSITE_CODE = 'PAR'", 3075},
                                         Case{"SELECT * FROM TSITE WHERE TSITE_CODE = 'PAR')", 3075},
                                         Case{"SELECT * FROM TSITE WHERE TSITE_CODE = #99/99/99#", 3075},
                                         Case{"SELECT * FROM TSITE WHERE TSITE_CODE = 'A' AND", 3075},
                                         Case{"SELECT * FROM TSITE WHERE and TSITE_CODE = 'A'", 3075},
                                         Case{"SELECT * FROM TSITE WHERE TSITE_CODE BETWEEN 1", 3075},
                                         Case{"SELECT * FROM TSITE WHERE TSITE_CODE IN 'A'", 3075},
                                         Case{"SELECT * FROM TSITE WHERE TSITE_CODE IN ()", 3075},
                                         Case{"SELECT * FROM TSITE WHERE TSITE_CODE IS 5", 3075},
                                         Case{"SELECT * FROM TSITE WHERE TSITE_CODE ! 5", 3075},
                                         Case{"SELECT * FROM TSITE WHERE TSITE_CODE @ 5", 3075},
                                         Case{"SELECT * FROM TSITE WHERE EXISTS 5", 3075},
                                         Case{"SELECT Left(TSITE_CODE, FROM TSITE", 3075},
                                         Case{"SELECT * FROM TSITE GROUP TSITE_CODE", 3075},
                                         Case{"SELECT * FROM TSITE WHERE Foo(1) = 1", 3085},
                                         Case{"SELECT Count(DISTINCT TSITE_CODE) FROM TSITE", 3075}));

INSTANTIATE_TEST_SUITE_P(Order, StatementErrorTest,
                         testing::Values(Case{"SELECT * FROM TSITE ORDER", 3138},
                                         Case{"SELECT * FROM TSITE ORDER BY", 3138},
                                         Case{"SELECT * FROM TSITE ORDER BY TSITE_CODE,", 3138},
                                         Case{"SELECT * FROM TSITE ORDER BY 9", 3138},
                                         Case{"SELECT * FROM TSITE ORDER BY TSITE_CODE TSITE_CODE", 3075},
                                         Case{"SELECT * FROM TSITE ORDER BY DER BY", 3075}));

INSTANTIATE_TEST_SUITE_P(Names, StatementErrorTest,
                         testing::Values(Case{"SELECT * FROM TSITE WHERE INCONNU = 1", 3061},
                                         Case{"SELECT * FROM TSITE WHERE TAUTRE.TSITE_CODE = 'A'", 3061},
                                         Case{"SELECT * FROM TSITE ORDER BY INCONNU", 3061},
                                         Case{"SELECT S.TSITE_CODE FROM TSITE AS T", 3061},
                                         Case{"SELECT TSITE_CODE AS x FROM TSITE WHERE x = 'A'", 3061},
                                         Case{"SELECT x + 1 AS x FROM TSITE", 3103},
                                         Case{"SELECT b AS a, a AS b FROM TSITE", 3103},
                                         Case{"SELECT * FROM TSITE WHERE TSITE_CODE = 5", 3464},
                                         Case{"SELECT * FROM TSITE WHERE TSITE_CODE = #12/31/2026#", 3464},
                                         Case{"SELECT * FROM TSITE WHERE TSITE_CODE", 3464}));

TEST(StatementErrorTextTest, UnknownNamesAreCountedOnce) {
    EXPECT_EQ(DescriptionOf(Stock(), "SELECT * FROM TSITE WHERE a = b OR A = c"),
              "Trop peu de paramètres. 3 attendu : « a », « b », « c ».");
    EXPECT_EQ(DescriptionOf(Stock(), "SELECT * FROM TSITE WHERE x = 1"),
              "Trop peu de paramètres. 1 attendu : « x ».");
    EXPECT_EQ(DescriptionOf(Stock(), "SELECT a, b, c, d, e, f FROM TSITE"),
              "Trop peu de paramètres. 6 attendu : « a », « b », « c », « d », « e » …");
}

TEST(StatementErrorTextTest, UnknownNamesOfAllPartsCount) {
    EXPECT_EQ(
        DescriptionOf(Stock(),
                      "SELECT a FROM TSITE WHERE b = 1 AND TSITE_CODE IN (SELECT c FROM TSITE WHERE A = d)"),
        "Trop peu de paramètres. 4 attendu : « a », « b », « c », « d ».");
    EXPECT_EQ(
        DescriptionOf(Stock(), "SELECT a FROM TSITE UNION SELECT b FROM TSITE UNION SELECT A FROM TSITE"),
        "Trop peu de paramètres. 2 attendu : « a », « b ».");
    EXPECT_EQ(DescriptionOf(Stock(), "SELECT 1 FROM (SELECT a FROM TSITE) AS S, (SELECT b FROM TSITE) AS T"),
              "Trop peu de paramètres. 2 attendu : « a », « b ».");
    EXPECT_EQ(DescriptionOf(
                  Stock(), "SELECT (SELECT Max(a) FROM TSITE WHERE EXISTS (SELECT b FROM TSITE)) FROM TSITE"),
              "Trop peu de paramètres. 2 attendu : « a », « b ».");
}

TEST(StatementErrorTextTest, FailuresOfCalculatingNameTheExpression) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"SELECT Len(TSITE_CODE) / 0 FROM TSITE",
         "Division par zéro dans l'expression « Len(TSITE_CODE) / 0 »."},
        {"SELECT 1 FROM TSITE WHERE TSITE_CODE = 'PA' AND CLng(TSITE_LIBELLE) = 1",
         "Type incompatible dans l'expression « CLng(TSITE_LIBELLE) = 1 »."},
        {"SELECT 1 FROM TSITE ORDER BY CInt(40000 + Len(TSITE_CODE))",
         "Dépassement de capacité dans l'expression « CInt(40000 + Len(TSITE_CODE)) »."},
        {"SELECT Max(CStr(Null)) FROM TSITE",
         "Utilisation incorrecte de Null dans l'expression « CStr(Null) »."},
        {"SELECT 1 FROM TSITE WHERE TSITE_CODE < 1 OR False",
         "Types de données incompatibles dans l'expression « TSITE_CODE < 1 Or False »."},
        {"SELECT (SELECT Left(S.TSITE_CODE, -1)) FROM TSITE AS S",
         "Argument ou appel de procédure incorrect dans l'expression « Left(S.TSITE_CODE, -1) »."},
        {"SELECT X.* FROM TSITE",
         "Erreur de syntaxe (table absente de la clause FROM) dans la clause SELECT « X.* », près de « X »."},
    };
    for (const auto& [statement, text] : cases) {
        EXPECT_EQ(DescriptionOf(Stock(), statement), text) << statement;
    }
}

TEST(StatementErrorTextTest, TooMuchIsNamed) {
    EXPECT_EQ(DescriptionOf(Stock(), "SELECT * FROM TSITE WHERE " + std::string(70000, ' ')),
              "La requête est trop complexe : texte de plus de 65 536 caractères.");
    EXPECT_EQ(DescriptionOf(Stock(), "SELECT " + std::string(400, '(') + "1"),
              "La requête est trop complexe : trop de parenthèses et d'opérations l'une dans l'autre.");
    std::string tables = "TSITE AS t0";
    for (int i = 1; i < 33; ++i) {
        tables += ", TSITE AS t" + std::to_string(i);
    }
    EXPECT_EQ(DescriptionOf(Stock(), "SELECT * FROM " + tables),
              "La requête est trop complexe : plus de 32 tables dans la clause FROM.");
}

TEST(StatementErrorTextTest, SyntaxErrorsNameThePlace) {
    EXPECT_EQ(DescriptionOf(Stock(), "SELECT * FROM TSITE WHERE TSITE_CODE = 'L'AVION'"),
              "Erreur de syntaxe (opérateur absent) dans l'expression « TSITE_CODE = 'L'AVION' », près de « "
              "AVION ».");
    EXPECT_EQ(DescriptionOf(Stock(), "SELECT * FROM TSITE WHERE (1 = 1"),
              "Erreur de syntaxe (parenthèse fermante absente) dans l'expression « (1 = 1 », à la fin.");
    EXPECT_EQ(DescriptionOf(Stock(), "SELECT * FROM , TSITE"),
              "Erreur de syntaxe (nom attendu) dans la clause FROM « , TSITE », près de « , ».");
}

TEST(StatementErrorTextTest, NamesAreQuoted) {
    EXPECT_NE(DescriptionOf(Stock(), "SELECT * FROM INCONNUE").find("INCONNUE"), std::string::npos);
    EXPECT_NE(DescriptionOf(Stock(), "SELECT Foo(1) FROM TSITE").find("« Foo »"), std::string::npos);
    EXPECT_NE(DescriptionOf(Stock(), "SELECT TSITE_LIBELLE FROM TSITE GROUP BY TSITE_CODE")
                  .find("« TSITE_LIBELLE »"),
              std::string::npos);
}

TEST(StatementErrorTextTest, LongStatementsAreQuotedInPart) {
    const std::string text =
        DescriptionOf(Stock(), "SELECT * FROM TSITE WHERE 1 = (" + std::string(5000, '1'));
    EXPECT_LT(text.size(), 400U);
}

TEST(DeepStatementTest, DepthIsLimited) {
    const std::string start = "SELECT * FROM TSITE WHERE ";
    EXPECT_EQ(ErrorOfStatement(Stock(), start + std::string(65536, '(')), 3360);
    EXPECT_EQ(ErrorOfStatement(Stock(), start + std::string(60000, '-') + "1"), 3360);
    std::string nots;
    std::string sum = "1";
    std::string calls;
    for (int i = 0; i < 15000; ++i) {
        nots += "NOT ";
        sum += "+1";
        calls += "Abs(";
    }
    EXPECT_EQ(ErrorOfStatement(Stock(), start + nots + "True"), 3360);
    EXPECT_EQ(ErrorOfStatement(Stock(), start + sum + " = 0"), 3360);
    EXPECT_EQ(ErrorOfStatement(Stock(), start + calls), 3360);
    EXPECT_EQ(ErrorOfStatement(Stock(), "SELECT * FROM " + std::string(60000, '(')), 3360);
    EXPECT_EQ(ErrorOfStatement(Stock(), std::string(100000, ' ') + "SELECT 1"), 3360);
}

TEST(DeepStatementTest, LongChainsOfConditionsAreNotDeep) {
    std::string condition = "TSITE_CODE = 'PAR'";
    for (int i = 0; i < 3000; ++i) {
        condition += i % 2 == 0 ? " OR TSITE_CODE='X'" : " OR True=False";
    }
    EXPECT_EQ(Rows(Stock(), "SELECT TSITE_CODE FROM TSITE WHERE " + condition), (Lines{"'PAR'"}));
}

TEST(DeepStatementTest, AliasesThatDoubleEachOtherAreLimited) {
    std::string items = "1 AS a0";
    for (int i = 1; i < 60; ++i) {
        const std::string before = "a" + std::to_string(i - 1);
        items += ", " + before + "+" + before + " AS a" + std::to_string(i);
    }
    EXPECT_EQ(ErrorOfStatement(Stock(), "SELECT " + items + " FROM TSITE"), 3360);
}

TEST(DeepStatementTest, TablesAreLimited) {
    std::string from = "TSITE AS t0";
    for (int i = 1; i < 40; ++i) {
        from += ", TSITE AS t" + std::to_string(i);
    }
    EXPECT_EQ(ErrorOfStatement(Stock(), "SELECT 1 FROM " + from), 3360);
}

}  // namespace
}  // namespace quardele::sql
