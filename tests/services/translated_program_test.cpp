// The whole program with the translation raised: which of the texts on its forms pass, and which do not.
#include <functional>
#include <map>
#include <set>

#include <QAction>
#include <QComboBox>
#include <QMainWindow>
#include <QMenuBar>
#include <QTest>

#include <basic/conversion.h>
#include <forms/combo.h>
#include <forms/control.h>
#include <forms/controls.h>
#include <forms/drop_down.h>
#include <forms/grid.h>
#include <forms/mdi_form.h>
#include <forms/runtime.h>
#include <forms/status_bar.h>
#include <forms/strings.h>
#include <listtools/fcherche.h>
#include <listtools/fclasse.h>
#include <listtools/fselect.h>
#include <listtools/list_tool_context.h>
#include <reminders/fchxmodl.h>
#include <reminders/frelances.h>
#include <reports/f_rpt.h>
#include <services/translation.h>
#include <shell/f_evolution.h>
#include <shell/main_window.h>
#include <support/boxes.h>
#include <support/installation.h>
#include <vehicles/fficveh.h>

#include "start.h"

using namespace quardele;

namespace {

/// The texts that a form shows, by their places ("FFICVEH.CTL_IMMAT caption").
using Texts = std::map<QString, QString>;

class TextWalk {
 public:
    explicit TextWalk(const forms::Form& form) : form_(form) {}

    Texts Walk() {
        Note(form_.Name(), "caption", form_.Caption());
        for (QWidget* control : form_.Controls()) {
            WalkControl(*control);
        }
        if (const auto* window = qobject_cast<const QMainWindow*>(form_.Window())) {
            for (const QAction* entry : window->menuBar()->actions()) {
                Note(entry->objectName(), "caption", entry->text());
            }
        }
        return std::exchange(texts_, {});
    }

 private:
    void Note(const QString& place, const char* what, const QString& text) {
        if (!text.trimmed().isEmpty()) {
            texts_[form_.Name() + u'.' + place + u' ' + QLatin1String(what)] = text;
        }
    }

    void WalkControl(QWidget& control) {
        const QString name = control.objectName();
        Note(name, "tip", control.toolTip());
        if (const auto* label = qobject_cast<const forms::Label*>(&control)) {
            Note(name, "caption", label->Caption());
        } else if (const auto* button = qobject_cast<const QAbstractButton*>(&control)) {
            Note(name, "caption", button->text());
        } else if (const auto* frame = qobject_cast<const forms::Frame*>(&control)) {
            Note(name, "caption", frame->Caption());
        } else if (const auto* bar = qobject_cast<const forms::StatusBar*>(&control)) {
            for (int panel = 1; panel <= bar->Count(); ++panel) {
                Note(name + QString::number(panel), "panel", bar->Panels(panel).Text());
            }
        } else {
            WalkCompound(control);
        }
    }

    void WalkCompound(QWidget& control) {
        const QString name = control.objectName();
        if (auto* tabs = qobject_cast<forms::TabControl*>(&control)) {
            for (int tab = 0; tab < tabs->count(); ++tab) {
                Note(name + QString::number(tab), "caption", tabs->TabCaption(tab));
            }
        } else if (const auto* list = qobject_cast<const forms::DropDown*>(&control)) {
            for (int item = 0; item < list->count(); ++item) {
                Note(name + QString::number(item), "item", list->itemText(item));
            }
        } else if (auto* grid = qobject_cast<forms::Grid*>(&control)) {
            WalkGrid(*grid);
        }
    }

    void WalkGrid(forms::Grid& grid) {
        const QString name = grid.objectName();
        grid.SetRow(0);
        for (int column = 1; column <= grid.MaxCols(); ++column) {
            grid.SetCol(column);
            Note(QStringLiteral("%1/%2").arg(name).arg(column), "heading", grid.Text());
        }
        Note(name, "tip", grid.ToolTipText());
        Note(name, "hint", grid.EmptyHint());
    }

