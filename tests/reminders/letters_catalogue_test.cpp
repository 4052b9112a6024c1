// What a run of letters writes into the catalogue of bookmarks: the module, the reminders form, the bookmark.
#include <fstream>

#include <QAction>
#include <QTest>
#include <QTimer>

#include <basic/conversion.h>
#include <dao/dao.h>
#include <forms/runtime.h>
#include <recording_word.h>
#include <shell/f_evolution.h>
#include <shell/main_window.h>
#include <shell/session.h>

#include "run_tests.h"
#include "workshop.h"

using namespace quardele;
using tests::ClickCell;
using tests::Press;
using tests::RecordingWord;
using tests::RowOf;
using tests::Workshop;

namespace {

constexpr int kLetter = 8;

}  // namespace

class LettersCatalogueTest : public QObject {
    Q_OBJECT

 private slots:
    void init() {
        workshop_ = std::make_unique<Workshop>();
        word_ = std::make_unique<RecordingWord>();
        word_->bookmarks = {"RS"};
        word_->columnOf = {{"IMMAT", 1}};
        word_->columns = 1;
        std::ofstream(workshop_->installation.File("DATA/RELVEH.dot")) << "modèle";
    }
    void cleanup() {
        workshop_.reset();
        word_.reset();
    }

    void ModuleHasNoNumberUntilTheInformationsWereAskedFor() {
        MakeLetter();
        QCOMPARE(RowsOf("RS"), (QStringList{"0 FRELANCES RS"}));
        QCOMPARE(RowsOf("IMMAT"), (QStringList{"0 FRELANCES IMMAT"}));
        // Sought, and not in the template.
        QCOMPARE(RowsOf("FAX"), (QStringList{"0 FRELANCES FAX"}));
    }

    void InformationsGiveTheModuleItsNumber() {
        QTimer::singleShot(0, this, [] { forms::Instance<shell::F_EVOLUTION>().Unload(); });
        forms::Instance<shell::MDIMENU_VEH>().M_INFOS->trigger();
        MakeLetter();
        QCOMPARE(RowsOf("RS"), (QStringList{"10 FRELANCES RS"}));
    }

    void WithoutAFormNothingIsWrittenDown() {
        const std::unique_ptr<word::GWORD> gword = std::move(shell::TheSession().OBJ_WORD);
        forms::Instance<shell::MDIMENU_VEH>().Unload();
        QVERIFY(forms::Screen::ActiveForm() == nullptr);
        gword->Enreg_Signet(nullptr, u"RS");
        QCOMPARE(RowsOf("RS"), QStringList{});
    }

 private:
    void MakeLetter() const {
        workshop_->ListDueBefore(QStringLiteral("25/11/2026"));
        reminders::FRELANCES& form = workshop_->Reminders();
        ClickCell(*form.DBG_RELANCES, kLetter,
                  RowOf(*form.DBG_RELANCES, QStringLiteral("SA-735-YK"), QStringLiteral("BAT")));
        Press(form.Cmd_Editer);
    }

    /// The catalogue's rows of a bookmark.
    static QStringList RowsOf(const char* bookmark) {
        QStringList rows;
        const auto catalogue =
            dao::DBEngine::Instance().Workspaces(0).OpenDatabase(u"c:\\quardele\\SIGNETS.MDB");
        const auto table = catalogue->OpenRecordset(u"TSIGNETS");
        for (; !table->Eof(); table->MoveNext()) {
            QStringList row;
            for (const auto* field : {u"SIGNETS_Appli", u"SIGNETS_nomdot", u"SIGNETS_nomsignet"}) {
                row << QString::fromStdU16String(basic::CStr(table->Value(field)));
            }
            if (row.back() == QLatin1StringView(bookmark)) {
                rows << row.join(u' ');
            }
        }
        return rows;
    }

    std::unique_ptr<Workshop> workshop_;
    std::unique_ptr<RecordingWord> word_;
};

int main(int argc, char** argv) {
    return tests::RunTests<LettersCatalogueTest>(argc, argv);
}

#include "letters_catalogue_test.moc"
