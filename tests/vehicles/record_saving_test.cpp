// Saving and cancelling a vehicle's record together with its visits, and what is in the file afterwards.
#include <QSignalSpy>

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
const QString kError = QStringLiteral("erreur");

// Columns of the visits.
constexpr int kType = 1;
constexpr int kPeriod = 2;
constexpr int kDate = 3;
constexpr int kLink = 4;

dao::EditMode VehicleMode() {
    return Data("DBD_TVEH")->EditMode();
}

/// One box was shown: that of a failed command.
void CompareFailure(const support::BoxAnswerer& boxes, const QString& start) {
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
    const support::ShownBox& box = boxes.Shown().front();
    QVERIFY2(box.text.startsWith(start) && box.text.size() > start.size(), qPrintable(box.text));
    QCOMPARE(box.icon, kError);
}

bool IsFlagged(int row) {
    forms::Grid& visits = *Grid("DBG_DETAIL");
    visits.SetRow(row);
    for (int column = 1; column <= visits.MaxCols(); ++column) {
        visits.SetCol(column);
        if (visits.ChangedFlag()) {
            return true;
        }
    }
    return false;
}

/// From the last of the three visits, by Enter in its date.
void OpenNextVisit() {
    TypeVisit(kDate, 3, QStringLiteral("30/08/2025"));
    QCOMPARE(Grid("DBG_DETAIL")->MaxRows(), 4);
}

/// Where no key can bring it: the cells of dates refuse a text that is none, and write short ones out.
void PutIntoDate(int row, const QString& text) {
    forms::Grid& visits = *Grid("DBG_DETAIL");
    visits.SetCol(kDate);
    visits.SetRow(row);
    visits.SetText(text);
    visits.SetChangeMade(true);
}

}  // namespace

class RecordSavingTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void init();
    void cleanup() { program_.reset(); }

    void SavingWritesTheChangedBoxes();
    void SavingWithoutAChangeWritesNothingElse();
    void SavingKeepsTheMarkOfTheVehicle();
    void ANewVehicleIsSavedWithItsVisits();
    void ANewVehicleIsCurrentAfterItsSave();
    void AnUnknownCustomerWarnsOnceAndIsSaved();
    void APressWhoseReleaseGoesToTheWarningSavesOnce();
    void VisitsFollowAChangedRegistration();
    void ADateIsWrittenBackAsTheTextOfItsDate();
    void AnEmptyVisitAtTheEndGoes();
    void AnEmptyVisitBetweenOthersStays();
    void VisitsThatOthersDeletedAreAFailure();

    void ATakenRegistrationFails();
    void AnEmptyRegistrationFailsAndCanBeMadeGood();
    void ATextThatIsNoDateFailsBehindTheRecord();
    void ALockedRecordFailsAndSavesLater();
    void ALockedVisitFailsBehindTheRecord();
    void AFileThatTurnedReadOnlyFailsAndSavesLater();

    void CancellingANewRecordGoesBackToThePreviousOne();
    void CancellingWithoutAChangeDoesNoHarm();
    void CancellingShowsTheStoredValuesAgain();
    void CancellingAfterAFailedSaveGivesUpTheEntry();
    void CancellingAfterANewRecordWasSavedKeepsItsVisits();
    void CancellingAfterANewRecordsVisitFailedKeepsThePreviousVisits();
    void CancellingWithAnUnknownCustomerGoesToItsCode();
    void CancellingWithoutAVehicleFails();
    void CancellingALockedRecordFails();
    void CancellingALockedVisitFailsBehindTheRecord();
    void CancellingWritesNothingAndWorksInAFileThatTurnedReadOnly();
    void FailuresAreToldInPlainWordsUnderATranslation();

 private:
    [[nodiscard]] std::vector<StoredRow> Vehicle(const QString& registration) const;
    [[nodiscard]] std::vector<StoredRow> Visits(const QString& registration) const;
    /// Types of work of the vehicle's visits, and of visits without one, in their order in the alphabet.
    [[nodiscard]] QString StoredCodes() const;

    std::unique_ptr<RunningProgram> program_;
};

