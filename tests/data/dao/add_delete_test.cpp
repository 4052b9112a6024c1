// AddNew and Delete: what is written, where the recordset stands then, and what it shows.
#include "../jet/support.h"
#include "dao_test.h"

namespace quardele::dao {
namespace {

using testing::ElementsAre;
using AddDeleteTest = DaoTest;

constexpr TextView kNew = u"MOT";

/// Adds a work type; it comes behind LIM and in front of PNE.
void Add(Recordset& rows, TextView code = kNew) {
    rows.AddNew();
    rows.SetValue(u"TTYP_CODE", Text(code));
    rows.SetValue(u"TTYP_LIBELLE", u"Moteur");
    rows.Update();
}

std::vector<Variant> Codes(const std::vector<const char16_t*>& codes) {
    return {codes.begin(), codes.end()};
}

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
    EXPECT_EQ(OpenTable(u"TTYP")->RecordCount(), 12U);
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

TEST_F(AddDeleteTest, AnIndependentProgramReadsTheNewRecord) {
    const auto rows = OpenDynaset(u"SELECT * FROM TVEH");
    rows->AddNew();
    rows->SetValue(u"TVEH_IMMAT", u"ZZ-999-ZZ");
    rows->SetValue(u"TVEH_MARQUE", u"ŠKODA");
    rows->Update();
    EXPECT_EQ(rows->EditMode(), EditMode::None);
    SKIP_WITHOUT_MDB_EXPORT();
    const std::string table = jet::test::MdbExport(Installed().File(kData), "TVEH");
    EXPECT_THAT(table, testing::HasSubstr("\n\"ZZ-999-ZZ\",,\"ŠKODA\","));
    EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), 1502);
}

TEST_F(AddDeleteTest, AfterUpdateTheRecordBeforeIsCurrentAndADynasetHasTheNewOneAtItsEnd) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->MoveNext();
    Add(*rows);
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"CLI"));
    EXPECT_EQ(rows->AbsolutePosition(), 1);
    EXPECT_EQ(rows->RowCount(), 13U);
    EXPECT_EQ(rows->ValueAt(12, 0), Variant(kNew));
    rows->SetBookmark(rows->LastModified());
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(kNew));
    EXPECT_EQ(rows->AbsolutePosition(), 12);
    rows->MoveNext();
    EXPECT_TRUE(rows->Eof());
    rows->MovePrevious();
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(kNew));
    rows->Requery();
    EXPECT_EQ(rows->RowCount(), 13U);
    EXPECT_EQ(rows->ValueAt(8, 0), Variant(kNew)) << "now in the order of the statement";
}

TEST_F(AddDeleteTest, TheNewRecordOfADynasetCanBeFoundEditedAndDeleted) {
    const auto rows = OpenDynaset(u"SELECT * FROM TTYP WHERE TTYP_CODE < 'C'");
    rows->FindFirst(u"TTYP_CODE = 'MOT'");
    rows->FindFirst(u"TTYP_CODE = 'MOT'");  // from the second search on there is an index
    EXPECT_TRUE(rows->NoMatch());
    Add(*rows);
    rows->FindFirst(u"TTYP_CODE = 'MOT'");
    ASSERT_FALSE(rows->NoMatch());
    rows->Edit();
    rows->SetValue(u"TTYP_LIBELLE", u"Moteurs");
    rows->Update();
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Moteurs"));
    rows->Delete();
    EXPECT_EQ(OpenTable(u"TTYP")->RecordCount(), 12U);
}

TEST_F(AddDeleteTest, RecordCountGrowsAndFallsWithOnesOwnChanges) {
    const auto rows = OpenDynaset(u"TTYP");
    EXPECT_EQ(rows->RecordCount(), 1U);
    Add(*rows);
    EXPECT_EQ(rows->RecordCount(), 2U);
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), 13U);
    rows->Delete();
    EXPECT_EQ(rows->RecordCount(), 12U);
    const auto none = OpenDynaset(u"SELECT * FROM TTYP WHERE False");
    Add(*none);
    EXPECT_EQ(none->RecordCount(), 1U);
    EXPECT_EQ(ErrorOf([&] { (void)none->Value(0); }), error::kNoCurrentRecord);
    none->MoveFirst();
    EXPECT_EQ(none->Value(u"TTYP_CODE"), Variant(kNew));
}

