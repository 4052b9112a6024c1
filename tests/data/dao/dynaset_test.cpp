// Dynasets: membership, position, counting, reading.
#include "dao_test.h"

namespace quardele::dao {
namespace {

using DynasetTest = DaoTest;

TEST_F(DynasetTest, EmptySetHasBothEndsAndRefusesToMove) {
    const auto rows = OpenDynaset(u"Select * from TVEH where false;");
    EXPECT_TRUE(rows->Bof());
    EXPECT_TRUE(rows->Eof());
    EXPECT_EQ(rows->RecordCount(), 0U);
    EXPECT_EQ(rows->RowCount(), 0U);
    EXPECT_EQ(rows->AbsolutePosition(), -1);
    EXPECT_EQ(ErrorOf([&] { (void)rows->Value(u"TVEH_IMMAT"); }), error::kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows->MoveFirst(); }), error::kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows->MoveLast(); }), error::kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows->MoveNext(); }), error::kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows->MovePrevious(); }), error::kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows->Edit(); }), error::kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows->Delete(); }), error::kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { (void)rows->CurrentBookmark(); }), error::kNoCurrentRecord);
}

TEST_F(DynasetTest, RecordCountCountsTheRowsVisitedSoFar) {
    const auto rows = OpenDynaset(u"select * from TVEH");
    EXPECT_EQ(rows->RecordCount(), 1U);
    rows->MoveNext();
    EXPECT_EQ(rows->RecordCount(), 2U);
    rows->MoveFirst();
    EXPECT_EQ(rows->RecordCount(), 2U);
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), 1500U);
    rows->MoveFirst();
    EXPECT_EQ(rows->RecordCount(), 1500U);
}

TEST_F(DynasetTest, WalkingToTheEndMakesTheCountExact) {
    const auto rows = OpenDynaset(u"TTYP");
    EXPECT_EQ(Rest(*rows, u"TTYP_CODE").size(), 12U);
    EXPECT_EQ(rows->RecordCount(), 12U);
}

TEST_F(DynasetTest, TableNameOpensInTheOrderOfThePrimaryKey) {
    const auto rows = OpenDynaset(u"TTYP");
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"BAT"));
    rows->MoveLast();
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"VID"));
}

TEST_F(DynasetTest, MoveNextOnTheLastRowSetsEof) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->MoveLast();
    rows->MoveNext();
    EXPECT_TRUE(rows->Eof());
    EXPECT_FALSE(rows->Bof());
    EXPECT_EQ(rows->AbsolutePosition(), -1);
    EXPECT_EQ(ErrorOf([&] { (void)rows->Value(u"TTYP_CODE"); }), error::kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows->MoveNext(); }), error::kNoCurrentRecord);
    rows->MovePrevious();
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"VID"));
}

TEST_F(DynasetTest, MovePreviousOnTheFirstRowSetsBof) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->MovePrevious();
    EXPECT_TRUE(rows->Bof());
    EXPECT_FALSE(rows->Eof());
    EXPECT_EQ(ErrorOf([&] { rows->MovePrevious(); }), error::kNoCurrentRecord);
    rows->MoveNext();
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"BAT"));
}

TEST_F(DynasetTest, AbsolutePositionCountsFrom0) {
    const auto rows = OpenDynaset(u"TTYP");
    EXPECT_EQ(rows->AbsolutePosition(), 0);
    rows->SetAbsolutePosition(3);
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"DIS"));
    EXPECT_EQ(rows->AbsolutePosition(), 3);
    EXPECT_EQ(rows->RecordCount(), 4U);
    EXPECT_EQ(ErrorOf([&] { rows->SetAbsolutePosition(12); }), error::kInvalidArgument);
    EXPECT_EQ(ErrorOf([&] { rows->SetAbsolutePosition(-1); }), error::kInvalidArgument);
    EXPECT_EQ(rows->AbsolutePosition(), 3);
}

TEST_F(DynasetTest, BookmarkBringsBackItsRow) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->MoveNext();
    const Bookmark second = rows->CurrentBookmark();
    rows->MoveLast();
    EXPECT_NE(rows->CurrentBookmark(), second);
    rows->SetBookmark(second);
    EXPECT_EQ(rows->CurrentBookmark(), second);
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"CLI"));
}

