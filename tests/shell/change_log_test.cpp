// The change log: what it shows of a module, the choice of another one, the command line, its layout.
#include <filesystem>

#include <QAbstractItemView>
#include <QApplication>
#include <QTest>

#include <dao/dao.h>
#include <forms/control.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <shell/f_evolution.h>
#include <shell/main_window.h>
#include <shell/session.h>
#include <support/boxes.h>
#include <support/installation.h>

#include "database_edits.h"
#include "start.h"

using namespace quardele;
using shell::F_EVOLUTION;
using tests::MainWindow;

namespace {

constexpr auto kFile = u"C:\\QUARDELE\\EvolutionV95.MDB";
const QString kRule = QString(72, u'-') + QStringLiteral("\r\n");

/// What the application tells of its command line, which a test may change.
char programName[] = "vehicules";
char commandLine[16] = "";
char* arguments[] = {programName, commandLine, nullptr};
int argumentCount = 1;

void SetCommandLine(const char* text) {
    qstrncpy(commandLine, text, sizeof commandLine);
    argumentCount = *text == '\0' ? 1 : 2;
}

QString Heading(int revision, const QString& date) {
    return kRule + QStringLiteral("Révision %1\t(%2)\r\n").arg(revision).arg(date) + kRule;
}

/// A change with the blank line behind it.
QString Change(const QString& text) {
    return text + QStringLiteral("\r\n\r\n");
}

QString LogOfModule10() {
    return Heading(5, QStringLiteral("01/09/2026")) +
           Change(QStringLiteral("Choix du modèle de lettre lorsqu'il en existe plusieurs.")) +
           Heading(1, QStringLiteral("15/06/2020")) +
           Change(QStringLiteral("Ajout des champs Note 1 et Note 2 sur la fiche véhicule.")) +
           Change(QStringLiteral("Filtre par site dans les relances.")) +
           Heading(0, QStringLiteral("04/03/2019")) + Change(QStringLiteral("Première version du module."));
}

QString LogOfModule2() {
    return Heading(3, QStringLiteral("10/01/2022")) + Change(QStringLiteral("Autre module."));
}

F_EVOLUTION& Form() {
    return forms::Instance<F_EVOLUTION>();
}

/// The log of a module as the menu's command opens it, but the test goes on.
F_EVOLUTION& OpenLogOf(int module) {
    shell::TheSession().NUMAPPLI_COURANT = module;
    Form().Show();
    return Form();
}

void AddChange(std::int16_t module, std::int16_t revision, const basic::Variant& detail) {
    const auto rows = dao::DBEngine::Instance().Workspaces(0).OpenDatabase(kFile)->OpenRecordset(
        u"TEVOLUTION", dao::RecordsetType::Dynaset);
    rows->AddNew();
    rows->SetValue(u"NUMAPPLI", module);
    rows->SetValue(u"REVISION", revision);
    rows->SetValue(u"DETAIL", detail);
    rows->Update();
}

/// Opens the list of modules and takes an entry with the keyboard, as an operator does.
void Choose(int entry) {
    forms::ListCombo& modules = *Form().DBC_Choix;
    modules.setFocus();
    modules.showPopup();
    QTRY_VERIFY(modules.view()->isVisible());
    QTest::keyClick(modules.view(), Qt::Key_Home, Qt::ControlModifier);
    for (int step = 0; step < entry; ++step) {
        QTest::keyClick(modules.view(), Qt::Key_Down);
    }
    QTest::keyClick(modules.view(), Qt::Key_Return);
}

}  // namespace

class ChangeLogTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase();
    void init() { Start(std::make_unique<support::Installation>()); }
    void cleanup();

    void RevisionsComeNewestFirstUnderTheirHeadings_data();
    void RevisionsComeNewestFirstUnderTheirHeadings();
    void ARevisionZeroInFrontHasNoHeading();
    void AChangeWithoutTextLeavesItsLines();
    void ADateThatIsMissingLeavesItsPlaceEmpty();
    void AModuleWithoutChangesHasItsTitleOnly();
    void AnUnknownModuleGetsTheFirstName();
    void TheBoxCannotBeTypedInto();
    void Module99OffersTheChoice();
    void AChosenModuleReplacesTheLog();
    void ClearingTheChoiceChangesNothing();
    void ASecondActivationAddsTheLogAgain();
    void ANewOpeningStartsAnew();
    void WithoutTheChoiceTheBoxFillsTheForm();
    void WithTheChoiceTheBoxBeginsBelowIt();
    void TheLastLineIsSeen_data();
    void TheLastLineIsSeen();
    void TheCommandLineNamesTheModule_data();
    void TheCommandLineNamesTheModule();
    void ACommandLineWithoutANumberIsAnErrorOfTheLog();
    void AMissingFileIsToldAndTheFormStaysEmpty();
    void TheFileLiesAtItsFixedPlace();

 private:
    void Start(std::unique_ptr<support::Installation> installation);

    std::unique_ptr<support::Installation> installation_;
};

