// Files that are missing, foreign, damaged or not for everybody.

#include <fstream>

#include "support.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;

int OpenError(const fs::path& file, OpenMode mode = OpenMode::Shared) {
    return ErrorNumber([&] { static_cast<void>(Database::Open(file, mode)); });
}

class Opening : public testing::Test {
 protected:
    fs::path Write(const std::vector<std::uint8_t>& bytes) const {
        const fs::path file = folder_.Path() / "base.mdb";
        WriteBytes(file, bytes);
        return file;
    }
    TempFolder folder_;
};

TEST_F(Opening, AMissingFileAndAMissingFolderAreTold) {
    EXPECT_EQ(OpenError(folder_.Path() / "absent.mdb"), basic::error::kFileMissing);
    EXPECT_EQ(OpenError(folder_.Path() / "absent" / "base.mdb"), basic::error::kBadPath);
    EXPECT_EQ(OpenError(folder_.Path()), basic::error::kCannotOpenFile);
}

TEST_F(Opening, WhatIsNoDataFileIsRefused) {
    EXPECT_EQ(OpenError(Write({})), basic::error::kNotADatabase);
    EXPECT_EQ(OpenError(Write(std::vector<std::uint8_t>(100000, 'x'))), basic::error::kNotADatabase);
    EXPECT_EQ(OpenError(Write(std::vector<std::uint8_t>(100000, 0))), basic::error::kNotADatabase);
    EXPECT_EQ(OpenError(fs::path(QUARDELE_SOURCE_DIR) / "README.md", OpenMode::ReadOnly),
              basic::error::kNotADatabase);
}

TEST_F(Opening, ATruncatedFileIsRefusedOrItsMissingPagesAre) {
    const auto bytes = ReadBytes(SampleFile("SIGNETS.MDB"));
    for (std::size_t length = 0; length < bytes.size(); length += 1500) {
        const fs::path file = Write({bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length)});
        const int error = ErrorNumber([&] {
            const auto database = Database::Open(file, OpenMode::ReadOnly);
            for (const CatalogEntry& entry : database->Catalog()) {
                RowScan scan = database->OpenTable(entry.name)->Scan();
                while (scan.Next()) {
                }
            }
        });
        EXPECT_EQ(error, basic::error::kNotADatabase) << length;
    }
}

TEST_F(Opening, TheDescriptionNamesTheFile) {
    try {
        static_cast<void>(Database::Open(Write({1, 2, 3})));
        FAIL();
    } catch (const basic::RuntimeError& error) {
        EXPECT_NE(error.Description().find(u"base.mdb"), Text::npos);
    }
}

TEST_F(Opening, NewerVersionsEncryptedPagesAndOtherProgramsFilesAreRefused) {
    constexpr std::size_t kName = 0x04;
    constexpr std::size_t kVersion = 0x14;
    constexpr std::size_t kKey = 0x3E;
    const auto bytes = ReadBytes(SampleFile("SIGNETS.MDB"));
    auto newer = bytes;
    newer[kVersion] = 2;
    EXPECT_EQ(OpenError(Write(newer)), basic::error::kNotADatabase);
    auto money = bytes;
    const std::string_view name = "MSISAM Database";
    std::copy(name.begin(), name.end(), money.begin() + kName);
    EXPECT_EQ(OpenError(Write(money)), basic::error::kNotADatabase);
    auto encrypted = bytes;
    encrypted[kKey] ^= 0x55;
    EXPECT_EQ(OpenError(Write(encrypted)), basic::error::kOperationNotSupported);
}

TEST_F(Opening, APasswordIsAskedFor) {
    constexpr std::size_t kPassword = 0x42;
    auto bytes = ReadBytes(SampleFile("SIGNETS.MDB"));
    bytes[kPassword] ^= 'a';
    EXPECT_EQ(OpenError(Write(bytes)), basic::error::kBadPassword);
    SKIP_WITHOUT_CORPUS();
    EXPECT_EQ(OpenError(CorpusFile("password.mdb"), OpenMode::ReadOnly), basic::error::kBadPassword);
}

TEST_F(Opening, AnUnknownTableIsTold) {
    const auto database = Database::Open(SampleFile("SIGNETS.MDB"), OpenMode::ReadOnly);
    EXPECT_FALSE(database->HasTable(u"ABSENTE"));
    EXPECT_EQ(ErrorNumber([&] { static_cast<void>(database->OpenTable(u"ABSENTE")); }),
              basic::error::kNoSuchTable);
}

TEST_F(Opening, TablesAreFoundInAnyCaseAndShared) {
    const auto database = Database::Open(SampleFile("DATA/talmeon.mdb"), OpenMode::ReadOnly);
    const auto table = database->OpenTable(u"TVeh_Detail");
    EXPECT_EQ(table, database->OpenTable(u"TVEH_DETAIL"));
    EXPECT_EQ(table->FindColumn(u"tveh_detail_IMMAT"), 0);
    EXPECT_EQ(table->FindColumn(u"absent"), -1);
    EXPECT_EQ(table->FindIndex(u"primarykey"), 0);
}

TEST_F(Opening, ATableKeepsItsDatabaseOpen) {
    std::shared_ptr<Table> table;
    {
        const auto database = Database::Open(SampleFile("DATA/talmeon.mdb"), OpenMode::ReadOnly);
        table = database->OpenTable(u"TVEH_DETAIL");
    }
    EXPECT_TRUE(table->Scan().Next().has_value());
}

TEST_F(Opening, LinkedTablesAreFoundBesideTheFile) {
    SKIP_WITHOUT_CORPUS();
    const fs::path linking = folder_.Copy(CorpusFile("linked.mdb"));
    const auto database = Database::Open(linking);
    EXPECT_EQ(ErrorNumber([&] { static_cast<void>(database->OpenTable(u"Table1")); }),
              basic::error::kLinkedTableMissing);
    EXPECT_EQ(ErrorNumber([&] { static_cast<void>(database->OpenTable(u"table2")); }),
              basic::error::kLinkedTableMissing);
    static_cast<void>(folder_.Copy(CorpusFile("linkee2.mdb")));
    const auto table = database->OpenTable(u"table2");
    EXPECT_TRUE(table->Scan().Next().has_value());
    for (const CatalogEntry& entry : database->Catalog()) {
        EXPECT_EQ(entry.linked, entry.name == u"Table1" || entry.name == u"table2");
    }
}

TEST_F(Opening, PropertiesOfColumnsAreRead) {
    SKIP_WITHOUT_CORPUS();
    const auto table =
        Database::Open(CorpusFile("common1V2000.mdb"), OpenMode::ReadOnly)->OpenTable(u"Table1");
    const Column& column = table->Columns()[0];
    EXPECT_FALSE(column.required);
    EXPECT_FALSE(column.allowZeroLength);
    EXPECT_EQ(table->Columns()[2].defaultValue, u"0");
}

}  // namespace
}  // namespace quardele::jet::test
