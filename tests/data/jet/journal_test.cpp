// Journals that a writer has left: what opening makes of them, and what somebody may do who looks at them.

#include <jet/recovery.h>

#include <algorithm>
#include <cstdlib>

#include <basic/runtime_error.h>

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

constexpr std::size_t kPageSize = 4096;
constexpr std::size_t kSlotsAt = 0xE00;
constexpr std::size_t kSlotsSize = 512;
/// Places in a journal: the end of the fields of its header, and its first record.
constexpr std::size_t kHeaderFields = 48;
constexpr std::size_t kRecordsAt = 1024;

/// The change of the tests: rows that lie on several pages, index entries of new pages.
void MakeChange(const fs::path& file) {
    MixedChanges()[1].apply(*Database::Open(file));
}

/// Makes the change and dies before a page: file, number of the page.
const ChildAction kDieAtPage("die at a page", [](const ChildAction::Arguments& arguments) {
    const fs::path file = PathOf(arguments[0]);
    CurrentWriteHook() = DieAtPage(file, std::stoi(arguments[1]));
    MakeChange(file);
});

/// Makes the change and dies before it deletes the journal: file.
const ChildAction kLeaveJournal("leave the journal", [](const ChildAction::Arguments& arguments) {
    CurrentWriteHook() = [](const WriteEvent& event) {
        if (event.step == WritePoint::Remove) {
            std::_Exit(kKilled);
        }
    };
    MakeChange(PathOf(arguments[0]));
});

class JournalTest : public testing::Test {
 protected:
    /// Lets a process die before it writes the n-th page of the change.
    void DieAtPageOf(int page) const {
        ASSERT_EQ(kDieAtPage.Run({Argument(file_), std::to_string(page)}), kKilled);
        ASSERT_TRUE(HasJournal(file_));
    }
    [[nodiscard]] int OpenError(OpenMode mode = OpenMode::Shared) const {
        return ErrorNumber([&] { static_cast<void>(Database::Open(file_, mode)); });
    }
    /// Writes over the start of a page's rows as a program would that knows of no journal.
    void ScribbleOn(std::uint32_t page) const {
        auto bytes = ReadBytes(file_);
        const std::size_t last = (page + 1) * kPageSize - 1;
        bytes.at(last) = static_cast<std::uint8_t>(~bytes[last]);
        WriteBytes(file_, bytes);
    }
    /// Counts a commit of another user.
    void CountForeignCommit() const {
        auto bytes = ReadBytes(file_);
        ++bytes.at(kSlotsAt + 2 * 200);
        WriteBytes(file_, bytes);
    }
    /// The first page that the journal's change replaces.
    [[nodiscard]] std::uint32_t FirstPage() const { return Recovery(file_).Page(0).number; }
    [[nodiscard]] JournalState State() const { return Recovery(file_).State(); }

    TempFolder folder_;
    fs::path file_ = MakeWorkshop(folder_.Path(), 200);
    std::string before_ = ContentsOf(file_);
};

TEST_F(JournalTest, ThereIsNoneBetweenChanges) {
    EXPECT_FALSE(HasJournal(file_));
    EXPECT_EQ(State(), JournalState::None);
    EXPECT_EQ(ErrorNumber([&] { Recovery(file_).RollBack(true); }), basic::error::kInvalidOperation);
    EXPECT_EQ(ErrorNumber([&] { Recovery(file_).KeepFile(); }), basic::error::kInvalidOperation);
}

TEST_F(JournalTest, OneWithoutItsHeaderMeansNothing) {
    WriteBytes(JournalPath(file_), std::vector<std::uint8_t>(5000, 0));
    EXPECT_EQ(State(), JournalState::Unfinished);
    EXPECT_EQ(ContentsOf(file_), before_);
    EXPECT_FALSE(HasJournal(file_));
}

TEST_F(JournalTest, ACompleteOneBeforeTheFirstPageIsRolledBack) {
    DieAtPageOf(1);
    EXPECT_EQ(State(), JournalState::NotStarted);
    EXPECT_EQ(ContentsOf(file_), before_);
    EXPECT_FALSE(HasJournal(file_));
}

