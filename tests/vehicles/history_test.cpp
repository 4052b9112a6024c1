// The history of a vehicle: its rows, its frames, its tools, its print header.
#include <algorithm>
#include <map>

#include <QTabBar>

#include <basic/date.h>
#include <forms/strings.h>

#include "job_rows.h"
#include "list_program.h"

using namespace quardele;
using namespace quardele::tests;

namespace {

constexpr int kDateColumn = 1;
constexpr int kNumberColumn = 2;
constexpr int kLabelColumn = 4;
constexpr int kDetailColumn = 5;

/// A vehicle of the made installation with jobs of its own and memos.
const QString kVehicle = QStringLiteral("1191 JR 43");

const QString kImpossible = QStringLiteral("Opération impossible sur cette colonne.");

void OpenHistoryOf(const QString& registration) {
    OpenRecordOf(registration);
    Press("CMD_HistoVis");
}

forms::Button* Tool(int index) {
    return forms::ControlArray<forms::Button>(Form().Surface(), QStringLiteral("Cmd_ToolBar_Histo"))(index);
}

void PressTool(int index) {
    QTest::mouseClick(Tool(index), Qt::LeftButton);
    QCoreApplication::processEvents();
}

/// A vehicle with jobs of 2026 and 2024, one that shows no date, and one that has not left.
void OpenFourJobs() {
    const QString vehicle = QStringLiteral("ZY-100-AA");
    AddJob({900001, vehicle, QStringLiteral("2024"), basic::DateOf(2030, 1, 1), {}});
    AddJobDetail(900001, vehicle, basic::DateOf(2024, 5, 2));
    AddJob({900002, vehicle, QStringLiteral("2026"), basic::DateOf(1999, 1, 1), {}});
    AddJobDetail(900002, vehicle, basic::DateOf(2026, 2, 1));
    AddJob({900003, vehicle, QStringLiteral("prévue"), basic::DateOf(2025, 1, 5), {}});
    AddJob({900004, vehicle, QStringLiteral("sans date"), {}, basic::DateOf(1999, 12, 31)});
    OpenRecordOf(kVehicle);
    Box("CTX_IMMAT")->SetText(vehicle);
    Press("CMD_HistoVis");
}

bool IsItalic(int column) {
    forms::Grid& jobs = *Grid("DBG_HISTO");
    jobs.SetRow(0);
    jobs.SetCol(column);
    return jobs.FontItalic();
}

forms::MemoBox* DetailBox() {
    return Control<forms::MemoBox>("CTX_DETAILAFF");
}

bool HistoryShown() {
    return Shown(Control<QWidget>("FRM_HISTO"));
}
bool DetailShown() {
    return Shown(Control<QWidget>("FRM_DETAIL"));
}

/// Empty where there is no sample installation.
std::filesystem::path SampleFolder() {
    const std::filesystem::path folder = std::filesystem::path(QUARDELE_SAMPLE_DIR) / "QUARDELE";
    return std::filesystem::exists(folder) ? folder : std::filesystem::path();
}

/// Presses the printing tool; whether the pages were offered, in the way of this machine.
bool PrintIsOffered() {
    QString window;
    const bool opened = InDialog([] { PressTool(kPrintTool); },
                                 [&] { window = QApplication::activeModalWidget()->objectName(); });
    return opened && (window == u"PrintToPdf" || window == u"PrintPreview");
}

}  // namespace

class HistoryTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void init();
    void cleanup() { program_.reset(); }

    void TheQueryNamesTheRegistrationTwice();
    void TheJobsOfAVehicleAreListed_data();
    void TheJobsOfAVehicleAreListed();
    void AJobWithSeveralLinesHasSeveralRows();
    void AJobWithoutAnExitDateStandsWhereItsSecondDatePutsIt();
    void AJobOfTheSampleThatHasNotLeftComesLastWithItsPlannedDay();
    void TheColumnsAreAsDesigned();
    void ThereIsNothingForAnEmptyRegistration();
    void AnApostropheInTheRegistrationEndsTheProgram();
    void AVehicleWithoutJobsHasAnEmptyFrame();
    void APendingEntryIsNotAskedFor();
    void TheHistoryIsNoPendingEntry();
    void TheFrameOpensInFrontWithTheFocusInTheList();
    void TheFramesMoveAtTheFirstActivation();
    void AnotherVehicleFillsItAnew();
    void OpenedAgainItComesInFrontOfTheDetail();
    void EscapeClosesIt_data();
    void EscapeClosesIt();
    void ItsButtonClosesIt();
    void AClickOnTheButtonCellOpensTheDetail();
    void TheSpaceBarOnTheButtonCellOpensTheDetail();
    void AClickOnTheHeadingOfTheButtonsOpensTheDetail();
    void TheHeadingsWorkWithoutJobsToo();
    void AClickOnAnyOtherColumnMarksIt();
    void TheDetailFollowsTheCurrentJob_data();
    void TheDetailFollowsTheCurrentJob();
    void ALongTextOfTheSampleIsShownWhole();
    void TheDetailCannotBeTypedInto();
    void EscapeInTheDetailClosesThatOnly_data();
    void EscapeInTheDetailClosesThatOnly();
    void TheButtonOfTheDetailClosesThatOnly();
    void TheSelectionOfTheDatesHasItsOwnFrame();
    void TheSelectionOfOtherColumnsIsTheDialog();
    void TheSearchWorksHere();
    void TheSortWorksHere();
    void TheDatesShownCanBeSorted();
    void ADayCanBeSearchedAmongTheDatesShown();
    void TheExportWorksHere();
    void AColumnWithoutAFieldIsRefused();
    void ASortStaysUntilTheNextOpening();
    void ThePrintHeaderNamesTheVehicle();
    void AnEmptyListIsPrintedToo();
    void TheKeysOfTheTools();

 private:
    std::unique_ptr<ListProgram> program_;
};

void HistoryTest::init() {
    program_ = std::make_unique<ListProgram>();
    program_->OpenList();
}

void HistoryTest::TheQueryNamesTheRegistrationTwice() {
    OpenHistoryOf(QStringLiteral("2107 RC 59"));
    QCOMPARE(Data("DBD_HISTO")->RecordSource(),
             QStringLiteral("SELECT IIf([TAFF_DETAIL_DatSortieEff] Is Not "
                            "Null,[TAFF_DETAIL_DatSortieEff],[TAFF_DatLivrPrev]) AS DateVisite, "
                            "TAFF.TAFF_Numaff, TAFF.TAFF_CodCli, TAFF.TAFF_CM, TAFF.TAFF_LibOpe, "
                            "TAFF.TAFF_DetailOpe "
                            "FROM TAFF LEFT JOIN TAFF_DETAIL ON TAFF.TAFF_Numaff = "
                            "TAFF_DETAIL.TAFF_DETAIL_Numaff "
                            "WHERE (((TAFF_DETAIL.TAFF_DETAIL_Ident)='2107 RC 59')) OR "
                            "(([TAFF_Immatr]='2107 RC 59')) "
                            "ORDER by IIf([TAFF_DETAIL_DatSortieEff] Is Not "
                            "Null,[TAFF_DETAIL_DatSortieEff],[TAFF_DatSortieEff]) DESC;"));
}

void HistoryTest::TheJobsOfAVehicleAreListed_data() {
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("registration");
    QTest::addColumn<bool>("throughDetailOnly");
    const QString made = QStringLiteral(QUARDELE_INSTALLATION_DIR);
    const QString sample = QStringLiteral(QUARDELE_SAMPLE_DIR);
    QTest::newRow("made: memos") << made << kVehicle << false;
    QTest::newRow("made: blanks behind the job's registration")
        << made << QStringLiteral("CF-974-BL") << false;
    QTest::newRow("made: not gone yet") << made << QStringLiteral("RQ-813-PT") << false;
    QTest::newRow("sample: of another vehicle's job") << sample << QStringLiteral("TF-559-TJ") << true;
    QTest::newRow("sample: several lines") << sample << QStringLiteral("HD-823-BD") << false;
    QTest::newRow("sample: of a job without a vehicle") << sample << QStringLiteral("CS-119-WD") << true;
    QTest::newRow("sample: eleven lines") << sample << QStringLiteral("RZ-617-JA") << false;
    QTest::newRow("sample: not gone yet, two lines") << sample << QStringLiteral("YF-137-EC") << false;
}

