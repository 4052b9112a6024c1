// Rows that another user of the file deletes, and others that come to lie in their places: a dynaset knows
// its records by their keys.
#include <algorithm>
#include <array>
#include <fstream>

#include <jet/database.h>
#include <jet/step.h>

#include "dao_test.h"

namespace quardele::dao {
namespace {

constexpr std::uint8_t kLastPlace = 254;

class ReusedPlaceTest : public DaoTest {
 protected:
    /// Another user deletes all kinds of work, and writes as many others in their places.
    void ReplaceKinds() {
        const auto other = jet::Database::Open(Installed().File(kData));
        const auto kinds = other->OpenTable(u"TTYP");
        jet::Step step = other->Begin();
        std::vector<jet::RowId> before;
        jet::RowScan scan = kinds->Scan();
        while (const auto row = scan.NextId()) {
            before.push_back(*row);
        }
        jet::RowId added;
        do {
            added = Add(*kinds, u"X");
            ASSERT_EQ(added.page, before.front().page);
            kinds->Delete(added);
        } while (added.slot < kLastPlace);
        for (const jet::RowId row : before) {
            kinds->Delete(row);
        }
        for (std::size_t i = 0; i < before.size(); ++i) {
            ASSERT_EQ(Add(*kinds, u"N" + basic::NumberText(static_cast<double>(i))), before[i])
                << "no place was given anew";
        }
        step.Commit();
    }

 private:
    static jet::RowId Add(jet::Table& kinds, TextView code) {
        const jet::ColumnChange change{kinds.FindColumn(u"TTYP_CODE"), Text(code)};
        return kinds.Insert({&change, 1});
    }
};

void ExpectDeleted(Recordset& rows) {
    EXPECT_EQ(ErrorOf([&] { (void)rows.Value(u"TTYP_CODE"); }), error::kRecordDeleted);
    EXPECT_EQ(ErrorOf([&] { (void)rows.ValueAt(2, 0); }), error::kRecordDeleted);
    EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), error::kRecordDeleted);
    EXPECT_EQ(ErrorOf([&] { rows.Delete(); }), error::kRecordDeleted);
    rows.FindFirst(u"TTYP_CODE='N3'");
    EXPECT_TRUE(rows.NoMatch()) << "it is no record of the dynaset";
}

TEST_F(ReusedPlaceTest, ARowInThePlaceOfADeletedOneIsNotShown) {
    const auto all = OpenDynaset(u"TTYP");
    const auto chosen = OpenDynaset(u"SELECT * FROM TTYP WHERE TTYP_CODE > 'A'");
    const auto sorted = OpenDynaset(u"SELECT * FROM TTYP ORDER BY TTYP_LIBELLE");
    for (Recordset* rows : {all.get(), chosen.get(), sorted.get()}) {
        rows->MoveLast();
    }
    ReplaceKinds();
    DBEngine::Instance().Idle(1);
    for (Recordset* rows : {all.get(), chosen.get(), sorted.get()}) {
        SCOPED_TRACE(basic::ToUtf8(rows->Name()));
        ExpectDeleted(*rows);
        rows->Requery();
        EXPECT_EQ(rows->Value(u"TTYP_CODE").As<Text>().front(), u'N');
    }
}

TEST_F(ReusedPlaceTest, EditAndDeleteNoticeItWithoutIdle) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->MoveNext();
    ReplaceKinds();
    EXPECT_EQ(ErrorOf([&] { rows->Edit(); }), error::kRecordDeleted);
    EXPECT_EQ(ErrorOf([&] { rows->Delete(); }), error::kRecordDeleted);
    EXPECT_EQ(OpenTable(u"TTYP")->RecordCount(), 12U);
}

TEST_F(ReusedPlaceTest, ALineOfAJoinWhoseOtherSideWasReplacedIsNotRead) {
    const auto rows = OpenDynaset(
        u"SELECT TVEH_DETAIL_TypTrav, TTYP_CODE FROM TVEH_DETAIL INNER JOIN TTYP ON "
        u"TVEH_DETAIL.TVEH_DETAIL_TypTrav = TTYP.TTYP_CODE WHERE TVEH_DETAIL_Immat='FQ-453-HQ'");
    ASSERT_EQ(rows->Value(0), rows->Value(1));
    ReplaceKinds();
    DBEngine::Instance().Idle(1);
    EXPECT_NO_THROW((void)rows->Value(0));
    EXPECT_EQ(ErrorOf([&] { (void)rows->Value(1); }), error::kRecordDeleted);
}

TEST_F(ReusedPlaceTest, ARecordWhoseOtherFieldsWereChangedElsewhereStaysWhatItIs) {
    const auto rows = OpenDynaset(u"TTYP");
    ExecuteElsewhere("UPDATE TTYP SET TTYP_LIBELLE = 'Autre'");
    DBEngine::Instance().Idle(1);
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Autre"));
}

