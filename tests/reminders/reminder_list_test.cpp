// The list of due visits: the form's life, the query, the site column and filter, abandoned reminders.
#include <set>

#include <QFile>
#include <QLabel>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include <basic/conversion.h>
#include <basic/date.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <forms/twips.h>
#include <reminders/frelances.h>
#include <services/calendar_settings.h>
#include <services/translation.h>
#include <shell/main_window.h>
#include <shell/session.h>
#include <support/translation.h>

#include "due_list.h"
#include "run_tests.h"
#include "workshop.h"

using namespace quardele;
using forms::Instance;
using reminders::FRELANCES;
using tests::Cell;
using tests::ChooseSite;
using tests::ClickCell;
using tests::IsRowHidden;
using tests::IsTicked;
using tests::Press;
using tests::RowOf;
using tests::Workshop;

namespace {

constexpr int kRed = 255;
constexpr int kWhite = 16777215;
constexpr int kRegistration = 2;
constexpr int kLetter = 8;
constexpr int kAbandon = 9;
constexpr int kSite = 10;
/// A search whose condition is not well formed.
constexpr int kBadCondition = 3077;

const QString kYearEnd = QStringLiteral("31/12/2026");
const QString kNovember = QStringLiteral("25/11/2026");
const QString kNothing = QStringLiteral("Aucune relance à effectuer");

/// The visits that the rows of the installation make due before a day, each as the cells of columns 1 to 7.
std::vector<QStringList> ComputedVisits(basic::Date day) {
    std::vector<QStringList> visits;
    for (const tests::DueVisit& due : tests::DueBefore(day)) {
        const workshop::Vehicle vehicle = due.vehicle.value_or(workshop::Vehicle{});
        QStringList cells;
        for (const basic::Text& text :
             {basic::CStr(due.due), vehicle.registration, vehicle.make,
              vehicle.customer.value_or(basic::Text()), due.visit.work, basic::CStr(due.visit.last.value()),
              basic::CStr(due.visit.months.value())}) {
            cells << forms::ToQString(text);
        }
        visits.push_back(cells);
    }
    return visits;
}

/// Registrations of vehicles that were worked on at some site, as the installation's rows tell it.
std::set<QString> VehiclesWithSites() {
    const auto jobs = shell::TheSession().BD_DONNEES->OpenRecordset(u"TAFF", dao::RecordsetType::Table);
    std::set<QString> registrations;
    for (; !jobs->Eof(); jobs->MoveNext()) {
        const QString site = forms::ToQString(basic::Joined(jobs->Value(u"TAFF_Site"))).trimmed();
        if (!site.isEmpty()) {
            registrations.insert(forms::ToQString(basic::Joined(jobs->Value(u"TAFF_Immatr"))).trimmed());
        }
    }
    return registrations;
}

QStringList ListedVisit(forms::Grid& grid, int row) {
    QStringList cells;
    for (int col = 1; col <= 7; ++col) {
        cells << Cell(grid, col, row);
    }
    return cells;
}

int SiteColour(forms::Grid& grid, int row) {
    grid.SetCol(kSite);
    grid.SetRow(row);
    return grid.BackColor();
}

bool IsColumnHidden(forms::Grid& grid, int col) {
    grid.SetCol(col);
    return grid.ColHidden();
}

/// The stock database as it was made.
QByteArray StockFile() {
    QFile file(QStringLiteral(QUARDELE_INSTALLATION_DIR "/QUARDELE/STOCK/SERVANDA.MDB"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Waits for the calendar, looks at the flag and presses keys in it.
class CalendarUser {
 public:
    explicit CalendarUser(std::vector<Qt::Key> keys) {
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this, keys = std::move(keys)] {
            const auto days = forms::Screen::ActiveForm()->Surface()->findChildren<QTableView*>(
                QStringLiteral("qt_calendar_calendarview"));
            if (!days.isEmpty()) {
                flagWasSet = services::TheCalendarSettings().calendarOpen;
                for (const Qt::Key key : keys) {
                    QTest::keyClick(days.front(), key);
                }
            }
        });
        timer_.start();
    }

    bool flagWasSet = false;

 private:
    QTimer timer_;
};

QString Today() {
    return forms::ToQString(basic::CStr(basic::Today()));
}

}  // namespace

class ReminderListTest : public QObject {
    Q_OBJECT

 private slots:
    void init() { workshop_ = std::make_unique<Workshop>(); }
    void cleanup() {
        workshop_.reset();
        QCOMPARE(forms::Forms::Count(), 0);
    }

    // Layout.