void HistoryTest::TheJobsOfAVehicleAreListed() {
    QFETCH(const QString, source);
    QFETCH(const QString, registration);
    QFETCH(const bool, throughDetailOnly);
    const std::filesystem::path folder = std::filesystem::path(source.toStdString()) / "QUARDELE";
    if (!std::filesystem::exists(folder)) {
        QSKIP("no sample installation here");
    }
    program_.reset();
    RunningProgram program(folder);
    program.OpenVehicles();
    OpenHistoryOf(registration);

    std::vector<JobLine> expected = JobLinesOf(registration);
    QVERIFY(!expected.empty());
    if (throughDetailOnly) {
        QVERIFY(std::any_of(expected.begin(), expected.end(),
                            [](const JobLine& line) { return !line.throughJob; }));
    }
    // Newest first, and those without a date behind them.
    std::stable_sort(expected.begin(), expected.end(), [](const JobLine& a, const JobLine& b) {
        return a.order && (!b.order || a.order->days > b.order->days);
    });
    std::vector<QStringList> lines;
    lines.reserve(expected.size());
    for (const JobLine& line : expected) {
        lines.push_back(line.shown);
    }
    QCOMPARE(ShownJobs(), lines);
}

void HistoryTest::AJobWithSeveralLinesHasSeveralRows() {
    AddJob({900001, QStringLiteral("SA-735-YK"), QStringLiteral("Carrosserie"), basic::DateOf(2026, 1, 5),
            basic::DateOf(2026, 1, 6)});
    AddJobDetail(900001, QStringLiteral("SA-735-YK"), basic::DateOf(2026, 1, 8));
    AddJobDetail(900001, QStringLiteral("AUTRE"), basic::DateOf(2026, 1, 9));
    AddJobDetail(900001, QStringLiteral("SA-735-YK"), {});
    OpenHistoryOf(QStringLiteral("SA-735-YK"));
    QStringList dates;
    for (const QStringList& job : ShownJobs()) {
        if (job[kNumberColumn - 1] == QLatin1String("900001")) {
            dates.append(job[kDateColumn - 1]);
        }
    }
    // The line without a date shows the planned day of its job.
    QCOMPARE(dates, (QStringList{"09/01/2026", "08/01/2026", "05/01/2026"}));
}

void HistoryTest::AJobWithoutAnExitDateStandsWhereItsSecondDatePutsIt() {
    const QString vehicle = QStringLiteral("KG-361-VP");
    AddJob({900001, vehicle, QStringLiteral("À venir"), basic::DateOf(2099, 1, 5), {}});
    AddJob({900002, vehicle, QStringLiteral("Avancé"), basic::DateOf(1999, 1, 5), basic::DateOf(2098, 1, 1)});
    OpenHistoryOf(vehicle);
    const std::vector<QStringList> jobs = ShownJobs();
    QVERIFY(jobs.size() > 2);
    QCOMPARE(jobs.front()[kDateColumn - 1], QStringLiteral("05/01/1999"));
    QCOMPARE(jobs.front()[kLabelColumn - 1], QStringLiteral("Avancé"));
    QCOMPARE(jobs.back()[kDateColumn - 1], QStringLiteral("05/01/2099"));
    QCOMPARE(jobs.back()[kLabelColumn - 1], QStringLiteral("À venir"));
}

void HistoryTest::AJobOfTheSampleThatHasNotLeftComesLastWithItsPlannedDay() {
    const std::filesystem::path folder = SampleFolder();
    if (folder.empty()) {
        QSKIP("no sample installation here");
    }
    program_.reset();
    RunningProgram program(folder);
    program.OpenVehicles();
    OpenHistoryOf(QStringLiteral("ES-723-XD"));
    const std::vector<QStringList> jobs = ShownJobs();
    QCOMPARE(jobs.size(), std::size_t{6});
    QCOMPARE(jobs.front().mid(0, 2), (QStringList{"22/04/2025 11:30:00", "103240"}));
    QCOMPARE(jobs.back().mid(0, 2), (QStringList{"24/10/2024 13:30:00", "100031"}));
}

