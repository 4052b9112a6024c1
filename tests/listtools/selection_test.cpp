// The selection dialog: defaults, keys, what it does with the list and how it ends.
#include <QRegularExpression>

#include "list_program.h"

using namespace quardele;
using namespace quardele::tests;

namespace {

enum Comparison { StartsWith, Equal, Different, Greater, Less, Contains };

constexpr int kRegistration = 1;
constexpr int kMake = 2;

}  // namespace

class SelectionTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void init();
    void cleanup() { program_.reset(); }

    void ItOpensWithItsDefaults();
    void ItStandsInTheMiddleOfTheMainWindow();
    void ClosingItChangesNothing();
    void EnterInTheValueLeadsToTheButtonOnly();
    void EscapeInTheValueClosesIt();
    void EnterInTheComparisonsLeadsToTheValue();
    void TabReachesEveryControlInOrder();
    void TheButtonStandsOutLessWhileItIsHeldDown();
    void TheListShowsTheSelectedRowsOnly();
    void TheCursorComesBackToItsColumnInTheFirstRow();
    void SelectionsAddUp();
    void AnEmptyValueShowsAllRowsOfAFormWithoutAFilter();
    void AnEmptyValueBringsBackTheStartingFilterInCapitals();
    void TheSortInForceStays();
    void AnEmptySelectionLeavesTheListAsItIsDrawn();
    void WithoutAComparisonThePointerStaysBusy();
    void AFailedDateLeavesAnAndThatTheNextTryDoubles();
    void ReopeningForgetsTheDoubledAnd();
    void AFailedNumberLeavesTheConditionsClean();
    void TheFirstConditionThatIsNoDateLeavesNothingBehind();
    void AWordThatIsNeitherYesNorNoFillsTheListAnew();
    void AVirtualGridForgetsItsNumberOfRows();
    void AnApostropheEndsInTheMessageAndClosesTheDialog();
    void AnythingTypedLeavesTheProgramRunning_data();
    void AnythingTypedLeavesTheProgramRunning();
    void AnotherSelectionMendsABrokenStatement();

 private:
    [[nodiscard]] QString Source() const { return Vehicles().data->RecordSource(); }
    void Open(int column, const std::function<void()>& work) {
        GoToColumn(*Vehicles().grid, column);
        QVERIFY(InDialog([] { PressTool(Vehicles(), kSelectionTool); }, work));
    }

    std::unique_ptr<ListProgram> program_;
};

void SelectionTest::init() {
    program_ = std::make_unique<ListProgram>();
    program_->OpenList();
}

void SelectionTest::ItOpensWithItsDefaults() {
    Open(kMake, [] {
        listtools::FSELECT& dialog = Selection();
        QCOMPARE(dialog.Caption(), QStringLiteral("Sélection sur [Marque]"));
        QCOMPARE(dialog.DBC3_SELECTION->ListIndex(), 0);
        QCOMPARE(dialog.DBC3_SELECTION->count(), 6);
        QStringList entries;
        for (int entry = 0; entry < 6; ++entry) {
            entries.append(dialog.DBC3_SELECTION->itemText(entry));
        }
        QCOMPARE(entries, (QStringList{"Commençant par ", "Egal à", "Différent de", "Supérieur à",
                                       "Inférieur à", "Contient"}));
        QCOMPARE(dialog.CTX3_SELECTION->Text(), QString());
        QCOMPARE(dialog.Cmd_GoSelection->text(), QStringLiteral("Lancer la sélection"));
        QCOMPARE(forms::Screen::ActiveControl(), dialog.DBC3_SELECTION);
        QCOMPARE(forms::Forms::Item(forms::Forms::Count() - 1).Name(), QStringLiteral("FSELECT"));
    });
    QVERIFY(!forms::IsLoaded<listtools::FSELECT>());
}

void SelectionTest::ItStandsInTheMiddleOfTheMainWindow() {
    Open(kMake, [] {
        const listtools::FSELECT& dialog = Selection();
        const shell::Session& session = shell::TheSession();
        QCOMPARE(dialog.Left(), (MainWindow().Width() - dialog.ScaleWidth()) / 2);
        QVERIFY(std::abs(dialog.Top() -
                         ((session.WorkAreaHeight - dialog.ScaleHeight()) / 2 + session.WorkAreaTop)) < 15);
    });
}