    void LayoutHoldsEveryControl() {
        const QStringList names = {
            "CTX_DATEREL",         "CTL_DATEREL",   "Pic_Cal_DateRef", "Cmd_Cal_DateRef", "DBD_TVEH",
            "DBG_RELANCES",        "FRM_Site",      "CTL_Site",        "DBC_SITE",        "DBD_SITE",
            "CMD_Site_0",          "CMD_Site_1",    "Cmd_ToolBar_0",   "Cmd_ToolBar_1",   "Cmd_ToolBar_2",
            "Cmd_ToolBar_3",       "Cmd_ToolBar_4", "Cmd_SelectAll",   "Cmd_DeSelectAll", "Cmd_Editer",
            "Pic_Boutons_ToolBar", "Cmd_Quitter",   "Label1",          "fpBln1"};
        for (const QString& name : names) {
            QVERIFY2(Form().Surface()->findChild<QWidget*>(name) != nullptr, qPrintable(name));
        }
        const auto label = [this](const char* name) {
            return Form().Surface()->findChild<QLabel*>(QString::fromLatin1(name))->text();
        };
        QCOMPARE(label("CTL_DATEREL"), QStringLiteral("Date de relance"));
        QCOMPARE(label("CTL_Site"), QStringLiteral("Site"));
        QVERIFY(Form().Caption().startsWith(QStringLiteral("Relances ")));
        QCOMPARE(Form().CMD_Site(0)->text(), QStringLiteral("Filtrer"));
        QCOMPARE(Form().CMD_Site(1)->text(), QStringLiteral("Tous"));
        QCOMPARE(Form().Cmd_SelectAll->toolTip(), QStringLiteral("Tout sélectionner"));
        QCOMPARE(Form().Cmd_DeSelectAll->toolTip(), QStringLiteral("Ne rien sélectionner"));
        QCOMPARE(Form().Cmd_Editer->toolTip(), QStringLiteral("Editer les relances"));
        QCOMPARE(Form().DBD_TVEH->Connect(), QStringLiteral("Access 2000;"));
        QCOMPARE(Form().DBD_TVEH->Caption(), QStringLiteral("Relances"));
        QCOMPARE(Form().DBD_SITE->Connect(), QStringLiteral("Access 2000;"));
        QCOMPARE(Form().DBD_SITE->Caption(), QStringLiteral("Sites"));
    }

    void ColumnsAreAsDesigned() {
        struct Column {
            const char* heading;
            const char* field;
            double width;
            bool locked;
        };
        const std::vector<Column> columns = {{"Date prévue", "DatePrev", 9.88, true},
                                             {"Immat.", "TVEH_IMMAT", 12.5, true},
                                             {"Marque", "TVEH_MARQUE", 18, true},
                                             {"Client", "TVEH_CODCLI", 19.12, true},
                                             {"Travaux", "TVEH_DETAIL_TypTrav", 7, true},
                                             {"Dernière visite", "TVEH_DETAIL_DATVIS", 9.37, true},
                                             {"Périodicité (mois)", "TVEH_DETAIL_PERIOD", 8.12, true},
                                             {"Editer ?", "", 5.37, false},
                                             {"Suppr", "", 4.87, false},
                                             {"Site", "", 5.87, true}};
        forms::Grid& grid = *Form().DBG_RELANCES;
        QCOMPARE(grid.MaxCols(), static_cast<int>(columns.size()));
        for (int col = 1; col <= grid.MaxCols(); ++col) {
            const Column& column = columns[static_cast<std::size_t>(col - 1)];
            QCOMPARE(Cell(grid, col, 0), QString::fromUtf8(column.heading));
            QCOMPARE(grid.DataField(), QString::fromUtf8(column.field));
            QVERIFY(qAbs(grid.ColWidth() - column.width) < 0.01);
            grid.SetRow(-1);
            QCOMPARE(grid.Lock(), column.locked);
        }
    }

