// Word's members as LibreOffice Writer answers them.
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <automation/object.h>
#include <basic/conversion.h>

#include "writer_fixture.h"

namespace quardele::tests {

namespace {

namespace fs = std::filesystem;
using automation::Object;
using automation::ObjectPtr;
using automation::Value;
using basic::RuntimeError;
using basic::Text;
using basic::TextView;

constexpr int kRow = 10;
constexpr int kColumn = 9;
constexpr int kCell = 12;
constexpr int kStory = 6;

template <class Action>
int NumberOf(const Action& action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        return error.Number();
    }
    return 0;
}

TEST_F(Writer, KnowsItsMembersInAnyCaseAndNoOthers) {
    New("full.dot");
    EXPECT_EQ(Number(*word_->Child(u"DOCUMENTS"), u"count"), 1);
    EXPECT_EQ(NumberOf([&] { word_->Get(u"Documentz"); }), 438);
    EXPECT_EQ(NumberOf([&] { word_->Call(u"Close", {-1}); }), 438);
    EXPECT_EQ(NumberOf([&] { Selection()->Set(u"Nothing", 1); }), 438);
    EXPECT_EQ(NumberOf([&] { Selection()->Set(u"Text", 1); }), 383);
}

TEST_F(Writer, HasNoActiveDocumentAtFirst) {
    for (const TextView member : {u"ActiveDocument", u"ActiveWindow", u"Selection"}) {
        EXPECT_EQ(NumberOf([&] { word_->Get(member); }), 4248) << basic::ToUtf8(member);
    }
    EXPECT_EQ(Number(*word_->Child(u"Documents"), u"Count"), 0);
}

TEST_F(Writer, AddsABlankDocumentWithoutTemplate) {
    word_->Child(u"Documents")->Call(u"Add");
    EXPECT_EQ(Number(*Document()->Child(u"Bookmarks"), u"Count"), 0);
    EXPECT_EQ(Number(*Document()->Child(u"Tables"), u"Count"), 0);
}

TEST_F(Writer, AddsDocumentsFromBothFormatsUnderOneExtension) {
    for (const char* file : {"full.dot", "full-2007.dot"}) {
        New(file);
        EXPECT_EQ(Number(*Document()->Child(u"Bookmarks"), u"Count"), 18) << file;
    }
    EXPECT_EQ(Number(*word_->Child(u"Documents"), u"Count"), 2);
}

TEST_F(Writer, RefusesATemplateThatIsMissingOrUnreadable) {
    EXPECT_EQ(NumberOf([&] { NewFrom(session_->WindowsFile("none.dot")); }), 5174);
    EXPECT_EQ(NumberOf([&] { NewFrom(u"Q:\\none.dot"); }), 76);
    std::ofstream(session_->File("broken.dot"), std::ios::binary) << "PK\3\4 and nothing more";
    EXPECT_EQ(NumberOf([&] { NewFrom(session_->WindowsFile("broken.dot")); }), 5174);
    EXPECT_EQ(Number(*word_->Child(u"Documents"), u"Count"), 0);
}

TEST_F(Writer, FindsBookmarksInAnyCase) {
    New("full.dot");
    const ObjectPtr bookmarks = Document()->Child(u"Bookmarks");
    EXPECT_EQ(bookmarks->Call(u"Exists", {u"IMMAT"}), Value(true));
    EXPECT_EQ(bookmarks->Call(u"Exists", {u"immat"}), Value(true));
    EXPECT_EQ(bookmarks->Call(u"Exists", {u"IMMA"}), Value(false));
    EXPECT_EQ(bookmarks->Call(u"Exists", {u""}), Value(false));
    EXPECT_EQ(NumberOf([&] { Select(u"IMMA"); }), 5941);
}

TEST_F(Writer, SelectsABookmarkInTheHeaderAndInACell) {
    New("full.dot");
    Select(u"RS");
    EXPECT_EQ(Selected(), "société");
    Select(u"DERNVIS");
    EXPECT_EQ(Selected(), "Dernière visite");
    Select(u"rs");
    EXPECT_EQ(Selected(), "société");
}

TEST_F(Writer, TypesOverTheSelectionAndKeepsTheBookmarkAroundTheText) {
    for (const char* file : {"full.dot", "full-2007.dot"}) {
        New(file);
        Select(u"RS");
        Type(u"Garage Élan & Fils – 1 000 €");
        EXPECT_EQ(At(u"RS"), "Garage Élan & Fils – 1 000 €") << file;
        Select(u"TYPTRAV");
        Type(u"Vidange");
        EXPECT_EQ(At(u"TYPTRAV"), "Vidange") << file;
    }
}

TEST_F(Writer, TypesBehindWhatItTypedBefore) {
    New("full.dot");
    Select(u"RS");
    Type(u"Garage");
    Type(u" Élan");
    Selection()->Call(u"HomeKey", {5, 1});
    EXPECT_EQ(Selected(), "Société : Garage Élan");
}

TEST_F(Writer, EmptiesTheSelectionByTypingNothing) {
    New("full.dot");
    Select(u"TEL");
    Type(u"");
    EXPECT_EQ(At(u"TEL"), "");
    EXPECT_EQ(Document()->Child(u"Bookmarks")->Call(u"Exists", {u"TEL"}), Value(true));
}

TEST_F(Writer, StartsOneParagraphForEachLineEnd) {
    New("full.dot");
    Select(u"IMMAT");
    Type(u"a\r\nb\nc\rd");
    MoveRight(kCell);
    Selection()->Call(u"MoveLeft", {kCell});
    EXPECT_EQ(Selected(), "a\rb\rc\rd");
}

TEST_F(Writer, RefusesToTypeNull) {
    New("full.dot");
    EXPECT_EQ(NumberOf([&] { Selection()->Call(u"TypeText", {basic::Variant(basic::Null{})}); }), 94);
    EXPECT_EQ(NumberOf([&] { Selection()->Call(u"TypeText"); }), 449);
}

TEST_F(Writer, MovesABookmarkThatIsAddedAgain) {
    New("full.dot");
    Select(u"MARQUE");
    Document()->Child(u"Bookmarks")->Call(u"Add", {u"IMMAT"});
    EXPECT_EQ(At(u"IMMAT"), "Marque");
    EXPECT_EQ(Number(*Document()->Child(u"Bookmarks"), u"Count"), 18);
}

TEST_F(Writer, GoesToTheHeaderAndBackToWhereTheBodyWasLeft) {
    New("full.dot");
    Select(u"MARQUE");
    EXPECT_EQ(Number(*View(), u"SeekView"), 0);
    View()->Set(u"SeekView", 9);
    EXPECT_EQ(Number(*View(), u"SeekView"), 1);
    Selection()->Call(u"EndKey", {5, 1});
    EXPECT_EQ(Selected(), "Code : code");
    View()->Set(u"SeekView", 0);
    EXPECT_EQ(Number(*View(), u"SeekView"), 0);
    EXPECT_EQ(Selected(), "Marque");
}

TEST_F(Writer, KnowsTheStoryAfterAJumpToABookmark) {
    New("full.dot");
    View()->Set(u"SeekView", 9);
    Select(u"IMMAT");
    EXPECT_EQ(Number(*View(), u"SeekView"), 0);
    Select(u"FAX");
    EXPECT_EQ(Number(*View(), u"SeekView"), 1);
}

TEST_F(Writer, GoesToTheHeaderOfTheFirstPageWhenItHasItsOwn) {
    NewFrom(DemoTemplate("RELVEH2.dot"));
    View()->Set(u"SeekView", 9);
    // Writer gives that page a style of its own, with one header.
    EXPECT_EQ(Number(*View(), u"SeekView"), 1);
    Selection()->Call(u"EndKey", {kStory, 1});
    EXPECT_THAT(Selected(), testing::HasSubstr("Nantes, le"));
}

TEST_F(Writer, SwitchesAHeaderOnThatThePageLacks) {
    New("no_bookmarks.dot");
    View()->Set(u"SeekView", 9);
    EXPECT_EQ(Number(*View(), u"SeekView"), 1);
    Type(u"En-tête");
    View()->Set(u"SeekView", 10);
    EXPECT_EQ(Number(*View(), u"SeekView"), 4);
    EXPECT_EQ(NumberOf([&] { View()->Set(u"SeekView", 77); }), 4120);
}

TEST_F(Writer, GoesToTheStartAndEndOfTheStoryItStandsIn) {
    New("full.dot");
    Selection()->Call(u"EndKey", {kStory});
    Selection()->Call(u"HomeKey", {5, 1});
    EXPECT_EQ(Selected(), "Salutations.");
    Selection()->Call(u"HomeKey", {kStory});
    Selection()->Call(u"EndKey", {5, 1});
    EXPECT_EQ(Selected(), "Madame, Monsieur,");
    Select(u"FAX");
    Selection()->Call(u"HomeKey", {kStory});
    Selection()->Call(u"EndKey", {5, 1});
    EXPECT_EQ(Selected(), "Code : code");
}

TEST_F(Writer, CountsTheTablesOfTheBodyOnly) {
    New("full.dot");
    EXPECT_EQ(Number(*Document()->Child(u"Tables"), u"Count"), 2);
    NewFrom(DemoTemplate("RELVEH.dot"));
    EXPECT_EQ(Number(*Document()->Child(u"Tables"), u"Count"), 1);
    New("no_table.dot");
    EXPECT_EQ(Number(*Document()->Child(u"Tables"), u"Count"), 0);
}

// Word does not.
TEST_F(Writer, CountsTablesWithinTables) {
    New("footnotes.fodt");
    EXPECT_EQ(Number(*Document()->Child(u"Tables"), u"Count"), 2);
}

TEST_F(Writer, OrdersTheTablesAsTheTextDoes) {
    New("full.dot");
    EXPECT_EQ(Number(*Document()->Child(u"Tables", {1})->Child(u"Columns"), u"Count"), 2);
    EXPECT_EQ(Number(*Document()->Child(u"Tables", {2})->Child(u"Columns"), u"Count"), 6);
    EXPECT_EQ(NumberOf([&] { (void)Document()->Child(u"Tables", {3}); }), 5941);
}

TEST_F(Writer, KnowsTheTableAndColumnOfTheSelection) {
    for (const char* file : {"full.dot", "full-2007.dot", "merged_title.dot", "merged_title-2007.dot"}) {
        New(file);
        Select(u"TYPTRAV");
        EXPECT_EQ(Column(), 3) << file;
        EXPECT_EQ(Number(*Selection()->Child(u"Tables", {1})->Child(u"Columns"), u"Count"), 6) << file;
    }
}

TEST_F(Writer, HasNoTableOutsideTables) {
    New("no_table.dot");
    Select(u"IMMAT");
    EXPECT_EQ(NumberOf([&] { (void)Selection()->Child(u"Tables", {1}); }), 5941);
    EXPECT_EQ(NumberOf([&] { (void)Selection()->Child(u"Columns", {1}); }), 4605);
    EXPECT_EQ(NumberOf([&] { MoveRight(kCell); }), 4605);
    EXPECT_EQ(NumberOf([&] { Selection()->Call(u"EndKey", {kRow, 0}); }), 4605);
}

TEST_F(Writer, WalksAlongRowsAndColumns) {
    New("full.dot");
    Select(u"MARQUE");
    Selection()->Call(u"EndKey", {kRow, 0});
    EXPECT_EQ(Column(), 6);
    Selection()->Call(u"HomeKey", {kRow, 0});
    EXPECT_EQ(Column(), 1);
    MoveRight(kCell, 2);
    EXPECT_EQ(Selected(), "Travaux");
    Selection()->Call(u"MoveLeft", {kCell});
    EXPECT_EQ(Selected(), "Marque");
    Selection()->Call(u"MoveLeft", {kCell, 5});
    EXPECT_EQ(Selected(), "Immatriculation");
}

TEST_F(Writer, AddsARowBehindTheLastCell) {
    for (const char* file : {"full.dot", "full-2007.dot", "merged_title.dot", "merged_title-2007.dot"}) {
        New(file);
        Select(u"IMMAT");
        Selection()->Call(u"EndKey", {kRow, 0});
        MoveRight(kCell);
        EXPECT_EQ(Selected(), "") << file;
        EXPECT_EQ(Column(), 1) << file;
        Type(u"AB-123-CD");
        Selection()->Call(u"EndKey", {kColumn, 0});
        EXPECT_EQ(Column(), 1) << file;
        Selection()->Call(u"HomeKey", {5, 1});
        EXPECT_EQ(Selected(), "AB-123-CD") << file;
        Selection()->Call(u"HomeKey", {kColumn, 0});
        EXPECT_EQ(At(u"IMMAT"), "Immatriculation") << file;
    }
}

TEST_F(Writer, RefusesUnitsThatItDoesNotKnow) {
    New("full.dot");
    EXPECT_EQ(NumberOf([&] { Selection()->Call(u"EndKey", {77}); }), 4120);
    EXPECT_EQ(NumberOf([&] { Selection()->Call(u"HomeKey", {77}); }), 4120);
    EXPECT_EQ(NumberOf([&] { MoveRight(77); }), 4120);
    EXPECT_EQ(NumberOf([&] { Selection()->Call(u"MoveLeft", {77}); }), 4120);
}

TEST_F(Writer, MovesByCharacters) {
    New("full.dot");
    Selection()->Call(u"HomeKey", {kStory});
    Selection()->Call(u"MoveRight", {1, 6, 1});
    EXPECT_EQ(Selected(), "Madame");
    Selection()->Call(u"MoveLeft", {1, 2, 1});
    EXPECT_EQ(Selected(), "Mada");
}

TEST_F(Writer, MovesByAnyNumberOfCharactersAsFarAsTheTextGoes) {
    New("no_table.dot");
    Selection()->Call(u"EndKey", {kStory});
    const Value end = Selection()->Child(u"Range")->Get(u"End");
    Selection()->Call(u"HomeKey", {kStory});
    Selection()->Call(u"MoveRight", {1, 65539});
    EXPECT_EQ(Selection()->Child(u"Range")->Get(u"Start"), end);
    Selection()->Call(u"MoveLeft", {1, 65538});
    EXPECT_EQ(Selection()->Child(u"Range")->Get(u"Start"), Value(0));
    EXPECT_EQ(NumberOf([&] { MoveRight(1, -1); }), 4120);
}

TEST_F(Writer, StaysInTheBodyWhenItIsThereAlready) {
    New("full.dot");
    Select(u"MARQUE");
    View()->Set(u"SeekView", 9);
    Select(u"IMMAT");
    View()->Set(u"SeekView", 0);
    EXPECT_EQ(Selected(), "Immatriculation");
}

TEST_F(Writer, SavesInTodaysFormatWhateverTheExtension) {
    New("full.dot");
    SaveAs(session_->WindowsFile("LETTRE.RVE"));
    std::ifstream saved(session_->File("LETTRE.RVE"), std::ios::binary);
    std::string start(2, ' ');
    saved.read(start.data(), 2);
    EXPECT_EQ(start, "PK");
    EXPECT_EQ(Document()->Get(u"Saved"), Value(true));
}

TEST_F(Writer, KnowsWhetherTheDocumentIsSaved) {
    New("full.dot");
    SaveAs(session_->WindowsFile("ETAT.RVE"));
    Type(u"x");
    EXPECT_EQ(Document()->Get(u"Saved"), Value(false));
    Document()->Call(u"Save");
    EXPECT_EQ(Document()->Get(u"Saved"), Value(true));
    Document()->Set(u"Saved", false);
    EXPECT_EQ(Document()->Get(u"Saved"), Value(false));
}

TEST_F(Writer, RefusesToSaveWhereItCannot) {
    New("full.dot");
    EXPECT_EQ(NumberOf([&] { SaveAs(session_->WindowsFile("missing") + u"\\X.RVE"); }), 5152);
    EXPECT_FALSE(fs::exists(session_->File("missing")));
    fs::create_directory(session_->File("FOLDER.RVE"));
    EXPECT_EQ(NumberOf([&] { SaveAs(session_->WindowsFile("FOLDER.RVE")); }), 5152);
    EXPECT_EQ(NumberOf([&] { SaveAs(u"Q:\\X.RVE"); }), 76);
    EXPECT_EQ(NumberOf([&] { Document()->Call(u"Save"); }), 4198);
}

TEST_F(Writer, RefusesToSaveInAFolderThatMayNotBeWritten) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "the administrator may write anywhere";
    }
    New("full.dot");
    fs::create_directory(session_->File("closed"));
    fs::permissions(session_->File("closed"), fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_EQ(NumberOf([&] { SaveAs(session_->WindowsFile("closed") + u"\\X.RVE"); }), 5152);
}

