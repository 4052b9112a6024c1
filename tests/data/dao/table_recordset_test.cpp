// Recordsets of the table type: index, seek, order of walking.
#include <algorithm>
#include <compare>

#include <jet/collation.h>

#include "dao_test.h"

namespace quardele::dao {
namespace {

class TableRecordsetTest : public DaoTest {
 protected:
    [[nodiscard]] std::shared_ptr<Recordset> OpenByKey(TextView table) {
        auto rows = OpenTable(table);
        rows->SetIndex(u"PrimaryKey");
        return rows;
    }

    /// All values of a field, walking from the first row to the last or the other way.
    static std::vector<Text> Forward(Recordset& rows, TextView field) {
        std::vector<Text> values;
        for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) {
            values.push_back(rows.Value(field).As<Text>());
        }
        return values;
    }
    static std::vector<Text> Backward(Recordset& rows, TextView field) {
        std::vector<Text> values;
        for (rows.MoveLast(); !rows.Bof(); rows.MovePrevious()) {
            values.push_back(rows.Value(field).As<Text>());
        }
        return values;
    }
};

TEST_F(TableRecordsetTest, OpensOnTheFirstRow) {
    const auto rows = OpenTable(u"TPAR");
    EXPECT_FALSE(rows->Bof());
    EXPECT_FALSE(rows->Eof());
    EXPECT_EQ(rows->Value(u"TPAR_Ver"), Variant(u"9.5"));
}

TEST_F(TableRecordsetTest, RecordCountIsExactAtOnce) {
    EXPECT_EQ(OpenTable(u"TVEH")->RecordCount(), 1500U);
    EXPECT_EQ(OpenTable(u"TVEH_DETAIL")->RecordCount(), 4500U);
}

TEST_F(TableRecordsetTest, EmptyTableHasBothEndsAndNoRecord) {
    const auto rows = OpenAnew(kBookmarks)->OpenRecordset(u"TSIGNETS", RecordsetType::Table);
    EXPECT_TRUE(rows->Bof());
    EXPECT_TRUE(rows->Eof());
    EXPECT_EQ(rows->RecordCount(), 0U);
    EXPECT_EQ(ErrorOf([&] { (void)rows->Value(0); }), error::kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows->MoveNext(); }), error::kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows->MoveFirst(); }), error::kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows->Edit(); }), error::kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows->Delete(); }), error::kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { (void)rows->CurrentBookmark(); }), error::kNoCurrentRecord);
}

TEST_F(TableRecordsetTest, SeekOnAnEmptyTableMisses) {
    const auto rows = OpenAnew(kBookmarks)->OpenRecordset(u"TSIGNETS", RecordsetType::Table);
    rows->SetIndex(u"PrimaryKey");
    rows->Seek(u"=", {std::int16_t{10}, u"FFICVEH", u"Client"});
    EXPECT_TRUE(rows->NoMatch());
}

TEST_F(TableRecordsetTest, WithoutAnIndexRowsComeInTheOrderOfTheFile) {
    const auto rows = OpenTable(u"TTYP");
    const std::vector<Text> expected = {u"CT",  u"VID", u"FRE", u"PNE", u"CLI", u"DIS",
                                        u"TAC", u"LIM", u"EXT", u"HAY", u"BAT", u"REV"};
    EXPECT_EQ(Forward(*rows, u"TTYP_CODE"), expected);
    EXPECT_EQ(Backward(*rows, u"TTYP_CODE"), std::vector<Text>(expected.rbegin(), expected.rend()));
}

TEST_F(TableRecordsetTest, IndexGivesTheOrderAndGoesToItsFirstRow) {
    const auto rows = OpenTable(u"TTYP");
    rows->MoveLast();
    rows->SetIndex(u"PrimaryKey");
    EXPECT_EQ(rows->Index(), u"PrimaryKey");
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"BAT"));
    const std::vector<Text> expected = {u"BAT", u"CLI", u"CT",  u"DIS", u"EXT", u"FRE",
                                        u"HAY", u"LIM", u"PNE", u"REV", u"TAC", u"VID"};
    EXPECT_EQ(Forward(*rows, u"TTYP_CODE"), expected);
    EXPECT_EQ(Backward(*rows, u"TTYP_CODE"), std::vector<Text>(expected.rbegin(), expected.rend()));
}

