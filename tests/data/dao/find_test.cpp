// FindFirst and its kin.
#include <utility>

#include "dao_test.h"

namespace quardele::dao {
namespace {

using FindTest = DaoTest;

TEST_F(FindTest, FirstMatchBecomesCurrent) {
    const auto rows = OpenDynaset(u"TPAYS");
    rows->FindFirst(u"TPAYS_CODE = 'ES'");
    EXPECT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->Value(u"TPAYS_LIBELLE"), Variant(u"ESPAGNE"));
}

TEST_F(FindTest, MissKeepsTheCurrentRecord) {
    const auto rows = OpenDynaset(u"TPAYS");
    rows->MoveNext();
    const Bookmark before = rows->CurrentBookmark();
    rows->FindFirst(u"TPAYS_CODE = 'JP'");
    EXPECT_TRUE(rows->NoMatch());
    EXPECT_EQ(rows->CurrentBookmark(), before);
    rows->FindNext(u"TPAYS_CODE = 'JP'");
    EXPECT_TRUE(rows->NoMatch());
    rows->FindLast(u"TPAYS_CODE = 'JP'");
    EXPECT_TRUE(rows->NoMatch());
    rows->FindPrevious(u"TPAYS_CODE = 'JP'");
    EXPECT_TRUE(rows->NoMatch());
    EXPECT_EQ(rows->CurrentBookmark(), before);
    rows->FindFirst(u"TPAYS_CODE = 'BE'");
    EXPECT_FALSE(rows->NoMatch());
}

TEST_F(FindTest, ComparisonIgnoresCase) {
    const auto rows = OpenDynaset(u"TPAYS");
    rows->FindFirst(u"tpays_code = 'it'");
    EXPECT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->Value(u"TPAYS_CODE"), Variant(u"IT"));
}

TEST_F(FindTest, GreaterOrEqualLandsOnTheNextCodeOfATable) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->FindFirst(u"TTYP_CODE>='M'");
    EXPECT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"PNE"));
}

TEST_F(FindTest, NextAndPreviousGoFromMatchToMatch) {
    const auto rows = OpenDynaset(u"TTYP");  // BAT CLI CT DIS EXT FRE HAY LIM PNE REV TAC VID
    const TextView condition = u"InStr(1,TTYP_CODE,'T') <> 0";
    rows->FindFirst(condition);
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"BAT"));
    rows->FindNext(condition);
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"CT"));
    rows->FindNext(condition);
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"EXT"));
    rows->FindPrevious(condition);
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"CT"));
    rows->FindLast(condition);
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"TAC"));
    rows->FindNext(condition);
    EXPECT_TRUE(rows->NoMatch());
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"TAC"));
    rows->FindFirst(condition);
    rows->FindPrevious(condition);
    EXPECT_TRUE(rows->NoMatch());
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"BAT"));
}

TEST_F(FindTest, SearchFromTheLastOrFirstRowEndsThere) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->FindPrevious(u"true");
    EXPECT_TRUE(rows->NoMatch());
    rows->MoveLast();
    rows->FindNext(u"true");
    EXPECT_TRUE(rows->NoMatch());
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"VID"));
}

TEST_F(FindTest, FindFirstOnAnEmptySetMisses) {
    const auto rows = OpenDynaset(u"Select * from TTYP where false");
    rows->FindFirst(u"TTYP_CODE='CT'");
    EXPECT_TRUE(rows->NoMatch());
    rows->FindLast(u"TTYP_CODE='CT'");
    EXPECT_TRUE(rows->NoMatch());
    EXPECT_TRUE(rows->Eof());
}

TEST_F(FindTest, NextWithoutACurrentRecordRaises3021) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->MoveLast();
    rows->MoveNext();
    EXPECT_EQ(ErrorOf([&] { rows->FindNext(u"true"); }), error::kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows->FindPrevious(u"true"); }), error::kNoCurrentRecord);
    rows->FindFirst(u"true");
    EXPECT_FALSE(rows->NoMatch());
    EXPECT_FALSE(rows->Eof());
}

