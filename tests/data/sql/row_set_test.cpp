// Rows of results: identities, live values, what may be written.
#include "change_fixture.h"

namespace quardele::sql {
namespace {

class RowSetTest : public ChangeTest {
 protected:
    std::shared_ptr<jet::Database> database_ = Data();
};

constexpr TextView kVisits =
    u"SELECT TVEH_DETAIL_DATVIS, TVEH_DETAIL_TypTrav, TVEH_MARQUE, TVEH_DETAIL_PERIOD + 1 AS Suivant "
    u"FROM TVEH_DETAIL LEFT JOIN TVEH ON TVEH_DETAIL.TVEH_DETAIL_Immat = TVEH.TVEH_IMMAT "
    u"ORDER BY TVEH_IMMAT, TVEH_DETAIL_TypTrav";

TEST_F(RowSetTest, ValuesAreReadFromTheFileWhenAskedFor) {
    const auto query = Query::Prepare(database_, u"SELECT * FROM TTYP");
    RowSet rows = query->Run();
    const std::string before = Shown(rows.Value(3, 1));
    const auto key = rows.Key(3, 0);
    ASSERT_TRUE(key);
    const jet::ColumnChange change{1, u"Autre libellé"};
    query->Sources()[0]->Update(*key, {&change, 1});
    rows.Forget(3);
    EXPECT_NE(before, "'Autre libellé'");
    EXPECT_EQ(Shown(rows.Value(3, 1)), "'Autre libellé'");
    EXPECT_EQ(rows.Size(), 12U);
}

TEST_F(RowSetTest, MembershipAndOrderAreFixed) {
    const auto query =
        Query::Prepare(database_,
                       u"SELECT TTYP_CODE, TTYP_LIBELLE FROM TTYP WHERE TTYP_LIBELLE LIKE 'C*' "
                       u"ORDER BY TTYP_LIBELLE");
    RowSet rows = query->Run();
    const std::string first = Shown(rows.Value(0, 0));
    const jet::ColumnChange change{1, u"Zzz"};
    query->Sources()[0]->Update(*rows.Key(0, 0), {&change, 1});
    rows.Forget(0);
    EXPECT_EQ(Shown(rows.Value(0, 0)), first);
    EXPECT_EQ(Shown(rows.Value(0, 1)), "'Zzz'");
    EXPECT_EQ(query->Run().Size(), rows.Size() - 1);
}

TEST_F(RowSetTest, SearchesSeeAChangedRow) {
    const auto query = Query::Prepare(database_, u"SELECT * FROM TTYP");
    RowSet rows = query->Run();
    const auto find = [&](TextView text) { return Condition(query, text).FindForward(rows, 0); };
    for (int search = 0; search < 3; ++search) {
        EXPECT_FALSE(find(u"TTYP_LIBELLE = 'Autre'"));
    }
    const jet::ColumnChange change{1, u"Autre"};
    query->Sources()[0]->Update(*rows.Key(3, 0), {&change, 1});
    rows.Forget(3);
    EXPECT_EQ(find(u"TTYP_LIBELLE = 'autre'"), 3U);
    EXPECT_FALSE(find(u"TTYP_LIBELLE = 'Pneumatiques x'"));
}

TEST_F(RowSetTest, GroupsHoldTheirValues) {
    const auto query = Query::Prepare(database_, u"SELECT TTYP_CODE, Count(*) FROM TTYP GROUP BY TTYP_CODE");
    RowSet rows = query->Run();
    EXPECT_FALSE(rows.HasKeys());
    EXPECT_FALSE(rows.Key(0, 0));
    EXPECT_FALSE(rows.IsUpdatable(0));
    rows.Forget(0);
    EXPECT_EQ(Shown(rows.Value(0, 0)), "'BAT'");
}

TEST_F(RowSetTest, CopiesShareTheirRows) {
    RowSet copy;
    EXPECT_EQ(copy.Size(), 0U);
    EXPECT_FALSE(copy.HasKeys());
    {
        const auto query = Query::Prepare(database_, u"SELECT TTYP_CODE FROM TTYP");
        copy = query->Run();
    }
    EXPECT_EQ(copy.Size(), 12U);
    EXPECT_EQ(Shown(copy.Value(0, 0)), "'BAT'");
}

TEST_F(RowSetTest, PositionsOutsideAreErrors) {
    const RowSet rows = Query::Prepare(database_, u"SELECT TTYP_CODE FROM TTYP")->Run();
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(rows.Value(12, 0)); }), 3021);
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(rows.Value(0, 1)); }), 3265);
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(rows.Value(0, -1)); }), 3265);
    EXPECT_FALSE(rows.Key(12, 0));
    EXPECT_FALSE(rows.Key(0, 1));
    EXPECT_FALSE(rows.IsUpdatable(-1));
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(RowSet().Value(0, 0)); }), 3021);
}