void RecordSavingTest::init() {
    SKIP_WITHOUT_INDEPENDENT_READER();
    program_ = std::make_unique<RunningProgram>();
    program_->OpenVehicles();
    OpenRecordOf(kToyota);
}

std::vector<StoredRow> RecordSavingTest::Vehicle(const QString& registration) const {
    return StoredRows(program_->DataFile(), "TVEH", QStringLiteral("TVEH_IMMAT"), registration);
}

std::vector<StoredRow> RecordSavingTest::Visits(const QString& registration) const {
    return StoredRows(program_->DataFile(), "TVEH_DETAIL", QStringLiteral("TVEH_DETAIL_Immat"), registration);
}

QString RecordSavingTest::StoredCodes() const {
    QStringList codes;
    for (const StoredRow& visit : Visits(kToyota)) {
        codes.append(visit.at(QStringLiteral("TVEH_DETAIL_TypTrav")));
    }
    codes.sort();
    return codes.join(u' ');
}

// Saving.

void RecordSavingTest::SavingWritesTheChangedBoxes() {
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("RENAULT"));
    TypeOver(UserBox(22), QStringLiteral("vingt-deux"));
    auto* const note = Control<forms::MemoBox>("CTX_Note1");
    forms::SetFocus(note);
    note->selectAll();
    QTest::keyClicks(note, QStringLiteral("a revoir"));
    support::BoxAnswerer boxes;
    PressKey(Qt::Key_S, Qt::ControlModifier);
    CompareBoxes(boxes, {});
    QVERIFY(!Box("CTX_MARQUE")->DataChanged());
    QVERIFY(!note->DataChanged());
    QCOMPARE(VehicleMode(), dao::EditMode::None);
    QCOMPARE(Cell("DBG_Liste", 2, Grid("DBG_Liste")->ActiveRow()), QStringLiteral("RENAULT"));
    const StoredRow stored = Vehicle(kToyota).at(0);
    QCOMPARE(stored.at(QStringLiteral("TVEH_MARQUE")), QStringLiteral("RENAULT"));
    QCOMPARE(stored.at(QStringLiteral("TVEH_USER22")), QStringLiteral("vingt-deux"));
    QCOMPARE(stored.at(QStringLiteral("TVEH_Note1")), QStringLiteral("a revoir"));
    QCOMPARE(stored.at(QStringLiteral("TVEH_ComplIdent")), QStringLiteral("Hilux"));
}

void RecordSavingTest::SavingWithoutAChangeWritesNothingElse() {
    const std::vector<StoredRow> vehicle = Vehicle(kToyota);
    const std::vector<StoredRow> visits = Visits(kToyota);
    support::BoxAnswerer boxes;
    Press("Cmd_Update");
    CompareBoxes(boxes, {});
    QCOMPARE(Box("CTX_IMMAT")->Text(), kToyota);
    QVERIFY(Vehicle(kToyota) == vehicle);
    QVERIFY(Visits(kToyota) == visits);
}

void RecordSavingTest::SavingKeepsTheMarkOfTheVehicle() {
    support::BoxAnswerer boxes;
    PressKey(Qt::Key_F8);
    const QString marked = QStringLiteral("1466 WP 51");
    OpenRecordOf(marked);
    const QString mark = Vehicle(marked).at(0).at(QStringLiteral("TVEH_EDIT"));
    QVERIFY(mark != QStringLiteral("0") && !mark.isEmpty());
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("RENAULT"));
    Press("Cmd_Update");
    CompareBoxes(boxes, {});
    QCOMPARE(Vehicle(marked).at(0).at(QStringLiteral("TVEH_MARQUE")), QStringLiteral("RENAULT"));
    QCOMPARE(Vehicle(marked).at(0).at(QStringLiteral("TVEH_EDIT")), mark);
}

