// The choice of a template: none, one, several; the dialog by mouse and keys.
#include <fstream>

#include <QTest>
#include <QTimer>

#include <basic/paths.h>
#include <forms/events.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <forms/twips.h>
#include <reminders/fchxmodl.h>
#include <reminders/template_choice.h>
#include <shell/session.h>

#include "run_tests.h"
#include "workshop.h"

using namespace quardele;
using forms::Instance;
using forms::kTwipsPerPixel;
using reminders::Cherche_Modele_Word;
using reminders::FCHXMODL;
using tests::Workshop;

namespace {

const QString kFolder = QStringLiteral("C:\\QUARDELE\\DATA\\");
const QString kPrefix = QStringLiteral("RELVEH");

QStringList Rows() {
    QStringList rows;
    forms::Grid& grid = *Instance<FCHXMODL>().DBG_Liste;
    for (int row = 1; row <= grid.MaxRows(); ++row) {
        rows << tests::Cell(grid, 1, row);
    }
    return rows;
}

int RowNamed(const QString& name) {
    return static_cast<int>(Rows().indexOf(name)) + 1;
}

/// Moves the cursor to a variant with the arrow keys.
void GoTo(const QString& name) {
    forms::Grid* const grid = Instance<FCHXMODL>().DBG_Liste;
    grid->setFocus();
    for (int step = grid->ActiveRow(); step < RowNamed(name); ++step) {
        QTest::keyClick(grid, Qt::Key_Down);
    }
    for (int step = grid->ActiveRow(); step > RowNamed(name); --step) {
        QTest::keyClick(grid, Qt::Key_Up);
    }
}

}  // namespace

class TemplateChoiceTest : public QObject {
    Q_OBJECT

 private slots:
    void init() {
        workshop_ = std::make_unique<Workshop>();
        operated_ = false;
    }
    void cleanup() {
        QVERIFY(!forms::IsLoaded<FCHXMODL>());
        workshop_.reset();
    }

    void TemplateNamedAfterThePrefixNeedsNoDialog() {
        AddTemplates({"RELVEH.dot"});
        QCOMPARE(Cherche_Modele_Word(kFolder, kPrefix), kFolder + kPrefix);
        QVERIFY(workshop_->boxes.Shown().empty());
    }

    void SingleVariantWithASuffixAnswersTheBarePrefix() {
        AddTemplates({"RELVEH2.dot"});
        QCOMPARE(Cherche_Modele_Word(kFolder, kPrefix), kFolder + kPrefix);
        QVERIFY(workshop_->boxes.Shown().empty());
    }

    void NoTemplateIsSaidWithEmptyBracketsAndAnswersThePrefix() {
        QCOMPARE(Cherche_Modele_Word(kFolder, kPrefix), kFolder + kPrefix);
        QCOMPARE(workshop_->boxes.TakeTexts(),
                 std::vector<QString>{QStringLiteral("Le modèle WORD <> est introuvable.")});
    }

    void NewerKindsOfTemplateDoNotCount() {
        AddTemplates({"RELVEH.dotx", "RELVEH2.dotm"});
        QCOMPARE(Cherche_Modele_Word(kFolder, kPrefix), kFolder + kPrefix);
        QCOMPARE(workshop_->boxes.TakeTexts(),
                 std::vector<QString>{QStringLiteral("Le modèle WORD <> est introuvable.")});
    }

    void ThirdArgumentMeansNothing() {
        AddTemplates({"RELVEH.dot"});
        QCOMPARE(Cherche_Modele_Word(kFolder, kPrefix, u"autre"), kFolder + kPrefix);
    }

    void SeveralVariantsAreAskedFor() {
        AddTemplates({"RELVEH.dot", "RELVEH2.dot"});
        const QString answer = Ask([] {
            QStringList rows = Rows();
            rows.sort();
            QCOMPARE(rows, (QStringList{"*Standard*", "2"}));
            GoTo(QStringLiteral("2"));
            QTest::mouseClick(Instance<FCHXMODL>().Cmd_Ok, Qt::LeftButton);
        });
        QCOMPARE(answer, kFolder + QStringLiteral("RELVEH2"));
    }

    void StandardRowAnswersThePrefixAlone() {
        AddTemplates({"RELVEH.dot", "RELVEH2.dot"});
        const QString answer = Ask([] {
            GoTo(QStringLiteral("2"));
            GoTo(QStringLiteral("*Standard*"));
            QCOMPARE(Instance<FCHXMODL>().CTX_NOMDOT->Text(), kFolder + QStringLiteral("RELVEH*Standard*"));
            QTest::keyClick(Instance<FCHXMODL>().DBG_Liste, Qt::Key_Return);
        });
        QCOMPARE(answer, kFolder + kPrefix);
    }

