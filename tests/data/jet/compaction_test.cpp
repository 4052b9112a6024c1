// Files copied without what has become useless in them.

#include <jet/compaction.h>

#include "csv.h"
#include "index_check.h"
#include "opened_table.h"
#include "structure_support.h"
#include "table_impl.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;

void ExpectSameColumns(const Table& a, const Table& b) {
    ASSERT_EQ(a.Columns().size(), b.Columns().size());
    for (std::size_t i = 0; i < a.Columns().size(); ++i) {
        const Column& left = a.Columns()[i];
        const Column& right = b.Columns()[i];
        EXPECT_EQ(left.name, right.name);
        EXPECT_EQ(left.type, right.type);
        EXPECT_EQ(left.size, right.size);
        EXPECT_EQ(left.required, right.required);
        EXPECT_EQ(left.allowZeroLength, right.allowZeroLength);
        EXPECT_EQ(left.defaultValue, right.defaultValue);
        EXPECT_EQ(left.autoNumber, right.autoNumber);
    }
}

void ExpectSameIndexes(const Table& a, const Table& b) {
    ASSERT_EQ(a.Indexes().size(), b.Indexes().size());
    for (std::size_t i = 0; i < a.Indexes().size(); ++i) {
        EXPECT_EQ(a.Indexes()[i].name, b.Indexes()[i].name);
        if (a.Name() == u"MSysObjects" || a.Name() == u"MSysACEs") {
            continue;  // their keys name tables by their pages
        }
        std::vector<ByteString> keys[2];
        const Table* tables[] = {&a, &b};
        for (int side = 0; side < 2; ++side) {
            IndexCursor cursor = tables[side]->OpenIndex(static_cast<int>(i));
            for (bool found = cursor.First(); found; found = cursor.Next()) {
                keys[side].emplace_back(cursor.KeyBytes().begin(), cursor.KeyBytes().end());
            }
        }
        EXPECT_EQ(keys[0], keys[1]) << basic::ToUtf8(a.Name() + u"." + a.Indexes()[i].name);
    }
}

void ExpectSameRows(const Table& a, const Table& b) {
    if (a.Name() == u"MSysObjects" || a.Name() == u"MSysACEs") {
        EXPECT_EQ(Rows(a).size(), Rows(b).size());  // their values name tables by their pages
    } else {
        EXPECT_EQ(Rows(a), Rows(b)) << basic::ToUtf8(a.Name());
    }
}

void ExpectSameContent(const fs::path& before, const fs::path& after) {
    const auto source = Database::Open(before, OpenMode::ReadOnly);
    const auto target = Database::Open(after, OpenMode::ReadOnly);
    ASSERT_EQ(source->Catalog().size(), target->Catalog().size());
    for (const CatalogEntry& entry : source->Catalog()) {
        ASSERT_TRUE(target->HasTable(entry.name));
        if (entry.linked) {
            continue;
        }
        const auto a = source->OpenTable(entry.name);
        const auto b = target->OpenTable(entry.name);
        ExpectSameColumns(*a, *b);
        ExpectSameRows(*a, *b);
        ExpectSameIndexes(*a, *b);
        EXPECT_EQ(a->Impl().Def().lastAutoNumber, b->Impl().Def().lastAutoNumber);
    }
}

std::vector<fs::path> FilesToCompact() {
    std::vector<fs::path> files = SampleFiles();
    for (const fs::path& file : CorpusFiles()) {
        const std::string name = file.filename().string();
        if (name != "password.mdb" && name != "nwind.mdb" && name != "common1V1997.mdb") {
            files.push_back(file);
        }
    }
    return files;
}

TEST(Compact, EveryFileKeepsItsContent) {
    for (const fs::path& original : FilesToCompact()) {
        SCOPED_TRACE(original.string());
        const TempFolder folder;
        const fs::path source = folder.Copy(original);
        const fs::path target = folder.Path() / "compact" / source.filename();
        fs::create_directory(target.parent_path());
        const auto before = ReadBytes(source);
        Compact(source, target);
        EXPECT_EQ(ReadBytes(source), before);
        ExpectSameContent(source, target);
        EXPECT_EQ(Findings(target), "");
        EXPECT_LE(PagesOf(target).all - PagesOf(target).free, PagesOf(source).all);
    }
}

TEST(Compact, TheIndependentReaderSeesTheSameRows) {
    SKIP_WITHOUT_MDB_EXPORT();
    for (const fs::path& original : FilesToCompact()) {
        const TempFolder folder;
        const fs::path source = folder.Copy(original);
        const fs::path target = folder.Path() / "compact.mdb";
        Compact(source, target);
        const auto database = Database::Open(source, OpenMode::ReadOnly);
        for (const CatalogEntry& entry : database->Catalog()) {
            if (!entry.system && !entry.linked) {
                auto before = ParseCsv(MdbExport(source, basic::ToUtf8(entry.name)));
                auto after = ParseCsv(MdbExport(target, basic::ToUtf8(entry.name)));
                // It shows moved rows where their data lie.
                std::sort(before.begin(), before.end());
                std::sort(after.begin(), after.end());
                EXPECT_EQ(before, after) << original << ' ' << basic::ToUtf8(entry.name);
            }
        }
    }
}