void RecordSavingTest::ANewVehicleIsSavedWithItsVisits() {
    Press("Cmd_ADD");
    TypeOver(Box("CTX_IMMAT"), kNew);
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("LADA"));
    ClickBehindVisits();
    for (const char* text : {"CT", "24", "03/02/2026", "VID"}) {
        TypeIntoCell(QString::fromLatin1(text));
    }
    support::BoxAnswerer boxes;
    Press("Cmd_Update");
    CompareBoxes(boxes, {});
    QVERIFY(!Grid("DBG_DETAIL")->ChangeMade());
    QCOMPARE(Vehicle(kNew).at(0).at(QStringLiteral("TVEH_MARQUE")), QStringLiteral("LADA"));
    QCOMPARE(Vehicle(kNew).at(0).at(QStringLiteral("TVEH_EDIT")), QStringLiteral("0"));
    const std::vector<StoredRow> visits = Visits(kNew);
    QCOMPARE(visits.size(), std::size_t{2});
    QCOMPARE(visits[0].at(QStringLiteral("TVEH_DETAIL_TypTrav")), QStringLiteral("CT"));
    QCOMPARE(visits[0].at(QStringLiteral("TVEH_DETAIL_PERIOD")), QStringLiteral("24"));
    QCOMPARE(visits[0].at(QStringLiteral("TVEH_DETAIL_DATVIS")), QStringLiteral("02/03/26 00:00:00"));
    QCOMPARE(visits[1].at(QStringLiteral("TVEH_DETAIL_TypTrav")), QStringLiteral("VID"));
    QCOMPARE(visits[1].at(QStringLiteral("TVEH_DETAIL_DATVIS")), QString());
    // Those of the vehicle before are where they were.
    QCOMPARE(Visits(kToyota).size(), std::size_t{3});
}

void RecordSavingTest::ANewVehicleIsCurrentAfterItsSave() {
    const int vehicles = Grid("DBG_Liste")->MaxRows();
    support::BoxAnswerer boxes;
    Press("Cmd_ADD");
    TypeOver(Box("CTX_IMMAT"), kNew);
    Press("Cmd_Update");
    CompareBoxes(boxes, {});
    QCOMPARE(VehicleMode(), dao::EditMode::None);
    QCOMPARE(Box("CTX_IMMAT")->Text(), kNew);
    QVERIFY(!Box("CTX_IMMAT")->DataChanged());
    QCOMPARE(Grid("DBG_Liste")->MaxRows(), vehicles + 1);
    QCOMPARE(Cell("DBG_Liste", 1, Grid("DBG_Liste")->ActiveRow()), kNew);
    PressKey(Qt::Key_F8);
    CompareBoxes(boxes, {});
    QCOMPARE(Tabs()->Tab(), kListTab);
}

void RecordSavingTest::AnUnknownCustomerWarnsOnceAndIsSaved() {
    TypeOver(Box("CTX_CODCLI"), QStringLiteral("ZZZ"));
    support::BoxAnswerer boxes;
    Press("Cmd_Update");
    CompareBoxes(boxes, {QStringLiteral("Ce code client est inconnu dans la table des Clients !")});
    QCOMPARE(Vehicle(kToyota).at(0).at(QStringLiteral("TVEH_CODCLI")), QStringLiteral("ZZZ"));
    forms::SetFocus(Box("CTX_CODCLI"));
    PressKey(Qt::Key_Return);
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
}

/// The box stands under the pointer by the time the mouse button comes up.
void RecordSavingTest::APressWhoseReleaseGoesToTheWarningSavesOnce() {
    TypeOver(Box("CTX_CODCLI"), QStringLiteral("ZZZ"));
    forms::Button* const save = Button("Cmd_Update");
    const QSignalSpy clicks(save, &forms::Button::Click);
    support::BoxAnswerer boxes;
    QTest::mousePress(save, Qt::LeftButton);
    QCoreApplication::processEvents();
    CompareBoxes(boxes, {QStringLiteral("Ce code client est inconnu dans la table des Clients !")});
    QVERIFY(!save->isDown());
    QCOMPARE(clicks.size(), 1);
    QCOMPARE(forms::Screen::ActiveControl(), save);
    QCOMPARE(Vehicle(kToyota).at(0).at(QStringLiteral("TVEH_CODCLI")), QStringLiteral("ZZZ"));
}

