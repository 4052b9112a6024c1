// List and record on two tabs, and the guard on a pending change.
#include <QTabBar>

#include <forms/strings.h>

#include "other_operator.h"
#include "vehicle_form_fixture.h"

using namespace quardele;
using namespace quardele::tests;

namespace {

const QString kGuard = QStringLiteral("Enregistrez ou annulez d'abord votre saisie");

void ClickTab(int tab) {
    const QTabBar* const bar = Tabs()->tabBar();
    QTest::mouseClick(Tabs()->tabBar(), Qt::LeftButton, Qt::NoModifier, bar->tabRect(tab).center());
}

}  // namespace

class TabsTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void init();
    void cleanup() { program_.reset(); }

    void TheCaptionsAreAsDesigned();
    void ADoubleClickOpensTheRecord();
    void EnterOpensTheRecord();
    void AClickOnTheTabOpensTheRecord();
    void TheRecordShowsTheCustomerAndTheVisits();
    void AnUnknownCustomerHasNoName();
    void TheRecordTakesTheFocusAndShowsItsButtons();
    void TheRecordFollowsTheList();
    void F8GoesBackToTheList();
    void F8OnTheListDoesNothing();
    void APendingChangeKeepsTheOperatorOnTheRecord_data();
    void APendingChangeKeepsTheOperatorOnTheRecord();
    void TheGuardReloadsTheVisits();
    void GoingBackHidesTheHistoryOnly();
    void AnEmptyFileGivesABlankRecord();
    void AnApostropheInARegistrationIsAnUnhandledErrorAndLeavesNoVisits();

 private:
    std::unique_ptr<RunningProgram> program_;
};

void TabsTest::init() {
    program_ = std::make_unique<RunningProgram>();
    program_->OpenVehicles();
}

void TabsTest::TheCaptionsAreAsDesigned() {
    QCOMPARE(Tabs()->TabCaption(0), QStringLiteral(" Liste des véhicules(F8)"));
    QCOMPARE(Tabs()->TabCaption(1), QStringLiteral(" Détail véhicule"));
}

void TabsTest::ADoubleClickOpensTheRecord() {
    forms::Grid* const list = Grid("DBG_Liste");
    const QRect cell = list->visualRect(list->model()->index(2, 1));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
    QCOMPARE(Tabs()->Tab(), kRecordTab);
    QCOMPARE(Box("CTX_IMMAT")->Text(), Cell("DBG_Liste", 1, 3));
}

void TabsTest::EnterOpensTheRecord() {
    PressKey(Qt::Key_Return);
    QCOMPARE(Tabs()->Tab(), kRecordTab);
}

void TabsTest::AClickOnTheTabOpensTheRecord() {
    ClickTab(kRecordTab);
    QCOMPARE(Tabs()->Tab(), kRecordTab);
    QCOMPARE(forms::Screen::ActiveControl(), Box("CTX_IMMAT"));
}

void TabsTest::TheRecordShowsTheCustomerAndTheVisits() {
    OpenRecordOf(QStringLiteral("2107 RC 59"));
    QCOMPARE(Box("CTX_MARQUE")->Text(), QStringLiteral("DACIA"));
    QCOMPARE(Box("CTX_CODCLI")->Text(), QStringLiteral("C0331"));
    const auto customers = shell::TheSession().BD_DONNEES->OpenRecordset(
        u"select TCLI_RS from TCLI where TCLI_CODCLI = 'C0331'");
    QCOMPARE(Box("CTX_RSCLI")->Text(), forms::ToQString(customers->Value(u"TCLI_RS").As<basic::Text>()));
    QCOMPARE(Data("DBD_DETAIL")->RecordSource(),
             QStringLiteral("Select * from TVEH_DETAIL where TVEH_DETAIL_Immat ='2107 RC 59'"));
    const auto visits = shell::TheSession().BD_DONNEES->OpenRecordset(
        u"Select * from TVEH_DETAIL where TVEH_DETAIL_Immat ='2107 RC 59'", dao::RecordsetType::Dynaset);
    QCOMPARE(static_cast<std::size_t>(Grid("DBG_DETAIL")->MaxRows()), visits->RowCount());
    QCOMPARE(Cell("DBG_DETAIL", 1, 1), QStringLiteral("TAC"));
    QCOMPARE(Cell("DBG_DETAIL", 2, 1), QStringLiteral("24"));
    QCOMPARE(Cell("DBG_DETAIL", 4, 1), QStringLiteral("2107 RC 59"));
    QVERIFY(Grid("DBG_DETAIL")->isColumnHidden(3));
}