    void TabFollowsTheReadingOrder() {
        FRELANCES& form = Form();
        QStringList names;
        for (int step = 0; step < 14; ++step) {
            names << QApplication::focusWidget()->objectName();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(names, (QStringList{"CTX_DATEREL", "DBC_SITE", "CMD_Site_0", "CMD_Site_1", "DBG_RELANCES",
                                     "Cmd_ToolBar_0", "Cmd_ToolBar_1", "Cmd_ToolBar_2", "Cmd_ToolBar_3",
                                     "Cmd_ToolBar_4", "Cmd_SelectAll", "Cmd_DeSelectAll", "Cmd_Editer",
                                     "Cmd_Quitter"}));
        QVERIFY(form.CTX_DATEREL->hasFocus());
    }

    // Life of the form.

    void CaptionNamesTheDataFolderBehindTwentyBlanks() {
        QCOMPARE(Form().Caption(),
                 QStringLiteral("Relances") + QString(20, u' ') + QStringLiteral("C:\\QUARDELE\\DATA\\"));
    }

    void FormStandsInTheMiddleOfTheMainWindow() {
        const FRELANCES& form = Form();
        const forms::Form& mainWindow = forms::Forms::Item(0);
        QVERIFY(qAbs(form.Top() - (mainWindow.Height() - form.Height()) / 2) < forms::kTwipsPerPixel);
        QVERIFY(qAbs(form.Left() - (mainWindow.Width() - form.Width()) / 2) < forms::kTwipsPerPixel);
    }

    void FirstFocusWritesTodayAndSelectsIt() {
        const FRELANCES& form = Form();
        QCOMPARE(form.CTX_DATEREL->Text(), Today());
        QCOMPARE(form.CTX_DATEREL->selectedText(), Today());
    }

    void FocusKeepsADateThatIsThere() {
        FRELANCES& form = Form();
        form.CTX_DATEREL->SetText(kNovember);
        forms::SetFocus(form.DBG_RELANCES);
        forms::SetFocus(form.CTX_DATEREL);
        QCOMPARE(form.CTX_DATEREL->Text(), kNovember);
        QCOMPARE(form.CTX_DATEREL->selectedText(), kNovember);
    }

    void NewFormHasAnEmptyListAndNoSiteChosen() {
        const FRELANCES& form = Form();
        QCOMPARE(form.DBD_TVEH->RecordSource(), QStringLiteral("Select * from TVEH where false;"));
        QVERIFY(form.DBD_TVEH->Recordset() != nullptr);
        QVERIFY(form.DBD_TVEH->Recordset()->Eof());
        QCOMPARE(form.DBD_SITE->RecordSource(),
                 QStringLiteral("select * from TSITE where TSITE_Inactif = false order by TSITE_CODE"));
        QCOMPARE(form.DBG_RELANCES->MaxRows(), 0);
        QCOMPARE(form.DBC_SITE->Text(), QString());
    }

    void ListSurvivesAVisitToAnotherWindow() {
        workshop_->ListDueBefore(kNovember);
        const int rows = Form().DBG_RELANCES->MaxRows();
        QVERIFY(rows > 0);
        ClickCell(*Form().DBG_RELANCES, kLetter, 3);
        Instance<OtherWindow>().Show();
        QCoreApplication::processEvents();
        Form().ZOrder(0);
        QCoreApplication::processEvents();
        QCOMPARE(Form().DBG_RELANCES->MaxRows(), rows);
        QVERIFY(IsTicked(*Form().DBG_RELANCES, kLetter, 3));
        Form().Hide();
        Form().Show();
        QCOMPARE(Form().DBG_RELANCES->MaxRows(), rows);
        QVERIFY(IsTicked(*Form().DBG_RELANCES, kLetter, 3));
        Instance<OtherWindow>().Unload();
    }

    void ReopeningTheFormGivesAnEmptyListAndNoSite() {
        workshop_->ListDueBefore(kNovember);
        ChooseSite(Form(), QStringLiteral("LYO"));
        QVERIFY(Form().DBG_RELANCES->MaxRows() > 0);
        QCOMPARE(Form().DBC_SITE->Text(), QStringLiteral("LYO"));
        Form().Unload();
        QCOMPARE(Form().DBG_RELANCES->MaxRows(), 0);
        QCOMPARE(Form().DBC_SITE->Text(), QString());
    }

    void QuitUnloadsTheFormAndHidesItsPanel() {
        const forms::StatusPanel& panel = Instance<shell::MDIMENU_VEH>().PIC_STATUS->Panels(3);
        FRELANCES& form = Form();
        QVERIFY(panel.Visible());
        Press(form.Cmd_Quitter);
        QVERIFY(!forms::IsLoaded<FRELANCES>());
        QVERIFY(!panel.Visible());
    }

    void F12Quits() {
        QTest::keyClick(Form().CTX_DATEREL, Qt::Key_F12);
        QVERIFY(!forms::IsLoaded<FRELANCES>());
    }

    void ClosingTheWindowHidesThePanelToo() {
        const forms::StatusPanel& panel = Instance<shell::MDIMENU_VEH>().PIC_STATUS->Panels(3);
        Form().Window()->close();
        QVERIFY(!forms::IsLoaded<FRELANCES>());
        QVERIFY(!panel.Visible());
    }

    // The query.

    void ListEqualsTheComputedOne_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<double>("day");
        QTest::newRow("31/12/2026") << kYearEnd << basic::DateOf(2026, 12, 31).days;
        QTest::newRow("25/11/2026") << kNovember << basic::DateOf(2026, 11, 25).days;
    }
    void ListEqualsTheComputedOne() {
        QFETCH(QString, typed);
        QFETCH(double, day);
        const std::vector<QStringList> expected = ComputedVisits({day});
        QVERIFY(expected.size() > 100);
        workshop_->ListDueBefore(typed);
        forms::Grid& grid = *Form().DBG_RELANCES;
        QCOMPARE(grid.MaxRows(), static_cast<int>(expected.size()));
        for (int row = 1; row <= grid.MaxRows(); ++row) {
            QCOMPARE(ListedVisit(grid, row), expected[static_cast<std::size_t>(row - 1)]);
        }
        QVERIFY(grid.hasFocus());
    }

    void StatementIsPutTogetherAsTheListToolsExpectIt() {
        workshop_->ListDueBefore(QStringLiteral("05/12/2026"));
        QCOMPARE(Form().DBD_TVEH->RecordSource(),
                 QStringLiteral(
                     "SELECT DateAdd('m',[TVEH_DETAIL_PERIOD],[TVEH_DETAIL_DATVIS]) AS DatePrev, "
                     "TVEH_DETAIL.TVEH_DETAIL_PERIOD, TVEH_DETAIL.TVEH_DETAIL_DATVIS, "
                     "TVEH.TVEH_MARQUE,TVEH.TVEH_IMMAT, "
                     "TVEH.TVEH_EDIT, TVEH.TVEH_CODCLI, TVEH_DETAIL.TVEH_DETAIL_TypTrav FROM TVEH_DETAIL "
                     "LEFT JOIN TVEH "
                     "ON TVEH_DETAIL.TVEH_DETAIL_Immat = TVEH.TVEH_IMMAT "
                     "WHERE (((DateAdd('m',[TVEH_DETAIL_PERIOD],[TVEH_DETAIL_DATVIS]))<#12/05/2026#)) AND "
                     "[TVEH_DETAIL_PERIOD]<> 0 "
                     "ORDER BY TVEH.TVEH_CODCLI, TVEH.TVEH_IMMAT, TVEH_DETAIL.TVEH_DETAIL_TypTrav;"));
    }

    void DateIsRewrittenInItsLongForm() {
        workshop_->ListDueBefore(QStringLiteral("31-12-26"));
        QCOMPARE(Form().CTX_DATEREL->Text(), kYearEnd);
        QVERIFY(Form().DBG_RELANCES->MaxRows() > 0);
    }