TEST_F(AddDeleteTest, ATableShowsTheNewRecordInTheOrderOfItsIndex) {
    const auto rows = OpenTable(u"TTYP");
    rows->SetIndex(u"PrimaryKey");
    rows->Seek(u"=", {u"LIM"});
    Add(*rows);
    EXPECT_EQ(rows->RecordCount(), 13U);
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"LIM"));
    EXPECT_THAT(Rest(*rows, u"TTYP_CODE"),
                testing::ElementsAreArray(Codes({u"LIM", u"MOT", u"PNE", u"REV", u"TAC", u"VID"})));
    rows->Seek(u"=", {Text(kNew)});
    EXPECT_EQ(rows->CurrentBookmark(), rows->LastModified());
}

TEST_F(AddDeleteTest, ATableWithoutIndexShowsNewRecordsAtItsEnd) {
    const auto rows = OpenTable(u"TTYP");
    rows->MoveLast();
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"REV"));
    Add(*rows);
    Add(*rows, u"AAA");
    EXPECT_THAT(Rest(*rows, u"TTYP_CODE"), testing::ElementsAreArray(Codes({u"REV", u"MOT", u"AAA"})));
    rows->SetBookmark(rows->LastModified());
    rows->MovePrevious();
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(kNew));
}

TEST_F(AddDeleteTest, AnEmptyTableTakesItsFirstRecord) {
    const auto rows = OpenAnew(kBookmarks)->OpenRecordset(u"TSIGNETS", RecordsetType::Table);
    rows->SetIndex(u"PrimaryKey");
    rows->AddNew();
    rows->SetValue(u"SIGNETS_Appli", std::int16_t{10});
    rows->SetValue(u"SIGNETS_nomdot", u"FFICVEH");
    rows->SetValue(u"SIGNETS_nomsignet", u"Client");
    rows->Update();
    EXPECT_EQ(rows->RecordCount(), 1U);
    rows->Seek(u"=", {std::int16_t{10}, u"FFICVEH", u"client"});
    ASSERT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->Value(u"SIGNETS_nomsignet"), Variant(u"Client"));
}

TEST_F(AddDeleteTest, ARefusedRecordKeepsTheBuffer) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->AddNew();
    rows->SetValue(u"TTYP_CODE", u"CT");
    EXPECT_EQ(ErrorOf([&] { rows->Update(); }), error::kDuplicateKey);
    EXPECT_EQ(rows->EditMode(), EditMode::Add);
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"CT"));
    rows->SetValue(u"TTYP_CODE", Null{});
    EXPECT_EQ(ErrorOf([&] { rows->Update(); }), error::kNullInPrimaryKey);
    rows->SetValue(u"TTYP_CODE", Text(kNew));
    rows->Update();
    EXPECT_EQ(OpenTable(u"TTYP")->RecordCount(), 13U);
}

TEST_F(AddDeleteTest, FieldsThatARecordsetDoesNotShowGetTheirDefaults) {
    const auto rows = OpenDynaset(u"SELECT TVEH_IMMAT FROM TVEH");
    rows->AddNew();
    rows->SetValue(u"TVEH_IMMAT", u"ZZ-999-ZZ");
    rows->Update();
    const auto added = OpenDynaset(u"SELECT * FROM TVEH WHERE TVEH_IMMAT='ZZ-999-ZZ'");
    EXPECT_EQ(added->Value(u"TVEH_Note1"), Variant(u""));
    EXPECT_TRUE(added->Value(u"TVEH_MARQUE").IsNull());
}

TEST_F(AddDeleteTest, ADefaultThatIsClearedIsNull) {
    const auto rows = OpenTable(u"TVEH");
    rows->AddNew();
    rows->SetValue(u"TVEH_IMMAT", u"ZZ-999-ZZ");
    rows->SetValue(u"TVEH_Note1", Null{});
    rows->Update();
    rows->SetBookmark(rows->LastModified());
    EXPECT_TRUE(rows->Value(u"TVEH_Note1").IsNull());
}

TEST_F(AddDeleteTest, ANewVisitOfAJoinShowsItsVehicle) {
    const auto rows = OpenDynaset(
        u"SELECT * FROM TVEH_DETAIL LEFT JOIN TVEH ON TVEH_DETAIL.TVEH_DETAIL_Immat = TVEH.TVEH_IMMAT");
    const std::size_t before = rows->RowCount();
    rows->AddNew();
    rows->SetValue(u"TVEH_DETAIL_Immat", u"FQ-453-HQ");
    rows->SetValue(u"TVEH_DETAIL_TypTrav", u"NEUF");
    rows->Update();
    EXPECT_EQ(rows->RowCount(), before + 1);
    rows->SetBookmark(rows->LastModified());
    EXPECT_EQ(rows->Value(u"TVEH_DETAIL_TypTrav"), Variant(u"NEUF"));
    EXPECT_EQ(rows->Value(u"TVEH_IMMAT"), Variant(u"FQ-453-HQ"));
    EXPECT_EQ(OpenTable(u"TVEH")->RecordCount(), 1500U) << "no vehicle was added";
}

