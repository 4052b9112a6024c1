// Each operation of GWORD on Word's double: the members it uses, in their order, its result, and what it does
// when Word fails.
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <vector>

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

#include <basic/conversion.h>
#include <basic/paths.h>
#include <forms/runtime.h>
#include <support/boxes.h>
#include <support/installation.h>
#include <word/gword.h>

#include "memory_rows.h"
#include "recording_word.h"

namespace quardele::tests {

namespace {

using automation::ObjectPtr;
using basic::RuntimeError;
using word::GWORD;
using Log = std::vector<std::string>;

constexpr char kPageView[] = "ActiveWindow.ActivePane.View.Type = 3";
constexpr char kSplitRead[] = "ActiveWindow.View.SplitSpecial";
constexpr char kStoryRead[] = "ActiveWindow.ActivePane.View.SeekView";

/// An operation with fixed arguments.
using Operation = std::function<bool(GWORD&, const ObjectPtr&)>;

struct Case {
    const char* name;
    Operation operation;
    Log log;
    bool result;
    /// The member that fails in the second part of the test, the result then, and the title of the box; a
    /// null title for a silent failure.
    const char* failingPath;
    bool resultOnFailure;
    const char16_t* boxTitle;
};

std::vector<Case> Cases() {
    return {
        {"W_FenAppAfficher",
         [](GWORD& w, auto& Word) { return w.W_FenAppAfficher(Word); },
         {"Visible = True"},
         true,
         "Visible",
         true,
         nullptr},
        {"W_FenAppRestauration",
         [](GWORD& w, auto& Word) { return w.W_FenAppRestauration(Word); },
         {"WindowState = 0"},
         false,
         "WindowState",
         false,
         nullptr},
        {"W_FenDocAgrandissement",
         [](GWORD& w, auto& Word) { return w.W_FenDocAgrandissement(Word, 1); },
         {"WindowState = 1"},
         true,
         "WindowState",
         true,
         nullptr},
        {"W_FenAppDeplacement",
         [](GWORD& w, auto& Word) { return w.W_FenAppDeplacement(Word, u"Microsoft Word", 0, 0); },
         {"Tasks(\"Microsoft Word\").Move(0, 0)"},
         false,
         "Tasks.Move",
         false,
         nullptr},
        {"W_FenAppDeplacement without tasks",
         [](GWORD& w, auto& Word) { return w.W_FenAppDeplacement(Word, u"Microsoft Word", 0, 0); },
         {"Tasks(\"Microsoft Word\").Move(0, 0)"},
         false,
         "Tasks",
         false,
         nullptr},
        {"W_FenAppDimension",
         [](GWORD& w, auto& Word) { return w.W_FenAppDimension(Word, u"Microsoft Word", 600, 450); },
         {"Tasks(\"Microsoft Word\").Resize(600, 450)"},
         false,
         "Tasks.Resize",
         false,
         nullptr},
        {"W_FichierEnregistrerSous",
         [](GWORD& w, auto& Word) { return w.W_FichierEnregistrerSous(Word, u"C:\\D\\X.RVE"); },
         {"ActiveDocument.SaveAs(FileName:=\"C:\\D\\X.RVE\")"},
         true,
         "ActiveDocument.SaveAs",
         true,
         nullptr},
        {"W_FichierEnregistrer",
         [](GWORD& w, auto& Word) { return w.W_FichierEnregistrer(Word, u"X.RVE"); },
         {"ActiveDocument.Save()"},
         true,
         "ActiveDocument.Save",
         true,
         u"Erreur Word (FichierEnregistrer)"},
        {"W_FinLigneTableau",
         [](GWORD& w, auto& Word) { return w.W_FinLigneTableau(Word); },
         {"ActiveDocument.Tables.Count", "Selection.EndKey(10, 0)"},
         false,
         "Selection.EndKey",
         false,
         nullptr},
        {"W_FinLigneTableau when the tables cannot be counted",
         [](GWORD& w, auto& Word) { return w.W_FinLigneTableau(Word); },
         {"ActiveDocument.Tables.Count", "Selection.EndKey(10, 0)"},
         false,
         "ActiveDocument.Tables",
         false,
         nullptr},
        {"W_Insertion",
         [](GWORD& w, auto& Word) { return w.W_Insertion(Word, u"Société Générale"); },
         {"Selection.TypeText(\"Société Générale\")"},
         true,
         "Selection.TypeText",
         true,
         u"Erreur Word (Insertion)"},
        {"W_AffichageEntete",
         [](GWORD& w, auto& Word) { return w.W_AffichageEntete(Word); },
         {kSplitRead, kPageView, kStoryRead},
         false,
         kStoryRead,
         false,
         u"Erreur Word (W_AffichageEntete)"},
        {"W_AffichageEntete with true",
         [](GWORD& w, auto& Word) { return w.W_AffichageEntete(Word, true); },
         {kSplitRead, kPageView, kStoryRead, "ActiveWindow.ActivePane.View.SeekView = 9"},
         false,
         kStoryRead,
         false,
         u"Erreur Word (W_AffichageEntete)"},
        {"W_AffichageEntete with false, in the main text",
         [](GWORD& w, auto& Word) { return w.W_AffichageEntete(Word, false); },
         {kSplitRead, kPageView, kStoryRead},
         false,
         kStoryRead,
         false,
         u"Erreur Word (W_AffichageEntete)"},
        {"W_AffichagePage",
         [](GWORD& w, auto& Word) {
             w.W_AffichagePage(Word);
             return false;
         },
         {kSplitRead, kPageView},
         false,
         kSplitRead,
         false,
         u"Erreur Word (AffichagePage)"},
        {"W_AffichageRegle",
         [](GWORD& w, auto& Word) { return w.W_AffichageRegle(Word); },
         {"ActiveWindow.DisplayRulers"},
         true,
         "ActiveWindow.DisplayRulers",
         false,
         u"Erreur Word (AffichageRegle)"},
        {"W_AffichageRegle with false",
         [](GWORD& w, auto& Word) { return w.W_AffichageRegle(Word, false); },
         {"ActiveWindow.DisplayRulers = False"},
         true,
         "ActiveWindow.DisplayRulers",
         false,
         u"Erreur Word (AffichageRegle)"},
        {"W_DebutDocument",
         [](GWORD& w, auto& Word) { return w.W_DebutDocument(Word); },
         {"Selection.HomeKey(6)"},
         false,
         "Selection.HomeKey",
         false,
         u"Erreur Word (DebutDocument)"},
        {"W_EditionAtteindre",
         [](GWORD& w, auto& Word) { return w.W_EditionAtteindre(Word, u"RS"); },
         {"ActiveDocument.Bookmarks(\"RS\").Select()", kSplitRead, kPageView},
         true,
         "ActiveDocument.Bookmarks.Select",
         false,
         nullptr},
        {"W_CelluleSuiv",
         [](GWORD& w, auto& Word) { return w.W_CelluleSuiv(Word); },
         {"Selection.MoveRight(12)"},
         true,
         "Selection.MoveRight",
         true,
         nullptr},
        {"W_SignetExistant",
         [](GWORD& w, auto& Word) { return w.W_SignetExistant(Word, u"RS"); },
         {"ActiveDocument.Bookmarks.Exists(\"RS\")"},
         true,
         "ActiveDocument.Bookmarks.Exists",
         false,
         u"Erreur Word (SignetExistant)"},
        {"W_Existe_Signet",
         [](GWORD& w, auto& Word) { return w.W_Existe_Signet(Word, u"RS"); },
         {"ActiveDocument.Bookmarks.Exists(\"RS\")", "ActiveDocument.Bookmarks(\"RS\").Select()", kSplitRead,
          kPageView},
         true,
         "ActiveDocument.Bookmarks.Exists",
         false,
         u"Erreur Word (SignetExistant)"},
        {"W_FichierNouveau",
         [](GWORD& w, auto& Word) { return w.W_FichierNouveau(Word); },
         {"Documents.Add()", "ActiveWindow.ActivePane.View.ShowAll"},
         true,
         "Documents.Add",
         false,
         u"Erreur Word (FichierNouveau)"},
    };
}

/// Values in one line, for comparison.
template <class Values>
std::string Written(const Values& values) {
    std::string line;
    for (const basic::Variant& value : values) {
        line += (line.empty() ? "" : " ") + basic::ToUtf8(basic::Joined(value));
    }
    return line;
}

/// The catalogue's table in memory. It answers every search alike, and writes down what was sought.
class CatalogueRows final : public forms::test::MemoryRows {
 public:
    explicit CatalogueRows(bool known)
        : MemoryRows({forms::test::FieldOfType(u"SIGNETS_Appli", dao::FieldType::Integer),
                      forms::test::TextField(u"SIGNETS_nomdot"),
                      forms::test::TextField(u"SIGNETS_nomsignet")}),
          known_(known) {}