    void DateEqualToTheNextVisitLeavesItOut() {
        workshop_->ListDueBefore(QStringLiteral("01/10/2026"));
        QCOMPARE(RowOf(*Form().DBG_RELANCES, QStringLiteral("1466 WP 51"), QStringLiteral("CLI")), 0);
        workshop_->ListDueBefore(QStringLiteral("02/10/2026"));
        QVERIFY(RowOf(*Form().DBG_RELANCES, QStringLiteral("1466 WP 51"), QStringLiteral("CLI")) > 0);
    }

    void VisitWithPeriodZeroIsNeverListed() {
        const auto row = [this] {
            workshop_->ListDueBefore(QStringLiteral("01/01/2090"));
            return RowOf(*Form().DBG_RELANCES, QStringLiteral("YZ-945-HZ"), QStringLiteral("TAC"));
        };
        QCOMPARE(row(), 0);
        ChangeVisit(u"YZ-945-HZ", u"TAC", u"TVEH_DETAIL_PERIOD", std::int16_t{12});
        QVERIFY(row() > 0);
    }

    void VisitWithoutDateOrPeriodIsLeftOut() {
        const auto row = [this](const char* registration, const char* work) {
            return RowOf(*Form().DBG_RELANCES, QString::fromLatin1(registration), QString::fromLatin1(work));
        };
        workshop_->ListDueBefore(QStringLiteral("01/01/2090"));
        QCOMPARE(row("RG-194-NE", "CT"), 0);
        QCOMPARE(row("TH-496-AN", "EXT"), 0);
        QVERIFY(row("RG-194-NE", "PNE") > 0);
        ChangeVisit(u"RG-194-NE", u"CT", u"TVEH_DETAIL_DATVIS", basic::DateOf(2026, 1, 31));
        ChangeVisit(u"TH-496-AN", u"EXT", u"TVEH_DETAIL_PERIOD", std::int16_t{12});
        workshop_->ListDueBefore(QStringLiteral("01/01/2090"));
        QVERIFY(row("RG-194-NE", "CT") > 0);
        QVERIFY(row("TH-496-AN", "EXT") > 0);
    }

    void VisitWithoutVehicleIsListedWithEmptyVehicleColumnsAndNoSite() {
        workshop_->ListDueBefore(kYearEnd);
        forms::Grid& grid = *Form().DBG_RELANCES;
        QCOMPARE(ListedVisit(grid, 1), (QStringList{"29/02/2024", "", "", "", "CT", "31/01/2024", "1"}));
        QCOMPARE(Cell(grid, kSite, 1), QString());
        QVERIFY(SiteColour(grid, 1) != kRed);
    }

    void TextThatIsNoDateLeavesTheListAsItWas() {
        workshop_->ListDueBefore(kNovember);
        const int rows = Form().DBG_RELANCES->MaxRows();
        workshop_->ListDueBefore(QStringLiteral("demain"));
        QCOMPARE(workshop_->boxes.TakeTexts(), std::vector<QString>{QStringLiteral("Date erronnée")});
        QCOMPARE(Form().DBG_RELANCES->MaxRows(), rows);
        QCOMPARE(Form().CTX_DATEREL->Text(), QStringLiteral("demain"));
    }

    void EmptyDateGivesTheErrorOfTheProcedure() {
        workshop_->ListDueBefore(QString());
        QCOMPARE(workshop_->boxes.TakeTexts(),
                 std::vector<QString>{QStringLiteral("Procédure CTX_DATREL_CLICK  Erreur 13 : ") +
                                      forms::ToQString(basic::DescriptionOf(basic::error::kTypeMismatch))});
    }

    void FailureOfTheQueryGivesTheErrorOfTheProcedure() {
        Form().DBD_TVEH->SetDatabaseName(QStringLiteral("C:\\QUARDELE\\DATA\\absent.mdb"));
        workshop_->ListDueBefore(kNovember);
        const std::vector<QString> texts = workshop_->boxes.TakeTexts();
        QCOMPARE(texts.size(), std::size_t{1});
        QVERIFY(texts[0].startsWith(QStringLiteral("Procédure CTX_DATREL_CLICK  Erreur 3024 : ")));
    }

    void WrongDateIsSaidInTheOperatorsLanguageAndAFailureInFrench() {
        const QString failure = QStringLiteral("Procédure CTX_DATREL_CLICK  Erreur 13 : ") +
                                forms::ToQString(basic::DescriptionOf(basic::error::kTypeMismatch));
        support::RaiseTranslation(
            {{u"Date erronnée", u"Wrong date"}, {forms::ToText(failure), u"Failure of the query"}});
        QCOMPARE(services::TRAD(failure), QStringLiteral("Failure of the query"));
        workshop_->ListDueBefore(QStringLiteral("demain"));
        workshop_->ListDueBefore(QString());
        QCOMPARE(workshop_->boxes.TakeTexts(), (std::vector<QString>{QStringLiteral("Wrong date"), failure}));
    }

    void NothingDueIsSaid() {
        workshop_->ListDueBefore(QStringLiteral("01/01/1950"));
        QCOMPARE(workshop_->boxes.TakeTexts(), std::vector<QString>{kNothing});
        QCOMPARE(Form().DBG_RELANCES->MaxRows(), 0);
    }

    void OtherKeysDoNothing() {
        FRELANCES& form = Form();
        QTest::keyClick(form.CTX_DATEREL, Qt::Key_F5);
        QCOMPARE(form.DBG_RELANCES->MaxRows(), 0);
        QVERIFY(!services::TheCalendarSettings().calendarOpen);
    }

