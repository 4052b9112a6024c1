// Conditions that stand alone: what FindFirst and its kin look rows up by.
#include "sql_fixture.h"

namespace quardele::sql {
namespace {

constexpr TextView kReminders =
    u"SELECT DateAdd('m',[TVEH_DETAIL_PERIOD],[TVEH_DETAIL_DATVIS]) AS DatePrev, "
    u"TVEH_DETAIL.TVEH_DETAIL_DATVIS AS Visite, TVEH.TVEH_MARQUE,TVEH.TVEH_IMMAT, "
    u"TVEH_DETAIL.TVEH_DETAIL_TypTrav "
    u"FROM TVEH_DETAIL LEFT JOIN TVEH ON TVEH_DETAIL.TVEH_DETAIL_Immat = TVEH.TVEH_IMMAT "
    u"WHERE [TVEH_DETAIL_PERIOD]<> 0 ORDER BY TVEH.TVEH_IMMAT, TVEH_DETAIL.TVEH_DETAIL_TypTrav;";

struct ConditionTest : testing::Test {
    explicit ConditionTest(TextView statement = kReminders)
        : query(Query::Prepare(Workshop(), statement)), rows(query->Run()) {}

    [[nodiscard]] std::optional<std::size_t> First(TextView condition) const {
        return Condition(query, condition).FindForward(rows, 0);
    }
    /// All rows for which a condition holds, asked one by one.
    [[nodiscard]] std::vector<std::size_t> All(TextView text) const {
        const Condition condition(query, text);
        std::vector<std::size_t> found;
        for (std::size_t row = 0; row < rows.Size(); ++row) {
            if (condition.Holds(rows, row)) {
                found.push_back(row);
            }
        }
        return found;
    }

    std::shared_ptr<Query> query;
    RowSet rows;
};

TEST_F(ConditionTest, AReminderIsFoundByVehicleAndWork) {
    const auto row = First(u"TVEH_Immat ='4841 XR 24' and TVEH_DETAIL_TYPTRAV = 'EXT'");
    ASSERT_TRUE(row);
    EXPECT_EQ(Shown(rows.Value(*row, query->FindColumn(u"TVEH_IMMAT"))), "'4841 XR 24'");
    EXPECT_EQ(Shown(rows.Value(*row, query->FindColumn(u"TVEH_DETAIL_TYPTRAV"))), "'EXT'");
    EXPECT_FALSE(First(u"TVEH_Immat ='4841 XR 24' and TVEH_DETAIL_TYPTRAV = 'ZZZ'"));
}

TEST_F(ConditionTest, NamesAreResultColumnsFirstThenColumnsOfTheTables) {
    EXPECT_TRUE(First(u"DatePrev > #1/1/2020#"));
    EXPECT_TRUE(First(u"Visite > #1/1/2020#"));
    EXPECT_TRUE(First(u"TVEH_DETAIL_datvis > #1/1/2020#"));
    EXPECT_TRUE(First(u"TVEH_DETAIL.TVEH_DETAIL_PERIOD = 12"));
    EXPECT_TRUE(First(u"TVEH_CODCLI = 'C0007'"));
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(First(u"INCONNU = 1")); }), 3061);
}

TEST_F(ConditionTest, ForwardAndBackwardStartAtTheRowGiven) {
    const std::vector<std::size_t> all = All(u"TVEH_DETAIL_TypTrav = 'CT'");
    ASSERT_GT(all.size(), 10U);
    const Condition condition(query, u"TVEH_DETAIL_TypTrav = 'CT'");
    for (int pass = 0; pass < 3; ++pass) {
        EXPECT_EQ(condition.FindForward(rows, 0), all[0]);
        EXPECT_EQ(condition.FindForward(rows, all[0]), all[0]);
        EXPECT_EQ(condition.FindForward(rows, all[0] + 1), all[1]);
        EXPECT_EQ(condition.FindForward(rows, all.back() + 1), std::nullopt);
        EXPECT_EQ(condition.FindBackward(rows, rows.Size()), all.back());
        EXPECT_EQ(condition.FindBackward(rows, all[5]), all[5]);
        EXPECT_EQ(condition.FindBackward(rows, all[5] - 1), all[4]);
        EXPECT_EQ(condition.FindForward(rows, rows.Size()), std::nullopt);
    }
    EXPECT_EQ(Condition(query, u"TVEH_DETAIL_TypTrav = 'ZZ'").FindBackward(rows, rows.Size()), std::nullopt);
}