TEST_F(Writer, TellsASaveThatTheSystemRefuses) {
    New("full.dot");
    // Not even the administrator makes a file there.
    fs::create_directory_symlink("/proc", session_->File("closed"));
    EXPECT_NE(NumberOf([&] { SaveAs(session_->WindowsFile("closed") + u"\\X.RVE"); }), 0);
    EXPECT_FALSE(fs::exists(session_->File("closed") / "X.RVE"));
}

TEST_F(Writer, MarksTheFileAsOpenUntilTheDocumentIsClosed) {
    New("full.dot");
    SaveAs(session_->WindowsFile("OUVERT.RVE"));
    EXPECT_TRUE(fs::exists(session_->File(".~lock.OUVERT.RVE#")));
    Document()->Call(u"Close", {0});
    EXPECT_FALSE(fs::exists(session_->File(".~lock.OUVERT.RVE#")));
}

TEST_F(Writer, ReopensWhatItSavedWithAllBookmarks) {
    New("full.dot");
    Select(u"RS");
    Type(u"Élan");
    SaveAs(session_->WindowsFile("REPRISE.RVE"));
    Document()->Call(u"Close", {0});
    word_->Child(u"Documents")->Call(u"Open", {session_->WindowsFile("REPRISE.RVE")});
    EXPECT_EQ(Number(*Document()->Child(u"Bookmarks"), u"Count"), 18);
    EXPECT_EQ(At(u"RS"), "Élan");
}

