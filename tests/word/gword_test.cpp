// What the table of operations does not tell: choices by what Word answers, files, and single failures.
#include <fstream>
#include <optional>
#include <vector>

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <basic/conversion.h>
#include <basic/paths.h>
#include <forms/msg_box.h>
#include <forms/runtime.h>
#include <support/boxes.h>
#include <word/gword.h>

#include "gword_cases.h"
#include "recording_word.h"

namespace quardele::word {

/// What only the class itself sees.
class GwordInside {
 public:
    static Text LitSignet(GWORD& gword, const ObjectPtr& Word, TextView bookmark) {
        return gword.W_LitSignet(Word, bookmark);
    }
    static const Text& ErrorTitle(const GWORD& gword) { return gword.errorTitle_; }
};

}  // namespace quardele::word

namespace quardele::tests {

namespace {

using automation::ObjectPtr;
using basic::RuntimeError;
using word::GWORD;
using Log = std::vector<std::string>;

}  // namespace

class GwordTest : public QObject {
    Q_OBJECT

    std::optional<RecordingWord> word_;
    GWORD gword_{[] { return word::CatalogueKey{}; }, forms::ShowBox};
    ObjectPtr application_;

    /// A new application with one document; the log starts behind that.
    void OpenDocument() {
        word_->bookmarks = {"RS"};
        application_ = word_->CreateObject(u"Word.Application");
        application_->Child(u"Documents")->Call(u"Add");
        word_->TakeLog();
    }

 private slots:
    void init() {
        word_.emplace();
        OpenDocument();
    }

    void CreatesAnApplication() {
        ObjectPtr created;
        QVERIFY(gword_.W_CreationObjet(created));
        QCOMPARE(word_->TakeLog(), Log{"CreateObject(\"Word.Application\")"});
        QVERIFY(created != nullptr);
    }

    void ShowsABoxAndLeavesTheApplicationUnsetWithoutWord() {
        word_->absent = true;
        const support::BoxAnswerer boxes;
        ObjectPtr created;
        QVERIFY(!gword_.W_CreationObjet(created));
        QCOMPARE(created, nullptr);
        QCOMPARE(boxes.Shown().size(), std::size_t{1});
        QCOMPARE(boxes.Shown()[0].title, QStringLiteral("Erreur Word (Creation_Objet)"));
        QCOMPARE(boxes.Shown()[0].text,
                 QString::fromStdU16String(basic::DescriptionOf(basic::error::kCannotCreateObject)));
    }

    void KnowsTheHeaderByTheStoryOfTheSelection_data() {
        QTest::addColumn<int>("story");
        QTest::addColumn<bool>("shown");
        for (const auto& [story, shown] :
             {std::pair{0, false}, {1, true}, {2, true}, {3, false}, {9, false}}) {
            QTest::addRow("story %d", story) << story << shown;
        }
    }
    void KnowsTheHeaderByTheStoryOfTheSelection() {
        QFETCH(int, story);
        QFETCH(bool, shown);
        word_->Answer(kStoryRead, story);
        QCOMPARE(gword_.W_AffichageEntete(application_), shown);
    }

    void LeavesTheHeaderForTheMainText() {
        word_->Answer(kStoryRead, 1);
        QVERIFY(!gword_.W_AffichageEntete(application_, false));
        QCOMPARE(word_->TakeLog().back(), std::string("ActiveWindow.ActivePane.View.SeekView = 0"));
    }

    void DoesNotOpenTheHeaderTwice() {
        word_->Answer(kStoryRead, 9);
        gword_.W_AffichageEntete(application_, true);
        QCOMPARE(word_->TakeLog(), (Log{kSplitRead, kPageView, kStoryRead}));
    }

    void TurnsAWholeSplitWindowToPages() {
        word_->Answer(kSplitRead, 7);
        gword_.W_AffichagePage(application_);
        QCOMPARE(word_->TakeLog(), (Log{kSplitRead, "ActiveWindow.View.Type = 3"}));
    }

    void LeavesTheSelectionWhenTheBookmarkIsMissing() {
        QVERIFY(!gword_.W_Existe_Signet(application_, u"ADR4"));
        QVERIFY(!gword_.W_Existe_Signet(application_, u""));
        QCOMPARE(word_->TakeLog(),
                 (Log{"ActiveDocument.Bookmarks.Exists(\"ADR4\")", "ActiveDocument.Bookmarks.Exists(\"\")"}));
    }