    [[nodiscard]] bool NoMatch() const override { return !known_; }
    void Seek(basic::TextView comparison, std::initializer_list<basic::Variant> keys) override {
        sought.push_back(basic::ToUtf8(comparison) + " " + Written(keys));
    }

    Log sought;

 private:
    bool known_;
};

QString Text(const char16_t* text) {
    return QString::fromUtf16(text);
}

}  // namespace

class GwordTest : public QObject {
    Q_OBJECT

    std::optional<RecordingWord> word_;
    GWORD gword_{[] { return word::CatalogueKey{12, u"FRELANCES"}; }};
    ObjectPtr application_;

    /// Writes a bookmark into a catalogue whose table is `rows`.
    static void CatalogueWith(const std::shared_ptr<CatalogueRows>& rows, basic::TextView bookmark) {
        std::optional<GWORD> gword;
        // The key is asked for once the table is open: the moment to put another in its place.
        gword.emplace([&] {
            gword->SetTABLE_SIGNETS(rows);
            return word::CatalogueKey{12, u"FRELANCES"};
        });
        gword->Enreg_Signet(bookmark);
    }

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

    void UsesTheseMembersAndAnswers_data() {
        QTest::addColumn<int>("number");
        for (int number = 0; number < static_cast<int>(Cases().size()); ++number) {
            QTest::newRow(Cases()[static_cast<std::size_t>(number)].name) << number;
        }
    }
    void UsesTheseMembersAndAnswers() {
        QFETCH(int, number);
        const Case test = Cases()[static_cast<std::size_t>(number)];
        const support::BoxAnswerer boxes;
        QCOMPARE(test.operation(gword_, application_), test.result);
        QCOMPARE(word_->TakeLog(), test.log);
        QVERIFY(boxes.Shown().empty());
    }