    void PassingOverARowShowsItsPath() {
        AddTemplates({"RELVEH.dot", "RELVEH2.dot"});
        (void)Ask([] {
            GoTo(QStringLiteral("*Standard*"));
            GoTo(QStringLiteral("2"));
            QCOMPARE(Instance<FCHXMODL>().CTX_NOMDOT->Text(), kFolder + QStringLiteral("RELVEH2"));
            QTest::keyClick(Instance<FCHXMODL>().DBG_Liste, Qt::Key_Escape);
        });
    }

    void AnswerBoxStartsWithTheFolder() {
        AddTemplates({"RELVEH.dot", "RELVEH2.dot"});
        (void)Ask([] {
            QCOMPARE(Instance<FCHXMODL>().CTX_NOMDOT->Text(), kFolder);
            QTest::mouseClick(Instance<FCHXMODL>().Cmd_Annule, Qt::LeftButton);
        });
    }

    void AnswerBoxLosesEveryDotOfTheFolder() {
        const QString folder = kFolder + QStringLiteral("old.dot.dotx\\");
        std::filesystem::create_directory(workshop_->installation.File("DATA/old.dot.dotx"));
        AddTemplates({"old.dot.dotx/RELVEH.dot", "old.dot.dotx/RELVEH2.dot"});
        const QString answer = Ask(
            [] {
                QCOMPARE(Instance<FCHXMODL>().CTX_NOMDOT->Text(), kFolder + QStringLiteral("oldx\\"));
                GoTo(QStringLiteral("2"));
                QTest::mouseClick(Instance<FCHXMODL>().Cmd_Ok, Qt::LeftButton);
            },
            folder);
        QCOMPARE(answer, folder + QStringLiteral("RELVEH2"));
    }

    void RowsStandInTheOrderOfTheFolder() {
        AddTemplates({"RELVEH9.dot", "RELVEHb.dot", "RELVEH1.dot", "RELVEHA.dot", "RELVEH5.dot"});
        QStringList expected;
        for (const basic::Text& name : basic::DirAll(u"C:\\QUARDELE\\DATA\\RELVEH*.dot*")) {
            expected << forms::ToQString(name).mid(kPrefix.size()).chopped(4);
        }
        QCOMPARE(expected.size(), 5);
        (void)Ask([&expected] {
            QCOMPARE(Rows(), expected);
            QTest::mouseClick(Instance<FCHXMODL>().Cmd_Annule, Qt::LeftButton);
        });
    }

    void EnterIsSwallowed() {
        AddTemplates({"RELVEH.dot", "RELVEH2.dot"});
        (void)Ask([] {
            forms::Grid* const grid = Instance<FCHXMODL>().DBG_Liste;
            int left = -1;
            QObject::connect(grid, &forms::Grid::KeyDown, grid,
                             [&left](int& keyCode, int /*shift*/) { left = keyCode; });
            QTest::keyClick(grid, Qt::Key_Down);
            QVERIFY(left > 0);
            QTest::keyClick(grid, Qt::Key_Return);
            QCOMPARE(left, 0);
        });
    }

    void NewerKindsAreListedWithTheirPoint() {
        AddTemplates({"RELVEH.dot", "RELVEH3.dot", "RELVEH2.dotx", "RELVEH.dotm"});
        (void)Ask([] {
            QStringList rows = Rows();
            rows.sort();
            QCOMPARE(rows, (QStringList{"*Standard*", "*Standard*", "2.", "3"}));
            QTest::mouseClick(Instance<FCHXMODL>().Cmd_Annule, Qt::LeftButton);
        });
    }

