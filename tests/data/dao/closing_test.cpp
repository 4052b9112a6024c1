// What is left of databases and recordsets that were closed.
#include <functional>

#include "dao_test.h"

namespace quardele::dao {
namespace {

class ClosingTest : public DaoTest {
 protected:
    using Action = std::function<void(Recordset&)>;

    static void ExpectClosed(Recordset& rows) {
        const Action actions[] = {
            [](Recordset& r) { (void)r.Name(); },
            [](Recordset& r) { (void)r.Fields(); },
            [](Recordset& r) { (void)r.FieldIndex(u"TTYP_CODE"); },
            [](Recordset& r) { (void)r.Updatable(); },
            [](Recordset& r) { (void)r.Bof(); },
            [](Recordset& r) { (void)r.Eof(); },
            [](Recordset& r) { (void)r.RecordCount(); },
            [](Recordset& r) { (void)r.Value(u"TTYP_CODE"); },
            [](Recordset& r) { r.SetValue(u"TTYP_CODE", u"X"); },
            [](Recordset& r) { r.MoveFirst(); },
            [](Recordset& r) { r.MoveLast(); },
            [](Recordset& r) { r.MoveNext(); },
            [](Recordset& r) { r.MovePrevious(); },
            [](Recordset& r) { r.Move(1); },
            [](Recordset& r) { (void)r.PercentPosition(); },
            [](Recordset& r) { r.SetPercentPosition(0); },
            [](Recordset& r) { (void)r.CurrentBookmark(); },
            [](Recordset& r) { r.SetBookmark({}); },
            [](Recordset& r) { (void)r.LastModified(); },
            [](Recordset& r) { (void)r.EditMode(); },
            [](Recordset& r) { (void)r.NoMatch(); },
            [](Recordset& r) { r.Edit(); },
            [](Recordset& r) { r.AddNew(); },
            [](Recordset& r) { r.Update(); },
            [](Recordset& r) { r.CancelUpdate(); },
            [](Recordset& r) { r.Delete(); },
            [](Recordset& r) { r.Close(); },
        };
        int number = 0;
        for (const Action& action : actions) {
            EXPECT_EQ(ErrorOf([&] { action(rows); }), error::kObjectClosed) << "action " << number;
            ++number;
        }
    }
};

TEST_F(ClosingTest, WhateverIsAskedOfAClosedRecordsetRaises3420) {
    for (const RecordsetType type : {RecordsetType::Table, RecordsetType::Dynaset, RecordsetType::Snapshot}) {
        const auto rows = Data().OpenRecordset(u"TTYP", type);
        rows->Close();
        ExpectClosed(*rows);
    }
    const auto dynaset = OpenDynaset(u"TTYP");
    dynaset->Close();
    EXPECT_EQ(ErrorOf([&] { dynaset->FindFirst(u"true"); }), error::kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { dynaset->FindNext(u"true"); }), error::kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { (void)dynaset->AbsolutePosition(); }), error::kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { dynaset->SetAbsolutePosition(0); }), error::kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { dynaset->Requery(); }), error::kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { (void)dynaset->RowCount(); }), error::kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { (void)dynaset->ValueAt(0, 0); }), error::kObjectClosed);
    const auto table = OpenTable(u"TTYP");
    table->SetIndex(u"PrimaryKey");
    table->Close();
    EXPECT_EQ(ErrorOf([&] { (void)table->Index(); }), error::kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { table->SetIndex(u"PrimaryKey"); }), error::kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { table->Seek(u"=", {u"CT"}); }), error::kObjectClosed);
}

TEST_F(ClosingTest, AClosedDatabaseRaises3420AndHasClosedItsRecordsets) {
    const auto database = OpenAnew(kData);
    const auto table = database->OpenRecordset(u"TTYP", RecordsetType::Table);
    const auto dynaset = database->OpenRecordset(u"TTYP", RecordsetType::Dynaset);
    const auto elsewhere = OpenDynaset(u"TTYP");
    database->Close();
    EXPECT_EQ(ErrorOf([&] { (void)database->Name(); }), error::kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { (void)database->OpenRecordset(u"TTYP"); }), error::kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { (void)database->TableDefNamed(u"TTYP"); }), error::kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { database->Close(); }), error::kObjectClosed);
    ExpectClosed(*table);
    ExpectClosed(*dynaset);
    EXPECT_EQ(elsewhere->Value(u"TTYP_CODE"), Variant(u"BAT")) << "another database on the file stays open";
}

TEST_F(ClosingTest, ClosingTheDatabaseDropsAnEditAndItsLock) {
    const auto database = OpenAnew(kData);
    const auto rows = database->OpenRecordset(u"TTYP", RecordsetType::Dynaset);
    rows->Edit();
    rows->SetValue(u"TTYP_LIBELLE", u"X");
    database->Close();
    const auto again = OpenDynaset(u"TTYP");
    EXPECT_NE(again->Value(u"TTYP_LIBELLE"), Variant(u"X"));
    again->Edit();
    again->CancelUpdate();
}

TEST_F(ClosingTest, AClosedDatabaseGivesTheFileBackAlthoughItsObjectsAreHeld) {
    const auto database = OpenAnew(kData);
    const auto table = database->OpenRecordset(u"TTYP", RecordsetType::Table);
    table->SetIndex(u"PrimaryKey");
    const auto dynaset = database->OpenRecordset(u"TTYP", RecordsetType::Dynaset);
    dynaset->FindFirst(u"TTYP_CODE='CT'");
    database->Close();
    const auto alone = DBEngine::Instance().Workspaces(0).OpenDatabase(Installed().WindowsFile(kData), true);
    EXPECT_TRUE(alone->Updatable());
}

TEST_F(ClosingTest, ARecordsetThatIsClosedOrGoneIsNotClosedAgainByItsDatabase) {
    const auto database = OpenAnew(kData);
    auto gone = database->OpenRecordset(u"TTYP");
    const auto closed = database->OpenRecordset(u"TTYP");
    gone.reset();
    closed->Close();
    database->Close();
    EXPECT_EQ(ErrorOf([&] { closed->MoveFirst(); }), error::kObjectClosed);
}

}  // namespace
}  // namespace quardele::dao