    void F4OpensTheCalendarAndQueriesNothing() {
        FRELANCES& form = Form();
        CalendarUser user({Qt::Key_Escape});
        QTest::keyClick(form.CTX_DATEREL, Qt::Key_F4);
        QVERIFY(user.flagWasSet);
        QVERIFY(!services::TheCalendarSettings().calendarOpen);
        QCOMPARE(form.DBG_RELANCES->MaxRows(), 0);
        QCOMPARE(forms::Screen::ActiveControl(), form.CTX_DATEREL);
    }

    void F4WithShiftOpensTheCalendarToo() {
        CalendarUser user({Qt::Key_Escape});
        QTest::keyClick(Form().CTX_DATEREL, Qt::Key_F4, Qt::ShiftModifier);
        QVERIFY(user.flagWasSet);
    }

    void APickedDateGoesIntoTheBoxAndTheQueryWaitsForEnter() {
        FRELANCES& form = Form();
        services::TheCalendarSettings().PARAM_CALENDRIER = 1;
        forms::SetFocus(form.CTX_DATEREL);
        form.CTX_DATEREL->SetText(kNovember);
        CalendarUser user({Qt::Key_Right, Qt::Key_Return});
        QTest::keyClick(form.CTX_DATEREL, Qt::Key_F4);
        QVERIFY(user.flagWasSet);
        QCOMPARE(form.CTX_DATEREL->Text(), QStringLiteral("26/11/2026"));
        QCOMPARE(form.DBG_RELANCES->MaxRows(), 0);
        QTest::keyClick(form.CTX_DATEREL, Qt::Key_Return);
        QVERIFY(form.DBG_RELANCES->MaxRows() > 0);
    }

    void F4WithAltIsLeftToTheProgramsWindow() {
        QTest::keyClick(Form().CTX_DATEREL, Qt::Key_F4, Qt::AltModifier);
        QVERIFY(!services::TheCalendarSettings().calendarOpen);
    }

    void F4WithCtrlClosesTheForm() {
        QTest::keyClick(Form().CTX_DATEREL, Qt::Key_F4, Qt::ControlModifier);
        QVERIFY(!forms::IsLoaded<FRELANCES>());
        QVERIFY(!services::TheCalendarSettings().calendarOpen);
    }

    void CalendarButtonGivesTheFocusToTheDateAndSendsItF4() {
        workshop_->ListDueBefore(kNovember);
        FRELANCES& form = Form();
        CalendarUser user({Qt::Key_Escape});
        Press(form.Cmd_Cal_DateRef);
        QTRY_VERIFY(user.flagWasSet);
        QCOMPARE(forms::Screen::ActiveControl(), form.CTX_DATEREL);
        QCOMPARE(form.CTX_DATEREL->Text(), kNovember);
    }

    // The site column.

    void SitesOfAVehicleAreJoinedAndAVehicleWithoutHistoryIsRed() {
        workshop_->ListDueBefore(kYearEnd);
        forms::Grid& grid = *Form().DBG_RELANCES;
        const int several = RowOf(grid, QStringLiteral("ZZ-584-ZD"), QStringLiteral("DIS"));
        QCOMPARE(Cell(grid, kSite, several), QStringLiteral("BDX - LYO - PA - PAR"));
        QCOMPARE(SiteColour(grid, several), kWhite);
        const std::set<QString> withSites = VehiclesWithSites();
        int red = 0;
        for (int row = 2; row <= grid.MaxRows(); ++row) {
            const bool marked = SiteColour(grid, row) == kRed;
            QCOMPARE(Cell(grid, kSite, row).isEmpty(), marked);
            QCOMPARE(withSites.contains(Cell(grid, kRegistration, row)), !marked);
            red += marked ? 1 : 0;
        }
        QVERIFY(red > 0);
    }

    void SitesAreReadOnceInTheLifeOfTheForm() {
        workshop_->ListDueBefore(kNovember);
        const auto sites = [this] {
            return Cell(*Form().DBG_RELANCES, kSite,
                        RowOf(*Form().DBG_RELANCES, QStringLiteral("RQ-813-PT"), QStringLiteral("CLI")));
        };
        const QString before = sites();
        workshop_->Change(u"SELECT * FROM TAFF WHERE Trim([TAFF_Immatr] & '') = 'RQ-813-PT'",
                          {{u"TAFF_Site", u"LIL"}});
        workshop_->ListDueBefore(kNovember);
        QCOMPARE(sites(), before);
        Form().Unload();
        workshop_->ListDueBefore(kNovember);
        QCOMPARE(sites(), QStringLiteral("LIL"));
    }

    void RegistrationWithAnApostropheEndsTheProcess() {
        const basic::Text registration = u"L'AUTO 1";
        workshop_->Change(u"SELECT * FROM TVEH WHERE TVEH_IMMAT = 'SA-735-YK'",
                          {{u"TVEH_IMMAT", registration}});
        workshop_->Change(u"SELECT * FROM TVEH_DETAIL WHERE TVEH_DETAIL_Immat = 'SA-735-YK'",
                          {{u"TVEH_DETAIL_Immat", registration}});
        workshop_->ListDueBefore(kNovember);
        QVERIFY(RowOf(*Form().DBG_RELANCES, forms::ToQString(registration), QStringLiteral("BAT")) > 0);
        QVERIFY(workshop_->Ends() > 0);
        const QString text = workshop_->boxes.TakeTexts().at(0);
        QVERIFY2(text.contains(QString::number(kBadCondition)), qPrintable(text));
    }

