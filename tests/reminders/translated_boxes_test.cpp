// The boxes of the reminders and their letters with the translation raised: which parts of them pass through
// it. Brackets stand around what has passed.
#include <fstream>
#include <functional>

#include <QTest>

#include <basic/runtime_error.h>
#include <forms/strings.h>
#include <recording_word.h>
#include <support/translation.h>

#include "run_tests.h"
#include "workshop.h"

using namespace quardele;
using tests::RecordingWord;
using tests::Workshop;

namespace {

constexpr int kLetter = 8;
constexpr int kAbandon = 9;
const QString kNovember = QStringLiteral("25/11/2026");

/// A workshop at work, with a double in Word's place and a template for the letters.
struct Stage {
    Stage() {
        word.columnOf = {{"IMMAT", 1}};
        std::ofstream(Template()) << "modèle";
    }
    [[nodiscard]] std::filesystem::path Template() const {
        return workshop.installation.File("DATA/RELVEH.dot");
    }
    /// Lists the visits of November and clicks the cell of one.
    void ClickVisit(const char* registration, const char* work, int column) {
        workshop.ListDueBefore(kNovember);
        forms::Grid& grid = *workshop.Reminders().DBG_RELANCES;
        tests::ClickCell(grid, column, tests::RowOf(grid, QLatin1String(registration), QLatin1String(work)));
    }
    void MakeLetter(const char* registration, const char* work) {
        ClickVisit(registration, work, kLetter);
        tests::Press(workshop.Reminders().Cmd_Editer);
    }

    Workshop workshop;
    RecordingWord word;
};

struct Case {
    const char* name;
    QStringList boxes;
    std::function<void(Stage&)> act;
};

QString Failure(int error) {
    return forms::ToQString(basic::DescriptionOf(error));
}

const std::vector<Case>& Cases() {
    static const std::vector<Case> cases{
        {"what is no date",
         {QStringLiteral("[Date erronnée]")},
         [](Stage& stage) { stage.workshop.ListDueBefore(QStringLiteral("demain")); }},
        {"no date at all",
         {QStringLiteral("Procédure CTX_DATREL_CLICK  Erreur 13 : ") + Failure(basic::error::kTypeMismatch)},
         [](Stage& stage) { stage.workshop.ListDueBefore(QString()); }},
        {"nothing due",
         {QStringLiteral("[Aucune relance à effectuer]")},
         [](Stage& stage) { stage.workshop.ListDueBefore(QStringLiteral("01/01/1950")); }},
        {"a reminder given up",
         {QStringLiteral("[Confirmez l'abandon de cette relance]")},
         [](Stage& stage) { stage.ClickVisit("SA-735-YK", "BAT", kAbandon); }},
        {"no template",
         {QStringLiteral("[Le modèle WORD <][> est introuvable.]"),
          QStringLiteral("[Le fichier modèle <]C:\\QUARDELE\\DATA\\RELVEH[.dot> est introuvable.]")},
         [](Stage& stage) {
             std::filesystem::remove(stage.Template());
             stage.MakeLetter("SA-735-YK", "BAT");
         }},
        {"an unknown customer",
         {QStringLiteral("[ATTENTION : Il n'existe pas de fiche client pour] INCONNU\n"
                         "[Vous devrez saisir les coordonnées manuellement]")},
         [](Stage& stage) { stage.MakeLetter("8266 JM 33", "CT"); }},
        {"a template without lines",
         {QStringLiteral("[Votre modèle de relance est incomplet.]\n[Il ne décrit pas les lignes détail]")},
         [](Stage& stage) {
             stage.word.columnOf.clear();
             stage.MakeLetter("SA-735-YK", "BAT");
         }},
        {"Word that fails as it starts",
         {QStringLiteral("Procédure APPLI/appel_word : ") + Failure(basic::error::kServerGone) +
          QStringLiteral(" (462)")},
         [](Stage& stage) {
             stage.word.FailOn("Activate", basic::RuntimeError(basic::error::kServerGone));
             stage.MakeLetter("SA-735-YK", "BAT");
         }},
        {"no document",
         {Failure(basic::error::kServerGone)},
         [](Stage& stage) {
             stage.word.FailOn("Documents.Add", basic::RuntimeError(basic::error::kServerGone));
             stage.MakeLetter("SA-735-YK", "BAT");
         }},
    };
    return cases;
}

}  // namespace

class TranslatedBoxesTest : public QObject {
    Q_OBJECT

 private slots:
    void WhatOfABoxIsTranslated_data() {
        QTest::addColumn<int>("index");
        for (int index = 0; index < static_cast<int>(Cases().size()); ++index) {
            QTest::newRow(Cases()[static_cast<std::size_t>(index)].name) << index;
        }
    }

    void WhatOfABoxIsTranslated() {
        QFETCH(const int, index);
        const Case& shown = Cases()[static_cast<std::size_t>(index)];
        Stage stage;
        support::RaiseMarksFor(shown.boxes);
        stage.workshop.boxes.AnswerNo();
        shown.act(stage);
        QCOMPARE(support::TakeWithoutAccents(stage.workshop.boxes),
                 support::BoxesWithoutAccents(shown.boxes));
    }

    /// A title is Word's own text, shown as it is.
    void TheTitleOfABoxOfWordIsNotTranslated() {
        Stage stage;
        const QString title = QStringLiteral("Erreur Word (FichierNouveau)");
        support::RaiseMarksFor({title});
        stage.word.FailOn("Documents.Add", basic::RuntimeError(basic::error::kServerGone));
        stage.MakeLetter("SA-735-YK", "BAT");
        QCOMPARE(stage.workshop.boxes.Shown().size(), std::size_t{1});
        QCOMPARE(stage.workshop.boxes.Shown().front().title, title);
    }
};

int main(int argc, char* argv[]) {
    return quardele::tests::RunTests<TranslatedBoxesTest>(argc, argv);
}

#include "translated_boxes_test.moc"
