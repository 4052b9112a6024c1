#include "vehicle_form_fixture.h"

#include <QHeaderView>
#include <QMainWindow>
#include <QTabBar>

#include <forms/strings.h>

#include "child_forms.h"

namespace quardele::tests {

RunningProgram::RunningProgram() {
    Start();
}

RunningProgram::RunningProgram(const std::filesystem::path& source) : installation_(source) {
    Start();
}

void RunningProgram::Start() {
    if (StartProgram().ended) {
        qFatal("the program ended during start-up");
    }
}

RunningProgram::~RunningProgram() {
    StopProgram();
}

void RunningProgram::OpenVehicles() {
    MainWindow().M_VEHIC->trigger();
    MainWindow().MainWindow()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(MainWindow().MainWindow()));
}

void PrepareVehicleTests() {
    forms::CatchEndOfProcess(true);
    QCoreApplication::setApplicationVersion(QStringLiteral("9.5.5"));
    WireChildForms();
    shell::TheMenuForms().vehicles = []() -> forms::Form& { return forms::Instance<vehicles::FFICVEH>(); };
}

vehicles::FFICVEH& Form() {
    return forms::Instance<vehicles::FFICVEH>();
}

forms::TextBox* Box(const char* name) {
    return Control<forms::TextBox>(name);
}

forms::TextBox* UserBox(int number) {
    return forms::ControlArray<forms::TextBox>(Form().Surface(), QStringLiteral("CTX_USER"))(number);
}

forms::Label* UserLabel(int number) {
    return forms::ControlArray<forms::Label>(Form().Surface(), QStringLiteral("CTL_USER"))(number);
}

forms::Button* Button(const char* name) {
    return Control<forms::Button>(name);
}

forms::Grid* Grid(const char* name) {
    return Control<forms::Grid>(name);
}

forms::TabControl* Tabs() {
    return Control<forms::TabControl>("SST_ONGLET");
}

forms::DataControl* Data(const char* name) {
    return Control<forms::DataControl>(name);
}

QString Cell(const char* grid, int column, int row) {
    forms::Grid& cells = *Grid(grid);
    cells.SetCol(column);
    cells.SetRow(row);
    return cells.Text();
}

bool Shown(const QWidget* control) {
    return control->isVisibleTo(Form().Surface());
}

void CompareOnlyBox(const support::BoxAnswerer& boxes, const QString& text, const QString& icon) {
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
    const support::ShownBox& box = boxes.Shown().front();
    QCOMPARE(box.text, text);
    QCOMPARE(box.icon, icon);
    QCOMPARE(box.title, forms::App::Title());
    QCOMPARE(box.button, QStringLiteral("OK"));
}

void CompareBoxes(const support::BoxAnswerer& boxes, const QStringList& texts) {
    QStringList shown;
    for (const support::ShownBox& box : boxes.Shown()) {
        shown.append(box.text);
    }
    QCOMPARE(shown, texts);
}

void OpenRecordOf(const QString& registration) {
    Data("DBD_TVEH")
        ->Recordset()
        ->FindFirst(forms::ToText(QStringLiteral("TVEH_IMMAT = '%1'").arg(registration)));
    if (Data("DBD_TVEH")->Recordset()->NoMatch()) {
        qFatal("no vehicle %s", qPrintable(registration));
    }
    Tabs()->SetTab(kRecordTab);
}

void TypeOver(forms::TextBox* box, const QString& text) {
    forms::SetFocus(box);
    box->selectAll();
    QTest::keyClicks(box, text);
}

void Press(const char* button) {
    QTest::mouseClick(Button(button), Qt::LeftButton);
    QCoreApplication::processEvents();
}

void ClickCell(const char* grid, int column, int row) {
    const forms::Grid* const cells = Grid(grid);
    const QRect cell = cells->visualRect(cells->model()->index(row - 1, column - 1));
    QTest::mouseClick(cells->viewport(), Qt::LeftButton, {}, cell.center());
    QCoreApplication::processEvents();
}

void ClickHeading(const char* grid, int column) {
    QHeaderView* const header = Grid(grid)->horizontalHeader();
    const QPoint inside(header->sectionViewportPosition(column - 1) + 8, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, inside);
    QCoreApplication::processEvents();
}

bool InFront(const char* frame, const char* other) {
    const QObjectList& siblings = Control<QWidget>(frame)->parentWidget()->children();
    return siblings.indexOf(Control<QWidget>(frame)) > siblings.indexOf(Control<QWidget>(other));
}

void TypeVisit(int column, int row, const QString& text) {
    ClickCell("DBG_DETAIL", column, row);
    TypeIntoCell(text);
}

void ClickBehindVisits() {
    QWidget* const visits = Grid("DBG_DETAIL")->viewport();
    QTest::mouseClick(visits, Qt::LeftButton, {}, visits->rect().bottomLeft() + QPoint(5, -5));
    QCoreApplication::processEvents();
}

void TypeIntoCell(const QString& text) {
    // The first character may open the cell, which the others go to.
    for (const QChar character : text) {
        QTest::keyClicks(QApplication::focusWidget(), character);
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCoreApplication::processEvents();
}

QString TakeTexts(support::BoxAnswerer& boxes) {
    const std::vector<QString> texts = boxes.TakeTexts();
    return QStringList(texts.begin(), texts.end()).join(u'|');
}

void PressKey(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    if (QApplication::activeWindow() == nullptr) {
        // Off screen nobody brings the window back to the front behind a box.
        MainWindow().MainWindow()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(MainWindow().MainWindow()));
    }
    QWidget* const receiver = forms::Screen::ActiveControl();
    if (receiver == nullptr) {
        qFatal("no control has the focus");
    }
    QTest::keyClick(receiver, key, modifiers);
    // Keys that a handler sends arrive once it has returned.
    QCoreApplication::processEvents();
}

}  // namespace quardele::tests