TEST_F(Writer, ShowsAFileThatIsOpenAlready) {
    New("full.dot");
    SaveAs(session_->WindowsFile("UNE.RVE"));
    Select(u"RS");
    Type(u"pas encore enregistré");
    New("no_table.dot");
    word_->Child(u"Documents")->Call(u"Open", {session_->WindowsFile("UNE.RVE")});
    EXPECT_EQ(Number(*word_->Child(u"Documents"), u"Count"), 2);
    EXPECT_EQ(At(u"RS"), "pas encore enregistré");
}

TEST_F(Writer, ClosesWithAndWithoutSaving) {
    New("full.dot");
    SaveAs(session_->WindowsFile("FERME.RVE"));
    Select(u"RS");
    Type(u"perdu");
    Document()->Call(u"Close", {0});
    word_->Child(u"Documents")->Call(u"Open", {session_->WindowsFile("FERME.RVE")});
    EXPECT_EQ(At(u"RS"), "société");
    Select(u"RS");
    Type(u"gardé");
    Document()->Call(u"Close", {-1});
    word_->Child(u"Documents")->Call(u"Open", {session_->WindowsFile("FERME.RVE")});
    EXPECT_EQ(At(u"RS"), "gardé");
}

TEST_F(Writer, KeepsTheDocumentsOfTwoApplicationsApart) {
    New("full.dot");
    const ObjectPtr other = Create();
    EXPECT_EQ(Number(*other->Child(u"Documents"), u"Count"), 0);
    other->Child(u"Documents")->CallNamed(u"Add", {{u"Template", TestTemplate("no_table.dot")}});
    EXPECT_EQ(Number(*Document()->Child(u"Tables"), u"Count"), 2);
    EXPECT_EQ(Number(*other->Child(u"ActiveDocument")->Child(u"Tables"), u"Count"), 0);
    other->Call(u"Quit");
    EXPECT_EQ(NumberOf([&] { other->Get(u"Documents"); }), 462);
    EXPECT_EQ(Number(*Document()->Child(u"Tables"), u"Count"), 2);
}