void ChangeLogTest::initTestCase() {
    forms::CatchEndOfProcess(true);
    QCoreApplication::setApplicationVersion(QStringLiteral("9.5.5"));
}

void ChangeLogTest::Start(std::unique_ptr<support::Installation> installation) {
    installation_ = std::move(installation);
    QVERIFY(!tests::StartProgram().ended);
}

void ChangeLogTest::cleanup() {
    tests::StopProgram();
    installation_.reset();
    SetCommandLine("");
}

void ChangeLogTest::RevisionsComeNewestFirstUnderTheirHeadings_data() {
    QTest::addColumn<QString>("source");
    QTest::newRow("made") << QStringLiteral(QUARDELE_INSTALLATION_DIR);
    QTest::newRow("sample") << QStringLiteral(QUARDELE_SAMPLE_DIR);
}

void ChangeLogTest::RevisionsComeNewestFirstUnderTheirHeadings() {
    QFETCH(const QString, source);
    const std::filesystem::path folder = std::filesystem::path(source.toStdString()) / "QUARDELE";
    if (!std::filesystem::exists(folder)) {
        QSKIP("no sample installation here");
    }
    cleanup();
    Start(std::make_unique<support::Installation>(folder));
    const F_EVOLUTION& form = OpenLogOf(10);
    QCOMPARE(form.CTX_EVOLUTION->Text(), LogOfModule10());
    QCOMPARE(form.Caption(), QStringLiteral("Evolutions Suivi Véhicules"));
    QVERIFY(form.FRM_Choix->isHidden());
}

void ChangeLogTest::ARevisionZeroInFrontHasNoHeading() {
    AddChange(1, 0, u"  Première version.  ");
    AddChange(1, 0, u"Étiquettes.");
    QCOMPARE(OpenLogOf(1).CTX_EVOLUTION->Text(),
             Change(QStringLiteral("Première version.")) + Change(QStringLiteral("Étiquettes.")));
}

void ChangeLogTest::AChangeWithoutTextLeavesItsLines() {
    AddChange(1, 0, basic::Null{});
    QCOMPARE(OpenLogOf(1).CTX_EVOLUTION->Text(), Change(QString()));
}

void ChangeLogTest::ADateThatIsMissingLeavesItsPlaceEmpty() {
    AddChange(1, 7, u"Sans date.");
    QCOMPARE(OpenLogOf(1).CTX_EVOLUTION->Text(),
             Heading(7, QString()) + Change(QStringLiteral("Sans date.")));
}

void ChangeLogTest::AModuleWithoutChangesHasItsTitleOnly() {
    const F_EVOLUTION& form = OpenLogOf(1);
    QCOMPARE(form.Caption(), QStringLiteral("Evolutions Stock"));
    QCOMPARE(form.CTX_EVOLUTION->Text(), QString());
}

void ChangeLogTest::AnUnknownModuleGetsTheFirstName() {
    const F_EVOLUTION& form = OpenLogOf(42);
    QCOMPARE(form.Caption(), QStringLiteral("Evolutions Stock"));
    QCOMPARE(form.CTX_EVOLUTION->Text(), QString());
}

void ChangeLogTest::TheBoxCannotBeTypedInto() {
    const F_EVOLUTION& form = OpenLogOf(10);
    QTest::keyClicks(form.CTX_EVOLUTION, QStringLiteral("xyz"));
    QCOMPARE(form.CTX_EVOLUTION->Text(), LogOfModule10());
}

void ChangeLogTest::Module99OffersTheChoice() {
    const F_EVOLUTION& form = OpenLogOf(99);
    QVERIFY(form.FRM_Choix->isVisible());
    QCOMPARE(form.FRM_Choix->Caption(), QStringLiteral("Frame1"));
    QCOMPARE(form.Surface()->findChild<forms::Label*>(QStringLiteral("CTL_Choix"))->Caption(),
             QStringLiteral("Module QUARDELE"));
    QCOMPARE(form.Caption(), QStringLiteral("Evolutions Tous modules"));
    QCOMPARE(form.CTX_EVOLUTION->Text(), QString());
    QCOMPARE(form.CTX_Choix->Text(), QString());
    QStringList modules;
    for (int row = 0; row < form.DBC_Choix->count(); ++row) {
        modules.append(form.DBC_Choix->itemText(row));
    }
    QCOMPARE(modules, (QStringList{"Stock", "Affaires", "Suivi Véhicules", "Tous modules"}));
}

