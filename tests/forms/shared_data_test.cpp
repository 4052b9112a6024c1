// Data controls on a file that others write to: other data controls, and another workstation.
#include <child_process.h>
#include <forms/controls.h>
#include <forms/data_control.h>
#include <forms/grid.h>
#include <forms/strings.h>
#include <support/installation.h>

#include "forms_test.h"

namespace quardele::forms {
namespace {

const QString kDataFile = QStringLiteral("C:\\QUARDELE\\DATA\\talmeon.mdb");

/// A data control on the work types with a box for each of their columns.
class WorkTypes {
 public:
    explicit WorkTypes(QWidget* parent) : data(parent), code(parent), label(parent) {
        data.SetDatabaseName(kDataFile);
        data.SetRecordSource(QStringLiteral("TTYP"));
        code.SetDataField(QStringLiteral("TTYP_CODE"));
        label.SetDataField(QStringLiteral("TTYP_LIBELLE"));
        for (TextBox* box : {&code, &label}) {
            box->SetDataSource(&data);
        }
        data.Refresh();
    }
    [[nodiscard]] dao::Recordset& Rows() const { return *data.Recordset(); }
    void GoTo(const char* wanted) const {
        Rows().FindFirst(u"TTYP_CODE='" + ToText(QString::fromLatin1(wanted)) + u"'");
        QVERIFY(!Rows().NoMatch());
    }

    DataControl data;
    TextBox code;
    TextBox label;
};

int NumberOf(const std::function<void()>& statement) {
    try {
        statement();
    } catch (const basic::RuntimeError& error) {
        return error.Number();
    }
    return 0;
}

}  // namespace

class SharedDataTest : public QObject {
    Q_OBJECT

 private slots:
    void init() {
        installation_ = std::make_unique<support::Installation>();
        stage_ = std::make_unique<test::Stage>();
        mine_ = std::make_unique<WorkTypes>(stage_.get());
        mine_->GoTo("VID");
    }
    void cleanup() {
        mine_.reset();
        stage_.reset();
        installation_.reset();
    }

    // What is seen, and when.

    void WhatOneDataControlSavesAnotherOneShowsAtItsNextRow() {
        const WorkTypes his(stage_.get());
        his.GoTo("VID");
        mine_->label.SetText(QStringLiteral("Vidange"));
        mine_->Rows().MoveFirst();
        his.Rows().MoveFirst();
        his.GoTo("VID");
        QCOMPARE(his.label.Text(), QStringLiteral("Vidange"));
    }

    void RefreshShowsWhatAnotherWorkstationHasWritten() {
        ExecuteElsewhere("UPDATE TTYP SET TTYP_LIBELLE = 'Vidange' WHERE TTYP_CODE = 'VID'");
        ExecuteElsewhere("INSERT INTO TTYP (TTYP_CODE, TTYP_LIBELLE) VALUES ('AAA', 'Premier')");
        mine_->data.Refresh();
        QCOMPARE(mine_->label.Text(), QStringLiteral("Premier"));
        mine_->GoTo("VID");
        QCOMPARE(mine_->label.Text(), QStringLiteral("Vidange"));
    }

    void AfterIdleARowShowsWhatAnotherWorkstationHasWrittenWhenItComesBack() {
        const QString before = mine_->label.Text();
        ExecuteElsewhere("UPDATE TTYP SET TTYP_LIBELLE = 'Vidange' WHERE TTYP_CODE = 'VID'");
        dao::DBEngine::Instance().Idle(1);
        QCOMPARE(mine_->label.Text(), before);
        mine_->Rows().MovePrevious();
        mine_->Rows().MoveNext();
        QCOMPARE(mine_->label.Text(), QStringLiteral("Vidange"));
        QVERIFY(!mine_->label.DataChanged());
    }

