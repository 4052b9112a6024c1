// The road from process start to the idle main window: databases, version, caption, sizes, and every way in
// which it fails.
#include <filesystem>
#include <fstream>

#include <QTest>

#include <basic/paths.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <forms/twips.h>
#include <services/calendar_settings.h>
#include <services/screen_adaptation.h>
#include <services/translation.h>
#include <shell/main_window.h>
#include <shell/session.h>
#include <support/installation.h>

#include "../data/process/ordinary_user.h"
#include "database_edits.h"
#include "start.h"

using namespace quardele;
using quardele::test::HoldsForAnOrdinaryUser;
using tests::Damage;
using tests::MainWindow;
using tests::Start;
using tests::StartProgram;

namespace {

constexpr auto kPaths = u"C:\\QUARDELE\\dbpath.mdb";
constexpr auto kData = u"C:\\QUARDELE\\DATA\\talmeon.mdb";

/// What ends a start that has not opened the data database: the structure cannot be looked at.
const QString kPatchWithEmptyJournal = QStringLiteral(
    "Une mise à jour de structure des données a été effectuée.\n\n\nL'application doit être "
    "redémarrée...");
const QString kNoPathDatabase = QStringLiteral("La base de données DBPATH.MDB est introuvable !");

QString Described(int error, basic::TextView name) {
    return forms::ToQString(basic::Describe(error, name));
}

QString NamingFile(const QString& description, const char* file) {
    return description.contains(QStringLiteral("%1")) ? description.arg(QString::fromLatin1(file))
                                                      : description;
}

QString FailureOfStep(int step, const QString& description) {
    return QStringLiteral("control appli: (%1) : ").arg(step) + description;
}

constexpr const char* kInstalled[] = {"", "VEH", "DATA", "dbpath.mdb", "quardele.ini", "DATA/talmeon.mdb"};

/// Everybody may look into the installation and nobody may write there.
void MakeReadOnly(const support::Installation& installation) {
    using std::filesystem::perms;
    constexpr perms kLook = perms::owner_read | perms::group_read | perms::others_read | perms::owner_exec |
                            perms::group_exec | perms::others_exec;
    for (const auto& path : {installation.DriveC().parent_path(), installation.DriveC()}) {
        std::filesystem::permissions(path, kLook, std::filesystem::perm_options::add);
    }
    for (const char* name : kInstalled) {
        std::filesystem::permissions(installation.File(name), kLook);
    }
}

void MakeWritable(const support::Installation& installation) {
    for (const char* name : kInstalled) {
        std::filesystem::permissions(installation.File(name), std::filesystem::perms::owner_write,
                                     std::filesystem::perm_options::add);
    }
}

}  // namespace

class StartTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase();
    void cleanup();

    void TheInstallationOpensTheWindow();
    void TheSessionKnowsItsFolders();
    void TheCaptionCarriesVersionAndFolder_data();
    void TheCaptionCarriesVersionAndFolder();
    void TheStatusBarShowsTheSizeAlone();
    void TheSizeIsWrittenBeforeTheFirstResize();
    void TheCaptionIsTranslatedOnceBeforeTheFolderJoinsIt();
    void TheWindowTakesTheScreen_data();
    void TheWindowTakesTheScreen();

    void TheCurrentFolderDecidesWhereTheDatabaseLies();
    void TheRootOfADriveIsItsOwnParent();
    void TheCaseOfTheFileNameDoesNotMatter();
    void ASpoiledPathDatabaseIsReportedWithStepOne_data();
    void ASpoiledPathDatabaseIsReportedWithStepOne();
    void ASpoiledDataDatabaseIsReportedWithStepTwo_data();
    void ASpoiledDataDatabaseIsReportedWithStepTwo();
    void AMissingDataDatabaseIsReportedWithStepTwo();
    void APathDatabaseWithoutItsTableIsReportedWithStepTwo();
    void AFailureOfTheVersionTestIsReportedWithStepThreeAndTheWindowOpens();
    void AFolderWithoutBackslashRunsIntoTheFileName();
    void TheStockFolderIsTakenAsItIsStored();
    void WithoutTheDataDatabasesRowTheProgramEnds();
    void WithoutTheStockDatabasesRowTheWindowOpens();
    void AnotherVersionOfTheDataEndsTheProgram();
    void ADatabaseWithoutVersionAgrees();
    void TheRevisionTakesNoPartInTheComparison();
    void AReadOnlyFolderOpensTheWindow();
    // Last: the file of local parameters stays open for the rest of the process.
    void ABadLocalParameterIsToldFirstAndTheStartGoesOn();
};

