// Tables taken away, and the pages that come back.

#include "csv.h"
#include "index_check.h"
#include "opened_table.h"
#include "structure_support.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;

TEST(DropTable, GivesAllPagesBack) {
    const TempFolder folder;
    const fs::path file = folder.Path() / "new.mdb";
    {
        const auto database = Database::Create(file);
        // The catalogue takes its pages once; what a first table took of them stays.
        database->CreateTable({.name = u"Reste", .columns = {ColumnOf(u"a")}, .indexes = {}});
        database->CreateTable(EveryType());
        database->DropTable(u"Tout");
    }
    const PageUse before = PagesOf(file);
    {
        const auto database = Database::Open(file);
        database->CreateTable(EveryType());
        FillEveryType(*database, *database->OpenTable(u"Tout"), 1500);
        database->CreateIndex(u"Tout", {.name = u"plus", .columns = {{.column = u"Octets"}}});
    }
    EXPECT_EQ(Findings(file), "");
    {
        const auto database = Database::Open(file);
        database->DropTable(u"tout");
        EXPECT_FALSE(database->HasTable(u"Tout"));
        EXPECT_TRUE(database->HasTable(u"Reste"));
    }
    const PageUse after = PagesOf(file);
    EXPECT_EQ(after.all - after.free, before.all - before.free);
    EXPECT_GT(after.free, 100U);
    EXPECT_EQ(Findings(file), "");
}

TEST(DropTable, TheSamePagesServeAgain) {
    const TempFolder folder;
    const fs::path file = folder.Path() / "new.mdb";
    const auto database = Database::Create(file);
    PageUse use;
    for (int round = 0; round < 5; ++round) {
        database->CreateTable(EveryType());
        FillEveryType(*database, *database->OpenTable(u"Tout"), 200);
        database->DropTable(u"Tout");
        if (round == 1) {
            use.all = static_cast<std::uint32_t>(fs::file_size(file) / 4096);
        }
    }
    EXPECT_EQ(fs::file_size(file) / 4096, use.all);
    EXPECT_EQ(Findings(file), "");
}

TEST(DropTable, IsRefusedForSystemTablesLinksAndUnknownOnes) {
    const TempFolder folder;
    const auto database = Database::Create(folder.Path() / "new.mdb");
    const auto drop = [](Database& from, const Text& name) {
        return ErrorNumber([&] { from.DropTable(name); });
    };
    EXPECT_EQ(drop(*database, u"MSysObjects"), basic::error::kCannotDropTable);
    EXPECT_EQ(drop(*database, u"Absente"), basic::error::kNoSuchTable);
    SKIP_WITHOUT_CORPUS();
    const auto linking = Database::Open(folder.Copy(CorpusFile("linked.mdb")));
    EXPECT_EQ(drop(*linking, u"Table1"), basic::error::kCannotDropTable);
}

TEST(DropTable, IsRefusedForTheEndsOfRelationships) {
    SKIP_WITHOUT_CORPUS();
    const TempFolder folder;
    const fs::path file = folder.Copy(CorpusFile("indexV2000.mdb"));
    const auto before = ReadBytes(file);
    const auto database = Database::Open(file);
    for (const Text& name : {Text(u"Table1"), Text(u"Table2"), Text(u"Table3")}) {
        EXPECT_EQ(ErrorNumber([&] { database->DropTable(name); }), basic::error::kUsedInRelation);
    }
}

TEST(DropTable, AnUndoneStepBringsTheTableBack) {
    const TempFolder folder;
    const fs::path file = folder.Path() / "new.mdb";
    const auto database = Database::Create(file);
    database->CreateTable(EveryType());
    FillEveryType(*database, *database->OpenTable(u"Tout"), 30);
    const auto rows = Rows(*database->OpenTable(u"Tout"));
    {
        const Step step = database->Begin();
        database->DropTable(u"Tout");
        EXPECT_FALSE(database->HasTable(u"Tout"));
        database->CreateTable({.name = u"Tout", .columns = {ColumnOf(u"a")}, .indexes = {}});
        EXPECT_EQ(database->OpenTable(u"Tout")->Columns().size(), 1U);
    }
    EXPECT_EQ(Rows(*database->OpenTable(u"Tout")), rows);
    EXPECT_EQ(Findings(file), "");
}

TEST(DropTable, ATableOfTheCorpusGoesAndTheOthersReadTheSame) {
    SKIP_WITHOUT_CORPUS();
    SKIP_WITHOUT_MDB_EXPORT();
    const TempFolder folder;
    const fs::path file = folder.Copy(CorpusFile("indexCodesV2000-r2009.mdb"));
    const std::string kept = MdbExport(file, "Table11_desc");
    {
        const auto database = Database::Open(file);
        for (const Text& name : {Text(u"Table1"), Text(u"Table11"), Text(u"Table13"), Text(u"Table9")}) {
            database->DropTable(name);
            EXPECT_FALSE(database->HasTable(name));
        }
    }
    EXPECT_EQ(MdbExport(file, "Table11_desc"), kept);
    EXPECT_EQ(Findings(file, false), "");
    const std::string tables = Output({"mdb-tables", "-1", file.string()});
    EXPECT_EQ(tables.find("Table1\n"), std::string::npos);
    EXPECT_NE(tables.find("Table1_desc\n"), std::string::npos);
}

}  // namespace
}  // namespace quardele::jet::test
