// Joins: their kinds, nesting, and the ways in which they are done.
#include <algorithm>

#include "sql_fixture.h"

namespace quardele::sql {
namespace {

// TNUMAPPLI: 1 Stock, 2 Affaires, 10 Suivi Véhicules, 99 Tous modules. TEVOLUTION: module 10 with revisions
// 0, 1, 1, 5 and module 2 with revision 3.

TEST(JoinTest, InnerKeepsRowsWithPartnersOnly) {
    EXPECT_EQ(Rows(Changes(),
                   "SELECT MODULE, REVISION FROM TNUMAPPLI INNER JOIN TEVOLUTION "
                   "ON TNUMAPPLI.NUMAPPLI = TEVOLUTION.NUMAPPLI ORDER BY TNUMAPPLI.NUMAPPLI, REVISION"),
              (Lines{"'Affaires' 3", "'Suivi Véhicules' 0", "'Suivi Véhicules' 1", "'Suivi Véhicules' 1",
                     "'Suivi Véhicules' 5"}));
}

TEST(JoinTest, LeftKeepsAllRowsOfTheLeft) {
    EXPECT_EQ(Rows(Changes(),
                   "SELECT MODULE, REVISION FROM TNUMAPPLI LEFT JOIN TEVOLUTION "
                   "ON TNUMAPPLI.NUMAPPLI = TEVOLUTION.NUMAPPLI WHERE TNUMAPPLI.NUMAPPLI <> 10 "
                   "ORDER BY TNUMAPPLI.NUMAPPLI"),
              (Lines{"'Stock' Null", "'Affaires' 3", "'Tous modules' Null"}));
}

TEST(JoinTest, RightKeepsAllRowsOfTheRight) {
    EXPECT_EQ(Rows(Changes(),
                   "SELECT MODULE, REVISION FROM TEVOLUTION RIGHT OUTER JOIN TNUMAPPLI "
                   "ON TNUMAPPLI.NUMAPPLI = TEVOLUTION.NUMAPPLI WHERE MODULE < 'Suivi' ORDER BY MODULE"),
              (Lines{"'Affaires' 3", "'Stock' Null"}));
}

TEST(JoinTest, RowsWithoutPartnerAreFoundByNull) {
    EXPECT_EQ(
        Rows(Changes(),
             "SELECT MODULE FROM TNUMAPPLI LEFT JOIN TEVOLUTION ON TNUMAPPLI.NUMAPPLI = TEVOLUTION.NUMAPPLI "
             "WHERE TEVOLUTION.NUMAPPLI IS NULL ORDER BY 1"),
        (Lines{"'Stock'", "'Tous modules'"}));
}

TEST(JoinTest, ConditionsOfOnDecideAboutPartnersNotAboutRows) {
    EXPECT_EQ(Rows(Changes(),
                   "SELECT MODULE, REVISION FROM TNUMAPPLI LEFT JOIN TEVOLUTION "
                   "ON (TNUMAPPLI.NUMAPPLI = TEVOLUTION.NUMAPPLI AND REVISION > 4) ORDER BY MODULE"),
              (Lines{"'Affaires' Null", "'Stock' Null", "'Suivi Véhicules' 5", "'Tous modules' Null"}));
    EXPECT_EQ(Rows(Changes(),
                   "SELECT MODULE, REVISION FROM TNUMAPPLI LEFT JOIN TEVOLUTION "
                   "ON (TNUMAPPLI.NUMAPPLI = TEVOLUTION.NUMAPPLI AND MODULE = 'Affaires') ORDER BY MODULE"),
              (Lines{"'Affaires' 3", "'Stock' Null", "'Suivi Véhicules' Null", "'Tous modules' Null"}));
}

TEST(JoinTest, JoinsNestInParentheses) {
    const Lines expected = {"1 Null 1", "2 3 2", "99 Null 99"};
    EXPECT_EQ(Rows(Changes(),
                   "SELECT a.NUMAPPLI, e.REVISION, b.NUMAPPLI FROM (TNUMAPPLI AS a LEFT JOIN TEVOLUTION AS e "
                   "ON a.NUMAPPLI = e.NUMAPPLI) INNER JOIN TNUMAPPLI AS b ON a.NUMAPPLI = b.NUMAPPLI "
                   "WHERE a.NUMAPPLI <> 10 ORDER BY a.NUMAPPLI"),
              expected);
    EXPECT_EQ(
        Rows(Changes(),
             "SELECT b.NUMAPPLI, e.REVISION, a.NUMAPPLI FROM TNUMAPPLI AS b INNER JOIN (TEVOLUTION AS e "
             "RIGHT JOIN TNUMAPPLI AS a ON a.NUMAPPLI = e.NUMAPPLI) ON a.NUMAPPLI = b.NUMAPPLI "
             "WHERE a.NUMAPPLI <> 10 ORDER BY a.NUMAPPLI"),
        expected);
    EXPECT_EQ(Rows(Changes(),
                   "SELECT a.NUMAPPLI, e.REVISION, b.NUMAPPLI FROM TNUMAPPLI AS a LEFT JOIN (TEVOLUTION AS e "
                   "INNER JOIN TNUMAPPLI AS b ON e.NUMAPPLI = b.NUMAPPLI) ON a.NUMAPPLI = e.NUMAPPLI "
                   "WHERE a.NUMAPPLI <> 10 ORDER BY a.NUMAPPLI"),
              (Lines{"1 Null Null", "2 3 2", "99 Null Null"}));
}

TEST(JoinTest, CommasMakeAllPairs) {
    EXPECT_EQ(Rows(Changes(), "SELECT a.NUMAPPLI FROM TNUMAPPLI AS a, TNUMAPPLI AS b").size(), 16U);
    EXPECT_EQ(Rows(Changes(),
                   "SELECT a.NUMAPPLI, b.NUMAPPLI FROM TNUMAPPLI AS a, TNUMAPPLI AS b "
                   "WHERE a.NUMAPPLI < b.NUMAPPLI AND b.NUMAPPLI < 50 ORDER BY 1, 2"),
              (Lines{"1 2", "1 10", "2 10"}));
    EXPECT_EQ(Rows(Changes(),
                   "SELECT a.NUMAPPLI, c.REVISION FROM TNUMAPPLI AS a, TNUMAPPLI AS b, TEVOLUTION AS c "
                   "WHERE a.NUMAPPLI = b.NUMAPPLI AND c.NUMAPPLI = b.NUMAPPLI AND REVISION > 1 ORDER BY 1"),
              (Lines{"2 3", "10 5"}));
}

TEST(JoinTest, OnNeedsNoEquality) {
    EXPECT_EQ(Rows(Changes(),
                   "SELECT a.NUMAPPLI, b.NUMAPPLI FROM TNUMAPPLI AS a LEFT JOIN TNUMAPPLI AS b "
                   "ON a.NUMAPPLI > b.NUMAPPLI ORDER BY 1, 2"),
              (Lines{"1 Null", "2 1", "10 1", "10 2", "99 1", "99 2", "99 10"}));
}

TEST(JoinTest, TextsJoinWithoutRegardToCase) {
    EXPECT_EQ(Rows(Changes(),
                   "SELECT a.NUMAPPLI FROM TNUMAPPLI AS a INNER JOIN TNUMAPPLI AS b "
                   "ON UCase(a.MODULE) = LCase(b.MODULE) & '  '")
                  .size(),
              4U);
}

TEST(JoinTest, NullsAreNoPartners) {
    EXPECT_EQ(Rows(Workshop(),
                   "SELECT Count(*) FROM TVEH AS a INNER JOIN TVEH AS b ON a.TVEH_IMMAT = b.TVEH_IMMAT "
                   "WHERE a.TVEH_CODCLI = b.TVEH_CODCLI"),
              Rows(Workshop(), "SELECT Count(TVEH_CODCLI) FROM TVEH"));
    EXPECT_EQ(Rows(Workshop(),
                   "SELECT Count(*) FROM TVEH AS a INNER JOIN TVEH AS b ON a.TVEH_CODCLI = b.TVEH_CODCLI "
                   "WHERE a.TVEH_CODCLI Is Null"),
              (Lines{"0"}));
}

TEST(JoinTest, IndexAndHashFindTheSamePartners) {
    // An expression instead of the column keeps the index out of it.
    const std::string columns =
        "SELECT d.TVEH_DETAIL_Immat, d.TVEH_DETAIL_TypTrav, v.TVEH_MARQUE FROM TVEH_DETAIL AS d ";
    const std::string end = " WHERE d.TVEH_DETAIL_Immat < '7' ORDER BY 1, 2, 3";
    for (const std::string kind : {"INNER", "LEFT", "RIGHT"}) {
        const Lines indexed =
            Rows(Workshop(), columns + kind + " JOIN TVEH AS v ON d.TVEH_DETAIL_Immat = v.TVEH_IMMAT" + end);
        const Lines hashed =
            Rows(Workshop(),
                 columns + kind + " JOIN TVEH AS v ON d.TVEH_DETAIL_Immat & '' = v.TVEH_IMMAT & ''" + end);
        EXPECT_GT(indexed.size(), 100U) << kind;
        EXPECT_EQ(indexed, hashed) << kind;
    }
}

TEST(JoinTest, OnSeesTheTablesOfItsOwnJoin) {
    EXPECT_EQ(ErrorOfStatement(Changes(),
                               "SELECT * FROM TNUMAPPLI AS a, TNUMAPPLI AS b INNER JOIN TEVOLUTION AS c "
                               "ON a.NUMAPPLI = c.NUMAPPLI"),
              3061);
}

TEST(JoinTest, NamesThatSeveralTablesKnowMustBeQualified) {
    EXPECT_EQ(ErrorOfStatement(Changes(),
                               "SELECT NUMAPPLI FROM TNUMAPPLI INNER JOIN TEVOLUTION "
                               "ON TNUMAPPLI.NUMAPPLI = TEVOLUTION.NUMAPPLI"),
              3079);
    EXPECT_EQ(ErrorOfStatement(Changes(), "SELECT 1 FROM TNUMAPPLI, TNUMAPPLI"), 3081);
}

TEST(JoinTest, HistoryOfAVehicleComesFromJobsAndTheirLines) {
    const std::string statement =
        "SELECT IIf([TAFF_DETAIL_DatSortieEff] Is Not Null,[TAFF_DETAIL_DatSortieEff],[TAFF_DatLivrPrev]) AS "
        "DateVisite, TAFF.TAFF_Numaff, TAFF.TAFF_CodCli, TAFF.TAFF_CM, TAFF.TAFF_LibOpe, TAFF.TAFF_DetailOpe "
        "FROM TAFF LEFT JOIN TAFF_DETAIL ON TAFF.TAFF_Numaff = TAFF_DETAIL.TAFF_DETAIL_Numaff "
        "WHERE (((TAFF_DETAIL.TAFF_DETAIL_Ident)='1191 JR 43')) OR (([TAFF_Immatr]='1191 JR 43')) "
        "ORDER by IIf([TAFF_DETAIL_DatSortieEff] Is Not Null,[TAFF_DETAIL_DatSortieEff],[TAFF_DatSortieEff]) "
        "DESC;";
    const Lines jobs = Rows(Workshop(), statement);
    const Lines own = Rows(Workshop(), "SELECT TAFF_Numaff FROM TAFF WHERE TAFF_Immatr = '1191 JR 43'");
    ASSERT_FALSE(own.empty());
    for (const std::string& number : own) {
        EXPECT_TRUE(std::any_of(jobs.begin(), jobs.end(), [&number](const std::string& line) {
            return line.find(" " + number + " ") != std::string::npos;
        })) << number;
    }
}

}  // namespace
}  // namespace quardele::sql