void SelectionTest::ClosingItChangesNothing() {
    const QString before = Source();
    Open(kMake, [] {
        EnterText(Selection().CTX3_SELECTION, QStringLiteral("REN"));
        Click(Selection().Cmd_FinSelection);
        QVERIFY(!forms::IsLoaded<listtools::FSELECT>());
    });
    QCOMPARE(Source(), before);
    QCOMPARE(Vehicles().grid->MaxRows(), 1500);
    QVERIFY(program_->boxes.Shown().empty());
}

void SelectionTest::EnterInTheValueLeadsToTheButtonOnly() {
    const QString before = Source();
    Open(kMake, [&] {
        forms::SetFocus(Selection().CTX3_SELECTION);
        QTest::keyClicks(Selection().CTX3_SELECTION, QStringLiteral("REN"));
        PressKey(Qt::Key_Return);
        QVERIFY(forms::IsLoaded<listtools::FSELECT>());
        QCOMPARE(forms::Screen::ActiveControl(), Selection().Cmd_GoSelection);
        QCOMPARE(Source(), before);
        PressKey(Qt::Key_Return);
        QVERIFY(!forms::IsLoaded<listtools::FSELECT>());
    });
    QCOMPARE(Source(), QStringLiteral("SELECT * FROM TVEH Where left(TVEH_MARQUE,3) = 'REN' ;"));
}

void SelectionTest::EscapeInTheValueClosesIt() {
    const QString before = Source();
    Open(kMake, [] {
        forms::SetFocus(Selection().CTX3_SELECTION);
        QTest::keyClicks(Selection().CTX3_SELECTION, QStringLiteral("REN"));
        PressKey(Qt::Key_Escape);
        QVERIFY(!forms::IsLoaded<listtools::FSELECT>());
    });
    QCOMPARE(Source(), before);
}

void SelectionTest::EnterInTheComparisonsLeadsToTheValue() {
    Open(kMake, [] {
        PressKey(Qt::Key_Return);
        QCOMPARE(forms::Screen::ActiveControl(), Selection().CTX3_SELECTION);
    });
}

void SelectionTest::TabReachesEveryControlInOrder() {
    Open(kMake, [] {
        listtools::FSELECT& dialog = Selection();
        for (QWidget* next :
             std::initializer_list<QWidget*>{dialog.CTX3_SELECTION, dialog.Cmd_GoSelection,
                                             dialog.Cmd_FinSelection, dialog.DBC3_SELECTION}) {
            PressKey(Qt::Key_Tab);
            QCOMPARE(forms::Screen::ActiveControl(), next);
        }
    });
}

void SelectionTest::TheButtonStandsOutLessWhileItIsHeldDown() {
    Open(kMake, [] {
        forms::Button* const button = Selection().Cmd_GoSelection;
        QVERIFY(button->IsMain());
        QTest::mousePress(button, Qt::LeftButton);
        QVERIFY(!button->IsMain());
        QTest::mouseMove(button, QPoint(-20, -20));
        QTest::mouseRelease(button, Qt::LeftButton, {}, QPoint(-20, -20));
        QVERIFY(button->IsMain());
        QVERIFY(forms::IsLoaded<listtools::FSELECT>());
    });
}

void SelectionTest::TheListShowsTheSelectedRowsOnly() {
    const QStringList wanted =
        CellsOf(*Vehicles().grid, kMake).filter(QRegularExpression(QStringLiteral("^REN")));
    QVERIFY(!wanted.isEmpty());
    QVERIFY(wanted.size() < 1500);
    SelectOn(Vehicles(), kMake, StartsWith, QStringLiteral("ren"));
    QCOMPARE(CellsOf(*Vehicles().grid, kMake), wanted);
    QVERIFY(!forms::IsLoaded<listtools::FSELECT>());
    QCOMPARE(forms::Screen::MousePointer(), 0);
}

void SelectionTest::TheCursorComesBackToItsColumnInTheFirstRow() {
    Vehicles().grid->SetActiveCell(kMake, 40);
    QVERIFY(InDialog([] { PressTool(Vehicles(), kSelectionTool); },
                     [] { Select(Contains, QStringLiteral("A")); }));
    QCOMPARE(Vehicles().grid->ActiveRow(), 1);
    QCOMPARE(Vehicles().grid->ActiveCol(), kMake);
    QVERIFY(Vehicles().grid->ReDraw());
}

