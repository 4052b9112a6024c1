// The search dialog: states of its button, checks of the value, focus, ends.
#include <QLabel>
#include <QMouseEvent>
#include <QRegularExpression>

#include <forms/combo.h>

#include "list_program.h"

using namespace quardele;
using namespace quardele::tests;

namespace {

constexpr int kRegistration = 1;
constexpr int kMake = 2;
constexpr int kDate = 5;

const QString kNotFound = QStringLiteral("Elément non trouvé. Fin de la recherche.");
const QString kDateExpected = QStringLiteral("Saisie d'une date attendue.");
const QString kNumberExpected = QStringLiteral("Saisie d'une valeur numérique attendue.");

/// The search on a form that has a list of records besides.
class SearchWithACombo : public listtools::FCHERCHE {
 public:
    SearchWithACombo() : combo(new forms::ListCombo(Surface())) {
        combo->setObjectName(QStringLiteral("DBC_AUTRE"));
    }

    forms::ListCombo* combo;
};

/// What a combo's list is when its window goes.
class LastRowSource : public QObject {
 public:
    explicit LastRowSource(forms::ListCombo& combo) : combo_(combo) { combo.installEventFilter(this); }

    [[nodiscard]] const forms::DataControl* Value() const { return source_; }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() == QEvent::Hide) {
            source_ = combo_.RowSource();
        }
        return false;
    }

 private:
    forms::ListCombo& combo_;
    const forms::DataControl* source_ = combo_.RowSource();
};

}  // namespace

class SearchTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void init();
    void cleanup() { program_.reset(); }

    void ItOpensWithItsDefaults();
    void TabReachesEveryControlInOrder();
    void EnterGoesToTheNextControl();
    void EnterOnEachOptionGoesToTheButton();
    void ClosingItEmptiesTheListsOfItsCombos();
    void AnEmptyValueOnlyGetsTheFocus();
    void ThreePressesFindTwoRowsAndTheEnd();
    void ASearchThatIsClosedWhileItRunsTellsNothing();
    void AnotherValueStartsFromTheFirstRow();
    void AnotherOptionGoesOnFromTheCurrentRow();
    void TheFoundRowStaysCurrentWhenTheDialogCloses();
    void TheStoredTextSearchesFromTheFirstRow();
    void AWordThatIsNeitherYesNorNoIsNotSearched();
    void ANumberBoxDoesNotStayEmpty();
    void ATextIsNoNumber();
    void ADateIsWrittenOut();
    void ATimeOfDayIsLeftOut_data();
    void ATimeOfDayIsLeftOut();
    void ATextIsNoDateAndKeepsTheFocus();
    void ADateBoxMayStayEmpty();
    void ANumberColumnTakesAnyText();
    void AFailureLeavesTheDialogAsItIs_data();
    void AFailureLeavesTheDialogAsItIs();
    void TheClosingButtonChangesColourWhileItIsHeldDown();
    void TheButtonStandsOutLessWhileItIsHeldDown();

 private:
    void Open(const List& list, int column, const std::function<void()>& work) {
        GoToColumn(*list.grid, column);
        QVERIFY(InDialog([&] { listtools::GridToolAction(kSearchTool, *list.grid, list.data); }, work));
    }
    void Open(int column, const std::function<void()>& work) { Open(Vehicles(), column, work); }

    std::unique_ptr<ListProgram> program_;
};

void SearchTest::init() {
    program_ = std::make_unique<ListProgram>();
    program_->OpenList();
}

void SearchTest::ItOpensWithItsDefaults() {
    Open(kMake, [] {
        listtools::FCHERCHE& dialog = SearchDialog();
        QCOMPARE(dialog.Caption(), QStringLiteral("Recherche sur [Marque]"));
        QCOMPARE(dialog.Surface()->findChild<QLabel*>(QStringLiteral("FND_LabelRech"))->text(),
                 QStringLiteral("Chaine recherchée:"));
        const QStringList options{"Champ entier", "Début de champ", "N'importe où dans le champ"};
        for (int index = 0; index < 3; ++index) {
            QCOMPARE(dialog.FND3_OPTRECH(index)->text(), options[index]);
            QCOMPARE(dialog.FND3_OPTRECH(index)->Value(), index == 0);
        }
        QCOMPARE(dialog.Cmd_GoCherche->text(), QStringLiteral("Lancer la recherche"));
        QCOMPARE(forms::Screen::ActiveControl(), dialog.CTX3_CHERCHE);
        QCOMPARE(dialog.Left(), (MainWindow().Width() - dialog.ScaleWidth()) / 2);
    });
}