void HistoryTest::TheColumnsAreAsDesigned() {
    OpenHistoryOf(kVehicle);
    forms::Grid& jobs = *Grid("DBG_HISTO");
    QCOMPARE(jobs.MaxCols(), 5);
    const QStringList headings{"Date", "Affaire", "Client", " ", "Détail"};
    const QStringList fields{"DateVisite", "TAFF_Numaff", "TAFF_CodCli", "TAFF_LibOpe", ""};
    for (int column = 1; column <= 5; ++column) {
        QCOMPARE(Cell("DBG_HISTO", column, 0), headings[column - 1]);
        jobs.SetCol(column);
        QCOMPARE(jobs.DataField(), fields[column - 1]);
    }
    jobs.SetRow(1);
    jobs.SetCol(kLabelColumn);
    QVERIFY(jobs.Lock());
    jobs.SetCol(kDetailColumn);
    QCOMPARE(jobs.CellType(), forms::CellType::Button);
    QCOMPARE(Data("DBD_HISTO")->Caption(), QStringLiteral("Histo visites"));
    QCOMPARE(Button("CMD_HistoVis")->toolTip(), QStringLiteral("Historique des visites"));
    QCOMPARE(Control<forms::Frame>("FRM_HISTO")->Caption(), QStringLiteral("Historique des visites"));
}

void HistoryTest::ThereIsNothingForAnEmptyRegistration() {
    OpenRecordOf(kVehicle);
    Press("Cmd_ADD");
    QCOMPARE(Box("CTX_IMMAT")->Text(), QString());
    const QString before = Data("DBD_HISTO")->RecordSource();
    Press("CMD_HistoVis");
    QVERIFY(!HistoryShown());
    QCOMPARE(Data("DBD_HISTO")->RecordSource(), before);
    QVERIFY(program_->boxes.Shown().empty());
}

void HistoryTest::AnApostropheInTheRegistrationEndsTheProgram() {
    OpenRecordOf(kVehicle);
    Box("CTX_IMMAT")->SetText(QStringLiteral("L'AUTO"));
    Press("CMD_HistoVis");
    QCOMPARE(program_->Ends(), 1);
    QCOMPARE(program_->boxes.Shown().size(), std::size_t{1});
    QVERIFY(program_->boxes.Shown().front().text.startsWith(QStringLiteral("Erreur d'exécution 3075")));
    QVERIFY(!HistoryShown());
}

void HistoryTest::AVehicleWithoutJobsHasAnEmptyFrame() {
    OpenRecordOf(kVehicle);
    Box("CTX_IMMAT")->SetText(QStringLiteral("ZY-000-AA"));
    Press("CMD_HistoVis");
    QVERIFY(HistoryShown());
    QCOMPARE(Grid("DBG_HISTO")->MaxRows(), 0);
    QCOMPARE(DetailBox()->Text(), QString());
    QVERIFY(program_->boxes.Shown().empty());
}

void HistoryTest::APendingEntryIsNotAskedFor() {
    OpenRecordOf(kVehicle);
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("RENAULT"));
    Press("CMD_HistoVis");
    QVERIFY(HistoryShown());
    QVERIFY(Box("CTX_MARQUE")->DataChanged());
    QVERIFY(program_->boxes.Shown().empty());
}

void HistoryTest::TheHistoryIsNoPendingEntry() {
    OpenHistoryOf(kVehicle);
    ClickCell("DBG_HISTO", kDetailColumn, 2);
    PressKey(Qt::Key_F8);
    QCOMPARE(Tabs()->Tab(), kListTab);
    QVERIFY(program_->boxes.Shown().empty());
    QVERIFY(!HistoryShown());
}

void HistoryTest::TheFrameOpensInFrontWithTheFocusInTheList() {
    OpenRecordOf(kVehicle);
    PressKey(Qt::Key_F7);
    QVERIFY(HistoryShown());
    QVERIFY(InFront("FRM_HISTO", "FRM_DETAIL"));
    QVERIFY(InFront("FRM_HISTO", "Frm_TypTrav"));
    QCOMPARE(forms::Screen::ActiveControl(), Grid("DBG_HISTO"));
    QCOMPARE(Grid("DBG_HISTO")->ActiveRow(), 1);
}

void HistoryTest::TheFramesMoveAtTheFirstActivation() {
    // 100 twips, rounded to whole pixels.
    QCOMPARE(forms::Left(Control<QWidget>("FRM_HISTO")), 105);
    QCOMPARE(forms::Left(Control<QWidget>("FRM_DETAIL")), 105);
}

