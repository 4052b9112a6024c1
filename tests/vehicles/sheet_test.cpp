// The printed sheet of a vehicle, read back from its PDF file by another program.
#include <fstream>

#include <QFile>
#include <QPrinterInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <forms/strings.h>
#include <reports/report_request.h>

#include "report_watcher.h"
#include "vehicle_form_fixture.h"

using namespace quardele;
using namespace quardele::tests;
using reports::F_RPT;
using reports::TheReportRequest;
using reports::test::ReportWatcher;

namespace {

/// By page, the lines that are not blank, with single blanks.
using Pages = QList<QStringList>;

constexpr const char* kPreview = "Cmd_Imprimer_0";
const QString kPending = QStringLiteral("Enregistrez ou annulez d'abord votre saisie");
const QString kConfirmation = QStringLiteral("Confirmation");

Pages PagesOfPdf(const QString& path) {
    QProcess reader;
    reader.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")});
    if (!reader.waitForFinished()) {
        qFatal("pdftotext does not answer");
    }
    QStringList texts = QString::fromUtf8(reader.readAllStandardOutput()).split(u'\f');
    texts.removeLast();
    Pages pages;
    for (const QString& text : texts) {
        QStringList& lines = pages.emplace_back();
        for (const QString& line : text.split(u'\n')) {
            if (!line.trimmed().isEmpty()) {
                lines.append(line.simplified());
            }
        }
    }
    return pages;
}

QString Today() {
    return QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy"));
}

/// What every page begins with, and what the table that is filled in by hand says.
QStringList Heading() {
    return {QStringLiteral("Fiche véhicule Suivi des véhicules"), QStringLiteral("Imprimée le ") + Today()};
}
QStringList WorkTable() {
    return {QStringLiteral("Intervention du jour (à remplir à l’atelier)"),
            QStringLiteral("Date Kilométrage Travaux effectués Visa")};
}

/// A change of a vehicle before the form reads it.
void SetVehicle(const QString& registration, const char16_t* field, const QString& value) {
    SetField(kDataFile, u"TVEH", forms::ToText(QStringLiteral("TVEH_IMMAT = '%1'").arg(registration)), field,
             basic::Variant(forms::ToText(value)));
}

void SetParameter(int number, const char* suffix, const basic::Variant& value) {
    const QString field = QStringLiteral("TPAR_AFFUSER%1_%2").arg(number).arg(QLatin1StringView(suffix));
    SetField(kDataFile, u"TPAR", u"TPAR_Ver = '9.5'", forms::ToText(field), value);
}

void SetLabel(int number, const QString& label) {
    SetParameter(number, "LIB", basic::Variant(forms::ToText(label)));
}

/// Of the request, what the field has: name and text of its label, name and text of its value.
QStringList Sent(int number) {
    const int label = 2 * (number - 3) + 1;
    const reports::ReportRequest& request = TheReportRequest();
    return {request.FormulaName(label), request.FormulaText(label), request.FormulaName(label + 1),
            request.FormulaText(label + 1)};
}

/// The numbers of the request's formulas that have a text.
QList<int> SlotsInUse() {
    QList<int> used;
    for (int slot = 1; slot <= 60; ++slot) {
        if (!TheReportRequest().FormulaText(slot).isEmpty()) {
            used.append(slot);
        }
    }
    return used;
}

}  // namespace

class SheetTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase();
    void init();
    void cleanup();

    void TheButtonsBelongToTheRecord();
    void APendingEntryStopsThePrint_data();
    void APendingEntryStopsThePrint();
    void APendingVisitStopsThePrint();
    void AChangedNewRecordStopsThePrint();
    void AnUntouchedNewRecordHasASheetThatSaysSo();

    void TheRequestNamesFileVehicleAndLabelledFields();
    void EachButtonSendsItsIndex_data();
    void EachButtonSendsItsIndex();
    void WithoutUserFieldsThereIsOnlyTheSelection();
    void AFieldWithoutValueKeepsTheReportsTexts();
    void TheFieldsOfTheVehicleBeforeAreForgotten();
    void ALabelThatTheSiteTookBackIsANumber();

    void ThePreviewStaysUntilItIsClosed();
    void AKeyOpensThePreview();
    void PrintingOffersAFileWithoutAPrinter_data();
    void PrintingOffersAFileWithoutAPrinter();
    void DecliningIsNoFailure();

    void ASheetWithEverything();
    void FieldsWithoutValueLeaveNoHole();
    void AnUnknownCustomerIsNamedByItsCode();
    void WithoutCustomerUserFieldsAndNotesNothingStandsForThem();
    void WhatHoldsBlanksOnlyIsLikeNothing();
    void AHiddenFieldIsNotOnTheSheet();
    void AllFieldsOfASite();
    void AFieldBehindTheParametersThatIsLabelledIsSentToo();
    void AVehicleOfAWorkshop();
    void ALongRegistrationIsWhole_data();
    void ALongRegistrationIsWhole();
    void LongTextsAreWhole();
    void QuotesAndSignsStandAsTheyAre();
    void LongNotesGoOnOnTheNextPage();
    void WhatWasSavedIsShown();

    void AnApostropheInTheRegistrationIsToldByTheReport();
    void AnApostropheInAFieldIsToldByTheReport_data();
    void AnApostropheInAFieldIsToldByTheReport();
    void AMissingReportFileIsTold();
    void ADamagedReportFileIsTold();
    void AFailureLeavesTheNextSheetAlone();

 private:
    void Open(const QString& registration) {
        program_->OpenVehicles();
        OpenRecordOf(registration);
    }
    /// A report file of the test's own, in the program's folder.
    void PlaceReport(const QByteArray& bytes) const;
    /// The sheet of the record that is open.
    Pages Sheet();
    QStringList OnlyPage();
    void ExpectOnlyBoxes(const QStringList& texts);
    /// The preview fails with an error that begins so.
    void ExpectFailure(const QString& beginning);

    std::unique_ptr<RunningProgram> program_;
    std::unique_ptr<support::BoxAnswerer> boxes_;
    QTemporaryDir folder_;
    ReportWatcher watcher_;
};

void SheetTest::initTestCase() {
    if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty()) {
        QSKIP("pdftotext is not installed");
    }
    QVERIFY2(QPrinterInfo::availablePrinterNames().isEmpty(), "there is a printer nevertheless");
    PrepareVehicleTests();
}

void SheetTest::init() {
    program_ = std::make_unique<RunningProgram>();
    boxes_ = std::make_unique<support::BoxAnswerer>();
    watcher_ = {};
    TheReportRequest() = {};
}

void SheetTest::cleanup() {
    forms::App::SetPathForTests(QString());
    boxes_.reset();
    program_.reset();
}

void SheetTest::PlaceReport(const QByteArray& bytes) const {
    forms::App::SetPathForTests(QStringLiteral("C:\\QUARDELE\\VEH"));
    std::ofstream(program_->Files().File("VEH/IMPVEH.RPT"), std::ios::binary) << bytes.toStdString();
}

Pages SheetTest::Sheet() {
    const QString path = folder_.filePath(QStringLiteral("fiche.pdf"));
    const auto save = [&path](F_RPT& form) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(form.CRViewer91->Shown() != nullptr);
        form.CRViewer91->Shown()->WritePdf(file);
    };
    const bool seen = watcher_.Watch([] { Press(kPreview); }, save);
    ExpectOnlyBoxes({kConfirmation});
    return seen ? PagesOfPdf(path) : Pages();
}

QStringList SheetTest::OnlyPage() {
    const Pages pages = Sheet();
    return pages.size() == 1 ? pages.front() : QStringList{QStringLiteral("%1 pages").arg(pages.size())};
}

void SheetTest::ExpectOnlyBoxes(const QStringList& texts) {
    QCOMPARE(TakeTexts(*boxes_), texts.join(u'|'));
}

