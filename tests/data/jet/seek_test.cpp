// Seeks with every operator, against the list of all entries.

#include <algorithm>

#include "indexes/key_encoder.h"
#include "rows/value_encoder.h"
#include "support.h"
#include "table_impl.h"

namespace quardele::jet::test {
namespace {

using Values = std::vector<Variant>;

struct Entry {
    ByteString key;
    RowId row;
};

std::vector<Entry> AllEntries(const Table& table, int index) {
    std::vector<Entry> entries;
    IndexCursor cursor = table.OpenIndex(index);
    for (bool found = cursor.First(); found; found = cursor.Next()) {
        const auto key = cursor.KeyBytes();
        entries.push_back({ByteString(key.begin(), key.end()), cursor.Current()});
    }
    return entries;
}

/// The entry that a seek must find, by going through the list.
std::optional<RowId> Expected(const std::vector<Entry>& entries, SeekOperator op, const ByteString& sought) {
    const auto order = [&sought](const Entry& entry) {
        return StartsWith(entry.key, sought) ? 0 : CompareBytes(entry.key, sought);
    };
    const auto matches = [&](const Entry& entry) {
        switch (op) {
            case SeekOperator::Equal:
                return order(entry) == 0;
            case SeekOperator::GreaterOrEqual:
                return order(entry) >= 0;
            case SeekOperator::Greater:
                return order(entry) > 0;
            case SeekOperator::LessOrEqual:
                return order(entry) <= 0;
            case SeekOperator::Less:
                return order(entry) < 0;
        }
        return false;
    };
    if (op == SeekOperator::LessOrEqual || op == SeekOperator::Less) {
        const auto found = std::find_if(entries.rbegin(), entries.rend(), matches);
        return found == entries.rend() ? std::nullopt : std::optional(found->row);
    }
    const auto found = std::find_if(entries.begin(), entries.end(), matches);
    return found == entries.end() ? std::nullopt : std::optional(found->row);
}

constexpr SeekOperator kOperators[] = {SeekOperator::Equal, SeekOperator::GreaterOrEqual,
                                       SeekOperator::Greater, SeekOperator::LessOrEqual, SeekOperator::Less};

std::optional<RowId> Found(IndexCursor& cursor, SeekOperator op, const Values& values) {
    return cursor.Seek(op, values) ? std::optional(cursor.Current()) : std::nullopt;
}

ByteString KeyOf(const Table& table, const Index& index, const Values& values) {
    ByteString key;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const StoredColumn& column =
            table.Impl().Def().stored[static_cast<std::size_t>(index.columns[i].column)];
        std::optional<ByteString> bytes;
        if (!values[i].IsNull()) {
            bytes = EncodeValue(column, values[i]);
        }
        AppendKey(column, index.columns[i].ascending,
                  bytes ? std::optional(ByteView(*bytes, 0)) : std::nullopt, table.Impl().Layout(), key);
    }
    return key;
}

int CheckIndex(const Table& table, int position) {
    const Index& index = table.Indexes()[static_cast<std::size_t>(position)];
    const auto entries = AllEntries(table, position);
    IndexCursor cursor = table.OpenIndex(position);
    int seeks = 0;
    for (const Entry& entry : entries) {
        const auto row = table.Fetch(entry.row);
        Values values;
        for (const IndexColumn& part : index.columns) {
            values.push_back(row->Value(part.column));
            EXPECT_TRUE(cursor.Seek(SeekOperator::Equal, values));
            EXPECT_TRUE(cursor.Matches(values));
            const ByteString sought = KeyOf(table, index, values);
            for (const SeekOperator op : kOperators) {
                EXPECT_EQ(Found(cursor, op, values), Expected(entries, op, sought));
                ++seeks;
            }
        }
    }
    return seeks;
}

TEST(Seek, EveryOperatorFindsWhatAScanFinds) {
    SKIP_WITHOUT_CORPUS();
    int seeks = 0;
    for (const char* file : {"indexCodesV2000-r2009.mdb", "compIndexV2000.mdb", "indexPropertiesV2000.mdb"}) {
        const auto database = Database::Open(CorpusFile(file), OpenMode::ReadOnly);
        for (const CatalogEntry& entry : database->Catalog()) {
            if (entry.system) {
                continue;
            }
            const auto table = database->OpenTable(entry.name);
            for (std::size_t i = 0; i < table->Indexes().size(); ++i) {
                SCOPED_TRACE(basic::ToUtf8(entry.name + u"." + table->Indexes()[i].name));
                seeks += CheckIndex(*table, static_cast<int>(i));
            }
        }
    }
    EXPECT_GT(seeks, 10000);
}

class SeekInSample : public testing::Test {
 protected:
    std::shared_ptr<Table> jobs_ =
        Database::Open(SampleFile("DATA/talmeon.mdb"), OpenMode::ReadOnly)->OpenTable(u"TAFF");
    std::shared_ptr<Table> visits_ =
        Database::Open(SampleFile("DATA/talmeon.mdb"), OpenMode::ReadOnly)->OpenTable(u"TVEH_DETAIL");
};

TEST_F(SeekInSample, ANumberBetweenTwoKeysEqualsNeither) {
    IndexCursor cursor = jobs_->OpenIndex(jobs_->FindIndex(u"PrimaryKey"));
    const int number = jobs_->FindColumn(u"TAFF_Numaff");
    const auto at = [&](SeekOperator op, Variant value) -> double {
        return cursor.Seek(op, {&value, 1}) ? jobs_->Fetch(cursor.Current())->NumberAt(number) : -1;
    };
    EXPECT_EQ(at(SeekOperator::Equal, 100001.5), -1);
    EXPECT_EQ(at(SeekOperator::Equal, 100001.0), 100001);
    EXPECT_EQ(at(SeekOperator::Equal, u"100001"), 100001);
    EXPECT_EQ(at(SeekOperator::GreaterOrEqual, 100001.2), 100002);
    EXPECT_EQ(at(SeekOperator::GreaterOrEqual, 100001.8), 100002);
    EXPECT_EQ(at(SeekOperator::Greater, 100001.2), 100002);
    EXPECT_EQ(at(SeekOperator::LessOrEqual, 100001.2), 100001);
    EXPECT_EQ(at(SeekOperator::LessOrEqual, 100001.8), 100001);
    EXPECT_EQ(at(SeekOperator::Less, 100001.8), 100001);
    EXPECT_EQ(at(SeekOperator::Less, 100001), -1);
    EXPECT_EQ(at(SeekOperator::Greater, 1e12), -1);
    EXPECT_EQ(at(SeekOperator::GreaterOrEqual, -1e12), 100001);
    EXPECT_EQ(at(SeekOperator::Less, -1e12), -1);
}

TEST_F(SeekInSample, LeadingColumnsAreEnough) {
    IndexCursor cursor = visits_->OpenIndex(visits_->FindIndex(u"PrimaryKey"));
    const Variant vehicle = visits_->Fetch(visits_->Scan().NextId().value())->Value(0);
    std::size_t matching = 0;
    for (bool found = cursor.Seek(SeekOperator::Equal, {&vehicle, 1}); found && cursor.Matches({&vehicle, 1});
         found = cursor.Next()) {
        ++matching;
    }
    std::size_t counted = 0;
    RowScan scan = visits_->Scan();
    while (const auto row = scan.Next()) {
        counted += row->Value(0) == vehicle ? 1u : 0u;
    }
    EXPECT_EQ(matching, counted);
    EXPECT_GT(matching, 0u);
}

TEST_F(SeekInSample, ValuesOfAnotherTypeAreRefused) {
    IndexCursor cursor = jobs_->OpenIndex(jobs_->FindIndex(u"PrimaryKey"));
    const Variant text(u"douze");
    EXPECT_EQ(ErrorNumber([&] {
                  static_cast<void>(cursor.Seek(SeekOperator::Equal, {&text, 1}));
              }),
              basic::error::kTypeConversion);
    const Values tooMany = {1, 2, 3};
    EXPECT_EQ(ErrorNumber([&] { static_cast<void>(cursor.Seek(SeekOperator::Equal, tooMany)); }),
              basic::error::kInvalidArgument);
}

TEST_F(SeekInSample, ATextWithoutAKnownPlaceIsRefused) {
    IndexCursor cursor = visits_->OpenIndex(visits_->FindIndex(u"PrimaryKey"));
    const Variant text(u"\u4E2D");
    EXPECT_EQ(ErrorNumber([&] {
                  static_cast<void>(cursor.Seek(SeekOperator::Equal, {&text, 1}));
              }),
              basic::error::kOperationNotSupported);
}

TEST(Seek, ACursorKeepsItsPlaceWhileEntriesComeAndGo) {
    TempFolder folder;
    const auto table = Database::Open(folder.Copy(SampleFile("DATA/talmeon.mdb")))->OpenTable(u"TVEH_DETAIL");
    const auto before = AllEntries(*table, 0);
    IndexCursor cursor = table->OpenIndex(0);
    std::size_t seen = 0;
    for (bool found = cursor.First(); found; found = cursor.Next(), ++seen) {
        ASSERT_EQ(cursor.Current(), before[seen].row);
        if (seen % 50 == 0 && seen > 0) {
            // The entry itself moves to the front: the walk goes on behind its old place.
            const ColumnChange change{0, basic::FromUtf8("!" + std::to_string(seen))};
            table->Update(cursor.Current(), {&change, 1});
        }
    }
    EXPECT_EQ(seen, before.size());
}

TEST(Seek, Access97IndexesAreWalkedAndTheirNumbersSought) {
    SKIP_WITHOUT_CORPUS();
    const auto database = Database::Open(CorpusFile("nwind.mdb"), OpenMode::ReadOnly);
    const auto orders = database->OpenTable(u"Orders");
    IndexCursor cursor = orders->OpenIndex(orders->FindIndex(u"PrimaryKey"));
    const Variant number(std::int32_t{10400});
    ASSERT_TRUE(cursor.Seek(SeekOperator::Equal, {&number, 1}));
    EXPECT_EQ(orders->Fetch(cursor.Current())->NumberAt(0), 10400);
    const auto customers = database->OpenTable(u"Customers");
    const int byText = customers->FindIndex(u"PrimaryKey");
    EXPECT_FALSE(customers->Indexes()[static_cast<std::size_t>(byText)].seekable);
    EXPECT_EQ(AllEntries(*customers, byText).size(), 91u);
}

}  // namespace
}  // namespace quardele::jet::test