    void FindsTheBookmarkEvenWhenTheJumpFails() {
        word_->FailOn("ActiveDocument.Bookmarks.Select", RuntimeError(4198));
        QVERIFY(gword_.W_Existe_Signet(application_, u"RS"));
    }

    void DoesNothingAtTheEndOfARowWithoutTable() {
        word_->columns = 0;
        gword_.W_FinLigneTableau(application_);
        QCOMPARE(word_->TakeLog(), Log{"ActiveDocument.Tables.Count"});
    }

    void LetsAFailureOfTheTableTestThrough() {
        word_->FailOn("ActiveDocument.Tables", RuntimeError(4198));
        QVERIFY_EXCEPTION_THROWN(gword_.W_Existe_Tableau(application_), RuntimeError);
        QVERIFY_EXCEPTION_THROWN(gword_.W_Existe_Tableau(nullptr), RuntimeError);
    }

    void HidesTheMarksOfANewDocument() {
        word_->Answer("ActiveWindow.ActivePane.View.ShowAll", true);
        QVERIFY(gword_.W_FichierNouveau(application_));
        QCOMPARE(word_->TakeLog().back(), std::string("ActiveWindow.ActivePane.View.ShowAll = False"));
    }

    void TakesTheFirstExtensionThatExists_data() {
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QString>("taken");
        QTest::newRow("dotx alone") << QStringList{"M.dotx"} << "M.dotx";
        QTest::newRow("dotm before dotx") << QStringList{"M.dotx", "M.dotm"} << "M.dotm";
        QTest::newRow("dot before all") << QStringList{"M.dotx", "M.dotm", "M.dot"} << "M.dot";
    }
    void TakesTheFirstExtensionThatExists() {
        QFETCH(QStringList, files);
        QFETCH(QString, taken);
        const QTemporaryDir folder;
        for (const QString& file : files) {
            std::ofstream(folder.filePath(file).toStdString()) << "x";
        }
        const basic::Text path = basic::WindowsPath(folder.path().toStdString()) + u"\\M";
        QVERIFY(gword_.W_FichierNouveau(application_, path));
        const QString file = QString::fromStdU16String(path).chopped(1) + taken;
        QCOMPARE(word_->TakeLog().front(), "Documents.Add(Template:=\"" + file.toStdString() +
                                               "\", NewTemplate:=False, DocumentType:=0)");
    }

    void AddsNoDocumentWithoutTemplateFile() {
        const QTemporaryDir folder;
        const support::BoxAnswerer boxes;
        const auto path = basic::WindowsPath(folder.path().toStdString()) + u"\\M";
        QVERIFY(gword_.W_FichierNouveau(application_, path));
        QCOMPARE(word_->TakeLog(), Log{"ActiveWindow.ActivePane.View.ShowAll"});
        QVERIFY(boxes.Shown().empty());
    }

    void ShowsABoxWhenTheTemplateIsMissingAndNoDocumentIsOpen() {
        const QTemporaryDir folder;
        const support::BoxAnswerer boxes;
        const ObjectPtr empty = word_->CreateObject(u"Word.Application");
        const auto path = basic::WindowsPath(folder.path().toStdString()) + u"\\M";
        QVERIFY(!gword_.W_FichierNouveau(empty, path));
        QCOMPARE(boxes.Shown().size(), std::size_t{1});
        QCOMPARE(boxes.Shown()[0].text,
                 QStringLiteral("Cette commande n'est pas disponible car aucun document n'est ouvert."));
        QCOMPARE(boxes.Shown()[0].title, QStringLiteral("Erreur Word (FichierNouveau)"));
    }

    void TurnsToTheNotesByTheKindOfView_data() {
        QTest::addColumn<int>("view");
        QTest::addColumn<bool>("split");
        for (const auto& [view, split] :
             {std::pair{1, true}, {2, true}, {3, false}, {4, false}, {5, true}, {6, false}}) {
            QTest::addRow("view %d", view) << view << split;
        }
    }
    void TurnsToTheNotesByTheKindOfView() {
        QFETCH(int, view);
        QFETCH(bool, split);
        word_->Answer("ActiveWindow.ActivePane.View.Type", view);
        gword_.W_AffichageNotesBasPg(application_);
        QCOMPARE(word_->TakeLog().back(), std::string(split ? "ActiveWindow.View.SplitSpecial = 7"
                                                            : "ActiveWindow.View.SeekView = 7"));
    }

