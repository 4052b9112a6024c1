// Which texts of the tools pass through the translation and which do not, with the switch raised as in a
// translated edition.
#include <functional>

#include <forms/strings.h>

#include "list_program.h"

using namespace quardele;
using namespace quardele::tests;

namespace {

enum Comparison { StartsWith, Equal, Different, Greater, Less, Contains };

constexpr int kMake = 2;
constexpr int kDate = 5;
constexpr int kNumber = 6;

/// The quote that it holds ends a condition's text.
const QString kQuote = QStringLiteral("L'OREE");

using Action = std::function<void()>;

void SortOnNoField() {
    ReplaceColumn(*Vehicles().grid, kMake, QStringLiteral("Absente|TVEH_ABSENTE|8|text|locked"));
    GoToColumn(*Vehicles().grid, kMake);
    QVERIFY(InDialog([] { PressTool(Vehicles(), kSortTool); }, [] { Click(SortDialog().Cmd_GoClasser); }));
}

void SearchForAQuote() {
    QVERIFY(InDialog([] { listtools::GridToolAction(kSearchTool, *Vehicles().grid, Vehicles().data); },
                     [] { SearchFor(kQuote); }));
}

}  // namespace

class TranslatedToolsTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void init();
    void cleanup() { program_.reset(); }

    void TheCaptionsOfSelectionAndSortAreSetBeforeTheFormIsTranslated();
    void TheCaptionOfTheSearchIsSetBehindTheTranslationOfTheForm();
    void ATranslatedFormStartsItsSearchAsTheFrenchOne();
    void TheRefusalOfAColumnIsTranslated();
    void TheBoxesOfTheExportAreTranslatedButForTheNames();
    void TheMessagesOfTheSelectionAreTranslated();
    void OnlyTheEndOfAConversionFailureIsTranslated();
    void FailuresOfTheToolsAreNotTranslated_data();
    void FailuresOfTheToolsAreNotTranslated();
    void TheMessagesOfTheSearchAreTranslated_data();
    void TheMessagesOfTheSearchAreTranslated();

 private:
    std::unique_ptr<ListProgram> program_;
};

void TranslatedToolsTest::init() {
    program_ = std::make_unique<ListProgram>();
    program_->OpenList();
    GoToColumn(*Vehicles().grid, kMake);
}

void TranslatedToolsTest::TheCaptionsOfSelectionAndSortAreSetBeforeTheFormIsTranslated() {
    support::RaiseTranslation({{u"Sélection sur [Marque]", u"Filter 1"},
                               {u"Filter 1", u"Filter 2"},
                               {u"Classer sur [Marque]", u"Sort 1"},
                               {u"Sort 1", u"Sort 2"}});
    QVERIFY(InDialog([] { PressTool(Vehicles(), kSelectionTool); },
                     [] { QCOMPARE(Selection().Caption(), QStringLiteral("Filter 2")); }));
    QVERIFY(InDialog([] { PressTool(Vehicles(), kSortTool); },
                     [] { QCOMPARE(SortDialog().Caption(), QStringLiteral("Sort 2")); }));
}

void TranslatedToolsTest::TheCaptionOfTheSearchIsSetBehindTheTranslationOfTheForm() {
    support::RaiseTranslation({{u"Recherche sur [Marque]", u"Search 1"}, {u"Search 1", u"Search 2"}});
    QVERIFY(InDialog([] { listtools::GridToolAction(kSearchTool, *Vehicles().grid, Vehicles().data); },
                     [] { QCOMPARE(SearchDialog().Caption(), QStringLiteral("Search 1")); }));
}

/// The texts that say where the button stands are the program's own.
void TranslatedToolsTest::ATranslatedFormStartsItsSearchAsTheFrenchOne() {
    support::RaiseTranslation(
        {{u"Lancer la recherche", u"Search"}, {u"Suivant", u"Next"}, {u"Rechercher", u"Again"}});
    QVERIFY(InDialog([] { listtools::GridToolAction(kSearchTool, *Vehicles().grid, Vehicles().data); },
                     [] {
                         QCOMPARE(SearchDialog().Cmd_GoCherche->text(), QStringLiteral("Search"));
                         SearchFor(QStringLiteral("DACIA"));
                         QCOMPARE(SearchDialog().Cmd_GoCherche->text(), QStringLiteral("Suivant"));
                         SearchDialog().CTX3_CHERCHE->SetText(QStringLiteral("D"));
                         QCOMPARE(SearchDialog().Cmd_GoCherche->text(), QStringLiteral("Rechercher"));
                     }));
}

