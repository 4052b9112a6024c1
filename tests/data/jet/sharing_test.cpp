// Several openers of one file.

#include <sys/wait.h>
#include <unistd.h>

#include "index_check.h"
#include "journal.h"
#include "lock_bytes.h"
#include "os_file.h"
#include "support.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;

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

TEST(Sharing, AReaderWaitsForAWriterThatHasItsJournalOut) {
    TempFolder folder;
    const fs::path file = folder.Copy(SampleFile("DATA/talmeon.mdb"));
    WriteBytes(JournalPath(file), {1, 2, 3});
    OsFile writer;
    ASSERT_TRUE(writer.Open(file, OsFile::Access::ReadWrite));
    ASSERT_EQ(writer.TryLock(lock_bytes::kWriter, OsFile::Lock::Exclusive), OsFile::LockResult::Taken);
    EXPECT_EQ(ErrorNumber([&] { static_cast<void>(Database::Open(file, OpenMode::ReadOnly)); }),
              basic::error::kFileInUse);
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

// Every process changes a column of its own in all rows, one of them the key, while the others do the same.
TEST(Sharing, ProcessesThatWriteAtTheSameTimeLoseNothing) {
    TempFolder folder;
    const fs::path file = folder.Copy(SampleFile("DATA/talmeon.mdb"));
    constexpr int kProcesses = 4;
    constexpr std::size_t kRows = 60;
    std::vector<pid_t> children;
    for (int process = 0; process < kProcesses; ++process) {
        const pid_t child = ::fork();
        if (child == 0) {
            const int error = ErrorNumber([&] {
                const auto table = Database::Open(file)->OpenTable(u"TVEH_DETAIL");
                std::vector<RowId> rows;
                for (RowScan scan = table->Scan(); rows.size() < kRows;) {
                    rows.push_back(scan.NextId().value());
                }
                for (std::size_t i = 0; i < kRows; ++i) {
                    const Text text =
                        basic::FromUtf8("P" + std::to_string(process) + "-" + std::to_string(i));
                    const Variant values[] = {text, text.substr(0, 5), basic::Date{static_cast<double>(i)},
                                              static_cast<std::int16_t>(i)};
                    const ColumnChange change{process, values[process]};
                    table->Update(rows[i], {&change, 1});
                }
            });
            ::_exit(error == 0 ? 0 : 1);
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        int status = 0;
        ::waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
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

// Root may write everywhere, so the test becomes somebody else, in a process of its own.
TEST(Sharing, AFileInAReadOnlyFolderIsReadAndNotWritten) {
    TempFolder folder;
    const fs::path file = folder.Copy(SampleFile("DATA/talmeon.mdb"));
    constexpr auto kReadAndEnter =
        fs::perms::group_read | fs::perms::group_exec | fs::perms::others_read | fs::perms::others_exec;
    fs::permissions(folder.Path(), fs::perms::owner_all | kReadAndEnter);
    fs::permissions(file, fs::perms::all);
    const auto before = ReadBytes(file);
    if (::geteuid() != 0) {
        fs::permissions(folder.Path(), fs::perms::owner_read | fs::perms::owner_exec);
    }
    const pid_t child = ::fork();
    if (child == 0) {
        constexpr uid_t kNobody = 65534;
        if (::geteuid() == 0 && ::seteuid(kNobody) != 0) {
            ::_exit(2);
        }
        bool readOnly = false;
        const int error = ErrorNumber([&] {
            const auto database = Database::Open(file);
            readOnly = database->IsReadOnly();
            const auto table = database->OpenTable(u"TVEH_DETAIL");
            const ColumnChange change{2, basic::Null{}};
            table->Update(table->Scan().NextId().value(), {&change, 1});
        });
        ::_exit(readOnly && error == basic::error::kReadOnly ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    fs::permissions(folder.Path(), fs::perms::owner_all);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(ReadBytes(file), before);
}

}  // namespace
}  // namespace quardele::jet::test
