// What a recordset tells its observer, and when.
#include <string>

#include "dao_test.h"

namespace quardele::dao {
namespace {

/// Writes down the calls, each with what the recordset showed at that moment.
class Recorder final : public RecordsetObserver {
 public:
    void RowLeaving(Recordset& rows) override { Note("leaving", rows); }
    void RowArrived(Recordset& rows) override { Note("arrived", rows); }
    void RowsReplaced(Recordset& rows) override { Note("replaced", rows); }
    void Updating(Recordset& rows) override { Note("updating", rows); }
    void RowChanged(Recordset& rows) override { Note("changed", rows); }

    std::vector<std::string> Take() { return std::exchange(calls_, {}); }

 private:
    void Note(const std::string& call, const Recordset& rows) {
        const bool readable =
            rows.EditMode() != EditMode::None || !(rows.Bof() || rows.Eof() || missed(rows));
        Variant code;
        if (readable && ErrorOf([&] { code = rows.Value(u"TTYP_CODE"); }) == error::kRecordDeleted) {
            code = u"(deleted)";
        }
        calls_.push_back(call + ":" + (code.IsText() ? basic::ToUtf8(code.As<Text>()) : "-"));
    }
    static bool missed(const Recordset& rows) {
        return rows.Type() == RecordsetType::Table && rows.NoMatch();
    }