void TabsTest::AnUnknownCustomerHasNoName() {
    OpenRecordOf(QStringLiteral("2107 RC 59"));
    QVERIFY(!Box("CTX_RSCLI")->Text().isEmpty());
    PressKey(Qt::Key_F8);
    ExecuteElsewhere(
        program_->DataFile(),
        QStringLiteral("update TVEH set TVEH_CODCLI = 'INCONNU' where TVEH_IMMAT = 'KG-361-VP'"));
    PressKey(Qt::Key_F5);
    OpenRecordOf(QStringLiteral("KG-361-VP"));
    QCOMPARE(Box("CTX_CODCLI")->Text(), QStringLiteral("INCONNU"));
    QCOMPARE(Box("CTX_RSCLI")->Text(), QString());
}

void TabsTest::TheRecordTakesTheFocusAndShowsItsButtons() {
    OpenRecordOf(QStringLiteral("KG-361-VP"));
    QCOMPARE(forms::Screen::ActiveControl(), Box("CTX_IMMAT"));
    QCOMPARE(Box("CTX_IMMAT")->selectedText(), QStringLiteral("KG-361-VP"));
    for (const char* group : {"Pic_Boutons_1", "Pic_boutons_2", "Pic_Boutons_3", "Pic_boutons_Quitter"}) {
        QVERIFY2(Shown(Control<QWidget>(group)), group);
    }
    QVERIFY(Shown(Button("Cmd_Images")));
    QVERIFY(!Shown(Control<QWidget>("Pic_Boutons_ToolBar")));
}

void TabsTest::TheRecordFollowsTheList() {
    PressKey(Qt::Key_Down);
    PressKey(Qt::Key_Down);
    QCOMPARE(Grid("DBG_Liste")->ActiveRow(), 3);
    QCOMPARE(Box("CTX_IMMAT")->Text(), Cell("DBG_Liste", 1, 3));
    QVERIFY(!Box("CTX_IMMAT")->DataChanged());
}

void TabsTest::F8GoesBackToTheList() {
    OpenRecordOf(QStringLiteral("KG-361-VP"));
    PressKey(Qt::Key_F8);
    QCOMPARE(Tabs()->Tab(), kListTab);
    QCOMPARE(forms::Screen::ActiveControl(), Grid("DBG_Liste"));
    QVERIFY(!Shown(Control<QWidget>("Pic_boutons_2")));
    QVERIFY(!Shown(Control<QWidget>("Pic_Boutons_3")));
    QVERIFY(Shown(Control<QWidget>("Pic_Boutons_ToolBar")));
    QVERIFY(!Shown(Button("Cmd_Images")));
}

void TabsTest::F8OnTheListDoesNothing() {
    support::BoxAnswerer boxes;
    PressKey(Qt::Key_F8);
    QCOMPARE(Tabs()->Tab(), kListTab);
    QVERIFY(boxes.Shown().empty());
}

void TabsTest::APendingChangeKeepsTheOperatorOnTheRecord_data() {
    QTest::addColumn<bool>("byKey");
    QTest::newRow("F8") << true;
    QTest::newRow("click on the tab") << false;
}

void TabsTest::APendingChangeKeepsTheOperatorOnTheRecord() {
    QFETCH(const bool, byKey);
    OpenRecordOf(QStringLiteral("KG-361-VP"));
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("RENAULT"));
    support::BoxAnswerer boxes;
    if (byKey) {
        PressKey(Qt::Key_F8);
    } else {
        ClickTab(kListTab);
    }
    CompareOnlyBox(boxes, kGuard, kNoIcon);
    QCOMPARE(Tabs()->Tab(), kRecordTab);
    QCOMPARE(Box("CTX_MARQUE")->Text(), QStringLiteral("RENAULT"));
    QVERIFY(Box("CTX_MARQUE")->DataChanged());
    QVERIFY(Shown(Control<QWidget>("Pic_boutons_2")));
}