void HistoryTest::AnotherVehicleFillsItAnew() {
    OpenHistoryOf(kVehicle);
    const std::vector<QStringList> first = ShownJobs();
    PressKey(Qt::Key_F8);
    OpenHistoryOf(QStringLiteral("FQ-453-HQ"));
    QVERIFY(ShownJobs() != first);
    QCOMPARE(ShownJobs().size(), JobLinesOf(QStringLiteral("FQ-453-HQ")).size());
}

void HistoryTest::OpenedAgainItComesInFrontOfTheDetail() {
    OpenHistoryOf(kVehicle);
    ClickCell("DBG_HISTO", kDetailColumn, 1);
    QVERIFY(InFront("FRM_DETAIL", "FRM_HISTO"));
    Press("CMD_HistoVis");
    QVERIFY(InFront("FRM_HISTO", "FRM_DETAIL"));
    QVERIFY(DetailShown());
    ClickCell("DBG_HISTO", kDetailColumn, 1);
    QVERIFY(InFront("FRM_DETAIL", "FRM_HISTO"));
}

void HistoryTest::EscapeClosesIt_data() {
    QTest::addColumn<QString>("control");
    for (const char* control : {"DBG_HISTO", "Cmd_ToolBar_Histo_2", "Cmd_CloseHisto"}) {
        QTest::newRow(control) << QString::fromLatin1(control);
    }
}

void HistoryTest::EscapeClosesIt() {
    QFETCH(const QString, control);
    OpenHistoryOf(kVehicle);
    forms::SetFocus(Control<QWidget>(control.toLatin1().constData()));
    PressKey(Qt::Key_Escape);
    QVERIFY(!HistoryShown());
    // Not to the next button, which makes a new record.
    QCOMPARE(forms::Screen::ActiveControl(), Button("CMD_HistoVis"));
}

void HistoryTest::ItsButtonClosesIt() {
    OpenHistoryOf(kVehicle);
    QCOMPARE(Button("Cmd_CloseHisto")->toolTip(), QStringLiteral("Fermer la fenêtre"));
    Press("Cmd_CloseHisto");
    QVERIFY(!HistoryShown());
    QCOMPARE(forms::Screen::ActiveControl(), Button("CMD_HistoVis"));
}

void HistoryTest::AClickOnTheButtonCellOpensTheDetail() {
    OpenHistoryOf(kVehicle);
    ClickCell("DBG_HISTO", kDetailColumn, 2);
    QVERIFY(DetailShown());
    QVERIFY(InFront("FRM_DETAIL", "FRM_HISTO"));
    QCOMPARE(forms::Screen::ActiveControl(), DetailBox());
    QVERIFY(!IsItalic(kDetailColumn));
}

void HistoryTest::TheSpaceBarOnTheButtonCellOpensTheDetail() {
    OpenHistoryOf(kVehicle);
    PressKey(Qt::Key_End);
    QCOMPARE(Grid("DBG_HISTO")->ActiveCol(), kDetailColumn);
    PressKey(Qt::Key_Space);
    QVERIFY(DetailShown());
    QCOMPARE(forms::Screen::ActiveControl(), DetailBox());
}

void HistoryTest::AClickOnTheHeadingOfTheButtonsOpensTheDetail() {
    OpenHistoryOf(kVehicle);
    ClickHeading("DBG_HISTO", kDetailColumn);
    QVERIFY(DetailShown());
}

void HistoryTest::TheHeadingsWorkWithoutJobsToo() {
    OpenRecordOf(kVehicle);
    Box("CTX_IMMAT")->SetText(QStringLiteral("ZY-000-AA"));
    Press("CMD_HistoVis");
    QCOMPARE(Grid("DBG_HISTO")->MaxRows(), 0);
    ClickHeading("DBG_HISTO", kNumberColumn);
    QVERIFY(IsItalic(kNumberColumn));
    QCOMPARE(Grid("DBG_HISTO")->ActiveCol(), kNumberColumn);
    QVERIFY(!DetailShown());
    ClickHeading("DBG_HISTO", kDetailColumn);
    QVERIFY(DetailShown());
    QCOMPARE(DetailBox()->Text(), QString());
    QVERIFY(program_->boxes.Shown().empty());
}

void HistoryTest::AClickOnAnyOtherColumnMarksIt() {
    OpenHistoryOf(kVehicle);
    ClickCell("DBG_HISTO", kNumberColumn, 1);
    QVERIFY(IsItalic(kNumberColumn));
    ClickCell("DBG_HISTO", kLabelColumn, 2);
    QVERIFY(IsItalic(kLabelColumn));
    QVERIFY(!IsItalic(kNumberColumn));
    QVERIFY(!DetailShown());
}

