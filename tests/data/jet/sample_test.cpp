// Whole installations read exactly as the independent reader shows them: the tests' own, and the sample where
// it is.

#include "csv.h"
#include "support.h"

namespace quardele::jet::test {
namespace {

// mdb-export prints an empty text like a Null.
constexpr CsvLimits kLimits{.emptyIsNull = true};

/// Compares all tables of the files and gives the number of their rows.
std::size_t CompareWithIndependentReader(const std::vector<std::filesystem::path>& files) {
    std::size_t rows = 0;
    for (const auto& file : files) {
        const auto database = Database::Open(file, OpenMode::ReadOnly);
        for (const CatalogEntry& entry : database->Catalog()) {
            if (entry.system) {
                continue;
            }
            SCOPED_TRACE(file.filename().string() + "/" + basic::ToUtf8(entry.name));
            const auto lines = ParseCsv(MdbExport(file, basic::ToUtf8(entry.name)));
            const auto table = database->OpenTable(entry.name);
            RowScan scan = table->Scan();
            std::size_t count = 0;
            while (const auto row = scan.Next()) {
                ++count;
                if (count < lines.size()) {
                    EXPECT_EQ(Difference(*table, *row, lines[count], kLimits), "") << "row " << count;
                }
            }
            EXPECT_EQ(count, lines.size() - 1);
            EXPECT_EQ(count, table->RowCount());
            rows += count;
        }
    }
    return rows;
}

TEST(Sample, EveryTableReadsAsTheIndependentReaderShowsIt) {
    SKIP_WITHOUT_MDB_EXPORT();
    const auto files = DataFilesBelow(QUARDELE_SAMPLE_DIR);
    if (files.empty()) {
        GTEST_SKIP() << "the sample is not here";
    }
    EXPECT_GT(CompareWithIndependentReader(files), 10000u);
}

TEST(Installation, EveryTableReadsAsTheIndependentReaderShowsIt) {
    SKIP_WITHOUT_MDB_EXPORT();
    EXPECT_GT(CompareWithIndependentReader(SampleFiles()), 10000u);
}

TEST(Installation, EmptyTextsAndNullsAreDifferent) {
    const auto table = Database::Open(SampleFile("DATA/talmeon.mdb"), OpenMode::ReadOnly)->OpenTable(u"TAFF");
    const int site = table->FindColumn(u"taff_site");
    ASSERT_GE(site, 0);
    std::size_t nulls = 0;
    std::size_t empties = 0;
    Text text;
    RowScan scan = table->Scan();
    while (const auto row = scan.Next()) {
        nulls += row->IsNull(site) ? 1u : 0u;
        empties += row->TextAt(site, text) && text.empty() ? 1u : 0u;
    }
    EXPECT_GT(nulls, 0u);
    EXPECT_GT(empties, 0u);
}

}  // namespace
}  // namespace quardele::jet::test
