// Every table of the corpus that has a golden dump reads exactly as other programs read it.

#include <set>

#include "csv.h"
#include "support.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;

// These dumps come from a reader that prints Null and the empty text alike.
bool EmptyIsNull(const std::string& file, const std::string& table) {
    static const std::set<std::string> kTables = {
        "DateTestDatabase/DateTest",          "indexCodesV2000-r2009/Table1",
        "indexCodesV2000-r2009/Table1_desc",  "indexCodesV2000-r2009/Table6",
        "indexCodesV2000-r2009/Table6_desc",  "indexCodesV2000-r2009/Table13",
        "indexCodesV2000-r2009/Table13_desc", "overflowV2000/Table1"};
    return kTables.contains(file + "/" + table);
}

bool LeavesOutBinary(const std::string& file, const std::string& table) {
    static const std::set<std::string> kTables = {"nwind/Categories", "nwind/Employees",
                                                  "common2V2000/MSP_PROJECTS"};
    return kTables.contains(file + "/" + table);
}

void CompareTable(const std::string& file, const fs::path& golden) {
    const std::string name = golden.stem().string();
    SCOPED_TRACE(file + "/" + name);
    const auto bytes = ReadBytes(golden);
    const auto lines = ParseCsv({bytes.begin(), bytes.end()});
    const auto table =
        Database::Open(CorpusFile(file + ".mdb"), OpenMode::ReadOnly)->OpenTable(basic::FromUtf8(name));
    const CsvLimits limits{.emptyIsNull = EmptyIsNull(file, name), .noBinary = LeavesOutBinary(file, name)};
    ASSERT_FALSE(lines.empty());
    ASSERT_EQ(lines[0].size(), table->Columns().size());
    for (std::size_t i = 0; i < lines[0].size(); ++i) {
        EXPECT_EQ(basic::ToUtf8(table->Columns()[i].name), lines[0][i].value_or(""));
    }
    RowScan scan = table->Scan();
    std::size_t count = 0;
    while (const auto row = scan.Next()) {
        ++count;
        ASSERT_LT(count, lines.size());
        EXPECT_EQ(Difference(*table, *row, lines[count], limits), "") << "row " << count;
    }
    EXPECT_EQ(count, lines.size() - 1);
}

TEST(GoldenDumps, EveryTableReadsAsOtherProgramsReadIt) {
    SKIP_WITHOUT_CORPUS();
    int tables = 0;
    for (const auto& folder : fs::directory_iterator(CorpusFile("golden"))) {
        for (const auto& golden : fs::directory_iterator(folder)) {
            if (golden.path().extension() == ".csv") {
                CompareTable(folder.path().filename().string(), golden.path());
                ++tables;
            }
        }
    }
    EXPECT_GE(tables, 50);
}

TEST(GoldenDumps, EveryTableOfEveryFileReadsToTheEnd) {
    SKIP_WITHOUT_CORPUS();
    int rows = 0;
    for (const fs::path& file : CorpusFiles()) {
        if (file.filename() == "password.mdb") {
            continue;
        }
        SCOPED_TRACE(file.filename().string());
        const auto database = Database::Open(file, OpenMode::ReadOnly);
        for (const CatalogEntry& entry : database->Catalog()) {
            if (entry.linked) {
                continue;
            }
            SCOPED_TRACE(basic::ToUtf8(entry.name));
            const auto table = database->OpenTable(entry.name);
            RowScan scan = table->Scan();
            while (const auto row = scan.Next()) {
                ++rows;
                for (std::size_t i = 0; i < table->Columns().size(); ++i) {
                    EXPECT_NO_THROW(static_cast<void>(row->Value(static_cast<int>(i))))
                        << basic::ToUtf8(table->Columns()[i].name);
                }
            }
        }
    }
    EXPECT_GT(rows, 8000);
}

}  // namespace
}  // namespace quardele::jet::test
