// Who edits a record keeps everybody else from it.
#include <string>
#include <vector>

#include <child_process.h>
#include <sql/statement.h>

#include "dao_test.h"
#include "open_file.h"

namespace quardele::dao {
namespace {

class RowLockTest : public DaoTest {
 protected:
    [[nodiscard]] std::shared_ptr<Recordset> OpenOn(TextView code) {
        return OpenDynaset(u"SELECT * FROM TTYP WHERE TTYP_CODE='" + Text(code) + u"'");
    }
    /// Another process that writes the label of a work type, or with "?" edits it until its input ends.
    [[nodiscard]] test::Process RenameBy(const std::string& code, const std::string& label) const {
        return StartElsewhere({"TTYP", code, "TTYP_LIBELLE", label});
    }
    /// What another process is told when it renames a work type; empty when it succeeds.
    [[nodiscard]] std::string RenameElsewhere(const std::string& code) const {
        return RenameBy(code, "Le sien").ReadOutput();
    }
};

TEST_F(RowLockTest, AnotherRecordsetOfTheProgramGets3188) {
    const auto mine = OpenOn(u"VID");
    const auto his = OpenAnew(kData)->OpenRecordset(u"TTYP", RecordsetType::Table);
    his->SetIndex(u"PrimaryKey");
    his->Seek(u"=", {u"VID"});
    mine->Edit();
    EXPECT_EQ(ErrorOf([&] { his->Edit(); }), error::kLockedHere);
    EXPECT_EQ(his->EditMode(), EditMode::None);
    EXPECT_EQ(ErrorOf([&] { his->Delete(); }), error::kLockedHere);
    his->MoveFirst();
    his->Edit();
    his->SetValue(u"TTYP_LIBELLE", u"Batteries");
    his->Update();
    mine->SetValue(u"TTYP_LIBELLE", u"Le mien");
    mine->Update();
    EXPECT_EQ(OpenOn(u"VID")->Value(u"TTYP_LIBELLE"), Variant(u"Le mien"));
    EXPECT_EQ(OpenOn(u"BAT")->Value(u"TTYP_LIBELLE"), Variant(u"Batteries"));
}

TEST_F(RowLockTest, TheLockEndsWithTheEdit) {
    const auto mine = OpenDynaset(u"TTYP");
    const auto his = OpenOn(u"BAT");
    const auto isFree = [&] {
        const int number = ErrorOf([&] { his->Edit(); });
        if (number == 0) {
            his->CancelUpdate();
        }
        return number == 0;
    };
    mine->Edit();
    EXPECT_FALSE(isFree());
    mine->Update();
    EXPECT_TRUE(isFree());
    mine->Edit();
    mine->CancelUpdate();
    EXPECT_TRUE(isFree());
    mine->Edit();
    mine->MoveNext();
    EXPECT_TRUE(isFree());
    mine->MoveFirst();
    mine->Edit();
    mine->AddNew();
    EXPECT_TRUE(isFree());
    mine->CancelUpdate();
    mine->Edit();
    mine->FindFirst(u"TTYP_CODE = 'x'");
    EXPECT_TRUE(isFree());
    mine->Edit();
    mine->Requery();
    EXPECT_TRUE(isFree());
    mine->Edit();
    EXPECT_FALSE(isFree());
    mine->Close();
    EXPECT_TRUE(isFree());
    {
        const auto gone = OpenOn(u"BAT");
        gone->Edit();
        EXPECT_FALSE(isFree());
    }
    EXPECT_TRUE(isFree());
}

TEST_F(RowLockTest, ARefusedUpdateKeepsTheLock) {
    const auto mine = OpenOn(u"BAT");
    mine->Edit();
    mine->SetValue(u"TTYP_CODE", u"CT");
    EXPECT_EQ(ErrorOf([&] { mine->Update(); }), error::kDuplicateKey);
    EXPECT_EQ(ErrorOf([&] { OpenOn(u"BAT")->Edit(); }), error::kLockedHere);
}

TEST_F(RowLockTest, ASecondEditOfTheSameRecordsetKeepsTheRecord) {
    const auto mine = OpenOn(u"BAT");
    mine->Edit();
    mine->Edit();
    EXPECT_EQ(ErrorOf([&] { OpenOn(u"BAT")->Edit(); }), error::kLockedHere);
    mine->SetValue(u"TTYP_LIBELLE", u"Le mien");
    mine->Update();
}

TEST_F(RowLockTest, AnotherProcessIsKeptOutAndGets3260) {
    const auto mine = OpenOn(u"VID");
    mine->Edit();
    EXPECT_EQ(RenameElsewhere("VID").substr(0, 5), "3260:");
    EXPECT_EQ(RenameElsewhere("PNE"), "");
    mine->SetValue(u"TTYP_LIBELLE", u"Le mien");
    mine->Update();
    EXPECT_EQ(RenameElsewhere("VID"), "");
    EXPECT_EQ(OpenOn(u"VID")->Value(u"TTYP_LIBELLE"), Variant(u"Le sien"));
}

TEST_F(RowLockTest, ARecordThatAnotherProcessEditsRaises3260UntilItIsFree) {
    const auto mine = OpenOn(u"VID");
    {
        test::Process editor = RenameBy("VID", "?");
        ASSERT_TRUE(editor.WaitForSign());
        EXPECT_EQ(ErrorOf([&] { mine->Edit(); }), error::kRecordLocked);
        EXPECT_EQ(mine->EditMode(), EditMode::None);
        EXPECT_EQ(ErrorOf([&] { mine->Delete(); }), error::kRecordLocked);
        EXPECT_EQ(mine->Value(u"TTYP_CODE"), Variant(u"VID"));
        EXPECT_EQ(editor.Wait(), 0);
    }
    mine->Edit();
    mine->CancelUpdate();
}

TEST_F(RowLockTest, ARecordThatAnotherProcessHasChangedRaises3197OnceAndShowsItsValues) {
    const auto mine = OpenOn(u"VID");
    EXPECT_EQ(mine->Value(u"TTYP_LIBELLE"), Variant(u"Vidange et filtres"));
    EXPECT_EQ(RenameElsewhere("VID"), "");
    EXPECT_EQ(ErrorOf([&] { mine->Edit(); }), error::kRecordChanged);
    EXPECT_EQ(mine->EditMode(), EditMode::None);
    EXPECT_EQ(mine->Value(u"TTYP_LIBELLE"), Variant(u"Le sien"));
    EXPECT_EQ(RenameElsewhere("VID"), "") << "the refused edit keeps no lock";
    mine->Edit();
    EXPECT_EQ(mine->Value(u"TTYP_LIBELLE"), Variant(u"Le sien"));
}

TEST_F(RowLockTest, AChangeOfAnotherRecordDoesNotStopAnEdit) {
    const auto mine = OpenOn(u"VID");
    EXPECT_EQ(mine->Value(u"TTYP_LIBELLE"), Variant(u"Vidange et filtres"));
    EXPECT_EQ(RenameElsewhere("PNE"), "");
    mine->Edit();
    mine->SetValue(u"TTYP_LIBELLE", u"Le mien");
    mine->Update();
    EXPECT_EQ(OpenOn(u"PNE")->Value(u"TTYP_LIBELLE"), Variant(u"Le sien"));
}

TEST_F(RowLockTest, AChangeInSpiteOfTheLockRaises3197AndNothingIsWritten) {
    const auto mine = OpenOn(u"VID");
    mine->Edit();
    mine->SetValue(u"TTYP_LIBELLE", u"Le mien");
    const auto file = OpenFile::Open(Installed().File(kData), jet::OpenMode::Shared);
    sql::Execute(*file->Database(), u"UPDATE TTYP SET TTYP_LIBELLE = 'Le sien' WHERE TTYP_CODE = 'VID'");
    EXPECT_EQ(ErrorOf([&] { mine->Update(); }), error::kRecordChanged);
    EXPECT_EQ(mine->EditMode(), EditMode::Edit);
    EXPECT_EQ(mine->Value(u"TTYP_LIBELLE"), Variant(u"Le mien"));
    mine->CancelUpdate();
    EXPECT_EQ(mine->Value(u"TTYP_LIBELLE"), Variant(u"Le sien"));
}

TEST_F(RowLockTest, TheOneSideOfAJoinIsNotLocked) {
    const auto visits = OpenDynaset(DueBefore(u"12/31/2026"));
    visits->FindFirst(u"TVEH_IMMAT='CF-974-BL'");
    visits->Edit();
    const auto vehicle = OpenDynaset(u"SELECT * FROM TVEH WHERE TVEH_IMMAT='CF-974-BL'");
    vehicle->Edit();
    vehicle->SetValue(u"TVEH_MARQUE", u"LADA");
    vehicle->Update();
    visits->SetValue(u"TVEH_DETAIL_PERIOD", std::int16_t{12});
    visits->Update();
    EXPECT_EQ(visits->Value(u"TVEH_MARQUE"), Variant(u"LADA"));
}

}  // namespace
}  // namespace quardele::dao