    void ARowThatAnotherWorkstationHasDeletedShowsBlank() {
        ExecuteElsewhere("DELETE FROM TTYP WHERE TTYP_CODE = 'VID'");
        dao::DBEngine::Instance().Idle(1);
        mine_->Rows().MovePrevious();
        mine_->Rows().MoveNext();
        QCOMPARE(mine_->code.Text(), QString());
        mine_->Rows().MovePrevious();
        QVERIFY(!mine_->code.Text().isEmpty());
    }

    void AGridShowsTheRowsOfAnotherWorkstationAfterARefresh() {
        Grid grid(stage_.get());
        grid.SetColumnLines({QStringLiteral("Code|TTYP_CODE|10"), QStringLiteral("Libellé|TTYP_LIBELLE|20")});
        grid.SetDataSource(&mine_->data);
        QCOMPARE(grid.MaxRows(), 12);
        ExecuteElsewhere("INSERT INTO TTYP (TTYP_CODE, TTYP_LIBELLE) VALUES ('AAA', 'Premier')");
        grid.SetMaxRows(0);
        mine_->data.Refresh();
        QCOMPARE(grid.MaxRows(), 13);
        grid.SetRow(1);
        grid.SetCol(2);
        QCOMPARE(grid.Text(), QStringLiteral("Premier"));
    }

    void AGridShowsTheRowsOfAnotherWorkstationAfterARequery() {
        Grid grid(stage_.get());
        grid.SetColumnLines({QStringLiteral("Code|TTYP_CODE|10")});
        grid.SetDataSource(&mine_->data);
        ExecuteElsewhere("INSERT INTO TTYP (TTYP_CODE, TTYP_LIBELLE) VALUES ('AAA', 'Premier')");
        mine_->Rows().Requery();
        QCOMPARE(grid.MaxRows(), 13);
        QCOMPARE(grid.ActiveRow(), 1);
        QCOMPARE(mine_->code.Text(), QStringLiteral("AAA"));
    }

    // Leaving a row with changed boxes.

    void EveryWayOfLeavingARowSavesItsChanges_data() {
        QTest::addColumn<int>("way");
        int way = 0;
        for (const char* name : {"MoveFirst", "MoveLast", "MoveNext", "MovePrevious", "Move", "FindFirst",
                                 "FindLast", "FindNext", "FindPrevious", "AddNew", "Bookmark",
                                 "AbsolutePosition", "PercentPosition", "a search that misses"}) {
            QTest::newRow(name) << way++;
        }
    }
    void EveryWayOfLeavingARowSavesItsChanges() {
        QFETCH(int, way);
        mine_->GoTo("CT");
        const dao::Bookmark bookmark = mine_->Rows().CurrentBookmark();
        mine_->GoTo("DIS");
        mine_->label.SetText(QStringLiteral("changé"));
        Leave(way, bookmark);
        QCOMPARE(LabelElsewhere("DIS"), dao::Variant(u"changé"));
        QVERIFY(!mine_->label.DataChanged());
    }

    void ASearchThatMissesSavesAndStays() {
        mine_->label.SetText(QStringLiteral("changé"));
        mine_->Rows().FindFirst(u"TTYP_CODE='none'");
        QVERIFY(mine_->Rows().NoMatch());
        QCOMPARE(mine_->code.Text(), QStringLiteral("VID"));
        QCOMPARE(mine_->label.Text(), QStringLiteral("changé"));
    }

    void ASearchWithABadConditionSavesNothing() {
        mine_->label.SetText(QStringLiteral("changé"));
        constexpr int kSyntaxInCondition = 3077;
        QCOMPARE(NumberOf([&] { mine_->Rows().FindFirst(u"TTYP_CODE='L'ECO'"); }), kSyntaxInCondition);
        QVERIFY(mine_->label.DataChanged());
        QVERIFY(LabelElsewhere("VID") != dao::Variant(u"changé"));
    }

