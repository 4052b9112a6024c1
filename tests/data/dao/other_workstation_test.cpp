// What a recordset sees of rows that another workstation adds, changes and deletes meanwhile.
#include "dao_test.h"

namespace quardele::dao {
namespace {

class OtherWorkstationTest : public DaoTest {
 protected:
    static constexpr TextView kLabel = u"TTYP_LIBELLE='Prise'";

    /// A recordset whose search for a label goes the short way that later searches go.
    [[nodiscard]] std::shared_ptr<Recordset> OpenSearched() {
        auto rows = OpenDynaset(u"TTYP");
        for (int i = 0; i < 3; ++i) {
            rows->FindFirst(kLabel);
            EXPECT_TRUE(rows->NoMatch());
        }
        return rows;
    }
};

TEST_F(OtherWorkstationTest, ASearchFindsARowThatWasChangedIntoAMatch) {
    const auto rows = OpenSearched();
    ExecuteElsewhere("UPDATE TTYP SET TTYP_LIBELLE = 'Prise' WHERE TTYP_CODE = 'PNE'");
    rows->FindFirst(kLabel);
    ASSERT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"PNE"));
}

TEST_F(OtherWorkstationTest, ASearchPassesOverARowThatWasChangedIntoNoMatch) {
    const auto rows = OpenDynaset(u"TTYP");
    const TextView condition = u"TTYP_LIBELLE='Vidange et filtres'";
    for (int i = 0; i < 3; ++i) {
        rows->FindFirst(condition);
        ASSERT_FALSE(rows->NoMatch());
    }
    ExecuteElsewhere("UPDATE TTYP SET TTYP_LIBELLE = 'Vidange' WHERE TTYP_CODE = 'VID'");
    rows->FindFirst(condition);
    EXPECT_TRUE(rows->NoMatch());
}

TEST_F(OtherWorkstationTest, BackwardSearchesLookAtTheFileToo) {
    const auto rows = OpenSearched();
    ExecuteElsewhere("UPDATE TTYP SET TTYP_LIBELLE = 'Prise' WHERE TTYP_CODE IN ('CT', 'PNE')");
    rows->FindLast(kLabel);
    ASSERT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"PNE"));
    rows->FindPrevious(kLabel);
    ASSERT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"CT"));
    ExecuteElsewhere("UPDATE TTYP SET TTYP_LIBELLE = 'Prise' WHERE TTYP_CODE = 'DIS'");
    rows->FindNext(kLabel);
    ASSERT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"DIS"));
}

TEST_F(OtherWorkstationTest, SeekSeesANewRowWithoutIdle) {
    const auto rows = OpenTable(u"TTYP");
    rows->SetIndex(u"PrimaryKey");
    rows->Seek(u"=", {u"NEUF"});
    EXPECT_TRUE(rows->NoMatch());
    ExecuteElsewhere("INSERT INTO TTYP (TTYP_CODE, TTYP_LIBELLE) VALUES ('NEUF', 'Prise')");
    rows->Seek(u"=", {u"NEUF"});
    ASSERT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Prise"));
}

TEST_F(OtherWorkstationTest, MembershipOfADynasetIsFixedUntilARequery) {
    const auto rows = OpenDynaset(u"TTYP");
    ExecuteElsewhere("INSERT INTO TTYP (TTYP_CODE, TTYP_LIBELLE) VALUES ('NEUF', 'Prise')");
    DBEngine::Instance().Idle(1);
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), 12U);
    rows->FindFirst(u"TTYP_CODE='NEUF'");
    EXPECT_TRUE(rows->NoMatch());
    rows->Requery();
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), 13U);
    rows->FindFirst(u"TTYP_CODE='NEUF'");
    EXPECT_FALSE(rows->NoMatch());
}

TEST_F(OtherWorkstationTest, OrderOfADynasetIsFixedAlthoughItsValuesChange) {
    const auto rows = OpenDynaset(u"SELECT * FROM TTYP ORDER BY TTYP_LIBELLE");
    const Variant first = rows->Value(u"TTYP_CODE");
    ExecuteElsewhere("UPDATE TTYP SET TTYP_LIBELLE = 'ZZZ' WHERE TTYP_CODE = '" +
                     basic::ToUtf8(first.As<Text>()) + "'");
    DBEngine::Instance().Idle(1);
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"ZZZ"));
    rows->MoveFirst();
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), first);
}