TEST_F(ConditionTest, RepeatedSearchesFindWhatTheFirstOneFinds) {
    // From the second search on an index of the rows answers; it must agree with looking at each row.
    for (const TextView text :
         {u"TVEH_IMMAT = '4841 XR 24'", u"tveh_immat = '4841 xr 24  '", u"'PNE' = TVEH_DETAIL_TypTrav",
          u"TVEH_DETAIL_TypTrav = 'CT' AND DatePrev < #1/1/2026#", u"TVEH_DETAIL_PERIOD = 12.0",
          u"DatePrev = #10/22/2026#", u"Year(DatePrev) = 2026 AND TVEH_MARQUE = 'FIAT'", u"TVEH_IMMAT = Null",
          u"TVEH_MARQUE = 'škoda'"}) {
        const std::vector<std::size_t> all = All(text);
        const auto expected = all.empty() ? std::nullopt : std::optional(all.front());
        for (int search = 0; search < 3; ++search) {
            EXPECT_EQ(First(text), expected) << basic::ToUtf8(text) << " " << search;
        }
        std::vector<std::size_t> found;
        const Condition condition(query, text);
        for (auto row = condition.FindForward(rows, 0); row; row = condition.FindForward(rows, *row + 1)) {
            found.push_back(*row);
        }
        EXPECT_EQ(found, all) << basic::ToUtf8(text);
    }
}

TEST_F(ConditionTest, RowsWithoutVehicleFulfilNoComparison) {
    for (const std::size_t row : All(u"TVEH_IMMAT Is Null")) {
        EXPECT_FALSE(Condition(query, u"TVEH_IMMAT <> 'X'").Holds(rows, row));
        EXPECT_FALSE(Condition(query, u"TVEH_EDIT = False").Holds(rows, row));
    }
}

TEST_F(ConditionTest, BadConditionsHaveTheirNumber) {
    for (const TextView text :
         {u"", u"TVEH_IMMAT =", u"TVEH_IMMAT = 'L'AVION'", u"TVEH_IMMAT = 'A'; SELECT 1", u"TVEH_IMMAT 'A'",
          u"(TVEH_IMMAT = 'A'", u"= 'A'", u"DELETE FROM TVEH"}) {
        EXPECT_EQ(ErrorOf([&] { static_cast<void>(First(text)); }), 3077) << basic::ToUtf8(text);
    }
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(First(u"Foo(1) = 1")); }), 3085);
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(First(u"Count(*) = 1")); }), 3096);
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(First(u"TVEH_MARQUE = 1")); }), 3464);
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(First(u"TVEH_MARQUE = #12/31/2026#")); }), 3464);
}

TEST_F(ConditionTest, AnErrorInARowIsReportedWhenTheRowIsReached) {
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(First(u"CInt(TVEH_DETAIL_TypTrav) = 1")); }), 13);
    for (int search = 0; search < 3; ++search) {
        EXPECT_EQ(First(u"TVEH_MARQUE Is Null OR CInt(TVEH_MARQUE) = 1"), 0U);
    }
}