TEST_F(AddDeleteTest, ARecordOfTwoTablesIsAddedWholeOrNotAtAll) {
    const auto rows = OpenDynaset(
        u"SELECT TVEH_IMMAT, TVEH_DETAIL_Immat, TVEH_DETAIL_TypTrav FROM TVEH_DETAIL INNER JOIN TVEH ON "
        u"TVEH_DETAIL.TVEH_DETAIL_Immat = TVEH.TVEH_IMMAT WHERE TVEH_IMMAT='FQ-453-HQ' AND "
        u"TVEH_DETAIL_TypTrav='CT'");
    const std::size_t visits = OpenTable(u"TVEH_DETAIL")->RecordCount();
    const auto add = [&](TextView vehicle) {
        rows->AddNew();
        rows->SetValue(u"TVEH_IMMAT", Text(vehicle));
        rows->SetValue(u"TVEH_DETAIL_Immat", Text(vehicle));
        rows->SetValue(u"TVEH_DETAIL_TypTrav", u"HAY");
        rows->Update();
    };
    EXPECT_EQ(ErrorOf([&] { add(u"KG-361-VP"); }), error::kDuplicateKey);
    EXPECT_EQ(OpenTable(u"TVEH_DETAIL")->RecordCount(), visits);
    rows->CancelUpdate();
    add(u"ZZ-999-ZZ");
    EXPECT_EQ(OpenTable(u"TVEH_DETAIL")->RecordCount(), visits + 1);
    EXPECT_EQ(rows->ValueAt(1, 0), Variant(u"ZZ-999-ZZ"));
    EXPECT_EQ(rows->ValueAt(1, 2), Variant(u"HAY"));
}

TEST_F(AddDeleteTest, ANewRecordOfAJoinWithoutAnyValueIsNone) {
    const auto rows = OpenDynaset(
        u"SELECT * FROM TVEH_DETAIL LEFT JOIN TVEH ON TVEH_DETAIL.TVEH_DETAIL_Immat = TVEH.TVEH_IMMAT");
    const std::size_t before = rows->RowCount();
    rows->AddNew();
    rows->Update();
    EXPECT_EQ(rows->RowCount(), before);
    EXPECT_EQ(rows->EditMode(), EditMode::None);
}

TEST_F(AddDeleteTest, OfAFieldThatIsShownTwiceTheOneThatWasSetCounts) {
    const auto rows = OpenDynaset(u"SELECT TTYP_CODE, TTYP_CODE AS Code, TTYP_LIBELLE FROM TTYP");
    rows->AddNew();
    rows->SetValue(u"TTYP_CODE", Text(kNew));
    rows->Update();
    EXPECT_EQ(rows->ValueAt(12, 1), Variant(kNew));
}

TEST_F(AddDeleteTest, TheDeletedRecordStaysCurrentUntilTheNextMove) {
    const auto dynaset = OpenDynaset(u"TTYP");
    const auto table = OpenTable(u"TTYP");
    table->SetIndex(u"PrimaryKey");
    for (const auto& rows : {dynaset, table}) {
        rows->MoveNext();
        rows->MoveNext();
        rows->Delete();
        EXPECT_FALSE(rows->Bof() || rows->Eof());
        EXPECT_EQ(ErrorOf([&] { (void)rows->Value(0); }), error::kRecordDeleted);
        EXPECT_EQ(ErrorOf([&] { rows->Edit(); }), error::kRecordDeleted);
        EXPECT_EQ(ErrorOf([&] { rows->Delete(); }), error::kRecordDeleted);
    }
    dynaset->MoveNext();
    EXPECT_EQ(ErrorOf([&] { (void)dynaset->Value(0); }), error::kRecordDeleted)
        << "deleted through the table";
    dynaset->MoveNext();
    EXPECT_EQ(dynaset->Value(u"TTYP_CODE"), Variant(u"EXT"));
    table->MoveNext();
    EXPECT_EQ(table->Value(u"TTYP_CODE"), Variant(u"EXT"));
    table->MovePrevious();
    EXPECT_EQ(table->Value(u"TTYP_CODE"), Variant(u"CLI"));
    EXPECT_EQ(table->RecordCount(), 10U);
}