void StartTest::initTestCase() {
    forms::CatchEndOfProcess(true);
    QCoreApplication::setApplicationVersion(QStringLiteral("9.5.5"));
}

void StartTest::cleanup() {
    tests::StopProgram();
    forms::Screen::SetSizeForTests(0, 0);
    QCoreApplication::setApplicationVersion(QStringLiteral("9.5.5"));
}

void StartTest::TheInstallationOpensTheWindow() {
    const support::Installation installation;
    const Start start = StartProgram();
    QCOMPARE(start.boxes, std::vector<QString>{});
    QVERIFY(!start.ended);
    QVERIFY(MainWindow().Visible());
    QCOMPARE(forms::Forms::Count(), 1);
    QVERIFY(shell::TheSession().BD_DONNEES != nullptr);
    QVERIFY(shell::TheSession().OBJ_WORD != nullptr);
    QCOMPARE(shell::TheSession().NUMAPPLI_COURANT, 0);
    QVERIFY(!MainWindow().M_PARAM->isVisible());
}

void StartTest::TheSessionKnowsItsFolders() {
    const support::Installation installation;
    StartProgram();
    QCOMPARE(shell::TheSession().CHEMIN_DONNEES, QStringLiteral("C:\\QUARDELE\\DATA\\"));
    QCOMPARE(shell::TheSession().CHEMIN_STOCK, QStringLiteral("C:\\QUARDELE\\STOCK\\"));
    QCOMPARE(services::Translation().CHEMIN_TRAD, QStringLiteral("C:\\QUARDELE\\DATA\\"));
    QCOMPARE(services::Translation().NOM_BD_TRAD, QStringLiteral("BDTRAD.MDB"));
    QCOMPARE(services::Translation().TranslationOn, false);
    QCOMPARE(services::TheCalendarSettings().PARAM_CALENDRIER, 1);
}

void StartTest::TheCaptionCarriesVersionAndFolder_data() {
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("shown");
    QTest::newRow("one digit") << "9.5.5"
                               << "V9.5.05";
    QTest::newRow("two digits") << "9.5.12"
                                << "V9.5.12";
    QTest::newRow("the last two digits") << "9.5.123"
                                         << "V9.5.23";
}

void StartTest::TheCaptionCarriesVersionAndFolder() {
    QFETCH(const QString, version);
    QFETCH(const QString, shown);
    const support::Installation installation;
    QCoreApplication::setApplicationVersion(version);
    StartProgram();
    QCOMPARE(MainWindow().Caption(), QStringLiteral("Gestion des véhicules   ") + shown + QString(26, u' ') +
                                         QStringLiteral("C:\\QUARDELE\\DATA\\"));
}

void StartTest::TheStatusBarShowsTheSizeAlone() {
    const support::Installation installation;
    StartProgram();
    const forms::StatusBar& bar = *MainWindow().PIC_STATUS;
    QCOMPARE(bar.Count(), 4);
    QVERIFY(bar.Panels(1).Visible());
    QCOMPARE(bar.Panels(1).Text(),
             QStringLiteral("%1 x %2").arg(MainWindow().Height()).arg(MainWindow().Width()));
    for (int index = 2; index <= 4; ++index) {
        QVERIFY2(!bar.Panels(index).Visible(), qPrintable(QString::number(index)));
    }
}

void StartTest::TheSizeIsWrittenBeforeTheFirstResize() {
    const support::Installation installation;
    const auto& window = forms::Instance<shell::MDIMENU_VEH>();
    QVERIFY(!window.Visible());
    QCOMPARE(window.PIC_STATUS->Panels(1).Text(),
             QStringLiteral("%1 x %2").arg(window.Height()).arg(window.Width()));
}

