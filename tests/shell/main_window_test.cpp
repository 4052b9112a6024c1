// The idle main window: menu, panels of the status bar, resizing of child forms, ways to the end.
#include <stdexcept>

#include <QAction>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QTest>
#include <QTimer>

#include <forms/runtime.h>
#include <shell/f_evolution.h>
#include <shell/main_window.h>
#include <shell/session.h>
#include <support/boxes.h>
#include <support/installation.h>

#include "child_forms.h"
#include "start.h"

using namespace quardele;
using forms::WindowState;
using tests::MainWindow;
using tests::RemindersDouble;
using tests::VehiclesDouble;

namespace {

forms::StatusPanel& Panel(int index) {
    return MainWindow().PIC_STATUS->Panels(index);
}

VehiclesDouble& Vehicles() {
    return forms::Instance<VehiclesDouble>();
}
RemindersDouble& Reminders() {
    return forms::Instance<RemindersDouble>();
}

bool InFront(const forms::Form& form) {
    return MainWindow().Client()->activeSubWindow() == form.Window();
}

QString SizeOfMainWindow() {
    return QStringLiteral("%1 x %2").arg(MainWindow().Height()).arg(MainWindow().Width());
}

}  // namespace

class MainWindowTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase();
    void init();
    void cleanup();

    void TheMenuReadsAsDesigned();
    void AMenuKeyOpensTheVehicleForm();
    void OpeningAFormShowsItsPanel();
    void ASecondClickBringsTheSameFormForward();
    void AMinimizedVehicleFormComesBack();
    void AMinimizedRemindersFormStaysMinimized();
    void AClickOnAPanelBringsItsFormForward();
    void PanelOneDoesNothing();
    void AResizeRewritesPanelOne();
    void AResizeFitsNormalChildForms();
    void AResizeFitsHiddenChildFormsToo();
    void AResizeLeavesMinimizedAndMaximizedChildForms();
    void AMinimizedWindowLeavesItsChildForms();
    void InformationsShowTheChangeLogModally();
    void ParametersShowTheSize();
    void AFailureOfAnyKindIsShownAndEndsTheProcess();
    void QuitEndsAtOnce();
    void ClosingTheWindowUnloadsTheChildForms();

 private:
    std::unique_ptr<support::Installation> installation_;
};

void MainWindowTest::initTestCase() {
    forms::CatchEndOfProcess(true);
    QCoreApplication::setApplicationVersion(QStringLiteral("9.5.5"));
    tests::WireChildForms();
}

void MainWindowTest::init() {
    installation_ = std::make_unique<support::Installation>();
    QVERIFY(!tests::StartProgram().ended);
}

void MainWindowTest::cleanup() {
    tests::StopProgram();
    installation_.reset();
}

void MainWindowTest::TheMenuReadsAsDesigned() {
    QStringList shown;
    for (const QAction* entry : MainWindow().MainWindow()->menuBar()->actions()) {
        if (entry->isVisible()) {
            shown.append(entry->text());
        }
    }
    QCOMPARE(shown, (QStringList{QStringLiteral("&Fiches véhicules"), QStringLiteral("&Relances"),
                                 QStringLiteral("I&nformations"), QStringLiteral("&Quitter")}));
    QCOMPARE(MainWindow().M_PARAM->text(), QStringLiteral("&Paramètres"));
}

void MainWindowTest::AMenuKeyOpensTheVehicleForm() {
    QVERIFY(QTest::qWaitForWindowActive(MainWindow().MainWindow()));
    QTest::keyClick(MainWindow().MainWindow(), Qt::Key_F, Qt::AltModifier);
    QVERIFY(forms::IsLoaded<VehiclesDouble>());
    QVERIFY(Vehicles().Visible());
}

void MainWindowTest::OpeningAFormShowsItsPanel() {
    QVERIFY(!forms::IsLoaded<VehiclesDouble>());
    MainWindow().M_VEHIC->trigger();
    QVERIFY(Vehicles().Visible());
    QVERIFY(Panel(2).Visible());
    QCOMPARE(Panel(2).Text(), QStringLiteral("Suivi Véhicules"));
    QVERIFY(!Panel(3).Visible());

    MainWindow().M_RELANC->trigger();
    QVERIFY(Reminders().Visible());
    QVERIFY(Panel(3).Visible());
    QCOMPARE(Panel(3).Text(), QStringLiteral("Relances"));
    QVERIFY(!Panel(4).Visible());
}