void SearchTest::TabReachesEveryControlInOrder() {
    Open(kMake, [] {
        listtools::FCHERCHE& dialog = SearchDialog();
        // The chosen option stands for its group.
        for (QWidget* next : std::initializer_list<QWidget*>{dialog.FND3_OPTRECH(0), dialog.Cmd_GoCherche,
                                                             dialog.Cmd_FinCherche, dialog.CTX3_CHERCHE}) {
            PressKey(Qt::Key_Tab);
            QCOMPARE(forms::Screen::ActiveControl(), next);
        }
        PressKey(Qt::Key_Tab);
        PressKey(Qt::Key_Down);
        QVERIFY(dialog.FND3_OPTRECH(1)->Value());
        QCOMPARE(forms::Screen::ActiveControl(), dialog.FND3_OPTRECH(1));
    });
}

void SearchTest::EnterGoesToTheNextControl() {
    Open(kMake, [] {
        PressKey(Qt::Key_Return);
        QCOMPARE(forms::Screen::ActiveControl(), SearchDialog().FND3_OPTRECH(0));
        PressKey(Qt::Key_Return);
        QCOMPARE(forms::Screen::ActiveControl(), SearchDialog().Cmd_GoCherche);
    });
}

void SearchTest::EnterOnEachOptionGoesToTheButton() {
    Open(kMake, [] {
        listtools::FCHERCHE& dialog = SearchDialog();
        for (int option = 0; option < 3; ++option) {
            dialog.FND3_OPTRECH(option)->SetValue(true);
            forms::SetFocus(dialog.FND3_OPTRECH(option));
            PressKey(Qt::Key_Return);
            QCOMPARE(forms::Screen::ActiveControl(), dialog.Cmd_GoCherche);
        }
    });
}

void SearchTest::ClosingItEmptiesTheListsOfItsCombos() {
    std::unique_ptr<LastRowSource> last;
    QVERIFY(InDialog([] { forms::Instance<SearchWithACombo>().Show(forms::ShowMode::Modal); },
                     [&] {
                         auto& dialog = forms::Instance<SearchWithACombo>();
                         dialog.combo->SetRowSource(Vehicles().data);
                         last = std::make_unique<LastRowSource>(*dialog.combo);
                         QVERIFY(last->Value() != nullptr);
                         Click(dialog.Cmd_FinCherche);
                     }));
    QVERIFY(!forms::IsLoaded<SearchWithACombo>());
    QVERIFY(last->Value() == nullptr);
}

void SearchTest::AnEmptyValueOnlyGetsTheFocus() {
    Open(kMake, [] {
        Click(SearchDialog().Cmd_GoCherche);
        QCOMPARE(forms::Screen::ActiveControl(), SearchDialog().CTX3_CHERCHE);
        QCOMPARE(SearchDialog().Cmd_GoCherche->text(), QStringLiteral("Lancer la recherche"));
        QCOMPARE(forms::Screen::MousePointer(), 0);
    });
    QVERIFY(program_->boxes.Shown().empty());
    QCOMPARE(Vehicles().grid->ActiveRow(), 1);
}

