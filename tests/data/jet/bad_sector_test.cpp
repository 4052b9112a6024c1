// A disk that cannot read one sector: what lies before it is read, and the error comes where it lies. The
// system of the test refuses the reads, with the error of such a disk, to a process that asked for that.

#include <cstdlib>
#include <iostream>

#include "child_action.h"
#include "refused_calls.h"
#include "support.h"
#include "workshop.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;
using quardele::test::Argument;
using quardele::test::ChildAction;

constexpr int kCannotRefuse = 77;
constexpr std::uint32_t kPageSize = 4096;
constexpr int kVehicles = 3000;

/// Prints how many rows a scan finds before it ends, and the error that ends it: file, byte that cannot be
/// read.
const ChildAction kScan("scan", [](const ChildAction::Arguments& arguments) {
    if (!RefuseToRead(static_cast<std::uint32_t>(std::stoul(arguments[1])))) {
        std::_Exit(kCannotRefuse);
    }
    const auto database = Database::Open(quardele::test::PathOf(arguments[0]), OpenMode::ReadOnly);
    const auto vehicles = database->OpenTable(u"VEHICLES");
    int rows = 0;
    const int error = ErrorNumber([&] {
        for (RowScan scan = vehicles->Scan(); scan.Next();) {
            ++rows;
        }
    });
    std::cout << rows << " rows, error " << error;
});

TEST(BadSector, LetsEveryRowBeforeItBeRead) {
    const TempFolder folder;
    const fs::path file = MakeWorkshop(folder.Path(), kVehicles);
    std::vector<RowId> rows;
    const auto table = Database::Open(file, OpenMode::ReadOnly)->OpenTable(u"VEHICLES");
    for (RowScan scan = table->Scan(); const auto row = scan.NextId();) {
        rows.push_back(*row);
    }
    constexpr std::size_t kStep = 217;  // rows of some pages, in the middle of runs and at their ends
    for (std::size_t position = kStep; position < rows.size(); position += kStep) {
        const std::uint32_t page = rows[position].page;
        const auto first =
            std::find_if(rows.begin(), rows.end(), [page](RowId row) { return row.page == page; });
        const std::uint32_t sector = page * kPageSize + 1024;
        auto reader = kScan.Start({Argument(file), std::to_string(sector)});
        const std::string seen = reader.ReadOutput();
        const int code = reader.Wait();
        if (code == kCannotRefuse) {
            GTEST_SKIP() << "this system cannot refuse reads to a process";
        }
        ASSERT_EQ(code, 0);
        EXPECT_EQ(seen, std::to_string(first - rows.begin()) + " rows, error " +
                            std::to_string(basic::error::kDeviceIo))
            << "page " << page;
    }
}

}  // namespace
}  // namespace quardele::jet::test