TEST_F(OtherWorkstationTest, ATableShowsAndCountsNewRowsAfterIdle) {
    const auto rows = OpenTable(u"TTYP");
    rows->SetIndex(u"PrimaryKey");
    EXPECT_EQ(rows->RecordCount(), 12U);
    ExecuteElsewhere("INSERT INTO TTYP (TTYP_CODE, TTYP_LIBELLE) VALUES ('AAA', 'Prise')");
    DBEngine::Instance().Idle(1);
    EXPECT_EQ(rows->RecordCount(), 13U);
    rows->MovePrevious();
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"AAA"));
}

TEST_F(OtherWorkstationTest, ADeletedRowRaises3167UntilTheNextMove) {
    const auto dynaset = OpenDynaset(u"TTYP");
    dynaset->FindFirst(u"TTYP_CODE='DIS'");
    const auto table = OpenTable(u"TTYP");
    table->SetIndex(u"PrimaryKey");
    table->Seek(u"=", {u"DIS"});
    ExecuteElsewhere("DELETE FROM TTYP WHERE TTYP_CODE = 'DIS'");
    DBEngine::Instance().Idle(1);
    for (Recordset* rows : {dynaset.get(), table.get()}) {
        EXPECT_EQ(ErrorOf([&] { (void)rows->Value(u"TTYP_CODE"); }), error::kRecordDeleted);
        EXPECT_EQ(ErrorOf([&] { rows->Edit(); }), error::kRecordDeleted);
        EXPECT_EQ(ErrorOf([&] { rows->Delete(); }), error::kRecordDeleted);
        EXPECT_EQ(rows->EditMode(), EditMode::None);
        rows->MoveFirst();
        EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"BAT"));
    }
}

TEST_F(OtherWorkstationTest, TheWalkGoesOnBesideABookmarkedRowThatIsDeleted) {
    const auto rows = OpenTable(u"TTYP");  // BAT CLI CT DIS EXT FRE HAY LIM PNE REV TAC VID
    rows->SetIndex(u"PrimaryKey");
    for (const bool forward : {true, false}) {
        rows->Seek(u"=", {u"LIM"});
        const Bookmark bookmark = rows->CurrentBookmark();
        rows->MoveFirst();
        rows->SetBookmark(bookmark);
        ExecuteElsewhere("DELETE FROM TTYP WHERE TTYP_CODE = 'LIM'");
        DBEngine::Instance().Idle(1);
        rows->Move(forward ? 1 : -1);
        EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(forward ? u"PNE" : u"HAY"));
        ExecuteElsewhere("INSERT INTO TTYP (TTYP_CODE, TTYP_LIBELLE) VALUES ('LIM', 'Limites')");
        DBEngine::Instance().Idle(1);
    }
}

TEST_F(OtherWorkstationTest, EditAndDeleteNoticeADeletionWithoutIdle) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->FindFirst(u"TTYP_CODE='DIS'");
    ExecuteElsewhere("DELETE FROM TTYP WHERE TTYP_CODE = 'DIS'");
    EXPECT_EQ(ErrorOf([&] { rows->Edit(); }), error::kRecordDeleted);
    EXPECT_EQ(ErrorOf([&] { rows->Delete(); }), error::kRecordDeleted);
}

TEST_F(OtherWorkstationTest, WhatEditHasLockedCannotBeDeletedOrChangedElsewhere) {
    const auto rows = OpenDynaset(u"SELECT * FROM TTYP WHERE TTYP_CODE='DIS'");
    rows->Edit();
    for (const std::string statement : {"DELETE FROM TTYP WHERE TTYP_CODE = 'DIS'",
                                        "UPDATE TTYP SET TTYP_LIBELLE = 'x' WHERE TTYP_CODE = 'DIS'"}) {
        test::Process other = StartElsewhere({statement});
        EXPECT_EQ(other.ReadOutput().substr(0, 5), "3260:") << statement;
        EXPECT_NE(other.Wait(), 0);
    }
    rows->SetValue(u"TTYP_LIBELLE", u"Le mien");
    rows->Update();
    EXPECT_EQ(OpenDynaset(u"SELECT * FROM TTYP WHERE TTYP_CODE='DIS'")->Value(u"TTYP_LIBELLE"),
              Variant(u"Le mien"));
}

