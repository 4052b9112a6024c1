// Disks that begin to refuse in the middle of a change and go on refusing: a medium that has become
// read-only, a disk that is really full, a file that may not grow. The change gets the error; once the disk
// takes writes again the file is whole, and the change can be made.

#include <jet/check.h>

#include <basic/runtime_error.h>

#include "commit/journal.h"
#include "file/write_hook.h"
#include "support.h"
#include "workshop.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;

constexpr int kVehicles = 120;

class MediumTest : public testing::Test {
 protected:
    static void SetUpTestSuite() {
        folder_ = new TempFolder;
        fs::path file = MakeWorkshop(folder_->Path(), kVehicles);
        stages_ = new std::vector<fs::path>;
        for (std::size_t stage = 0; stage <= MixedChanges().size(); ++stage) {
            stages_->push_back(folder_->Path() / ("stage" + std::to_string(stage) + ".mdb"));
            fs::copy_file(file, stages_->back());
            if (stage < MixedChanges().size()) {
                MixedChanges()[stage].apply(*Database::Open(file));
            }
        }
    }
    static void TearDownTestSuite() {
        delete stages_;
        delete folder_;
    }
    void TearDown() override { CurrentWriteHook() = nullptr; }

    /// From the n-th step that changes a file on, nothing can be changed any more.
    void RefuseFrom(int step) {
        refused_ = false;
        CurrentWriteHook() = [this, step, count = 0](const WriteEvent& event) mutable {
            if (++count >= step) {
                allWritten_ = refused_ ? allWritten_ : IsBehindTheLastPage(event);
                refused_ = true;
                throw basic::RuntimeError(basic::error::kReadOnly);
            }
        };
    }
    [[nodiscard]] bool IsBehindTheLastPage(const WriteEvent& event) const {
        return event.step == WritePoint::Remove || (event.step == WritePoint::Sync && event.path == file_);
    }
    static void TakeWritesAgain() { CurrentWriteHook() = nullptr; }

    /// What a change gives that meets such a medium; the same database reads and changes again afterwards.
    void TryChange(Database& database, std::size_t stage, int step) {
        RefuseFrom(step);
        error_ = ErrorNumber([&] { MixedChanges()[stage].apply(database); });
        // Nothing is known about half of a change now; it must not be shown.
        shown_ = ErrorNumber([&] { static_cast<void>(ContentsOf(file_)); });
        TakeWritesAgain();
    }

    static TempFolder* folder_;
    static std::vector<fs::path>* stages_;
    TempFolder own_;
    fs::path file_ = own_.Path() / "workshop.mdb";
    bool refused_ = false;
    bool allWritten_ = false;  ///< before the first refusal
    int error_ = 0;
    int shown_ = 0;
};

TempFolder* MediumTest::folder_ = nullptr;
std::vector<fs::path>* MediumTest::stages_ = nullptr;

TEST_F(MediumTest, ThatBecomesReadOnlyDuringAChangeKeepsTheFileWhole) {
    int refusals = 0;
    for (std::size_t stage = 0; stage < MixedChanges().size(); ++stage) {
        const std::string before = ContentsOf((*stages_)[stage]);
        error_ = basic::error::kReadOnly;
        for (int step = 1; error_ != 0; ++step) {
            SCOPED_TRACE(MixedChanges()[stage].name + ", read-only from step " + std::to_string(step));
            CopyOver((*stages_)[stage], file_);
            const auto database = Database::Open(file_);
            TryChange(*database, stage, step);
            ASSERT_EQ(error_, error_ == 0 ? 0 : basic::error::kReadOnly);
            ASSERT_EQ(shown_, shown_ == 0 ? 0 : basic::error::kReadOnly);
            if (error_ == 0) {
                break;
            }
            ++refusals;
            // A change whose last page was written could be neither synced nor taken back: who comes next
            // finds all of it and keeps it.
            if (!allWritten_) {
                ASSERT_TRUE(ContentsOf(file_) == before);
                MixedChanges()[stage].apply(*database);
            }
            ASSERT_TRUE(ContentsOf(file_) == ContentsOf((*stages_)[stage + 1]));
            ASSERT_TRUE(CheckFile(file_).empty());
            ASSERT_FALSE(HasJournal(file_));
        }
    }
    EXPECT_GT(refusals, 250);
}

}  // namespace
}  // namespace quardele::jet::test
