// Many processes on one file at the same time: nothing is lost, nobody is locked out, nobody sees a state
// that never was.

#include <chrono>
#include <iostream>
#include <random>

#include <jet/check.h>

#include "child_action.h"
#include "locks/lock_wait.h"
#include "setting.h"
#include "support.h"
#include "system.h"
#include "table_impl.h"
#include "workshop.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;
using quardele::test::Argument;
using quardele::test::ChildAction;
using quardele::test::PathOf;
using quardele::test::Process;
using quardele::test::Setting;

constexpr int kWriters = 8;
constexpr int kShared = 5;
/// Of each writer.
int Operations() {
    return static_cast<int>(Setting("QUARDELE_CROWD_OPERATIONS", 2000));
}
/// The two rows of a pair always have this sum.
constexpr int kPairs = 4;
constexpr int kPairSum = 1000;
constexpr int kMemoLength = 6000;

Column LongColumn(Text name) {
    Column column;
    column.name = std::move(name);
    column.type = ColumnType::Long;
    return column;
}

/// NAME and AMOUNT: W0..W7 the writers' own counters, S0.. the shared ones, A0/B0.. the pairs; the row M has
/// a memo that is all one letter.
TableDesign CountersDesign() {
    Column name;
    name.name = u"NAME";
    name.type = ColumnType::Text;
    name.size = 50;
    Column memo;
    memo.name = u"MEMO";
    memo.type = ColumnType::Memo;
    TableDesign design;
    design.name = u"COUNTERS";
    design.columns = {name, LongColumn(u"AMOUNT"), memo};
    IndexDesign key{.name = u"PrimaryKey", .columns = {{u"NAME"}}};
    key.primary = true;
    design.indexes = {key};
    return design;
}

Text Name(char16_t letter, int number) {
    return Text(1, letter) + basic::FromUtf8(std::to_string(number));
}

fs::path MakeCounters(const fs::path& folder) {
    fs::path file = MakeWorkshop(folder, 300);
    const auto database = Database::Open(file, OpenMode::Exclusive);
    database->CreateTable(CountersDesign());
    const auto counters = database->OpenTable(u"COUNTERS");
    const auto add = [&](const Text& name, int amount) {
        InsertRow(*counters, {{u"NAME", name}, {u"AMOUNT", std::int32_t{amount}}});
    };
    for (int i = 0; i < kWriters; ++i) {
        add(Name(u'W', i), 0);
    }
    for (int i = 0; i < kShared; ++i) {
        add(Name(u'S', i), 0);
    }
    for (int i = 0; i < kPairs; ++i) {
        add(Name(u'A', i), kPairSum);
    }
    // The other halves of the pairs on another page.
    for (int i = 0; i < 300; ++i) {
        add(Name(u'X', i) + Text(40, u'x'), 0);
    }
    for (int i = 0; i < kPairs; ++i) {
        add(Name(u'B', i), 0);
    }
    InsertRow(*counters, {{u"NAME", Text(u"M")}, {u"MEMO", Text(kMemoLength, u'a')}});
    return file;
}

/// A user of the file: finds rows by name, and what is in them.
class Counters {
 public:
    explicit Counters(const fs::path& file)
        : database_(Database::Open(file)), table_(database_->OpenTable(u"COUNTERS")) {}

    [[nodiscard]] Database& File() { return *database_; }
    [[nodiscard]] Table& Rows() { return *table_; }
    [[nodiscard]] RowId Find(const Text& name) {
        IndexCursor cursor = table_->OpenIndex(0);
        const Variant value = name;
        if (!cursor.Seek(SeekOperator::Equal, {&value, 1})) {
            throw basic::RuntimeError(basic::error::kNoCurrentRecord);
        }
        return cursor.Current();
    }
    [[nodiscard]] int Amount(RowId row) {
        return static_cast<int>(table_->Fetch(row).value().NumberAt(kAmount));
    }
    void Add(RowId row, int amount) {
        UpdateRow(*table_, row, {{u"AMOUNT", std::int32_t{Amount(row) + amount}}});
    }
    [[nodiscard]] std::uint64_t Picture() const { return table_->Impl().Owner().Cache().PictureNumber(); }