void SelectionTest::SelectionsAddUp() {
    SelectOn(Vehicles(), kMake, StartsWith, QStringLiteral("ren"));
    const int ofMake = Vehicles().grid->MaxRows();
    SelectOn(Vehicles(), kRegistration, Less, QStringLiteral("M"));
    QCOMPARE(Source(), QStringLiteral("SELECT * FROM TVEH Where LEFT(TVEH_MARQUE,3) = 'REN' and "
                                      "TVEH_IMMAT< 'M' ;"));
    QVERIFY(Vehicles().grid->MaxRows() > 0);
    QVERIFY(Vehicles().grid->MaxRows() < ofMake);
}

void SelectionTest::AnEmptyValueShowsAllRowsOfAFormWithoutAFilter() {
    SelectOn(Vehicles(), kMake, Equal, QStringLiteral("DACIA"));
    QCOMPARE(Form().Tag(), QStringLiteral("***"));
    QVERIFY(Vehicles().grid->MaxRows() < 1500);
    SelectOn(Vehicles(), kRegistration, Contains, QString());
    QCOMPARE(Source(), QStringLiteral("SELECT * FROM TVEH;"));
    QCOMPARE(Vehicles().grid->MaxRows(), 1500);
}

void SelectionTest::AnEmptyValueBringsBackTheStartingFilterInCapitals() {
    const List list = Vehicles();
    list.data->SetRecordSource(QStringLiteral("select * from TVEH where TVEH_MARQUE = 'Dacia'"));
    list.data->Refresh();
    const int started = list.grid->MaxRows();
    QVERIFY(started > 1);
    SelectOn(list, kRegistration, Equal, QStringLiteral("2107 RC 59"));
    QCOMPARE(Form().Tag(), QStringLiteral("TVEH_MARQUE = 'DACIA'"));
    QCOMPARE(list.grid->MaxRows(), 1);
    SelectOn(list, kRegistration, Greater, QString());
    QCOMPARE(Source(), QStringLiteral("SELECT * FROM TVEH Where TVEH_MARQUE = 'DACIA' ;"));
    QCOMPARE(list.grid->MaxRows(), started);
}

void SelectionTest::TheSortInForceStays() {
    const List list = Vehicles();
    list.data->SetRecordSource(QStringLiteral("select * from TVEH order by TVEH_IMMAT desc"));
    list.data->Refresh();
    SelectOn(list, kMake, Equal, QStringLiteral("DACIA"));
    QCOMPARE(Source(),
             QStringLiteral("SELECT * FROM TVEH Where TVEH_MARQUE= 'DACIA'  Order by TVEH_IMMAT DESC;"));
}

void SelectionTest::AnEmptySelectionLeavesTheListAsItIsDrawn() {
    SelectOn(Vehicles(), kMake, Equal, QStringLiteral("nulle part"));
    CompareBoxes(program_->boxes, {QStringLiteral("Sélection vide.")});
    QVERIFY(!Vehicles().grid->ReDraw());
    QCOMPARE(Source(), QStringLiteral("SELECT * FROM TVEH Where TVEH_MARQUE= 'nulle part' ;"));
    QVERIFY(!forms::IsLoaded<listtools::FSELECT>());
    QCOMPARE(forms::Screen::MousePointer(), 0);

    SelectOn(Vehicles(), kMake, Equal, QString());
    QCOMPARE(Vehicles().grid->MaxRows(), 1500);
    QVERIFY(Vehicles().grid->ReDraw());
}

void SelectionTest::WithoutAComparisonThePointerStaysBusy() {
    const QString before = Source();
    Open(kMake, [] {
        Selection().DBC3_SELECTION->SetListIndex(-1);
        EnterText(Selection().CTX3_SELECTION, QStringLiteral("REN"));
        Click(Selection().Cmd_GoSelection);
        QVERIFY(forms::IsLoaded<listtools::FSELECT>());
        QCOMPARE(forms::Screen::ActiveControl(), Selection().DBC3_SELECTION);
        QCOMPARE(forms::Screen::MousePointer(), 11);
    });
    QCOMPARE(Source(), before);
    QVERIFY(program_->boxes.Shown().empty());
}