TEST_F(TableRecordsetTest, EmptyIndexNameGoesBackToTheOrderOfTheFile) {
    const auto rows = OpenByKey(u"TTYP");
    rows->SetIndex(u"");
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"CT"));
    EXPECT_EQ(ErrorOf([&] { rows->Seek(u"=", {u"CT"}); }), error::kNotAnIndex);
}

TEST_F(TableRecordsetTest, IndexOrderIsTheOrderOfTextsOfTheFile) {
    const auto rows = OpenByKey(u"TVEH");
    const auto values = Forward(*rows, u"TVEH_IMMAT");
    EXPECT_EQ(values.size(), 1500U);
    EXPECT_TRUE(std::is_sorted(values.begin(), values.end(),
                               [](const Text& a, const Text& b) { return std::is_lt(jet::Compare(a, b)); }));
    EXPECT_EQ(Backward(*rows, u"TVEH_IMMAT"), std::vector<Text>(values.rbegin(), values.rend()));
}

TEST_F(TableRecordsetTest, UnknownIndexRaises3015AndKeepsTheOldOne) {
    const auto rows = OpenByKey(u"TTYP");
    EXPECT_EQ(ErrorOf([&] { rows->SetIndex(u"Rien"); }), error::kIndexNotFound);
    EXPECT_EQ(rows->Index(), u"PrimaryKey");
    rows->Seek(u"=", {u"CT"});
    EXPECT_FALSE(rows->NoMatch());
}

TEST_F(TableRecordsetTest, OtherIndexesAreFoundByTheirNames) {
    const auto rows = OpenTable(u"TVEH");
    rows->SetIndex(u"codcli");
    rows->Seek(u"=", {u"C0331"});
    ASSERT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->Value(u"TVEH_CODCLI"), Variant(u"C0331"));
}

TEST_F(TableRecordsetTest, SeekWithoutAnIndexRaises3019) {
    const auto rows = OpenTable(u"TTYP");
    EXPECT_EQ(ErrorOf([&] { rows->Seek(u"=", {u"CT"}); }), error::kNotAnIndex);
}

TEST_F(TableRecordsetTest, SeekFindsTheRow) {
    const auto rows = OpenByKey(u"TCLI");
    rows->Seek(u"=", {u"C0007"});
    EXPECT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->Value(u"TCLI_RS"), Variant(u"FROMAGERIE ÇA VA DE SOI 2"));
}

TEST_F(TableRecordsetTest, SeekIgnoresCase) {
    const auto rows = OpenByKey(u"TTYP");
    rows->Seek(u"=", {u"vid"});
    ASSERT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Vidange et filtres"));
}

TEST_F(TableRecordsetTest, KeyTakesTheTypeOfTheColumn) {
    const auto paths = OpenAnew(kPaths)->OpenRecordset(u"TPATH", RecordsetType::Table);
    paths->SetIndex(u"PrimaryKey");
    for (const Variant& key :
         {Variant(std::int16_t{2}), Variant(std::int32_t{2}), Variant(2.0), Variant(u"2")}) {
        paths->MoveFirst();
        paths->Seek(u"=", {key});
        ASSERT_FALSE(paths->NoMatch());
        EXPECT_EQ(paths->Value(u"TPATH_NOMMDB"), Variant(u"talmeon.mdb"));
    }
    const auto lines = OpenByKey(u"TAFF_DETAIL");  // its key is a Long
    lines->Seek(u"=", {std::int16_t{12}});
    ASSERT_FALSE(lines->NoMatch());
    EXPECT_EQ(lines->Value(u"TAFF_DETAIL_Id"), Variant(std::int32_t{12}));
}

TEST_F(TableRecordsetTest, KeyThatCannotTakeTheTypeRaises3421AndStaysThere) {
    const auto paths = OpenAnew(kPaths)->OpenRecordset(u"TPATH", RecordsetType::Table);
    paths->SetIndex(u"PrimaryKey");
    const Variant before = paths->Value(u"TPATH_NUM");
    EXPECT_EQ(ErrorOf([&] { paths->Seek(u"=", {u"deux"}); }), error::kTypeConversion);
    EXPECT_EQ(paths->Value(u"TPATH_NUM"), before);
    paths->Edit();
    EXPECT_EQ(ErrorOf([&] { paths->Seek(u"=", {u"deux"}); }), error::kTypeConversion);
    EXPECT_EQ(paths->EditMode(), EditMode::Edit) << "a refused seek leaves no record";
}