TEST_F(JournalTest, ShowsEachPageBeforeAfterAndNow) {
    DieAtPageOf(3);
    const Recovery recovery(file_);
    EXPECT_EQ(recovery.State(), JournalState::Half);
    EXPECT_EQ(recovery.JournalFile(), JournalPath(file_));
    ASSERT_GT(recovery.PageCount(), 3U);
    EXPECT_EQ(recovery.Page(0).state, JournalPageState::After);
    EXPECT_EQ(recovery.Page(0).now, recovery.Page(0).after);
    EXPECT_NE(recovery.Page(0).now, recovery.Page(0).before);
    EXPECT_EQ(recovery.Page(2).state, JournalPageState::Before);
    EXPECT_EQ(recovery.Page(2).now, recovery.Page(2).before);
    const JournalPage last = recovery.Page(recovery.PageCount() - 1);
    EXPECT_GE(last.number, recovery.PagesBefore());
    EXPECT_TRUE(last.before.empty());
    EXPECT_TRUE(last.now.empty());
}

TEST_F(JournalTest, WhileItIsLookedAtNobodyWrites) {
    DieAtPageOf(3);
    const Recovery recovery(file_);
    EXPECT_EQ(ErrorNumber([&] { const Recovery second(file_); }), basic::error::kRecordLocked);
}

TEST_F(JournalTest, AFinishedOneIsDropped) {
    // The deletion of the journal is the only thing that is missing.
    ASSERT_EQ(kLeaveJournal.Run({Argument(file_)}), kKilled);
    EXPECT_EQ(State(), JournalState::Finished);
    const auto bytes = ReadBytes(file_);
    EXPECT_EQ(OpenError(OpenMode::ReadOnly), 0);
    EXPECT_TRUE(HasJournal(file_));
    EXPECT_EQ(OpenError(), 0);
    EXPECT_FALSE(HasJournal(file_));
    EXPECT_EQ(ReadBytes(file_), bytes);
}

TEST_F(JournalTest, AReaderOfAHalfWrittenFileIsToldSo) {
    DieAtPageOf(3);
    EXPECT_EQ(OpenError(OpenMode::ReadOnly), basic::error::kReadOnly);
    EXPECT_EQ(OpenError(), 0);
    EXPECT_EQ(OpenError(OpenMode::ReadOnly), 0);
}

TEST_F(JournalTest, OneOfAnotherFileIsPutAside) {
    DieAtPageOf(3);
    const fs::path other = folder_.Copy(SampleFile("SIGNETS.MDB"));
    fs::rename(JournalPath(file_), JournalPath(other));
    EXPECT_EQ(Recovery(other).State(), JournalState::OtherFile);
    EXPECT_EQ(ErrorNumber([&] { Recovery(other).RollBack(true); }), basic::error::kInvalidOperation);
    const auto before = ReadBytes(other);
    EXPECT_EQ(ErrorNumber([&] { static_cast<void>(Database::Open(other)); }), 0);
    EXPECT_EQ(ReadBytes(other), before);
    EXPECT_FALSE(HasJournal(other));
    EXPECT_TRUE(fs::exists(other.string() + ".qjournal.autre"));
}

TEST_F(JournalTest, OneOfAnOlderStateIsPutAside) {
    DieAtPageOf(1);
    const auto journal = ReadBytes(JournalPath(file_));
    const auto vehicles = Database::Open(file_)->OpenTable(u"VEHICLES");
    for (int i = 0; i < 200; ++i) {
        UpdateRow(*vehicles, RowAt(*vehicles, i), {{u"KM", std::int32_t{-i}}});
    }
    const std::string contents = ContentsOf(file_);
    WriteBytes(JournalPath(file_), journal);
    ASSERT_EQ(State(), JournalState::Stale);
    EXPECT_EQ(ContentsOf(file_), contents);
    EXPECT_FALSE(HasJournal(file_));
    EXPECT_TRUE(fs::exists(file_.string() + ".qjournal.autre"));
}

TEST_F(JournalTest, OneOfAnotherVersionIsNotTouched) {
    DieAtPageOf(3);
    auto journal = ReadBytes(JournalPath(file_));
    journal[7] = '1';
    WriteBytes(JournalPath(file_), journal);
    const auto bytes = ReadBytes(file_);
    EXPECT_EQ(OpenError(), basic::error::kNotADatabase);
    EXPECT_EQ(ReadBytes(file_), bytes);
    EXPECT_EQ(ReadBytes(JournalPath(file_)), journal);
    EXPECT_EQ(State(), JournalState::Unreadable);
    EXPECT_EQ(ReadBytes(Recovery(file_).KeepFile()), journal);
}

