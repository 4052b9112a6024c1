// What the five tools do around their dialogs: the list's description, the starting filter, refusals, print
// and Excel.
#include <fstream>
#include <set>

#include <QLabel>

#include <forms/beeps.h>
#include <listtools/list_tool_context.h>

#include "list_program.h"
#include "write_protection.h"

using namespace quardele;
using namespace quardele::tests;

namespace {

using listtools::TheListToolContext;

constexpr int kMake = 2;
constexpr int kUnbound = 8;

const QString kImpossible = QStringLiteral("Opération impossible sur cette colonne.");
const QString kConfirm = QStringLiteral("Confirmez-vous la création du fichier Excel ?");
const QString kWritten = QStringLiteral(
    "Votre fichier Excel a été créé dans C:\\QUARDELE\\VEH   sous le nom :  Liste des véhicules.XLS");

int ErrorOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const basic::RuntimeError& error) {
        return error.Number();
    }
    return 0;
}

}  // namespace

class ToolsTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void init();
    void cleanup() { program_.reset(); }

    void TheListIsDescribedToTheDialog();
    void TheListIsLetGoAfterwards();
    void TheAddressedCellIsTheHeading();
    void ALockedColumnStaysLocked();
    void AnUnlockedColumnStaysUnlocked();
    void AColumnWithoutAFieldIsRefused();
    void TheStartingFilterIsNone();
    void TheStartingFilterIsTheConditionInForce();
    void TheStartingFilterIsWrittenOnce();
    void ABrokenOrderGoesUpToTheCaller();
    void OnlyTheExportDoesWithoutADataControl();
    void TheSearchButtonOfTheVehiclesDoesNothing();
    void EveryButtonOfTheRemindersWorks();
    void PrintingSetsThePage();
    void PrintingGoesBackToTheFirstVehicle();
    void PrintingAnEmptyListGivesTheFocusOnly();
    void ADeclinedExportWritesNothing();
    void TheExportLandsInTheCurrentFolder();
    void TheExportKeepsTheRecordAndTheProtection();
    void TheGridIsNotProtectedWhileItIsWritten();
    void TheExportOfAGridWithoutADataControl();
    void TheExportOfAnEmptyListIsToldLikeAnyOther();
    void ADeclinedExportOfAnEmptyListWritesNothing();
    void TheExportLeavesAListBehindItsLastRecordThere();
    void ToolsTellThatTheyWereNotDeclined();
    void WithBothListsOpenTheOneOpenedLastKeepsTheFilter();
    void AFailedExportIsNotToldApart();
    void AnExportIntoAReadOnlyFolderLeavesTheOldFile();

 private:
    std::unique_ptr<ListProgram> program_;
};

void ToolsTest::init() {
    program_ = std::make_unique<ListProgram>();
    program_->OpenList();
}

void ToolsTest::TheListIsDescribedToTheDialog() {
    const List list = Vehicles();
    list.data->SetRecordSource(
        QStringLiteral("select * from TVEH where TVEH_MARQUE > 'a' order by TVEH_IMMAT desc;"));
    list.data->Refresh();
    list.grid->SetActiveCell(6, 12);
    QVERIFY(InDialog([&] { PressTool(list, kSortTool); },
                     [&] {
                         const listtools::ListToolContext& context = TheListToolContext();
                         QCOMPARE(context.Grid, list.grid);
                         QCOMPARE(context.DataCtl, list.data);
                         QCOMPARE(context.ListKind, QStringLiteral("0"));
                         QCOMPARE(context.ActiveCol, 6);
                         QCOMPARE(context.ActiveRow, 12);
                         QCOMPARE(context.FieldName, QStringLiteral("TVEH_USER2"));
                         QCOMPARE(context.ColumnTitle, Cell("DBG_Liste", 6, 0));
                         QCOMPARE(context.ColumnType, forms::CellType::Number);
                         QCOMPARE(context.SelectPart, QStringLiteral("SELECT * FROM TVEH"));
                         QCOMPARE(context.WherePart, QStringLiteral("TVEH_MARQUE > 'A'"));
                         QCOMPARE(context.OrderPart, QStringLiteral("TVEH_IMMAT DESC"));
                     }));
}