TEST_F(RowSetTest, TheManySideOfAJoinMayBeWritten) {
    const auto query = Query::Prepare(database_, kVisits);
    const RowSet rows = query->Run();
    EXPECT_TRUE(rows.IsUpdatable(query->FindColumn(u"TVEH_DETAIL_DATVIS")));
    EXPECT_FALSE(rows.IsUpdatable(query->FindColumn(u"TVEH_MARQUE")));  // vehicles have several visits
    EXPECT_FALSE(rows.IsUpdatable(query->FindColumn(u"Suivant")));
}

TEST_F(RowSetTest, ASideWhoseRowsStandOnceInTheResultMayBeWritten) {
    const auto query = Query::Prepare(
        database_,
        u"SELECT TVEH_DETAIL_DATVIS, TVEH_MARQUE FROM TVEH_DETAIL INNER JOIN TVEH "
        u"ON TVEH_DETAIL.TVEH_DETAIL_Immat = TVEH.TVEH_IMMAT WHERE TVEH_DETAIL_TypTrav = 'HAY'");
    const RowSet rows = query->Run();
    ASSERT_GT(rows.Size(), 0U);
    EXPECT_TRUE(rows.IsUpdatable(0));
    EXPECT_TRUE(rows.IsUpdatable(1));
}

TEST_F(RowSetTest, PlainColumnsOfOneTableMayBeWritten) {
    const auto query =
        Query::Prepare(database_, u"SELECT TTYP_CODE, TTYP_LIBELLE & '' FROM TTYP WHERE TTYP_CODE > 'C'");
    const RowSet rows = query->Run();
    EXPECT_TRUE(rows.HasKeys());
    EXPECT_TRUE(rows.IsUpdatable(0));
    EXPECT_FALSE(rows.IsUpdatable(1));
}

TEST_F(RowSetTest, AnAppendedRowStandsAtTheEndAndIsFound) {
    const auto query = Query::Prepare(database_, u"SELECT * FROM TTYP WHERE TTYP_CODE = 'CT'");
    RowSet rows = query->Run();
    const Condition condition(query, u"TTYP_LIBELLE = 'Batterie'");
    EXPECT_FALSE(condition.FindForward(rows, 0));
    EXPECT_FALSE(condition.FindForward(rows, 0));  // from the second search on through a hash
    const auto key =
        Query::Prepare(database_, u"SELECT * FROM TTYP WHERE TTYP_CODE = 'BAT'")->Run().Key(0, 0);
    EXPECT_EQ(rows.Append({&key, 1}), 1U);
    EXPECT_EQ(rows.Size(), 2U);
    EXPECT_EQ(Shown(rows.Value(1, 0)), "'BAT'");
    EXPECT_EQ(condition.FindForward(rows, 0), 1U);
    EXPECT_EQ(condition.FindBackward(rows, 1), 1U);
}

TEST_F(RowSetTest, ARowAppendedTwiceToAJoinTakesItsSideTheWriting) {
    const auto query = Query::Prepare(
        database_,
        u"SELECT TVEH_MARQUE FROM TVEH_DETAIL INNER JOIN TVEH ON TVEH_DETAIL.TVEH_DETAIL_Immat = "
        u"TVEH.TVEH_IMMAT WHERE TVEH_IMMAT='FQ-453-HQ' AND TVEH_DETAIL_TypTrav='CT'");
    RowSet rows = query->Run();
    ASSERT_EQ(rows.Size(), 1U);
    EXPECT_TRUE(rows.IsUpdatable(0));
    const std::optional<jet::RowId> keys[] = {std::nullopt, rows.Key(0, 1)};
    rows.Append(keys);
    EXPECT_FALSE(rows.IsUpdatable(0));
    EXPECT_FALSE(rows.Key(1, 0));
}

TEST_F(RowSetTest, AMarkedRowIsGoneWhateverLiesInItsPlace) {
    const auto query = Query::Prepare(database_, u"SELECT * FROM TTYP");
    RowSet rows = query->Run();
    const Condition condition(query, u"TTYP_CODE = 'CLI'");
    EXPECT_EQ(condition.FindForward(rows, 0), 1U);
    EXPECT_EQ(condition.FindForward(rows, 0), 1U);
    rows.MarkDeleted(1, 0);
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(rows.Value(1, 0)); }), error::kRecordDeleted);
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(rows.Key(1, 0)); }), error::kRecordDeleted);
    EXPECT_FALSE(condition.FindForward(rows, 0));
    EXPECT_EQ(Shown(rows.Value(2, 0)), "'CT'");
    EXPECT_EQ(rows.Size(), 12U);
}

}  // namespace
}  // namespace quardele::sql