// The header is valid, so that the change may have reached the file.
TEST_F(JournalTest, ADamagedOneIsKeptAndTheFileIsNotOpened) {
    DieAtPageOf(3);
    auto journal = ReadBytes(JournalPath(file_));
    journal.at(journal.size() / 2) ^= 1;
    WriteBytes(JournalPath(file_), journal);
    const auto bytes = ReadBytes(file_);
    EXPECT_EQ(OpenError(), basic::error::kNotADatabase);
    EXPECT_EQ(OpenError(OpenMode::ReadOnly), basic::error::kReadOnly);
    EXPECT_EQ(State(), JournalState::Damaged);
    EXPECT_EQ(ErrorNumber([&] { Recovery(file_).RollBack(true); }), basic::error::kInvalidOperation);
    EXPECT_EQ(ReadBytes(file_), bytes);
    EXPECT_EQ(ReadBytes(JournalPath(file_)), journal);
}

TEST_F(JournalTest, OneWhoseRecordsAreZerosIsDamagedAndCanBePutAside) {
    DieAtPageOf(3);
    auto journal = ReadBytes(JournalPath(file_));
    std::fill(journal.begin() + kRecordsAt, journal.end(), std::uint8_t{0});
    WriteBytes(JournalPath(file_), journal);
    EXPECT_EQ(OpenError(), basic::error::kNotADatabase);
    Recovery recovery(file_);
    EXPECT_EQ(recovery.State(), JournalState::Damaged);
    EXPECT_EQ(recovery.PageCount(), 0U);
    EXPECT_EQ(ReadBytes(recovery.KeepFile()), journal);
    EXPECT_FALSE(HasJournal(file_));
}

TEST_F(JournalTest, ItsHeaderIsWrittenWhenItsRecordsAreOnTheDisk) {
    bool recordsOnDisk = false;
    bool headerWritten = false;
    CurrentWriteHook() = [&](const WriteEvent& event) {
        if (event.path != JournalPath(file_)) {
            return;
        }
        const bool isHeader =
            event.step == WritePoint::Write && event.offset == 0 && event.bytes.size() == kRecordsAt;
        EXPECT_TRUE(!isHeader || recordsOnDisk);
        headerWritten = headerWritten || isHeader;
        recordsOnDisk = event.step == WritePoint::Sync || (recordsOnDisk && isHeader);
    };
    MakeChange(file_);
    CurrentWriteHook() = nullptr;
    EXPECT_TRUE(headerWritten);
}

// The disk had the slot that an undoing writes, but not yet all of the old pages, when the power failed.
TEST_F(JournalTest, AnUndoingThatLostPagesIsTakenUpAgain) {
    DieAtPageOf(3);
    const auto half = ReadBytes(file_);
    const auto journal = ReadBytes(JournalPath(file_));
    ASSERT_EQ(OpenError(), 0);
    const auto undone = ReadBytes(file_);
    auto lost = half;
    std::copy_n(undone.begin() + kSlotsAt, kSlotsSize, lost.begin() + kSlotsAt);
    ASSERT_NE(lost, half);
    WriteBytes(file_, lost);
    WriteBytes(JournalPath(file_), journal);
    EXPECT_EQ(State(), JournalState::Half);
    EXPECT_EQ(ContentsOf(file_), before_);
    EXPECT_EQ(ReadBytes(file_), undone);
    EXPECT_FALSE(HasJournal(file_));
}

// Whatever has become of a byte of the journal: the file is opened as it was before the change, or not
// touched at all.
TEST_F(JournalTest, AByteThatWasChangedNeverPutsAWrongPageIntoTheFile) {
    DieAtPageOf(3);
    const auto half = ReadBytes(file_);
    const auto journal = ReadBytes(JournalPath(file_));
    ASSERT_EQ(OpenError(), 0);
    const auto undone = ReadBytes(file_);
    const std::size_t stride = journal.size() / 150;
    std::size_t refused = 0;
    for (std::size_t at = 0; at < journal.size(); at += at < kHeaderFields ? 1 : stride) {
        SCOPED_TRACE("byte " + std::to_string(at));
        auto damaged = journal;
        damaged[at] ^= static_cast<std::uint8_t>(1U << at % 8);
        WriteBytes(file_, half);
        WriteBytes(JournalPath(file_), damaged);
        const bool opened = OpenError() == 0;
        refused += opened ? 0U : 1U;
        ASSERT_EQ(ReadBytes(file_), opened ? undone : half);
        ASSERT_TRUE(opened || ReadBytes(JournalPath(file_)) == damaged);
    }
    EXPECT_GT(refused, 150U);
}

