// Files whose bytes were changed at random or on purpose: an error that says where, or data; nothing else.

#include <jet/check.h>

#include "commit/journal.h"
#include "indexes/index_node.h"
#include "mutation.h"
#include "read_everything.h"
#include "setting.h"
#include "support.h"
#include "table_impl.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;

// Anything but a RuntimeError goes through and fails the test.
template <class Action>
void Attempt(const Action& action) {
    static_cast<void>(ErrorNumber(action));
}

/// A value that many columns take, and memos of several pages.
Variant SomeValue(const Column& column) {
    return column.type == ColumnType::Memo ? Variant(Text(5000, u'\u00E9')) : Variant(u"7");
}

void ChangeTable(Table& table) {
    std::vector<ColumnChange> row;
    for (std::size_t i = 0; i < table.Columns().size(); ++i) {
        row.push_back({static_cast<int>(i), SomeValue(table.Columns()[i])});
        Attempt([&] {
            if (const auto first = table.Scan().NextId()) {
                table.Update(*first, {&row.back(), 1});
            }
        });
    }
    Attempt([&] { table.Insert(row); });
    Attempt([&] {
        if (const auto first = table.Scan().NextId()) {
            table.Delete(*first);
        }
    });
}

void ChangeSomething(const fs::path& file) {
    Attempt([&] {
        const auto database = Database::Open(file);
        for (const CatalogEntry& entry : database->Catalog()) {
            if (!entry.system) {
                Attempt([&] { ChangeTable(*database->OpenTable(entry.name)); });
            }
        }
    });
}

/// Faults, or anything else that keeps the file from being checked.
bool IsSound(const fs::path& file) {
    bool sound = false;
    Attempt([&] { sound = !HasFaults(CheckFile(file)); });
    return sound;
}

std::vector<MutableFile> Originals() {
    std::vector<MutableFile> files;
    for (const auto& paths : {SampleFiles(), CorpusFiles()}) {
        for (const fs::path& path : paths) {
            files.emplace_back(path);
        }
    }
    return files;
}

/// So many mutations of each file; large ones, which take long to be read, get less. The seed is fixed, so
/// that a failure comes again. Gives how often each use of a page was hit.
template <class Use>
std::map<PageUse, int> Mutate(const std::vector<MutableFile>& files, unsigned perFile, const Use& use) {
    constexpr std::size_t kOrdinary = 300'000;
    const unsigned wanted = quardele::test::Setting("QUARDELE_DAMAGE_MUTATIONS", perFile);
    std::mt19937 random(quardele::test::Setting("QUARDELE_DAMAGE_SEED", 1234));
    const TempFolder folder;
    const fs::path file = folder.Path() / "base.mdb";
    std::map<PageUse, int> hits;
    for (const MutableFile& original : files) {
        const std::size_t share = std::max<std::size_t>(1, original.Size() / kOrdinary);
        for (std::size_t count = 0; count < wanted / share && !testing::Test::HasFailure(); ++count) {
            SCOPED_TRACE(original.Original().string() + ", mutation " + std::to_string(count));
            const MutableFile::Mutation mutation = original.Mutated(random);
            WriteBytes(file, mutation.bytes);
            ++hits[mutation.use];
            use(file);
            fs::remove(JournalPath(file));
        }
    }
    return hits;
}

void ExpectAllUsesHit(const std::map<PageUse, int>& hits, int least) {
    for (const PageUse use : {PageUse::Header, PageUse::Map, PageUse::Definition, PageUse::IndexLeaf,
                              PageUse::LongValues, PageUse::Catalogue, PageUse::Rows}) {
        EXPECT_TRUE(hits.contains(use) && hits.at(use) >= least) << static_cast<int>(use);
    }
}

// Anything but a RuntimeError goes through and fails the test; a crash or a hang does so even more.
TEST(Damage, ReadingMutatedFilesGivesDataOrAnError) {
    constexpr unsigned kPerFile = 200;
    const auto hits = Mutate(Originals(), kPerFile, [](const fs::path& file) {
        EXPECT_NO_THROW(ReadEverything(file));
        EXPECT_NO_THROW(static_cast<void>(IsSound(file)));
    });
    ExpectAllUsesHit(hits, 50);
}