    void FailsInItsOwnWay_data() { UsesTheseMembersAndAnswers_data(); }
    void FailsInItsOwnWay() {
        QFETCH(int, number);
        const Case test = Cases()[static_cast<std::size_t>(number)];
        word_->FailOn(test.failingPath, RuntimeError(4198, u"Échec de la commande."));
        const support::BoxAnswerer boxes;
        QCOMPARE(test.operation(gword_, application_), test.resultOnFailure);
        if (test.boxTitle == nullptr) {
            QVERIFY(boxes.Shown().empty());
        } else {
            QCOMPARE(boxes.Shown().size(), std::size_t{1});
            QCOMPARE(boxes.Shown()[0].title, Text(test.boxTitle));
            QCOMPARE(boxes.Shown()[0].text, QStringLiteral("Échec de la commande."));
            QCOMPARE(boxes.Shown()[0].button, QStringLiteral("OK"));
        }
    }

    void FailsInItsOwnWayWithoutAnApplication_data() { UsesTheseMembersAndAnswers_data(); }
    void FailsInItsOwnWayWithoutAnApplication() {
        QFETCH(int, number);
        const Case test = Cases()[static_cast<std::size_t>(number)];
        const support::BoxAnswerer boxes;
        QCOMPARE(test.operation(gword_, nullptr), test.resultOnFailure);
        QCOMPARE(word_->TakeLog(), Log{});
        for (const auto& box : boxes.Shown()) {
            QCOMPARE(box.text, QStringLiteral("Variable objet non définie"));
        }
        QCOMPARE(boxes.Shown().empty(), test.boxTitle == nullptr);
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

    void OpensTheCatalogueOnceAndItsTableEachTime() {
        const support::Installation installation;
        GWORD gword([] { return word::CatalogueKey{12, u"FRELANCES"}; });
        QVERIFY(gword.BASE_SIGNETS() == nullptr);
        gword.W_Existe_Signet(application_, u"RS");
        const auto base = gword.BASE_SIGNETS();
        const auto table = gword.TABLE_SIGNETS();
        QVERIFY(base != nullptr);
        QCOMPARE(table->Index(), basic::Text(u"PrimaryKey"));
        gword.W_Existe_Signet(application_, u"RS");
        QCOMPARE(gword.BASE_SIGNETS(), base);
        QVERIFY(gword.TABLE_SIGNETS() != table);
    }

    void LeavesTheCatalogueAloneWhenItsFileIsMissing() {
        const support::Installation installation;
        std::filesystem::remove(installation.File("SIGNETS.MDB"));
        int asked = 0;
        GWORD gword([&asked] {
            ++asked;
            return word::CatalogueKey{};
        });
        QVERIFY(gword.W_Existe_Signet(application_, u"RS"));
        QVERIFY(gword.BASE_SIGNETS() == nullptr);
        QCOMPARE(asked, 0);
    }

    void LooksTheBookmarkUpInTheCatalogueTwiceForOneTest() {
        const support::Installation installation;
        int asked = 0;
        GWORD gword([&asked] {
            ++asked;
            return word::CatalogueKey{12, u"FRELANCES"};
        });
        gword.W_Existe_Signet(application_, u"RS");
        QCOMPARE(asked, 2);
    }

    void WritesDownABookmarkThatTheCatalogueLacks() {
        const support::Installation installation;
        const auto rows = std::make_shared<CatalogueRows>(false);
        CatalogueWith(rows, u"RS");
        QCOMPARE(rows->sought, Log{"= 12 FRELANCES RS"});
        QCOMPARE(rows->calls, (Log{"addnew", "update"}));
        QCOMPARE(rows->RowCount(), std::size_t{1});
        QCOMPARE(Written(rows->Stored(0)), std::string("12 FRELANCES RS"));
    }

    void WritesNothingDownForABookmarkThatTheCatalogueHas() {
        const support::Installation installation;
        const auto rows = std::make_shared<CatalogueRows>(true);
        CatalogueWith(rows, u"RS");
        QCOMPARE(rows->sought, Log{"= 12 FRELANCES RS"});
        QCOMPARE(rows->calls, Log{});
    }

    void WritesEachBookmarkIntoTheCatalogueOnce() {
        const support::Installation installation;
        GWORD gword([] { return word::CatalogueKey{12, u"FRELANCES"}; });
        QVERIFY(gword.W_Existe_Signet(application_, u"RS"));
        QVERIFY(gword.W_Existe_Signet(application_, u"RS"));
        const auto table = gword.BASE_SIGNETS()->OpenRecordset(u"TSIGNETS");
        QCOMPARE(table->RecordCount(), std::size_t{1});
        const auto lines = support::Installation::ExportTable(installation.File("SIGNETS.MDB"), "TSIGNETS");
        if (!lines.empty()) {
            QCOMPARE(lines, (std::vector<std::string>{"SIGNETS_Appli,SIGNETS_nomdot,SIGNETS_nomsignet",
                                                      "12,\"FRELANCES\",\"RS\""}));
        }
    }

    void IsSilentWhileSomebodyKeepsTheCatalogueForHimself() {
        const support::Installation installation;
        const auto exclusive =
            dao::DBEngine::Instance().Workspaces(0).OpenDatabase(u"c:\\quardele\\SIGNETS.MDB", true);
        GWORD gword([] { return word::CatalogueKey{12, u"FRELANCES"}; });
        const support::BoxAnswerer boxes;
        QVERIFY(gword.W_Existe_Signet(application_, u"RS"));
        QVERIFY(boxes.Shown().empty());
        QVERIFY(gword.BASE_SIGNETS() == nullptr);
    }

    void IsSilentWhenTheCatalogueIsNoDatabase() {
        const support::Installation installation;
        std::ofstream(installation.File("SIGNETS.MDB"), std::ios::trunc) << "no database";
        GWORD gword([] { return word::CatalogueKey{12, u"FRELANCES"}; });
        const support::BoxAnswerer boxes;
        QVERIFY(gword.W_Existe_Signet(application_, u"RS"));
        QVERIFY(boxes.Shown().empty());
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