TEST_F(JournalTest, OneThatWasCutShortIsNeverCarriedOut) {
    DieAtPageOf(3);
    const auto half = ReadBytes(file_);
    const auto journal = ReadBytes(JournalPath(file_));
    for (std::size_t size = kRecordsAt; size < journal.size(); size += 1000) {
        SCOPED_TRACE("size " + std::to_string(size));
        WriteBytes(JournalPath(file_),
                   {journal.begin(), journal.begin() + static_cast<std::ptrdiff_t>(size)});
        ASSERT_EQ(OpenError(), basic::error::kNotADatabase);
        ASSERT_EQ(ReadBytes(file_), half);
    }
}

TEST_F(JournalTest, PagesThatSomebodyElseChangedAreNotRolledBackOver) {
    DieAtPageOf(3);
    ScribbleOn(FirstPage());
    const auto bytes = ReadBytes(file_);
    EXPECT_EQ(OpenError(), basic::error::kNotADatabase);
    EXPECT_EQ(ReadBytes(file_), bytes);
    ASSERT_TRUE(HasJournal(file_));
    const Recovery recovery(file_);
    EXPECT_EQ(recovery.State(), JournalState::ForeignChange);
    EXPECT_EQ(recovery.Page(0).state, JournalPageState::Foreign);
    EXPECT_EQ(recovery.Page(1).state, JournalPageState::After);
}

TEST_F(JournalTest, WhatOthersWroteElsewhereSinceKeepsItFromBeingRolledBack) {
    DieAtPageOf(3);
    CountForeignCommit();
    EXPECT_EQ(State(), JournalState::ForeignChange);
    EXPECT_EQ(OpenError(), basic::error::kNotADatabase);
}

TEST_F(JournalTest, SomebodyMayRollBackAllTheSame) {
    DieAtPageOf(3);
    ScribbleOn(FirstPage());
    EXPECT_EQ(ErrorNumber([&] { Recovery(file_).RollBack(); }), basic::error::kInvalidOperation);
    Recovery(file_).RollBack(true);
    EXPECT_FALSE(HasJournal(file_));
    EXPECT_EQ(ContentsOf(file_), before_);
}

TEST_F(JournalTest, SomebodyMayKeepTheFileAsItIs) {
    DieAtPageOf(3);
    ScribbleOn(FirstPage());
    const auto bytes = ReadBytes(file_);
    const fs::path aside = Recovery(file_).KeepFile();
    EXPECT_TRUE(fs::exists(aside));
    EXPECT_FALSE(HasJournal(file_));
    EXPECT_EQ(ReadBytes(file_), bytes);
}

// Its writer may have been told that the sync had failed: the pages may be in the system's memory only.
TEST_F(JournalTest, AFinishedOneIsPutAsideWhenItsPagesWereWrittenAgain) {
    ASSERT_EQ(kLeaveJournal.Run({Argument(file_)}), kKilled);
    const auto bytes = ReadBytes(file_);
    std::size_t pages = 0;
    bool synced = false;
    CurrentWriteHook() = [&](const WriteEvent& event) {
        const bool isPage = event.step == WritePoint::Write && event.bytes.size() == kPageSize;
        pages += isPage ? 1U : 0U;
        synced = !isPage && (synced || event.step == WritePoint::Sync);
        EXPECT_TRUE(event.step != WritePoint::Rename || synced);
    };
    Recovery recovery(file_);
    const std::size_t changed = recovery.PageCount();
    static_cast<void>(recovery.KeepFile());
    CurrentWriteHook() = nullptr;
    EXPECT_EQ(pages, changed);
    EXPECT_EQ(ReadBytes(file_), bytes);
    EXPECT_FALSE(HasJournal(file_));
}

TEST_F(JournalTest, OnesPutAsideDoNotReplaceEachOther) {
    WriteBytes(JournalPath(file_), {1});
    const fs::path first = Recovery(file_).KeepFile();
    WriteBytes(JournalPath(file_), {2});
    const fs::path second = Recovery(file_).KeepFile();
    EXPECT_EQ(ReadBytes(first), std::vector<std::uint8_t>{1});
    EXPECT_EQ(ReadBytes(second), std::vector<std::uint8_t>{2});
}

}  // namespace
}  // namespace quardele::jet::test