TEST_F(FindTest, BadConditionRaisesAnErrorAndStaysThere) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->MoveNext();
    constexpr int kSyntaxInCondition = 3077;
    EXPECT_EQ(ErrorOf([&] { rows->FindFirst(u"TTYP_CODE = 'L'ECO'"); }), kSyntaxInCondition);
    EXPECT_EQ(ErrorOf([&] { rows->FindFirst(u"TRIEN = 'X'"); }), error::kTooFewParameters);
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"CLI"));
}

TEST_F(FindTest, RowsPassedOverCountAsVisited) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->FindFirst(u"TTYP_CODE='DIS'");
    EXPECT_EQ(rows->RecordCount(), 4U);
    rows->FindFirst(u"TTYP_CODE='XYZ'");
    EXPECT_EQ(rows->RecordCount(), 12U);
}

TEST_F(FindTest, JoinIsSearchedByColumnsOfBothTables) {
    const auto rows = OpenDynaset(DueBefore(u"12/31/2026"));
    rows->FindFirst(u"TVEH_Immat ='CF-974-BL' and TVEH_DETAIL_TYPTRAV = 'TAC'");
    ASSERT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->Value(u"TVEH_IMMAT"), Variant(u"CF-974-BL"));
    EXPECT_EQ(rows->Value(u"TVEH_DETAIL_TypTrav"), Variant(u"TAC"));
    EXPECT_EQ(rows->Value(u"TVEH_DETAIL_DATVIS"), Variant(basic::DateOf(2024, 8, 7)));
}

TEST_F(FindTest, GroupedRowsAreSearchedByTheirResultNames) {
    const auto rows = OpenDynaset(
        u"SELECT Trim([TAFF_Immatr] & '') AS IMMAT, Trim([TAFF_Site] & '') AS SITE From TAFF "
        u"GROUP BY Trim([TAFF_Immatr] & ''), Trim([TAFF_Site] & '') "
        u"Having (((Trim([TAFF_Immatr] & '')) <> '') And ((Trim([TAFF_Site] & '')) <> '')) "
        u"ORDER BY Trim([TAFF_Immatr] & ''), Trim([TAFF_Site] & '');");
    rows->FindFirst(u"IMMAT = 'KL-837-LL'");
    ASSERT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->Value(u"IMMAT"), Variant(u"KL-837-LL"));
    EXPECT_EQ(rows->Value(u"SITE"), Variant(u"BDX"));
    rows->FindFirst(u"IMMAT = 'AUCUN'");
    EXPECT_TRUE(rows->NoMatch());
    EXPECT_EQ(rows->Value(u"IMMAT"), Variant(u"KL-837-LL"));
}

TEST_F(FindTest, SearchSeesValuesWrittenSinceTheSetWasOpened) {
    const auto rows = OpenDynaset(u"TTYP");
    for (int i = 0; i < 3; ++i) {  // later searches for an equality go a shorter way
        rows->FindFirst(u"TTYP_LIBELLE='Vidange et filtres'");
        ASSERT_FALSE(rows->NoMatch());
    }
    rows->Edit();
    rows->SetValue(u"TTYP_LIBELLE", u"Vidange");
    rows->Update();
    rows->MoveFirst();
    rows->FindFirst(u"TTYP_LIBELLE='Vidange et filtres'");
    EXPECT_TRUE(rows->NoMatch());
    rows->FindFirst(u"TTYP_LIBELLE='Vidange'");
    EXPECT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"VID"));
}

TEST_F(FindTest, ObserverMaySearchWhileARowIsLeft) {
    class Searcher final : public RecordsetObserver {
     public:
        void RowLeaving(Recordset& rows) override {
            if (!std::exchange(searching_, true)) {
                rows.FindFirst(u"TTYP_CODE='VID'");
            }
        }

     private:
        bool searching_ = false;
    };
    Searcher searcher;
    const auto rows = OpenDynaset(u"TTYP");
    rows->SetObserver(&searcher);
    rows->FindFirst(u"TTYP_CODE='CT'");
    EXPECT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"CT"));
}

}  // namespace
}  // namespace quardele::dao
