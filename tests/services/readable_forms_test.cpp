// Every form but the vehicle form, whose size changes with the screen, as a reader finds it: nothing is cut
// off, nothing stands on something else. A picture of each is kept in the build tree.
#include <functional>

#include <QTest>

#include <forms/runtime.h>
#include <listtools/fcherche.h>
#include <listtools/fclasse.h>
#include <listtools/fselect.h>
#include <listtools/list_tool_context.h>
#include <reminders/fchxmodl.h>
#include <reminders/frelances.h>
#include <shell/f_evolution.h>
#include <shell/main_window.h>
#include <shell/session.h>
#include <support/installation.h>
#include <support/readable.h>

#include "start.h"

using namespace quardele;

namespace {

struct Case {
    const char* name;
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

const std::vector<Case>& Cases() {
    constexpr int kThisModule = 10;
    constexpr int kAnyModule = 99;
    // The box of the log reaches behind the lower edge of its form; its text does not.
    const QString log = QStringLiteral("reach out: CTX_EVOLUTION ");
    // Two boxes that the program alone uses lie behind the list of templates.
    const QString behindTheList = QStringLiteral("overlap: CTX_PATH/DBG_Liste CTX_PREFDOT/DBG_Liste ");
    static const std::vector<Case> cases{
        {"reminders", Reminders},
        {"change log", [=]() -> forms::Form& { return ChangeLog(kThisModule); }, log},
        {"change log with the choice of a module", [=]() -> forms::Form& { return ChangeLog(kAnyModule); },
         log},
        {"choice of a template", Shown<reminders::FCHXMODL>, behindTheList},
        {"selection", Shown<listtools::FSELECT>},
        {"sort", Shown<listtools::FCLASSE>},
        {"search", Shown<listtools::FCHERCHE>},
    };
    return cases;
}

}  // namespace

class ReadableFormsTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase();
    void cleanup() { tests::StopProgram(); }
    void NothingIsCutOffOrCovered_data();
    void NothingIsCutOffOrCovered();
};

void ReadableFormsTest::initTestCase() {
    forms::CatchEndOfProcess(true);
    QCoreApplication::setApplicationVersion(QStringLiteral("9.5.5"));
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
