// Journals whose checksums are right and whose numbers cannot be, and files that were cut off or have grown
// since their change: nothing is written then, and the error says so.

#include <jet/recovery.h>

#include <algorithm>
#include <functional>

#include <basic/runtime_error.h>

#include "child_action.h"
#include "commit/journal.h"
#include "dying.h"
#include "made_journal.h"
#include "support.h"
#include "workshop.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;
using quardele::test::Argument;
using quardele::test::ChildAction;
using quardele::test::PathOf;

constexpr std::size_t kPageSize = 4096;
constexpr std::size_t kSums = kPageSize / 512 * 8;
constexpr std::uint32_t kAppended = 0;
constexpr std::uint32_t kReplaced = 1;

/// Makes a change that appends pages, and dies before it writes a page: file, number of the page.
const ChildAction kDieAtPage("die at a page", [](const ChildAction::Arguments& arguments) {
    const fs::path file = PathOf(arguments[0]);
    CurrentWriteHook() = DieAtPage(file, std::stoi(arguments[1]));
    MixedChanges()[1].apply(*Database::Open(file));
});

class HalfWritten : public testing::Test {
 protected:
    void DieAtPageOf(int page) {
        ASSERT_EQ(kDieAtPage.Run({Argument(file_), std::to_string(page)}), kKilled);
        journal_ = MadeJournal::From(ReadBytes(JournalPath(file_)));
        ASSERT_EQ(journal_.Bytes(), ReadBytes(JournalPath(file_)));
        ASSERT_EQ(journal_.records.back().kind, kAppended);
        ASSERT_EQ(journal_.records.front().kind, kReplaced);
    }
    void ExpectRefused(JournalState state) const {
        const auto file = ReadBytes(file_);
        const auto journal = ReadBytes(JournalPath(file_));
        EXPECT_EQ(Recovery(file_).State(), state);
        try {
            static_cast<void>(Database::Open(file_));
            FAIL() << "opened";
        } catch (const basic::RuntimeError& error) {
            EXPECT_EQ(error.Number(), basic::error::kNotADatabase);
            EXPECT_NE(error.Description().find(u"workshop.mdb.qjournal"), Text::npos) << error.what();
        }
        EXPECT_EQ(ReadBytes(file_), file);
        EXPECT_EQ(ReadBytes(JournalPath(file_)), journal);
    }
    void Resize(std::size_t pages) const {
        auto bytes = ReadBytes(file_);
        bytes.resize(pages * kPageSize);
        WriteBytes(file_, bytes);
    }

    TempFolder folder_;
    fs::path file_ = MakeWorkshop(folder_.Path(), 200);
    std::string before_ = ContentsOf(file_);
    MadeJournal journal_;
};

struct Impossible {
    const char* name;
    std::function<void(MadeJournal&)> make;
};

class ImpossibleJournal : public HalfWritten, public testing::WithParamInterface<Impossible> {};

TEST_P(ImpossibleJournal, IsKeptAndTheFileIsNotTouched) {
    DieAtPageOf(3);
    GetParam().make(journal_);
    WriteBytes(JournalPath(file_), journal_.Bytes());
    ExpectRefused(JournalState::Damaged);
    EXPECT_EQ(Recovery(file_).PageCount(), 0U);
    EXPECT_EQ(ErrorNumber([&] { Recovery(file_).RollBack(true); }), basic::error::kInvalidOperation);
}

const Impossible kImpossible[] = {
    {"NoRecords", [](MadeJournal& journal) { journal.records.clear(); }},
    {"MoreRecordsStatedThanThere",
     [](MadeJournal& journal) {
         journal.statedRecords = static_cast<std::uint32_t>(journal.records.size() + 1);
     }},
    {"RecordsWithoutEnd", [](MadeJournal& journal) { journal.statedRecords = 0xFFFFFFFF; }},
    {"FewerRecordsStatedThanThere",
     [](MadeJournal& journal) {
         journal.statedRecords = static_cast<std::uint32_t>(journal.records.size() - 1);
     }},
    {"BytesBehindTheLastRecord", [](MadeJournal& journal) { journal.behind.assign(100, 1); }},
    {"LastRecordTooShort", [](MadeJournal& journal) { journal.records.back().bytes.resize(kSums - 8); }},
    {"LastRecordWithoutItsNewPage",
     [](MadeJournal& journal) {
         std::erase_if(journal.records, [](const MadeRecord& record) { return record.kind == kAppended; });
         journal.records.back().bytes.resize(kPageSize);
     }},
    {"AnotherPageSize", [](MadeJournal& journal) { journal.pageSize = 2048; }},
    {"NoPageSize", [](MadeJournal& journal) { journal.pageSize = 0; }},
    {"AHugePageSize", [](MadeJournal& journal) { journal.pageSize = 0x80000000; }},
    {"NoPagesBefore", [](MadeJournal& journal) { journal.pageCount = 0; }},
    {"TooFewPagesBefore",
     [](MadeJournal& journal) {
         journal.pageCount = 2;
         std::erase_if(journal.records, [](const MadeRecord& record) { return record.kind == kReplaced; });
         journal.records.resize(1);
         journal.records[0].page = 2;
     }},
    {"MorePagesBeforeThanAFileHas", [](MadeJournal& journal) { journal.pageCount = 0x7FFFFFFF; }},
    {"AUserThatCannotBe", [](MadeJournal& journal) { journal.user = 256; }},
    {"AUserBeyondAllNumbers", [](MadeJournal& journal) { journal.user = 0xFFFFFFFF; }},
    {"TheHeaderPage", [](MadeJournal& journal) { journal.records.front().page = 0; }},
    {"APageBeyondTheLargestFile", [](MadeJournal& journal) { journal.records.back().page = 0x00FFFFFF; }},
    {"APageTwice", [](MadeJournal& journal) { journal.records[1].page = journal.records[0].page; }},
    {"PagesOutOfOrder", [](MadeJournal& journal) { std::swap(journal.records[0], journal.records[1]); }},
    {"AnOldPageBehindTheOldEnd", [](MadeJournal& journal) { journal.pageCount = journal.records[1].page; }},
    {"AnAppendedPageBeforeTheOldEnd", [](MadeJournal& journal) { ++journal.pageCount; }},
    {"AGapBetweenAppendedPages", [](MadeJournal& journal) { ++journal.records.back().page; }},
    {"AKindThatThereIsNot", [](MadeJournal& journal) { journal.records.front().kind = 2; }},
};

