#include "letter_run.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>

#include <sys/wait.h>
#include <unistd.h>

#include <QLabel>

#include <basic/paths.h>
#include <forms/strings.h>
#include <shell/session.h>

#include "operator.h"

namespace quardele::bench {

namespace fs = std::filesystem;

namespace {

constexpr int kRegistrationColumn = 2;
constexpr int kCustomerColumn = 4;
constexpr int kLetterColumn = 8;

QString Cell(forms::Grid& grid, int row, int col) {
    grid.SetRow(row);
    grid.SetCol(col);
    return grid.Text();
}

/// Whether the row has a vehicle and a customer whose code can be part of a file name.
bool CanBeWrittenTo(forms::Grid& grid, int row) {
    const QString customer = Cell(grid, row, kCustomerColumn);
    return !Cell(grid, row, kRegistrationColumn).isEmpty() && !customer.isEmpty() &&
           std::all_of(customer.begin(), customer.end(), [](QChar unit) { return unit.isLetterOrNumber(); });
}

int LettersInFolder() {
    const fs::directory_iterator entries(
        basic::NativePath(forms::ToText(shell::TheSession().CHEMIN_DONNEES)));
    return static_cast<int>(std::count_if(begin(entries), end(entries), [](const fs::directory_entry& entry) {
        return entry.path().extension() == ".RVE";
    }));
}

/// Takes the first template of the choice, and confirms message boxes; the first says what went wrong.
demo::ModalWatcher AnswerWindows(QString& message) {
    return demo::ModalWatcher([&message](QWidget& window) {
        const auto* text = window.findChild<QLabel*>(QStringLiteral("MsgBox_Text"));
        if (text != nullptr && message.isEmpty()) {
            message = text->text().simplified();
        }
        demo::PressKeys({Qt::Key_Return});
    });
}

/// The processes that this one's main thread has started and that are still there.
std::vector<pid_t> Children() {
    const std::string self = std::to_string(getpid());
    std::ifstream list("/proc/" + self + "/task/" + self + "/children");
    std::vector<pid_t> children;
    for (pid_t child = 0; list >> child;) {
        children.push_back(child);
    }
    return children;
}

}  // namespace

LetterRun::~LetterRun() {
    for (const pid_t child : Children()) {
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
    }
}

LetterBatch LetterRun::Write(int customers) {
    LetterBatch batch;
    const std::vector<int> rows = RowsOfNextCustomers(customers);
    demo::Click(*form_.Cmd_DeSelectAll);
    demo::Tick(*form_.DBG_RELANCES, kLetterColumn, rows);
    const int before = LettersInFolder();
    const demo::ModalWatcher watcher = AnswerWindows(batch.message);
    const Clock::time_point start = Clock::now();
    demo::Click(*form_.Cmd_Editer);
    batch.time = Clock::now() - start;
    batch.letters = LettersInFolder() - before;
    batch.visits = static_cast<int>(rows.size());
    return batch;
}

std::vector<int> LetterRun::RowsOfNextCustomers(int customers) {
    forms::Grid& grid = *form_.DBG_RELANCES;
    std::vector<int> rows;
    QString customer;
    for (; nextRow_ <= grid.MaxRows(); ++nextRow_) {
        if (!CanBeWrittenTo(grid, nextRow_)) {
            continue;
        }
        if (const QString next = Cell(grid, nextRow_, kCustomerColumn); next != customer) {
            if (customers-- == 0) {
                break;
            }
            customer = next;
        }
        rows.push_back(nextRow_);
    }
    return rows;
}

}  // namespace quardele::bench