void SearchTest::ThreePressesFindTwoRowsAndTheEnd() {
    forms::Grid& grid = *Vehicles().grid;
    Vehicles().data->SetRecordSource(
        QStringLiteral("select * from TVEH where TVEH_IMMAT in ('2107 RC 59', 'FQ-453-HQ', 'KG-361-VP') "
                       "order by TVEH_IMMAT"));
    Vehicles().data->Refresh();
    QCOMPARE(grid.MaxRows(), 3);
    Open(kRegistration, [&] {
        listtools::FCHERCHE& dialog = SearchDialog();
        dialog.FND3_OPTRECH(2)->SetValue(true);
        SearchFor(QStringLiteral("-"));
        QCOMPARE(ActiveCell(grid, kRegistration), QStringLiteral("FQ-453-HQ"));
        QCOMPARE(Box("CTX_IMMAT")->Text(), QStringLiteral("FQ-453-HQ"));
        QCOMPARE(dialog.Cmd_GoCherche->text(), QStringLiteral("Suivant"));
        Click(dialog.Cmd_GoCherche);
        QCOMPARE(ActiveCell(grid, kRegistration), QStringLiteral("KG-361-VP"));
        QCOMPARE(dialog.Cmd_GoCherche->text(), QStringLiteral("Suivant"));
        QVERIFY(program_->boxes.Shown().empty());
        Click(dialog.Cmd_GoCherche);
        CompareBoxes(program_->boxes, {kNotFound});
        QCOMPARE(dialog.Cmd_GoCherche->text(), QStringLiteral("Rechercher"));
        QCOMPARE(forms::Screen::ActiveControl(), dialog.Cmd_FinCherche);
        QCOMPARE(forms::Screen::MousePointer(), 0);
        Click(dialog.Cmd_GoCherche);
        QCOMPARE(ActiveCell(grid, kRegistration), QStringLiteral("FQ-453-HQ"));
    });
}

/// The operator did not wait: the click on the closing button is there before the search has ended.
void SearchTest::ASearchThatIsClosedWhileItRunsTellsNothing() {
    Open(kMake, [&] {
        QTest::keyClicks(SearchDialog().CTX3_CHERCHE, QStringLiteral("nulle part"));
        forms::Button* const close = SearchDialog().Cmd_FinCherche;
        forms::SetFocus(close);
        const QPointF place(close->rect().center());
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            const auto held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
            QCoreApplication::postEvent(close, new QMouseEvent(type, place, close->mapToGlobal(place),
                                                               Qt::LeftButton, held, Qt::NoModifier));
        }
        SearchDialog().Cmd_GoCherche->click();
        QCOMPARE(TakeTexts(program_->boxes), QString());
        QCOMPARE(forms::Screen::MousePointer(), 0);
    });
}

void SearchTest::AnotherValueStartsFromTheFirstRow() {
    forms::Grid& grid = *Vehicles().grid;
    Open(kMake, [&] {
        SearchDialog().FND3_OPTRECH(1)->SetValue(true);
        SearchFor(QStringLiteral("R"));
        const int first = grid.ActiveRow();
        for (int press = 0; press < 20; ++press) {
            Click(SearchDialog().Cmd_GoCherche);
        }
        QVERIFY(grid.ActiveRow() > first + 20);
        QTest::keyClick(SearchDialog().CTX3_CHERCHE, Qt::Key_End);
        QTest::keyClicks(SearchDialog().CTX3_CHERCHE, QStringLiteral("E"));
        QCOMPARE(SearchDialog().Cmd_GoCherche->text(), QStringLiteral("Rechercher"));
        Click(SearchDialog().Cmd_GoCherche);
        const QStringList makes = CellsOf(grid, kMake);
        QCOMPARE(grid.ActiveRow(), makes.indexOf(QRegularExpression(QStringLiteral("^RE.*"))) + 1);
    });
}

void SearchTest::AnotherOptionGoesOnFromTheCurrentRow() {
    forms::Grid& grid = *Vehicles().grid;
    Open(kMake, [&] {
        SearchDialog().FND3_OPTRECH(1)->SetValue(true);
        SearchFor(QStringLiteral("R"));
        const int first = grid.ActiveRow();
        Click(SearchDialog().FND3_OPTRECH(2));
        QCOMPARE(SearchDialog().Cmd_GoCherche->text(), QStringLiteral("Suivant"));
        Click(SearchDialog().Cmd_GoCherche);
        QVERIFY(grid.ActiveRow() > first);
        QVERIFY(ActiveCell(grid, kMake).contains(u'R', Qt::CaseInsensitive));
    });
}

void SearchTest::TheFoundRowStaysCurrentWhenTheDialogCloses() {
    Open(kRegistration, [] {
        SearchFor(QStringLiteral("KG-361-VP"));
        Click(SearchDialog().Cmd_FinCherche);
        QVERIFY(!forms::IsLoaded<listtools::FCHERCHE>());
    });
    QCOMPARE(Box("CTX_IMMAT")->Text(), QStringLiteral("KG-361-VP"));
    QCOMPARE(ActiveCell(*Vehicles().grid, kRegistration), QStringLiteral("KG-361-VP"));
    QCOMPARE(Vehicles().grid->MaxRows(), 1500);
}

