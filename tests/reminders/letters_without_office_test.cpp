// A letter run on a machine without a word processor.
#include <fstream>

#include <QTest>

#include <forms/runtime.h>

#include "run_tests.h"
#include "workshop.h"

using namespace quardele;
using tests::Workshop;

class LettersWithoutOfficeTest : public QObject {
    Q_OBJECT

 private slots:
    void MissingWordProcessorIsSaidAndEndsTheRun() {
        qputenv("QUARDELE_WRITER_BRIDGE", "/nulle/part.so");
        Workshop workshop;
        std::ofstream(workshop.installation.File("DATA/RELVEH.dot")) << "modèle";
        workshop.ListDueBefore(QStringLiteral("25/11/2026"));
        forms::Grid& grid = *workshop.Reminders().DBG_RELANCES;
        tests::ClickCell(grid, 8, tests::RowOf(grid, QStringLiteral("SA-735-YK"), QStringLiteral("BAT")));
        tests::Press(workshop.Reminders().Cmd_Editer);
        QStringList titles;
        for (const support::ShownBox& box : workshop.boxes.Shown()) {
            titles << box.title;
        }
        QCOMPARE(titles, (QStringList{QStringLiteral("Erreur Word (Creation_Objet)"),
                                      QStringLiteral("Erreur Word (FichierNouveau)")}));
        QCOMPARE(forms::Screen::MousePointer(), 0);
        QCOMPARE(workshop.Ends(), 0);
        QVERIFY(workshop.Reminders().Visible());
    }
};

int main(int argc, char** argv) {
    return tests::RunTests<LettersWithoutOfficeTest>(argc, argv);
}

#include "letters_without_office_test.moc"
