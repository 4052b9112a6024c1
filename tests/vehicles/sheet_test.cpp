// The printed sheet of a vehicle: when the program makes one, what it asks the report for, what it tells when
// that fails. What stands on it: sheet_pages_test.cpp.
#include <forms/strings.h>
#include <reports/f_rpt.h>

#include "sheet_fixture.h"

using namespace quardele;
using namespace quardele::tests;
using reports::F_RPT;
using reports::TheReportRequest;

namespace {

const QString kPending = QStringLiteral("Enregistrez ou annulez d'abord votre saisie");

/// Of the request, what the field has: name and text of its label, name and text of its value.
QStringList Sent(int number) {
    const int label = 2 * (number - 3) + 1;
    const reports::ReportRequest& request = TheReportRequest();
    return {request.FormulaName(label), request.FormulaText(label), request.FormulaName(label + 1),
            request.FormulaText(label + 1)};
}

}  // namespace

class SheetTest : public SheetFixture {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void init() { StartProgram(); }
    void cleanup() { EndProgram(); }

    void TheButtonsBelongToTheRecord();
    void APendingEntryStopsThePrint_data();
    void APendingEntryStopsThePrint();
    void APendingVisitStopsThePrint();
    void AChangedNewRecordStopsThePrint();

    void TheRequestNamesFileVehicleAndLabelledFields();
    void EachButtonSendsItsIndex_data();
    void EachButtonSendsItsIndex();
    void WithoutUserFieldsThereIsOnlyTheSelection();
    void ALabelThatTheSiteTookBackIsANumber();

    void ThePreviewStaysUntilItIsClosed();
    void AKeyOpensThePreview();
    void DecliningIsNoFailure();

    void AnApostropheInTheRegistrationIsToldByTheReport();
    void AnApostropheInAFieldIsToldByTheReport_data();
    void AnApostropheInAFieldIsToldByTheReport();
    void AMissingReportFileIsTold();
    void ADamagedReportFileIsTold();
    void AFailureIsNotTranslated();
};

void SheetTest::TheButtonsBelongToTheRecord() {
    program_->OpenVehicles();
    QVERIFY(!Shown(Button(kPreview)));
    OpenRecordOf(QStringLiteral("RG-194-NE"));
    const QStringList tips{"Aperçu", "Impression par défaut", "Impression avec choix"};
    for (int index = 0; index <= 2; ++index) {
        const forms::Button* const button = Button(qPrintable(QStringLiteral("Cmd_Imprimer_%1").arg(index)));
        QVERIFY(Shown(button));
        QCOMPARE(button->toolTip(), tips[index]);
        QVERIFY(!button->icon().isNull());
    }
}

// What has to be saved first.

void SheetTest::APendingEntryStopsThePrint_data() {
    QTest::addColumn<QString>("button");
    for (int index = 0; index <= 2; ++index) {
        const QString button = QStringLiteral("Cmd_Imprimer_%1").arg(index);
        QTest::newRow(qPrintable(button)) << button;
    }
}

void SheetTest::APendingEntryStopsThePrint() {
    QFETCH(const QString, button);
    Open(QStringLiteral("RG-194-NE"));
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("CITROËN"));
    QVERIFY(!watcher_.Watch([&] { Press(qPrintable(button)); }));
    CompareOnlyBox(*boxes_, kPending, kNoIcon);
    QCOMPARE(watcher_.PdfAsked(), 0);
    QVERIFY(TheReportRequest().ReportFile.isEmpty());
    QCOMPARE(Box("CTX_MARQUE")->Text(), QStringLiteral("CITROËN"));
}

void SheetTest::APendingVisitStopsThePrint() {
    Open(QStringLiteral("RG-194-NE"));
    constexpr int kPeriodColumn = 2;
    TypeVisit(kPeriodColumn, 1, QStringLiteral("18"));
    QVERIFY(Grid("DBG_DETAIL")->ChangeMade());
    QVERIFY(!watcher_.Watch([] { Press(kPreview); }));
    CompareOnlyBox(*boxes_, kPending, kNoIcon);
}

