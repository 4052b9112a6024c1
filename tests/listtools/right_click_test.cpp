// The tools by hand: right clicks, the marked column, the keys of the toolbars.
#include <QHeaderView>
#include <QToolTip>

#include "list_program.h"

using namespace quardele;
using namespace quardele::tests;

namespace {

constexpr int kMake = 2;
constexpr int kCustomer = 3;

QPoint CellCenter(int column, int row) {
    const forms::Grid* const list = Grid("DBG_Liste");
    return list->visualRect(list->model()->index(row - 1, column - 1)).center();
}

void RightClickCell(int column, int row) {
    QTest::mouseClick(Grid("DBG_Liste")->viewport(), Qt::RightButton, Qt::NoModifier,
                      CellCenter(column, row));
}

QList<int> ItalicHeadings(forms::Grid& grid) {
    QList<int> italic;
    grid.SetRow(0);
    for (int column = 1; column <= grid.MaxCols(); ++column) {
        grid.SetCol(column);
        if (grid.FontItalic()) {
            italic.append(column);
        }
    }
    return italic;
}

QString OpenDialogName() {
    return forms::Forms::Item(forms::Forms::Count() - 1).Name();
}

}  // namespace

class RightClickTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void init();
    void cleanup() { program_.reset(); }

    void OnACellItSearchesItsColumn();
    void OnAHeadingItSelectsOnItsColumn();
    void TheSearchStandsWhereTheMouseWas();
    void AtPositionZeroTheSearchIsCentred();
    void TheSelectionIsCentredAllTheSame();
    void TheAnchorsAreGoneAfterwards();
    void TheAnchorsAreGoneAfterAFailure();
    void BesideTheCellsItDoesNothing();
    void TheKeyForAMenuIsARightClick();
    void OneHeadingAtMostIsItalic();
    void WithoutAnActiveColumnNothingIsMarked();
    void EveryToolHasItsKey();
    void TheTextTipsShowTheKeys();
    void KeysOfTheRecordAreDead();

 private:
    std::unique_ptr<ListProgram> program_;
};

void RightClickTest::init() {
    program_ = std::make_unique<ListProgram>();
    program_->OpenList();
}

void RightClickTest::OnACellItSearchesItsColumn() {
    QVERIFY(InDialog([] { RightClickCell(kCustomer, 5); },
                     [] {
                         QCOMPARE(OpenDialogName(), QStringLiteral("FCHERCHE"));
                         QCOMPARE(SearchDialog().Caption(), QStringLiteral("Recherche sur [Client]"));
                         QCOMPARE(listtools::TheListToolContext().FieldName, QStringLiteral("TVEH_CODCLI"));
                     }));
    QCOMPARE(Grid("DBG_Liste")->ActiveRow(), 5);
    QCOMPARE(Grid("DBG_Liste")->ActiveCol(), kCustomer);
    QCOMPARE(ItalicHeadings(*Grid("DBG_Liste")), QList<int>{kCustomer});
    QCOMPARE(Box("CTX_IMMAT")->Text(), Cell("DBG_Liste", 1, 5));
}

void RightClickTest::OnAHeadingItSelectsOnItsColumn() {
    QHeaderView* const headings = Grid("DBG_Liste")->horizontalHeader();
    const QPoint place(headings->sectionViewportPosition(kMake - 1) + 5, headings->height() / 2);
    QVERIFY(InDialog([&] { QTest::mouseClick(headings->viewport(), Qt::RightButton, Qt::NoModifier, place); },
                     [] {
                         QCOMPARE(OpenDialogName(), QStringLiteral("FSELECT"));
                         QCOMPARE(Selection().Caption(), QStringLiteral("Sélection sur [Marque]"));
                     }));
    QCOMPARE(Grid("DBG_Liste")->ActiveCol(), kMake);
    QCOMPARE(ItalicHeadings(*Grid("DBG_Liste")), QList<int>{kMake});
}

void RightClickTest::TheSearchStandsWhereTheMouseWas() {
    Form().SetTop(600);
    QVERIFY(InDialog(
        [] {
            listtools::GridRightClick(Form(), *Grid("DBG_Liste"), *Data("DBD_TVEH"), 0, kMake, 3, 1500, 900);
        },
        [] {
            QCOMPARE(SearchDialog().Left(), 1500);
            QCOMPARE(SearchDialog().Top(), 600 / 2 + 900);
            QCOMPARE(listtools::Anchor().DialogAnchorX, 1500);
            QCOMPARE(listtools::Anchor().DialogAnchorY, 1200);
        }));
    QCOMPARE(Grid("DBG_Liste")->ActiveRow(), 3);
}

void RightClickTest::AtPositionZeroTheSearchIsCentred() {
    QVERIFY(InDialog(
        [] { listtools::GridRightClick(Form(), *Grid("DBG_Liste"), *Data("DBD_TVEH"), 0, kMake, 3, 0, 900); },
        [] { QCOMPARE(SearchDialog().Left(), (MainWindow().Width() - SearchDialog().ScaleWidth()) / 2); }));
}

void RightClickTest::TheSelectionIsCentredAllTheSame() {
    QVERIFY(InDialog(
        [] {
            listtools::GridRightClick(Form(), *Grid("DBG_Liste"), *Data("DBD_TVEH"), 0, kMake, 0, 1500, 900);
        },
        [] { QCOMPARE(Selection().Left(), (MainWindow().Width() - Selection().ScaleWidth()) / 2); }));
}