void ToolsTest::TheListIsLetGoAfterwards() {
    GoToColumn(*Vehicles().grid, kMake);
    QVERIFY(InDialog([] { PressTool(Vehicles(), kSortTool); },
                     [] { QVERIFY(TheListToolContext().Grid != nullptr); }));
    QVERIFY(TheListToolContext().Grid == nullptr);
    QVERIFY(TheListToolContext().DataCtl == nullptr);
    QCOMPARE(TheListToolContext().FieldName, QStringLiteral("TVEH_MARQUE"));
    QCOMPARE(ErrorOf([] { static_cast<void>(listtools::GridOf(TheListToolContext())); }),
             basic::error::kObjectNotSet);
}

void ToolsTest::TheAddressedCellIsTheHeading() {
    GoToColumn(*Vehicles().grid, kMake);
    QVERIFY(InDialog([] { PressTool(Vehicles(), kSortTool); }, [] {}));
    QCOMPARE(Vehicles().grid->Row(), 0);
    QCOMPARE(Vehicles().grid->Col(), kMake);
}

void ToolsTest::ALockedColumnStaysLocked() {
    forms::Grid& grid = *Vehicles().grid;
    GoToColumn(grid, kMake);
    QVERIFY(InDialog([] { PressTool(Vehicles(), kSortTool); }, [] {}));
    grid.SetCol(kMake);
    for (const int row : {-1, 1}) {
        grid.SetRow(row);
        QVERIFY(grid.Lock());
    }
}

void ToolsTest::AnUnlockedColumnStaysUnlocked() {
    forms::Grid& grid = *Vehicles().grid;
    ReplaceColumn(grid, kMake, QStringLiteral("Marque|TVEH_MARQUE|8|text|"));
    GoToColumn(grid, kMake);
    QVERIFY(InDialog([] { listtools::GridToolAction(kSortTool, *Vehicles().grid, Vehicles().data); }, [] {}));
    grid.SetCol(kMake);
    grid.SetRow(1);
    QVERIFY(!grid.Lock());
}

void ToolsTest::AColumnWithoutAFieldIsRefused() {
    program_->OpenReminders();
    const List list = Reminders();
    list.grid->SetActiveCell(kUnbound, 1);
    const QString before = list.data->RecordSource();
    for (const int tool : {kSelectionTool, kSearchTool, kSortTool}) {
        const int beeps = forms::BeepsSoFar();
        QVERIFY(!InDialog([&] { PressTool(list, tool); }, [] {}));
        QCOMPARE(forms::BeepsSoFar(), beeps + 1);
        CompareBoxes(program_->boxes, {kImpossible});
        program_->boxes.TakeTexts();
    }
    QCOMPARE(list.data->RecordSource(), before);
}

void ToolsTest::TheStartingFilterIsNone() {
    GoToColumn(*Vehicles().grid, kMake);
    QCOMPARE(Form().Tag(), QString());
    QVERIFY(InDialog([] { PressTool(Vehicles(), kSortTool); }, [] {}));
    QCOMPARE(Form().Tag(), QStringLiteral("***"));
}

void ToolsTest::TheStartingFilterIsTheConditionInForce() {
    program_->OpenReminders();
    const List list = Reminders();
    list.grid->SetActiveCell(2, 1);
    QVERIFY(InDialog([&] { PressTool(list, kSearchTool); }, [] {}));
    QCOMPARE(list.form->Tag(),
             QStringLiteral("(((DATEADD('M',[TVEH_DETAIL_PERIOD],[TVEH_DETAIL_DATVIS]))<#11/20/2026#)) AND "
                            "[TVEH_DETAIL_PERIOD]<> 0"));
    const int all = list.grid->MaxRows();
    SelectOn(list, 2, 0, QStringLiteral("14"));
    QVERIFY(list.grid->MaxRows() < all);
    SelectOn(list, 2, 0, QString());
    QCOMPARE(list.grid->MaxRows(), all);
}

void ToolsTest::TheStartingFilterIsWrittenOnce() {
    SelectOn(Vehicles(), kMake, 1, QStringLiteral("DACIA"));
    QCOMPARE(Form().Tag(), QStringLiteral("***"));
    GoToColumn(*Vehicles().grid, kMake);
    QVERIFY(InDialog([] { PressTool(Vehicles(), kSortTool); }, [] {}));
    QCOMPARE(Form().Tag(), QStringLiteral("***"));
}

