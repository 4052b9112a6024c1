// Whole letters, written by GWORD with a real LibreOffice and read back by independent programs.
#include <cmath>
#include <filesystem>
#include <memory>
#include <set>

#include <QApplication>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

#include <forms/msg_box.h>
#include <forms/runtime.h>
#include <support/boxes.h>

#include "letter_loop.h"
#include "office_session.h"
#include "printed_letter.h"
#include "written_letter.h"

namespace quardele::tests {

namespace {

using automation::ObjectPtr;
using basic::Text;

const QStringList kColumns = {"IMMAT", "MARQUE", "TYPTRAV", "DERNVIS", "PERIOD", "DATEPREV"};
const QStringList kHeadings = {"Immatriculation", "Marque",  "Travaux",
                               "Dernière visite", "Période", "Visite prévue"};

Text WithoutExtension(const Text& path) {
    return path.substr(0, path.rfind(u'.'));
}

/// The cells that a letter's visits must have made, in the order of the columns.
std::vector<QStringList> ExpectedRows(const LetterText& letter) {
    std::vector<QStringList> rows;
    for (const auto& visit : letter.visits) {
        QStringList row;
        for (const QString& column : kColumns) {
            row << QString::fromStdString(visit.at(column.toStdString()));
        }
        rows.push_back(row);
    }
    return rows;
}

}  // namespace

class LetterTest : public QObject {
    Q_OBJECT

    std::unique_ptr<OfficeSession> session_;
    ObjectPtr keeper_;
    word::GWORD gword_{[] { return word::CatalogueKey{}; }, forms::ShowBox};

    [[nodiscard]] Text LetterFile() const { return session_->WindowsFile("ELANCO261231.RVE"); }
    [[nodiscard]] WrittenLetter ReadBack() const { return ReadLetter(session_->File("ELANCO261231.RVE")); }

    void Write(const Text& templateFile, const LetterText& letter) {
        const support::BoxAnswerer boxes;
        ObjectPtr Word;
        WriteLetter(gword_, Word, WithoutExtension(templateFile), letter, LetterFile());
        for (const auto& box : boxes.Shown()) {
            QFAIL(qPrintable(box.title + " : " + box.text));
        }
        Word->Call(u"Quit");
    }

    [[nodiscard]] PrintedLetter Print() const {
        return {session_->File("ELANCO261231.RVE"), session_->File("")};
    }

    /// The names of the bookmarks in the letter's file.
    [[nodiscard]] std::set<QString> BookmarksInFile() const {
        QProcess unzip;
        unzip.start("unzip", {"-p", QString::fromStdString(session_->File("ELANCO261231.RVE").string()),
                              "word/*.xml"});
        unzip.waitForFinished();
        std::set<QString> names;
        const QRegularExpression pattern("<w:bookmarkStart [^>]*w:name=\"(\\w+)\"");
        for (auto found = pattern.globalMatch(QString::fromUtf8(unzip.readAllStandardOutput()));
             found.hasNext();) {
            names.insert(found.next().captured(1));
        }
        return names;
    }

 private slots:
    void initTestCase() {
        if (!OfficeSession::IsAvailable()) {
            QSKIP("LibreOffice or the bridge to it is missing");
        }
        session_ = std::make_unique<OfficeSession>();
        gword_.W_CreationObjet(keeper_);
        QVERIFY(keeper_ != nullptr);
    }
    void cleanupTestCase() {
        keeper_.reset();
        if (session_ != nullptr) {
            QVERIFY(session_->Ends());
        }
        session_.reset();
    }