void MainWindowTest::ASecondClickBringsTheSameFormForward() {
    MainWindow().M_VEHIC->trigger();
    const forms::Form* const first = &Vehicles();
    MainWindow().M_RELANC->trigger();
    QVERIFY(InFront(Reminders()));
    MainWindow().M_VEHIC->trigger();
    QCOMPARE(&Vehicles(), first);
    QVERIFY(InFront(Vehicles()));
    QCOMPARE(forms::Forms::Count(), 3);
}

void MainWindowTest::AMinimizedVehicleFormComesBack() {
    MainWindow().M_VEHIC->trigger();
    Vehicles().SetWindowState(WindowState::Minimized);
    MainWindow().M_VEHIC->trigger();
    QCOMPARE(Vehicles().WindowState(), WindowState::Normal);
}

void MainWindowTest::AMinimizedRemindersFormStaysMinimized() {
    MainWindow().M_RELANC->trigger();
    Reminders().SetWindowState(WindowState::Minimized);
    MainWindow().M_RELANC->trigger();
    QCOMPARE(Reminders().WindowState(), WindowState::Minimized);
}

void MainWindowTest::AClickOnAPanelBringsItsFormForward() {
    MainWindow().M_VEHIC->trigger();
    MainWindow().M_RELANC->trigger();
    QTest::mouseClick(&Panel(2), Qt::LeftButton);
    QVERIFY(InFront(Vehicles()));
    QTest::mouseClick(&Panel(3), Qt::LeftButton);
    QVERIFY(InFront(Reminders()));
}

void MainWindowTest::PanelOneDoesNothing() {
    QTest::mouseClick(&Panel(1), Qt::LeftButton);
    QCOMPARE(forms::Forms::Count(), 1);
}

void MainWindowTest::AResizeRewritesPanelOne() {
    const QString before = Panel(1).Text();
    MainWindow().SetHeight(MainWindow().Height() - 600);
    QCOMPARE(Panel(1).Text(), SizeOfMainWindow());
    QVERIFY(Panel(1).Text() != before);
    QCOMPARE(forms::Forms::Count(), 1);
}

void MainWindowTest::AResizeFitsNormalChildForms() {
    MainWindow().M_VEHIC->trigger();
    MainWindow().M_RELANC->trigger();
    MainWindow().SetHeight(MainWindow().Height() - 600);
    for (const forms::Form* form : std::initializer_list<const forms::Form*>{&Vehicles(), &Reminders()}) {
        QCOMPARE(form->Height(), MainWindow().Height() - MainWindow().PIC_STATUS->Height() - 1500);
        QCOMPARE(form->Width(), MainWindow().Width());
    }
}

void MainWindowTest::AResizeFitsHiddenChildFormsToo() {
    MainWindow().M_VEHIC->trigger();
    Vehicles().Hide();
    MainWindow().SetHeight(MainWindow().Height() - 600);
    QCOMPARE(Vehicles().Height(), MainWindow().Height() - MainWindow().PIC_STATUS->Height() - 1500);
}

void MainWindowTest::AResizeLeavesMinimizedAndMaximizedChildForms() {
    MainWindow().M_VEHIC->trigger();
    MainWindow().M_RELANC->trigger();
    Reminders().SetWindowState(WindowState::Minimized);
    const int minimizedHeight = Reminders().Height();
    MainWindow().SetHeight(MainWindow().Height() - 600);
    QCOMPARE(Reminders().WindowState(), WindowState::Minimized);
    QCOMPARE(Reminders().Height(), minimizedHeight);

    Vehicles().SetWindowState(WindowState::Maximized);
    MainWindow().SetHeight(MainWindow().Height() - 600);
    QCOMPARE(Vehicles().WindowState(), WindowState::Maximized);
    QVERIFY(Vehicles().Height() != MainWindow().Height() - MainWindow().PIC_STATUS->Height() - 1500);
}

