// Load, first activation, closing of the vehicle form.
#include <algorithm>

#include <QAction>

#include <forms/strings.h>

#include "child_forms.h"
#include "stored_rows.h"
#include "vehicle_form_fixture.h"

using namespace quardele;
using namespace quardele::tests;

class FormLifeTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void TheCaptionCarriesTheDataFolder();
    void TheListComesUpWithTheFocus();
    void TheDataControlsReadTheSessionsDatabase();
    void TheLengthsComeFromTheDatabase();
    void FloatingFramesMoveToTheLeftEdge();
    void AResizeBeforeTheFirstActivationLaysNothingOut();
    void ASecondActivationResetsNothing();
    void QuitUnloadsTheFormAndHidesItsPanel();
    void QuitHoldsBackOnAPendingChange();
    void WhatNothingActsOnStandsOnTheFormUnseen();
    void ClosingTheWindowAsksNothing();
    void EndingTheProgramLosesAPendingChange();
    void AFormOpenedAgainStartsAnew();
    void AMissingTableIsAnUnhandledError();
    void WithoutADataDatabaseTheFormDoesNotLoad();
    void TheCaptionIsTranslatedOnceBeforeTheFolderJoinsIt();
};

void FormLifeTest::TheCaptionCarriesTheDataFolder() {
    RunningProgram program;
    program.OpenVehicles();
    QCOMPARE(Form().Caption(),
             QStringLiteral("Fiches Véhicules") + QString(20, u' ') + QStringLiteral("C:\\QUARDELE\\DATA\\"));
}

void FormLifeTest::TheListComesUpWithTheFocus() {
    RunningProgram program;
    program.OpenVehicles();
    QCOMPARE(Tabs()->Tab(), kListTab);
    QCOMPARE(forms::Screen::ActiveControl(), Grid("DBG_Liste"));
    QVERIFY(Shown(Control<QWidget>("Pic_Boutons_1")));
    QVERIFY(Shown(Control<QWidget>("Pic_boutons_Quitter")));
    QVERIFY(Shown(Control<QWidget>("Pic_Boutons_ToolBar")));
    for (const char* hidden : {"Pic_boutons_2", "Pic_Boutons_3", "FRM_HISTO", "FRM_DETAIL", "FRM_SelDate",
                               "Frm_TypTrav", "Frm_ChercheVeh"}) {
        QVERIFY2(!Shown(Control<QWidget>(hidden)), hidden);
    }
}

void FormLifeTest::TheDataControlsReadTheSessionsDatabase() {
    RunningProgram program;
    program.OpenVehicles();
    for (const char* name : {"DBD_TVEH", "DBD_DETAIL", "DBD_TTYP", "DBD_HISTO"}) {
        QCOMPARE(Data(name)->DatabaseName(), forms::ToQString(kDataFile));
        QCOMPARE(Data(name)->Connect(), QStringLiteral("Access 2000;"));
    }
    QCOMPARE(Data("DBD_TVEH")->RecordSource(), QStringLiteral("select * from TVEH"));
    QCOMPARE(Data("DBD_TTYP")->RecordSource(), QStringLiteral("TTYP"));
}

void FormLifeTest::TheLengthsComeFromTheDatabase() {
    RunningProgram program;
    program.OpenVehicles();
    QCOMPARE(Box("CTX_IMMAT")->MaxLength(), 15);
    QCOMPARE(Box("CTX_CODCLI")->MaxLength(), 10);
    QCOMPARE(Box("CTX_MARQUE")->MaxLength(), 30);
    QCOMPARE(Box("CTX_ComplIdent")->MaxLength(), 40);
    QCOMPARE(Control<forms::MemoBox>("CTX_Note1")->MaxLength(), 100);
    QCOMPARE(Control<forms::MemoBox>("CTX_Note2")->MaxLength(), 100);
    for (int number = 1; number <= 22; ++number) {
        QCOMPARE(UserBox(number)->MaxLength(), 30);
    }
}