void RecordSavingTest::VisitsFollowAChangedRegistration() {
    TypeOver(Box("CTX_IMMAT"), kNew);
    support::BoxAnswerer boxes;
    Press("Cmd_Update");
    CompareBoxes(boxes, {});
    QVERIFY(Vehicle(kToyota).empty());
    QCOMPARE(Vehicle(kNew).at(0).at(QStringLiteral("TVEH_MARQUE")), QStringLiteral("TOYOTA"));
    QVERIFY(Visits(kToyota).empty());
    QCOMPARE(Visits(kNew).size(), std::size_t{3});
    QCOMPARE(Cell("DBG_DETAIL", kLink, 1), kNew);
    QCOMPARE(Cell("DBG_Liste", 1, Grid("DBG_Liste")->ActiveRow()), kNew);
}

void RecordSavingTest::ADateIsWrittenBackAsTheTextOfItsDate() {
    support::BoxAnswerer boxes;
    PutIntoDate(1, QStringLiteral("5-3-26"));
    Press("Cmd_Update");
    CompareBoxes(boxes, {});
    QCOMPARE(Cell("DBG_DETAIL", kDate, 1), QStringLiteral("05/03/2026"));
    QCOMPARE(Visits(kToyota).at(0).at(QStringLiteral("TVEH_DETAIL_DATVIS")),
             QStringLiteral("03/05/26 00:00:00"));
}

void RecordSavingTest::AnEmptyVisitAtTheEndGoes() {
    support::BoxAnswerer boxes;
    OpenNextVisit();
    TypeVisit(kPeriod, 4, QStringLiteral("12"));
    Press("Cmd_Update");
    CompareBoxes(boxes, {});
    QCOMPARE(Grid("DBG_DETAIL")->MaxRows(), 3);
    QCOMPARE(StoredCodes(), QStringLiteral("CT LIM VID"));
}

void RecordSavingTest::AnEmptyVisitBetweenOthersStays() {
    OpenNextVisit();
    TypeVisit(kPeriod, 4, QStringLiteral("12"));
    TypeVisit(kDate, 4, QStringLiteral("05/02/2026"));
    TypeIntoCell(QStringLiteral("BAT"));
    TypeIntoCell(QStringLiteral("48"));
    QVERIFY(IsFlagged(4));
    support::BoxAnswerer boxes;
    // The second time there is nothing left of it to save either.
    for (int time = 1; time <= 2; ++time) {
        Press("Cmd_Update");
        CompareBoxes(boxes, {});
        QCOMPARE(Grid("DBG_DETAIL")->MaxRows(), 5);
        QVERIFY(!IsFlagged(4));
        QCOMPARE(Cell("DBG_DETAIL", kType, 4), QString());
        QCOMPARE(Cell("DBG_DETAIL", kPeriod, 4), QStringLiteral("12"));
        QCOMPARE(Cell("DBG_DETAIL", kDate, 4), QStringLiteral("05/02/2026"));
        QCOMPARE(Cell("DBG_DETAIL", kType, 5), QStringLiteral("BAT"));
        QCOMPARE(StoredCodes(), QStringLiteral("BAT CT LIM VID"));
    }
}

void RecordSavingTest::VisitsThatOthersDeletedAreAFailure() {
    ExecuteElsewhere(program_->DataFile(),
                     QStringLiteral("delete from TVEH_DETAIL where TVEH_DETAIL_Immat = '%1'").arg(kToyota));
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("RENAULT"));
    support::BoxAnswerer boxes;
    Press("Cmd_Update");
    CompareFailure(boxes, QStringLiteral("Cmd_Update Err. 3167 : "));
    QCOMPARE(Vehicle(kToyota).at(0).at(QStringLiteral("TVEH_MARQUE")), QStringLiteral("RENAULT"));
}

// Failures of saving.