void SelectionTest::AFailedDateLeavesAnAndThatTheNextTryDoubles() {
    program_->OpenReminders();
    const List list = Reminders();
    const QString due = list.data->RecordSource();
    constexpr int kLastVisit = 6;
    GoToColumn(*list.grid, kLastVisit);
    QVERIFY(InDialog([&] { PressTool(list, kSelectionTool); },
                     [&] {
                         Select(Greater, QStringLiteral("hier"));
                         QVERIFY(forms::IsLoaded<listtools::FSELECT>());
                         QCOMPARE(forms::Screen::MousePointer(), 0);
                         QCOMPARE(list.data->RecordSource(), due);
                         QVERIFY(listtools::TheListToolContext().WherePart.endsWith(
                             QStringLiteral("[TVEH_DETAIL_PERIOD]<> 0 and ")));
                         EnterText(Selection().CTX3_SELECTION, QStringLiteral("01/02/2024"));
                         Click(Selection().Cmd_GoSelection);
                         QVERIFY(!forms::IsLoaded<listtools::FSELECT>());
                     }));
    QVERIFY2(list.data->RecordSource().contains(
                 QStringLiteral("<> 0 and and TVEH_DETAIL_DATVIS> #02/01/24#  Order by ")),
             qPrintable(list.data->RecordSource()));
    const std::vector<QString> boxes = program_->boxes.TakeTexts();
    QCOMPARE(boxes.size(), std::size_t{2});
    QCOMPARE(boxes[0], QStringLiteral("SELECTION ERR. 13 Saisie d'une date attendue "));
    QVERIFY2(boxes[1].startsWith(QStringLiteral("SELECTION (ERREUR ")), qPrintable(boxes[1]));
    QCOMPARE(program_->Ends(), 0);
}

void SelectionTest::ReopeningForgetsTheDoubledAnd() {
    program_->OpenReminders();
    const List list = Reminders();
    constexpr int kLastVisit = 6;
    GoToColumn(*list.grid, kLastVisit);
    QVERIFY(InDialog([&] { PressTool(list, kSelectionTool); },
                     [] {
                         Select(Greater, QStringLiteral("hier"));
                         Click(Selection().Cmd_FinSelection);
                     }));
    SelectOn(list, kLastVisit, Greater, QStringLiteral("01/02/2024"));
    QVERIFY(list.data->RecordSource().contains(QStringLiteral("<> 0 and TVEH_DETAIL_DATVIS> #02/01/24# ")));
    QCOMPARE(program_->boxes.Shown().size(), std::size_t{1});
}

void SelectionTest::AFailedNumberLeavesTheConditionsClean() {
    program_->OpenReminders();
    const List list = Reminders();
    constexpr int kPeriod = 7;
    GoToColumn(*list.grid, kPeriod);
    QVERIFY(InDialog([&] { PressTool(list, kSelectionTool); },
                     [&] {
                         Select(Greater, QStringLiteral("douze"));
                         QVERIFY(forms::IsLoaded<listtools::FSELECT>());
                         EnterText(Selection().CTX3_SELECTION, QStringLiteral("12"));
                         Click(Selection().Cmd_GoSelection);
                     }));
    QVERIFY(list.data->RecordSource().contains(QStringLiteral("<> 0 and TVEH_DETAIL_PERIOD>12  Order by ")));
    CompareBoxes(program_->boxes,
                 {QStringLiteral("SELECTION ERR. 13 Saisie d'une valeur numérique attendue ")});
}

void SelectionTest::TheFirstConditionThatIsNoDateLeavesNothingBehind() {
    constexpr int kDateColumn = 5;
    Open(kDateColumn, [] {
        Select(Equal, QStringLiteral("hier"));
        QCOMPARE(listtools::TheListToolContext().WherePart, QString());
    });
}

void SelectionTest::AWordThatIsNeitherYesNorNoFillsTheListAnew() {
    ReplaceColumn(*Vehicles().grid, kMake, QStringLiteral("Relance|TVEH_EDIT|8|check|locked"));
    QString word;
    Open(kMake, [&] {
        EnterText(Selection().CTX3_SELECTION, QStringLiteral("peut-être"));
        QObject::connect(Selection().CTX3_SELECTION, &forms::TextBox::Change,
                         [&] { word = Selection().CTX3_SELECTION->Text(); });
        Click(Selection().Cmd_GoSelection);
    });
    QCOMPARE(word, QStringLiteral("PEUT-ÊTRE"));
    QCOMPARE(Source(), QStringLiteral("SELECT * FROM TVEH;"));
    QCOMPARE(Vehicles().grid->MaxRows(), 1500);
    QVERIFY(program_->boxes.Shown().empty());
}