void ChangeLogTest::AChosenModuleReplacesTheLog() {
    const F_EVOLUTION& form = OpenLogOf(99);
    Choose(2);
    QCOMPARE(form.CTX_Choix->Text(), QStringLiteral("10"));
    QCOMPARE(form.Caption(), QStringLiteral("Evolutions Suivi Véhicules"));
    QCOMPARE(form.CTX_EVOLUTION->Text(), LogOfModule10());
    Choose(1);
    QCOMPARE(form.CTX_Choix->Text(), QStringLiteral("2"));
    QCOMPARE(form.Caption(), QStringLiteral("Evolutions Affaires"));
    QCOMPARE(form.CTX_EVOLUTION->Text(), LogOfModule2());
    QCOMPARE(form.DBD_evolution->RecordSource(),
             QStringLiteral("SELECT TEVOLUTION.NUMAPPLI, TEVOLUTION.REVISION, TEVOLUTION.DATE, "
                            "TEVOLUTION.DETAIL From TEVOLUTION WHERE TEVOLUTION.NUMAPPLI = 2 "
                            "ORDER BY TEVOLUTION.NUMAPPLI, TEVOLUTION.REVISION DESC;"));
    QCOMPARE(form.DBD_Modules->RecordSource(), QStringLiteral("SELECT * From TNUMAPPLI ORDER BY NUMAPPLI;"));
}

void ChangeLogTest::ClearingTheChoiceChangesNothing() {
    const F_EVOLUTION& form = OpenLogOf(99);
    Choose(1);
    form.DBC_Choix->Clear();
    // A list without a text says nothing of the module, wherever its records stand.
    form.DBD_Modules->Opened().MoveFirst();
    emit form.DBC_Choix->Click();
    QCOMPARE(form.CTX_Choix->Text(), QStringLiteral("2"));
    QCOMPARE(form.Caption(), QStringLiteral("Evolutions Affaires"));
    QCOMPARE(form.CTX_EVOLUTION->Text(), LogOfModule2());
}

void ChangeLogTest::ASecondActivationAddsTheLogAgain() {
    F_EVOLUTION& form = OpenLogOf(2);
    MainWindow().ZOrder(0);
    form.ZOrder(0);
    QCOMPARE(form.CTX_EVOLUTION->Text(), LogOfModule2() + LogOfModule2());
}

void ChangeLogTest::ANewOpeningStartsAnew() {
    OpenLogOf(2).Unload();
    QCOMPARE(OpenLogOf(2).CTX_EVOLUTION->Text(), LogOfModule2());
}

void ChangeLogTest::WithoutTheChoiceTheBoxFillsTheForm() {
    F_EVOLUTION& form = OpenLogOf(10);
    for (const int pixels : {0, 60}) {
        form.SetWidth(form.Width() + 15 * pixels);
        form.SetHeight(form.Height() + 15 * pixels);
        QCOMPARE(forms::Left(form.CTX_EVOLUTION), 0);
        QCOMPARE(forms::Top(form.CTX_EVOLUTION), 0);
        // Lengths on screen are whole pixels of 15 twips.
        QCOMPARE(form.CTX_EVOLUTION->width(), (form.Width() - 100) / 15);
        QCOMPARE(forms::Height(form.CTX_EVOLUTION), form.Height());
    }
}

void ChangeLogTest::WithTheChoiceTheBoxBeginsBelowIt() {
    F_EVOLUTION& form = OpenLogOf(99);
    for (const int pixels : {0, 60}) {
        form.SetWidth(form.Width() + 15 * pixels);
        form.SetHeight(form.Height() + 15 * pixels);
        QCOMPARE(forms::Left(form.FRM_Choix), 0);
        QCOMPARE(forms::Width(form.FRM_Choix), forms::Width(form.CTX_EVOLUTION));
        QCOMPARE(form.FRM_Choix->width(), (form.Width() - 100) / 15);
        QCOMPARE(forms::Height(form.FRM_Choix), 56 * 15);
        QCOMPARE(forms::Left(form.CTX_EVOLUTION), 0);
        QCOMPARE(forms::Top(form.CTX_EVOLUTION), 56 * 15);
        QCOMPARE(forms::Height(form.CTX_EVOLUTION), form.Height() - 56 * 15);
    }
}