void RecordSavingTest::ATakenRegistrationFails() {
    TypeOver(Box("CTX_IMMAT"), kDacia);
    support::BoxAnswerer boxes;
    Press("Cmd_Update");
    CompareFailure(boxes, QStringLiteral("Cmd_Update Err. 3022 : "));
    QCOMPARE(VehicleMode(), dao::EditMode::Edit);
    QCOMPARE(Box("CTX_IMMAT")->Text(), kDacia);
    QVERIFY(Box("CTX_IMMAT")->DataChanged());
    QCOMPARE(Cell("DBG_DETAIL", kLink, 1), kToyota);
    QVERIFY(!IsFlagged(1));
    QCOMPARE(Vehicle(kToyota).size(), std::size_t{1});
    QCOMPARE(Visits(kToyota).size(), std::size_t{3});

    TypeOver(Box("CTX_IMMAT"), kNew);
    Press("Cmd_Update");
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
    QCOMPARE(Vehicle(kNew).size(), std::size_t{1});
    QCOMPARE(Visits(kNew).size(), std::size_t{3});
}

void RecordSavingTest::AnEmptyRegistrationFailsAndCanBeMadeGood() {
    Press("Cmd_ADD");
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("LADA"));
    support::BoxAnswerer boxes;
    Press("Cmd_Update");
    CompareFailure(boxes, QStringLiteral("Cmd_Update Err. 3058 : "));
    QCOMPARE(VehicleMode(), dao::EditMode::Add);
    QCOMPARE(Box("CTX_MARQUE")->Text(), QStringLiteral("LADA"));
    QVERIFY(Vehicle(QString()).empty());

    TypeOver(Box("CTX_IMMAT"), kNew);
    Press("Cmd_Update");
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
    QCOMPARE(Vehicle(kNew).at(0).at(QStringLiteral("TVEH_MARQUE")), QStringLiteral("LADA"));
}

void RecordSavingTest::ATextThatIsNoDateFailsBehindTheRecord() {
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("RENAULT"));
    PutIntoDate(1, QStringLiteral("demain"));
    support::BoxAnswerer boxes;
    Press("Cmd_Update");
    CompareFailure(boxes, QStringLiteral("Cmd_Update Err. 13 : "));
    QCOMPARE(Vehicle(kToyota).at(0).at(QStringLiteral("TVEH_MARQUE")), QStringLiteral("RENAULT"));
    QVERIFY(Grid("DBG_DETAIL")->ChangeMade());
    QCOMPARE(Cell("DBG_DETAIL", kDate, 1), QStringLiteral("demain"));
}

void RecordSavingTest::ALockedRecordFailsAndSavesLater() {
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("RENAULT"));
    support::BoxAnswerer boxes;
    {
        const RowHeldElsewhere held(QStringLiteral("TVEH"), QStringLiteral("TVEH_IMMAT = '%1'").arg(kToyota));
        Press("Cmd_Update");
        CompareFailure(boxes, QStringLiteral("Cmd_Update Err. 3260 : "));
        QCOMPARE(Box("CTX_MARQUE")->Text(), QStringLiteral("RENAULT"));
        QVERIFY(Box("CTX_MARQUE")->DataChanged());
        QCOMPARE(Vehicle(kToyota).at(0).at(QStringLiteral("TVEH_MARQUE")), QStringLiteral("TOYOTA"));
    }
    Press("Cmd_Update");
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
    QCOMPARE(Vehicle(kToyota).at(0).at(QStringLiteral("TVEH_MARQUE")), QStringLiteral("RENAULT"));
}

