// The commands on a vehicle's record: a new one, delete, refresh; and the test of a new registration.
#include <forms/beeps.h>
#include <forms/strings.h>

#include "other_operator.h"
#include "stored_rows.h"
#include "vehicle_form_fixture.h"
#include "write_protection.h"

using namespace quardele;
using namespace quardele::tests;

namespace {

const QString kDacia = QStringLiteral("2107 RC 59");
const QString kToyota = QStringLiteral("KG-361-VP");
const QString kNew = QStringLiteral("ZY-001-AA");
const QString kTaken = QStringLiteral("Ce véhicule existe déjà !!! ");
const QString kConfirm = QStringLiteral("Confirmez-vous la suppression de cette fiche ?");
const QString kSaveFirst = QStringLiteral("Enregistrez ou annulez d'abord votre saisie !");

bool IsNewRecord() {
    return Data("DBD_TVEH")->EditMode() == dao::EditMode::Add;
}

/// The registration behind another in the text order of the table; empty for the last.
QString Successor(const QString& registration) {
    const auto next = shell::TheSession().BD_DONNEES->OpenRecordset(
        u"select TVEH_IMMAT from TVEH where TVEH_IMMAT > '" + registration.toStdU16String() +
            u"' order by TVEH_IMMAT",
        dao::RecordsetType::Snapshot);
    return next->Eof() ? QString() : forms::ToQString(next->Value(0).As<basic::Text>());
}

QString LastRegistration() {
    const auto last = shell::TheSession().BD_DONNEES->OpenRecordset(
        u"select TVEH_IMMAT from TVEH order by TVEH_IMMAT desc", dao::RecordsetType::Snapshot);
    return forms::ToQString(last->Value(0).As<basic::Text>());
}

}  // namespace

class RecordCommandsTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void init();
    void cleanup() { program_.reset(); }

    void ANewRecordFromTheListIsBlankWithTheFocusInTheRegistration();
    void OnTheRecordANewOneLeavesTheFocusOnTheButton();
    void ANewRecordKeepsTheCustomersNameUntilACodeIsEntered();
    void ANewRecordSavesWhatWasChangedInTheOneLeft();
    void ASaveRefusedOnTheWayToANewRecordIsAnUnhandledError();
    void ANewRecordWithoutAnEntryMayBeLeft();
    void ANewRecordWithAnEntryMayNot();

    void ATakenRegistrationIsRefusedInANewRecord();
    void AButtonPressedOverATakenRegistrationDoesNothing();
    void OverATakenRegistrationF8ShowsTheGuardOnly();
    void ATakenRegistrationIsNotNoticedInAnExistingRecord();
    void AFreeOrEmptyRegistrationIsNotRefused();

    void DeletingGoesToTheNextVehicle();
    void DeletingTheLastInOrderGoesToTheFirst();
    void DeletingTheOnlyVehicleLeavesAnEmptyList();
    void DeletingLeavesTheVisitsInTheirTable();
    void ADeleteThatIsNotConfirmedDoesNothing();
    void DeleteHoldsBackOnAPendingChange();
    void DeletingWithoutAVehicleIsAnUnhandledError();
    void DeletingALockedVehicleIsAnUnhandledError();
    void DeletingInAFileThatTurnedReadOnlyIsAnUnhandledError();

    void RefreshShowsWhatOthersHaveWritten();
    void RefreshOnTheRecordKeepsTheVisitsOfTheVehicleBefore();
    void EveryCommandSaysWhatItDoes();
    void EveryMessageIsTranslated();

 private:
    void DeleteAllBut(const QString& registration) const;
    /// A confirmed delete ends the program with this error, and the vehicle is still in the file.
    void CompareDeleteEndsWith(const QString& error) const;

    std::unique_ptr<RunningProgram> program_;
};

void RecordCommandsTest::DeleteAllBut(const QString& registration) const {
    ExecuteElsewhere(program_->DataFile(),
                     QStringLiteral("delete from TVEH where TVEH_IMMAT <> '%1'").arg(registration));
    Press("CMD_REFRESH");
}

void RecordCommandsTest::CompareDeleteEndsWith(const QString& error) const {
    support::BoxAnswerer boxes;
    const int endsBefore = forms::CatchEndOfProcess(true);
    Press("Cmd_Delete");
    QCOMPARE(boxes.Shown().size(), std::size_t{2});
    const QString& text = boxes.Shown().back().text;
    QVERIFY2(text.startsWith(error), qPrintable(text));
    QCOMPARE(forms::CatchEndOfProcess(true), endsBefore + 1);
    QCOMPARE(StoredRows(program_->DataFile(), "TVEH", QStringLiteral("TVEH_IMMAT"), kToyota).size(),
             std::size_t{1});
}