void TabsTest::TheGuardReloadsTheVisits() {
    OpenRecordOf(QStringLiteral("2107 RC 59"));
    TypeVisit(2, 1, QStringLiteral("99"));
    QCOMPARE(Cell("DBG_DETAIL", 2, 1), QStringLiteral("99"));
    support::BoxAnswerer boxes;
    QString whileTheBoxIsOpen;
    boxes.LookAtBoxes([&] { whileTheBoxIsOpen = Cell("DBG_DETAIL", 2, 1); });
    PressKey(Qt::Key_F8);
    CompareOnlyBox(boxes, kGuard, kNoIcon);
    QCOMPARE(whileTheBoxIsOpen, QStringLiteral("24"));
    QCOMPARE(Tabs()->Tab(), kRecordTab);
    QCOMPARE(Cell("DBG_DETAIL", 2, 1), QStringLiteral("24"));
}

void TabsTest::GoingBackHidesTheHistoryOnly() {
    OpenRecordOf(QStringLiteral("KG-361-VP"));
    Control<QWidget>("FRM_HISTO")->setVisible(true);
    Control<QWidget>("FRM_DETAIL")->setVisible(true);
    ClickTab(kListTab);
    ClickTab(kRecordTab);
    QVERIFY(!Shown(Control<QWidget>("FRM_HISTO")));
    QVERIFY(Shown(Control<QWidget>("FRM_DETAIL")));
}

void TabsTest::AnEmptyFileGivesABlankRecord() {
    OpenRecordOf(QStringLiteral("2107 RC 59"));
    QVERIFY(Grid("DBG_DETAIL")->MaxRows() > 0);
    QVERIFY(!Box("CTX_RSCLI")->Text().isEmpty());
    ClickTab(kListTab);
    Data("DBD_TVEH")->SetRecordSource(QStringLiteral("select * from TVEH where TVEH_IMMAT = '?'"));
    Data("DBD_TVEH")->Refresh();
    QCOMPARE(Grid("DBG_Liste")->MaxRows(), 0);
    ClickTab(kRecordTab);
    for (const char* box : {"CTX_IMMAT", "CTX_MARQUE", "CTX_ComplIdent", "CTX_CODCLI", "CTX_RSCLI"}) {
        QCOMPARE(Box(box)->Text(), QString());
    }
    QCOMPARE(Grid("DBG_DETAIL")->MaxRows(), 0);
}

void TabsTest::AnApostropheInARegistrationIsAnUnhandledErrorAndLeavesNoVisits() {
    ExecuteElsewhere(program_->DataFile(),
                     QStringLiteral("insert into TVEH (TVEH_IMMAT) values (\"L'AUTO\")"));
    PressKey(Qt::Key_F5);
    OpenRecordOf(QStringLiteral("2107 RC 59"));
    QVERIFY(Grid("DBG_DETAIL")->MaxRows() > 0);
    PressKey(Qt::Key_F8);
    Data("DBD_TVEH")->Recordset()->FindFirst(u"TVEH_IMMAT = \"L'AUTO\"");
    QCOMPARE(Box("CTX_IMMAT")->Text(), QStringLiteral("L'AUTO"));
    support::BoxAnswerer boxes;
    const int endsBefore = forms::CatchEndOfProcess(true);
    PressKey(Qt::Key_Return);
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
    const QString& text = boxes.Shown().front().text;
    QVERIFY2(text.startsWith(QStringLiteral("Erreur d'exécution 3075")), qPrintable(text));
    QCOMPARE(forms::CatchEndOfProcess(true), endsBefore + 1);
    QCOMPARE(Grid("DBG_DETAIL")->MaxRows(), 0);
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    TabsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tabs_test.moc"