TEST_F(ReusedPlaceTest, ARecordWhoseKeyAnotherUserHasChangedCountsAsDeleted) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->MoveLast();
    ExecuteElsewhere("UPDATE TTYP SET TTYP_CODE = 'VIDA' WHERE TTYP_CODE = 'VID'");
    DBEngine::Instance().Idle(1);
    EXPECT_EQ(ErrorOf([&] { (void)rows->Value(0); }), error::kRecordDeleted);
    rows->MovePrevious();
    EXPECT_NO_THROW((void)rows->Value(0));
}

TEST_F(ReusedPlaceTest, ARecordWhoseKeyThisProgramHasChangedStaysWhatItIs) {
    const auto rows = OpenDynaset(u"TTYP");
    const auto others = OpenDynaset(u"SELECT * FROM TTYP WHERE TTYP_CODE='BAT'");
    rows->Edit();
    rows->SetValue(u"TTYP_CODE", u"BATT");
    rows->Update();
    ExecuteElsewhere("UPDATE TTYP SET TTYP_LIBELLE = 'Autre'");
    DBEngine::Instance().Idle(1);
    for (Recordset* each : {rows.get(), others.get()}) {
        EXPECT_EQ(each->Value(u"TTYP_CODE"), Variant(u"BATT"));
        EXPECT_EQ(each->Value(u"TTYP_LIBELLE"), Variant(u"Autre"));
    }
}

TEST_F(ReusedPlaceTest, AnAddedRecordIsKnownByItsKeyToo) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->AddNew();
    rows->SetValue(u"TTYP_CODE", u"ZZZ");
    rows->Update();
    rows->SetBookmark(rows->LastModified());
    ExecuteElsewhere("UPDATE TTYP SET TTYP_CODE = 'ZZ' WHERE TTYP_CODE = 'ZZZ'");
    DBEngine::Instance().Idle(1);
    EXPECT_EQ(ErrorOf([&] { (void)rows->Value(0); }), error::kRecordDeleted);
}

TEST_F(ReusedPlaceTest, ARowSeenInTheOrderOfAnotherIndexIsKnownByItsKeyToo) {
    ExecuteElsewhere("CREATE INDEX LIBELLE ON TTYP (TTYP_LIBELLE)");
    const auto rows = OpenDynaset(u"SELECT * FROM TTYP ORDER BY TTYP_LIBELLE");
    const auto last = OpenDynaset(u"SELECT TOP 3 * FROM TTYP ORDER BY TTYP_LIBELLE DESC");
    for (Recordset* each : {rows.get(), last.get()}) {
        each->MoveNext();
        ASSERT_FALSE(each->Value(u"TTYP_CODE").IsNull());
    }
    ReplaceKinds();
    DBEngine::Instance().Idle(1);
    for (Recordset* each : {rows.get(), last.get()}) {
        SCOPED_TRACE(basic::ToUtf8(each->Name()));
        EXPECT_EQ(ErrorOf([&] { (void)each->Value(u"TTYP_CODE"); }), error::kRecordDeleted);
        EXPECT_EQ(ErrorOf([&] { each->Edit(); }), error::kRecordDeleted);
        EXPECT_EQ(ErrorOf([&] { each->Delete(); }), error::kRecordDeleted);
    }
    EXPECT_EQ(OpenTable(u"TTYP")->RecordCount(), 12U);
}

/// As the original engine may have written it: of a text that it can sort and this one cannot, the key in
/// the index is another one than is made here.
TEST_F(ReusedPlaceTest, ARecordWhoseKeyIsATextOfUnknownOrderIsNotTakenForAnotherOne) {
    ExecuteElsewhere("CREATE TABLE TCYR (K TEXT(10) CONSTRAINT PK PRIMARY KEY, N LONG)");
    ExecuteElsewhere("INSERT INTO TCYR VALUES ('ZQQZ', 1)");
    const auto file = Installed().File(kData);
    const std::vector<std::uint8_t> bytes = jet::test::ReadBytes(file);
    constexpr std::array<std::uint8_t, 6> kStored{0xFF, 0xFE, 'Z', 'Q', 'Q', 'Z'};
    const auto place = std::search(bytes.begin(), bytes.end(), kStored.begin(), kStored.end());
    ASSERT_NE(place, bytes.end());
    ASSERT_EQ(std::search(place + 1, bytes.end(), kStored.begin(), kStored.end()), bytes.end());
    {
        std::fstream stream(file, std::ios::binary | std::ios::in | std::ios::out);
        stream.seekp(place - bytes.begin());
        stream << "\x2D\x4E\x01\x4E\x2D\x4E";
    }
    const auto rows = OpenDynaset(u"TCYR");
    EXPECT_EQ(rows->Value(u"K"), Variant(u"\u4E2D\u4E01\u4E2D"));
    ExecuteElsewhere("UPDATE TCYR SET N = 2");
    DBEngine::Instance().Idle(1);
    EXPECT_EQ(rows->Value(u"N"), Variant(std::int32_t{2}));
}

}  // namespace
}  // namespace quardele::dao