void RecordSavingTest::ALockedVisitFailsBehindTheRecord() {
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("RENAULT"));
    QCOMPARE(Cell("DBG_DETAIL", kType, 2), QStringLiteral("LIM"));
    TypeVisit(kPeriod, 2, QStringLiteral("36"));
    support::BoxAnswerer boxes;
    {
        const RowHeldElsewhere held(
            QStringLiteral("TVEH_DETAIL"),
            QStringLiteral("TVEH_DETAIL_Immat = '%1' and TVEH_DETAIL_TypTrav = 'LIM'").arg(kToyota));
        Press("Cmd_Update");
        CompareFailure(boxes, QStringLiteral("Cmd_Update Err. 3260 : "));
        QVERIFY(Grid("DBG_DETAIL")->ChangeMade());
        QCOMPARE(Cell("DBG_DETAIL", kPeriod, 2), QStringLiteral("36"));
        QCOMPARE(Vehicle(kToyota).at(0).at(QStringLiteral("TVEH_MARQUE")), QStringLiteral("RENAULT"));
    }
    Press("Cmd_Update");
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
    QVERIFY(!Grid("DBG_DETAIL")->ChangeMade());
    QCOMPARE(Visits(kToyota).at(2).at(QStringLiteral("TVEH_DETAIL_PERIOD")), QStringLiteral("36"));
}

void RecordSavingTest::AFileThatTurnedReadOnlyFailsAndSavesLater() {
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("RENAULT"));
    support::BoxAnswerer boxes;
    {
        const WriteProtection readOnly(program_->DataFile().parent_path());
        Press("Cmd_Update");
    }
    CompareFailure(boxes, QStringLiteral("Cmd_Update Err. 3027 : "));
    QCOMPARE(Box("CTX_MARQUE")->Text(), QStringLiteral("RENAULT"));
    QVERIFY(Box("CTX_MARQUE")->DataChanged());
    QCOMPARE(Vehicle(kToyota).at(0).at(QStringLiteral("TVEH_MARQUE")), QStringLiteral("TOYOTA"));
    Press("Cmd_Update");
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
    QCOMPARE(Vehicle(kToyota).at(0).at(QStringLiteral("TVEH_MARQUE")), QStringLiteral("RENAULT"));
}

// Cancelling.

void RecordSavingTest::CancellingANewRecordGoesBackToThePreviousOne() {
    const QString name = Box("CTX_RSCLI")->Text();
    Press("Cmd_ADD");
    TypeOver(Box("CTX_IMMAT"), kNew);
    TypeOver(Box("CTX_CODCLI"), QStringLiteral("C0000"));
    ClickBehindVisits();
    TypeIntoCell(QStringLiteral("CT"));
    support::BoxAnswerer boxes;
    PressKey(Qt::Key_F9);
    CompareBoxes(boxes, {});
    QCOMPARE(VehicleMode(), dao::EditMode::None);
    QCOMPARE(Box("CTX_IMMAT")->Text(), kToyota);
    QCOMPARE(Box("CTX_RSCLI")->Text(), name);
    QCOMPARE(Grid("DBG_DETAIL")->MaxRows(), 3);
    QVERIFY(!Grid("DBG_DETAIL")->ChangeMade());
    QVERIFY(Vehicle(kNew).empty());
    PressKey(Qt::Key_F8);
    CompareBoxes(boxes, {});
    QCOMPARE(Tabs()->Tab(), kListTab);
}

void RecordSavingTest::CancellingWithoutAChangeDoesNoHarm() {
    const std::vector<StoredRow> vehicle = Vehicle(kToyota);
    support::BoxAnswerer boxes;
    Press("Cmd_Annul");
    Press("Cmd_Annul");
    CompareBoxes(boxes, {});
    QCOMPARE(VehicleMode(), dao::EditMode::None);
    QCOMPARE(Data("DBD_DETAIL")->EditMode(), dao::EditMode::None);
    QCOMPARE(Box("CTX_IMMAT")->Text(), kToyota);
    QCOMPARE(Grid("DBG_DETAIL")->MaxRows(), 3);
    QVERIFY(Vehicle(kToyota) == vehicle);
}

