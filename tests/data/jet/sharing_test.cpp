// Several openers of one file.

#include "child_action.h"
#include "commit/journal.h"
#include "file/os_file.h"
#include "index_check.h"
#include "locks/lock_bytes.h"
#include "support.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;
using quardele::test::Argument;
using quardele::test::ChildAction;
using quardele::test::PathOf;
using quardele::test::Process;

TEST(Sharing, AnExclusiveOpenerIsAlone) {
    TempFolder folder;
    const fs::path file = folder.Copy(SampleFile("SIGNETS.MDB"));
    const auto open = [&](OpenMode mode) {
        return ErrorNumber([&] { static_cast<void>(Database::Open(file, mode)); });
    };
    {
        const auto exclusive = Database::Open(file, OpenMode::Exclusive);
        EXPECT_EQ(open(OpenMode::Shared), basic::error::kOpenExclusive);
        EXPECT_EQ(open(OpenMode::ReadOnly), basic::error::kOpenExclusive);
        EXPECT_EQ(open(OpenMode::Exclusive), basic::error::kFileInUse);
    }
    const auto shared = Database::Open(file);
    EXPECT_EQ(open(OpenMode::Shared), 0);
    EXPECT_EQ(open(OpenMode::Exclusive), basic::error::kFileInUse);
}

TEST(Sharing, AWriterThatDoesNotEndGivesTheLockError) {
    TempFolder folder;
    const fs::path file = folder.Copy(SampleFile("DATA/talmeon.mdb"));
    const auto table = Database::Open(file)->OpenTable(u"TVEH_DETAIL");
    OsFile other;
    ASSERT_TRUE(other.Open(file, OsFile::Access::ReadWrite));
    ASSERT_EQ(other.TryLock(lock_bytes::kWriter, OsFile::Lock::Exclusive), OsFile::LockResult::Taken);
    const RowId row = table->Scan().NextId().value();
    const ColumnChange change{2, basic::Null{}};
    EXPECT_EQ(ErrorNumber([&] { table->Update(row, {&change, 1}); }), basic::error::kRecordLocked);
    other.Unlock(lock_bytes::kWriter);
    EXPECT_EQ(ErrorNumber([&] { table->Update(row, {&change, 1}); }), 0);
}

TEST(Sharing, AWriterThatIsStillMakingItsJournalDisturbsNoReader) {
    TempFolder folder;
    const fs::path file = folder.Copy(SampleFile("DATA/talmeon.mdb"));
    WriteBytes(JournalPath(file), {1, 2, 3});
    OsFile writer;
    ASSERT_TRUE(writer.Open(file, OsFile::Access::ReadWrite));
    ASSERT_EQ(writer.TryLock(lock_bytes::kWriter, OsFile::Lock::Exclusive), OsFile::LockResult::Taken);
    EXPECT_EQ(ErrorNumber([&] { static_cast<void>(Database::Open(file, OpenMode::ReadOnly)); }), 0);
    EXPECT_EQ(ErrorNumber([&] { static_cast<void>(Database::Open(file)); }), 0);
    EXPECT_TRUE(HasJournal(file));
    writer.Close();
    EXPECT_EQ(ErrorNumber([&] { static_cast<void>(Database::Open(file, OpenMode::ReadOnly)); }), 0);
    EXPECT_TRUE(HasJournal(file));
    EXPECT_EQ(ErrorNumber([&] { static_cast<void>(Database::Open(file)); }), 0);
    EXPECT_FALSE(HasJournal(file));
}

TEST(Sharing, WhatOthersWroteIsSeenAfterRefresh) {
    TempFolder folder;
    const fs::path file = folder.Copy(SampleFile("DATA/talmeon.mdb"));
    const auto reader = Database::Open(file);
    const auto seen = reader->OpenTable(u"TVEH_DETAIL");
    const auto written = Database::Open(file)->OpenTable(u"TVEH_DETAIL");
    const RowId row = seen->Scan().NextId().value();
    const Variant old = seen->Fetch(row)->Value(3);
    const ColumnChange change{3, std::int16_t{77}};
    written->Update(row, {&change, 1});
    EXPECT_EQ(seen->Fetch(row)->Value(3), old);
    reader->Refresh();
    EXPECT_EQ(seen->Fetch(row)->Value(3), Variant(std::int16_t{77}));
}

constexpr std::size_t kRows = 60;

/// Changes a column of its own, one of them the key, in all rows: file, number of the process.
const ChildAction kChangeAColumn("change a column", [](const ChildAction::Arguments& arguments) {
    const int column = std::stoi(arguments[1]);
    const auto table = Database::Open(PathOf(arguments[0]))->OpenTable(u"TVEH_DETAIL");
    std::vector<RowId> rows;
    for (RowScan scan = table->Scan(); rows.size() < kRows;) {
        rows.push_back(scan.NextId().value());
    }
    for (std::size_t i = 0; i < kRows; ++i) {
        const Text text = basic::FromUtf8("P" + arguments[1] + "-" + std::to_string(i));
        const Variant values[] = {text, text.substr(0, 5), basic::Date{static_cast<double>(i)},
                                  static_cast<std::int16_t>(i)};
        const ColumnChange change{column, values[column]};
        table->Update(rows[i], {&change, 1});
    }
});

TEST(Sharing, ProcessesThatWriteAtTheSameTimeLoseNothing) {
    TempFolder folder;
    const fs::path file = folder.Copy(SampleFile("DATA/talmeon.mdb"));
    constexpr int kProcesses = 4;
    std::vector<Process> writers;
    for (int i = 0; i < kProcesses; ++i) {
        writers.push_back(kChangeAColumn.Start({Argument(file), std::to_string(i)}));
    }
    for (Process& writer : writers) {
        EXPECT_EQ(writer.Wait(), 0);
    }
    const auto table = Database::Open(file)->OpenTable(u"TVEH_DETAIL");
    EXPECT_EQ(FaultsOf(*table), "");
    RowScan scan = table->Scan();
    for (std::size_t i = 0; i < kRows; ++i) {
        const auto row = scan.Next().value();
        const std::string number = std::to_string(i);
        EXPECT_EQ(row.Value(0), Variant(basic::FromUtf8("P0-" + number)));
        EXPECT_EQ(row.Value(1), Variant(basic::FromUtf8("P1-" + number)));
        EXPECT_EQ(row.NumberAt(2), static_cast<double>(i));
        EXPECT_EQ(row.NumberAt(3), static_cast<double>(i));
    }
}

}  // namespace
}  // namespace quardele::jet::test
