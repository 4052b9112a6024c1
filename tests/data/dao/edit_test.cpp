// Edit, SetValue, Update, CancelUpdate.
#include <algorithm>
#include <string>

#include "../jet/support.h"
#include "dao_test.h"

namespace quardele::dao {
namespace {

class EditTest : public DaoTest {
 protected:
    /// A dynaset of one vehicle.
    [[nodiscard]] std::shared_ptr<Recordset> OpenVehicle(TextView registration = u"FQ-453-HQ") {
        return OpenDynaset(u"SELECT * FROM TVEH WHERE TVEH_IMMAT='" + Text(registration) + u"'");
    }
    /// What another opening of the file reads.
    [[nodiscard]] Variant StoredValue(TextView registration, TextView field) const {
        const auto rows = OpenAnew(kData)->OpenRecordset(u"TVEH", RecordsetType::Table);
        rows->SetIndex(u"PrimaryKey");
        rows->Seek(u"=", {Text(registration)});
        return rows->NoMatch() ? Variant() : rows->Value(field);
    }
};

TEST_F(EditTest, UpdateWritesTheBuffer) {
    const auto rows = OpenVehicle();
    EXPECT_EQ(rows->EditMode(), EditMode::None);
    rows->Edit();
    EXPECT_EQ(rows->EditMode(), EditMode::Edit);
    rows->SetValue(u"TVEH_MARQUE", u"CITROËN");
    EXPECT_EQ(rows->Value(u"TVEH_MARQUE"), Variant(u"CITROËN"));
    EXPECT_NE(StoredValue(u"FQ-453-HQ", u"TVEH_MARQUE"), Variant(u"CITROËN"));
    rows->Update();
    EXPECT_EQ(rows->EditMode(), EditMode::None);
    EXPECT_EQ(rows->Value(u"TVEH_MARQUE"), Variant(u"CITROËN"));
    EXPECT_EQ(StoredValue(u"FQ-453-HQ", u"TVEH_MARQUE"), Variant(u"CITROËN"));
}

TEST_F(EditTest, UpdateLeavesOtherFieldsAlone) {
    const auto rows = OpenVehicle();
    std::vector<Variant> before;
    before.reserve(rows->Fields().size());
    for (int field = 0; field < static_cast<int>(rows->Fields().size()); ++field) {
        before.push_back(rows->Value(field));
    }
    rows->Edit();
    rows->SetValue(u"TVEH_Note2", u"à rappeler");
    rows->Update();
    before[static_cast<std::size_t>(rows->FieldIndex(u"TVEH_Note2"))] = u"à rappeler";
    for (int field = 0; field < static_cast<int>(before.size()); ++field) {
        EXPECT_EQ(rows->Value(field), before[static_cast<std::size_t>(field)]) << field;
    }
}

TEST_F(EditTest, UpdateOfATableRecordWritesToo) {
    const auto rows = OpenTable(u"TVEH");
    rows->SetIndex(u"PrimaryKey");
    rows->Seek(u"=", {u"FQ-453-HQ"});
    rows->Edit();
    rows->SetValue(u"TVEH_MARQUE", u"CITROËN");
    rows->Update();
    EXPECT_EQ(rows->Value(u"TVEH_MARQUE"), Variant(u"CITROËN"));
    EXPECT_EQ(StoredValue(u"FQ-453-HQ", u"TVEH_MARQUE"), Variant(u"CITROËN"));
}

TEST_F(EditTest, UpdateWithoutAnyChangeSucceeds) {
    const auto rows = OpenVehicle();
    rows->Edit();
    rows->Update();
    EXPECT_EQ(rows->EditMode(), EditMode::None);
    EXPECT_EQ(rows->LastModified(), rows->CurrentBookmark());
}

TEST_F(EditTest, WithoutEditSettingUpdatingAndCancellingRaise3020) {
    const auto rows = OpenVehicle();
    EXPECT_EQ(ErrorOf([&] { rows->SetValue(u"TVEH_MARQUE", u"X"); }), error::kUpdateWithoutEdit);
    EXPECT_EQ(ErrorOf([&] { rows->Update(); }), error::kUpdateWithoutEdit);
    EXPECT_EQ(ErrorOf([&] { rows->CancelUpdate(); }), error::kUpdateWithoutEdit);
}

TEST_F(EditTest, EditWithoutACurrentRecordRaises3021) {
    const auto rows = OpenVehicle(u"AUCUN");
    EXPECT_EQ(ErrorOf([&] { rows->Edit(); }), error::kNoCurrentRecord);
}

TEST_F(EditTest, CancelUpdateDropsTheBuffer) {
    const auto rows = OpenVehicle();
    const Variant before = rows->Value(u"TVEH_MARQUE");
    rows->Edit();
    rows->SetValue(u"TVEH_MARQUE", u"X");
    rows->CancelUpdate();
    EXPECT_EQ(rows->EditMode(), EditMode::None);
    EXPECT_EQ(rows->Value(u"TVEH_MARQUE"), before);
    EXPECT_EQ(StoredValue(u"FQ-453-HQ", u"TVEH_MARQUE"), before);
}

TEST_F(EditTest, MoveDropsTheBuffer) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->Edit();
    rows->SetValue(u"TTYP_LIBELLE", u"X");
    rows->MoveNext();
    EXPECT_EQ(rows->EditMode(), EditMode::None);
    rows->MovePrevious();
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Batterie"));
}

TEST_F(EditTest, RequeryDropsTheBuffer) {
    const auto rows = OpenVehicle();
    rows->Edit();
    rows->SetValue(u"TVEH_MARQUE", u"X");
    rows->Requery();
    EXPECT_EQ(rows->EditMode(), EditMode::None);
    EXPECT_NE(rows->Value(u"TVEH_MARQUE"), Variant(u"X"));
}

TEST_F(EditTest, SecondEditStartsFromTheStoredValues) {
    const auto rows = OpenVehicle();
    const Variant before = rows->Value(u"TVEH_MARQUE");
    rows->Edit();
    rows->SetValue(u"TVEH_MARQUE", u"X");
    rows->Edit();
    EXPECT_EQ(rows->Value(u"TVEH_MARQUE"), before);
}

TEST_F(EditTest, LastModifiedIsTheRowUpdatedLast) {
    const auto rows = OpenDynaset(u"TTYP");
    EXPECT_EQ(ErrorOf([&] { (void)rows->LastModified(); }), error::kNoCurrentRecord);
    rows->FindFirst(u"TTYP_CODE='DIS'");
    rows->Edit();
    rows->SetValue(u"TTYP_LIBELLE", u"Distribution");
    rows->Update();
    rows->MoveFirst();
    rows->SetBookmark(rows->LastModified());
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"DIS"));
}