void ChangeLogTest::TheLastLineIsSeen_data() {
    QTest::addColumn<int>("module");
    QTest::newRow("without the choice") << 10;
    QTest::newRow("with the choice") << 99;
}

void ChangeLogTest::TheLastLineIsSeen() {
    QFETCH(const int, module);
    F_EVOLUTION& form = OpenLogOf(module);
    // The box reaches behind the lower edge of the form's inside by the height of the title bar.
    QVERIFY(form.CTX_EVOLUTION->geometry().bottom() > form.Surface()->rect().bottom());
    form.CTX_EVOLUTION->SetText(QString(QStringLiteral("ligne\r\n")).repeated(200));
    QTest::keyClick(form.CTX_EVOLUTION, Qt::Key_End, Qt::ControlModifier);
    for (const int pixels : {0, 60}) {
        form.SetHeight(form.Height() + 15 * pixels);
        const QWidget* const text = form.CTX_EVOLUTION->viewport();
        QVERIFY(text->mapTo(form.Surface(), text->rect().bottomRight()).y() < form.Surface()->height());
        QVERIFY(text->height() > form.Surface()->height() / 2);
    }
}

void ChangeLogTest::TheCommandLineNamesTheModule_data() {
    QTest::addColumn<QByteArray>("commandLine");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("log");
    QTest::newRow("ten") << QByteArray("/10") << QStringLiteral("Evolutions Suivi Véhicules")
                         << LogOfModule10();
    QTest::newRow("every slash goes")
        << QByteArray("//2/") << QStringLiteral("Evolutions Affaires") << LogOfModule2();
    QTest::newRow("all, but without the choice")
        << QByteArray("/99") << QStringLiteral("Evolutions Tous modules") << QString();
}

void ChangeLogTest::TheCommandLineNamesTheModule() {
    QFETCH(const QByteArray, commandLine);
    QFETCH(const QString, caption);
    QFETCH(const QString, log);
    SetCommandLine(commandLine.constData());
    const F_EVOLUTION& form = OpenLogOf(99);
    QCOMPARE(form.Caption(), caption);
    QCOMPARE(form.CTX_EVOLUTION->Text(), log);
    QVERIFY(form.FRM_Choix->isHidden());
}

void ChangeLogTest::ACommandLineWithoutANumberIsAnErrorOfTheLog() {
    SetCommandLine("/");
    support::BoxAnswerer boxes;
    const F_EVOLUTION& form = OpenLogOf(10);
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
    QCOMPARE(form.Caption(), QStringLiteral("Evolutions Tous modules"));
    QCOMPARE(form.CTX_EVOLUTION->Text(), QString());
}

void ChangeLogTest::AMissingFileIsToldAndTheFormStaysEmpty() {
    std::filesystem::remove(installation_->File("EvolutionV95.MDB"));
    support::BoxAnswerer boxes;
    const F_EVOLUTION& form = OpenLogOf(10);
    QVERIFY(form.Visible());
    QCOMPARE(form.CTX_EVOLUTION->Text(), QString());
    QCOMPARE(form.Caption(), QStringLiteral("Evolutions"));
    // Each of the two data controls has wanted the file.
    QCOMPARE(boxes.Shown().size(), std::size_t{2});
    for (const support::ShownBox& box : boxes.Shown()) {
        QVERIFY2(box.text.contains(QStringLiteral("EvolutionV95.MDB")), qPrintable(box.text));
        QCOMPARE(box.title, forms::App::Title());
        QCOMPARE(box.icon, QString());
    }
}

void ChangeLogTest::TheFileLiesAtItsFixedPlace() {
    shell::TheSession().CHEMIN_DONNEES = QStringLiteral("D:\\AILLEURS\\");
    shell::TheSession().CHEMIN_STOCK = QStringLiteral("D:\\AILLEURS\\");
    const F_EVOLUTION& form = OpenLogOf(2);
    QCOMPARE(form.DBD_evolution->DatabaseName(), QStringLiteral("c:\\quardele\\EvolutionV95.MDB"));
    QCOMPARE(form.DBD_Modules->DatabaseName(), QStringLiteral("c:\\quardele\\EvolutionV95.MDB"));
    QCOMPARE(form.CTX_EVOLUTION->Text(), LogOfModule2());
}

int main(int argc, char* argv[]) {
    QApplication application(argumentCount, arguments);
    forms::SetUpApplication(application);
    ChangeLogTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "change_log_test.moc"