TEST_F(DynasetTest, ForeignBookmarkRaises3159AndStaysThere) {
    const auto rows = OpenDynaset(u"TTYP");
    const auto longer = OpenDynaset(u"TVEH");
    longer->MoveLast();
    EXPECT_EQ(ErrorOf([&] { rows->SetBookmark({}); }), error::kInvalidBookmark);
    EXPECT_EQ(ErrorOf([&] { rows->SetBookmark(longer->CurrentBookmark()); }), error::kInvalidBookmark);
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"BAT"));
}

TEST_F(DynasetTest, BookmarkOfAnotherRecordsetOfTheSameRowsRaises3159) {
    const auto rows = OpenDynaset(u"TTYP");
    const auto same = OpenDynaset(u"TTYP");
    same->MoveNext();
    EXPECT_EQ(ErrorOf([&] { rows->SetBookmark(same->CurrentBookmark()); }), error::kInvalidBookmark);
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"BAT"));
}

TEST_F(DynasetTest, BookmarkFromBeforeARequeryRaises3159) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->MoveNext();
    const Bookmark second = rows->CurrentBookmark();
    rows->Requery();
    EXPECT_EQ(ErrorOf([&] { rows->SetBookmark(second); }), error::kInvalidBookmark);
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"BAT"));
}

TEST_F(DynasetTest, FieldsOfAJoinAreReadByColumnAndByTableAndColumn) {
    const auto rows = OpenDynaset(
        u"SELECT TVEH.TVEH_IMMAT, TVEH_DETAIL.TVEH_DETAIL_TypTrav FROM TVEH_DETAIL INNER JOIN TVEH "
        u"ON TVEH_DETAIL.TVEH_DETAIL_Immat = TVEH.TVEH_IMMAT "
        u"WHERE TVEH_IMMAT = 'FQ-453-HQ' ORDER BY TVEH_DETAIL_TypTrav");
    EXPECT_EQ(rows->Value(u"tveh_immat"), Variant(u"FQ-453-HQ"));
    EXPECT_EQ(rows->Value(u"TVEH.TVEH_IMMAT"), Variant(u"FQ-453-HQ"));
    EXPECT_EQ(rows->Value(u"TVEH_DETAIL.TVEH_DETAIL_TYPTRAV"), Variant(u"CLI"));
    EXPECT_EQ(ErrorOf([&] { (void)rows->Value(u"TVEH_MARQUE"); }), error::kNoSuchField);
    EXPECT_EQ(ErrorOf([&] { (void)rows->Value(-1); }), error::kNoSuchField);
    EXPECT_EQ(ErrorOf([&] { (void)rows->Value(2); }), error::kNoSuchField);
}

TEST_F(DynasetTest, FieldsCarryTheRulesOfTheirColumns) {
    const auto rows = OpenDynaset(u"SELECT TVEH_Note1 AS Note, Trim([TVEH_IMMAT] & '') AS Immat FROM TVEH");
    const Field& note = rows->Fields()[0];
    EXPECT_EQ(note.Name(), u"Note");
    EXPECT_EQ(note.Type(), FieldType::Text);
    EXPECT_EQ(note.Size(), 100);
    EXPECT_TRUE(note.allowZeroLength);
    EXPECT_EQ(note.defaultValue, u"\"\"");
    EXPECT_EQ(rows->Fields()[1].Name(), u"Immat");
    EXPECT_EQ(rows->Fields()[1].Type(), FieldType::Text);
}

TEST_F(DynasetTest, LineWithoutItsPartnerReadsAsNull) {
    const auto rows = OpenDynaset(DueBefore(u"12/31/2026"));
    ASSERT_FALSE(rows->Eof());
    EXPECT_EQ(rows->Value(u"TVEH_DETAIL_TypTrav"), Variant(u"CT"));
    EXPECT_TRUE(rows->Value(u"TVEH_IMMAT").IsNull());
    EXPECT_TRUE(rows->Value(u"TVEH_CODCLI").IsNull());
}