    void LastVehicleWithASingleSiteEndsTheProcess() {
        workshop_->Change(u"SELECT * FROM TAFF WHERE Trim([TAFF_Immatr] & '') = 'ZZ-584-ZD'",
                          {{u"TAFF_Site", u"PAR"}});
        workshop_->ListDueBefore(kYearEnd);
        (void)RowOf(*Form().DBG_RELANCES, QStringLiteral("ZZ-584-ZD"), QStringLiteral("DIS"));
        QVERIFY(workshop_->Ends() > 0);
        const std::vector<QString> texts = workshop_->boxes.TakeTexts();
        QVERIFY(!texts.empty());
        QVERIFY(texts[0].contains(QStringLiteral("3021")));
        forms::Grid& grid = *Form().DBG_RELANCES;
        const int row = RowOf(grid, QStringLiteral("ZZ-584-ZD"), QStringLiteral("DIS"));
        QCOMPARE(Cell(grid, kSite, row), QStringLiteral("PAR"));
        QCOMPARE(SiteColour(grid, row), kWhite);
    }

    void WithoutStockFolderThereIsNoSiteColumnAndNoSiteQuery() {
        shell::TheSession().CHEMIN_STOCK.clear();
        CheckThatSitesAreOff();
    }

    void ReopeningWithoutStockFolderTakesTheSitesAway() {
        workshop_->ListDueBefore(kNovember);
        QVERIFY(shell::TheSession().SITES_DISPO);
        Form().Unload();
        shell::TheSession().CHEMIN_STOCK.clear();
        CheckThatSitesAreOff();
        QCOMPARE(Form().DBD_SITE->DatabaseName(), QString());
    }

    void WithoutActiveSiteThereIsNoSiteColumnAndNoSiteQuery() {
        Workshop::Change(QStringLiteral("STOCK\\SERVANDA.MDB"), u"SELECT * FROM TSITE",
                         {{u"TSITE_Inactif", true}});
        CheckThatSitesAreOff();
    }

    void WithSitesTheColumnAndTheFrameAreShown() {
        FRELANCES& form = Form();
        QVERIFY(shell::TheSession().SITES_DISPO);
        QCOMPARE(shell::TheSession().NOM_BD_STOCK, QStringLiteral("SERVANDA.MDB"));
        QVERIFY(!form.FRM_Site->isHidden());
        QVERIFY(!IsColumnHidden(*form.DBG_RELANCES, kSite));
    }

    void StockDatabaseThatCannotBeOpenedEndsTheProcess() {
        std::filesystem::remove(workshop_->installation.File("STOCK/SERVANDA.MDB"));
        Instance<shell::MDIMENU_VEH>().M_RELANC->trigger();
        QVERIFY(workshop_->Ends() > 0);
        QVERIFY(workshop_->boxes.TakeTexts().at(0).contains(QStringLiteral("3024")));
    }

    void StockDatabaseThatIsNoneEndsTheProcess_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("error");
        const QByteArray stock = StockFile();
        QTest::newRow("empty") << QByteArray() << basic::error::kNotADatabase;
        QTest::newRow("foreign") << QByteArray("Ceci n'est pas une base de données.\n").repeated(400)
                                 << basic::error::kNotADatabase;
        QTest::newRow("cut in its first page") << stock.left(1000) << basic::error::kNotADatabase;
        QByteArray locked = stock;
        constexpr int kPassword = 0x42;
        locked[kPassword] = static_cast<char>(locked[kPassword] ^ 'a');
        QTest::newRow("password") << locked << basic::error::kBadPassword;
    }
    void StockDatabaseThatIsNoneEndsTheProcess() {
        QFETCH(QByteArray, content);
        QFETCH(int, error);
        QFile file(workshop_->installation.File("STOCK/SERVANDA.MDB"));
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(content);
        file.close();
        Instance<shell::MDIMENU_VEH>().M_RELANC->trigger();
        QVERIFY(workshop_->Ends() > 0);
        const QString text = workshop_->boxes.TakeTexts().at(0);
        QVERIFY2(text.contains(QString::number(error)), qPrintable(text));
        QVERIFY(!forms::IsLoaded<FRELANCES>());
    }

    // Ticks and the site filter.

    void AllVisibleRowsAreTickedAndUnticked() {
        workshop_->ListDueBefore(kNovember);
        FRELANCES& form = Form();
        QVERIFY(form.DBG_RELANCES->MaxRows() > 0);
        Press(form.Cmd_SelectAll);
        QCOMPARE(TickedRows(kLetter), form.DBG_RELANCES->MaxRows());
        QCOMPARE(TickedRows(kAbandon), 0);
        Press(form.Cmd_DeSelectAll);
        QCOMPARE(TickedRows(kLetter), 0);
    }

