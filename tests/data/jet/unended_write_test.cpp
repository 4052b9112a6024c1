// Files in which a program with the original engine has begun to write and not ended: who is still there is
// waited for; what was left is read, but not written to.

#include <jet/check.h>
#include <jet/compaction.h>
#include <jet/recovery.h>

#include <algorithm>
#include <chrono>
#include <thread>

#include "commit/change_mark.h"
#include "commit/journal.h"
#include "format.h"
#include "locks/lock_bytes.h"
#include "locks/lock_file.h"
#include "locks/lock_wait.h"
#include "support.h"
#include "table_impl.h"
#include "workshop.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kSlotsAt = 0xE00;
constexpr std::size_t kSlotsSize = 512;
constexpr std::uint16_t kWriting = 0;
constexpr std::uint16_t kMetDamage = 1;
constexpr std::uint16_t kCount = 0x0123;
constexpr int kVehicles = 50;

ChangeMark MarkOf(const fs::path& file) {
    OsFile opened;
    EXPECT_TRUE(opened.Open(file, OsFile::Access::Read));
    return ChangeMark::Read(opened, kJet4);
}

void SetSlot(const fs::path& file, int user, std::uint16_t value) {
    OsFile opened;
    ASSERT_TRUE(opened.Open(file, OsFile::Access::ReadWrite));
    const std::uint8_t bytes[] = {static_cast<std::uint8_t>(value & 0xFF),
                                  static_cast<std::uint8_t>(value >> 8)};
    opened.WriteAt(kSlotsAt + 2 * static_cast<std::size_t>(user), bytes);
}

class UnendedWrite : public testing::Test {
 protected:
    void SetUp() override { LockPatience() = std::chrono::milliseconds(50); }
    void TearDown() override { LockPatience() = usual_; }

    [[nodiscard]] int WriteError() const {
        return ErrorNumber([&] {
            const auto table = Database::Open(file_)->OpenTable(u"VEHICLES");
            UpdateRow(*table, RowAt(*table, 1), {{u"KM", std::int32_t{4711}}});
        });
    }
    [[nodiscard]] int ReadError() const {
        return ErrorNumber([&] { static_cast<void>(ContentsOf(file_)); });
    }
    /// Another program's place in the lock file.
    [[nodiscard]] OsFile Enter(int user) const {
        OsFile place;
        EXPECT_TRUE(place.OpenOrCreate(LockFile::PathFor(file_)));
        EXPECT_EQ(
            place.TryLock(lock_bytes::kUsers + static_cast<std::uint64_t>(user - 1), OsFile::Lock::Exclusive),
            OsFile::LockResult::Taken);
        return place;
    }
    [[nodiscard]] std::vector<Text> FaultsOf(FaultCode code) const {
        std::vector<Text> details;
        for (const Fault& fault : CheckFile(file_)) {
            if (fault.code == code && !fault.note) {
                details.push_back(fault.detail);
            }
        }
        return details;
    }

    std::chrono::milliseconds usual_ = LockPatience();
    TempFolder folder_;
    fs::path file_ = MakeWorkshop(folder_.Path(), kVehicles);
    std::string contents_ = ContentsOf(file_);
};

struct LeftSlot {
    int user;
    std::uint16_t value;
};

class LeftWrite : public UnendedWrite, public testing::WithParamInterface<LeftSlot> {
 protected:
    void SetUp() override {
        UnendedWrite::SetUp();
        SetSlot(file_, GetParam().user, GetParam().value);
    }
};

TEST_P(LeftWrite, IsReadAndNotWrittenOver) {
    const auto bytes = ReadBytes(file_);
    EXPECT_EQ(ContentsOf(file_), contents_);
    EXPECT_EQ(WriteError(), basic::error::kNotADatabase);
    EXPECT_EQ(ReadBytes(file_), bytes);
    EXPECT_FALSE(HasJournal(file_));
}

TEST_P(LeftWrite, IsAFaultOfTheFile) {
    const Text user = basic::FromUtf8(std::to_string(GetParam().user));
    EXPECT_EQ(FaultsOf(FaultCode::UnendedWrite), std::vector<Text>{user});
}

TEST_P(LeftWrite, IsNotInACompactedCopy) {
    const fs::path copy = folder_.Path() / "copy.mdb";
    Compact(file_, copy);
    EXPECT_TRUE(MarkOf(copy).IsUsable());
    EXPECT_EQ(ContentsOf(copy), contents_);
    file_ = copy;
    EXPECT_EQ(WriteError(), 0);
    EXPECT_TRUE(CheckFile(copy).empty());
}

TEST_P(LeftWrite, CanBeTakenForEnded) {
    EXPECT_EQ(Recovery(file_).UnendedUsers(), std::vector<int>{GetParam().user});
    Recovery(file_).ClearUnended();
    EXPECT_TRUE(MarkOf(file_).IsUsable());
    EXPECT_EQ(ContentsOf(file_), contents_);
    EXPECT_EQ(WriteError(), 0);
    EXPECT_TRUE(CheckFile(file_).empty());
}