    void TogglesTheFooter_data() {
        QTest::addColumn<int>("story");
        QTest::addColumn<int>("next");
        for (const auto& [story, next] : {std::pair{0, 10}, {1, 10}, {4, 0}, {5, 0}, {9, 10}, {10, 0}}) {
            QTest::addRow("story %d", story) << story << next;
        }
    }
    void TogglesTheFooter() {
        QFETCH(int, story);
        QFETCH(int, next);
        word_->Answer(kStoryRead, story);
        QVERIFY(!gword_.W_AffichagePiedPage(application_));
        QCOMPARE(word_->TakeLog(), (Log{kSplitRead, kPageView, kStoryRead,
                                        std::string(kStoryRead) + " = " + std::to_string(next)}));
    }

    void AsksTheApplicationItselfToCloseInAnyModeButTwo_data() {
        QTest::addColumn<int>("mode");
        for (const int mode : {0, 1, 3, -1}) {
            QTest::addRow("mode %d", mode) << mode;
        }
    }
    void AsksTheApplicationItselfToCloseInAnyModeButTwo() {
        QFETCH(int, mode);
        const support::BoxAnswerer boxes;
        QVERIFY(!gword_.W_FichierFermer(application_, mode));
        QCOMPARE(word_->TakeLog(), Log{"Close(-1)"});
        // Word's application knows no such method.
        QCOMPARE(boxes.Shown().size(), std::size_t{1});
        QCOMPARE(boxes.Shown()[0].text, QStringLiteral("Evitez de fermer Word vous même avant de quitter"));
    }

    void ClosesTheDocumentWithoutSavingInModeTwo() {
        QVERIFY(!gword_.W_FichierFermer(application_, 2));
        QCOMPARE(word_->TakeLog(), Log{"ActiveDocument.Close(0)"});
    }

    void TakesADocumentThatCannotBeClosedForAnOperatorWhoDidIt() {
        word_->FailOn("ActiveDocument.Close", RuntimeError(4198));
        const support::BoxAnswerer boxes;
        QVERIFY(!gword_.W_FichierFermer(application_, 2));
        QCOMPARE(boxes.Shown().size(), std::size_t{1});
        QCOMPARE(boxes.Shown()[0].text, QStringLiteral("Evitez de fermer Word vous même avant de quitter"));
        QCOMPARE(boxes.Shown()[0].title, forms::App::Title());
    }

    void TellsWhetherADocumentHasChanges() {
        word_->Answer("ActiveDocument.Saved", false);
        QVERIFY(gword_.W_EstDocModifie(application_));
    }

    void SelectsTheTableOfTheSelection() {
        word_->columnOf = {{"DETAIL", 1}};
        gword_.W_EditionAtteindre(application_, u"DETAIL");
        word_->TakeLog();
        QVERIFY(gword_.W_TableauSelectionnerTableau(application_));
        QCOMPARE(word_->TakeLog(), (Log{"ActiveDocument.Tables.Count", "Selection.Tables(1).Select()"}));
    }

    void SelectsNoTableOutsideOfOneOrWithoutAny() {
        const support::BoxAnswerer boxes;
        QVERIFY(!gword_.W_TableauSelectionnerTableau(application_));
        word_->columns = 0;
        QVERIFY(!gword_.W_TableauSelectionnerTableau(application_));
        QVERIFY(boxes.Shown().empty());
    }

    void StaysWhereItIsWithoutATable() {
        word_->columns = 0;
        QVERIFY(gword_.W_FinColonneTableau(application_));
        QVERIFY(!gword_.W_DebutColonneTableau(application_));
        QVERIFY(!gword_.W_EditionAtteindreTableau(application_));
        QCOMPARE(word_->TakeLog(), Log(3, "ActiveDocument.Tables.Count"));
    }