void RecordCommandsTest::init() {
    program_ = std::make_unique<RunningProgram>();
    program_->OpenVehicles();
}

// New records.

void RecordCommandsTest::ANewRecordFromTheListIsBlankWithTheFocusInTheRegistration() {
    PressKey(Qt::Key_N, Qt::ControlModifier);
    QCOMPARE(Tabs()->Tab(), kRecordTab);
    QVERIFY(IsNewRecord());
    QCOMPARE(forms::Screen::ActiveControl(), Box("CTX_IMMAT"));
    for (const char* box : {"CTX_IMMAT", "CTX_MARQUE", "CTX_ComplIdent", "CTX_CODCLI", "CTX_USER_1"}) {
        QCOMPARE(Box(box)->Text(), QString());
        QVERIFY(!Box(box)->DataChanged());
    }
    QCOMPARE(Grid("DBG_DETAIL")->MaxRows(), 0);
    for (const char* group : {"Pic_Boutons_1", "Pic_boutons_2", "Pic_Boutons_3", "Pic_boutons_Quitter"}) {
        QVERIFY2(Shown(Control<QWidget>(group)), group);
    }
}

void RecordCommandsTest::OnTheRecordANewOneLeavesTheFocusOnTheButton() {
    OpenRecordOf(kDacia);
    Press("Cmd_ADD");
    QVERIFY(IsNewRecord());
    QCOMPARE(forms::Screen::ActiveControl(), Button("Cmd_ADD"));
    QCOMPARE(Box("CTX_IMMAT")->Text(), QString());
    QCOMPARE(Grid("DBG_DETAIL")->MaxRows(), 0);
}

void RecordCommandsTest::ANewRecordKeepsTheCustomersNameUntilACodeIsEntered() {
    OpenRecordOf(kDacia);
    const QString name = Box("CTX_RSCLI")->Text();
    QVERIFY(!name.isEmpty());
    Press("Cmd_ADD");
    QCOMPARE(Box("CTX_RSCLI")->Text(), name);
    TypeOver(Box("CTX_CODCLI"), QStringLiteral("C0000"));
    PressKey(Qt::Key_Return);
    QCOMPARE(Box("CTX_RSCLI")->Text(), QStringLiteral("BOULANGERIE PÂTISSERIE MOREL 1"));
}

void RecordCommandsTest::ANewRecordSavesWhatWasChangedInTheOneLeft() {
    SKIP_WITHOUT_INDEPENDENT_READER();
    OpenRecordOf(kDacia);
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("RENAULT"));
    support::BoxAnswerer boxes;
    Press("Cmd_ADD");
    CompareBoxes(boxes, {});
    QVERIFY(IsNewRecord());
    QCOMPARE(Box("CTX_MARQUE")->Text(), QString());
    const auto stored = StoredRows(program_->DataFile(), "TVEH", QStringLiteral("TVEH_IMMAT"), kDacia);
    QCOMPARE(stored.size(), std::size_t{1});
    QCOMPARE(stored.front().at(QStringLiteral("TVEH_MARQUE")), QStringLiteral("RENAULT"));
}

void RecordCommandsTest::ASaveRefusedOnTheWayToANewRecordIsAnUnhandledError() {
    OpenRecordOf(kDacia);
    TypeOver(Box("CTX_IMMAT"), kToyota);
    support::BoxAnswerer boxes;
    const int endsBefore = forms::CatchEndOfProcess(true);
    Press("Cmd_ADD");
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
    QVERIFY(boxes.Shown().front().text.contains(QStringLiteral("3022")));
    QCOMPARE(forms::CatchEndOfProcess(true), endsBefore + 1);
}

void RecordCommandsTest::ANewRecordWithoutAnEntryMayBeLeft() {
    PressKey(Qt::Key_N, Qt::ControlModifier);
    support::BoxAnswerer boxes;
    PressKey(Qt::Key_F8);
    CompareBoxes(boxes, {});
    QCOMPARE(Tabs()->Tab(), kListTab);
    PressKey(Qt::Key_Down);
    QVERIFY(!IsNewRecord());
    QCOMPARE(Box("CTX_IMMAT")->Text(), Cell("DBG_Liste", 1, 2));
}

