// The list of vehicles.
#include "vehicle_form_fixture.h"

using namespace quardele;
using namespace quardele::tests;

namespace {

bool ItalicHeading(int column) {
    forms::Grid& list = *Grid("DBG_Liste");
    list.SetRow(0);
    list.SetCol(column);
    return list.FontItalic();
}

int ItalicHeadings() {
    int count = 0;
    for (int column = 1; column <= Grid("DBG_Liste")->MaxCols(); ++column) {
        count += ItalicHeading(column) ? 1 : 0;
    }
    return count;
}

QPoint CellCenter(int column, int row) {
    const forms::Grid* const list = Grid("DBG_Liste");
    return list->visualRect(list->model()->index(row - 1, column - 1)).center();
}

}  // namespace

class ListTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void init();
    void cleanup() { program_.reset(); }

    void ItShowsEveryVehicle();
    void ItsColumnsAreBoundAndLocked();
    void ItCannotBeTypedInto();
    void AClickMarksTheActiveColumn();
    void RefreshGoesBackToTheFirstVehicle();

 private:
    std::unique_ptr<RunningProgram> program_;
};

void ListTest::init() {
    program_ = std::make_unique<RunningProgram>();
    program_->OpenVehicles();
}

void ListTest::ItShowsEveryVehicle() {
    QCOMPARE(Grid("DBG_Liste")->MaxRows(), 1500);
    Data("DBD_TVEH")->Recordset()->FindFirst(u"TVEH_IMMAT = '2107 RC 59'");
    const int row = Grid("DBG_Liste")->ActiveRow();
    QCOMPARE(Cell("DBG_Liste", 1, row), QStringLiteral("2107 RC 59"));
    QCOMPARE(Cell("DBG_Liste", 2, row), QStringLiteral("DACIA"));
    QCOMPARE(Cell("DBG_Liste", 3, row), QStringLiteral("C0331"));
    QCOMPARE(Cell("DBG_Liste", 4, row), QStringLiteral("Dokker Van"));
    QCOMPARE(Cell("DBG_Liste", 5, row), QStringLiteral("25/06/2021"));
    QCOMPARE(Cell("DBG_Liste", 6, row), QStringLiteral("40903"));
}

void ListTest::ItsColumnsAreBoundAndLocked() {
    forms::Grid& list = *Grid("DBG_Liste");
    QCOMPARE(list.MaxCols(), 19);
    const QStringList first{"TVEH_IMMAT", "TVEH_MARQUE", "TVEH_CODCLI", "TVEH_ComplIdent"};
    for (int column = 1; column <= 19; ++column) {
        list.SetCol(column);
        list.SetRow(1);
        QCOMPARE(list.DataField(),
                 column <= 4 ? first[column - 1] : QStringLiteral("TVEH_USER%1").arg(column - 4));
        QVERIFY(list.Lock());
    }
    QCOMPARE(Cell("DBG_Liste", 1, 0), QStringLiteral("Immatriculation"));
    QCOMPARE(Cell("DBG_Liste", 4, 0), QStringLiteral("Compl. Ident."));
    QVERIFY(!list.RowHeader());
}

void ListTest::ItCannotBeTypedInto() {
    const QString before = Cell("DBG_Liste", 1, 1);
    QTest::keyClicks(forms::Screen::ActiveControl(), QStringLiteral("xyz"));
    QCOMPARE(Cell("DBG_Liste", 1, 1), before);
    QVERIFY(!Grid("DBG_Liste")->ChangeMade());
}

void ListTest::AClickMarksTheActiveColumn() {
    QTest::mouseClick(Grid("DBG_Liste")->viewport(), Qt::LeftButton, Qt::NoModifier, CellCenter(2, 3));
    QVERIFY(ItalicHeading(2));
    QTest::mouseClick(Grid("DBG_Liste")->viewport(), Qt::LeftButton, Qt::NoModifier, CellCenter(3, 4));
    QVERIFY(ItalicHeading(3));
    QCOMPARE(ItalicHeadings(), 1);
}

void ListTest::RefreshGoesBackToTheFirstVehicle() {
    const QString first = Box("CTX_IMMAT")->Text();
    QVERIFY(!first.isEmpty());
    PressKey(Qt::Key_Down);
    QVERIFY(Box("CTX_IMMAT")->Text() != first);
    PressKey(Qt::Key_F5);
    QCOMPARE(Box("CTX_IMMAT")->Text(), first);
    QCOMPARE(Grid("DBG_Liste")->MaxRows(), 1500);
    QCOMPARE(Grid("DBG_Liste")->ActiveRow(), 1);
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    ListTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "list_test.moc"