TEST_F(AddDeleteTest, ADynasetLeavesOutTheRecordsItHasDeleted) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->MoveNext();
    const Bookmark gone = rows->CurrentBookmark();
    rows->Delete();
    rows->MoveNext();
    EXPECT_EQ(ErrorOf([&] { rows->SetBookmark(gone); }), error::kRecordDeleted);
    EXPECT_EQ(rows->AbsolutePosition(), 2);
    EXPECT_EQ(rows->RowCount(), 12U);
    EXPECT_EQ(ErrorOf([&] { (void)rows->ValueAt(1, 0); }), error::kRecordDeleted);
    rows->MovePrevious();
    EXPECT_EQ(rows->AbsolutePosition(), 0);
    rows->MoveNext();
    EXPECT_EQ(rows->AbsolutePosition(), 2);
    rows->FindFirst(u"TTYP_CODE >= 'CLI'");
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"CT"));
    rows->Requery();
    EXPECT_EQ(rows->RowCount(), 11U);
}

TEST_F(AddDeleteTest, ADynasetStartsAndEndsBesideTheRecordsItHasDeleted) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->Delete();
    EXPECT_EQ(rows->RecordCount(), 1U) << "there are more records, not visited yet";
    rows->MoveFirst();
    EXPECT_EQ(rows->AbsolutePosition(), 1);
    rows->MovePrevious();
    EXPECT_TRUE(rows->Bof());
    rows->MoveLast();
    rows->Delete();
    rows->MoveLast();
    EXPECT_EQ(rows->AbsolutePosition(), 10);
    EXPECT_EQ(rows->RecordCount(), 10U);
    rows->MoveNext();
    EXPECT_TRUE(rows->Eof());
}

TEST_F(AddDeleteTest, WithoutItsLastRecordADynasetIsEmpty) {
    const auto rows = OpenDynaset(u"SELECT * FROM TTYP WHERE TTYP_CODE = 'CT'");
    rows->Delete();
    EXPECT_FALSE(rows->Bof());
    EXPECT_FALSE(rows->Eof());
    rows->MoveNext();
    EXPECT_TRUE(rows->Bof());
    EXPECT_TRUE(rows->Eof());
    EXPECT_EQ(rows->RecordCount(), 0U);
    EXPECT_EQ(ErrorOf([&] { rows->MoveFirst(); }), error::kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows->MovePrevious(); }), error::kNoCurrentRecord);
}

TEST_F(AddDeleteTest, RecordsDeletedByOthersStayAsPlaces) {
    const auto rows = OpenDynaset(u"TTYP");
    const auto others = OpenDynaset(u"TTYP");
    others->MoveNext();
    others->Delete();
    rows->MoveNext();
    EXPECT_EQ(ErrorOf([&] { (void)rows->Value(0); }), error::kRecordDeleted);
    rows->MoveNext();
    EXPECT_EQ(rows->AbsolutePosition(), 2);
}

TEST_F(AddDeleteTest, PercentPositionCountsWhatIsLeft) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->MoveLast();
    rows->MoveFirst();
    rows->Delete();
    EXPECT_EQ(ErrorOf([&] { (void)rows->PercentPosition(); }), error::kRecordDeleted);
    rows->MoveNext();
    EXPECT_FLOAT_EQ(rows->PercentPosition(), 0);
    rows->MoveNext();
    rows->Delete();
    rows->MoveLast();
    EXPECT_FLOAT_EQ(rows->PercentPosition(), 90);
}

TEST_F(AddDeleteTest, PercentPositionOfATableCountsAddedRecords) {
    const auto rows = OpenTable(u"TTYP");
    rows->SetIndex(u"PrimaryKey");
    rows->MoveLast();
    EXPECT_GT(rows->PercentPosition(), 90);
    Add(*rows);
    rows->MoveLast();
    EXPECT_FLOAT_EQ(rows->PercentPosition(), 100.0F * 12 / 13);
}

TEST_F(AddDeleteTest, AnAddedRecordCountsAsTheWalkGoesOn) {
    const auto rows = OpenDynaset(u"TTYP");
    EXPECT_EQ(rows->RecordCount(), 1U);
    Add(*rows);
    EXPECT_EQ(rows->RecordCount(), 2U);
    rows->MoveNext();
    EXPECT_EQ(rows->RecordCount(), 3U);
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), 13U);
}

TEST_F(AddDeleteTest, AfterARequeryNoRecordIsTheOneWrittenLast) {
    const auto rows = OpenDynaset(u"TTYP");
    Add(*rows);
    EXPECT_EQ(ErrorOf([&] { (void)rows->LastModified(); }), 0);
    rows->Requery();
    EXPECT_EQ(ErrorOf([&] { (void)rows->LastModified(); }), error::kNoCurrentRecord);
}

