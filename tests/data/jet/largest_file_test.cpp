// A file that has its largest size takes what still has room in its pages, and refuses the rest.
#include "opened_table.h"

namespace quardele::jet::test {
namespace {

constexpr std::uintmax_t kTwoGigabytes = std::uintmax_t{1} << 31;
constexpr std::uintmax_t kPage = 4096;

/// A new file with a table of texts, made as long as it may become but for some pages: the system keeps the
/// gap without taking room for it.
std::filesystem::path FileWithPagesLeft(const TempFolder& folder, std::uintmax_t pages) {
    const std::filesystem::path file = folder.Path() / "grand.mdb";
    {
        const auto data = Database::Create(file);
        TableDesign design{.name = u"T", .columns = {}, .indexes = {}};
        design.columns.push_back(
            {.name = u"Libelle", .type = ColumnType::Text, .size = 250, .defaultValue = {}});
        data->CreateTable(design);
    }
    std::filesystem::resize_file(file, kTwoGigabytes - pages * kPage);
    return file;
}

/// Adds rows until one is refused; the number of rows that were added.
std::size_t Fill(Table& table, int& error) {
    // Two bytes a letter, so that eight rows fill a page.
    const Text text(240, u'\u0151');
    constexpr std::size_t kMoreThanFit = 20000;
    std::size_t added = 0;
    while (added < kMoreThanFit) {
        const ColumnChange value{.column = 0, .value = text};
        error = ErrorNumber([&] { static_cast<void>(table.Insert({&value, 1})); });
        if (error != 0) {
            break;
        }
        ++added;
    }
    return added;
}

TEST(LargestFile, RefusesRowsThatNeedAPageMoreAndKeepsThoseThatItHas) {
    const TempFolder folder;
    const std::filesystem::path file = FileWithPagesLeft(folder, 40);
    int error = 0;
    std::size_t added = 0;
    {
        const auto data = Database::Open(file);
        const auto table = data->OpenTable(u"T");
        Step step = data->Begin();
        added = Fill(*table, error);
        step.Commit();
    }
    EXPECT_EQ(error, basic::error::kDiskFullDatabase);
    EXPECT_GT(added, 0U);
    EXPECT_LE(std::filesystem::file_size(file), kTwoGigabytes);
    const auto data = Database::Open(file);
    const auto table = data->OpenTable(u"T");
    EXPECT_EQ(table->RowCount(), added);
    RowScan scan = table->Scan();
    std::size_t read = 0;
    while (scan.NextId()) {
        ++read;
    }
    EXPECT_EQ(read, added);
}

TEST(LargestFile, AStepThatDoesNotFitChangesNothing) {
    const TempFolder folder;
    const std::filesystem::path file = FileWithPagesLeft(folder, 40);
    const auto data = Database::Open(file);
    const auto table = data->OpenTable(u"T");
    int error = 0;
    {
        const Step step = data->Begin();
        EXPECT_GT(Fill(*table, error), 0U);
    }
    EXPECT_EQ(error, basic::error::kDiskFullDatabase);
    EXPECT_EQ(table->RowCount(), 0U);
    EXPECT_EQ(std::filesystem::file_size(file), kTwoGigabytes - 40 * kPage);
}

}  // namespace
}  // namespace quardele::jet::test