void RightClickTest::TheAnchorsAreGoneAfterwards() {
    QVERIFY(
        InDialog([] { RightClickCell(kMake, 3); }, [] { QVERIFY(listtools::Anchor().DialogAnchorX > 0); }));
    QCOMPARE(listtools::Anchor().DialogAnchorX, 0);
    QCOMPARE(listtools::Anchor().DialogAnchorY, 0);
}

void RightClickTest::TheAnchorsAreGoneAfterAFailure() {
    Data("DBD_TVEH")->SetRecordSource(QStringLiteral("select * from TVEH order by"));
    int number = 0;
    try {
        listtools::GridRightClick(Form(), *Grid("DBG_Liste"), *Data("DBD_TVEH"), 0, kMake, 3, 1500, 900);
    } catch (const basic::RuntimeError& error) {
        number = error.Number();
    }
    QCOMPARE(number, basic::error::kInvalidCall);
    QCOMPARE(listtools::Anchor().DialogAnchorX, 0);
    QCOMPARE(listtools::Anchor().DialogAnchorY, 0);
}

void RightClickTest::BesideTheCellsItDoesNothing() {
    const int row = Grid("DBG_Liste")->ActiveRow();
    listtools::Anchor() = {12, 34};
    listtools::GridRightClick(Form(), *Grid("DBG_Liste"), *Data("DBD_TVEH"), 0, 0, 3, 1500, 900);
    QCOMPARE(listtools::Anchor().DialogAnchorX, 0);
    listtools::GridRightClick(Form(), *Grid("DBG_Liste"), *Data("DBD_TVEH"), 0, kMake, -1, 1500, 900);
    QCOMPARE(Grid("DBG_Liste")->ActiveRow(), row);
    QCOMPARE(ItalicHeadings(*Grid("DBG_Liste")), QList<int>());
    QCOMPARE(Form().Tag(), QString());
}

void RightClickTest::TheKeyForAMenuIsARightClick() {
    Grid("DBG_Liste")->SetActiveCell(kCustomer, 4);
    QVERIFY(InDialog([] { PressKey(Qt::Key_F10, Qt::ShiftModifier); },
                     [] { QCOMPARE(SearchDialog().Caption(), QStringLiteral("Recherche sur [Client]")); }));
    QCOMPARE(Grid("DBG_Liste")->ActiveRow(), 4);
}

void RightClickTest::OneHeadingAtMostIsItalic() {
    forms::Grid& list = *Grid("DBG_Liste");
    for (const int column : {kMake, kCustomer, 1}) {
        QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, CellCenter(column, 2));
        QCOMPARE(ItalicHeadings(list), QList<int>{column});
    }
}

void RightClickTest::WithoutAnActiveColumnNothingIsMarked() {
    forms::Grid& list = *Grid("DBG_Liste");
    list.SetActiveCell(0, 2);
    QCOMPARE(list.ActiveCol(), 0);
    listtools::MarkActiveColumn(list);
    QCOMPARE(ItalicHeadings(list), QList<int>());
}

void RightClickTest::EveryToolHasItsKey() {
    Grid("DBG_Liste")->SetActiveCell(kMake, 1);
    QVERIFY(InDialog([] { PressKey(Qt::Key_L, Qt::ControlModifier); },
                     [] { QCOMPARE(OpenDialogName(), QStringLiteral("FSELECT")); }));
    QVERIFY(InDialog([] { PressKey(Qt::Key_T, Qt::ControlModifier); },
                     [] { QCOMPARE(OpenDialogName(), QStringLiteral("FCLASSE")); }));
    program_->boxes.AnswerNo();
    PressKey(Qt::Key_E, Qt::ControlModifier);
    CompareBoxes(program_->boxes, {QStringLiteral("Confirmez-vous la création du fichier Excel ?")});
    QVERIFY(InDialog([] { PressKey(Qt::Key_P, Qt::ControlModifier); },
                     [] { QVERIFY(QApplication::activeModalWidget() != nullptr); }));

    program_->OpenReminders();
    forms::SetFocus(Reminders().grid);
    Reminders().grid->SetActiveCell(2, 1);
    QVERIFY(InDialog([] { PressKey(Qt::Key_F, Qt::ControlModifier); },
                     [] { QCOMPARE(SearchDialog().Caption(), QStringLiteral("Recherche sur [Immat.]")); }));
    QVERIFY(InDialog([] { PressKey(Qt::Key_L, Qt::ControlModifier); },
                     [] { QCOMPARE(Selection().Caption(), QStringLiteral("Sélection sur [Immat.]")); }));
}

void RightClickTest::TheTextTipsShowTheKeys() {
    forms::Button* const button = Button("Cmd_ToolBar_2");
    QCOMPARE(button->toolTip(), QStringLiteral("Classement"));
    QCOMPARE(button->accessibleName(), QStringLiteral("Classement"));
    QHelpEvent asked(QEvent::ToolTip, QPoint(5, 5), button->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(button, &asked);
    QCOMPARE(QToolTip::text(), QStringLiteral("Classement\nCtrl+T"));
    QVERIFY(Button("Cmd_ToolBar_1")->shortcut().isEmpty());
}

/// The list's toolbar is out of reach on the record.
void RightClickTest::KeysOfTheRecordAreDead() {
    Tabs()->SetTab(kRecordTab);
    PressKey(Qt::Key_L, Qt::ControlModifier);
    PressKey(Qt::Key_T, Qt::ControlModifier);
    PressKey(Qt::Key_E, Qt::ControlModifier);
    QVERIFY(program_->boxes.Shown().empty());
    QCOMPARE(OpenDialogName(), QStringLiteral("FFICVEH"));
    QCOMPARE(Form().Tag(), QString());
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    RightClickTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "right_click_test.moc"