 private:
    static constexpr int kAmount = 1;
    std::shared_ptr<Database> database_;
    std::shared_ptr<Table> table_;
};

/// What one process does: mixed changes, chosen by chance.
class Writer {
 public:
    Writer(const fs::path& file, int number)
        : user_(file), number_(number), random_(static_cast<unsigned>(number)) {
        own_ = user_.Find(Name(u'W', number));
    }

    /// Gives the number of its additions to shared rows.
    int Run() {
        const int operations = Operations();
        for (int i = 0; i < operations; ++i) {
            const int kind = Chance(100);
            if (kind < 35) {
                user_.Add(own_, 1);
            } else if (kind < 55) {
                AddToShared();
            } else if (kind < 70) {
                MoveWithinPair();
            } else if (kind < 85) {
                InsertVehicle(i);
            } else if (kind < 95) {
                DeleteVehicle(i);
            } else {
                WriteMemo();
            }
        }
        return shared_;
    }

 private:
    int Chance(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }

    // Its own row counts all that it has done to others as well.
    void AddToShared() {
        const RowId row = user_.Find(Name(u'S', Chance(kShared)));
        const RowLock lock = user_.Rows().Lock(row);
        user_.Add(row, 1);
        user_.Add(own_, 1);
        ++shared_;
    }
    void MoveWithinPair() {
        const int pair = Chance(kPairs);
        const RowId a = user_.Find(Name(u'A', pair));
        const RowId b = user_.Find(Name(u'B', pair));
        const RowLock lockA = user_.Rows().Lock(a);
        const RowLock lockB = user_.Rows().Lock(b);
        const int amount = Chance(100);
        Step step = user_.File().Begin();
        user_.Add(a, -amount);
        user_.Add(b, amount);
        user_.Add(own_, 1);
        step.Commit();
    }
    void InsertVehicle(int operation) {
        const Text plate = Name(u'P', number_) + Name(u'-', operation);
        Step step = user_.File().Begin();
        const auto vehicles = user_.File().OpenTable(u"VEHICLES");
        mine_.push_back(InsertRow(*vehicles, {{u"PLATE", plate}, {u"NOTES", Text(Chance(3000), u'n')}}));
        user_.Add(own_, 1);
        step.Commit();
    }
    void DeleteVehicle(int operation) {
        if (mine_.size() < 5) {
            return InsertVehicle(operation);
        }
        Step step = user_.File().Begin();
        user_.File().OpenTable(u"VEHICLES")->Delete(mine_.back());
        mine_.pop_back();
        user_.Add(own_, 1);
        step.Commit();
    }
    void WriteMemo() {
        const RowId row = user_.Find(u"M");
        const RowLock lock = user_.Rows().Lock(row);
        const auto letter = static_cast<char16_t>(u'a' + Chance(26));
        UpdateRow(user_.Rows(), row,
                  {{u"MEMO", Text(static_cast<std::size_t>(kMemoLength + Chance(50)), letter)}});
        user_.Add(own_, 1);
    }

    Counters user_;
    int number_;
    std::mt19937 random_;
    RowId own_;
    std::vector<RowId> mine_;
    int shared_ = 0;
};

void Expect(bool held, const char* what) {
    if (!held) {
        throw basic::RuntimeError(basic::error::kDeviceIo, basic::FromUtf8(what));
    }
}

/// Reads until told to stop; throws when it sees what never was.
class Reader {
 public:
    Reader(const fs::path& file, fs::path stop) : user_(file), stop_(std::move(stop)) {}

    void Run() {
        while (!fs::exists(stop_)) {
            for (int pair = 0; pair < kPairs; ++pair) {
                CheckPair(pair);
            }
            CheckMemo();
            CheckVehicles();
            user_.File().Refresh();
        }
        Expect(pairs_ > 0, "no pair was ever read from one state");
    }