/// Any text but "Suivant" starts anew.
void SearchTest::TheStoredTextSearchesFromTheFirstRow() {
    Vehicles().grid->SetActiveCell(kMake, 1500);
    QVERIFY(InDialog([] { listtools::GridToolAction(kSearchTool, *Vehicles().grid, Vehicles().data); },
                     [] {
                         EnterText(SearchDialog().CTX3_CHERCHE, QStringLiteral("DACIA"));
                         SearchDialog().Cmd_GoCherche->setText(QStringLiteral("Lancer la recherche"));
                         Click(SearchDialog().Cmd_GoCherche);
                     }));
    QCOMPARE(Vehicles().grid->ActiveRow(),
             static_cast<int>(CellsOf(*Vehicles().grid, kMake).indexOf("DACIA")) + 1);
}

void SearchTest::AWordThatIsNeitherYesNorNoIsNotSearched() {
    ReplaceColumn(*Vehicles().grid, kMake, QStringLiteral("Relance|TVEH_EDIT|8|check|locked"));
    Open(kMake, [] {
        SearchFor(QStringLiteral("peut-être"));
        QCOMPARE(SearchDialog().CTX3_CHERCHE->Text(), QStringLiteral("PEUT-ÊTRE"));
        QCOMPARE(SearchDialog().Cmd_GoCherche->text(), QStringLiteral("Rechercher"));
        QCOMPARE(forms::Screen::MousePointer(), 0);
    });
    QVERIFY(program_->boxes.Shown().empty());
    QCOMPARE(Vehicles().grid->ActiveRow(), 1);
}

void SearchTest::ANumberBoxDoesNotStayEmpty() {
    ReplaceColumn(*Vehicles().grid, kMake, QStringLiteral("Nombre|TVEH_USER2|8|float|locked"));
    Open(kMake, [] {
        PressKey(Qt::Key_Tab);
        QCOMPARE(SearchDialog().CTX3_CHERCHE->Text(), QStringLiteral("0"));
        QCOMPARE(SearchDialog().Cmd_GoCherche->text(), QStringLiteral("Rechercher"));
    });
    QVERIFY(program_->boxes.Shown().empty());
}

void SearchTest::ATextIsNoNumber() {
    ReplaceColumn(*Vehicles().grid, kMake, QStringLiteral("Nombre|TVEH_USER2|8|integer|locked"));
    Open(kMake, [&] {
        QTest::keyClicks(SearchDialog().CTX3_CHERCHE, QStringLiteral("douze"));
        Click(SearchDialog().Cmd_GoCherche);
        CompareBoxes(program_->boxes, {kNumberExpected});
        QCOMPARE(forms::Screen::ActiveControl(), SearchDialog().CTX3_CHERCHE);
        QCOMPARE(SearchDialog().Cmd_GoCherche->text(), QStringLiteral("Rechercher"));
        TypeOver(SearchDialog().CTX3_CHERCHE, QStringLiteral("12"));
        PressKey(Qt::Key_Tab);
        QCOMPARE(program_->boxes.Shown().size(), std::size_t{1});
    });
}

void SearchTest::ADateIsWrittenOut() {
    Open(kDate, [] {
        QTest::keyClicks(SearchDialog().CTX3_CHERCHE, QStringLiteral("5-6-21"));
        PressKey(Qt::Key_Tab);
        QCOMPARE(SearchDialog().CTX3_CHERCHE->Text(), QStringLiteral("05/06/2021"));
    });
    QVERIFY(program_->boxes.Shown().empty());
}

void SearchTest::ATimeOfDayIsLeftOut_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::newRow("behind a date") << QStringLiteral("5/6/21 10:30") << QStringLiteral("05/06/2021");
    QTest::newRow("alone") << QStringLiteral("10:30") << QStringLiteral("30/12/1899");
}

/// The box shows the short date, which is what is searched for.
void SearchTest::ATimeOfDayIsLeftOut() {
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    Open(kDate, [&] {
        QTest::keyClicks(SearchDialog().CTX3_CHERCHE, typed);
        PressKey(Qt::Key_Tab);
        QCOMPARE(SearchDialog().CTX3_CHERCHE->Text(), shown);
    });
    QVERIFY(program_->boxes.Shown().empty());
}

