// A process that is killed at any point of putting a journal aside: the file stays as it is to the byte, and
// the journal lies there whole, under one of its two names.

#include <jet/recovery.h>

#include <algorithm>

#include "child_action.h"
#include "commit/journal.h"
#include "dying.h"
#include "locks/lock_file.h"
#include "support.h"
#include "workshop.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;
using quardele::test::Argument;
using quardele::test::ChildAction;
using quardele::test::PathOf;

constexpr int kVehicles = 60;

/// Makes a change of many pages and dies before a page: file, number of the page.
const ChildAction kDieInChange("die in a change of many pages", [](const ChildAction::Arguments& arguments) {
    const fs::path file = PathOf(arguments[0]);
    const auto database = Database::Open(file);
    CurrentWriteHook() = DieAtPage(file, std::stoi(arguments[1]));
    MixedChanges()[1].apply(*database);
});

void OpenAndClose(const fs::path& file) {
    static_cast<void>(Database::Open(file));
}

void Keep(const fs::path& file) {
    static_cast<void>(Recovery(file).KeepFile());
}

/// Opens a file, or keeps it as it is, and dies in that: file, "open" or "keep", point, 1 for torn writes.
const ChildAction kPutAside("put a journal aside", [](const ChildAction::Arguments& arguments) {
    CurrentWriteHook() = DieAt(std::stoi(arguments[2]), arguments[3] == "1");
    (arguments[1] == "open" ? OpenAndClose : Keep)(PathOf(arguments[0]));
});

class KillAside : public testing::TestWithParam<bool> {
 protected:
    /// A journal of the file, whose writer has died before a page.
    [[nodiscard]] std::vector<std::uint8_t> MakeJournal(int page) const {
        EXPECT_EQ(kDieInChange.Run({Argument(file_), std::to_string(page)}), kKilled);
        return ReadBytes(JournalPath(file_));
    }

    /// What an older state of the file has left lies beside a file that has gone on since.
    void LeaveStaleJournal() const {
        const auto journal = MakeJournal(1);
        {
            const auto vehicles = Database::Open(file_)->OpenTable(u"VEHICLES");
            for (int i = 0; i < kVehicles; ++i) {
                UpdateRow(*vehicles, RowAt(*vehicles, i), {{u"KM", std::int32_t{-i}}});
            }
        }
        WriteBytes(JournalPath(file_), journal);
        ASSERT_EQ(Recovery(file_).State(), JournalState::Stale);
    }

    void LeaveJournalOfAnotherFile() {
        static_cast<void>(MakeJournal(3));
        const fs::path other = folder_.Copy(SampleFile("SIGNETS.MDB"));
        fs::rename(JournalPath(file_), JournalPath(other));
        file_ = other;
        ASSERT_EQ(Recovery(file_).State(), JournalState::OtherFile);
    }

    [[nodiscard]] fs::path Aside() const { return JournalPath(file_).string() + ".autre"; }

    void Restore(const std::vector<std::uint8_t>& data, const std::vector<std::uint8_t>& journal) const {
        WriteBytes(file_, data);
        WriteBytes(JournalPath(file_), journal);
        fs::remove(Aside());
        fs::remove(LockFile::PathFor(file_));
    }

    /// The steps of doing it without dying.
    [[nodiscard]] static std::vector<WritePoint> StepsOf(void (*action)(const fs::path&),
                                                         const fs::path& file) {
        std::vector<WritePoint> steps;
        CurrentWriteHook() = [&](const WriteEvent& event) { steps.push_back(event.step); };
        action(file);
        CurrentWriteHook() = nullptr;
        return steps;
    }

    /// Lets a process die at each point of what puts the journal aside, and does it once more.
    void TryEveryPoint(const std::string& how) const {
        const auto data = ReadBytes(file_);
        const auto journal = ReadBytes(JournalPath(file_));
        const auto action = how == "open" ? OpenAndClose : Keep;
        const auto steps = StepsOf(action, file_);
        EXPECT_EQ(std::count(steps.begin(), steps.end(), WritePoint::Rename), 1);
        int code = kKilled;
        for (int point = 1; code == kKilled; ++point) {
            SCOPED_TRACE(how + ", killed at " + std::to_string(point));
            Restore(data, journal);
            code = kPutAside.Run({Argument(file_), how, std::to_string(point), GetParam() ? "1" : "0"});
            ASSERT_EQ(code, point <= static_cast<int>(steps.size()) ? kKilled : 0);
            EXPECT_EQ(ReadBytes(file_), data);
            EXPECT_NE(fs::exists(JournalPath(file_)), fs::exists(Aside()));
            EXPECT_TRUE(code == kKilled || fs::exists(Aside()));
            if (HasJournal(file_)) {
                action(file_);
            }
            EXPECT_EQ(ReadBytes(file_), data);
            EXPECT_EQ(ReadBytes(Aside()), journal);
            EXPECT_FALSE(HasJournal(file_));
            ASSERT_FALSE(HasFailure());
        }
    }

    TempFolder folder_;
    fs::path file_ = MakeWorkshop(folder_.Path(), kVehicles);
};

TEST_P(KillAside, OpeningBesideAJournalOfAnOlderState) {
    LeaveStaleJournal();
    TryEveryPoint("open");
}

TEST_P(KillAside, OpeningBesideAJournalOfAnotherFile) {
    LeaveJournalOfAnotherFile();
    TryEveryPoint("open");
}

TEST_P(KillAside, KeepingAFileThatIsHalfWritten) {
    static_cast<void>(MakeJournal(3));
    ASSERT_EQ(Recovery(file_).State(), JournalState::Half);
    TryEveryPoint("keep");
}

TEST_P(KillAside, KeepingAFileThatIsWhollyWritten) {
    const auto journal = MakeJournal(1);
    OpenAndClose(file_);
    MixedChanges()[1].apply(*Database::Open(file_));
    WriteBytes(JournalPath(file_), journal);
    // The undoing has counted the slot once more than the change that the journal tells of.
    ASSERT_EQ(Recovery(file_).State(), JournalState::Finished);
    TryEveryPoint("keep");
}

INSTANTIATE_TEST_SUITE_P(WholeAndTornWrites, KillAside, testing::Bool());

}  // namespace
}  // namespace quardele::jet::test
