// A file system that has no byte locks. The system of the test refuses them, with the error of such a file
// system, to a process that asked for that.

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>

#include <jet/check.h>
#include <jet/recovery.h>

#include "child_action.h"
#include "commit/journal.h"
#include "dying.h"
#include "locks/lock_file.h"
#include "refused_calls.h"
#include "support.h"
#include "workshop.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;

constexpr int kCannotRefuse = 2;

int ReadAndTryToWrite(const fs::path& file) {
    if (!RefuseLocks()) {
        return kCannotRefuse;
    }
    const auto database = Database::Open(file);
    const auto table = database->OpenTable(u"VEHICLES");
    const RowId row = RowAt(*table, 3);
    const bool refused =
        database->IsReadOnly() && table->Fetch(row).has_value() &&
        ErrorNumber([&] { table->Delete(row); }) == basic::error::kReadOnly &&
        ErrorNumber([&] { static_cast<void>(table->Lock(row)); }) == basic::error::kReadOnly &&
        ErrorNumber([&] { static_cast<void>(database->Begin()); }) == basic::error::kReadOnly;
    return refused && !fs::exists(LockFile::PathFor(file)) ? 0 : 1;
}

int LookAtAnInterruptedChange(const fs::path& file) {
    if (!RefuseLocks()) {
        return kCannotRefuse;
    }
    const std::vector<Fault> faults = CheckFile(file);
    const bool checked = std::any_of(faults.begin(), faults.end(), [](const Fault& fault) {
        return fault.code == FaultCode::InterruptedWrite;
    });
    Recovery recovery(file);
    const bool shown = recovery.State() == JournalState::Half && recovery.PageCount() > 0;
    const bool refused =
        ErrorNumber([&] { recovery.RollBack(true); }) == basic::error::kReadOnly &&
        ErrorNumber([&] { static_cast<void>(recovery.KeepFile()); }) == basic::error::kReadOnly;
    return checked && shown && refused ? 0 : 1;
}

/// Dies in the middle of a change.
const quardele::test::ChildAction kDie("die in a change", [](const std::vector<std::string>& arguments) {
    const auto database = Database::Open(quardele::test::PathOf(arguments[0]));
    const auto table = database->OpenTable(u"VEHICLES");
    CurrentWriteHook() = DieAtPage(database->File(), 2);
    table->Delete(RowAt(*table, 3));
});

class NoLocks : public testing::Test {
 protected:
    /// What the function gives in a process without locks, which must leave the file as it is.
    void ExpectDone(int (*function)(const fs::path& file)) const {
        const auto before = ReadBytes(file_);
        const pid_t child = ::fork();
        if (child == 0) {
            ::_exit(function(file_));
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        ASSERT_TRUE(WIFEXITED(status));
        if (WEXITSTATUS(status) == kCannotRefuse) {
            GTEST_SKIP() << "this system cannot refuse locks to a process";
        }
        EXPECT_EQ(WEXITSTATUS(status), 0);
        EXPECT_EQ(ReadBytes(file_), before);
    }

    TempFolder folder_;
    fs::path file_ = MakeWorkshop(folder_.Path(), 20);
};

TEST_F(NoLocks, AFileWithoutThemIsReadAndNotWritten) {
    ExpectDone(ReadAndTryToWrite);
}

TEST_F(NoLocks, ASoundFileWithoutThemIsChecked) {
    ExpectDone(
        [](const fs::path& file) { return RefuseLocks() ? CheckFile(file).empty() ? 0 : 1 : kCannotRefuse; });
}

TEST_F(NoLocks, AnInterruptedChangeIsShownAndNotUndone) {
    ASSERT_EQ(kDie.Run({quardele::test::Argument(file_)}), kKilled);
    ExpectDone(LookAtAnInterruptedChange);
    EXPECT_TRUE(HasJournal(file_));
}

}  // namespace
}  // namespace quardele::jet::test