TEST_F(Writer, SaysThatAClosedDocumentIsGone) {
    New("full.dot");
    const ObjectPtr document = Document();
    const ObjectPtr bookmarks = document->Child(u"Bookmarks");
    document->Call(u"Close", {0});
    EXPECT_EQ(NumberOf([&] { document->Call(u"Save"); }), 5825);
    EXPECT_EQ(NumberOf([&] { bookmarks->Call(u"Exists", {u"RS"}); }), 5825);
    EXPECT_EQ(NumberOf([&] { (void)Document(); }), 4248);
    EXPECT_EQ(Number(*word_->Child(u"Documents"), u"Count"), 0);
}

TEST_F(Writer, ShowsAndHidesRulersAndMarks) {
    New("full.dot");
    const ObjectPtr window = word_->Child(u"ActiveWindow");
    for (const bool shown : {false, true, false}) {
        window->Set(u"DisplayRulers", shown);
        EXPECT_EQ(window->Get(u"DisplayRulers"), Value(shown));
        View()->Set(u"ShowAll", shown);
        EXPECT_EQ(View()->Get(u"ShowAll"), Value(shown));
    }
}

TEST_F(Writer, RemembersTheKindOfView) {
    New("full.dot");
    EXPECT_EQ(Number(*View(), u"Type"), 3);
    for (const int type : {1, 6, 3}) {
        View()->Set(u"Type", type);
        EXPECT_EQ(Number(*View(), u"Type"), type);
    }
    EXPECT_EQ(Number(*View(), u"SplitSpecial"), 0);
    View()->Set(u"SplitSpecial", 7);
    EXPECT_EQ(Number(*word_->Child(u"ActiveWindow")->Child(u"View"), u"SplitSpecial"), 7);
}

