// The letters, with a double in Word's place that writes down what is asked of it.
#include <fstream>

#include <unistd.h>

#include <QTest>
#include <QTimer>

#include <basic/conversion.h>
#include <basic/date.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <letter_loop.h>
#include <recording_word.h>
#include <reminders/fchxmodl.h>
#include <shell/session.h>

#include "run_tests.h"
#include "workshop.h"

using namespace quardele;
using basic::RuntimeError;
using basic::Text;
using reminders::FRELANCES;
using tests::ChooseSite;
using tests::ClickCell;
using tests::Press;
using tests::RecordingWord;
using tests::RowOf;
using tests::Workshop;

using Log = std::vector<std::string>;
using TypedRows = std::vector<std::vector<std::string>>;

namespace {

constexpr int kLetter = 8;
constexpr int kHourglass = 11;
/// Word's failure for a member that a collection lacks.
constexpr int kNoSuchElement = 5941;
const QString kNovember = QStringLiteral("25/11/2026");

const std::string kTyped = "Selection.TypeText(";

/// Two visits of C0001, the one of C0003, and the first one of a customer without a record.
const QStringList kOpel = {"GB-197-PB", "HAY"};
const QStringList kSeat = {"NK-140-QR", "CLI"};
const QStringList kSkoda = {"SA-735-YK", "BAT"};
const QStringList kUnknownCustomer = {"8266 JM 33", "CT"};

std::string Today() {
    return basic::ToUtf8(basic::CStr(basic::Today()));
}

/// What was typed into each line of an application's detail table: a line starts at the end of a table row.
TypedRows TypedLines(const RecordingWord& word, int application) {
    TypedRows rows;
    for (const RecordingWord::Entry& entry : word.Entries()) {
        if (entry.application != application) {
            continue;
        }
        if (entry.text == "Selection.EndKey(10, 0)") {
            rows.emplace_back();
        } else if (!rows.empty() && entry.text.starts_with(kTyped)) {
            rows.back().push_back(
                entry.text.substr(kTyped.size() + 1, entry.text.size() - kTyped.size() - 3));
        }
    }
    return rows;
}

int CountOf(const RecordingWord& word, const std::string& text) {
    return static_cast<int>(std::count_if(word.Entries().begin(), word.Entries().end(),
                                          [&](const auto& entry) { return entry.text == text; }));
}

std::string SavedAs(const std::string& file) {
    return "ActiveDocument.SaveAs(FileName:=\"C:\\QUARDELE\\DATA\\" + file + "\")";
}

/// The entries of a jump to a bookmark that exists, and of looking for one that does not.
Log JumpTo(const std::string& bookmark) {
    return {"ActiveDocument.Bookmarks.Exists(\"" + bookmark + "\")",
            "ActiveDocument.Bookmarks(\"" + bookmark + "\").Select()", "ActiveWindow.View.SplitSpecial",
            "ActiveWindow.ActivePane.View.Type = 3"};
}
Log Miss(const std::string& bookmark) {
    return {"ActiveDocument.Bookmarks.Exists(\"" + bookmark + "\")"};
}

Log Joined(const std::vector<Log>& parts) {
    Log all;
    for (const Log& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

}  // namespace

class LettersTest : public QObject {
    Q_OBJECT

 private slots:
    void init() {
        workshop_ = std::make_unique<Workshop>();
        word_ = std::make_unique<RecordingWord>();
        word_->bookmarks = {"CODCLI", "RS",   "ADR1",    "ADR2", "ADR3", "ADR4",
                            "ADR5",   "ADR6", "CONTACT", "TEL",  "FAX",  "DATIMPR"};
        word_->columnOf = {{"IMMAT", 1},   {"MARQUE", 2}, {"TYPTRAV", 3},
                           {"DERNVIS", 4}, {"PERIOD", 5}, {"DATEPREV", 6}};
        AddTemplate("RELVEH.dot");
    }
    void cleanup() {
        workshop_.reset();
        word_.reset();
    }

    // Which letters are made.

    void OneApplicationAndOneLetterPerCustomer() {
        MakeLetters({kOpel, kSeat, kSkoda});
        QCOMPARE(word_->Applications(), 2);
        QCOMPARE(TypedLines(*word_, 1),
                 (TypedRows{{"GB-197-PB", "OPEL", "Hayon élévateur", "06/05/2026", "6", "06/11/2026"},
                            {"NK-140-QR", "SEAT", "Climatisation", "01/10/2024", "24", "01/10/2026"}}));
        QCOMPARE(TypedLines(*word_, 2),
                 (TypedRows{{"SA-735-YK", "ŠKODA", "Batterie", "28/09/2023", "36", "28/09/2026"}}));
        QVERIFY(workshop_->boxes.Shown().empty());
        QCOMPARE(forms::Screen::MousePointer(), 0);
    }

    void LetterIsSavedUnderItsNameAtFirstAndAgainAfterEachLine() {
        MakeLetters({kOpel, kSeat, kSkoda});
        QCOMPARE(Saves(1), (Log{SavedAs("C0001261125.RVE"), "ActiveDocument.Save()"}));
        QCOMPARE(Saves(2), (Log{SavedAs("C0003261125.RVE")}));
    }

    void CustomerWithUntickedRowsOnlyGetsNoLetter() {
        MakeLetters({kSkoda});
        QCOMPARE(word_->Applications(), 1);
        QCOMPARE(word_->TypedAt(1, "CODCLI"), std::optional<std::string>("C0003"));
    }

    void NoTickGivesNoLetter() {
        MakeLetters({});
        QCOMPARE(word_->Applications(), 0);
        QVERIFY(workshop_->boxes.Shown().empty());
    }

    void RowThatTheSiteFilterHidesIsInTheLetterWhenTicked() {
        Tick({kOpel, kSeat});
        ChooseSite(Form(), QStringLiteral("LYO"));
        Press(Form().CMD_Site(0));
        forms::Grid& grid = *Form().DBG_RELANCES;
        QVERIFY(!tests::IsRowHidden(grid, RowOf(grid, kOpel[0], kOpel[1])));
        QVERIFY(tests::IsRowHidden(grid, RowOf(grid, kSeat[0], kSeat[1])));
        PressLetters();
        QCOMPARE(TypedLines(*word_, 1).size(), std::size_t{2});
    }

    void KeyStartsTheLetters() {
        Tick({kSkoda});
        QTest::keyClick(Form().DBG_RELANCES, Qt::Key_R, Qt::ControlModifier);
        QCOMPARE(word_->Applications(), 1);
    }

    void TickedRowWithoutCustomerStartsNoLetter() {
        workshop_->ListDueBefore(kNovember);
        ClickCell(*Form().DBG_RELANCES, kLetter, 1);
        PressLetters();
        QCOMPARE(word_->Applications(), 0);
        QCOMPARE(workshop_->boxes.Shown().size(), std::size_t{1});
        QCOMPARE(workshop_->boxes.Shown()[0].title, QStringLiteral("Erreur Word (FichierEnregistrer)"));
        QCOMPARE(workshop_->Ends(), 0);
    }

    void RunLeavesTicksAndDatabaseAsTheyWere() {
        MakeLetters({kOpel, kSkoda});
        QVERIFY(tests::IsTicked(*Form().DBG_RELANCES, kLetter,
                                RowOf(*Form().DBG_RELANCES, kSkoda[0], kSkoda[1])));
        for (const char* table : {"TVEH", "TVEH_DETAIL", "TCLI"}) {
            QCOMPARE(support::Installation::ExportTable(File("talmeon.mdb"), table),
                     support::Installation::ExportTable(
                         QUARDELE_INSTALLATION_DIR "/QUARDELE/DATA/talmeon.mdb", table));
        }
        PressLetters();
        QCOMPARE(word_->Applications(), 4);
        QCOMPARE(TypedLines(*word_, 3), TypedLines(*word_, 1));
    }

    void FileNameTakesTheDateThatStandsInTheBoxAtTheClick() {
        Tick({kSkoda});
        Form().CTX_DATEREL->SetText(QStringLiteral("01/02/2027"));
        PressLetters();
        QCOMPARE(Saves(1), (Log{SavedAs("C0003270201.RVE")}));
    }

    void TextThatIsNoDateAtTheClickStandsInTheFileNameAsItIs() {
        Tick({kSkoda});
        Form().CTX_DATEREL->SetText(QStringLiteral("demain"));
        PressLetters();
        QCOMPARE(Saves(1), (Log{SavedAs("C0003demain.RVE")}));
        QCOMPARE(workshop_->Ends(), 0);
    }

    void TickedRowWithoutCustomerIsSavedIntoTheLetterOfTheRunBefore() {
        MakeLetters({kSkoda});
        const std::size_t entries = word_->Entries().size();
        ClickCell(*Form().DBG_RELANCES, kLetter, RowOf(*Form().DBG_RELANCES, kSkoda[0], kSkoda[1]));
        ClickCell(*Form().DBG_RELANCES, kLetter, 1);
        PressLetters();
        QCOMPARE(word_->Applications(), 1);
        QCOMPARE(Saves(1), (Log{SavedAs("C0003261125.RVE"), "ActiveDocument.Save()"}));
        QVERIFY(workshop_->boxes.Shown().empty());
        // The line has no columns to fill.
        QCOMPARE(word_->Entries().size(), entries + 3);
    }

    void LetterOfAnEarlierRunIsDeletedFirst() {
        const std::filesystem::path earlier = File("C0003261125.RVE");
        std::ofstream(earlier) << "ancienne lettre";
        MakeLetters({kSkoda});
        QVERIFY(!std::filesystem::exists(earlier));
        QCOMPARE(Saves(1), (Log{SavedAs("C0003261125.RVE")}));
    }

    // What Word is asked to do, in order.

    void WholeLetterStepByStep() {
        word_->bookmarks = {"CODCLI", "ADR2", "DATIMPR"};
        word_->columnOf = {{"IMMAT", 2}, {"DATEPREV", 1}};
        word_->columns = 3;
        MakeLetters({kOpel, kSeat});
        const Log pageView = {"ActiveWindow.View.SplitSpecial", "ActiveWindow.ActivePane.View.Type = 3"};
        const std::string story = "ActiveWindow.ActivePane.View.SeekView";
        const Log start = {"CreateObject(\"Word.Application\")",
                           "Visible = True",
                           "WindowState = 0",
                           "Tasks(\"Microsoft Word\").Move(0, 0)",
                           "Tasks(\"Microsoft Word\").Resize(600, 450)",
                           "Documents.Add(Template:=\"C:\\QUARDELE\\DATA\\RELVEH.dot\", NewTemplate:=False, "
                           "DocumentType:=0)",
                           "ActiveWindow.ActivePane.View.ShowAll"};
        const Log arrange = {"WindowState = 1", "ActiveWindow.DisplayRulers",
                             "ActiveWindow.DisplayRulers = False", "Activate()"};
        const Log openHeader =
            Joined({{"Selection.HomeKey(6)"}, pageView, {story}, pageView, {story, story + " = 9"}});
        const Log header = Joined({JumpTo("CODCLI"),
                                   {kTyped + "\"C0001\")"},
                                   Miss("RS"),
                                   Miss("ADR1"),
                                   JumpTo("ADR2"),
                                   {kTyped + "\"Bâtiment C\")"},
                                   Miss("ADR3"),
                                   Miss("CONTACT"),
                                   Miss("TEL"),
                                   Miss("FAX"),
                                   JumpTo("DATIMPR"),
                                   {kTyped + '"' + Today() + "\")"}});
        const Log leaveHeader = Joined({pageView, {story}, pageView, {story, story + " = 0"}});
        Log emptyNames;
        for (int i = 0; i < 10; ++i) {
            emptyNames.push_back("ActiveDocument.Bookmarks.Exists(\"\")");
        }
        const Log columns = Joined({JumpTo("IMMAT"),
                                    {"Selection.Tables(1).Columns.Count"},
                                    JumpTo("IMMAT"),
                                    {"Selection.Columns(1).Index"},
                                    Miss("MARQUE"),
                                    JumpTo("DATEPREV"),
                                    {"Selection.Columns(1).Index"},
                                    Miss("DERNVIS"),
                                    Miss("PERIOD"),
                                    Miss("TYPTRAV"),
                                    emptyNames,
                                    {"ActiveDocument.Bookmarks(\"DATEPREV\").Select()"},
                                    pageView});
        const auto line = [](const std::string& due, const std::string& registration) {
            const std::string next = "Selection.MoveRight(12)";
            return Log{"ActiveDocument.Tables.Count",
                       "Selection.EndKey(10, 0)",
                       next,
                       kTyped + '"' + due + "\")",
                       next,
                       kTyped + '"' + registration + "\")",
                       next,
                       kTyped + "\"\")"};
        };
        const Log expected = Joined({start,
                                     pageView,
                                     arrange,
                                     openHeader,
                                     header,
                                     leaveHeader,
                                     columns,
                                     line("06/11/2026", "GB-197-PB"),
                                     {SavedAs("C0001261125.RVE")},
                                     line("01/10/2026", "NK-140-QR"),
                                     {"ActiveDocument.Save()"}});
        const Log log = word_->TakeLog();
        for (std::size_t i = 0; i < std::min(log.size(), expected.size()); ++i) {
            QCOMPARE(log[i], expected[i]);
        }
        QCOMPARE(log.size(), expected.size());
    }

    // Tests of Word's other doubles, behind COM and in Writer, write their letters with this stand-in.
    void LetterOfTheOtherTestsTakesTheSameSteps() {
        MakeLetters({kOpel, kSeat});
        const Log log = word_->TakeLog();
        QVERIFY(workshop_->boxes.Shown().empty());

        const tests::LetterText letter = {{{"CODCLI", "C0001"},
                                           {"RS", "TRANSPORTS LEFÈVRE 61"},
                                           {"ADR1", "86, route de Compiègne"},
                                           {"ADR2", "Bâtiment C"},
                                           {"ADR3", "59800   LILLE"},
                                           {"CONTACT", "Jérôme D'Ornano"},
                                           {"TEL", "03 53 01 15 08"},
                                           {"FAX", "02 61 91 22 10"},
                                           {"DATIMPR", Today()}},
                                          {{{"IMMAT", "GB-197-PB"},
                                            {"MARQUE", "OPEL"},
                                            {"TYPTRAV", "Hayon élévateur"},
                                            {"DERNVIS", "06/05/2026"},
                                            {"PERIOD", "6"},
                                            {"DATEPREV", "06/11/2026"}},
                                           {{"IMMAT", "NK-140-QR"},
                                            {"MARQUE", "SEAT"},
                                            {"TYPTRAV", "Climatisation"},
                                            {"DERNVIS", "01/10/2024"},
                                            {"PERIOD", "24"},
                                            {"DATEPREV", "01/10/2026"}}}};
        automation::ObjectPtr Word;
        tests::WriteLetter(*shell::TheSession().OBJ_WORD, Word, u"C:\\QUARDELE\\DATA\\RELVEH", letter,
                           u"C:\\QUARDELE\\DATA\\C0001261125.RVE");
        QVERIFY(workshop_->boxes.Shown().empty());
        const Log standIn = word_->TakeLog();
        for (std::size_t i = 0; i < std::min(log.size(), standIn.size()); ++i) {
            QCOMPARE(standIn[i], log[i]);
        }
        QCOMPARE(standIn.size(), log.size());
    }

    void RulerThatIsOffStaysAlone() {
        word_->Answer("ActiveWindow.DisplayRulers", false);
        MakeLetters({kSkoda});
        QCOMPARE(CountOf(*word_, "ActiveWindow.DisplayRulers"), 1);
        QCOMPARE(CountOf(*word_, "ActiveWindow.DisplayRulers = False"), 0);
    }

    void MenuHookSendsF10() {
        shell::TheSession().B_MENU_WORD = true;
        KeyCounter f10(Qt::Key_F10);
        MakeLetters({kSkoda});
        QTRY_VERIFY(f10.count > 0);
    }

    void WithoutTheMenuHookNoKeyIsSent() {
        KeyCounter f10(Qt::Key_F10);
        MakeLetters({kSkoda});
        QTest::qWait(20);
        QCOMPARE(f10.count, 0);
    }

    // The particulars.

    void EveryParticularGoesToItsBookmark() {
        workshop_->Change(u"SELECT * FROM TCLI WHERE TCLI_CODCLI = 'C0003'", {{u"TCLI_PAYSFACT", u"CH"}});
        MakeLetters({kSkoda});
        CheckTyped({{"CODCLI", "C0003"},
                    {"RS", "MAÇONNERIE BÉNARD 181"},
                    {"ADR1", "28, place de l'Église"},
                    {"ADR2", "Bâtiment V"},
                    {"ADR3", "B.P. 641"},
                    {"ADR4", "13001   MARSEILLE"},
                    {"ADR5", "SUISSE"},
                    {"CONTACT", "Rémi Dąbrowski"},
                    {"TEL", "05 36 49 61 10"},
                    {"FAX", "05 36 49 41 08"},
                    {"DATIMPR", Today()}});
    }

    void AddressClosesUpOverEmptyLines() {
        workshop_->Change(
            u"SELECT * FROM TCLI WHERE TCLI_CODCLI = 'C0003'",
            {{u"TCLI_ADRFACT1", u"   "}, {u"TCLI_ADRFACT3", basic::Null{}}, {u"TCLI_PAYSFACT", u"BE"}});
        MakeLetters({kSkoda});
        CheckTyped({{"ADR1", "Bâtiment V"}, {"ADR2", "13001   MARSEILLE"}, {"ADR3", "BELGIQUE"}});
        QVERIFY(!word_->TypedAt(1, "ADR4"));
    }

    void TownWithoutItsNumberIsLostAndTheCountryTriesTheSameNumber() {
        workshop_->Change(u"SELECT * FROM TCLI WHERE TCLI_CODCLI = 'C0003'", {{u"TCLI_PAYSFACT", u"FR"}});
        word_->bookmarks = {"ADR1", "ADR2", "ADR3"};
        MakeLetters({kSkoda});
        CheckTyped({{"ADR3", "B.P. 641"}});
        QCOMPARE(CountOf(*word_, "ActiveDocument.Bookmarks.Exists(\"ADR4\")"), 2);
        QCOMPARE(CountOf(*word_, kTyped + "\"FRANCE\")"), 0);
        QVERIFY(workshop_->boxes.Shown().empty());
    }

    void AddressLineWithoutItsBookmarkTakesItsNumberAllTheSame() {
        word_->bookmarks = {"ADR2", "ADR4"};
        MakeLetters({kSkoda});
        CheckTyped({{"ADR2", "Bâtiment V"}, {"ADR4", "13001   MARSEILLE"}});
    }

    void TownLineHasNoEmptinessTest() {
        workshop_->Change(u"SELECT * FROM TCLI WHERE TCLI_CODCLI = 'C0003'",
                          {{u"TCLI_CODPFACT", basic::Null{}},
                           {u"TCLI_VILLEFACT", basic::Null{}},
                           {u"TCLI_PAYSFACT", u"FR"}});
        MakeLetters({kSkoda});
        CheckTyped({{"ADR4", "   "}, {"ADR5", "FRANCE"}});
    }

    void CountryThatIsNotInTheTableIsTypedAsItsCode() {
        workshop_->Change(u"SELECT * FROM TCLI WHERE TCLI_CODCLI = 'C0003'", {{u"TCLI_PAYSFACT", u"XX"}});
        MakeLetters({kSkoda});
        CheckTyped({{"ADR5", "XX"}});
    }

    void UnknownCustomerIsSaidAndGetsCodeAndDateOnly() {
        MakeLetters({kUnknownCustomer});
        QCOMPARE(
            workshop_->boxes.TakeTexts(),
            std::vector<QString>{QStringLiteral("ATTENTION : Il n'existe pas de fiche client pour INCONNU\n"
                                                "Vous devrez saisir les coordonnées manuellement")});
        CheckTyped({{"CODCLI", "INCONNU"}, {"DATIMPR", Today()}});
        QVERIFY(!word_->TypedAt(1, "RS"));
        QCOMPARE(CountOf(*word_, "ActiveDocument.Bookmarks.Exists(\"RS\")"), 0);
        QCOMPARE(TypedLines(*word_, 1).size(), std::size_t{1});
        QCOMPARE(Saves(1), (Log{SavedAs("INCONNU261125.RVE")}));
    }

    void NullWhoseBookmarkIsThereEndsTheProcess_data() {
        QTest::addColumn<QString>("rows");
        QTest::addColumn<QString>("field");
        const QString customer = QStringLiteral("SELECT * FROM TCLI WHERE TCLI_CODCLI = 'C0007'");
        for (const char* field : {"TCLI_RS", "TCLI_CONTACT1", "TCLI_TEL1", "TCLI_FAX1"}) {
            QTest::newRow(field) << customer << QString::fromLatin1(field);
        }
        QTest::newRow("TPAYS_LIBELLE") << QStringLiteral("SELECT * FROM TPAYS WHERE TPAYS_CODE = 'FR'")
                                       << QStringLiteral("TPAYS_LIBELLE");
    }
    void NullWhoseBookmarkIsThereEndsTheProcess() {
        QFETCH(QString, rows);
        QFETCH(QString, field);
        workshop_->Change(forms::ToText(rows), {{forms::ToText(field), basic::Null{}}});
        MakeLetters({{"1466 WP 51", "CLI"}});
        CheckEnd(basic::error::kInvalidNull);
    }

    void NullWithoutItsBookmarkDoesNoHarm() {
        workshop_->Change(u"SELECT * FROM TCLI WHERE TCLI_CODCLI = 'C0007'", {{u"TCLI_TEL1", basic::Null{}}});
        std::erase(word_->bookmarks, "TEL");
        MakeLetters({{"1466 WP 51", "CLI"}});
        QCOMPARE(workshop_->Ends(), 0);
        QCOMPARE(Saves(1), (Log{SavedAs("C0007261125.RVE")}));
    }

    // The detail table.

    void ColumnsFollowTheTemplate() {
        word_->columnOf = {{"PERIOD", 1}, {"IMMAT", 3}};
        word_->columns = 3;
        MakeLetters({kSkoda});
        QCOMPARE(TypedLines(*word_, 1), (TypedRows{{"36", "", "SA-735-YK"}}));
    }

    void OfTwoBookmarksInOneColumnTheLaterNameWins() {
        word_->columnOf = {{"IMMAT", 1}, {"MARQUE", 1}, {"TYPTRAV", 2}, {"PERIOD", 2}};
        word_->columns = 2;
        MakeLetters({kSkoda});
        QCOMPARE(TypedLines(*word_, 1), (TypedRows{{"ŠKODA", "Batterie"}}));
    }

    void FirstColumnWithoutBookmarkIsPassedOverQuietly() {
        word_->columnOf = {{"IMMAT", 2}};
        word_->columns = 2;
        MakeLetters({kSkoda});
        QCOMPARE(TypedLines(*word_, 1), (TypedRows{{"", "SA-735-YK"}}));
        QVERIFY(workshop_->boxes.Shown().empty());
    }

    void DateDueFallsToTheLastDayOfAShorterMonth() {
        workshop_->Change(
            u"SELECT * FROM TVEH_DETAIL WHERE TVEH_DETAIL_Immat = 'SA-735-YK' "
            u"AND TVEH_DETAIL_TypTrav = 'BAT'",
            {{u"TVEH_DETAIL_DATVIS", basic::DateOf(2026, 1, 31)}, {u"TVEH_DETAIL_PERIOD", std::int16_t{1}}});
        MakeLetters({kSkoda});
        QCOMPARE(TypedLines(*word_, 1),
                 (TypedRows{{"SA-735-YK", "ŠKODA", "Batterie", "31/01/2026", "1", "28/02/2026"}}));
    }

    void WorkTypeThatIsNotInTheTableStaysEmpty() {
        workshop_->Change(
            u"SELECT * FROM TVEH_DETAIL WHERE TVEH_DETAIL_Immat = 'SA-735-YK' "
            u"AND TVEH_DETAIL_TypTrav = 'BAT'",
            {{u"TVEH_DETAIL_TypTrav", u"ZZZ"}});
        MakeLetters({{"SA-735-YK", "ZZZ"}});
        QCOMPARE(TypedLines(*word_, 1),
                 (TypedRows{{"SA-735-YK", "ŠKODA", "", "28/09/2023", "36", "28/09/2026"}}));
    }

    void WorkTypeWithoutALabelStaysEmpty() {
        workshop_->Change(u"SELECT * FROM TTYP WHERE TTYP_CODE = 'BAT'", {{u"TTYP_LIBELLE", basic::Null{}}});
        MakeLetters({kSkoda});
        QCOMPARE(TypedLines(*word_, 1),
                 (TypedRows{{"SA-735-YK", "ŠKODA", "", "28/09/2023", "36", "28/09/2026"}}));
        QCOMPARE(workshop_->Ends(), 0);
    }

    void TemplateWithoutDetailBookmarksEndsTheRunAndKeepsTheHourglass() {
        word_->columnOf.clear();
        MakeLetters({kOpel, kSkoda});
        QCOMPARE(workshop_->boxes.TakeTexts(),
                 std::vector<QString>{QStringLiteral("Votre modèle de relance est incomplet.\n"
                                                     "Il ne décrit pas les lignes détail")});
        QCOMPARE(word_->Applications(), 1);
        QVERIFY(Saves(1).empty());
        QCOMPARE(CountOf(*word_, "Quit()"), 0);
        QCOMPARE(forms::Screen::MousePointer(), kHourglass);
        QCOMPARE(workshop_->Ends(), 0);
    }

    void DetailBookmarkOutsideEveryTableEndsTheProcess() {
        word_->columnOf.clear();
        word_->bookmarks.emplace_back("IMMAT");
        MakeLetters({kSkoda});
        CheckEnd(kNoSuchElement);
        QVERIFY(Saves(1).empty());
    }

    void BookmarkInAColumnThatTheTableLacksEndsTheProcess() {
        word_->columns = 5;
        MakeLetters({kSkoda});
        CheckEnd(basic::error::kSubscript);
    }

    void FailureOfADirectReadEndsTheProcess() {
        word_->FailOn("Selection.Columns.Index", RuntimeError(basic::error::kServerGone));
        MakeLetters({kSkoda});
        CheckEnd(basic::error::kServerGone);
    }

    // Templates, Word and files that refuse.

    void ChoiceGivenUpMakesNoLetterAndSaysNothing() {
        AddTemplate("RELVEH2.dot");
        Tick({kSkoda});
        QTimer::singleShot(0, this, [] {
            QTest::mouseClick(forms::Instance<reminders::FCHXMODL>().Cmd_Annule, Qt::LeftButton);
        });
        PressLetters();
        QCOMPARE(word_->Applications(), 0);
        QVERIFY(workshop_->boxes.Shown().empty());
    }

    void ChosenVariantIsUsed() {
        AddTemplate("RELVEH2.dot");
        Tick({kSkoda});
        QTimer::singleShot(0, this, [] {
            auto& form = forms::Instance<reminders::FCHXMODL>();
            form.DBG_Liste->SetActiveCell(1,
                                          tests::Cell(*form.DBG_Liste, 1, 1) == QStringLiteral("2") ? 1 : 2);
            QTest::mouseClick(form.Cmd_Ok, Qt::LeftButton);
        });
        PressLetters();
        QCOMPARE(CountOf(*word_,
                         "Documents.Add(Template:=\"C:\\QUARDELE\\DATA\\RELVEH2.dot\", "
                         "NewTemplate:=False, DocumentType:=0)"),
                 1);
    }

    void WithoutTemplateBothMessagesComeAndTheRunEnds() {
        std::filesystem::remove(File("RELVEH.dot"));
        MakeLetters({kOpel, kSkoda});
        QCOMPARE(workshop_->boxes.TakeTexts(),
                 (std::vector<QString>{
                     QStringLiteral("Le modèle WORD <> est introuvable."),
                     QStringLiteral("Le fichier modèle <C:\\QUARDELE\\DATA\\RELVEH.dot> est introuvable.")}));
        QCOMPARE(word_->Applications(), 0);
        QCOMPARE(forms::Screen::MousePointer(), 0);
    }

    void TemplateStepComesEvenWhenNoRowIsTicked() {
        std::filesystem::remove(File("RELVEH.dot"));
        MakeLetters({});
        QCOMPARE(workshop_->boxes.TakeTexts(),
                 std::vector<QString>{QStringLiteral("Le modèle WORD <> est introuvable.")});
    }

    void SuffixedTemplateAloneStopsAtTheFirstCustomer() {
        std::filesystem::rename(File("RELVEH.dot"), File("RELVEH2.dot"));
        MakeLetters({kSkoda});
        QCOMPARE(workshop_->boxes.TakeTexts(),
                 std::vector<QString>{
                     QStringLiteral("Le fichier modèle <C:\\QUARDELE\\DATA\\RELVEH.dot> est introuvable.")});
    }

    void WordThatIsNotThereShowsItsBoxesAndEndsTheRun() {
        word_->absent = true;
        MakeLetters({kOpel, kSkoda});
        QCOMPARE(BoxTitles(), (QStringList{QStringLiteral("Erreur Word (Creation_Objet)"),
                                           QStringLiteral("Erreur Word (FichierNouveau)")}));
        QCOMPARE(forms::Screen::MousePointer(), 0);
        QCOMPARE(workshop_->Ends(), 0);
    }

    void DocumentThatCannotBeMadeEndsTheRun() {
        word_->FailOn("Documents.Add", RuntimeError(5174, u"Fichier introuvable."));
        MakeLetters({kOpel, kSkoda});
        QCOMPARE(word_->Applications(), 1);
        QCOMPARE(BoxTitles(), QStringList{QStringLiteral("Erreur Word (FichierNouveau)")});
        QCOMPARE(forms::Screen::MousePointer(), 0);
    }

    void SecondLetterThatCannotStartLeavesTheFirstOne() {
        BoxHook vanish([this] { std::filesystem::remove(File("RELVEH.dot")); });
        MakeLetters({kSkoda, kUnknownCustomer});
        QCOMPARE(word_->Applications(), 1);
        QCOMPARE(Saves(1), (Log{SavedAs("C0003261125.RVE")}));
        QCOMPARE(CountOf(*word_, "Quit()"), 0);
        QCOMPARE(forms::Screen::MousePointer(), 0);
    }

    void FailureWhileWordStartsIsSaidByTheProcedureAndEndsTheRun() {
        word_->FailOn("Activate", RuntimeError(462, u"Le serveur distant n'existe pas"));
        MakeLetters({kOpel, kSkoda});
        QCOMPARE(workshop_->boxes.TakeTexts(),
                 std::vector<QString>{
                     QStringLiteral("Procédure APPLI/appel_word : Le serveur distant n'existe pas (462)")});
        QCOMPARE(forms::Screen::MousePointer(), 0);
        QCOMPARE(word_->Applications(), 1);
        QVERIFY(Saves(1).empty());
    }

    void LetterThatCannotBeSavedSaysNothingUntilTheNextSave() {
        word_->FailOn("ActiveDocument.SaveAs", RuntimeError(5356, u"Enregistrement impossible"));
        word_->FailOn("ActiveDocument.Save", RuntimeError(5356, u"Pas de fichier"));
        MakeLetters({kOpel, kSeat});
        QCOMPARE(workshop_->boxes.Shown().size(), std::size_t{1});
        QCOMPARE(workshop_->boxes.Shown()[0].text, QStringLiteral("Pas de fichier"));
        QCOMPARE(workshop_->boxes.Shown()[0].title, QStringLiteral("Erreur Word (FichierEnregistrer)"));
        QCOMPARE(TypedLines(*word_, 1).size(), std::size_t{2});
    }

    void EarlierLetterThatIsOpenElsewhereEndsTheProcess() {
        std::ofstream(File("C0003261125.RVE")) << "ancienne lettre";
        std::ofstream(File(".~lock.C0003261125.RVE#")) << "ouverte";
        MakeLetters({kSkoda});
        CheckEnd(basic::error::kPermissionDenied);
        QVERIFY(std::filesystem::exists(File("C0003261125.RVE")));
    }

    void EarlierLetterInAFolderThatMayNotBeChangedEndsTheProcess() {
        std::ofstream(File("C0003261125.RVE")) << "ancienne lettre";
        Tick({kSkoda});
        {
            const ReadOnlyFolder folder(workshop_->installation);
            PressLetters();
        }
        CheckEnd(basic::error::kPathFileAccess);
        QVERIFY(std::filesystem::exists(File("C0003261125.RVE")));
        QVERIFY(Saves(1).empty());
    }

    void CustomerCodeThatNoFileNameCanHoldEndsTheProcess_data() {
        QTest::addColumn<QString>("code");
        QTest::newRow("slash") << QStringLiteral("A/B");
        QTest::newRow("backslash") << QStringLiteral("A\\B");
        QTest::newRow("wildcard") << QStringLiteral("C*");
        QTest::newRow("colon") << QStringLiteral("A:B");
        QTest::newRow("control character") << QStringLiteral("A\tB");
    }
    void CustomerCodeThatNoFileNameCanHoldEndsTheProcess() {
        QFETCH(QString, code);
        std::ofstream(File("C1261125.RVE")) << "une autre lettre";
        workshop_->Change(u"SELECT * FROM TVEH WHERE TVEH_IMMAT = 'SA-735-YK'",
                          {{u"TVEH_CODCLI", forms::ToText(code)}});
        MakeLetters({kSkoda});
        CheckEnd(basic::error::kBadFileName);
        QVERIFY(Saves(1).empty());
        QVERIFY(std::filesystem::exists(File("C1261125.RVE")));
    }

 private:
    /// Counts the presses of a key that reach any window.
    class KeyCounter : public QObject {
     public:
        explicit KeyCounter(int wanted) : key(wanted) { qApp->installEventFilter(this); }
        bool eventFilter(QObject* /*watched*/, QEvent* event) override {
            if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == key) {
                ++count;
            }
            return false;
        }
        int key;
        int count = 0;
    };

    /// While it lives, the data folder may be read and not changed, and the program has no special rights.
    class ReadOnlyFolder {
     public:
        explicit ReadOnlyFolder(const support::Installation& installation)
            : data_(installation.File("DATA")) {
            namespace fs = std::filesystem;
            constexpr auto kLookInto = fs::perms::group_read | fs::perms::group_exec |
                                       fs::perms::others_read | fs::perms::others_exec;
            for (fs::path folder = data_; folder != fs::temp_directory_path() && folder.has_relative_path();
                 folder = folder.parent_path()) {
                fs::permissions(folder, kLookInto, fs::perm_options::add);
            }
            fs::permissions(data_, fs::perms::all & ~kWriting);
            constexpr uid_t kNobody = 65534;
            if (user_ == 0 && setresuid(kNobody, kNobody, user_) != 0) {
                QTest::qFail("the rights could not be given up", __FILE__, __LINE__);
            }
        }
        ~ReadOnlyFolder() {
            if (setresuid(user_, user_, user_) != 0) {
                QTest::qFail("the rights could not be taken back", __FILE__, __LINE__);
            }
            std::filesystem::permissions(data_, std::filesystem::perms::owner_all);
        }
        ReadOnlyFolder(const ReadOnlyFolder&) = delete;
        ReadOnlyFolder& operator=(const ReadOnlyFolder&) = delete;

     private:
        static constexpr auto kWriting = std::filesystem::perms::owner_write |
                                         std::filesystem::perms::group_write |
                                         std::filesystem::perms::others_write;
        std::filesystem::path data_;
        uid_t user_ = geteuid();
    };

    /// Does something as soon as a message box is on screen.
    class BoxHook : public QObject {
     public:
        explicit BoxHook(std::function<void()> action) : action_(std::move(action)) {
            qApp->installEventFilter(this);
        }
        bool eventFilter(QObject* watched, QEvent* event) override {
            if (event->type() == QEvent::Show && watched->objectName() == QStringLiteral("MsgBox")) {
                action_();
            }
            return false;
        }

     private:
        std::function<void()> action_;
    };

    [[nodiscard]] FRELANCES& Form() const { return workshop_->Reminders(); }
    [[nodiscard]] std::filesystem::path File(const std::string& name) const {
        return workshop_->installation.File("DATA/" + name);
    }
    void AddTemplate(const std::string& name) const { std::ofstream(File(name)) << "modèle"; }

    /// Lists the visits of November and ticks those given by registration and work.
    void Tick(const std::vector<QStringList>& visits) const {
        workshop_->ListDueBefore(kNovember);
        for (const QStringList& visit : visits) {
            const int row = RowOf(*Form().DBG_RELANCES, visit[0], visit[1]);
            QVERIFY2(row > 0, qPrintable(visit.join(u' ')));
            ClickCell(*Form().DBG_RELANCES, kLetter, row);
        }
    }
    void PressLetters() const { Press(Form().Cmd_Editer); }
    void MakeLetters(const std::vector<QStringList>& visits) const {
        Tick(visits);
        PressLetters();
    }

    /// The saving steps of an application.
    [[nodiscard]] Log Saves(int application) const {
        Log saves;
        for (const RecordingWord::Entry& entry : word_->Entries()) {
            if (entry.application == application && entry.text.starts_with("ActiveDocument.Save")) {
                saves.push_back(entry.text);
            }
        }
        return saves;
    }
    [[nodiscard]] QStringList BoxTitles() const {
        QStringList titles;
        for (const support::ShownBox& box : workshop_->boxes.Shown()) {
            titles << box.title;
        }
        return titles;
    }
    void CheckTyped(const std::map<std::string, std::string>& expected) const {
        for (const auto& [bookmark, text] : expected) {
            QCOMPARE(word_->TypedAt(1, bookmark).value_or("(rien)"), text);
        }
    }
    /// The process would have ended once, after a box with the error's number.
    void CheckEnd(int error) const {
        QCOMPARE(workshop_->Ends(), 1);
        const std::vector<QString> texts = workshop_->boxes.TakeTexts();
        QVERIFY(!texts.empty());
        QVERIFY2(texts.back().contains(QString::number(error)), qPrintable(texts.back()));
    }

    std::unique_ptr<Workshop> workshop_;
    std::unique_ptr<RecordingWord> word_;
};

int main(int argc, char** argv) {
    return tests::RunTests<LettersTest>(argc, argv);
}

#include "letters_test.moc"
