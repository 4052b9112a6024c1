// Reading while others write: every answer belongs to one state of the file.

#include <chrono>
#include <fstream>
#include <functional>
#include <thread>

#include "child_action.h"
#include "commit/change_mark.h"
#include "commit/journal.h"
#include "dying.h"
#include "format.h"
#include "locks/lock_bytes.h"
#include "support.h"
#include "table_impl.h"
#include "workshop.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;
using quardele::test::Argument;
using quardele::test::ChildAction;
using quardele::test::PathOf;

constexpr std::size_t kSlotsAt = 0xE00;
constexpr int kVehicles = 3000;
constexpr auto kAWhile = std::chrono::milliseconds(200);

/// Is in the middle of writing pages for a while: file.
const ChildAction kWriteForAWhile("write for a while", [](const ChildAction::Arguments& arguments) {
    OsFile file;
    static_cast<void>(file.Open(PathOf(arguments[0]), OsFile::Access::ReadWrite));
    static_cast<void>(file.TryLock(lock_bytes::kCommit, OsFile::Lock::Exclusive));
    quardele::test::GiveSign();
    std::this_thread::sleep_for(kAWhile);
});

/// Dies with some pages of a change written: file.
const ChildAction kDieWriting("die writing", [](const ChildAction::Arguments& arguments) {
    const fs::path file = PathOf(arguments[0]);
    CurrentWriteHook() = DieAtPage(file, 3);
    MixedChanges()[1].apply(*Database::Open(file));
});

class PictureTest : public testing::Test {
 protected:
    [[nodiscard]] static std::shared_ptr<Table> Open(const fs::path& file, OpenMode mode = OpenMode::Shared) {
        return Database::Open(file, mode)->OpenTable(u"VEHICLES");
    }
    [[nodiscard]] static double Km(const Table& table, RowId row) {
        return table.Fetch(row).value().NumberAt(table.FindColumn(u"KM"));
    }
    [[nodiscard]] static std::uint64_t PictureOf(const Table& table) {
        return table.Impl().Owner().Cache().PictureNumber();
    }
    static void SetKm(Table& table, RowId row, int km) { UpdateRow(table, row, {{u"KM", std::int32_t{km}}}); }
    [[nodiscard]] std::uint16_t Slot(int user) const {
        const auto bytes = ReadBytes(file_);
        const std::size_t at = kSlotsAt + 2 * static_cast<std::size_t>(user);
        return static_cast<std::uint16_t>(bytes[at] | bytes[at + 1] << 8);
    }
    void SetSlot(int user, std::uint16_t value) const {
        auto bytes = ReadBytes(file_);
        const std::size_t at = kSlotsAt + 2 * static_cast<std::size_t>(user);
        bytes[at] = static_cast<std::uint8_t>(value & 0xFF);
        bytes[at + 1] = static_cast<std::uint8_t>(value >> 8);
        WriteBytes(file_, bytes);
    }

    TempFolder folder_;
    fs::path file_ = MakeWorkshop(folder_.Path(), kVehicles);
};

TEST_F(PictureTest, AWriterCountsItsOwnSlotUp) {
    const auto first = Open(file_);
    const auto second = Open(file_);
    const std::uint16_t before[] = {Slot(0), Slot(1), Slot(2)};
    SetKm(*second, RowAt(*second, 1), 5);
    EXPECT_EQ(Slot(0), before[0]);
    EXPECT_EQ(Slot(1), before[1]);
    EXPECT_EQ(Slot(2), before[2] + 1);
}

TEST_F(PictureTest, AnExclusiveWriterCountsInSlotZero) {
    const std::uint16_t before = Slot(0);
    const auto table = Open(file_, OpenMode::Exclusive);
    SetKm(*table, RowAt(*table, 1), 5);
    EXPECT_EQ(Slot(0), before + 1);
}

TEST_F(PictureTest, ASlotNeverReachesTheValuesThatMeanTrouble) {
    SetSlot(1, 0xFFFF);
    const auto table = Open(file_);
    SetKm(*table, RowAt(*table, 1), 5);
    EXPECT_EQ(Slot(1), 0x0100);
}