TEST_F(EditTest, TextLongerThanTheFieldRaises3163AndKeepsTheBuffer) {
    const auto rows = OpenVehicle();
    rows->Edit();
    rows->SetValue(u"TVEH_MARQUE", Text(30, u'É'));
    EXPECT_EQ(ErrorOf([&] { rows->SetValue(u"TVEH_MARQUE", Text(31, u'É')); }), error::kTextTooLong);
    EXPECT_EQ(rows->Value(u"TVEH_MARQUE"), Variant(Text(30, u'É')));
    rows->Update();
    EXPECT_EQ(rows->Value(u"TVEH_MARQUE"), Variant(Text(30, u'É')));
}

TEST_F(EditTest, ValueOfAnotherTypeIsConvertedOrRaises3421) {
    const auto rows = OpenDynaset(
        u"Select * from TVEH_DETAIL where TVEH_DETAIL_Immat ='FQ-453-HQ' and TVEH_DETAIL_TypTrav='CT'");
    rows->Edit();
    rows->SetValue(u"TVEH_DETAIL_PERIOD", u"18");
    EXPECT_EQ(rows->Value(u"TVEH_DETAIL_PERIOD"), Variant(std::int16_t{18}));
    rows->SetValue(u"TVEH_DETAIL_DATVIS", u"31/12/2026");
    EXPECT_EQ(rows->Value(u"TVEH_DETAIL_DATVIS"), Variant(basic::DateOf(2026, 12, 31)));
    EXPECT_EQ(ErrorOf([&] { rows->SetValue(u"TVEH_DETAIL_PERIOD", u"six"); }), error::kTypeConversion);
    EXPECT_EQ(ErrorOf([&] { rows->SetValue(u"TVEH_DETAIL_PERIOD", std::int32_t{40000}); }),
              error::kTypeConversion);
    EXPECT_EQ(ErrorOf([&] { rows->SetValue(u"TVEH_DETAIL_DATVIS", u"31/02/2026 ?"); }),
              error::kTypeConversion);
    EXPECT_EQ(rows->Value(u"TVEH_DETAIL_PERIOD"), Variant(std::int16_t{18}));
    rows->Update();
    EXPECT_EQ(rows->Value(u"TVEH_DETAIL_DATVIS"), Variant(basic::DateOf(2026, 12, 31)));
}