void StartTest::TheCaptionIsTranslatedOnceBeforeTheFolderJoinsIt() {
    const support::Installation installation;
    support::RaiseTranslation({{u"Gestion des véhicules", u"Vozidla"}, {u"Vozidla", u"Podruhé"}});
    QCOMPARE(
        forms::Instance<shell::MDIMENU_VEH>().Caption(),
        QStringLiteral("Vozidla   V9.5.05") + QString(26, u' ') + QStringLiteral("C:\\QUARDELE\\DATA\\"));
}

void StartTest::TheWindowTakesTheScreen_data() {
    QTest::addColumn<int>("screenWidth");
    QTest::addColumn<int>("screenHeight");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<bool>("smallScreen");
    QTest::newRow("800 x 600") << 12000 << 9000 << 12000 << 8500 << true;
    QTest::newRow("one pixel narrower") << 11985 << 9000 << 11985 - 2445 << 8500 << true;
    QTest::newRow("one pixel wider") << 12015 << 9000 << 12015 - 2445 << 8500 << true;
    QTest::newRow("800 wide, higher") << 12000 << 9015 << 12000 << 8515 << false;
    QTest::newRow("1366 x 768") << 20490 << 11520 << 18045 << 11020 << false;
}

void StartTest::TheWindowTakesTheScreen() {
    QFETCH(const int, screenWidth);
    QFETCH(const int, screenHeight);
    QFETCH(const int, width);
    QFETCH(const int, height);
    QFETCH(const bool, smallScreen);
    const support::Installation installation;
    forms::Screen::SetSizeForTests(screenWidth, screenHeight);
    StartProgram();
    const shell::Session& session = shell::TheSession();
    QCOMPARE(services::ScreenAtStart().ScreenWidth, screenWidth);
    QCOMPARE(services::ScreenAtStart().ScreenHeight, screenHeight);
    // A window is whole pixels.
    QVERIFY(std::abs(session.MDI_LARGEUR - width) < 15);
    QVERIFY(std::abs(session.MDI_HAUTEUR - height) < 15);
    // The frame that the desktop draws when the window comes on screen is part of that.
    QCOMPARE(MainWindow().Width(), session.MDI_LARGEUR);
    QCOMPARE(MainWindow().Height(), session.MDI_HAUTEUR);
    QVERIFY(MainWindow().Window()->frameGeometry().size() != MainWindow().Window()->size());
    QCOMPARE(MainWindow().Top(), 0);
    QCOMPARE(MainWindow().Left(), 0);
    QCOMPARE(session.WorkAreaTop == 0, smallScreen);
    QCOMPARE(session.WorkAreaHeight, 0);
    if (!smallScreen) {
        // The designed height, not the one at run time.
        QCOMPARE(session.WorkAreaTop, 400 * 15 + 1);
    }
}

void StartTest::TheCurrentFolderDecidesWhereTheDatabaseLies() {
    const support::Installation installation;
    std::filesystem::create_directories(installation.DriveC() / "AILLEURS" / "VEH");
    basic::ChDir(u"C:\\AILLEURS\\VEH");
    const Start start = StartProgram();
    QCOMPARE(start.boxes, std::vector<QString>{kNoPathDatabase});
    QCOMPARE(start.shown.front().icon, QStringLiteral("erreur"));
    QCOMPARE(start.shown.front().title, forms::App::Title());
    QVERIFY(start.ended);
}

void StartTest::TheRootOfADriveIsItsOwnParent() {
    const support::Installation installation;
    basic::ChDir(u"C:\\");
    QCOMPARE(StartProgram().boxes, std::vector<QString>{kNoPathDatabase});

    std::filesystem::copy(installation.File("dbpath.mdb"), installation.DriveC() / "dbpath.mdb");
    const Start start = StartProgram();
    QCOMPARE(start.boxes, std::vector<QString>{});
    QVERIFY(!start.ended);
}

void StartTest::TheCaseOfTheFileNameDoesNotMatter() {
    const support::Installation installation;
    std::filesystem::rename(installation.File("dbpath.mdb"), installation.File("DBPath.MDB"));
    QVERIFY(!StartProgram().ended);
}