    void KeysTickAndUntickAllRows() {
        workshop_->ListDueBefore(kNovember);
        FRELANCES& form = Form();
        QVERIFY(form.DBG_RELANCES->MaxRows() > 0);
        QTest::keyClick(form.DBG_RELANCES, Qt::Key_B, Qt::ControlModifier);
        QCOMPARE(TickedRows(kLetter), form.DBG_RELANCES->MaxRows());
        QTest::keyClick(form.DBG_RELANCES, Qt::Key_B, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(TickedRows(kLetter), 0);
    }

    void ClickTicksOneRow() {
        workshop_->ListDueBefore(kNovember);
        ClickCell(*Form().DBG_RELANCES, kLetter, 3);
        QVERIFY(IsTicked(*Form().DBG_RELANCES, kLetter, 3));
        QCOMPARE(TickedRows(kLetter), 1);
    }

    void FilterShowsTheRowsWhoseSitesContainTheCode() {
        workshop_->ListDueBefore(kNovember);
        FRELANCES& form = Form();
        ChooseSite(form, QStringLiteral("LYO"));
        Press(form.CMD_Site(0));
        CheckRowsShownContain(QStringLiteral("LYO"));
        QVERIFY(form.DBG_RELANCES->hasFocus());
    }

    void CodeThatIsPartOfAnotherFindsItsRowsToo() {
        workshop_->ListDueBefore(kNovember);
        ChooseSite(Form(), QStringLiteral("PA"));
        Press(Form().CMD_Site(0));
        CheckRowsShownContain(QStringLiteral("PA"));
        bool onlyOther = false;
        for (int row = 1; row <= Form().DBG_RELANCES->MaxRows(); ++row) {
            onlyOther |= Cell(*Form().DBG_RELANCES, kSite, row) == QStringLiteral("PAR") &&
                         !IsRowHidden(*Form().DBG_RELANCES, row);
        }
        QVERIFY(onlyOther);
    }

    void FilterWithoutASiteShowsEveryRow() {
        workshop_->ListDueBefore(kNovember);
        ChooseSite(Form(), QStringLiteral("LYO"));
        Press(Form().CMD_Site(0));
        QVERIFY(ShownRows() < Form().DBG_RELANCES->MaxRows());
        Form().DBC_SITE->Clear();
        Press(Form().CMD_Site(0));
        QCOMPARE(ShownRows(), Form().DBG_RELANCES->MaxRows());
    }

    void TickingAllAfterAFilterLeavesHiddenRowsAsTheyWere() {
        workshop_->ListDueBefore(kNovember);
        FRELANCES& form = Form();
        ChooseSite(form, QStringLiteral("LYO"));
        Press(form.CMD_Site(0));
        const int shown = ShownRows();
        Press(form.Cmd_SelectAll);
        QCOMPARE(TickedRows(kLetter), shown);
        QVERIFY(shown < form.DBG_RELANCES->MaxRows());
    }

    void HiddenRowThatIsTickedStaysTickedThroughBothButtons() {
        workshop_->ListDueBefore(kNovember);
        FRELANCES& form = Form();
        forms::Grid& grid = *form.DBG_RELANCES;
        const int row = RowOf(grid, QStringLiteral("NK-140-QR"), QStringLiteral("CLI"));
        ClickCell(grid, kLetter, row);
        ChooseSite(form, QStringLiteral("LYO"));
        Press(form.CMD_Site(0));
        QVERIFY(IsRowHidden(grid, row));
        Press(form.Cmd_SelectAll);
        QVERIFY(IsTicked(grid, kLetter, row));
        QCOMPARE(TickedRows(kLetter), ShownRows() + 1);
        Press(form.Cmd_DeSelectAll);
        QVERIFY(IsTicked(grid, kLetter, row));
        QCOMPARE(TickedRows(kLetter), 1);
    }

    void TousShowsAllRowsAndKeepsEveryTick() {
        workshop_->ListDueBefore(kNovember);
        FRELANCES& form = Form();
        ChooseSite(form, QStringLiteral("LYO"));
        Press(form.CMD_Site(0));
        Press(form.Cmd_SelectAll);
        const int ticked = TickedRows(kLetter);
        Press(form.CMD_Site(1));
        QCOMPARE(ShownRows(), form.DBG_RELANCES->MaxRows());
        QCOMPARE(TickedRows(kLetter), ticked);
        QCOMPARE(form.DBC_SITE->Text(), QString());
        QVERIFY(form.DBG_RELANCES->hasFocus());
    }

    // Abandoned reminders.

    void AbandonWritesADateInTheYear2100() {
        workshop_->ListDueBefore(kNovember);
        forms::Grid& grid = *Form().DBG_RELANCES;
        const int row = RowOf(grid, QStringLiteral("1466 WP 51"), QStringLiteral("CLI"));
        const int rows = grid.MaxRows();
        ClickCell(grid, kAbandon, row);
        QCOMPARE(workshop_->boxes.Shown().size(), std::size_t{1});
        QCOMPARE(workshop_->boxes.Shown()[0].text, QStringLiteral("Confirmez l'abandon de cette relance"));
        QCOMPARE(workshop_->boxes.Shown()[0].button, QStringLiteral("Oui"));
        QCOMPARE(grid.MaxRows(), rows);
        QVERIFY(IsTicked(grid, kAbandon, row));
        const std::string stored = workshop_->StoredVisit("1466 WP 51", "CLI");
        QVERIFY2(stored.starts_with("\"01/01/00") || stored.starts_with("\"2100-01-01"), stored.c_str());
        workshop_->ListDueBefore(kNovember);
        QCOMPARE(grid.MaxRows(), rows - 1);
        QCOMPARE(RowOf(grid, QStringLiteral("1466 WP 51"), QStringLiteral("CLI")), 0);
    }

    void AbandonAnsweredNoLeavesTheRowAsItWas() {
        workshop_->ListDueBefore(kNovember);
        forms::Grid& grid = *Form().DBG_RELANCES;
        const int row = RowOf(grid, QStringLiteral("1466 WP 51"), QStringLiteral("CLI"));
        const QStringList before = ListedVisit(grid, row);
        const std::string stored = workshop_->StoredVisit("1466 WP 51", "CLI");
        workshop_->boxes.AnswerNo();
        ClickCell(grid, kAbandon, row);
        QCOMPARE(workshop_->boxes.Shown().size(), std::size_t{1});
        QCOMPARE(workshop_->boxes.Shown()[0].button, QStringLiteral("Non"));
        QVERIFY(!IsTicked(grid, kAbandon, row));
        QCOMPARE(ListedVisit(grid, row), before);
        QCOMPARE(workshop_->StoredVisit("1466 WP 51", "CLI"), stored);
    }

    void UntickingAnAbandonedReminderAsksNothing() {
        workshop_->ListDueBefore(kNovember);
        forms::Grid& grid = *Form().DBG_RELANCES;
        ClickCell(grid, kAbandon, 4);
        ClickCell(grid, kAbandon, 4);
        QVERIFY(!IsTicked(grid, kAbandon, 4));
        QCOMPARE(workshop_->boxes.Shown().size(), std::size_t{1});
    }

    void AbandonOfALineThatIsNotFoundIsSilent() {
        workshop_->ListDueBefore(kNovember);
        ClickCell(*Form().DBG_RELANCES, kAbandon, 1);
        QCOMPARE(workshop_->boxes.Shown().size(), std::size_t{1});
        QCOMPARE(workshop_->Ends(), 0);
        QVERIFY(IsTicked(*Form().DBG_RELANCES, kAbandon, 1));
        const auto rows = support::Installation::ExportTable(workshop_->installation.File("DATA/talmeon.mdb"),
                                                             "TVEH_DETAIL");
        const auto before = support::Installation::ExportTable(
            QUARDELE_INSTALLATION_DIR "/QUARDELE/DATA/talmeon.mdb", "TVEH_DETAIL");
        QCOMPARE(rows, before);
    }

 private:
    /// Another window of the program.
    class OtherWindow : public forms::Form {
     public:
        OtherWindow() : Form(QStringLiteral("AUTRE"), forms::FormKind::MdiChild) {
            Surface()->resize(300, 200);
            (new forms::TextBox(Surface()))->setObjectName(QStringLiteral("CTX_AUTRE"));
        }
    };

    [[nodiscard]] FRELANCES& Form() const { return workshop_->Reminders(); }

    void ChangeVisit(basic::TextView registration, basic::TextView work, basic::TextView field,
                     const basic::Variant& value) const {
        workshop_->Change(u"SELECT * FROM TVEH_DETAIL WHERE TVEH_DETAIL_Immat = '" +
                              basic::Text(registration) + u"' AND TVEH_DETAIL_TypTrav = '" +
                              basic::Text(work) + u"'",
                          {{basic::Text(field), value}});
    }

    [[nodiscard]] int TickedRows(int col) const {
        int ticked = 0;
        for (int row = 1; row <= Form().DBG_RELANCES->MaxRows(); ++row) {
            ticked += IsTicked(*Form().DBG_RELANCES, col, row) ? 1 : 0;
        }
        return ticked;
    }

    [[nodiscard]] int ShownRows() const {
        int shown = 0;
        for (int row = 1; row <= Form().DBG_RELANCES->MaxRows(); ++row) {
            shown += IsRowHidden(*Form().DBG_RELANCES, row) ? 0 : 1;
        }
        return shown;
    }

    void CheckRowsShownContain(const QString& code) const {
        forms::Grid& grid = *Form().DBG_RELANCES;
        int shown = 0;
        for (int row = 1; row <= grid.MaxRows(); ++row) {
            QCOMPARE(IsRowHidden(grid, row), !Cell(grid, kSite, row).contains(code));
            shown += IsRowHidden(grid, row) ? 0 : 1;
        }
        QVERIFY(shown > 0);
        QVERIFY(shown < grid.MaxRows());
    }

    void CheckThatSitesAreOff() const {
        workshop_->ListDueBefore(kYearEnd);
        FRELANCES& form = Form();
        QVERIFY(!shell::TheSession().SITES_DISPO);
        QVERIFY(form.FRM_Site->isHidden());
        QVERIFY(IsColumnHidden(*form.DBG_RELANCES, kSite));
        QVERIFY(form.DBG_RELANCES->MaxRows() > 0);
        for (int row = 1; row <= form.DBG_RELANCES->MaxRows(); ++row) {
            QCOMPARE(Cell(*form.DBG_RELANCES, kSite, row), QString());
            QVERIFY(SiteColour(*form.DBG_RELANCES, row) != kRed);
        }
        CheckThatSitesWereNotRead();
    }

    /// Sites are read once in the life of the form: had they been read, a change would not show.
    void CheckThatSitesWereNotRead() const {
        workshop_->Change(u"SELECT * FROM TAFF WHERE Trim([TAFF_Immatr] & '') = 'RQ-813-PT'",
                          {{u"TAFF_Site", u"LIL"}});
        shell::TheSession().SITES_DISPO = true;
        workshop_->ListDueBefore(kNovember);
        forms::Grid& grid = *Form().DBG_RELANCES;
        QCOMPARE(Cell(grid, kSite, RowOf(grid, QStringLiteral("RQ-813-PT"), QStringLiteral("CLI"))),
                 QStringLiteral("LIL"));
    }

    std::unique_ptr<Workshop> workshop_;
};

int main(int argc, char** argv) {
    return tests::RunTests<ReminderListTest>(argc, argv);
}

#include "reminder_list_test.moc"
