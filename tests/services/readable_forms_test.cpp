// Every form but the main window and the vehicle form, whose sizes change with the screen, as a reader finds
// it: nothing is cut off, nothing stands on something else. A picture of each is kept in the build tree.
#include <functional>

#include <QTest>

#include <forms/runtime.h>
#include <listtools/fcherche.h>
#include <listtools/fclasse.h>
#include <listtools/fselect.h>
#include <listtools/list_tool_context.h>
#include <reminders/fchxmodl.h>
#include <reminders/frelances.h>
#include <reports/f_rpt.h>
#include <reports/report_request.h>
#include <services/calendar_picker.h>
#include <shell/f_evolution.h>
#include <shell/main_window.h>
#include <shell/session.h>
#include <support/boxes.h>
#include <support/installation.h>
#include <support/readable.h>

#include "forms_of_the_program.h"
#include "start.h"

using namespace quardele;

namespace {

struct Case {
    const char* name;
    /// The form's name in the program.
    QString formName;
    std::function<forms::Form&()> form;
    /// What the form has on purpose.
    QString known = {};
};

template <class F>
forms::Form& Shown() {
    forms::Instance<F>().Show();
    return forms::Instance<F>();
}

forms::Form& Reminders() {
    auto& form = forms::Instance<reminders::FRELANCES>();
    form.Show();
    form.CTX_DATEREL->SetText(QStringLiteral("25/11/2026"));
    QTest::keyClick(form.CTX_DATEREL, Qt::Key_Return);
    return form;
}

forms::Form& ChangeLog(int module) {
    shell::TheSession().NUMAPPLI_COURANT = module;
    return Shown<shell::F_EVOLUTION>();
}

/// The sheet of a vehicle in the viewer.
forms::Form& Report() {
    reports::ReportRequest& request = reports::TheReportRequest();
    request.ReportFile = QStringLiteral("IMPVEH.RPT");
    request.TableLocation(1) = QStringLiteral("C:\\QUARDELE\\DATA\\talmeon.mdb");
    request.SelectionFormula = QStringLiteral("{TVEH.TVEH_IMMAT}='KG-361-VP'");
    request.OutputMode = 0;
    const support::BoxAnswerer confirmation;
    return Shown<reports::F_RPT>();
}

/// Over a box with a date.
template <class Picker>
forms::Form& Calendar() {
    forms::SetFocus(static_cast<reminders::FRELANCES&>(Reminders()).CTX_DATEREL);
    return Shown<Picker>();
}

const std::vector<Case>& Cases() {
    constexpr int kThisModule = 10;
    constexpr int kAnyModule = 99;
    // The box of the log reaches behind the lower edge of its form; its text does not.
    const QString log = QStringLiteral("reach out: CTX_EVOLUTION ");
    // Two boxes that the program alone uses lie behind the list of templates.
    const QString behindTheList = QStringLiteral("overlap: CTX_PATH/DBG_Liste CTX_PREFDOT/DBG_Liste ");
    static const std::vector<Case> cases{
        {"reminders", QStringLiteral("FRELANCES"), Reminders},
        {"change log", QStringLiteral("F_EVOLUTION"),
         [=]() -> forms::Form& { return ChangeLog(kThisModule); }, log},
        {"change log with the choice of a module", QStringLiteral("F_EVOLUTION"),
         [=]() -> forms::Form& { return ChangeLog(kAnyModule); }, log},
        {"choice of a template", QStringLiteral("FCHXMODL"), Shown<reminders::FCHXMODL>, behindTheList},
        {"selection", QStringLiteral("FSELECT"), Shown<listtools::FSELECT>},
        {"sort", QStringLiteral("FCLASSE"), Shown<listtools::FCLASSE>},
        {"search", QStringLiteral("FCHERCHE"), Shown<listtools::FCHERCHE>},
        {"report", QStringLiteral("F_RPT"), Report},
        {"calendar", QStringLiteral("F_CALENDAR"), Calendar<services::F_CALENDAR>},
        {"calendar on the date of its box", QStringLiteral("F_CALENDAR2"), Calendar<services::F_CALENDAR2>},
    };
    return cases;
}

}  // namespace

class ReadableFormsTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase();
    void cleanup() { tests::StopProgram(); }
    void EveryFormIsLookedAt();
    void NothingIsCutOffOrCovered_data();
    void NothingIsCutOffOrCovered();
};

void ReadableFormsTest::initTestCase() {
    forms::CatchEndOfProcess(true);
    QCoreApplication::setApplicationVersion(QStringLiteral("9.5.5"));
}

void ReadableFormsTest::EveryFormIsLookedAt() {
    // Their layouts have tests of their own.
    std::set<QString> seen{QStringLiteral("MDIMENU_VEH"), QStringLiteral("FFICVEH")};
    for (const Case& shown : Cases()) {
        seen.insert(shown.formName);
    }
    QCOMPARE(seen, tests::FormsOfTheProgram());
}

void ReadableFormsTest::NothingIsCutOffOrCovered_data() {
    QTest::addColumn<int>("index");
    for (int index = 0; index < static_cast<int>(Cases().size()); ++index) {
        QTest::newRow(Cases()[static_cast<std::size_t>(index)].name) << index;
    }
}

void ReadableFormsTest::NothingIsCutOffOrCovered() {
    QFETCH(const int, index);
    const Case& shown = Cases()[static_cast<std::size_t>(index)];
    const support::Installation installation;
    QVERIFY(!tests::StartProgram().ended);
    listtools::TheListToolContext().ColumnTitle = QStringLiteral("Immatriculation");
    forms::Form& form = shown.form();
    QCOMPARE(form.Name(), shown.formName);
    QCoreApplication::processEvents();
    support::KeepPicture(*form.Window(), QLatin1String(shown.name));
    QCOMPARE(support::WhatCannotBeRead(form), shown.known);
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    ReadableFormsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "readable_forms_test.moc"