/// Descriptions with "%1" for the name of the file.
void StartTest::ASpoiledPathDatabaseIsReportedWithStepOne_data() {
    const QString foreign = QStringLiteral("Format de base de données non reconnu : « %1 » ");
    QTest::addColumn<Damage>("damage");
    QTest::addColumn<QString>("description");
    QTest::newRow("empty") << Damage::Empty << foreign + QStringLiteral("est vide ou incomplet.");
    QTest::newRow("truncated") << Damage::Truncated << foreign + QStringLiteral("est incomplet.");
    QTest::newRow("foreign") << Damage::Foreign << foreign + QStringLiteral("n'est pas une base Access.");
    QTest::newRow("password") << Damage::PasswordProtected
                              << forms::ToQString(basic::DescriptionOf(basic::error::kBadPassword));
}

void StartTest::ASpoiledPathDatabaseIsReportedWithStepOne() {
    QFETCH(const Damage, damage);
    QFETCH(const QString, description);
    const support::Installation installation;
    tests::SpoilFile(installation.File("dbpath.mdb"), damage);
    const Start start = StartProgram();
    QCOMPARE(start.boxes, (std::vector<QString>{FailureOfStep(1, NamingFile(description, "dbpath.mdb")),
                                                kPatchWithEmptyJournal}));
    QVERIFY(start.ended);
}

void StartTest::ASpoiledDataDatabaseIsReportedWithStepTwo_data() {
    ASpoiledPathDatabaseIsReportedWithStepOne_data();
}

void StartTest::ASpoiledDataDatabaseIsReportedWithStepTwo() {
    QFETCH(const Damage, damage);
    QFETCH(const QString, description);
    const support::Installation installation;
    tests::SpoilFile(installation.File("DATA/talmeon.mdb"), damage);
    const Start start = StartProgram();
    QCOMPARE(start.boxes, (std::vector<QString>{FailureOfStep(2, NamingFile(description, "talmeon.mdb")),
                                                kPatchWithEmptyJournal}));
    QVERIFY(start.ended);
}

void StartTest::AMissingDataDatabaseIsReportedWithStepTwo() {
    const support::Installation installation;
    std::filesystem::remove(installation.File("DATA/talmeon.mdb"));
    const Start start = StartProgram();
    QCOMPARE(start.boxes,
             (std::vector<QString>{FailureOfStep(2, Described(basic::error::kFileMissing, kData)),
                                   kPatchWithEmptyJournal}));
    QVERIFY(start.ended);
}

void StartTest::APathDatabaseWithoutItsTableIsReportedWithStepTwo() {
    const support::Installation installation;
    tests::ReplaceInFile(installation.File("dbpath.mdb"), u"TPATH", u"TPATX");
    const Start start = StartProgram();
    QCOMPARE(start.boxes,
             (std::vector<QString>{FailureOfStep(2, Described(basic::error::kNoSuchTable, u"TPATH")),
                                   kPatchWithEmptyJournal}));
    QVERIFY(start.ended);
}

void StartTest::AFailureOfTheVersionTestIsReportedWithStepThreeAndTheWindowOpens() {
    const support::Installation installation;
    tests::ReplaceInFile(installation.File("DATA/talmeon.mdb"), u"TPAR_Ver", u"TPAR_Vex");
    const Start start = StartProgram();
    QCOMPARE(start.boxes,
             (std::vector<QString>{FailureOfStep(3, Described(basic::error::kNoSuchField, u"TPAR_Ver"))}));
    QVERIFY(!start.ended);
    QVERIFY(MainWindow().Visible());
}

void StartTest::AFolderWithoutBackslashRunsIntoTheFileName() {
    const support::Installation installation;
    tests::SetField(kPaths, u"TPATH", u"TPATH_NUM = 2", u"TPATH_PATH", u"C:\\QUARDELE\\DATA");
    const Start start = StartProgram();
    QCOMPARE(start.boxes, (std::vector<QString>{FailureOfStep(2, Described(basic::error::kFileMissing,
                                                                           u"C:\\QUARDELE\\DATAtalmeon.mdb")),
                                                kPatchWithEmptyJournal}));
    QVERIFY(start.ended);
}

