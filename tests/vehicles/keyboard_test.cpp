// An operator who never touches the mouse.
#include "stored_rows.h"
#include "vehicle_form_fixture.h"

using namespace quardele;
using namespace quardele::tests;

namespace {

const QString kNew = QStringLiteral("ZY-001-AA");

/// To whatever has the focus, an open cell too.
void Type(const QString& text) {
    QTest::keyClicks(QApplication::focusWidget(), text);
}

void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    QCoreApplication::processEvents();
}

void TypeAndEnter(const QStringList& texts) {
    for (const QString& text : texts) {
        Type(text);
        Key(Qt::Key_Return);
    }
}

}  // namespace

class KeyboardTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void init();
    void cleanup() { program_.reset(); }

    void ANewVehicleWithTwoVisitsFromTheListAndBack();
    void ARecordIsChangedAndGivenUpAgain();
    void AVehicleIsDeleted();

 private:
    std::unique_ptr<RunningProgram> program_;
};

void KeyboardTest::init() {
    program_ = std::make_unique<RunningProgram>();
    program_->OpenVehicles();
    QCOMPARE(forms::Screen::ActiveControl(), Grid("DBG_Liste"));
}

void KeyboardTest::ANewVehicleWithTwoVisitsFromTheListAndBack() {
    SKIP_WITHOUT_INDEPENDENT_READER();
    support::BoxAnswerer boxes;
    Key(Qt::Key_N, Qt::ControlModifier);
    TypeAndEnter({kNew, QStringLiteral("LADA"), QStringLiteral("Niva"), QStringLiteral("C0000")});
    QCOMPARE(Box("CTX_RSCLI")->Text(), QStringLiteral("BOULANGERIE PÂTISSERIE MOREL 1"));
    QCOMPARE(forms::Screen::ActiveControl(), Grid("DBG_DETAIL"));
    TypeAndEnter({QStringLiteral("CT"), QStringLiteral("24"), QStringLiteral("03/02/2026")});
    TypeAndEnter({QStringLiteral("VID"), QStringLiteral("12")});
    Type(QStringLiteral("04/02/2026"));
    Key(Qt::Key_S, Qt::ControlModifier);
    QVERIFY(Grid("DBG_DETAIL")->MaxRows() == 2);
    Key(Qt::Key_F8);
    CompareBoxes(boxes, {});
    QCOMPARE(Tabs()->Tab(), kListTab);
    QCOMPARE(forms::Screen::ActiveControl(), Grid("DBG_Liste"));
    QCOMPARE(Cell("DBG_Liste", 1, Grid("DBG_Liste")->ActiveRow()), kNew);

    const auto vehicle = StoredRows(program_->DataFile(), "TVEH", QStringLiteral("TVEH_IMMAT"), kNew);
    QCOMPARE(vehicle.size(), std::size_t{1});
    QCOMPARE(vehicle[0].at(QStringLiteral("TVEH_MARQUE")), QStringLiteral("LADA"));
    QCOMPARE(vehicle[0].at(QStringLiteral("TVEH_ComplIdent")), QStringLiteral("Niva"));
    QCOMPARE(vehicle[0].at(QStringLiteral("TVEH_CODCLI")), QStringLiteral("C0000"));
    const auto visits =
        StoredRows(program_->DataFile(), "TVEH_DETAIL", QStringLiteral("TVEH_DETAIL_Immat"), kNew);
    QCOMPARE(visits.size(), std::size_t{2});
    QCOMPARE(visits[0].at(QStringLiteral("TVEH_DETAIL_TypTrav")), QStringLiteral("CT"));
    QCOMPARE(visits[0].at(QStringLiteral("TVEH_DETAIL_PERIOD")), QStringLiteral("24"));
    QCOMPARE(visits[0].at(QStringLiteral("TVEH_DETAIL_DATVIS")), QStringLiteral("02/03/26 00:00:00"));
    QCOMPARE(visits[1].at(QStringLiteral("TVEH_DETAIL_TypTrav")), QStringLiteral("VID"));
    QCOMPARE(visits[1].at(QStringLiteral("TVEH_DETAIL_DATVIS")), QStringLiteral("02/04/26 00:00:00"));
}

void KeyboardTest::ARecordIsChangedAndGivenUpAgain() {
    Key(Qt::Key_Down);
    Key(Qt::Key_Return);
    const QString make = Box("CTX_MARQUE")->Text();
    Key(Qt::Key_Return);
    Type(QStringLiteral("LADA"));
    QCOMPARE(Box("CTX_MARQUE")->Text(), QStringLiteral("LADA"));
    Key(Qt::Key_F9);
    QCOMPARE(Box("CTX_MARQUE")->Text(), make);
    support::BoxAnswerer boxes;
    Key(Qt::Key_F8);
    CompareBoxes(boxes, {});
    QCOMPARE(Tabs()->Tab(), kListTab);
    QCOMPARE(Grid("DBG_Liste")->ActiveRow(), 2);
}

void KeyboardTest::AVehicleIsDeleted() {
    const int vehicles = Grid("DBG_Liste")->MaxRows();
    const QString second = Cell("DBG_Liste", 1, 2);
    support::BoxAnswerer boxes;
    Key(Qt::Key_D, Qt::ControlModifier);
    CompareBoxes(boxes, {QStringLiteral("Confirmez-vous la suppression de cette fiche ?")});
    QCOMPARE(Grid("DBG_Liste")->MaxRows(), vehicles - 1);
    QCOMPARE(Cell("DBG_Liste", 1, 1), second);
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    KeyboardTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "keyboard_test.moc"