void SearchTest::ATextIsNoDateAndKeepsTheFocus() {
    Open(kDate, [&] {
        QTest::keyClicks(SearchDialog().CTX3_CHERCHE, QStringLiteral("demain"));
        Click(SearchDialog().Cmd_GoCherche);
        CompareBoxes(program_->boxes, {kDateExpected});
        QCOMPARE(forms::Screen::ActiveControl(), SearchDialog().CTX3_CHERCHE);
        QCOMPARE(SearchDialog().CTX3_CHERCHE->Text(), QStringLiteral("demain"));
        QCOMPARE(forms::Screen::MousePointer(), 0);
    });
}

void SearchTest::ADateBoxMayStayEmpty() {
    Open(kDate, [] {
        PressKey(Qt::Key_Tab);
        QCOMPARE(SearchDialog().CTX3_CHERCHE->Text(), QString());
    });
    QVERIFY(program_->boxes.Shown().empty());
}

/// Its cells hold numbers, but it is searched as a text.
void SearchTest::ANumberColumnTakesAnyText() {
    constexpr int kNumberColumn = 6;
    Open(kNumberColumn, [] {
        QTest::keyClicks(SearchDialog().CTX3_CHERCHE, QStringLiteral("douze"));
        PressKey(Qt::Key_Tab);
        QCOMPARE(SearchDialog().CTX3_CHERCHE->Text(), QStringLiteral("douze"));
    });
    QVERIFY(program_->boxes.Shown().empty());
}

void SearchTest::AFailureLeavesTheDialogAsItIs_data() {
    QTest::addColumn<QString>("value");
    QTest::newRow("quote") << QStringLiteral("L'OREE");
    QTest::newRow("statement") << QStringLiteral("x'; delete from TVEH;");
    QTest::newRow("parenthesis") << QStringLiteral("x')");
    QTest::newRow("ten thousand quotes") << QString(10001, u'\'');
}

void SearchTest::AFailureLeavesTheDialogAsItIs() {
    QFETCH(QString, value);
    Open(kMake, [&] {
        listtools::FCHERCHE& dialog = SearchDialog();
        for (int option = 0; option < 3; ++option) {
            dialog.FND3_OPTRECH(option)->SetValue(true);
            SearchFor(value);
            const std::vector<QString> boxes = program_->boxes.TakeTexts();
            QCOMPARE(boxes.size(), std::size_t{1});
            QVERIFY2(boxes.front().startsWith(QStringLiteral("Recherche (ERR. 30")),
                     qPrintable(boxes.front().left(200)));
            QVERIFY(forms::IsLoaded<listtools::FCHERCHE>());
            QCOMPARE(dialog.Cmd_GoCherche->text(), QStringLiteral("Rechercher"));
            QCOMPARE(forms::Screen::MousePointer(), 0);
        }
    });
    QCOMPARE(Vehicles().grid->ActiveRow(), 1);
    QCOMPARE(Vehicles().grid->MaxRows(), 1500);
    QCOMPARE(program_->Ends(), 0);
}

void SearchTest::TheClosingButtonChangesColourWhileItIsHeldDown() {
    Open(kMake, [] {
        forms::Button* const button = SearchDialog().Cmd_FinCherche;
        QTest::mousePress(button, Qt::LeftButton);
        QCOMPARE(button->FaceColor(), 0xFFFFC0);
        QCOMPARE(button->RimColor(), 0xFFFFC0);
        QTest::mouseMove(button, QPoint(-20, -20));
        QTest::mouseRelease(button, Qt::LeftButton, {}, QPoint(-20, -20));
        QCOMPARE(button->FaceColor(), 0xC0C0C0);
        QCOMPARE(button->RimColor(), 0xC0C0C0);
        QVERIFY(forms::IsLoaded<listtools::FCHERCHE>());
    });
}

void SearchTest::TheButtonStandsOutLessWhileItIsHeldDown() {
    Open(kMake, [] {
        forms::Button* const button = SearchDialog().Cmd_GoCherche;
        QTest::mousePress(button, Qt::LeftButton);
        QVERIFY(!button->IsMain());
        QTest::mouseRelease(button, Qt::LeftButton);
        QVERIFY(button->IsMain());
    });
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    SearchTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "search_test.moc"
