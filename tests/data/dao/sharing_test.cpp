// Several users of one file: what is seen when, and whose change wins.
#include <fstream>

#include "dao_test.h"

namespace quardele::dao {
namespace {

class SharingTest : public DaoTest {
 protected:
    /// A label of another opening of the same file.
    [[nodiscard]] std::shared_ptr<Recordset> OpenElsewhere(TextView code) const {
        auto rows = OpenAnew(kData)->OpenRecordset(u"TTYP", RecordsetType::Table);
        rows->SetIndex(u"PrimaryKey");
        rows->Seek(u"=", {Text(code)});
        EXPECT_FALSE(rows->NoMatch());
        return rows;
    }
    static void Rename(Recordset& rows, TextView label) {
        rows.Edit();
        rows.SetValue(u"TTYP_LIBELLE", Text(label));
        rows.Update();
    }
    /// Renames a work type in a process of its own.
    void RenameInAnotherProcess(const std::string& code, const std::string& label) const {
        test::Process other = StartElsewhere({"TTYP", code, "TTYP_LIBELLE", label});
        const std::string failure = other.ReadOutput();
        ASSERT_EQ(other.Wait(), 0) << failure;
    }
    /// Marks a row of a table as deleted in the file itself, as another program's deletion leaves it.
    void DeleteInTheFile(const Bookmark& tableRow) const {
        constexpr std::streamoff kPageSize = 4096;
        constexpr std::streamoff kFirstSlot = 14;
        constexpr int kDeletedBit = 0x80;  // of the slot's upper byte
        const std::streamoff page = tableRow.bytes[0] | tableRow.bytes[1] << 8 | tableRow.bytes[2] << 16;
        const std::streamoff upperByte =
            page * kPageSize + kFirstSlot + std::streamoff{2} * tableRow.bytes[4] + 1;
        std::fstream file(Installed().File(kData), std::ios::in | std::ios::out | std::ios::binary);
        file.seekg(upperByte);
        const int byte = file.get();
        file.seekp(upperByte);
        file.put(static_cast<char>(byte | kDeletedBit));
        ASSERT_TRUE(file.good());
    }
    [[nodiscard]] Bookmark RowOf(TextView code) {
        const auto rows = OpenTable(u"TTYP");
        rows->SetIndex(u"PrimaryKey");
        rows->Seek(u"=", {Text(code)});
        return rows->CurrentBookmark();
    }
};

TEST_F(SharingTest, RecordsetsOfOneDatabaseSeeEachOthersChangesAtOnce) {
    const auto dynaset = OpenDynaset(u"SELECT * FROM TTYP WHERE TTYP_CODE='VID'");
    const auto table = OpenTable(u"TTYP");
    table->SetIndex(u"PrimaryKey");
    table->Seek(u"=", {u"VID"});
    Rename(*dynaset, u"Vidange 1");
    EXPECT_EQ(table->Value(u"TTYP_LIBELLE"), Variant(u"Vidange 1"));
    Rename(*table, u"Vidange 2");
    EXPECT_EQ(dynaset->Value(u"TTYP_LIBELLE"), Variant(u"Vidange 2"));
}

TEST_F(SharingTest, DatabasesOfOneProgramSeeEachOthersChangesAtOnce) {
    const auto dynaset = OpenDynaset(u"SELECT * FROM TTYP WHERE TTYP_CODE='VID'");
    const auto table = OpenTable(u"TTYP");
    table->SetIndex(u"PrimaryKey");
    table->Seek(u"=", {u"VID"});
    EXPECT_EQ(dynaset->Value(u"TTYP_LIBELLE"), Variant(u"Vidange et filtres"));
    EXPECT_EQ(table->Value(u"TTYP_LIBELLE"), Variant(u"Vidange et filtres"));
    const auto elsewhere = OpenElsewhere(u"VID");
    Rename(*elsewhere, u"Vidange");
    EXPECT_EQ(dynaset->Value(u"TTYP_LIBELLE"), Variant(u"Vidange"));
    EXPECT_EQ(table->Value(u"TTYP_LIBELLE"), Variant(u"Vidange"));
    Rename(*dynaset, u"Huile");
    EXPECT_EQ(elsewhere->Value(u"TTYP_LIBELLE"), Variant(u"Huile"));
}

TEST_F(SharingTest, ReadOnlyDatabasesSeeChangesAfterIdle) {
    const auto readOnly = OpenAnew(kData, true);
    const auto rows = readOnly->OpenRecordset(u"SELECT * FROM TTYP WHERE TTYP_CODE='VID'");
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Vidange et filtres"));
    Rename(*OpenElsewhere(u"VID"), u"Vidange");
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Vidange et filtres"));
    DBEngine::Instance().Idle(1);
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Vidange"));
    EXPECT_EQ(ErrorOf([&] { rows->Edit(); }), error::kReadOnly);
}

TEST_F(SharingTest, AnotherProcessIsSeenAfterIdle) {
    const auto dynaset = OpenDynaset(u"TTYP");
    dynaset->FindFirst(u"TTYP_CODE='VID'");
    EXPECT_EQ(dynaset->Value(u"TTYP_LIBELLE"), Variant(u"Vidange et filtres"));
    RenameInAnotherProcess("VID", "Vidange");
    DBEngine::Instance().Idle(1);
    EXPECT_EQ(dynaset->Value(u"TTYP_LIBELLE"), Variant(u"Vidange"));
    dynaset->FindFirst(u"TTYP_LIBELLE='Vidange'");
    EXPECT_FALSE(dynaset->NoMatch());
}

TEST_F(SharingTest, SeekSeesANewKeyOfAnotherProcessAfterIdle) {
    const auto table = OpenTable(u"TTYP");
    table->SetIndex(u"PrimaryKey");
    table->Seek(u"=", {u"MOT"});
    EXPECT_TRUE(table->NoMatch());
    ExecuteElsewhere("UPDATE TTYP SET TTYP_CODE = 'MOT' WHERE TTYP_CODE = 'VID'");
    DBEngine::Instance().Idle(1);
    table->Seek(u"=", {u"MOT"});
    ASSERT_FALSE(table->NoMatch());
    EXPECT_EQ(table->Value(u"TTYP_LIBELLE"), Variant(u"Vidange et filtres"));
    table->MoveNext();
    EXPECT_EQ(table->Value(u"TTYP_CODE"), Variant(u"PNE"));
    table->Seek(u"=", {u"VID"});
    EXPECT_TRUE(table->NoMatch());
}

TEST_F(SharingTest, EditAndRequerySeeAnotherProcessWithoutIdle) {
    const auto rows = OpenDynaset(u"SELECT * FROM TTYP WHERE TTYP_CODE='VID'");
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Vidange et filtres"));
    RenameInAnotherProcess("VID", "Vidange 1");
    EXPECT_EQ(ErrorOf([&] { rows->Edit(); }), error::kRecordChanged);
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Vidange 1"));
    RenameInAnotherProcess("VID", "Vidange 2");
    rows->Requery();
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Vidange 2"));
}

TEST_F(SharingTest, NewRecordsetShowsTheFileAsItIs) {
    EXPECT_EQ(OpenTable(u"TTYP")->RecordCount(), 12U);
    const TextView statement = u"SELECT * FROM TTYP WHERE TTYP_CODE='VID'";
    EXPECT_EQ(OpenDynaset(statement)->Value(u"TTYP_LIBELLE"), Variant(u"Vidange et filtres"));
    RenameInAnotherProcess("VID", "Vidange");
    EXPECT_EQ(OpenDynaset(statement)->Value(u"TTYP_LIBELLE"), Variant(u"Vidange"));
}

TEST_F(SharingTest, RowDeletedBySomebodyElseRaises3167WhenTouched) {
    const auto dynaset = OpenDynaset(u"TTYP");
    const auto table = OpenTable(u"TTYP");
    dynaset->FindFirst(u"TTYP_CODE='DIS'");
    table->SetIndex(u"PrimaryKey");
    table->Seek(u"=", {u"DIS"});
    const Bookmark row = table->CurrentBookmark();
    DeleteInTheFile(row);
    DBEngine::Instance().Idle(1);
    EXPECT_EQ(ErrorOf([&] { (void)dynaset->Value(u"TTYP_CODE"); }), error::kRecordDeleted);
    EXPECT_EQ(ErrorOf([&] { dynaset->Edit(); }), error::kRecordDeleted);
    EXPECT_EQ(dynaset->EditMode(), EditMode::None);
    EXPECT_EQ(ErrorOf([&] { (void)dynaset->ValueAt(3, 0); }), error::kRecordDeleted);
    EXPECT_EQ(ErrorOf([&] { (void)table->Value(u"TTYP_CODE"); }), error::kRecordDeleted);
    EXPECT_EQ(ErrorOf([&] { table->Edit(); }), error::kRecordDeleted);
    dynaset->MoveNext();
    EXPECT_EQ(dynaset->Value(u"TTYP_CODE"), Variant(u"EXT"));
    EXPECT_EQ(ErrorOf([&] { table->SetBookmark(row); }), error::kRecordDeleted);
}

TEST_F(SharingTest, RowDeletedSinceEditRaises3167OnUpdate) {
    const Bookmark row = RowOf(u"DIS");
    const auto rows = OpenDynaset(u"SELECT * FROM TTYP WHERE TTYP_CODE='DIS'");
    rows->Edit();
    rows->SetValue(u"TTYP_LIBELLE", u"X");
    DeleteInTheFile(row);
    EXPECT_EQ(ErrorOf([&] { rows->Update(); }), error::kRecordDeleted);
}

TEST_F(SharingTest, SearchPassesOverADeletedRow) {
    const auto rows = OpenDynaset(u"TTYP");  // BAT CLI CT DIS EXT ...
    DeleteInTheFile(RowOf(u"DIS"));
    DBEngine::Instance().Idle(1);
    rows->FindFirst(u"TTYP_CODE>='D'");
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"EXT"));
}

TEST_F(SharingTest, TableWalksOverADeletedRow) {
    const auto rows = OpenTable(u"TTYP");  // CT VID FRE ...
    rows->MoveLast();
    rows->MoveFirst();
    DeleteInTheFile(RowOf(u"VID"));
    DBEngine::Instance().Idle(1);
    rows->MoveNext();
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"FRE"));
    rows->MovePrevious();
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"CT"));
}

TEST_F(SharingTest, IdleWithAnotherOptionDoesNothing) {
    const auto rows = OpenDynaset(u"SELECT * FROM TTYP WHERE TTYP_CODE='VID'");
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Vidange et filtres"));
    RenameInAnotherProcess("VID", "Vidange");
    DBEngine::Instance().Idle(0);
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Vidange et filtres"));
}

}  // namespace
}  // namespace quardele::dao