    void FormatsOnlyWhatIsGiven() {
        word::CharacterFormat format;
        gword_.W_FormatCaracteres(application_, format);
        QCOMPARE(word_->TakeLog(), Log{});
        format.fill(basic::Variant(2));
        format[15] = u"Arial";
        format[16] = 1;
        gword_.W_FormatCaracteres(application_, format);
        QCOMPARE(word_->TakeLog(), (Log{"Selection.Font.Size = 2", "Selection.Font.Underline = False",
                                        "Selection.Font.Name = \"Arial\"", "Selection.Font.Bold = True"}));
    }

    void TheEmptyOperationsDoNothing() {
        QVERIFY(!gword_.W_PhraseDroite(application_, 1, 1));
        QCOMPARE(gword_.W_TABLEAU_NBCOL(application_, 1), 0);
        QVERIFY(!gword_.W_TABLEAU_ADDLIGNE(application_, 1));
        QVERIFY(!gword_.W_Signet_TrierPar_Pos(application_));
        QVERIFY(!gword_.W_Signet_TrierPar_Nom(application_));
        QVERIFY(!gword_.W_Signet_SUPPRIME(application_, u"RS"));
        QCOMPARE(word_->TakeLog(), Log{});
    }

    void SomeOperationsAreAnsweredByWordAlone() {
        QVERIFY(!gword_.W_AtteindreNoteBasPgSuiv(application_));
        QVERIFY(!gword_.W_DebutLigne(application_));
        QVERIFY(gword_.W_EditionSignet(application_, u"FIN"));
        QCOMPARE(basic::CLng(gword_.W_SelInfo(application_, 3)), 2);
        QCOMPARE(word_->TakeLog(),
                 (Log{"Selection.GoToNext(4)", "Selection.HomeKey(5, 0)",
                      "ActiveDocument.Bookmarks.Add(\"FIN\")", "Selection.Information(3)"}));
    }

    void TheirFailuresReachTheCaller() {
        const support::BoxAnswerer boxes;
        word_->FailOn("Selection", RuntimeError(4198));
        word_->FailOn("ActiveDocument", RuntimeError(4198));
        word_->FailOn(kStoryRead, RuntimeError(4198));
        QVERIFY_EXCEPTION_THROWN(gword_.W_AtteindreNoteBasPgSuiv(application_), RuntimeError);
        QVERIFY_EXCEPTION_THROWN(gword_.W_DebutLigne(application_), RuntimeError);
        QVERIFY_EXCEPTION_THROWN(gword_.W_EditionSignet(application_, u"FIN"), RuntimeError);
        QVERIFY_EXCEPTION_THROWN(gword_.W_SelInfo(application_, 3), RuntimeError);
        QVERIFY_EXCEPTION_THROWN(gword_.W_AffichagePiedPage(application_), RuntimeError);
        QVERIFY(boxes.Shown().empty());
    }

    void ChangesTheCurrentFolder() {
        const QTemporaryDir folder;
        const QString before = QDir::currentPath();
        QVERIFY(!gword_.W_ChDir(application_, basic::WindowsPath(folder.path().toStdString())));
        const QString after = QDir::currentPath();
        QDir::setCurrent(before);
        QCOMPARE(after, folder.path());
        QVERIFY_EXCEPTION_THROWN(gword_.W_ChDir(application_, u"C:\\NULLE PART"), RuntimeError);
        QCOMPARE(QDir::currentPath(), before);
    }

    void ReadsNoBookmarkForItsMemberIsMisspelt() {
        const support::BoxAnswerer boxes;
        QVERIFY(word::GwordInside::LitSignet(gword_, application_, u"RS").empty());
        QCOMPARE(word_->TakeLog(), Log{"ActiveDocument.Bookmark(\"RS\")"});
        QCOMPARE(boxes.Shown().size(), std::size_t{1});
        QCOMPARE(boxes.Shown()[0].title, QStringLiteral("Erreur Word (LitSignet)"));
        QCOMPARE(boxes.Shown()[0].text,
                 QString::fromStdU16String(basic::DescriptionOf(basic::error::kNoSuchMember)));
    }