void StartTest::WithoutTheDataDatabasesRowTheProgramEnds() {
    const support::Installation installation;
    tests::SetField(kPaths, u"TPATH", u"TPATH_NUM = 2", u"TPATH_NUM", std::int16_t{12});
    const Start start = StartProgram();
    QCOMPARE(start.boxes,
             std::vector<QString>{QStringLiteral("Cette application ne peut pas fonctionner sans TALMEON")});
    QVERIFY(start.ended);
}

void StartTest::WithoutTheStockDatabasesRowTheWindowOpens() {
    const support::Installation installation;
    tests::SetField(kPaths, u"TPATH", u"TPATH_NUM = 1", u"TPATH_NUM", std::int16_t{11});
    const Start start = StartProgram();
    QCOMPARE(start.boxes, std::vector<QString>{});
    QVERIFY(!start.ended);
    QCOMPARE(shell::TheSession().CHEMIN_STOCK, QString());
}

void StartTest::TheStockFolderIsTakenAsItIsStored() {
    const support::Installation installation;
    tests::SetField(kPaths, u"TPATH", u"TPATH_NUM = 1", u"TPATH_PATH", u"C:\\QUARDELE\\STOCK");
    const Start start = StartProgram();
    QCOMPARE(start.boxes, std::vector<QString>{});
    QVERIFY(!start.ended);
    QCOMPARE(shell::TheSession().CHEMIN_STOCK, QStringLiteral("C:\\QUARDELE\\STOCK"));
}

void StartTest::AnotherVersionOfTheDataEndsTheProgram() {
    const support::Installation installation;
    tests::SetField(kData, u"TPAR", u"TPAR_Ver = '9.5'", u"TPAR_Ver", u"9.4");
    const Start start = StartProgram();
    QCOMPARE(start.boxes, std::vector<QString>{QStringLiteral(
                              "Ce programme est en version 9.5 et la base de données en version 9.4")});
    QVERIFY(start.ended);
}

void StartTest::ADatabaseWithoutVersionAgrees() {
    const support::Installation installation;
    tests::SetField(kData, u"TPAR", u"TPAR_Ver = '9.5'", u"TPAR_Ver", basic::Null{});
    const Start start = StartProgram();
    QCOMPARE(start.boxes, std::vector<QString>{});
    QVERIFY(!start.ended);
}

void StartTest::TheRevisionTakesNoPartInTheComparison() {
    const support::Installation installation;
    QCoreApplication::setApplicationVersion(QStringLiteral("9.5.6"));
    QVERIFY(!StartProgram().ended);
    QCoreApplication::setApplicationVersion(QStringLiteral("9.6.5"));
    QVERIFY(StartProgram().ended);
}

void StartTest::AReadOnlyFolderOpensTheWindow() {
    const support::Installation installation;
    MakeReadOnly(installation);
    const bool opened = HoldsForAnOrdinaryUser([&] {
        const bool writable = std::ofstream(installation.File("DATA/essai")).is_open();
        const Start start = StartProgram();
        return !writable && !start.ended && start.boxes.empty() && MainWindow().Visible();
    });
    MakeWritable(installation);
    QVERIFY(opened);
}

void StartTest::ABadLocalParameterIsToldFirstAndTheStartGoesOn() {
    const auto box = [](int error) {
        return QStringLiteral("Procedure Init_Params_Locaux : ") +
               forms::ToQString(basic::DescriptionOf(error));
    };
    {
        const support::Installation installation;
        std::ofstream(installation.File("quardele.ini")) << "CALENDRIER=deux\r\n";
        std::filesystem::remove(installation.File("dbpath.mdb"));
        QCOMPARE(StartProgram().boxes,
                 (std::vector<QString>{box(basic::error::kTypeMismatch), kNoPathDatabase}));
    }
    const support::Installation installation;
    const Start start = StartProgram();
    QCOMPARE(start.boxes, std::vector<QString>{box(basic::error::kFileAlreadyOpen)});
    QVERIFY(!start.ended);
    QVERIFY(MainWindow().Visible());
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    StartTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "start_test.moc"