TEST_F(Writer, TakesWindowOrdersBeforeThereIsAWindow) {
    word_->Set(u"Visible", true);
    EXPECT_EQ(word_->Get(u"Visible"), Value(true));
    word_->Set(u"WindowState", 0);
    word_->Child(u"Tasks", {u"Microsoft Word"})->Call(u"Move", {0, 0});
    word_->Child(u"Tasks", {u"microsoft word"})->Call(u"Resize", {600, 450});
    word_->Call(u"Activate");
    New("full.dot");
    word_->Set(u"WindowState", 1);
    EXPECT_EQ(Number(*word_, u"WindowState"), 1);
    EXPECT_EQ(NumberOf([&] { word_->Set(u"WindowState", 3); }), 4120);
    EXPECT_EQ(NumberOf([&] { (void)word_->Child(u"Tasks", {u"Bloc-notes"}); }), 5941);
}

/// Its office dies in each case, so that each has one of its own.
class WriterDies : public testing::Test {
 protected:
    void SetUp() override {
        if (!OfficeSession::IsAvailable()) {
            GTEST_SKIP() << "LibreOffice or the bridge to it is missing";
        }
    }
    static ObjectPtr Letter() {
        ObjectPtr word = automation::SessionFactory().CreateObject(u"Word.Application");
        word->Child(u"Documents")->CallNamed(u"Add", {{u"Template", TestTemplate("full.dot")}});
        return word;
    }