    void KeepsTheTitleOfASilentFailure() {
        const support::BoxAnswerer boxes;
        word_->FailOn("ActiveWindow", RuntimeError(4198));
        gword_.W_AffichageNotesBasPg(application_);
        QCOMPARE(word::GwordInside::ErrorTitle(gword_), basic::Text(u"Erreur Word (AffichageNotesBasPg)"));
        gword_.W_AffichageEntetePiedPgPrec(application_);
        QCOMPARE(word::GwordInside::ErrorTitle(gword_),
                 basic::Text(u"Erreur Word (W_AffichageEntetePiedPgPrec)"));
        gword_.W_AffichageEntetePiedPgSuiv(application_);
        QCOMPARE(word::GwordInside::ErrorTitle(gword_),
                 basic::Text(u"Erreur Word (W_AffichageEntetePiedPgSuiv)"));
        QVERIFY(boxes.Shown().empty());
        gword_.W_AffichageEntete(application_);
        QCOMPARE(word::GwordInside::ErrorTitle(gword_), basic::Text(u"Erreur Word (W_AffichageEntete)"));
    }

    // Operations within operations.

    void TakesABookmarkForReachedWhenOnlyThePagesCannotBeShown() {
        word_->FailOn(kSplitRead, RuntimeError(4198));
        const support::BoxAnswerer boxes;
        QVERIFY(gword_.W_EditionAtteindre(application_, u"RS"));
        QCOMPARE(boxes.Shown().size(), std::size_t{1});
        QCOMPARE(boxes.Shown()[0].title, QStringLiteral("Erreur Word (AffichagePage)"));
    }

    void TurnsToTheFooterAlthoughThePagesCannotBeShown() {
        word_->FailOn(kSplitRead, RuntimeError(4198));
        const support::BoxAnswerer boxes;
        QVERIFY(!gword_.W_AffichagePiedPage(application_));
        QCOMPARE(boxes.Shown().size(), std::size_t{1});
        QCOMPARE(boxes.Shown()[0].title, QStringLiteral("Erreur Word (AffichagePage)"));
        QCOMPARE(word_->TakeLog(), (Log{kSplitRead, kStoryRead, std::string(kStoryRead) + " = 10"}));
    }

    void IsSilentWhenTheColumnsCannotBeFitted() {
        word_->FailOn("Selection.Cells.AutoFit", RuntimeError(4198));
        const support::BoxAnswerer boxes;
        QVERIFY(!gword_.W_TableauLargeurColonne(application_));
        QCOMPARE(word_->TakeLog(), (Log{"Selection.Cells.HeightRule = 0", "Selection.Cells.AutoFit()"}));
        QVERIFY(boxes.Shown().empty());
    }

    void ShowsABoxWhenTheMarksOfANewDocumentCannotBeHidden() {
        word_->Answer("ActiveWindow.ActivePane.View.ShowAll", true);
        word_->FailOnWrite("ActiveWindow.ActivePane.View.ShowAll", RuntimeError(4198));
        const support::BoxAnswerer boxes;
        QVERIFY(!gword_.W_FichierNouveau(application_));
        QCOMPARE(boxes.Shown().size(), std::size_t{1});
        QCOMPARE(boxes.Shown()[0].title, QStringLiteral("Erreur Word (FichierNouveau)"));
    }

    void KnowsWhetherTheDocumentHasATable() {
        QVERIFY(gword_.W_Existe_Tableau(application_));
        word_->columns = 0;
        QVERIFY(!gword_.W_Existe_Tableau(application_));
    }

    void ShowsABoxForATextThatIsNull_data() {
        QTest::addColumn<bool>("old");
        QTest::newRow("LitTexte") << false;
        QTest::newRow("LitTexte_OLD") << true;
    }
    void ShowsABoxForATextThatIsNull() {
        QFETCH(bool, old);
        word_->Answer("Selection.Range.Text", basic::Variant(basic::Null{}));
        word_->Answer("ActiveDocument.Range.Text", basic::Variant(basic::Null{}));
        const support::BoxAnswerer boxes;
        QVERIFY((old ? gword_.W_LitTexte_OLD(application_, 0, 1) : gword_.W_LitTexte(application_, 0, 1))
                    .empty());
        QCOMPARE(boxes.Shown().size(), std::size_t{1});
        QCOMPARE(boxes.Shown()[0].title, QStringLiteral("Erreur Word (LitTexte)"));
        QCOMPARE(boxes.Shown()[0].text,
                 QString::fromStdU16String(basic::DescriptionOf(basic::error::kInvalidNull)));
    }
};

}  // namespace quardele::tests

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    quardele::forms::SetUpApplication(*qApp);
    quardele::tests::GwordTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "gword_test.moc"
