#include "benchmarks.h"

#include <algorithm>

#include "table_rows.h"
#include "temporary_folder.h"

namespace quardele::bench {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kInOneStep = 100000;
constexpr std::size_t kOneByOne = 500;

/// Two files with the same empty table.
class Files {
 public:
    explicit Files(const TableRows& rows) {
        const fs::path ours = folder_.Path() / "nous.mdb";
        MakeOurFile(ours, *rows.table);
        database_ = jet::Database::Open(ours);
        table_ = database_->OpenTable(rows.table->Name());
        sqlite_ = std::make_unique<SqliteFile>(folder_.Path() / "eux.sqlite");
        sqlite_->CreateLike(*rows.table);
    }

    [[nodiscard]] jet::Table& Ours() { return *table_; }
    [[nodiscard]] SqliteFile& Theirs() { return *sqlite_; }

    void FillOurs(const TableRows& rows, std::size_t count) {
        jet::Step step = database_->Begin();
        InsertOurs(*table_, rows, 0, count);
        step.Commit();
    }
    void FillTheirs(const TableRows& rows, std::size_t count) {
        sqlite_->Execute("BEGIN");
        InsertTheirs(*sqlite_, rows, 0, count);
        sqlite_->Execute("COMMIT");
    }

 private:
    TemporaryFolder folder_;
    std::shared_ptr<jet::Database> database_;
    std::shared_ptr<jet::Table> table_;
    std::unique_ptr<SqliteFile> sqlite_;
};

void CompareFilling(Report& report, int runs, const TableRows& rows) {
    const auto ours = [&rows] {
        Files files(rows);
        return TimeOf([&] { files.FillOurs(rows, rows.ours.size()); });
    };
    const Side theirs = [&rows] {
        Files files(rows);
        return std::optional(TimeOf([&] { files.FillTheirs(rows, rows.theirs.size()); }));
    };
    report.Compare(
        std::to_string(rows.ours.size()) + " lignes de " + basic::ToUtf8(rows.table->Name()) + ", une étape",
        RaceTimed(runs, ours, theirs));
}

/// Changes the last column of the first rows, each found by its key, each synced.
void UpdateOurs(jet::Table& table, const TableRows& rows, const std::string& text) {
    const auto column = static_cast<int>(table.Columns().size()) - 1;
    const jet::ColumnChange change{column, basic::FromUtf8(text)};
    jet::IndexCursor cursor = table.OpenIndex(table.FindIndex(u"PrimaryKey"));
    for (std::size_t i = 0; i < kOneByOne; ++i) {
        cursor.Seek(jet::SeekOperator::Equal, {&rows.ours[i][0].value, 1});
        table.Update(cursor.Current(), {&change, 1});
    }
}

void UpdateTheirs(SqliteFile& file, const TableRows& rows, const std::string& text) {
    const auto& columns = rows.table->Columns();
    SqliteStatement update(file, "UPDATE " + basic::ToUtf8(rows.table->Name()) + " SET " +
                                     basic::ToUtf8(columns.back().name) + " = ? WHERE " +
                                     basic::ToUtf8(columns.front().name) + " = ?");
    const SqliteValue changed = text;
    for (std::size_t i = 0; i < kOneByOne; ++i) {
        update.Bind(1, changed);
        update.Bind(2, rows.theirs[i][0]);
        update.Run();
    }
}

/// Another one in each run: a value that is there already need not be written.
std::string NewText(int& run) {
    return "changé " + std::to_string(++run);
}

/// On files that hold all but the last rows.
void CompareOneByOne(Report& report, int runs, const TableRows& rows) {
    const std::size_t end = rows.ours.size();
    const std::size_t filled = end - std::min(end, kOneByOne * static_cast<std::size_t>(runs));
    Files files(rows);
    files.FillOurs(rows, filled);
    files.FillTheirs(rows, filled);
    std::size_t ourNext = filled;
    std::size_t theirNext = filled;
    const auto insertOurs = [&] {
        InsertOurs(files.Ours(), rows, ourNext, ourNext + kOneByOne);
        ourNext += kOneByOne;
    };
    const auto insertTheirs = [&] {
        InsertTheirs(files.Theirs(), rows, theirNext, theirNext + kOneByOne);
        theirNext += kOneByOne;
    };
    int ourRuns = 0;
    int theirRuns = 0;
    const std::string count = std::to_string(kOneByOne);
    report.Compare(count + " ajouts, chacun sur le disque",
                   RaceTimed(
                       runs, [&] { return TimeOf(insertOurs); }, Side([&] { return TimeOf(insertTheirs); })));
    report.Compare(
        count + " modifications, chacune sur le disque",
        RaceTimed(
            runs, [&] { return TimeOf([&] { UpdateOurs(files.Ours(), rows, NewText(ourRuns)); }); },
            Side([&] { return TimeOf([&] { UpdateTheirs(files.Theirs(), rows, NewText(theirRuns)); }); })));
}

}  // namespace

void MeasureChanges(Report& report, int runs, const fs::path& file) {
    report.Section("Écriture, mêmes lignes, mêmes index", "SQLite");
    CompareFilling(report, runs, ReadRows(file, u"TVEH_DETAIL", kInOneStep));
    const TableRows vehicles = ReadRows(file, u"TVEH", kInOneStep);
    CompareFilling(report, runs, vehicles);
    CompareOneByOne(report, runs, vehicles);
}

}  // namespace quardele::bench
