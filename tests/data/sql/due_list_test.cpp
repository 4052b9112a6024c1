// The statements of the reminder list and of the site column, over the sample installation.
#include <algorithm>
#include <fstream>
#include <set>

#include <basic/conversion.h>

#include "sql_fixture.h"

namespace quardele::sql {
namespace {

std::string DueList(const std::string& date) {
    return "SELECT DateAdd('m',[TVEH_DETAIL_PERIOD],[TVEH_DETAIL_DATVIS]) AS DatePrev, "
           "TVEH_DETAIL.TVEH_DETAIL_PERIOD, TVEH_DETAIL.TVEH_DETAIL_DATVIS, "
           "TVEH.TVEH_MARQUE,TVEH.TVEH_IMMAT, TVEH.TVEH_EDIT, TVEH.TVEH_CODCLI, "
           "TVEH_DETAIL.TVEH_DETAIL_TypTrav "
           "FROM TVEH_DETAIL LEFT JOIN TVEH ON TVEH_DETAIL.TVEH_DETAIL_Immat = TVEH.TVEH_IMMAT "
           "WHERE (((DateAdd('m',[TVEH_DETAIL_PERIOD],[TVEH_DETAIL_DATVIS]))<#" +
           date +
           "#)) AND [TVEH_DETAIL_PERIOD]<> 0 "
           "ORDER BY TVEH.TVEH_CODCLI, TVEH.TVEH_IMMAT, TVEH_DETAIL.TVEH_DETAIL_TypTrav;";
}

constexpr const char* kSiteList =
    "SELECT Trim([TAFF_Immatr] & '') AS IMMAT, Trim([TAFF_Site] & '') AS SITE "
    "From TAFF "
    "GROUP BY Trim([TAFF_Immatr] & ''), Trim([TAFF_Site] & '') "
    "Having (((Trim([TAFF_Immatr] & '')) <> '') And ((Trim([TAFF_Site] & '')) <> '')) "
    "ORDER BY Trim([TAFF_Immatr] & ''), Trim([TAFF_Site] & '');";

/// The rows in the columns of the golden file: client, registration, work, due, make, last visit, period.
Lines GoldenColumns(const Query& query, const RowSet& rows) {
    constexpr const char16_t* kColumns[] = {u"TVEH_CODCLI",       u"TVEH_IMMAT",  u"TVEH_DETAIL_TypTrav",
                                            u"DatePrev",          u"TVEH_MARQUE", u"TVEH_DETAIL_DATVIS",
                                            u"TVEH_DETAIL_PERIOD"};
    Lines lines;
    for (std::size_t row = 0; row < rows.Size(); ++row) {
        std::string line;
        for (const char16_t* column : kColumns) {
            line += line.empty() && column == kColumns[0] ? "" : ",";
            line += basic::ToUtf8(basic::Joined(rows.Value(row, query.FindColumn(column))));
        }
        lines.push_back(line);
    }
    return lines;
}

Lines GoldenLines(const std::string& name) {
    std::ifstream file(SampleFile("../golden/" + name));
    Lines lines;
    std::string line;
    std::getline(file, line);  // the headings
    while (std::getline(file, line)) {
        lines.push_back(line);
    }
    return lines;
}

class DueListTest : public testing::TestWithParam<std::pair<const char*, const char*>> {};

TEST_P(DueListTest, EqualsTheListOfTheOtherProgramInItsOrder) {
    const Lines golden = GoldenLines(GetParam().second);
    ASSERT_GT(golden.size(), 800U);
    const auto query = Query::Prepare(Workshop(), basic::FromUtf8(DueList(GetParam().first)));
    const Lines lines = GoldenColumns(*query, query->Run());
    ASSERT_EQ(lines.size(), golden.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        ASSERT_EQ(lines[i], golden[i]) << "line " << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Dates, DueListTest,
                         testing::Values(std::pair("12/31/2026", "due-before-2026-12-31.csv"),
                                         std::pair("11/25/2026", "due-before-2026-11-25.csv")));

TEST(DueListTest, AVisitWithoutVehicleKeepsItsOwnColumns) {
    const auto query = Query::Prepare(Workshop(), basic::FromUtf8(DueList("12/31/2026")));
    const RowSet rows = query->Run();
    EXPECT_TRUE(rows.Value(0, query->FindColumn(u"TVEH_IMMAT")).IsNull());
    EXPECT_TRUE(rows.Value(0, query->FindColumn(u"TVEH_EDIT")).IsNull());
    EXPECT_FALSE(rows.Key(0, 1));
    EXPECT_TRUE(rows.Key(0, 0));
    EXPECT_EQ(Shown(rows.Value(0, query->FindColumn(u"TVEH_DETAIL_TypTrav"))), "'CT'");
}

TEST(SiteListTest, GivesEachVehicleItsSitesInOrder) {
    const Lines sites = Rows(Workshop(), kSiteList);
    EXPECT_EQ(sites.size(), 2096U);
    EXPECT_EQ(sites[2], "'1191 JR 43' 'BDX'");
    EXPECT_EQ(sites[3], "'1191 JR 43' 'PA'");
    EXPECT_TRUE(std::is_sorted(sites.begin(), sites.begin() + 500));
}

TEST(SiteListTest, EqualsGroupsThatAreCountedByHand) {
    // Every group of the list, however its blanks are stored, must hold at least one job, and no other may.
    const auto jobs = Query::Prepare(Workshop(),
                                     u"SELECT Trim(TAFF_Immatr & '') & ' ' & Trim(TAFF_Site & '') FROM TAFF "
                                     u"WHERE Trim(TAFF_Immatr & '') <> '' AND Trim(TAFF_Site & '') <> ''");
    const RowSet rows = jobs->Run();
    std::set<Text> expected;
    for (std::size_t row = 0; row < rows.Size(); ++row) {
        expected.insert(basic::UCase(rows.Value(row, 0).As<Text>()));
    }
    EXPECT_EQ(Rows(Workshop(), kSiteList).size(), expected.size());
}

TEST(SiteListTest, ActiveSitesComeByCode) {
    EXPECT_EQ(Rows(Stock(), "select * from TSITE where TSITE_Inactif = false order by TSITE_CODE"),
              (Lines{"'BDX' 'Bordeaux Lac' False", "'LYO' 'Lyon Gerland' False", "'PA' 'Pau' False",
                     "'PAR' 'Paris Bercy' False"}));
}

TEST(LetterListTest, CustomersOfMarkedVehiclesAreGrouped) {
    const Lines customers =
        Rows(Workshop(),
             "SELECT TVEH.TVEH_CODCLI From TVEH GROUP BY TVEH.TVEH_CODCLI, TVEH.TVEH_EDIT "
             "HAVING (((TVEH.TVEH_EDIT)<>0));");
    EXPECT_EQ(customers, Rows(Workshop(), "SELECT DISTINCT TVEH_CODCLI FROM TVEH WHERE TVEH_EDIT"));
    EXPECT_EQ(customers.size(), 15U);
}

TEST(EmptyListTest, WhereFalseGivesNoRow) {
    EXPECT_TRUE(Rows(Workshop(), "Select * from TVEH where false;").empty());
    EXPECT_EQ(ColumnNames(Workshop(), "Select * from TVEH where false;").size(), 29U);
}

}  // namespace
}  // namespace quardele::sql
