// The sort dialog: what it writes into the list's statement, and how it ends.
#include <algorithm>

#include <QLabel>
#include <QRegularExpression>

#include "list_program.h"

using namespace quardele;
using namespace quardele::tests;

namespace {

constexpr int kRegistration = 1;
constexpr int kMake = 2;

/// What the order of texts goes by first: letters without case and accents.
QString SortKey(const QString& text) {
    static const QRegularExpression accents(QStringLiteral("\\p{Mn}"));
    return text.normalized(QString::NormalizationForm_D).remove(accents).toUpper();
}

bool ComesBefore(const QString& text, const QString& other) {
    return SortKey(text) < SortKey(other);
}

}  // namespace

class SortTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void init();
    void cleanup() { program_.reset(); }

    void ItOpensWithItsDefaults();
    void TabReachesEveryControlInOrder();
    void EnterOnAnOptionGoesToTheNextControl();
    void ClosingItChangesNothing();
    void Statements_data();
    void Statements();
    void RowsComeInTheirNewOrder();
    void TheSameRowsComeBackWhenASelectionIsInForce();
    void TheSortInForceIsNotSentAgain();
    void RefiningByTheSortInForceChangesNothing();
    void AFieldOfSmallLettersIsSortedAfresh();
    void AFailureIsToldAndTheDialogCloses();
    void TheNextOpeningReadsTheWholeOrder();
    void TheButtonStandsOutLessWhileItIsHeldDown();

 private:
    [[nodiscard]] QString Source() const { return Vehicles().data->RecordSource(); }
    void Start(const QString& source) {
        Vehicles().data->SetRecordSource(source);
        Vehicles().data->Refresh();
    }
    void Sort(int column, bool descending, bool refine) {
        GoToColumn(*Vehicles().grid, column);
        QVERIFY(InDialog([] { PressTool(Vehicles(), kSortTool); },
                         [=] {
                             if (descending) {
                                 QTest::keyClick(SortDialog().FND3_OPTClasser(0), Qt::Key_Down);
                             }
                             SortDialog().CHK_TYPTRI->SetValue(refine ? 1 : 0);
                             Click(SortDialog().Cmd_GoClasser);
                             QVERIFY(!forms::IsLoaded<listtools::FCLASSE>());
                         }));
    }

    std::unique_ptr<ListProgram> program_;
};

void SortTest::init() {
    program_ = std::make_unique<ListProgram>();
    program_->OpenList();
}

void SortTest::ItOpensWithItsDefaults() {
    GoToColumn(*Vehicles().grid, kMake);
    QVERIFY(InDialog([] { PressTool(Vehicles(), kSortTool); },
                     [] {
                         listtools::FCLASSE& dialog = SortDialog();
                         QCOMPARE(dialog.Caption(), QStringLiteral("Classer sur [Marque]"));
                         QCOMPARE(
                             dialog.Surface()->findChild<QLabel*>(QStringLiteral("FND_LabelClasser"))->text(),
                             QStringLiteral("Ordre de classement:"));
                         QCOMPARE(dialog.FND3_OPTClasser(0)->text(), QStringLiteral("croissant"));
                         QCOMPARE(dialog.FND3_OPTClasser(1)->text(), QStringLiteral("décroissant"));
                         QCOMPARE(dialog.CHK_TYPTRI->text(), QStringLiteral("Affiner le classement"));
                         QVERIFY(dialog.FND3_OPTClasser(0)->Value());
                         QVERIFY(!dialog.FND3_OPTClasser(1)->Value());
                         QCOMPARE(dialog.CHK_TYPTRI->Value(), 0);
                         QCOMPARE(forms::Screen::ActiveControl(), dialog.FND3_OPTClasser(0));
                         QCOMPARE(dialog.Left(), (MainWindow().Width() - dialog.ScaleWidth()) / 2);
                     }));
}

void SortTest::TabReachesEveryControlInOrder() {
    GoToColumn(*Vehicles().grid, kMake);
    QVERIFY(InDialog([] { PressTool(Vehicles(), kSortTool); },
                     [] {
                         listtools::FCLASSE& dialog = SortDialog();
                         for (QWidget* next : std::initializer_list<QWidget*>{
                                  dialog.CHK_TYPTRI, dialog.Cmd_GoClasser, dialog.Cmd_FinClasser,
                                  dialog.FND3_OPTClasser(0)}) {
                             PressKey(Qt::Key_Tab);
                             QCOMPARE(forms::Screen::ActiveControl(), next);
                         }
                     }));
}

