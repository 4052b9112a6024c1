// The statements of the reminder list and of the site column.
#include <algorithm>
#include <fstream>
#include <set>

#include <basic/conversion.h>
#include <basic/date.h>

#include "due_list.h"
#include "known_rows.h"
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
    std::ifstream file(std::filesystem::path(QUARDELE_SAMPLE_DIR) / "golden" / name);
    Lines lines;
    std::string line;
    std::getline(file, line);  // the headings
    while (std::getline(file, line)) {
        lines.push_back(line);
    }
    return lines;
}

/// The list that the rows of the installation must give, in the same columns.
Lines ComputedLines(basic::Date day) {
    Lines lines;
    for (const tests::DueVisit& due : tests::DueBefore(day)) {
        const auto& [registration, work, last, months] = due.visit;
        const workshop::Vehicle vehicle = due.vehicle.value_or(workshop::Vehicle{});
        lines.push_back(basic::ToUtf8(vehicle.customer.value_or(Text()) + u"," + vehicle.registration + u"," +
                                      work + u"," + basic::CStr(due.due) + u"," + vehicle.make + u"," +
                                      basic::CStr(last.value()) + u"," + basic::CStr(months.value())));
    }
    return lines;
}

void ExpectSameLines(const Lines& lines, const Lines& expected) {
    ASSERT_EQ(lines.size(), expected.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        ASSERT_EQ(lines[i], expected[i]) << "line " << i;
    }
}

struct ReferenceDate {
    basic::Date day;
    const char* literal;
    const char* golden;
};

class DueListTest : public testing::TestWithParam<ReferenceDate> {};

TEST_P(DueListTest, EqualsTheListOfTheOtherProgramInItsOrder) {
    const auto file = std::filesystem::path(QUARDELE_SAMPLE_DIR) / "QUARDELE/DATA/talmeon.mdb";
    if (!std::filesystem::exists(file)) {
        GTEST_SKIP() << "the sample is not here";
    }
    const Lines golden = GoldenLines(GetParam().golden);
    ASSERT_GT(golden.size(), 800U);
    const auto database = jet::Database::Open(file, jet::OpenMode::ReadOnly);
    const auto query = Query::Prepare(database, basic::FromUtf8(DueList(GetParam().literal)));
    ExpectSameLines(GoldenColumns(*query, query->Run()), golden);
}

TEST_P(DueListTest, EqualsTheListComputedFromTheRows) {
    const Lines expected = ComputedLines(GetParam().day);
    ASSERT_GT(expected.size(), 100U);
    const auto query = Query::Prepare(Workshop(), basic::FromUtf8(DueList(GetParam().literal)));
    ExpectSameLines(GoldenColumns(*query, query->Run()), expected);
}

INSTANTIATE_TEST_SUITE_P(
    Dates, DueListTest,
    testing::Values(ReferenceDate{basic::DateOf(2026, 12, 31), "12/31/2026", "due-before-2026-12-31.csv"},
                    ReferenceDate{basic::DateOf(2026, 11, 25), "11/25/2026", "due-before-2026-11-25.csv"}));

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
    const auto several = std::find(sites.begin(), sites.end(), "'1191 JR 43' 'BDX'");
    ASSERT_NE(several, sites.end());
    EXPECT_EQ(*(several + 1), "'1191 JR 43' 'PA'");
    EXPECT_EQ(sites.back(), "'ZZ-584-ZD' 'PAR'");
    const auto letters =
        std::find_if(sites.begin(), sites.end(), [](const std::string& line) { return line[1] > '9'; });
    EXPECT_GT(letters - sites.begin(), 50);
    EXPECT_TRUE(std::is_sorted(sites.begin(), letters));
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
    EXPECT_GT(customers.size(), 3U);
    EXPECT_NE(std::find(customers.begin(), customers.end(), "'C0007'"), customers.end());
}

TEST(EmptyListTest, WhereFalseGivesNoRow) {
    EXPECT_TRUE(Rows(Workshop(), "Select * from TVEH where false;").empty());
    EXPECT_EQ(ColumnNames(Workshop(), "Select * from TVEH where false;").size(), 29U);
}

}  // namespace
}  // namespace quardele::sql