void SelectionTest::AVirtualGridForgetsItsNumberOfRows() {
    Vehicles().grid->SetVirtualMode(true);
    Vehicles().grid->SetVirtualMaxRows(12);
    SelectOn(Vehicles(), kMake, Equal, QStringLiteral("DACIA"));
    QCOMPARE(Vehicles().grid->VirtualMaxRows(), -1);
    QVERIFY(Vehicles().grid->MaxRows() > 0);
}

void SelectionTest::AnApostropheEndsInTheMessageAndClosesTheDialog() {
    SelectOn(Vehicles(), kMake, Equal, QStringLiteral("L'OREE"));
    const std::vector<QString> boxes = program_->boxes.TakeTexts();
    QCOMPARE(boxes.size(), std::size_t{1});
    QVERIFY2(boxes.front().startsWith(QStringLiteral("SELECTION (ERREUR 3075): ")),
             qPrintable(boxes.front()));
    QVERIFY(!forms::IsLoaded<listtools::FSELECT>());
    QCOMPARE(Source(), QStringLiteral("SELECT * FROM TVEH Where TVEH_MARQUE= 'L'OREE' ;"));
    // The rows had been taken out for the new ones.
    QCOMPARE(Vehicles().grid->MaxRows(), 0);
    QCOMPARE(forms::Screen::MousePointer(), 0);
    QCOMPARE(program_->Ends(), 0);
}

void SelectionTest::AnythingTypedLeavesTheProgramRunning_data() {
    QTest::addColumn<QString>("value");
    QTest::newRow("quote") << QStringLiteral("'");
    QTest::newRow("two quotes") << QStringLiteral("''");
    QTest::newRow("bracket") << QStringLiteral("[");
    QTest::newRow("parenthesis") << QStringLiteral("')");
    QTest::newRow("date sign") << QStringLiteral("#");
    QTest::newRow("statement") << QStringLiteral("'; drop table TVEH; --");
    QTest::newRow("order by") << QStringLiteral("' order by");
    QTest::newRow("union") << QStringLiteral("' union select * from TCLI where ''='");
    QTest::newRow("ten thousand letters") << QString(10000, u'x');
    QTest::newRow("ten thousand quotes") << QString(10000, u'\'');
    QTest::newRow("ten thousand parentheses") << QStringLiteral("'") + QString(10000, u'(');
    QTest::newRow("beyond the first plane") << QStringLiteral("\U0001F697 \u00e9t\u00e9");
}

void SelectionTest::AnythingTypedLeavesTheProgramRunning() {
    QFETCH(QString, value);
    for (const int comparison : {Equal, Contains, StartsWith}) {
        SelectOn(Vehicles(), kMake, comparison, value);
        QVERIFY(!forms::IsLoaded<listtools::FSELECT>());
        for (const QString& box : program_->boxes.TakeTexts()) {
            QVERIFY2(box == QStringLiteral("Sélection vide.") ||
                         box.startsWith(QStringLiteral("SELECTION (ERREUR ")),
                     qPrintable(box.left(200)));
        }
        SelectOn(Vehicles(), kMake, Equal, QString());
        QCOMPARE(program_->Ends(), 0);
    }
    Vehicles().data->SetRecordSource(QStringLiteral("select * from TVEH"));
    Vehicles().data->Refresh();
    QCOMPARE(Vehicles().grid->MaxRows(), 1500);
}

void SelectionTest::AnotherSelectionMendsABrokenStatement() {
    SelectOn(Vehicles(), kMake, Equal, QStringLiteral("L'OREE"));
    SelectOn(Vehicles(), kMake, Equal, QString());
    QCOMPARE(Source(), QStringLiteral("SELECT * FROM TVEH;"));
    QCOMPARE(Vehicles().grid->MaxRows(), 1500);
    QCOMPARE(program_->boxes.Shown().size(), std::size_t{1});
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    SelectionTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "selection_test.moc"