TEST_F(EditTest, NullClearsAField) {
    const auto rows = OpenVehicle();
    rows->Edit();
    rows->SetValue(u"TVEH_MARQUE", Null{});
    rows->Update();
    EXPECT_TRUE(rows->Value(u"TVEH_MARQUE").IsNull());
    EXPECT_TRUE(StoredValue(u"FQ-453-HQ", u"TVEH_MARQUE").IsNull());
}

TEST_F(EditTest, NullInThePrimaryKeyRaises3058AndKeepsTheBuffer) {
    const auto rows = OpenVehicle();
    rows->Edit();
    rows->SetValue(u"TVEH_IMMAT", Null{});
    rows->SetValue(u"TVEH_MARQUE", u"X");
    EXPECT_EQ(ErrorOf([&] { rows->Update(); }), error::kNullInPrimaryKey);
    EXPECT_EQ(rows->EditMode(), EditMode::Edit);
    EXPECT_EQ(rows->Value(u"TVEH_MARQUE"), Variant(u"X"));
    rows->SetValue(u"TVEH_IMMAT", u"FQ-453-HQ");
    rows->Update();
    EXPECT_EQ(StoredValue(u"FQ-453-HQ", u"TVEH_MARQUE"), Variant(u"X"));
}

TEST_F(EditTest, DuplicateKeyRaises3022AndWritesNothing) {
    const auto rows = OpenVehicle();
    rows->Edit();
    rows->SetValue(u"TVEH_IMMAT", u"KG-361-VP");
    rows->SetValue(u"TVEH_MARQUE", u"X");
    EXPECT_EQ(ErrorOf([&] { rows->Update(); }), error::kDuplicateKey);
    EXPECT_EQ(rows->EditMode(), EditMode::Edit);
    EXPECT_EQ(rows->Value(u"TVEH_IMMAT"), Variant(u"KG-361-VP"));
    rows->CancelUpdate();
    EXPECT_EQ(rows->Value(u"TVEH_IMMAT"), Variant(u"FQ-453-HQ"));
    EXPECT_NE(StoredValue(u"FQ-453-HQ", u"TVEH_MARQUE"), Variant(u"X"));
}

TEST_F(EditTest, RecordWithANewKeyStaysCurrentAtItsNewPlace) {
    const auto rows = OpenTable(u"TTYP");
    rows->SetIndex(u"PrimaryKey");
    rows->Seek(u"=", {u"DIS"});
    rows->Edit();
    rows->SetValue(u"TTYP_CODE", u"MOT");
    rows->Update();
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"MOT"));
    rows->MovePrevious();
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"LIM"));
    rows->MoveNext();
    rows->MoveNext();
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"PNE"));
    rows->Seek(u"=", {u"DIS"});
    EXPECT_TRUE(rows->NoMatch());
}

TEST_F(EditTest, ExpressionsAndTheOneSideOfAJoinRaise3164) {
    const auto rows = OpenDynaset(DueBefore(u"12/31/2026"));
    rows->FindFirst(u"TVEH_IMMAT='CF-974-BL'");
    rows->Edit();
    EXPECT_EQ(ErrorOf([&] { rows->SetValue(u"DatePrev", basic::DateOf(2026, 1, 1)); }),
              error::kFieldNotUpdatable);
    EXPECT_EQ(ErrorOf([&] { rows->SetValue(u"TVEH_MARQUE", u"X"); }), error::kFieldNotUpdatable)
        << "the vehicle appears in two lines";
    rows->SetValue(u"TVEH_DETAIL_PERIOD", std::int16_t{12});
    rows->Update();
    EXPECT_EQ(rows->Value(u"TVEH_DETAIL_PERIOD"), Variant(std::int16_t{12}));
}