    void AKeyThatIsTakenRefusesTheMoveAndKeepsWhatWasTyped() {
        mine_->code.SetText(QStringLiteral("CT"));
        QCOMPARE(NumberOf([&] { mine_->Rows().MoveFirst(); }), basic::error::kDuplicateKey);
        QCOMPARE(mine_->code.Text(), QStringLiteral("CT"));
        QVERIFY(mine_->code.DataChanged());
        QCOMPARE(mine_->data.EditMode(), dao::EditMode::None);
        QCOMPARE(mine_->Rows().Value(u"TTYP_CODE"), dao::Variant(u"VID"));
        mine_->data.UpdateControls();
        mine_->Rows().MoveFirst();
        QCOMPARE(mine_->code.Text(), QStringLiteral("BAT"));
    }

    void ANewRecordThatIsRefusedStaysOnScreen() {
        mine_->Rows().AddNew();
        mine_->code.SetText(QStringLiteral("CT"));
        QCOMPARE(NumberOf([&] { mine_->Rows().MoveFirst(); }), basic::error::kDuplicateKey);
        QCOMPARE(mine_->data.EditMode(), dao::EditMode::Add);
        QCOMPARE(mine_->code.Text(), QStringLiteral("CT"));
        mine_->code.SetText(QStringLiteral("NEUF"));
        mine_->Rows().MoveFirst();
        QCOMPARE(mine_->code.Text(), QStringLiteral("BAT"));
        mine_->GoTo("NEUF");
    }

    void ANewRecordThatNobodyTypedInIsDroppedByAMove() {
        mine_->Rows().AddNew();
        QCOMPARE(mine_->code.Text(), QString());
        mine_->Rows().MoveFirst();
        mine_->Rows().MoveLast();
        QCOMPARE(mine_->Rows().RecordCount(), std::size_t{12});
    }

    void DeletingTheRowDropsItsChanges() {
        mine_->label.SetText(QStringLiteral("changé"));
        mine_->Rows().Delete();
        QVERIFY(!mine_->label.DataChanged());
        mine_->Rows().MoveFirst();
        QCOMPARE(mine_->code.Text(), QStringLiteral("BAT"));
    }

    void CancelUpdateShowsWhatIsStoredNow() {
        mine_->label.SetText(QStringLiteral("changé"));
        dao::DBEngine::Instance().Idle(1);
        mine_->Rows().Edit();
        mine_->Rows().CancelUpdate();
        QCOMPARE(dao::Variant(ToText(mine_->label.Text())), LabelElsewhere("VID"));
        QVERIFY(!mine_->label.DataChanged());
    }

    // Another workstation comes first.

    void ARowThatAnotherWorkstationHasChangedRefusesTheMoveOnce() {
        mine_->label.SetText(QStringLiteral("La mienne"));
        ExecuteElsewhere("UPDATE TTYP SET TTYP_LIBELLE = 'La sienne' WHERE TTYP_CODE = 'VID'");
        QCOMPARE(NumberOf([&] { mine_->Rows().MoveFirst(); }), basic::error::kRecordChanged);
        QCOMPARE(mine_->label.Text(), QStringLiteral("La mienne"));
        QVERIFY(mine_->label.DataChanged());
        QCOMPARE(LabelElsewhere("VID"), dao::Variant(u"La sienne"));
        mine_->Rows().MoveFirst();
        QCOMPARE(LabelElsewhere("VID"), dao::Variant(u"La mienne"));
    }

    void OnlyChangedBoxesAreWrittenOverTheRowOfAnotherWorkstation() {
        ExecuteElsewhere("UPDATE TTYP SET TTYP_LIBELLE = 'La sienne' WHERE TTYP_CODE = 'VID'");
        dao::DBEngine::Instance().Idle(1);
        mine_->code.SetText(QStringLiteral("VDG"));
        mine_->Rows().MoveFirst();
        QCOMPARE(LabelElsewhere("VDG"), dao::Variant(u"La sienne"));
    }