void SortTest::EnterOnAnOptionGoesToTheNextControl() {
    GoToColumn(*Vehicles().grid, kMake);
    QVERIFY(InDialog([] { PressTool(Vehicles(), kSortTool); },
                     [] {
                         for (int option = 0; option < 2; ++option) {
                             SortDialog().FND3_OPTClasser(option)->SetValue(true);
                             forms::SetFocus(SortDialog().FND3_OPTClasser(option));
                             PressKey(Qt::Key_Return);
                             QVERIFY(forms::IsLoaded<listtools::FCLASSE>());
                             QCOMPARE(forms::Screen::ActiveControl(), SortDialog().CHK_TYPTRI);
                         }
                     }));
}

void SortTest::ClosingItChangesNothing() {
    const QString before = Source();
    GoToColumn(*Vehicles().grid, kMake);
    QVERIFY(InDialog([] { PressTool(Vehicles(), kSortTool); },
                     [] {
                         Click(SortDialog().FND3_OPTClasser(1));
                         Click(SortDialog().Cmd_FinClasser);
                         QVERIFY(!forms::IsLoaded<listtools::FCLASSE>());
                     }));
    QCOMPARE(Source(), before);
}

void SortTest::Statements_data() {
    QTest::addColumn<QString>("before");
    QTest::addColumn<bool>("descending");
    QTest::addColumn<bool>("refine");
    QTest::addColumn<QString>("after");
    const QString plain = QStringLiteral("select * from TVEH");
    QTest::newRow("ascending") << plain << false << false
                               << QStringLiteral("SELECT * FROM TVEH Order by TVEH_MARQUE;");
    QTest::newRow("descending") << plain << true << false
                                << QStringLiteral("SELECT * FROM TVEH Order by TVEH_MARQUE DESC;");
    QTest::newRow("refined without a sort")
        << plain << false << true << QStringLiteral("SELECT * FROM TVEH Order by TVEH_MARQUE;");
    const QString sorted = QStringLiteral("select * from TVEH order by TVEH_CODCLI;");
    QTest::newRow("replaced") << sorted << false << false
                              << QStringLiteral("SELECT * FROM TVEH Order by TVEH_MARQUE;");
    QTest::newRow("refined") << sorted << false << true
                             << QStringLiteral("SELECT * FROM TVEH Order by TVEH_CODCLI, TVEH_MARQUE;");
    QTest::newRow("refined, descending")
        << sorted << true << true
        << QStringLiteral("SELECT * FROM TVEH Order by TVEH_CODCLI, TVEH_MARQUE DESC;");
    QTest::newRow("with a selection")
        << QStringLiteral("SELECT * FROM TVEH Where left(TVEH_IMMAT,1) = 'A' ;") << true << false
        << QStringLiteral("SELECT * FROM TVEH Where LEFT(TVEH_IMMAT,1) = 'A'  Order by TVEH_MARQUE DESC;");
    QTest::newRow("with a selection and a sort")
        << QStringLiteral("SELECT * FROM TVEH Where TVEH_IMMAT> 'B'  Order by TVEH_CODCLI DESC;") << false
        << true
        << QStringLiteral(
               "SELECT * FROM TVEH Where TVEH_IMMAT> 'B'  Order by TVEH_CODCLI DESC, TVEH_MARQUE;");
}

void SortTest::Statements() {
    QFETCH(QString, before);
    QFETCH(bool, descending);
    QFETCH(bool, refine);
    QFETCH(QString, after);
    Start(before);
    Sort(kMake, descending, refine);
    QCOMPARE(Source(), after);
    QCOMPARE(forms::Screen::MousePointer(), 0);
    QVERIFY(program_->boxes.Shown().empty());
}

