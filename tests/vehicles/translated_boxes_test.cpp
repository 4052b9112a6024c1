// The boxes of the vehicle form with the translation raised: which parts of them pass through it. Brackets
// stand around what has passed.
#include <functional>

#include <forms/drop_down.h>
#include <forms/strings.h>

#include "list_program.h"

using namespace quardele;
using namespace quardele::tests;

namespace {

struct Case {
    const char* name;
    QString box;
    /// Makes the box come, from the list of vehicles on.
    std::function<void()> act;
};

const QString kToyota = QStringLiteral("KG-361-VP");
const QString kGuard = QStringLiteral("[Enregistrez ou annulez d'abord votre saisie]");
const QString kLoudGuard = QStringLiteral("[Enregistrez ou annulez d'abord votre saisie !]");

void BeginChange() {
    OpenRecordOf(kToyota);
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("RENAULT"));
}

void TypeTakenRegistration() {
    PressKey(Qt::Key_N, Qt::ControlModifier);
    QTest::keyClicks(Box("CTX_IMMAT"), kToyota);
    PressKey(Qt::Key_Return);
}

void SaveUnknownCustomer() {
    OpenRecordOf(kToyota);
    TypeOver(Box("CTX_CODCLI"), QStringLiteral("ZZZ"));
    Press("Cmd_Update");
}

/// Saving on the way to a new record, under a registration that is taken.
void SaveTwice() {
    OpenRecordOf(QStringLiteral("2107 RC 59"));
    TypeOver(Box("CTX_IMMAT"), kToyota);
    Press("Cmd_ADD");
}

void Search(const QString& value) {
    Form().OpenQuickSearch();
    constexpr int kSerialNumber = 3;
    TypeOver(
        forms::ControlArray<forms::TextBox>(Form().Surface(), QStringLiteral("CTX_USERCHER"))(kSerialNumber),
        value);
    Press("Cmd_GoCherche");
}

/// The selection by date in the history; `put` puts a date into its box.
void SelectDate(const std::function<void(forms::TextBox&)>& put) {
    constexpr int kDateColumn = 1;
    OpenRecordOf(kToyota);
    Press("CMD_HistoVis");
    GoToColumn(*Grid("DBG_HISTO"), kDateColumn);
    Press("Cmd_ToolBar_Histo_0");
    put(*Box("CTX_ChoixDate"));
    Press("Cmd_SelDate_Select");
}

const std::vector<Case>& Cases() {
    static const std::vector<Case> cases{
        {"leaving a change", kGuard, [] { BeginChange(), PressKey(Qt::Key_F8); }},
        {"printing on a change", kGuard, [] { BeginChange(), Press("Cmd_Imprimer_0"); }},
        {"quitting on a change", kGuard, [] { BeginChange(), PressKey(Qt::Key_F12); }},
        {"refreshing on a change", kLoudGuard, [] { BeginChange(), Press("CMD_REFRESH"); }},
        {"deleting on a change", kLoudGuard, [] { BeginChange(), Press("Cmd_Delete"); }},
        {"deleting", QStringLiteral("[Confirmez-vous la suppression de cette fiche ?]"),
         [] { OpenRecordOf(kToyota), Press("Cmd_Delete"); }},
        {"a taken registration", QStringLiteral("[Ce véhicule existe déjà !!!] "), TypeTakenRegistration},
        {"an unknown customer", QStringLiteral("[Ce code client est inconnu dans la table des Clients !]"),
         SaveUnknownCustomer},
        {"a failure that nobody handles",
         QStringLiteral("Erreur d'exécution 3022 :\n\n") +
             forms::ToQString(basic::DescriptionOf(basic::error::kDuplicateKey)),
         SaveTwice},
        {"a search for nothing", QStringLiteral("[La recherche doit comporter au moins un critère !]"),
         [] { Search(QString()); }},
        {"a search in vain", QStringLiteral("[Elément non trouvé. Fin de la recherche.]"),
         [] { Search(QStringLiteral("nulle part")); }},
        {"what is no date", QStringLiteral("[Saisie d'une date attendue (JJ/MM/AA).]"),
         [] { SelectDate([](forms::TextBox& box) { TypeOver(&box, QStringLiteral("hier")); }); }},
        {"a condition that fails", QStringLiteral("SELECTION ERR. 13 [Saisie d'une date attendue] "),
         [] { SelectDate([](forms::TextBox& box) { box.SetText(QStringLiteral("hier")); }); }},
        {"documents",
         QStringLiteral("[Cette fonction nécessite le module de gestion des liens documentaire "
                        "(contacter BRESSIMOR)]"),
         [] { OpenRecordOf(kToyota), Press("Cmd_Images"); }},
    };
    return cases;
}

}  // namespace

class TranslatedBoxesTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void WhatOfABoxIsTranslated_data();
    void WhatOfABoxIsTranslated();
};

void TranslatedBoxesTest::WhatOfABoxIsTranslated_data() {
    QTest::addColumn<int>("index");
    for (int index = 0; index < static_cast<int>(Cases().size()); ++index) {
        QTest::newRow(Cases()[static_cast<std::size_t>(index)].name) << index;
    }
}

void TranslatedBoxesTest::WhatOfABoxIsTranslated() {
    QFETCH(const int, index);
    const Case& shown = Cases()[static_cast<std::size_t>(index)];
    ListProgram program;
    program.OpenList();
    support::RaiseMarksFor({shown.box});
    program.boxes.AnswerNo();
    shown.act();
    QCOMPARE(support::TakeWithoutAccents(program.boxes), support::BoxesWithoutAccents({shown.box}));
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    TranslatedBoxesTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "translated_boxes_test.moc"