void TranslatedToolsTest::TheRefusalOfAColumnIsTranslated() {
    support::RaiseTranslation({{u"Opération impossible sur cette colonne.", u"Refused."}});
    ReplaceColumn(*Vehicles().grid, kMake, QStringLiteral("Marque||8|text|locked"));
    GoToColumn(*Vehicles().grid, kMake);
    QVERIFY(!InDialog([] { PressTool(Vehicles(), kSortTool); }, [] {}));
    CompareBoxes(program_->boxes, {QStringLiteral("Refused.")});
}

void TranslatedToolsTest::TheBoxesOfTheExportAreTranslatedButForTheNames() {
    support::RaiseTranslation({{u"Confirmez-vous la création du fichier Excel ?", u"Write?"},
                               {u"Votre fichier Excel a été créé dans", u"Written to"},
                               {u"sous le nom :", u"as"},
                               {u"C:\\QUARDELE\\VEH", u"folder"}});
    PressTool(Vehicles(), kExcelTool);
    CompareBoxes(program_->boxes,
                 {QStringLiteral("Write?"),
                  QStringLiteral("Written to C:\\QUARDELE\\VEH   sous le nom :  Liste des véhicules.XLS")});
}

void TranslatedToolsTest::TheMessagesOfTheSelectionAreTranslated() {
    support::RaiseTranslation(
        {{u"Sélection vide.", u"Nothing."},
         {u"Ce mode de sélection est impossible sur ce type colonne...", u"No such mode..."}});
    SelectOn(Vehicles(), kDate, Contains, QStringLiteral("2"));
    SelectOn(Vehicles(), kMake, Equal, QStringLiteral("nulle part"));
    CompareBoxes(program_->boxes, {QStringLiteral("No such mode..."), QStringLiteral("Nothing.")});
}

void TranslatedToolsTest::OnlyTheEndOfAConversionFailureIsTranslated() {
    support::RaiseTranslation({{u"Saisie d'une date attendue", u"A date, please"},
                               {u"SELECTION ERR. 13", u"Failure"},
                               {u"SELECTION ERR.", u"Failure"}});
    SelectOn(Vehicles(), kDate, Equal, QStringLiteral("hier"));
    CompareBoxes(program_->boxes, {QStringLiteral("SELECTION ERR. 13 A date, please ")});
}

void TranslatedToolsTest::FailuresOfTheToolsAreNotTranslated_data() {
    QTest::addColumn<Action>("fail");
    QTest::addColumn<QString>("beginning");
    QTest::newRow("selection") << Action([] { SelectOn(Vehicles(), kMake, Equal, kQuote); })
                               << QStringLiteral("SELECTION (ERREUR");
    QTest::newRow("sort") << Action(SortOnNoField) << QStringLiteral("CLASSER (ERR.");
    QTest::newRow("search") << Action(SearchForAQuote) << QStringLiteral("Recherche (ERR.");
}

/// Neither the whole of them nor a part.
void TranslatedToolsTest::FailuresOfTheToolsAreNotTranslated() {
    QFETCH(const Action, fail);
    QFETCH(const QString, beginning);
    fail();
    const std::vector<QString> boxes = program_->boxes.TakeTexts();
    QCOMPARE(boxes.size(), std::size_t{1});
    const QString& french = boxes.front();
    QVERIFY2(french.startsWith(beginning), qPrintable(french));
    // What has failed is in the condition or the order of the list.
    cleanup();
    init();
    support::RaiseMarksFor({french, beginning, french.section(u':', 1)});
    fail();
    QCOMPARE(program_->boxes.TakeTexts(), boxes);
}

void TranslatedToolsTest::TheMessagesOfTheSearchAreTranslated_data() {
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("box");
    QTest::newRow("miss") << kMake << QStringLiteral("nulle part") << QStringLiteral("Not found.");
    QTest::newRow("date") << kDate << QStringLiteral("hier") << QStringLiteral("A date.");
    QTest::newRow("number") << kNumber << QStringLiteral("douze") << QStringLiteral("A number.");
}

void TranslatedToolsTest::TheMessagesOfTheSearchAreTranslated() {
    QFETCH(int, column);
    QFETCH(QString, value);
    QFETCH(QString, box);
    support::RaiseTranslation({{u"Elément non trouvé. Fin de la recherche.", u"Not found."},
                               {u"Saisie d'une date attendue.", u"A date."},
                               {u"Saisie d'une valeur numérique attendue.", u"A number."}});
    ReplaceColumn(*Vehicles().grid, kNumber, QStringLiteral("Nombre|TVEH_USER2|8|float|locked"));
    GoToColumn(*Vehicles().grid, column);
    QVERIFY(InDialog([] { listtools::GridToolAction(kSearchTool, *Vehicles().grid, Vehicles().data); },
                     [&] {
                         QTest::keyClicks(SearchDialog().CTX3_CHERCHE, value);
                         Click(SearchDialog().Cmd_GoCherche);
                         CompareBoxes(program_->boxes, {box});
                     }));
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    TranslatedToolsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "translated_tools_test.moc"