TEST_F(EditTest, SideThatAJoinLeftWithoutARowRaises3164) {
    const auto rows = OpenDynaset(
        u"SELECT * FROM TVEH_DETAIL LEFT JOIN TVEH ON TVEH_DETAIL.TVEH_DETAIL_Immat = TVEH.TVEH_IMMAT "
        u"WHERE TVEH_IMMAT Is Null");
    ASSERT_FALSE(rows->Eof());
    rows->Edit();
    EXPECT_EQ(ErrorOf([&] { rows->SetValue(u"TVEH_MARQUE", u"X"); }), error::kFieldNotUpdatable);
    EXPECT_TRUE(rows->Value(u"TVEH_MARQUE").IsNull());
}

TEST_F(EditTest, BothTablesOfAJoinAreWrittenByOneUpdate) {
    const auto rows = OpenDynaset(
        u"SELECT TVEH_MARQUE, TVEH_IMMAT, TVEH_DETAIL_PERIOD, TVEH_DETAIL_TypTrav FROM TVEH_DETAIL INNER "
        u"JOIN "
        u"TVEH ON TVEH_DETAIL.TVEH_DETAIL_Immat = TVEH.TVEH_IMMAT "
        u"WHERE TVEH_IMMAT='FQ-453-HQ' AND TVEH_DETAIL_TypTrav='CT'");
    ASSERT_EQ(rows->RowCount(), 1U);
    rows->Edit();
    rows->SetValue(u"TVEH_DETAIL_PERIOD", std::int16_t{7});
    rows->SetValue(u"TVEH_MARQUE", u"LADA");
    rows->Update();
    EXPECT_EQ(rows->Value(u"TVEH_DETAIL_PERIOD"), Variant(std::int16_t{7}));
    EXPECT_EQ(StoredValue(u"FQ-453-HQ", u"TVEH_MARQUE"), Variant(u"LADA"));
}

TEST_F(EditTest, RecordOfTwoTablesIsWrittenWholeOrNotAtAll) {
    const auto rows = OpenDynaset(
        u"SELECT TVEH_IMMAT, TVEH_DETAIL_PERIOD FROM TVEH_DETAIL INNER JOIN "
        u"TVEH ON TVEH_DETAIL.TVEH_DETAIL_Immat = TVEH.TVEH_IMMAT "
        u"WHERE TVEH_IMMAT='FQ-453-HQ' AND TVEH_DETAIL_TypTrav='CT'");
    const Variant before = rows->Value(u"TVEH_DETAIL_PERIOD");
    ASSERT_NE(before, Variant(std::int16_t{7}));
    rows->Edit();
    rows->SetValue(u"TVEH_DETAIL_PERIOD", std::int16_t{7});
    rows->SetValue(u"TVEH_IMMAT", u"KG-361-VP");
    EXPECT_EQ(ErrorOf([&] { rows->Update(); }), error::kDuplicateKey);
    rows->CancelUpdate();
    EXPECT_EQ(rows->Value(u"TVEH_DETAIL_PERIOD"), before);
    EXPECT_EQ(rows->Value(u"TVEH_IMMAT"), Variant(u"FQ-453-HQ"));
}

TEST_F(EditTest, MemoGrowsAndShrinks) {
    const auto rows = OpenTable(u"TCLI");
    rows->SetIndex(u"PrimaryKey");
    rows->Seek(u"=", {u"C0007"});
    for (const std::size_t length : {5000U, 3U, 60000U, 0U}) {
        const Text text = Text(length, u'œ');
        rows->Edit();
        rows->SetValue(u"TCLI_REMARQUES", text.empty() ? Variant(Null{}) : Variant(text));
        rows->Update();
        EXPECT_EQ(rows->Value(u"TCLI_REMARQUES"), text.empty() ? Variant(Null{}) : Variant(text)) << length;
    }
}

TEST_F(EditTest, AnIndependentProgramReadsWhatUpdateWrote) {
    const auto rows = OpenVehicle();
    rows->Edit();
    rows->SetValue(u"TVEH_MARQUE", u"ŠKODA");
    rows->SetValue(u"TVEH_Note1", u"clé n° 12");
    rows->Update();
    SKIP_WITHOUT_MDB_EXPORT();
    const std::string table = jet::test::MdbExport(Installed().File(kData), "TVEH");
    EXPECT_THAT(table, testing::ContainsRegex("\n\"FQ-453-HQ\",\"C0328\",\"ŠKODA\",[^\n]*,\"clé n° 12\""));
    EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), 1501);
}

}  // namespace
}  // namespace quardele::dao
