// AddNew and Delete, as far as they go before a row is added to or taken from a table.
#include "dao_test.h"

namespace quardele::dao {
namespace {

using AddDeleteTest = DaoTest;

TEST_F(AddDeleteTest, AddNewStartsWithDefaultsAndEmptyFields) {
    const auto rows = OpenDynaset(u"select * from TVEH");
    rows->AddNew();
    EXPECT_EQ(rows->EditMode(), EditMode::Add);
    EXPECT_TRUE(rows->Value(u"TVEH_IMMAT").IsNull());
    EXPECT_EQ(rows->Value(u"TVEH_Note1"), Variant(u""));
    EXPECT_EQ(rows->Value(u"TVEH_EDIT"), Variant(false));
}

TEST_F(AddDeleteTest, AddNewTakesValuesByTheRulesOfTheFields) {
    const auto rows = OpenTable(u"TVEH");
    rows->AddNew();
    rows->SetValue(u"TVEH_IMMAT", u"ZZ-999-ZZ");
    EXPECT_EQ(rows->Value(u"TVEH_IMMAT"), Variant(u"ZZ-999-ZZ"));
    EXPECT_EQ(ErrorOf([&] { rows->SetValue(u"TVEH_IMMAT", Text(16, u'Z')); }), error::kTextTooLong);
    EXPECT_EQ(rows->Value(u"TVEH_IMMAT"), Variant(u"ZZ-999-ZZ"));
}

TEST_F(AddDeleteTest, CancelUpdateGoesBackToTheRecordBefore) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->MoveNext();
    rows->AddNew();
    rows->SetValue(u"TTYP_CODE", u"NEUF");
    rows->CancelUpdate();
    EXPECT_EQ(rows->EditMode(), EditMode::None);
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"CLI"));
    EXPECT_EQ(rows->AbsolutePosition(), 1);
}

TEST_F(AddDeleteTest, AddNewWorksOnAnEmptySetAndCancelLeavesItEmpty) {
    const auto rows = OpenDynaset(u"Select * from TVEH_DETAIL where false");
    rows->AddNew();
    rows->SetValue(u"TVEH_DETAIL_PERIOD", std::int16_t{6});
    EXPECT_EQ(rows->Value(u"TVEH_DETAIL_PERIOD"), Variant(std::int16_t{6}));
    rows->CancelUpdate();
    EXPECT_TRUE(rows->Eof());
    EXPECT_EQ(ErrorOf([&] { (void)rows->Value(0); }), error::kNoCurrentRecord);
}

TEST_F(AddDeleteTest, MoveDropsTheNewRecord) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->AddNew();
    rows->MoveNext();
    EXPECT_EQ(rows->EditMode(), EditMode::None);
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"CLI"));
}

TEST_F(AddDeleteTest, UpdateOfANewRecordIsRefusedWithAClearTextAndKeepsTheBuffer) {
    const auto rows = OpenDatabase(kBookmarks)->OpenRecordset(u"TSIGNETS", RecordsetType::Table);
    rows->AddNew();
    rows->SetValue(u"SIGNETS_Appli", std::int16_t{10});
    rows->SetValue(u"SIGNETS_nomdot", u"FFICVEH");
    rows->SetValue(u"SIGNETS_nomsignet", u"Client");
    EXPECT_EQ(ErrorOf([&] { rows->Update(); }), error::kOperationNotSupported);
    EXPECT_NE(DescriptionOfErrorOf([&] { rows->Update(); }).find(u"TSIGNETS"), Text::npos);
    EXPECT_EQ(rows->EditMode(), EditMode::Add);
    EXPECT_EQ(rows->Value(u"SIGNETS_nomsignet"), Variant(u"Client"));
    EXPECT_EQ(rows->RecordCount(), 0U);
}

TEST_F(AddDeleteTest, DeleteIsRefusedWithAClearTextAndKeepsTheRow) {
    const auto rows = OpenDynaset(u"TTYP");
    EXPECT_EQ(ErrorOf([&] { rows->Delete(); }), error::kOperationNotSupported);
    EXPECT_NE(DescriptionOfErrorOf([&] { rows->Delete(); }).find(u"TTYP"), Text::npos);
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"BAT"));
    EXPECT_EQ(OpenTable(u"TTYP")->RecordCount(), 12U);
}

TEST_F(AddDeleteTest, DeleteDropsAPendingEdit) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->Edit();
    rows->SetValue(u"TTYP_LIBELLE", u"X");
    EXPECT_EQ(ErrorOf([&] { rows->Delete(); }), error::kOperationNotSupported);
    EXPECT_EQ(rows->EditMode(), EditMode::None);
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Batterie"));
}

}  // namespace
}  // namespace quardele::dao