TEST_F(TableRecordsetTest, SeekThatMissesLeavesNoCurrentRecord) {
    const auto rows = OpenByKey(u"TTYP");
    rows->Seek(u"=", {u"XYZ"});
    EXPECT_TRUE(rows->NoMatch());
    EXPECT_EQ(ErrorOf([&] { (void)rows->Value(0); }), error::kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows->MoveNext(); }), error::kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows->MovePrevious(); }), error::kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows->Edit(); }), error::kNoCurrentRecord);
    EXPECT_FALSE(rows->Bof());
    EXPECT_FALSE(rows->Eof());
    rows->MoveFirst();
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"BAT"));
    rows->Seek(u"=", {u"CT"});
    EXPECT_FALSE(rows->NoMatch());
}

TEST_F(TableRecordsetTest, SeekComparesInEveryWay) {
    const auto rows = OpenByKey(u"TTYP");
    const auto found = [&](TextView comparison, TextView key) {
        rows->Seek(comparison, {Text(key)});
        return rows->NoMatch() ? Text() : rows->Value(u"TTYP_CODE").As<Text>();
    };
    EXPECT_EQ(found(u"=", u"DIS"), u"DIS");
    EXPECT_EQ(found(u"=", u"DI"), u"");
    EXPECT_EQ(found(u">=", u"DIS"), u"DIS");
    EXPECT_EQ(found(u">=", u"D"), u"DIS");
    EXPECT_EQ(found(u">=", u"ZZ"), u"");
    EXPECT_EQ(found(u">", u"DIS"), u"EXT");
    EXPECT_EQ(found(u">", u"VID"), u"");
    EXPECT_EQ(found(u"<=", u"DIS"), u"DIS");
    EXPECT_EQ(found(u"<=", u"E"), u"DIS");
    EXPECT_EQ(found(u"<=", u"A"), u"");
    EXPECT_EQ(found(u"<", u"DIS"), u"CT");
    EXPECT_EQ(found(u"<", u"BAT"), u"");
}

TEST_F(TableRecordsetTest, MovesGoOnInIndexOrderFromARowThatSeekFound) {
    const auto rows = OpenByKey(u"TTYP");
    rows->Seek(u"=", {u"DIS"});
    rows->MoveNext();
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"EXT"));
    rows->MovePrevious();
    rows->MovePrevious();
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"CT"));
}

TEST_F(TableRecordsetTest, SeekTakesLeadingColumnsOnly) {
    const auto rows = OpenByKey(u"TVEH_DETAIL");
    rows->Seek(u"=", {u"FQ-453-HQ"});
    ASSERT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->Value(u"TVEH_DETAIL_TypTrav"), Variant(u"CLI"));
    rows->MoveNext();
    EXPECT_EQ(rows->Value(u"TVEH_DETAIL_Immat"), Variant(u"FQ-453-HQ"));
    rows->Seek(u"=", {u"FQ-453-HQ", u"PNE"});
    ASSERT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->Value(u"TVEH_DETAIL_TypTrav"), Variant(u"PNE"));
    rows->Seek(u"=", {u"FQ-453-HQ", u"ZZZ"});
    EXPECT_TRUE(rows->NoMatch());
    rows->Seek(u"<", {u"FQ-453-HQ", u"PNE"});
    ASSERT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->Value(u"TVEH_DETAIL_Immat"), Variant(u"FQ-453-HQ"));
}

TEST_F(TableRecordsetTest, BadComparisonOrNumberOfKeysRaises3001) {
    const auto rows = OpenByKey(u"TTYP");
    EXPECT_EQ(ErrorOf([&] { rows->Seek(u"<>", {u"CT"}); }), error::kInvalidArgument);
    EXPECT_EQ(ErrorOf([&] { rows->Seek(u"=", {}); }), error::kInvalidArgument);
    EXPECT_EQ(ErrorOf([&] { rows->Seek(u"=", {u"CT", u"CT"}); }), error::kInvalidArgument);
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"BAT"));
}