    void FillsEveryBookmarkAndCell_data() {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QStringList>("rowAbove");
        QTest::newRow("binary") << "full.dot" << QStringList{};
        QTest::newRow("newer format") << "full-2007.dot" << QStringList{};
        QTest::newRow("merged title, binary") << "merged_title.dot" << QStringList{"Visites à prévoir"};
        QTest::newRow("merged title, newer format")
            << "merged_title-2007.dot" << QStringList{"Visites à prévoir"};
    }
    void FillsEveryBookmarkAndCell() {
        QFETCH(QString, file);
        QFETCH(QStringList, rowAbove);
        const LetterText letter = SampleLetter(5);
        Write(TestTemplate(file.toStdString()), letter);

        const WrittenLetter written = ReadBack();
        QCOMPARE(written.header,
                 (QStringList{"Code : ELANCO", "Société : TRANSPORTS ÉLAN & FILS",
                              "Adresse 1 : Zone artisanale de l'Œuvre", "Adresse 2 : Bâtiment C",
                              "Adresse 3 : 44800   SAINT-HERBLAIN", "Adresse 4 : FRANCE",
                              "Adresse 5 : ", "Adresse 6 : ", "Contact : Mme Noëlle Moreau",
                              "Téléphone : 02 40 11 22 33", "Fax : ", "Fait le : 20/11/2026"}));
        std::vector<QStringList> rows = ExpectedRows(letter);
        rows.insert(rows.begin(), kHeadings);
        if (!rowAbove.isEmpty()) {
            rows.insert(rows.begin(), rowAbove);
        }
        QCOMPARE(written.tables.back(), rows);
        QCOMPARE(BookmarksInFile(),
                 (std::set<QString>{"CODCLI", "RS", "ADR1", "ADR2", "ADR3", "ADR4", "ADR5", "ADR6", "CONTACT",
                                    "TEL", "FAX", "DATIMPR", "IMMAT", "MARQUE", "TYPTRAV", "DERNVIS",
                                    "PERIOD", "DATEPREV"}));
    }

    void FillsTheDemonstrationLetter_data() {
        QTest::addColumn<QString>("file");
        QTest::newRow("binary") << "RELVEH.dot";
        QTest::newRow("newer format") << "RELVEH2.dot";
    }
    void FillsTheDemonstrationLetter() {
        QFETCH(QString, file);
        const LetterText letter = SampleLetter(3);
        Write(DemoTemplate(file.toStdString()), letter);
        const WrittenLetter written = ReadBack();
        for (const QString line :
             {"N/Réf. : ELANCOTRANSPORTS ÉLAN & FILS", "FRANCE", "Nantes, le 20/11/2026"}) {
            QVERIFY2(written.header.contains(line), qPrintable(line));
        }
        const std::vector<QStringList>& rows = written.tables.back();
        QCOMPARE(std::vector<QStringList>(rows.begin() + 1, rows.end()), ExpectedRows(letter));
    }

    void PrintsTheAddressInTheWindowOfTheEnvelope_data() { FillsTheDemonstrationLetter_data(); }
    void PrintsTheAddressInTheWindowOfTheEnvelope() {
        QFETCH(QString, file);
        Write(DemoTemplate(file.toStdString()), SampleLetter(3));
        const PrintedLetter printed = Print();
        // A DL envelope shows the page from x 100 to 200 and from y 45 to 90.
        for (const QString word : {"TRANSPORTS", "Zone", "Bâtiment", "44800", "FRANCE"}) {
            const WordPlace place = printed.PlaceOf(word);
            QVERIFY2(place.left > 109.5 && place.left < 110.5, qPrintable(word));
            QVERIFY2(place.top > 47 && place.bottom < 78, qPrintable(word));
        }
        const WordPlace subject = printed.PlaceOf("Objet");
        QVERIFY(subject.top > 99 && subject.top < 104);
        QVERIFY(std::abs(subject.left - 20) < 0.5);
    }

    void PrintsOneLineForEachVisitBelowTheHeadings() {
        Write(DemoTemplate("RELVEH.dot"), SampleLetter(3));
        const QString page = Print().Page(1);
        QVERIFY2(
            page.contains(QString("AB-1-CD CITROËN Jumper 1 Contrôle <1> à 100 € 11/07/2024 1 31/12/2026 "
                                  "AB-2-CD CITROËN Jumper 2 Contrôle <2> à 100 € 11/07/2024 2 31/12/2026 "
                                  "AB-3-CD CITROËN Jumper 3 Contrôle <3> à 100 € 11/07/2024 3 31/12/2026 "
                                  "Pour prendre rendez-vous")),
            qPrintable(page));
    }