void FormLifeTest::FloatingFramesMoveToTheLeftEdge() {
    RunningProgram program;
    program.OpenVehicles();
    // 100 twips, in whole pixels.
    QCOMPARE(Control<QWidget>("FRM_HISTO")->x(), 7);
    QCOMPARE(Control<QWidget>("FRM_DETAIL")->x(), 7);
}

void FormLifeTest::AResizeBeforeTheFirstActivationLaysNothingOut() {
    RunningProgram program;
    const QSize atLoad = Tabs()->size();
    // The form is loaded and not shown yet: the resize of its first show comes before its activation.
    Form().SetHeight(Form().Height() - 900);
    Form().SetWidth(Form().Width() - 900);
    program.OpenVehicles();
    QCOMPARE(Tabs()->size(), atLoad);
    Form().SetHeight(Form().Height() - 150);
    QVERIFY(Tabs()->size() != atLoad);
}

void FormLifeTest::ASecondActivationResetsNothing() {
    RunningProgram program;
    program.OpenVehicles();
    OpenRecordOf(QStringLiteral("KG-361-VP"));
    forms::SetFocus(Box("CTX_MARQUE"));
    Box("CTX_MARQUE")->SetMaxLength(7);
    MainWindow().M_RELANC->trigger();
    QCOMPARE(forms::Screen::ActiveForm(), &forms::Instance<RemindersDouble>());
    MainWindow().M_VEHIC->trigger();
    QCOMPARE(forms::Screen::ActiveForm(), &Form());
    QCOMPARE(Tabs()->Tab(), kRecordTab);
    QCOMPARE(Box("CTX_IMMAT")->Text(), QStringLiteral("KG-361-VP"));
    QCOMPARE(Box("CTX_MARQUE")->MaxLength(), 7);
    QCOMPARE(forms::Screen::ActiveControl(), Box("CTX_MARQUE"));
}

void FormLifeTest::QuitUnloadsTheFormAndHidesItsPanel() {
    RunningProgram program;
    program.OpenVehicles();
    QVERIFY(MainWindow().PIC_STATUS->Panels(2).Visible());
    QTest::mouseClick(Button("Cmd_Quitter"), Qt::LeftButton);
    QVERIFY(!forms::IsLoaded<vehicles::FFICVEH>());
    QVERIFY(!MainWindow().PIC_STATUS->Panels(2).Visible());
    QVERIFY(MainWindow().Visible());
}

void FormLifeTest::QuitHoldsBackOnAPendingChange() {
    RunningProgram program;
    program.OpenVehicles();
    OpenRecordOf(QStringLiteral("KG-361-VP"));
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("RENAULT"));
    support::BoxAnswerer boxes;
    PressKey(Qt::Key_F12);
    CompareOnlyBox(boxes, QStringLiteral("Enregistrez ou annulez d'abord votre saisie"), kExclamation);
    QVERIFY(forms::IsLoaded<vehicles::FFICVEH>());
    QCOMPARE(Box("CTX_MARQUE")->Text(), QStringLiteral("RENAULT"));
}

void FormLifeTest::WhatNothingActsOnStandsOnTheFormUnseen() {
    RunningProgram program;
    program.OpenVehicles();
    for (const char* name : {"ImageList_Liste", "fpBln1"}) {
        const std::vector<QWidget*> controls = Form().Controls();
        QVERIFY2(std::count(controls.begin(), controls.end(), Control<QWidget>(name)) == 1, name);
        QVERIFY2(!Shown(Control<QWidget>(name)), name);
    }
}