void ToolsTest::ABrokenOrderGoesUpToTheCaller() {
    Vehicles().data->SetRecordSource(QStringLiteral("select * from TVEH order by"));
    QCOMPARE(ErrorOf([] { listtools::GridToolAction(kSortTool, *Vehicles().grid, Vehicles().data); }),
             basic::error::kInvalidCall);
}

void ToolsTest::OnlyTheExportDoesWithoutADataControl() {
    for (const int tool : {kSelectionTool, kSearchTool, kSortTool, kPrintTool}) {
        QCOMPARE(ErrorOf([tool] { listtools::GridToolAction(tool, *Vehicles().grid, nullptr); }),
                 basic::error::kObjectNotSet);
    }
}

void ToolsTest::TheSearchButtonOfTheVehiclesDoesNothing() {
    PressKey(Qt::Key_Down);
    const QString before = Box("CTX_IMMAT")->Text();
    QVERIFY(!InDialog([] { PressTool(Vehicles(), kSearchTool); }, [] {}));
    QVERIFY(program_->boxes.Shown().empty());
    QCOMPARE(Box("CTX_IMMAT")->Text(), before);
    QCOMPARE(Form().Tag(), QString());
}

void ToolsTest::EveryButtonOfTheRemindersWorks() {
    program_->OpenReminders();
    const List list = Reminders();
    list.grid->SetActiveCell(2, 1);
    QVERIFY(InDialog([&] { PressTool(list, kSelectionTool); },
                     [] { QCOMPARE(Selection().Caption(), QStringLiteral("Sélection sur [Immat.]")); }));
    QVERIFY(InDialog([&] { PressTool(list, kSearchTool); },
                     [] { QCOMPARE(SearchDialog().Caption(), QStringLiteral("Recherche sur [Immat.]")); }));
    QVERIFY(InDialog([&] { PressTool(list, kSortTool); },
                     [] { QCOMPARE(SortDialog().Caption(), QStringLiteral("Classer sur [Immat.]")); }));
    QVERIFY(InDialog([&] { PressTool(list, kPrintTool); }, [] {}));
    program_->boxes.AnswerNo();
    PressTool(list, kExcelTool);
    CompareBoxes(program_->boxes, {kConfirm});
}

void ToolsTest::PrintingSetsThePage() {
    forms::Grid& grid = *Vehicles().grid;
    grid.SetPrintBorder(false);
    grid.SetPrintColHeaders(false);
    grid.SetPrintRowHeaders(true);
    grid.SetPrintGrid(false);
    grid.SetPrintColor(true);
    grid.SetPrintShadows(true);
    QVERIFY(InDialog([] { PressTool(Vehicles(), kPrintTool); }, [] {}));
    QVERIFY(grid.PrintBorder());
    QVERIFY(grid.PrintColHeaders());
    QVERIFY(!grid.PrintRowHeaders());
    QVERIFY(grid.PrintGrid());
    QVERIFY(!grid.PrintColor());
    QVERIFY(!grid.PrintShadows());
    QCOMPARE(grid.PrintOrientation(), 2);
    QCOMPARE(forms::Grid::PrintType(), 0);
    QCOMPARE(Form().Tag(), QStringLiteral("***"));
}

/// All rows are there and the first is current when the pages are made; wherever the record went, the first
/// is current again behind it.
void ToolsTest::PrintingGoesBackToTheFirstVehicle() {
    const QString first = Cell("DBG_Liste", 1, 1);
    PressKey(Qt::Key_Down);
    QVERIFY(Box("CTX_IMMAT")->Text() != first);
    QVERIFY(InDialog([] { PressTool(Vehicles(), kPrintTool); },
                     [&] {
                         QCOMPARE(Box("CTX_IMMAT")->Text(), first);
                         QCOMPARE(Vehicles().data->Recordset()->RecordCount(), std::size_t{1500});
                         Vehicles().data->Recordset()->MoveLast();
                     }));
    QCOMPARE(Box("CTX_IMMAT")->Text(), first);
    QCOMPARE(forms::Screen::ActiveControl(), Grid("DBG_Liste"));
}