    OfficeSession session_;
};

TEST_F(WriterDies, AllCallsSayThatTheServerIsGone) {
    const ObjectPtr word = Letter();
    const ObjectPtr selection = word->Child(u"Selection");
    session_.Kill();
    EXPECT_EQ(NumberOf([&] { selection->Call(u"TypeText", {u"x"}); }), 462);
    EXPECT_EQ(NumberOf([&] { word->Child(u"ActiveDocument")->Call(u"Save"); }), 462);
    EXPECT_EQ(NumberOf([&] { word->Child(u"Documents")->Call(u"Add"); }), 462);
    EXPECT_EQ(NumberOf([&] { (void)word->Child(u"ActiveDocument")->Child(u"Tables"); }), 462);
}

TEST_F(WriterDies, TheNextApplicationStartsANewOffice) {
    const ObjectPtr dead = Letter();
    session_.Kill();
    const ObjectPtr word = Letter();
    EXPECT_EQ(word->Child(u"Documents")->Get(u"Count"), Value(1));
    EXPECT_EQ(NumberOf([&] { dead->Child(u"Documents")->Call(u"Add"); }), 462);
}

TEST_F(WriterDies, ALockOfSomebodyElseStays) {
    const ObjectPtr word = Letter();
    word->Child(u"ActiveDocument")->CallNamed(u"SaveAs", {{u"FileName", session_.WindowsFile("AUTRE.RVE")}});
    session_.Kill();
    std::ofstream(session_.File(".~lock.AUTRE.RVE#"))
        << ",Collègue,poste2,21.11.2026 09:00,file:///home/collegue;";
    EXPECT_EQ(NumberOf([&] { word->Child(u"ActiveDocument")->Call(u"Save"); }), 462);
    EXPECT_TRUE(fs::exists(session_.File(".~lock.AUTRE.RVE#")));
}

TEST_F(WriterDies, WhatWasSavedStaysAndIsNotTakenForOpen) {
    const ObjectPtr word = Letter();
    word->Child(u"ActiveDocument")->CallNamed(u"SaveAs", {{u"FileName", session_.WindowsFile("SAUVE.RVE")}});
    session_.Kill();
    EXPECT_TRUE(fs::exists(session_.File(".~lock.SAUVE.RVE#")));
    EXPECT_EQ(NumberOf([&] { word->Child(u"ActiveDocument")->Call(u"Save"); }), 462);
    EXPECT_FALSE(fs::exists(session_.File(".~lock.SAUVE.RVE#")));
    EXPECT_TRUE(fs::exists(session_.File("SAUVE.RVE")));
}

}  // namespace

}  // namespace quardele::tests