TEST_F(PictureTest, BytesThatAreNoSlotsAreLeftAlone) {
    SetSlot(7, 5);
    const auto reader = Open(file_);
    const auto writer = Open(file_);
    const RowId row = RowAt(*writer, 1);
    static_cast<void>(Km(*reader, row));
    const auto before = ReadBytes(file_);
    SetKm(*writer, row, 4711);
    const auto after = ReadBytes(file_);
    EXPECT_TRUE(std::equal(before.begin(), before.begin() + 4096, after.begin()));
    reader->Impl().Owner().Refresh();
    EXPECT_EQ(Km(*reader, row), 4711);
}

TEST_F(PictureTest, WhatIsReadOnIsOfTheStateThatIsReadNow) {
    const auto reader = Open(file_);
    const auto writer = Open(file_);
    const RowId near = RowAt(*writer, 1);
    const RowId far = RowAt(*writer, kVehicles - 20);
    ASSERT_NE(near.page, far.page);
    const double old = Km(*reader, near);
    {
        Step step = writer->Home().Begin();
        SetKm(*writer, near, 1001);
        SetKm(*writer, far, 1002);
        step.Commit();
    }
    EXPECT_EQ(Km(*reader, near), old);  // from the cache
    EXPECT_EQ(Km(*reader, far), 1002);  // which did not have this one
    EXPECT_EQ(Km(*reader, near), 1001);
}

TEST_F(PictureTest, AScanGoesOnOverTheRowsAsTheyAreNow) {
    const auto reader = Open(file_);
    const auto writer = Open(file_);
    RowScan scan = reader->Scan();
    for (int i = 0; i < 10; ++i) {
        ASSERT_TRUE(scan.Next());
    }
    std::vector<RowId> rows;
    for (RowScan all = writer->Scan(); const auto id = all.NextId();) {
        rows.push_back(*id);
    }
    {
        Step step = writer->Home().Begin();
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (i % 2 == 0) {
                writer->Delete(rows[i]);
            } else {
                UpdateRow(*writer, rows[i],
                          {{u"PLATE", basic::FromUtf8(std::to_string(i)) + Text(190, u'Ω')}});
            }
        }
        step.Commit();
    }
    int changed = 0;
    while (const auto row = scan.Next()) {
        changed += row->Value(1).As<Text>().size() > 100 ? 1 : 0;
    }
    EXPECT_GT(changed, kVehicles / 3);
}

TEST_F(PictureTest, AnIndexIsWalkedOnWhereItsPagesHaveSplit) {
    const auto reader = Open(file_);
    const auto writer = Open(file_);
    IndexCursor cursor = reader->OpenIndex(reader->FindIndex(u"PLATES"));
    ASSERT_TRUE(cursor.First());
    MixedChanges()[1].apply(writer->Home());
    int entries = 1;
    std::vector<std::uint8_t> last(cursor.KeyBytes().begin(), cursor.KeyBytes().end());
    while (cursor.Next()) {
        const std::vector<std::uint8_t> key(cursor.KeyBytes().begin(), cursor.KeyBytes().end());
        EXPECT_LT(last, key);
        last = key;
        ++entries;
    }
    EXPECT_GE(entries, kVehicles);
}

TEST_F(PictureTest, AMemoThatWasReplacedIsNotTakenForAnother) {
    const auto reader = Open(file_);
    const auto writer = Open(file_);
    const RowId row = RowAt(*writer, 1);
    UpdateRow(*writer, row, {{u"NOTES", Text(3000, u'a')}});
    const int notes = reader->FindColumn(u"NOTES");
    const Row seen = reader->Fetch(row).value();
    UpdateRow(*writer, row, {{u"NOTES", Text(10, u'b')}});
    UpdateRow(*writer, RowAt(*writer, 2), {{u"NOTES", Text(3000, u'c')}});
    EXPECT_EQ(ErrorNumber([&] { static_cast<void>(seen.Value(notes)); }), basic::error::kRecordChanged);
    EXPECT_EQ(reader->Fetch(row)->Value(notes), Variant(Text(10, u'b')));
}

