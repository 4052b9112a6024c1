// Files whose bytes were changed at random or on purpose: an error that says where, or data; nothing else.

#include <cstdlib>
#include <fstream>
#include <random>

#include "indexes/index_node.h"
#include "read_everything.h"
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

void ChangeSomething(const fs::path& file) {
    Attempt([&] {
        const auto database = Database::Open(file);
        for (const CatalogEntry& entry : database->Catalog()) {
            if (entry.system) {
                continue;
            }
            Attempt([&] {
                const auto table = database->OpenTable(entry.name);
                const auto row = table->Scan().NextId();
                for (std::size_t i = 0; row && i < table->Columns().size(); ++i) {
                    const bool isText = table->Columns()[i].type == ColumnType::Memo;
                    const ColumnChange change{static_cast<int>(i),
                                              isText ? Variant(Text(5000, u'é')) : Variant(u"7")};
                    Attempt([&] { table->Update(*row, {&change, 1}); });
                }
            });
        }
    });
}

/// Changes a few bytes, mostly near the start of a page, where counts and links stand.
std::vector<std::uint8_t> Mutated(std::vector<std::uint8_t> bytes, std::mt19937& random) {
    constexpr std::size_t kPage = 4096;
    constexpr std::size_t kHead = 80;
    const std::size_t mutations = 1 + random() % 6;
    for (std::size_t i = 0; i < mutations; ++i) {
        const std::size_t page = random() % (bytes.size() / kPage) * kPage;
        const std::size_t at = page + random() % (random() % 2 == 0 ? kHead : kPage);
        const std::uint8_t values[] = {
            0, 1, 0xFF, 0x7F, static_cast<std::uint8_t>(random()), static_cast<std::uint8_t>(bytes[at] + 1)};
        bytes[at] = values[random() % std::size(values)];
    }
    return bytes;
}

std::vector<fs::path> Originals() {
    std::vector<fs::path> files = SampleFiles();
    for (const fs::path& file : CorpusFiles()) {
        files.push_back(file);
    }
    return files;
}

/// A number from the environment, for runs longer than those of every day.
unsigned Setting(const char* name, unsigned usual) {
    const char* value = std::getenv(name);
    return value == nullptr ? usual : static_cast<unsigned>(std::strtoul(value, nullptr, 10));
}

// The seed is fixed, so that a failure comes again.
template <class Use>
void Mutate(const Use& use) {
    const unsigned mutations = Setting("QUARDELE_DAMAGE_MUTATIONS", 150);
    const auto files = Originals();
    std::mt19937 random(Setting("QUARDELE_DAMAGE_SEED", 1234));
    TempFolder folder;
    for (unsigned count = 0; count < mutations && !testing::Test::HasFailure(); ++count) {
        const fs::path& original = files[count % files.size()];
        const fs::path file = folder.Path() / "base.mdb";
        WriteBytes(file, Mutated(ReadBytes(original), random));
        SCOPED_TRACE(original.string() + ", mutation " + std::to_string(count));
        use(file);
    }
}

TEST(Damage, ReadingMutatedFilesGivesDataOrAnError) {
    Mutate([](const fs::path& file) { EXPECT_NO_THROW(ReadEverything(file)); });
}

TEST(Damage, WritingToMutatedFilesGivesAChangeOrAnError) {
    Mutate([](const fs::path& file) { EXPECT_NO_THROW(ChangeSomething(file)); });
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