void ToolsTest::PrintingAnEmptyListGivesTheFocusOnly() {
    EmptyTheVehicles();
    QVERIFY(!InDialog([] { PressTool(Vehicles(), kPrintTool); }, [] {}));
    QVERIFY(program_->boxes.Shown().empty());
    QCOMPARE(Form().Tag(), QString());
    QCOMPARE(forms::Screen::ActiveControl(), Grid("DBG_Liste"));
}

void ToolsTest::ADeclinedExportWritesNothing() {
    PressKey(Qt::Key_Down);
    const QString before = Box("CTX_IMMAT")->Text();
    program_->boxes.AnswerNo();
    program_->boxes.LookAtBoxes([] { Vehicles().data->Recordset()->MoveLast(); });
    QVERIFY(!listtools::GridToolAction(kExcelTool, *Vehicles().grid, Vehicles().data));
    CompareBoxes(program_->boxes, {kConfirm});
    QCOMPARE(Box("CTX_IMMAT")->Text(), before);
    QVERIFY(!std::filesystem::exists(program_->CurrentFolder() / "Liste des véhicules.XLS"));
    QCOMPARE(Form().Tag(), QString());
}

void ToolsTest::TheExportLandsInTheCurrentFolder() {
    PressTool(Vehicles(), kExcelTool);
    CompareBoxes(program_->boxes, {kConfirm, kWritten});
    const std::filesystem::path file = program_->CurrentFolder() / "Liste des véhicules.XLS";
    QVERIFY(std::filesystem::exists(file));
    QVERIFY(std::filesystem::file_size(file) > 100000);
    QCOMPARE(forms::Screen::MousePointer(), 0);
}

void ToolsTest::TheExportKeepsTheRecordAndTheProtection() {
    PressKey(Qt::Key_Down);
    const QString before = Box("CTX_IMMAT")->Text();
    program_->boxes.LookAtBoxes([] { Vehicles().data->Recordset()->MoveLast(); });
    forms::Grid& grid = *Vehicles().grid;
    grid.SetPrintColHeaders(false);
    QVERIFY(listtools::GridToolAction(kExcelTool, grid, Vehicles().data));
    QCOMPARE(Box("CTX_IMMAT")->Text(), before);
    QVERIFY(grid.Protect());
    QVERIFY(grid.PrintColHeaders());

    grid.SetProtect(false);
    QVERIFY(listtools::GridToolAction(kExcelTool, grid, Vehicles().data));
    QVERIFY(!grid.Protect());
}

void ToolsTest::TheGridIsNotProtectedWhileItIsWritten() {
    forms::Grid& grid = *Vehicles().grid;
    QList<bool> writing;
    connect(&grid, &forms::Grid::DataFill, this, [&] { writing.append(grid.Protect()); });
    PressTool(Vehicles(), kExcelTool);
    QVERIFY(!writing.isEmpty());
    QCOMPARE(writing.count(true), 0);
    QVERIFY(grid.Protect());
}

void ToolsTest::TheExportOfAGridWithoutADataControl() {
    PressKey(Qt::Key_Down);
    forms::Grid grid;
    grid.SetColumnLines({QStringLiteral("Nom||10")});
    grid.SetToolTipText(QStringLiteral("Noms"));
    QVERIFY(listtools::GridToolAction(kExcelTool, grid, nullptr));
    QVERIFY(std::filesystem::exists(program_->CurrentFolder() / "Noms.XLS"));
}

/// A list without rows has no record to come back to; it is asked for, written and told like any other.
void ToolsTest::TheExportOfAnEmptyListIsToldLikeAnyOther() {
    EmptyTheVehicles();
    QVERIFY(listtools::GridToolAction(kExcelTool, *Vehicles().grid, Vehicles().data));
    CompareBoxes(program_->boxes, {kConfirm, kWritten});
    QCOMPARE(Vehicles().grid->ExportFailure(), QString());
    QVERIFY(std::filesystem::exists(program_->CurrentFolder() / "Liste des véhicules.XLS"));
    PressTool(Vehicles(), kExcelTool);
    QCOMPARE(program_->Ends(), 0);
}

void ToolsTest::ADeclinedExportOfAnEmptyListWritesNothing() {
    EmptyTheVehicles();
    program_->boxes.AnswerNo();
    QVERIFY(!listtools::GridToolAction(kExcelTool, *Vehicles().grid, Vehicles().data));
    CompareBoxes(program_->boxes, {kConfirm});
    QVERIFY(!std::filesystem::exists(program_->CurrentFolder() / "Liste des véhicules.XLS"));
}