TEST_F(TableRecordsetTest, MoveNextOnTheLastRowSetsEofAndTheNextOneRaises3021) {
    const auto rows = OpenByKey(u"TTYP");
    rows->MoveLast();
    rows->MoveNext();
    EXPECT_TRUE(rows->Eof());
    EXPECT_FALSE(rows->Bof());
    EXPECT_EQ(ErrorOf([&] { (void)rows->Value(0); }), error::kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows->MoveNext(); }), error::kNoCurrentRecord);
    rows->MovePrevious();
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"VID"));
}

TEST_F(TableRecordsetTest, MovePreviousOnTheFirstRowSetsBof) {
    const auto rows = OpenByKey(u"TTYP");
    rows->MovePrevious();
    EXPECT_TRUE(rows->Bof());
    EXPECT_FALSE(rows->Eof());
    EXPECT_EQ(ErrorOf([&] { rows->MovePrevious(); }), error::kNoCurrentRecord);
    rows->MoveNext();
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"BAT"));
}

TEST_F(TableRecordsetTest, BookmarkBringsBackItsRowInAnyOrder) {
    const auto rows = OpenTable(u"TTYP");
    rows->MoveNext();
    const Bookmark second = rows->CurrentBookmark();
    rows->SetIndex(u"PrimaryKey");
    EXPECT_NE(rows->CurrentBookmark(), second);
    rows->SetBookmark(second);
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"VID"));
    EXPECT_EQ(rows->CurrentBookmark(), second);
    rows->MovePrevious();
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"TAC"));
    rows->SetIndex(u"");
    rows->SetBookmark(second);
    rows->MoveNext();
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"FRE"));
}

TEST_F(TableRecordsetTest, ForeignBookmarkRaises3159) {
    const auto rows = OpenTable(u"TTYP");
    EXPECT_EQ(ErrorOf([&] { rows->SetBookmark({}); }), error::kInvalidBookmark);
    EXPECT_EQ(ErrorOf([&] { rows->SetBookmark(OpenDynaset(u"TTYP")->CurrentBookmark()); }),
              error::kInvalidBookmark);
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"CT"));
}

TEST_F(TableRecordsetTest, FieldsAreFoundByNameInAnyCaseWithOrWithoutTheTable) {
    const auto rows = OpenTable(u"TVEH");
    EXPECT_EQ(rows->FieldIndex(u"tveh_immat"), 0);
    EXPECT_EQ(rows->FieldIndex(u"TVEH.TVEH_CODCLI"), 1);
    EXPECT_EQ(rows->FieldNamed(u"TVEH_NOTE2").Size(), 100);
    EXPECT_EQ(ErrorOf([&] { (void)rows->FieldIndex(u"TVEH_RIEN"); }), error::kNoSuchField);
    EXPECT_EQ(ErrorOf([&] { (void)rows->Value(-1); }), error::kNoSuchField);
    EXPECT_EQ(ErrorOf([&] { (void)rows->Value(1000); }), error::kNoSuchField);
}

TEST_F(TableRecordsetTest, WhatOnlySetsOfRowsOfferRaises3251) {
    const auto rows = OpenTable(u"TTYP");
    EXPECT_EQ(ErrorOf([&] { rows->FindFirst(u"TTYP_CODE='CT'"); }), error::kOperationNotSupported);
    EXPECT_EQ(ErrorOf([&] { rows->FindNext(u"TTYP_CODE='CT'"); }), error::kOperationNotSupported);
    EXPECT_EQ(ErrorOf([&] { (void)rows->AbsolutePosition(); }), error::kOperationNotSupported);
    EXPECT_EQ(ErrorOf([&] { (void)rows->RowCount(); }), error::kOperationNotSupported);
    EXPECT_EQ(ErrorOf([&] { rows->Requery(); }), error::kOperationNotSupported);
}

TEST_F(TableRecordsetTest, ClosedRecordsetRaises3420) {
    const auto rows = OpenTable(u"TTYP");
    rows->Close();
    EXPECT_EQ(ErrorOf([&] { (void)rows->Value(0); }), error::kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { (void)rows->Eof(); }), error::kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { rows->MoveNext(); }), error::kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { rows->SetIndex(u"PrimaryKey"); }), error::kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { rows->Edit(); }), error::kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { rows->Close(); }), error::kObjectClosed);
}

}  // namespace
}  // namespace quardele::dao