INSTANTIATE_TEST_SUITE_P(Slots, LeftWrite,
                         testing::Values(LeftSlot{0, kWriting}, LeftSlot{1, kWriting},
                                         LeftSlot{1, kMetDamage}, LeftSlot{7, kMetDamage},
                                         LeftSlot{255, kWriting}));

TEST_F(UnendedWrite, IsInNoFileThatIsMade) {
    EXPECT_TRUE(MarkOf(file_).IsUsable());
    EXPECT_TRUE(Recovery(file_).UnendedUsers().empty());
    EXPECT_EQ(ErrorNumber([&] { Recovery(file_).ClearUnended(); }), basic::error::kInvalidOperation);
}

TEST_F(UnendedWrite, IsInNoRealFile) {
    SKIP_WITHOUT_CORPUS();
    int files = 0;
    for (const fs::path& file : CorpusFiles()) {
        constexpr std::size_t kVersionAt = 0x14;
        if (ReadBytes(file).at(kVersionAt) == 1) {
            EXPECT_TRUE(MarkOf(file).IsUsable()) << file;
            ++files;
        }
    }
    EXPECT_GT(files, 10);
}

TEST_F(UnendedWrite, IsSeenByTheMessageOfTheError) {
    SetSlot(file_, 3, kWriting);
    const auto table = Database::Open(file_)->OpenTable(u"VEHICLES");
    try {
        table->Delete(RowAt(*table, 1));
        FAIL();
    } catch (const basic::RuntimeError& error) {
        EXPECT_EQ(
            error.Description(),
            u"« workshop.mdb » doit être réparé : l'écriture d'un autre programme ne s'est pas terminée "
            u"(utilisateur 3). Le fichier peut être lu ; la commande « mdb compact » en fait une copie "
            u"saine.");
    }
}

TEST_F(UnendedWrite, OfAUserWhoIsThereIsWaitedFor) {
    const OsFile user = Enter(5);
    SetSlot(file_, 5, kWriting);
    const auto bytes = ReadBytes(file_);
    EXPECT_EQ(WriteError(), basic::error::kRecordLocked);
    EXPECT_EQ(ReadError(), basic::error::kRecordLocked);
    EXPECT_EQ(ErrorNumber([&] { Recovery(file_).ClearUnended(); }), basic::error::kRecordLocked);
    EXPECT_EQ(ReadBytes(file_), bytes);
    EXPECT_EQ(FaultsOf(FaultCode::UnendedWrite), std::vector<Text>{u"5"});
}

TEST_F(UnendedWrite, ThatEndsInTimeIsFollowedByOurs) {
    LockPatience() = usual_;
    const OsFile user = Enter(5);
    SetSlot(file_, 5, kWriting);
    std::thread other([this] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        SetSlot(file_, 5, kCount);
    });
    EXPECT_EQ(WriteError(), 0);
    other.join();
    EXPECT_NE(ContentsOf(file_), contents_);
}

// Reading waits for nobody here: the pages are not being written.
TEST_F(UnendedWrite, OfAUserWhoHasMetDamageAndIsThereKeepsWritersOnly) {
    const OsFile user = Enter(5);
    SetSlot(file_, 5, kMetDamage);
    EXPECT_EQ(WriteError(), basic::error::kRecordLocked);
    EXPECT_EQ(ContentsOf(file_), contents_);
}

TEST_F(UnendedWrite, KeepsItsUsersPlaceFree) {
    SetSlot(file_, 1, kWriting);
    SetSlot(file_, 2, kMetDamage);
    const auto table = Database::Open(file_)->OpenTable(u"VEHICLES");
    EXPECT_EQ(table->Impl().Owner().Users().User(), 3);
}

TEST_F(UnendedWrite, ThatBeginsDuringAStepKeepsTheStepFromBeingWritten) {
    const auto table = Database::Open(file_)->OpenTable(u"VEHICLES");
    Step step = table->Home().Begin();
    UpdateRow(*table, RowAt(*table, 1), {{u"KM", std::int32_t{4711}}});
    SetSlot(file_, 9, kWriting);
    const auto bytes = ReadBytes(file_);
    EXPECT_EQ(ErrorNumber([&] { step.Commit(); }), basic::error::kNotADatabase);
    EXPECT_EQ(ReadBytes(file_), bytes);
    EXPECT_FALSE(HasJournal(file_));
}

// A program that knows nothing of slots has made the file; no trouble speaks out of zeros then.
TEST_F(UnendedWrite, IsNotWhatZerosInAllSlotsMean) {
    auto bytes = ReadBytes(file_);
    std::fill_n(bytes.begin() + kSlotsAt, kSlotsSize, std::uint8_t{0});
    WriteBytes(file_, bytes);
    EXPECT_EQ(WriteError(), 0);
    EXPECT_TRUE(CheckFile(file_).empty());
    EXPECT_NE(ContentsOf(file_), contents_);
}

}  // namespace
}  // namespace quardele::jet::test