TEST_F(PictureTest, OnesOwnChangesKeepWhatWasRead) {
    const auto table = Open(file_);
    const RowId row = RowAt(*table, 1);
    const std::uint64_t picture = PictureOf(*table);
    for (int i = 0; i < 5; ++i) {
        SetKm(*table, row, i);
        table->Impl().Owner().Refresh();
    }
    EXPECT_EQ(PictureOf(*table), picture);
    EXPECT_EQ(Km(*table, row), 4);
}

TEST_F(PictureTest, AForeignChangeIsSeenByTheNextStep) {
    const auto table = Open(file_);
    const auto other = Open(file_);
    const RowId row = RowAt(*table, 1);
    static_cast<void>(Km(*table, row));
    SetKm(*other, row, 70);
    UpdateRow(*table, row, {{u"NOTES", Text(u"mine")}});
    EXPECT_EQ(Km(*table, row), 70);
}

TEST_F(PictureTest, AChangeWithoutASlotIsSeenAfterRefresh) {
    const auto table = Open(file_);
    const RowId row = RowAt(*table, 1);
    static_cast<void>(Km(*table, row));
    const std::uint64_t picture = PictureOf(*table);
    auto bytes = ReadBytes(file_);
    bytes.insert(bytes.end(), 4096, std::uint8_t{0});
    WriteBytes(file_, bytes);
    table->Impl().Owner().Refresh();
    EXPECT_NE(PictureOf(*table), picture);
}

/// Writes to the file as a program that heeds nothing, while a step is open.
class ForeignChangeTest : public PictureTest {
 protected:
    [[nodiscard]] int CommitErrorAfter(
        const std::function<void(std::vector<std::uint8_t>& bytes)>& write) const {
        const auto table = Open(file_);
        const RowId row = RowAt(*table, 1);
        Step step = table->Home().Begin();
        SetKm(*table, row, 99);
        auto bytes = ReadBytes(file_);
        write(bytes);
        WriteBytes(file_, bytes);
        const int error = ErrorNumber([&] { step.Commit(); });
        EXPECT_EQ(ReadBytes(file_), bytes);
        EXPECT_FALSE(HasJournal(file_));
        return error;
    }
};

TEST_F(ForeignChangeTest, OnAPageOfTheStepKeepsTheStepFromBeingWritten) {
    const std::uint32_t page = RowAt(*Open(file_), 1).page;
    const auto write = [page](std::vector<std::uint8_t>& bytes) {
        bytes.at((page + 1) * 4096UL - 1) ^= 0xFF;
    };
    EXPECT_EQ(CommitErrorAfter(write), basic::error::kRecordChanged);
}

TEST_F(ForeignChangeTest, ThatLetsTheFileGrowKeepsTheStepFromBeingWritten) {
    const auto write = [](std::vector<std::uint8_t>& bytes) {
        bytes.insert(bytes.end(), 4096, std::uint8_t{1});
    };
    EXPECT_EQ(CommitErrorAfter(write), basic::error::kRecordChanged);
}

TEST_F(PictureTest, AReaderWaitsUntilTheWriterHasWrittenItsPages) {
    const auto start = std::chrono::steady_clock::now();
    auto writer = kWriteForAWhile.Keep({Argument(file_)});
    EXPECT_EQ(ErrorNumber([&] { static_cast<void>(Database::Open(file_, OpenMode::ReadOnly)); }), 0);
    EXPECT_GE(std::chrono::steady_clock::now() - start, kAWhile);
    EXPECT_EQ(writer.Wait(), 0);
}