    void DoubleClickChooses() {
        AddTemplates({"RELVEH.dot", "RELVEH2.dot"});
        const QString answer = Ask([] {
            forms::Grid* const grid = Instance<FCHXMODL>().DBG_Liste;
            const QModelIndex index = grid->model()->index(RowNamed(QStringLiteral("2")) - 1, 0);
            const QPoint point = grid->visualRect(index).center();
            QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, point);
            QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, point);
        });
        QCOMPARE(answer, kFolder + QStringLiteral("RELVEH2"));
    }

    void GivingUpAnswersNothing_data() {
        QTest::addColumn<QString>("way");
        QTest::newRow("button") << QStringLiteral("button");
        QTest::newRow("escape") << QStringLiteral("escape");
        QTest::newRow("window") << QStringLiteral("window");
    }
    void GivingUpAnswersNothing() {
        QFETCH(QString, way);
        AddTemplates({"RELVEH.dot", "RELVEH2.dot"});
        const QString answer = Ask([&way] {
            FCHXMODL& form = Instance<FCHXMODL>();
            if (way == QStringLiteral("button")) {
                QTest::mouseClick(form.Cmd_Annule, Qt::LeftButton);
            } else if (way == QStringLiteral("escape")) {
                form.DBG_Liste->setFocus();
                QTest::keyClick(form.DBG_Liste, Qt::Key_Escape);
            } else {
                form.Window()->close();
            }
        });
        QCOMPARE(answer, QString());
    }

    void DialogIsLaidOutAsDesigned() {
        FCHXMODL& form = Instance<FCHXMODL>();
        QCOMPARE(form.Caption(), QStringLiteral("Choix du modèle de document WORD (.dot)"));
        QCOMPARE(form.Cmd_Ok->toolTip(), QStringLiteral("Exécuter le déstockage dans les lots"));
        QCOMPARE(form.Cmd_Annule->toolTip(), QStringLiteral("Abandon"));
        QCOMPARE(form.Cmd_Ok->parentWidget()->objectName(), QStringLiteral("Picture2"));
        QCOMPARE(form.Cmd_Annule->parentWidget(), form.Cmd_Ok->parentWidget());
        forms::Grid& grid = *form.DBG_Liste;
        QCOMPARE(grid.MaxCols(), 1);
        QCOMPARE(tests::Cell(grid, 1, 0), QStringLiteral("Nom du modèle "));
        QVERIFY(qAbs(grid.ColWidth() - 53.75) < 0.01);
        grid.SetRow(-1);
        QVERIFY(grid.Lock());
        form.Unload();
    }

    void FolderAndPrefixLieBehindTheList() {
        const FCHXMODL& form = Instance<FCHXMODL>();
        QVERIFY(form.DBG_Liste->geometry().contains(form.CTX_PATH->geometry()));
        QVERIFY(form.DBG_Liste->geometry().contains(form.CTX_PREFDOT->geometry()));
        const QObjectList& layers = form.Surface()->children();
        QVERIFY(layers.indexOf(form.DBG_Liste) > layers.indexOf(form.CTX_PATH));
        QVERIFY(layers.indexOf(form.DBG_Liste) > layers.indexOf(form.CTX_PREFDOT));
        Instance<FCHXMODL>().Unload();
    }

    void DialogIsPlacedByTheWorkArea() {
        shell::TheSession().WorkAreaTop = 6000;
        FCHXMODL& form = Instance<FCHXMODL>();
        QVERIFY(qAbs(form.Top() - (6000 - form.Height() / 2)) < kTwipsPerPixel);
        QVERIFY(qAbs(form.Left() - (forms::Forms::Item(0).Width() - form.Width()) / 2) < kTwipsPerPixel);
        form.Unload();
    }

    void HiddenBoxesStayHidden() {
        AddTemplates({"RELVEH.dot", "RELVEH2.dot"});
        (void)Ask([] {
            const QWidget* const surface = Instance<FCHXMODL>().Surface();
            const auto* const xml = surface->findChild<forms::CheckBox*>(QStringLiteral("Check1"));
            const auto* const pdf = surface->findChild<forms::CheckBox*>(QStringLiteral("CHK_PDF"));
            QVERIFY(xml->isHidden());
            QVERIFY(pdf->isHidden());
            QCOMPARE(xml->text(), QStringLiteral("Générer un fichier XML"));
            QCOMPARE(pdf->text(), QStringLiteral("Générer un fichier PDF"));
            QTest::mouseClick(Instance<FCHXMODL>().Cmd_Annule, Qt::LeftButton);
        });
    }

 private:
    void AddTemplates(const std::vector<std::string>& names) const {
        for (const std::string& name : names) {
            std::ofstream(workshop_->installation.File("DATA/" + name)) << "modèle";
        }
    }

    /// Runs the routine while `operate` works the dialog.
    [[nodiscard]] QString Ask(const std::function<void()>& operate, const QString& folder = kFolder) {
        QTimer::singleShot(0, this, [this, &operate] {
            operated_ = true;
            operate();
            if (forms::IsLoaded<FCHXMODL>() && Instance<FCHXMODL>().Visible()) {
                Instance<FCHXMODL>().Hide();
            }
        });
        const QString answer = Cherche_Modele_Word(folder, kPrefix);
        if (!operated_) {
            QTest::qFail("the dialog did not come up", __FILE__, __LINE__);
        }
        return answer;
    }

    std::unique_ptr<Workshop> workshop_;
    bool operated_ = false;
};

int main(int argc, char** argv) {
    return tests::RunTests<TemplateChoiceTest>(argc, argv);
}

#include "template_choice_test.moc"