    void RepeatsTheHeadingsOnTheSecondPage() {
        Write(DemoTemplate("RELVEH2.dot"), SampleLetter(35));
        const QString second = Print().Page(2);
        QVERIFY(second.contains(QStringLiteral("Immatriculation")));
        QVERIFY(second.contains(QStringLiteral("Page 2 / 2")));
        QVERIFY(!second.contains(QStringLiteral("TRANSPORTS")));
    }

    void TakesATemplateThatHasOnlyTheNewestExtension() {
        std::filesystem::copy_file(std::filesystem::path(DEMO_TEMPLATES) / "RELVEH2.dot",
                                   session_->File("NEUF.dotx"),
                                   std::filesystem::copy_options::overwrite_existing);
        Write(session_->WindowsFile("NEUF.dotx"), SampleLetter(1));
        QCOMPARE(ReadBack().tables.back().back().front(), QStringLiteral("AB-1-CD"));
    }

    void LetsTheLastBookmarkWinWhenAllStandInOneCell_data() {
        QTest::addColumn<QString>("file");
        QTest::newRow("binary") << "one_cell.dot";
        QTest::newRow("newer format") << "one_cell-2007.dot";
    }
    void LetsTheLastBookmarkWinWhenAllStandInOneCell() {
        QFETCH(QString, file);
        Write(TestTemplate(file.toStdString()), SampleLetter(2));
        const auto rows = ReadBack().tables.back();
        QCOMPARE(rows.size(), std::size_t{3});
        QCOMPARE(rows[1], (QStringList{"Contrôle <1> à 100 €", "", "", "", "", ""}));
        QCOMPARE(rows[2], (QStringList{"Contrôle <2> à 100 €", "", "", "", "", ""}));
    }

    void FindsNoTableForABookmarkOutsideOne_data() {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("number");
        QTest::newRow("outside a table, binary") << "no_table.dot" << 5941;
        QTest::newRow("outside a table, newer format") << "no_table-2007.dot" << 5941;
        QTest::newRow("no bookmarks, binary") << "no_bookmarks.dot" << 5941;
        QTest::newRow("no bookmarks, newer format") << "no_bookmarks-2007.dot" << 5941;
    }
    void FindsNoTableForABookmarkOutsideOne() {
        QFETCH(QString, file);
        QFETCH(int, number);
        int thrown = 0;
        ObjectPtr Word;
        try {
            WriteLetter(gword_, Word, WithoutExtension(TestTemplate(file.toStdString())), SampleLetter(1),
                        LetterFile());
        } catch (const basic::RuntimeError& error) {
            thrown = error.Number();
        }
        QCOMPARE(thrown, number);
    }

    void SaysNothingWhenTheLetterCannotBeSavedFirstAndShowsABoxThen() {
        const support::BoxAnswerer boxes;
        ObjectPtr Word;
        WriteLetter(gword_, Word, WithoutExtension(TestTemplate("full.dot")), SampleLetter(3),
                    session_->WindowsFile("nowhere") + u"\\X.RVE");
        QCOMPARE(boxes.Shown().size(), std::size_t{2});
        for (const auto& box : boxes.Shown()) {
            QCOMPARE(box.title, QStringLiteral("Erreur Word (FichierEnregistrer)"));
            QCOMPARE(box.text, QStringLiteral("Échec de la commande."));
        }
    }

    void GoesOnWithBoxesWhenTheOfficeDies() {
        const support::BoxAnswerer boxes;
        ObjectPtr Word;
        gword_.W_CreationObjet(Word);
        gword_.W_FichierNouveau(Word, WithoutExtension(TestTemplate("full.dot")));
        session_->Kill();
        QVERIFY(gword_.W_Insertion(Word, u"x"));
        QVERIFY(gword_.W_FichierEnregistrer(Word, u""));
        QCOMPARE(boxes.Shown().size(), std::size_t{2});
        for (const auto& box : boxes.Shown()) {
            QCOMPARE(box.text, QString::fromStdU16String(basic::DescriptionOf(basic::error::kServerGone)));
        }
        gword_.W_CreationObjet(keeper_);
        QVERIFY(gword_.W_FichierNouveau(keeper_, WithoutExtension(TestTemplate("full.dot"))));
    }
};

}  // namespace quardele::tests

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    quardele::forms::SetUpApplication(*qApp);
    quardele::tests::LetterTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "letter_test.moc"
