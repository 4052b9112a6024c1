// A process that is killed at any point of making a file or a compacted copy: there is no file of the name,
// or a whole one, and the source is what it was to the byte.

#include <jet/check.h>
#include <jet/compaction.h>

#include "child_action.h"
#include "commit/journal.h"
#include "dying.h"
#include "support.h"
#include "workshop.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;
using quardele::test::Argument;
using quardele::test::ChildAction;
using quardele::test::PathOf;

constexpr int kVehicles = 60;

/// Makes an empty file and dies in that: point, 1 for torn writes, file.
const ChildAction kCreate("create", [](const ChildAction::Arguments& arguments) {
    CurrentWriteHook() = DieAt(std::stoi(arguments[0]), arguments[1] == "1");
    static_cast<void>(Database::Create(PathOf(arguments[2])));
});

/// Makes a compacted copy and dies in that: point, 1 for torn writes, target, source.
const ChildAction kCompact("compact", [](const ChildAction::Arguments& arguments) {
    CurrentWriteHook() = DieAt(std::stoi(arguments[0]), arguments[1] == "1");
    Compact(PathOf(arguments[3]), PathOf(arguments[2]));
});

class KillNewFile : public testing::TestWithParam<bool> {
 protected:
    /// How often there was no file then, and how often one.
    struct Tries {
        int absent = 0;
        int whole = 0;
    };

    /// Lets a process die at each point of making the target, whose contents are known.
    template <class Look>
    [[nodiscard]] Tries TryEveryPoint(const ChildAction& make, const std::vector<std::string>& more,
                                      const std::string& contents, const Look& look) const {
        Tries tries;
        int code = kKilled;
        for (int point = 1; code == kKilled; ++point) {
            SCOPED_TRACE("killed at " + std::to_string(point));
            std::vector<std::string> arguments = {std::to_string(point), GetParam() ? "1" : "0",
                                                  Argument(target_)};
            arguments.insert(arguments.end(), more.begin(), more.end());
            code = make.Run(arguments);
            const bool there = fs::exists(target_);
            ++(there ? tries.whole : tries.absent);
            EXPECT_TRUE(there || code == kKilled);
            EXPECT_FALSE(HasJournal(target_));
            if (there) {
                EXPECT_EQ(ContentsOf(target_), contents);
                EXPECT_TRUE(CheckFile(target_).empty());
            }
            look();
            EXPECT_LE(TidyTargets(), 1);
            if (testing::Test::HasFailure()) {
                ADD_FAILURE() << "gave up";
                break;
            }
        }
        EXPECT_EQ(code, 0);
        return tries;
    }

    /// Removes the target and what is named after it; how many unfinished files that were.
    [[nodiscard]] int TidyTargets() const {
        int unfinished = 0;
        for (const auto& entry : fs::directory_iterator(target_.parent_path())) {
            unfinished += entry.path().extension() == ".new" ? 1 : 0;
            fs::remove(entry.path());
        }
        return unfinished;
    }

    TempFolder sources_;
    TempFolder targets_;
    fs::path target_ = targets_.Path() / "new.mdb";
};

TEST_P(KillNewFile, AFileThatIsMadeIsWholeOrNotThere) {
    const Tries tries = TryEveryPoint(kCreate, {}, "", [] {});
    EXPECT_GT(tries.absent, 15);
    EXPECT_GT(tries.whole, 2);
}

TEST_P(KillNewFile, ACompactedCopyIsWholeOrNotThereAndItsSourceUntouched) {
    const fs::path source = MakeWorkshop(sources_.Path(), kVehicles);
    const auto bytes = ReadBytes(source);
    const std::string contents = ContentsOf(source);
    const Tries tries = TryEveryPoint(kCompact, {Argument(source)}, contents, [&] {
        EXPECT_EQ(ReadBytes(source), bytes);
        EXPECT_FALSE(HasJournal(source));
    });
    EXPECT_EQ(ContentsOf(source), contents);
    EXPECT_GT(tries.absent, 30);
    EXPECT_GT(tries.whole, 2);
}

INSTANTIATE_TEST_SUITE_P(WholeAndTornWrites, KillNewFile, testing::Bool());

}  // namespace
}  // namespace quardele::jet::test
