#include "measured_program.h"

#include <QLabel>
#include <QTest>

#include <basic/paths.h>
#include <forms/grid.h>
#include <forms/runtime.h>
#include <program/program.h>
#include <reminders/frelances.h>
#include <shell/main_window.h>
#include <vehicles/fficveh.h>

#include "figures.h"
#include "idle.h"
#include "letter_run.h"
#include "operator.h"

namespace quardele::bench {

namespace fs = std::filesystem;
using reminders::FRELANCES;

namespace {

/// 1280 x 800 pixels, in twips.
constexpr int kScreenWidth = 19200;
constexpr int kScreenHeight = 12000;

void TellMoment(const std::string& name) {
    TellFigure(name, Duration(Clock::now().time_since_epoch()).count());
}

void TellPeakMemory() {
    TellFigure("memory", static_cast<double>(PeakMemory()));
}

/// The program's start, as its own main does it but for the drive, which is the installation's whatever the
/// machine's own table says.
shell::MDIMENU_VEH& Start(const fs::path& driveC) {
    basic::DriveTable::Session().Set(u'C', driveC);
    basic::ChDir(u"C:\\QUARDELE\\VEH");
    forms::Screen::SetSizeForTests(kScreenWidth, kScreenHeight);
    SetUpProgram(*qApp);
    StartProgram();
    return forms::Instance<shell::MDIMENU_VEH>();
}

/// The reminders form with the reference date typed and not yet confirmed.
FRELANCES& OpenReminders(const fs::path& driveC) {
    demo::ClickMenu(Start(driveC), QStringLiteral("M_RELANC"));
    auto& form = forms::Instance<FRELANCES>();
    QTest::mouseClick(form.CTX_DATEREL, Qt::LeftButton);
    form.CTX_DATEREL->selectAll();
    QTest::keyClicks(form.CTX_DATEREL, QStringLiteral("31/12/2026"));
    RunUntilIdle();
    return form;
}

Duration ListDueVisits(FRELANCES& form) {
    return TimeUntilPainted(*form.DBG_RELANCES->viewport(),
                            [&form] { QTest::keyClick(form.CTX_DATEREL, Qt::Key_Return); });
}

}  // namespace

void RunSmallWindow() {
    QLabel window(QStringLiteral("Véhicules"));
    TimeUntilPainted(window, [&window] { window.show(); });
    TellMoment("idle");
}

void RunStart(const fs::path& driveC) {
    TimeUntilPainted(*qApp, [&driveC] { Start(driveC); });
    TellMoment("idle");
    TellPeakMemory();
}

void RunDueList(const fs::path& driveC) {
    constexpr int kFurtherTimes = 5;
    FRELANCES& form = OpenReminders(driveC);
    TellFigure("first", ListDueVisits(form).count());
    std::vector<Duration> further;
    further.reserve(kFurtherTimes);
    for (int time = 0; time < kFurtherTimes; ++time) {
        further.push_back(ListDueVisits(form));
    }
    TellFigure("again", Median(further).count());
    TellFigure("rows", form.DBG_RELANCES->MaxRows());
    TellPeakMemory();
}

void RunVehicleList(const fs::path& driveC) {
    constexpr int kFurtherTimes = 9;
    shell::MDIMENU_VEH& mainWindow = Start(driveC);
    TellFigure("open", TimeUntilPainted(*qApp, [&] {
                           demo::ClickMenu(mainWindow, QStringLiteral("M_VEHIC"));
                       }).count());
    const auto& form = forms::Instance<vehicles::FFICVEH>();
    auto* const list = form.Surface()->findChild<forms::Grid*>(QStringLiteral("DBG_Liste"));
    const auto press = [](Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        return TimeUntilPainted(*qApp,
                                [=] { QTest::keyClick(forms::Screen::ActiveControl(), key, modifiers); });
    };
    TellFigure("end", press(Qt::Key_End, Qt::ControlModifier).count());
    TellFigure("rows", list->ActiveRow());
    TellFigure("home", press(Qt::Key_Home, Qt::ControlModifier).count());
    const auto tellMedian = [&](const char* name, const std::function<Duration()>& act) {
        std::vector<Duration> times;
        for (int time = 0; time < kFurtherTimes; ++time) {
            times.push_back(act());
        }
        TellFigure(name, Median(std::move(times)).count());
    };
    tellMedian("page", [&] { return press(Qt::Key_PageDown); });
    tellMedian("step", [&] { return press(Qt::Key_Down); });
    tellMedian("record", [&] {
        const Duration there = press(Qt::Key_Return);
        return there + press(Qt::Key_F8);
    });
    TellFigure("refresh", press(Qt::Key_F5).count());
    TellPeakMemory();
}

void RunLetters(const fs::path& driveC, int customers) {
    FRELANCES& form = OpenReminders(driveC);
    ListDueVisits(form);
    LetterRun letters(form);
    const LetterBatch first = letters.Write(1);
    if (first.letters == 0) {
        TellFigure("message", first.message.toStdString());
        return;
    }
    const LetterBatch batch = letters.Write(customers);
    TellFigure("first", first.time.count());
    TellFigure("letters", batch.letters);
    TellFigure("visits", batch.visits);
    TellFigure("time", batch.time.count());
    TellPeakMemory();
}

}  // namespace quardele::bench