void HistoryTest::TheDetailFollowsTheCurrentJob_data() {
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("registration");
    QTest::newRow("made") << QStringLiteral(QUARDELE_INSTALLATION_DIR) << kVehicle;
    QTest::newRow("sample") << QStringLiteral(QUARDELE_SAMPLE_DIR) << QStringLiteral("GL-566-WW");
}

void HistoryTest::TheDetailFollowsTheCurrentJob() {
    QFETCH(const QString, source);
    QFETCH(const QString, registration);
    const std::filesystem::path folder = std::filesystem::path(source.toStdString()) / "QUARDELE";
    if (!std::filesystem::exists(folder)) {
        QSKIP("no sample installation here");
    }
    program_.reset();
    RunningProgram program(folder);
    program.OpenVehicles();
    OpenHistoryOf(registration);
    std::map<QString, QString> detailsOf;
    for (const JobLine& line : JobLinesOf(registration)) {
        detailsOf[line.shown[kNumberColumn - 1]] = line.details;
    }
    int withText = 0;
    const int rows = Grid("DBG_HISTO")->MaxRows();
    QVERIFY(rows > 1);
    for (int row = 1; row <= rows; ++row) {
        QCOMPARE(Grid("DBG_HISTO")->ActiveRow(), row);
        const QString details = detailsOf[Cell("DBG_HISTO", kNumberColumn, row)];
        QCOMPARE(DetailBox()->Text(), details);
        withText += details.isEmpty() ? 0 : 1;
        PressKey(Qt::Key_Down);
    }
    QVERIFY(withText > 0);
}

void HistoryTest::ALongTextOfTheSampleIsShownWhole() {
    const std::filesystem::path folder = SampleFolder();
    if (folder.empty()) {
        QSKIP("no sample installation here");
    }
    program_.reset();
    RunningProgram program(folder);
    program.OpenVehicles();
    OpenHistoryOf(QStringLiteral("ND-975-TF"));
    QCOMPARE(Cell("DBG_HISTO", kNumberColumn, 3), QStringLiteral("102400"));
    ClickCell("DBG_HISTO", kDetailColumn, 3);
    // Several pages of the file, beyond what a row or one page of text holds.
    QCOMPARE(DetailBox()->Text().size(), qsizetype{5986});
    QVERIFY(DetailBox()->Text().endsWith(QStringLiteral("Pièces : KHSESP\r\n")));
}