TEST(ConditionOnTableTest, ListsAreSearchedAsTheDialogsDo) {
    const auto query = Query::Prepare(Workshop(), u"select * from TVEH");
    const RowSet rows = query->Run();
    const auto count = [&](TextView text) {
        const Condition condition(query, text);
        std::size_t found = 0;
        for (std::size_t row = 0; row < rows.Size(); ++row) {
            found += condition.Holds(rows, row) ? 1 : 0;
        }
        return std::to_string(found);
    };
    const auto rowsWhere = [](const std::string& condition) {
        return Rows(Workshop(), "SELECT Count(*) FROM TVEH WHERE " + condition).front();
    };
    EXPECT_EQ(count(u"Left(TVEH_MARQUE,2) ='re'"), rowsWhere("TVEH_MARQUE LIKE 're*'"));
    EXPECT_EQ(count(u"inStr(1,TVEH_MARQUE,'AUL') <> 0"), rowsWhere("TVEH_MARQUE LIKE '*aul*'"));
    EXPECT_EQ(count(u"TVEH_EDIT =True"), rowsWhere("TVEH_EDIT"));
    EXPECT_EQ(count(u"TVEH_EDIT =False"), rowsWhere("not TVEH_EDIT"));
    EXPECT_EQ(count(u"TVEH_MARQUE ='RENAULT'"),
              rowsWhere("TVEH_MARQUE >= 'renault' AND TVEH_MARQUE <= 'Renault'"));
    EXPECT_NE(count(u"TVEH_MARQUE ='RENAULT'"), "0");
}

TEST(ConditionOnTableTest, TheNextRegistrationIsFoundInTheOrderOfTheKey) {
    const auto query = Query::Prepare(Workshop(), u"select * from TVEH");
    const RowSet rows = query->Run();
    const auto row = Condition(query, u"TVEH_IMMAT>='AA'").FindForward(rows, 0);
    ASSERT_TRUE(row);
    EXPECT_EQ(Eval(Shown(rows.Value(*row, 0)) + " >= 'AA'"), "True");
    EXPECT_EQ(Eval(Shown(rows.Value(*row - 1, 0)) + " < 'AA'"), "True");
}

TEST(ConditionOnGroupsTest, NamesAreResultColumnsOnly) {
    const auto query = Query::Prepare(
        Workshop(),
        u"SELECT Trim([TAFF_Immatr] & '') AS IMMAT, Trim([TAFF_Site] & '') AS SITE, Count(*) AS N "
        u"FROM TAFF WHERE Trim([TAFF_Site] & '') <> '' GROUP BY Trim([TAFF_Immatr] & ''), Trim([TAFF_Site] & "
        u"'')");
    const RowSet rows = query->Run();
    for (int search = 0; search < 3; ++search) {
        const auto row = Condition(query, u"IMMAT = '1191 jr 43'").FindForward(rows, 0);
        ASSERT_TRUE(row);
        EXPECT_EQ(Shown(rows.Value(*row, 1)), "'BDX'");
        EXPECT_EQ(Condition(query, u"IMMAT = '1191 JR 43' AND SITE = 'PA' AND N > 0").FindForward(rows, 0),
                  *row + 1);
    }
    EXPECT_EQ(ErrorOf([&] { Condition(query, u"TAFF_Site = 'PA'"); }), 3061);
}

TEST(ConditionOnGroupsTest, GroupedColumnsMayCarryTheirTablesName) {
    const auto query = Query::Prepare(Workshop(), u"SELECT DISTINCT TVEH.TVEH_CODCLI FROM TVEH");
    const RowSet rows = query->Run();
    const auto row = Condition(query, u"TVEH.TVEH_CODCLI = 'c0007'").FindForward(rows, 0);
    ASSERT_TRUE(row);
    EXPECT_EQ(Shown(rows.Value(*row, 0)), "'C0007'");
}

TEST(ConditionOnNothingTest, AnEmptyResultHasNoMatch) {
    const auto query = Query::Prepare(Workshop(), u"select * from TVEH where false");
    const RowSet rows = query->Run();
    const Condition condition(query, u"TVEH_IMMAT = 'A'");
    EXPECT_FALSE(condition.FindForward(rows, 0));
    EXPECT_FALSE(condition.FindBackward(rows, 0));
    EXPECT_FALSE(condition.Holds(rows, 0));
}

}  // namespace
}  // namespace quardele::sql