void RecordSavingTest::CancellingShowsTheStoredValuesAgain() {
    const QString name = Box("CTX_RSCLI")->Text();
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("RENAULT"));
    TypeOver(Box("CTX_CODCLI"), QStringLiteral("C0000"));
    TypeVisit(kPeriod, 1, QStringLiteral("99"));
    OpenNextVisit();
    TypeIntoCell(QStringLiteral("BAT"));
    QCOMPARE(Grid("DBG_DETAIL")->MaxRows(), 4);
    support::BoxAnswerer boxes;
    Press("Cmd_Annul");
    CompareBoxes(boxes, {});
    QCOMPARE(Box("CTX_MARQUE")->Text(), QStringLiteral("TOYOTA"));
    QVERIFY(!Box("CTX_MARQUE")->DataChanged());
    QCOMPARE(Box("CTX_RSCLI")->Text(), name);
    QCOMPARE(Grid("DBG_DETAIL")->MaxRows(), 3);
    QCOMPARE(Cell("DBG_DETAIL", kPeriod, 1), QStringLiteral("24"));
    QVERIFY(!Grid("DBG_DETAIL")->ChangeMade());
}

void RecordSavingTest::CancellingAfterAFailedSaveGivesUpTheEntry() {
    TypeOver(Box("CTX_IMMAT"), kDacia);
    support::BoxAnswerer boxes;
    Press("Cmd_Update");
    Press("Cmd_Annul");
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
    QCOMPARE(VehicleMode(), dao::EditMode::None);
    QCOMPARE(Box("CTX_IMMAT")->Text(), kToyota);
    PressKey(Qt::Key_F8);
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
    QCOMPARE(Tabs()->Tab(), kListTab);
}

void RecordSavingTest::CancellingAfterANewRecordWasSavedKeepsItsVisits() {
    support::BoxAnswerer boxes;
    Press("Cmd_ADD");
    TypeOver(Box("CTX_IMMAT"), kNew);
    ClickBehindVisits();
    TypeIntoCell(QStringLiteral("BAT"));
    Press("Cmd_Update");
    Press("Cmd_Annul");
    CompareBoxes(boxes, {});
    QCOMPARE(Box("CTX_IMMAT")->Text(), kNew);
    QCOMPARE(Grid("DBG_DETAIL")->MaxRows(), 1);
    QCOMPARE(Cell("DBG_DETAIL", kType, 1), QStringLiteral("BAT"));
}

void RecordSavingTest::CancellingAfterANewRecordsVisitFailedKeepsThePreviousVisits() {
    const std::vector<StoredRow> before = Visits(kToyota);
    support::BoxAnswerer boxes;
    Press("Cmd_ADD");
    TypeOver(Box("CTX_IMMAT"), kNew);
    ClickBehindVisits();
    TypeIntoCell(QStringLiteral("CT"));
    TypeVisit(kDate, 1, QStringLiteral("03/02/2026"));
    TypeVisit(kType, 2, QStringLiteral("CT"));
    Press("Cmd_Update");
    CompareFailure(boxes, QStringLiteral("Cmd_Update Err. 3022 : "));
    QCOMPARE(Vehicle(kNew).size(), std::size_t{1});

    Press("Cmd_Annul");
    QCOMPARE(Box("CTX_IMMAT")->Text(), kNew);
    QCOMPARE(Grid("DBG_DETAIL")->MaxRows(), 1);
    QCOMPARE(Cell("DBG_DETAIL", kLink, 1), kNew);
    Press("Cmd_Update");
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
    QVERIFY(Visits(kToyota) == before);
    QCOMPARE(Visits(kNew).size(), std::size_t{1});
}

void RecordSavingTest::CancellingWithAnUnknownCustomerGoesToItsCode() {
    support::BoxAnswerer boxes;
    PressKey(Qt::Key_F8);
    ExecuteElsewhere(
        program_->DataFile(),
        QStringLiteral("update TVEH set TVEH_CODCLI = 'INCONNU' where TVEH_IMMAT = '%1'").arg(kToyota));
    PressKey(Qt::Key_F5);
    OpenRecordOf(kToyota);
    Box("CTX_RSCLI")->SetText(QStringLiteral("avant"));
    Press("Cmd_Annul");
    QCOMPARE(Box("CTX_RSCLI")->Text(), QString());
    QCOMPARE(forms::Screen::ActiveControl(), Box("CTX_CODCLI"));
    CompareBoxes(boxes, {});
}