void ToolsTest::TheExportLeavesAListBehindItsLastRecordThere() {
    dao::Recordset& rows = Vehicles().data->Opened();
    rows.MoveLast();
    rows.MoveNext();
    PressTool(Vehicles(), kExcelTool);
    CompareBoxes(program_->boxes, {kConfirm, kWritten});
    QVERIFY(rows.Eof());
    QCOMPARE(program_->Ends(), 0);
}

void ToolsTest::ToolsTellThatTheyWereNotDeclined() {
    GoToColumn(*Vehicles().grid, kMake);
    for (const int tool : {kSelectionTool, kSearchTool, kSortTool, kPrintTool}) {
        bool result = false;
        QVERIFY(InDialog([&] { result = listtools::GridToolAction(tool, *Vehicles().grid, Vehicles().data); },
                         [] {}));
        QVERIFY(result);
    }
    ReplaceColumn(*Vehicles().grid, kMake, QStringLiteral("Marque||8|text|locked"));
    GoToColumn(*Vehicles().grid, kMake);
    QVERIFY(listtools::GridToolAction(kSortTool, *Vehicles().grid, Vehicles().data));
}

/// A tool takes the form that was loaded last for its caller. With the reminders opened behind the vehicles,
/// their form keeps the filter of whichever list a tool is first used on, and an empty selection on either
/// list brings that back.
void ToolsTest::WithBothListsOpenTheOneOpenedLastKeepsTheFilter() {
    program_->OpenReminders();
    const auto select = [](const List& list, int column, const QString& value) {
        GoToColumn(*list.grid, column);
        QVERIFY(InDialog([&] { listtools::GridToolAction(kSelectionTool, *list.grid, list.data); },
                         [&] { Select(1, value); }));
    };
    select(Vehicles(), kMake, QStringLiteral("DACIA"));
    QCOMPARE(Form().Tag(), QString());
    QCOMPARE(Reminders().form->Tag(), QStringLiteral("***"));
    select(Reminders(), 2, QString());
    QVERIFY2(!Reminders().data->RecordSource().contains(QStringLiteral(" Where ")),
             qPrintable(Reminders().data->RecordSource()));
}

void ToolsTest::AFailedExportIsNotToldApart() {
    std::filesystem::create_directory(program_->CurrentFolder() / "Liste des véhicules.XLS");
    PressTool(Vehicles(), kExcelTool);
    QCOMPARE(program_->boxes.Shown().size(), std::size_t{2});
    QCOMPARE(program_->boxes.Shown().front().text, kConfirm);
    QVERIFY(program_->boxes.Shown().back().text.startsWith(QStringLiteral("Votre fichier Excel a été créé")));
    const QString reason = Vehicles().grid->ExportFailure();
    QVERIFY(!reason.isEmpty());
    auto* const strip = Vehicles().grid->findChild<QLabel*>(QStringLiteral("GridNotice"));
    QVERIFY(strip->isVisible());
    QCOMPARE(strip->text(), reason);
    QCOMPARE(forms::Screen::MousePointer(), 0);
}

void ToolsTest::AnExportIntoAReadOnlyFolderLeavesTheOldFile() {
    const std::filesystem::path folder = program_->CurrentFolder();
    const std::filesystem::path file = folder / "Liste des véhicules.XLS";
    std::ofstream(file) << "ancien";
    const auto files = [&folder] {
        std::set<std::filesystem::path> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            names.insert(entry.path());
        }
        return names;
    };
    const auto before = files();
    {
        const WriteProtection readOnly(folder);
        PressTool(Vehicles(), kExcelTool);
    }
    CompareBoxes(program_->boxes, {kConfirm, kWritten});
    QVERIFY(!Vehicles().grid->ExportFailure().isEmpty());
    QVERIFY(Vehicles().grid->findChild<QLabel*>(QStringLiteral("GridNotice"))->isVisible());
    QVERIFY(files() == before);
    std::string content;
    std::getline(std::ifstream(file), content);
    QCOMPARE(content, std::string("ancien"));
    QCOMPARE(program_->Ends(), 0);
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    ToolsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tools_test.moc"
