// The printed sheet of a vehicle, read back from its PDF file by another program.
#include <QFile>
#include <QPrinterInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <forms/printers.h>
#include <forms/strings.h>
#include <reports/f_rpt.h>

#include "sheet_fixture.h"

using namespace quardele;
using namespace quardele::tests;
using reports::F_RPT;
using reports::TheReportRequest;

namespace {

/// By page, the lines that are not blank, with single blanks.
using Pages = QList<QStringList>;

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

}  // namespace

class SheetPagesTest : public SheetFixture {
    Q_OBJECT

 private slots:
    void initTestCase();
    void init() { StartProgram(); }
    void cleanup();

    void AnUntouchedNewRecordHasASheetThatSaysSo();
    void AFieldWithoutValueKeepsTheReportsTexts();
    void TheFieldsOfTheVehicleBeforeAreForgotten();
    void PrintingOffersAFileWithoutAPrinter_data();
    void PrintingOffersAFileWithoutAPrinter();
    void APrinterTakesTheSheet_data();
    void APrinterTakesTheSheet();
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
    void AFailureLeavesTheNextSheetAlone();

 private:
    /// The sheet of the record that is open.
    Pages Sheet();
    QStringList OnlyPage();

    QTemporaryDir folder_;
};

void SheetPagesTest::initTestCase() {
    if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty()) {
        QSKIP("pdftotext is not installed");
    }
    QVERIFY2(QPrinterInfo::availablePrinterNames().isEmpty(), "there is a printer nevertheless");
    PrepareVehicleTests();
}

void SheetPagesTest::cleanup() {
    forms::SetPrinterForTests({});
    EndProgram();
}