void RecordCommandsTest::ANewRecordWithAnEntryMayNot() {
    PressKey(Qt::Key_N, Qt::ControlModifier);
    QTest::keyClicks(Box("CTX_IMMAT"), kNew);
    support::BoxAnswerer boxes;
    PressKey(Qt::Key_F8);
    CompareOnlyBox(boxes, QStringLiteral("Enregistrez ou annulez d'abord votre saisie"), kNoIcon);
    QCOMPARE(Tabs()->Tab(), kRecordTab);
    QVERIFY(IsNewRecord());
    QCOMPARE(Box("CTX_IMMAT")->Text(), kNew);
}

// The registration of a new record.

void RecordCommandsTest::ATakenRegistrationIsRefusedInANewRecord() {
    PressKey(Qt::Key_N, Qt::ControlModifier);
    QTest::keyClicks(Box("CTX_IMMAT"), kToyota);
    support::BoxAnswerer boxes;
    QWidget* focusUnderTheBox = nullptr;
    QString textUnderTheBox;
    boxes.LookAtBoxes([&] {
        focusUnderTheBox = forms::Screen::ActiveControl();
        textUnderTheBox = Box("CTX_IMMAT")->Text();
    });
    const int beepsBefore = forms::BeepsSoFar();
    PressKey(Qt::Key_Return);
    CompareOnlyBox(boxes, kTaken, kNoIcon);
    QCOMPARE(forms::BeepsSoFar(), beepsBefore + 1);
    QCOMPARE(focusUnderTheBox, Box("CTX_IMMAT"));
    QCOMPARE(textUnderTheBox, kToyota);
    QCOMPARE(Box("CTX_IMMAT")->Text(), QString());
    QCOMPARE(forms::Screen::ActiveControl(), Box("CTX_IMMAT"));
    QVERIFY(IsNewRecord());
}

void RecordCommandsTest::AButtonPressedOverATakenRegistrationDoesNothing() {
    PressKey(Qt::Key_N, Qt::ControlModifier);
    QTest::keyClicks(Box("CTX_IMMAT"), kToyota);
    support::BoxAnswerer boxes;
    Press("Cmd_Update");
    QTest::keyClicks(Box("CTX_IMMAT"), kToyota);
    PressKey(Qt::Key_S, Qt::ControlModifier);
    CompareBoxes(boxes, {kTaken, kTaken});
    QCOMPARE(forms::Screen::ActiveControl(), Box("CTX_IMMAT"));
    QVERIFY(IsNewRecord());
}

void RecordCommandsTest::ATakenRegistrationIsNotNoticedInAnExistingRecord() {
    OpenRecordOf(kDacia);
    TypeOver(Box("CTX_IMMAT"), kToyota);
    support::BoxAnswerer boxes;
    PressKey(Qt::Key_Return);
    CompareBoxes(boxes, {});
    QCOMPARE(forms::Screen::ActiveControl(), Box("CTX_MARQUE"));
    QCOMPARE(Box("CTX_IMMAT")->Text(), kToyota);
}

void RecordCommandsTest::AFreeOrEmptyRegistrationIsNotRefused() {
    PressKey(Qt::Key_N, Qt::ControlModifier);
    support::BoxAnswerer boxes;
    const int beepsBefore = forms::BeepsSoFar();
    PressKey(Qt::Key_Return);
    QCOMPARE(forms::Screen::ActiveControl(), Box("CTX_MARQUE"));
    TypeOver(Box("CTX_IMMAT"), kNew);
    PressKey(Qt::Key_Return);
    QCOMPARE(forms::Screen::ActiveControl(), Box("CTX_MARQUE"));
    CompareBoxes(boxes, {});
    QCOMPARE(forms::BeepsSoFar(), beepsBefore);
    QCOMPARE(Box("CTX_IMMAT")->Text(), kNew);
}

/// The key sets the tab, which comes back at once: the box has not been left.
void RecordCommandsTest::OverATakenRegistrationF8ShowsTheGuardOnly() {
    PressKey(Qt::Key_N, Qt::ControlModifier);
    QTest::keyClicks(Box("CTX_IMMAT"), kToyota);
    support::BoxAnswerer boxes;
    PressKey(Qt::Key_F8);
    CompareBoxes(boxes, {QStringLiteral("Enregistrez ou annulez d'abord votre saisie")});
    QCOMPARE(Tabs()->Tab(), kRecordTab);
    QCOMPARE(forms::Screen::ActiveControl(), Box("CTX_IMMAT"));
    QCOMPARE(Box("CTX_IMMAT")->Text(), kToyota);
    PressKey(Qt::Key_Tab);
    QCOMPARE(boxes.Shown().size(), std::size_t{2});
    QCOMPARE(boxes.Shown().back().text, kTaken);
}

// Deleting.