TEST_F(PictureTest, AReaderPutsRightWhatADeadWriterLeft) {
    const std::string before = ContentsOf(file_);
    // One that had the file open all the time, with some of the old pages in its cache.
    const auto reader = Open(file_);
    const RowId row = RowAt(*reader, 1);
    ASSERT_EQ(kDieWriting.Run({Argument(file_)}), kKilled);
    ASSERT_TRUE(HasJournal(file_));
    int rows = 0;
    for (RowScan scan = reader->Scan(); scan.Next();) {
        ++rows;
    }
    EXPECT_EQ(rows, kVehicles);
    EXPECT_FALSE(HasJournal(file_));
    EXPECT_EQ(Km(*reader, row), 1);
    EXPECT_EQ(ContentsOf(file_), before);
}

/// Another program, which takes no locks of ours, in the middle of a change of ours: it writes a page and
/// counts a slot when our journal is synced.
class ForeignWriter {
 public:
    ForeignWriter(fs::path file, std::uint32_t page, ByteString bytes)
        : file_(std::move(file)), page_(page), bytes_(std::move(bytes)) {
        CurrentWriteHook() = [this](const WriteEvent& event) {
            if (event.step == WritePoint::Sync && event.path != file_ && !std::exchange(written_, true)) {
                Write();
            }
        };
    }
    ~ForeignWriter() { CurrentWriteHook() = {}; }
    ForeignWriter(const ForeignWriter&) = delete;
    ForeignWriter& operator=(const ForeignWriter&) = delete;

    [[nodiscard]] bool HasWritten() const { return written_; }

 private:
    void Write() {
        std::fstream file(file_, std::ios::binary | std::ios::in | std::ios::out);
        constexpr char kCount = 77;
        file.seekp(kSlotsAt + 2 * 9 + 1);
        file.put(kCount);
        file.seekp(std::streamoff{page_} * 4096);
        file.write(reinterpret_cast<const char*>(bytes_.data()), static_cast<std::streamsize>(bytes_.size()));
    }

    fs::path file_;
    std::uint32_t page_;
    ByteString bytes_;
    bool written_ = false;
};

class ForeignCommitTest : public PictureTest {
 protected:
    /// The page of a row as it is when another program has set its kilometres.
    [[nodiscard]] ByteString PageWithKm(RowId row, int km) {
        const fs::path copy = folder_.Path() / "autre.mdb";
        fs::copy_file(file_, copy, fs::copy_options::overwrite_existing);
        SetKm(*Open(copy), row, km);
        const auto bytes = ReadBytes(copy);
        const auto start = bytes.begin() + std::ptrdiff_t{row.page} * 4096;
        return {start, start + 4096};
    }
};

TEST_F(ForeignCommitTest, APageThatOursDoesNotTouchIsSeenAfterwards) {
    const auto table = Open(file_);
    const RowId ours = RowAt(*table, 1);
    const RowId theirs = RowAt(*table, kVehicles - 20);
    ASSERT_NE(ours.page, theirs.page);
    static_cast<void>(Km(*table, theirs));
    const ForeignWriter foreign(file_, theirs.page, PageWithKm(theirs, 4711));
    SetKm(*table, ours, 5);
    ASSERT_TRUE(foreign.HasWritten());
    table->Impl().Owner().Refresh();
    EXPECT_EQ(Km(*table, theirs), 4711);
    EXPECT_EQ(Km(*table, ours), 5);
}

TEST_F(ForeignCommitTest, APageThatOursTouchesRefusesTheChange) {
    const auto table = Open(file_);
    const RowId ours = RowAt(*table, 1);
    const RowId theirs = RowAt(*table, 2);
    ASSERT_EQ(ours.page, theirs.page);
    const double old = Km(*table, ours);
    const ForeignWriter foreign(file_, theirs.page, PageWithKm(theirs, 4711));
    EXPECT_EQ(ErrorNumber([&] { SetKm(*table, ours, 5); }), basic::error::kRecordChanged);
    ASSERT_TRUE(foreign.HasWritten());
    EXPECT_FALSE(fs::exists(JournalPath(file_)));
    EXPECT_EQ(Km(*table, theirs), 4711);
    EXPECT_EQ(Km(*table, ours), old);
}

}  // namespace
}  // namespace quardele::jet::test