void SheetTest::AChangedNewRecordStopsThePrint() {
    Open(QStringLiteral("RG-194-NE"));
    Press("Cmd_ADD");
    TypeOver(Box("CTX_IMMAT"), QStringLiteral("ZY-001-AA"));
    QVERIFY(!watcher_.Watch([] { Press(kPreview); }));
    CompareOnlyBox(*boxes_, kPending, kNoIcon);
}

// What the report is asked for.

void SheetTest::TheRequestNamesFileVehicleAndLabelledFields() {
    Open(QStringLiteral("RG-194-NE"));
    boxes_->AnswerNo();
    bool asked = false;
    boxes_->LookAtBoxes([&asked] {
        asked = true;
        const reports::ReportRequest& request = TheReportRequest();
        QCOMPARE(request.ReportFile, QStringLiteral("IMPVEH.RPT"));
        QCOMPARE(request.TableLocation(1), QString::fromUtf16(kDataFile));
        QCOMPARE(request.TableName(1), QString());
        QCOMPARE(request.TableLocation(2), QString());
        QCOMPARE(request.SelectionFormula, QStringLiteral("{TVEH.TVEH_IMMAT}='RG-194-NE'"));
        QCOMPARE(Sent(3),
                 QStringList({"{@LIBUSER3}", "'3 - N° de série'", "{@VALUSER3}", "'VFQPJNV7737717'"}));
        QCOMPARE(Sent(10),
                 QStringList({"{@LIBUSER10}", "'10 - Conducteur'", "{@VALUSER10}", "'Hélène Garnier'"}));
        QCOMPARE(SlotsInUse(), QList<int>({1, 2, 3, 4, 7, 8, 9, 10, 11, 12, 15, 16}));
    });
    Press(kPreview);
    QVERIFY(asked);
}

void SheetTest::EachButtonSendsItsIndex_data() {
    APendingEntryStopsThePrint_data();
}

void SheetTest::EachButtonSendsItsIndex() {
    QFETCH(const QString, button);
    Open(QStringLiteral("RG-194-NE"));
    boxes_->AnswerNo();
    TheReportRequest().OutputMode = 7;
    Press(qPrintable(button));
    ExpectOnlyBoxes({kConfirmation});
    QCOMPARE(QString::number(TheReportRequest().OutputMode), button.right(1));
}

void SheetTest::WithoutUserFieldsThereIsOnlyTheSelection() {
    for (const char16_t* field : {u"TVEH_USER1", u"TVEH_USER2", u"TVEH_USER3", u"TVEH_USER4", u"TVEH_USER6",
                                  u"TVEH_USER7", u"TVEH_USER8", u"TVEH_USER10"}) {
        SetVehicle(QStringLiteral("RG-194-NE"), field, QString());
    }
    Open(QStringLiteral("RG-194-NE"));
    boxes_->AnswerNo();
    boxes_->LookAtBoxes([] {
        QCOMPARE(SlotsInUse(), QList<int>());
        QCOMPARE(TheReportRequest().SelectionFormula, QStringLiteral("{TVEH.TVEH_IMMAT}='RG-194-NE'"));
    });
    Press(kPreview);
    ExpectOnlyBoxes({kConfirmation});
}

/// The value is still there, and the label has its number.
void SheetTest::ALabelThatTheSiteTookBackIsANumber() {
    SetLabel(7, QString());
    Open(QStringLiteral("RG-194-NE"));
    boxes_->AnswerNo();
    boxes_->LookAtBoxes([] {
        QCOMPARE(Sent(7), QStringList({"{@LIBUSER7}", "'7 - '", "{@VALUSER7}", "'Vert forêt'"}));
    });
    Press(kPreview);
    ExpectOnlyBoxes({kConfirmation});
}

// Preview, print, decline.