void RecordCommandsTest::DeletingGoesToTheNextVehicle() {
    SKIP_WITHOUT_INDEPENDENT_READER();
    OpenRecordOf(kToyota);
    const QString next = Successor(kToyota);
    const int vehicles = Grid("DBG_Liste")->MaxRows();
    support::BoxAnswerer boxes;
    Press("Cmd_Delete");
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
    QCOMPARE(boxes.Shown().front().text, kConfirm);
    QCOMPARE(boxes.Shown().front().icon, kNoIcon);
    QCOMPARE(boxes.Shown().front().button, QStringLiteral("Oui"));
    QCOMPARE(Tabs()->Tab(), kRecordTab);
    QCOMPARE(Box("CTX_IMMAT")->Text(), next);
    QCOMPARE(Grid("DBG_Liste")->MaxRows(), vehicles - 1);
    QCOMPARE(Cell("DBG_Liste", 1, Grid("DBG_Liste")->ActiveRow()), next);
    QVERIFY(StoredRows(program_->DataFile(), "TVEH", QStringLiteral("TVEH_IMMAT"), kToyota).empty());
}

void RecordCommandsTest::DeletingTheLastInOrderGoesToTheFirst() {
    const QString last = LastRegistration();
    Data("DBD_TVEH")->Recordset()->FindFirst(u"TVEH_IMMAT = '" + last.toStdU16String() + u"'");
    support::BoxAnswerer boxes;
    PressKey(Qt::Key_D, Qt::ControlModifier);
    CompareBoxes(boxes, {kConfirm});
    QCOMPARE(Tabs()->Tab(), kListTab);
    QCOMPARE(Grid("DBG_Liste")->ActiveRow(), 1);
    QCOMPARE(Box("CTX_IMMAT")->Text(), Cell("DBG_Liste", 1, 1));
    QVERIFY(Box("CTX_IMMAT")->Text() != last);
}

void RecordCommandsTest::DeletingTheOnlyVehicleLeavesAnEmptyList() {
    DeleteAllBut(kToyota);
    QCOMPARE(Grid("DBG_Liste")->MaxRows(), 1);
    support::BoxAnswerer boxes;
    Press("Cmd_Delete");
    CompareBoxes(boxes, {kConfirm});
    QCOMPARE(Grid("DBG_Liste")->MaxRows(), 0);
    QCOMPARE(Box("CTX_IMMAT")->Text(), QString());
}

void RecordCommandsTest::DeletingLeavesTheVisitsInTheirTable() {
    SKIP_WITHOUT_INDEPENDENT_READER();
    OpenRecordOf(kToyota);
    support::BoxAnswerer boxes;
    Press("Cmd_Delete");
    const auto visits =
        StoredRows(program_->DataFile(), "TVEH_DETAIL", QStringLiteral("TVEH_DETAIL_Immat"), kToyota);
    QCOMPARE(visits.size(), std::size_t{3});
}

void RecordCommandsTest::ADeleteThatIsNotConfirmedDoesNothing() {
    OpenRecordOf(kToyota);
    const int vehicles = Grid("DBG_Liste")->MaxRows();
    support::BoxAnswerer boxes;
    boxes.AnswerNo();
    Press("Cmd_Delete");
    CompareBoxes(boxes, {kConfirm});
    QCOMPARE(Grid("DBG_Liste")->MaxRows(), vehicles);
    QCOMPARE(Box("CTX_IMMAT")->Text(), kToyota);
}

void RecordCommandsTest::DeleteHoldsBackOnAPendingChange() {
    OpenRecordOf(kToyota);
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("RENAULT"));
    support::BoxAnswerer boxes;
    Press("Cmd_Delete");
    CompareOnlyBox(boxes, kSaveFirst, kNoIcon);
    QCOMPARE(Box("CTX_IMMAT")->Text(), kToyota);
}

void RecordCommandsTest::DeletingWithoutAVehicleIsAnUnhandledError() {
    DeleteAllBut(QStringLiteral("?"));
    QCOMPARE(Grid("DBG_Liste")->MaxRows(), 0);
    support::BoxAnswerer boxes;
    const int endsBefore = forms::CatchEndOfProcess(true);
    Press("Cmd_Delete");
    QCOMPARE(boxes.Shown().size(), std::size_t{2});
    QVERIFY(boxes.Shown().back().text.contains(QStringLiteral("3021")));
    QCOMPARE(forms::CatchEndOfProcess(true), endsBefore + 1);
}