/// A page gives the place of a deleted record to another one when it has no fresh place left.
TEST_F(AddDeleteTest, ANewRecordInThePlaceOfADeletedOneIsAnotherOne) {
    const auto catalogue = OpenAnew(kBookmarks);
    const auto table = catalogue->OpenRecordset(u"TSIGNETS", RecordsetType::Table);
    const auto dynaset = catalogue->OpenRecordset(u"TSIGNETS", RecordsetType::Dynaset);
    const auto add = [](Recordset& rows) {
        rows.AddNew();
        rows.SetValue(u"SIGNETS_Appli", std::int16_t{1});
        rows.SetValue(u"SIGNETS_nomdot", u"F");
        rows.SetValue(u"SIGNETS_nomsignet", u"un");
        rows.Update();
        rows.SetBookmark(rows.LastModified());
    };
    add(*dynaset);
    const long position = dynaset->AbsolutePosition();
    dynaset->Delete();
    add(*table);
    const Bookmark first = table->CurrentBookmark();
    table->Delete();
    constexpr int kPlacesOfAPage = 255;
    int added = 0;
    do {
        add(*table);
        if (table->CurrentBookmark() != first) {
            table->Delete();
        }
    } while (table->CurrentBookmark() != first && ++added < kPlacesOfAPage);
    ASSERT_EQ(table->CurrentBookmark(), first) << "no place was given anew";
    EXPECT_EQ(table->Value(u"SIGNETS_nomsignet"), Variant(u"un"));
    EXPECT_EQ(ErrorOf([&] { (void)dynaset->Value(2); }), error::kRecordDeleted);
    EXPECT_EQ(ErrorOf([&] { (void)dynaset->ValueAt(static_cast<std::size_t>(position), 2); }),
              error::kRecordDeleted);
}

TEST_F(AddDeleteTest, DeleteDropsAPendingEdit) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->Edit();
    rows->SetValue(u"TTYP_LIBELLE", u"X");
    rows->Delete();
    EXPECT_EQ(rows->EditMode(), EditMode::None);
    EXPECT_EQ(ErrorOf([&] { (void)rows->Value(u"TTYP_LIBELLE"); }), error::kRecordDeleted);
    EXPECT_EQ(OpenTable(u"TTYP")->RecordCount(), 11U);
}

TEST_F(AddDeleteTest, DeleteOfAJoinTakesTheRowOfTheManySide) {
    const auto rows = OpenDynaset(DueBefore(u"12/31/2026"));
    const std::size_t visits = OpenTable(u"TVEH_DETAIL")->RecordCount();
    rows->FindFirst(u"TVEH_IMMAT='CF-974-BL'");
    rows->Delete();
    EXPECT_EQ(ErrorOf([&] { (void)rows->Value(u"TVEH_DETAIL_TypTrav"); }), error::kRecordDeleted);
    EXPECT_EQ(OpenTable(u"TVEH_DETAIL")->RecordCount(), visits - 1);
    EXPECT_EQ(OpenTable(u"TVEH")->RecordCount(), 1500U);
}

TEST_F(AddDeleteTest, ASnapshotTakesNoChange) {
    const auto rows = Data().OpenRecordset(u"TTYP", RecordsetType::Snapshot);
    EXPECT_EQ(ErrorOf([&] { rows->AddNew(); }), error::kReadOnly);
    EXPECT_EQ(ErrorOf([&] { rows->Edit(); }), error::kReadOnly);
    EXPECT_EQ(ErrorOf([&] { rows->Delete(); }), error::kReadOnly);
}

TEST_F(AddDeleteTest, ManyRecordsComeAndGo) {
    const auto rows = OpenTable(u"TVEH_DETAIL");
    const std::size_t before = rows->RecordCount();
    for (int i = 0; i < 100; ++i) {
        rows->AddNew();
        rows->SetValue(u"TVEH_DETAIL_Immat", u"NEUF " + basic::NumberText(i));
        rows->SetValue(u"TVEH_DETAIL_TypTrav", u"CT");
        rows->Update();
    }
    EXPECT_EQ(rows->RecordCount(), before + 100);
    const auto added = OpenDynaset(u"SELECT * FROM TVEH_DETAIL WHERE TVEH_DETAIL_Immat LIKE 'NEUF *'");
    EXPECT_EQ(added->RowCount(), 100U);
    for (; !added->Eof(); added->MoveNext()) {
        added->Delete();
    }
    EXPECT_EQ(rows->RecordCount(), before);
}

}  // namespace
}  // namespace quardele::dao
