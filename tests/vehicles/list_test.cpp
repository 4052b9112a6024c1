// The list of vehicles and its tools.
#include <functional>

#include <QHeaderView>

#include <listtools/grid_tools.h>

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

/// Stands in for the tools and writes down how each was run.
class ToolRecorder {
 public:
    ToolRecorder() : before_(listtools::TheToolRunner()) {
        listtools::TheToolRunner() = [this](int action, forms::Grid& grid, forms::DataControl& data) {
            tools.push_back(action);
            onTheList = onTheList && &grid == Grid("DBG_Liste") && &data == Data("DBD_TVEH");
            anchor = listtools::Anchor();
            position = Box("CTX_IMMAT")->Text();
            rows = data.Recordset()->RecordCount();
            if (during) {
                during();
            }
            return false;
        };
    }
    ~ToolRecorder() { listtools::TheToolRunner() = before_; }
    ToolRecorder(const ToolRecorder&) = delete;
    ToolRecorder& operator=(const ToolRecorder&) = delete;

    std::vector<int> tools;
    bool onTheList = true;  ///< each ran on the list and its data control
    // As the last tool found them.
    listtools::DialogAnchor anchor;
    QString position;
    std::size_t rows = 0;
    std::function<void()> during;  ///< what the tool does

 private:
    listtools::ToolRunner before_;
};

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
    void ARightClickOnACellMakesItActive();
    void ARightClickOnACellOpensTheSearch();
    void ARightClickOnAHeadingOpensTheSelection();
    void TheAnchorStandsWhileTheToolRuns();
    void ARightClickBesideTheCellsDoesNothing();
    void TheSearchButtonDoesNothing();
    void TheOtherButtonsRunTheirTools();
    void PrintingGoesBackToTheFirstVehicle();
    void PrintingAnEmptyListGivesTheFocusOnly();
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

void ListTest::ARightClickOnACellMakesItActive() {
    QTest::mouseClick(Grid("DBG_Liste")->viewport(), Qt::RightButton, Qt::NoModifier, CellCenter(3, 5));
    QCOMPARE(Grid("DBG_Liste")->ActiveRow(), 5);
    QCOMPARE(Grid("DBG_Liste")->ActiveCol(), 3);
    QVERIFY(ItalicHeading(3));
    QCOMPARE(Box("CTX_IMMAT")->Text(), Cell("DBG_Liste", 1, 5));
}

void ListTest::ARightClickOnACellOpensTheSearch() {
    const ToolRecorder recorder;
    QTest::mouseClick(Grid("DBG_Liste")->viewport(), Qt::RightButton, Qt::NoModifier, CellCenter(3, 5));
    QCOMPARE(recorder.tools, std::vector<int>{1});
    QVERIFY(recorder.onTheList);
    QVERIFY(recorder.anchor.DialogAnchorX > 0);
    QVERIFY(recorder.anchor.DialogAnchorY > 0);
}

void ListTest::ARightClickOnAHeadingOpensTheSelection() {
    const ToolRecorder recorder;
    QHeaderView* const headings = Grid("DBG_Liste")->horizontalHeader();
    const QPoint place(headings->sectionViewportPosition(1) + 5, headings->height() / 2);
    QTest::mouseClick(headings->viewport(), Qt::RightButton, Qt::NoModifier, place);
    QCOMPARE(recorder.tools, std::vector<int>{0});
    QVERIFY(recorder.onTheList);
    QCOMPARE(Grid("DBG_Liste")->ActiveCol(), 2);
}

void ListTest::TheAnchorStandsWhileTheToolRuns() {
    const ToolRecorder recorder;
    Form().SetTop(600);
    listtools::GridRightClick(Form(), *Grid("DBG_Liste"), *Data("DBD_TVEH"), 0, 2, 3, 1500, 900);
    QCOMPARE(recorder.anchor.DialogAnchorX, 1500);
    QCOMPARE(recorder.anchor.DialogAnchorY, 600 / 2 + 900);
    QCOMPARE(listtools::Anchor().DialogAnchorX, 0);
    QCOMPARE(listtools::Anchor().DialogAnchorY, 0);
    QCOMPARE(Grid("DBG_Liste")->ActiveRow(), 3);
}

void ListTest::ARightClickBesideTheCellsDoesNothing() {
    const ToolRecorder recorder;
    const int row = Grid("DBG_Liste")->ActiveRow();
    listtools::GridRightClick(Form(), *Grid("DBG_Liste"), *Data("DBD_TVEH"), 0, 0, 3, 1500, 900);
    listtools::GridRightClick(Form(), *Grid("DBG_Liste"), *Data("DBD_TVEH"), 0, 2, -1, 1500, 900);
    QVERIFY(recorder.tools.empty());
    QCOMPARE(Grid("DBG_Liste")->ActiveRow(), row);
    QCOMPARE(ItalicHeadings(), 0);
}

void ListTest::TheSearchButtonDoesNothing() {
    const ToolRecorder recorder;
    PressKey(Qt::Key_Down);
    support::BoxAnswerer boxes;
    const QString before = Box("CTX_IMMAT")->Text();
    QTest::mouseClick(Button("Cmd_ToolBar_1"), Qt::LeftButton);
    QVERIFY(boxes.Shown().empty());
    QVERIFY(recorder.tools.empty());
    QCOMPARE(Box("CTX_IMMAT")->Text(), before);
    QCOMPARE(Form().Tag(), QString());
}

void ListTest::TheOtherButtonsRunTheirTools() {
    const ToolRecorder recorder;
    for (const char* button : {"Cmd_ToolBar_0", "Cmd_ToolBar_2", "Cmd_ToolBar_3", "Cmd_ToolBar_4"}) {
        QTest::mouseClick(Button(button), Qt::LeftButton);
    }
    QCOMPARE(recorder.tools, (std::vector<int>{0, 2, 3, 4}));
    QVERIFY(recorder.onTheList);
    QCOMPARE(recorder.anchor.DialogAnchorX, 0);
    QCOMPARE(recorder.anchor.DialogAnchorY, 0);
}

/// All rows are there and the first is current when the tool starts; wherever the tool went, the first is
/// current again behind it.
void ListTest::PrintingGoesBackToTheFirstVehicle() {
    PressKey(Qt::Key_Down);
    ToolRecorder recorder;
    QString left;
    recorder.during = [&left] {
        Data("DBD_TVEH")->Recordset()->MoveLast();
        left = Box("CTX_IMMAT")->Text();
    };
    QTest::mouseClick(Button("Cmd_ToolBar_3"), Qt::LeftButton);
    QCOMPARE(recorder.tools, std::vector<int>{3});
    QCOMPARE(recorder.rows, std::size_t{1500});
    QCOMPARE(recorder.position, Cell("DBG_Liste", 1, 1));
    QVERIFY(left != recorder.position);
    QCOMPARE(Box("CTX_IMMAT")->Text(), recorder.position);
    QCOMPARE(forms::Screen::ActiveControl(), Grid("DBG_Liste"));
}

void ListTest::PrintingAnEmptyListGivesTheFocusOnly() {
    Data("DBD_TVEH")->SetRecordSource(QStringLiteral("select * from TVEH where TVEH_IMMAT = '?'"));
    Data("DBD_TVEH")->Refresh();
    const ToolRecorder recorder;
    support::BoxAnswerer boxes;
    QTest::mouseClick(Button("Cmd_ToolBar_3"), Qt::LeftButton);
    QVERIFY(boxes.Shown().empty());
    QVERIFY(recorder.tools.empty());
    QCOMPARE(forms::Screen::ActiveControl(), Grid("DBG_Liste"));
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