    std::vector<std::string> calls_;
};

/// Refuses to let go of a row.
class Refuser final : public RecordsetObserver {
 public:
    void RowLeaving(Recordset& /*rows*/) override { throw RuntimeError(error::kNullRequired); }
};

/// Does to a recordset what it is told when a row is left or written.
class Writer final : public RecordsetObserver {
 public:
    void RowLeaving(Recordset& rows) override {
        if (onLeaving.empty()) {
            return;
        }
        rows.Edit();
        rows.SetValue(u"TTYP_LIBELLE", std::exchange(onLeaving, {}));
        rows.Update();
    }
    void Updating(Recordset& rows) override {
        if (!onUpdating.empty()) {
            rows.SetValue(u"TTYP_LIBELLE", onUpdating);
        }
    }
    Text onLeaving;
    Text onUpdating;
};

using testing::ElementsAre;
using testing::IsEmpty;

class ObserverTest : public DaoTest {
 protected:
    [[nodiscard]] std::shared_ptr<Recordset> OpenObserved(RecordsetObserver& observer) {
        auto rows = OpenDynaset(u"TTYP");  // BAT CLI CT DIS EXT FRE HAY LIM PNE REV TAC VID
        rows->SetObserver(&observer);
        return rows;
    }
    Recorder recorder_;
};

TEST_F(ObserverTest, EveryMoveLeavesOneRowAndArrivesAtAnother) {
    const auto rows = OpenObserved(recorder_);
    rows->MoveNext();
    EXPECT_THAT(recorder_.Take(), ElementsAre("leaving:BAT", "arrived:CLI"));
    rows->MoveLast();
    EXPECT_THAT(recorder_.Take(), ElementsAre("leaving:CLI", "arrived:VID"));
    rows->MovePrevious();
    EXPECT_THAT(recorder_.Take(), ElementsAre("leaving:VID", "arrived:TAC"));
    rows->MoveFirst();
    EXPECT_THAT(recorder_.Take(), ElementsAre("leaving:TAC", "arrived:BAT"));
    rows->SetAbsolutePosition(2);
    EXPECT_THAT(recorder_.Take(), ElementsAre("leaving:BAT", "arrived:CT"));
    const Bookmark here = rows->CurrentBookmark();
    rows->SetBookmark(here);
    EXPECT_THAT(recorder_.Take(), ElementsAre("leaving:CT", "arrived:CT"));
}

TEST_F(ObserverTest, MovingPastTheEndArrivesAtNoRowAndLeavesNone) {
    const auto rows = OpenObserved(recorder_);
    rows->MoveLast();
    recorder_.Take();
    rows->MoveNext();
    EXPECT_THAT(recorder_.Take(), ElementsAre("leaving:VID", "arrived:-"));
    EXPECT_EQ(ErrorOf([&] { rows->MoveNext(); }), error::kNoCurrentRecord);
    EXPECT_THAT(recorder_.Take(), IsEmpty());
    rows->MovePrevious();
    EXPECT_THAT(recorder_.Take(), ElementsAre("arrived:VID"));
}

TEST_F(ObserverTest, FindLeavesFirstAndArrivesOnAHitOnly) {
    const auto rows = OpenObserved(recorder_);
    rows->FindFirst(u"TTYP_CODE='DIS'");
    EXPECT_THAT(recorder_.Take(), ElementsAre("leaving:BAT", "arrived:DIS"));
    rows->FindNext(u"TTYP_CODE='XYZ'");
    EXPECT_THAT(recorder_.Take(), ElementsAre("leaving:DIS"));
    EXPECT_NE(ErrorOf([&] { rows->FindFirst(u"TTYP_CODE='"); }), 0);
    EXPECT_THAT(recorder_.Take(), IsEmpty());
}

TEST_F(ObserverTest, ARefusedBookmarkLeavesNoRowAndDropsNoEdit) {
    const auto rows = OpenObserved(recorder_);
    const Bookmark gone = rows->CurrentBookmark();
    const Bookmark foreign = OpenDynaset(u"TTYP")->CurrentBookmark();
    rows->Delete();
    rows->MoveNext();
    rows->Edit();
    rows->SetValue(u"TTYP_LIBELLE", u"Neuf");
    recorder_.Take();
    constexpr int kInvalidBookmark = 3159;
    EXPECT_EQ(ErrorOf([&] { rows->SetBookmark(foreign); }), kInvalidBookmark);
    EXPECT_EQ(ErrorOf([&] { rows->SetBookmark(gone); }), error::kRecordDeleted);
    EXPECT_THAT(recorder_.Take(), IsEmpty());
    EXPECT_EQ(rows->EditMode(), EditMode::Edit);
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Neuf"));
}

TEST_F(ObserverTest, MissDuringAnEditShowsTheStoredRowAgain) {
    const auto rows = OpenObserved(recorder_);
    rows->Edit();
    rows->SetValue(u"TTYP_CODE", u"B");
    rows->FindFirst(u"TTYP_CODE='XYZ'");
    EXPECT_THAT(recorder_.Take(), ElementsAre("leaving:B", "arrived:BAT"));
}

TEST_F(ObserverTest, SeekLeavesAndArrivesHitOrMiss) {
    const auto rows = OpenTable(u"TTYP");
    rows->SetIndex(u"PrimaryKey");
    rows->SetObserver(&recorder_);
    rows->Seek(u"=", {u"DIS"});
    EXPECT_THAT(recorder_.Take(), ElementsAre("leaving:BAT", "arrived:DIS"));
    rows->Seek(u"=", {u"XYZ"});
    EXPECT_THAT(recorder_.Take(), ElementsAre("leaving:DIS", "arrived:-"));
    rows->Seek(u"=", {u"CT"});
    EXPECT_THAT(recorder_.Take(), ElementsAre("arrived:CT"));
}

TEST_F(ObserverTest, AddNewLeavesTheRowAndArrivesAtTheNewOne) {
    const auto rows = OpenObserved(recorder_);
    rows->AddNew();
    EXPECT_THAT(recorder_.Take(), ElementsAre("leaving:BAT", "arrived:-"));
    rows->SetValue(u"TTYP_CODE", u"NEUF");
    EXPECT_THAT(recorder_.Take(), IsEmpty());
    rows->CancelUpdate();
    EXPECT_THAT(recorder_.Take(), ElementsAre("arrived:BAT"));
}

TEST_F(ObserverTest, MoveOutOfANewRecordOfAnEmptySetIsAsked) {
    const auto rows = OpenDynaset(u"SELECT * FROM TTYP WHERE false");
    rows->SetObserver(&recorder_);
    rows->AddNew();
    EXPECT_THAT(recorder_.Take(), ElementsAre("arrived:-"));
    EXPECT_EQ(ErrorOf([&] { rows->MoveFirst(); }), error::kNoCurrentRecord);
    EXPECT_THAT(recorder_.Take(), ElementsAre("leaving:-", "arrived:-"));
    EXPECT_EQ(rows->EditMode(), EditMode::None);
}

TEST_F(ObserverTest, UpdateAsksForValuesAndTellsThatTheRowChanged) {
    const auto rows = OpenObserved(recorder_);
    rows->Edit();
    EXPECT_THAT(recorder_.Take(), IsEmpty());
    rows->SetValue(u"TTYP_LIBELLE", u"Batteries");
    rows->Update();
    EXPECT_THAT(recorder_.Take(), ElementsAre("updating:BAT", "changed:BAT"));
}

TEST_F(ObserverTest, RefusedUpdateTellsNoChange) {
    const auto rows = OpenObserved(recorder_);
    rows->Edit();
    rows->SetValue(u"TTYP_CODE", u"CLI");
    EXPECT_EQ(ErrorOf([&] { rows->Update(); }), error::kDuplicateKey);
    EXPECT_THAT(recorder_.Take(), ElementsAre("updating:CLI"));
    rows->CancelUpdate();
    EXPECT_THAT(recorder_.Take(), ElementsAre("arrived:BAT"));
    EXPECT_EQ(ErrorOf([&] { rows->Update(); }), error::kUpdateWithoutEdit);
    EXPECT_THAT(recorder_.Take(), IsEmpty());
}

TEST_F(ObserverTest, RefusedAddAndDeleteTellNoChange) {
    const auto rows = OpenObserved(recorder_);
    rows->AddNew();
    rows->SetValue(u"TTYP_CODE", u"CLI");
    recorder_.Take();
    EXPECT_EQ(ErrorOf([&] { rows->Update(); }), error::kDuplicateKey);
    EXPECT_THAT(recorder_.Take(), ElementsAre("updating:CLI"));
    rows->CancelUpdate();
    recorder_.Take();
    const auto other = OpenDynaset(u"TTYP");
    other->Edit();
    EXPECT_EQ(ErrorOf([&] { rows->Delete(); }), error::kLockedHere);
    EXPECT_THAT(recorder_.Take(), IsEmpty());
}

TEST_F(ObserverTest, AddAndDeleteTellThatARowChanged) {
    const auto rows = OpenObserved(recorder_);
    rows->AddNew();
    rows->SetValue(u"TTYP_CODE", u"NEUF");
    recorder_.Take();
    rows->Update();
    EXPECT_THAT(recorder_.Take(), ElementsAre("updating:NEUF", "changed:BAT"));
    rows->Delete();
    EXPECT_THAT(recorder_.Take(), ElementsAre("changed:(deleted)"));
}

TEST_F(ObserverTest, RequeryReplacesTheRowsAndArrivesWithoutAsking) {
    const auto rows = OpenObserved(recorder_);
    rows->MoveLast();
    recorder_.Take();
    rows->Requery();
    EXPECT_THAT(recorder_.Take(), ElementsAre("replaced:BAT", "arrived:BAT"));
}

TEST_F(ObserverTest, WhoGuardsForeignChangesGetsTheRecordAsItIsStored) {
    class Guard final : public RecordsetObserver {
     public:
        [[nodiscard]] bool GuardsForeignChanges() const override { return true; }
    };
    Guard guard;
    const auto rows = OpenDynaset(u"SELECT * FROM TTYP WHERE TTYP_CODE='VID'");
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Vidange et filtres"));
    ExecuteElsewhere("UPDATE TTYP SET TTYP_LIBELLE = 'La sienne' WHERE TTYP_CODE = 'VID'");
    rows->SetObserver(&guard);
    rows->Edit();
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"La sienne"));
    rows->CancelUpdate();
    rows->SetObserver(nullptr);
}

