// The clauses of a statement over one table.
#include "sql_fixture.h"

namespace quardele::sql {
namespace {

TEST(SelectTest, StarGivesAllColumnsInTheirOrder) {
    EXPECT_EQ(ColumnNames(Stock(), "SELECT * FROM TSITE"),
              (Lines{"TSITE_CODE", "TSITE_LIBELLE", "TSITE_Inactif"}));
    EXPECT_EQ(ColumnNames(Stock(), "SELECT S.*, TSITE_CODE AS Code FROM TSITE AS S"),
              (Lines{"TSITE_CODE", "TSITE_LIBELLE", "TSITE_Inactif", "Code"}));
}

TEST(SelectTest, ColumnsAreSpelledAsInTheTable) {
    EXPECT_EQ(ColumnNames(Stock(), "SELECT tsite_code, tsite.TSITE_LIBELLE FROM tsite"),
              (Lines{"TSITE_CODE", "TSITE_LIBELLE"}));
}

TEST(SelectTest, ExpressionsGetNamesByTheirPosition) {
    EXPECT_EQ(ColumnNames(Stock(), "SELECT TSITE_CODE, 1 + 1, TSITE_CODE & '', 2 AS Deux FROM TSITE"),
              (Lines{"TSITE_CODE", "Expr1001", "Expr1002", "Deux"}));
}

TEST(SelectTest, ColumnsWithOneNameAreQualified) {
    EXPECT_EQ(
        ColumnNames(Changes(), "SELECT a.NUMAPPLI, b.NUMAPPLI, a.MODULE FROM TNUMAPPLI AS a, TNUMAPPLI AS b"),
        (Lines{"a.NUMAPPLI", "b.NUMAPPLI", "MODULE"}));
}

TEST(SelectTest, AWorkOfTheReservedWordDateIsAColumn) {
    EXPECT_EQ(Rows(Changes(), "SELECT TEVOLUTION.DATE FROM TEVOLUTION WHERE NUMAPPLI = 2"),
              (Lines{"#01/10/2022#"}));
    EXPECT_EQ(Rows(Changes(), "SELECT [DATE] FROM TEVOLUTION WHERE DATE = #1/10/2022#"),
              (Lines{"#01/10/2022#"}));
}

TEST(SelectTest, AliasesCanBeUsedInOtherColumns) {
    EXPECT_EQ(Rows(Stock(), "SELECT TSITE_CODE & '-' AS a, a & a AS b FROM TSITE WHERE TSITE_CODE = 'PA'"),
              (Lines{"'PA-' 'PA-PA-'"}));
}

TEST(SelectTest, WithoutFromThereIsOneRow) {
    EXPECT_EQ(Rows(Stock(), "SELECT 1 AS a, 'x' AS b"), (Lines{"1 'x'"}));
    EXPECT_EQ(Rows(Stock(), "SELECT 1 WHERE False"), Lines{});
}

TEST(SelectTest, RowsOfATableComeInTheOrderOfItsPrimaryKey) {
    EXPECT_EQ(Rows(Stock(), "SELECT TSITE_CODE FROM TSITE"),
              (Lines{"'BDX'", "'LIL'", "'LYO'", "'PA'", "'PAR'"}));
    EXPECT_EQ(Rows(Stock(), "SELECT TSITE_CODE FROM TSITE WHERE TSITE_LIBELLE <> ''"),
              (Lines{"'BDX'", "'LIL'", "'LYO'", "'PA'", "'PAR'"}));
}

// Order.

TEST(OrderTest, ByNamePositionExpressionAndAlias) {
    const Lines byLabel = {"'BDX'", "'LIL'", "'LYO'", "'PAR'", "'PA'"};
    EXPECT_EQ(Rows(Stock(), "SELECT TSITE_CODE FROM TSITE ORDER BY TSITE_LIBELLE"), byLabel);
    EXPECT_EQ(Rows(Stock(), "SELECT TSITE_CODE FROM TSITE ORDER BY tsite.tsite_libelle ASC"), byLabel);
    EXPECT_EQ(Rows(Stock(), "SELECT TSITE_CODE FROM TSITE ORDER BY Len(TSITE_CODE), 1 DESC"),
              (Lines{"'PA'", "'PAR'", "'LYO'", "'LIL'", "'BDX'"}));
    EXPECT_EQ(Rows(Stock(), "SELECT Right(TSITE_CODE, 1) AS Fin FROM TSITE ORDER BY Fin DESC"),
              (Lines{"'X'", "'R'", "'O'", "'L'", "'A'"}));
}

TEST(OrderTest, DescendingWalksTheKeyBackwards) {
    EXPECT_EQ(Rows(Stock(), "SELECT TSITE_CODE FROM TSITE ORDER BY TSITE_CODE DESC"),
              (Lines{"'PAR'", "'PA'", "'LYO'", "'LIL'", "'BDX'"}));
}

TEST(OrderTest, NullsComeFirst) {
    const Lines customers = Rows(Workshop(), "SELECT TVEH_CODCLI FROM TVEH ORDER BY TVEH_CODCLI");
    ASSERT_EQ(customers.front(), "Null");
    EXPECT_NE(customers.back(), "Null");
    EXPECT_EQ(Rows(Workshop(), "SELECT TVEH_CODCLI FROM TVEH ORDER BY TVEH_CODCLI DESC").back(), "Null");
}

TEST(OrderTest, RowsWithEqualKeysStayInPhysicalOrder) {
    // Jobs have ascending numbers in the order in which they were written.
    const auto query = Query::Prepare(
        Workshop(),
        u"SELECT TAFF_Site, TAFF_Numaff FROM TAFF WHERE TAFF_Site IN ('LYO', 'PA') ORDER BY TAFF_Site");
    const RowSet rows = query->Run();
    ASSERT_GT(rows.Size(), 100U);
    for (std::size_t i = 1; i < rows.Size(); ++i) {
        if (rows.Value(i, 0) == rows.Value(i - 1, 0)) {
            EXPECT_LT(rows.Value(i - 1, 1).As<std::int32_t>(), rows.Value(i, 1).As<std::int32_t>());
        }
    }
}

// TOP and DISTINCT.

TEST(TopTest, GivesTheFirstRows) {
    EXPECT_EQ(Rows(Stock(), "SELECT TOP 2 TSITE_CODE FROM TSITE ORDER BY TSITE_LIBELLE"),
              (Lines{"'BDX'", "'LIL'"}));
    EXPECT_EQ(Rows(Stock(), "SELECT TOP 2 TSITE_CODE FROM TSITE"), (Lines{"'BDX'", "'LIL'"}));
    EXPECT_EQ(Rows(Stock(), "SELECT TOP 9 TSITE_CODE FROM TSITE").size(), 5U);
    EXPECT_EQ(Rows(Stock(), "SELECT TOP 50 PERCENT TSITE_CODE FROM TSITE ORDER BY 1"),
              (Lines{"'BDX'", "'LIL'", "'LYO'"}));
}

TEST(TopTest, RowsThatAreEqualToTheLastOneComeToo) {
    EXPECT_EQ(Rows(Stock(), "SELECT TOP 2 TSITE_CODE FROM TSITE ORDER BY Len(TSITE_CODE)").size(), 5U);
    EXPECT_EQ(Rows(Changes(), "SELECT TOP 1 NUMAPPLI FROM TEVOLUTION ORDER BY NUMAPPLI DESC"),
              (Lines{"10", "10", "10", "10"}));
}

TEST(TopTest, APercentageWithoutOrderEndsAmongRowsOfValues) {
    const std::string groups = "NUMAPPLI, Count(*) FROM TEVOLUTION GROUP BY NUMAPPLI";
    const Lines all = Rows(Changes(), "SELECT " + groups);
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(Rows(Changes(), "SELECT TOP 50 PERCENT " + groups), Lines{all.front()});
    EXPECT_EQ(Rows(Changes(), "SELECT TOP 1 " + groups), Lines{all.front()});
    EXPECT_EQ(Rows(Stock(), "SELECT TOP 50 PERCENT S.a FROM (SELECT TSITE_CODE AS a FROM TSITE) AS S").size(),
              3U);
}

TEST(TopTest, IsAlsoAName) {
    EXPECT_EQ(ErrorOfStatement(Stock(), "SELECT Top FROM TSITE"), 3061);
}

TEST(DistinctTest, EqualRowsComeOnceAndInOrder) {
    EXPECT_EQ(Rows(Changes(), "SELECT DISTINCT NUMAPPLI FROM TEVOLUTION"), (Lines{"2", "10"}));
    EXPECT_EQ(Rows(Changes(), "SELECT DISTINCT NUMAPPLI FROM TEVOLUTION ORDER BY NUMAPPLI DESC"),
              (Lines{"10", "2"}));
    EXPECT_EQ(Rows(Changes(), "SELECT DISTINCT NUMAPPLI, REVISION FROM TEVOLUTION").size(), 4U);
    EXPECT_EQ(Rows(Stock(), "SELECT DISTINCT TSITE_Inactif FROM TSITE"), (Lines{"True", "False"}));
}

TEST(DistinctTest, TextsThatDifferInCaseOnlyAreEqual) {
    EXPECT_EQ(Rows(Stock(), "SELECT DISTINCT IIf(TSITE_CODE = 'PA', 'x', 'X ') FROM TSITE").size(), 1U);
}

TEST(DistinctTest, CannotBeOrderedByWhatIsNotInTheList) {
    EXPECT_EQ(ErrorOfStatement(Stock(), "SELECT DISTINCT TSITE_CODE FROM TSITE ORDER BY TSITE_LIBELLE"),
              3093);
    EXPECT_EQ(
        Rows(Stock(), "SELECT DISTINCT Left(TSITE_CODE, 1) FROM TSITE ORDER BY Left(TSITE_CODE, 1) DESC"),
        (Lines{"'P'", "'L'", "'B'"}));
}

// Groups.

TEST(GroupTest, AggregatesOfGroups) {
    EXPECT_EQ(Rows(Changes(),
                   "SELECT NUMAPPLI, Count(*), Count(REVISION), Sum(REVISION), Avg(REVISION), Min(REVISION), "
                   "Max([DATE]), First(REVISION), Last(REVISION) FROM TEVOLUTION GROUP BY NUMAPPLI"),
              (Lines{"2 1 1 3 3 3 #01/10/2022# 3 3", "10 4 4 7 1.75 0 #09/01/2026# 0 5"}));
}

TEST(GroupTest, WithoutGroupByAllRowsAreOneGroup) {
    EXPECT_EQ(Rows(Changes(), "SELECT Count(*), Max(REVISION) - Min(REVISION) FROM TEVOLUTION"),
              (Lines{"5 5"}));
    EXPECT_EQ(Rows(Changes(), "SELECT Count(*), Sum(REVISION), First(REVISION) FROM TEVOLUTION WHERE False"),
              (Lines{"0 Null Null"}));
    EXPECT_EQ(Rows(Changes(), "SELECT NUMAPPLI, Count(*) FROM TEVOLUTION WHERE False GROUP BY NUMAPPLI"),
              Lines{});
}

TEST(GroupTest, NullsArePassedOverAndAreOneGroup) {
    const Lines counts = Rows(Workshop(), "SELECT Count(*), Count(TVEH_CODCLI) FROM TVEH");
    const Lines withoutCustomer = Rows(Workshop(), "SELECT Count(*) FROM TVEH WHERE TVEH_CODCLI Is Null");
    EXPECT_EQ(counts.front(), "1500 " + std::to_string(1500 - std::stoi(withoutCustomer.front())));
    EXPECT_EQ(Rows(Workshop(), "SELECT TVEH_CODCLI, Count(*) FROM TVEH GROUP BY TVEH_CODCLI").front(),
              "Null " + withoutCustomer.front());
}

TEST(GroupTest, HavingMayRepeatGroupedExpressionsAndAggregates) {
    EXPECT_EQ(
        Rows(Changes(),
             "SELECT NUMAPPLI * 10 AS n FROM TEVOLUTION GROUP BY NUMAPPLI * 10 HAVING (NUMAPPLI * 10) > 50"),
        (Lines{"100"}));
    EXPECT_EQ(Rows(Changes(), "SELECT NUMAPPLI FROM TEVOLUTION GROUP BY NUMAPPLI HAVING Count(*) = 1"),
              (Lines{"2"}));
    EXPECT_EQ(
        Rows(Changes(),
             "SELECT TEVOLUTION.NUMAPPLI FROM TEVOLUTION GROUP BY NUMAPPLI HAVING tevolution.numappli > 5"),
        (Lines{"10"}));
}

TEST(GroupTest, GroupsCanBeOrderedByAggregates) {
    EXPECT_EQ(Rows(Changes(), "SELECT NUMAPPLI FROM TEVOLUTION GROUP BY NUMAPPLI ORDER BY Count(*) DESC"),
              (Lines{"10", "2"}));
    EXPECT_EQ(
        Rows(Changes(), "SELECT NUMAPPLI, Count(*) AS n FROM TEVOLUTION GROUP BY NUMAPPLI ORDER BY n DESC"),
        (Lines{"10 4", "2 1"}));
}

TEST(GroupTest, OtherColumnsAreAnError) {
    EXPECT_EQ(ErrorOfStatement(Changes(), "SELECT REVISION FROM TEVOLUTION GROUP BY NUMAPPLI"), 3122);
    EXPECT_EQ(ErrorOfStatement(Changes(), "SELECT Count(*), REVISION FROM TEVOLUTION"), 3122);
    EXPECT_EQ(ErrorOfStatement(Changes(), "SELECT * FROM TEVOLUTION GROUP BY NUMAPPLI"), 3122);
    EXPECT_EQ(ErrorOfStatement(Changes(), "SELECT Count(*) FROM TEVOLUTION ORDER BY REVISION"), 3122);
}

TEST(GroupTest, AggregatesHaveTheirPlaces) {
    EXPECT_EQ(ErrorOfStatement(Changes(), "SELECT NUMAPPLI FROM TEVOLUTION WHERE Count(*) > 1"), 3096);
    EXPECT_EQ(ErrorOfStatement(Changes(), "SELECT 1 FROM TEVOLUTION GROUP BY Count(*)"), 3099);
    EXPECT_EQ(ErrorOfStatement(Changes(), "SELECT Sum(Max(REVISION)) FROM TEVOLUTION"), 3095);
    EXPECT_EQ(ErrorOfStatement(Changes(),
                               "SELECT a.NUMAPPLI FROM TNUMAPPLI AS a INNER JOIN TEVOLUTION AS b "
                               "ON a.NUMAPPLI = Max(b.NUMAPPLI)"),
              3098);
    EXPECT_EQ(ErrorOfStatement(Changes(), "SELECT Sum(MODULE) FROM TNUMAPPLI"), 3464);
    EXPECT_EQ(ErrorOfStatement(Changes(), "SELECT Sum(NUMAPPLI, 1) FROM TNUMAPPLI"), 3075);
}

TEST(GroupTest, AmountsAreAddedExactly) {
    const Lines sum = Rows(Workshop(), "SELECT Sum(TCLI_ENCOURS) FROM TCLI");
    EXPECT_EQ(sum.front().substr(sum.front().size() - 4), " EUR");
    EXPECT_EQ(Rows(Workshop(), "SELECT Sum(TCLI_ENCOURS) - Sum(TCLI_ENCOURS * 1) FROM TCLI"),
              (Lines{"0 EUR"}));
}

// UNION.

TEST(UnionTest, DropsRowsThatAreEqual) {
    EXPECT_EQ(Rows(Changes(), "SELECT NUMAPPLI FROM TEVOLUTION UNION SELECT NUMAPPLI FROM TNUMAPPLI"),
              (Lines{"1", "2", "10", "99"}));
    EXPECT_EQ(Rows(Changes(), "SELECT 'a' FROM TNUMAPPLI UNION SELECT 'A ' FROM TNUMAPPLI"), (Lines{"'a'"}));
}

TEST(UnionTest, AllKeepsThem) {
    EXPECT_EQ(
        Rows(Changes(), "SELECT NUMAPPLI FROM TEVOLUTION UNION ALL SELECT NUMAPPLI FROM TNUMAPPLI").size(),
        9U);
    EXPECT_EQ(Rows(Changes(), "SELECT 1 UNION SELECT 1 UNION ALL SELECT 1"), (Lines{"1", "1"}));
    EXPECT_EQ(Rows(Changes(), "SELECT 1 UNION ALL SELECT 1 UNION SELECT 1"), (Lines{"1"}));
}

TEST(UnionTest, OrderGoesByResultColumns) {
    EXPECT_EQ(Rows(Changes(),
                   "SELECT NUMAPPLI AS n, MODULE AS t FROM TNUMAPPLI WHERE NUMAPPLI < 5 UNION "
                   "SELECT REVISION, 'rev' FROM TEVOLUTION WHERE NUMAPPLI = 2 ORDER BY n DESC, 2"),
              (Lines{"3 'rev'", "2 'Affaires'", "1 'Stock'"}));
    EXPECT_EQ(ErrorOfStatement(Changes(), "SELECT 1 AS a UNION SELECT 2 ORDER BY MODULE"), 3061);
}

TEST(UnionTest, HoldsValuesUnderTheNamesOfTheFirstPart) {
    const auto query =
        Query::Prepare(Changes(), u"SELECT NUMAPPLI AS n FROM TNUMAPPLI UNION SELECT 2.5 AS x");
    const RowSet rows = query->Run();
    EXPECT_FALSE(rows.HasKeys());
    EXPECT_EQ(query->Columns()[0].name, u"n");
    EXPECT_EQ(query->Columns()[0].type, jet::ColumnType::Double);
    EXPECT_EQ(Condition(query, u"n = 2.5").FindForward(rows, 0), 2U);
}

TEST(UnionTest, ANullGoesWithEveryType) {
    const auto query =
        Query::Prepare(Changes(), u"SELECT 1, Null FROM TNUMAPPLI UNION SELECT Null, #1/31/2026#");
    EXPECT_EQ(query->Columns()[0].type, jet::ColumnType::Long);
    EXPECT_EQ(query->Columns()[1].type, jet::ColumnType::Date);
}

TEST(UnionTest, AnUnknownTypeGoesByThatOfTheOtherParts) {
    const auto query =
        Query::Prepare(Changes(), u"SELECT 1 - Null - NUMAPPLI FROM TNUMAPPLI UNION SELECT 2.5");
    EXPECT_EQ(query->Columns()[0].type, jet::ColumnType::Double);
    EXPECT_EQ(
        Rows(Changes(),
             "SELECT 7 UNION ALL SELECT IIf(NUMAPPLI = 2, 'deux', 0) FROM TNUMAPPLI WHERE NUMAPPLI = 2"),
        (Lines{"7", "'deux'"}));
}

TEST(UnionTest, TextsAreAsLongAsTheLongestPart) {
    const auto plain =
        Query::Prepare(Stock(), u"SELECT TSITE_CODE FROM TSITE UNION SELECT TSITE_LIBELLE FROM TSITE");
    EXPECT_EQ(plain->Columns()[0].type, jet::ColumnType::Text);
    EXPECT_EQ(plain->Columns()[0].size, 40);
    const auto made = Query::Prepare(Stock(), u"SELECT TSITE_CODE FROM TSITE UNION ALL SELECT 'a' & 'b'");
    EXPECT_EQ(made->Columns()[0].size, 255);
}

TEST(UnionTest, NumbersBesideTextsAreWrittenAsTexts) {
    const std::string statement =
        "SELECT 'a' AS t, 1 AS n UNION ALL SELECT 1.5, 2.5 UNION ALL SELECT #1/31/2026#, True";
    EXPECT_EQ(Rows(Changes(), statement), (Lines{"'a' 1", "'1,5' 2.5", "'31/01/2026' -1"}));
    EXPECT_EQ(Query::Prepare(Changes(), basic::FromUtf8(statement))->Columns()[0].type,
              jet::ColumnType::Text);
    EXPECT_EQ(Rows(Changes(), "SELECT 'a' UNION SELECT 1 UNION SELECT '1'"), (Lines{"'1'", "'a'"}));
}

TEST(UnionTest, ExactNumbersStayExact) {
    EXPECT_EQ(Rows(Changes(), "SELECT 1 UNION ALL SELECT CCur(1.5)"), (Lines{"1 EUR", "1.5 EUR"}));
    EXPECT_EQ(Rows(Changes(), "SELECT 1 UNION ALL SELECT 12345678901234567890.12"),
              (Lines{"1", "12345678901234567890,12"}));
}

TEST(UnionTest, PartsMustHaveTheSameNumberOfColumns) {
    EXPECT_EQ(ErrorOfStatement(Changes(), "SELECT 1 UNION SELECT 1, 2"), 3307);
}

// Columns of results.

TEST(ResultColumnTest, PlainColumnsKnowTheirSource) {
    const auto query = Query::Prepare(Stock(), u"SELECT TSITE_LIBELLE, Len(TSITE_CODE) FROM TSITE");
    EXPECT_EQ(query->Columns()[0].source, 0U);
    EXPECT_EQ(query->Columns()[0].sourceColumn, 1);
    EXPECT_EQ(query->Columns()[0].size, 40);
    EXPECT_EQ(query->Columns()[0].type, jet::ColumnType::Text);
    EXPECT_FALSE(query->Columns()[1].source);
    EXPECT_EQ(query->Columns()[1].type, jet::ColumnType::Long);
}

TEST(ResultColumnTest, ExpressionsHaveTypes) {
    const auto query = Query::Prepare(
        Workshop(),
        u"SELECT DateAdd('m', TVEH_DETAIL_PERIOD, TVEH_DETAIL_DATVIS), TVEH_DETAIL_PERIOD = 1, "
        u"TVEH_DETAIL_PERIOD / 2, TVEH_DETAIL_PERIOD + 1, TVEH_DETAIL_DATVIS + 1, "
        u"IIf(True, TVEH_DETAIL_DATVIS, Null), TVEH_DETAIL_Immat & 1 FROM TVEH_DETAIL");
    const std::vector<jet::ColumnType> types = {
        jet::ColumnType::Date, jet::ColumnType::Boolean, jet::ColumnType::Double, jet::ColumnType::Long,
        jet::ColumnType::Date, jet::ColumnType::Date,    jet::ColumnType::Text};
    ASSERT_EQ(query->Columns().size(), types.size());
    for (std::size_t i = 0; i < types.size(); ++i) {
        EXPECT_EQ(query->Columns()[i].type, types[i]) << i;
    }
}

TEST(ResultColumnTest, ColumnsAreFoundByNameWithOrWithoutTheirTable) {
    const auto query = Query::Prepare(Stock(), u"SELECT TSITE_CODE, TSITE_LIBELLE AS Nom FROM TSITE");
    EXPECT_EQ(query->FindColumn(u"tsite_code"), 0);
    EXPECT_EQ(query->FindColumn(u"TSITE.TSITE_CODE"), 0);
    EXPECT_EQ(query->FindColumn(u"nom"), 1);
    EXPECT_EQ(query->FindColumn(u"TSITE.TSITE_LIBELLE"), 1);
    EXPECT_EQ(query->FindColumn(u"TSITE_LIBELLE"), -1);
    EXPECT_EQ(query->FindColumn(u""), -1);
}

}  // namespace
}  // namespace quardele::sql