void SheetTest::ThePreviewStaysUntilItIsClosed() {
    Open(QStringLiteral("RG-194-NE"));
    bool isModal = false;
    QVERIFY(watcher_.Watch([] { Press(kPreview); },
                           [&isModal](F_RPT& form) {
                               isModal = form.Window()->isModal();
                               QCOMPARE(form.CRViewer91->CurrentPage(), 1);
                               QCOMPARE(form.CRViewer91->Shown()->Pages(), 1);
                           }));
    QVERIFY(isModal);
    QVERIFY(!forms::IsLoaded<F_RPT>());
    QCOMPARE(watcher_.PdfAsked(), 0);
    QCOMPARE(Tabs()->Tab(), kRecordTab);
}

void SheetTest::AKeyOpensThePreview() {
    Open(QStringLiteral("RG-194-NE"));
    QVERIFY(watcher_.Watch([] { PressKey(Qt::Key_I, Qt::ControlModifier); }));
}

void SheetTest::DecliningIsNoFailure() {
    Open(QStringLiteral("RG-194-NE"));
    boxes_->AnswerNo();
    QVERIFY(!watcher_.Watch([] { Press("Cmd_Imprimer_1"); }));
    ExpectOnlyBoxes({kConfirmation});
    QCOMPARE(watcher_.PdfAsked(), 0);
}

// Failures.

void SheetTest::AnApostropheInTheRegistrationIsToldByTheReport() {
    Open(QStringLiteral("RG-194-NE"));
    Press("Cmd_ADD");
    TypeOver(Box("CTX_IMMAT"), QStringLiteral("L'AUTO"));
    Press("Cmd_Update");
    ExpectFailure(
        QStringLiteral("CMD_Imprimer, Erreur 3075 : Erreur de syntaxe dans l'expression « "
                       "{TVEH.TVEH_IMMAT}='L'AUTO' »"));
}

void SheetTest::AnApostropheInAFieldIsToldByTheReport_data() {
    QTest::addColumn<bool>("label");
    QTest::newRow("label") << true;
    QTest::newRow("value") << false;
}

void SheetTest::AnApostropheInAFieldIsToldByTheReport() {
    QFETCH(const bool, label);
    if (label) {
        SetLabel(7, QStringLiteral("Couleur d'origine"));
    } else {
        SetVehicle(QStringLiteral("RG-194-NE"), u"TVEH_USER7", QStringLiteral("Vert d'eau"));
    }
    Open(QStringLiteral("RG-194-NE"));
    ExpectFailure(QStringLiteral("CMD_Imprimer, Erreur 3075 : Erreur de syntaxe dans l'expression « '%1' »")
                      .arg(label ? QStringLiteral("7 - Couleur d'origine") : QStringLiteral("Vert d'eau")));
}

void SheetTest::AMissingReportFileIsTold() {
    forms::App::SetPathForTests(QStringLiteral("C:\\QUARDELE\\VEH"));
    Open(QStringLiteral("RG-194-NE"));
    ExpectFailure(
        QStringLiteral("CMD_Imprimer, Erreur 53 : Fichier introuvable : « C:\\QUARDELE\\VEH\\IMPVEH.RPT »"));
}

void SheetTest::ADamagedReportFileIsTold() {
    PlaceReport("<report xmlns=\"urn:quardele:report\" version=\"1\"><details>");
    Open(QStringLiteral("RG-194-NE"));
    ExpectFailure(QStringLiteral("CMD_Imprimer, Erreur 321 : "));
}

void SheetTest::AFailureIsNotTranslated() {
    forms::App::SetPathForTests(QStringLiteral("C:\\QUARDELE\\VEH"));
    Open(QStringLiteral("RG-194-NE"));
    const QString beginning = QStringLiteral("CMD_Imprimer, Erreur");
    const QString description = QStringLiteral("Fichier introuvable : « C:\\QUARDELE\\VEH\\IMPVEH.RPT »");
    const QString box = beginning + QStringLiteral(" 53 : ") + description;
    support::RaiseMarksFor({box, beginning, description});
    ExpectFailure(box);
}

int main(int argc, char* argv[]) {
    HidePrinters();
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    SheetTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "sheet_test.moc"
