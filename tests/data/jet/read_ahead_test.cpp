// Pages that are read before anybody asks for them: the end of a file that was cut off, and writers.

#include <chrono>
#include <numeric>
#include <thread>

#include "child_action.h"
#include "engine.h"
#include "file/write_hook.h"
#include "support.h"
#include "workshop.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;
using quardele::test::Argument;
using quardele::test::ChildAction;
using quardele::test::PathOf;

constexpr std::uint32_t kPageSize = 4096;
constexpr int kVehicles = 3000;

/// A file of which a reader has seen more pages than there are left.
class CutFile : public testing::Test {
 protected:
    void SetUp() override {
        missing_ = engine_.Cache().PageCount() - 3;
        fs::resize_file(file_, std::uintmax_t{missing_} * kPageSize + 100);
    }
    void ExpectMissing(std::uint32_t number) {
        try {
            static_cast<void>(engine_.Cache().Read(number));
            ADD_FAILURE() << "page " << number << " was read";
        } catch (const basic::RuntimeError& error) {
            EXPECT_EQ(error.Number(), basic::error::kNotADatabase);
            const std::string text = error.what();
            EXPECT_NE(text.find("page " + std::to_string(number) + ", page incomplète"), std::string::npos)
                << text;
        }
    }

    TempFolder folder_;
    fs::path file_ = MakeWorkshop(folder_.Path(), kVehicles);
    Engine engine_{file_, OpenMode::ReadOnly};
    std::uint32_t missing_ = 0;
};

TEST_F(CutFile, GivesTheFirstOfAListThatGoesBeyondItsEnd) {
    std::vector<std::uint32_t> pages(8);
    std::iota(pages.begin(), pages.end(), missing_ - 5);
    for (auto rest = std::span<const std::uint32_t>(pages); rest.front() < missing_; rest = rest.subspan(1)) {
        ASSERT_EQ(engine_.Cache().ReadFirst(rest)->number, rest.front());
    }
    ExpectMissing(missing_);
    ExpectMissing(missing_ + 1);
}

/// Gives all vehicles the same kilometres, in one step.
void SetAllKm(Database& database, int km) {
    const auto vehicles = database.OpenTable(u"VEHICLES");
    Step step = database.Begin();
    for (RowScan scan = vehicles->Scan(); const auto row = scan.NextId();) {
        UpdateRow(*vehicles, *row, {{u"KM", std::int32_t{km}}});
    }
    step.Commit();
}

/// File, kilometres.
const ChildAction kSetAll("set all", [](const ChildAction::Arguments& arguments) {
    SetAllKm(*Database::Open(PathOf(arguments[0])), std::stoi(arguments[1]));
});

/// Sets all kilometres, and is in the middle of writing the pages for a while: file, kilometres, page.
const ChildAction kSetAllSlowly("set all slowly", [](const ChildAction::Arguments& arguments) {
    const auto database = Database::Open(PathOf(arguments[0]));
    CurrentWriteHook() = [file = database->File(), number = std::stoi(arguments[2]),
                          count = 0](const WriteEvent& event) mutable {
        const bool page =
            event.step == WritePoint::Write && event.path == file && event.bytes.size() == kPageSize;
        if (page && ++count == number) {
            quardele::test::GiveSign();
            std::this_thread::sleep_for(std::chrono::milliseconds(200));
        }
    };
    SetAllKm(*database, std::stoi(arguments[1]));
});

/// Sets all kilometres to 1, 2 and so on: file, how often.
const ChildAction kSetAllOften("set all often", [](const ChildAction::Arguments& arguments) {
    const auto database = Database::Open(PathOf(arguments[0]));
    for (int km = 1; km <= std::stoi(arguments[1]); ++km) {
        SetAllKm(*database, km);
    }
});

class ReadAheadBesideAWriter : public testing::Test {
 protected:
    void SetUp() override { SetAllKm(*Database::Open(file_), 0); }

    /// The kilometres of the next rows of a scan; fewer at its end.
    [[nodiscard]] std::vector<double> Km(RowScan& scan, std::size_t rows = kVehicles) const {
        const int column = vehicles_->FindColumn(u"KM");
        std::vector<double> km;
        while (km.size() < rows) {
            const auto row = scan.Next();
            if (!row) {
                break;
            }
            km.push_back(row->NumberAt(column));
        }
        return km;
    }
    [[nodiscard]] std::vector<double> KmAfterRefresh() const {
        vehicles_->Home().Refresh();
        RowScan scan = vehicles_->Scan();
        return Km(scan);
    }
    static void ExpectAllNew(const std::vector<double>& km, double value) {
        EXPECT_EQ(km, std::vector<double>(kVehicles, value));
    }

    static constexpr int kNew = 4711;
    /// Rows of a dozen pages, after which a scan has read ahead some pages more.
    static constexpr std::size_t kSomeRows = 700;
    TempFolder folder_;
    fs::path file_ = MakeWorkshop(folder_.Path(), kVehicles);
    std::shared_ptr<Table> vehicles_ = Database::Open(file_)->OpenTable(u"VEHICLES");
};

TEST_F(ReadAheadBesideAWriter, WhatWasReadAheadIsOldAndWhatIsReadAfterwardsIsNew) {
    RowScan scan = vehicles_->Scan();
    ASSERT_EQ(Km(scan, kSomeRows), std::vector<double>(kSomeRows, 0));
    ASSERT_EQ(kSetAll.Run({Argument(file_), std::to_string(kNew)}), 0);
    const std::vector<double> rest = Km(scan);
    EXPECT_EQ(rest.size(), kVehicles - kSomeRows);
    EXPECT_EQ(rest.front(), 0);
    EXPECT_EQ(rest.back(), kNew);
    EXPECT_TRUE(std::is_sorted(rest.begin(), rest.end()));
    ExpectAllNew(KmAfterRefresh(), kNew);
}

TEST_F(ReadAheadBesideAWriter, ARunOfWhichSomePagesAreWrittenIsReadAnew) {
    RowScan scan = vehicles_->Scan();
    ASSERT_EQ(Km(scan, kSomeRows), std::vector<double>(kSomeRows, 0));
    auto writer = kSetAllSlowly.Keep({Argument(file_), std::to_string(kNew), "24"});
    const std::vector<double> rest = Km(scan);
    EXPECT_EQ(writer.Wait(), 0);
    EXPECT_EQ(rest.size(), kVehicles - kSomeRows);
    EXPECT_EQ(rest.back(), kNew);
    EXPECT_TRUE(std::is_sorted(rest.begin(), rest.end()));
    ExpectAllNew(KmAfterRefresh(), kNew);
}

TEST_F(ReadAheadBesideAWriter, NoScanGoesBackToAnOlderState) {
    constexpr int kRounds = 15;
    constexpr auto kLongest = std::chrono::minutes(2);
    auto writer = kSetAllOften.Start({Argument(file_), std::to_string(kRounds)});
    const auto end = std::chrono::steady_clock::now() + kLongest;
    std::vector<double> last(kVehicles, 0);
    while (last.front() < kRounds && std::chrono::steady_clock::now() < end) {
        const std::vector<double> now = KmAfterRefresh();
        ASSERT_EQ(now.size(), last.size());
        ASSERT_TRUE(std::is_sorted(now.begin(), now.end()));
        ASSERT_GE(now.front(), last.back());
        last = now;
    }
    EXPECT_EQ(writer.Wait(), 0);
    ExpectAllNew(KmAfterRefresh(), kRounds);
}

}  // namespace
}  // namespace quardele::jet::test