void RecordSavingTest::CancellingWithoutAVehicleFails() {
    PressKey(Qt::Key_F8);
    ExecuteElsewhere(program_->DataFile(), QStringLiteral("delete from TVEH"));
    PressKey(Qt::Key_F5);
    Tabs()->SetTab(kRecordTab);
    support::BoxAnswerer boxes;
    Press("Cmd_Annul");
    CompareFailure(boxes, QStringLiteral("Cmd_Annul Err. 3021 : "));
}

void RecordSavingTest::CancellingALockedRecordFails() {
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("RENAULT"));
    support::BoxAnswerer boxes;
    {
        const RowHeldElsewhere held(QStringLiteral("TVEH"), QStringLiteral("TVEH_IMMAT = '%1'").arg(kToyota));
        Press("Cmd_Annul");
        CompareFailure(boxes, QStringLiteral("Cmd_Annul Err. 3260 : "));
        QCOMPARE(Box("CTX_MARQUE")->Text(), QStringLiteral("RENAULT"));
    }
    Press("Cmd_Annul");
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
    QCOMPARE(Box("CTX_MARQUE")->Text(), QStringLiteral("TOYOTA"));
}

void RecordSavingTest::CancellingALockedVisitFailsBehindTheRecord() {
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("RENAULT"));
    TypeVisit(kPeriod, 1, QStringLiteral("99"));
    support::BoxAnswerer boxes;
    {
        const RowHeldElsewhere held(
            QStringLiteral("TVEH_DETAIL"),
            QStringLiteral("TVEH_DETAIL_Immat = '%1' and TVEH_DETAIL_TypTrav = 'CT'").arg(kToyota));
        Press("Cmd_Annul");
        CompareFailure(boxes, QStringLiteral("Cmd_Annul Err. 3260 : "));
        QCOMPARE(VehicleMode(), dao::EditMode::None);
        QCOMPARE(Box("CTX_MARQUE")->Text(), QStringLiteral("TOYOTA"));
        QVERIFY(Grid("DBG_DETAIL")->ChangeMade());
        QCOMPARE(Cell("DBG_DETAIL", kPeriod, 1), QStringLiteral("99"));
    }
    Press("Cmd_Annul");
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
    QVERIFY(!Grid("DBG_DETAIL")->ChangeMade());
    QCOMPARE(Cell("DBG_DETAIL", kPeriod, 1), QStringLiteral("24"));
}

void RecordSavingTest::CancellingWritesNothingAndWorksInAFileThatTurnedReadOnly() {
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("RENAULT"));
    support::BoxAnswerer boxes;
    {
        const WriteProtection readOnly(program_->DataFile().parent_path());
        Press("Cmd_Annul");
    }
    CompareBoxes(boxes, {});
    QCOMPARE(Box("CTX_MARQUE")->Text(), QStringLiteral("TOYOTA"));
    QVERIFY(!Box("CTX_MARQUE")->DataChanged());
    QCOMPARE(VehicleMode(), dao::EditMode::None);
}

/// Neither the whole of them nor a part passes through the translation.
void RecordSavingTest::FailuresAreToldInPlainWordsUnderATranslation() {
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("RENAULT"));
    const RowHeldElsewhere held(QStringLiteral("TVEH"), QStringLiteral("TVEH_IMMAT = '%1'").arg(kToyota));
    const auto told = [] {
        support::BoxAnswerer boxes;
        Press("Cmd_Update");
        Press("Cmd_Annul");
        const std::vector<QString> texts = boxes.TakeTexts();
        return QStringList(texts.begin(), texts.end());
    };
    const QStringList french = told();
    QCOMPARE(french.size(), 2);
    QVERIFY2(french[0].startsWith(QStringLiteral("Cmd_Update Err. 3260 : ")), qPrintable(french[0]));
    QVERIFY2(french[1].startsWith(QStringLiteral("Cmd_Annul Err. 3260 : ")), qPrintable(french[1]));
    support::RaiseMarksFor(french +
                           QStringList{"Cmd_Update Err.", "Cmd_Annul Err.", french[0].section(u':', 1)});
    QCOMPARE(told(), french);
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    RecordSavingTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "record_saving_test.moc"