void SortTest::RowsComeInTheirNewOrder() {
    QStringList makes = CellsOf(*Vehicles().grid, kMake);
    Sort(kMake, false, false);
    std::sort(makes.begin(), makes.end(), ComesBefore);
    QCOMPARE(CellsOf(*Vehicles().grid, kMake), makes);
    Sort(kMake, true, false);
    std::reverse(makes.begin(), makes.end());
    QCOMPARE(CellsOf(*Vehicles().grid, kMake), makes);
    QCOMPARE(Vehicles().grid->MaxRows(), 1500);
}

void SortTest::TheSameRowsComeBackWhenASelectionIsInForce() {
    SelectOn(Vehicles(), kMake, 1, QStringLiteral("DACIA"));
    QStringList registrations = CellsOf(*Vehicles().grid, kRegistration);
    Sort(kRegistration, true, false);
    QStringList sorted = CellsOf(*Vehicles().grid, kRegistration);
    QVERIFY(sorted.size() > 1);
    registrations.sort();
    sorted.sort();
    QCOMPARE(sorted, registrations);
    QCOMPARE(CellsOf(*Vehicles().grid, kMake).count(QStringLiteral("DACIA")), sorted.size());
}

void SortTest::TheSortInForceIsNotSentAgain() {
    const QString before = QStringLiteral("select * from TVEH order by TVEH_MARQUE desc");
    Start(before);
    Vehicles().grid->SetActiveCell(kMake, 7);
    QVERIFY(InDialog([] { PressTool(Vehicles(), kSortTool); },
                     [] {
                         SortDialog().FND3_OPTClasser(1)->SetValue(true);
                         Click(SortDialog().Cmd_GoClasser);
                     }));
    QCOMPARE(Source(), before);
    QCOMPARE(Vehicles().grid->ActiveRow(), 7);
}

void SortTest::RefiningByTheSortInForceChangesNothing() {
    const QString before = QStringLiteral("select * from TVEH order by TVEH_MARQUE");
    Start(before);
    Sort(kMake, false, true);
    QCOMPARE(Source(), before);
}

void SortTest::AFieldOfSmallLettersIsSortedAfresh() {
    constexpr int kComplement = 4;
    Start(QStringLiteral("select * from TVEH order by TVEH_ComplIdent"));
    Sort(kComplement, false, false);
    QCOMPARE(Source(), QStringLiteral("SELECT * FROM TVEH Order by TVEH_ComplIdent;"));
}

void SortTest::AFailureIsToldAndTheDialogCloses() {
    ReplaceColumn(*Vehicles().grid, kMake, QStringLiteral("Absente|TVEH_ABSENTE|8|text|locked"));
    Sort(kMake, false, false);
    const std::vector<QString> boxes = program_->boxes.TakeTexts();
    QCOMPARE(boxes.size(), std::size_t{1});
    QVERIFY2(boxes.front().startsWith(QStringLiteral("CLASSER (ERR. 3061): ")), qPrintable(boxes.front()));
    QCOMPARE(listtools::TheListToolContext().OrderPart, QStringLiteral("TVEH_ABSENTE"));
    QCOMPARE(forms::Screen::MousePointer(), 0);
    QCOMPARE(program_->Ends(), 0);
}

void SortTest::TheNextOpeningReadsTheWholeOrder() {
    Start(QStringLiteral("select * from TVEH order by TVEH_CODCLI"));
    Sort(kMake, true, true);
    QCOMPARE(listtools::TheListToolContext().OrderPart, QStringLiteral("TVEH_MARQUE DESC"));
    Sort(kRegistration, false, true);
    QCOMPARE(Source(),
             QStringLiteral("SELECT * FROM TVEH Order by TVEH_CODCLI, TVEH_MARQUE DESC, TVEH_IMMAT;"));
}

void SortTest::TheButtonStandsOutLessWhileItIsHeldDown() {
    GoToColumn(*Vehicles().grid, kMake);
    QVERIFY(InDialog([] { PressTool(Vehicles(), kSortTool); },
                     [] {
                         forms::Button* const button = SortDialog().Cmd_GoClasser;
                         QVERIFY(button->IsMain());
                         QTest::mousePress(button, Qt::LeftButton);
                         QVERIFY(!button->IsMain());
                         QTest::mouseMove(button, QPoint(-20, -20));
                         QTest::mouseRelease(button, Qt::LeftButton, {}, QPoint(-20, -20));
                         QVERIFY(button->IsMain());
                     }));
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    SortTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "sort_test.moc"
