// The whole program with the translation raised: which of the texts on its forms pass, how often, and which
// do not.
#include <map>
#include <set>

#include <QAction>
#include <QComboBox>
#include <QMainWindow>
#include <QMenuBar>
#include <QTest>

#include <engine/report_viewer.h>
#include <forms/calendar.h>
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
#include <services/calendar_picker.h>
#include <shell/f_evolution.h>
#include <shell/main_window.h>
#include <support/boxes.h>
#include <support/installation.h>
#include <support/translation.h>
#include <vehicles/fficveh.h>

#include "forms_of_the_program.h"
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
        Note(name, "tag", forms::Tag(&control));
        if (qobject_cast<const forms::Frame*>(&control) == nullptr) {
            // That of a frame is its caption.
            Note(name, "accessible name", control.accessibleName());
        }
        if (const auto* button = qobject_cast<const forms::Button*>(&control)) {
            Note(name, "cell tag", button->CellTag());
        }
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
        } else if (qobject_cast<const forms::Calendar*>(&control) != nullptr ||
                   qobject_cast<const engine::ReportViewer*>(&control) != nullptr) {
            WalkParts(control);
        }
    }

    /// The buttons and boxes that a control brings along.
    void WalkParts(const QWidget& control) {
        int number = 0;
        for (const QWidget* part : control.findChildren<QWidget*>()) {
            const QString name = QStringLiteral("%1/%2").arg(control.objectName()).arg(++number);
            Note(name, "part's tip", part->toolTip());
            Note(name, "part's name", part->accessibleName());
            if (const auto* list = qobject_cast<const QComboBox*>(part)) {
                for (int item = 0; item < list->count(); ++item) {
                    Note(name + u'/' + QString::number(item), "item", list->itemText(item));
                }
            }
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

/// The calendar binds itself to the control that has the focus.
void WalkCalendars(Texts& texts) {
    auto& reminders = forms::Instance<reminders::FRELANCES>();
    reminders.Show();
    forms::SetFocus(reminders.CTX_DATEREL);
    WalkForm<services::F_CALENDAR>(texts);
    WalkForm<services::F_CALENDAR2>(texts);
    forms::Instance<services::F_CALENDAR>().Unload();
    forms::Instance<services::F_CALENDAR2>().Unload();
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
    WalkCalendars(texts);
    return texts;
}

/// Captions that are extended behind their translation, as they are designed.
const std::map<QString, QString>& DesignedCaptions() {
    static const std::map<QString, QString> captions{
        {QStringLiteral("MDIMENU_VEH.MDIMENU_VEH caption"), QStringLiteral("Gestion des véhicules")},
        {QStringLiteral("FFICVEH.FFICVEH caption"), QStringLiteral("Fiches Véhicules")},
        {QStringLiteral("FRELANCES.FRELANCES caption"), QStringLiteral("Relances")}};
    return captions;
}

QSet<QString> WithDesignedCaptions(const Texts& texts) {
    QSet<QString> all;
    for (const auto& [place, caption] : DesignedCaptions()) {
        all.insert(caption);
    }
    for (const auto& [place, text] : texts) {
        all.insert(text);
    }
    return all;
}

/// How often a text has passed; -1 where something else has come of it. One row of the table serves a text in
/// small and in capital letters.
int Passes(const QString& place, const QString& french, const QString& shown) {
    const auto found = DesignedCaptions().find(place);
    const QString designed = found == DesignedCaptions().end() ? french : found->second;
    const QString behind = french.mid(designed.size());
    const auto is = [&](const QString& text) {
        return support::WithoutAccents(shown).compare(support::WithoutAccents(text + behind),
                                                      Qt::CaseInsensitive) == 0;
    };
    return is(designed) ? 0 : is(support::Marked(designed)) ? 1 : is(support::MarkedTwice(designed)) ? 2 : -1;
}

/// A user field's own name, given by the site, as label and as heading of the list.
bool IsOfTheSite(const QString& place) {
    const QString listHeading = QStringLiteral("FFICVEH.DBG_Liste/");
    const bool userField = place.startsWith(QStringLiteral("FFICVEH.CTL_USER")) && place.endsWith(u'n');
    return userField ||
           (place.startsWith(listHeading) && place.mid(listHeading.size()).section(u' ', 0, 0).toInt() > 4);
}

/// What no part of the program has translated: entries of lists to choose from, panels of the status bar;
/// hints painted into empty grids; names read out by the system instead of a caption; the calendar and its
/// title. The buttons that the report viewer brings along are controls of its form.
bool IsLeftInFrench(const QString& place) {
    static const QStringList kMarks{QStringLiteral(" item"),
                                    QStringLiteral(" panel"),
                                    QStringLiteral(" hint"),
                                    QStringLiteral(" accessible name"),
                                    QStringLiteral(" part's name"),
                                    QStringLiteral("F_CALENDAR.F_CALENDAR caption"),
                                    QStringLiteral("F_CALENDAR2.F_CALENDAR2 caption")};
    return place.contains(QStringLiteral(".CAL/")) ||
           std::any_of(kMarks.begin(), kMarks.end(),
                       [&](const QString& mark) { return place.endsWith(mark); });
}

/// Two dialogs set their captions translated, before their texts pass as a whole.
bool PassesTwice(const QString& place) {
    return place == QStringLiteral("FSELECT.FSELECT caption") ||
           place == QStringLiteral("FCLASSE.FCLASSE caption");
}

int ExpectedPasses(const QString& place) {
    if (IsOfTheSite(place) || IsLeftInFrench(place)) {
        return 0;
    }
    return PassesTwice(place) ? 2 : 1;
}

}  // namespace

class TranslatedProgramTest : public QObject {
    Q_OBJECT

 private slots:
    void init() { installation_ = std::make_unique<support::Installation>(); }
    void cleanup();
    void EveryFormIsLookedAt();
    void EveryTextOfEveryFormPassesOnce();

 private:
    std::unique_ptr<support::Installation> installation_;
};

void TranslatedProgramTest::cleanup() {
    tests::StopProgram();
    installation_.reset();
}

void TranslatedProgramTest::EveryFormIsLookedAt() {
    std::set<QString> seen;
    for (const auto& [place, text] : TextsOfTheProgram()) {
        seen.insert(place.section(u'.', 0, 0));
    }
    QCOMPARE(seen, tests::FormsOfTheProgram());
}

void TranslatedProgramTest::EveryTextOfEveryFormPassesOnce() {
    const Texts french = TextsOfTheProgram();
    constexpr int kEnough = 100;
    QVERIFY(french.size() > kEnough);
    tests::StopProgram();
    support::RaiseMarks(WithDesignedCaptions(french));
    const Texts translated = TextsOfTheProgram();
    for (const auto& [place, text] : french) {
        QVERIFY2(translated.contains(place), qPrintable(place));
    }
    QCOMPARE(translated.size(), french.size());

    QStringList wrong;
    for (const auto& [place, text] : translated) {
        const int passes = Passes(place, french.at(place), text);
        if (passes != ExpectedPasses(place)) {
            wrong << QStringLiteral("%1 (%2 times): %3").arg(place).arg(passes).arg(text);
        }
    }
    QVERIFY2(wrong.empty(), qPrintable(wrong.join(u'\n')));
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