void RecordCommandsTest::DeletingALockedVehicleIsAnUnhandledError() {
    SKIP_WITHOUT_INDEPENDENT_READER();
    OpenRecordOf(kToyota);
    const RowHeldElsewhere held(QStringLiteral("TVEH"), QStringLiteral("TVEH_IMMAT = '%1'").arg(kToyota));
    CompareDeleteEndsWith(QStringLiteral("Erreur d'exécution 3260"));
}

void RecordCommandsTest::DeletingInAFileThatTurnedReadOnlyIsAnUnhandledError() {
    SKIP_WITHOUT_INDEPENDENT_READER();
    OpenRecordOf(kToyota);
    const WriteProtection readOnly(program_->DataFile().parent_path());
    CompareDeleteEndsWith(QStringLiteral("Erreur d'exécution 3027"));
}

// Refresh, tool tips.

void RecordCommandsTest::RefreshShowsWhatOthersHaveWritten() {
    OpenRecordOf(kToyota);
    const int vehicles = Grid("DBG_Liste")->MaxRows();
    ExecuteElsewhere(program_->DataFile(),
                     QStringLiteral("insert into TVEH (TVEH_IMMAT) values ('%1')").arg(kNew));
    PressKey(Qt::Key_F5);
    QCOMPARE(Grid("DBG_Liste")->MaxRows(), vehicles + 1);
    QCOMPARE(Grid("DBG_Liste")->ActiveRow(), 1);
    QCOMPARE(Box("CTX_IMMAT")->Text(), Cell("DBG_Liste", 1, 1));
}

/// They and the customer's name are renewed where the record is entered from the list.
void RecordCommandsTest::RefreshOnTheRecordKeepsTheVisitsOfTheVehicleBefore() {
    OpenRecordOf(kToyota);
    const QString customer = Box("CTX_RSCLI")->Text();
    PressKey(Qt::Key_F5);
    const QString first = Box("CTX_IMMAT")->Text();
    QVERIFY(first != kToyota);
    QCOMPARE(Grid("DBG_DETAIL")->MaxRows(), 3);
    QCOMPARE(Cell("DBG_DETAIL", 1, 1), QStringLiteral("CT"));
    QCOMPARE(Box("CTX_RSCLI")->Text(), customer);
    PressKey(Qt::Key_F8);
    OpenRecordOf(first);
    QCOMPARE(Grid("DBG_DETAIL")->MaxRows(),
             static_cast<int>(
                 StoredRows(program_->DataFile(), "TVEH_DETAIL", QStringLiteral("TVEH_DETAIL_Immat"), first)
                     .size()));
}

void RecordCommandsTest::EveryCommandSaysWhatItDoes() {
    QCOMPARE(Button("Cmd_ADD")->toolTip(), QStringLiteral("Saisir une nouvelle fiche"));
    QCOMPARE(Button("Cmd_Update")->toolTip(), QStringLiteral("Enregistrer"));
    QCOMPARE(Button("Cmd_Annul")->toolTip(), QStringLiteral("Annuler"));
    QCOMPARE(Button("Cmd_Delete")->toolTip(), QStringLiteral("Supprimer l'affaire"));
    QCOMPARE(Button("CMD_REFRESH")->toolTip(), QStringLiteral("Actualiser"));
}

void RecordCommandsTest::EveryMessageIsTranslated() {
    support::RaiseTranslation({{u"Ce véhicule existe déjà !!!", u"Taken"},
                               {u"Ce code client est inconnu dans la table des Clients !", u"Unknown"},
                               {u"Confirmez-vous la suppression de cette fiche ?", u"Delete?"},
                               {u"Enregistrez ou annulez d'abord votre saisie !", u"Save first!"},
                               {u"Enregistrez ou annulez d'abord votre saisie", u"Save first"}});
    support::BoxAnswerer boxes;
    boxes.AnswerNo();
    PressKey(Qt::Key_D, Qt::ControlModifier);
    OpenRecordOf(kToyota);
    TypeOver(Box("CTX_CODCLI"), QStringLiteral("ZZZ"));
    PressKey(Qt::Key_Return);
    PressKey(Qt::Key_D, Qt::ControlModifier);
    for (const Qt::Key key : {Qt::Key_F5, Qt::Key_F12, Qt::Key_F8, Qt::Key_F9}) {
        PressKey(key);
    }
    PressKey(Qt::Key_N, Qt::ControlModifier);
    TypeOver(Box("CTX_IMMAT"), kDacia);
    PressKey(Qt::Key_Return);
    CompareBoxes(boxes,
                 {"Delete?", "Unknown", "Save first!", "Save first!", "Save first", "Save first", "Taken "});
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    RecordCommandsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "record_commands_test.moc"