TEST_F(ObserverTest, ThrowingWhenARowIsLeftRefusesTheMove) {
    Refuser refuser;
    const auto rows = OpenDynaset(u"TTYP");
    rows->MoveNext();
    const Bookmark before = rows->CurrentBookmark();
    rows->Edit();
    rows->SetValue(u"TTYP_LIBELLE", u"Clim");
    rows->SetObserver(&refuser);
    const std::vector<std::function<void()>> moves = {
        [&] { rows->MoveFirst(); },
        [&] { rows->MoveLast(); },
        [&] { rows->MoveNext(); },
        [&] { rows->MovePrevious(); },
        [&] { rows->SetAbsolutePosition(5); },
        [&] { rows->SetBookmark(before); },
        [&] { rows->FindFirst(u"TTYP_CODE='DIS'"); },
        [&] { rows->FindLast(u"TTYP_CODE='DIS'"); },
        [&] { rows->FindNext(u"TTYP_CODE='DIS'"); },
        [&] { rows->FindPrevious(u"TTYP_CODE='BAT'"); },
        [&] { rows->AddNew(); },
    };
    for (std::size_t i = 0; i < moves.size(); ++i) {
        EXPECT_EQ(ErrorOf(moves[i]), error::kNullRequired) << i;
        EXPECT_EQ(rows->CurrentBookmark(), before) << i;
        EXPECT_EQ(rows->EditMode(), EditMode::Edit) << i;
        EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Clim")) << i;
    }
    rows->SetObserver(nullptr);
    rows->MoveNext();
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"CT"));
}

TEST_F(ObserverTest, ThrowingWhenARowIsLeftRefusesASeekAndAnotherIndex) {
    Refuser refuser;
    const auto rows = OpenTable(u"TTYP");
    rows->SetIndex(u"PrimaryKey");
    rows->SetObserver(&refuser);
    EXPECT_EQ(ErrorOf([&] { rows->Seek(u"=", {u"DIS"}); }), error::kNullRequired);
    EXPECT_EQ(ErrorOf([&] { rows->SetIndex(u""); }), error::kNullRequired);
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"BAT"));
    EXPECT_EQ(rows->Index(), u"PrimaryKey");
}

TEST_F(ObserverTest, WhatTheObserverWritesWhenARowIsLeftStaysWithThatRow) {
    Writer writer;
    writer.onLeaving = u"Batteries";
    const auto rows = OpenObserved(writer);
    rows->MoveNext();
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"CLI"));
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Climatisation"));
    rows->MovePrevious();
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Batteries"));
}

TEST_F(ObserverTest, WhatTheObserverSetsBeforeAnUpdateIsWritten) {
    Writer writer;
    writer.onUpdating = u"Batteries et alternateurs";
    const auto rows = OpenObserved(writer);
    rows->Edit();
    rows->Update();
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Batteries et alternateurs"));
}

}  // namespace
}  // namespace quardele::dao