void FormLifeTest::ClosingTheWindowAsksNothing() {
    SKIP_WITHOUT_INDEPENDENT_READER();
    RunningProgram program;
    program.OpenVehicles();
    OpenRecordOf(QStringLiteral("KG-361-VP"));
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("RENAULT"));
    support::BoxAnswerer boxes;
    Form().Window()->close();
    QVERIFY(boxes.Shown().empty());
    QVERIFY(!forms::IsLoaded<vehicles::FFICVEH>());
    QVERIFY(!MainWindow().PIC_STATUS->Panels(2).Visible());
    const std::vector<StoredRow> stored =
        StoredRows(program.DataFile(), "TVEH", QStringLiteral("TVEH_IMMAT"), QStringLiteral("KG-361-VP"));
    QCOMPARE(stored.size(), std::size_t{1});
    QCOMPARE(stored[0].at(QStringLiteral("TVEH_MARQUE")), QStringLiteral("TOYOTA"));
}

void FormLifeTest::EndingTheProgramLosesAPendingChange() {
    const auto storedMake = [] {
        const auto vehicles = shell::TheSession().BD_DONNEES->OpenRecordset(
            u"select TVEH_MARQUE from TVEH where TVEH_IMMAT = 'KG-361-VP'", dao::RecordsetType::Snapshot);
        return vehicles->Value(u"TVEH_MARQUE");
    };
    RunningProgram program;
    program.OpenVehicles();
    OpenRecordOf(QStringLiteral("KG-361-VP"));
    const basic::Variant before = storedMake();
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("RENAULT"));
    support::BoxAnswerer boxes;
    const int endsBefore = forms::CatchEndOfProcess(true);
    MainWindow().M_QUIT->trigger();
    QCOMPARE(forms::CatchEndOfProcess(true), endsBefore + 1);
    QVERIFY(boxes.Shown().empty());
    QVERIFY(storedMake() == before);
}

void FormLifeTest::AFormOpenedAgainStartsAnew() {
    RunningProgram program;
    program.OpenVehicles();
    OpenRecordOf(QStringLiteral("KG-361-VP"));
    Form().Unload();
    program.OpenVehicles();
    QCOMPARE(Tabs()->Tab(), kListTab);
    QCOMPARE(Form().Caption().count(QStringLiteral("C:\\QUARDELE\\DATA\\")), 1);
    QVERIFY(MainWindow().PIC_STATUS->Panels(2).Visible());
}

void FormLifeTest::AMissingTableIsAnUnhandledError() {
    const support::Installation installation;
    ReplaceInFile(installation.File("DATA/talmeon.mdb"), u"TCLI", u"TCLX");
    QVERIFY(!StartProgram().ended);
    support::BoxAnswerer boxes;
    const int endsBefore = forms::CatchEndOfProcess(true);
    MainWindow().M_VEHIC->trigger();
    QCOMPARE(forms::CatchEndOfProcess(true), endsBefore + 1);
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
    QVERIFY2(boxes.Shown().front().text.contains(QStringLiteral("3078")),
             qPrintable(boxes.Shown().front().text));
    StopProgram();
}

void FormLifeTest::WithoutADataDatabaseTheFormDoesNotLoad() {
    const support::Installation installation;
    QVERIFY(!StartProgram().ended);
    shell::TheSession().BD_DONNEES.reset();
    support::BoxAnswerer boxes;
    MainWindow().M_VEHIC->trigger();
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
    QVERIFY2(boxes.Shown().front().text.contains(QStringLiteral("91")),
             qPrintable(boxes.Shown().front().text));
    QCOMPARE(boxes.Shown().front().icon, QStringLiteral("erreur"));
    QVERIFY(!forms::IsLoaded<vehicles::FFICVEH>());
    StopProgram();
}

void FormLifeTest::TheCaptionIsTranslatedOnceBeforeTheFolderJoinsIt() {
    RunningProgram program;
    support::RaiseTranslation({{u"Fiches Véhicules", u"Karty vozidel"}, {u"Karty vozidel", u"Podruhé"}});
    program.OpenVehicles();
    QCOMPARE(Form().Caption(),
             QStringLiteral("Karty vozidel") + QString(20, u' ') + QStringLiteral("C:\\QUARDELE\\DATA\\"));
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    FormLifeTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "form_life_test.moc"