void HistoryTest::TheDetailCannotBeTypedInto() {
    OpenHistoryOf(kVehicle);
    ClickCell("DBG_HISTO", kDetailColumn, 1);
    const QString before = DetailBox()->Text();
    QTest::keyClicks(DetailBox(), QStringLiteral("xyz"));
    QCOMPARE(DetailBox()->Text(), before);
    QCOMPARE(DetailBox()->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
    QCOMPARE(DetailBox()->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
}

void HistoryTest::EscapeInTheDetailClosesThatOnly_data() {
    QTest::addColumn<QString>("control");
    QTest::newRow("text") << QStringLiteral("CTX_DETAILAFF");
    QTest::newRow("button") << QStringLiteral("Cmd_CloseDetail");
}

void HistoryTest::EscapeInTheDetailClosesThatOnly() {
    QFETCH(const QString, control);
    OpenHistoryOf(kVehicle);
    ClickCell("DBG_HISTO", kDetailColumn, 1);
    forms::SetFocus(Control<QWidget>(control.toLatin1().constData()));
    PressKey(Qt::Key_Escape);
    QVERIFY(!DetailShown());
    QVERIFY(HistoryShown());
    // The next one closes the history.
    QCOMPARE(forms::Screen::ActiveControl(), Grid("DBG_HISTO"));
    PressKey(Qt::Key_Escape);
    QVERIFY(!HistoryShown());
}

void HistoryTest::TheButtonOfTheDetailClosesThatOnly() {
    OpenHistoryOf(kVehicle);
    ClickCell("DBG_HISTO", kDetailColumn, 1);
    QCOMPARE(Button("Cmd_CloseDetail")->toolTip(), QStringLiteral("Fermer la fenêtre"));
    Press("Cmd_CloseDetail");
    QVERIFY(!DetailShown());
    QVERIFY(HistoryShown());
}

void HistoryTest::TheSelectionOfTheDatesHasItsOwnFrame() {
    OpenHistoryOf(kVehicle);
    QCOMPARE(Grid("DBG_HISTO")->ActiveCol(), kDateColumn);
    Box("CTX_ChoixDate")->SetText(QStringLiteral("01/02/2026"));
    Control<forms::DropDown>("BXC_ChoixDate")->SetListIndex(2);
    PressTool(kSelectionTool);
    QVERIFY(Shown(Control<QWidget>("FRM_SelDate")));
    QVERIFY(InFront("FRM_SelDate", "Frm_boutons_Histo"));
    QCOMPARE(Box("CTX_ChoixDate")->Text(), QString());
    QCOMPARE(Control<forms::DropDown>("BXC_ChoixDate")->ListIndex(), -1);
}

void HistoryTest::TheSelectionOfOtherColumnsIsTheDialog() {
    OpenHistoryOf(kVehicle);
    Grid("DBG_HISTO")->SetActiveCell(kLabelColumn, 1);
    const QString label = Cell("DBG_HISTO", kLabelColumn, 1);
    QVERIFY(InDialog([] { PressTool(kSelectionTool); },
                     [&] {
                         QVERIFY(forms::IsLoaded<listtools::FSELECT>());
                         Select(1, label);
                     }));
    QVERIFY(!Shown(Control<QWidget>("FRM_SelDate")));
    QVERIFY(Data("DBD_HISTO")->RecordSource().contains(QStringLiteral("TAFF_LibOpe= '") + label));
    QVERIFY(Grid("DBG_HISTO")->MaxRows() > 0);
}

void HistoryTest::TheSearchWorksHere() {
    OpenHistoryOf(kVehicle);
    Grid("DBG_HISTO")->SetActiveCell(kLabelColumn, 1);
    QVERIFY(InDialog([] { PressTool(kSearchTool); }, [] { SearchFor(QStringLiteral("Climatisation")); }));
    QCOMPARE(Cell("DBG_HISTO", kLabelColumn, Grid("DBG_HISTO")->ActiveRow()),
             QStringLiteral("Climatisation"));
}

void HistoryTest::TheSortWorksHere() {
    OpenHistoryOf(kVehicle);
    Grid("DBG_HISTO")->SetActiveCell(kLabelColumn, 1);
    QVERIFY(InDialog([] { PressTool(kSortTool); }, [] { Click(SortDialog().Cmd_GoClasser); }));
    QStringList labels = CellsOf(*Grid("DBG_HISTO"), kLabelColumn);
    QStringList sorted = labels;
    sorted.sort(Qt::CaseInsensitive);
    QCOMPARE(labels, sorted);
    QVERIFY(labels.size() > 2);
}

/// The planned days take their places among the others then; nothing shown comes behind all days.
void HistoryTest::TheDatesShownCanBeSorted() {
    OpenFourJobs();
    const auto dates = [] { return CellsOf(*Grid("DBG_HISTO"), kDateColumn); };
    QCOMPARE(dates(), (QStringList{"01/02/2026", "02/05/2024", QString(), "05/01/2025"}));
    QCOMPARE(Grid("DBG_HISTO")->ActiveCol(), kDateColumn);
    QVERIFY(InDialog([] { PressTool(kSortTool); },
                     [] {
                         QTest::keyClick(SortDialog().FND3_OPTClasser(0), Qt::Key_Down);
                         Click(SortDialog().Cmd_GoClasser);
                     }));
    QCOMPARE(dates(), (QStringList{"01/02/2026", "05/01/2025", "02/05/2024", QString()}));
    QCOMPARE(Data("DBD_HISTO")->RecordSource(),
             QStringLiteral("SELECT IIF([TAFF_DETAIL_DATSORTIEEFF] IS NOT "
                            "NULL,[TAFF_DETAIL_DATSORTIEEFF],[TAFF_DATLIVRPREV]) AS DATEVISITE, "
                            "TAFF.TAFF_NUMAFF, TAFF.TAFF_CODCLI, TAFF.TAFF_CM, TAFF.TAFF_LIBOPE, "
                            "TAFF.TAFF_DETAILOPE FROM TAFF LEFT JOIN TAFF_DETAIL ON TAFF.TAFF_NUMAFF = "
                            "TAFF_DETAIL.TAFF_DETAIL_NUMAFF Where "
                            "(((TAFF_DETAIL.TAFF_DETAIL_IDENT)='ZY-100-AA')) OR "
                            "(([TAFF_IMMATR]='ZY-100-AA'))  Order by DateVisite DESC;"));
    QVERIFY(program_->boxes.Shown().empty());
}

void HistoryTest::ADayCanBeSearchedAmongTheDatesShown() {
    OpenFourJobs();
    for (const auto& [day, row] :
         {std::pair{QStringLiteral("05/01/2025"), 4}, std::pair{QStringLiteral("02/05/2024"), 2}}) {
        Grid("DBG_HISTO")->SetActiveCell(kDateColumn, 1);
        QVERIFY(InDialog([] { PressTool(kSearchTool); }, [&day = day] { SearchFor(day); }));
        QCOMPARE(Grid("DBG_HISTO")->ActiveRow(), row);
        QVERIFY(program_->boxes.Shown().empty());
    }
}

void HistoryTest::TheExportWorksHere() {
    OpenHistoryOf(kVehicle);
    PressTool(kExcelTool);
    CompareBoxes(program_->boxes,
                 {QStringLiteral("Confirmez-vous la création du fichier Excel ?"),
                  QStringLiteral("Votre fichier Excel a été créé dans C:\\QUARDELE\\VEH   sous le nom :  "
                                 "Historique des visites.XLS")});
    QVERIFY(std::filesystem::exists(program_->CurrentFolder() / "Historique des visites.XLS"));
}

void HistoryTest::AColumnWithoutAFieldIsRefused() {
    OpenHistoryOf(kVehicle);
    Grid("DBG_HISTO")->SetActiveCell(kDetailColumn, 1);
    PressTool(kSelectionTool);
    PressTool(kSearchTool);
    PressTool(kSortTool);
    CompareBoxes(program_->boxes, {kImpossible, kImpossible, kImpossible});
}

void HistoryTest::ASortStaysUntilTheNextOpening() {
    OpenHistoryOf(kVehicle);
    const QString asOpened = Data("DBD_HISTO")->RecordSource();
    Grid("DBG_HISTO")->SetActiveCell(kLabelColumn, 1);
    QVERIFY(InDialog([] { PressTool(kSortTool); }, [] { Click(SortDialog().Cmd_GoClasser); }));
    const QString sorted = Data("DBD_HISTO")->RecordSource();
    QVERIFY(sorted != asOpened);
    PressKey(Qt::Key_Escape);
    QCOMPARE(Data("DBD_HISTO")->RecordSource(), sorted);
    Press("CMD_HistoVis");
    QCOMPARE(Data("DBD_HISTO")->RecordSource(), asOpened);
}

void HistoryTest::ThePrintHeaderNamesTheVehicle() {
    OpenHistoryOf(QStringLiteral("2107 RC 59"));
    QVERIFY(PrintIsOffered());
    QCOMPARE(Grid("DBG_HISTO")->PrintHeader(),
             QStringLiteral(R"(/c/fb1/fz"14"Immatriculation : 2107 RC 59          Marque : DACIA /n/n)"));
    // The page is the grid's own, not the one that the list tools set.
    QVERIFY(Grid("DBG_HISTO")->PrintOrientation() != 2);
    QCOMPARE(Form().Tag(), QString());
}

void HistoryTest::AnEmptyListIsPrintedToo() {
    OpenRecordOf(kVehicle);
    Box("CTX_IMMAT")->SetText(QStringLiteral("ZY-000-AA"));
    Press("CMD_HistoVis");
    QVERIFY(PrintIsOffered());
}

void HistoryTest::TheKeysOfTheTools() {
    OpenHistoryOf(kVehicle);
    PressKey(Qt::Key_L, Qt::ControlModifier);
    QVERIFY(Shown(Control<QWidget>("FRM_SelDate")));
    Grid("DBG_HISTO")->SetActiveCell(kDetailColumn, 1);
    PressKey(Qt::Key_F, Qt::ControlModifier);
    PressKey(Qt::Key_T, Qt::ControlModifier);
    CompareBoxes(program_->boxes, {kImpossible, kImpossible});
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    HistoryTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "history_test.moc"