TEST_F(DynasetTest, ErrorsOfTheStatementReachTheCaller) {
    EXPECT_EQ(ErrorOf([&] { (void)OpenDynaset(u"SELECT * FROM TRIEN"); }), error::kNoSuchTable);
    EXPECT_EQ(ErrorOf([&] { (void)OpenDynaset(u"SELECT TRIEN_X FROM TVEH"); }), error::kTooFewParameters);
    EXPECT_EQ(ErrorOf([&] { (void)OpenDynaset(u"SELECT * FROM TVEH WHERE TVEH_IMMAT = 'a'b'"); }),
              error::kSyntaxError);
}

TEST_F(DynasetTest, RequeryRunsTheStatementAgainAndGoesToTheFirstRow) {
    const auto rows = OpenDynaset(u"SELECT * FROM TTYP WHERE TTYP_LIBELLE LIKE 'C*' ORDER BY TTYP_CODE");
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), 5U);
    const auto table = OpenTable(u"TTYP");
    table->SetIndex(u"PrimaryKey");
    table->Seek(u"=", {u"VID"});
    table->Edit();
    table->SetValue(u"TTYP_LIBELLE", u"Change d'huile");
    table->Update();
    EXPECT_EQ(rows->RowCount(), 5U) << "membership is fixed until the next Requery";
    rows->Requery();
    EXPECT_EQ(rows->AbsolutePosition(), 0);
    EXPECT_EQ(rows->RecordCount(), 1U);
    EXPECT_EQ(rows->RowCount(), 6U);
}

TEST_F(DynasetTest, ValuesAreReadLive) {
    const auto rows = OpenDynaset(
        u"SELECT TTYP_CODE, TTYP_LIBELLE, Len([TTYP_LIBELLE]) AS Longueur FROM TTYP "
        u"WHERE TTYP_CODE = 'VID'");
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Vidange et filtres"));
    const auto table = OpenTable(u"TTYP");
    table->SetIndex(u"PrimaryKey");
    table->Seek(u"=", {u"VID"});
    table->Edit();
    table->SetValue(u"TTYP_LIBELLE", u"Vidange");
    table->Update();
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Vidange"));
    EXPECT_EQ(rows->Value(u"Longueur"), Variant(std::int32_t{7}));
}

TEST_F(DynasetTest, GroupedRowsCannotBeChanged) {
    const auto rows = OpenDynaset(u"SELECT TVEH_CODCLI, Count(*) AS Nombre FROM TVEH GROUP BY TVEH_CODCLI");
    EXPECT_EQ(rows->Type(), RecordsetType::Dynaset);
    EXPECT_EQ(ErrorOf([&] { rows->Edit(); }), error::kReadOnly);
    EXPECT_EQ(ErrorOf([&] { rows->AddNew(); }), error::kReadOnly);
    EXPECT_EQ(ErrorOf([&] { rows->Delete(); }), error::kReadOnly);
}

TEST_F(DynasetTest, AnyRowIsReadWithoutMovingThere) {
    const auto rows = OpenDynaset(u"TTYP");
    EXPECT_EQ(rows->RowCount(), 12U);
    EXPECT_EQ(rows->ValueAt(11, 0), Variant(u"VID"));
    EXPECT_EQ(rows->ValueAt(0, 1), Variant(u"Batterie"));
    EXPECT_EQ(rows->AbsolutePosition(), 0);
    EXPECT_EQ(rows->RecordCount(), 1U);
    EXPECT_EQ(ErrorOf([&] { (void)rows->ValueAt(12, 0); }), error::kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { (void)rows->ValueAt(0, 2); }), error::kNoSuchField);
}

TEST_F(DynasetTest, IndexAndSeekAreForTablesOnly) {
    const auto rows = OpenDynaset(u"TTYP");
    EXPECT_EQ(ErrorOf([&] { rows->SetIndex(u"PrimaryKey"); }), error::kOperationNotSupported);
    EXPECT_EQ(ErrorOf([&] { (void)rows->Index(); }), error::kOperationNotSupported);
    EXPECT_EQ(ErrorOf([&] { rows->Seek(u"=", {u"CT"}); }), error::kOperationNotSupported);
}

}  // namespace
}  // namespace quardele::dao
