// A data file without a vehicle, from the opening of the form on.
#include "other_operator.h"
#include "stored_rows.h"
#include "vehicle_form_fixture.h"

using namespace quardele;
using namespace quardele::tests;

class EmptyFileTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void init();
    void cleanup() { program_.reset(); }

    void TheListIsEmptyAndHasTheFocus();
    void PrintingGivesTheListTheFocusOnly();
    void TheRecordIsBlank();
    void SavingWithoutAVehicleFails();
    void TheFirstVehicleIsTypedAndSaved();

 private:
    std::unique_ptr<RunningProgram> program_;
};

void EmptyFileTest::init() {
    program_ = std::make_unique<RunningProgram>();
    ExecuteElsewhere(program_->DataFile(), QStringLiteral("delete from TVEH"));
    program_->OpenVehicles();
}

void EmptyFileTest::TheListIsEmptyAndHasTheFocus() {
    support::BoxAnswerer boxes;
    QCOMPARE(Grid("DBG_Liste")->MaxRows(), 0);
    QCOMPARE(forms::Screen::ActiveControl(), Grid("DBG_Liste"));
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_End, Qt::Key_F5, Qt::Key_F8}) {
        PressKey(key);
    }
    CompareBoxes(boxes, {});
    QCOMPARE(Tabs()->Tab(), kListTab);
}

void EmptyFileTest::PrintingGivesTheListTheFocusOnly() {
    support::BoxAnswerer boxes;
    forms::SetFocus(Button("Cmd_ToolBar_0"));
    QVERIFY(forms::Screen::ActiveControl() != Grid("DBG_Liste"));
    Press("Cmd_ToolBar_3");
    QVERIFY(QApplication::activeModalWidget() == nullptr);
    CompareBoxes(boxes, {});
    QCOMPARE(Form().Tag(), QString());
    QCOMPARE(forms::Screen::ActiveControl(), Grid("DBG_Liste"));
}

void EmptyFileTest::TheRecordIsBlank() {
    support::BoxAnswerer boxes;
    PressKey(Qt::Key_Return);
    QCOMPARE(Tabs()->Tab(), kRecordTab);
    for (const char* box : {"CTX_IMMAT", "CTX_MARQUE", "CTX_ComplIdent", "CTX_CODCLI", "CTX_RSCLI"}) {
        QCOMPARE(Box(box)->Text(), QString());
    }
    for (int number = 1; number <= 22; ++number) {
        QCOMPARE(UserBox(number)->Text(), QString());
    }
    QCOMPARE(Grid("DBG_DETAIL")->MaxRows(), 0);
    PressKey(Qt::Key_F8);
    CompareBoxes(boxes, {});
    QCOMPARE(Tabs()->Tab(), kListTab);
}

void EmptyFileTest::SavingWithoutAVehicleFails() {
    PressKey(Qt::Key_Return);
    support::BoxAnswerer boxes;
    PressKey(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
    const QString& text = boxes.Shown().front().text;
    QVERIFY2(text.startsWith(QStringLiteral("Cmd_Update Err. 3021 : ")), qPrintable(text));
}

void EmptyFileTest::TheFirstVehicleIsTypedAndSaved() {
    SKIP_WITHOUT_INDEPENDENT_READER();
    const QString registration = QStringLiteral("ZY-001-AA");
    support::BoxAnswerer boxes;
    PressKey(Qt::Key_N, Qt::ControlModifier);
    QCOMPARE(forms::Screen::ActiveControl(), Box("CTX_IMMAT"));
    QTest::keyClicks(Box("CTX_IMMAT"), registration);
    PressKey(Qt::Key_S, Qt::ControlModifier);
    PressKey(Qt::Key_F8);
    CompareBoxes(boxes, {});
    QCOMPARE(Grid("DBG_Liste")->MaxRows(), 1);
    QCOMPARE(Cell("DBG_Liste", 1, 1), registration);
    QCOMPARE(StoredRows(program_->DataFile(), "TVEH", QStringLiteral("TVEH_IMMAT"), registration).size(),
             std::size_t{1});
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    EmptyFileTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "empty_file_test.moc"