void SheetTest::ExpectFailure(const QString& beginning) {
    QVERIFY2(!watcher_.Watch([] { Press(kPreview); }), "the preview stood there");
    QCOMPARE(boxes_->Shown().size(), std::size_t{2});
    QCOMPARE(boxes_->Shown().front().text, kConfirmation);
    const support::ShownBox box = boxes_->Shown().back();
    QCOMPARE(box.text.left(beginning.size()), beginning);
    QCOMPARE(box.icon, kNoIcon);
    QCOMPARE(box.button, QStringLiteral("OK"));
    QVERIFY(!forms::IsLoaded<F_RPT>());
    QVERIFY(TheReportRequest().ReportFile.isEmpty());
    QVERIFY(TheReportRequest().SelectionFormula.isEmpty());
    QCOMPARE(SlotsInUse(), QList<int>());
    boxes_->TakeTexts();
}

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

void SheetTest::AnUntouchedNewRecordHasASheetThatSaysSo() {
    Open(QStringLiteral("RG-194-NE"));
    Press("Cmd_ADD");
    QCOMPARE(OnlyPage(),
             Heading() + QStringList({QStringLiteral("Aucune fiche n’est enregistrée pour ce véhicule."),
                                      QStringLiteral("Page 1/1")}));
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

/// As they stand in the report file.
void SheetTest::AFieldWithoutValueKeepsTheReportsTexts() {
    PlaceReport(
        "<report xmlns=\"urn:quardele:report\" version=\"1\"><tables><table "
        "name=\"TVEH\"/></tables><formulas>"
        "<formula name=\"LIBUSER8\">'libellé du fichier'</formula><formula name=\"VALUSER8\">'valeur du "
        "fichier'</formula><formula name=\"LIBUSER4\">'autre libellé'</formula><formula "
        "name=\"VALUSER4\">'autre "
        "valeur'</formula></formulas><details><section height=\"300\"><field width=\"9000\" height=\"300\" "
        "value=\"{@LIBUSER8} &amp; ', ' &amp; {@VALUSER8} &amp; ', ' &amp; {@LIBUSER4} &amp; ', ' &amp; "
        "{@VALUSER4}\"/></section></details></report>");
    Open(QStringLiteral("KG-361-VP"));
    QCOMPARE(UserLabel(8)->Caption(), QStringLiteral("8 - N° de parc"));
    QCOMPARE(UserBox(8)->Text(), QString());
    QCOMPARE(OnlyPage(),
             QStringList(QStringLiteral("libellé du fichier, valeur du fichier, 4 - Énergie, B100")));
}

void SheetTest::TheFieldsOfTheVehicleBeforeAreForgotten() {
    Open(QStringLiteral("RG-194-NE"));
    QVERIFY(OnlyPage().join(u'|').contains(QStringLiteral("Hélène Garnier")));
    Tabs()->SetTab(kListTab);
    OpenRecordOf(QStringLiteral("KG-361-VP"));
    QVERIFY(!OnlyPage().join(u'|').contains(QStringLiteral("Conducteur")));
    // The names stay, which does no harm.
    QCOMPARE(TheReportRequest().FormulaName(15), QStringLiteral("{@LIBUSER10}"));
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

void SheetTest::PrintingOffersAFileWithoutAPrinter_data() {
    QTest::addColumn<QString>("button");
    QTest::newRow("at once") << QStringLiteral("Cmd_Imprimer_1");
    QTest::newRow("with a choice") << QStringLiteral("Cmd_Imprimer_2");
}

void SheetTest::PrintingOffersAFileWithoutAPrinter() {
    QFETCH(const QString, button);
    const QString path = folder_.filePath(button + QStringLiteral(".pdf"));
    watcher_.AnswerPdf(path);
    Open(QStringLiteral("RG-194-NE"));
    QVERIFY2(!watcher_.Watch([&] { Press(qPrintable(button)); }), "the form stays");
    ExpectOnlyBoxes({kConfirmation});
    QCOMPARE(watcher_.PdfAsked(), 1);
    QCOMPARE(watcher_.ProposedPdf(), QStringLiteral("Fiche véhicule.pdf"));
    const Pages pages = PagesOfPdf(path);
    QCOMPARE(pages.size(), 1);
    QCOMPARE(pages.front().last(), QStringLiteral("RG-194-NE – PEUGEOT Page 1/1"));
}

void SheetTest::DecliningIsNoFailure() {
    Open(QStringLiteral("RG-194-NE"));
    boxes_->AnswerNo();
    QVERIFY(!watcher_.Watch([] { Press("Cmd_Imprimer_1"); }));
    ExpectOnlyBoxes({kConfirmation});
    QCOMPARE(watcher_.PdfAsked(), 0);
}

// The sheet itself.

void SheetTest::ASheetWithEverything() {
    SetVehicle(QStringLiteral("RG-194-NE"), u"TVEH_Note1",
               QStringLiteral("Pneus d'été à l'atelier.\r\nClé n° 12."));
    SetVehicle(QStringLiteral("RG-194-NE"), u"TVEH_Note2", QStringLiteral("Contrat jusqu'au 31/12."));
    // The first two fields the report reads itself.
    SetLabel(1, QStringLiteral("1er jour d'usage"));
    SetVehicle(QStringLiteral("RG-194-NE"), u"TVEH_USER1", QStringLiteral("début d'été"));
    SetLabel(2, QStringLiteral("Km d'origine"));
    SetVehicle(QStringLiteral("RG-194-NE"), u"TVEH_USER2", QStringLiteral("plus d'un"));
    Open(QStringLiteral("RG-194-NE"));
    QCOMPARE(
        OnlyPage(),
        Heading() +
            QStringList({QStringLiteral("Marque PEUGEOT"), QStringLiteral("RG-194-NE Complément Boxer HDi"),
                         QStringLiteral("Client (utilisateur) C0303 – VIGNOBLES O'BRIEN 164"),
                         QStringLiteral("Caractéristiques"),
                         QStringLiteral("1 - 1er jour d'usage début d'été 6 - Puissance (CV) 11"),
                         QStringLiteral("2 - Km d'origine plus d'un 7 - Couleur Vert forêt"),
                         QStringLiteral("3 - N° de série VFQPJNV7737717 8 - N° de parc P1004"),
                         QStringLiteral("4 - Énergie Gazole 10 - Conducteur Hélène Garnier"),
                         QStringLiteral("Notes"), QStringLiteral("Pneus d'été à l'atelier."),
                         QStringLiteral("Clé n° 12."), QStringLiteral("Contrat jusqu'au 31/12.")}) +
            WorkTable() + QStringList(QStringLiteral("RG-194-NE – PEUGEOT Page 1/1")));
}

void SheetTest::FieldsWithoutValueLeaveNoHole() {
    Open(QStringLiteral("KG-361-VP"));
    const QStringList lines = OnlyPage();
    const qsizetype heading = lines.indexOf(QStringLiteral("Caractéristiques"));
    QCOMPARE(lines.mid(heading + 1),
             QStringList({QStringLiteral("1 - 1er usage 18/02/2012 4 - Énergie B100"),
                          QStringLiteral("2 - Kilométrage 270731 6 - Puissance (CV) 4"),
                          QStringLiteral("3 - N° de série VFLJTBF4393544 7 - Couleur Gris métallisé")}) +
                 WorkTable() + QStringList(QStringLiteral("KG-361-VP – TOYOTA Page 1/1")));
}

void SheetTest::AnUnknownCustomerIsNamedByItsCode() {
    Open(QStringLiteral("8266 JM 33"));
    const QStringList lines = OnlyPage();
    QVERIFY(lines.contains(QStringLiteral("8266 JM 33 Client (utilisateur) INCONNU")) ||
            lines.contains(QStringLiteral("Client (utilisateur) INCONNU")));
    QVERIFY(!lines.join(u'|').contains(QStringLiteral("Complément")));
    QVERIFY(lines.contains(QStringLiteral("Prévoir véhicule de prêt ; clé n° 1200")));
    QVERIFY(lines.contains(QStringLiteral("Attention : pneus d'été à l'atelier")));
}

void SheetTest::WithoutCustomerUserFieldsAndNotesNothingStandsForThem() {
    for (int number = 1; number <= 15; ++number) {
        SetLabel(number, QString());
    }
    SetVehicle(QStringLiteral("CF-974-BL"), u"TVEH_MARQUE", QString());
    SetVehicle(QStringLiteral("CF-974-BL"), u"TVEH_ComplIdent", QString());
    Open(QStringLiteral("CF-974-BL"));
    QCOMPARE(OnlyPage(), Heading() + QStringList(QStringLiteral("CF-974-BL")) + WorkTable() +
                             QStringList(QStringLiteral("CF-974-BL Page 1/1")));
}

/// Titles of what is left out are left out too.
void SheetTest::WhatHoldsBlanksOnlyIsLikeNothing() {
    for (const char16_t* field :
         {u"TVEH_MARQUE", u"TVEH_ComplIdent", u"TVEH_USER1", u"TVEH_USER2", u"TVEH_USER3", u"TVEH_USER4",
          u"TVEH_USER6", u"TVEH_USER8", u"TVEH_USER10", u"TVEH_Note1", u"TVEH_Note2"}) {
        SetVehicle(QStringLiteral("RG-194-NE"), field, QStringLiteral("  "));
    }
    SetLabel(7, QStringLiteral("  "));
    Open(QStringLiteral("RG-194-NE"));
    QCOMPARE(OnlyPage(),
             Heading() +
                 QStringList({QStringLiteral("Client (utilisateur) C0303 – VIGNOBLES O'BRIEN 164"),
                              QStringLiteral("RG-194-NE")}) +
                 WorkTable() + QStringList(QStringLiteral("RG-194-NE Page 1/1")));
}

void SheetTest::AHiddenFieldIsNotOnTheSheet() {
    SetLabel(7, QString());
    SetLabel(2, QString());
    Open(QStringLiteral("RG-194-NE"));
    const QString sheet = OnlyPage().join(u'|');
    QVERIFY2(!sheet.contains(QStringLiteral("Vert forêt")) && !sheet.contains(QStringLiteral("7 -")),
             qPrintable(sheet));
    QVERIFY2(!sheet.contains(QStringLiteral("54727")) && !sheet.contains(QStringLiteral("2 -")),
             qPrintable(sheet));
}

/// The first fifteen; nothing labels the others.
void SheetTest::AllFieldsOfASite() {
    for (int number = 1; number <= 22; ++number) {
        if (number <= 15) {
            SetParameter(number, "LNG", std::int16_t{30});
            SetParameter(number, "DEC", std::int16_t{0});
            SetLabel(number, QStringLiteral("Libellé %1").arg(number));
        }
        SetVehicle(QStringLiteral("RG-194-NE"),
                   QStringLiteral("TVEH_USER%1").arg(number).toStdU16String().c_str(),
                   QStringLiteral("valeur %1").arg(number));
    }
    Open(QStringLiteral("RG-194-NE"));
    const QStringList lines = OnlyPage();
    QStringList expected;
    for (int row = 1; row <= 8; ++row) {
        QString line = QStringLiteral("%1 - Libellé %1 valeur %1").arg(row);
        if (row + 8 <= 15) {
            line += QStringLiteral(" %1 - Libellé %1 valeur %1").arg(row + 8);
        }
        expected.append(line);
    }
    QCOMPARE(lines.mid(lines.indexOf(QStringLiteral("Caractéristiques")) + 1, 8), expected);
    QVERIFY(!lines.join(u'|').contains(QStringLiteral("valeur 16")));
}

/// A label of the form's design, as another edition may have it.
void SheetTest::AFieldBehindTheParametersThatIsLabelledIsSentToo() {
    SetVehicle(QStringLiteral("KG-361-VP"), u"TVEH_USER22", QStringLiteral("dernier"));
    Open(QStringLiteral("KG-361-VP"));
    UserLabel(22)->SetCaption(QStringLiteral("22 - Autre"));
    const QStringList lines = OnlyPage();
    QVERIFY2(lines.contains(QStringLiteral("3 - N° de série VFLJTBF4393544 22 - Autre dernier")),
             qPrintable(lines.join(u'|')));
    QCOMPARE(TheReportRequest().FormulaName(39), QStringLiteral("{@LIBUSER22}"));
    QCOMPARE(TheReportRequest().FormulaName(40), QStringLiteral("{@VALUSER22}"));
}

void SheetTest::AVehicleOfAWorkshop() {
    const std::filesystem::path workshop = std::filesystem::path(QUARDELE_SAMPLE_DIR) / "QUARDELE";
    if (!std::filesystem::exists(workshop)) {
        QSKIP("there is no sample of a workshop here");
    }
    program_.reset();
    program_ = std::make_unique<RunningProgram>(workshop);
    Open(QStringLiteral("FV-617-NF"));
    const QStringList lines = OnlyPage();
    const qsizetype heading = lines.indexOf(QStringLiteral("Caractéristiques"));
    QCOMPARE(lines.mid(heading),
             QStringList({QStringLiteral("Caractéristiques"),
                          QStringLiteral("1 - 1er usage 19/02/2015 6 - Puissance (CV) 10"),
                          QStringLiteral("2 - Kilométrage 225388 7 - Couleur Gris métallisé"),
                          QStringLiteral("3 - N° de série VFPAFPQ5017475 10 - Conducteur Zoé Garnier"),
                          QStringLiteral("4 - Énergie Essence"), QStringLiteral("Notes"),
                          QStringLiteral("Prévoir véhicule de prêt ; clé n° 60"),
                          QStringLiteral("Attention : pneus d'été à l'atelier")}) +
                 WorkTable() + QStringList(QStringLiteral("FV-617-NF – DACIA Page 1/1")));
}

void SheetTest::ALongRegistrationIsWhole_data() {
    QTest::addColumn<QString>("registration");
    QTest::newRow("ten wide letters") << QStringLiteral("WWWWWWWWWW");
    QTest::newRow("fifteen") << QStringLiteral("WW-482-KL-12345");
    QTest::newRow("fifteen wide letters") << QStringLiteral("MWMWMWMWMWMWMWM");
}

void SheetTest::ALongRegistrationIsWhole() {
    QFETCH(const QString, registration);
    SetVehicle(QStringLiteral("RG-194-NE"), u"TVEH_IMMAT", registration);
    Open(registration);
    QStringList lines = OnlyPage();
    // The foot has it too, on one line.
    lines.removeLast();
    QVERIFY2(lines.join(QString()).remove(u' ').contains(registration) ||
                 lines.join(u' ').remove(QRegularExpression(QStringLiteral("[^MW]"))).contains(registration),
             qPrintable(lines.join(u'|')));
    QVERIFY(!lines.join(u' ').contains(u'…'));
    QCOMPARE(lines.join(u' ').count(u'W'), registration.count(u'W'));
}

void SheetTest::LongTextsAreWhole() {
    const QString wide(30, u'W');
    const QString words = QStringLiteral("trente signes en tout, voilà !");
    QCOMPARE(words.size(), 30);
    SetVehicle(QStringLiteral("RG-194-NE"), u"TVEH_USER3", wide);
    SetVehicle(QStringLiteral("RG-194-NE"), u"TVEH_USER10", words);
    SetVehicle(QStringLiteral("RG-194-NE"), u"TVEH_ComplIdent", QString(40, u'M'));
    SetLabel(10, QStringLiteral("Libellé qui a trente signes ok"));
    Open(QStringLiteral("RG-194-NE"));
    const QString sheet = OnlyPage().join(u' ');
    QVERIFY2(!sheet.contains(u'…'), qPrintable(sheet));
    QCOMPARE(sheet.count(u'W'), 30);
    QCOMPARE(sheet.count(u'M'), 40 + 1);  // Marque
    for (const QString& word : words.split(u' ') + QStringList({"Libellé", "signes", "ok"})) {
        QVERIFY2(sheet.contains(word), qPrintable(word));
    }
}

void SheetTest::QuotesAndSignsStandAsTheyAre() {
    const QString odd = QStringLiteral("\"a\" & {b} <c> %1 // d’e");
    SetVehicle(QStringLiteral("RG-194-NE"), u"TVEH_USER7", odd);
    SetVehicle(QStringLiteral("RG-194-NE"), u"TVEH_MARQUE", QStringLiteral("L'<&\"'O"));
    SetLabel(7, QStringLiteral("\"Couleur\" & <teinte>"));
    Open(QStringLiteral("RG-194-NE"));
    const QString sheet = OnlyPage().join(u' ');
    QVERIFY2(sheet.contains(QStringLiteral("7 - \"Couleur\" & <teinte> ") + odd), qPrintable(sheet));
    QVERIFY2(sheet.contains(QStringLiteral("Marque L'<&\"'O")), qPrintable(sheet));
}

/// All of them, with the heading and the number on each page.
void SheetTest::LongNotesGoOnOnTheNextPage() {
    QStringList numbers;
    for (int line = 0; line < 33; ++line) {
        numbers.append(QString(QChar(u'A' + line % 26)));
    }
    SetVehicle(QStringLiteral("RG-194-NE"), u"TVEH_Note1", numbers.join(QStringLiteral("\r\n")));
    SetVehicle(QStringLiteral("RG-194-NE"), u"TVEH_Note2", numbers.join(QStringLiteral("\r\n")));
    Open(QStringLiteral("RG-194-NE"));
    const Pages pages = Sheet();
    QCOMPARE(pages.size(), 2);
    QStringList notes = pages[0].mid(pages[0].indexOf(QStringLiteral("Notes")) + 1);
    QCOMPARE(notes.takeLast(), QStringLiteral("RG-194-NE – PEUGEOT Page 1/2"));
    QCOMPARE(pages[1].first(2), Heading());
    const qsizetype table = pages[1].indexOf(WorkTable().front());
    QVERIFY(table > 2);
    notes += pages[1].mid(2, table - 2);
    QCOMPARE(notes, numbers + numbers);
    QCOMPARE(pages[1].mid(table), WorkTable() + QStringList(QStringLiteral("RG-194-NE – PEUGEOT Page 2/2")));
}

void SheetTest::WhatWasSavedIsShown() {
    Open(QStringLiteral("RG-194-NE"));
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("CITROËN"));
    TypeOver(UserBox(7), QStringLiteral("Rouge"));
    Press("Cmd_Update");
    const QString sheet = OnlyPage().join(u'|');
    QVERIFY2(sheet.contains(QStringLiteral("Marque CITROËN")) &&
                 sheet.contains(QStringLiteral("7 - Couleur Rouge")),
             qPrintable(sheet));
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

void SheetTest::AFailureLeavesTheNextSheetAlone() {
    SetVehicle(QStringLiteral("RG-194-NE"), u"TVEH_USER7", QStringLiteral("Vert d'eau"));
    Open(QStringLiteral("RG-194-NE"));
    ExpectFailure(QStringLiteral("CMD_Imprimer, Erreur 3075 : "));
    Tabs()->SetTab(kListTab);
    OpenRecordOf(QStringLiteral("KG-361-VP"));
    QVERIFY(OnlyPage().contains(QStringLiteral("KG-361-VP – TOYOTA Page 1/1")));
}

int main(int argc, char* argv[]) {
    // Printers of this machine are none of the tests' business: nobody answers there.
    qputenv("CUPS_SERVER", "127.0.0.1:9");
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    SheetTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "sheet_test.moc"