void MainWindowTest::AMinimizedWindowLeavesItsChildForms() {
    MainWindow().M_VEHIC->trigger();
    const int height = Vehicles().Height();
    Panel(1).SetText(QString());
    MainWindow().SetWindowState(WindowState::Minimized);
    QWidget* const window = MainWindow().Window();
    window->resize(window->width(), window->height() - 40);
    QTRY_COMPARE(Panel(1).Text(), SizeOfMainWindow());
    QCOMPARE(Vehicles().Height(), height);
}

void MainWindowTest::InformationsShowTheChangeLogModally() {
    QCOMPARE(shell::TheSession().NUMAPPLI_COURANT, 0);
    Qt::WindowModality modality = Qt::NonModal;
    QString caption;
    QTimer::singleShot(0, this, [&] {
        auto& changeLog = forms::Instance<shell::F_EVOLUTION>();
        modality = changeLog.Window()->windowModality();
        caption = changeLog.Caption();
        changeLog.Unload();
    });
    // Comes back once the dialog is gone.
    MainWindow().M_INFOS->trigger();
    QCOMPARE(modality, Qt::ApplicationModal);
    QCOMPARE(shell::TheSession().NUMAPPLI_COURANT, 10);
    QCOMPARE(caption, QStringLiteral("Evolutions Suivi Véhicules"));
    QCOMPARE(forms::Forms::Count(), 1);
}

void MainWindowTest::ParametersShowTheSize() {
    support::BoxAnswerer boxes;
    // The entry is not to be reached; its handler is there all the same.
    emit MainWindow().M_PARAM->triggered();
    QCOMPARE(boxes.TakeTexts(),
             std::vector<QString>{
                 QStringLiteral("H: %1\nW: %2").arg(MainWindow().Height()).arg(MainWindow().Width())});
}

void MainWindowTest::AFailureOfAnyKindIsShownAndEndsTheProcess() {
    const auto vehicles = shell::TheMenuForms().vehicles;
    shell::TheMenuForms().vehicles = []() -> forms::Form& { throw std::length_error("too long"); };
    support::BoxAnswerer boxes;
    const int endsBefore = forms::CatchEndOfProcess(true);
    MainWindow().M_VEHIC->trigger();
    shell::TheMenuForms().vehicles = vehicles;
    QCOMPARE(forms::CatchEndOfProcess(true), endsBefore + 1);
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
    QCOMPARE(boxes.Shown().front().icon, QStringLiteral("erreur"));
    QCOMPARE(boxes.Shown().front().text,
             QStringLiteral("Erreur d'exécution 51 :\n\nErreur interne : too long"));
}

void MainWindowTest::QuitEndsAtOnce() {
    MainWindow().M_VEHIC->trigger();
    support::BoxAnswerer boxes;
    tests::ChildForm::Unloaded().clear();
    const int endsBefore = forms::CatchEndOfProcess(true);
    MainWindow().M_QUIT->trigger();
    QCOMPARE(forms::CatchEndOfProcess(true), endsBefore + 1);
    QVERIFY(boxes.Shown().empty());
    QCOMPARE(tests::ChildForm::Unloaded(), QStringList());
    QVERIFY(Vehicles().Visible());
}

void MainWindowTest::ClosingTheWindowUnloadsTheChildForms() {
    MainWindow().M_VEHIC->trigger();
    MainWindow().M_RELANC->trigger();
    tests::ChildForm::Unloaded().clear();
    MainWindow().Window()->close();
    QCOMPARE(tests::ChildForm::Unloaded(),
             (QStringList{QStringLiteral("VEHICULES"), QStringLiteral("RELANCES")}));
    QVERIFY(!forms::IsLoaded<VehiclesDouble>());
    QVERIFY(!forms::IsLoaded<RemindersDouble>());
    QVERIFY(!forms::IsLoaded<shell::MDIMENU_VEH>());
    QCOMPARE(forms::Forms::Count(), 0);
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    MainWindowTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "main_window_test.moc"