TEST(Compact, DeletedRowsAndDroppedTablesGo) {
    const TempFolder folder;
    const fs::path source = folder.Path() / "source.mdb";
    const fs::path target = folder.Path() / "target.mdb";
    {
        const auto database = Database::Create(source);
        database->CreateTable(EveryType());
        TableDesign other = EveryType();
        other.name = u"Autre";
        database->CreateTable(other);
        const auto table = database->OpenTable(u"Tout");
        FillEveryType(*database, *table, 2500);
        FillEveryType(*database, *database->OpenTable(u"Autre"), 500);
        Step step = database->Begin();
        for (const RowId row : AllRows(*table)) {
            if (table->Fetch(row)->NumberAt(0) > 300) {
                table->Delete(row);
            }
        }
        step.Commit();
        database->DropTable(u"Autre");
    }
    std::vector<double> progress;
    Compact(source, target, [&](double done) { progress.push_back(done); });
    ExpectSameContent(source, target);
    EXPECT_EQ(Findings(target), "");
    EXPECT_LT(fs::file_size(target) * 4, fs::file_size(source));
    EXPECT_EQ(PagesOf(target).free, 0U);
    ASSERT_FALSE(progress.empty());
    EXPECT_TRUE(std::is_sorted(progress.begin(), progress.end()));
    EXPECT_DOUBLE_EQ(progress.back(), 1.0);
    // The numbering goes on where it was.
    const auto database = Database::Open(target);
    const auto table = database->OpenTable(u"Tout");
    const RowId row = table->Insert(RowOfEveryType(7777));
    EXPECT_EQ(table->Fetch(row)->Value(0), Variant(std::int32_t{2501}));
    EXPECT_EQ(FaultsOf(*table), "");
}

TEST(Compact, RelationshipsAreEnforcedInTheCopy) {
    SKIP_WITHOUT_CORPUS();
    const TempFolder folder;
    const fs::path target = folder.Path() / "target.mdb";
    Compact(folder.Copy(CorpusFile("indexV2000.mdb")), target);
    const auto database = Database::Open(target);
    EXPECT_EQ(ErrorNumber([&] { database->DropTable(u"Table1"); }), basic::error::kUsedInRelation);
    EXPECT_EQ(Findings(target), "");
}

TEST(Compact, LinksAreKept) {
    SKIP_WITHOUT_CORPUS();
    const TempFolder folder;
    const fs::path source = folder.Copy(CorpusFile("linked.mdb"));
    static_cast<void>(folder.Copy(CorpusFile("linkee2.mdb")));
    const fs::path target = folder.Path() / "target.mdb";
    Compact(source, target);
    const auto table = Database::Open(target)->OpenTable(u"table2");
    EXPECT_EQ(Rows(*table), Rows(*Database::Open(source)->OpenTable(u"table2")));
}

TEST(Compact, RefusesATargetThatExistsTheSourceItselfAndAFileInUse) {
    const TempFolder folder;
    const fs::path source = folder.Path() / "source.mdb";
    Database::Create(source);
    const fs::path target = folder.Path() / "target.mdb";
    WriteBytes(target, {1});
    EXPECT_EQ(ErrorNumber([&] { Compact(source, target); }), basic::error::kDatabaseExists);
    EXPECT_EQ(ErrorNumber([&] { Compact(source, source); }), basic::error::kDatabaseExists);
    fs::remove(target);
    {
        const auto open = Database::Open(source);
        EXPECT_EQ(ErrorNumber([&] { Compact(source, target); }), basic::error::kFileInUse);
    }
    EXPECT_FALSE(fs::exists(target));
    EXPECT_EQ(ErrorNumber([&] { Compact(folder.Path() / "no.mdb", target); }), basic::error::kFileMissing);
    EXPECT_EQ(ErrorNumber([&] { Compact(source, folder.Path() / "no" / "target.mdb"); }),
              basic::error::kBadPath);
    SKIP_WITHOUT_CORPUS();
    EXPECT_EQ(ErrorNumber([&] { Compact(folder.Copy(CorpusFile("common1V1997.mdb")), target); }),
              basic::error::kReadOnly);
    EXPECT_FALSE(fs::exists(target));
}

TEST(Compact, OfWhatIsDamagedNothingStays) {
    const TempFolder folder;
    const fs::path source = folder.Path() / "source.mdb";
    {
        const auto database = Database::Create(source);
        database->CreateTable(EveryType());
        FillEveryType(*database, *database->OpenTable(u"Tout"), 300);
    }
    auto bytes = ReadBytes(source);
    std::fill(bytes.end() - 4096 * 30, bytes.end() - 4096 * 10, std::uint8_t{0x5A});
    WriteBytes(source, bytes);
    const fs::path target = folder.Path() / "target.mdb";
    EXPECT_EQ(ErrorNumber([&] { Compact(source, target); }), basic::error::kNotADatabase);
    for (const auto& entry : fs::directory_iterator(folder.Path())) {
        EXPECT_EQ(entry.path(), source);
    }
}

}  // namespace
}  // namespace quardele::jet::test
