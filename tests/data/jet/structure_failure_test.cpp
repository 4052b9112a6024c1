// A disk that fails at any moment of a change of structure: the file is as before, or as after.

#include <jet/compaction.h>

#include "file/write_hook.h"
#include "locks/lock_file.h"
#include "opened_table.h"
#include "structure_support.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;

/// Lets a number of steps towards the disk pass, and fails all that come later.
class FailingDisk {
 public:
    explicit FailingDisk(int passing) : left_(passing) {
        CurrentWriteHook() = [this](const WriteEvent&) {
            if (left_ == 0) {
                throw basic::RuntimeError(basic::error::kDiskFullDatabase);
            }
            --left_;
        };
    }
    ~FailingDisk() { CurrentWriteHook() = {}; }
    FailingDisk(const FailingDisk&) = delete;
    FailingDisk& operator=(const FailingDisk&) = delete;

 private:
    int left_;
};

struct StructureAction {
    const char* name;
    std::function<void(Database&)> run;
};

class StructureFailure : public testing::TestWithParam<StructureAction> {
 protected:
    StructureFailure() : file_(folder_.Path() / "new.mdb") {
        const auto database = Database::Create(file_);
        database->CreateTable(EveryType());
        FillEveryType(*database, *database->OpenTable(u"Tout"), 60);
    }
    /// What the file holds, in one text.
    [[nodiscard]] std::string Content() const {
        std::string content;
        const auto database = Database::Open(file_);
        for (const CatalogEntry& entry : database->Catalog()) {
            const auto table = database->OpenTable(entry.name);
            content += basic::ToUtf8(entry.name) + ":" + std::to_string(table->Indexes().size()) + "\n";
            if (!entry.system) {
                for (const std::string& row : Rows(*table)) {
                    content += row + "\n";
                }
            }
        }
        return content;
    }

    TempFolder folder_;
    fs::path file_;
};

TEST_P(StructureFailure, LeavesTheFileAsBeforeOrAsAfter) {
    const auto original = ReadBytes(file_);
    const std::string before = Content();
    GetParam().run(*Database::Open(file_));
    const std::string after = Content();
    EXPECT_NE(before, after);
    bool failed = true;
    int passing = 0;
    for (; failed; ++passing) {
        WriteBytes(file_, original);
        const auto database = Database::Open(file_);
        {
            const FailingDisk disk(passing);
            failed = ErrorNumber([&] { GetParam().run(*database); }) != 0;
        }
        // The same Database goes on with what the file holds.
        EXPECT_EQ(database->HasTable(u"Tout"), Content().find("Tout:") != std::string::npos);
        const std::string now = Content();
        EXPECT_TRUE(now == before || now == after) << "after " << passing << " steps";
        EXPECT_EQ(Findings(file_), "") << "after " << passing << " steps";
    }
    EXPECT_EQ(Content(), after);
    EXPECT_GT(passing, 4);
}

INSTANTIATE_TEST_SUITE_P(
    Actions, StructureFailure,
    testing::Values(StructureAction{"CreateTable",
                                    [](Database& database) {
                                        TableDesign design = EveryType();
                                        design.name = u"Autre";
                                        database.CreateTable(design);
                                    }},
                    StructureAction{"DropTable", [](Database& database) { database.DropTable(u"Tout"); }},
                    StructureAction{"AddColumn",
                                    [](Database& database) {
                                        database.AddColumn(u"Tout", ColumnOf(u"Plus", ColumnType::Memo));
                                    }},
                    StructureAction{"CreateIndex",
                                    [](Database& database) {
                                        database.CreateIndex(
                                            u"Tout", {.name = u"plus", .columns = {{.column = u"Cle"}}});
                                    }}),
    [](const auto& action) { return action.param.name; });

TEST(NewFileFailure, NothingStaysOfAFileThatCouldNotBeMade) {
    const TempFolder folder;
    const fs::path file = folder.Path() / "new.mdb";
    bool failed = true;
    for (int passing = 0; failed; ++passing) {
        {
            const FailingDisk disk(passing);
            failed = ErrorNumber([&] { Database::Create(file); }) != 0;
        }
        EXPECT_NE(fs::exists(file), failed) << "after " << passing << " steps";
        if (!failed) {
            EXPECT_EQ(Findings(file), "") << "after " << passing << " steps";
            fs::remove(file);
        }
        for (const auto& entry : fs::directory_iterator(folder.Path())) {
            ADD_FAILURE() << entry.path() << " after " << passing << " steps";
        }
    }
}

TEST(NewFileFailure, NothingStaysOfACompactionThatFailed) {
    const TempFolder folder;
    const fs::path source = folder.Path() / "source.mdb";
    const fs::path target = folder.Path() / "target.mdb";
    {
        const auto database = Database::Create(source);
        database->CreateTable(EveryType());
        FillEveryType(*database, *database->OpenTable(u"Tout"), 20);
    }
    const auto before = ReadBytes(source);
    bool failed = true;
    for (int passing = 0; failed; passing += 7) {
        {
            const FailingDisk disk(passing);
            failed = ErrorNumber([&] { Compact(source, target); }) != 0;
        }
        EXPECT_EQ(ReadBytes(source), before);
        EXPECT_NE(fs::exists(target), failed) << "after " << passing << " steps";
        if (!failed) {
            EXPECT_EQ(Findings(target), "") << "after " << passing << " steps";
            fs::remove(target);
        }
        fs::remove(LockFile::PathFor(source));  // such a disk does not delete it
        for (const auto& entry : fs::directory_iterator(folder.Path())) {
            EXPECT_EQ(entry.path(), source) << "after " << passing << " steps";
        }
    }
}

}  // namespace
}  // namespace quardele::jet::test