 private:
    // Two reads belong together when nothing was read anew between them.
    void CheckPair(int pair) {
        const std::uint64_t picture = user_.Picture();
        const int a = user_.Amount(user_.Find(Name(u'A', pair)));
        const int b = user_.Amount(user_.Find(Name(u'B', pair)));
        if (user_.Picture() == picture) {
            Expect(a + b == kPairSum, "half of a step was seen");
            ++pairs_;
        }
    }
    void CheckMemo() {
        try {
            const auto memo = user_.Rows().Fetch(user_.Find(u"M"))->Value(2).As<Text>();
            Expect(memo.size() >= kMemoLength && memo.find_first_not_of(memo.front()) == Text::npos,
                   "parts of two memos were seen as one");
        } catch (const basic::RuntimeError& error) {
            if (error.Number() != basic::error::kRecordChanged) {
                throw;
            }
        }
    }
    void CheckVehicles() {
        const auto vehicles = user_.File().OpenTable(u"VEHICLES");
        IndexCursor cursor = vehicles->OpenIndex(vehicles->FindIndex(u"PLATES"));
        std::vector<std::uint8_t> last;
        for (bool more = cursor.First(); more; more = cursor.Next()) {
            const std::vector<std::uint8_t> key(cursor.KeyBytes().begin(), cursor.KeyBytes().end());
            Expect(last < key, "index entries out of order were seen");
            last = key;
        }
        for (RowScan scan = vehicles->Scan(); const auto row = scan.Next();) {
            Expect(!row->Value(1).IsNull(), "a row without its plate was seen");
        }
    }

    Counters user_;
    fs::path stop_;
    int pairs_ = 0;
};

// A row is kept for the time of two commits, for which others queue. Wine takes each lock through one server
// process for all programs: there, that is much of the usual retry time.
void BePatientWithSlowLocks() {
    if (quardele::test::kIsWindows) {
        LockPatience() = std::chrono::seconds(20);
    }
}

/// File, number of the writer. Tells how often it has added to shared rows.
const ChildAction kWrite("write", [](const ChildAction::Arguments& arguments) {
    BePatientWithSlowLocks();
    std::cout << Writer(PathOf(arguments[0]), std::stoi(arguments[1])).Run();
});

/// File, file that tells to stop.
const ChildAction kRead("read", [](const ChildAction::Arguments& arguments) {
    Reader(PathOf(arguments[0]), PathOf(arguments[1])).Run();
});

TEST(Concurrency, EightWritersLoseNothingAndReadersSeeNothingThatNeverWas) {
    const TempFolder folder;
    const fs::path file = MakeCounters(folder.Path());
    const fs::path stop = folder.Path() / "stop";
    const auto start = std::chrono::steady_clock::now();
    std::vector<Process> readers;
    for (int i = 0; i < 2; ++i) {
        readers.push_back(kRead.Start({Argument(file), Argument(stop)}));
    }
    std::vector<Process> writers;
    for (int i = 0; i < kWriters; ++i) {
        writers.push_back(kWrite.Start({Argument(file), std::to_string(i)}));
    }
    int additions = 0;
    for (Process& writer : writers) {
        additions += std::stoi("0" + writer.ReadOutput());
        EXPECT_EQ(writer.Wait(), 0);
    }
    WriteBytes(stop, {});
    for (Process& reader : readers) {
        EXPECT_EQ(reader.Wait(), 0);
    }
    const auto milliseconds =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
    RecordProperty("milliseconds", static_cast<int>(milliseconds.count()));
    EXPECT_FALSE(fs::exists(folder.Path() / "workshop.ldb"));

    Counters user(file);
    for (int i = 0; i < kWriters; ++i) {
        EXPECT_EQ(user.Amount(user.Find(Name(u'W', i))), Operations());
    }
    for (int i = 0; i < kPairs; ++i) {
        EXPECT_EQ(user.Amount(user.Find(Name(u'A', i))) + user.Amount(user.Find(Name(u'B', i))), kPairSum);
    }
    int shared = 0;
    for (int i = 0; i < kShared; ++i) {
        shared += user.Amount(user.Find(Name(u'S', i)));
    }
    EXPECT_EQ(shared, additions);
    EXPECT_GT(shared, Operations());
    for (const Fault& fault : CheckFile(file)) {
        ADD_FAILURE() << basic::ToUtf8(Describe(fault, FaultLanguage::English));
    }
}

}  // namespace
}  // namespace quardele::jet::test