    const forms::Form& form_;
    Texts texts_;
};

template <class F>
void WalkForm(Texts& texts) {
    texts.merge(TextWalk(forms::Instance<F>()).Walk());
}

/// All forms that the program opens, each loaded anew.
Texts TextsOfTheProgram() {
    const support::BoxAnswerer boxes;
    Texts texts;
    forms::Instance<shell::MDIMENU_VEH>().Show();
    WalkForm<shell::MDIMENU_VEH>(texts);
    WalkForm<vehicles::FFICVEH>(texts);
    WalkForm<reminders::FRELANCES>(texts);
    WalkForm<shell::F_EVOLUTION>(texts);
    WalkForm<reminders::FCHXMODL>(texts);
    listtools::TheListToolContext().ColumnTitle = QStringLiteral("Marque");
    WalkForm<listtools::FSELECT>(texts);
    WalkForm<listtools::FCLASSE>(texts);
    WalkForm<listtools::FCHERCHE>(texts);
    WalkForm<reports::F_RPT>(texts);
    return texts;
}

QString Marked(const QString& text) {
    return u'[' + text.trimmed() + u']';
}

/// The table of a translation that puts each text into brackets, and the switch raised on it.
void RaiseSwitchOn(const std::set<QString>& texts) {
    constexpr qsizetype kKeyLength = 20;
    const auto database =
        dao::DBEngine::Instance().Workspaces(0).OpenDatabase(u"C:\\QUARDELE\\DATA\\BDTRAD.MDB");
    auto table = database->OpenRecordset(u"TTRAD", dao::RecordsetType::Table);
    for (table->MoveFirst(); !table->Eof(); table->MoveNext()) {
        table->Delete();
    }
    for (const QString& text : texts) {
        table->AddNew();
        table->SetValue(u"T_ABREGE", forms::ToText(text.left(kKeyLength)));
        table->SetValue(u"T_VALEUR", forms::ToText(text));
        table->SetValue(u"t_trad", forms::ToText(Marked(text)));
        table->Update();
    }
    table->SetIndex(u"T_ABREGE");
    services::Translation().TranslationTable = table;
    services::Translation().TranslationOn = true;
}

/// Captions of forms are extended behind their translation.
std::set<QString> WithDesignedCaptions(const Texts& texts) {
    std::set<QString> all{QStringLiteral("Gestion des véhicules"), QStringLiteral("Fiches Véhicules"),
                          QStringLiteral("Relances")};
    for (const auto& [place, text] : texts) {
        all.insert(text.trimmed());
    }
    return all;
}

/// Texts of the site and of other hands, lists to choose from, panels of the status bar and hints painted
/// into empty grids, which no part of the program has translated.
bool StaysFrench(const QString& place) {
    static const QStringList kMarks{QStringLiteral(" item"), QStringLiteral(" panel"),
                                    QStringLiteral(" hint")};
    const bool userField = place.startsWith(QStringLiteral("FFICVEH.CTL_USER")) && place.endsWith(u'n');
    const QString listHeading = QStringLiteral("FFICVEH.DBG_Liste/");
    const bool userColumn =
        place.startsWith(listHeading) && place.mid(listHeading.size()).section(u' ', 0, 0).toInt() > 4;
    return userField || userColumn || std::any_of(kMarks.begin(), kMarks.end(), [&](const QString& mark) {
               return place.endsWith(mark);
           });
}

}  // namespace

class TranslatedProgramTest : public QObject {
    Q_OBJECT

 private slots:
    void cleanup();
    void EveryTextOfEveryFormPassesOnce();

 private:
    std::unique_ptr<support::Installation> installation_ = std::make_unique<support::Installation>();
};

void TranslatedProgramTest::cleanup() {
    tests::StopProgram();
    installation_.reset();
}

void TranslatedProgramTest::EveryTextOfEveryFormPassesOnce() {
    const Texts french = TextsOfTheProgram();
    constexpr int kEnough = 100;
    QVERIFY(french.size() > kEnough);
    tests::StopProgram();
    RaiseSwitchOn(WithDesignedCaptions(french));
    const Texts translated = TextsOfTheProgram();
    QCOMPARE(translated.size(), french.size());

    QStringList notPassed;
    QStringList wronglyPassed;
    for (const auto& [place, text] : translated) {
        const bool passed = text.trimmed().startsWith(u'[');
        const bool twice = text.trimmed().startsWith(QStringLiteral("[["));
        if (!StaysFrench(place) && !passed) {
            notPassed << place + QStringLiteral(": ") + text;
        }
        if (twice || (StaysFrench(place) && passed)) {
            wronglyPassed << place + QStringLiteral(": ") + text;
        }
    }
    QCOMPARE(notPassed, QStringList());
    QCOMPARE(wronglyPassed, QStringList());
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QApplication::setApplicationVersion(QStringLiteral("9.5.5"));
    forms::SetUpApplication(application);
    forms::CatchEndOfProcess(true);
    TranslatedProgramTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "translated_program_test.moc"