INSTANTIATE_TEST_SUITE_P(Numbers, ImpossibleJournal, testing::ValuesIn(kImpossible),
                         [](const auto& parameter) { return parameter.param.name; });

TEST_F(HalfWritten, WithItsJournalPutTogetherAgainIsRolledBack) {
    DieAtPageOf(3);
    WriteBytes(JournalPath(file_), journal_.Bytes());
    EXPECT_EQ(ContentsOf(file_), before_);
    EXPECT_FALSE(HasJournal(file_));
}

TEST_F(HalfWritten, AndCutOffBeforeTheOldEndIsNotFilledWithZeros) {
    DieAtPageOf(3);
    Resize(journal_.pageCount - 1);
    ExpectRefused(JournalState::ForeignChange);
}

/// All pages but the last one are there; the last ones lie behind the old end of the file. The journal has
/// only checksums of those: what they replace is nothing, and nobody carries a change on.
class GrownHalfWritten : public HalfWritten {
 protected:
    void SetUp() override {
        DieAtPageOf(3);
        ASSERT_EQ(ContentsOf(file_), before_);
        DieAtPageOf(static_cast<int>(journal_.records.size()));
        ASSERT_GT(fs::file_size(file_), std::uint64_t{journal_.pageCount} * kPageSize);
    }
    [[nodiscard]] std::size_t LastRecord() const { return journal_.records.size() - 1; }
    /// The last page that was written.
    [[nodiscard]] std::size_t LastWritten() const { return fs::file_size(file_) / kPageSize - 1; }
    void Fill(std::size_t page, std::uint8_t byte) const {
        auto bytes = ReadBytes(file_);
        std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(page * kPageSize), kPageSize, byte);
        WriteBytes(file_, bytes);
    }
    void ExpectRolledBack() const {
        EXPECT_EQ(Recovery(file_).State(), JournalState::Half);
        EXPECT_EQ(ContentsOf(file_), before_);
        EXPECT_FALSE(HasJournal(file_));
        EXPECT_EQ(fs::file_size(file_), std::uint64_t{journal_.pageCount} * kPageSize);
    }
};

TEST_F(GrownHalfWritten, LosesThePagesBehindTheOldEnd) {
    ExpectRolledBack();
}

TEST_F(GrownHalfWritten, AndCutOffAtTheOldEndIsRolledBack) {
    Resize(journal_.pageCount);
    ExpectRolledBack();
}

TEST_F(GrownHalfWritten, WhoseLastPageTheDiskHasForgottenIsRolledBack) {
    Fill(LastWritten(), 0);
    ExpectRolledBack();
}

TEST_F(GrownHalfWritten, AndGrownByAPageOfSomebodyElseIsNotCutOff) {
    Resize(journal_.records.back().page + 2);
    ExpectRefused(JournalState::ForeignChange);
}

TEST_F(GrownHalfWritten, WithAPageOfSomebodyElseInTheirPlaceIsNotCutOff) {
    Fill(LastWritten(), 0xAB);
    ExpectRefused(JournalState::ForeignChange);
    const Recovery recovery(file_);
    const JournalPage page = recovery.Page(LastRecord() - 1);
    EXPECT_EQ(page.number, LastWritten());
    EXPECT_EQ(page.state, JournalPageState::Foreign);
    EXPECT_TRUE(page.before.empty());
    EXPECT_TRUE(page.after.empty());
    EXPECT_EQ(page.now, std::vector<std::uint8_t>(kPageSize, 0xAB));
}

TEST_F(GrownHalfWritten, OfWhichOthersHaveGoneOnCanBeCutOffOnDemand) {
    Resize(journal_.records.back().page + 2);
    Recovery(file_).RollBack(true);
    EXPECT_EQ(ContentsOf(file_), before_);
    EXPECT_EQ(fs::file_size(file_), std::uint64_t{journal_.pageCount} * kPageSize);
}

}  // namespace
}  // namespace quardele::jet::test