    void ARowThatAnotherWorkstationHasDeletedRaises3167() {
        mine_->label.SetText(QStringLiteral("La mienne"));
        ExecuteElsewhere("DELETE FROM TTYP WHERE TTYP_CODE = 'VID'");
        QCOMPARE(NumberOf([&] { mine_->Rows().MoveFirst(); }), basic::error::kRecordDeleted);
        QCOMPARE(NumberOf([&] { mine_->data.UpdateRecord(); }), basic::error::kRecordDeleted);
        QCOMPARE(mine_->label.Text(), QStringLiteral("La mienne"));
        mine_->data.UpdateControls();
        mine_->Rows().MoveFirst();
        QCOMPARE(mine_->code.Text(), QStringLiteral("BAT"));
    }

    void ARowThatAnotherDataControlEditsRaises3188() {
        const WorkTypes his(stage_.get());
        his.GoTo("VID");
        his.Rows().Edit();
        mine_->label.SetText(QStringLiteral("La mienne"));
        QCOMPARE(NumberOf([&] { mine_->Rows().MoveFirst(); }), basic::error::kLockedHere);
        his.Rows().CancelUpdate();
        mine_->Rows().MoveFirst();
        QCOMPARE(LabelElsewhere("VID"), dao::Variant(u"La mienne"));
    }

 private:
    void ExecuteElsewhere(const std::string& statement) const {
        quardele::test::Process process(
            QUARDELE_MDB, {"exec", installation_->File("DATA/talmeon.mdb").string(), statement});
        QVERIFY2(process.Wait() == 0, statement.c_str());
    }
    [[nodiscard]] static dao::Variant LabelElsewhere(const char* code) {
        const auto database =
            dao::DBEngine::Instance().Workspaces(0).OpenDatabase(ToText(kDataFile), false, true);
        const auto rows = database->OpenRecordset(u"TTYP", dao::RecordsetType::Table);
        rows->SetIndex(u"PrimaryKey");
        rows->Seek(u"=", {ToText(QString::fromLatin1(code))});
        return rows->NoMatch() ? dao::Variant() : rows->Value(u"TTYP_LIBELLE");
    }
    void Leave(int way, const dao::Bookmark& bookmark) const {
        const std::function<void(dao::Recordset&)> ways[] = {
            [](dao::Recordset& rows) { rows.MoveFirst(); },
            [](dao::Recordset& rows) { rows.MoveLast(); },
            [](dao::Recordset& rows) { rows.MoveNext(); },
            [](dao::Recordset& rows) { rows.MovePrevious(); },
            [](dao::Recordset& rows) { rows.Move(2); },
            [](dao::Recordset& rows) { rows.FindFirst(u"TTYP_CODE='CT'"); },
            [](dao::Recordset& rows) { rows.FindLast(u"TTYP_CODE='CT'"); },
            [](dao::Recordset& rows) { rows.FindNext(u"TTYP_CODE='VID'"); },
            [](dao::Recordset& rows) { rows.FindPrevious(u"TTYP_CODE='CT'"); },
            [](dao::Recordset& rows) { rows.AddNew(); },
            [&](dao::Recordset& rows) { rows.SetBookmark(bookmark); },
            [](dao::Recordset& rows) { rows.SetAbsolutePosition(0); },
            [](dao::Recordset& rows) { rows.SetPercentPosition(0); },
            [](dao::Recordset& rows) { rows.FindFirst(u"TTYP_CODE='none'"); },
        };
        ways[static_cast<std::size_t>(way)](mine_->Rows());
    }

    std::unique_ptr<support::Installation> installation_;
    std::unique_ptr<test::Stage> stage_;
    std::unique_ptr<WorkTypes> mine_;
};

}  // namespace quardele::forms

int main(int argc, char* argv[]) {
    return quardele::forms::test::Run<quardele::forms::SharedDataTest>(argc, argv);
}
#include "shared_data_test.moc"
