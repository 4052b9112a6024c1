// Letters made by the real word processor, read back from their files by an independent program.
#include <QElapsedTimer>
#include <QTest>

#include <basic/conversion.h>
#include <basic/date.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <office_session.h>

#include "run_tests.h"
#include "word_watcher.h"
#include "workshop.h"
#include "written_letter.h"

using namespace quardele;
using reminders::FRELANCES;
using tests::ClickCell;
using tests::OfficeSession;
using tests::ReadLetter;
using tests::RowOf;
using tests::Workshop;
using tests::WrittenLetter;

using Table = std::vector<QStringList>;

namespace {

constexpr int kLetter = 8;
constexpr int kHourglass = 11;
/// Word's failure for a member that a collection lacks.
constexpr int kNoSuchElement = 5941;
const QString kNovember = QStringLiteral("25/11/2026");

const QStringList kOpel = {"GB-197-PB", "HAY"};
const QStringList kSeat = {"NK-140-QR", "CLI"};
const QStringList kSkoda = {"SA-735-YK", "BAT"};
const QStringList kUnknownCustomer = {"8266 JM 33", "CT"};

const QStringList kHeadings = {"Immatriculation", "Marque",  "Travaux",
                               "Dernière visite", "Période", "Visite prévue"};
const QStringList kOpelLine = {"GB-197-PB", "OPEL", "Hayon élévateur", "06/05/2026", "6", "06/11/2026"};
const QStringList kSeatLine = {"NK-140-QR", "SEAT", "Climatisation", "01/10/2024", "24", "01/10/2026"};
const QStringList kSkodaLine = {"SA-735-YK", "ŠKODA", "Batterie", "28/09/2023", "36", "28/09/2026"};

QString Today() {
    return forms::ToQString(basic::CStr(basic::Today()));
}

/// The table of the visits: the last one of the letter.
Table Visits(const WrittenLetter& letter) {
    return letter.tables.empty() ? Table() : letter.tables.back();
}

}  // namespace

class LettersWriterTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() {
        if (!OfficeSession::IsAvailable()) {
            QSKIP("no word processor on this machine");
        }
        office_ = std::make_unique<OfficeSession>();
    }
    void cleanupTestCase() { office_.reset(); }
    void init() { workshop_ = std::make_unique<Workshop>(); }
    void cleanup() { workshop_.reset(); }

    void TwoCustomersWithThreeVisitsGetTwoLetters_data() {
        QTest::addColumn<QString>("template_");
        QTest::newRow("binary format") << QStringLiteral("full.dot");
        QTest::newRow("newer format") << QStringLiteral("full-2007.dot");
    }
    void TwoCustomersWithThreeVisitsGetTwoLetters() {
        QFETCH(QString, template_);
        UseTemplate(template_.toStdString());
        MakeLetters({kOpel, kSeat, kSkoda});
        QVERIFY(workshop_->boxes.Shown().empty());
        QCOMPARE(Letters(), (QStringList{"C0001261125.RVE", "C0003261125.RVE"}));

        const WrittenLetter first = ReadLetter(File("C0001261125.RVE"));
        QCOMPARE(first.header,
                 (QStringList{"Code : C0001", "Société : TRANSPORTS LEFÈVRE 61",
                              "Adresse 1 : 86, route de Compiègne", "Adresse 2 : Bâtiment C",
                              "Adresse 3 : 59800   LILLE",
                              "Adresse 4 : ", "Adresse 5 : ", "Adresse 6 : ", "Contact : Jérôme D'Ornano",
                              "Téléphone : 03 53 01 15 08", "Fax : 02 61 91 22 10", "Fait le : " + Today()}));
        QCOMPARE(Visits(first), (Table{kHeadings, kOpelLine, kSeatLine}));

        const WrittenLetter second = ReadLetter(File("C0003261125.RVE"));
        QCOMPARE(second.header,
                 (QStringList{"Code : C0003", "Société : MAÇONNERIE BÉNARD 181",
                              "Adresse 1 : 28, place de l'Église", "Adresse 2 : Bâtiment V",
                              "Adresse 3 : B.P. 641", "Adresse 4 : 13001   MARSEILLE",
                              "Adresse 5 : ", "Adresse 6 : ", "Contact : Rémi Dąbrowski",
                              "Téléphone : 05 36 49 61 10", "Fax : 05 36 49 41 08", "Fait le : " + Today()}));
        QCOMPARE(Visits(second), (Table{kHeadings, kSkodaLine}));
    }

    /// Says what a run takes, for whoever compares machines.
    void RunOfTwoLettersIsTimed() {
        UseTemplate("full.dot");
        Tick({kOpel, kSeat, kSkoda});
        QElapsedTimer timer;
        timer.start();
        PressLetters();
        qInfo("two letters with three visits: %lld ms", static_cast<long long>(timer.elapsed()));
        QCOMPARE(Letters().size(), 2);
    }

    void AddressClosesUpOverEmptyLines() {
        UseTemplate("full.dot");
        workshop_->Change(
            u"SELECT * FROM TCLI WHERE TCLI_CODCLI = 'C0003'",
            {{u"TCLI_ADRFACT1", basic::Null{}}, {u"TCLI_ADRFACT3", u"  "}, {u"TCLI_PAYSFACT", u"CH"}});
        MakeLetters({kSkoda});
        const QStringList header = ReadLetter(File("C0003261125.RVE")).header;
        QCOMPARE(header.mid(2, 4), (QStringList{"Adresse 1 : Bâtiment V", "Adresse 2 : 13001   MARSEILLE",
                                                "Adresse 3 : SUISSE", "Adresse 4 : "}));
    }

    void UnknownCustomersLetterShowsCodeAndDateOnly() {
        UseTemplate("full.dot");
        MakeLetters({kUnknownCustomer});
        QCOMPARE(workshop_->boxes.Shown().size(), std::size_t{1});
        const WrittenLetter letter = ReadLetter(File("INCONNU261125.RVE"));
        QCOMPARE(letter.header.first(), QStringLiteral("Code : INCONNU"));
        QCOMPARE(letter.header[1], QStringLiteral("Société : société"));
        QCOMPARE(letter.header.last(), QStringLiteral("Fait le : ") + Today());
        QCOMPARE(Visits(letter).size(), std::size_t{2});
    }

    void EarlierLetterThatIsStillOpenEndsTheProcess() {
        const tests::WordWatcher keeper;
        UseTemplate("full.dot");
        MakeLetters({kSkoda});
        PressLetters();
        CheckEnd(basic::error::kPermissionDenied);
        QCOMPARE(Visits(ReadLetter(File("C0003261125.RVE"))), (Table{kHeadings, kSkodaLine}));
    }

    void LetterThatCannotBeWrittenSaysSoAtTheNextLineOnly() {
        UseTemplate("full.dot");
        std::filesystem::create_directory(File("C0001261125.RVE"));
        std::filesystem::create_directory(File("C0003261125.RVE"));
        MakeLetters({kOpel, kSeat, kSkoda});
        QCOMPARE(workshop_->boxes.Shown().size(), std::size_t{1});
        QCOMPARE(workshop_->boxes.Shown()[0].title, QStringLiteral("Erreur Word (FichierEnregistrer)"));
        QCOMPARE(workshop_->Ends(), 0);
        QCOMPARE(forms::Screen::MousePointer(), 0);
        for (const char* letter : {"C0001261125.RVE", "C0003261125.RVE"}) {
            QVERIFY(std::filesystem::is_empty(File(letter)));
        }
    }

    void TemplateWithoutBookmarksIsIncomplete() {
        UseTemplate("no_bookmarks.dot");
        MakeLetters({kSkoda});
        QCOMPARE(workshop_->boxes.TakeTexts(),
                 std::vector<QString>{QStringLiteral("Votre modèle de relance est incomplet.\n"
                                                     "Il ne décrit pas les lignes détail")});
        QCOMPARE(forms::Screen::MousePointer(), kHourglass);
        QVERIFY(Letters().isEmpty());
    }

    void TemplateWithoutTableEndsTheProcess() {
        UseTemplate("no_table.dot");
        MakeLetters({kSkoda});
        CheckEnd(kNoSuchElement);
        QVERIFY(Letters().isEmpty());
    }

    void AllBookmarksInOneCellFillOneColumn() {
        UseTemplate("one_cell.dot");
        MakeLetters({kOpel, kSeat});
        const Table visits = Visits(ReadLetter(File("C0001261125.RVE")));
        QCOMPARE(visits.size(), std::size_t{3});
        QCOMPARE(visits[1], (QStringList{"Hayon élévateur", "", "", "", "", ""}));
        QCOMPARE(visits[2], (QStringList{"Climatisation", "", "", "", "", ""}));
    }

    void CustomerCodeWithASlashEndsTheProcessBeforeAnythingIsWritten() {
        UseTemplate("full.dot");
        workshop_->Change(u"SELECT * FROM TVEH WHERE TVEH_IMMAT = 'SA-735-YK'", {{u"TVEH_CODCLI", u"A/B"}});
        MakeLetters({kSkoda});
        CheckEnd(basic::error::kBadFileName);
        QVERIFY(Letters().isEmpty());
    }

    void OfficeKilledInTheMiddleOfALetterLosesNothingThatWasSaved() {
        UseTemplate("full.dot");
        constexpr int kInTheSecondLine = 9 + 6 + 2;
        tests::WordWatcher watcher([&](int typed) {
            if (typed == kInTheSecondLine) {
                office_->Kill();
            }
        });
        MakeLetters({kOpel, kSeat, kSkoda});
        QCOMPARE(workshop_->Ends(), 0);
        QCOMPARE(workshop_->boxes.Shown().front().title, QStringLiteral("Erreur Word (Insertion)"));
        QCOMPARE(workshop_->boxes.Shown().back().title, QStringLiteral("Erreur Word (FichierEnregistrer)"));
        QCOMPARE(Visits(ReadLetter(File("C0001261125.RVE"))), (Table{kHeadings, kOpelLine}));
        QCOMPARE(Visits(ReadLetter(File("C0003261125.RVE"))), (Table{kHeadings, kSkodaLine}));
        QCOMPARE(forms::Screen::MousePointer(), 0);
    }

 private:
    [[nodiscard]] FRELANCES& Form() const { return workshop_->Reminders(); }
    [[nodiscard]] std::filesystem::path File(const std::string& name) const {
        return workshop_->installation.File("DATA/" + name);
    }
    void UseTemplate(const std::string& name) const {
        std::filesystem::copy_file(QUARDELE_SOURCE_DIR "/tests/word/templates/" + name, File("RELVEH.dot"));
    }
    void Tick(const std::vector<QStringList>& visits) const {
        workshop_->ListDueBefore(kNovember);
        for (const QStringList& visit : visits) {
            const int row = RowOf(*Form().DBG_RELANCES, visit[0], visit[1]);
            QVERIFY2(row > 0, qPrintable(visit.join(u' ')));
            ClickCell(*Form().DBG_RELANCES, kLetter, row);
        }
    }
    void PressLetters() const { QTest::mouseClick(Form().Cmd_Editer, Qt::LeftButton); }
    void MakeLetters(const std::vector<QStringList>& visits) const {
        Tick(visits);
        PressLetters();
    }
    /// The process would have ended once, after a box with the error's number.
    void CheckEnd(int error) const {
        QCOMPARE(workshop_->Ends(), 1);
        const std::vector<QString> texts = workshop_->boxes.TakeTexts();
        QVERIFY(!texts.empty());
        QVERIFY2(texts.back().contains(QString::number(error)), qPrintable(texts.back()));
    }
    /// The letters in the folder, by name.
    [[nodiscard]] QStringList Letters() const {
        QStringList names;
        for (const auto& entry : std::filesystem::directory_iterator(File(""))) {
            if (entry.path().extension() == ".RVE") {
                names << QString::fromStdU16String(entry.path().filename().u16string());
            }
        }
        names.sort();
        return names;
    }

    std::unique_ptr<Workshop> workshop_;
    std::unique_ptr<OfficeSession> office_;
};

int main(int argc, char** argv) {
    return tests::RunTests<LettersWriterTest>(argc, argv);
}

#include "letters_writer_test.moc"