Pages SheetPagesTest::Sheet() {
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

QStringList SheetPagesTest::OnlyPage() {
    const Pages pages = Sheet();
    return pages.size() == 1 ? pages.front() : QStringList{QStringLiteral("%1 pages").arg(pages.size())};
}

void SheetPagesTest::AnUntouchedNewRecordHasASheetThatSaysSo() {
    Open(QStringLiteral("RG-194-NE"));
    Press("Cmd_ADD");
    QCOMPARE(OnlyPage(),
             Heading() + QStringList({QStringLiteral("Aucune fiche n’est enregistrée pour ce véhicule."),
                                      QStringLiteral("Page 1/1")}));
}

/// As they stand in the report file.
void SheetPagesTest::AFieldWithoutValueKeepsTheReportsTexts() {
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

void SheetPagesTest::TheFieldsOfTheVehicleBeforeAreForgotten() {
    Open(QStringLiteral("RG-194-NE"));
    QVERIFY(OnlyPage().join(u'|').contains(QStringLiteral("Hélène Garnier")));
    Tabs()->SetTab(kListTab);
    OpenRecordOf(QStringLiteral("KG-361-VP"));
    QVERIFY(!OnlyPage().join(u'|').contains(QStringLiteral("Conducteur")));
    // The names stay, which does no harm.
    QCOMPARE(TheReportRequest().FormulaName(15), QStringLiteral("{@LIBUSER10}"));
}

void SheetPagesTest::PrintingOffersAFileWithoutAPrinter_data() {
    QTest::addColumn<QString>("button");
    QTest::newRow("at once") << QStringLiteral("Cmd_Imprimer_1");
    QTest::newRow("with a choice") << QStringLiteral("Cmd_Imprimer_2");
}

void SheetPagesTest::PrintingOffersAFileWithoutAPrinter() {
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

void SheetPagesTest::APrinterTakesTheSheet_data() {
    QTest::addColumn<QString>("button");
    QTest::addColumn<QStringList>("dialogs");
    QTest::newRow("at once") << QStringLiteral("Cmd_Imprimer_1") << QStringList();
    QTest::newRow("with a choice") << QStringLiteral("Cmd_Imprimer_2")
                                   << QStringList{"PrinterSetup", "PrintDialog"};
}

/// One that writes its pages into a file.
void SheetPagesTest::APrinterTakesTheSheet() {
    QFETCH(const QString, button);
    QFETCH(const QStringList, dialogs);
    const QString path = folder_.filePath(button + QStringLiteral("-papier.pdf"));
    forms::SetPrinterForTests([path] {
        auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
        printer->setOutputFormat(QPrinter::PdfFormat);
        printer->setOutputFileName(path);
        return printer;
    });
    Open(QStringLiteral("RG-194-NE"));
    QVERIFY2(!watcher_.Watch([&] { Press(qPrintable(button)); }), "the form stays");
    ExpectOnlyBoxes({kConfirmation});
    QCOMPARE(watcher_.PrintDialogs(), dialogs);
    QCOMPARE(watcher_.PdfAsked(), 0);
    const Pages pages = PagesOfPdf(path);
    QCOMPARE(pages.size(), 1);
    QCOMPARE(pages.front().last(), QStringLiteral("RG-194-NE – PEUGEOT Page 1/1"));
}

void SheetPagesTest::ASheetWithEverything() {
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

void SheetPagesTest::FieldsWithoutValueLeaveNoHole() {
    Open(QStringLiteral("KG-361-VP"));
    const QStringList lines = OnlyPage();
    const qsizetype heading = lines.indexOf(QStringLiteral("Caractéristiques"));
    QCOMPARE(lines.mid(heading + 1),
             QStringList({QStringLiteral("1 - 1er usage 18/02/2012 4 - Énergie B100"),
                          QStringLiteral("2 - Kilométrage 270731 6 - Puissance (CV) 4"),
                          QStringLiteral("3 - N° de série VFLJTBF4393544 7 - Couleur Gris métallisé")}) +
                 WorkTable() + QStringList(QStringLiteral("KG-361-VP – TOYOTA Page 1/1")));
}

void SheetPagesTest::AnUnknownCustomerIsNamedByItsCode() {
    Open(QStringLiteral("8266 JM 33"));
    const QStringList lines = OnlyPage();
    QVERIFY(lines.contains(QStringLiteral("8266 JM 33 Client (utilisateur) INCONNU")) ||
            lines.contains(QStringLiteral("Client (utilisateur) INCONNU")));
    QVERIFY(!lines.join(u'|').contains(QStringLiteral("Complément")));
    QVERIFY(lines.contains(QStringLiteral("Prévoir véhicule de prêt ; clé n° 1200")));
    QVERIFY(lines.contains(QStringLiteral("Attention : pneus d'été à l'atelier")));
}

void SheetPagesTest::WithoutCustomerUserFieldsAndNotesNothingStandsForThem() {
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
void SheetPagesTest::WhatHoldsBlanksOnlyIsLikeNothing() {
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

void SheetPagesTest::AHiddenFieldIsNotOnTheSheet() {
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
void SheetPagesTest::AllFieldsOfASite() {
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
void SheetPagesTest::AFieldBehindTheParametersThatIsLabelledIsSentToo() {
    SetVehicle(QStringLiteral("KG-361-VP"), u"TVEH_USER22", QStringLiteral("dernier"));
    Open(QStringLiteral("KG-361-VP"));
    UserLabel(22)->SetCaption(QStringLiteral("22 - Autre"));
    const QStringList lines = OnlyPage();
    QVERIFY2(lines.contains(QStringLiteral("3 - N° de série VFLJTBF4393544 22 - Autre dernier")),
             qPrintable(lines.join(u'|')));
    QCOMPARE(TheReportRequest().FormulaName(39), QStringLiteral("{@LIBUSER22}"));
    QCOMPARE(TheReportRequest().FormulaName(40), QStringLiteral("{@VALUSER22}"));
}

void SheetPagesTest::AVehicleOfAWorkshop() {
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

void SheetPagesTest::ALongRegistrationIsWhole_data() {
    QTest::addColumn<QString>("registration");
    QTest::newRow("ten wide letters") << QStringLiteral("WWWWWWWWWW");
    QTest::newRow("fifteen") << QStringLiteral("WW-482-KL-12345");
    QTest::newRow("fifteen wide letters") << QStringLiteral("MWMWMWMWMWMWMWM");
}

void SheetPagesTest::ALongRegistrationIsWhole() {
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

void SheetPagesTest::LongTextsAreWhole() {
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

void SheetPagesTest::QuotesAndSignsStandAsTheyAre() {
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
void SheetPagesTest::LongNotesGoOnOnTheNextPage() {
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

void SheetPagesTest::WhatWasSavedIsShown() {
    Open(QStringLiteral("RG-194-NE"));
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("CITROËN"));
    TypeOver(UserBox(7), QStringLiteral("Rouge"));
    Press("Cmd_Update");
    const QString sheet = OnlyPage().join(u'|');
    QVERIFY2(sheet.contains(QStringLiteral("Marque CITROËN")) &&
                 sheet.contains(QStringLiteral("7 - Couleur Rouge")),
             qPrintable(sheet));
}

void SheetPagesTest::AFailureLeavesTheNextSheetAlone() {
    SetVehicle(QStringLiteral("RG-194-NE"), u"TVEH_USER7", QStringLiteral("Vert d'eau"));
    Open(QStringLiteral("RG-194-NE"));
    ExpectFailure(QStringLiteral("CMD_Imprimer, Erreur 3075 : "));
    Tabs()->SetTab(kListTab);
    OpenRecordOf(QStringLiteral("KG-361-VP"));
    QVERIFY(OnlyPage().contains(QStringLiteral("KG-361-VP – TOYOTA Page 1/1")));
}

int main(int argc, char* argv[]) {
    HidePrinters();
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    SheetPagesTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "sheet_pages_test.moc"