// A file that was sound in spite of the changed bytes still is when something was written to it.
TEST(Damage, WritingToMutatedFilesGivesAChangeOrAnError) {
    constexpr unsigned kPerFile = 120;
    auto files = Originals();
    std::erase_if(files, [](const MutableFile& file) { return !file.IsWritable(); });
    int sound = 0;
    const auto hits = Mutate(files, kPerFile, [&](const fs::path& file) {
        const bool wasSound = IsSound(file);
        sound += wasSound ? 1 : 0;
        EXPECT_NO_THROW(ChangeSomething(file));
        EXPECT_TRUE(!wasSound || IsSound(file));
        EXPECT_FALSE(HasJournal(file));
    });
    ExpectAllUsesHit(hits, 30);
    EXPECT_GT(sound, 30);
}

class DamagedIndex : public testing::Test {
 protected:
    void SetUp() override {
        const auto table = Database::Open(file_, OpenMode::ReadOnly)->OpenTable(kTable);
        root_ = table->Impl().Def().realIndexes.at(0).root;
        const IndexNode node = IndexNode::Load(table->Impl().Pages(), root_, table->Impl().Def().page);
        ASSERT_FALSE(node.leaf);
        first_ = node.Child(0);
        second_ = node.Child(1);
    }
    void Put(std::uint32_t page, std::size_t offset, std::uint32_t value) const {
        auto bytes = ReadBytes(file_);
        StoreLittle(std::span(bytes).subspan(std::size_t{page} * kJet4.pageSize + offset), value);
        WriteBytes(file_, bytes);
    }
    [[nodiscard]] int WalkError(bool forward) const {
        return ErrorNumber([&] {
            const auto table = Database::Open(file_, OpenMode::ReadOnly)->OpenTable(kTable);
            IndexCursor cursor = table->OpenIndex(0);
            for (bool found = forward ? cursor.First() : cursor.Last(); found;
                 found = forward ? cursor.Next() : cursor.Previous()) {
            }
        });
    }

    static constexpr const char16_t* kTable = u"TVEH_DETAIL";
    TempFolder folder_;
    fs::path file_ = folder_.Copy(SampleFile("DATA/talmeon.mdb"));
    std::uint32_t root_ = 0;
    std::uint32_t first_ = 0;
    std::uint32_t second_ = 0;
};

TEST_F(DamagedIndex, LeavesThatGoInACircleEndWithAnError) {
    Put(second_, kJet4.index.next, first_);
    EXPECT_EQ(WalkError(true), basic::error::kNotADatabase);
}

TEST_F(DamagedIndex, ALeafThatFollowsItselfEndsWithAnError) {
    Put(first_, kJet4.index.next, first_);
    EXPECT_EQ(WalkError(true), basic::error::kNotADatabase);
    Put(second_, kJet4.index.previous, second_);
    EXPECT_EQ(WalkError(false), basic::error::kNotADatabase);
}

TEST_F(DamagedIndex, ANodeBelowItselfEndsWithAnError) {
    Put(root_, kJet4.index.tail, root_);
    EXPECT_EQ(WalkError(false), basic::error::kNotADatabase);
}

TEST_F(DamagedIndex, ALinkOutOfTheFileIsNamed) {
    Put(first_, kJet4.index.next, 0x00FFFFFF);
    try {
        const auto table = Database::Open(file_, OpenMode::ReadOnly)->OpenTable(kTable);
        IndexCursor cursor = table->OpenIndex(0);
        for (bool found = cursor.First(); found; found = cursor.Next()) {
        }
        FAIL();
    } catch (const basic::RuntimeError& error) {
        EXPECT_EQ(error.Number(), basic::error::kNotADatabase);
        EXPECT_NE(error.Description().find(u"page 16777215"), Text::npos);
    }
}

}  // namespace
}  // namespace quardele::jet::test