TEST_F(OtherWorkstationTest, ARecordWrittenAgainWithTheSameValuesCanBeEdited) {
    const auto rows = OpenDynaset(u"SELECT * FROM TTYP WHERE TTYP_CODE='VID'");
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Vidange et filtres"));
    ExecuteElsewhere("UPDATE TTYP SET TTYP_LIBELLE = 'Vidange et filtres' WHERE TTYP_CODE = 'VID'");
    rows->Edit();
    rows->CancelUpdate();
}

TEST_F(OtherWorkstationTest, AChangedRecordRaises3197ButNotAfterIdle) {
    const auto rows = OpenDynaset(u"SELECT * FROM TTYP WHERE TTYP_CODE='VID'");
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Vidange et filtres"));
    ExecuteElsewhere("UPDATE TTYP SET TTYP_LIBELLE = 'Le sien' WHERE TTYP_CODE = 'VID'");
    DBEngine::Instance().Idle(1);
    rows->Edit();
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Le sien"));
    rows->CancelUpdate();
    ExecuteElsewhere("UPDATE TTYP SET TTYP_LIBELLE = 'Encore' WHERE TTYP_CODE = 'VID'");
    EXPECT_EQ(ErrorOf([&] { rows->Edit(); }), error::kRecordChanged);
}

TEST_F(OtherWorkstationTest, AChangedMemoRaises3197Too) {
    const auto rows = OpenTable(u"TCLI");
    rows->SetIndex(u"PrimaryKey");
    rows->Seek(u"=", {u"C0007"});
    const auto write = [&](const Text& text) {
        rows->Edit();
        rows->SetValue(u"TCLI_REMARQUES", text);
        rows->Update();
    };
    for (const std::size_t length : {20U, 2000U, 20000U}) {
        write(Text(length, u'a'));
        ExecuteElsewhere(
            "UPDATE TCLI SET TCLI_REMARQUES = Replace(TCLI_REMARQUES, 'a', 'b') WHERE TCLI_CODCLI = 'C0007'");
        EXPECT_EQ(ErrorOf([&] { rows->Edit(); }), error::kRecordChanged) << length;
        EXPECT_EQ(rows->Value(u"TCLI_REMARQUES"), Variant(Text(length, u'b')));
    }
}

TEST_F(OtherWorkstationTest, TheOneSideOfAJoinMayChangeUnderAnEdit) {
    const auto visits = OpenDynaset(DueBefore(u"12/31/2026"));
    visits->FindFirst(u"TVEH_IMMAT='CF-974-BL'");
    ASSERT_FALSE(visits->NoMatch());
    ExecuteElsewhere("UPDATE TVEH SET TVEH_MARQUE = 'LADA' WHERE TVEH_IMMAT = 'CF-974-BL'");
    visits->Edit();
    visits->SetValue(u"TVEH_DETAIL_PERIOD", std::int16_t{12});
    visits->Update();
    EXPECT_EQ(visits->Value(u"TVEH_MARQUE"), Variant(u"LADA"));
}

TEST_F(OtherWorkstationTest, TwoWorkstationsAddRowsSideBySide) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->AddNew();
    rows->SetValue(u"TTYP_CODE", u"MOI");
    ExecuteElsewhere("INSERT INTO TTYP (TTYP_CODE, TTYP_LIBELLE) VALUES ('LUI', 'Sien')");
    rows->Update();
    EXPECT_EQ(OpenTable(u"TTYP")->RecordCount(), 14U);
}

TEST_F(OtherWorkstationTest, AKeyThatAnotherWorkstationHasTakenRaises3022) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->AddNew();
    rows->SetValue(u"TTYP_CODE", u"NEUF");
    ExecuteElsewhere("INSERT INTO TTYP (TTYP_CODE, TTYP_LIBELLE) VALUES ('NEUF', 'Sien')");
    EXPECT_EQ(ErrorOf([&] { rows->Update(); }), error::kDuplicateKey);
    EXPECT_EQ(rows->EditMode(), EditMode::Add);
}

}  // namespace
}  // namespace quardele::dao
